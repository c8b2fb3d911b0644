#include "memory/small_block_layout.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "memory/zero_bytes.h"

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
constexpr uint32_t kExactClassLimit = 256;
constexpr int kClassWords = kSizeClasses / 64;

// A link: the heap's slot above the block's offset / 4 (14 bits: offsets
// stay below 65,280). Blocks start at offset 32 or later, so 0 is no block.
constexpr uint32_t kOffsetBits = 14;
constexpr uint32_t kMaxSlots = 1u << (32 - kOffsetBits);

uint32_t LinkTo(const Heap& heap, uint32_t o) { return heap.slot << kOffsetBits | o >> 2; }
uint32_t SlotOf(uint32_t link) { return link >> kOffsetBits; }
uint32_t OffsetOf(uint32_t link) { return (link & ((1u << kOffsetBits) - 1)) << 2; }

int HighestBit(uint32_t x) { return 31 - __builtin_clz(x); }

// The class a free block of this payload is kept in. Both answers are
// worked out and one picked, since payloads on either side of 256 bytes
// come in no predictable order.
int ClassOf(uint32_t payload) {
  int power = HighestBit(payload | kExactClassLimit);  // 8 to 15
  int shared = 8 * power - 8 + static_cast<int>(payload >> (power - 3));
  int exact = static_cast<int>(payload >> 2);
  return payload < kExactClassLimit ? exact : shared;
}

// The smallest class all of whose blocks hold this payload; kSizeClasses
// when there is none.
int FittingClassOf(uint32_t payload) {
  uint32_t step = 1u << (HighestBit(payload | kExactClassLimit) - 3);
  uint32_t partial = payload < kExactClassLimit ? 0 : payload & (step - 1);
  return ClassOf(payload) + (partial ? 1 : 0);
}

// The first class at or above from whose bit is set; -1 when none is.
int FirstHeld(const uint64_t* bits, int from) {
  for (int word = from >> 6; word < kClassWords; ++word) {
    uint64_t held = bits[word];
    if (word == from >> 6) held &= ~0ull << (from & 63);
    if (held) return word * 64 + __builtin_ctzll(held);
  }
  return -1;
}

void SetBit(uint64_t* bits, int i, bool on) {
  uint64_t mask = 1ull << (i & 63);
  if (on)
    bits[i >> 6] |= mask;
  else
    bits[i >> 6] &= ~mask;
}

uint32_t LoadAt(const unsigned char* p) {
  uint32_t value;
  std::memcpy(&value, p, sizeof value);
  return value;
}

void StoreAt(unsigned char* p, uint32_t value) { std::memcpy(p, &value, sizeof value); }

// A valid tag: the magic in the high half, a multiple of 4 in the low.
bool TagIs(uint32_t tag, uint32_t magic) { return (tag & kTagCheckMask) == magic; }
uint32_t SizeOf(uint32_t tag) { return tag & 0xFFFF; }

bool FitsBlock(const Heap& heap, uint32_t o, uint32_t payload) {
  return o >= kHeapHeaderBytes && o % 4 == 0 && payload >= kMinPayload &&
         payload <= heap.usable - kTagBytes && o + kTagBytes + payload <= heap.end;
}

}  // namespace

// One heap's blocks, with the set's class lists at hand. Tags are 4-aligned
// but go through memcpy anyway.
struct View {
  HeapSet& set;
  Heap& heap;
  unsigned char* base;

  View(const HeapSet& s, const Heap& h)
      : set(const_cast<HeapSet&>(s)), heap(const_cast<Heap&>(h)), base(h.base) {}

  uint32_t Load(uint32_t offset) const { return LoadAt(base + offset); }
  void Store(uint32_t offset, uint32_t value) const { StoreAt(base + offset, value); }

  // Whatever lies below the mark may have been written. A block's tail tag
  // is either the heap's last one, which lies outside the untouched range,
  // or was marked when its block was made.
  void MarkWritten(uint32_t upTo) const {
    if (upTo > heap.untouched) heap.untouched = upTo;
  }

  uint32_t Head(uint32_t o) const { return Load(o); }
  uint32_t Tail(uint32_t o, uint32_t payload) const { return Load(o + 4 + payload); }
  void SetTags(uint32_t o, uint32_t payload, bool free) const {
    Store(o, (free ? kFreeHead : kUsedHead) | payload);
    Store(o + 4 + payload, (free ? kFreeTail : kUsedTail) | payload);
  }

  uint32_t NextFree(uint32_t o) const { return Load(o + 4); }
  uint32_t PreviousFree(uint32_t o) const { return Load(o + 8); }

  // A free block goes to the front of its class's list. A withdrawn heap's
  // blocks stay off the lists.
  void Push(uint32_t o, uint32_t payload) const {
    MarkWritten(o + 12);
    if (heap.withdrawn) return;
    int c = ClassOf(payload);
    uint32_t next = set.firstFree_[c];
    Store(o + 4, next);
    Store(o + 8, 0);
    set.firstFree_[c] = LinkTo(heap, o);
    if (next)
      StoreAt(set.BlockAt(next) + 8, set.firstFree_[c]);
    else
      SetBit(set.classesHeld_, c, true);
    ++heap.freeBlocks;
  }
  void Unlink(uint32_t o, uint32_t payload) const {
    if (heap.withdrawn) return;
    int c = ClassOf(payload);
    uint32_t next = NextFree(o), previous = PreviousFree(o);
    if (previous)
      StoreAt(set.BlockAt(previous) + 4, next);
    else
      set.firstFree_[c] = next;
    if (next) StoreAt(set.BlockAt(next) + 8, previous);
    if (!set.firstFree_[c]) SetBit(set.classesHeld_, c, false);
    --heap.freeBlocks;
  }
  void PlaceFree(uint32_t o, uint32_t payload) const {
    SetTags(o, payload, true);
    Push(o, payload);
  }

  uint32_t OffsetOfPointer(const void* p) const {
    return static_cast<uint32_t>(static_cast<const unsigned char*>(p) - base) - kPointerOffset;
  }
  void* PointerAt(uint32_t o) const { return base + o + kPointerOffset; }

  // Intact tags and, on the lists, links to blocks of live heaps, so that
  // taking the block off its list writes nowhere outside the heaps. (A link
  // overwritten with another plausible address passes; checking that the
  // linked blocks name this one back would cost two more cache misses on
  // every release and request, so that is left to the heap check.)
  bool IsIntactFree(uint32_t o) const {
    if (o < kHeapHeaderBytes || o + kTagBytes + kMinPayload > heap.end) return false;
    uint32_t head = Head(o), payload = SizeOf(head);
    if (!TagIs(head, kFreeHead) || !FitsBlock(heap, o, payload)) return false;
    uint32_t tail = Tail(o, payload);
    if (!TagIs(tail, kFreeTail) || SizeOf(tail) != payload) return false;
    return heap.withdrawn || (set.IsLink(NextFree(o)) && set.IsLink(PreviousFree(o)));
  }

  // The block behind o (payload c), when it lies inside the heap and is an
  // intact free block.
  bool NextIsFree(uint32_t o, uint32_t payload, uint32_t* next) const {
    *next = o + kTagBytes + payload;
    return *next < heap.end && (Head(*next) & kFreeBit) && IsIntactFree(*next);
  }

  void StoreRequest(uint32_t o, uint32_t request) const {
    uint16_t word = static_cast<uint16_t>(request);
    std::memcpy(base + o + 4, &word, sizeof word);
  }

  // Hands out the free block at o (intact, on its list, payload at least
  // PayloadFor(request)), splitting off the rest when it can stand as a
  // block. Only what lies below the untouched mark needs clearing.
  void* Carve(uint32_t o, uint32_t payload, uint32_t request) const {
    uint32_t needed = PayloadFor(request);
    uint32_t untouched = heap.untouched;
    Unlink(o, payload);
    if (payload - needed >= kSplitMinimum) {
      PlaceFree(o + kTagBytes + needed, payload - needed - kTagBytes);
      payload = needed;
    }
    SetTags(o, payload, false);
    uint32_t from = o + 4, to = std::min(from + payload, std::max(from, untouched));
    ZeroBytes(base + from, to - from);
    MarkWritten(o + kTagBytes + payload);  // the caller writes where it likes
    StoreRequest(o, request);
    return PointerAt(o);
  }
};

namespace {

enum class Outcome { Served, NoRoom, Damaged };

struct Allocation {
  Outcome outcome;
  void* pointer;
};

}  // namespace

uint32_t PayloadFor(uint32_t request) { return std::max(kMinPayload, (request + 5) & ~3u); }

uint32_t HeapBytesFor(uint32_t limit, uint32_t request) {
  uint32_t preferred = static_cast<uint32_t>(std::min<uint64_t>(2ull * limit, kLargestHeapBytes));
  preferred &= ~3u;
  uint32_t needed = kHeapHeaderBytes + kTagBytes + PayloadFor(request);
  return std::max(preferred, needed);
}

bool HeapContains(const Heap& heap, const void* p) {
  auto* bytes = static_cast<const unsigned char*>(p);
  return bytes >= heap.base + kHeapHeaderBytes + kPointerOffset && bytes < heap.base + heap.end;
}

bool HeapIsEmpty(const Heap& heap) {
  return LoadAt(heap.base + kHeapHeaderBytes) == (kFreeHead | (heap.usable - kTagBytes));
}

bool IsIntactUsedBlock(const Heap& heap, const void* p) {
  if (!HeapContains(heap, p)) return false;
  uint32_t o =
      static_cast<uint32_t>(static_cast<const unsigned char*>(p) - heap.base) - kPointerOffset;
  uint32_t head = LoadAt(heap.base + o), payload = SizeOf(head);
  if (!TagIs(head, kUsedHead) || !FitsBlock(heap, o, payload)) return false;
  uint32_t tail = LoadAt(heap.base + o + 4 + payload);
  return TagIs(tail, kUsedTail) && SizeOf(tail) == payload;
}

uint16_t RequestedSize(const void* p) {
  uint16_t word;
  std::memcpy(&word, static_cast<const unsigned char*>(p) - 2, sizeof word);
  return word;
}

// --- The set. ---

HeapSet::HeapSet() = default;

HeapSet::~HeapSet() {
  for (const Slot& entry : bySlot_) delete entry.heap;
  for (Heap* heap : spareRecords_) delete heap;
}

bool HeapSet::IsLink(uint32_t link) const {
  if (!link) return true;
  uint32_t slot = SlotOf(link), o = OffsetOf(link);
  if (slot >= bySlot_.size() || !bySlot_[slot].heap) return false;
  const Heap& heap = *bySlot_[slot].heap;
  return !heap.withdrawn && o >= kHeapHeaderBytes && o + kTagBytes + kMinPayload <= heap.end;
}

Heap* HeapSet::HeapOf(uint32_t link) const { return bySlot_[SlotOf(link)].heap; }

unsigned char* HeapSet::BlockAt(uint32_t link) const {
  return bySlot_[SlotOf(link)].base + OffsetOf(link);
}

Heap* HeapSet::AnyHeap() const {
  for (const Slot& entry : bySlot_) {
    if (entry.heap) return entry.heap;
  }
  return nullptr;
}

size_t HeapSet::Home(uintptr_t number) const {
  return static_cast<size_t>((static_cast<uint64_t>(number) * 0x9E3779B97F4A7C15ull) >>
                             (64 - stretchBits_));
}

namespace {

uintptr_t FirstStretch(const void* base, unsigned shift) {
  return reinterpret_cast<uintptr_t>(base) >> shift;
}
uintptr_t LastStretch(const void* base, uint32_t bytes, unsigned shift) {
  return (reinterpret_cast<uintptr_t>(base) + bytes - 1) >> shift;
}

}  // namespace

// Room for more entries at most half filling the table; the table is made
// again, twice as long, when they would not fit.
bool HeapSet::MakeRoomForStretches(size_t more) {
  if ((stretchesUsed_ + more) * 2 <= stretches_.size()) return true;
  unsigned bits = std::max(stretchBits_, 5u);
  while ((size_t{1} << bits) < (stretchesUsed_ + more) * 2) ++bits;
  std::vector<Stretch> old;
  try {
    old.assign(size_t{1} << bits, Stretch{0, nullptr});
  } catch (const std::bad_alloc&) {
    return false;
  }
  old.swap(stretches_);
  stretchBits_ = bits;
  size_t mask = stretches_.size() - 1;
  for (const Stretch& entry : old) {
    if (!entry.heap) continue;
    size_t i = Home(entry.number);
    while (stretches_[i].heap) i = (i + 1) & mask;
    stretches_[i] = entry;
  }
  return true;
}

void HeapSet::AddStretches(Heap* heap) {
  size_t mask = stretches_.size() - 1;
  uintptr_t last = LastStretch(heap->base, heap->end, kStretchShift);
  for (uintptr_t n = FirstStretch(heap->base, kStretchShift); n <= last; ++n) {
    size_t i = Home(n);
    while (stretches_[i].heap) i = (i + 1) & mask;
    stretches_[i] = Stretch{n, heap};
    ++stretchesUsed_;
  }
}

// Each entry is taken out by moving later entries of its run back, so that
// no run is broken and no marker of a removed entry is needed.
void HeapSet::RemoveStretches(const Heap* heap) {
  size_t mask = stretches_.size() - 1;
  uintptr_t last = LastStretch(heap->base, heap->end, kStretchShift);
  for (uintptr_t n = FirstStretch(heap->base, kStretchShift); n <= last; ++n) {
    size_t i = Home(n);
    while (stretches_[i].heap != heap || stretches_[i].number != n) i = (i + 1) & mask;
    for (size_t j = i;;) {
      j = (j + 1) & mask;
      if (!stretches_[j].heap) break;
      size_t home = Home(stretches_[j].number);
      bool staysPut = i <= j ? (i < home && home <= j) : (i < home || home <= j);
      if (staysPut) continue;
      stretches_[i] = stretches_[j];
      i = j;
    }
    stretches_[i] = Stretch{0, nullptr};
    --stretchesUsed_;
  }
}

Heap* HeapSet::Add(void* base, uint32_t totalBytes) {
  if (freeSlots_.empty() && bySlot_.size() >= kMaxSlots) return nullptr;
  // Heaps come and go with their blocks; their records are kept for the
  // next heap rather than given back to the C++ heap each time.
  Heap* heap = nullptr;
  if (!spareRecords_.empty()) {
    heap = spareRecords_.back();
    spareRecords_.pop_back();
    *heap = Heap{};
  } else {
    heap = new (std::nothrow) Heap;
    if (!heap) return nullptr;
    ++records_;
  }
  // Room first, so that nothing below can fail half done.
  size_t stretches =
      LastStretch(base, totalBytes, kStretchShift) - FirstStretch(base, kStretchShift) + 1;
  try {
    bySlot_.reserve(bySlot_.size() + 1);
    freeSlots_.reserve(bySlot_.size() + 1);
    spareRecords_.reserve(records_);
  } catch (const std::bad_alloc&) {
    --records_;
    delete heap;
    return nullptr;
  }
  if (!MakeRoomForStretches(stretches)) {
    spareRecords_.push_back(heap);  // room was kept above
    return nullptr;
  }
  if (freeSlots_.empty()) {
    heap->slot = static_cast<uint32_t>(bySlot_.size());
    bySlot_.push_back(Slot{heap, static_cast<unsigned char*>(base)});
  } else {
    heap->slot = freeSlots_.back();
    freeSlots_.pop_back();
    bySlot_[heap->slot] = Slot{heap, static_cast<unsigned char*>(base)};
  }
  ++count_;
  heap->base = static_cast<unsigned char*>(base);
  heap->usable = totalBytes - kHeapHeaderBytes;
  heap->end = totalBytes;
  heap->untouched = kHeapHeaderBytes;
  AddStretches(heap);
  HeapHeader header{heap, totalBytes, heap->usable};
  std::memcpy(base, &header, sizeof header);
  View(*this, *heap).PlaceFree(kHeapHeaderBytes, heap->usable - kTagBytes);
  return heap;
}

void HeapSet::Remove(Heap* heap) {
  View view(*this, *heap);
  // Only a heap whose one listed block is its whole free block leaves the
  // lists by an unlink; any other is withdrawn, which lists the rest anew.
  if (!heap->withdrawn && heap->freeBlocks == 1 && HeapIsEmpty(*heap) &&
      view.IsIntactFree(kHeapHeaderBytes)) {
    view.Unlink(kHeapHeaderBytes, heap->usable - kTagBytes);
  } else {
    Withdraw(heap);
  }
  RemoveStretches(heap);
  bySlot_[heap->slot] = Slot{nullptr, nullptr};
  // A damaged link that a release followed may have left a list's head
  // pointing into this heap, which is about to be freed: the lists are
  // then made again from the heaps that stay.
  for (uint32_t head : firstFree_) {
    if (head && SlotOf(head) == heap->slot) {
      Relist();
      break;
    }
  }
  freeSlots_.push_back(heap->slot);  // room was kept when the slot was made
  spareRecords_.push_back(heap);     // and for every record
  --count_;
}

void HeapSet::WithdrawAll() {
  std::fill(std::begin(firstFree_), std::end(firstFree_), 0);
  std::fill(std::begin(classesHeld_), std::end(classesHeld_), 0);
  for (const Slot& entry : bySlot_) {
    Heap* heap = entry.heap;
    if (heap) heap->withdrawn = true;
  }
}

void HeapSet::Withdraw(Heap* heap) {
  if (heap->withdrawn) return;
  heap->withdrawn = true;
  // Its free blocks cannot be taken off the lists one by one, since their
  // links may be the damage: the lists are made again from the others.
  if (heap->freeBlocks) Relist();
}

// Every free block of every heap that is not withdrawn, listed afresh from
// the blocks themselves; a heap whose blocks cannot be walked is withdrawn.
void HeapSet::Relist() {
  std::fill(std::begin(firstFree_), std::end(firstFree_), 0);
  std::fill(std::begin(classesHeld_), std::end(classesHeld_), 0);
  for (const Slot& entry : bySlot_) {
    Heap* heap = entry.heap;
    if (!heap) continue;
    heap->freeBlocks = 0;
    if (heap->withdrawn) continue;
    uint32_t met;
    if (!WalkHeap(*heap, &met)) {
      heap->withdrawn = true;
      continue;
    }
    View view(*this, *heap);
    for (uint32_t o = kHeapHeaderBytes; o < heap->end;) {
      uint32_t payload = SizeOf(view.Head(o));
      if (view.Head(o) & kFreeBit) view.Push(o, payload);
      o += kTagBytes + payload;
    }
  }
}

Heap* HeapSet::HeapHolding(const void* p) const {
  if (!stretchesUsed_) return nullptr;
  uintptr_t n = reinterpret_cast<uintptr_t>(p) >> kStretchShift;
  size_t mask = stretches_.size() - 1;
  for (size_t i = Home(n); Heap* heap = stretches_[i].heap; i = (i + 1) & mask) {
    if (stretches_[i].number == n && HeapContains(*heap, p)) return heap;
  }
  return nullptr;
}

void* HeapSet::Allocate(uint32_t request, bool* damageSeen) {
  uint32_t needed = PayloadFor(request);
  int own = ClassOf(needed);
  int fitting = FittingClassOf(needed);
  // The block at link, when intact, of class c and big enough.
  auto take = [&](uint32_t link, int c) -> Allocation {
    if (!IsLink(link)) {  // a list gone wrong: made again from the blocks
      Relist();
      return {Outcome::Damaged, nullptr};
    }
    Heap* heap = HeapOf(link);
    View view(*this, *heap);
    uint32_t o = OffsetOf(link);
    // A block that says it is too small is passed over on its head tag
    // alone, without waiting for its tail as well.
    uint32_t head = o + kTagBytes + kMinPayload <= heap->end ? view.Head(o) : 0;
    if (TagIs(head, kFreeHead) && SizeOf(head) < needed) return {Outcome::NoRoom, nullptr};
    if (!view.IsIntactFree(o)) {
      Withdraw(heap);
      return {Outcome::Damaged, nullptr};
    }
    uint32_t payload = SizeOf(view.Head(o));
    if (ClassOf(payload) != c) {
      Withdraw(heap);
      return {Outcome::Damaged, nullptr};
    }
    if (payload < needed) return {Outcome::NoRoom, nullptr};
    return {Outcome::Served, view.Carve(o, payload, request)};
  };
  // Each round that meets damage withdraws a heap, so the rounds end.
  for (;;) {
    // The request's own class first: below 256 bytes its blocks fit exactly.
    if (uint32_t link = firstFree_[own]) {
      Allocation a = take(link, own);
      if (a.outcome == Outcome::Served) return a.pointer;
      if (a.outcome == Outcome::Damaged) {
        *damageSeen = true;
        continue;
      }
    }
    int c = fitting < kSizeClasses ? FirstHeld(classesHeld_, fitting) : -1;
    if (c >= 0) {
      Allocation a = take(firstFree_[c], c);
      if (a.outcome == Outcome::Served) return a.pointer;
      // Every block of this class fits: one that says otherwise is damaged.
      if (a.outcome == Outcome::NoRoom) Withdraw(HeapOf(firstFree_[c]));
      *damageSeen = true;
      continue;
    }
    // Only the request's own class, smaller blocks among them, is left: a
    // new heap is due only when none of them fits either. A list longer
    // than the heaps have room for blocks is a damaged list.
    size_t guard = count_ * (kLargestHeapBytes / (kTagBytes + kMinPayload)) + 1;
    bool damaged = false;
    for (uint32_t link = firstFree_[own]; link && !damaged;) {
      if (!guard--) {
        Withdraw(HeapOf(link));
        damaged = true;
        break;
      }
      Allocation a = take(link, own);
      if (a.outcome == Outcome::Served) return a.pointer;
      damaged = a.outcome == Outcome::Damaged;
      if (damaged) break;
      // Too small: passed over on its head tag, so its link is checked here.
      uint32_t next = LoadAt(BlockAt(link) + 4);
      if (!IsLink(next)) {
        Withdraw(HeapOf(link));
        damaged = true;
      }
      link = next;
    }
    if (!damaged) return nullptr;
    *damageSeen = true;
  }
}

void* HeapSet::AllocateInNew(Heap* heap, uint32_t request) {
  View view(*this, *heap);
  uint32_t payload = heap->usable - kTagBytes;
  if (heap->withdrawn || PayloadFor(request) > payload) return nullptr;
  return view.Carve(kHeapHeaderBytes, payload, request);
}

void HeapSet::Release(Heap* heap, void* p) {
  View view(*this, *heap);
  uint32_t o = view.OffsetOfPointer(p);
  uint32_t payload = SizeOf(view.Head(o));
  uint32_t start = o, total = payload;
  if (o > kHeapHeaderBytes) {
    uint32_t previousTail = view.Load(o - 4);
    uint32_t previousPayload = SizeOf(previousTail);
    if ((previousTail & kFreeBit) && o >= kHeapHeaderBytes + kTagBytes + previousPayload) {
      uint32_t previous = o - kTagBytes - previousPayload;
      if (view.IsIntactFree(previous)) {
        view.Unlink(previous, previousPayload);
        start = previous;
        total += previousPayload + kTagBytes;
      }
    }
  }
  uint32_t next;
  if (view.NextIsFree(o, payload, &next)) {
    uint32_t nextPayload = SizeOf(view.Head(next));
    view.Unlink(next, nextPayload);
    total += nextPayload + kTagBytes;
  }
  view.PlaceFree(start, total);
}

bool HeapSet::ResizeInPlace(Heap* heap, void* p, uint32_t request) {
  View view(*this, *heap);
  uint32_t o = view.OffsetOfPointer(p);
  uint32_t payload = SizeOf(view.Head(o));
  uint32_t oldRequest = RequestedSize(p);
  uint32_t needed = PayloadFor(request);
  uint32_t next;
  bool nextFree = view.NextIsFree(o, payload, &next);

  if (payload >= needed) {
    uint32_t surplus = payload - needed;
    if (surplus != 0 && nextFree) {
      uint32_t nextPayload = SizeOf(view.Head(next));
      view.Unlink(next, nextPayload);
      view.PlaceFree(o + kTagBytes + needed, nextPayload + surplus);
      view.SetTags(o, needed, false);
    } else if (surplus >= kSplitMinimum) {
      view.PlaceFree(o + kTagBytes + needed, surplus - kTagBytes);
      view.SetTags(o, needed, false);
    }
  } else {
    if (!nextFree) return false;
    uint32_t nextPayload = SizeOf(view.Head(next));
    uint32_t joined = payload + kTagBytes + nextPayload;
    if (joined < needed) return false;
    view.Unlink(next, nextPayload);
    // A rest under 16 bytes could not hold a free block's tags and links,
    // so it stays with the block.
    if (joined - needed < kSplitMinimum) {
      view.SetTags(o, joined, false);
    } else {
      view.PlaceFree(o + kTagBytes + needed, joined - needed - kTagBytes);
      view.SetTags(o, needed, false);
    }
  }
  if (request > oldRequest) {
    ZeroBytes(static_cast<unsigned char*>(p) + oldRequest, request - oldRequest);
  }
  view.MarkWritten(o + kTagBytes + SizeOf(view.Head(o)));
  view.StoreRequest(o, request);
  return true;
}

// Block by block from the first to the end; *freeMet counts the free ones.
bool HeapSet::WalkHeap(const Heap& heap, uint32_t* freeMet) const {
  if (heap.end != kHeapHeaderBytes + heap.usable) return false;
  View view(*this, heap);
  uint32_t met = 0;
  bool previousFree = false;
  uint32_t o = kHeapHeaderBytes;
  while (o < heap.end) {
    if (o + kTagBytes + kMinPayload > heap.end) return false;
    uint32_t head = view.Head(o), payload = SizeOf(head);
    bool free = (head & kFreeBit) != 0;
    if (!TagIs(head, free ? kFreeHead : kUsedHead) || !FitsBlock(heap, o, payload)) return false;
    uint32_t tail = view.Tail(o, payload);
    if (!TagIs(tail, free ? kFreeTail : kUsedTail) || SizeOf(tail) != payload) return false;
    if (free && previousFree) return false;
    met += free;
    previousFree = free;
    o += kTagBytes + payload;
  }
  *freeMet = met;
  return o == heap.end;
}

Heap* HeapSet::FindDamage() const {
  size_t listed = 0;
  size_t guard = count_ * (kLargestHeapBytes / (kTagBytes + kMinPayload)) + 1;
  for (int c = 0; c < kSizeClasses; ++c) {
    bool held = (classesHeld_[c >> 6] >> (c & 63)) & 1;
    if (held != (firstFree_[c] != 0)) return AnyHeap();
    uint32_t previous = 0;
    for (uint32_t link = firstFree_[c]; link; link = LoadAt(BlockAt(link) + 4)) {
      if (!IsLink(link)) return AnyHeap();
      Heap* heap = HeapOf(link);
      View view(*this, *heap);
      uint32_t o = OffsetOf(link);
      if (!guard-- || !view.IsIntactFree(o)) return heap;
      if (ClassOf(SizeOf(view.Head(o))) != c || view.PreviousFree(o) != previous) return heap;
      previous = link;
      ++listed;
    }
  }
  size_t counted = 0;
  for (const Slot& entry : bySlot_) {
    Heap* heap = entry.heap;
    if (!heap) continue;
    uint32_t met;
    if (!WalkHeap(*heap, &met)) return heap;
    if (heap->withdrawn) continue;
    if (met != heap->freeBlocks) return heap;
    counted += met;
  }
  // Blocks on the lists that their heaps do not count: the lists are wrong.
  return counted == listed ? nullptr : AnyHeap();
}

}  // namespace kwe::memory::small_heap
