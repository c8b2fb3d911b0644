// make_resource_file: compiles a text description (resource_description.h)
// into a Macintosh-format resource file, and back again for a look.
//   make_resource_file <description> <output>   compile
//   make_resource_file --list <resource file>   print what a file holds
//   make_resource_file --seeds <directory>      write the fuzz target's seed files
// It runs on the build machine, so it uses only the standard library.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "resource_builder/resource_description.h"
#include "resource_builder/resource_image.h"
#include "resource_builder/resource_reader.h"
#include "resource_builder/resource_seeds.h"

namespace {

using namespace resource_builder;

bool ReadFile(const std::string& path, std::string& contents) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  contents.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return !in.bad();
}

bool WriteFile(const std::string& path, const Bytes& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (out) return true;
  std::remove(path.c_str());
  return false;
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "make_resource_file: %s\n", message.c_str());
  return 1;
}

int Compile(const std::string& descriptionPath, const std::string& outputPath) {
  std::string text, error;
  if (!ReadFile(descriptionPath, text)) return Fail("cannot read " + descriptionPath);
  std::vector<Resource> resources;
  if (!ParseResourceDescription(text, resources, error))
    return Fail(descriptionPath + ", " + error);
  Bytes image;
  try {
    image = BuildResourceImage(resources);
  } catch (const std::length_error& e) {
    return Fail(descriptionPath + ": " + e.what());
  }
  if (!WriteFile(outputPath, image)) return Fail("cannot write " + outputPath);
  return 0;
}

std::string Printable(const std::string& bytes) {
  std::string out;
  for (unsigned char c : bytes) out += c >= 0x20 && c < 0x7F ? static_cast<char>(c) : '.';
  return out;
}

int List(const std::string& path) {
  std::string contents, problem;
  if (!ReadFile(path, contents)) return Fail("cannot read " + path);
  ResourceListing listing;
  const Bytes bytes(contents.begin(), contents.end());
  if (!ReadResourceImage(bytes, listing, problem)) return Fail(path + ": " + problem);
  std::printf("%s: %zu types, %zu resources, file attributes 0x%04X\n", path.c_str(),
              listing.types.size(), listing.resources.size(), listing.fileAttributes);
  for (const ListedResource& r : listing.resources) {
    std::string head(r.data.begin(), r.data.begin() + (r.data.size() < 24 ? r.data.size() : 24));
    std::printf("  '%s' %6d %-20s attrs 0x%02X %6zu bytes  %s\n", TypeText(r.type).c_str(), r.id,
                r.named ? ("\"" + Printable(r.name) + "\"").c_str() : "-", r.attributes,
                r.data.size(), Printable(head).c_str());
  }
  return 0;
}

int WriteSeeds(const std::string& directory) {
  for (const SeedFile& seed : SeedFiles()) {
    std::string path = directory + "/" + seed.fileName;
    if (!WriteFile(path, seed.bytes)) return Fail("cannot write " + path);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "--list") return List(argv[2]);
  if (argc == 3 && std::string(argv[1]) == "--seeds") return WriteSeeds(argv[2]);
  if (argc == 3 && argv[1][0] != '-') return Compile(argv[1], argv[2]);
  std::fprintf(stderr,
               "usage: make_resource_file <description> <output>\n"
               "       make_resource_file --list <resource file>\n"
               "       make_resource_file --seeds <directory>\n");
  return 2;
}
