#include "memory/small_block_heaps.h"

#include <algorithm>
#include <cstring>

#include "KWESession.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "memory/allocation_ladder.h"
#include "memory/small_block_layout.h"

namespace kwe::memory {
namespace {

using small_heap::Heap;

constexpr Size kLargestSmallBlockLimit = 32768;
constexpr UINT kHeapDamagedMessage = WM_USER + 2;

small_heap::HeapSet g_heaps;

void ReleasePlatformBlockOf(void* base, uint32_t bytes) {
  HLOCAL block = LocalHandle(base);
  LocalUnlock(block);
  FreePlatformBlock(block, static_cast<Size>(bytes));
}

// A heap's platform block comes from the allocation ladder, which may purge
// handles (and so release small blocks) or call the grow-zone procedure
// before it answers.
Heap* NewHeap(uint32_t request) {
  uint32_t bytes = small_heap::HeapBytesFor(static_cast<uint32_t>(SmallBlockLimit()), request);
  HLOCAL block = AllocatePlatformBlock(static_cast<Size>(bytes));
  if (!block) return nullptr;
  void* base = LocalLock(block);
  if (!base) {
    FreePlatformBlock(block, static_cast<Size>(bytes));
    return nullptr;
  }
  Heap* heap = g_heaps.Add(base, bytes);
  if (!heap) ReleasePlatformBlockOf(base, bytes);
  return heap;
}

void FreeHeap(Heap* heap) {
  void* base = heap->base;
  uint32_t bytes = heap->end;
  g_heaps.Remove(heap);
  ReleasePlatformBlockOf(base, bytes);
}

void CheckFirstIfAsked() {
  if (SessionFlag(kweFlagHeapCheck)) CheckSmallBlockHeaps();
}

Ptr Allocate(uint32_t request) {
  bool damageSeen = false;
  if (void* p = g_heaps.Allocate(request, &damageSeen)) return static_cast<Ptr>(p);
  // Reported once the search is over: the main window's procedure may
  // itself make or dispose of handles.
  if (damageSeen && SessionFlag(kweFlagHeapCheck)) ReportHeapDamage(0);
  Heap* heap = NewHeap(request);
  if (!heap) return nullptr;
  return static_cast<Ptr>(g_heaps.AllocateInNew(heap, request));
}

// The heap that holds p when p is an intact used block there; damage is
// reported under heap checking.
Heap* IntactBlockHeap(Ptr p) {
  Heap* heap = g_heaps.HeapHolding(p);
  if (heap && small_heap::IsIntactUsedBlock(*heap, p)) return heap;
  if (SessionFlag(kweFlagHeapCheck)) ReportHeapDamage(0);
  return nullptr;
}

void Release(Heap* heap, Ptr p) {
  g_heaps.Release(heap, p);
  if (small_heap::HeapIsEmpty(*heap)) FreeHeap(heap);
}

}  // namespace

Size SmallBlockLimit() {
  int32_t limit = ReadSystemValue(kSysValueSmallBlockLimit);
  return std::clamp<int32_t>(limit, 0, kLargestSmallBlockLimit);
}

bool WantsSmallBlock(Size size) {
  return SessionFlag(kweFlagSmallBlocks) && size >= 0 && size < SmallBlockLimit();
}

void ReportHeapDamage(LPARAM what) {
  MessageBeep(1);
  if (HWND main = TheSession().mainWindow) SendMessageA(main, kHeapDamagedMessage, 0, what);
}

// A damaged heap is withdrawn: it serves nothing more, whichever block the
// damage lies in.
bool CheckSmallBlockHeaps() {
  Heap* damaged = g_heaps.FindDamage();
  if (!damaged) return true;
  g_heaps.Withdraw(damaged);
  ReportHeapDamage(0);
  return false;
}

Ptr AllocateSmallBlock(Size size) {
  if (size < 0 || size >= kLargestSmallBlockLimit) return nullptr;
  CheckFirstIfAsked();
  return Allocate(static_cast<uint32_t>(size));
}

bool ReleaseSmallBlock(Ptr p) {
  CheckFirstIfAsked();
  Heap* heap = IntactBlockHeap(p);
  if (!heap) return false;
  Release(heap, p);
  return true;
}

Ptr ResizeSmallBlock(Ptr p, Size size) {
  if (size < 0 || size >= kLargestSmallBlockLimit) return nullptr;
  CheckFirstIfAsked();
  Heap* heap = IntactBlockHeap(p);
  if (!heap) return nullptr;
  auto request = static_cast<uint32_t>(size);
  if (g_heaps.ResizeInPlace(heap, p, request)) return p;
  Ptr moved = Allocate(request);
  if (!moved) return nullptr;
  // A new heap may have been made; the old block's heap is unchanged.
  std::memcpy(moved, p, std::min<uint32_t>(small_heap::RequestedSize(p), request));
  Release(heap, p);
  return moved;
}

void ReleaseSmallBlockHeaps() {
  g_heaps.WithdrawAll();  // so that no heap's removal lists the others again
  while (Heap* heap = g_heaps.AnyHeap()) FreeHeap(heap);
}

}  // namespace kwe::memory
