// The resource forks kwederez reads: our own resource files (which are raw
// resource forks), AppleDouble and AppleSingle files, and MacBinary files.
// Every offset and length in a header is checked against the file before it
// is used; a header that lies is refused with a message.
#pragma once
#include <string>
#include <vector>

#include "rez/rez_template.h"

namespace rez {

enum class ForkFormat { ResourceFile, AppleDouble, AppleSingle, MacBinary };

// The resources of the fork in file, in map order. False, with what is
// wrong in problem, when the file is none of the formats or is damaged.
bool ReadResourceFork(const std::string& file, std::vector<CompiledResource>& resources,
                      std::string& problem, ForkFormat* format = nullptr);

}  // namespace rez
