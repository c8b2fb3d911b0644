#include "files/files_fixture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <vector>

#include "support/temp_tree.h"

namespace kwe_test {

P::P(const std::string& text) {
  size_t n = text.size() < 255 ? text.size() : 255;
  bytes_[0] = static_cast<unsigned char>(n);
  std::memcpy(bytes_ + 1, text.data(), n);
}

StringPtr Keep(const std::string& text) {
  static std::deque<std::array<unsigned char, 256>> kept;
  kept.emplace_back();
  P bytes(text);
  std::memcpy(kept.back().data(), static_cast<ConstStr255Param>(bytes), 256);
  return kept.back().data();
}

std::string Text(const unsigned char* text) {
  return std::string(reinterpret_cast<const char*>(text) + 1, text[0]);
}

void WriteRaw(const std::string& path, const std::string& bytes) {
  HANDLE h = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  ASSERT_NE(h, INVALID_HANDLE_VALUE) << path;
  DWORD written = 0;
  WriteFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(h);
  ASSERT_EQ(written, bytes.size());
}

std::string ReadRaw(const std::string& path) {
  HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_EXISTING, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return "<missing>";
  std::string bytes;
  char chunk[4096];
  DWORD n = 0;
  while (ReadFile(h, chunk, sizeof chunk, &n, nullptr) && n > 0) bytes.append(chunk, n);
  CloseHandle(h);
  return bytes;
}

bool Exists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsDirectoryOnDisk(const std::string& path) {
  DWORD a = GetFileAttributesA(path.c_str());
  return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
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
  if (find != INVALID_HANDLE_VALUE) {
    do {
      if (std::strcmp(data.cFileName, ".") && std::strcmp(data.cFileName, ".."))
        names.push_back(data.cFileName);
    } while (FindNextFileA(find, &data));
    FindClose(find);
  }
  std::sort(names.begin(), names.end());
  std::string out;
  for (const std::string& n : names) out += (out.empty() ? "" : " ") + n;
  return out;
}

void FilesTest::SetUp() {
  SessionTest::SetUp();
  char base[MAX_PATH];
  GetTempPathA(sizeof base, base);
  char full[MAX_PATH];
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

SInt32 FilesTest::DirID() { return KWE_DirIDFromPath(dir_.c_str(), nullptr, nullptr); }

SInt16 FilesTest::WDRefNum() {
  SInt16 number = 0;
  KWE_DirIDFromPath(dir_.c_str(), nullptr, &number);
  return number;
}

}  // namespace kwe_test
