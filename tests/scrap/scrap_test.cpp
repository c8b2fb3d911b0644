// The desk scrap against the real clipboard and a second program on it.
#include "Scrap.h"

#include <gtest/gtest.h>

#include <vector>

#include "scrap/scrap_fixture.h"

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
    {"accents",
     "caf\x8E na\x95ve Stra\xA7"
     "e \x80",
     "caf\xE9 na\xEFve Stra\xDF"
     "e \xC4"},
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
  EXPECT_EQ(InfoScrap()->scrapSize, 0);
  EXPECT_EQ(InfoScrap()->scrapHandle, nullptr);

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

TEST_F(ScrapTest, TypesNoFormatGivesWalkEveryFormat) {
  ASSERT_EQ(PeerPut("words"), 0u);
  SInt32 offset = -1;
  EXPECT_EQ(GetScrap(nullptr, kPictType, &offset), noTypeErr);
  EXPECT_EQ(offset, CountClipboardFormats());
  EXPECT_GT(offset, 0);
  ZeroScrap();
  EXPECT_EQ(GetScrap(nullptr, kTextType, &offset), noTypeErr);
  EXPECT_EQ(offset, 0);
  // Four bytes are shorter than a picture's header: no scrap.
  EXPECT_EQ(PutScrap(4, kPictType, "\0\0\0\0"), noScrapErr);
  EXPECT_EQ(CountClipboardFormats(), 0);
}

TEST_F(ScrapTest, LengthsAtTheEdges) {
  ASSERT_EQ(PutScrap(5, kTextType, "first"), 0);
  EXPECT_EQ(PutScrap(-1, kTextType, "x"), paramErr);
  EXPECT_EQ(PutScrap(-0x7FFFFFFF - 1, kTextType, "x"), paramErr);
  EXPECT_EQ(PutScrap(8, kTextType, nullptr), paramErr);
  EXPECT_EQ(PeerGet(), "first") << "a refused PutScrap changed the clipboard";

  // 16 MB of lines, each CR a CR LF on the other side.
  std::string big(16 << 20, 'a');
  for (size_t i = 99; i < big.size(); i += 100) big[i] = '\r';
  ZeroScrap();
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
  EXPECT_EQ(LoadScrap(), 0);
  EXPECT_EQ(UnloadScrap(), 0);
  EXPECT_EQ(InfoScrap()->scrapState, 0);
  EXPECT_EQ(InfoScrap(), &vars.ScrapInfo);
}

}  // namespace
}  // namespace kwe_test
