#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>

#include "Events.h"
#include "KWESession.h"
#include "MacWindows.h"
#include "OSUtils.h"
#include "support/test_host.h"

namespace {

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

// The host's procedure-instance pair, counting what the trap table asks of it.
int g_made, g_freed;
ProcPtr __stdcall MakeInstance(ProcPtr procedure, HINSTANCE) {
  ++g_made;
  return procedure;
}
void __stdcall FreeInstance(ProcPtr) { ++g_freed; }

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
  EXPECT_NE(NGetTrapAddress(kWaitNextEventTrap, ToolTrap), nullptr);
  EXPECT_EQ(NGetTrapAddress(0x1234, OSTrap), Unimplemented());
  for (UInt16 word : {0xAB03, 0x0060, 0xA1AD, 0x008F})
    EXPECT_EQ(NGetTrapAddress(word, OSTrap), P(std::uintptr_t(word))) << std::hex << word;
  EXPECT_EQ(GetTrapAddress(kWaitNextEventTrap), NGetTrapAddress(kWaitNextEventTrap, ToolTrap));
  EXPECT_EQ(GetToolboxTrapAddress(kGetNextEventTrap), NGetTrapAddress(kGetNextEventTrap, OSTrap));
  EXPECT_NE(NGetTrapAddress(kGetNextEventTrap, ToolTrap),
            NGetTrapAddress(kWaitNextEventTrap, ToolTrap));
}

UniversalProcPtr g_savedGetNextEvent;
int g_patchCalls;
Boolean __stdcall CountingGetNextEvent(EventMask mask, EventRecord* event) {
  ++g_patchCalls;
  return reinterpret_cast<decltype(&GetNextEvent)>(g_savedGetNextEvent)(mask, event);
}

TEST_F(TrapTableTest, ForwardingCallRunsThePatchWhichMayChainToTheLibrary) {
  g_patchCalls = 0;
  g_savedGetNextEvent = NGetTrapAddress(kGetNextEventTrap, ToolTrap);
  NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
  EXPECT_EQ(g_made, 1);
  EXPECT_EQ(NGetTrapAddress(kGetNextEventTrap, ToolTrap), P(&CountingGetNextEvent));
  EventRecord event;
  GetNextEvent(everyEvent, &event);
  EXPECT_EQ(g_patchCalls, 1);

  // Storing the saved default restores the library and releases the instance.
  NSetTrapAddress(g_savedGetNextEvent, kGetNextEventTrap, ToolTrap);
  EXPECT_EQ(g_freed, 1);
  EXPECT_EQ(g_made, 1);
  GetNextEvent(everyEvent, &event);
  EXPECT_EQ(g_patchCalls, 1);
  EXPECT_EQ(NGetTrapAddress(kGetNextEventTrap, ToolTrap), g_savedGetNextEvent);
}

// The same patch twice makes one instance; a null address restores the
// library's procedure; words the table does not know change nothing.
TEST_F(TrapTableTest, RepeatedNullAndUnknownPatches) {
  UniversalProcPtr library = NGetTrapAddress(kGetNextEventTrap, ToolTrap);
  NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
  NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
  EXPECT_EQ(g_made, 1);
  EXPECT_EQ(g_freed, 0);
  NSetTrapAddress(nullptr, kGetNextEventTrap, ToolTrap);
  EXPECT_EQ(NGetTrapAddress(kGetNextEventTrap, ToolTrap), library);
  EXPECT_EQ(g_freed, 1);
  SetTrapAddress(P(&CountingGetNextEvent), kUnimplementedTrap);
  EXPECT_EQ(NGetTrapAddress(kUnimplementedTrap, ToolTrap), Unimplemented());
  EXPECT_EQ(g_made, 1);
}

int g_buttonPatchDepth, g_buttonPatchCalls;
Boolean __stdcall ButtonPatch() {
  ++g_buttonPatchCalls;
  ++g_buttonPatchDepth;
  Boolean library = Button();  // the library's answer, not this patch again
  --g_buttonPatchDepth;
  return library ? 0 : 1;  // inverted, so the caller can tell who answered
}

TEST_F(TrapTableTest, GuardedCallFromItsOwnPatchGetsTheLibrarysAnswer) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  Boolean library = Button();
  g_buttonPatchCalls = g_buttonPatchDepth = 0;
  NSetTrapAddress(P(&ButtonPatch), kButtonTrap, ToolTrap);
  EXPECT_EQ(Button(), library ? 0 : 1);
  EXPECT_EQ(g_buttonPatchCalls, 1);
  EXPECT_EQ(Button(), library ? 0 : 1);  // and the guard was let go
  EXPECT_EQ(g_buttonPatchCalls, 2);
}

class TrapTableWithoutInstancesTest : public TrapTableTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagNoProcInstances; }
};

TEST_F(TrapTableWithoutInstancesTest, PatchesAreStoredAndReleasedWithoutTheHost) {
  UniversalProcPtr library = NGetTrapAddress(kGetNextEventTrap, ToolTrap);
  NSetTrapAddress(P(&CountingGetNextEvent), kGetNextEventTrap, ToolTrap);
  NSetTrapAddress(library, kGetNextEventTrap, ToolTrap);
  EXPECT_EQ(g_made, 0);
  EXPECT_EQ(g_freed, 0);
}

TEST_F(TrapTableTest, StandInsReportTheCallsTheirManagersWillTakeOver) {
  EXPECT_EQ(FrontWindow(), nullptr);
  ASSERT_EQ(capture.Reports().size(), 1u);
  EXPECT_EQ(capture.Reports()[0], "FrontWindow");
}

}  // namespace
