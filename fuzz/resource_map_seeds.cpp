// Writes the seed corpus of resource_map_fuzz: the resource builder's
// varied valid files.
#include <cstdio>
#include <string>

#include "resource_builder/resource_seeds.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <directory>\n", argv[0]);
    return 2;
  }
  for (const auto& seed : resource_builder::SeedFiles()) {
    std::string path = std::string(argv[1]) + "/" + seed.fileName;
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return 1;
    std::fwrite(seed.bytes.data(), 1, seed.bytes.size(), f);
    if (std::fclose(f) != 0) return 1;
  }
  return 0;
}
