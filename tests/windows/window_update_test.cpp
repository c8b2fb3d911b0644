// Update events and what drawing between BeginUpdate and EndUpdate reaches,
// read back from the window's pixels.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "windows/windows_fixture.h"

namespace {

using namespace kwe_test;

class Updates : public WindowTest {
 protected:
  // Answers every update event painting the whole port black; how many each
  // window got.
  std::map<WindowPtr, int> PaintUpdates() {
    std::map<WindowPtr, int> count;
    for (const EventRecord& e : Drain(updateMask, true)) ++count[EventWindow(e)];
    return count;
  }
  // The window's 160 x 100 port in 4 x 4 cells: X where the cell's centre is
  // black, . where it is white.
  std::string Cells(WindowPtr w) {
    std::string cells;
    for (int v : {12, 37, 62, 87})
      for (int h : {20, 60, 100, 140}) cells += Pixel(w, h, v) == RGB(0, 0, 0) ? 'X' : '.';
    return cells;
  }
};

RgnHandle LShape() {
  RgnHandle a = NewRgn(), b = NewRgn();
  SetRectRgn(a, 0, 0, 160, 25);
  SetRectRgn(b, 0, 0, 40, 100);
  UnionRgn(a, b, a);
  DisposeRgn(b);
  return a;
}

// Invalidated areas, less validated ones (before or after the update event
// is taken), are all that the update's drawing reaches; nothing invalid left
// means no update event. A hidden window in front hides nothing: CalcVis
// leaves the visible region the whole port. A window with a picture is drawn
// from it, with no update event for the application.
TEST_F(Updates, DrawingInAnUpdateReachesOnlyTheInvalidArea) {
  const Rect all{0, 0, 100, 160}, topLeft{0, 0, 50, 80}, bottom{50, 0, 100, 160};
  const Rect small{10, 10, 40, 40}, around{0, 0, 50, 50}, left{0, 0, 100, 80};
  const struct {
    const Rect* inval;
    const Rect* valid;
    bool validAfterEvent;
    bool regions;
    int events;
    const char* cells;
    bool picture = false;
  } cases[] = {{&topLeft, nullptr, false, false, 1, "XX..XX.........."},
               {&all, &topLeft, false, false, 1, "..XX..XXXXXXXXXX"},
               {&all, &bottom, true, false, 1, "XXXXXXXX........"},
               {&small, &around, false, false, 0, "................"},
               {nullptr, nullptr, false, true, 1, "XXXXX...X...X..."},
               {&all, nullptr, true, true, 1, ".....XXX.XXX.XXX"},
               {&all, nullptr, false, false, 1, "XXXXXXXXXXXXXXXX"},
               {&all, nullptr, false, false, 0, "XX..XX..XX..XX..", true}};
  WindowPtr w = Make(documentProc, {40, 40, 140, 200});
  Make(noGrowDocProc, {60, 60, 120, 150}, false);
  Drain();
  CalcVis(w);
  RgnHandle shape = LShape();
  SetPort(w);
  PicHandle pic = OpenPicture(&w->portRect);
  PaintRect(&left);
  ClosePicture();
  for (const auto& c : cases) {
    std::string where = std::string("case ") + c.cells;
    SetWindowPic(w, c.picture ? pic : nullptr);
    EraseRect(&w->portRect);
    ASSERT_EQ(Cells(w), "................") << where;
    if (c.inval) InvalRect(c.inval);
    if (c.regions && !c.inval) InvalRgn(shape);
    EventRecord e;
    if (c.validAfterEvent) {
      ASSERT_TRUE(EventAvail(updateMask, &e)) << where;
    }
    if (c.valid) ValidRect(c.valid);
    if (c.regions && c.inval) ValidRgn(shape);
    std::map<WindowPtr, int> events = PaintUpdates();
    EXPECT_EQ(events[w], c.events) << where;
    EXPECT_EQ(Cells(w), c.cells) << where;
    EXPECT_TRUE(PaintUpdates().empty()) << where;
  }
  SetWindowPic(w, nullptr);
  KillPicture(pic);
  DisposeRgn(shape);
}

// A window uncovered by moving the one in front of it gets one update
// event, and the update's drawing reaches the uncovered part only.
// Disposing of the window being updated ends its update: the current port
// is not left on it, and the next window's update works as always.
TEST_F(Updates, UncoveringAndDisposingInAnUpdateUpdateOnlyWhatIsInvalid) {
  WindowPtr back = Make(documentProc, {40, 40, 140, 200});
  WindowPtr front = Make(noGrowDocProc, {90, 110, 190, 310});
  Drain();
  RECT covered;
  GetWindowRect(KWE_GethWnd(front), &covered);
  MapWindowPoints(nullptr, KWE_GethWnd(back), reinterpret_cast<POINT*>(&covered), 2);
  ASSERT_EQ(Pixel(back, 10, 10), RGB(255, 255, 255));
  MoveWindow(front, 250, 160, false);
  EXPECT_EQ(PaintUpdates()[back], 1);
  EXPECT_EQ(Pixel(back, covered.left + 2, covered.top + 2), RGB(0, 0, 0));
  EXPECT_EQ(Pixel(back, 159, 99), RGB(0, 0, 0));
  EXPECT_EQ(Pixel(back, covered.left - 2, 99), RGB(255, 255, 255));
  EXPECT_EQ(Pixel(back, 159, covered.top - 2), RGB(255, 255, 255));
  EXPECT_EQ(Pixel(back, 10, 10), RGB(255, 255, 255));

  SetPort(front);
  InvalRect(&front->portRect);
  EventRecord e;
  ASSERT_TRUE(GetNextEvent(updateMask, &e));
  ASSERT_EQ(EventWindow(e), front);
  BeginUpdate(front);
  DisposeWindow(front);
  EndUpdate(front);
  GrafPtr port = nullptr;
  GetPort(&port);
  EXPECT_NE(port, front);
  SetPort(back);
  EraseRect(&back->portRect);
  Rect corner{0, 0, 50, 80};
  InvalRect(&corner);
  std::map<WindowPtr, int> events = PaintUpdates();
  EXPECT_EQ(events.size(), 1u);
  EXPECT_EQ(events[back], 1);
  EXPECT_EQ(Cells(back), "XX..XX..........");
}

}  // namespace
