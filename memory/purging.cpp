#include "memory/purging.h"

#include <cstdint>

#include "memory/handle_storage.h"
#include "memory/master_blocks.h"

namespace kwe::memory {
namespace {

// Handles being resized, innermost last. A grow-zone procedure may resize
// other handles while one is in flight, so a few levels are kept.
constexpr int kMaxPinned = 8;
Handle g_pinned[kMaxPinned];
int g_pinnedCount = 0;

bool IsPinned(const MasterRecord* r) {
  for (int i = 0; i < g_pinnedCount; ++i) {
    if (RecordOf(g_pinned[i]) == r) return true;
  }
  return false;
}

}  // namespace

PinnedHandle::PinnedHandle(Handle h) : pinned_(g_pinnedCount < kMaxPinned) {
  if (pinned_) g_pinned[g_pinnedCount++] = h;
}

PinnedHandle::~PinnedHandle() {
  if (pinned_) --g_pinnedCount;
}

bool PurgePass(Size needed) {
  MasterBlock* start = CurrentMasterBlock();
  if (!start) return false;
  int64_t freed = 0;
  MasterBlock* b = start;
  do {
    MasterRecord* records = RecordsOf(b);
    for (int i = 0; i < b->count; ++i) {
      MasterRecord* r = &records[i];
      if (!(r->flags & kPurgeableBit) || IsPinned(r)) continue;
      // Bytes of a small block go back to its heap, not to the platform.
      if (!(r->flags & kSmallBlockBit) && r->size > 0) freed += r->size;
      EmptyHandleData(r);
      if (freed >= needed) return true;
    }
    b = NextInRing(b);
  } while (b != start);
  return false;
}

}  // namespace kwe::memory
