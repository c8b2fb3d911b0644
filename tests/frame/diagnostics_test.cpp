// The report channel, by both of its real routes: the message box (answered
// by the capture's CBT hook) and the debugger output (seen by its vectored
// exception handler). Cases whose name says Profile set WIN.INI and run
// alone. Then the calls with no Windows counterpart, through the DLL's
// exports: what each answers and the exact text it reports.
#include "Diagnostics.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "Aliases.h"
#include "AppleEvents.h"
#include "AppleTalk.h"
#include "Balloons.h"
#include "Drag.h"
#include "Editions.h"
#include "ImageCompression.h"
#include "KWESession.h"
#include "MIDI.h"
#include "Movies.h"
#include "PPCToolbox.h"
#include "Sound.h"
#include "StandardFile.h"
#include "TextServices.h"
#include "UnsupportedCalls.h"
#include "support/test_host.h"

namespace {

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

// A module with no string 1029 gives an empty title.
TEST_F(DiagnosticsTest, ProfileWithoutSettingsShowsAMessageBoxTitledByString1029) {
  RemoveProfileKey("kweport2", "DebugStrMBox");
  DebugStr(kHello);
  KWE_ExitSession();
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = GetModuleHandleA("KWEJMP.dll");
  KWE_InitSession(&r);
  DebugStr(kHello);
  ASSERT_EQ(capture.MessageBoxes().size(), 2u);
  EXPECT_EQ(capture.MessageBoxes()[0].title, "KWE Test Diagnostics");
  EXPECT_EQ(capture.MessageBoxes()[0].text, "Hello");
  EXPECT_EQ(capture.MessageBoxes()[1].title, "");
  EXPECT_EQ(capture.DebugOutput(), "");
}

// The settings are read once, at the first report.
TEST_F(DiagnosticsTest, ProfileMessageBoxOffSendsTextAndLineBreakToTheDebugger) {
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  DebugStr(kHello);
  Debugger();
  SysError(28);
  SetProfileKey("kweport2", "DebugStrMBox", "1");
  SetProfileKey("kweport2", "DebugStrBreak", "1");
  DebugStr(kHello);
  EXPECT_EQ(capture.DebugOutput(), "Hello\r\nDebugger Trap\r\nSysError\r\nHello\r\n");
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

// Silenced reports do not read the settings either. The text runs from the
// second byte to the first NUL, whatever the length byte says.
TEST_F(DiagnosticsTest, ProfileSilenceReportsNothingAndDoesNotReadSettings) {
  SetProfileKey("kweport2", "DebugStrMBox", "1");
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  DebugStr(kHello);
  Debugger();
  EXPECT_TRUE(capture.Reports().empty());
  // Had the silenced report read the settings, this one would be a box.
  SetProfileKey("kweport2", "DebugStrMBox", "0");
  KWE_SetFlags(kweFlagSilentDiagnostics, 0, 0, 0);
  DebugStr(reinterpret_cast<const unsigned char*>("\x02Longer than two"));
  EXPECT_EQ(capture.DebugOutput(), "Longer than two\r\n");
}

// A call's answer widened to one type; procedures answer kNoResult.
using Answer = long long;
constexpr Answer kNoResult = 0x7EAD0000;
constexpr bool kSilent = true;

template <class T>
Answer Widen(T value) {
  if constexpr (std::is_pointer_v<T>)
    return static_cast<Answer>(reinterpret_cast<std::intptr_t>(value));
  else
    return static_cast<Answer>(value);
}

#define RESULT(call) [] { return Widen(call); }
#define NO_RESULT(call) \
  [] {                  \
    call;               \
    return kNoResult;   \
  }

struct Row {
  const char* text;  // what the call reports; for a silent call, its name
  Answer (*call)();
  Answer result;
  bool silent = false;
};

const Point kNowhere = {0, 0};

OSErr KWE_CALL OpenDocuments(const AppleEvent*, AppleEvent*, SInt32) { return noErr; }

class UnsupportedCallsTest : public kwe_test::SessionTest {};

// One row for each family and each result or text of its own: the name
// goes through the report channel, the family's fixed value comes back, and
// the result globals stay as they were.
TEST_F(UnsupportedCallsTest, FamiliesReportTheirCallsAndAnswerTheirFixedValues) {
  vars.MemErr = -117;
  vars.ResErr = -192;
  const Row rows[] = {
      {"NewAlias", RESULT(NewAlias(nullptr, nullptr, nullptr)), 0},
      {"GetAliasInfo", RESULT(GetAliasInfo(nullptr, 0, nullptr)), -50},
      {"AESizeOfParam", RESULT(AESizeOfParam(nullptr, 0, nullptr, nullptr)), -1701, kSilent},
      {"AEResolve - Not Supported, System 7", RESULT(AEResolve(nullptr, 0, nullptr)), 0},
      {"MPPOpen", RESULT(MPPOpen()), 0},
      {"PPCBROWSER",
       RESULT(PPCBrowser(nullptr, nullptr, false, nullptr, nullptr, nullptr, nullptr)), 0},
      {"HMGetHelpMenuHandle", RESULT(HMGetHelpMenuHandle(nullptr)), 0, kSilent},
      {"GetDragMouse", RESULT(GetDragMouse(0, nullptr, nullptr)), 0},
      {"InitEditionPack", RESULT(InitEditionPackVersion(0)), -108},
      {"CreateEditionContatinerFile", RESULT(CreateEditionContainerFile(nullptr, 0, 0)), -450},
      {"SndNewChannel", RESULT(SndNewChannel(nullptr, 0, 0, nullptr)), 0},
      {"SndDispVersion", RESULT(SndDispVersion(0)), 0, kSilent},
      {"MIDI", RESULT(MIDISignIn(0, 0, nullptr, nullptr)), 0},
      {"EnterMovies", RESULT(EnterMovies()), 0},
      {"DecompressImage",
       RESULT(DecompressImage(nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr)), 0},
      {"InitTSMAwareApplication", RESULT(InitTSMAwareApplication()), 0},
      {"SetDepth - Not Supported, System 7", RESULT(SetDepth(nullptr, 8, 0, 0)), 0},
      {"HOPENRF", RESULT(HOpenRF(0, 0, nullptr, 0, nullptr)), -1},
      {"OpenRF", RESULT(OpenRF(nullptr, 0, nullptr)), -36},
      {"GetScript", RESULT(GetScript(0, 82)), 0x0015000A, kSilent},
      {"GetScript", RESULT(GetScript(0, 1)), 0},
      {"SetFrontProcess", RESULT(SetFrontProcess(nullptr)), -600},
      {"AcceptHighLevelEvent", RESULT(AcceptHighLevelEvent(nullptr, nullptr, nullptr, nullptr)),
       -608},
      {"GetSpecificHighLevelEvent", RESULT(GetSpecificHighLevelEvent(nullptr, nullptr, nullptr)),
       0xA0},
  };
  for (const Row& row : rows) {
    capture.Clear();
    EXPECT_EQ(row.call(), row.result) << row.text;
    std::vector<std::string> expected;
    if (!row.silent) expected.push_back(row.text);
    EXPECT_EQ(capture.Reports(), expected) << row.text;
  }
  EXPECT_EQ(vars.MemErr, -117);
  EXPECT_EQ(vars.ResErr, -192);
}

TEST_F(UnsupportedCallsTest, InstalledEventHandlersAreNeverFoundAndTheVolumeIsKept) {
  AEEventHandlerProcPtr handler = OpenDocuments;
  const AEEventClass core = 0x61657674;  // 'aevt'
  const AEEventID open = 0x6F646F63;     // 'odoc'
  EXPECT_EQ(AEInstallEventHandler(core, open, handler, 7, false), noErr);
  AEEventHandlerProcPtr found = handler;
  SInt32 refcon = -1;
  EXPECT_EQ(AEGetEventHandler(core, open, &found, &refcon, false), -1717);
  EXPECT_EQ(found, handler);  // not written
  EXPECT_EQ(refcon, -1);
  EXPECT_EQ(AERemoveEventHandler(core, open, handler, false), -1717);
  SInt16 level = -1;
  GetSoundVol(&level);
  EXPECT_EQ(level, 7);
  SetSoundVol(5);
  GetSoundVol(&level);
  EXPECT_EQ(level, 5);
  GetSoundVol(nullptr);
  EXPECT_TRUE(capture.Reports().empty());
}

TEST_F(UnsupportedCallsTest, ElementaryFunctionsShowTheirOwnBoxAndReturnTheArgument) {
  // Not the report channel: the silence flag does not hide these boxes.
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  const extended80 pi = {0x4000, {0xC90F, 0xDAA2, 0x2168, 0xC235}};
  const struct {
    extended80(KWE_CALL* function)(extended80);
    const char* name;
  } functions[] = {{KWE_Sin, "Sin"}, {KWE_Cos, "Cos"}, {KWE_Tan, "Tan"}, {KWE_Exp, "Exp"}};
  for (const auto& f : functions) {
    capture.Clear();
    extended80 answer = f.function(pi);
    EXPECT_EQ(std::memcmp(&answer, &pi, sizeof pi), 0) << f.name;
    ASSERT_EQ(capture.MessageBoxes().size(), 1u) << f.name;
    EXPECT_EQ(capture.MessageBoxes()[0].title, "KWENTPPC.DLL Error");
    EXPECT_EQ(capture.MessageBoxes()[0].text, std::string("KWE_") + f.name + " not supported.");
  }
}

// The silence flag hides the reports, not the results; outputs are never
// written.
TEST_F(UnsupportedCallsTest, SilencedCallsLeaveTheirOutputParametersAsTheyWere) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  struct {
    AliasHandle alias;
    FSSpec file;
    Boolean folder, aliased;
    SInt32 count;
    SInt16 refNum;
    SFReply reply;
  } out, poisoned;
  std::memset(&out, 0x5A, sizeof out);
  poisoned = out;
  EXPECT_EQ(NewAlias(nullptr, nullptr, &out.alias), noErr);
  EXPECT_EQ(ResolveAliasFile(&out.file, true, &out.folder, &out.aliased), noErr);
  EXPECT_EQ(AECountItems(nullptr, &out.count), noErr);
  EXPECT_EQ(OpenMovieFile(&out.file, &out.refNum, 0), noErr);
  SFPGetFilePreview(kNowhere, nullptr, nullptr, -1, nullptr, nullptr, &out.reply, 0, nullptr);
  EXPECT_EQ(PBHOpenDeny(nullptr, false), -1);
  EXPECT_EQ(std::memcmp(&out, &poisoned, sizeof out), 0);
  EXPECT_TRUE(capture.Reports().empty());
}

}  // namespace
