#include "memory/small_block_layout.h"

#include <algorithm>
#include <cstring>

namespace kwe::memory::small_heap {
namespace {

constexpr uint32_t kUsedHead = 0x2BF3u << 16;
constexpr uint32_t kFreeHead = 0xABF3u << 16;
constexpr uint32_t kUsedTail = 0x3B5Cu << 16;
constexpr uint32_t kFreeTail = 0xBB5Cu << 16;
constexpr uint32_t kFreeBit = 0x80000000u;
constexpr uint32_t kTagCheckMask = 0xFFFF0003u;
constexpr uint32_t kTagBytes = 8;       // head and tail
constexpr uint32_t kSplitMinimum = 16;  // a smaller rest stays with the block
constexpr uint32_t kPointerOffset = 6;  // head tag, then the 16-bit size word

// Offsets within a heap. Tags are 4-aligned, but go through memcpy anyway.
struct View {
  unsigned char* base;
  HeapHeader* header;

  explicit View(const HeapHeader* h)
      : base(reinterpret_cast<unsigned char*>(const_cast<HeapHeader*>(h))),
        header(const_cast<HeapHeader*>(h)) {}

  uint32_t Load(uint32_t offset) const {
    uint32_t value;
    std::memcpy(&value, base + offset, sizeof value);
    return value;
  }
  // Every write but a zeroing one goes through here (or StoreRequest), so
  // that the untouched mark stays behind it. The heap's last tail tag is
  // outside the untouched range and does not move the mark.
  void Store(uint32_t offset, uint32_t value) const {
    std::memcpy(base + offset, &value, sizeof value);
    Touch(offset, sizeof value);
  }
  void Touch(uint32_t offset, uint32_t bytes) const {
    if (offset + 4 != header->end) MarkWritten(offset + bytes);
  }
  void MarkWritten(uint32_t upTo) const {
    if (upTo > header->untouched) header->untouched = static_cast<uint16_t>(upTo);
  }

  uint32_t Head(uint32_t o) const { return Load(o); }
  uint32_t Tail(uint32_t o, uint32_t payload) const { return Load(o + 4 + payload); }
  void SetTags(uint32_t o, uint32_t payload, bool free) const {
    Store(o, (free ? kFreeHead : kUsedHead) | payload);
    Store(o + 4 + payload, (free ? kFreeTail : kUsedTail) | payload);
  }

  uint32_t NextFree(uint32_t o) const { return Load(o + 4); }
  uint32_t PreviousFree(uint32_t o) const { return Load(o + 8); }
  void SetLinks(uint32_t o, uint32_t next, uint32_t previous) const {
    Store(o + 4, next);
    Store(o + 8, previous);
  }
  void SetNextOf(uint32_t o, uint32_t next) const {
    if (o)
      Store(o + 4, next);
    else
      header->freeHead = next;
  }
  void SetPreviousOf(uint32_t o, uint32_t previous) const {
    if (o) Store(o + 8, previous);
  }

  void Unlink(uint32_t o) const {
    uint32_t next = NextFree(o), previous = PreviousFree(o);
    SetNextOf(previous, next);
    SetPreviousOf(next, previous);
  }
  void PushFront(uint32_t o) const {
    uint32_t next = header->freeHead;
    SetLinks(o, next, 0);
    SetPreviousOf(next, o);
    header->freeHead = o;
  }
  // The free block at from gives its place on the list to the one at to.
  // Their link words may overlap, so the old links are read first.
  void Replace(uint32_t from, uint32_t to) const {
    uint32_t next = NextFree(from), previous = PreviousFree(from);
    SetLinks(to, next, previous);
    SetNextOf(previous, to);
    SetPreviousOf(next, to);
  }

  uint32_t OffsetOf(const void* p) const {
    return static_cast<uint32_t>(static_cast<const unsigned char*>(p) - base) - kPointerOffset;
  }
  void* PointerAt(uint32_t o) const { return base + o + kPointerOffset; }

  bool FitsBlock(uint32_t o, uint32_t payload) const {
    return o >= kHeapHeaderBytes && o % 4 == 0 && payload >= kMinPayload &&
           payload <= header->usable - kTagBytes && o + kTagBytes + payload <= header->end;
  }
  // A valid tag: the magic in the high half, a multiple of 4 in the low.
  static bool TagIs(uint32_t tag, uint32_t magic) { return (tag & kTagCheckMask) == magic; }
  static uint32_t SizeOf(uint32_t tag) { return tag & 0xFFFF; }

  bool IsIntactFree(uint32_t o) const {
    if (o < kHeapHeaderBytes || o + kTagBytes + kMinPayload > header->end) return false;
    uint32_t head = Head(o), payload = SizeOf(head);
    if (!TagIs(head, kFreeHead) || !FitsBlock(o, payload)) return false;
    uint32_t tail = Tail(o, payload);
    return TagIs(tail, kFreeTail) && SizeOf(tail) == payload;
  }

  // The block behind o (payload c), when it lies inside the heap and is an
  // intact free block.
  bool NextIsFree(uint32_t o, uint32_t payload, uint32_t* next) const {
    *next = o + kTagBytes + payload;
    return *next < header->end && (Head(*next) & kFreeBit) && IsIntactFree(*next);
  }

  void NoteFree(uint32_t payload) const {
    if (payload > header->largestFree) header->largestFree = static_cast<uint16_t>(payload);
  }

  void StoreRequest(uint32_t o, uint32_t request) const {
    uint16_t word = static_cast<uint16_t>(request);
    std::memcpy(base + o + 4, &word, sizeof word);
    Touch(o + 4, sizeof word);
  }

  // Clears a payload about to be handed out, up to where the heap is
  // untouched (given as it stood before the allocation wrote anything).
  void ClearPayload(uint32_t o, uint32_t payload, uint32_t untouched) const {
    uint32_t from = o + 4, to = std::min(from + payload, std::max(from, untouched));
    std::memset(base + from, 0, to - from);
  }
};

}  // namespace

uint32_t PayloadFor(uint32_t request) { return std::max(kMinPayload, (request + 5) & ~3u); }

uint32_t HeapBytesFor(uint32_t limit, uint32_t request) {
  uint32_t preferred = static_cast<uint32_t>(std::min<uint64_t>(2ull * limit, kLargestHeapBytes));
  preferred &= ~3u;
  uint32_t needed = kHeapHeaderBytes + kTagBytes + PayloadFor(request);
  return std::max(preferred, needed);
}

HeapHeader* FormatHeap(void* base, uint32_t totalBytes) {
  auto* header = static_cast<HeapHeader*>(base);
  std::memset(base, 0, kHeapHeaderBytes);
  header->usable = totalBytes - kHeapHeaderBytes;
  header->end = totalBytes;
  header->untouched = kHeapHeaderBytes;
  View heap(header);
  heap.SetTags(kHeapHeaderBytes, header->usable - kTagBytes, true);
  heap.PushFront(kHeapHeaderBytes);
  heap.NoteFree(header->usable - kTagBytes);
  return header;
}

bool HeapContains(const HeapHeader* heap, const void* p) {
  auto* bytes = static_cast<const unsigned char*>(p);
  auto* base = reinterpret_cast<const unsigned char*>(heap);
  return bytes >= base + kHeapHeaderBytes + kPointerOffset && bytes < base + heap->end;
}

bool HeapIsEmpty(const HeapHeader* heap) {
  View view(heap);
  return heap->freeHead == kHeapHeaderBytes &&
         View::SizeOf(view.Head(kHeapHeaderBytes)) == heap->usable - kTagBytes;
}

Allocation AllocateInHeap(HeapHeader* header, uint32_t request) {
  View heap(header);
  uint32_t needed = PayloadFor(request);
  if (needed > header->largestFree) return {Outcome::NoRoom, nullptr};
  uint32_t untouched = header->untouched;
  // A list longer than the heap has room for blocks is a damaged list.
  uint32_t guard = header->usable / (kTagBytes + kMinPayload) + 1;
  uint32_t largest = 0;
  for (uint32_t o = header->freeHead; o; o = heap.NextFree(o)) {
    if (!guard-- || !heap.IsIntactFree(o)) return {Outcome::Damaged, nullptr};
    uint32_t payload = View::SizeOf(heap.Head(o));
    if (payload < needed) {
      largest = std::max(largest, payload);
      continue;
    }
    if (payload - needed < kSplitMinimum) {
      heap.Unlink(o);
    } else {
      uint32_t rest = o + kTagBytes + needed;
      heap.Replace(o, rest);
      heap.SetTags(rest, payload - needed - kTagBytes, true);
      payload = needed;
    }
    heap.SetTags(o, payload, false);
    heap.ClearPayload(o, payload, untouched);
    heap.MarkWritten(o + 4 + payload);  // the caller writes where it likes
    heap.StoreRequest(o, request);
    return {Outcome::Served, heap.PointerAt(o)};
  }
  header->largestFree = static_cast<uint16_t>(largest);
  return {Outcome::NoRoom, nullptr};
}

bool IsIntactUsedBlock(const HeapHeader* header, const void* p) {
  if (!HeapContains(header, p)) return false;
  View heap(header);
  uint32_t o = heap.OffsetOf(p);
  uint32_t head = heap.Head(o), payload = View::SizeOf(head);
  if (!View::TagIs(head, kUsedHead) || !heap.FitsBlock(o, payload)) return false;
  uint32_t tail = heap.Tail(o, payload);
  return View::TagIs(tail, kUsedTail) && View::SizeOf(tail) == payload;
}

void ReleaseInHeap(HeapHeader* header, void* p) {
  View heap(header);
  uint32_t o = heap.OffsetOf(p);
  uint32_t payload = View::SizeOf(heap.Head(o));
  uint32_t start = o, total = payload;
  if (o > kHeapHeaderBytes) {
    uint32_t previousTail = heap.Load(o - 4);
    uint32_t previousPayload = View::SizeOf(previousTail);
    if ((previousTail & kFreeBit) && o >= kHeapHeaderBytes + kTagBytes + previousPayload) {
      uint32_t previous = o - kTagBytes - previousPayload;
      if (heap.IsIntactFree(previous)) {
        heap.Unlink(previous);
        start = previous;
        total += previousPayload + kTagBytes;
      }
    }
  }
  uint32_t next;
  if (heap.NextIsFree(o, payload, &next)) {
    heap.Unlink(next);
    total += View::SizeOf(heap.Head(next)) + kTagBytes;
  }
  heap.SetTags(start, total, true);
  heap.PushFront(start);
  heap.NoteFree(total);
}

bool ResizeInPlace(HeapHeader* header, void* p, uint32_t request) {
  View heap(header);
  uint32_t o = heap.OffsetOf(p);
  uint32_t payload = View::SizeOf(heap.Head(o));
  uint32_t oldRequest = RequestedSize(p);
  uint32_t needed = PayloadFor(request);
  uint32_t next;
  bool nextFree = heap.NextIsFree(o, payload, &next);

  if (payload >= needed) {
    uint32_t surplus = payload - needed;
    if (surplus != 0 && nextFree) {
      uint32_t grown = o + kTagBytes + needed;
      uint32_t nextPayload = View::SizeOf(heap.Head(next));
      heap.Replace(next, grown);
      heap.SetTags(grown, nextPayload + surplus, true);
      heap.SetTags(o, needed, false);
      heap.NoteFree(nextPayload + surplus);
    } else if (surplus >= kSplitMinimum) {
      uint32_t rest = o + kTagBytes + needed;
      heap.SetTags(rest, surplus - kTagBytes, true);
      heap.PushFront(rest);
      heap.SetTags(o, needed, false);
      heap.NoteFree(surplus - kTagBytes);
    }
  } else {
    if (!nextFree) return false;
    uint32_t nextPayload = View::SizeOf(heap.Head(next));
    uint32_t joined = payload + kTagBytes + nextPayload;
    if (joined < needed) return false;
    // A rest under 16 bytes could not hold a free block's tags and links,
    // so it stays with the block.
    if (joined - needed < kSplitMinimum) {
      heap.Unlink(next);
      heap.SetTags(o, joined, false);
    } else {
      uint32_t rest = o + kTagBytes + needed;
      heap.Replace(next, rest);
      heap.SetTags(rest, joined - needed - kTagBytes, true);
      heap.SetTags(o, needed, false);
    }
  }
  if (request > oldRequest) {
    std::memset(static_cast<unsigned char*>(p) + oldRequest, 0, request - oldRequest);
  }
  heap.MarkWritten(o + 4 + View::SizeOf(heap.Head(o)));
  heap.StoreRequest(o, request);
  return true;
}

uint16_t RequestedSize(const void* p) {
  uint16_t word;
  std::memcpy(&word, static_cast<const unsigned char*>(p) - 2, sizeof word);
  return word;
}

bool CheckHeap(const HeapHeader* header) {
  View heap(header);
  if (header->end != kHeapHeaderBytes + header->usable) return false;
  uint32_t listed = 0;
  uint32_t guard = header->usable / (kTagBytes + kMinPayload) + 1;
  for (uint32_t o = header->freeHead; o; o = heap.NextFree(o)) {
    if (!guard-- || !heap.IsIntactFree(o)) return false;
    ++listed;
  }
  uint32_t met = 0;
  bool previousFree = false;
  uint32_t o = kHeapHeaderBytes;
  while (o < header->end) {
    if (o + kTagBytes + kMinPayload > header->end) return false;
    uint32_t head = heap.Head(o), payload = View::SizeOf(head);
    bool free = (head & kFreeBit) != 0;
    if (!View::TagIs(head, free ? kFreeHead : kUsedHead) || !heap.FitsBlock(o, payload))
      return false;
    uint32_t tail = heap.Tail(o, payload);
    if (!View::TagIs(tail, free ? kFreeTail : kUsedTail) || View::SizeOf(tail) != payload)
      return false;
    if (free && previousFree) return false;
    met += free;
    previousFree = free;
    o += kTagBytes + payload;
  }
  return o == header->end && met == listed;
}

}  // namespace kwe::memory::small_heap
