// Paths for names the Toolbox hands over without a directory.
#pragma once
#include <string>

namespace kwe {

// The name beside the host module (KWE_MakeAppPathName's rule).
std::string AppPathName(const char* name);

// The name as the File and Resource Managers resolve it: absolute names as
// given, others in the current directory.
std::string CurrentDirectoryPathName(const char* name);

}  // namespace kwe
