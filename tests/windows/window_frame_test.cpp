// Frame clicks Windows carries out (close, zoom, drag, size) reaching the
// application as pseudo-points, and MoveWindow, SizeWindow and ZoomWindow,
// with and without MDI.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "windows/windows_fixture.h"

namespace {

using namespace kwe_test;

using FrameInput = WindowsOnTop;

// Close and zoom boxes, clicked (also the library's own on small-caption
// windows) or chosen from the system menu: the part comes once for the
// window, TrackGoAway and TrackBox answer true once and only for it; a
// window zoomed out gets inZoomIn next. Without a close box, nothing.
TEST_F(FrameInput, CloseAndZoomBoxesBecomePartsTheTrackCallsAnswerOnce) {
  WindowPtr bystander = Make(noGrowDocProc, {10, 250, 60, 350});
  const struct {
    SInt16 procID;
    UINT input;  // a system command, else the hit test of a clicked box
    SInt16 part;
  } cases[] = {{documentProc, SC_CLOSE, inGoAway},    {documentProc, HTCLOSE, inGoAway},
               {dBoxProc, SC_CLOSE, inGoAway},        {65, HTCLOSE, inGoAway},
               {zoomDocProc, SC_MAXIMIZE, inZoomOut}, {zoomDocProc, HTMAXBUTTON, inZoomOut},
               {74, HTMAXBUTTON, inZoomOut}};
  auto track = [](WindowPtr w, SInt16 part) -> bool {
    return part == inGoAway ? TrackGoAway(w, Pt(-1, -part)) : TrackBox(w, Pt(-1, -part), part);
  };
  for (const auto& c : cases) {
    WindowPtr w = Make(c.procID, {60, 40, 160, 200});
    HWND hwnd = KWE_GethWnd(w);
    Drain();
    for (SInt16 part = c.part; part; part = part == inZoomOut ? inZoomIn : 0) {
      std::string where = "procID " + std::to_string(c.procID) + " input " +
                          std::to_string(c.input) + " part " + std::to_string(part);
      if (c.input >= SC_SIZE)
        SendMessageA(hwnd, WM_SYSCOMMAND, part == inZoomIn ? SC_RESTORE : c.input, 0);
      else
        PostFrameClick(hwnd, c.input);
      EXPECT_EQ(ExpectMouseDown(part, w, where).h, -1) << where;
      EXPECT_FALSE(track(bystander, part)) << where;
      EXPECT_TRUE(track(w, part)) << where;
      EXPECT_FALSE(track(w, part)) << where;
      ZoomWindow(w, part, false);
    }
    DisposeWindow(w);
  }
  WindowPtr w = Make(documentProc, {60, 40, 160, 200}, true, InFront(), false);
  PostFrameClick(KWE_GethWnd(w), HTCLOSE);
  EventRecord e;
  EXPECT_FALSE(NextMouseDown(&e));
}

// PinRect keeps each coordinate within its own two edges, both included.
TEST(PinRect, EachCoordinateIsClampedToItsOwnEdges) {
  const Rect r{10, 20, 50, 200};  // top, left, bottom, right
  const struct {
    SInt16 h, v, pinnedH, pinnedV;
  } cases[] = {{100, 30, 100, 30}, {5, 100, 20, 50}, {300, 0, 200, 10}, {200, 50, 200, 50}};
  for (const auto& c : cases)
    EXPECT_EQ(PinRect(&r, Pt(c.h, c.v)), SInt32(c.pinnedV << 16 | c.pinnedH)) << c.h << "," << c.v;
}

// A real click in the content of a window behind is one mouseDown in its
// content: Windows' activation of it adds no drag. A real press on its title
// bar, a move and a release: Windows moves it, the application gets inDrag
// for it, and DragWindow brings it to the front and activates it; zooming
// returns to where it was dragged.
TEST_F(FrameInput, RealClicksOnAWindowBehindAreOneMouseDownEach) {
  WindowPtr back = Make(documentProc, {60, 30, 160, 190});
  WindowPtr front = Make(zoomDocProc, {90, 120, 190, 300});
  Drain();
  RECT before;
  GetWindowRect(KWE_GethWnd(back), &before);
  SendMouse(MOUSEEVENTF_MOVE, POINT{before.left + 20, before.bottom - 20});
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  SendMouse(MOUSEEVENTF_LEFTUP);
  ExpectMouseDown(inContent, back, "content");
  EventRecord e;
  EXPECT_FALSE(NextMouseDown(&e));
  SelectWindow(front);
  Drain();
  before = ClientInParent(back);
  POINT grab = FrameSpot(KWE_GethWnd(back), HTCAPTION);
  SendMouse(MOUSEEVENTF_MOVE, grab);
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  DuringModalLoop({[&] {
                     SendMouse(MOUSEEVENTF_MOVE, POINT{grab.x + 20, grab.y + 10});
                   },
                   [&] {
                     SendMouse(MOUSEEVENTF_MOVE, POINT{grab.x + 30, grab.y + 20});
                   },
                   [&] { SendMouse(MOUSEEVENTF_LEFTUP); }});
  RECT after = ClientInParent(back);
  EXPECT_EQ(std::make_pair(after.left - before.left, after.top - before.top),
            std::make_pair(30L, 20L));
  ExpectMouseDown(inDrag, back, "drag");
  Rect limit{0, 0, 2000, 2000};
  DragWindow(back, Pt(-1, -inDrag), &limit);
  EXPECT_EQ(ListOrder(), (std::vector<WindowPtr>{back, front}));
  EXPECT_EQ(Win32Order(), ListOrder());
  EXPECT_EQ(FrontWindow(), back);
  EXPECT_TRUE(PeekOf(back)->hilited && !PeekOf(front)->hilited);
  std::vector<EventRecord> events = Drain(activMask);
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(EventWindow(events.back()), back);
  EXPECT_TRUE(events.back().modifiers & activeFlag);
  ZoomWindow(back, inZoomOut, false);
  ZoomWindow(back, inZoomIn, false);
  RECT unzoomed = ClientInParent(back);
  EXPECT_TRUE(EqualRect(&after, &unzoomed));
}

// Sizing by the bottom-right corner in Windows' own loop: inGrow for the
// window, GrowWindow answers the new size once (and 0 for other windows),
// SizeWindow takes it. In MDI mode the minimum size holds against the user.
template <class Fixture>
class Grow : public Fixture {
 protected:
  void DragCorner(SInt16 minWidth, SInt16 minHeight, int dx, int dy, SInt32 expected) {
    WindowPtr bystander = this->Make(noGrowDocProc, {10, 250, 60, 350});
    WindowPtr w = this->Make(documentProc, {60, 40, 160, 200});
    KWE_SetwPtrMinSize(w, minWidth, minHeight);
    this->Drain();
    HWND hwnd = KWE_GethWnd(w);
    POINT corner = FrameSpot(hwnd, HTBOTTOMRIGHT);
    SetCursorPos(corner.x, corner.y);
    PostMessageA(hwnd, WM_NCLBUTTONDOWN, HTBOTTOMRIGHT, MAKELPARAM(corner.x, corner.y));
    this->DuringModalLoop({[&] {
                             SetCursorPos(corner.x + dx, corner.y + dy);
                             PostMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, 0);
                           },
                           [&] { PostMessageA(hwnd, WM_LBUTTONUP, 0, 0); }});
    Point at = this->ExpectMouseDown(inGrow, w);
    Rect limits{80, 80, 1000, 1000};
    EXPECT_EQ(GrowWindow(bystander, at, &limits), 0);
    SInt32 size = GrowWindow(w, at, &limits);
    EXPECT_EQ(size, expected);
    EXPECT_EQ(GrowWindow(w, at, &limits), 0);
    SizeWindow(w, SInt16(size & 0xFFFF), SInt16(size >> 16), true);
    EXPECT_EQ(std::make_pair(w->portRect.right, w->portRect.bottom),
              std::make_pair(SInt16(size & 0xFFFF), SInt16(size >> 16)));
  }
};
using FrameInputGrow = Grow<FrameInput>;
using MdiFrameInputGrow = Grow<OnTop<MdiWindowTest>>;
TEST_F(FrameInputGrow, SizingByTheCornerIsInGrowAndGrowWindowAnswersTheSizeOnce) {
  DragCorner(0, 0, 40, 30, (130 << 16) | 200);
}
TEST_F(MdiFrameInputGrow, SizingByTheCornerIsInGrowAndGrowWindowAnswersTheSizeOnce) {
  DragCorner(150, 120, -100, -80, (120 << 16) | 150);
}

// MoveWindow, SizeWindow and ZoomWindow for child, pop-up, small-caption and
// MDI windows: the port's top-left lands on (h, v) of the parent's client
// area, the client takes the size, zooming out fills the parent's client area
// with the window and zooming in comes back.
template <class Fixture>
class Placement : public Fixture {
 protected:
  void Check() {
    for (SInt16 procID : {0, 1, 8, 74, 73, 2}) {
      std::string where = "procID " + std::to_string(procID);
      WindowPtr w = this->Make(procID, {50, 30, 150, 190});
      HWND hwnd = KWE_GethWnd(w);
      MoveWindow(w, 70, 35, false);
      SizeWindow(w, 150, 90, true);
      RECT client = this->ClientInParent(w);
      EXPECT_EQ(std::make_pair(client.left, client.top), std::make_pair(70L, 35L)) << where;
      EXPECT_EQ(std::make_pair(client.right, client.bottom), std::make_pair(220L, 125L)) << where;
      EXPECT_EQ(std::make_pair(w->portRect.right, w->portRect.bottom),
                std::make_pair(SInt16(150), SInt16(90)))
          << where;
      MoveWindow(w, 30, 50, false);
      SizeWindow(w, 160, 100, true);
      ZoomWindow(w, inZoomOut, true);
      RECT outer, area;
      GetWindowRect(hwnd, &outer);
      HWND parent = GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD ? GetParent(hwnd) : this->mainWindow;
      MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&outer), 2);
      GetClientRect(parent, &area);
      EXPECT_TRUE(EqualRect(&outer, &area)) << where;
      EXPECT_TRUE(PeekOf(w)->spareFlag && FrontWindow() == w) << where;
      ZoomWindow(w, inZoomIn, false);
      client = this->ClientInParent(w);
      EXPECT_EQ(std::make_pair(client.left, client.bottom), std::make_pair(30L, 150L)) << where;
      EXPECT_FALSE(PeekOf(w)->spareFlag) << where;
      DisposeWindow(w);
    }
  }
};
using WindowPlacement = Placement<WindowTest>;
using MdiWindowPlacement = Placement<MdiWindowTest>;
TEST_F(WindowPlacement, MoveSizeAndZoomPlaceThePortInTheParent) { Check(); }
TEST_F(MdiWindowPlacement, MoveSizeAndZoomPlaceThePortInTheParent) { Check(); }

// In MDI mode the document kinds are children of the MDI client, the others
// stay where they were; a minimum client size, for the windows made after it
// or for one window, holds against SizeWindow.
TEST_F(MdiWindowTest, DocumentsAreMdiChildrenAndKeepTheirMinimumSize) {
  const SInt16 kinds[] = {0, 4, 8, 12, 9, 25, 1, 2, 16};  // six document kinds first
  for (const SInt16& procID : kinds) {
    WindowPtr w = Make(procID);
    EXPECT_EQ(GetParent(KWE_GethWnd(w)) == mdiClient, &procID - kinds < 6) << procID;
  }
  EXPECT_EQ(Win32Order(), ListOrder());
  KWE_SetMinWinSize(130, 110);
  WindowPtr a = Make(documentProc, {20, 20, 170, 220});
  KWE_SetMinWinSize(0, 0);
  WindowPtr b = Make(documentProc, {40, 40, 190, 240});
  KWE_SetwPtrMinSize(b, 150, 120);
  for (WindowPtr w : {a, b}) SizeWindow(w, 10, 10, true);
  EXPECT_EQ(
      std::make_tuple(a->portRect.right, a->portRect.bottom, b->portRect.right, b->portRect.bottom),
      std::make_tuple(130, 110, 150, 120));
}

}  // namespace
