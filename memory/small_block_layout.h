// The small-block heaps, byte for byte: a boundary-tag allocator over runs
// of bytes the caller owns. Every block is a 32-bit head tag, a payload and a
// 32-bit tail tag; the low 16 bits of each tag hold the payload size, the
// high 16 bits a magic value whose bit 31 marks a free block. Free blocks are
// merged with free neighbours at once.
//
// Free blocks of every heap are kept on one list per size class, so that a
// request finds a block without searching: it looks at the first block of
// its own class, then takes the first block of the smallest class whose
// every block fits it. A new heap is due only when no free block anywhere is
// large enough.
//
// Byte-level and portable: the platform blocks behind the heaps and the
// damage report live in small_block_heaps.cpp.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kwe::memory::small_heap {

constexpr uint32_t kHeapHeaderBytes = 32;
constexpr uint32_t kMinPayload = 8;
constexpr uint32_t kLargestHeapBytes = 65280;

// Payloads below 256 bytes have a class each (payload / 4); larger ones
// share one of eight classes per power of two.
constexpr int kSizeClasses = 128;

// The library's record of one heap; offsets count from its start.
struct Heap {
  unsigned char* base = nullptr;
  uint32_t end = 0;     // offset just past the last block
  uint32_t usable = 0;  // U: bytes of blocks behind the header
  // Bytes from here to the last tail tag have never been written since the
  // heap came zero-filled from the platform, so blocks there need no clearing.
  uint32_t untouched = 0;
  uint32_t slot = 0;        // the heap's number in free-block links
  uint32_t freeBlocks = 0;  // of this heap on the class lists
  bool withdrawn = false;   // damaged: serves nothing more
};

// The first 32 bytes of a heap: its record and its extent, so that a heap
// seen in a memory dump tells what it is.
struct HeapHeader {
  Heap* record;
  uint32_t end;
  uint32_t usable;
};
static_assert(sizeof(HeapHeader) <= kHeapHeaderBytes, "the header fits its 32 bytes");

// Payload for a request of r bytes: the 16-bit size word and r bytes,
// rounded down to a multiple of 4, at least 8.
uint32_t PayloadFor(uint32_t request);

// Bytes of a new heap for a request: min(2 x limit, 65,280), or enough for
// the request alone when that is not.
uint32_t HeapBytesFor(uint32_t limit, uint32_t request);

bool HeapContains(const Heap& heap, const void* p);

// True when the heap holds nothing but its one free block.
bool HeapIsEmpty(const Heap& heap);

// Both tags of the used block at p intact, sizes equal and within the heap.
bool IsIntactUsedBlock(const Heap& heap, const void* p);

// The size that was asked for: the 16-bit word just before p.
uint16_t RequestedSize(const void* p);

// Every heap, with the class lists of their free blocks and an index by
// address.
//
// A free block's payload holds its list links (next, previous) as 32-bit
// numbers, the heap's slot and the block's offset, so that the 8-byte
// smallest payload holds both links with 64-bit pointers too.
class HeapSet {
 public:
  HeapSet();
  HeapSet(const HeapSet&) = delete;
  HeapSet& operator=(const HeapSet&) = delete;
  ~HeapSet();

  // Lays out totalBytes at base (a multiple of 4, at most 65,280) as a new
  // heap of one free block. The bytes must be zero, as a zero-filled
  // platform block is. Null when there is no room for its record; nothing
  // is then kept of base.
  Heap* Add(void* base, uint32_t totalBytes);

  // Forgets the heap; its bytes are the caller's again.
  void Remove(Heap* heap);

  // request zeroed bytes from the best-fitting free block of any heap;
  // null when none is large enough. Heaps whose free blocks are found
  // damaged on the way are withdrawn, and *damageSeen set.
  void* Allocate(uint32_t request, bool* damageSeen);

  // request bytes from the one free block of a heap just added (made large
  // enough for them).
  void* AllocateInNew(Heap* heap, uint32_t request);

  // Frees the (intact) used block at p, merged with free neighbours.
  void Release(Heap* heap, void* p);

  // Resizes the block at p where it stands, taking from or giving to the
  // block behind it. False when it would have to move; the block is then
  // unchanged. Bytes gained are zeroed.
  bool ResizeInPlace(Heap* heap, void* p, uint32_t request);

  // The heap whose blocks contain p, or null.
  Heap* HeapHolding(const void* p) const;

  // Walks the class lists and every block of every heap: sizes, tags, each
  // free block on the list of its class, no two free neighbours, and as
  // many free blocks met in each heap as the lists hold of it. Null when
  // all is well, else a heap found damaged.
  Heap* FindDamage() const;

  // A damaged heap serves nothing more; its blocks may still be released.
  void Withdraw(Heap* heap);

  // Every heap at once, before all are removed whatever they hold.
  void WithdrawAll();

  std::size_t Count() const { return count_; }
  // Any heap; null when there is none.
  Heap* AnyHeap() const;

 private:
  friend struct View;
  // Heaps by address: each 16 KB stretch of the address space that a heap
  // touches has an entry naming it, so that a block's heap is found at the
  // first or second look.
  struct Stretch {
    uintptr_t number;  // address >> kStretchShift
    Heap* heap;        // null: an empty entry
  };
  static constexpr unsigned kStretchShift = 14;
  std::size_t Home(uintptr_t number) const;
  bool MakeRoomForStretches(std::size_t more);
  void AddStretches(Heap* heap);
  void RemoveStretches(const Heap* heap);

  bool IsLink(uint32_t link) const;
  unsigned char* BlockAt(uint32_t link) const;
  Heap* HeapOf(uint32_t link) const;
  bool WalkHeap(const Heap& heap, uint32_t* freeMet) const;
  void Relist();

  // By slot, each heap with its base beside it, so that following a link
  // costs one look-up rather than two.
  struct Slot {
    Heap* heap;  // null where a heap was removed
    unsigned char* base;
  };
  std::vector<Slot> bySlot_;
  std::vector<uint32_t> freeSlots_;
  std::vector<Heap*> spareRecords_;  // of removed heaps, for the next ones
  std::size_t records_ = 0;          // made so far, spare or not
  std::size_t count_ = 0;
  std::vector<Stretch> stretches_;  // a power of two long, at most half full
  std::size_t stretchesUsed_ = 0;
  unsigned stretchBits_ = 0;
  uint32_t firstFree_[kSizeClasses] = {};
  uint64_t classesHeld_[kSizeClasses / 64] = {};
};

}  // namespace kwe::memory::small_heap
