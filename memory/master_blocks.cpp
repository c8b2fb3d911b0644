#include "memory/master_blocks.h"

#include <windows.h>

#include <algorithm>
#include <functional>
#include <new>
#include <vector>

#include "KWESession.h"
#include "Memory.h"
#include "frame/session.h"
#include "memory/allocation_ladder.h"
#include "memory/small_block_heaps.h"
#include "memory/zone.h"

namespace kwe::memory {
namespace {

MasterBlock* g_first = nullptr;
MasterBlock* g_current = nullptr;
// The same blocks by address, so that DisposeHandle finds a record's block
// by binary search instead of walking the ring.
std::vector<MasterBlock*> g_byAddress;

bool Before(const MasterBlock* a, const MasterBlock* b) {
  return std::less<const MasterBlock*>()(a, b);
}

// The block whose records r lies among, when r is a record's start.
bool Holds(MasterBlock* b, const MasterRecord* r) {
  auto address = reinterpret_cast<uintptr_t>(r);
  auto first = reinterpret_cast<uintptr_t>(RecordsOf(b));
  auto end = reinterpret_cast<uintptr_t>(RecordsOf(b) + b->count);
  return address >= first && address < end;
}

MasterBlockEnd* EndOf(MasterBlock* b) {
  return reinterpret_cast<MasterBlockEnd*>(RecordsOf(b) + b->count);
}

// From the hint round to just before it; the hint is a byte, so in blocks of
// more than 256 records it only says roughly where the last record was taken.
MasterRecord* ScanBlock(MasterBlock* b) {
  MasterRecord* records = RecordsOf(b);
  int count = b->count;
  int start = b->hint < count ? b->hint : 0;
  for (int k = 0; k < count; ++k) {
    int i = start + k;
    if (i >= count) i -= count;
    if (records[i].flags == 0) {
      b->hint = static_cast<UInt8>(i + 1 >= count ? 0 : i + 1);
      return &records[i];
    }
  }
  return nullptr;
}

MasterRecord* MarkInUse(MasterRecord* r) {
  r->masterPointer = kNoBlock;
  r->platformBlock = nullptr;
  r->flags = 1;
  r->size = 0;
  return r;
}

}  // namespace

MasterBlock* CurrentMasterBlock() { return g_current; }

MasterBlock* NextInRing(const MasterBlock* b) { return b->next ? b->next : g_first; }

bool AddMasterBlock() {
  int count = std::clamp<int>(TheZone().moreMast, 1, kMaxRecordsPerBlock);
  Size bytes = static_cast<Size>(sizeof(MasterBlock) + count * sizeof(MasterRecord) +
                                 sizeof(MasterBlockEnd));
  HLOCAL platformBlock = AllocatePlatformBlock(bytes);
  if (!platformBlock) return false;
  auto* b = static_cast<MasterBlock*>(LocalLock(platformBlock));
  try {
    if (b) {
      g_byAddress.insert(std::upper_bound(g_byAddress.begin(), g_byAddress.end(), b, Before), b);
    }
  } catch (const std::bad_alloc&) {
    LocalUnlock(platformBlock);
    b = nullptr;
  }
  if (!b) {
    FreePlatformBlock(platformBlock, bytes);
    return false;
  }
  // Zero-filled: every record is free (flags 0).
  b->next = g_first;
  b->platformBlock = platformBlock;
  b->full = 0;
  b->hint = 0;
  b->count = static_cast<UInt16>(count);
  EndOf(b)->marker = -1;
  EndOf(b)->byteSize = static_cast<UInt32>(bytes);
  g_first = b;
  g_current = b;
  return true;
}

MasterRecord* TakeFreeRecord() {
  if (MasterBlock* start = g_current) {
    MasterBlock* b = start;
    do {
      if (!b->full) {
        if (MasterRecord* r = ScanBlock(b)) {
          g_current = b;
          return MarkInUse(r);
        }
        b->full = 1;
      }
      b = NextInRing(b);
    } while (b != start);
  }
  if (!AddMasterBlock()) return nullptr;
  g_current->hint = g_current->count > 1 ? 1 : 0;
  return MarkInUse(RecordsOf(g_current));
}

MasterBlock* BlockHolding(const MasterRecord* r) {
  if (!g_current || !r) return nullptr;
  MasterBlock* b = g_current;
  if (!Holds(b, r)) {
    // The last block starting below r is the only one that can hold it;
    // found without branching on the comparisons, which a program's
    // disposals in no particular order make unpredictable.
    size_t n = g_byAddress.size(), low = 0;
    auto address = reinterpret_cast<uintptr_t>(r);
    MasterBlock* const* blocks = g_byAddress.data();
    while (n > 1) {
      size_t half = n / 2;
      low = reinterpret_cast<uintptr_t>(blocks[low + half]) <= address ? low + half : low;
      n -= half;
    }
    b = blocks[low];
    if (!Holds(b, r)) return nullptr;
  }
  auto offset = reinterpret_cast<uintptr_t>(r) - reinterpret_cast<uintptr_t>(RecordsOf(b));
  return offset % sizeof(MasterRecord) == 0 ? b : nullptr;
}

void ReleaseRecord(MasterRecord* r) {
  MasterBlock* b = BlockHolding(r);
  if (!b) {
    if (SessionFlag(kweFlagHeapCheck)) ReportHeapDamage(reinterpret_cast<LPARAM>(r));
    return;
  }
  ReleaseRecordIn(b, r);
}

void ReleaseRecordIn(MasterBlock* b, MasterRecord* r) {
  r->masterPointer = kNoBlock;
  r->platformBlock = nullptr;
  r->flags = 0;
  r->size = 0;
  // The next search starts at the record just freed, so that a program
  // that disposes and makes handles in turn finds one at the first look.
  g_current = b;
  b->full = 0;
  b->hint = static_cast<UInt8>(r - RecordsOf(b));
}

void ReleaseAllMasterBlocks() {
  MasterBlock* b = g_first;
  g_first = nullptr;
  g_current = nullptr;
  g_byAddress.clear();
  while (b) {
    MasterBlock* next = b->next;
    HLOCAL platformBlock = b->platformBlock;
    Size bytes = static_cast<Size>(EndOf(b)->byteSize);
    LocalUnlock(platformBlock);
    FreePlatformBlock(platformBlock, bytes);
    b = next;
  }
}

}  // namespace kwe::memory

using namespace kwe::memory;

// MemErr is left as it was.
KWE_API Handle KWE_CALL RecoverHandle(Ptr p) {
  MasterBlock* start = CurrentMasterBlock();
  if (!start || !p || p == kNoBlock) return nullptr;
  MasterBlock* b = start;
  do {
    MasterRecord* records = RecordsOf(b);
    for (int i = 0; i < b->count; ++i) {
      if (records[i].flags != 0 && records[i].masterPointer == p) return HandleOf(&records[i]);
    }
    b = NextInRing(b);
  } while (b != start);
  return nullptr;
}

KWE_API void KWE_CALL MoreMasters(void) {
  for (int n = TheZone().moreMast; n > 0; n -= kMaxRecordsPerBlock) {
    if (!AddMasterBlock()) break;
  }
}
