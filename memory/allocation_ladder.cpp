#include "memory/allocation_ladder.h"

#include <cstdint>

#include "memory/purging.h"

namespace kwe::memory {
namespace {

MemoryLimits g_limits;
uint64_t g_allocatedBytes = 0;
uint64_t g_blockCount = 0;

uint64_t BlocksFor(SIZE_T bytes) { return 1 + (static_cast<uint64_t>(bytes) >> 16); }

void Count(SIZE_T bytes) {
  g_allocatedBytes += bytes;
  g_blockCount += BlocksFor(bytes);
}

void Uncount(SIZE_T bytes) {
  g_allocatedBytes -= bytes;
  g_blockCount -= BlocksFor(bytes);
}

// What a request of n bytes still lacks under the limit: all of it once the
// block count is at its maximum.
int64_t Shortfall(Size n) {
  if (g_blockCount >= static_cast<uint64_t>(g_limits.maxBlocks)) return n;
  int64_t room = static_cast<int64_t>(g_limits.limit) - static_cast<int64_t>(g_allocatedBytes);
  return n - room;
}

Size Clamp(int64_t bytes) { return bytes > INT32_MAX ? INT32_MAX : static_cast<Size>(bytes); }

// A Macintosh heap that is full purges, then asks the grow-zone procedure;
// the limit plays the heap's size.
bool PassesRoomCheck(Size n) {
  if (!g_limits.enabled || n < 0 || static_cast<UInt32>(n) < g_limits.checkSize) return true;
  int64_t need = Shortfall(n);
  if (need <= 0) return true;
  if (PurgePass(Clamp(need))) return true;
  SInt32 freed = 0;
  if (AskGrowZone(Clamp(need), &freed) && freed < need) return false;
  // The grow-zone procedure may have disposed of blocks: measure again.
  need = Shortfall(n);
  return need <= 0 || PurgePass(Clamp(need));
}

template <class Attempt>
HLOCAL Climb(Size size, Attempt attempt) {
  HLOCAL block = attempt();
  if (block) return block;
  PurgePass(size);
  if ((block = attempt())) return block;
  LocalCompact(static_cast<UINT>(size));
  if ((block = attempt())) return block;
  SInt32 freed = 0;
  if (AskGrowZone(size, &freed) && freed >= size) {
    PurgePass(size);
    block = attempt();
  }
  return block;
}

}  // namespace

MemoryLimits& Limits() { return g_limits; }

HLOCAL AllocatePlatformBlock(Size size) {
  if (size < 0 || !PassesRoomCheck(size)) return nullptr;
  HLOCAL block = Climb(size, [size] { return LocalAlloc(kBlockFlags, static_cast<SIZE_T>(size)); });
  if (block) Count(static_cast<SIZE_T>(size));
  return block;
}

HLOCAL ReallocatePlatformBlock(HLOCAL block, Size oldSize, Size newSize, UINT flags) {
  if (newSize < 0) return nullptr;
  int64_t growth = static_cast<int64_t>(newSize) - oldSize;
  if (growth > 0 && !PassesRoomCheck(Clamp(growth))) return nullptr;
  HLOCAL resized =
      Climb(newSize, [&] { return LocalReAlloc(block, static_cast<SIZE_T>(newSize), flags); });
  if (resized) {
    Uncount(static_cast<SIZE_T>(oldSize));
    Count(static_cast<SIZE_T>(newSize));
  }
  return resized;
}

void FreePlatformBlock(HLOCAL block, Size size) {
  if (!block) return;
  Uncount(static_cast<SIZE_T>(size));
  LocalFree(block);
}

UInt32 AllocatedBytes() {
  return g_allocatedBytes > UINT32_MAX ? UINT32_MAX : static_cast<UInt32>(g_allocatedBytes);
}

UInt32 AllocatedBlockCount() {
  return g_blockCount > UINT32_MAX ? UINT32_MAX : static_cast<UInt32>(g_blockCount);
}

void ResetAccounting() {
  g_allocatedBytes = 0;
  g_blockCount = 0;
  g_limits = MemoryLimits{};
}

}  // namespace kwe::memory
