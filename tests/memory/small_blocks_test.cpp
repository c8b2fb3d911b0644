// Small handles in sub-allocated heaps (session flag 0x00000008), and the
// heap check of flag 0x00000004 that reports damage to the main window.
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
bool IsSmall(Handle h) { return (Master(h).flags & kSmallBlockFlag) != 0; }

constexpr UInt32 kUsedHeadMagic = 0x2BF3u << 16;
constexpr UInt32 kFreeHeadMagic = 0xABF3u << 16;
constexpr UInt32 kUsedTailMagic = 0x3B5Cu << 16;

using SmallBlocks = SmallBlockSession;

TEST_F(SmallBlocks, SmallHandlesLiveInTaggedBlocksBelowSystemValueFifteen) {
  Handle h = NewHandle(10);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_TRUE(IsSmall(h));
  EXPECT_EQ(Master(h).platformBlock, reinterpret_cast<void*>(0xFFFF));
  EXPECT_EQ(State(h), 0x80);
  EXPECT_TRUE(AllBytesAre(*h, 10, 0));
  EXPECT_EQ(HeadTag(*h), kUsedHeadMagic | 12) << "10 bytes take a 12-byte payload";
  EXPECT_EQ(TailTag(*h), kUsedTailMagic | 12);
  EXPECT_EQ(RequestedSize(*h), 10);
  EXPECT_EQ(RecoverHandle(*h), h);
  Handle one = NewHandle(1), atLimit = NewHandle(8192), belowLimit = NewHandle(8191);
  EXPECT_EQ(PayloadOf(*one), 8) << "the smallest payload";
  EXPECT_FALSE(IsSmall(atLimit)) << "the limit itself is not small";
  EXPECT_TRUE(IsSmall(belowLimit));

  EXPECT_EQ(KWE_SystemValue(1, 15, 1024), 8192);
  Handle big = NewHandle(2000), small = NewHandle(1000);
  EXPECT_FALSE(IsSmall(big));
  EXPECT_TRUE(IsSmall(small));
  for (Handle x : {h, one, atLimit, belowLimit, big, small}) DisposeHandle(x);
}

// Handles of 100 bytes take 112 bytes each, so 146 fill a heap of 16,384
// bytes; disposing them all gives every heap back. (The session's document
// list may already have started a heap.)
TEST_F(SmallBlocks, HeapsComeAndGoWithTheirBlocks) {
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
    ASSERT_TRUE(growth == 0 || growth == MasterBlockBytes(64)) << i << ": " << growth;
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

// Growth takes a freed neighbour in place; a block that moves away leaves
// one free block merged with that neighbour's rest, and it is used again.
TEST_F(SmallBlocks, FreedNeighboursAreGrownIntoMergedAndReused) {
  Handle a = NewHandle(100), b = NewHandle(100), c = NewHandle(100);
  Fill(a, 40);
  Ptr aData = *a;
  ASSERT_EQ(*b, aData + 112) << "blocks are laid out one after the other";
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
  SetHandleSize(a, 2000);  // no room behind it: the block moves with its contents
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_NE(*a, aData);
  EXPECT_TRUE(HoldsFill(a, 40, 20));
  EXPECT_EQ(RecoverHandle(*a), a);

  EXPECT_EQ(HeadTag(aData), kFreeHeadMagic | (104 + 8 + 104)) << "one merged free block";
  Handle d = NewHandle(200);  // a payload of 204 fits the merged 216 whole
  EXPECT_EQ(*d, aData);
  EXPECT_EQ(PayloadOf(*d), 216);
  EXPECT_TRUE(AllBytesAre(*d, 200, 0)) << "old contents are cleared";
  for (Handle h : {a, c, d}) DisposeHandle(h);
}

TEST_F(SmallBlocks, CrossingTheLimitMovesBetweenHeapAndPlatformBlock) {
  Handle h = NewHandle(5000);
  Fill(h, 77);
  SetHandleSize(h, 20000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_FALSE(IsSmall(h));
  EXPECT_NE(Master(h).platformBlock, reinterpret_cast<void*>(0xFFFF));
  EXPECT_EQ(State(h), 0x80);
  EXPECT_TRUE(HoldsFill(h, 77, 5000));
  EXPECT_TRUE(AllBytesAre(*h + 5000, 15000, 0));
  SetHandleSize(h, 3000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_TRUE(IsSmall(h));
  EXPECT_EQ(RequestedSize(*h), 3000);
  EXPECT_TRUE(HoldsFill(h, 77, 3000));
  EmptyHandle(h);
  EXPECT_FALSE(IsSmall(h));
  EXPECT_EQ(*h, nullptr);
  DisposeHandle(h);
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

// The heap check's reports: the WM_USER + 2 messages the main window gets.
constexpr UINT kHeapDamaged = WM_USER + 2;
std::vector<LPARAM> g_damageReports;

LRESULT CALLBACK RecordingWindowProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == kHeapDamaged) {
    EXPECT_EQ(wp, 0u);
    g_damageReports.push_back(lp);
  }
  return DefWindowProcA(w, m, wp, lp);
}

void Scribble(Ptr at) { std::memset(at, 0x55, 4); }

// Whether two addresses lie in the same small-block heap: the same busy
// block of the process heap, where the heaps take their memory. (The session
// may have small blocks of its own, so a handle's place in its heap is not
// known beforehand.)
bool InHeapOf(Ptr inHeap, Ptr p) {
  HANDLE heap = GetProcessHeap();
  auto a = reinterpret_cast<uintptr_t>(inHeap), b = reinterpret_cast<uintptr_t>(p);
  bool same = false;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry)) {
    auto start = reinterpret_cast<uintptr_t>(entry.lpData), end = start + entry.cbData;
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) && a >= start && a < end) {
      same = b >= start && b < end;
      break;
    }
  }
  HeapUnlock(heap);
  return same;
}

class HeapCheck : public SessionTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagSmallBlocks | kweFlagHeapCheck; }
  void SetUp() override {
    SessionTest::SetUp();
    SetWindowLongPtrA(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordingWindowProc));
    g_damageReports.clear();
  }
};

// A used block whose tail tag was overwritten is not released: the main
// window hears of it, and the block is not handed out again. Intact heaps,
// however much they were used, send nothing.
TEST_F(HeapCheck, ADamagedBlockIsReportedAndNotReleased) {
  std::vector<Handle> handles;
  for (int i = 0; i < 300; ++i) handles.push_back(NewHandle(1 + i % 90));
  for (int i = 0; i < 300; i += 3) DisposeHandle(handles[i]);
  for (int i = 1; i < 300; i += 3) SetHandleSize(handles[i], 150);
  for (int i = 1; i < 300; ++i) {
    if (i % 3) DisposeHandle(handles[i]);
  }
  EXPECT_TRUE(g_damageReports.empty());

  Handle h = NewHandle(10), after = NewHandle(10);
  Ptr data = *h;
  Scribble(data + 10);  // the tail tag behind the 12-byte payload
  DisposeHandle(h);
  ASSERT_FALSE(g_damageReports.empty());
  EXPECT_EQ(g_damageReports[0], 0);
  Handle again = NewHandle(10);
  EXPECT_NE(*again, data) << "the damaged block stayed allocated";
  DisposeHandle(again);
  DisposeHandle(after);
}

// A free block with a damaged head tag makes its heap serve nothing more:
// the next request comes from a new heap, and every checked call reports.
TEST_F(HeapCheck, AHeapWithADamagedFreeBlockServesNothingMore) {
  Handle first = NewHandle(10), second = NewHandle(10);
  Ptr firstData = *first;
  DisposeHandle(first);
  Scribble(firstData - 6);
  Handle next = NewHandle(10);
  ASSERT_NE(next, nullptr);
  EXPECT_FALSE(g_damageReports.empty());
  EXPECT_FALSE(InHeapOf(firstData, *next));
  EXPECT_TRUE(InHeapOf(firstData, *second));
  g_damageReports.clear();
  Handle another = NewHandle(20);
  EXPECT_FALSE(InHeapOf(firstData, *another));
  EXPECT_FALSE(g_damageReports.empty()) << "every checked operation reports again";
}

TEST_F(HeapCheck, DisposingAHandleThatIsNoMasterRecordIsReported) {
  Ptr fake[4] = {};
  char stray[32] = {};
  fake[0] = stray;
  auto bogus = reinterpret_cast<Handle>(fake);
  DisposeHandle(bogus);
  EXPECT_EQ(g_damageReports, std::vector<LPARAM>{reinterpret_cast<LPARAM>(bogus)});
  EXPECT_EQ(fake[0], stray) << "nothing is written through a stray handle";
}

// A program that writes through a disposed handle's old master pointer
// writes over the free block's list links. Whatever it writes there, later
// requests and releases, and the heaps given back when they empty, go on
// without touching memory outside the heaps.
TEST_F(SmallBlocks, WritesThroughADisposedHandlesPointerCrashNothing) {
  for (UInt32 value = 0; value < 256; value += 3) {
    Handle before = NewHandle(40), gone = NewHandle(7000 - value), after = NewHandle(40);
    Ptr stale = *gone;
    DisposeHandle(gone);
    UInt32 links[2] = {value * 0x00010001u, value << 8};
    std::memcpy(stale - 2, links, sizeof links);
    std::vector<Handle> churn;
    for (UInt32 i = 0; i < 40; ++i)
      churn.push_back(NewHandle(static_cast<Size>(16 + (i * 97 + value) % 6000)));
    for (Handle h : churn) DisposeHandle(h);
    DisposeHandle(before);
    DisposeHandle(after);
  }
  Handle h = NewHandle(100);
  EXPECT_NE(h, nullptr);
  DisposeHandle(h);
}

// Without the heap-check flag damage is not reported, but the damaged heap
// still serves nothing.
TEST_F(SmallBlocks, UncheckedDamageIsSilentButStillAvoided) {
  SetWindowLongPtrA(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordingWindowProc));
  g_damageReports.clear();
  Handle first = NewHandle(10), second = NewHandle(10);
  Ptr firstData = *first;
  DisposeHandle(first);
  Scribble(firstData - 6);
  Handle next = NewHandle(10);
  EXPECT_FALSE(InHeapOf(firstData, *next));
  EXPECT_TRUE(g_damageReports.empty());
  DisposeHandle(second);
  DisposeHandle(next);
}

}  // namespace
