#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

std::vector<Size> g_growZoneRequests;
Handle g_growZoneVictim = nullptr;

SInt32 KWE_CALL FreesNothing(Size needed) {
  g_growZoneRequests.push_back(needed);
  return 0;
}

SInt32 KWE_CALL DisposesTheVictim(Size needed) {
  g_growZoneRequests.push_back(needed);
  if (!g_growZoneVictim) return 0;
  SInt32 freed = GetHandleSize(g_growZoneVictim);
  DisposeHandle(g_growZoneVictim);
  g_growZoneVictim = nullptr;
  return freed;
}

class Purging : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    g_growZoneRequests.clear();
    g_growZoneVictim = nullptr;
    // The first handle brings the first master block; make it before any
    // limit so that the figures below count handle data only.
    DisposeHandle(NewHandle(0));
  }
  // Limit the library to what it holds now plus room bytes.
  void LimitTo(UInt32 room, UInt32 checkSize = 1000) {
    KWE_SetMemoryLimits(1, LibraryBytes() + room, checkSize, 0);
  }
};

// Short of room, the purge pass goes in master-record order and stops as
// soon as it has freed enough: of two purgeable handles only the first goes.
TEST_F(Purging, TheRoomCheckPurgesOnlyWhatItNeeds) {
  LimitTo(100000);
  Handle first = NewHandle(40000);
  Handle second = NewHandle(40000);
  Fill(second, 5);
  HPurge(first);
  HPurge(second);
  vars.MemErr = kPoison;
  Handle big = NewHandle(50000);
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*first, nullptr) << "the first purgeable handle was emptied";
  EXPECT_EQ(GetHandleSize(first), 0);
  EXPECT_EQ(static_cast<UInt8>(HGetState(first)), 0x40) << "still purgeable, now empty";
  EXPECT_EQ(GetHandleSize(second), 40000);
  EXPECT_TRUE(HoldsFill(second, 5, 40000));
  for (Handle h : {first, second, big}) DisposeHandle(h);
}

TEST_F(Purging, NothingPurgeableMeansMemFull) {
  LimitTo(60000);
  Handle kept = NewHandle(40000);
  vars.MemErr = kPoison;
  EXPECT_EQ(NewHandle(50000), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(GetHandleSize(kept), 40000);
  EXPECT_NE(NewHandle(500), nullptr) << "requests below the check size are not checked";
  DisposeHandle(kept);
}

TEST_F(Purging, GrowZoneThatFreesNothingIsAskedOnceAndTheRequestFails) {
  SetGrowZone(FreesNothing);
  LimitTo(10000);
  vars.MemErr = kPoison;
  EXPECT_EQ(NewHandle(30000), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  ASSERT_EQ(g_growZoneRequests.size(), 1u);
  EXPECT_EQ(g_growZoneRequests[0], 20000) << "asked for what the limit lacks";
  // Under the limit the procedure is not asked at all.
  EXPECT_NE(NewHandle(5000), nullptr);
  EXPECT_EQ(g_growZoneRequests.size(), 1u);
  SetGrowZone(nullptr);
}

TEST_F(Purging, GrowZoneThatFreesEnoughLetsTheRequestThrough) {
  LimitTo(50000);
  g_growZoneVictim = NewHandle(40000);
  SetGrowZone(DisposesTheVictim);
  Handle h = NewHandle(30000);
  EXPECT_NE(h, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(g_growZoneRequests.size(), 1u);
  EXPECT_EQ(g_growZoneVictim, nullptr);
  DisposeHandle(h);
  SetGrowZone(nullptr);
}

TEST_F(Purging, PurgeMemAndCompactMem) {
  Handle a = NewHandle(600), b = NewHandle(600), c = NewHandle(600);
  for (Handle h : {a, b, c}) HPurge(h);
  PurgeMem(70000);
  EXPECT_EQ(GetHandleSize(a), 600) << "64 KB or more purges nothing";
  PurgeMem(1000);
  EXPECT_EQ(*a, nullptr);
  EXPECT_EQ(*b, nullptr);
  EXPECT_EQ(GetHandleSize(c), 600) << "purging stops once 1,000 bytes are free";
  EXPECT_EQ(CompactMem(500), 500) << "purging c frees the 500 bytes asked for";
  EXPECT_EQ(*c, nullptr);
  for (Handle h : {a, b, c}) DisposeHandle(h);
}

TEST_F(Purging, LimitsGiveTheFreeMemoryFigures) {
  LimitTo(123456);
  EXPECT_EQ(FreeMem(), 123456);
  EXPECT_EQ(MaxBlock(), 123456);
  SInt32 total = 0, contiguous = 0;
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(total, 123456);
  EXPECT_EQ(contiguous, 65536);
  Handle h = NewHandle(3456);
  EXPECT_EQ(FreeMem(), 120000);
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(contiguous, 65536);
  SetHandleSize(h, 3456 + 70000);
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(total, 50000);
  EXPECT_EQ(contiguous, 50000);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(GetApplLimit()),
            reinterpret_cast<uintptr_t>(ApplicationZone()) + LibraryBytes() + 50000);
  DisposeHandle(h);
}

TEST_F(Purging, TheBlockCountLimitRefusesUntilLimitsAreOff) {
  // Every live block counts one; this session holds a few already.
  KWE_SetMemoryLimits(1, 100000000, 0, 2);
  vars.MemErr = kPoison;
  EXPECT_EQ(NewHandle(100), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  KWE_SetMemoryLimits(0, 0, 0, 2);
  EXPECT_NE(NewHandle(100), nullptr);
}

// The host's make and free procedures (the MakeProcInstance pair) see the
// grow-zone procedure come and go; what make returns is what gets called.
std::vector<ProcPtr> g_made, g_freed;
int g_wrapperCalls = 0;

SInt32 KWE_CALL CallThroughInstance(Size needed) {
  ++g_wrapperCalls;
  return reinterpret_cast<GrowZoneProcPtr>(g_made.back())(needed);
}

ProcPtr __stdcall MakeInstance(ProcPtr procedure, HINSTANCE) {
  g_made.push_back(procedure);
  return reinterpret_cast<ProcPtr>(CallThroughInstance);
}

void __stdcall FreeInstance(ProcPtr callable) { g_freed.push_back(callable); }

class GrowZoneInstances : public Purging {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    r.makeProcedure = MakeInstance;
    r.freeProcedure = FreeInstance;
  }
};

TEST_F(GrowZoneInstances, TheProcedureGoesThroughTheHostsMakeAndFree) {
  const auto instance = reinterpret_cast<ProcPtr>(CallThroughInstance);
  SetGrowZone(FreesNothing);
  ASSERT_EQ(g_made.size(), 1u);
  EXPECT_EQ(g_made[0], reinterpret_cast<ProcPtr>(FreesNothing));
  LimitTo(10000);
  EXPECT_EQ(NewHandle(30000), nullptr);
  EXPECT_EQ(g_wrapperCalls, 1);
  EXPECT_EQ(g_growZoneRequests.size(), 1u);

  SetGrowZone(DisposesTheVictim);
  ASSERT_EQ(g_freed.size(), 1u);
  EXPECT_EQ(g_freed[0], instance);
  KWE_ExitSession();
  ASSERT_EQ(g_freed.size(), 2u) << "the session's end releases the stored procedure";
  EXPECT_EQ(g_freed[1], instance);
}

}  // namespace
