#include "frame/app_path.h"

#include <windows.h>

#include <cstring>

#include "KWESession.h"
#include "frame/app_path_rule.h"
#include "frame/session.h"

namespace kwe {

std::string AppPathName(const char* name) {
  if (name && name[0] && name[0] != '.' && name[1] == ':' && name[2] == '\\') return name;
  char module[128] = "";
  GetModuleFileNameA(TheSession().instance, module, sizeof module);
  module[sizeof module - 1] = 0;
  return JoinBesideBase(module, name);
}

std::string CurrentDirectoryPathName(const char* name) {
  if (IsAbsoluteDosName(name)) return name;
  char directory[130] = "";
  DWORD n = GetCurrentDirectoryA(128, directory);
  if (n == 0 || n >= 128) directory[0] = 0;
  size_t length = std::strlen(directory);
  if (length == 0 || directory[length - 1] != '\\') std::strcat(directory, "\\");
  OemToCharA(directory, directory);
  return JoinBesideBase(directory, name);
}

}  // namespace kwe

// dst must hold 128 bytes plus the name.
KWE_API void KWE_CALL KWE_MakeAppPathName(char* dst, const char* name) {
  if (!dst) return;
  std::string path = kwe::AppPathName(name);
  std::memcpy(dst, path.c_str(), path.size() + 1);
}
