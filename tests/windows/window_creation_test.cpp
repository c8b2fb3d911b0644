// Making windows: the records, the Win32 windows behind them (styles,
// parents, frames, titles), bad input and creations that fail half-way.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "Memory.h"
#include "Resources.h"
#include "resource_builder/resource_image.h"
#include "support/resource_image_file.h"
#include "windows/windows_fixture.h"

namespace {

using namespace kwe_test;

std::string Show(int top, int left, int bottom, int right) {
  char s[64];
  std::snprintf(s, sizeof s, "(%d,%d,%d,%d)", top, left, bottom, right);
  return s;
}
std::string Show(const Rect& r) { return Show(r.top, r.left, r.bottom, r.right); }
// A rectangle as a region's box: an empty one is all zero.
std::string Box(const RECT& r) {
  return IsRectEmpty(&r) ? Show(0, 0, 0, 0) : Show(r.top, r.left, r.bottom, r.right);
}

// The port rectangle is the client area, and strucRgn and contRgn are the
// window and client rectangles on the screen.
void ExpectGeometryMatchesWin32(WindowPtr w, const std::string& where) {
  HWND hwnd = KWE_GethWnd(w);
  RECT window, client;
  GetWindowRect(hwnd, &window);
  GetClientRect(hwnd, &client);
  EXPECT_EQ(Show(w->portRect), Show(0, 0, client.bottom, client.right)) << where;
  MapWindowPoints(hwnd, nullptr, reinterpret_cast<POINT*>(&client), 2);
  EXPECT_EQ(Show((**PeekOf(w)->strucRgn).rgnBBox), Box(window)) << where;
  EXPECT_EQ(Show((**PeekOf(w)->contRgn).rgnBBox), Box(client)) << where;
}

class Creation : public WindowTest {
 protected:
  // Windows of these kinds made, their frames drawn active and inactive,
  // their updates answered, and disposed of: what Wine's device context
  // cache, its caption drawing and the library's caches keep from the first
  // ones stays. (Whether frames are drawn active depends on which test has
  // the foreground.)
  void WarmUp(std::initializer_list<SInt16> procIDs) {
    for (SInt16 procID : procIDs) {
      WindowPtr w = Make(procID);
      for (BOOL active : {TRUE, FALSE}) SendMessageA(KWE_GethWnd(w), WM_NCACTIVATE, active, 0);
      Drain();
      DisposeWindow(w);
    }
    Drain();
  }
};

// What Windows holds for each procID: the standard definitions by procID,
// the others by variant (procID & 15, here 64 + variant), hidden and shown.
// Windows itself adds WS_CLIPSIBLINGS to top-level windows and a caption to
// overlapped ones. Without a close box the system menu has no Close.
TEST_F(Creation, EveryProcIdGetsItsStyleParentAndAFrameAroundTheBounds) {
  const struct {
    SInt16 procID;
    DWORD style;
  } kinds[] = {
      {0, 0x44CC0000},  {1, 0x84C800C0},  {2, 0x44800000},  {3, 0x80800000},  {4, 0x44C80000},
      {5, 0x84C800C0},  {8, 0x44CD0000},  {12, 0x44C90000}, {16, 0x44C80000}, {64, 0x44C00000},
      {65, 0x44C00000}, {66, 0x84800000}, {67, 0x44800000}, {68, 0x44800000}, {69, 0x84C800C0},
      {70, 0},          {71, 0x44C40000}, {72, 0x44C00000}, {73, 0x44C40000}, {74, 0x44C40000},
      {75, 0},          {76, 0},          {77, 0},          {78, 0},          {79, 0x80800000}};
  const Rect bounds{60, 50, 160, 250};
  for (const auto& k : kinds) {
    for (bool visible : {false, true}) {
      bool goAway = (k.procID + visible) % 2;
      std::string where = "procID " + std::to_string(k.procID) + (visible ? " visible" : "");
      WindowPtr w = Make(k.procID, bounds, visible, InFront(), goAway);
      ASSERT_NE(w, nullptr) << where;
      HWND hwnd = KWE_GethWnd(w);
      DWORD expected = k.style | (visible ? WS_VISIBLE : 0);
      if (!(k.style & WS_CHILD)) expected |= WS_CLIPSIBLINGS;
      if (!(k.style & (WS_CHILD | WS_POPUP))) expected |= WS_CAPTION;
      EXPECT_EQ(DWORD(GetWindowLongA(hwnd, GWL_STYLE)), expected) << where;
      EXPECT_EQ((GetWindowLongA(hwnd, GWL_EXSTYLE) & WS_EX_DLGMODALFRAME) != 0,
                k.style == 0x84C800C0)
          << where;
      HWND parent = k.style & WS_CHILD ? GetParent(hwnd) : GetWindow(hwnd, GW_OWNER);
      EXPECT_EQ(parent, k.procID == 79 ? nullptr : mainWindow) << where;
      EXPECT_EQ(GetWVariant(w), k.procID) << where;
      EXPECT_EQ(PeekOf(w)->visible, visible) << where;
      UINT close = GetMenuState(GetSystemMenu(hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND);
      EXPECT_TRUE(!(expected & WS_SYSMENU) || (close != UINT(-1)) == goAway) << where;
      for (int shown = 0; shown < 2; ++shown, ShowWindow(w)) {
        RECT client = ClientInParent(w);
        EXPECT_EQ(Box(client), Show(bounds)) << where;
        ExpectGeometryMatchesWin32(w, where);
      }
      DisposeWindow(w);
      EXPECT_FALSE(IsWindow(hwnd)) << where;
    }
  }
  EXPECT_EQ(vars.WindowList, nullptr);
}

// The three calls and their storage: the caller's record cleared, or a new
// record block; the Mac title kept in titleHandle and handed to Windows in
// ANSI; 'WIND' templates whose Boolean words hold the value in their first
// byte; made behind nothing, a window goes to the back of its group.
TEST_F(Creation, NewWindowNewCWindowAndGetNewWindowFillTheRecord) {
  auto wind = [](SInt16 procID, UInt8 on, const char* title) {
    // bounds (50, 60, 150, 260), procID, visible, goAway, refCon, title
    resource_builder::Bytes b = {0, 50, 0, 60, 0, 150,  1,    4,    0,
                                 0, on, 0, on, 0, 0x12, 0x34, 0x56, 0x78};
    b[9] = UInt8(procID);
    b.push_back(UInt8(std::strlen(title)));
    for (const char* c = title; *c; ++c) b.push_back(UInt8(*c));
    return resource_builder::MakeResource("WIND", SInt16(128 + !on), b);
  };
  auto image = resource_builder::BuildResourceImage({wind(4, 1, "Mac \x8A"), wind(8, 0, "Off")});
  std::string file;
  SInt16 refNum = 0;
  OpenResourceImage(image, "kwe_wind_", &file, &refNum);
  EXPECT_EQ(GetNewWindow(130, nullptr, InFront()), nullptr);

  WindowRecord storage;
  std::memset(&storage, 0xCD, sizeof storage);
  const Rect bounds{50, 60, 150, 260};
  const UInt8* title = reinterpret_cast<const UInt8*>("\x05Mac \x8A");
  const struct {
    WindowPtr w;
    bool on, colour;
    const char *mac, *ansi;
  } made[] = {{NewWindow(&storage, &bounds, title, true, 4, InFront(), true, 0x12345678), true,
               false, "Mac \x8A", "Mac \xE4"},
              {NewCWindow(nullptr, &bounds, title, false, 8, nullptr, false, 0x12345678), false,
               true, "Mac \x8A", "Mac \xE4"},
              {GetNewWindow(128, nullptr, InFront()), true, false, "Mac \x8A", "Mac \xE4"},
              {GetNewWindow(129, nullptr, nullptr), false, false, "Off", "Off"}};
  CloseResFile(refNum);
  DeleteFileA(file.c_str());
  EXPECT_EQ(made[0].w, reinterpret_cast<WindowPtr>(&storage));
  for (const auto& m : made) {
    ASSERT_NE(m.w, nullptr) << m.mac;
    WindowPeek p = PeekOf(m.w);
    std::string where = std::to_string(&m - made);
    EXPECT_EQ(std::make_tuple(p->visible, IsWindowVisible(KWE_GethWnd(m.w)) != 0, p->goAwayFlag),
              std::make_tuple(UInt8(m.on), m.on, UInt8(m.on)))
        << where;
    EXPECT_EQ(GetWRefCon(m.w), 0x12345678) << where;
    EXPECT_EQ(m.w->portBits.rowBytes < 0, m.colour) << where;
    EXPECT_EQ(Box(ClientInParent(m.w)), Show(bounds)) << where;
    char text[64] = "";
    GetWindowTextA(KWE_GethWnd(m.w), text, sizeof text);
    Str255 back;
    GetWTitle(m.w, back);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(back + 1), back[0]), m.mac) << where;
    EXPECT_EQ(std::string(text), m.ansi) << where;
  }
  EXPECT_EQ(GetWVariant(made[3].w), 8);
  SetWTitle(made[3].w, title);
  char text[64] = "";
  GetWindowTextA(KWE_GethWnd(made[3].w), text, sizeof text);
  EXPECT_STREQ(text, "Mac \xE4");
  EXPECT_EQ(ListOrder(), (std::vector<WindowPtr>{made[2].w, made[0].w, made[1].w, made[3].w}));
  EXPECT_EQ(Win32Order(), ListOrder());
  for (const auto& m : made) DisposeWindow(m.w);
}

// Windows of every kind made, drawn in, updated, zoomed and disposed of,
// every seventh with empty, inverted, huge or far-away bounds, and from the
// hundredth on under a memory limit raised step by step. A creation that
// fails half-way gives nil; one that succeeds has every region, matching
// Win32. Either way USER's windows, GDI's objects, the heap and the list
// stay where they were (after the first windows, which leave what the
// session keeps). With the port table (64 ports) full, no window is made.
TEST_F(Creation, CreationsFailingOrNotLeaveNothingBehind) {
  WindowPtr other = Make(noGrowDocProc);
  const SInt16 procIDs[] = {documentProc, dBoxProc, zoomDocProc, altDBoxProc, 71, 74};
  const Rect bad[] = {{0, 0, 0, 0},
                      {50, 50, 50, 50},
                      {100, 100, 50, 50},
                      {-32768, -32768, 32767, 32767},
                      {-30000, -30000, -29900, -29800},
                      {30000, 30000, 30100, 30200}};
  WarmUp({documentProc, dBoxProc, zoomDocProc, altDBoxProc, 71, 74});
  Footprint before = Now();
  ASSERT_GE(before.gdi, 0) << "no GDI handle table to count in";
  int failed = 0;
  for (int i = 0; i < 300; ++i) {
    if (i == 20) before = Now();
    Rect bounds{SInt16(30 + i % 40), SInt16(20 + i % 50), SInt16(130 + i % 60), 220};
    if (i % 7 == 0) bounds = bad[i / 7 % 6];
    UInt32 extra = i < 100 ? 0 : UInt32(i - 100) * 6;
    std::string where =
        "cycle " + std::to_string(i) + " " + Show(bounds) + " limit +" + std::to_string(extra);
    if (extra) KWE_SetMemoryLimits(1, before.bytes + extra, 0, 0);
    WindowPtr w = Make(procIDs[i % 6], bounds, i % 5 != 0);
    KWE_SetMemoryLimits(0, 0, 0, 0);
    failed += !w;
    if (w) {
      WindowPeek p = PeekOf(w);
      EXPECT_TRUE(p->strucRgn && p->contRgn && p->updateRgn && p->titleHandle && w->visRgn &&
                  w->clipRgn)
          << where;
      ExpectGeometryMatchesWin32(w, where);
      SetPort(w);
      PaintOval(&w->portRect);
      InvalRect(&w->portRect);
      EventRecord e;
      GetNextEvent(everyEvent, &e);
      if (i % 3 == 0) ZoomWindow(w, inZoomOut, false);
      DisposeWindow(w);
    }
    if (i >= 20) {
      EXPECT_EQ(Now(), before) << where;
    }
  }
  EXPECT_GT(failed, 0);
  EXPECT_LT(failed, 200);

  std::vector<GrafPort> ports(70);
  size_t opened = 0;
  while (opened < ports.size() && (OpenPort(&ports[opened]), QDError() == noErr)) ++opened;
  before = Now();
  EXPECT_EQ(Make(), nullptr);
  EXPECT_EQ(Now(), before);
  ClosePort(&ports[0]);
  WindowPtr w = Make();
  EXPECT_EQ(ListOrder(), (std::vector<WindowPtr>{w, other}));
  for (size_t i = 1; i < opened; ++i) ClosePort(&ports[i]);
}

// A host whose window class lacks the 32 extra bytes: every creation fails
// cleanly.
class NarrowClassCreation : public WindowTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    kwe::host::RegisterLibraryClass(TestInstance(), "KWENarrowWndClass",
                                    kwe::host::LibraryWindowProc, 0);
    r.windowClass = "KWENarrowWndClass";
  }
};

TEST_F(NarrowClassCreation, AWindowClassWithoutItsExtraBytesMakesNoWindow) {
  Footprint before = Now();
  WindowRecord storage;
  Rect bounds{40, 40, 140, 200};
  EXPECT_EQ(Make(), nullptr);
  EXPECT_EQ(Make(dBoxProc), nullptr);
  EXPECT_EQ(NewCWindow(&storage, &bounds, nullptr, true, 0, InFront(), true, 0), nullptr);
  EXPECT_EQ(Now(), before);
  EXPECT_EQ(FrontWindow(), nullptr);
}

// Every call given a nil window does nothing, and EndUpdate(nil) does not
// end another window's update.
TEST_F(Creation, CallsOnANilWindowDoNothing) {
  WindowPtr w = Make();
  Drain();
  Rect r{0, 0, 10, 10};
  Str255 title = {3, 'a', 'b', 'c'};
  SelectWindow(nullptr);
  HideWindow(nullptr);
  ShowWindow(nullptr);
  ShowHide(nullptr, true);
  BringToFront(nullptr);
  SendBehind(nullptr, nullptr);
  HiliteWindow(nullptr, true);
  MoveWindow(nullptr, 1, 1, true);
  SizeWindow(nullptr, 10, 10, true);
  ZoomWindow(nullptr, inZoomOut, true);
  DragWindow(nullptr, Pt(1, 1), &r);
  SetWTitle(nullptr, title);
  GetWTitle(nullptr, title);
  DrawGrowIcon(nullptr);
  KWE_SetwPtrMinSize(nullptr, 10, 10);
  CloseWindo(nullptr);
  DisposeWindow(nullptr);
  EXPECT_EQ(title[0], 0);
  EXPECT_EQ(GrowWindow(nullptr, Pt(1, 1), &r), 0);
  EXPECT_FALSE(TrackGoAway(nullptr, Pt(1, 1)) || TrackBox(nullptr, Pt(1, 1), inZoomOut));
  EXPECT_EQ(GetWRefCon(nullptr) | GetWVariant(nullptr), 0);
  EXPECT_EQ(KWE_GethWnd(nullptr), nullptr);
  EXPECT_EQ(ListOrder(), std::vector<WindowPtr>{w});
  EXPECT_TRUE(FrontWindow() == w && PeekOf(w)->hilited);
  EXPECT_TRUE(Drain().empty());

  SetPort(w);
  InvalRect(&w->portRect);
  Drain(activMask);
  BeginUpdate(w);
  EndUpdate(nullptr);
  EndUpdate(w);
  PaintRect(&w->portRect);  // the update is over: the whole port is drawn
  EXPECT_EQ(Pixel(w, 150, 90), RGB(0, 0, 0));
}

}  // namespace
