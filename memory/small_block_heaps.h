// The small-block heaps: handle data below the small-block limit comes from
// the library's own heaps (session flag 0x00000008) instead of one platform
// block per handle. Under heap checking (flag 0x00000004) every operation
// first checks every heap and reports damage to the host's main window.
#pragma once
#include <windows.h>

#include "MacTypes.h"

namespace kwe::memory {

// System value 15 (8,192 by default), capped at 32,768 because a block's
// tags hold its size in 16 bits.
Size SmallBlockLimit();

// Flag 0x00000008 set and 0 <= size < the small-block limit.
bool WantsSmallBlock(Size size);

// size zeroed bytes, or null when no heap can serve and none can be made.
Ptr AllocateSmallBlock(Size size);

// False when the block's tags are damaged: it then stays allocated.
bool ReleaseSmallBlock(Ptr p);

// Starts reading the head and tail tags of the small block at p, which
// holds size bytes, so that a release shortly after does not wait for one
// and then the other. (A block taken whole may end a few bytes later.)
inline void PrefetchSmallBlockTags(Ptr p, Size size) {
  Size payload = size + 5 > 8 ? (size + 5) & ~3 : 8;
  __builtin_prefetch(p - 6);
  __builtin_prefetch(p - 2 + payload);
}

// The block at p resized to size bytes, moved when its neighbours leave no
// room; null when it cannot be had (the block is then unchanged).
Ptr ResizeSmallBlock(Ptr p, Size size);

// False when a heap is damaged; the damage is reported.
bool CheckSmallBlockHeaps();

// MessageBeep(1) and WM_USER + 2 to the host's main window.
void ReportHeapDamage(LPARAM what);

}  // namespace kwe::memory
