// The library's one zone record, the one the low-memory global ApplZone
// names. Only moreMast is read; applications may change it.
#pragma once
#include "Memory.h"

namespace kwe::memory {

Zone& TheZone();

}  // namespace kwe::memory
