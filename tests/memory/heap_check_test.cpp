#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

// A heap's blocks start 32 bytes in; the first handle's data is 6 bytes
// further (head tag, size word). Heaps are 16,384 bytes by default.
constexpr uintptr_t kFirstDataOffset = 38;
constexpr uintptr_t kHeapBytes = 16384;

void Scribble(Ptr at) { std::memset(at, 0x55, 4); }

bool InHeapOf(Ptr firstData, Ptr p) {
  auto base = reinterpret_cast<uintptr_t>(firstData) - kFirstDataOffset;
  auto address = reinterpret_cast<uintptr_t>(p);
  return address >= base && address < base + kHeapBytes;
}

class HeapCheck : public CheckedSmallBlockSession {};

TEST_F(HeapCheck, IntactHeapsSendNothing) {
  std::vector<Handle> handles;
  for (int i = 0; i < 300; ++i) handles.push_back(NewHandle(1 + i % 90));
  for (int i = 0; i < 300; i += 3) DisposeHandle(handles[i]);
  for (int i = 1; i < 300; i += 3) SetHandleSize(handles[i], 150);
  for (int i = 1; i < 300; ++i) {
    if (i % 3) DisposeHandle(handles[i]);
  }
  EXPECT_TRUE(MessagesOf(kHeapDamaged).empty());
}

// A used block whose tail tag was overwritten is not released: the main
// window hears of it, and the block is not handed out again.
TEST_F(HeapCheck, ADamagedBlockIsReportedAndNotReleased) {
  Handle h = NewHandle(10);
  Handle after = NewHandle(10);
  Ptr data = *h;
  Scribble(data + 10);  // the tail tag behind the 12-byte payload
  vars.MemErr = kPoison;
  DisposeHandle(h);
  std::vector<WindowMessage> seen = MessagesOf(kHeapDamaged);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen[0].wParam, 0u);
  EXPECT_EQ(seen[0].lParam, 0);
  Handle again = NewHandle(10);
  EXPECT_NE(*again, data) << "the damaged block stayed allocated";
  DisposeHandle(again);
  DisposeHandle(after);
}

// A free block with a damaged head tag makes its heap serve nothing more:
// the next request comes from a new heap.
TEST_F(HeapCheck, AHeapWithADamagedFreeBlockServesNothingMore) {
  Handle first = NewHandle(10);
  Handle second = NewHandle(10);
  Ptr firstData = *first;
  DisposeHandle(first);
  ASSERT_TRUE(MessagesOf(kHeapDamaged).empty());
  Scribble(firstData - 6);
  Handle next = NewHandle(10);
  ASSERT_NE(next, nullptr);
  EXPECT_FALSE(MessagesOf(kHeapDamaged).empty());
  EXPECT_FALSE(InHeapOf(firstData, *next));
  EXPECT_TRUE(InHeapOf(firstData, *second));
  RecordedMessages().clear();
  Handle another = NewHandle(20);
  EXPECT_FALSE(InHeapOf(firstData, *another));
  EXPECT_FALSE(MessagesOf(kHeapDamaged).empty()) << "every checked operation reports again";
}

TEST_F(HeapCheck, DisposingAHandleThatIsNoMasterRecordIsReported) {
  Ptr fake[4] = {};
  char stray[32] = {};
  fake[0] = stray;
  auto bogus = reinterpret_cast<Handle>(fake);
  DisposeHandle(bogus);
  std::vector<WindowMessage> seen = MessagesOf(kHeapDamaged);
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].lParam, reinterpret_cast<LPARAM>(bogus));
  EXPECT_EQ(fake[0], stray) << "nothing is written through a stray handle";
}

// Without the heap-check flag damage is not reported, but the damaged heap
// still serves nothing.
class UncheckedDamage : public SmallBlockSession {
 protected:
  void SetUp() override {
    SmallBlockSession::SetUp();
    RecordMainWindowMessages(mainWindow);
  }
};

TEST_F(UncheckedDamage, IsSilentButStillAvoided) {
  Handle first = NewHandle(10);
  Handle second = NewHandle(10);
  Ptr firstData = *first;
  DisposeHandle(first);
  Scribble(firstData - 6);
  Handle next = NewHandle(10);
  EXPECT_FALSE(InHeapOf(firstData, *next));
  EXPECT_TRUE(MessagesOf(kHeapDamaged).empty());
  DisposeHandle(second);
  DisposeHandle(next);
}

}  // namespace
