// FindFolder: the Macintosh's special folders on Windows directories.
#include "Folders.h"

#include <windows.h>

#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/low_memory.h"

using namespace kwe::files;

namespace {

bool IsSystemFolderType(OSType type) {
  switch (type) {
    case kControlPanelFolderType:
    case kAppleMenuFolderType:
    case kExtensionFolderType:
    case kDesktopFolderType:
    case kPreferencesFolderType:
    case kSystemFolderType:
    case kStartupFolderType: return true;
    default: return false;
  }
}

}  // namespace

KWE_API OSErr KWE_CALL FindFolder(SInt16, OSType folderType, Boolean, SInt16* foundVRefNum,
                                  SInt32* foundDirID) {
  char directory[MAX_PATH + 1] = "";
  SInt16 number = kNoVolume;
  SInt32 dirID = 0;
  if (folderType == kTemporaryFolderType || IsSystemFolderType(folderType)) {
    if (folderType == kTemporaryFolderType) {
      DWORD n = GetTempPathA(256, directory);
      if (n == 0 || n >= 256) return fnfErr;
    } else {
      UINT n = GetWindowsDirectoryA(directory, MAX_PATH);
      if (n == 0 || n >= MAX_PATH) return fnfErr;
    }
    SInt16 volume;
    dirID = DirectoryIDForPath(directory, &volume, &number);
    if (dirID == kRootDirID) number = volume;
  } else {
    number = MakeCurrentDirectory(std::string());
    if (number != kNoVolume) dirID = kwe::lowmem::At<SInt32>(kwe::lowmem::Slot::CurDirStore);
  }
  if (dirID == 0 || number == kNoVolume) return fnfErr;
  if (foundVRefNum) *foundVRefNum = number;
  if (foundDirID) *foundDirID = dirID;
  return noErr;
}
