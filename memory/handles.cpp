// Handles: NewHandle, DisposeHandle, the size calls and the state bits.
#include <windows.h>

#include "Memory.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "memory/handle_storage.h"
#include "memory/master_blocks.h"

namespace kwe::memory {
namespace {

// The resize of SetHandleSize. A negative size changes nothing, MemErr
// included.
bool Resize(Handle h, Size newSize) {
  if (newSize < 0) return false;
  OSErr error = h ? ResizeHandleData(h, newSize) : OSErr(nilHandleErr);
  lowmem::MemErr() = error;
  return error == noErr;
}

}  // namespace

Handle NewHandleOfSize(Size size) { return ::NewHandle(size); }

bool SetHandleSizeTo(Handle h, Size size) { return Resize(h, size); }

}  // namespace kwe::memory

using namespace kwe;
using namespace kwe::memory;

// Zero-filled. A size of 0 gives a handle with no data (master pointer
// 0x0000FFFF) that SetHandleSize can grow. Sets MemErr.
KWE_API Handle KWE_CALL NewHandle(Size byteCount) {
  Handle h = MakeHandle(byteCount);
  lowmem::MemErr() = h ? noErr : memFullErr;
  return h;
}

KWE_API Handle KWE_CALL NewHandleSys(Size byteCount) { return NewHandle(byteCount); }
KWE_API Handle KWE_CALL NewHandleClear(Size byteCount) { return NewHandle(byteCount); }
KWE_API Handle KWE_CALL NewHandleSysClear(Size byteCount) { return NewHandle(byteCount); }

KWE_API Handle KWE_CALL TempNewHandle(Size logicalSize, OSErr* resultCode) {
  Handle h = NewHandle(logicalSize);
  if (resultCode) *resultCode = lowmem::MemErr();
  return h;
}

KWE_API Handle KWE_CALL NewEmptyHandle(void) {
  Handle h = NewHandle(0);
  if (h) EmptyHandleData(RecordOf(h));
  return h;
}

// A handle that is no master record of the library is left alone (and
// reported under heap checking) rather than written to.
KWE_API void KWE_CALL DisposeHandle(Handle h) {
  if (!h) return;
  MasterRecord* r = RecordOf(h);
  MasterBlock* b = BlockHolding(r);
  if (!b) {
    ReleaseRecord(r);  // reports it
    return;
  }
  if (r->flags == 0) return;  // already disposed
  EmptyHandleData(r);
  ReleaseRecordIn(b, r);
}

// MemErr is the value earlier calls left: DisposeHandle does not set it.
KWE_API void KWE_CALL TempDisposeHandle(Handle h, OSErr* resultCode) {
  DisposeHandle(h);
  if (resultCode) *resultCode = lowmem::MemErr();
}

KWE_API Size KWE_CALL GetHandleSize(Handle h) {
  lowmem::MemErr() = h ? noErr : nilHandleErr;
  return h ? RecordOf(h)->size : 0;
}

KWE_API void KWE_CALL SetHandleSize(Handle h, Size newSize) { Resize(h, newSize); }

KWE_API void KWE_CALL ReallocateHandle(Handle h, Size byteCount) { Resize(h, byteCount); }

KWE_API void KWE_CALL EmptyHandle(Handle h) {
  if (h) EmptyHandleData(RecordOf(h));
}

// Every handle with data is locked; a resource handle reads 0x20 (0xA0
// with data), plus 0x40 when purgeable.
KWE_API SInt8 KWE_CALL HGetState(Handle h) {
  if (!h) return 0;
  UInt16 flags = RecordOf(h)->flags;
  UInt8 state = (flags & kLockCountMask) >= 2 ? kHandleLockedMask : 0;
  if (flags & kResourceBit) state |= kHandleResourceMask;
  if (flags & kPurgeableBit) state |= kHandlePurgeableMask;
  return static_cast<SInt8>(state);
}

KWE_API void KWE_CALL HSetState(Handle h, SInt8 state) {
  if (!h) return;
  MasterRecord* r = RecordOf(h);
  auto bits = static_cast<UInt8>(state);
  r->flags &= static_cast<UInt16>(~(kResourceBit | kPurgeableBit));
  if (bits & kHandleResourceMask) r->flags |= kResourceBit;
  if (bits & kHandlePurgeableMask) r->flags |= kPurgeableBit;
}

KWE_API void KWE_CALL HPurge(Handle h) {
  if (h) RecordOf(h)->flags |= kPurgeableBit;
}

KWE_API void KWE_CALL HNoPurge(Handle h) {
  if (h) RecordOf(h)->flags &= static_cast<UInt16>(~kPurgeableBit);
}

KWE_API void KWE_CALL HSetCBit(Handle h) {
  if (h) RecordOf(h)->flags |= kCBit;
}

KWE_API OSErr KWE_CALL MemError(void) { return lowmem::MemErr(); }
