#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class Handles : public SessionTest {};

TEST_F(Handles, NewHandleIsZeroedLockedAndFoundAgain) {
  vars.MemErr = kPoison;
  Handle h = NewHandle(100);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(*h, nullptr);
  ASSERT_NE(*h, kNoBlock);
  EXPECT_TRUE(AllBytesAre(*h, 100, 0));
  EXPECT_EQ(GetHandleSize(h), 100);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  EXPECT_EQ(Master(h).flags & 0x3F, 2) << "a handle with data is created locked";
  EXPECT_EQ(RecoverHandle(*h), h);
  // Windows agrees the block is locked and holds 100 bytes.
  EXPECT_EQ(LocalSize(static_cast<HLOCAL>(Master(h).platformBlock)), 100u);
  EXPECT_EQ(LocalFlags(static_cast<HLOCAL>(Master(h).platformBlock)) & LMEM_LOCKCOUNT, 1u);
  DisposeHandle(h);
}

TEST_F(Handles, SizeZeroHasNoBlockUntilItGrows) {
  Handle h = NewHandle(0);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(*h, kNoBlock);
  EXPECT_EQ(Master(h).platformBlock, nullptr);
  EXPECT_EQ(GetHandleSize(h), 0);
  EXPECT_EQ(HGetState(h), 0);
  SetHandleSize(h, 10);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(*h, kNoBlock);
  EXPECT_TRUE(AllBytesAre(*h, 10, 0));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);

  Handle empty = NewEmptyHandle();
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(*empty, nullptr);
  EXPECT_EQ(GetHandleSize(empty), 0);
  DisposeHandle(h);
  DisposeHandle(empty);
}

TEST_F(Handles, StateBitsFollowPurgeAndSetState) {
  Handle h = NewHandle(8);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  HPurge(h);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0xC0);
  HSetState(h, 0x20);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0xA0) << "resource bit on, purgeable off";
  HSetState(h, static_cast<SInt8>(0xC0));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0xC0);
  HNoPurge(h);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80);
  HSetCBit(h);
  EXPECT_EQ(Master(h).flags & 0x2000, 0x2000);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x80) << "the C bit is not a state bit";
  HSetState(h, 0);
  EXPECT_EQ(Master(h).flags & 0x3F, 2) << "the lock count is the library's";

  // Null handles are ignored.
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
  vars.MemErr = kPoison;
  EXPECT_EQ(GetHandleSize(nullptr), 0);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  vars.MemErr = kPoison;
  SetHandleSize(nullptr, 10);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  vars.MemErr = kPoison;
  ReallocateHandle(nullptr, 10);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  vars.MemErr = kPoison;
  EXPECT_EQ(MemError(), kPoison);

  // DisposeHandle and RecoverHandle leave MemErr alone.
  Handle h = NewHandle(4);
  Ptr data = *h;
  vars.MemErr = kPoison;
  DisposeHandle(h);
  EXPECT_EQ(vars.MemErr, kPoison);
  EXPECT_EQ(RecoverHandle(data), nullptr);
  EXPECT_EQ(vars.MemErr, kPoison);
  OSErr result = 0;
  TempDisposeHandle(nullptr, &result);
  EXPECT_EQ(result, kPoison) << "TempDisposeHandle passes on what MemErr held";
  Handle temp = TempNewHandle(16, &result);
  EXPECT_NE(temp, nullptr);
  EXPECT_EQ(result, noErr);
  DisposeHandle(temp);
}

TEST_F(Handles, EmptyHandleFreesDataButKeepsPurgeAndCBits) {
  Handle h = NewHandle(5000);
  HPurge(h);
  HSetCBit(h);
  UInt32 before = LibraryBytes();
  EmptyHandle(h);
  EXPECT_EQ(*h, nullptr);
  EXPECT_EQ(GetHandleSize(h), 0);
  EXPECT_EQ(Master(h).platformBlock, nullptr);
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0x40);
  EXPECT_EQ(Master(h).flags & 0x2000, 0x2000);
  EXPECT_EQ(before - LibraryBytes(), 5000u);

  ReallocateHandle(h, 20);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(*h, nullptr);
  EXPECT_TRUE(AllBytesAre(*h, 20, 0));
  EXPECT_EQ(static_cast<UInt8>(HGetState(h)), 0xC0);
  DisposeHandle(h);
}

TEST_F(Handles, DisposingAResourceHandleFreesItsRecord) {
  Handle h = NewHandle(64);
  HSetState(h, 0x20);
  Ptr data = *h;
  UInt32 before = LibraryBytes();
  vars.MemErr = kPoison;
  DisposeHandle(h);
  EXPECT_EQ(vars.MemErr, kPoison);
  EXPECT_EQ(before - LibraryBytes(), 64u);
  EXPECT_EQ(RecoverHandle(data), nullptr);
  EXPECT_EQ(Master(h).flags, 0) << "the master record is free again";
  DisposeHandle(h);  // a second dispose finds a free record and does nothing
  EXPECT_EQ(Master(h).flags, 0);
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
  // Header, 10 records and the end marker: 10 x 14 + 20 in the 32-bit build.
  UInt32 expected = sizeof(void*) == 4 ? 160 : 10 * 24 + 32;
  EXPECT_EQ(LibraryBytes() - before, expected);
  std::vector<Handle> handles;
  for (int i = 0; i < 10; ++i) handles.push_back(NewHandle(0));
  EXPECT_EQ(LibraryBytes() - before, expected) << "ten records fit the new block";
  for (Handle h : handles) DisposeHandle(h);
}

}  // namespace
