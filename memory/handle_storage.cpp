#include "memory/handle_storage.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "memory/allocation_ladder.h"
#include "memory/master_blocks.h"
#include "memory/master_flags.h"
#include "memory/purging.h"
#include "memory/small_block_heaps.h"

namespace kwe::memory {
namespace {

ResourceDetachProcedure g_detachResource = nullptr;

// Lock count 1 on a platform block: the block itself is unlocked.
bool IsUnlockedPlatformBlock(const MasterRecord* r) {
  return (r->flags & (kSmallBlockBit | kLockCountMask)) == 1;
}

void SetLockCount(MasterRecord* r, int count) {
  r->flags = static_cast<UInt16>((r->flags & ~kLockCountMask) | count);
}

// Small block to small block, or out to a platform block once newSize
// reaches the small-block limit.
OSErr ResizeSmallData(MasterRecord* r, Size newSize) {
  if (newSize < SmallBlockLimit()) {
    Ptr moved = ResizeSmallBlock(r->masterPointer, newSize);
    if (!moved) return newSize != 0 ? memFullErr : noErr;
    r->masterPointer = moved;
    r->size = newSize;
    return noErr;
  }
  HLOCAL block = AllocatePlatformBlock(newSize);
  if (!block) return memFullErr;
  Ptr data = static_cast<Ptr>(LocalLock(block));
  Ptr old = r->masterPointer;
  std::memcpy(data, old, static_cast<size_t>(std::min(r->size, newSize)));
  ReleaseSmallBlock(old);
  r->flags &= static_cast<UInt16>(~kSmallBlockBit);
  if (LockCount(r) < 2) SetLockCount(r, 2);
  r->platformBlock = block;
  r->masterPointer = data;
  r->size = newSize;
  return noErr;
}

OSErr MovePlatformDataToSmallBlock(MasterRecord* r, Size newSize) {
  Ptr data = AllocateSmallBlock(newSize);
  if (!data) return memFullErr;
  bool locked = LockCount(r) >= 2;
  if (locked) {
    std::memcpy(data, r->masterPointer, static_cast<size_t>(std::min(r->size, newSize)));
    LocalUnlock(r->platformBlock);
  }
  FreePlatformBlock(r->platformBlock, r->size);
  r->platformBlock = kSmallBlockMarker;
  r->masterPointer = data;
  r->flags |= kSmallBlockBit;
  SetLockCount(r, 2);
  r->size = newSize;
  return noErr;
}

// LocalReAlloc with moving allowed. Resizing to 0 discards the block: the
// handle keeps it, unlocked, with no master pointer.
OSErr ResizePlatformData(MasterRecord* r, Size newSize) {
  Ptr oldPointer = r->masterPointer;
  bool wasLocked = LockCount(r) >= 2;
  if (wasLocked) UnlockHandle(r);
  HLOCAL resized = ReallocatePlatformBlock(r->platformBlock, r->size, newSize, kBlockFlags);
  if (!resized) {
    if (wasLocked)
      LockHandle(r);
    else
      r->masterPointer = oldPointer;
    return memFullErr;
  }
  r->platformBlock = resized;
  r->masterPointer = kNoBlock;
  r->size = newSize;
  if (newSize == 0) {
    SetLockCount(r, 1);
    return noErr;
  }
  if (LockCount(r) >= 2)
    r->masterPointer = static_cast<Ptr>(LocalLock(resized));
  else
    LockHandle(r);
  return noErr;
}

}  // namespace

void SetResourceDetachProcedure(ResourceDetachProcedure procedure) { g_detachResource = procedure; }

void LockHandle(MasterRecord* r) {
  if (IsUnlockedPlatformBlock(r)) r->masterPointer = static_cast<Ptr>(LocalLock(r->platformBlock));
  ++r->flags;
}

void UnlockHandle(MasterRecord* r) {
  if (LockCount(r) <= 1) return;
  --r->flags;
  if (IsUnlockedPlatformBlock(r)) {
    LocalUnlock(r->platformBlock);
    r->masterPointer = kNoBlock;
  }
}

bool GiveStorage(MasterRecord* r, Size size) {
  if (WantsSmallBlock(size)) {
    if (Ptr data = AllocateSmallBlock(size)) {
      r->masterPointer = data;
      r->platformBlock = kSmallBlockMarker;
      r->flags |= kSmallBlockBit;
      LockHandle(r);
      return true;
    }
  }
  HLOCAL block = AllocatePlatformBlock(size);
  if (!block) return false;
  r->platformBlock = block;
  r->masterPointer = kNoBlock;
  LockHandle(r);
  return true;
}

Handle MakeHandle(Size size) {
  MasterRecord* r = size >= 0 ? TakeFreeRecord() : nullptr;
  if (!r) return nullptr;
  r->size = size;
  if (size > 0 && !GiveStorage(r, size)) {
    ReleaseRecord(r);
    return nullptr;
  }
  return HandleOf(r);
}

void EmptyHandleData(MasterRecord* r) {
  if (r->flags & kSmallBlockBit) PrefetchSmallBlockTags(r->masterPointer, r->size);
  if (r->platformBlock) {
    while (LockCount(r) > 1) UnlockHandle(r);
    if ((r->flags & kResourceBit) && g_detachResource) g_detachResource(HandleOf(r));
    if (r->flags & kSmallBlockBit) {
      ReleaseSmallBlock(r->masterPointer);
      r->flags &= static_cast<UInt16>(~kSmallBlockBit);
    } else {
      FreePlatformBlock(r->platformBlock, r->size);
    }
    r->platformBlock = nullptr;
  }
  r->masterPointer = nullptr;
  r->size = 0;
}

OSErr ResizeHandleData(Handle h, Size newSize) {
  MasterRecord* r = RecordOf(h);
  if (newSize == r->size) return noErr;
  PinnedHandle pin(h);
  if (!r->platformBlock) {
    if (!GiveStorage(r, newSize)) return memFullErr;
    r->size = newSize;
    return noErr;
  }
  if (r->flags & kSmallBlockBit) return ResizeSmallData(r, newSize);
  if (WantsSmallBlock(newSize)) return MovePlatformDataToSmallBlock(r, newSize);
  return ResizePlatformData(r, newSize);
}

}  // namespace kwe::memory
