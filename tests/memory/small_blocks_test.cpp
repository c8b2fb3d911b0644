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

class SmallBlocks : public SessionTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagSmallBlocks; }
};

// Handles below the limit of system value 15 share the platform blocks of
// heaps, which go back once they empty; a purge does not count their bytes.
TEST_F(SmallBlocks, SmallHandlesShareHeapsThatGoWhenTheyEmpty) {
  EXPECT_EQ(KWE_SystemValue(1, 15, 1024), 8192);
  Handle big = NewHandle(1024);
  EXPECT_EQ(LocalSize(LocalHandle(*big)), 1024u) << "the limit itself gets a block of its own";
  for (int round = 0; round < 2; ++round) {  // the second finds its master records free
    UInt32 start = LibraryBytes();
    std::vector<Handle> handles;
    for (int i = 0; i < 1000; ++i) {
      handles.push_back(NewHandle(1 + i % 1023));
      ASSERT_TRUE(AllBytesAre(*handles.back(), 1 + i % 1023, 0)) << i;
      Fill(handles.back(), static_cast<unsigned char>(i));
    }
    for (int i = 0; i < 1000; ++i) {
      ASSERT_TRUE(HoldsFill(handles[i], static_cast<unsigned char>(i), 1 + i % 1023)) << i;
      DisposeHandle(handles[i]);
    }
    EXPECT_TRUE(round == 0 || LibraryBytes() == start) << LibraryBytes() - start << " bytes kept";
  }
  Handle a = NewHandle(600), b = NewHandle(600);
  for (Handle h : {a, b, big}) HPurge(h);
  PurgeMem(1000);
  EXPECT_EQ(*big, nullptr) << "only the platform block's 1,024 bytes reached 1,000";
}

// Growth takes a freed neighbour in place; data that has to move, or crosses
// the limit either way, keeps its bytes, and the bytes gained are cleared.
TEST_F(SmallBlocks, GrowingInPlaceOrMovingKeepsTheData) {
  Handle a = NewHandle(100), b = NewHandle(100);
  NewHandle(100);  // so that growing past b has to move
  Fill(a, 40);
  Ptr place = *a;
  DisposeHandle(b);
  Size kept = 100;
  for (Size size : {180, 20, 100, 2000, 20000, 50}) {
    SetHandleSize(a, size);
    ASSERT_EQ(vars.MemErr, noErr) << size;
    EXPECT_TRUE(size > 180 || *a == place) << size << ": moved, though there was room";
    kept = std::min(kept, size);
    EXPECT_TRUE(HoldsFill(a, 40, kept)) << size;
    EXPECT_TRUE(AllBytesAre(*a + kept, size - kept, 0)) << size;
  }
  EXPECT_EQ(RecoverHandle(*a), a);
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
  EXPECT_NE(NewHandle(100), nullptr);
}

// The heap check's reports: the WM_USER + 2 messages the main window gets.
std::vector<LPARAM> g_damageReports;

LRESULT CALLBACK RecordingWindowProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_USER + 2) g_damageReports.push_back(lp);
  return DefWindowProcA(w, m, wp, lp);
}

class HeapCheck : public SmallBlocks {
 protected:
  UInt32 SessionFlags() const override { return kweFlagSmallBlocks | kweFlagHeapCheck; }
  void SetUp() override {
    SessionTest::SetUp();
    SetWindowLongPtrA(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordingWindowProc));
    g_damageReports.clear();
  }
};

// A used block overwritten past its end is not released: the main window
// hears of it, and the block is not handed out again. Intact heaps, however
// much they were used, send nothing.
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
  std::memset(data + 10, 0x55, 4);
  DisposeHandle(h);
  ASSERT_FALSE(g_damageReports.empty());
  EXPECT_EQ(g_damageReports, std::vector<LPARAM>(g_damageReports.size(), 0));
  EXPECT_NE(*NewHandle(10), data) << "the damaged block stayed allocated";
  DisposeHandle(after);
}

// A freed block damaged in front of its data, or the free rest of a heap
// shrunk by a forged size, makes the heap serve nothing more though it has
// room: the next request of that size needs a new heap. Checked, every call
// reports; unchecked, the damage is silent but still avoided.
TEST_F(HeapCheck, AHeapWithADamagedFreeBlockServesNothingMore) {
  const UInt32 garbage = 0x55555555, shrunk = 0xABF30008;  // a free head tag, payload 8
  for (bool checked : {true, false}) {
    for (bool rest : {false, true}) {
      SCOPED_TRACE(::testing::Message() << "checked " << checked << ", rest " << rest);
      KWE_SetFlags(kweFlagHeapCheck, checked ? kweFlagHeapCheck : 0, 0, 0);
      g_damageReports.clear();
      Handle first = NewHandle(10), second = NewHandle(10);
      Ptr firstData = *first;
      DisposeHandle(first);
      std::memcpy(rest ? *second + 14 : firstData - 6, rest ? &shrunk : &garbage, 4);
      UInt32 before = LibraryBytes();
      EXPECT_NE(NewHandle(rest ? 100 : 10), nullptr);
      EXPECT_GE(LibraryBytes() - before, 16384u);
      NewHandle(20);
      EXPECT_EQ(std::min<size_t>(g_damageReports.size(), 2), checked ? 2u : 0u) << "reports";
    }
  }
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

}  // namespace
