// Controls made from resources and procedures the application gives: 'CNTL'
// templates, pop-ups filled from 'MENU', CDEF controls; bad input of each;
// and the USER, GDI and memory a control's life leaves behind.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Memory.h"
#include "Resources.h"
#include "controls/controls_fixture.h"
#include "support/menu_resources.h"
#include "support/resource_image_file.h"

namespace {

using namespace kwe_test;
using resource_builder::Bytes;

Bytes Template(Rect r, int value, bool visible, int max, int min, int procID, const char* title) {
  Bytes b;
  for (int v : {int(r.top), int(r.left), int(r.bottom), int(r.right), value}) PutWord(b, v);
  b.insert(b.end(), {UInt8(visible ? 0xFF : 0), 0});
  for (int v : {max, min, procID}) PutWord(b, v);
  b.insert(b.end(), {0x12, 0x34, 0x56, 0x78});
  PutPString(b, title);
  return b;
}

class Resourced : public ControlTest {
 protected:
  void SetUp() override {
    ControlTest::SetUp();
    auto image = resource_builder::BuildResourceImage(
        {MenuResource(128, "Colours", {{"Red"}, {"Green"}, {"Blue \xA5"}}),
         MenuResource(129, "Colours", {}),
         resource_builder::MakeResource("CNTL", 128,
                                        Template(Rect{20, 30, 40, 130}, 1, true, 1, 0, 1, "Wrap")),
         resource_builder::MakeResource(
             "CNTL", 129, Template(Rect{50, 300, 250, 316}, 70, false, 50, 10, 16, "")),
         resource_builder::MakeResource("CNTL", 130, Bytes{0, 1, 0, 2})});
    OpenResourceImage(image, "kwe_cntl_", &file, &refNum);
  }
  void TearDown() override {
    CloseResFile(refNum);
    DeleteFileA(file.c_str());
    ControlTest::TearDown();
  }
  std::vector<std::string> Items(HWND combo) {
    std::vector<std::string> items;
    for (int i = 0; i < SendMessageA(combo, CB_GETCOUNT, 0, 0); ++i) {
      char text[64] = "";
      SendMessageA(combo, CB_GETLBTEXT, WPARAM(i), reinterpret_cast<LPARAM>(text));
      items.push_back(text);
    }
    return items;
  }

  std::string file;
  SInt16 refNum = 0;
};

// 'CNTL' templates make the control they describe (value clamped into its
// range); a missing or cut-short template makes none.
TEST_F(Resourced, GetNewControlReadsCntl) {
  ControlHandle check = GetNewControl(128, window);
  ASSERT_NE(check, nullptr);
  EXPECT_EQ(PlaceOf(ChildWindow(check)), "20,30,40,132") << "a check box as wide as in a dialog";
  EXPECT_EQ(GetControlReference(check), 0x12345678);
  char title[16] = "";
  GetWindowTextA(ChildWindow(check), title, sizeof title);
  EXPECT_STREQ(title, "Wrap");
  EXPECT_EQ(SendMessageA(ChildWindow(check), BM_GETCHECK, 0, 0), 1);
  ControlHandle bar = GetNewControl(129, window);
  ASSERT_NE(bar, nullptr);
  EXPECT_FALSE(IsWindowVisible(ChildWindow(bar)));
  EXPECT_EQ(ScrollState(ChildWindow(bar)), "10..50 @ 50");
  EXPECT_EQ(GetNewControl(131, window), nullptr);
  EXPECT_EQ(GetNewControl(130, window), nullptr);
  EXPECT_EQ(GetNewControl(128, nullptr), nullptr);
}

// A pop-up lists its 'MENU' items in ANSI, its range is 1..count and its
// value is the user's choice; a title without a menu ID, or naming a menu
// that is missing or empty, leaves an empty combo box.
TEST_F(Resourced, PopUpsListTheirMenuAndReportTheChoice) {
  ControlHandle popUp = Make(popupMenuProc, Rect{10, 10, 34, 160}, 2, 0, 0, "\014Colour,0,128");
  ASSERT_NE(popUp, nullptr);
  HWND combo = ChildWindow(popUp);
  EXPECT_EQ(ClassOf(combo), "combobox");
  EXPECT_EQ(Items(combo), (std::vector<std::string>{"Red", "Green", "Blue \x95"}));
  EXPECT_EQ(GetControlMinimum(popUp), 1);
  EXPECT_EQ(GetControlMaximum(popUp), 3);
  EXPECT_EQ(SendMessageA(combo, CB_GETCURSEL, 0, 0), 1);
  EXPECT_EQ(KWE_GetControlPopUpMenu(popUp),
            reinterpret_cast<MenuHandle>(GetResource(0x4D454E55, 128)));
  // The user picks with the keyboard: the down arrow opens the list (the
  // extended interface), the next one moves to the third item, Return
  // takes it.
  SetFocus(combo);
  for (WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) SendMessageA(combo, WM_KEYDOWN, key, 0);
  EXPECT_FALSE(SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(GetControlValue(popUp), 3);
  SetControlValue(popUp, 1);
  EXPECT_EQ(SendMessageA(combo, CB_GETCURSEL, 0, 0), 0);
  SetControlValue(popUp, 9);
  EXPECT_EQ(GetControlValue(popUp), 3);

  for (const char* title :
       {"\011Colour,12", "\014Colour,0,131", "\014Colour,0,129", "\014Colour,0,1x8", "\000"}) {
    ControlHandle none = Make(popupMenuProc, Rect{40, 10, 64, 160}, 1, 0, 0, title);
    ASSERT_NE(none, nullptr) << title + 1;
    EXPECT_EQ(Items(ChildWindow(none)).size(), 0u) << title + 1;
    EXPECT_EQ(GetControlMinimum(none), 1) << title + 1;
    EXPECT_EQ(GetControlMaximum(none), 0) << title + 1;
    EXPECT_EQ(GetControlValue(none), 0) << title + 1;
    DisposeControl(none);
  }
}

// What a CDEF control's procedure was asked, in order.
std::vector<int> g_messages;
KWEControlParam KWE_CALL Definition(SInt16 variation, ControlHandle c, SInt16 message,
                                    KWEControlParam param) {
  g_messages.push_back(message * 100 + variation);
  if (message != testCntl) return 0;
  Point pt{SInt16(param >> 16), SInt16(param & 0xFFFF)};
  const Rect& r = (**c).contrlRect;
  return pt.v >= r.top && pt.v < r.bottom && pt.h >= r.left && pt.h < r.right ? 77 : 0;
}

// A registered 'CDEF' owns an owner-drawn button whose text is its handle
// in decimal; it is told of its making, asked for hits and drawing, and
// told of its end. A 'CDEF' nobody registered gives a push button.
TEST_F(ControlTest, CdefControlsGoToTheirProcedure) {
  KWE_CodeResource(1, 0x43444546, 5, reinterpret_cast<ProcPtr>(Definition));
  g_messages.clear();
  ControlHandle c = Make(5 * 16 + 3, Rect{10, 10, 40, 90}, 0, 0, 1, "\004Dial");
  ASSERT_NE(c, nullptr);
  HWND child = ChildWindow(c);
  char text[32] = "";
  GetWindowTextA(child, text, sizeof text);
  EXPECT_EQ(std::string(text), std::to_string(reinterpret_cast<uintptr_t>(c)));
  EXPECT_EQ(GetWindowLongA(child, GWL_STYLE) & 0xF, BS_OWNERDRAW);
  EXPECT_EQ(GetControlVariant(c), 3);
  EXPECT_EQ(g_messages.front(), initCntl * 100 + 3);
  EXPECT_EQ(TestControl(c, Centre(c)), 77);
  EXPECT_EQ(TestControl(c, Point{5, 5}), 0);
  g_messages.clear();
  SetControlValue(c, 1);
  EXPECT_EQ(g_messages, std::vector<int>{drawCntl * 100 + 3});
  g_messages.clear();
  DisposeControl(c);
  EXPECT_EQ(g_messages.front(), dispCntl * 100 + 3);
  EXPECT_FALSE(IsWindow(child));

  ControlHandle plain = Make(6 * 16, Rect{10, 10, 40, 90});
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(GetWindowLongA(ChildWindow(plain), GWL_STYLE) & 0xF, BS_PUSHBUTTON);
  EXPECT_EQ(TestControl(plain, Centre(plain)), inButton);
}

// Null handles and windows answer 0 and change nothing.
TEST_F(ControlTest, NullHandlesAndWindowsAnswerZero) {
  Rect r{10, 10, 30, 90};
  EXPECT_EQ(NewControl(nullptr, &r, PStr("\x01X"), true, 0, 0, 1, 0, 0), nullptr);
  EXPECT_EQ(NewControl(window, nullptr, PStr("\x01X"), true, 0, 0, 1, 0, 0), nullptr);
  ControlHandle none = nullptr;
  EXPECT_EQ(GetControlValue(none) + GetControlMinimum(none) + GetControlMaximum(none) +
                GetControlVariant(none) + GetControlReference(none) + TestControl(none, Point{}) +
                TrackControl(none, Point{}, nullptr),
            0);
  EXPECT_EQ(GetControlAction(none), nullptr);
  EXPECT_EQ(KWE_GetControlPopUpMenu(none), nullptr);
  Str255 title = {3, 'a', 'b', 'c'};
  GetControlTitle(none, title);
  EXPECT_EQ(title[0], 0);
  for (auto call : {+[] { SetControlValue(nullptr, 1); }, +[] { SetControlMinimum(nullptr, 1); },
                    +[] { SetControlMaximum(nullptr, 1); }, +[] { HiliteControl(nullptr, 255); },
                    +[] { ShowControl(nullptr); }, +[] { HideControl(nullptr); },
                    +[] { Draw1Control(nullptr); }, +[] { MoveControl(nullptr, 1, 1); },
                    +[] { SizeControl(nullptr, 1, 1); }, +[] { DisposeControl(nullptr); },
                    +[] { KillControls(nullptr); }, +[] { DrawControls(nullptr); },
                    +[] { SetControlTitle(nullptr, nullptr); }})
    call();
  EXPECT_EQ(FindControl(Point{20, 20}, nullptr, nullptr), 0);
}

// Hundreds of controls made, drawn and disposed of, and windows with
// controls closed, leave USER's windows, GDI's objects and the Memory
// Manager's bytes where they were (after one round that lets Windows make
// what it keeps for each class).
TEST_F(ControlTest, ControlLivesLeaveNothingBehind) {
  const SInt16 kinds[] = {pushButProc, checkBoxProc, radioButProc, scrollBarProc, popupMenuProc};
  auto round = [&](int controls, int windows) {
    for (int i = 0; i < controls; ++i) {
      ControlHandle c = Make(kinds[i % 5], Rect{10, 10, 40, 90}, 1, 0, 5, "\x05Title");
      ASSERT_NE(c, nullptr) << i;
      Draw1Control(c);
      SetControlValue(c, SInt16(i % 6));
      DisposeControl(c);
    }
    for (int i = 0; i < windows; ++i) {
      WindowPtr other = WindowTest::Make(documentProc, Rect{60, 60, 200, 300});
      Rect r{10, 10, 40, 90};
      for (SInt16 k : kinds) NewControl(other, &r, PStr("\x01X"), true, 0, 0, 1, k, 0);
      DisposeWindow(other);
    }
    Drain();
  };
  round(5, 1);
  Footprint before = Now();
  round(300, 20);
  EXPECT_EQ(Now(), before);
}

}  // namespace
