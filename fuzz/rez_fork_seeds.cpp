// Seeds of the fork readers' target: the resource builder's varied files as
// they are, and one of them inside AppleDouble and MacBinary containers.
#include <cstdio>
#include <fstream>
#include <string>

#include "resource_builder/resource_seeds.h"

namespace {

std::string Be32(std::uint32_t v) { return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)}; }

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: rez_fork_seeds <directory>\n");
    return 2;
  }
  std::string dir = argv[1], sample;
  for (const resource_builder::SeedFile& seed : resource_builder::SeedFiles()) {
    std::string bytes(seed.bytes.begin(), seed.bytes.end());
    Write(dir + "/" + seed.fileName, bytes);
    if (sample.empty() || bytes.size() < sample.size()) sample = bytes;
  }
  std::string size = Be32(static_cast<std::uint32_t>(sample.size()));
  Write(dir + "/appledouble", Be32(0x00051607) + Be32(0x00020000) + std::string(16, '\0') +
                                  std::string("\0\1", 2) + Be32(2) + Be32(38) + size + sample);
  std::string macBinary(128, '\0');
  macBinary[1] = 1;
  macBinary[2] = 'a';
  macBinary.replace(87, 4, size);
  Write(dir + "/macbinary", macBinary + sample);
  return 0;
}
