// Calls with no Windows counterpart, through the DLL's exports: what each
// answers and the exact text it reports (the capture's CBT hook answers the
// report boxes), family by family. Long families are sampled; every call with
// its own text, result or silence is listed.
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

StandardFileReply g_reply;
const Point kNowhere = {0, 0};

// windows.h declares kernel32's GetProcessInformation, so the Toolbox's is
// reached by its export name.
Answer CallGetProcessInformation() {
  using Toolbox = OSErr(KWE_CALL*)(const ProcessSerialNumber*, void*);
  FARPROC entry = GetProcAddress(GetModuleHandleA("KWEJMP.dll"), "GetProcessInformation");
  if (!entry) return kNoResult;
  return reinterpret_cast<Toolbox>(reinterpret_cast<void (*)(void)>(entry))(nullptr, nullptr);
}

OSErr KWE_CALL OpenDocuments(const AppleEvent*, AppleEvent*, SInt32) { return noErr; }

class UnsupportedCallsTest : public kwe_test::SessionTest {
 protected:
  void ExpectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      capture.Clear();
      EXPECT_EQ(row.call(), row.result) << row.text;
      std::vector<std::string> expected;
      if (!row.silent) expected.push_back(row.text);
      EXPECT_EQ(capture.Reports(), expected) << row.text;
    }
  }
};

// Each family by a sample of its calls, and every call whose text, result or
// silence is its own.
TEST_F(UnsupportedCallsTest, FamiliesReportTheirCallsAndAnswerTheirFixedValues) {
  ExpectRows({
      {"NewAlias", RESULT(NewAlias(nullptr, nullptr, nullptr)), 0},
      {"GetAliasInfo", RESULT(GetAliasInfo(nullptr, 0, nullptr)), -50},
      {"AECreateDesc", RESULT(AECreateDesc(0, nullptr, 0, nullptr)), 0},
      {"AESizeOfParam", RESULT(AESizeOfParam(nullptr, 0, nullptr, nullptr)), -1701, kSilent},
      {"AEGetInteractionAllowed", RESULT(AEGetInteractionAllowed(nullptr)), 0, kSilent},
      {"AEResolve - Not Supported, System 7", RESULT(AEResolve(nullptr, 0, nullptr)), 0},
      {"MPPOpen", RESULT(MPPOpen()), 0},
      {"NBPSetEntity", NO_RESULT(NBPSetEntity(nullptr, nullptr, nullptr, nullptr)), kNoResult},
      {"PPCBROWSER",
       RESULT(PPCBrowser(nullptr, nullptr, false, nullptr, nullptr, nullptr, nullptr)), 0},
      {"HMGetHelpMenuHandle", RESULT(HMGetHelpMenuHandle(nullptr)), 0, kSilent},
      {"GetDragMouse", RESULT(GetDragMouse(0, nullptr, nullptr)), 0},
      {"InitEditionPack", RESULT(InitEditionPackVersion(0)), -108},
      {"CreateEditionContatinerFile", RESULT(CreateEditionContainerFile(nullptr, 0, 0)), -450},
      {"DeleteEditionContainterFile", RESULT(DeleteEditionContainerFile(nullptr)), -450},
      {"SFPGetFilePreview",
       NO_RESULT(
           SFPGetFilePreview(kNowhere, nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr)),
       kNoResult},
      {"SndNewChannel", RESULT(SndNewChannel(nullptr, 0, 0, nullptr)), 0},
      {"SndDispVersion", RESULT(SndDispVersion(0)), 0, kSilent},
      {"MIDI", RESULT(MIDISignIn(0, 0, nullptr, nullptr)), 0},
      {"MIDI", NO_RESULT(MIDIFlush(0)), kNoResult},
      {"EnterMovies", RESULT(EnterMovies()), 0},
      {"SetDepth - Not Supported, System 7", RESULT(SetDepth(nullptr, 8, 0, 0)), 0},
      {"KeyTrans", RESULT(KeyTranslate(nullptr, 0, nullptr)), 0},
      {"PLOTICONMETHOD", RESULT(PlotIconMethod(nullptr, 0, 0, nullptr, nullptr)), 0},
      {"HOPENRF", RESULT(HOpenRF(0, 0, nullptr, 0, nullptr)), -1},
      {"PBHOPENDENY", RESULT(PBHOpenDeny(nullptr, false)), -1},
      {"PBUnockRange", RESULT(PBUnlockRange(nullptr, false)), -1},
      {"GetAuxCtl", RESULT(GetAuxiliaryControlRecord(nullptr, nullptr)), 0},
      {"SetCtlColor", NO_RESULT(SetControlColor(nullptr, nullptr)), kNoResult},
      {"DispMCInfo", NO_RESULT(DisposeMCInfo(nullptr)), kNoResult},
      {"MEASUREJUST", NO_RESULT(MeasureJust(nullptr, 0, 0, nullptr)), kNoResult},
      {"ReplaceTex", RESULT(ReplaceTex(nullptr, nullptr, nullptr)), 0},
      {"GetScript", RESULT(GetScript(0, 82)), 0x0015000A, kSilent},
      {"GetScript", RESULT(GetScript(0, 1)), 0},
      {"OutlineMetrics",
       RESULT(OutlineMetrics(0, nullptr, kNowhere, kNowhere, nullptr, nullptr, nullptr, nullptr,
                             nullptr)),
       -1},
      {"OpenRF", RESULT(OpenRF(nullptr, 0, nullptr)), -36},
      {"FSpCreateResFile", NO_RESULT(FSpCreateResFile(nullptr, 0, 0, 0)), kNoResult},
      {"GetProcessInformation", CallGetProcessInformation, -50},
      {"SetFrontProcess", RESULT(SetFrontProcess(nullptr)), -600},
      {"AcceptHighLevelEvent", RESULT(AcceptHighLevelEvent(nullptr, nullptr, nullptr, nullptr)),
       -608},
      {"GetSpecificHighLevelEvent", RESULT(GetSpecificHighLevelEvent(nullptr, nullptr, nullptr)),
       0xA0},
  });
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

TEST_F(UnsupportedCallsTest, CustomFileDialogsReportThenRunThePlainDialog) {
  ExpectRows({
      {"CustomPutFile",
       NO_RESULT(CustomPutFile(nullptr, nullptr, &g_reply, 0, kNowhere, nullptr, nullptr, nullptr,
                               nullptr, nullptr)),
       kNoResult},
      {"CustomGetFile",
       NO_RESULT(CustomGetFile(nullptr, -1, nullptr, &g_reply, 0, kNowhere, nullptr, nullptr,
                               nullptr, nullptr, nullptr)),
       kNoResult},
  });
}

TEST_F(UnsupportedCallsTest, ElementaryFunctionsShowTheirOwnBoxAndReturnTheArgument) {
  // Not the report channel: the silence flag does not hide these boxes.
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  const extended80 pi = {0x4000, {0xC90F, 0xDAA2, 0x2168, 0xC235}};
  const struct {
    extended80(KWE_CALL* function)(extended80);
    const char* text;
  } functions[] = {{KWE_Sin, "KWE_Sin not supported."},
                   {KWE_Cos, "KWE_Cos not supported."},
                   {KWE_Tan, "KWE_Tan not supported."},
                   {KWE_Exp, "KWE_Exp not supported."}};
  for (const auto& f : functions) {
    capture.Clear();
    extended80 answer = f.function(pi);
    EXPECT_EQ(std::memcmp(&answer, &pi, sizeof pi), 0) << f.text;
    ASSERT_EQ(capture.MessageBoxes().size(), 1u) << f.text;
    EXPECT_EQ(capture.MessageBoxes()[0].title, "KWENTPPC.DLL Error");
    EXPECT_EQ(capture.MessageBoxes()[0].text, f.text);
  }
}

// The silence flag hides the reports, not the results; outputs are never
// written.
TEST_F(UnsupportedCallsTest, SilencedCallsLeaveTheirOutputParametersAsTheyWere) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  AliasHandle alias = reinterpret_cast<AliasHandle>(0x1234);
  EXPECT_EQ(NewAlias(nullptr, nullptr, &alias), noErr);
  EXPECT_EQ(alias, reinterpret_cast<AliasHandle>(0x1234));
  EXPECT_EQ(PBHOpenDeny(nullptr, false), -1);
  const SInt16 kPoison = 0x5A5A;
  SInt16 node = kPoison, net = kPoison, refNum = kPoison;
  SInt32 count = kPoison;
  Size size = kPoison;
  UInt16 items = kPoison;
  Boolean folder = 0x5A, aliased = 0x5A;
  FSSpec file = {kPoison, kPoison, "\x01A"};
  TSMDocumentID document = reinterpret_cast<TSMDocumentID>(0x5A5A);
  SFReply reply{};
  reply.good = 0x5A;
  EXPECT_EQ(ResolveAliasFile(&file, true, &folder, &aliased), noErr);
  EXPECT_EQ(AECountItems(nullptr, &count), noErr);
  EXPECT_EQ(GetNodeAddress(&node, &net), noErr);
  EXPECT_EQ(CountDragItems(0, &items), noErr);
  EXPECT_EQ(EditionHasFormat(0, 0, &size), -450);
  EXPECT_EQ(OpenMovieFile(&file, &refNum, 0), noErr);
  EXPECT_EQ(NewTSMDocument(0, nullptr, &document, 0), noErr);
  SFPGetFilePreview(kNowhere, nullptr, nullptr, -1, nullptr, nullptr, &reply, 0, nullptr);
  EXPECT_EQ(file.vRefNum, kPoison);
  EXPECT_EQ(file.parID, kPoison);
  EXPECT_EQ(folder, 0x5A);
  EXPECT_EQ(aliased, 0x5A);
  EXPECT_EQ(count, kPoison);
  EXPECT_EQ(node, kPoison);
  EXPECT_EQ(net, kPoison);
  EXPECT_EQ(items, kPoison);
  EXPECT_EQ(size, kPoison);
  EXPECT_EQ(refNum, kPoison);
  EXPECT_EQ(document, reinterpret_cast<TSMDocumentID>(0x5A5A));
  EXPECT_EQ(reply.good, 0x5A);
  EXPECT_TRUE(capture.Reports().empty());
}

TEST_F(UnsupportedCallsTest, ReportsLeaveTheResultGlobalsAlone) {
  vars.MemErr = -117;
  vars.ResErr = -192;
  NewAlias(nullptr, nullptr, nullptr);
  FSpCreateResFile(nullptr, 0, 0, 0);
  InitEditionPackVersion(0);
  GetScript(0, 1);
  EXPECT_EQ(capture.Reports().size(), 4u);
  EXPECT_EQ(vars.MemErr, -117);
  EXPECT_EQ(vars.ResErr, -192);
}

}  // namespace
