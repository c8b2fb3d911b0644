// How an application's Pascal name for a resource file becomes a DOS name:
// a drive path is kept; anything else is squeezed into 8.3 with ".rsr".
#pragma once
#include <string>

namespace kwe::resources {

// name: the ANSI characters of the application's name. creating: the rule of
// CreateResFile, which also drops a trailing "." of a kept name.
std::string ResourceFileName(const std::string& name, bool creating);

}  // namespace kwe::resources
