#include "files/files_fixture.h"

#include <array>
#include <cstring>
#include <deque>
#include <fstream>
#include <iterator>
#include <vector>

#include "support/temp_tree.h"

namespace kwe_test {

StringPtr Keep(const std::string& text) {
  static std::deque<std::array<unsigned char, 256>> kept;
  const P bytes(text);
  std::memcpy(kept.emplace_back().data(), static_cast<ConstStr255Param>(bytes), 256);
  return kept.back().data();
}

void WriteRaw(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  EXPECT_TRUE(out.flush()) << path;
}

std::string ReadRaw(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
}

SInt16 ExpectedDriveVolume(char letter) {
  int index = (letter & ~0x20) - 'A';
  DWORD present = GetLogicalDrives();
  SInt16 position = 0;
  for (int i = 0; i < 26; ++i) {
    char root[4] = {static_cast<char>('A' + i), ':', '\\', 0};
    bool counts = i < 2 || ((present & (1u << i)) && GetDriveTypeA(root) > DRIVE_NO_ROOT_DIR);
    if (!counts) continue;
    ++position;
    if (i == index) return static_cast<SInt16>(-position);
  }
  return 0;
}

std::string Listing(const std::string& directory) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA data;
  HANDLE find = FindFirstFileA((directory + "*").c_str(), &data);
  for (BOOL more = find != INVALID_HANDLE_VALUE; more; more = FindNextFileA(find, &data))
    if (std::string(".") != data.cFileName && std::string("..") != data.cFileName)
      names.push_back(data.cFileName);
  if (find != INVALID_HANDLE_VALUE) FindClose(find);
  std::sort(names.begin(), names.end());
  std::string out;
  for (const std::string& n : names) out += (out.empty() ? "" : " ") + n;
  return out;
}

void FilesTest::SetUp() {
  SessionTest::SetUp();
  char base[MAX_PATH], full[MAX_PATH];
  GetTempPathA(sizeof base, base);
  GetLongPathNameA(base, full, sizeof full);
  dir_ = std::string(full) + "kwe_files_" + std::to_string(GetCurrentProcessId()) + "\\";
  RemoveTree(dir_);
  ASSERT_TRUE(CreateDirectoryA(dir_.c_str(), nullptr)) << dir_;
  GetCurrentDirectoryA(sizeof previous_, previous_);
  ASSERT_TRUE(SetCurrentDirectoryA(dir_.c_str()));
}

void FilesTest::TearDown() {
  SessionTest::TearDown();  // closes every file the library still holds
  SetCurrentDirectoryA(previous_);
  RemoveTree(dir_);
}

}  // namespace kwe_test
