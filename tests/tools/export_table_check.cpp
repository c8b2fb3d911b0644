// Reads a Windows DLL's export table and checks it against the module-
// definition list: every listed name exported undecorated, nothing else.
// Usage: export_table_check KWEJMP.dll KWEJMP.def
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

bool Read(const Bytes& b, size_t at, size_t n) { return at <= b.size() && n <= b.size() - at; }

uint32_t U32(const Bytes& b, size_t at) {
  return Read(b, at, 4) ? uint32_t(b[at]) | uint32_t(b[at + 1]) << 8 | uint32_t(b[at + 2]) << 16 |
                              uint32_t(b[at + 3]) << 24
                        : 0;
}
uint16_t U16(const Bytes& b, size_t at) {
  return Read(b, at, 2) ? uint16_t(b[at] | b[at + 1] << 8) : 0;
}

struct Section {
  uint32_t virtualAddress, virtualSize, rawOffset, rawSize;
};

bool ExportedNames(const Bytes& pe, std::vector<std::string>& names, std::string& error) {
  if (!Read(pe, 0, 64) || pe[0] != 'M' || pe[1] != 'Z') return error = "not an MZ file", false;
  size_t nt = U32(pe, 0x3C);
  if (!Read(pe, nt, 24) || std::memcmp(&pe[nt], "PE\0\0", 4) != 0)
    return error = "no PE header", false;
  uint16_t sectionCount = U16(pe, nt + 6);
  uint16_t optionalSize = U16(pe, nt + 20);
  size_t optional = nt + 24;
  uint16_t magic = U16(pe, optional);
  size_t directories = optional + (magic == 0x20B ? 112 : 96);
  uint32_t exportRva = U32(pe, directories);
  std::vector<Section> sections;
  for (size_t i = 0, at = optional + optionalSize; i < sectionCount; ++i, at += 40)
    sections.push_back({U32(pe, at + 12), U32(pe, at + 8), U32(pe, at + 20), U32(pe, at + 16)});
  auto offsetOf = [&](uint32_t rva) -> size_t {
    for (const Section& s : sections)
      if (rva >= s.virtualAddress && rva < s.virtualAddress + std::max(s.virtualSize, s.rawSize))
        return rva - s.virtualAddress + s.rawOffset;
    return SIZE_MAX;
  };
  if (exportRva == 0) return true;  // exports nothing
  size_t dir = offsetOf(exportRva);
  if (!Read(pe, dir, 40)) return error = "export directory outside the file", false;
  uint32_t count = U32(pe, dir + 24);
  size_t nameTable = offsetOf(U32(pe, dir + 32));
  for (uint32_t i = 0; i < count; ++i) {
    size_t name = offsetOf(U32(pe, nameTable + 4 * i));
    if (!Read(pe, name, 1)) return error = "export name outside the file", false;
    std::string s;
    while (name < pe.size() && pe[name]) s += char(pe[name++]);
    names.push_back(s);
  }
  return true;
}

std::vector<std::string> ListedNames(std::istream& def) {
  std::vector<std::string> names;
  std::string line;
  bool inExports = false;
  while (std::getline(def, line)) {
    std::string word;
    std::istringstream(line) >> word;
    if (word.empty() || word[0] == ';') continue;
    if (word == "LIBRARY") continue;
    if (word == "EXPORTS") {
      inExports = true;
      continue;
    }
    if (inExports) names.push_back(word);
  }
  return names;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s DLL DEF\n", argv[0]);
    return 2;
  }
  std::ifstream dllFile(argv[1], std::ios::binary);
  std::ifstream defFile(argv[2]);
  if (!dllFile || !defFile) {
    std::fprintf(stderr, "cannot open %s or %s\n", argv[1], argv[2]);
    return 2;
  }
  Bytes pe((std::istreambuf_iterator<char>(dllFile)), std::istreambuf_iterator<char>());
  std::vector<std::string> exported;
  std::string error;
  if (!ExportedNames(pe, exported, error)) {
    std::fprintf(stderr, "%s: %s\n", argv[1], error.c_str());
    return 1;
  }
  std::vector<std::string> listed = ListedNames(defFile);

  int faults = 0;
  std::set<std::string> exportedSet(exported.begin(), exported.end());
  std::set<std::string> listedSet;
  for (const std::string& name : listed) {
    if (!listedSet.insert(name).second) {
      std::printf("listed twice: %s\n", name.c_str());
      ++faults;
    }
    if (!exportedSet.count(name)) {
      std::printf("missing export: %s\n", name.c_str());
      ++faults;
    }
  }
  for (const std::string& name : exported) {
    if (name.find('@') != std::string::npos || name[0] == '_') {
      std::printf("decorated export: %s\n", name.c_str());
      ++faults;
    } else if (!listedSet.count(name)) {
      std::printf("export not in the list: %s\n", name.c_str());
      ++faults;
    }
  }
  std::printf("%zu names listed, %zu exported, %d faults\n", listed.size(), exported.size(),
              faults);
  return faults ? 1 : 0;
}
