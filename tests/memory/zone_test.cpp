// The application zone under KWE_SetMemoryLimits: purging, the grow-zone
// procedure, the free-memory figures, and what the session's end gives back.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
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

class Zone : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    g_growZoneRequests.clear();
    g_growZoneVictim = nullptr;
    // The first handle brings the first master block; make it before any
    // limit so that the figures below count handle data only.
    DisposeHandle(NewHandle(0));
  }
};

// Short of room, the purge pass goes in master-record order and stops as
// soon as it has freed enough: of two purgeable handles only the first goes.
TEST_F(Zone, TheRoomCheckPurgesOnlyWhatItNeeds) {
  LimitTo(100000);
  Handle first = NewHandle(40000), second = NewHandle(40000);
  Fill(second, 5);
  HPurge(first);
  HPurge(second);
  Handle big = NewHandle(50000);
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(*first, nullptr) << "the first purgeable handle was emptied";
  EXPECT_EQ(State(first), 0x40) << "still purgeable, now empty";
  EXPECT_TRUE(HoldsFill(second, 5, 40000));
  // With nothing purgeable left the request fails.
  HNoPurge(second);
  EXPECT_EQ(NewHandle(20000), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(GetHandleSize(second), 40000);
  EXPECT_NE(NewHandle(500), nullptr) << "requests below the check size are not checked";
  for (Handle h : {first, second, big}) DisposeHandle(h);
}

TEST_F(Zone, TheGrowZoneProcedureIsAskedForWhatTheLimitLacks) {
  SetGrowZone(FreesNothing);
  LimitTo(10000);
  EXPECT_EQ(NewHandle(30000), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(g_growZoneRequests, std::vector<Size>{20000});
  EXPECT_NE(NewHandle(5000), nullptr) << "under the limit the procedure is not asked";
  EXPECT_EQ(g_growZoneRequests.size(), 1u);

  KWE_SetMemoryLimits(0, 0, 0, 0);
  LimitTo(50000);
  g_growZoneVictim = NewHandle(40000);
  SetGrowZone(DisposesTheVictim);
  Handle h = NewHandle(30000);
  EXPECT_NE(h, nullptr) << "the procedure freed enough";
  EXPECT_EQ(vars.MemErr, noErr);
  EXPECT_EQ(g_growZoneRequests.size(), 2u);
  EXPECT_EQ(g_growZoneVictim, nullptr);
  DisposeHandle(h);
  SetGrowZone(nullptr);
}

TEST_F(Zone, PurgeMemAndCompactMem) {
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

TEST_F(Zone, LimitsGiveTheFreeMemoryFigures) {
  LimitTo(123456);
  EXPECT_EQ(FreeMem(), 123456);
  EXPECT_EQ(MaxBlock(), 123456);
  SInt32 total = 0, contiguous = 0;
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(total, 123456);
  EXPECT_EQ(contiguous, 65536);
  Handle h = NewHandle(3456);
  EXPECT_EQ(FreeMem(), 120000);
  SetHandleSize(h, 3456 + 70000);
  PurgeSpace(&total, &contiguous);
  EXPECT_EQ(total, 50000);
  EXPECT_EQ(contiguous, 50000);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(GetApplLimit()),
            reinterpret_cast<uintptr_t>(ApplicationZone()) + LibraryBytes() + 50000);
  DisposeHandle(h);

  // Every live block counts one against the block limit.
  KWE_SetMemoryLimits(1, 100000000, 0, 2);
  EXPECT_EQ(NewHandle(100), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  KWE_SetMemoryLimits(0, 0, 0, 2);
  EXPECT_NE(NewHandle(100), nullptr) << "limits off";
}

// Without limits the figures are Windows' own memory status.
TEST_F(Zone, FiguresComeFromTheMemoryStatus) {
  MEMORYSTATUS status{};
  status.dwLength = sizeof status;
  GlobalMemoryStatus(&status);
  UInt32 totalPageFile = 0, availPageFile = 0, totalPhys = 0, availPhys = 0, allocated = 0;
  KWE_ComputeMemorySize(&totalPageFile, &availPageFile, &totalPhys, &availPhys, &allocated);
  auto clamp = [](SIZE_T v) { return v > 0xFFFFFFFFu ? 0xFFFFFFFFu : static_cast<UInt32>(v); };
  EXPECT_EQ(totalPageFile, clamp(status.dwTotalPageFile));
  EXPECT_EQ(totalPhys, clamp(status.dwTotalPhys));
  EXPECT_GT(availPhys, 0u);
  EXPECT_GT(availPageFile, 0u);
  EXPECT_GE(allocated, 4590u) << "the List Manager's work block at least";
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, nullptr);

  SInt32 free = FreeMem();
  EXPECT_GT(free, 0);
  EXPECT_EQ(MaxBlock(), free);
  Size grow = 12345;
  EXPECT_EQ(MaxMem(&grow), static_cast<Size>(LocalCompact(0)));
  EXPECT_EQ(grow, 12345) << "MaxMem does not write its argument";
  SInt32 total = 0, contiguous = 0;
  PurgeSpace(&total, &contiguous);
  EXPECT_LE(contiguous, 65536);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(GetApplLimit()),
            reinterpret_cast<uintptr_t>(ApplicationZone()) + LocalCompact(0));
}

TEST_F(Zone, ZoneCallsAnswerTheApplZoneGlobalOrReportTheirNames) {
  ASSERT_NE(vars.ApplZone, nullptr) << "KWE_InitGlobals binds ApplZone to the library's zone";
  EXPECT_EQ(ApplicationZone(), vars.ApplZone);
  EXPECT_EQ(GetZone(), vars.ApplZone);
  Handle h = NewHandle(10);
  EXPECT_EQ(HandleZone(h), vars.ApplZone);
  EXPECT_EQ(HandleZone(nullptr), vars.ApplZone);
  InitZone(nullptr, 5, nullptr, nullptr);  // nothing to do on Windows
  EXPECT_EQ(vars.ApplZone->moreMast, 64);
  DisposeHandle(h);
  EXPECT_EQ(SystemZone(), nullptr);
  EXPECT_EQ(TopMem(), nullptr);
  EXPECT_EQ(GZSaveHnd(), nullptr);
  EXPECT_EQ(TempFreeMem(), 0);
  EXPECT_EQ(capture.Reports(),
            (std::vector<std::string>{"SystemZone", "TopMem", "GZSaveHnd", "TempFreeMem"}));
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

class GrowZoneInstances : public Zone {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    r.makeProcedure = MakeInstance;
    r.freeProcedure = FreeInstance;
  }
};

TEST_F(GrowZoneInstances, TheProcedureGoesThroughTheHostsMakeAndFree) {
  const auto instance = reinterpret_cast<ProcPtr>(CallThroughInstance);
  SetGrowZone(FreesNothing);
  EXPECT_EQ(g_made, std::vector<ProcPtr>{reinterpret_cast<ProcPtr>(FreesNothing)});
  LimitTo(10000);
  EXPECT_EQ(NewHandle(30000), nullptr);
  EXPECT_EQ(g_wrapperCalls, 1);
  EXPECT_EQ(g_growZoneRequests.size(), 1u);
  SetGrowZone(DisposesTheVictim);
  EXPECT_EQ(g_freed, std::vector<ProcPtr>{instance});
  KWE_ExitSession();
  EXPECT_EQ(g_freed, (std::vector<ProcPtr>{instance, instance}))
      << "the session's end releases the stored procedure";
}

// At the session's end every master block and small-block heap goes back to
// the platform heap, whatever handles are still alive.
class SessionEnd : public SmallBlockSession {};

TEST_F(SessionEnd, ReleasesHeapsAndMasterBlocks) {
  for (int i = 0; i < 1000; ++i) ASSERT_NE(NewHandle(100), nullptr);
  uint64_t heapInUse = ProcessHeapBytesInUse();
  // Seven heaps of 16,384 bytes and 16 master blocks of 64 records.
  uint64_t heldByTheLibrary = 7 * 16384 + 16 * MasterBlockBytes(64);
  KWE_ExitSession();
  EXPECT_GE(heapInUse - ProcessHeapBytesInUse(), heldByTheLibrary);
}

}  // namespace
