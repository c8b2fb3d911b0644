// The low-memory globals live in the host's variables: the library writes its
// initial values there and reads them back from there.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <cstring>

#include "KWESession.h"
#include "OSUtils.h"
#include "support/test_host.h"

namespace {

using kwe_test::GlobalsFor;
using kwe_test::HostVariables;
using kwe_test::TestInstance;

void StartSession() {
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = TestInstance();
  KWE_InitSession(&r);
}

void Poison(HostVariables& v) { std::memset(&v, 0x5A, sizeof v); }

TEST(Globals, InitialValuesAreWrittenIntoTheHostsVariables) {
  StartSession();
  HostVariables v;
  Poison(v);
  KWEGlobalsRecord g = GlobalsFor(v);
  EXPECT_EQ(KWE_InitGlobals(&g), 0);

  EXPECT_EQ(v.MemErr, 0);
  EXPECT_EQ(v.ResErr, 0);
  EXPECT_EQ(v.PrintErr, 0);
  EXPECT_EQ(v.GrayRgn, nullptr);
  EXPECT_EQ(v.PendingActivation, nullptr);
  EXPECT_EQ(v.PendingDeactivation, nullptr);
  EXPECT_EQ(v.HiliteMode, 0x80);
  EXPECT_EQ(v.TheMenu, 0);
  EXPECT_EQ(v.unused32, 0);
  EXPECT_EQ(v.unused132, 0);
  EXPECT_EQ(v.SysEvtMask, SInt16(0xFFEF));
  EXPECT_EQ(v.DoubleTime, GetDoubleClickTime() >> 4);
  EXPECT_EQ(v.CaretTime, GetCaretBlinkTime() >> 4);
  EXPECT_NEAR(double(v.Ticks), double(GetTickCount() >> 4), 2.0);

  COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
  EXPECT_EQ(v.HiliteRGB.red, GetRValue(highlight) * 256);
  EXPECT_EQ(v.HiliteRGB.green, GetGValue(highlight) * 256);
  EXPECT_EQ(v.HiliteRGB.blue, GetBValue(highlight) * 256);

  EXPECT_EQ(v.ScrapInfo.scrapSize, 0);
  EXPECT_EQ(v.ScrapInfo.scrapHandle, nullptr);
  EXPECT_EQ(v.ScrapInfo.scrapCount, 1);
  EXPECT_EQ(v.ScrapInfo.scrapState, 0);
  ASSERT_NE(v.ScrapInfo.scrapName, nullptr);
  EXPECT_EQ(
      std::string(reinterpret_cast<char*>(v.ScrapInfo.scrapName) + 1, v.ScrapInfo.scrapName[0]),
      "scrapfile");
  KWE_ExitSession();
}

TEST(Globals, TheLibraryKeepsUsingTheHostsVariables) {
  StartSession();
  HostVariables v{};
  KWEGlobalsRecord g = GlobalsFor(v);
  KWE_InitGlobals(&g);
  v.Ticks = 0;
  SInt32 final = 0;
  Delay(1, &final);
  EXPECT_EQ(v.Ticks, static_cast<UInt32>(final));
  EXPECT_NE(v.Ticks, 0u);
  KWE_ExitSession();
}

// Null pointers and a null record are served from library cells: a few
// from the spare cells, all 56 from more than those; a second session in the
// process binds again without spare cells left.
TEST(Globals, NullPointersAreServedFromLibraryCells) {
  StartSession();
  HostVariables v;
  Poison(v);
  KWEGlobalsRecord g = GlobalsFor(v);
  g.Ticks = nullptr;  // TickCount must still work
  g.MemErr = nullptr;
  g.screenBits = nullptr;
  g.arrow = nullptr;
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  SInt32 final = 0;
  Delay(1, &final);
  EXPECT_NEAR(double(final), double(GetTickCount() >> 4), 2.0);
  EXPECT_EQ(v.HiliteMode, 0x80);  // the bound slots still reach the host
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

TEST(Globals, ShortRecordLeavesTheHostsLaterVariablesUntouched) {
  StartSession();
  HostVariables v;
  Poison(v);
  KWEGlobalsRecord g = GlobalsFor(v);
  g.size = static_cast<SInt16>(offsetof(KWEGlobalsRecord, HiliteMode));
  EXPECT_EQ(KWE_InitGlobals(&g), 0);
  EXPECT_EQ(v.MemErr, 0);         // before the cut: bound and set
  EXPECT_EQ(v.HiliteMode, 0x5A);  // after it: a library cell took the value
  EXPECT_EQ(v.ResErr, 0x5A5A);
  KWE_ExitSession();
}

}  // namespace
