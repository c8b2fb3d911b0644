// The desk scrap against the real clipboard and a second program on it, and
// the osEvt that tells the application whether the clipboard changed while
// it was away.
#include "Scrap.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "Quickdraw.h"
#include "support/clipboard_fixture.h"

namespace kwe_test {
namespace {

struct TextCase {
  const char* what;
  std::string mac;   // as the application holds it
  std::string ansi;  // as Windows programs hold it
};

// Line ends and the characters whose codes differ between the two sets.
const std::vector<TextCase> kTexts = {
    {"plain", "Hello, world", "Hello, world"},
    {"lines", "one\rtwo\r\rthree", "one\r\ntwo\r\n\r\nthree"},
    {"accents", "caf\216 na\225ve Stra\247e \200", "caf\351 na\357ve Stra\337e \304"},
    {"empty", "", ""},
};

TEST_F(ScrapTest, TextReachesAnotherProgramAndComesBack) {
  for (const TextCase& c : kTexts) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(ZeroScrap(), 0);
    ASSERT_EQ(PutScrap(SInt32(c.mac.size()), kTextType, c.mac.data()), 0);
    EXPECT_EQ(PeerGet(), c.ansi);

    ASSERT_EQ(PeerPut(c.ansi), 0u);
    SInt32 result = 0, offset = -1;
    EXPECT_EQ(ScrapText(&result, &offset), c.mac);
    EXPECT_EQ(result, SInt32(c.mac.size()));
    // CF_TEXT is the first format the other program's text offers the
    // procedure (then the locale and the synthesized forms).
    EXPECT_GE(offset, 0);
    // Without a destination the length alone comes back.
    EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), SInt32(c.mac.size()));
  }
  // A bare line feed of a Windows program is a line end too.
  ASSERT_EQ(PeerPut("a\nb\r\nc"), 0u);
  SInt32 result = 0;
  EXPECT_EQ(ScrapText(&result), "a\rb\rc");
}

TEST_F(ScrapTest, ScrapCountFollowsOtherProgramsButNotItsOwnChanges) {
  SInt16 start = Count();
  ASSERT_EQ(PeerPut("from elsewhere"), 0u);
  ASSERT_TRUE(PumpUntil([&] { return Count() != start; }, kNotificationWait));
  Pump(300);  // a second notification of the same change is not counted
  EXPECT_EQ(Count(), start + 1);

  EXPECT_EQ(ZeroScrap(), 0);
  EXPECT_EQ(Count(), start + 2);
  EXPECT_EQ(CountClipboardFormats(), 0);
  ASSERT_EQ(PutScrap(4, kTextType, "mine"), 0);
  SInt32 result;
  ScrapText(&result);
  Pump(300);
  EXPECT_EQ(Count(), start + 2) << "the library's own changes counted again";

  ASSERT_EQ(PeerPut("again"), 0u);
  ASSERT_TRUE(PumpUntil([&] { return Count() != start + 2; }, kNotificationWait));
  EXPECT_EQ(Count(), start + 3);
}

TEST_F(ScrapTest, ClipboardHeldOpenByAnotherProgram) {
  ASSERT_EQ(PeerPut("kept"), 0u);
  Pump(200);
  HANDLE held = CreateEventA(nullptr, TRUE, FALSE, "KweScrapHeld");
  HANDLE release = CreateEventA(nullptr, TRUE, FALSE, "KweScrapRelease");
  HANDLE peer = nullptr;
  Peer("hold KweScrapHeld KweScrapRelease", false, &peer);
  ASSERT_EQ(WaitForSingleObject(held, 20000), WAIT_OBJECT_0);

  SInt16 before = Count();
  EXPECT_EQ(PutScrap(3, kTextType, "new"), scrapBusyErr);
  SInt32 offset = -1;
  EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), scrapBusyErr);
  KWE_DrawClipboard();
  EXPECT_EQ(Count(), before) << "a change it cannot look at is not counted";
  EXPECT_EQ(ZeroScrap(), 0);
  EXPECT_EQ(Count(), before + 1);

  SetEvent(release);
  WaitForSingleObject(peer, 20000);
  CloseHandle(peer);
  CloseHandle(held);
  CloseHandle(release);
  // The other program's text is still there: nothing was emptied or put.
  EXPECT_EQ(PeerGet(), "kept");
}

// A type no format gives walks every format; refused lengths, a missing
// source and a picture too short for its header leave the clipboard as it
// was; 2 MB of lines cross whole.
TEST_F(ScrapTest, MissingTypesBadLengthsAndBigText) {
  ASSERT_EQ(PeerPut("words"), 0u);
  SInt32 offset = -1;
  EXPECT_EQ(GetScrap(nullptr, kPictType, &offset), noTypeErr);
  EXPECT_EQ(offset, CountClipboardFormats());
  EXPECT_GT(offset, 0);
  ASSERT_EQ(PutScrap(5, kTextType, "first"), 0);
  EXPECT_EQ(PutScrap(-1, kTextType, "x"), paramErr);
  EXPECT_EQ(PutScrap(-0x7FFFFFFF - 1, kTextType, "x"), paramErr);
  EXPECT_EQ(PutScrap(8, kTextType, nullptr), paramErr);
  EXPECT_EQ(PutScrap(4, kPictType, "\0\0\0\0"), noScrapErr);
  EXPECT_EQ(PeerGet(), "first") << "a refused PutScrap changed the clipboard";
  ZeroScrap();
  EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), noTypeErr);
  EXPECT_EQ(offset, 0);
  // Each CR a CR LF on the other side.
  std::string big(2 << 20, 'a');
  for (size_t i = 99; i < big.size(); i += 100) big[i] = '\r';
  ASSERT_EQ(PutScrap(SInt32(big.size()), kTextType, big.data()), 0);
  SInt32 result = 0;
  EXPECT_TRUE(ScrapText(&result) == big);
  EXPECT_EQ(result, SInt32(big.size()));
  std::string seen = PeerGet();
  EXPECT_EQ(seen.size(), big.size() + big.size() / 100);
  EXPECT_EQ(seen.substr(0, 102), big.substr(0, 99) + "\r\n" + "a");
}

// A procedure that records what it is asked and fails as told.
struct Recorder {
  std::vector<int> operations;
  SInt32 getResult = memFullErr;
  SInt32 handled = 1;
};
Recorder g_recorder;

SInt32 __stdcall FailingProc(SInt16 operation, UInt16, HDC, Handle, ResType, void*, void* q) {
  g_recorder.operations.push_back(operation);
  if (operation == kweScrapGet) *static_cast<SInt32*>(q) = g_recorder.getResult;
  return operation == kweScrapPut ? 0 : g_recorder.handled;
}

class FailingProcedureTest : public ScrapTest {
 protected:
  KWEClipboardProc Procedure() const override { return FailingProc; }
};

TEST_F(FailingProcedureTest, ErrorsOfTheProcedureReachTheApplication) {
  g_recorder = Recorder{};
  EXPECT_EQ(PutScrap(3, kTextType, "abc"), noScrapErr);
  ASSERT_EQ(PeerPut("text"), 0u);
  SInt32 offset = -1;
  EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), memFullErr);
  EXPECT_EQ(offset, 0) << "the first format handled it";
  // A change notification stops at the first format the procedure takes.
  g_recorder.operations.clear();
  SInt16 before = Count();
  ASSERT_EQ(PeerPut("more"), 0u);
  ASSERT_TRUE(PumpUntil([&] { return Count() != before; }, kNotificationWait));
  EXPECT_EQ(g_recorder.operations, std::vector<int>{kweScrapChanged});
}

class NoProcedureTest : public ScrapTest {
 protected:
  KWEClipboardProc Procedure() const override { return nullptr; }
};

TEST_F(NoProcedureTest, EveryRequestCountsAsNotHandled) {
  EXPECT_EQ(PutScrap(3, kTextType, "abc"), noScrapErr);
  ASSERT_EQ(PeerPut("text"), 0u);
  SInt32 offset = -1;
  EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), noTypeErr);
  EXPECT_EQ(offset, CountClipboardFormats());
  SInt16 before = Count();
  ASSERT_TRUE(PumpUntil([&] { return Count() != before; }, kNotificationWait));
}

std::vector<std::pair<int, int>> g_calls;  // operation, format

SInt32 __stdcall RecordingProc(SInt16 operation, UInt16 format, HDC dc, Handle destination,
                               ResType type, void* p, void* q) {
  if (operation >= kweScrapSuspend) g_calls.emplace_back(operation, format);
  return kwe::host::ClipboardProc(operation, format, dc, destination, type, p, q);
}

class ActivationTest : public ScrapTest {
 protected:
  KWEClipboardProc Procedure() const override { return RecordingProc; }
  std::vector<UInt32> OsEvents() {
    std::vector<UInt32> messages;
    EventRecord e;
    while (GetNextEvent(osMask, &e))
      if (e.what == osEvt) messages.push_back(e.message);
    return messages;
  }
};

// The resume asks for conversion, and the procedure is told to convert,
// only when another program changed the clipboard while the application was
// away; its own copies before the switch do not count.
TEST_F(ActivationTest, ResumeAsksForConversionOnlyWhenTheClipboardChanged) {
  GrafPtr screen = nullptr;
  InitGraf(&screen);
  struct Case {
    const char* what;
    bool ownCopyBefore, otherProgramCopies;
    UInt32 resume;
  };
  for (const Case& c :
       {Case{"unchanged", false, false, 0x01000001u}, Case{"copied", false, true, 0x01000003u},
        Case{"unchanged again", false, false, 0x01000001u},
        Case{"own copy while active", true, false, 0x01000001u}}) {
    SCOPED_TRACE(c.what);
    if (c.ownCopyBefore) {
      ZeroScrap();
      ASSERT_EQ(PutScrap(2, kTextType, "hi"), 0);
      Pump(200);
    }
    g_calls.clear();
    OsEvents();
    KWE_ActivateApp(false);
    SInt16 before = Count();
    if (c.otherProgramCopies) {
      ASSERT_EQ(PeerPut("while away"), 0u);
      ASSERT_TRUE(PumpUntil([&] { return Count() != before; }, kNotificationWait));
    }
    KWE_ActivateApp(true);
    EXPECT_EQ(OsEvents(), (std::vector<UInt32>{0x01000000u, c.resume}));
    int convert = c.resume == 0x01000003u ? 1 : 0;
    EXPECT_EQ(g_calls,
              (std::vector<std::pair<int, int>>{{kweScrapSuspend, 0}, {kweScrapResume, convert}}));
  }
}

}  // namespace
}  // namespace kwe_test
