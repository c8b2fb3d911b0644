// The library's own naming calls and FSMakeFSSpec: Toolbox names to DOS
// paths and back.
#include <windows.h>

#include <cstring>

#include "Files.h"
#include "StandardFile.h"
#include "files/call_support.h"
#include "files/dos_path.h"
#include "files/finder_info.h"
#include "files/name_conversion.h"
#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/low_memory.h"

using namespace kwe::files;

namespace {

OSErr CopyPath(OSErr err, const std::string& path, char* out) {
  std::memcpy(out, path.c_str(), path.size() + 1);
  return err;
}

bool MissingPathError(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
         error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME;
}

}  // namespace

KWE_API OSErr KWE_CALL KWE_HFSpec(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, char* path) {
  if (!path) return paramErr;
  std::string full;
  OSErr err = PathOf(dirID, vRefNum, name, &full);
  return CopyPath(err, full, path);
}

KWE_API OSErr KWE_CALL KWE_FSpec(SInt16 vRefNum, ConstStr255Param name, char* path) {
  return KWE_HFSpec(0, vRefNum, name, path);
}

KWE_API SInt32 KWE_CALL KWE_DirIDFromPath(const char* path, SInt16* vRefNum, SInt16* wdRefNum) {
  return DirectoryIDForPath(path ? path : "", vRefNum, wdRefNum);
}

KWE_API SInt16 KWE_CALL KWE_CurDirvRefNum(const char* path) {
  return MakeCurrentDirectory(path ? path : "");
}

KWE_API OSErr KWE_CALL FSMakeFSSpec(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                    FSSpec* spec) {
  if (!spec) return paramErr;
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, fileName, &path);
  if (err != noErr) return err;
  if (!fileName || fileName[0] == 0) path = WithTrailingBackslash(path);
  SplitPath parts = SplitAtLastSeparator(path);
  SInt16 volume = kNoVolume;
  SInt32 parID = DirectoryIDForPath(parts.directory, &volume, nullptr);
  spec->vRefNum = volume;
  spec->parID = parID;
  if (!AnsiNameToMac(parts.name, spec->name, 63)) return bdNamErr;
  if (QuietAttributes(path) == INVALID_FILE_ATTRIBUTES && MissingPathError(GetLastError()))
    return fnfErr;
  return noErr;
}

// The path from a common dialog as a System 6 reply. The directory becomes
// the current one (CurDirStore) and vRefNum its working-directory number.
KWE_API void KWE_CALL KWE_DosFSpec2MacSFReply(Boolean addExtension, Boolean replaceExtension,
                                              SInt16 filterIndex, Boolean setSaveDisk,
                                              Boolean remember, const char* path, SFReply* reply) {
  if (!reply) return;
  std::memset(reply, 0, sizeof *reply);
  SplitPath parts = SplitAtLastSeparator(path ? path : "");
  const KWEFileTypeEntry* filter = DialogFilter(filterIndex);
  if (addExtension && filter)
    parts.name = WithFilterExtension(parts.name, filter->extension, !replaceExtension);
  if (parts.name.empty()) return;
  reply->good = true;
  reply->vRefNum = MakeCurrentDirectory(parts.directory);
  if (setSaveDisk) {
    SInt16 volume =
        VolumeRefNumOfPath(parts.directory.empty() ? ProcessCurrentDirectory() : parts.directory);
    kwe::lowmem::At<SInt16>(kwe::lowmem::Slot::SFSaveDisk) = static_cast<SInt16>(-volume);
    kwe::lowmem::At<SInt16>(kwe::lowmem::Slot::CurrentVolume) = volume;
  }
  AnsiNameToMac(parts.name, reply->fName, 63);
  if (remember) RememberChosenFile(parts.name, filter != nullptr, filter ? filter->fileType : 0);
  reply->fType = FinderInfoFor(parts.name).fdType;
}
