// A session whose process works in a fresh temporary directory of its own:
// GetTempPathA + "kwe_files_<process id>\", made the current directory, and
// removed with everything in it at the end. Files are made and checked with
// Win32 itself, never through the library.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>

#include "Files.h"
#include "support/test_host.h"

namespace kwe_test {

// A Pascal string that lives as long as the statement using it: for
// arguments only.
class P {
 public:
  P(const std::string& text)
      : bytes_{static_cast<unsigned char>(std::min<size_t>(text.size(), 255))} {
    text.copy(reinterpret_cast<char*>(bytes_ + 1), bytes_[0]);
  }
  operator ConstStr255Param() const { return bytes_; }

 private:
  unsigned char bytes_[256];
};

// A Pascal string that lives until the process ends: for parameter blocks,
// which keep the pointer past the statement.
StringPtr Keep(const std::string& text);

inline std::string Text(const unsigned char* text) {
  return std::string(reinterpret_cast<const char*>(text) + 1, text[0]);
}

void WriteRaw(const std::string& path, const std::string& bytes);
// The file's bytes; "<missing>" when it cannot be read.
std::string ReadRaw(const std::string& path);
inline bool Exists(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
// The volume reference number Windows' drives give a letter: A: and B:
// always count, then every present drive in letter order. 0 when absent.
SInt16 ExpectedDriveVolume(char letter);
// Every name in a directory, sorted, "." and ".." left out.
std::string Listing(const std::string& directory);

class FilesTest : public SessionTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  // The directory's full path, ending in a backslash, and a path in it.
  const std::string& Dir() const { return dir_; }
  std::string At(const std::string& name) const { return dir_ + name; }
  // Its directory ID and working-directory number, as the library gives them.
  SInt32 DirID() { return KWE_DirIDFromPath(dir_.c_str(), nullptr, nullptr); }
  SInt16 WDRefNum() {
    SInt16 number = 0;
    KWE_DirIDFromPath(dir_.c_str(), nullptr, &number);
    return number;
  }
  // The current directory the session started in.
  std::string StartDirectory() const { return previous_; }

 private:
  std::string dir_;
  char previous_[MAX_PATH] = "";
};

}  // namespace kwe_test
