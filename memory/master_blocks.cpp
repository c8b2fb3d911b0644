#include "memory/master_blocks.h"

#include <windows.h>

#include <algorithm>

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
  MasterBlock* start = g_current;
  if (!start || !r) return nullptr;
  auto address = reinterpret_cast<uintptr_t>(r);
  MasterBlock* b = start;
  do {
    auto first = reinterpret_cast<uintptr_t>(RecordsOf(b));
    auto end = reinterpret_cast<uintptr_t>(RecordsOf(b) + b->count);
    if (address >= first && address < end) {
      return (address - first) % sizeof(MasterRecord) == 0 ? b : nullptr;
    }
    b = NextInRing(b);
  } while (b != start);
  return nullptr;
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
