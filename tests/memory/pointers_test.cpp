#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class Pointers : public SessionTest {};

TEST_F(Pointers, NewPtrIsZeroedAndSized) {
  vars.MemErr = kPoison;
  Ptr p = NewPtr(4000);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_TRUE(AllBytesAre(p, 4000, 0));
  EXPECT_EQ(GetPtrSize(p), 4000);
  UInt32 before = LibraryBytes();
  DisposePtr(p);
  EXPECT_EQ(before - LibraryBytes(), 4000u);

  vars.MemErr = kPoison;
  EXPECT_EQ(NewPtr(-1), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
}

TEST_F(Pointers, AddressesThatAreNoBlockStartAreIgnored) {
  Ptr p = NewPtr(100);
  char onStack[16] = {};
  EXPECT_EQ(GetPtrSize(p + 8), 0);
  EXPECT_EQ(GetPtrSize(onStack), 0);
  EXPECT_EQ(GetPtrSize(nullptr), 0);
  UInt32 before = LibraryBytes();
  DisposePtr(p + 8);
  DisposePtr(onStack);
  DisposePtr(nullptr);
  EXPECT_EQ(LibraryBytes(), before);
  EXPECT_EQ(GetPtrSize(p), 100) << "the block is still there";
  vars.MemErr = kPoison;
  SetPtrSize(p + 8, 10);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetPtrSize(p), 100);
  DisposePtr(p);
}

// A pointer never moves: shrinking works in place, growing either works in
// place or fails with memFullErr and leaves the block as it was.
TEST_F(Pointers, SetPtrSizeNeverMovesTheBlock) {
  Ptr p = NewPtr(1000);
  for (int i = 0; i < 1000; ++i) p[i] = static_cast<char>(i);
  Ptr blocker = NewPtr(1000);
  vars.MemErr = kPoison;
  SetPtrSize(p, 400);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetPtrSize(p), 400);
  for (int i = 0; i < 400; ++i) ASSERT_EQ(p[i], static_cast<char>(i));

  vars.MemErr = kPoison;
  SetPtrSize(p, 1000000);
  if (vars.MemErr == noErr) {
    EXPECT_EQ(GetPtrSize(p), 1000000);
  } else {
    EXPECT_EQ(vars.MemErr, memFullErr);
    EXPECT_EQ(GetPtrSize(p), 400);
  }
  for (int i = 0; i < 400; ++i) ASSERT_EQ(p[i], static_cast<char>(i));

  KWE_SetMemoryLimits(1, LibraryBytes() + 100, 0, 0);
  SetPtrSize(p, GetPtrSize(p) + 1000);
  EXPECT_EQ(vars.MemErr, memFullErr) << "the limit applies to the growth";
  DisposePtr(p);
  DisposePtr(blocker);
}

TEST_F(Pointers, BlockMoveIsOverlapSafeAtAnySize) {
  const int n = 100000;
  std::vector<char> buffer(n + 5000);
  auto pattern = [](int i) { return static_cast<char>(i * 7 + i / 251); };
  for (int i = 0; i < n; ++i) buffer[i] = pattern(i);
  BlockMove(buffer.data(), buffer.data() + 4999, n);  // forward overlap
  for (int i = 0; i < n; ++i) ASSERT_EQ(buffer[i + 4999], pattern(i)) << i;
  BlockMove(buffer.data() + 4999, buffer.data() + 1, n);  // backward overlap
  for (int i = 0; i < n; ++i) ASSERT_EQ(buffer[i + 1], pattern(i)) << i;

  char small[8] = "abcdefg";
  BlockMove(small, small + 2, 4);
  EXPECT_STREQ(small, "ababcdg");

  char target[4] = "xyz";
  BlockMove(reinterpret_cast<const void*>(0xFFFF), target, 3);
  BlockMove(nullptr, target, 3);
  BlockMove("abc", target, 0);
  BlockMove("abc", target, -3);
  EXPECT_STREQ(target, "xyz");
  BlockMove("abc", reinterpret_cast<void*>(0xFFFF), 3);  // no write through an empty handle
  BlockMove("abc", nullptr, 3);
}

}  // namespace
