// One small-block heap: a boundary-tag allocator over a run of bytes the
// caller owns. Every block is a 32-bit head tag, a payload and a 32-bit tail
// tag; the low 16 bits of each tag hold the payload size, the high 16 bits a
// magic value whose bit 31 marks a free block. Free blocks are kept on the
// heap's list and merged with free neighbours at once.
//
// Byte-level only: the list of heaps, their platform blocks and the damage
// report live in small_block_heaps.cpp.
#pragma once
#include <cstdint>

namespace kwe::memory::small_heap {

constexpr uint32_t kHeapHeaderBytes = 32;
constexpr uint32_t kMinPayload = 8;
constexpr uint32_t kLargestHeapBytes = 65280;

// The first 32 bytes of a heap. The free-list links (here and in each free
// block's payload) are 32-bit offsets from the heap's start rather than
// pointers, so that the 8-byte smallest payload holds both links with 64-bit
// pointers too; the header stays 32 bytes in both builds.
struct HeapHeader {
  HeapHeader* next;  // heap list, most recently successful first
  HeapHeader* previous;
  uint32_t freeHead;  // head tag offset of the first free block; 0: none
  uint32_t end;       // offset just past the last block
  uint32_t usable;    // U: bytes of blocks behind the header
  // At least the largest free payload: a heap whose bound is below a
  // request is passed over without walking its free list.
  uint16_t largestFree;
  // Bytes from here to the last tail tag have never been written since the
  // heap came zero-filled from the platform, so blocks there need no clearing.
  uint16_t untouched;
};
static_assert(sizeof(HeapHeader) <= kHeapHeaderBytes, "the header fits its 32 bytes");

// Payload for a request of r bytes: the 16-bit size word and r bytes,
// rounded down to a multiple of 4, at least 8.
uint32_t PayloadFor(uint32_t request);

// Bytes of a new heap for a request: min(2 x limit, 65,280), or enough for
// the request alone when that is not.
uint32_t HeapBytesFor(uint32_t limit, uint32_t request);

// Lays out a heap of totalBytes (a multiple of 4, at most 65,280) as one
// free block. The bytes must be zero, as a zero-filled platform block is.
HeapHeader* FormatHeap(void* base, uint32_t totalBytes);

bool HeapContains(const HeapHeader* heap, const void* p);

// True when the heap holds nothing but its one free block.
bool HeapIsEmpty(const HeapHeader* heap);

enum class Outcome { Served, NoRoom, Damaged };

struct Allocation {
  Outcome outcome;
  void* pointer;  // request bytes, zeroed, when served
};

// First fit along the free list. A damaged free block makes the heap serve
// nothing.
Allocation AllocateInHeap(HeapHeader* heap, uint32_t request);

// Both tags of the used block at p intact, sizes equal and within the heap.
bool IsIntactUsedBlock(const HeapHeader* heap, const void* p);

// Frees the (intact) used block at p, merged with free neighbours.
void ReleaseInHeap(HeapHeader* heap, void* p);

// Resizes the block at p where it stands, taking from or giving to the block
// behind it. False when it would have to move; the block is then unchanged.
// Bytes gained are zeroed.
bool ResizeInPlace(HeapHeader* heap, void* p, uint32_t request);

// The size that was asked for: the 16-bit word just before p.
uint16_t RequestedSize(const void* p);

// Walks the free list and every block: sizes, tags, no two free neighbours,
// and as many free blocks met as the list holds.
bool CheckHeap(const HeapHeader* heap);

}  // namespace kwe::memory::small_heap
