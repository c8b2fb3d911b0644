// The small-block heap's byte layout, natively under the sanitizers: a
// seeded sweep of allocations, resizes and releases checked after every step.
#include "memory/small_block_layout.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

using namespace kwe::memory::small_heap;

struct Block {
  unsigned char* data;
  uint32_t size;
  unsigned char seed;
};

void FillBlock(const Block& b) {
  for (uint32_t i = 0; i < b.size; ++i) b.data[i] = static_cast<unsigned char>(b.seed + i);
}

bool Holds(const Block& b, uint32_t n) {
  for (uint32_t i = 0; i < n; ++i) {
    if (b.data[i] != static_cast<unsigned char>(b.seed + i)) return false;
  }
  return true;
}

class HeapLayout : public ::testing::Test {
 protected:
  static constexpr uint32_t kBytes = 16384;
  alignas(8) unsigned char memory[kBytes] = {};  // zero, as a platform block comes
  HeapHeader* heap = FormatHeap(memory, kBytes);
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
  EXPECT_TRUE(CheckHeap(heap));
  EXPECT_TRUE(HeapIsEmpty(heap));
  EXPECT_EQ(heap->usable, kBytes - 32);
  Allocation a = AllocateInHeap(heap, kBytes - 32 - 8 - 2);  // exactly the whole block
  ASSERT_EQ(a.outcome, Outcome::Served);
  EXPECT_EQ(AllocateInHeap(heap, 1).outcome, Outcome::NoRoom);
  ReleaseInHeap(heap, a.pointer);
  EXPECT_TRUE(HeapIsEmpty(heap));
  EXPECT_TRUE(CheckHeap(heap));
}

// Any failing step can be replayed from its seed and step number.
void Sweep(HeapHeader* heap, unsigned seed, uint32_t largest) {
  std::mt19937 random(seed);
  std::vector<Block> live;
  for (int step = 0; step < 20000; ++step) {
    SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step);
    int action = static_cast<int>(random() % 3);
    if (action == 0 || live.empty()) {
      uint32_t size = random() % largest;
      Allocation a = AllocateInHeap(heap, size);
      ASSERT_NE(a.outcome, Outcome::Damaged);
      if (a.outcome == Outcome::Served) {
        Block b{static_cast<unsigned char*>(a.pointer), size, static_cast<unsigned char>(random())};
        for (uint32_t i = 0; i < size; ++i) ASSERT_EQ(b.data[i], 0);
        EXPECT_EQ(RequestedSize(b.data), size);
        FillBlock(b);
        live.push_back(b);
      }
    } else if (action == 1) {
      size_t i = random() % live.size();
      ASSERT_TRUE(IsIntactUsedBlock(heap, live[i].data));
      ASSERT_TRUE(Holds(live[i], live[i].size));
      ReleaseInHeap(heap, live[i].data);
      live.erase(live.begin() + static_cast<long>(i));
    } else {
      Block& b = live[random() % live.size()];
      uint32_t size = random() % (largest + largest / 2);
      uint32_t kept = std::min(size, b.size);
      if (ResizeInPlace(heap, b.data, size)) {
        ASSERT_TRUE(Holds(b, kept));
        for (uint32_t i = kept; i < size; ++i) ASSERT_EQ(b.data[i], 0);
        b.size = size;
        FillBlock(b);
      }
    }
    ASSERT_TRUE(CheckHeap(heap));
  }
  for (const Block& b : live) {
    ASSERT_TRUE(Holds(b, b.size));
    ReleaseInHeap(heap, b.data);
  }
  EXPECT_TRUE(HeapIsEmpty(heap));
}

TEST_F(HeapLayout, SeededSweepsKeepEveryBlockAndTheHeapIntact) {
  Sweep(heap, 20240611, 600);  // many small blocks
  Sweep(heap, 7, 4000);        // few large ones, often reaching the heap's end
  Sweep(heap, 99, 16000);      // requests the heap mostly cannot serve
}

TEST_F(HeapLayout, DamageIsFoundByTheCheckAndTheTags) {
  Allocation a = AllocateInHeap(heap, 10);
  Allocation b = AllocateInHeap(heap, 10);
  auto* data = static_cast<unsigned char*>(a.pointer);
  unsigned char saved[4];
  std::memcpy(saved, data + 10, 4);
  std::memset(data + 10, 0x55, 4);  // a's tail tag
  EXPECT_FALSE(IsIntactUsedBlock(heap, data));
  EXPECT_FALSE(CheckHeap(heap));
  std::memcpy(data + 10, saved, 4);
  EXPECT_TRUE(CheckHeap(heap));

  ReleaseInHeap(heap, data);
  std::memset(data - 6, 0x55, 4);  // the freed block's head tag
  EXPECT_FALSE(CheckHeap(heap));
  EXPECT_EQ(AllocateInHeap(heap, 4).outcome, Outcome::Damaged);
  EXPECT_TRUE(IsIntactUsedBlock(heap, b.pointer));
}

}  // namespace
