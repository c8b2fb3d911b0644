// The session and the host it serves: the session record and flags, the
// host's procedure-instance pair, the low-memory globals living in the
// host's variables, and the patchable trap table.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "Dialogs.h"
#include "Events.h"
#include "KWESession.h"
#include "MacWindows.h"
#include "OSUtils.h"
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

void StartSession() {
  KWESessionRecord r = FullRecord(nullptr);
  KWE_InitSession(&r);
}

UInt32 CurrentFlags() { return KWE_SetFlags(0, 0, 0, 0); }

// The host's procedure-instance pair: make hands out numbered instances and
// free takes them back, so the tests can see which callbacks the session
// and the trap table wrapped and that each one was released.
int g_made, g_freed;
ProcPtr __stdcall MakeInstance(ProcPtr procedure, HINSTANCE instance) {
  EXPECT_EQ(instance, TestInstance());
  ++g_made;
  return procedure;
}
void __stdcall FreeInstance(ProcPtr) { ++g_freed; }
void __stdcall HostCallback() {}

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

// Unless flag kweFlagNoProcInstances says otherwise; then trap patches too
// are stored and released without the host.
TEST(Session, HostCallbacksAreWrappedAtStartAndReleasedAtEnd) {
  for (UInt32 flags : {0u, UInt32(kweFlagNoProcInstances)}) {
    g_made = g_freed = 0;
    KWESessionRecord r = FullRecord(nullptr);
    r.flags = flags;
    r.makeProcedure = MakeInstance;
    r.freeProcedure = FreeInstance;
    r.clipboardProcedure = HostCallback;
    r.byteSwapProcedure = HostCallback;
    r.printDialogHook = HostCallback;
    r.printSetupDialogHook = HostCallback;
    KWE_InitSession(&r);
    UniversalProcPtr library = NGetTrapAddress(0xA970, ToolTrap);
    NSetTrapAddress(reinterpret_cast<UniversalProcPtr>(&HostCallback), 0xA970, ToolTrap);
    NSetTrapAddress(library, 0xA970, ToolTrap);
    EXPECT_EQ(g_made, flags ? 0 : 5);
    EXPECT_EQ(g_freed, flags ? 0 : 1);
    KWE_ExitSession();
    EXPECT_EQ(g_freed, flags ? 0 : 5);
    KWE_ExitSession();
    EXPECT_EQ(g_freed, flags ? 0 : 5);
  }
}

TEST(AppPathName, NamesLieBesideTheHostModule) {
  KWESessionRecord r = FullRecord(nullptr);
  KWE_InitSession(&r);
  char module[MAX_PATH];
  GetModuleFileNameA(TestInstance(), module, sizeof module);
  std::string path = module;
  char dst[MAX_PATH + 32];
  KWE_MakeAppPathName(dst, "KWEFONT.FON");
  EXPECT_EQ(std::string(dst), path.substr(0, path.find_last_of("\\:") + 1) + "KWEFONT.FON");
  KWE_MakeAppPathName(dst, ".RSR");
  EXPECT_EQ(std::string(dst), path.substr(0, path.rfind('.')) + ".RSR");
  KWE_MakeAppPathName(dst, "D:\\F.RSR");
  EXPECT_EQ(std::string(dst), "D:\\F.RSR");
  KWE_MakeAppPathName(dst, nullptr);
  EXPECT_EQ(std::string(dst), std::string(module));
  KWE_ExitSession();
}

void Poison(HostVariables& v) { std::memset(&v, 0x5A, sizeof v); }

// Poisoned first, so that every value checked was written by the library.
TEST(Globals, InitialValuesAreWrittenIntoTheHostsVariables) {
  StartSession();
  HostVariables v;
  Poison(v);
  KWEGlobalsRecord g = GlobalsFor(v);
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  for (SInt32 zero : {SInt32(v.MemErr), SInt32(v.ResErr), SInt32(v.PrintErr), SInt32(v.TheMenu),
                      SInt32(v.ScrapInfo.scrapSize), SInt32(v.ScrapInfo.scrapState)})
    EXPECT_EQ(zero, 0);
  for (const void* none :
       {static_cast<const void*>(v.GrayRgn), static_cast<const void*>(v.PendingActivation),
        static_cast<const void*>(v.ScrapInfo.scrapHandle)})
    EXPECT_EQ(none, nullptr);
  EXPECT_EQ(v.HiliteMode, 0x80);
  EXPECT_EQ(v.SysEvtMask, SInt16(0xFFEF));
  EXPECT_EQ(v.DoubleTime, GetDoubleClickTime() >> 4);
  EXPECT_EQ(v.CaretTime, GetCaretBlinkTime() >> 4);
  EXPECT_NEAR(double(v.Ticks), double(GetTickCount() >> 4), 2.0);
  EXPECT_EQ(v.ScrapInfo.scrapCount, 1);
  ASSERT_NE(v.ScrapInfo.scrapName, nullptr);
  EXPECT_EQ(
      std::string(reinterpret_cast<char*>(v.ScrapInfo.scrapName) + 1, v.ScrapInfo.scrapName[0]),
      "scrapfile");
  KWE_ExitSession();
}

// Null pointers, the slots a short record stops short of, and a null
// record are served from library cells: a few from the spare cells, all 56
// from more than those; a second session in the process binds again
// without spare cells left.
TEST(Globals, NullPointersAndShortRecordsAreServedFromLibraryCells) {
  StartSession();
  HostVariables v;
  Poison(v);
  KWEGlobalsRecord g = GlobalsFor(v);
  g.Ticks = nullptr;  // TickCount must still work
  g.screenBits = nullptr;
  g.arrow = nullptr;
  g.size = static_cast<SInt16>(offsetof(KWEGlobalsRecord, HiliteMode));
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  SInt32 final = 0;
  Delay(1, &final);
  EXPECT_NEAR(double(final), double(GetTickCount() >> 4), 2.0);
  EXPECT_EQ(v.MemErr, 0);         // before the cut: bound and set
  EXPECT_EQ(v.HiliteMode, 0x5A);  // after it: a library cell took the value
  EXPECT_EQ(v.ResErr, 0x5A5A);
  KWE_ExitSession();
  for (int session = 0; session < 3; ++session) {
    StartSession();
    KWEGlobalsRecord none{};
    none.size = sizeof none;
    EXPECT_EQ(KWE_InitGlobals(session < 2 ? &none : nullptr), 0) << session;
    final = 0;
    Delay(1, &final);
    EXPECT_NE(final, 0);
    KWE_ExitSession();
  }
}

constexpr UInt16 kWaitNextEventTrap = 0xA860;
constexpr UInt16 kGetNextEventTrap = 0xA970;
constexpr UInt16 kButtonTrap = 0xA974;
constexpr UInt16 kUnimplementedTrap = 0xA89F;

UniversalProcPtr Unimplemented() {
  return reinterpret_cast<UniversalProcPtr>(std::uintptr_t(0xFFFFFFFFu));
}

template <class F>
UniversalProcPtr P(F f) {
  return reinterpret_cast<UniversalProcPtr>(f);
}

class TrapTableTest : public kwe_test::SessionTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    g_made = g_freed = 0;
    r.makeProcedure = MakeInstance;
    r.freeProcedure = FreeInstance;
  }
};

TEST_F(TrapTableTest, AddressesTellWhatIsImplemented) {
  EXPECT_EQ(NGetTrapAddress(kUnimplementedTrap, ToolTrap), Unimplemented());
  EXPECT_NE(NGetTrapAddress(kWaitNextEventTrap, ToolTrap), Unimplemented());
  EXPECT_EQ(NGetTrapAddress(0x1234, OSTrap), Unimplemented());
  for (UInt16 word : {0xAB03, 0x0060, 0xA1AD, 0x008F})
    EXPECT_EQ(NGetTrapAddress(word, OSTrap), P(std::uintptr_t(word))) << std::hex << word;
  EXPECT_EQ(GetTrapAddress(kWaitNextEventTrap), NGetTrapAddress(kWaitNextEventTrap, ToolTrap));
  EXPECT_EQ(GetToolboxTrapAddress(kGetNextEventTrap), NGetTrapAddress(kGetNextEventTrap, OSTrap));
}

UniversalProcPtr g_savedGetNextEvent;
int g_patchCalls;
Boolean __stdcall CountingGetNextEvent(EventMask mask, EventRecord* event) {
  ++g_patchCalls;
  return reinterpret_cast<decltype(&GetNextEvent)>(g_savedGetNextEvent)(mask, event);
}

// The forwarding call runs the patch, which may chain to the library. The
// same patch twice makes one instance; the saved address or a null one
// restores the library's procedure and releases the instance; words the
// table does not know change nothing.
TEST_F(TrapTableTest, PatchesRunThroughTheForwardingCallUntilUndone) {
  g_patchCalls = 0;
  g_savedGetNextEvent = NGetTrapAddress(kGetNextEventTrap, ToolTrap);
  for (UniversalProcPtr undo : {g_savedGetNextEvent, UniversalProcPtr(nullptr)}) {
    NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
    NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
    EXPECT_EQ(g_made, g_freed + 1);
    EXPECT_EQ(NGetTrapAddress(kGetNextEventTrap, ToolTrap), P(&CountingGetNextEvent));
    EventRecord event;
    int calls = g_patchCalls;
    GetNextEvent(everyEvent, &event);
    EXPECT_EQ(g_patchCalls, calls + 1);
    NSetTrapAddress(undo, kGetNextEventTrap, ToolTrap);
    EXPECT_EQ(g_freed, g_made);
    GetNextEvent(everyEvent, &event);
    EXPECT_EQ(g_patchCalls, calls + 1);
    EXPECT_EQ(NGetTrapAddress(kGetNextEventTrap, ToolTrap), g_savedGetNextEvent);
  }
  SetTrapAddress(P(&CountingGetNextEvent), kUnimplementedTrap);
  EXPECT_EQ(NGetTrapAddress(kUnimplementedTrap, ToolTrap), Unimplemented());
  EXPECT_EQ(g_made, 2);
}

int g_buttonPatchCalls;
Boolean __stdcall ButtonPatch() {
  ++g_buttonPatchCalls;
  Boolean library = Button();  // the library's answer, not this patch again
  return library ? 0 : 1;      // inverted, so the caller can tell who answered
}

TEST_F(TrapTableTest, GuardedCallFromItsOwnPatchGetsTheLibrarysAnswer) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  Boolean library = Button();
  g_buttonPatchCalls = 0;
  NSetTrapAddress(P(&ButtonPatch), kButtonTrap, ToolTrap);
  EXPECT_EQ(Button(), library ? 0 : 1);
  EXPECT_EQ(g_buttonPatchCalls, 1);
  EXPECT_EQ(Button(), library ? 0 : 1);  // and the guard was let go
  EXPECT_EQ(g_buttonPatchCalls, 2);
}

// The patchable ModalDialog, with no dialog in front, answers at once.
TEST_F(TrapTableTest, ModalDialogWithoutADialogAnswersAtOnce) {
  SInt16 item = -1;
  ModalDialog(nullptr, &item);
  EXPECT_EQ(item, 0);
  EXPECT_TRUE(capture.Reports().empty());
}

}  // namespace
