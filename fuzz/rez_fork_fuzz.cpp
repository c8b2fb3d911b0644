// kwederez's readers on arbitrary files: resource files, AppleDouble,
// AppleSingle and MacBinary containers. A refused file says why and gives
// nothing; a file that reads must decompile into Rez that compiles back into
// the same resources.
#include <cstddef>
#include <cstdint>
#include <string>

#include "rez/fork_reader.h"
#include "rez_oracle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string file(reinterpret_cast<const char*>(data), size);
  std::vector<rez::CompiledResource> resources;
  std::string problem;
  if (!rez::ReadResourceFork(file, resources, problem)) {
    if (problem.empty() || !resources.empty()) __builtin_trap();
    return 0;
  }
  rez_fuzz::ExpectRoundTrip(resources);
  return 0;
}
