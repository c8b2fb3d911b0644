// Ports through the DLL: opened over a DIB section or a real window, drawn
// with the pen and read back pixel by pixel.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "KWEPorts.h"
#include "KWERegions.h"
#include "KWESession.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/gdi_objects.h"
#include "quickdraw/region_canvas.h"

namespace {

using namespace kwe_test;

constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kBlack = 0x000000;

class Ports : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    InitGraf(&screen);
    canvas.Clear();
  }
  // A plain port drawing into the canvas.
  void OpenOnCanvas(GrafPtr port) {
    OpenPort(port);
    KWE_SwaphDC(canvas.Dc(), true);
  }
  GrafPtr screen = nullptr;
  Canvas canvas{64};
};

Point Pt(int h, int v) { return Point{SInt16(v), SInt16(h)}; }

TEST_F(Ports, InitGrafFillsTheGlobalsAndOpensTheScreenPort) {
  ASSERT_NE(screen, nullptr);
  EXPECT_EQ(vars.thePort, screen);
  EXPECT_EQ(vars.WMgrPort, screen);
  EXPECT_EQ(QDError(), noErr);
  EXPECT_EQ(vars.gray.pat[0], 0xAA);
  EXPECT_EQ(vars.gray.pat[1], 0x55);
  EXPECT_EQ(vars.ltGray.pat[1], 0x22);
  EXPECT_EQ(vars.dkGray.pat[0], 0x77);
  EXPECT_EQ(vars.black.pat[7], 0xFF);
  EXPECT_EQ(vars.white.pat[3], 0x00);
  int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  EXPECT_EQ(vars.screenBits.bounds.right, width);
  EXPECT_EQ(vars.screenBits.bounds.bottom, height);
  // The screen port leaves room for a frame window's frame, caption and menu.
  int reserved = 2 * GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) +
                 GetSystemMetrics(SM_CYMENU);
  EXPECT_EQ(screen->portRect.bottom, height - reserved);
  EXPECT_EQ(screen->portRect.right, width);
  EXPECT_LT(reinterpret_cast<CGrafPtr>(screen)->portVersion, 0);
  DWORD hilite = GetSysColor(COLOR_HIGHLIGHT);
  EXPECT_EQ(vars.HiliteRGB.red, (hilite & 0xFF) << 8);
  EXPECT_EQ(vars.HiliteRGB.blue, ((hilite >> 16) & 0xFF) << 8);
  ASSERT_NE(vars.MainDevice, nullptr);
  EXPECT_EQ(vars.TheGDevice, vars.MainDevice);
  EXPECT_EQ((**vars.MainDevice).gdRect.bottom, height - reserved);
  // The screen DC is the current DC while the screen port is current.
  EXPECT_NE(KWE_GetCurrentDC(), nullptr);
  GrafPort port;
  OpenPort(&port);
  EXPECT_EQ(vars.thePort, &port);
  SetPort(nullptr);
  EXPECT_EQ(vars.thePort, screen);
  EXPECT_NE(KWE_GetCurrentDC(), nullptr);
  ClosePort(&port);
}

class FullScreenPorts : public Ports {
  UInt32 SessionFlags() const override { return kweFlagFullScreenRect; }
};

TEST_F(FullScreenPorts, ScreenPortTakesTheWholeScreen) {
  EXPECT_EQ(screen->portRect.bottom, GetSystemMetrics(SM_CYSCREEN));
}

TEST_F(Ports, NewPortsStartFromTheToolboxDefaults) {
  GrafPort plain;
  OpenPort(&plain);
  EXPECT_EQ(plain.txSize, 12);
  EXPECT_EQ(plain.txMode, srcOr);
  EXPECT_EQ(plain.pnMode, patCopy);
  EXPECT_EQ(plain.pnSize.h, 1);
  EXPECT_EQ(plain.fgColor, blackColor);
  EXPECT_EQ(plain.bkColor, whiteColor);
  EXPECT_EQ(plain.pnPat.pat[0], 0xFF);
  const Rect& clip = (**plain.clipRgn).rgnBBox;
  EXPECT_EQ(clip.top, -16383);
  EXPECT_EQ(clip.right, 16383);
  EXPECT_EQ((**plain.visRgn).rgnBBox.left, -16383);
  EXPECT_GT(plain.patStretch, 0);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(plain.portBits.baseAddr), 0x8000u + plain.patStretch);
  EXPECT_EQ(plain.portRect.right, vars.screenBits.bounds.right);

  CGrafPort colour;
  OpenCPort(&colour);
  EXPECT_EQ(UInt16(colour.portVersion), 0xC000);
  EXPECT_EQ(colour.rgbFgColor.red, 0);
  EXPECT_EQ(colour.rgbBkColor.green, 0xFFFF);
  ASSERT_NE(colour.portPixMap, nullptr);
  EXPECT_EQ(reinterpret_cast<uintptr_t>((**colour.portPixMap).baseAddr),
            0x8000u + colour.patStretch);
  ASSERT_NE(colour.grafVars, nullptr);
  const GrafVars& gv = *reinterpret_cast<GrafVars*>(*colour.grafVars);
  EXPECT_EQ(gv.rgbHiliteColor.red, vars.HiliteRGB.red);
  EXPECT_EQ(UInt16(gv.pmFlags), 0xC000);
  ASSERT_NE(colour.pnPixPat, nullptr);
  EXPECT_EQ((**colour.pnPixPat).pat1Data.pat[0], 0xFF);

  // Closing the current port makes the screen port current; closing another
  // leaves the current one alone.
  SetPort(&plain);
  ClosePort(&plain);
  EXPECT_EQ(vars.thePort, screen);
  EXPECT_EQ(plain.patStretch, -1);
  SetPort(reinterpret_cast<GrafPtr>(&colour));
  GrafPort other;
  OpenPort(&other);
  SetPort(reinterpret_cast<GrafPtr>(&colour));
  ClosePort(&other);
  EXPECT_EQ(vars.thePort, reinterpret_cast<GrafPtr>(&colour));
  CloseCPort(&colour);
}

// Slot 63 is kept for the library's own short-lived ports, so the screen
// port and 62 more fill the table.
TEST_F(Ports, SixtyFourthPortFailsWithMemFullAndStaysHarmless) {
  std::vector<GrafPort> ports(62);
  for (GrafPort& p : ports) {
    OpenPort(&p);
    ASSERT_EQ(QDError(), noErr);
  }
  GrafPort extra{};
  OpenPort(&extra);
  EXPECT_EQ(QDError(), memFullErr);
  EXPECT_EQ(extra.patStretch, -1);
  SetPort(&extra);  // drawing into it does nothing and crashes nothing
  MoveTo(1, 1);
  LineTo(10, 10);
  PenSize(3, 3);
  ForeColor(redColor);
  ClosePort(&extra);
  for (GrafPort& p : ports) ClosePort(&p);
  GrafPort again;
  OpenPort(&again);
  EXPECT_EQ(QDError(), noErr);
  ClosePort(&again);
}

TEST_F(Ports, LinesCoverEveryPixelThePenTouches) {
  GrafPort port;
  OpenOnCanvas(&port);
  MoveTo(10, 10);
  LineTo(20, 10);  // both ends included
  EXPECT_EQ(canvas.Row(10, 8, 23), "..###########..");
  EXPECT_EQ(canvas.Row(11, 8, 23), "...............");
  MoveTo(30, 30);
  LineTo(30, 30);  // a 1 by 1 pen at one point is one pixel
  EXPECT_EQ(canvas.Row(30, 29, 32), ".#.");
  EXPECT_EQ(canvas.Row(31, 29, 32), "...");

  // The pen hangs below and to the right of the point.
  canvas.Clear();
  PenSize(3, 2);
  MoveTo(10, 40);
  LineTo(14, 40);
  EXPECT_EQ(canvas.Row(39, 8, 19), "...........");
  EXPECT_EQ(canvas.Row(40, 8, 19), "..#######..");
  EXPECT_EQ(canvas.Row(41, 8, 19), "..#######..");
  EXPECT_EQ(canvas.Row(42, 8, 19), "...........");

  // A diagonal with a wide pen sweeps the pen from one end to the other.
  canvas.Clear();
  PenSize(4, 4);
  MoveTo(5, 5);
  LineTo(25, 25);
  EXPECT_EQ(canvas.Pixel(5, 5), kBlack);
  EXPECT_EQ(canvas.Pixel(8, 8), kBlack);
  EXPECT_EQ(canvas.Pixel(28, 28), kBlack);
  EXPECT_EQ(canvas.Pixel(29, 29), kWhite);
  EXPECT_EQ(canvas.Pixel(4, 4), kWhite);
  EXPECT_EQ(canvas.Pixel(25, 5), kWhite);
  Point pen;
  GetPen(&pen);
  EXPECT_EQ(pen.h, 25);
  EXPECT_EQ(pen.v, 25);

  // A thin diagonal includes both ends.
  canvas.Clear();
  PenNormal();
  MoveTo(40, 10);
  Line(10, 5);
  EXPECT_EQ(canvas.Pixel(40, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(50, 15), kBlack);
  ClosePort(&port);
}

TEST_F(Ports, PenVisibilityModeAndPatternDecideWhatIsDrawn) {
  GrafPort port;
  OpenOnCanvas(&port);
  HidePen();
  MoveTo(0, 5);
  LineTo(40, 5);
  ShowPen();
  PenSize(0, 1);
  LineTo(40, 6);
  PenSize(1, 1);
  PenMode(hilite);  // stored as 42, which GDI cannot draw
  EXPECT_EQ(port.pnMode, 42);
  LineTo(0, 7);
  for (int y = 4; y < 8; ++y) EXPECT_EQ(canvas.Row(y, 0, 41), std::string(41, '.')) << y;
  PenMode(transparent);
  EXPECT_EQ(port.pnMode, transparent);

  // patXor inverts: twice over the same line gives white back.
  PenMode(patXor);
  MoveTo(0, 20);
  LineTo(30, 20);
  EXPECT_EQ(canvas.Pixel(15, 20), kBlack);
  MoveTo(0, 20);
  LineTo(30, 20);
  EXPECT_EQ(canvas.Row(20, 0, 31), std::string(31, '.'));

  // A gray pen draws every other pixel of a row; the pattern is aligned to
  // the device so rows alternate.
  PenMode(patCopy);
  PenPat(&vars.gray);
  MoveTo(0, 30);
  LineTo(15, 30);
  MoveTo(0, 31);
  LineTo(15, 31);
  EXPECT_EQ(canvas.Row(30, 0, 8), "#.#.#.#.");
  EXPECT_EQ(canvas.Row(31, 0, 8), ".#.#.#.#");
  // A white pen on black erases.
  PenPat(&vars.black);
  PenSize(1, 3);
  MoveTo(0, 40);
  LineTo(10, 40);
  PenPat(&vars.white);
  PenSize(1, 1);
  MoveTo(0, 41);
  LineTo(10, 41);
  EXPECT_EQ(canvas.Row(41, 0, 11), std::string(11, '.'));
  EXPECT_EQ(canvas.Row(42, 0, 11), std::string(11, '#'));
  ClosePort(&port);
}

TEST_F(Ports, OriginAndClipShiftWhatTheDeviceSees) {
  GrafPort port;
  OpenOnCanvas(&port);
  SetOrigin(100, 100);
  EXPECT_EQ(port.portRect.left, 100);
  MoveTo(110, 110);
  LineTo(110, 110);
  EXPECT_EQ(canvas.Pixel(10, 10), kBlack);
  // The clip stays in local coordinates.
  Rect clip{120, 120, 130, 130};
  ClipRect(&clip);
  MoveTo(100, 125);
  LineTo(160, 125);
  EXPECT_EQ(canvas.Row(25, 18, 32), "..##########..");
  RgnHandle got = NewRgn();
  GetClip(got);
  EXPECT_EQ((**got).rgnBBox.left, 120);
  // An empty clip draws nothing.
  SetEmptyRgn(got);
  SetClip(got);
  MoveTo(100, 140);
  LineTo(160, 140);
  EXPECT_EQ(canvas.Row(40, 0, 64), std::string(64, '.'));
  DisposeRgn(got);
  ClosePort(&port);
}

TEST_F(Ports, CoordinatesFollowTheWindowAndTheOrigin) {
  ShowWindow(mainWindow, SW_SHOWNORMAL);
  HDC dc = GetDC(mainWindow);
  GrafPort port;
  OpenPort(&port);
  KWE_SwaphDC(dc, true);
  POINT client{0, 0};
  ClientToScreen(mainWindow, &client);
  Point p = Pt(0, 0);
  LocalToGlobal(&p);
  EXPECT_EQ(p.h, client.x);
  EXPECT_EQ(p.v, client.y);
  SetOrigin(50, 20);
  p = Pt(50, 20);
  LocalToGlobal(&p);
  EXPECT_EQ(p.h, client.x);
  EXPECT_EQ(p.v, client.y);
  p = Pt(client.x + 5, client.y + 7);
  GlobalToLocal(&p);
  EXPECT_EQ(p.h, 55);
  EXPECT_EQ(p.v, 27);
  // Drawing lands in the window.
  MoveTo(52, 22);
  LineTo(52, 22);
  GdiFlush();
  EXPECT_EQ(GetPixel(dc, 2, 2), RGB(0, 0, 0));
  KWE_SwaphDC(dc, false);
  ClosePort(&port);
  ReleaseDC(mainWindow, dc);
}

// With brush alignment on, a pattern lines up with the screen rather than
// with the window: a window whose client area starts on an odd screen
// diagonal shifts the gray pattern by one pixel.
TEST_F(Ports, BrushAlignmentFollowsTheScreenPosition) {
  ShowWindow(mainWindow, SW_SHOWNORMAL);
  for (int x = 40; x < 42; ++x) {
    SetWindowPos(mainWindow, HWND_TOP, x, 40, 300, 200, SWP_SHOWWINDOW);
    POINT client{0, 0};
    ClientToScreen(mainWindow, &client);
    if ((client.x + client.y) % 2) break;
  }
  POINT client{0, 0};
  ClientToScreen(mainWindow, &client);
  ASSERT_EQ((client.x + client.y) % 2, 1);
  HDC dc = GetDC(mainWindow);
  GrafPort port;
  OpenPort(&port);
  KWE_SwaphDC(dc, true);
  PenPat(&vars.gray);
  auto blackAt = [&](int x, int y) { return GetPixel(dc, x, y) == RGB(0, 0, 0); };
  MoveTo(0, 10);
  LineTo(20, 10);
  GdiFlush();
  bool unaligned = blackAt(4, 10);
  KWE_BrushAlign(1);
  MoveTo(0, 10);
  LineTo(20, 10);
  GdiFlush();
  EXPECT_NE(blackAt(4, 10), unaligned);
  EXPECT_EQ(blackAt(4, 10), (client.x + 4 + client.y + 10) % 2 == 0);
  KWE_BrushAlign(-1);
  KWE_SwaphDC(dc, false);
  ClosePort(&port);
  ReleaseDC(mainWindow, dc);
}

TEST_F(Ports, OldAndRgbColours) {
  GrafPort port;
  OpenOnCanvas(&port);
  ForeColor(redColor);
  MoveTo(0, 0);
  LineTo(5, 0);
  EXPECT_EQ(canvas.Pixel(2, 0), 0xDD0806u);
  RGBColor rgb;
  GetForeColor(&rgb);
  EXPECT_EQ(rgb.red, 0xDD6B);
  // No exact row: the first agreeing in bits 0x1E0 (red's 0xC0).
  ForeColor(0xCF);
  EXPECT_EQ(port.fgColor, 0xCF);
  GetForeColor(&rgb);
  EXPECT_EQ(rgb.green, 0x08C2);
  // No row agrees at all: nothing changes.
  ForeColor(0x1E5);
  EXPECT_EQ(port.fgColor, 0xCF);
  // A plain port takes the nearest of its eight colours.
  RGBColor purple{0x8000, 0, 0x8000};
  RGBForeColor(&purple);
  EXPECT_EQ(port.fgColor, magentaColor);
  BackColor(blueColor);
  GetBackColor(&rgb);
  EXPECT_EQ(rgb.blue, 0xD400);

  // Reading back: GetPixel is true for anything not white.
  EXPECT_TRUE(GetPixel(2, 0));
  EXPECT_FALSE(GetPixel(2, 1));
  RGBColor read;
  GetCPixel(2, 0, &read);
  EXPECT_EQ(read.red, 0xDDDD);
  EXPECT_EQ(read.green, 0x0808);
  GetCPixel(500, 500, &read);  // outside the DC and no window behind it
  EXPECT_EQ(read.red, 0x8080);
  ClosePort(&port);

  CGrafPort colour;
  OpenCPort(&colour);
  KWE_SwaphDC(canvas.Dc(), true);
  RGBColor teal{0x1234, 0x8899, 0xAB00};
  RGBForeColor(&teal);
  MoveTo(0, 10);
  LineTo(3, 10);
  EXPECT_EQ(canvas.Pixel(1, 10), 0x1288ABu);
  GetForeColor(&rgb);
  EXPECT_EQ(rgb.green, 0x8899);
  RGBColor op{1, 2, 3};
  OpColor(&op);
  EXPECT_EQ(reinterpret_cast<GrafVars*>(*colour.grafVars)->rgbOpColor.blue, 3);
  CloseCPort(&colour);

  RGBColor red{0xFFFF, 0, 0};
  InvertColor(&red);  // half a turn of the hue circle
  EXPECT_LT(red.red, 0x0100);
  EXPECT_GT(red.green, 0xFF00);
  EXPECT_GT(red.blue, 0xFF00);
  SInt32 seed = GetCTSeed();
  EXPECT_EQ(GetCTSeed(), seed + 1);
}

TEST_F(Ports, PenStateRoundTrips) {
  GrafPort port;
  OpenOnCanvas(&port);
  MoveTo(3, 4);
  PenSize(2, 5);
  PenMode(patOr);
  PenPat(&vars.ltGray);
  PenState saved;
  GetPenState(&saved);
  PenNormal();
  MoveTo(0, 0);
  EXPECT_EQ(port.pnSize.v, 1);
  SetPenState(&saved);
  EXPECT_EQ(port.pnLoc.h, 3);
  EXPECT_EQ(port.pnSize.v, 5);
  EXPECT_EQ(port.pnMode, patOr);
  EXPECT_EQ(port.pnPat.pat[1], 0x22);
  ClosePort(&port);

  // A colour pen pattern travels as its handle, marked by bit 15 of the mode.
  CGrafPort colour;
  OpenCPort(&colour);
  PixPatHandle pp = reinterpret_cast<PixPatHandle>(NewHandleClear(sizeof(PixPat)));
  (**pp).patType = 1;
  PenPixPat(pp);
  GetPenState(&saved);
  EXPECT_EQ(UInt16(saved.pnMode) & 0x8000, 0x8000);
  PenPat(&vars.gray);
  EXPECT_NE(colour.pnPixPat, pp);
  SetPenState(&saved);
  EXPECT_EQ(colour.pnPixPat, pp);
  EXPECT_EQ(colour.pnMode, patCopy);
  CloseCPort(&colour);
  DisposeHandle(reinterpret_cast<Handle>(pp));
}

TEST_F(Ports, RandomFollowsTheMinimalStandardGenerator) {
  int64_t seed = 0x01234567;
  for (int i = 0; i < 1000; ++i) {
    seed = seed * 16807 % 0x7FFFFFFF;
    ASSERT_EQ(Random(), SInt16(seed >> 14)) << i;
  }
}

TEST_F(Ports, PointCalls) {
  Point p = Pt(10, 20);
  AddPt(Pt(1, 2), &p);
  EXPECT_TRUE(EqualPt(p, Pt(11, 22)));
  SubPt(Pt(32767, 0), &p);  // word arithmetic wraps
  EXPECT_EQ(p.h, SInt16(11 - 32767));
  SetPt(&p, 7, 8);
  EXPECT_EQ(p.v, 8);
  Rect r;
  Pt2Rect(Pt(30, 5), Pt(10, 50), &r);
  EXPECT_EQ(r.left, 10);
  EXPECT_EQ(r.bottom, 50);
  Rect src{0, 0, 10, 20}, dst{0, 0, 30, 10};
  p = Pt(4, 5);
  ScalePt(&p, &src, &dst);
  EXPECT_EQ(p.h, 2);
  EXPECT_EQ(p.v, 15);
  Rect flat{0, 0, 10, 0};
  p = Pt(4, 5);
  MapPt(&p, &flat, &dst);
  EXPECT_EQ(p.h, 0);
}

using LineProc = void(KWE_CALL*)(Point);
int g_lineCalls = 0;
Point g_lastLineEnd;
void KWE_CALL CountingLineProc(Point to) {
  ++g_lineCalls;
  g_lastLineEnd = to;
  StdLine(to);  // draws once, without calling this procedure again
}

TEST_F(Ports, ApplicationLineProcedureSeesEveryLine) {
  GrafPort port;
  OpenOnCanvas(&port);
  QDProcs procs;
  SetStdProcs(&procs);
  auto stdLine =
      reinterpret_cast<ProcPtr>(GetProcAddress(GetModuleHandleA("KWEJMP.dll"), "StdLine"));
  EXPECT_EQ(procs.lineProc, stdLine);
  procs.lineProc = reinterpret_cast<ProcPtr>(&CountingLineProc);
  port.grafProcs = &procs;
  MoveTo(1, 1);
  LineTo(9, 1);
  Line(0, 5);
  EXPECT_EQ(g_lineCalls, 2);
  EXPECT_EQ(g_lastLineEnd.v, 6);
  EXPECT_EQ(canvas.Row(1, 0, 11), ".#########.");
  EXPECT_EQ(procs.lineProc, reinterpret_cast<ProcPtr>(&CountingLineProc));
  port.grafProcs = nullptr;
  ClosePort(&port);
}

TEST_F(Ports, RegionRecordingTracesThePen) {
  GrafPort port;
  OpenOnCanvas(&port);
  OpenRgn();
  OpenRgn();  // starting again drops the first recording
  MoveTo(10, 10);
  LineTo(50, 10);
  LineTo(10, 50);
  LineTo(10, 10);
  RgnHandle triangle = NewRgn();
  CloseRgn(triangle);
  EXPECT_EQ(port.rgnSave, nullptr);
  EXPECT_EQ(port.pnVis, 0);
  EXPECT_EQ(canvas.Row(10, 0, 64), std::string(64, '.'));  // the pen was hidden
  EXPECT_TRUE(PtInRgn(Pt(15, 15), triangle));
  EXPECT_FALSE(PtInRgn(Pt(45, 45), triangle));
  EXPECT_EQ((**triangle).rgnBBox.right, 50);
  CloseRgn(triangle);  // no recording: nothing changes
  EXPECT_TRUE(PtInRgn(Pt(15, 15), triangle));
  DisposeRgn(triangle);
  ClosePort(&port);
}

TEST_F(Ports, BadInputDrawsNothingAndBreaksNothing) {
  GrafPort port;
  OpenOnCanvas(&port);
  // An inverted clip rectangle is empty.
  Rect inverted{30, 30, 10, 10};
  ClipRect(&inverted);
  MoveTo(0, 20);
  LineTo(60, 20);
  EXPECT_EQ(canvas.Row(20, 0, 64), std::string(64, '.'));
  Rect all{-32768, -32768, 32767, 32767};
  ClipRect(&all);
  // Coordinates wrap at 16 bits as QuickDraw's word arithmetic does.
  MoveTo(32767, 5);
  Line(10, 0);
  Point pen;
  GetPen(&pen);
  EXPECT_EQ(pen.h, -32759);
  EXPECT_EQ(canvas.Row(5, 0, 64), std::string(64, '#'));
  // A region disposed twice, and a recording never closed, are tolerated.
  RgnHandle r = NewRgn();
  DisposeRgn(r);
  DisposeRgn(r);
  OpenRgn();
  LineTo(10, 10);
  ClosePort(&port);
  // A closed port and no port at all are drawn into harmlessly.
  SetPort(&port);
  LineTo(5, 5);
  ForeColor(redColor);
  SetOrigin(3, 3);
  GetClip(r = NewRgn());
  DisposeRgn(r);
  ClosePort(&port);
  EXPECT_EQ(canvas.Row(10, 0, 64), std::string(64, '.'));
}

TEST_F(Ports, WindowManagerDrawsWithTheScreenPortIntoAWindowDC) {
  HDC dc = GetDC(mainWindow);
  GrafPort port;
  OpenPort(&port);
  Rect r{0, 0, 40, 60};
  Rect before = screen->portRect;
  EXPECT_EQ(KWE_SetWMgrPortDC(true, mainWindow, dc, &r), mainWindow);
  EXPECT_EQ(vars.thePort, screen);
  EXPECT_EQ(KWE_GetCurrentDC(), dc);
  EXPECT_EQ(screen->portRect.right, 60);
  SetPort(&port);  // the window DC stays with the screen port meanwhile
  SetPort(screen);
  EXPECT_EQ(KWE_GetCurrentDC(), dc);
  KWE_SetWMgrPortDC(false, mainWindow, dc, &r);
  EXPECT_EQ(vars.thePort, &port);
  EXPECT_EQ(screen->portRect.right, before.right);
  EXPECT_NE(KWE_GetCurrentDC(), dc);
  ClosePort(&port);
  ReleaseDC(mainWindow, dc);
}

// Open, draw with changing pens, colours, clips and patterns, record a
// region now and then, close.
void DrawPortCycles(Canvas& canvas, HostVariables& vars, int cycles) {
  for (int i = 0; i < cycles; ++i) {
    CGrafPort storage;
    GrafPtr port = reinterpret_cast<GrafPtr>(&storage);
    if (i % 2)
      OpenPort(port);
    else
      OpenCPort(&storage);
    KWE_SwaphDC(canvas.Dc(), true);
    Rect clip{SInt16(i % 7), 0, 40, 40};
    ClipRect(&clip);
    PenSize(SInt16(1 + i % 3), 1);
    ForeColor(i % 3 ? redColor : blueColor);
    PenPat(i % 5 ? &vars.gray : &vars.black);
    MoveTo(0, 0);
    LineTo(SInt16(i % 30), 20);
    if (i % 50 == 0) {
      OpenRgn();
      LineTo(5, 30);
      RgnHandle r = NewRgn();
      CloseRgn(r);
      DisposeRgn(r);
    }
    ClosePort(port);
  }
}

// Ports, pens, brushes and regions give every GDI object back.
TEST_F(Ports, GdiObjectsStayFlatOverManyCycles) {
  int before = LiveGdiObjects();
  if (before < 0) GTEST_SKIP() << "no GDI handle table to count in";
  HPEN kept[20];  // the count really moves
  for (HPEN& p : kept) p = CreatePen(PS_SOLID, 1, 0);
  ASSERT_EQ(LiveGdiObjects(), before + 20);
  for (HPEN p : kept) DeleteObject(p);

  // The first cycles make what the library keeps for the session (the
  // shared memory DC); from then on nothing may grow.
  for (int round = 0; round < 2; ++round) {
    before = LiveGdiObjects();
    DrawPortCycles(canvas, vars, round == 0 ? 10 : 10000);
  }
  EXPECT_EQ(LiveGdiObjects(), before);
}

}  // namespace
