// Fixed blocks: one locked platform block each. And BlockMove.
#include <windows.h>

#include <cstdint>
#include <cstring>

#include "Memory.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "memory/allocation_ladder.h"
#include "memory/master_record.h"

namespace kwe::memory {
namespace {

Ptr AllocatePointer(Size size) {
  HLOCAL block = AllocatePlatformBlock(size);
  if (!block) return nullptr;
  // A zero-size block is discarded from birth and has no address.
  auto p = static_cast<Ptr>(LocalLock(block));
  if (!p) FreePlatformBlock(block, size);
  return p;
}

// The platform block that starts at p; null for an address that is no
// block's start.
HLOCAL BlockStartingAt(Ptr p) {
  if (!p) return nullptr;
  HLOCAL block = LocalHandle(p);
  if (!block) return nullptr;
  void* start = LocalLock(block);
  LocalUnlock(block);
  return start == p ? block : nullptr;
}

}  // namespace

Ptr NewClearedPointer(Size size) { return ::NewPtrClear(size); }

void DisposePointer(Ptr p) { ::DisposePtr(p); }

}  // namespace kwe::memory

using namespace kwe;
using namespace kwe::memory;

// Zero-filled. NewPtr(0) gets no block (a zero-size platform block has no
// address): null and memFullErr.
KWE_API Ptr KWE_CALL NewPtr(Size byteCount) {
  Ptr p = AllocatePointer(byteCount);
  lowmem::MemErr() = p ? noErr : memFullErr;
  return p;
}

KWE_API Ptr KWE_CALL NewPtrSys(Size byteCount) { return NewPtr(byteCount); }
KWE_API Ptr KWE_CALL NewPtrClear(Size byteCount) { return NewPtr(byteCount); }
KWE_API Ptr KWE_CALL NewPtrSysClear(Size byteCount) { return NewPtr(byteCount); }

KWE_API void KWE_CALL DisposePtr(Ptr p) {
  HLOCAL block = BlockStartingAt(p);
  if (!block) return;
  Size size = static_cast<Size>(LocalSize(block));
  LocalUnlock(block);
  FreePlatformBlock(block, size);
}

KWE_API Size KWE_CALL GetPtrSize(Ptr p) {
  HLOCAL block = BlockStartingAt(p);
  return block ? static_cast<Size>(LocalSize(block)) : 0;
}

// The block is locked, so LocalReAlloc without LMEM_MOVEABLE resizes it
// where it stands or not at all. An address that is no block's start
// changes nothing.
KWE_API void KWE_CALL SetPtrSize(Ptr p, Size newSize) {
  OSErr error = noErr;
  if (HLOCAL block = BlockStartingAt(p)) {
    Size oldSize = static_cast<Size>(LocalSize(block));
    HLOCAL resized =
        newSize > 0 ? ReallocatePlatformBlock(block, oldSize, newSize, LMEM_ZEROINIT) : nullptr;
    if (!resized) error = memFullErr;
  }
  lowmem::MemErr() = error;
}

// memmove is overlap-safe in either direction at any size. Addresses 0 and
// 0x0000FFFF are what an empty handle's master pointer holds.
KWE_API void KWE_CALL BlockMove(const void* srcPtr, void* destPtr, Size byteCount) {
  if (byteCount <= 0 || srcPtr == destPtr) return;
  if (!srcPtr || !destPtr || srcPtr == kNoBlock || destPtr == kNoBlock) return;
  std::memmove(destPtr, srcPtr, static_cast<size_t>(byteCount));
}
