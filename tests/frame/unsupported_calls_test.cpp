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

TEST_F(UnsupportedCallsTest, AliasManager) {
  ExpectRows({
      {"NewAlias", RESULT(NewAlias(nullptr, nullptr, nullptr)), 0},
      {"NewAliasMinimal", RESULT(NewAliasMinimal(nullptr, nullptr)), 0},
      {"ResolveAlias", RESULT(ResolveAlias(nullptr, nullptr, nullptr, nullptr)), 0},
      {"ResolveAliasFile", RESULT(ResolveAliasFile(nullptr, true, nullptr, nullptr)), 0},
      {"GetAliasInfo", RESULT(GetAliasInfo(nullptr, 0, nullptr)), -50},
      {"MatchAlias",
       RESULT(MatchAlias(nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)), -50},
      {"UpdateAlias", RESULT(UpdateAlias(nullptr, nullptr, nullptr, nullptr)), -50},
  });
}

TEST_F(UnsupportedCallsTest, AppleEventManager) {
  ExpectRows({
      {"AECreateDesc", RESULT(AECreateDesc(0, nullptr, 0, nullptr)), 0},
      {"AESend", RESULT(AESend(nullptr, nullptr, 0, 0, 0, nullptr, nullptr)), 0},
      {"AEProcessAppleEvent", RESULT(AEProcessAppleEvent(nullptr)), 0},
      {"AEInstallCoercionHandler",
       RESULT(AEInstallCoercionHandler(0, 0, nullptr, 0, false, false)), 0},
      {"AESizeOfParam", RESULT(AESizeOfParam(nullptr, 0, nullptr, nullptr)), -1701, kSilent},
      {"AEGetInteractionAllowed", RESULT(AEGetInteractionAllowed(nullptr)), 0, kSilent},
      {"AEInstallEventHandler", RESULT(AEInstallEventHandler(0, 0, nullptr, 0, false)), 0,
       kSilent},
      {"AERemoveEventHandler", RESULT(AERemoveEventHandler(0, 0, nullptr, false)), -1717,
       kSilent},
      {"AEGetEventHandler", RESULT(AEGetEventHandler(0, 0, nullptr, nullptr, false)), -1717,
       kSilent},
      {"AEResolve - Not Supported, System 7", RESULT(AEResolve(nullptr, 0, nullptr)), 0},
      {"AEObjectInit - Not Supported, System 7", RESULT(AEObjectInit()), 0},
      {"AEInstallObjectAccessor - Not Supported, System 7",
       RESULT(AEInstallObjectAccessor(0, 0, nullptr, 0, false)), 0},
      {"CreateObjSpecifier - Not Supported, System 7",
       RESULT(CreateObjSpecifier(0, nullptr, 0, nullptr, false, nullptr)), 0},
      {"CreateOffsetDescriptor - Not Supported, System 7",
       RESULT(CreateOffsetDescriptor(0, nullptr)), 0},
      {"CreateCompDescriptor - Not Supported, System 7",
       RESULT(CreateCompDescriptor(0, nullptr, nullptr, false, nullptr)), 0},
  });
}

TEST_F(UnsupportedCallsTest, InstalledEventHandlersAreNeverFound) {
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
  EXPECT_TRUE(capture.Reports().empty());
}

TEST_F(UnsupportedCallsTest, AppleTalkAndPPCToolbox) {
  ExpectRows({
      {"MPPOpen", RESULT(MPPOpen()), 0},
      {"PLookupName", RESULT(PLookupName(nullptr, false)), 0},
      {"GetBridgeAddress", RESULT(GetBridgeAddress()), 0},
      {"ATPOpenSocket", RESULT(ATPOpenSocket(AddrBlock{}, nullptr)), 0},
      {"NBPRemove", RESULT(NBPRemove(nullptr)), 0},
      {"NBPSetEntity", NO_RESULT(NBPSetEntity(nullptr, nullptr, nullptr, nullptr)), kNoResult},
      {"NBPSetNTE", NO_RESULT(NBPSetNTE(nullptr, nullptr, nullptr, nullptr, 0)), kNoResult},
      {"BuildBDS", RESULT(BuildBDS(nullptr, nullptr, 0)), 0},
      {"PPCBROWSER",
       RESULT(PPCBrowser(nullptr, nullptr, false, nullptr, nullptr, nullptr, nullptr)), 0},
  });
}

TEST_F(UnsupportedCallsTest, HelpManagerIsSilentAndDragManagerReports) {
  ExpectRows({
      {"HMGetHelpMenuHandle", RESULT(HMGetHelpMenuHandle(nullptr)), 0, kSilent},
      {"HMShowBalloon", RESULT(HMShowBalloon(nullptr, kNowhere, nullptr, nullptr, 0, 0, 0)), 0,
       kSilent},
      {"HMRemoveBalloon", RESULT(HMRemoveBalloon()), 0, kSilent},
      {"HMGetIndHelpMsg",
       RESULT(HMGetIndHelpMsg(0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr)),
       0, kSilent},
      {"HMGetBalloons", RESULT(HMGetBalloons()), 0, kSilent},
      {"HMIsBalloon", RESULT(HMIsBalloon()), 0, kSilent},
      {"InstallReceiveHandler", RESULT(InstallReceiveHandler(nullptr, nullptr, nullptr)), 0},
      {"GetDragMouse", RESULT(GetDragMouse(0, nullptr, nullptr)), 0},
      {"GetFlavorData", RESULT(GetFlavorData(0, 0, 0, nullptr, nullptr, 0)), 0},
      {"HideDragHilite", RESULT(HideDragHilite(0)), 0},
  });
}

TEST_F(UnsupportedCallsTest, EditionManager) {
  ExpectRows({
      {"InitEditionPack", RESULT(InitEditionPackVersion(0)), -108},
      {"CreateEditionContatinerFile", RESULT(CreateEditionContainerFile(nullptr, 0, 0)), -450},
      {"DeleteEditionContainterFile", RESULT(DeleteEditionContainerFile(nullptr)), -450},
      {"NewSection", RESULT(NewSection(nullptr, nullptr, 0, 0, 0, nullptr)), -450},
      {"ReadEdition", RESULT(ReadEdition(0, 0, nullptr, nullptr)), -450},
      {"SectionOptionsExpDialog",
       RESULT(SectionOptionsExpDialog(nullptr, kNowhere, 0, nullptr, nullptr, nullptr)), -450},
  });
}

TEST_F(UnsupportedCallsTest, ImageCompressionAndSoundManagers) {
  ExpectRows({
      {"FCompressImage",
       RESULT(FCompressImage(nullptr, nullptr, 0, 0, 0, nullptr, nullptr, 0, 0, nullptr, nullptr,
                             nullptr, nullptr)),
       0},
      {"CDSequenceEnd", RESULT(CDSequenceEnd(0)), 0},
      {"SFPGetFilePreview",
       NO_RESULT(SFPGetFilePreview(kNowhere, nullptr, nullptr, 0, nullptr, nullptr, nullptr, 0,
                                   nullptr)),
       kNoResult},
      {"OpenStdCompression", RESULT(OpenStdCompression()), 0},
      {"SndNewChannel", RESULT(SndNewChannel(nullptr, 0, 0, nullptr)), 0},
      {"SndDoCommand", RESULT(SndDoCommand(nullptr, nullptr, false)), 0},
      {"SndPlay", RESULT(SndPlay(nullptr, nullptr, false)), 0},
      {"SndDisposeChannel", RESULT(SndDisposeChannel(nullptr, true)), 0},
  });
}

TEST_F(UnsupportedCallsTest, SoundVolumeIsKeptSilently) {
  SInt16 level = -1;
  GetSoundVol(&level);
  EXPECT_EQ(level, 7);
  SetSoundVol(5);
  GetSoundVol(&level);
  EXPECT_EQ(level, 5);
  GetSoundVol(nullptr);
  EXPECT_TRUE(capture.Reports().empty());
}

TEST_F(UnsupportedCallsTest, MIDIManagerReportsOneText) {
  ExpectRows({
      {"SndDispVersion", RESULT(SndDispVersion(0)), 0, kSilent},
      {"MIDI", RESULT(MIDISignIn(0, 0, nullptr, nullptr)), 0},
      {"MIDI", RESULT(MIDIGetPorts(0)), 0},
      {"MIDI", RESULT(MIDIGetCurTime(0)), 0},
      {"MIDI", NO_RESULT(MIDIFlush(0)), kNoResult},
      {"MIDI", NO_RESULT(MIDIWakeUp(0, 0, 0, nullptr)), kNoResult},
  });
}

TEST_F(UnsupportedCallsTest, MovieToolboxAndTextServices) {
  ExpectRows({
      {"EnterMovies", RESULT(EnterMovies()), 0},
      {"NewMovieController", RESULT(NewMovieController(nullptr, nullptr, 0)), 0},
      {"GetMovieTime", RESULT(GetMovieTime(nullptr, nullptr)), 0},
      {"DisposeMovie", NO_RESULT(DisposeMovie(nullptr)), kNoResult},
      {"InitTSMAwareApplication", RESULT(InitTSMAwareApplication()), 0},
      {"NewTSMDocument", RESULT(NewTSMDocument(0, nullptr, nullptr, 0)), 0},
      {"TSMEvent", RESULT(TSMEvent(nullptr)), 0},
      {"SetTSMCursor", RESULT(SetTSMCursor(kNowhere)), 0},
  });
}

TEST_F(UnsupportedCallsTest, OtherManagersWithTheirOwnTexts) {
  ExpectRows({
      {"SetDepth - Not Supported, System 7", RESULT(SetDepth(nullptr, 8, 0, 0)), 0},
      {"HasDepth - Not Supported, System 7", RESULT(HasDepth(nullptr, 8, 0, 0)), 0},
      {"KeyTrans", RESULT(KeyTranslate(nullptr, 0, nullptr)), 0},
      {"PLOTICONMETHOD", RESULT(PlotIconMethod(nullptr, 0, 0, nullptr, nullptr)), 0},
      {"HOPENRF", RESULT(HOpenRF(0, 0, nullptr, 0, nullptr)), -1},
      {"PBHOPENDENY", RESULT(PBHOpenDeny(nullptr, false)), -1},
      {"PBUnockRange", RESULT(PBUnlockRange(nullptr, false)), -1},
      {"GetAuxCtl", RESULT(GetAuxiliaryControlRecord(nullptr, nullptr)), 0},
      {"SetCtlColor", NO_RESULT(SetControlColor(nullptr, nullptr)), kNoResult},
      {"DispMCInfo", NO_RESULT(DisposeMCInfo(nullptr)), kNoResult},
      {"MEASUREJUST", NO_RESULT(MeasureJust(nullptr, 0, 0, nullptr)), kNoResult},
  });
}

TEST_F(UnsupportedCallsTest, OtherManagersAnsweringZeroOrFalse) {
  ExpectRows({
      {"GetMCInfo", RESULT(GetMCInfo()), 0},
      {"GetDrvQHdr", RESULT(GetDrvQHdr()), 0},
      {"PBStatus", RESULT(PBStatus(nullptr, false)), 0},
      {"CallPascalL", RESULT(CallPascalL(nullptr)), 0},
      {"ReplaceTex", RESULT(ReplaceTex(nullptr, nullptr, nullptr)), 0},
      {"TEFeatureFlag", RESULT(TEFeatureFlag(0, 0, nullptr)), 0},
      {"SetChooserAlert", RESULT(SetChooserAlert(true)), 0},
      {"CallPascalB", RESULT(CallPascalB(nullptr)), 0},
      {"RealColor", RESULT(RealColor(nullptr)), 0},
      {"GetAuxWin", RESULT(GetAuxWin(nullptr, nullptr)), 0},
      {"GetOutlinePreferred", RESULT(GetOutlinePreferred()), 0},
      {"x80told", RESULT(x80told(nullptr)), 0},
      {"GetScript", RESULT(GetScript(0, 82)), 0x0015000A, kSilent},
      {"GetScript", RESULT(GetScript(0, 1)), 0},
  });
}

TEST_F(UnsupportedCallsTest, OtherManagersAnsweringErrorsOrNothing) {
  ExpectRows({
      {"OutlineMetrics",
       RESULT(OutlineMetrics(0, nullptr, kNowhere, kNowhere, nullptr, nullptr, nullptr, nullptr,
                             nullptr)),
       -1},
      {"FSpOpenResFile", RESULT(FSpOpenResFile(nullptr, 0)), -1},
      {"PBCatSearch", RESULT(PBCatSearch(nullptr, false)), -1},
      {"PBDTGetAPPLSync", RESULT(PBDTGetAPPLSync(nullptr)), -1},
      {"PBControl", RESULT(PBControl(nullptr, false)), -1},
      {"OpenRF", RESULT(OpenRF(nullptr, 0, nullptr)), -36},
      {"SetFInfo", RESULT(SetFInfo(nullptr, 0, nullptr)), -36},
      {"PBOpenRF", RESULT(PBOpenRF(nullptr, false)), -36},
      {"CopyPalette", NO_RESULT(CopyPalette(nullptr, nullptr, 0, 0, 0)), kNoResult},
      {"FSpCreateResFile", NO_RESULT(FSpCreateResFile(nullptr, 0, 0, 0)), kNoResult},
      {"ReadPartialResource", NO_RESULT(ReadPartialResource(nullptr, 0, nullptr, 0)), kNoResult},
      {"elems68k", NO_RESULT(elems68k(nullptr, 0)), kNoResult},
      {"TMSetSelection", NO_RESULT(TMSetSelection(nullptr, nullptr, 0)), kNoResult},
      {"GetProcessInformation", CallGetProcessInformation, -50},
      {"SetFrontProcess", RESULT(SetFrontProcess(nullptr)), -600},
      {"AcceptHighLevelEvent", RESULT(AcceptHighLevelEvent(nullptr, nullptr, nullptr, nullptr)),
       -608},
      {"GetSpecificHighLevelEvent", RESULT(GetSpecificHighLevelEvent(nullptr, nullptr, nullptr)),
       0xA0},
  });
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

TEST_F(UnsupportedCallsTest, SilenceFlagHidesReportsButNotResults) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
  AliasHandle alias = reinterpret_cast<AliasHandle>(0x1234);
  EXPECT_EQ(NewAlias(nullptr, nullptr, &alias), noErr);
  EXPECT_EQ(alias, reinterpret_cast<AliasHandle>(0x1234));  // output not written
  EXPECT_EQ(PBHOpenDeny(nullptr, false), -1);
  EXPECT_TRUE(capture.Reports().empty());
}

TEST_F(UnsupportedCallsTest, OutputParametersAreLeftAsTheyWere) {
  KWE_SetFlags(kweFlagSilentDiagnostics, kweFlagSilentDiagnostics, 0, 0);
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
