// A handful of varied, valid resource files: the starting corpus of the
// map parser's fuzz target (make_resource_file --seeds <dir> writes them).
#pragma once
#include <string>
#include <vector>

#include "resource_builder/resource_image.h"

namespace resource_builder {

struct SeedFile {
  std::string fileName;
  Bytes bytes;
};

std::vector<SeedFile> SeedFiles();

}  // namespace resource_builder
