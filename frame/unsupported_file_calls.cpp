// File, Device and Resource Manager calls with no DOS counterpart: resource
// forks opened as files, Finder information, file and byte-range locks, the
// catalog, the desktop database, drivers and their queues. Each call reports
// its own name (__func__ is the exported name) unless noted.
#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

namespace {
// The library's refusal; not one of the File Manager's published codes.
constexpr OSErr kRefused = -1;
constexpr OSErr kIOError = -36;  // ioErr
}  // namespace

KWE_API OSErr KWE_CALL HOpenRF(SInt16, SInt32, ConstStr255Param, SInt8, SInt16*) {
  return kwe::Unsupported("HOPENRF", kRefused);
}

KWE_API OSErr KWE_CALL PBHOpenDeny(HParmBlkPtr, Boolean) {
  return kwe::Unsupported("PBHOPENDENY", kRefused);
}

KWE_API OSErr KWE_CALL PBHOpenRF(HParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBHSetFLock(HParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBHRstFLock(HParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBLockRange(ParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBUnlockRange(ParmBlkPtr, Boolean) {
  return kwe::Unsupported("PBUnockRange", kRefused);
}

KWE_API SInt16 KWE_CALL FSpOpenResFile(const FSSpec*, SInt8) {
  return kwe::Unsupported(__func__, SInt16{-1});
}

KWE_API OSErr KWE_CALL FSpSetFInfo(const FSSpec*, const FInfo*) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBCatMove(CMovePBPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBCatSearch(CSParamPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBSetCatInfoSync(CInfoPBPtr) { return kwe::Unsupported(__func__, kRefused); }
KWE_API OSErr KWE_CALL PBDTGetPath(DTPBPtr) { return kwe::Unsupported(__func__, kRefused); }

KWE_API OSErr KWE_CALL PBDTGetAPPL(DTPBPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBDTGetAPPLSync(DTPBPtr) { return kwe::Unsupported(__func__, kRefused); }

KWE_API OSErr KWE_CALL PBDTGetIcon(DTPBPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBControl(ParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kRefused);
}

KWE_API OSErr KWE_CALL PBControlSync(ParmBlkPtr) { return kwe::Unsupported(__func__, kRefused); }

KWE_API OSErr KWE_CALL OpenRF(ConstStr255Param, SInt16, SInt16*) {
  return kwe::Unsupported(__func__, kIOError);
}

KWE_API OSErr KWE_CALL SetFInfo(ConstStr255Param, SInt16, const FInfo*) {
  return kwe::Unsupported(__func__, kIOError);
}

KWE_API OSErr KWE_CALL PBOpenRF(ParmBlkPtr, Boolean) {
  return kwe::Unsupported(__func__, kIOError);
}

KWE_API OSErr KWE_CALL PBStatus(ParmBlkPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }
KWE_API DCtlHandle KWE_CALL GetDCtlEntry(SInt16) {
  return kwe::Unsupported(__func__, DCtlHandle{});
}
KWE_API QHdrPtr KWE_CALL GetDrvQHdr(void) { return kwe::Unsupported(__func__, QHdrPtr{}); }
KWE_API QHdrPtr KWE_CALL GetVCBQHdr(void) { return kwe::Unsupported(__func__, QHdrPtr{}); }

KWE_API void KWE_CALL FSpCreateResFile(const FSSpec*, OSType, OSType, ScriptCode) {
  kwe::Unsupported(__func__);
}

KWE_API void KWE_CALL SetResourceSize(Handle, SInt32) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL ReadPartialResource(Handle, SInt32, void*, SInt32) {
  kwe::Unsupported(__func__);
}
KWE_API void KWE_CALL WritePartialResource(Handle, SInt32, const void*, SInt32) {
  kwe::Unsupported(__func__);
}
KWE_API void KWE_CALL DILoad(void) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL DIUnload(void) { kwe::Unsupported(__func__); }
