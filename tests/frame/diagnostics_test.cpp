// The report channel, by both of its real routes: the message box (answered
// by the capture's CBT hook) and the debugger output (seen by its vectored
// exception handler). Cases whose name says Profile set WIN.INI and run alone.
#include "Diagnostics.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "KWESession.h"
#include "support/test_host.h"

namespace {

using kwe_test::DiagnosticCapture;
using kwe_test::RemoveProfileKey;
using kwe_test::SetProfileKey;

const unsigned char kHello[] = "\x05Hello";

class DiagnosticsTest : public kwe_test::SessionTest {
 protected:
  void TearDown() override {
    RemoveProfileKey("kweport2", "DebugStrMBox");
    RemoveProfileKey("kweport2", "DebugStrBreak");
    SessionTest::TearDown();
  }
};

TEST_F(DiagnosticsTest, ProfileWithoutSettingsShowsAMessageBoxTitledByString1029) {
  RemoveProfileKey("kweport2", "DebugStrMBox");
  DebugStr(kHello);
  ASSERT_EQ(capture.MessageBoxes().size(), 1u);
  EXPECT_EQ(capture.MessageBoxes()[0].title, "KWE Test Diagnostics");
  EXPECT_EQ(capture.MessageBoxes()[0].text, "Hello");
  EXPECT_EQ(capture.DebugOutput(), "");
}

TEST_F(DiagnosticsTest, ProfileMessageBoxOffSendsTextAndLineBreakToTheDebugger) {
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  DebugStr(kHello);
  Debugger();
  SysError(28);
  EXPECT_EQ(capture.DebugOutput(), "Hello\r\nDebugger Trap\r\nSysError\r\n");
  EXPECT_TRUE(capture.MessageBoxes().empty());
  EXPECT_EQ(capture.Breakpoints(), 0);
}

TEST_F(DiagnosticsTest, ProfileBreakSettingBreaksAfterEachReport) {
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  SetProfileKey("kweport2", "DebugStrBreak", "1");
  DebugStr(kHello);
  Debugger();
  EXPECT_EQ(capture.Breakpoints(), 2);
}

TEST_F(DiagnosticsTest, ProfileSettingsAreReadOnceAtTheFirstReport) {
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  DebugStr(kHello);
  SetProfileKey("kweport2", "DebugStrMBox", "1");
  DebugStr(kHello);
  EXPECT_EQ(capture.DebugOutput(), "Hello\r\nHello\r\n");
  EXPECT_TRUE(capture.MessageBoxes().empty());
}

TEST_F(DiagnosticsTest, ProfileSilenceReportsNothingAndDoesNotReadSettings) {
  SetProfileKey("kweport2", "DebugStrMBox", "1");
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  DebugStr(kHello);
  Debugger();
  EXPECT_TRUE(capture.Reports().empty());
  // Had the silenced report read the settings, this one would be a box.
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  KWE_SetFlags(kweFlagSilentDiagnostics, 0, 0, 0);
  DebugStr(kHello);
  EXPECT_EQ(capture.DebugOutput(), "Hello\r\n");
}

// The text runs from the second byte to the first NUL, whatever the length
// byte says; reports leave the result globals alone.
TEST_F(DiagnosticsTest, TextRunsToTheFirstNulAndResultGlobalsStay) {
  vars.MemErr = -108;
  vars.ResErr = -192;
  const unsigned char message[] = "\x02Longer than two";
  DebugStr(message);
  Debugger();
  EXPECT_EQ(capture.Reports(), (std::vector<std::string>{"Longer than two", "Debugger Trap"}));
  EXPECT_EQ(vars.MemErr, -108);
  EXPECT_EQ(vars.ResErr, -192);
}

TEST(Diagnostics, ProfileMissingString1029GivesAnEmptyTitle) {
  RemoveProfileKey("kweport2", "DebugStrMBox");
  DiagnosticCapture capture;
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = GetModuleHandleA("KWEJMP.dll");  // a module with no string table
  KWE_InitSession(&r);
  DebugStr(kHello);
  KWE_ExitSession();
  ASSERT_EQ(capture.MessageBoxes().size(), 1u);
  EXPECT_EQ(capture.MessageBoxes()[0].title, "");
}

}  // namespace
