// Removes a directory and everything under it, read-only files included;
// the directory's path ends in a backslash. Header-only, so that programs
// that do not link the test support library (the benches) can use it too.
#pragma once
#include <windows.h>

#include <string>

namespace kwe_test {

inline void RemoveTree(const std::string& directory) {
  WIN32_FIND_DATAA data;
  HANDLE find = FindFirstFileA((directory + "*").c_str(), &data);
  if (find != INVALID_HANDLE_VALUE) {
    do {
      std::string name = data.cFileName;
      if (name == "." || name == "..") continue;
      std::string path = directory + name;
      if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
        RemoveTree(path + "\\");
      } else {
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileA(path.c_str());
      }
    } while (FindNextFileA(find, &data));
    FindClose(find);
  }
  RemoveDirectoryA(directory.c_str());
}

}  // namespace kwe_test
