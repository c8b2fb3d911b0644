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

TEST(Session, ShortRecordLeavesLaterFieldsZero) {
  KWESessionRecord r = FullRecord(nullptr);
  r.flags = 0x40;
  r.size = static_cast<SInt16>(offsetof(KWESessionRecord, flags));  // stops short of flags
  KWE_InitSession(&r);
  EXPECT_EQ(CurrentFlags(), 0u);
  KWE_ExitSession();
}

TEST(Session, RecordCopiedUpToItsSizeAndNegativeSizeCopiesAll) {
  KWESessionRecord r = FullRecord(nullptr);
  r.flags = 0x40;
  r.size = static_cast<SInt16>(offsetof(KWESessionRecord, flags) + sizeof r.flags);
  KWE_InitSession(&r);
  EXPECT_EQ(CurrentFlags(), 0x40u);
  KWE_ExitSession();

  r.size = -2;
  r.flags = 0x80;
  KWE_InitSession(&r);
  EXPECT_EQ(CurrentFlags(), 0x80u);
  KWE_ExitSession();
}

TEST(Session, MinimalRecordStartsAndEndsCleanly) {
  KWESessionRecord r{};
  r.size = 4;
  KWE_InitSession(&r);
  KWEGlobalsRecord g{};
  g.size = 4;  // every global served by library cells
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  SInt32 response = 0;
  EXPECT_EQ(Gestalt(0x73797376 /* 'sysv' */, &response), noErr);
  EXPECT_EQ(response, 0x0605);
  KWE_ExitSession();
  KWE_ExitSession();  // a second end finds nothing left to release
}

// Global atoms are shared by every process of the desktop (other test
// processes hold this one too), so only its presence can be checked here.
TEST(Session, WindowAtomExistsDuringTheSession) {
  HWND main = CreateMainWindow();
  KWESessionRecord r = FullRecord(main);
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

TEST(Session, HostCallbacksAreWrappedAtStartAndReleasedAtEnd) {
  g_ledger = {};
  KWESessionRecord r = FullRecord(nullptr);
  r.makeProcedure = MakeInstance;
  r.freeProcedure = FreeInstance;
  r.clipboardProcedure = HostCallback;
  r.byteSwapProcedure = HostCallback;
  r.printDialogHook = HostCallback;
  r.printSetupDialogHook = HostCallback;
  KWE_InitSession(&r);
  EXPECT_EQ(g_ledger.made, 4);
  KWE_ExitSession();
  EXPECT_EQ(g_ledger.freed, 4);
  KWE_ExitSession();
  EXPECT_EQ(g_ledger.freed, 4);
}

TEST(Session, NoProcInstancesFlagLeavesCallbacksAsGiven) {
  g_ledger = {};
  KWESessionRecord r = FullRecord(nullptr);
  r.flags = kweFlagNoProcInstances;
  r.makeProcedure = MakeInstance;
  r.freeProcedure = FreeInstance;
  r.clipboardProcedure = HostCallback;
  r.printDialogHook = HostCallback;
  KWE_InitSession(&r);
  KWE_ExitSession();
  EXPECT_EQ(g_ledger.made, 0);
  EXPECT_EQ(g_ledger.freed, 0);
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
