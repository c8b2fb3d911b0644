#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <vector>

#include "Memory.h"
#include "OSUtils.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

// A small block is a 32-bit head tag, the 16-bit requested size, the data,
// and a 32-bit tail tag; the handle's master pointer is the data.
UInt32 HeadTag(Ptr data) {
  UInt32 tag;
  std::memcpy(&tag, data - 6, 4);
  return tag;
}
UInt16 PayloadOf(Ptr data) { return static_cast<UInt16>(HeadTag(data) & 0xFFFF); }
UInt32 TailTag(Ptr data) {
  UInt32 tag;
  std::memcpy(&tag, data - 2 + PayloadOf(data), 4);
  return tag;
}
UInt16 RequestedSize(Ptr data) {
  UInt16 size;
  std::memcpy(&size, data - 2, 2);
  return size;
}

constexpr UInt32 kUsedHeadMagic = 0x2BF3u << 16;
constexpr UInt32 kFreeHeadMagic = 0xABF3u << 16;
constexpr UInt32 kUsedTailMagic = 0x3B5Cu << 16;

class SmallBlocks : public SmallBlockSession {};

TEST_F(SmallBlocks, SmallHandlesLiveInTaggedBlocks) {
  Handle h = NewHandle(10);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(Master(h).flags & kSmallBlockFlag, kSmallBlockFlag);
  EXPECT_EQ(Master(h).platformBlock, reinterpret_cast<void*>(0xFFFF));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  EXPECT_TRUE(AllBytesAre(*h, 10, 0));
  EXPECT_EQ(HeadTag(*h), kUsedHeadMagic | 12) << "10 bytes take a 12-byte payload";
  EXPECT_EQ(TailTag(*h), kUsedTailMagic | 12);
  EXPECT_EQ(RequestedSize(*h), 10);
  EXPECT_EQ(RecoverHandle(*h), h);

  Handle one = NewHandle(1);
  EXPECT_EQ(PayloadOf(*one), 8) << "the smallest payload";
  Handle atLimit = NewHandle(8192);
  Handle belowLimit = NewHandle(8191);
  EXPECT_EQ(Master(atLimit).flags & kSmallBlockFlag, 0) << "the limit itself is not small";
  EXPECT_EQ(Master(belowLimit).flags & kSmallBlockFlag, kSmallBlockFlag);
  for (Handle x : {h, one, atLimit, belowLimit}) DisposeHandle(x);
}

// Handles of 100 bytes take 112 bytes each, so 146 fill a heap of 16,384
// bytes; disposing them all gives every heap back. (The session's document
// list may already have started a heap.)
TEST_F(SmallBlocks, HeapsComeAndGoWithTheirBlocks) {
  const UInt32 masterBlockBytes = sizeof(void*) == 4 ? 64 * 14 + 20 : 64 * 24 + 32;
  UInt32 start = LibraryBytes();
  UInt32 masterBytes = 0;
  std::vector<int> heapStarts;
  std::vector<Handle> smalls;
  for (int i = 0; i < 1000; ++i) {
    UInt32 before = LibraryBytes();
    Handle h = NewHandle(100);
    ASSERT_NE(h, nullptr);
    UInt32 growth = LibraryBytes() - before;
    if (growth >= 16384) {
      heapStarts.push_back(i);
      growth -= 16384;
    }
    ASSERT_TRUE(growth == 0 || growth == masterBlockBytes) << i << ": " << growth;
    masterBytes += growth;
    Fill(h, static_cast<unsigned char>(i));
    smalls.push_back(h);
  }
  ASSERT_GE(heapStarts.size(), 6u);
  for (size_t k = 1; k < heapStarts.size(); ++k) {
    EXPECT_EQ(heapStarts[k] - heapStarts[k - 1], 146) << "heap " << k;
  }
  for (int i = 0; i < 1000; ++i) {
    ASSERT_TRUE(HoldsFill(smalls[i], static_cast<unsigned char>(i), 100)) << i;
    DisposeHandle(smalls[i]);
  }
  EXPECT_EQ(LibraryBytes() - start, masterBytes) << "every heap went back; master blocks stay";
}

TEST_F(SmallBlocks, FreedNeighboursMergeAndAreReused) {
  Handle a = NewHandle(100), b = NewHandle(100), c = NewHandle(100);
  Ptr aData = *a;
  ASSERT_EQ(*b, aData + 112) << "blocks are laid out one after the other";
  DisposeHandle(a);
  DisposeHandle(b);
  EXPECT_EQ(HeadTag(aData), kFreeHeadMagic | (104 + 8 + 104)) << "one merged free block";
  Handle d = NewHandle(200);  // a payload of 204 fits the merged 216 whole
  EXPECT_EQ(*d, aData);
  EXPECT_EQ(PayloadOf(*d), 216);
  EXPECT_TRUE(AllBytesAre(*d, 200, 0)) << "old contents are cleared";
  DisposeHandle(c);
  DisposeHandle(d);
}

TEST_F(SmallBlocks, GrowingIntoAFreeNeighbourKeepsTheAddress) {
  Handle a = NewHandle(100), b = NewHandle(100), c = NewHandle(100);
  Fill(a, 40);
  Ptr aData = *a;
  DisposeHandle(b);
  SetHandleSize(a, 180);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*a, aData);
  EXPECT_TRUE(HoldsFill(a, 40, 100));
  EXPECT_TRUE(AllBytesAre(*a + 100, 80, 0)) << "the bytes gained are cleared";
  SetHandleSize(a, 20);
  EXPECT_EQ(*a, aData) << "shrinking stays in place";
  SetHandleSize(a, 100);
  EXPECT_TRUE(HoldsFill(a, 40, 20));
  EXPECT_TRUE(AllBytesAre(*a + 20, 80, 0));

  // With no room behind it the block moves, keeping its contents.
  SetHandleSize(a, 2000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_NE(*a, aData);
  EXPECT_TRUE(HoldsFill(a, 40, 20));
  EXPECT_EQ(RecoverHandle(*a), a);
  DisposeHandle(a);
  DisposeHandle(c);
}

TEST_F(SmallBlocks, CrossingTheLimitMovesBetweenHeapAndPlatformBlock) {
  Handle h = NewHandle(5000);
  Fill(h, 77);
  SetHandleSize(h, 20000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(Master(h).flags & kSmallBlockFlag, 0);
  EXPECT_NE(Master(h).platformBlock, reinterpret_cast<void*>(0xFFFF));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  EXPECT_TRUE(HoldsFill(h, 77, 5000));
  EXPECT_TRUE(AllBytesAre(*h + 5000, 15000, 0));
  SetHandleSize(h, 3000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(Master(h).flags & kSmallBlockFlag, kSmallBlockFlag);
  EXPECT_EQ(RequestedSize(*h), 3000);
  EXPECT_TRUE(HoldsFill(h, 77, 3000));
  EmptyHandle(h);
  EXPECT_EQ(Master(h).flags & kSmallBlockFlag, 0);
  EXPECT_EQ(*h, nullptr);
  DisposeHandle(h);
}

TEST_F(SmallBlocks, TheLimitIsSystemValueFifteen) {
  SInt32 old = KWE_SystemValue(1, 15, 1024);
  EXPECT_EQ(old, 8192);
  Handle big = NewHandle(2000);
  Handle small = NewHandle(1000);
  EXPECT_EQ(Master(big).flags & kSmallBlockFlag, 0);
  EXPECT_EQ(Master(small).flags & kSmallBlockFlag, kSmallBlockFlag);
  DisposeHandle(big);
  DisposeHandle(small);
  KWE_SystemValue(1, 15, old);
}

// Small blocks go back to their heap, not to the platform, so a purge pass
// does not count them and goes on to the next purgeable handle.
TEST_F(SmallBlocks, PurgingDoesNotCountSmallBlocks) {
  Handle a = NewHandle(600), b = NewHandle(600), big = NewHandle(9000);
  for (Handle h : {a, b, big}) HPurge(h);
  PurgeMem(1000);
  EXPECT_EQ(*a, nullptr);
  EXPECT_EQ(*b, nullptr);
  EXPECT_EQ(*big, nullptr) << "only the platform block's 9,000 bytes reached 1,000";
  for (Handle h : {a, b, big}) DisposeHandle(h);
}

}  // namespace
