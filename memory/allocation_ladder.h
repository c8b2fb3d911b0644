// Every platform block of the Memory Manager (handle data, pointers, master
// blocks, small-block heaps) is taken here: the memory limit is checked
// first, and a failing LocalAlloc climbs the ladder (purge, compact, ask the
// grow-zone procedure) before the request fails. Live blocks are counted so
// that the limit and KWE_ComputeMemorySize know what the library holds.
//
// LocalSize reports the size a block was asked for, so the callers, who
// know that size, pass it in rather than have every call ask Windows again.
#pragma once
#include <windows.h>

#include "MacTypes.h"

namespace kwe::memory {

// Zero-filled and movable; locked by the caller to get an address.
constexpr UINT kBlockFlags = LMEM_MOVEABLE | LMEM_ZEROINIT;

struct MemoryLimits {
  bool enabled = false;
  UInt32 limit = 0;      // bytes of live platform blocks
  UInt32 checkSize = 0;  // smaller requests are not checked
  SInt16 maxBlocks = 32767;
};

MemoryLimits& Limits();

// Null (and nothing called on the platform) when the limit refuses.
HLOCAL AllocatePlatformBlock(Size size);

// LocalReAlloc(block, newSize, flags) through the same ladder; the limit is
// checked for the growth. Null when the block stays as it was.
HLOCAL ReallocatePlatformBlock(HLOCAL block, Size oldSize, Size newSize, UINT flags);

void FreePlatformBlock(HLOCAL block, Size size);

// Sum of LocalSize over the live blocks, and their count (one per block and
// one more per whole 64 KB).
UInt32 AllocatedBytes();
UInt32 AllocatedBlockCount();

// Session start: no blocks counted, limits off.
void ResetAccounting();

}  // namespace kwe::memory
