// Values, ranges, highlighting, titles and placement set through the
// Toolbox, read back from the Win32 controls, and the user's clicks read
// back through the Toolbox.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

#include "controls/controls_fixture.h"

namespace {

using namespace kwe_test;

// What USER holds for a control's value: the check state, the scroll
// position (with range and whether the bar takes input), the press state.
std::string Win32Value(ControlHandle c) {
  HWND child = ChildWindow(c);
  switch (reinterpret_cast<intptr_t>((**c).contrlDefProc)) {
    case 0: return std::to_string((SendMessageA(child, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0);
    case 1:
    case 2: return std::to_string(SendMessageA(child, BM_GETCHECK, 0, 0));
    default: return ScrollState(child) + (IsWindowEnabled(child) ? " on" : " off");
  }
}

std::string Expected(ControlHandle c) {
  const ControlRecord& r = **c;
  switch (reinterpret_cast<intptr_t>(r.contrlDefProc)) {
    case 0: return std::to_string(r.contrlValue != 0);
    case 1:
    case 2: return std::to_string(r.contrlValue);
    default:
      bool range = r.contrlMin < r.contrlMax, on = range && r.contrlHilite != 255;
      return (range ? std::to_string(r.contrlMin) + ".." + std::to_string(r.contrlMax) : "0..0") +
             " @ " + std::to_string(r.contrlValue) + (on ? " on" : " off");
  }
}

// A seeded run of value, minimum, maximum and highlight changes on a push
// button, a check box, a radio button and a scroll bar: after each, the
// value lies within the range and USER shows what the record holds.
// KWE_CONTROL_SEED replays one seed.
TEST_F(ControlTest, ValuesAndRangesSweepStaysInStepWithUser) {
  const char* replay = std::getenv("KWE_CONTROL_SEED");
  for (unsigned seed : {1u, 2u, 3u}) {
    if (replay) seed = unsigned(std::atoi(replay));
    std::mt19937 random(seed);
    auto pick = [&](int lo, int hi) { return SInt16(lo + int(random() % unsigned(hi - lo + 1))); };
    ControlHandle controls[] = {Make(pushButProc, Rect{10, 10, 30, 90}, 0, 0, 1),
                                Make(checkBoxProc, Rect{40, 10, 60, 90}, 0, 0, 1),
                                Make(radioButProc, Rect{70, 10, 90, 90}, 0, 0, 1),
                                Make(scrollBarProc, Rect{10, 300, 210, 316}, 5, 0, 10)};
    for (int step = 0; step < 200; ++step) {
      ControlHandle c = controls[random() % 4];
      bool bar = c == controls[3];
      int op = pick(0, bar ? 4 : 1);
      SInt16 n = bar ? pick(-20, 120) : pick(-2, 3);
      switch (op) {
        case 0: SetControlValue(c, n); break;
        case 1: SetCtlValue(c, n); break;
        case 2: SetControlMinimum(c, pick(-10, 50)); break;
        case 3: SetCtlMax(c, pick(-10, 110)); break;
        default: HiliteControl(c, pick(0, 1) ? 255 : 0); break;
      }
      const ControlRecord& r = **c;
      SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step) + " op " +
                   std::to_string(op) + " n " + std::to_string(n));
      if (op < 2) {
        ASSERT_EQ(r.contrlValue, std::max(r.contrlMin, std::min(n, r.contrlMax)));
      }
      if (r.contrlMin <= r.contrlMax) {
        ASSERT_GE(r.contrlValue, r.contrlMin);
        ASSERT_LE(r.contrlValue, r.contrlMax);
      }
      // HiliteControl presses and releases a push button itself; a scroll
      // bar's position is only moved by a value.
      bool shown = bar ? r.contrlMin < r.contrlMax && op < 2 : op < 2 || c != controls[0];
      if (shown) {
        ASSERT_EQ(Win32Value(c), Expected(c));
      }
    }
    KillControls(window);
    EXPECT_EQ(PeekOf(window)->controlList, nullptr);
    if (replay || HasFailure()) return;
  }
}

// Clicks a user makes (BM_CLICK, as Windows sends it for a click or the
// space bar, and a double click) come back as a mouseDown whose FindControl
// and TrackControl answer the part; the application's answer shows in
// USER's check state. The window stands away from other programs' windows
// and has the activation for each click, as under a user's hand.
TEST_F(ControlsOnTop, ClicksComeBackThroughTrackControl) {
  ControlHandle push = Make(pushButProc, Rect{10, 10, 30, 90});
  ControlHandle check = Make(checkBoxProc, Rect{40, 10, 60, 120}, 0, 0, 1, "\005Check");
  ControlHandle radios[2] = {Make(radioButProc, Rect{70, 10, 90, 120}, 1, 0, 1, "\x03One"),
                             Make(radioButProc, Rect{100, 10, 120, 120}, 0, 0, 1, "\x03Two")};
  const struct {
    ControlHandle c;
    UINT message;
    SInt16 part;
    const char* checks;  // check box, radio one, radio two after the click
  } clicks[] = {{check, BM_CLICK, inCheckBox, "110"},
                {radios[1], BM_CLICK, inCheckBox, "101"},
                {check, BM_CLICK, inCheckBox, "001"},
                {radios[0], WM_LBUTTONDBLCLK, inCheckBox, "010"},
                {push, BM_CLICK, inButton, "010"}};
  for (const auto& k : clicks) {
    std::string where = "click " + std::to_string(&k - clicks);
    TakeBackActivation();
    SendMessageA(ChildWindow(k.c), k.message, k.message == BM_CLICK ? 0 : MK_LBUTTON, 0);
    ControlHandle hit = nullptr;
    ASSERT_EQ(HandleClick(nullptr, &hit), k.part) << where;
    EXPECT_EQ(hit, k.c) << where;
    // The application's own answer to the part.
    if (hit == check) SetControlValue(check, SInt16(!GetControlValue(check)));
    for (ControlHandle r : radios)
      if (hit == radios[0] || hit == radios[1]) SetControlValue(r, r == hit);
    std::string checks;
    for (ControlHandle c : {check, radios[0], radios[1]})
      checks += char('0' + SendMessageA(ChildWindow(c), BM_GETCHECK, 0, 0));
    EXPECT_EQ(checks, k.checks) << where;
  }
}

// 255 disables the child window, 0 enables it again; a scroll bar without
// a range stays disabled; deactivating the window disables its scroll bars
// and activating it enables those with a range.
TEST_F(ControlTest, HiliteAndActivationEnableTheChild) {
  ControlHandle push = Make(pushButProc, Rect{10, 10, 30, 90});
  ControlHandle bar = Make(scrollBarProc, Rect{10, 300, 210, 316}, 0, 0, 10);
  ControlHandle empty = Make(scrollBarProc, Rect{10, 320, 210, 336}, 3, 3, 3);
  auto enabled = [](ControlHandle c) { return IsWindowEnabled(ChildWindow(c)) != 0; };
  HiliteControl(push, 255);
  EXPECT_FALSE(enabled(push));
  HiliteControl(push, 0);
  EXPECT_TRUE(enabled(push));
  EXPECT_FALSE(enabled(empty));
  SetControlMaximum(empty, 9);
  EXPECT_TRUE(enabled(empty));
  HiliteWindow(window, false);
  EXPECT_FALSE(enabled(bar) || enabled(empty));
  EXPECT_TRUE(enabled(push));
  SetControlMaximum(empty, 3);
  HiliteWindow(window, true);
  EXPECT_TRUE(enabled(bar));
  EXPECT_FALSE(enabled(empty));
}

// Titles reach Windows in ANSI with "&" shown as itself; a title longer
// than the record holds is cut at 245 characters.
TEST_F(ControlTest, TitlesCrossToWindowsInAnsi) {
  ControlHandle c = Make(pushButProc, Rect{10, 10, 30, 190}, 0, 0, 1, "\x0aSave & Go\xC9");
  char text[600] = "";
  GetWindowTextA(ChildWindow(c), text, sizeof text);
  EXPECT_EQ(std::string(text), "Save && Go\x85");
  Str255 back;
  GetControlTitle(c, back);
  EXPECT_EQ(PascalText(back), "Save & Go\xC9");
  Str255 longTitle;
  longTitle[0] = 250;
  for (int i = 1; i <= 250; ++i) longTitle[i] = UInt8('a' + i % 26);
  SetControlTitle(c, longTitle);
  GetCTitle(c, back);
  EXPECT_EQ(back[0], 245);
  EXPECT_EQ(PascalText(back), PascalText(longTitle).substr(0, 245));
  GetWindowTextA(ChildWindow(c), text, sizeof text);
  EXPECT_EQ(std::string(text), PascalText(back)) << "the library's fields survive the title";
  SetCTitle(c, nullptr);
  GetControlTitle(c, back);
  EXPECT_EQ(back[0], 0);
}

// Each kind is its Win32 control in the window; a scroll bar is vertical
// unless it is wider than high. Moving, sizing, showing and hiding move the
// child window with the record; a vertical scroll bar sized wider than high
// is made again as a horizontal one, with its value and range.
TEST_F(ControlTest, KindsAndPlacementFollowTheRecord) {
  const struct {
    SInt16 procID;
    const char* cls;
    LONG style;
    Rect bounds = Rect{10, 10, 110, 26};
  } kinds[] = {{checkBoxProc, "button", BS_CHECKBOX},
               {radioButProc, "button", BS_RADIOBUTTON},
               {scrollBarProc, "scrollbar", SBS_VERT, Rect{10, 10, 26, 26}},
               {scrollBarProc, "scrollbar", SBS_HORZ, Rect{10, 10, 26, 100}},
               {pushButProc | useWFont, "button", BS_PUSHBUTTON}};
  for (const auto& k : kinds) {
    HWND child = ChildWindow(Make(k.procID, k.bounds));
    EXPECT_EQ(GetParent(child), KWE_GethWnd(window)) << k.procID;
    EXPECT_EQ(ClassOf(child) + " " + std::to_string(GetWindowLongA(child, GWL_STYLE) & 0xF),
              k.cls + (" " + std::to_string(k.style)))
        << k.procID;
  }
  ControlHandle push = Make(pushButProc, Rect{10, 10, 40, 90});
  EXPECT_EQ(PlaceOf(ChildWindow(push)), "10,10,40,90");
  MoveControl(push, 50, 60);
  EXPECT_EQ(PlaceOf(ChildWindow(push)), "60,50,90,130");
  SizeControl(push, 100, 24);
  EXPECT_EQ(PlaceOf(ChildWindow(push)), "60,50,84,150");
  HideControl(push);
  EXPECT_FALSE(IsWindowVisible(ChildWindow(push)));
  Draw1Control(push);
  EXPECT_FALSE(IsWindowVisible(ChildWindow(push)));
  ShowControl(push);
  EXPECT_TRUE(IsWindowVisible(ChildWindow(push)));
  // DrawControls has Windows paint every child now: one painted over shows
  // its face again.
  Drain();
  HDC dc = GetDC(ChildWindow(push));
  COLORREF face = GetPixel(dc, 5, 5);
  RECT all{0, 0, 100, 30};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  ValidateRect(ChildWindow(push), nullptr);
  DrawControls(window);
  EXPECT_EQ(GetPixel(dc, 5, 5), face);
  ReleaseDC(ChildWindow(push), dc);

  ControlHandle bar = Make(scrollBarProc, Rect{10, 300, 110, 316}, 7, 0, 20);
  HWND before = ChildWindow(bar);
  EXPECT_TRUE(GetWindowLongA(before, GWL_STYLE) & SBS_VERT);
  SizeControl(bar, 100, 16);
  HWND after = ChildWindow(bar);
  EXPECT_FALSE(IsWindow(before));
  EXPECT_FALSE(GetWindowLongA(after, GWL_STYLE) & SBS_VERT);
  EXPECT_EQ(PlaceOf(after), "10,300,26,400");
  EXPECT_EQ(ScrollState(after), "0..20 @ 7");
}

}  // namespace
