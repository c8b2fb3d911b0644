// The small-block heaps' byte layout, natively under the sanitizers: seeded
// sweeps of allocations, resizes and releases checked after every step.
#include "memory/small_block_layout.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "seeded_block.h"

namespace {

using namespace kwe::memory::small_heap;

using Block = kwe_test::SeededBlock;
using kwe_test::FillBlock;
using kwe_test::Holds;

bool AllZero(const unsigned char* p, uint32_t n) {
  for (uint32_t i = 0; i < n; ++i) {
    if (p[i]) return false;
  }
  return true;
}

// The largest free payload of a heap, read from its tags as a debugger would.
uint32_t LargestFreePayload(const Heap& heap) {
  uint32_t largest = 0;
  for (uint32_t o = 32; o < heap.end;) {
    uint32_t head;
    std::memcpy(&head, heap.base + o, 4);
    if (head & 0x80000000u) largest = std::max(largest, head & 0xFFFF);
    o += 8 + (head & 0xFFFF);
  }
  return largest;
}

class HeapLayout : public ::testing::Test {
 protected:
  static constexpr uint32_t kBytes = 16384;
  alignas(8) unsigned char memory[kBytes] = {};  // zero, as a platform block comes
  HeapSet set;
  Heap* heap = set.Add(memory, kBytes);

  void* Allocate(uint32_t size, bool* damage = nullptr) {
    bool seen = false;
    void* p = set.Allocate(size, &seen);
    if (damage) *damage = seen;
    return p;
  }
};

TEST(SmallBlockSizes, PayloadsAndHeapSizes) {
  EXPECT_EQ(PayloadFor(0), 8u);
  EXPECT_EQ(PayloadFor(1), 8u);
  EXPECT_EQ(PayloadFor(10), 12u);
  EXPECT_EQ(PayloadFor(100), 104u);
  EXPECT_EQ(HeapBytesFor(8192, 100), 16384u);
  EXPECT_EQ(HeapBytesFor(40000, 100), 65280u);
  EXPECT_EQ(HeapBytesFor(10, 9), 32u + 8 + 12) << "a tiny limit still fits the request";
}

TEST_F(HeapLayout, ANewHeapIsOneFreeBlock) {
  ASSERT_NE(heap, nullptr);
  EXPECT_EQ(set.FindDamage(), nullptr);
  EXPECT_TRUE(HeapIsEmpty(*heap));
  EXPECT_EQ(heap->usable, kBytes - 32);
  void* whole = Allocate(kBytes - 32 - 8 - 2);  // exactly the whole block
  ASSERT_NE(whole, nullptr);
  EXPECT_EQ(whole, memory + 38);
  EXPECT_EQ(Allocate(1), nullptr);
  set.Release(heap, whole);
  EXPECT_TRUE(HeapIsEmpty(*heap));
  EXPECT_EQ(set.FindDamage(), nullptr);
}

// Any failing step can be replayed from its seed and step number.
void Sweep(HeapSet& set, Heap* heap, unsigned seed, uint32_t largest) {
  std::mt19937 random(seed);
  std::vector<Block> live;
  for (int step = 0; step < 20000; ++step) {
    SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step);
    int action = static_cast<int>(random() % 3);
    if (action == 0 || live.empty()) {
      uint32_t size = random() % largest;
      bool damage = false;
      void* p = set.Allocate(size, &damage);
      ASSERT_FALSE(damage);
      if (p) {
        Block b{static_cast<unsigned char*>(p), size, static_cast<unsigned char>(random())};
        ASSERT_EQ(set.HeapHolding(p), heap);
        ASSERT_TRUE(AllZero(b.data, size));
        EXPECT_EQ(RequestedSize(b.data), size);
        FillBlock(b);
        live.push_back(b);
      } else {
        ASSERT_LT(LargestFreePayload(*heap), PayloadFor(size)) << "a block that fits was left";
      }
    } else if (action == 1) {
      size_t i = random() % live.size();
      ASSERT_TRUE(IsIntactUsedBlock(*heap, live[i].data));
      ASSERT_TRUE(Holds(live[i], live[i].size));
      set.Release(heap, live[i].data);
      live.erase(live.begin() + static_cast<long>(i));
    } else {
      Block& b = live[random() % live.size()];
      uint32_t size = random() % (largest + largest / 2);
      uint32_t kept = std::min(size, b.size);
      if (set.ResizeInPlace(heap, b.data, size)) {
        ASSERT_TRUE(Holds(b, kept));
        ASSERT_TRUE(AllZero(b.data + kept, size - kept));
        b.size = size;
        FillBlock(b);
      }
    }
    ASSERT_EQ(set.FindDamage(), nullptr);
  }
  for (const Block& b : live) {
    ASSERT_TRUE(Holds(b, b.size));
    set.Release(heap, b.data);
  }
  EXPECT_TRUE(HeapIsEmpty(*heap));
}

TEST_F(HeapLayout, SeededSweepsKeepEveryBlockAndTheHeapIntact) {
  Sweep(set, heap, 20240611, 600);  // many small blocks
  Sweep(set, heap, 7, 4000);        // few large ones, often reaching the heap's end
  Sweep(set, heap, 99, 16000);      // requests the heap mostly cannot serve
}

TEST_F(HeapLayout, DamageIsFoundByTheCheckAndTheTags) {
  auto* data = static_cast<unsigned char*>(Allocate(10));
  void* b = Allocate(10);
  unsigned char saved[4];
  std::memcpy(saved, data + 10, 4);
  std::memset(data + 10, 0x55, 4);  // the tail tag
  EXPECT_FALSE(IsIntactUsedBlock(*heap, data));
  EXPECT_EQ(set.FindDamage(), heap);
  std::memcpy(data + 10, saved, 4);
  EXPECT_EQ(set.FindDamage(), nullptr);

  set.Release(heap, data);
  std::memset(data - 6, 0x55, 4);  // the freed block's head tag
  EXPECT_EQ(set.FindDamage(), heap);
  bool damage = false;
  EXPECT_EQ(Allocate(4, &damage), nullptr) << "a damaged heap serves nothing more";
  EXPECT_TRUE(damage);
  EXPECT_EQ(Allocate(100), nullptr);
  EXPECT_TRUE(IsIntactUsedBlock(*heap, b));
}

// A free block whose head tag claims a size too small for its class: the
// heap is withdrawn rather than asked again and again.
TEST_F(HeapLayout, AFreeBlockShrunkByDamageWithdrawsItsHeap) {
  ASSERT_NE(Allocate(10), nullptr);
  ASSERT_NE(Allocate(10), nullptr);
  const uint32_t rest = 32 + 2 * (8 + 12), forged = 0xABF30008u;
  std::memcpy(memory + rest, &forged, 4);
  bool damage = false;
  EXPECT_EQ(Allocate(100, &damage), nullptr);
  EXPECT_TRUE(damage);
  EXPECT_EQ(set.FindDamage(), heap);
}

// Many heaps, some small enough to share a 16 KB stretch of addresses: every
// block is found in its own heap, a request fails only when no free block
// of any heap is large enough, and heaps that empty are given back.
TEST(HeapSets, BlocksAcrossManyHeaps) {
  HeapSet set;
  std::vector<std::unique_ptr<unsigned char[]>> memory;
  std::vector<Block> live;
  std::mt19937 random(4242);
  auto addHeap = [&](uint32_t limit, uint32_t size) {
    uint32_t bytes = HeapBytesFor(limit, size);
    memory.emplace_back(new unsigned char[bytes]());
    return set.Add(memory.back().get(), bytes);
  };
  for (int step = 0; step < 6000; ++step) {
    SCOPED_TRACE(::testing::Message() << "step " << step);
    if (live.empty() || random() % 2) {
      uint32_t size = random() % 3 ? random() % 200 : random() % 8000;
      bool damage = false;
      void* p = set.Allocate(size, &damage);
      ASSERT_FALSE(damage);
      if (!p) {
        for (size_t i = 0; i < memory.size(); ++i) {
          if (Heap* h = set.HeapHolding(memory[i].get() + 38)) {
            ASSERT_LT(LargestFreePayload(*h), PayloadFor(size));
          }
        }
        uint32_t limits[] = {64, 512, 8192, 20000};
        Heap* heap = addHeap(limits[random() % 4], size);
        ASSERT_NE(heap, nullptr);
        p = set.AllocateInNew(heap, size);
        ASSERT_NE(p, nullptr);
      }
      Block b{static_cast<unsigned char*>(p), size, static_cast<unsigned char>(random())};
      ASSERT_TRUE(AllZero(b.data, size));
      FillBlock(b);
      live.push_back(b);
    } else {
      size_t i = random() % live.size();
      Heap* heap = set.HeapHolding(live[i].data);
      ASSERT_NE(heap, nullptr);
      ASSERT_TRUE(IsIntactUsedBlock(*heap, live[i].data));
      ASSERT_TRUE(Holds(live[i], live[i].size));
      set.Release(heap, live[i].data);
      live.erase(live.begin() + static_cast<long>(i));
      if (HeapIsEmpty(*heap)) set.Remove(heap);
    }
    if (step % 16 == 0) {
      ASSERT_EQ(set.FindDamage(), nullptr);
    }
  }
  for (const Block& b : live) {
    Heap* heap = set.HeapHolding(b.data);
    ASSERT_NE(heap, nullptr);
    ASSERT_TRUE(Holds(b, b.size));
    set.Release(heap, b.data);
    if (HeapIsEmpty(*heap)) set.Remove(heap);
  }
  EXPECT_EQ(set.Count(), 0u);
  EXPECT_EQ(set.HeapHolding(memory[0].get() + 38), nullptr);
}

}  // namespace
