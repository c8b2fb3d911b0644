// The path rule for files that lie beside the application (and, with the
// current directory in place of the module, for relative Toolbox names).
#pragma once
#include <string>

namespace kwe {

// Absolute: non-empty, not starting with a dot, and "X:\..." or "\\...".
bool IsAbsoluteDosName(const char* name);

// Joins name to base (a module file name or a directory ending in a
// backslash): a plain name replaces base's last component, a name starting
// with a dot replaces base's extension, and a null name leaves base whole.
// When base's directory part leaves no room for an 8.3 name within 128
// bytes, the name becomes "?", which opens nothing.
std::string JoinBesideBase(const std::string& base, const char* name);

}  // namespace kwe
