// Switching applications: the osEvt tells the application whether the
// clipboard changed while it was away, and the host's procedure hears of
// the suspend and the resume.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "Quickdraw.h"
#include "scrap/scrap_fixture.h"

namespace kwe_test {
namespace {

std::vector<std::pair<int, int>> g_calls;  // operation, format

SInt32 __stdcall RecordingProc(SInt16 operation, UInt16 format, HDC dc, Handle destination,
                               ResType type, void* p, void* q) {
  if (operation >= kweScrapSuspend) g_calls.emplace_back(operation, format);
  return kwe::host::ClipboardProc(operation, format, dc, destination, type, p, q);
}

class ActivationTest : public ScrapTest {
 protected:
  KWEClipboardProc Procedure() const override { return RecordingProc; }
  void SetUp() override {
    ScrapTest::SetUp();
    g_calls.clear();
    GrafPtr screen = nullptr;
    InitGraf(&screen);
  }
  std::vector<UInt32> OsEvents() {
    std::vector<UInt32> messages;
    EventRecord e;
    while (GetNextEvent(osMask, &e))
      if (e.what == osEvt) messages.push_back(e.message);
    return messages;
  }
};

TEST_F(ActivationTest, ResumeAsksForConversionOnlyWhenTheClipboardChanged) {
  struct Case {
    const char* what;
    bool otherProgramCopies;
    UInt32 resume;
  };
  for (const Case& c : {Case{"unchanged", false, 0x01000001u}, Case{"copied", true, 0x01000003u},
                        Case{"unchanged again", false, 0x01000001u}}) {
    SCOPED_TRACE(c.what);
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

TEST_F(ActivationTest, OwnScrapChangesWhileActiveAskForNoConversion) {
  KWE_ActivateApp(false);
  KWE_ActivateApp(true);
  OsEvents();
  ZeroScrap();
  ASSERT_EQ(PutScrap(2, kTextType, "hi"), 0);
  Pump(200);
  KWE_ActivateApp(false);
  KWE_ActivateApp(true);
  // The count moved by the application's own ZeroScrap before the switch,
  // not while it was away.
  EXPECT_EQ(OsEvents(), (std::vector<UInt32>{0x01000000u, 0x01000001u}));
}

}  // namespace
}  // namespace kwe_test
