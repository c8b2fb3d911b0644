// A resource file image, as the tests' builder makes it, written to the
// temporary directory and opened through the Resource Manager: the way an
// application's own resource file meets the library. Header-only.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Resources.h"

namespace kwe_test {

// Writes image to <temp>\<prefix><process id>, opens it with OpenResFile
// and turns resource loading on; *path is the file, *refNum its reference
// number. The caller closes and deletes it.
inline void OpenResourceImage(const std::vector<std::uint8_t>& image, const std::string& prefix,
                              std::string* path, SInt16* refNum) {
  char dir[MAX_PATH];
  GetTempPathA(MAX_PATH, dir);
  *path = std::string(dir) + prefix + std::to_string(GetCurrentProcessId());
  FILE* f = std::fopen(path->c_str(), "wb");
  ASSERT_NE(f, nullptr);
  std::fwrite(image.data(), 1, image.size(), f);
  std::fclose(f);
  Str255 name{UInt8(path->size())};
  std::memcpy(name + 1, path->data(), path->size());
  *refNum = OpenResFile(name);
  ASSERT_GT(*refNum, 0);
  SetResLoad(true);
}

}  // namespace kwe_test
