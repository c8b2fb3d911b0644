// The small-block heaps' byte layout, natively under the sanitizers: seeded
// sweeps of allocations, resizes and releases checked after every step.
#include "memory/small_block_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "seeded_block.h"

namespace {

using namespace kwe::memory::small_heap;
using kwe_test::FillBlock;
using kwe_test::Holds;
using Block = kwe_test::SeededBlock;

bool AllZero(const unsigned char* p, uint32_t n) {
  return std::all_of(p, p + n, [](unsigned char c) { return c == 0; });
}

// The largest free payload of a heap, read from its tags as a debugger would.
uint32_t LargestFreePayload(const Heap& heap) {
  uint32_t largest = 0;
  for (uint32_t o = 32, head = 0; o < heap.end; o += 8 + (head & 0xFFFF)) {
    std::memcpy(&head, heap.base + o, 4);
    if (head & 0x80000000u) largest = std::max(largest, head & 0xFFFF);
  }
  return largest;
}

// Random requests over heaps added as needed (some small enough to share a
// 16 KB stretch of addresses), resized in place and released: every block
// keeps its bytes and is found in its own heap, a new heap is due only when
// no free block of any heap is large enough, and heaps that empty go back.
// Any failing step replays from its seed and step number.
void Sweep(unsigned seed, uint32_t largest, int steps) {
  HeapSet set;
  std::vector<std::unique_ptr<unsigned char[]>> memory;
  std::vector<Block> live;
  std::mt19937 random(seed);
  for (int step = 0; step < steps; ++step) {
    SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step);
    int action = live.empty() ? 0 : static_cast<int>(random() % 3);
    if (action == 0) {
      uint32_t size = random() % largest;
      bool damage = false;
      void* p = set.Allocate(size, &damage);
      ASSERT_FALSE(damage);
      if (!p) {
        for (const auto& m : memory) {
          Heap* h = set.HeapHolding(m.get() + 38);
          ASSERT_TRUE(!h || LargestFreePayload(*h) < PayloadFor(size))
              << "a fitting block was left";
        }
        const uint32_t limits[] = {64, 512, 8192, 20000};
        uint32_t bytes = HeapBytesFor(limits[random() % 4], size);
        memory.emplace_back(new unsigned char[bytes]());
        Heap* heap = set.Add(memory.back().get(), bytes);
        ASSERT_NE(heap, nullptr);
        p = set.AllocateInNew(heap, size);
        ASSERT_NE(p, nullptr);
      }
      Block b{static_cast<unsigned char*>(p), size, static_cast<unsigned char>(random())};
      ASSERT_TRUE(AllZero(b.data, size));
      EXPECT_EQ(RequestedSize(b.data), size);
      FillBlock(b);
      live.push_back(b);
    } else {
      size_t i = random() % live.size();
      Block& b = live[i];
      Heap* heap = set.HeapHolding(b.data);
      ASSERT_NE(heap, nullptr);
      ASSERT_TRUE(IsIntactUsedBlock(*heap, b.data));
      ASSERT_TRUE(Holds(b, b.size));
      uint32_t size = random() % (largest + largest / 2), kept = std::min(size, b.size);
      if (action == 1) {
        set.Release(heap, b.data);
        live.erase(live.begin() + static_cast<long>(i));
        if (HeapIsEmpty(*heap)) set.Remove(heap);
      } else if (set.ResizeInPlace(heap, b.data, size)) {
        ASSERT_TRUE(Holds(b, kept));
        ASSERT_TRUE(AllZero(b.data + kept, size - kept)) << "the bytes gained are cleared";
        b.size = size;
        FillBlock(b);
      }
    }
    ASSERT_EQ(set.FindDamage(), nullptr);
  }
  for (const Block& b : live) {
    Heap* heap = set.HeapHolding(b.data);
    ASSERT_TRUE(Holds(b, b.size));
    set.Release(heap, b.data);
    if (HeapIsEmpty(*heap)) set.Remove(heap);
  }
  EXPECT_EQ(set.Count(), 0u);
}

TEST(SmallBlockHeaps, SeededSweepsKeepEveryBlockAndEveryHeapIntact) {
  Sweep(20240611, 600, 20000);  // many small blocks
  Sweep(7, 4000, 10000);        // fewer large ones
  Sweep(99, 16000, 5000);       // requests one heap mostly cannot serve
}

}  // namespace
