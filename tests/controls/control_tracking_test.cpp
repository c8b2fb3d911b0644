// TrackControl under real mouse input: a second thread presses, holds and
// releases the button on a scroll bar's arrows, page areas and thumb while
// the application's own event loop finds the control and tracks it.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "controls/controls_fixture.h"
#include "support/scroll_bar_aim.h"

namespace {

using namespace kwe_test;

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

}  // namespace
