// Alerts: the stages of the same alert shown again and again (shown or not,
// how many beeps, which button is the default), the system icons, the
// buttons' placement, and bad 'ALRT' resources.
#include <gtest/gtest.h>

#include "Resources.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"

namespace {

using namespace kwe_test;

struct Seen {
  int beeps = 0;
  int defaultButton = 0;  // the item whose child USER shows as the default
  std::string iconItem;
  HICON icon = nullptr;
  std::vector<std::string> buttons;  // "left,width" of items 1..3 as USER has them
  std::string firstItemRect;
} g_seen;

void KWE_CALL CountBeeps(SInt16 n) { g_seen.beeps += n; }

// Looks at the alert once it runs, then answers with its default item.
Boolean KWE_CALL Inspect(DialogPtr d, EventRecord*, SInt16* itemHit) {
  SInt16 count = CountDITL(d), type;
  Handle h;
  Rect r;
  GetDialogItem(d, count, &type, &h, &r);
  g_seen.iconItem = std::to_string(type) + "@" + Show(r);
  if (type == iconItem + itemDisable && h && *h)
    g_seen.icon = reinterpret_cast<HICON>(intptr_t(*reinterpret_cast<SInt32*>(*h)));
  for (const Child& c : ChildrenOf(HwndOfDialog(d))) {
    if (c.cls != "button" || c.id > 3) continue;
    if ((c.style & 0xF) == BS_DEFPUSHBUTTON) g_seen.defaultButton = c.id;
    g_seen.buttons.push_back(std::to_string(c.place.left) + "," +
                             std::to_string(c.place.right - c.place.left));
  }
  GetDialogItem(d, 1, &type, &h, &r);
  g_seen.firstItemRect = Show(r);
  *itemHit = PeekDialog(d)->aDefItem;
  return true;
}

class Alerts : public DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    ErrorSound(CountBeeps);
    Resources(AlertText(300, 60, 60, 160, 360, 300, Stage(false, true, 1), Stage(true, true, 2),
                        Stage(false, false, 3), Stage(true, true, 0)) +
              ItemList(300, {{70, 200, 90, 280, 4, "OK"},
                             {70, 100, 90, 180, 4, "Cancel"},
                             {10, 60, 50, 280, 8, "Save changes?"}}) +
              AlertText(301, 60, 60, 160, 360, 301, Stage(false, true, 0), Stage(false, true, 0),
                        Stage(false, true, 0), Stage(false, true, 0)) +
              ItemList(301, {{70, 20, 90, 100, 4, "OK"}, {10, 60, 50, 280, 8, "Done."}}) +
              AlertText(302, 60, 60, 160, 360, 999, 15, 15, 15, 15) +
              "resource 'ALRT' 303\n  words 1 2 3\n");
  }
  SInt16 Run(SInt16 (*call)(SInt16, ModalFilterProcPtr), SInt16 id) {
    g_seen = Seen{};
    return call(id, Inspect);
  }
};

TEST_F(Alerts, StagesDecideShownBeepsAndDefault) {
  struct Step {
    SInt16 result;
    int beeps;
    SInt16 def;
    SInt16 stage;
  };
  // Stage 3 is not shown; the fifth call stays at stage 4.
  const Step steps[] = {{1, 1, 1, 0}, {2, 2, 2, 1}, {-1, 0, 0, 2}, {2, 0, 2, 3}, {2, 0, 2, 3}};
  for (size_t i = 0; i < std::size(steps); ++i) {
    SCOPED_TRACE(i + 1);
    EXPECT_EQ(Run(Alert, 300), steps[i].result);
    EXPECT_EQ(g_seen.beeps, steps[i].beeps);
    EXPECT_EQ(g_seen.defaultButton, steps[i].def);
    EXPECT_EQ(GetAlertStage(), steps[i].stage);
  }
  ResetAlertStage();
  EXPECT_EQ(GetAlertStage(), -1);
  EXPECT_EQ(Run(Alert, 300), 1) << "stage 1 again";
  EXPECT_EQ(Run(NoteAlert, 301), 1);
  EXPECT_EQ(GetAlertStage(), 0) << "another alert starts at stage 1";
}

TEST_F(Alerts, IconsAndButtonPlaces) {
  struct Case {
    SInt16 (*call)(SInt16, ModalFilterProcPtr);
    LPCSTR icon;
  };
  const Case cases[] = {
      {StopAlert, IDI_HAND}, {NoteAlert, IDI_ASTERISK}, {CautionAlert, IDI_QUESTION}};
  for (const Case& c : cases) {
    ResetAlertStage();
    EXPECT_EQ(Run(c.call, 300), 1);
    EXPECT_EQ(g_seen.iconItem, "160@20,10,52,42");
    EXPECT_EQ(g_seen.icon, LoadIconA(nullptr, c.icon));
    // OK, right of Cancel in the resource, comes up at its left.
    EXPECT_EQ(g_seen.buttons, (std::vector<std::string>{"100,80", "200,80"}));
  }
  Run(Alert, 301);
  EXPECT_EQ(g_seen.iconItem, "8@10,60,50,280") << "no icon item";
  EXPECT_EQ(g_seen.buttons, (std::vector<std::string>{"110,80"})) << "a lone button is centred";
  EXPECT_EQ(g_seen.firstItemRect, "70,110,90,170");
}

TEST_F(Alerts, PostedKeysAnswerTheAlert) {
  g_seen = Seen{};
  SInt16 hit = 0;
  WhileModal({[] { PostKey(GetActiveWindow(), VK_ESCAPE); }},
             [&] { hit = CautionAlert(300, nullptr); });
  EXPECT_EQ(hit, 2);
  EXPECT_EQ(g_seen.beeps, 1);
  WhileModal({[] { PostKey(GetActiveWindow(), VK_RETURN); }},
             [&] { hit = CautionAlert(300, nullptr); });
  EXPECT_EQ(hit, 2) << "stage 2 makes Cancel the default";
}

TEST_F(Alerts, BadAlertsAnswerMinusOneAndLeaveNothing) {
  Drain();
  int windows = CountUserWindows();
  for (SInt16 id : {SInt16(302), SInt16(303), SInt16(304)}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(Run(StopAlert, id), -1);
    EXPECT_EQ(CountUserWindows(), windows);
  }
  // What the first alerts leave (USER's and GDI's caches) stays as it is
  // over the next hundred.
  for (int i = 0; i < 20; ++i) Run(i % 2 ? NoteAlert : Alert, 301);
  Drain();
  Footprint before = Now();
  for (int i = 0; i < 100; ++i) Run(i % 2 ? NoteAlert : Alert, 301);
  Drain();
  EXPECT_TRUE(Flat(before, Now()));
}

}  // namespace

// A lone button is centred at its own width while its item is made 60
// pixels wide: a press on the part of the button past the item's rectangle
// still answers the alert, at once rather than at the Escape that WhileModal
// presses a second later.
TEST_F(Alerts, APressOnTheLoneButtonsRightPartAnswersIt) {
  DWORD pressed = 0;
  SInt16 hit = 0;
  WhileModal({[&] {
               HWND alert = HwndOfDialog(FrontWindow()), ok = GetDlgItem(alert, 1);
               RECT r;
               GetWindowRect(ok, &r);
               SetCursorPos(r.right - 5, (r.top + r.bottom) / 2);
               PostMessageA(alert, WM_COMMAND, MAKEWPARAM(1, BN_CLICKED),
                            reinterpret_cast<LPARAM>(ok));
               pressed = GetTickCount();
             }},
             [&] { hit = Alert(301, nullptr); });
  EXPECT_EQ(hit, 1);
  EXPECT_LT(GetTickCount() - pressed, 500u) << "answered by the press, not by Escape";
}
