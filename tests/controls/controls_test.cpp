// The Control Manager through the DLL: values, ranges, highlighting, titles
// and placement read back from the Win32 controls; the user's clicks, and
// real mouse input on scroll bars from a second thread, read back through
// FindControl and TrackControl; controls from 'CNTL', 'MENU' and CDEF
// procedures; and what a control's life leaves behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "KWEControls.h"
#include "Memory.h"
#include "Resources.h"
#include "support/menu_resources.h"
#include "support/resource_image_file.h"
#include "support/scroll_bar_aim.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline const UInt8* PStr(const char* text) { return reinterpret_cast<const UInt8*>(text); }
inline std::string PascalText(const UInt8* text) {
  return std::string(reinterpret_cast<const char*>(text + 1), text[0]);
}

// The Win32 child window of a control, from the record's published slot:
// offset 292 of the 32-bit record, 252 bytes into contrlTitle, a
// sign-extended 32-bit handle in every build.
inline HWND ChildWindow(ControlHandle c) {
  SInt32 slot;
  std::memcpy(&slot, (**c).contrlTitle + 252, sizeof slot);
  return reinterpret_cast<HWND>(static_cast<intptr_t>(slot));
}

inline std::string ClassOf(HWND hwnd) {
  char name[64] = "";
  GetClassNameA(hwnd, name, sizeof name);
  for (char& ch : name) ch = char(std::tolower(UInt8(ch)));
  return name;
}

// GetScrollInfo's range and position, "min..max @ pos".
inline std::string ScrollState(HWND bar) {
  SCROLLINFO si{sizeof si, SIF_RANGE | SIF_POS, 0, 0, 0, 0, 0};
  GetScrollInfo(bar, SB_CTL, &si);
  return std::to_string(si.nMin) + ".." + std::to_string(si.nMax) + " @ " + std::to_string(si.nPos);
}

// The child's rectangle in its parent's client area, "top,left,bottom,right".
inline std::string PlaceOf(HWND child) {
  RECT r;
  GetWindowRect(child, &r);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&r), 2);
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}

class ControlTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    window = WindowTest::Make(documentProc, Rect{40, 40, 300, 400});
    SetPort(window);
    Drain();
  }
  ControlHandle Make(SInt16 procID, Rect bounds, SInt16 value = 0, SInt16 min = 0, SInt16 max = 1,
                     const char* title = "\x02OK", SInt32 refCon = 0, bool visible = true) {
    return NewControl(window, &bounds, PStr(title), visible, value, min, max, procID, refCon);
  }
  // The centre of the control's rectangle, local coordinates.
  Point Centre(ControlHandle c) {
    const Rect& r = (**c).contrlRect;
    return Point{SInt16((r.top + r.bottom) / 2), SInt16((r.left + r.right) / 2)};
  }
  // The application's event loop for one click: the next mouseDown in the
  // window's content found with FindControl and tracked with TrackControl.
  // The part TrackControl answers, or -1 when no mouseDown reached a
  // control within waitMs.
  SInt16 HandleClick(ProcPtr action = nullptr, ControlHandle* hit = nullptr, DWORD waitMs = 3000) {
    EventRecord e;
    for (DWORD start = GetTickCount(); GetTickCount() - start < waitMs;) {
      WindowPtr w = nullptr;
      if (!GetNextEvent(mDownMask, &e) || FindWindow(e.where, &w) != inContent || w != window)
        continue;
      Point local = e.where;
      GlobalToLocal(&local);
      ControlHandle c = nullptr;
      if (!FindControl(local, w, &c) || !c) continue;
      if (hit) *hit = c;
      return TrackControl(c, local, action);
    }
    return -1;
  }

  WindowPtr window = nullptr;
};

using ControlsOnTop = OnTop<ControlTest>;

namespace {

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

std::vector<SInt16> g_parts;
int g_callsOutsideLoop = 0;

// One line or one page a call, as the application scrolls.
int StepOf(SInt16 part) {
  return part == inUpButton ? -1 : part == inDownButton ? 1 : part == inPageUp ? -10 : 10;
}

// The application's action procedure.
void KWE_CALL Scroll(ControlHandle c, SInt16 part) {
  g_parts.push_back(part);
  // Windows' loop holds the capture on the bar while it runs.
  g_callsOutsideLoop += GetCapture() != ChildWindow(c);
  if (part != inThumb) SetControlValue(c, SInt16(GetControlValue(c) + StepOf(part)));
}

class Tracking : public ControlsOnTop {
 protected:
  // Presses at from, moves to to, holds for holdMs and releases, from a
  // second thread, while the application's loop runs; the part
  // TrackControl answered (-1: no mouseDown reached a control).
  SInt16 Click(POINT from, POINT to, int holdMs, ProcPtr action) {
    SendMouse(MOUSEEVENTF_MOVE, from);
    Pump();
    std::thread user([=] {
      Sleep(50);
      SendMouse(MOUSEEVENTF_LEFTDOWN);
      Sleep(holdMs / 2);
      SendMouse(MOUSEEVENTF_MOVE, to);
      Sleep(holdMs - holdMs / 2);
      SendMouse(MOUSEEVENTF_LEFTUP);
    });
    SInt16 answer = HandleClick(action);
    user.join();
    Drain();
    return answer;
  }
};

// Each part pressed and released at once or held: the action procedure is
// called with the part, once or repeatedly while the press lasts, and the
// value it sets is the bar's position. A thumb dragged down by a third of
// the bar: Windows moves it, the value follows it, and the action procedure
// hears of the thumb once at the end.
TEST_F(Tracking, MouseOnScrollBarPartsCallsTheActionWithThePart) {
  const struct {
    SInt16 part;
    int holdMs;
    bool repeats;
  } cases[] = {{inDownButton, 60, false}, {inDownButton, 700, true}, {inUpButton, 700, true},
               {inPageDown, 60, false},   {inPageUp, 700, true},     {inThumb, 500, false}};
  for (const auto& k : cases) {
    SInt16 start = k.part == inThumb ? 20 : 50;
    ControlHandle bar = Make(scrollBarProc, Rect{10, 300, 210, 316}, start, 0, 100);
    HWND child = ChildWindow(bar);
    g_parts.clear();
    g_callsOutsideLoop = 0;
    POINT at = Aim(child, k.part);
    POINT to{at.x, at.y + (k.part == inThumb ? 60 : 0)};
    SInt16 part = Click(at, to, k.holdMs, reinterpret_cast<ProcPtr>(Scroll));
    std::string where = "part " + std::to_string(k.part) + " held " + std::to_string(k.holdMs);
    EXPECT_EQ(part, k.part) << where;
    ASSERT_FALSE(g_parts.empty()) << where;
    EXPECT_EQ(g_parts, std::vector<SInt16>(g_parts.size(), k.part)) << where;
    EXPECT_EQ(g_parts.size() > 1, k.repeats) << where << ": " << g_parts.size() << " calls";
    // Windows' loop makes every call of a held press; only a click
    // released before TrackControl began gets its one call outside it.
    if (k.repeats) {
      EXPECT_EQ(g_callsOutsideLoop, 0) << where;
    }
    int value = GetControlValue(bar);
    if (k.part == inThumb) {
      EXPECT_TRUE(value > 40 && value < 80) << where << ": " << value;
    } else {
      EXPECT_EQ(value, std::max(0, std::min(100, 50 + StepOf(k.part) * int(g_parts.size()))))
          << where;
    }
    EXPECT_EQ(ScrollState(child), "0..100 @ " + std::to_string(value)) << where;
    DisposeControl(bar);
  }
}

// FindControl and TestControl over each kind: buttons answer inside their
// rectangle, invisible and inactive controls never, a scroll bar only
// through the scroll report of a click on it.
TEST_F(ControlTest, FindControlAndTestControlAnswerEachKindsParts) {
  ControlHandle push = Make(pushButProc, Rect{10, 10, 30, 90});
  ControlHandle check = Make(checkBoxProc, Rect{40, 10, 60, 90}, 0, 0, 1, "\005Check");
  ControlHandle radio = Make(radioButProc, Rect{70, 10, 90, 90}, 0, 0, 1, "\x05Radio");
  ControlHandle hidden = Make(pushButProc, Rect{100, 10, 120, 90}, 0, 0, 1, "\x02No", 0, false);
  ControlHandle off = Make(pushButProc, Rect{130, 10, 150, 90});
  HiliteControl(off, 255);
  ControlHandle bar = Make(scrollBarProc, Rect{10, 300, 210, 316}, 0, 0, 10);
  const struct {
    ControlHandle c;
    Point at;
    SInt16 part;
  } cases[] = {{push, Centre(push), inButton},
               {push, Point{30, 50}, 0},
               {push, Point{29, 89}, inButton},
               {push, Point{20, 90}, 0},
               {check, Centre(check), inCheckBox},
               {radio, Centre(radio), inCheckBox},
               {hidden, Centre(hidden), 0},
               {off, Centre(off), 0},
               {bar, Centre(bar), 0},
               {nullptr, Point{20, 20}, 0}};
  for (const auto& k : cases) {
    std::string where = "case " + std::to_string(&k - cases);
    EXPECT_EQ(TestControl(k.c, k.at), k.part) << where;
    if (!k.c) continue;
    ControlHandle found = reinterpret_cast<ControlHandle>(intptr_t(1));
    EXPECT_EQ(FindControl(k.at, window, &found), k.part) << where;
    EXPECT_EQ(found, k.part ? k.c : nullptr) << where;
  }
  ControlHandle found = nullptr;
  EXPECT_EQ(FindControl(Centre(push), nullptr, &found), 0);
  EXPECT_EQ(found, nullptr);
}

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
}  // namespace kwe_test
