#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class Zones : public SessionTest {};

TEST_F(Zones, EveryZoneCallAnswersTheApplZoneGlobal) {
  ASSERT_NE(vars.ApplZone, nullptr) << "KWE_InitGlobals binds ApplZone to the library's zone";
  EXPECT_EQ(ApplicationZone(), vars.ApplZone);
  EXPECT_EQ(GetZone(), vars.ApplZone);
  Handle h = NewHandle(10);
  EXPECT_EQ(HandleZone(h), vars.ApplZone);
  EXPECT_EQ(HandleZone(nullptr), vars.ApplZone);
  EXPECT_EQ(vars.ApplZone->moreMast, 64);
  EXPECT_EQ(vars.ApplZone->bkLim, nullptr);
  EXPECT_EQ(vars.ApplZone->gzProc, nullptr);
  // Calls with nothing to do on Windows leave the zone as it was.
  InitZone(nullptr, 5, nullptr, nullptr);
  SetZone(nullptr);
  ReserveMem(100000);
  SetApplLimit(nullptr);
  MaxApplZone();
  EXPECT_EQ(vars.ApplZone->moreMast, 64);
  EXPECT_EQ(HoldMemory(*h, 10), noErr);
  EXPECT_EQ(UnholdMemory(*h, 10), noErr);
  EXPECT_EQ(StackSpace(), 2048);
  DisposeHandle(h);
}

TEST_F(Zones, UnsupportedZoneCallsReportTheirNames) {
  EXPECT_EQ(SystemZone(), nullptr);
  EXPECT_EQ(TopMem(), nullptr);
  EXPECT_EQ(GZSaveHnd(), nullptr);
  EXPECT_EQ(TempFreeMem(), 0);
  std::vector<std::string> reports = capture.Reports();
  ASSERT_EQ(reports.size(), 4u);
  EXPECT_NE(reports[0].find("SystemZone"), std::string::npos);
  EXPECT_NE(reports[1].find("TopMem"), std::string::npos);
  EXPECT_NE(reports[2].find("GZSaveHnd"), std::string::npos);
  EXPECT_NE(reports[3].find("TempFreeMem"), std::string::npos);
}

TEST_F(Zones, FiguresComeFromTheMemoryStatus) {
  MEMORYSTATUS status{};
  status.dwLength = sizeof status;
  GlobalMemoryStatus(&status);
  UInt32 totalPageFile = 0, availPageFile = 0, totalPhys = 0, availPhys = 0;
  UInt32 allocated = 0;
  KWE_ComputeMemorySize(&totalPageFile, &availPageFile, &totalPhys, &availPhys, &allocated);
  auto clamp = [](SIZE_T v) { return v > 0xFFFFFFFFu ? 0xFFFFFFFFu : static_cast<UInt32>(v); };
  EXPECT_EQ(totalPageFile, clamp(status.dwTotalPageFile));
  EXPECT_EQ(totalPhys, clamp(status.dwTotalPhys));
  EXPECT_GT(availPhys, 0u);
  EXPECT_GT(availPageFile, 0u);
  EXPECT_GE(allocated, 4590u) << "the List Manager's work block at least";
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, nullptr);

  // Far from the limit of a 16-bit-era application, FreeMem saturates.
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

TEST_F(Zones, FreeSystemResourcesOnAThirtyTwoBitSystem) {
  EXPECT_EQ(KWE_GetFreeSystemResources(0), 100u);
  EXPECT_EQ(KWE_GetFreeSystemResources(1), 100u);
  EXPECT_EQ(KWE_GetFreeSystemResources(2), 100u);
  EXPECT_EQ(KWE_GetFreeSystemResources(7), 7u) << "other selectors come back unchanged";
}

// At the session's end every master block and small-block heap goes back to
// the platform heap, whatever handles are still alive.
class SessionEnd : public SmallBlockSession {};

TEST_F(SessionEnd, ReleasesHeapsAndMasterBlocks) {
  for (int i = 0; i < 1000; ++i) ASSERT_NE(NewHandle(100), nullptr);
  uint64_t heapInUse = ProcessHeapBytesInUse();
  // Seven heaps of 16,384 bytes and 16 master blocks of 64 records.
  uint64_t heldByTheLibrary =
      7 * 16384 + 16 * (64 * (sizeof(void*) == 4 ? 14 : 24) + (sizeof(void*) == 4 ? 20 : 32));
  KWE_ExitSession();
  EXPECT_GE(heapInUse - ProcessHeapBytesInUse(), heldByTheLibrary);
}

}  // namespace
