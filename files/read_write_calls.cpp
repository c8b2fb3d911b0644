// Reading, writing, the mark and the end of file.
#include <cstdint>
#include <cstring>

#include "Files.h"
#include "files/call_support.h"
#include "files/file_slots.h"
#include "files/transfer_rules.h"

using namespace kwe::files;

namespace {

// Where SetFPos, PBRead and PBWrite put the mark. Windows lets the mark pass
// the end, so only fsFromLEOF with a positive offset answers eofErr.
OSErr SetMark(SInt16 refNum, int posMode, SInt32 offset) {
  SInt32 at;
  switch (posMode & 3) {
    case fsAtMark: return IsSlotInUse(refNum) ? OSErr(noErr) : OSErr(ioErr);
    case fsFromStart:
      at = SeekSlot(refNum, offset, 0);
      if (at < 0) return ioErr;
      return at != offset ? OSErr(eofErr) : OSErr(noErr);
    case fsFromLEOF:
      at = SeekSlot(refNum, offset, 2);
      if (at < 0) return ioErr;
      return offset > 0 ? OSErr(eofErr) : OSErr(noErr);
    default: return SeekSlot(refNum, offset, 1) < 0 ? OSErr(ioErr) : OSErr(noErr);
  }
}

SInt32 Mark(SInt16 refNum) { return SeekSlot(refNum, 0, 1); }

SInt32 EndOfFile(SInt16 refNum) {
  SInt32 mark = Mark(refNum);
  if (mark < 0) return -1;
  SInt32 end = SeekSlot(refNum, 0, 2);
  SeekSlot(refNum, mark, 0);
  return end;
}

// A mark or length for the caller; ioErr when the file gave none.
OSErr Answer(SInt32 value, SInt32* out) {
  if (!out) return paramErr;
  if (value < 0) return ioErr;
  *out = value;
  return noErr;
}

OSErr WriteError(SInt16 refNum) {
  return IsSlotInUse(refNum) && !SlotMayWrite(refNum) ? OSErr(wrPermErr) : OSErr(ioErr);
}

OSErr Read(SInt16 refNum, SInt32* count, void* buffer) {
  SInt32 want = *count;
  *count = 0;
  if (want < 0) return paramErr;
  SInt32 got = ReadSlot(refNum, buffer, want);
  if (got < 0) return ioErr;
  *count = got;
  return got < want ? OSErr(eofErr) : OSErr(noErr);
}

OSErr Write(SInt16 refNum, SInt32* count, const void* buffer) {
  SInt32 want = *count;
  if (want < 1) return noErr;
  // A handle without write access makes WriteFile fail without touching the
  // file, so the reason is only looked up then.
  SInt32 put = WriteSlot(refNum, buffer, want);
  if (put < 0) {
    *count = 0;
    return WriteError(refNum);
  }
  *count = put;
  return put < want ? OSErr(dskFulErr) : OSErr(noErr);
}

OSErr SetLength(SInt16 refNum, SInt32 length) {
  if (!IsSlotInUse(refNum)) return ioErr;
  if (!SlotMayWrite(refNum)) return wrPermErr;
  if (length < 0) return paramErr;
  SInt32 mark = Mark(refNum);
  SInt32 end = EndOfFile(refNum);
  if (mark < 0 || end < 0) return ioErr;
  OSErr err = noErr;
  if (length == 0) {
    err = EmptySlotFile(refNum);
  } else if (length < end) {
    if (SeekSlot(refNum, length, 0) < 0 || WriteSlot(refNum, nullptr, 0) < 0) err = ioErr;
  } else if (length > end) {
    static const char zero = 0;
    if (SeekSlot(refNum, length - 1, 0) < 0) return ioErr;
    SInt32 put = WriteSlot(refNum, &zero, 1);
    err = put == 1 ? OSErr(noErr) : put == 0 ? OSErr(dskFulErr) : OSErr(ioErr);
  }
  if (err == noErr || err == dskFulErr) SeekSlot(refNum, mark < length ? mark : length, 0);
  return err;
}

}  // namespace

KWE_API OSErr KWE_CALL FSRead(SInt16 refNum, SInt32* count, void* buffPtr) {
  if (!count) return paramErr;
  return Read(refNum, count, buffPtr);
}

KWE_API OSErr KWE_CALL FSWrite(SInt16 refNum, SInt32* count, const void* buffPtr) {
  if (!count) return paramErr;
  return Write(refNum, count, buffPtr);
}

KWE_API OSErr KWE_CALL PBRead(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  io.ioActCount = 0;
  PositionMode position = DecodePositionMode(io.ioPosMode);
  OSErr err = SetMark(io.ioRefNum, position.mode, io.ioPosOffset);
  if (err != noErr) return Finish(&io, err);
  SInt32 start = Mark(io.ioRefNum);
  SInt32 count = io.ioReqCount;
  err = Read(io.ioRefNum, &count, io.ioBuffer);
  if (position.newline && count > 0) {
    // The whole request was read; the mark goes back to just past the newline.
    size_t cut = NewlineCut(io.ioBuffer, static_cast<size_t>(count), position.newlineChar);
    if (cut) {
      count = static_cast<SInt32>(cut);
      SeekSlot(io.ioRefNum, start + count, 0);
      err = noErr;
    }
  }
  io.ioActCount = count;
  io.ioPosOffset += count;
  return Finish(&io, err);
}

KWE_API OSErr KWE_CALL PBWrite(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  io.ioActCount = 0;
  OSErr err = SetMark(io.ioRefNum, DecodePositionMode(io.ioPosMode).mode, io.ioPosOffset);
  if (err != noErr) return Finish(&io, err);
  SInt32 count = io.ioReqCount;
  err = Write(io.ioRefNum, &count, io.ioBuffer);
  if (io.ioReqCount < 1) count = 0;
  io.ioActCount = count;
  io.ioPosOffset += count;
  return Finish(&io, err);
}

KWE_API OSErr KWE_CALL GetFPos(SInt16 refNum, SInt32* filePos) {
  return Answer(Mark(refNum), filePos);
}

KWE_API OSErr KWE_CALL PBGetFPos(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  SInt32 mark = Mark(io.ioRefNum);
  if (mark < 0) return Finish(&io, ioErr);
  io.ioReqCount = 0;
  io.ioActCount = 0;
  io.ioPosMode = fsAtMark;
  io.ioPosOffset = mark;
  return Finish(&io, noErr);
}

KWE_API OSErr KWE_CALL SetFPos(SInt16 refNum, SInt16 posMode, SInt32 posOff) {
  return SetMark(refNum, posMode, posOff);
}

// ioPosOffset comes back as the new mark.
KWE_API OSErr KWE_CALL PBSetFPos(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  OSErr err = SetMark(io.ioRefNum, io.ioPosMode, io.ioPosOffset);
  SInt32 mark = Mark(io.ioRefNum);
  if (mark >= 0) io.ioPosOffset = mark;
  return Finish(&io, err);
}

KWE_API OSErr KWE_CALL GetEOF(SInt16 refNum, SInt32* logEOF) {
  return Answer(EndOfFile(refNum), logEOF);
}

// The length comes back in ioMisc, as on the Macintosh.
KWE_API OSErr KWE_CALL PBGetEOF(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  SInt32 end = EndOfFile(io.ioRefNum);
  if (end < 0) return Finish(&io, ioErr);
  io.ioMisc = reinterpret_cast<Ptr>(static_cast<intptr_t>(end));
  return Finish(&io, noErr);
}

KWE_API OSErr KWE_CALL SetEOF(SInt16 refNum, SInt32 logEOF) { return SetLength(refNum, logEOF); }

// The new length is taken from ioMisc.
KWE_API OSErr KWE_CALL PBSetEOF(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  IOParam& io = pb->ioParam;
  SInt32 length = static_cast<SInt32>(reinterpret_cast<intptr_t>(io.ioMisc));
  return Finish(&io, SetLength(io.ioRefNum, length));
}

KWE_API OSErr KWE_CALL Allocate(SInt16 refNum, SInt32* count) {
  if (!count) return paramErr;
  if (!IsSlotInUse(refNum)) return rfNumErr;
  if (!SlotMayWrite(refNum)) return wrPermErr;
  if (*count <= 0) return noErr;
  SInt32 mark = Mark(refNum);
  SInt32 end = EndOfFile(refNum);
  if (mark < 0 || end < 0) return ioErr;
  if (*count > 0x7FFFFFFF - end) return dskFulErr;
  OSErr err = noErr;
  if (SeekSlot(refNum, end + *count, 0) < 0 || WriteSlot(refNum, nullptr, 0) < 0) {
    DWORD error = GetLastError();
    err = error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL ? OSErr(dskFulErr)
          : error == ERROR_ACCESS_DENIED                              ? OSErr(wrPermErr)
                                                                      : OSErr(ioErr);
  }
  SeekSlot(refNum, mark, 0);
  return err;
}

// WriteFile leaves nothing in the library's hands to flush.
KWE_API OSErr KWE_CALL PBFlushFile(ParmBlkPtr pb, Boolean) {
  return pb ? Finish(&pb->ioParam, noErr) : OSErr(paramErr);
}
