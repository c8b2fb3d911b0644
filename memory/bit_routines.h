#pragma once
#include "MacTypes.h"

namespace kwe::utilities {

// BitNot has no entry point of its own (the Toolbox's glue did it inline);
// the library's managers use this one.
constexpr SInt32 BitNot(SInt32 value) { return ~value; }

}  // namespace kwe::utilities
