// What the Memory Manager tests look at besides the calls' results: the
// master record a Handle points to and the platform heap's own figures.
#pragma once
#include <windows.h>

#include <cstdint>

#include "KWESession.h"
#include "Memory.h"
#include "support/test_host.h"

namespace kwe_test {

// The master record as applications know it: 14 packed bytes with 32-bit
// pointers, widened to natural alignment with 64-bit ones.
#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(push, 2)
#else
#pragma pack(push, 8)
#endif
struct MasterRecordView {
  Ptr masterPointer;
  void* platformBlock;
  UInt16 flags;
  Size size;
};
#pragma pack(pop)
static_assert(sizeof(MasterRecordView) == (sizeof(void*) == 4 ? 14 : 24));

// A master block of n records: header, records and end marker.
constexpr UInt32 MasterBlockBytes(UInt32 n) {
  return n * sizeof(MasterRecordView) + (sizeof(void*) == 4 ? 20 : 32);
}

inline const MasterRecordView& Master(Handle h) {
  return *reinterpret_cast<const MasterRecordView*>(h);
}
inline UInt8 State(Handle h) { return static_cast<UInt8>(HGetState(h)); }

inline Ptr const kNoBlock = reinterpret_cast<Ptr>(static_cast<uintptr_t>(0xFFFF));
constexpr OSErr kPoison = 0x5A5A;
constexpr UInt16 kSmallBlockFlag = 0x1000;

inline bool AllBytesAre(const void* p, size_t n, unsigned char value) {
  auto* bytes = static_cast<const unsigned char*>(p);
  for (size_t i = 0; i < n; ++i) {
    if (bytes[i] != value) return false;
  }
  return true;
}

inline void Fill(Handle h, unsigned char seed) {
  Size n = GetHandleSize(h);
  for (Size i = 0; i < n; ++i) (*h)[i] = static_cast<char>(seed + i);
}

inline bool HoldsFill(Handle h, unsigned char seed, Size n) {
  for (Size i = 0; i < n; ++i) {
    if ((*h)[i] != static_cast<char>(seed + i)) return false;
  }
  return true;
}

// Bytes in use on the process heap, where LocalAlloc takes its blocks.
inline uint64_t ProcessHeapBytesInUse() {
  HANDLE heap = GetProcessHeap();
  uint64_t total = 0;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry)) {
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) total += entry.cbData;
  }
  HeapUnlock(heap);
  return total;
}

// Bytes the Memory Manager says it holds on the platform heap.
inline UInt32 LibraryBytes() {
  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  return allocated;
}

// Limits the library to what it holds now plus room bytes.
inline void LimitTo(UInt32 room, UInt32 checkSize = 1000) {
  KWE_SetMemoryLimits(1, LibraryBytes() + room, checkSize, 0);
}

class SmallBlockSession : public SessionTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagSmallBlocks; }
};

}  // namespace kwe_test
