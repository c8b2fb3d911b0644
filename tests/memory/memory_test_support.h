// What the Memory Manager tests look at besides the calls' results: the
// bytes a handle holds and the memory the library and the process heap hold.
#pragma once
#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "KWESession.h"
#include "Memory.h"
#include "support/test_host.h"

namespace kwe_test {

// An empty handle's master pointer, as applications see it.
inline Ptr const kNoBlock = reinterpret_cast<Ptr>(static_cast<uintptr_t>(0xFFFF));

inline bool AllBytesAre(const void* p, size_t n, unsigned char value) {
  auto* bytes = static_cast<const unsigned char*>(p);
  return std::all_of(bytes, bytes + n, [value](unsigned char b) { return b == value; });
}

inline void Fill(Handle h, unsigned char seed) {
  for (Size i = 0; i < GetHandleSize(h); ++i) (*h)[i] = static_cast<char>(seed + i);
}

// The first n bytes still as Fill left them.
inline bool HoldsFill(Handle h, unsigned char seed, Size n) {
  Size i = 0;
  while (i < n && (*h)[i] == static_cast<char>(seed + i)) ++i;
  return i == n;
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

}  // namespace kwe_test
