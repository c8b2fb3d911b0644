// Handles and pointers on the platform heap: master records and state bits,
// resizing, copies, and requests that cannot be had.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class Handles : public SessionTest {
 protected:
  // MemErr as the call leaves it, poisoned beforehand.
  template <class Call>
  OSErr ErrOf(Call call) {
    vars.MemErr = kPoison;
    call();
    return vars.MemErr;
  }
};

std::string Bytes(Handle h) { return std::string(*h, static_cast<size_t>(GetHandleSize(h))); }

TEST_F(Handles, NewHandleIsZeroedLockedAndSizeZeroKeepsItsRecord) {
  Handle h = nullptr;
  EXPECT_EQ(ErrOf([&] { h = NewHandle(100); }), noErr);
  ASSERT_NE(h, nullptr);
  ASSERT_NE(*h, kNoBlock);
  EXPECT_TRUE(AllBytesAre(*h, 100, 0));
  EXPECT_EQ(GetHandleSize(h), 100);
  EXPECT_EQ(State(h), 0x80);
  EXPECT_EQ(Master(h).flags & 0x3F, 2) << "a handle with data is created locked";
  EXPECT_EQ(RecoverHandle(*h), h);
  // Windows agrees the block is locked and holds 100 bytes.
  auto block = static_cast<HLOCAL>(Master(h).platformBlock);
  EXPECT_EQ(LocalSize(block), 100u);
  EXPECT_EQ(LocalFlags(block) & LMEM_LOCKCOUNT, 1u);

  // Size 0: no data, unlocked, but the discarded block stays with the handle.
  UInt32 before = LibraryBytes();
  SetHandleSize(h, 0);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*h, kNoBlock);
  EXPECT_EQ(HGetState(h), 0);
  EXPECT_NE(Master(h).platformBlock, nullptr);
  EXPECT_EQ(before - LibraryBytes(), 100u);

  Handle none = NewHandle(0);  // no platform block at all until it grows
  EXPECT_EQ(*none, kNoBlock);
  EXPECT_EQ(Master(none).platformBlock, nullptr);
  EXPECT_EQ(GetHandleSize(none), 0);
  for (Handle grown : {h, none}) {
    SetHandleSize(grown, 30);
    EXPECT_EQ(vars.MemErr, noErr);
    ASSERT_NE(*grown, kNoBlock);
    EXPECT_TRUE(AllBytesAre(*grown, 30, 0));
    EXPECT_EQ(State(grown), 0x80);
  }
  Handle empty = NewEmptyHandle();
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(*empty, nullptr);
  EXPECT_EQ(GetHandleSize(empty), 0);
  for (Handle x : {h, none, empty}) DisposeHandle(x);
}

TEST_F(Handles, StateBitsFollowPurgeAndSetStateAndNullHandlesAreIgnored) {
  Handle h = NewHandle(8);
  HPurge(h);
  EXPECT_EQ(State(h), 0xC0);
  HSetState(h, 0x20);
  EXPECT_EQ(State(h), 0xA0) << "resource bit on, purgeable off";
  HSetState(h, static_cast<SInt8>(0xC0));
  HNoPurge(h);
  EXPECT_EQ(State(h), 0x80);
  HSetCBit(h);
  EXPECT_EQ(Master(h).flags & 0x2000, 0x2000);
  EXPECT_EQ(State(h), 0x80) << "the C bit is not a state bit";
  HSetState(h, 0);
  EXPECT_EQ(Master(h).flags & 0x3F, 2) << "the lock count is the library's";

  EXPECT_EQ(HGetState(nullptr), 0);
  HSetState(nullptr, 0x40);
  HPurge(nullptr);
  HNoPurge(nullptr);
  HSetCBit(nullptr);
  EmptyHandle(nullptr);
  DisposeHandle(nullptr);
  DisposeHandle(h);
}

TEST_F(Handles, NilHandleErrOnlyWhereTheToolboxGivesIt) {
  EXPECT_EQ(ErrOf([] { EXPECT_EQ(GetHandleSize(nullptr), 0); }), nilHandleErr);
  EXPECT_EQ(ErrOf([] { SetHandleSize(nullptr, 10); }), nilHandleErr);
  EXPECT_EQ(ErrOf([] { ReallocateHandle(nullptr, 10); }), nilHandleErr);
  EXPECT_EQ(ErrOf([] { EXPECT_EQ(MemError(), kPoison); }), kPoison);
  Handle h = NewHandle(4);
  Ptr data = *h;
  EXPECT_EQ(ErrOf([&] { DisposeHandle(h); }), kPoison) << "DisposeHandle leaves MemErr alone";
  EXPECT_EQ(ErrOf([&] { EXPECT_EQ(RecoverHandle(data), nullptr); }), kPoison);
  OSErr result = 0;
  TempDisposeHandle(nullptr, &result);
  EXPECT_EQ(result, kPoison) << "TempDisposeHandle passes on what MemErr held";
  Handle temp = TempNewHandle(16, &result);
  EXPECT_NE(temp, nullptr);
  EXPECT_EQ(result, noErr);
  DisposeHandle(temp);
}

TEST_F(Handles, EmptyingAndDisposingGiveTheirBytesBack) {
  Handle h = NewHandle(5000);
  HPurge(h);
  HSetCBit(h);
  UInt32 before = LibraryBytes();
  EmptyHandle(h);
  EXPECT_EQ(*h, nullptr);
  EXPECT_EQ(Master(h).platformBlock, nullptr);
  EXPECT_EQ(State(h), 0x40) << "purgeable still";
  EXPECT_EQ(Master(h).flags & 0x2000, 0x2000);
  EXPECT_EQ(before - LibraryBytes(), 5000u);
  ReallocateHandle(h, 20);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(*h, nullptr);
  EXPECT_TRUE(AllBytesAre(*h, 20, 0));
  EXPECT_EQ(State(h), 0xC0);
  DisposeHandle(h);

  Handle resource = NewHandle(64);
  HSetState(resource, 0x20);
  Ptr data = *resource;
  before = LibraryBytes();
  DisposeHandle(resource);
  EXPECT_EQ(before - LibraryBytes(), 64u);
  EXPECT_EQ(RecoverHandle(data), nullptr);
  EXPECT_EQ(Master(resource).flags, 0) << "the master record is free again";
  DisposeHandle(resource);  // a second dispose finds a free record and does nothing
  EXPECT_EQ(Master(resource).flags, 0);
}

// Ten thousand handles take many master blocks; disposing every other one
// and refilling the gaps must leave every survivor's data and record alone.
TEST_F(Handles, ManyHandlesKeepTheirDataAcrossMasterBlocks) {
  std::vector<Handle> handles;
  for (int i = 0; i < 10000; ++i) {
    Handle h = NewHandle(1 + i % 50);
    ASSERT_NE(h, nullptr) << i;
    Fill(h, static_cast<unsigned char>(i));
    handles.push_back(h);
  }
  for (int i = 0; i < 10000; i += 2) DisposeHandle(handles[i]);
  std::vector<Handle> refill;
  for (int i = 0; i < 5000; ++i) refill.push_back(NewHandle(7));
  for (int i = 1; i < 10000; i += 2) {
    Handle h = handles[i];
    ASSERT_EQ(GetHandleSize(h), 1 + i % 50) << i;
    ASSERT_TRUE(HoldsFill(h, static_cast<unsigned char>(i), 1 + i % 50)) << i;
    ASSERT_EQ(RecoverHandle(*h), h) << i;
  }
  for (Handle h : refill) {
    EXPECT_TRUE(AllBytesAre(*h, 7, 0));
    DisposeHandle(h);
  }
  for (int i = 1; i < 10000; i += 2) DisposeHandle(handles[i]);
}

TEST_F(Handles, MoreMastersAddsABlockOfMoreMastRecords) {
  THz zone = ApplicationZone();
  ASSERT_NE(zone, nullptr);
  EXPECT_EQ(zone->moreMast, 64);
  zone->moreMast = 10;
  UInt32 before = LibraryBytes();
  MoreMasters();
  EXPECT_EQ(LibraryBytes() - before, MasterBlockBytes(10));  // 160 in the 32-bit build
  std::vector<Handle> handles;
  for (int i = 0; i < 10; ++i) handles.push_back(NewHandle(0));
  EXPECT_EQ(LibraryBytes() - before, MasterBlockBytes(10)) << "ten records fit the new block";
  for (Handle h : handles) DisposeHandle(h);
}

TEST_F(Handles, ResizingKeepsTheDataAndZeroesTheNewBytes) {
  Handle h = NewHandle(100);
  Fill(h, 7);
  Handle neighbour = NewHandle(100);  // so that growing has to move the data
  SetHandleSize(h, 1000000);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetHandleSize(h), 1000000);
  EXPECT_TRUE(HoldsFill(h, 7, 100));
  EXPECT_TRUE(AllBytesAre(*h + 100, 1000000 - 100, 0));
  EXPECT_EQ(RecoverHandle(*h), h) << "the master pointer follows the data";
  EXPECT_EQ(State(h), 0x80);
  SetHandleSize(h, 50);
  EXPECT_EQ(GetHandleSize(h), 50);
  EXPECT_TRUE(HoldsFill(h, 7, 50));

  Ptr data = *h;
  EXPECT_EQ(ErrOf([&] { SetHandleSize(h, 50); }), noErr);
  EXPECT_EQ(*h, data) << "the same size returns at once";
  EXPECT_EQ(ErrOf([&] { SetHandleSize(h, -1); }), kPoison) << "a negative size sets nothing";
  EXPECT_EQ(GetHandleSize(h), 50);
  EXPECT_EQ(*h, data);
  EXPECT_EQ(NewHandle(-5), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  DisposeHandle(h);
  DisposeHandle(neighbour);
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
  DisposeHandle(h);
}

TEST_F(Handles, APurgeableHandleIsNotPurgedByItsOwnGrowth) {
  Handle h = NewHandle(40000);
  Fill(h, 9);
  HPurge(h);
  LimitTo(10000);
  SetHandleSize(h, 90000);
  EXPECT_EQ(vars.MemErr, memFullErr);
  ASSERT_NE(*h, nullptr) << "the handle being resized was purged";
  EXPECT_EQ(GetHandleSize(h), 40000);
  EXPECT_TRUE(HoldsFill(h, 9, 40000));
  DisposeHandle(h);
}

TEST_F(Handles, CopiesAndAppendsMakeIndependentData) {
  Handle original = NewHandle(300);
  Fill(original, 11);
  Handle copy = original;
  EXPECT_EQ(ErrOf([&] { EXPECT_EQ(HandToHand(&copy), noErr); }), noErr);
  ASSERT_NE(copy, original);
  EXPECT_EQ(GetHandleSize(copy), 300);
  EXPECT_TRUE(HoldsFill(copy, 11, 300));
  (*original)[0] = 0;
  EXPECT_EQ((*copy)[0], 11);
  Handle empty = NewHandle(0), emptyCopy = empty;
  EXPECT_EQ(HandToHand(&emptyCopy), noErr);
  ASSERT_NE(emptyCopy, empty);
  EXPECT_EQ(*emptyCopy, kNoBlock) << "a copy of a 0-byte handle is a new 0-byte handle";
  Handle none = nullptr;
  EXPECT_EQ(HandToHand(&none), nilHandleErr);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  EXPECT_EQ(HandToHand(nullptr), nilHandleErr);

  Handle a = nullptr, b = nullptr;
  EXPECT_EQ(PtrToHand("abc", &a, 3), noErr);
  EXPECT_EQ(PtrToHand("de", &b, 2), noErr);
  EXPECT_EQ(HandAndHand(a, b), noErr);
  EXPECT_EQ(Bytes(b), "deabc");
  EXPECT_EQ(HandAndHand(b, b), noErr) << "a handle appended to itself";
  EXPECT_EQ(Bytes(b), "deabcdeabc");
  EXPECT_EQ(PtrAndHand("xyz", a, 3), noErr);
  EXPECT_EQ(Bytes(a), "abcxyz");
  EXPECT_EQ(PtrToXHand("uvw", a, 2), noErr);
  EXPECT_EQ(Bytes(a), "uv");
  EXPECT_EQ(ErrOf([&] {
              EXPECT_EQ(HandAndHand(nullptr, b), noErr);
              EXPECT_EQ(PtrAndHand(nullptr, b, 3), noErr);
              EXPECT_EQ(PtrAndHand("x", nullptr, 1), noErr);
              EXPECT_EQ(PtrToXHand("abc", nullptr, 4), noErr) << "a null destination is ignored";
            }),
            noErr);
  EXPECT_EQ(Bytes(b), "deabcdeabc");
  for (Handle h : {original, copy, empty, emptyCopy, a, b}) DisposeHandle(h);
}

// Every copying call that cannot have its memory answers memFullErr, leaves
// its destination as it was, and gives a new handle back as null.
TEST_F(Handles, CopiesThatCannotBeHadChangeNothing) {
  static char big[100000];
  Handle original = NewHandle(20000);
  Handle kept = nullptr;
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
  DisposeHandle(original);
  DisposeHandle(kept);
}

TEST_F(Handles, PointersAreZeroedSizedAndNeverMove) {
  Ptr p = NewPtr(4000);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_TRUE(AllBytesAre(p, 4000, 0));
  EXPECT_EQ(GetPtrSize(p), 4000);
  for (int i = 0; i < 1000; ++i) p[i] = static_cast<char>(i);
  Ptr blocker = NewPtr(1000);
  SetPtrSize(p, 400);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(GetPtrSize(p), 400);
  // Growing either works in place or fails, leaving the block as it was.
  SetPtrSize(p, 1000000);
  if (vars.MemErr == noErr) {
    EXPECT_EQ(GetPtrSize(p), 1000000);
  } else {
    EXPECT_EQ(vars.MemErr, memFullErr);
    EXPECT_EQ(GetPtrSize(p), 400);
  }
  for (int i = 0; i < 400; ++i) ASSERT_EQ(p[i], static_cast<char>(i));

  // Addresses that are no block's start are ignored.
  char onStack[16] = {};
  UInt32 before = LibraryBytes();
  for (Ptr stray : {p + 8, static_cast<Ptr>(onStack), static_cast<Ptr>(nullptr)}) {
    EXPECT_EQ(GetPtrSize(stray), 0);
    DisposePtr(stray);
  }
  EXPECT_EQ(ErrOf([&] { SetPtrSize(p + 8, 10); }), noErr);
  EXPECT_EQ(LibraryBytes(), before);

  LimitTo(100, 0);
  Size size = GetPtrSize(p);
  SetPtrSize(p, size + 1000);
  EXPECT_EQ(vars.MemErr, memFullErr) << "the limit applies to the growth";
  EXPECT_EQ(GetPtrSize(p), size);
  EXPECT_EQ(NewPtr(-1), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  before = LibraryBytes();
  DisposePtr(p);
  EXPECT_EQ(before - LibraryBytes(), static_cast<UInt32>(size));
  DisposePtr(blocker);
}

TEST_F(Handles, BlockMoveIsOverlapSafeAtAnySize) {
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
