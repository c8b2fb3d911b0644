#include "files/call_support.h"

#include "files/dos_path.h"
#include "files/name_conversion.h"
#include "files/working_directories.h"

namespace kwe::files {

OSErr PathOf(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, std::string* path) {
  return FullPath(dirID, vRefNum, MacNameToAnsi(name), path);
}

OSErr PathOfSpec(const FSSpec* spec, std::string* path) {
  if (!spec) return paramErr;
  return PathOf(spec->parID, spec->vRefNum, spec->name, path);
}

DWORD QuietAttributes(const std::string& path) {
  UINT previous = SetErrorMode(SEM_FAILCRITICALERRORS);
  DWORD attributes = GetFileAttributesA(path.c_str());
  SetErrorMode(previous);
  return attributes;
}

void LeafNameToMac(const std::string& path, StringPtr out, size_t maxLength) {
  std::string trimmed = path;
  if (trimmed.size() > 3 && trimmed.back() == '\\') trimmed.pop_back();
  AnsiNameToMac(SplitAtLastSeparator(trimmed).name, out, maxLength);
}

}  // namespace kwe::files
