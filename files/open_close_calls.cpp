// Opening and closing files: the high-level, HFS, FSSpec and parameter-block
// forms over the open-file table.
#include "Files.h"
#include "files/call_support.h"
#include "files/file_slots.h"
#include "files/transfer_rules.h"

using namespace kwe::files;

namespace {

// fsCurPerm asks for reading and writing and settles for reading when
// Windows refuses writing (a read-only file).
OSErr OpenNamed(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, SInt8 permission,
                SInt16* refNum) {
  *refNum = 0;
  UInt16 mode;
  if (!OpenModeForPermission(permission, &mode)) return paramErr;
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, name, &path);
  if (err != noErr) return err;
  SInt16 slot = OpenSlot(path.c_str(), mode, &err);
  if (slot < 0 && permission == fsCurPerm && err == permErr)
    slot = OpenSlot(path.c_str(), kOpenRead, &err);
  if (slot < 0) return err;
  *refNum = slot;
  return noErr;
}

OSErr CloseRefNum(SInt16 refNum) {
  if (refNum == 0) return fnOpnErr;
  return CloseSlot(refNum) ? OSErr(noErr) : OSErr(ioErr);
}

}  // namespace

KWE_API OSErr KWE_CALL PBOpen(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  return Finish(&io, OpenNamed(0, io.ioVRefNum, io.ioNamePtr, io.ioPermssn, &io.ioRefNum));
}

KWE_API OSErr KWE_CALL PBHOpen(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HIOParam& io = pb->ioParam;
  return Finish(&io, OpenNamed(pb->fileParam.ioDirID, io.ioVRefNum, io.ioNamePtr, io.ioPermssn,
                               &io.ioRefNum));
}

KWE_API OSErr KWE_CALL FSOpen(ConstStr255Param fileName, SInt16 vRefNum, SInt16* refNum) {
  if (!refNum) return paramErr;
  return OpenNamed(0, vRefNum, fileName, fsRdWrPerm, refNum);
}

KWE_API OSErr KWE_CALL HOpen(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                             SInt8 permission, SInt16* refNum) {
  if (!refNum) return paramErr;
  return OpenNamed(dirID, vRefNum, fileName, permission, refNum);
}

KWE_API OSErr KWE_CALL HOpenDF(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                               SInt8 permission, SInt16* refNum) {
  return HOpen(vRefNum, dirID, fileName, permission, refNum);
}

KWE_API OSErr KWE_CALL FSpOpenDF(const FSSpec* spec, SInt8 permission, SInt16* refNum) {
  if (!refNum) return paramErr;
  if (!spec) {
    *refNum = 0;
    return paramErr;
  }
  return OpenNamed(spec->parID, spec->vRefNum, spec->name, permission, refNum);
}

KWE_API OSErr KWE_CALL PBClose(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  return Finish(&pb->ioParam, CloseRefNum(pb->ioParam.ioRefNum));
}

KWE_API OSErr KWE_CALL FSClose(SInt16 refNum) { return CloseRefNum(refNum); }
