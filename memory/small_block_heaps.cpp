#include "memory/small_block_heaps.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <vector>

#include "KWESession.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "memory/allocation_ladder.h"
#include "memory/small_block_layout.h"

namespace kwe::memory {
namespace {

using small_heap::HeapHeader;

constexpr Size kLargestSmallBlockLimit = 32768;
constexpr UINT kHeapDamagedMessage = WM_USER + 2;

HeapHeader* g_heaps = nullptr;
// The same heaps by address, so that a block's heap is found by binary
// search rather than by walking the list.
std::vector<HeapHeader*> g_heapsByAddress;

void Unlink(HeapHeader* heap) {
  if (heap->previous)
    heap->previous->next = heap->next;
  else
    g_heaps = heap->next;
  if (heap->next) heap->next->previous = heap->previous;
  heap->next = heap->previous = nullptr;
}

void PushFront(HeapHeader* heap) {
  heap->previous = nullptr;
  heap->next = g_heaps;
  if (g_heaps) g_heaps->previous = heap;
  g_heaps = heap;
}

void MoveToFront(HeapHeader* heap) {
  if (heap == g_heaps) return;
  Unlink(heap);
  PushFront(heap);
}

void ReleasePlatformBlockOf(HeapHeader* heap) {
  HLOCAL block = LocalHandle(heap);
  Size bytes = static_cast<Size>(heap->end);
  LocalUnlock(block);
  FreePlatformBlock(block, bytes);
}

HeapHeader* NewHeap(uint32_t request) {
  uint32_t bytes = small_heap::HeapBytesFor(static_cast<uint32_t>(SmallBlockLimit()), request);
  HLOCAL block = AllocatePlatformBlock(static_cast<Size>(bytes));
  if (!block) return nullptr;
  void* base = LocalLock(block);
  if (!base) {
    FreePlatformBlock(block, static_cast<Size>(bytes));
    return nullptr;
  }
  HeapHeader* heap = small_heap::FormatHeap(base, bytes);
  try {
    g_heapsByAddress.insert(
        std::upper_bound(g_heapsByAddress.begin(), g_heapsByAddress.end(), heap), heap);
  } catch (const std::bad_alloc&) {
    ReleasePlatformBlockOf(heap);
    return nullptr;
  }
  PushFront(heap);
  return heap;
}

void FreeHeap(HeapHeader* heap) {
  Unlink(heap);
  auto at = std::lower_bound(g_heapsByAddress.begin(), g_heapsByAddress.end(), heap);
  if (at != g_heapsByAddress.end() && *at == heap) g_heapsByAddress.erase(at);
  ReleasePlatformBlockOf(heap);
}

HeapHeader* HeapHolding(const void* p) {
  auto after = std::upper_bound(g_heapsByAddress.begin(), g_heapsByAddress.end(), p,
                                [](const void* address, const HeapHeader* heap) {
                                  return std::less<const void*>()(address, heap);
                                });
  if (after == g_heapsByAddress.begin()) return nullptr;
  HeapHeader* heap = *(after - 1);
  return small_heap::HeapContains(heap, p) ? heap : nullptr;
}

void CheckFirstIfAsked() {
  if (SessionFlag(kweFlagHeapCheck)) CheckSmallBlockHeaps();
}

Ptr Allocate(uint32_t request) {
  bool damageSeen = false;
  for (HeapHeader* heap = g_heaps; heap; heap = heap->next) {
    small_heap::Allocation a = small_heap::AllocateInHeap(heap, request);
    if (a.outcome == small_heap::Outcome::Served) {
      MoveToFront(heap);
      return static_cast<Ptr>(a.pointer);
    }
    // A heap whose free list is damaged serves nothing more.
    damageSeen |= a.outcome == small_heap::Outcome::Damaged;
  }
  // Reported once the walk is over: the main window's procedure may itself
  // make or dispose of handles.
  if (damageSeen && SessionFlag(kweFlagHeapCheck)) ReportHeapDamage(0);
  HeapHeader* heap = NewHeap(request);
  if (!heap) return nullptr;
  return static_cast<Ptr>(small_heap::AllocateInHeap(heap, request).pointer);
}

// The heap that holds p when p is an intact used block there; damage is
// reported under heap checking.
HeapHeader* IntactBlockHeap(Ptr p) {
  HeapHeader* heap = HeapHolding(p);
  if (heap && small_heap::IsIntactUsedBlock(heap, p)) return heap;
  if (SessionFlag(kweFlagHeapCheck)) ReportHeapDamage(0);
  return nullptr;
}

void Release(HeapHeader* heap, Ptr p) {
  MoveToFront(heap);
  small_heap::ReleaseInHeap(heap, p);
  if (small_heap::HeapIsEmpty(heap)) FreeHeap(heap);
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

bool CheckSmallBlockHeaps() {
  for (HeapHeader* heap = g_heaps; heap; heap = heap->next) {
    if (!small_heap::CheckHeap(heap)) {
      ReportHeapDamage(0);
      return false;
    }
  }
  return true;
}

Ptr AllocateSmallBlock(Size size) {
  if (size < 0 || size >= kLargestSmallBlockLimit) return nullptr;
  CheckFirstIfAsked();
  return Allocate(static_cast<uint32_t>(size));
}

bool ReleaseSmallBlock(Ptr p) {
  CheckFirstIfAsked();
  HeapHeader* heap = IntactBlockHeap(p);
  if (!heap) return false;
  Release(heap, p);
  return true;
}

Ptr ResizeSmallBlock(Ptr p, Size size) {
  if (size < 0 || size >= kLargestSmallBlockLimit) return nullptr;
  CheckFirstIfAsked();
  HeapHeader* heap = IntactBlockHeap(p);
  if (!heap) return nullptr;
  auto request = static_cast<uint32_t>(size);
  if (small_heap::ResizeInPlace(heap, p, request)) return p;
  Ptr moved = Allocate(request);
  if (!moved) return nullptr;
  // A new heap may have come in front; the old block's heap is unchanged.
  std::memcpy(moved, p, std::min<uint32_t>(small_heap::RequestedSize(p), request));
  Release(heap, p);
  return moved;
}

void ReleaseSmallBlockHeaps() {
  while (g_heaps) FreeHeap(g_heaps);
}

}  // namespace kwe::memory
