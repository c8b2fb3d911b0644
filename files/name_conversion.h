// File names between the application's Macintosh character set and the
// ANSI names Windows files carry.
#pragma once
#include <cstddef>
#include <string>

#include "MacTypes.h"

namespace kwe::files {

// A Pascal name as an ANSI string; null gives "".
std::string MacNameToAnsi(ConstStr255Param name);

// An ANSI name into a Pascal string of at most maxLength characters (63 for
// a Str63, 255 for a Str255); false when it had to be cut.
bool AnsiNameToMac(const std::string& name, StringPtr out, size_t maxLength);

}  // namespace kwe::files
