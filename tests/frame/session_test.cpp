#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <string>

#include "Gestalt.h"
#include "KWESession.h"
#include "support/test_host.h"

namespace {

using kwe_test::CreateMainWindow;
using kwe_test::GlobalsFor;
using kwe_test::HostVariables;
using kwe_test::TestInstance;

KWESessionRecord FullRecord(HWND main) {
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = TestInstance();
  r.mainWindow = main;
  return r;
}

UInt32 CurrentFlags() { return KWE_SetFlags(0, 0, 0, 0); }

// The record is copied up to its size (all of it for a negative size); the
// fields it stops short of are zero.
TEST(Session, RecordCopiedUpToItsSize) {
  const struct {
    SInt16 size;
    UInt32 flags;
  } cases[] = {{SInt16(offsetof(KWESessionRecord, flags)), 0},
               {SInt16(offsetof(KWESessionRecord, flags) + sizeof(UInt32)), 0x40},
               {-2, 0x40}};
  for (const auto& c : cases) {
    KWESessionRecord r = FullRecord(nullptr);
    r.flags = 0x40;
    r.size = c.size;
    KWE_InitSession(&r);
    EXPECT_EQ(CurrentFlags(), c.flags) << c.size;
    KWE_ExitSession();
  }
}

// A four-byte record and globals record start a session served by library
// cells; a second end finds nothing left to release. The window atom marks
// the session (global atoms are shared by every process of the desktop, so
// only its presence can be checked).
TEST(Session, MinimalRecordStartsAndEndsCleanly) {
  KWESessionRecord r{};
  r.size = 4;
  KWE_InitSession(&r);
  KWEGlobalsRecord g{};
  g.size = 4;
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  SInt32 response = 0;
  EXPECT_EQ(Gestalt(0x73797376 /* 'sysv' */, &response), noErr);
  EXPECT_EQ(response, 0x0605);
  KWE_ExitSession();
  KWE_ExitSession();

  HWND main = CreateMainWindow();
  r = FullRecord(main);
  KWE_InitSession(&r);
  EXPECT_NE(GlobalFindAtomA("KWE_wFlag"), 0);
  KWE_ExitSession();
  DestroyWindow(main);
}

TEST(SessionFlags, SetFlagsChangesOnlyTheMaskedBitsAndAnswersTheOldWord) {
  KWESessionRecord r = FullRecord(nullptr);
  r.flags = 0x00010001;
  KWE_InitSession(&r);
  EXPECT_EQ(KWE_SetFlags(0x40, 0x40, 0, 0), 0x00010001u);
  EXPECT_EQ(KWE_SetFlags(0x00010000, 0xFFFFFFFF, 0, 0), 0x00010041u);
  EXPECT_EQ(KWE_SetFlags(0x1, 0, 0x0001, 0), 0x00010041u);
  EXPECT_EQ(CurrentFlags(), 0x00010040u);
  KWE_ExitSession();
}

// The host's procedure-instance pair: make hands out numbered instances and
// free takes them back, so the tests can see which callbacks the session
// wrapped and that it released each one.
struct InstanceLedger {
  int made = 0;
  int freed = 0;
};
InstanceLedger g_ledger;
void __stdcall HostCallback() {}
ProcPtr __stdcall MakeInstance(ProcPtr procedure, HINSTANCE instance) {
  EXPECT_EQ(instance, TestInstance());
  ++g_ledger.made;
  return procedure;
}
void __stdcall FreeInstance(ProcPtr) { ++g_ledger.freed; }

// Unless flag kweFlagNoProcInstances says otherwise.
TEST(Session, HostCallbacksAreWrappedAtStartAndReleasedAtEnd) {
  for (UInt32 flags : {0u, UInt32(kweFlagNoProcInstances)}) {
    g_ledger = {};
    KWESessionRecord r = FullRecord(nullptr);
    r.flags = flags;
    r.makeProcedure = MakeInstance;
    r.freeProcedure = FreeInstance;
    r.clipboardProcedure = HostCallback;
    r.byteSwapProcedure = HostCallback;
    r.printDialogHook = HostCallback;
    r.printSetupDialogHook = HostCallback;
    KWE_InitSession(&r);
    EXPECT_EQ(g_ledger.made, flags ? 0 : 4);
    KWE_ExitSession();
    EXPECT_EQ(g_ledger.freed, flags ? 0 : 4);
    KWE_ExitSession();
    EXPECT_EQ(g_ledger.freed, flags ? 0 : 4);
  }
}

std::string ModuleDirectory() {
  char module[MAX_PATH];
  GetModuleFileNameA(TestInstance(), module, sizeof module);
  std::string path = module;
  return path.substr(0, path.find_last_of("\\:") + 1);
}

TEST(AppPathName, NamesLieBesideTheHostModule) {
  KWESessionRecord r = FullRecord(nullptr);
  KWE_InitSession(&r);
  char module[MAX_PATH];
  GetModuleFileNameA(TestInstance(), module, sizeof module);
  std::string stem = module;
  stem = stem.substr(0, stem.rfind('.'));
  char dst[MAX_PATH + 32];
  KWE_MakeAppPathName(dst, "KWEFONT.FON");
  EXPECT_EQ(std::string(dst), ModuleDirectory() + "KWEFONT.FON");
  KWE_MakeAppPathName(dst, ".RSR");
  EXPECT_EQ(std::string(dst), stem + ".RSR");
  KWE_MakeAppPathName(dst, "D:\\F.RSR");
  EXPECT_EQ(std::string(dst), "D:\\F.RSR");
  KWE_MakeAppPathName(dst, nullptr);
  EXPECT_EQ(std::string(dst), std::string(module));
  KWE_ExitSession();
}

}  // namespace
