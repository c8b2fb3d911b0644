#include <gtest/gtest.h>
#include <windows.h>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class HandleResize : public SessionTest {};

TEST_F(HandleResize, GrowingKeepsTheDataAndZeroesTheNewBytes) {
  Handle h = NewHandle(100);
  Fill(h, 7);
  Handle neighbour = NewHandle(100);  // so that growing has to move the data
  vars.MemErr = kPoison;
  SetHandleSize(h, 1000000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetHandleSize(h), 1000000);
  EXPECT_TRUE(HoldsFill(h, 7, 100));
  EXPECT_TRUE(AllBytesAre(*h + 100, 1000000 - 100, 0));
  EXPECT_EQ(RecoverHandle(*h), h) << "the master pointer follows the data";
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);

  SetHandleSize(h, 50);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetHandleSize(h), 50);
  EXPECT_TRUE(HoldsFill(h, 7, 50));
  DisposeHandle(h);
  DisposeHandle(neighbour);
}

TEST_F(HandleResize, SizeZeroKeepsTheHandleAndItsBlock) {
  Handle h = NewHandle(300);
  UInt32 before = LibraryBytes();
  SetHandleSize(h, 0);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*h, kNoBlock);
  EXPECT_EQ(GetHandleSize(h), 0);
  EXPECT_EQ(HGetState(h), 0) << "unlocked: there is nothing to lock";
  EXPECT_NE(Master(h).platformBlock, nullptr) << "the discarded block stays with the handle";
  EXPECT_EQ(before - LibraryBytes(), 300u);

  SetHandleSize(h, 30);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(*h, kNoBlock);
  EXPECT_TRUE(AllBytesAre(*h, 30, 0));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  DisposeHandle(h);
}

TEST_F(HandleResize, SameSizeReturnsAtOnceAndNegativeSizeChangesNothing) {
  Handle h = NewHandle(64);
  Fill(h, 1);
  Ptr data = *h;
  vars.MemErr = kPoison;
  SetHandleSize(h, 64);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*h, data);
  vars.MemErr = kPoison;
  SetHandleSize(h, -1);
  EXPECT_EQ(vars.MemErr, kPoison) << "a negative size does not even set MemErr";
  EXPECT_EQ(GetHandleSize(h), 64);
  EXPECT_EQ(*h, data);
  EXPECT_TRUE(HoldsFill(h, 1, 64));
  vars.MemErr = kPoison;
  EXPECT_EQ(NewHandle(-5), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  DisposeHandle(h);
}

// A thousand requests that cannot be had: each fails with memFullErr, the
// handle keeps its data and size, and neither the library's figure nor the
// process heap keeps a byte of them.
TEST_F(HandleResize, FailedRequestsKeepTheHandleAndLeakNothing) {
  Handle h = NewHandle(1000);
  Fill(h, 3);
  Ptr data = *h;
  KWE_SetMemoryLimits(1, LibraryBytes() + 10000, 0, 0);

  UInt32 libraryBefore = LibraryBytes();
  uint64_t heapBefore = ProcessHeapBytesInUse();
  int wrongResults = 0;
  for (int i = 0; i < 1000; ++i) {
    vars.MemErr = kPoison;
    SetHandleSize(h, 1000000);
    if (vars.MemErr != memFullErr || *h != data || GetHandleSize(h) != 1000) ++wrongResults;
    vars.MemErr = kPoison;
    if (NewHandle(500000) != nullptr || vars.MemErr != memFullErr) ++wrongResults;
    vars.MemErr = kPoison;
    if (NewPtr(500000) != nullptr || vars.MemErr != memFullErr) ++wrongResults;
  }
  EXPECT_EQ(wrongResults, 0);
  EXPECT_EQ(ProcessHeapBytesInUse(), heapBefore);
  EXPECT_EQ(LibraryBytes(), libraryBefore);
  EXPECT_TRUE(HoldsFill(h, 3, 1000));

  KWE_SetMemoryLimits(0, 0, 0, 0);
  SetHandleSize(h, 1000000);
  EXPECT_EQ(vars.MemErr, noErr) << "without the limit the same request succeeds";
  EXPECT_TRUE(HoldsFill(h, 3, 1000));
  DisposeHandle(h);
}

TEST_F(HandleResize, APurgeableHandleIsNotPurgedByItsOwnGrowth) {
  Handle h = NewHandle(40000);
  Fill(h, 9);
  HPurge(h);
  KWE_SetMemoryLimits(1, LibraryBytes() + 10000, 1000, 0);
  vars.MemErr = kPoison;
  SetHandleSize(h, 90000);
  EXPECT_EQ(vars.MemErr, memFullErr);
  ASSERT_NE(*h, nullptr) << "the handle being resized was purged";
  EXPECT_EQ(GetHandleSize(h), 40000);
  EXPECT_TRUE(HoldsFill(h, 9, 40000));
  DisposeHandle(h);
}

}  // namespace
