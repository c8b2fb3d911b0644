// Handles, pointers and the zone on the platform heap: data that never moves,
// purging, copies, the memory limit with its grow-zone procedure, and
// requests that cannot be had.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class Handles : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    // The first handle brings the first master block; made before any limit,
    // the figures below count handle data only.
    DisposeHandle(NewHandle(0));
  }
  // MemErr as the call leaves it, poisoned beforehand.
  template <class Call>
  OSErr ErrOf(Call call) {
    vars.MemErr = 0x5A5A;
    call();
    return vars.MemErr;
  }
};

std::string Bytes(Handle h) { return std::string(*h, static_cast<size_t>(GetHandleSize(h))); }

// New data is zeroed and locked (Windows agrees); size 0 frees the bytes but
// keeps the handle; growing keeps the data, wherever it has to go.
TEST_F(Handles, HandlesAreZeroedLockedBlocksThatKeepTheirDataAsTheyResize) {
  Handle h = NewHandle(100), none = NewHandle(0), empty = NewEmptyHandle();
  EXPECT_TRUE(AllBytesAre(*h, 100, 0));
  EXPECT_EQ(LocalSize(LocalHandle(*h)), 100u);
  EXPECT_EQ(LocalFlags(LocalHandle(*h)) & LMEM_LOCKCOUNT, 1u);
  UInt32 before = LibraryBytes();
  SetHandleSize(h, 0);
  EXPECT_EQ(before - LibraryBytes(), 100u);
  EXPECT_EQ(*h, kNoBlock);
  EXPECT_EQ(*none, kNoBlock);
  EXPECT_EQ(*empty, nullptr);
  for (Handle grown : {h, none, empty}) {
    SetHandleSize(grown, 30);
    EXPECT_TRUE(AllBytesAre(*grown, 30, 0));
    EXPECT_EQ(HGetState(grown), SInt8(0x80)) << "every handle with data reads locked";
  }
  Fill(h, 7);
  SetHandleSize(h, 1000000);  // past its neighbours: the data moves with the handle
  EXPECT_TRUE(HoldsFill(h, 7, 30));
  EXPECT_TRUE(AllBytesAre(*h + 30, 1000000 - 30, 0));
  EXPECT_EQ(RecoverHandle(*h), h);
  EXPECT_EQ(ErrOf([&] { SetHandleSize(h, -1); }), 0x5A5A) << "a negative size sets nothing";
  EXPECT_EQ(ErrOf([] { SetHandleSize(nullptr, 10); }), nilHandleErr);
  EXPECT_EQ(ErrOf([&] { DisposeHandle(h); }), 0x5A5A) << "DisposeHandle leaves MemErr alone";
  DisposeHandle(h);  // a second dispose finds a free record and does nothing
}

// Handle data is locked: however many handles come and go around it, and
// whatever compacting and purging are asked for, it stays where it is.
TEST_F(Handles, DataNeverMovesWhileOtherHandlesComeAndGo) {
  std::vector<Handle> handles;
  std::vector<Ptr> places;
  for (int i = 0; i < 10000; ++i) {  // many master blocks
    handles.push_back(NewHandle(1 + i % 50));
    Fill(handles.back(), static_cast<unsigned char>(i));
    places.push_back(*handles.back());
  }
  for (int i = 0; i < 10000; i += 2) DisposeHandle(handles[i]);
  for (int i = 0; i < 5000; ++i) ASSERT_TRUE(AllBytesAre(*NewHandle(7), 7, 0));
  MoreMasters();
  CompactMem(0x100000);
  PurgeMem(1000);
  for (int i = 1; i < 10000; i += 2) {
    ASSERT_EQ(*handles[i], places[i]) << i;
    ASSERT_TRUE(HoldsFill(handles[i], static_cast<unsigned char>(i), 1 + i % 50)) << i;
  }
}

// HPurge, HNoPurge and HSetState decide what a purge takes, in master-record
// order until it has what it was asked for. A purged handle keeps its record
// and its state; its bytes go back.
TEST_F(Handles, PurgingTakesPurgeableHandlesInOrderUntilItHasEnough) {
  Handle a = NewHandle(600), b = NewHandle(600), kept = NewHandle(600), c = NewHandle(600);
  for (Handle h : {a, kept, c}) HPurge(h);
  HSetState(b, SInt8(0x40));
  HNoPurge(kept);
  UInt32 before = LibraryBytes();
  PurgeMem(70000);  // 64 KB or more: nothing
  PurgeMem(1000);
  EXPECT_EQ(*a, nullptr);
  EXPECT_EQ(*b, nullptr);
  EXPECT_EQ(before - LibraryBytes(), 1200u);
  EXPECT_EQ(GetHandleSize(c), 600) << "1,000 bytes were had before c";
  EXPECT_EQ(CompactMem(500), 500) << "purging c frees the 500 bytes asked for";
  EXPECT_EQ(*c, nullptr);
  EXPECT_EQ(GetHandleSize(kept), 600);
  SInt8 state = HGetState(a);
  ReallocateHandle(a, 20);
  EXPECT_TRUE(AllBytesAre(*a, 20, 0));
  HSetState(a, 0);
  PurgeMem(10);
  EXPECT_EQ(GetHandleSize(a), 20) << "no longer purgeable";
  HSetState(a, state);
  PurgeMem(10);
  EXPECT_EQ(*a, nullptr) << "purgeable again";
}

// Short of room under the limit, a request purges only what it lacks; the
// handle being resized is not purged for its own growth.
TEST_F(Handles, ARequestShortOfRoomPurgesWhatItLacksButNeverItself) {
  LimitTo(100000);
  Handle first = NewHandle(40000), second = NewHandle(40000);
  Fill(second, 5);
  HPurge(first);
  HPurge(second);
  EXPECT_NE(NewHandle(50000), nullptr);
  EXPECT_EQ(*first, nullptr);
  SetHandleSize(second, 90000);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_TRUE(HoldsFill(second, 5, 40000)) << "the handle being resized was purged";
  HNoPurge(second);
  EXPECT_EQ(NewHandle(20000), nullptr) << "nothing purgeable left";
  EXPECT_NE(NewHandle(500), nullptr) << "requests below the check size are not checked";
}

// A thousand requests that cannot be had: each fails with memFullErr, the
// handle keeps its data and size, and neither the library's figure nor the
// process heap keeps a byte of them.
TEST_F(Handles, FailedRequestsKeepTheHandleAndLeakNothing) {
  Handle h = NewHandle(1000);
  Fill(h, 3);
  Ptr data = *h;
  LimitTo(10000, 0);
  UInt32 libraryBefore = LibraryBytes();
  uint64_t heapBefore = ProcessHeapBytesInUse();
  int wrongResults = 0;
  for (int i = 0; i < 1000; ++i) {
    if (ErrOf([&] { SetHandleSize(h, 1000000); }) != memFullErr) ++wrongResults;
    if (*h != data || GetHandleSize(h) != 1000) ++wrongResults;
    if (ErrOf([] { EXPECT_EQ(NewHandle(500000), nullptr); }) != memFullErr) ++wrongResults;
    if (ErrOf([] { EXPECT_EQ(NewPtr(500000), nullptr); }) != memFullErr) ++wrongResults;
  }
  EXPECT_EQ(wrongResults, 0);
  EXPECT_EQ(ProcessHeapBytesInUse(), heapBefore);
  EXPECT_EQ(LibraryBytes(), libraryBefore);
  EXPECT_TRUE(HoldsFill(h, 3, 1000));
  KWE_SetMemoryLimits(0, 0, 0, 0);
  SetHandleSize(h, 1000000);
  EXPECT_EQ(vars.MemErr, noErr) << "without the limit the same request succeeds";
  EXPECT_TRUE(HoldsFill(h, 3, 1000));
}

TEST_F(Handles, CopiesAndAppendsMakeIndependentData) {
  Handle original = nullptr, b = nullptr, none = nullptr;
  EXPECT_EQ(PtrToHand("abc", &original, 3), noErr);
  Handle copy = original;
  EXPECT_EQ(HandToHand(&copy), noErr);
  (*original)[0] = 'X';
  EXPECT_EQ(Bytes(copy), "abc");
  EXPECT_EQ(HandToHand(&none), nilHandleErr);
  EXPECT_EQ(PtrToHand("de", &b, 2), noErr);
  EXPECT_EQ(HandAndHand(copy, b), noErr);
  EXPECT_EQ(Bytes(b), "deabc");
  EXPECT_EQ(HandAndHand(b, b), noErr) << "a handle appended to itself";
  EXPECT_EQ(Bytes(b), "deabcdeabc");
  EXPECT_EQ(PtrAndHand("xyz", copy, 3), noErr);
  EXPECT_EQ(Bytes(copy), "abcxyz");
  EXPECT_EQ(PtrToXHand("uvw", copy, 2), noErr);
  EXPECT_EQ(Bytes(copy), "uv");
}

// Every copying call that cannot have its memory answers memFullErr, leaves
// its destination as it was, and gives a new handle back as null.
TEST_F(Handles, CopiesThatCannotBeHadChangeNothing) {
  static char big[100000];
  Handle original = NewHandle(20000), kept = nullptr;
  PtrToHand("keep", &kept, 4);
  LimitTo(1000, 0);
  Handle copy = original, fresh = kept;
  const std::pair<const char*, OSErr> calls[] = {
      {"HandToHand", HandToHand(&copy)},
      {"PtrToHand", PtrToHand(big, &fresh, sizeof big)},
      {"PtrToXHand", PtrToXHand(big, kept, sizeof big)},
      {"PtrAndHand", PtrAndHand(big, kept, sizeof big)},
      {"HandAndHand", HandAndHand(original, kept)},
  };
  for (const auto& [name, err] : calls) EXPECT_EQ(err, memFullErr) << name;
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(copy, nullptr);
  EXPECT_EQ(fresh, nullptr);
  EXPECT_EQ(GetHandleSize(original), 20000) << "the original is not touched";
  EXPECT_EQ(Bytes(kept), "keep");
}

// Pointers are zeroed and grow under the limit too; addresses that are no
// block's start are ignored, and BlockMove copies nothing from or to an
// empty handle's data.
TEST_F(Handles, PointersKeepToTheLimitAndStrayAddressesAreIgnored) {
  Ptr p = NewPtr(4000);
  EXPECT_TRUE(AllBytesAre(p, 4000, 0));
  LimitTo(100, 0);
  SetPtrSize(p, 5000);
  EXPECT_EQ(vars.MemErr, memFullErr) << "the limit applies to the growth";
  EXPECT_EQ(GetPtrSize(p), 4000);
  char onStack[16] = "stack";
  UInt32 before = LibraryBytes();
  for (Ptr stray : {p + 8, static_cast<Ptr>(onStack), static_cast<Ptr>(nullptr)}) {
    EXPECT_EQ(GetPtrSize(stray), 0);
    DisposePtr(stray);
  }
  BlockMove(kNoBlock, onStack, 3);
  BlockMove(onStack, kNoBlock, 3);
  EXPECT_STREQ(onStack, "stack");
  EXPECT_EQ(LibraryBytes(), before);
  DisposePtr(p);
  EXPECT_EQ(before - LibraryBytes(), 4000u);
}

std::vector<Size> g_growZoneRequests;
Handle g_victim = nullptr;

SInt32 KWE_CALL DisposesTheVictim(Size needed) {
  g_growZoneRequests.push_back(needed);
  SInt32 freed = g_victim ? GetHandleSize(g_victim) : 0;
  DisposeHandle(g_victim);
  g_victim = nullptr;
  return freed;
}

// The procedure is asked, once, for what the limit lacks; the request is had
// when it frees enough. The free-memory figures follow the limit.
TEST_F(Handles, TheGrowZoneProcedureIsAskedForWhatTheLimitLacks) {
  SetGrowZone(DisposesTheVictim);
  g_victim = NewHandle(40000);
  LimitTo(10000);
  EXPECT_EQ(FreeMem(), 10000);
  EXPECT_NE(NewHandle(5000), nullptr) << "under the limit the procedure is not asked";
  EXPECT_NE(NewHandle(30000), nullptr) << "the procedure freed enough";
  EXPECT_EQ(NewHandle(30000), nullptr) << "nothing more to free";
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(g_growZoneRequests, (std::vector<Size>{25000, 15000}));
  SInt32 total = 0, contiguous = 0;
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(total, 15000);
}

}  // namespace
