// The default volume: the process's current directory. GetVol reads it,
// SetVol changes it (and with it Windows' current drive and directory).
#include <windows.h>

#include "Files.h"
#include "files/call_support.h"
#include "files/dos_path.h"
#include "files/name_conversion.h"
#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/low_memory.h"

using namespace kwe::files;

namespace {

// Windows' current drive, then its current directory, become the directory.
OSErr MakeDefaultDirectory(const DirectoryRef& ref) {
  std::string path;
  if (DirectoryPath(ref, &path) != noErr) return nsvErr;
  if (path.size() > 3) path.pop_back();
  if (path.size() >= 2 && path[1] == ':') {
    char drive[3] = {path[0], ':', 0};
    SetCurrentDirectoryA(drive);
  }
  if (!SetCurrentDirectoryA(path.c_str())) return dirNFErr;
  kwe::lowmem::At<SInt32>(kwe::lowmem::Slot::CurDirStore) = ref.dirID;
  return noErr;
}

// The directory a path names, its record made when new; false for none.
bool DirectoryOfPath(const std::string& path, DirectoryRef* ref) {
  SInt16 volume, number;
  SInt32 dirID = DirectoryIDForPath(path, &volume, &number);
  if (dirID == 0) return false;
  *ref = {dirID, dirID == kRootDirID ? volume : number};
  return true;
}

}  // namespace

// No current directory the volume table knows: an empty name, ioVRefNum
// 0xEEEE and nsvErr.
KWE_API OSErr KWE_CALL PBGetVol(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  SInt16 current = MakeCurrentDirectory(std::string());
  std::string root;
  if (IsVolumeRefNum(current)) {
    if (!VolumeRoot(current, &root)) current = kNoVolume;
  } else if (const WorkingDirectory* wd = DirectoryByNumber(current)) {
    root = VolumeOfDosPath(wd->path).root;
  } else {
    current = kNoVolume;
  }
  io.ioVRefNum = current;
  if (io.ioNamePtr) AnsiNameToMac(current == kNoVolume ? "" : root, io.ioNamePtr, 255);
  return Finish(&io, current == kNoVolume ? OSErr(nsvErr) : OSErr(noErr));
}

KWE_API OSErr KWE_CALL GetVol(StringPtr volName, SInt16* vRefNum) {
  ParamBlockRec pb{};
  pb.ioParam.ioNamePtr = volName;
  OSErr err = PBGetVol(&pb, false);
  if (vRefNum) *vRefNum = pb.ioParam.ioVRefNum;
  return err;
}

// The current directory as PBGetWDInfo reports it, with the name cut to the
// drive root's 3 characters.
KWE_API OSErr KWE_CALL PBHGetVol(WDPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  pb->ioVRefNum = 0;
  OSErr err = PBGetWDInfo(pb, false);
  if (err == noErr && pb->ioNamePtr && pb->ioNamePtr[0] > 3) pb->ioNamePtr[0] = 3;
  return Finish(pb, err);
}

KWE_API OSErr KWE_CALL HGetVol(StringPtr volName, SInt16* vRefNum, SInt32* dirID) {
  WDPBRec pb{};
  pb.ioNamePtr = volName;
  OSErr err = PBHGetVol(&pb, false);
  if (err != noErr) return err;
  if (vRefNum) *vRefNum = pb.ioVRefNum;
  if (dirID) *dirID = pb.ioWDDirID;
  return noErr;
}

// Names are drive names ("C:" or "C:\", at most 3 characters) or, with
// vRefNum 0, a directory path without other colons.
KWE_API OSErr KWE_CALL SetVol(ConstStr255Param volName, SInt16 vRefNum) {
  std::string name = MacNameToAnsi(volName);
  if (name.size() > 3 || (name.size() >= 2 && name[1] != ':') ||
      (name.size() == 3 && name[2] != '\\'))
    return nsvErr;
  DirectoryRef ref;
  if (vRefNum != 0) {
    if (!ResolveVRefNum(vRefNum, &ref)) return nsvErr;
  } else if (name.empty()) {
    if (!ResolveVRefNum(0, &ref)) return nsvErr;
  } else if (name.find(':') == std::string::npos || name[1] == ':') {
    if (!DirectoryOfPath(name, &ref)) return nsvErr;
  } else {
    return nsvErr;
  }
  return MakeDefaultDirectory(ref);
}

KWE_API OSErr KWE_CALL PBSetVol(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  return Finish(&pb->ioParam, SetVol(pb->ioParam.ioNamePtr, pb->ioParam.ioVRefNum));
}

// The directory of ioWDDirID, or of ioVRefNum and the path in ioNamePtr.
KWE_API OSErr KWE_CALL PBHSetVol(WDPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  std::string path;
  DirectoryRef ref;
  if (PathOf(pb->ioWDDirID, pb->ioVRefNum, pb->ioNamePtr, &path) != noErr ||
      !DirectoryOfPath(path, &ref))
    return Finish(pb, nsvErr);
  return Finish(pb, MakeDefaultDirectory(ref));
}

KWE_API OSErr KWE_CALL HSetVol(ConstStr255Param volName, SInt16 vRefNum, SInt32 dirID) {
  WDPBRec pb{};
  pb.ioNamePtr = const_cast<StringPtr>(volName);
  pb.ioVRefNum = vRefNum;
  pb.ioWDDirID = dirID;
  return PBHSetVol(&pb, false);
}
