// OpenWD and its family. Working directories are never closed: a number
// stays valid for the whole session, so CloseWD has nothing to do.
#include "Files.h"
#include "files/call_support.h"
#include "files/name_conversion.h"
#include "files/volume_table.h"
#include "files/working_directories.h"

using namespace kwe::files;

namespace {

constexpr SInt32 kLibraryProcID = 0x4B574520;  // 'KWE '

bool DirectoryExists(const DirectoryRef& ref) {
  if (ref.dirID == kRootDirID) return VolumeOfDirectory(ref) != kNoVolume;
  return DirectoryByID(ref.dirID) != nullptr;
}

}  // namespace

// dirNFErr, and *wdRefNum 0, when neither dirID nor vRefNum names a directory.
KWE_API OSErr KWE_CALL OpenWD(SInt16 vRefNum, SInt32 dirID, SInt32, SInt16* wdRefNum) {
  DirectoryRef ref{dirID, vRefNum};
  bool found = dirID != 0 ? DirectoryExists(ref) : ResolveVRefNum(vRefNum, &ref);
  SInt16 number = found ? NumberOfDirectory(ref) : kNoVolume;
  if (number == kNoVolume) {
    if (wdRefNum) *wdRefNum = 0;
    return dirNFErr;
  }
  if (wdRefNum) *wdRefNum = number;
  return noErr;
}

KWE_API OSErr KWE_CALL PBOpenWD(WDPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  std::string path;
  if (PathOf(pb->ioWDDirID, pb->ioVRefNum, pb->ioNamePtr, &path) != noErr)
    return Finish(pb, dirNFErr);
  if (pb->ioNamePtr && pb->ioNamePtr[0]) {
    DWORD attributes = QuietAttributes(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY))
      return Finish(pb, dirNFErr);
  }
  SInt16 volume, number;
  SInt32 dirID = DirectoryIDForPath(path, &volume, &number);
  if (dirID == 0 || (dirID == kRootDirID && volume == kNoVolume)) return Finish(pb, dirNFErr);
  pb->ioWDDirID = dirID;
  pb->ioVRefNum = dirID == kRootDirID ? volume : number;
  return Finish(pb, noErr);
}

KWE_API OSErr KWE_CALL CloseWD(SInt16) { return noErr; }

KWE_API OSErr KWE_CALL PBCloseWD(WDPBPtr pb, Boolean) {
  return pb ? Finish(pb, noErr) : OSErr(noErr);
}

KWE_API OSErr KWE_CALL PBGetWDInfo(WDPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  DirectoryRef ref;
  if (!ResolveVRefNum(pb->ioVRefNum, &ref)) return Finish(pb, dirNFErr);
  std::string path;
  if (DirectoryPath(ref, &path) != noErr) return Finish(pb, dirNFErr);
  if (ref.dirID == kRootDirID) {
    pb->ioVRefNum = VolumeOfDirectory(ref);
    pb->ioWDVRefNum = pb->ioVRefNum;
  } else {
    pb->ioVRefNum = NumberOfDirectory(ref);
    pb->ioWDVRefNum = VolumeRefNumOfPath(path);
  }
  if (pb->ioNamePtr) AnsiNameToMac(path, pb->ioNamePtr, 255);
  pb->ioWDProcID = kLibraryProcID;
  pb->ioWDDirID = ref.dirID;
  return Finish(pb, noErr);
}

KWE_API OSErr KWE_CALL GetWDInfo(SInt16 wdRefNum, SInt16* vRefNum, SInt32* dirID, SInt32* procID) {
  WDPBRec pb{};
  pb.ioVRefNum = wdRefNum;
  OSErr err = PBGetWDInfo(&pb, false);
  if (err != noErr) return err;
  if (vRefNum) *vRefNum = pb.ioWDVRefNum;
  if (dirID) *dirID = pb.ioWDDirID;
  if (procID) *procID = pb.ioWDProcID;
  return noErr;
}
