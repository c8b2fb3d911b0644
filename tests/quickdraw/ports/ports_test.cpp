// Ports through the DLL: opened over a DIB section or a real window, drawn
// with the pen and in shapes, read back pixel by pixel.
#include <gtest/gtest.h>
#include <windows.h>

#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Fonts.h"
#include "KWEPorts.h"
#include "KWERegions.h"
#include "KWESession.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class Ports : public PortTest {};

Point Pt(int h, int v) { return Point{SInt16(v), SInt16(h)}; }

// The screen port leaves room for a frame window's frame, caption and menu
// and draws into the screen DC; SetPort(nil) goes back to it.
TEST_F(Ports, InitGrafFillsTheGlobalsAndOpensTheScreenPort) {
  ASSERT_NE(screen, nullptr);
  EXPECT_EQ(vars.WMgrPort, screen);
  EXPECT_EQ(QDError(), noErr);
  int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  const Rect& bounds = vars.screenBits.bounds;
  EXPECT_EQ(std::make_tuple(bounds.bottom, bounds.right), std::make_tuple(height, width));
  int reserved = 2 * GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) +
                 GetSystemMetrics(SM_CYMENU);
  EXPECT_EQ(std::make_tuple(screen->portRect.bottom, screen->portRect.right),
            std::make_tuple(height - reserved, width));
  SetPort(nullptr);
  EXPECT_EQ(vars.thePort, screen);
  EXPECT_NE(KWE_GetCurrentDC(), nullptr);

  // Closing the current port makes the screen port current: it draws on the
  // screen as soon as the program draws there, and the screen DC it takes is
  // given back when another port is set, cycle after cycle.
  int before = LiveGdiObjects();
  Rect r{40, 40, 60, 60};
  for (int cycle = 0; cycle < 40; ++cycle) {
    GrafPort temporary;
    OpenPort(&temporary);
    ClosePort(&temporary);
    ASSERT_EQ(vars.thePort, screen) << cycle;
    if (cycle < 2) {
      EraseRect(&r);
      EXPECT_FALSE(GetPixel(50, 50)) << cycle;
      PaintRect(&r);
      EXPECT_TRUE(GetPixel(50, 50)) << "drawn on the screen, cycle " << cycle;
      EraseRect(&r);
    }
    SetPort(&port);
  }
  if (before >= 0) {
    EXPECT_LE(LiveGdiObjects(), before + 2);
  }
}

// Slot 63 is kept for the library's own short-lived ports, so the screen
// port, the fixture's and 61 more fill the table.
TEST_F(Ports, SixtyFourthPortFailsWithMemFullAndStaysHarmless) {
  std::vector<GrafPort> ports(61);
  for (GrafPort& p : ports) {
    OpenPort(&p);
    ASSERT_EQ(QDError(), noErr);
  }
  GrafPort extra{};
  OpenPort(&extra);
  EXPECT_EQ(QDError(), memFullErr);
  SetPort(&extra);  // drawing into it does nothing and crashes nothing
  MoveTo(1, 1);
  LineTo(10, 10);
  ForeColor(redColor);
  ClosePort(&extra);
  for (GrafPort& p : ports) ClosePort(&p);
  OpenPort(&extra);  // the slots are free again
  EXPECT_EQ(QDError(), noErr);
  ClosePort(&extra);
}

// Thin lines are compared with GDI's pixel by pixel in line_pixels_test;
// here what the pen's size, visibility, mode and pattern make of a line.
TEST_F(Ports, PenSizeVisibilityModeAndPattern) {
  // The pen hangs below and to the right of the point.
  PenSize(3, 2);
  MoveTo(10, 40);
  LineTo(14, 40);
  EXPECT_EQ(canvas.Rows(39, 43, 8, 19), "...........|..#######..|..#######..|...........|");

  // A diagonal with a wide pen sweeps the pen from one end to the other.
  PenSize(4, 4);
  MoveTo(5, 5);
  LineTo(25, 25);
  ExpectInk("wide diagonal", {{5, 5}, {8, 8}, {28, 28}}, {{29, 29}, {4, 4}, {25, 5}});

  // Line and Move go by (dh, dv).
  PenNormal();
  MoveTo(40, 10);
  Line(10, 5);
  Move(3, -7);
  Line(0, 0);
  ExpectInk("Line and Move", {{50, 15}, {53, 8}}, {{50, 8}, {53, 15}});

  // A pen with no width draws nothing.
  canvas.Clear();
  PenSize(0, 1);
  MoveTo(0, 5);
  LineTo(40, 5);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  PenSize(1, 1);

  // A saved state draws again as it was saved: place, size, mode and a gray
  // pattern aligned to the device, so that rows alternate.
  MoveTo(3, 30);
  PenSize(2, 3);
  PenPat(&vars.gray);
  PenState saved;
  GetPenState(&saved);
  PenNormal();
  MoveTo(0, 0);
  SetPenState(&saved);
  Line(4, 0);
  EXPECT_EQ(canvas.Rows(29, 34, 0, 10), "..........|....#.#.#.|...#.#.#..|....#.#.#.|..........|");
}

// SetOrigin moves the port rectangle to the new origin, keeping its size.
TEST_F(Ports, OriginAndClipShiftWhatTheDeviceSees) {
  Rect before = port.portRect;
  SetOrigin(100, 50);
  const Rect& now = port.portRect;
  EXPECT_EQ(std::make_tuple(now.top, now.left, now.bottom, now.right),
            std::make_tuple(50, 100, before.bottom + 50, before.right + 100));
  MoveTo(110, 60);
  LineTo(110, 60);
  EXPECT_EQ(canvas.Pixel(10, 10), kBlack);
  // The clip stays in local coordinates.
  Rect clip{70, 120, 80, 130};
  ClipRect(&clip);
  MoveTo(100, 75);
  LineTo(160, 75);
  EXPECT_EQ(canvas.Row(25, 18, 32), "..##########..");
  // An empty clip draws nothing.
  RgnHandle got = NewRgn();
  SetClip(got);
  MoveTo(100, 90);
  LineTo(160, 90);
  EXPECT_EQ(canvas.Row(40, 0, 64), std::string(64, '.'));
  DisposeRgn(got);
}

// A port on a window's DC: local coordinates follow the window and the
// origin. With brush alignment on, a pattern lines up with the screen rather
// than with the window: a client area starting on an odd screen diagonal
// shifts the gray pattern by one pixel.
TEST_F(Ports, WindowPortsFollowTheWindowsPlaceOnTheScreen) {
  ShowWindow(mainWindow, SW_SHOWNORMAL);
  POINT client{0, 0};
  for (int x = 40; x < 42 && (client.x + client.y) % 2 == 0; ++x) {
    SetWindowPos(mainWindow, HWND_TOP, x, 40, 300, 200, SWP_SHOWWINDOW);
    client = POINT{0, 0};
    ClientToScreen(mainWindow, &client);
  }
  ASSERT_EQ((client.x + client.y) % 2, 1);
  HDC dc = GetDC(mainWindow);
  GrafPort other;
  OpenPort(&other);
  KWE_SwaphDC(dc, true);
  Point p = Pt(0, 0);
  LocalToGlobal(&p);
  EXPECT_TRUE(EqualPt(p, Pt(client.x, client.y)));
  SetOrigin(50, 20);
  p = Pt(50, 20);
  LocalToGlobal(&p);
  EXPECT_TRUE(EqualPt(p, Pt(client.x, client.y)));
  p = Pt(client.x + 5, client.y + 7);
  GlobalToLocal(&p);
  EXPECT_TRUE(EqualPt(p, Pt(55, 27)));
  MoveTo(52, 22);
  LineTo(52, 22);
  GdiFlush();
  EXPECT_EQ(GetPixel(dc, 2, 2), RGB(0, 0, 0)) << "drawing lands in the window";

  SetOrigin(0, 0);
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
  ClosePort(&other);
  ReleaseDC(mainWindow, dc);
}

// The old colour constants as drawn: an exact match, else the first of the
// eight agreeing in bits 0x1E0, else in 0x1C0; no agreement changes nothing.
// A plain port takes the nearest of its eight for an RGB colour; a colour
// port draws the RGB colour itself.
TEST_F(Ports, OldAndRgbColoursAsDrawn) {
  const RGBColor kPurple{0x8000, 0, 0x8000}, kGray{0x7FFF, 0x7FFF, 0x7FFF},
      kYellow{0xFFFF, 0xFFFF, 0};
  const struct {
    SInt32 constant;  // or -1 for the RGB colour
    RGBColor rgb;
    uint32_t drawn;
  } cases[] = {
      {blackColor, {}, 0x000000},   {whiteColor, {}, 0xFFFFFF},  {redColor, {}, 0xDD0806},
      {greenColor, {}, 0x008011},   {blueColor, {}, 0x0000D4},   {cyanColor, {}, 0x02ABEA},
      {magentaColor, {}, 0xF20884}, {yellowColor, {}, 0xFCF305}, {0xCF, {}, 0xDD0806},
      {0x1D, {}, 0xFFFFFF},         {0x15F, {}, 0x008011},       {0x1E5, {}, 0x008011},
      {-1, kPurple, 0xF20884},      {-1, kGray, 0x000000},       {-1, kYellow, 0xFCF305},
  };
  for (const auto& c : cases) {
    if (c.constant < 0)
      RGBForeColor(&c.rgb);
    else
      ForeColor(c.constant);
    MoveTo(0, 0);
    LineTo(5, 0);
    EXPECT_EQ(canvas.Pixel(2, 0), c.drawn) << "case " << &c - cases;
    RGBColor read;  // each byte widened to a component
    GetCPixel(2, 0, &read);
    EXPECT_EQ(std::make_tuple(read.red, read.green, read.blue),
              std::make_tuple((c.drawn >> 16) * 0x101, (c.drawn >> 8 & 0xFF) * 0x101,
                              (c.drawn & 0xFF) * 0x101))
        << "case " << &c - cases;
  }
  BackColor(blueColor);
  Rect r{2, 0, 3, 5};
  EraseRect(&r);
  EXPECT_EQ(canvas.Pixel(2, 2), 0x0000D4u);
  ClosePort(&port);

  CGrafPort colour;
  OpenCPort(&colour);
  KWE_SwaphDC(canvas.Dc(), true);
  RGBColor teal{0x1234, 0x8899, 0xAB00}, read;
  RGBForeColor(&teal);
  MoveTo(0, 10);
  LineTo(3, 10);
  EXPECT_EQ(canvas.Pixel(1, 10), 0x1288ABu);

  // GetPixel is true for anything not white; GetCPixel answers gray where
  // nothing can be read.
  EXPECT_TRUE(GetPixel(1, 10));
  EXPECT_FALSE(GetPixel(1, 11));
  GetCPixel(500, 500, &read);
  EXPECT_EQ(read.red, 0x8080);
  CloseCPort(&colour);
}

TEST_F(Ports, RandomFollowsTheMinimalStandardGenerator) {
  int64_t seed = 0x01234567;
  for (int i = 0; i < 1000; ++i) {
    seed = seed * 16807 % 0x7FFFFFFF;
    ASSERT_EQ(Random(), SInt16(seed >> 14)) << i;
  }
}

int g_lineCalls = 0, g_rectCalls = 0;
Point g_lastLineEnd;
void KWE_CALL CountingLineProc(Point to) {
  ++g_lineCalls;
  g_lastLineEnd = to;
  StdLine(to);  // draws once, without calling this procedure again
}
void KWE_CALL CountingRectProc(SInt16 verb, const Rect* r) {
  ++g_rectCalls;
  StdRect(verb, r);
}

// The port's own procedures see every line and rectangle and may draw them
// through the standard ones.
TEST_F(Ports, ApplicationProceduresSeeEveryLineAndRectangle) {
  QDProcs procs;
  SetStdProcs(&procs);
  procs.lineProc = reinterpret_cast<ProcPtr>(&CountingLineProc);
  procs.rectProc = reinterpret_cast<ProcPtr>(&CountingRectProc);
  port.grafProcs = &procs;
  MoveTo(1, 1);
  LineTo(9, 1);
  Line(0, 5);
  EXPECT_EQ(g_lineCalls, 2);
  EXPECT_EQ(g_lastLineEnd.v, 6);
  EXPECT_EQ(canvas.Row(1, 0, 11), ".#########.");
  Rect r{10, 1, 14, 5};
  PaintRect(&r);
  FillRect(&r, &vars.gray);
  EXPECT_EQ(g_rectCalls, 2);
  EXPECT_EQ(BlackIn(0, 10, 8, 14), 8);  // the gray fill last
  port.grafProcs = nullptr;
}

// Framed shapes in a recording are cut out of it (exclusive-or).
TEST_F(Ports, RegionRecordingTracesThePen) {
  OpenRgn();
  OpenRgn();  // starting again drops the first recording
  MoveTo(10, 10);
  LineTo(50, 10);
  LineTo(10, 50);
  LineTo(10, 10);
  Rect hole{15, 15, 20, 20};
  FrameRect(&hole);
  RgnHandle triangle = NewRgn();
  CloseRgn(triangle);
  EXPECT_EQ(canvas.Row(10, 0, 64), std::string(64, '.'));  // the pen was hidden
  EXPECT_TRUE(PtInRgn(Pt(12, 12), triangle));
  EXPECT_FALSE(PtInRgn(Pt(17, 17), triangle));
  EXPECT_FALSE(PtInRgn(Pt(45, 45), triangle));
  EXPECT_EQ((**triangle).rgnBBox.right, 50);
  CloseRgn(triangle);  // no recording: nothing changes
  EXPECT_TRUE(PtInRgn(Pt(12, 12), triangle));
  DisposeRgn(triangle);
}

// An inverted clip rectangle is empty; coordinates wrap at 16 bits as
// QuickDraw's word arithmetic does.
TEST_F(Ports, InvertedClipsAndWrappingCoordinates) {
  Rect inverted{30, 30, 10, 10};
  ClipRect(&inverted);
  MoveTo(0, 20);
  LineTo(60, 20);
  EXPECT_EQ(canvas.Row(20, 0, 64), std::string(64, '.'));
  Rect all{-32768, -32768, 32767, 32767};
  ClipRect(&all);
  MoveTo(32767, 5);
  Line(10, 0);
  EXPECT_EQ(Pen().h, -32759);
  EXPECT_EQ(canvas.Row(5, 0, 64), std::string(64, '#'));
}

// Ports opened and closed, and between them changing pens, colours,
// clips, patterns, shapes, regions of both kinds, recordings, pictures and
// text in changing fonts, faces and modes: every GDI object and every byte
// of the heap comes back. The first cycles make what the library keeps for
// the session (the shared memory DC, the fonts it has met).
TEST_F(Ports, GdiObjectsStayFlatOverManyCycles) {
  int before = LiveGdiObjects();
  if (before < 0) GTEST_SKIP() << "no GDI handle table to count in";
  long freeBefore = 0;

  const Pattern* patterns[] = {&vars.black, &vars.gray, &vars.ltGray, &vars.dkGray, &vars.white};
  const SInt16 fonts[] = {systemFont, applFont, geneva, monaco, times, helvetica, courier, 999};
  RgnHandle ell = RegionOf({{0, 0, 10, 20}, {10, 0, 20, 10}});
  UInt8 rows[16] = {0xF0, 0x0F};
  BitMap bits{reinterpret_cast<Ptr>(rows), 1, Rect{0, 0, 16, 8}};
  CGrafPort storage;
  GrafPtr cycling = reinterpret_cast<GrafPtr>(&storage);
  for (int i = 0; i < 10200; ++i) {
    if (i == 200) before = LiveGdiObjects();
    if (i % 10 == 0) {
      if (i % 20)
        OpenPort(cycling);
      else
        OpenCPort(&storage);
      KWE_SwaphDC(canvas.Dc(), true);
    }
    Rect clip{SInt16(i % 7), 0, 40, 40},
        r{SInt16(i % 20), SInt16(i % 30), SInt16(25 + i % 20), SInt16(30 + i % 30)};
    ClipRect(&clip);
    PenSize(SInt16(1 + i % 4), SInt16(1 + i % 3));
    PenPat(patterns[i % 5]);
    ForeColor(i % 3 ? redColor : blueColor);
    PenMode(SInt16(8 + i % 8));
    switch (i % 7) {
      case 0: LineTo(SInt16(i % 30), 20); break;
      case 1: FrameRect(&r); break;
      case 2: FillOval(&r, patterns[(i / 7) % 5]); break;
      case 3: FrameRoundRect(&r, 8, 8); break;
      case 4: PaintArc(&r, SInt16(i % 360), 120); break;
      case 5: FrameRgn(ell); break;
      default: FrameOval(&r); break;
    }
    TextFont(fonts[i % 8]);
    TextSize(SInt16(9 + i % 17));
    TextFace(SInt16(i % 8 | (i % 3 ? 0 : extend)));
    TextMode(i % 2 ? srcOr : srcXor);  // srcXor inks through a mask bitmap
    MoveTo(10, 50);
    DrawChar(i % 10 ? 'H' : 18);  // 18: the command key, from the library's bitmap
    RgnHandle rgn = NewRgn();
    UnionRgn(ell, ell, rgn);
    if (i % 100 == 0) {  // every kind on the way: mask, back to Win32, copies
      BitMapToRegion(rgn, &bits);
      UnionRgn(rgn, ell, rgn);
      CopyRgn(ell, rgn);
      InsetRgn(rgn, 1, 1);
    }
    DisposeRgn(rgn);
    if (i % 50 == 0) OpenRgn();  // recorded until the next CloseRgn
    if (i % 50 == 1) {
      rgn = NewRgn();
      CloseRgn(rgn);
      DisposeRgn(rgn);
    }
    if (i % 5 == 0) {  // a picture recorded and played, and a scrap picture
      if (i == 200) freeBefore = FreeMem();
      PicHandle pic = OpenPicture(&r);
      PaintOval(&r);
      DrawChar('x');
      ClosePicture();
      DrawPicture(pic, &r);
      KillPicture(pic);
      pic = KWE_OpenScrapPict(&r);
      PaintOval(&r);
      ClosePicture();
      DrawPicture(pic, &r);
      KillPicture(pic);
    }
    if (i % 10 == 9) ClosePort(cycling);
  }
  EXPECT_LE(LiveGdiObjects(), before + 2);
  EXPECT_GE(FreeMem(), freeBefore - 4096);
  DisposeRgn(ell);
}

// Shapes in the five verbs, probed where Macintosh geometry differs from
// GDI's.
class Shapes : public Ports {};

Rect R(int left, int top, int right, int bottom) {
  return Rect{SInt16(top), SInt16(left), SInt16(bottom), SInt16(right)};
}

TEST_F(Shapes, VerbsUseTheirPatternsAndColours) {
  Rect r = R(0, 0, 8, 2);
  BackPat(&vars.gray);
  EraseRect(&r);
  EXPECT_EQ(canvas.Rows(0, 2, 0, 8), "#.#.#.#.|.#.#.#.#|");
  r = R(0, 4, 8, 5);
  FillRect(&r, &vars.ltGray);  // rows 88 22 ...: row 4 is 0x88
  EXPECT_EQ(canvas.Row(4, 0, 8), "#...#...");
  // In colour, the pattern's 1 bits take the foreground and its 0 bits the
  // background, whichever brush GDI is given for the colours.
  ForeColor(redColor);
  BackColor(blueColor);
  r = R(0, 6, 8, 7);
  FillRect(&r, &vars.gray);  // row 6 is 0xAA
  EXPECT_EQ(canvas.Pixel(0, 6), 0xDD0806u);
  EXPECT_EQ(canvas.Pixel(1, 6), 0x0000D4u);
  ForeColor(blackColor);
  BackColor(whiteColor);
  r = R(10, 10, 14, 14);
  // A colour port's RGB pattern paints in its one colour.
  CGrafPort colour;
  OpenCPort(&colour);
  KWE_SwaphDC(canvas.Dc(), true);
  PixPatHandle pp = reinterpret_cast<PixPatHandle>(NewHandleClear(sizeof(PixPat)));
  RGBColor teal{0x0000, 0x8080, 0x8080};
  MakeRGBPat(pp, &teal);
  FillCRect(&r, pp);
  EXPECT_EQ(canvas.Pixel(12, 12), 0x008080u);
  CloseCPort(&colour);
  DisposeHandle(reinterpret_cast<Handle>(pp));
}

// With bit 7 of HiliteMode cleared, invert highlights: background-coloured
// pixels and highlight-coloured ones trade places, others stay.
TEST_F(Shapes, HighlightingExchangesBackgroundAndHighlightColours) {
  vars.HiliteRGB = RGBColor{0xFFFF, 0xFFFF, 0};
  Rect black = R(0, 0, 4, 4), both = R(0, 0, 8, 4);
  PaintRect(&black);
  vars.HiliteMode = UInt8(vars.HiliteMode & 0x7F);
  InvertRect(&both);
  EXPECT_EQ(vars.HiliteMode & 0x80, 0x80) << "set again after each use";
  ExpectInk("highlighted", {{1, 1}}, {{6, 6}});
  EXPECT_EQ(canvas.Pixel(6, 1), 0xFFFF00u);
  vars.HiliteMode = UInt8(vars.HiliteMode & 0x7F);
  InvertRect(&both);  // and back
  EXPECT_EQ(canvas.Pixel(6, 1), kWhite);
  InvertRect(&both);  // bit 7 set again: a plain invert
  ExpectInk("inverted", {{6, 1}}, {{1, 1}});
}

// Every transfer mode drawn with the gray pattern over black and white: the
// first two pixels lie over black, the next two over white. Source and
// pattern modes draw alike; the arithmetic modes as the nearest Boolean
// mode; the modes GDI cannot draw leave everything as it was.
TEST_F(Shapes, TransferModesOverAKnownBackground) {
  const char* const kBoolean[8] = {"#.#.", "###.", ".##.", ".#..", ".#.#", "##.#", "#..#", "#..."};
  const char* const kNothing = "##..";
  const struct {
    SInt16 mode;
    int as;  // the Boolean mode it draws as, or -1 for nothing
  } cases[] = {
      {srcCopy, 0}, {1, 1},       {2, 2},
      {3, 3},       {4, 4},       {5, 5},
      {6, 6},       {7, 7},       {patCopy, 0},
      {9, 1},       {10, 2},      {11, 3},
      {12, 4},      {13, 5},      {14, 6},
      {15, 7},      {blend, 0},   {addPin, 3},
      {34, 2},      {35, 1},      {36, 1},
      {37, 3},      {subOver, 2}, {adMin, 1},
      {40, 0},      {55, 1},      {grayishTextOr, -1},
      {hilite, -1}, {64, -1},     {16, -1},
      {-1, -1},
  };
  for (const auto& c : cases) {
    canvas.Clear();
    PenMode(patCopy);
    PenPat(&vars.black);
    Rect dark = R(0, 0, 8, 1);
    PaintRect(&dark);
    PenMode(c.mode);
    PenPat(&vars.gray);  // row 0: 0xAA, so even pixels are 1 bits
    Rect both = R(0, 0, 16, 1);
    PaintRect(&both);
    std::string row = canvas.Row(0, 0, 16);
    EXPECT_EQ(row.substr(0, 2) + row.substr(8, 2), c.as < 0 ? kNothing : kBoolean[c.as])
        << "mode " << c.mode;
  }
}

// The outermost columns and rows are in; a frame is the outline alone.
// Angles run clockwise from 12 o'clock: 0 to 90 is the upper-right wedge,
// and a negative arc from 90 is the same one.
TEST_F(Shapes, OvalsArcsAndRoundedRectangles) {
  Rect r = R(0, 0, 40, 20);
  PaintOval(&r);
  ExpectInk("PaintOval", {{20, 10}, {0, 10}, {39, 10}}, {{40, 10}, {0, 0}, {39, 19}});
  canvas.Clear();
  FrameOval(&r);
  ExpectInk("FrameOval", {{0, 10}, {39, 10}, {20, 0}, {20, 19}}, {{20, 10}});

  canvas.Clear();
  r = R(0, 0, 40, 40);
  PaintArc(&r, 0, 90);
  int upperRight = BlackIn(21, 0, 40, 20);
  EXPECT_GT(upperRight, 200);
  EXPECT_EQ(BlackIn(0, 0, 19, 40) + BlackIn(0, 21, 40, 40), 0);
  canvas.Clear();
  PaintArc(&r, 90, -90);
  EXPECT_EQ(BlackIn(21, 0, 40, 20), upperRight);
  canvas.Clear();
  FrameArc(&r, 45, 0);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0) << "an arc of no angle";

  canvas.Clear();
  r = R(0, 0, 30, 30);
  PaintRoundRect(&r, 16, 16);
  ExpectInk("PaintRoundRect", {{15, 0}, {0, 15}, {29, 15}}, {{0, 0}, {29, 29}});
  canvas.Clear();
  FrameRoundRect(&r, 100, 4000);  // diameters clamp to the rectangle: an oval
  ExpectInk("FrameRoundRect", {{0, 15}}, {{15, 15}, {3, 3}});

  SInt16 angle = -1;
  struct {
    int h, v;
    SInt16 want;
  } angles[] = {{20, 0, 0}, {40, 20, 90}, {20, 40, 180}, {0, 20, 270}, {40, 0, 45}, {0, 40, 225}};
  for (const auto& a : angles) {
    PtToAngle(&r, Point{SInt16(a.v * 30 / 40), SInt16(a.h * 30 / 40)}, &angle);
    EXPECT_EQ(angle, a.want) << a.h << "," << a.v;
  }
}

// Ovals, arcs, wedges and rounded rectangles of random sizes (seeded,
// replayable): each shape is worked out once and then moved, so a shape
// must draw the same wherever it goes, and fill, paint and invert must
// cover the same pixels, each once (inverting twice restores the canvas).
TEST_F(Shapes, CurvedShapesDrawAlikeWhereverTheyGo) {
  static Pattern black;
  black = vars.black;
  for (unsigned seed = 1; seed <= 3; ++seed) {
    std::mt19937 random(seed);
    auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int step = 0; step < 60; ++step) {
      int kind = below(4), w = 1 + below(60), h = 1 + below(60);
      SInt16 start = SInt16(below(720) - 360), arc = SInt16(below(720) - 360);
      SInt16 ow = SInt16(below(w + 8)), oh = SInt16(below(h + 8));
      auto draw = [&](void (*verb)(int, const Rect*, SInt16, SInt16, SInt16, SInt16), int x,
                      int y) {
        Rect r = R(x, y, x + w, y + h);
        verb(kind, &r, start, arc, ow, oh);
      };
      auto paint = [](int k, const Rect* r, SInt16 s, SInt16 a, SInt16 ow, SInt16 oh) {
        if (k == 0) PaintOval(r);
        if (k == 1) PaintArc(r, s, a);
        if (k == 2) PaintRoundRect(r, ow, oh);
        if (k == 3) FillArc(r, s, a, &black);
      };
      auto invert = [](int k, const Rect* r, SInt16 s, SInt16 a, SInt16 ow, SInt16 oh) {
        if (k == 0) InvertOval(r);
        if (k == 1 || k == 3) InvertArc(r, s, a);
        if (k == 2) InvertRoundRect(r, ow, oh);
      };
      auto frame = [](int k, const Rect* r, SInt16 s, SInt16 a, SInt16 ow, SInt16 oh) {
        if (k == 0) FrameOval(r);
        if (k == 1 || k == 3) FrameArc(r, s, a);
        if (k == 2) FrameRoundRect(r, ow, oh);
      };
      std::string where = "seed " + std::to_string(seed) + " step " + std::to_string(step);
      canvas.Clear();
      draw(paint, 3, 5);
      std::string painted = canvas.Rows(5, 5 + h, 3, 3 + w);
      canvas.Clear();
      draw(paint, 190 - w, 250 - h);
      EXPECT_EQ(canvas.Rows(250 - h, 250, 190 - w, 190), painted) << where;
      canvas.Clear();
      draw(invert, 100, 40);
      EXPECT_EQ(canvas.Rows(40, 40 + h, 100, 100 + w), painted) << where;
      draw(invert, 100, 40);
      EXPECT_EQ(BlackIn(0, 0, 256, 256), 0) << where;
      draw(frame, 7, 9);
      std::string framed = canvas.Rows(9, 9 + h, 7, 7 + w);
      canvas.Clear();
      draw(frame, 130, 140);
      EXPECT_EQ(canvas.Rows(140, 140 + h, 130, 130 + w), framed) << where;
    }
  }
}

// Rectangles, regions and polygons: the bottom and right edges lie outside,
// invert and erase take back what paint and fill drew, a frame is the
// outline inside the shape.
TEST_F(Shapes, RectanglesRegionsAndPolygons) {
  Rect r = R(10, 10, 20, 20);
  PaintRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 100);
  EXPECT_EQ(BlackIn(10, 10, 20, 20), 100);
  InvertRect(&r);
  RgnHandle ell = RegionOf({R(0, 0, 20, 10), R(0, 10, 10, 20)});
  FillRgn(ell, &vars.black);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 300);
  InvertRgn(ell);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  FrameRgn(ell);
  ExpectInk("FrameRgn", {{0, 0}, {19, 9}, {9, 19}}, {{5, 5}, {15, 15}});
  PaintRgn(ell);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 300) << "the frame lies inside";
  EraseRgn(ell);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  DisposeRgn(ell);

  // The frame of a wider pen: edges of the pen's height and width; empty
  // and inverted rectangles draw nothing.
  PenSize(3, 2);
  Rect frame = R(30, 30, 50, 45), empty = R(5, 5, 5, 20), inverted = R(20, 20, 10, 10);
  FrameRect(&frame);
  PaintRect(&empty);
  FrameRect(&inverted);
  EXPECT_EQ(canvas.Rows(30, 33, 28, 52),
            "..####################..|..####################..|..###..............###..|");
  EXPECT_EQ(canvas.Rows(43, 46, 28, 52),
            "..####################..|..####################..|........................|");
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 2 * 20 * 2 + 2 * 3 * 11);
  PenNormal();

  canvas.Clear();
  PolyHandle triangle = OpenPoly();
  MoveTo(10, 5);
  LineTo(40, 5);
  LineTo(10, 50);
  LineTo(10, 5);
  ClosePoly();
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);  // recorded, not drawn
  const Rect& box = (**triangle).polyBBox;
  EXPECT_EQ(std::make_tuple(box.top, box.left, box.bottom, box.right),
            std::make_tuple(5, 10, 50, 40));
  PaintPoly(triangle);
  ExpectInk("PaintPoly", {{12, 8}}, {{35, 35}});
  int painted = BlackIn(0, 0, 64, 64);
  ErasePoly(triangle);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  FramePoly(triangle);
  ExpectInk("FramePoly", {{10, 5}}, {{12, 8}});
  EXPECT_LT(BlackIn(0, 0, 64, 64), painted);
  KillPoly(triangle);

  // polySize stops at 32766: 8,189 points.
  PolyHandle big = OpenPoly();
  for (int i = 0; i < 9000; ++i) MoveTo(SInt16(i % 50), SInt16(i / 50));
  ClosePoly();
  EXPECT_EQ((**big).polySize, 32766);
  KillPoly(big);

  // A mask region fills exactly its black pixels, and cannot be framed.
  canvas.Clear();
  UInt8 rows[8] = {0xF0, 0x0F, 0xF0, 0x0F, 0, 0, 0xFF, 0xFF};
  BitMap bits{reinterpret_cast<Ptr>(rows), 1, R(8, 48, 16, 56)};
  RgnHandle mask = NewRgn();
  ASSERT_EQ(BitMapToRegion(mask, &bits), noErr);
  FillRgn(mask, &vars.black);
  EXPECT_EQ(canvas.Rows(48, 56, 8, 16),
            "####....|....####|####....|....####|........|........|########|########|");
  FrameRgn(mask);
  ASSERT_EQ(capture.Reports().size(), 1u);
  EXPECT_NE(capture.Reports()[0].find("FrameRgn - bitmap style"), std::string::npos);
  DisposeRgn(mask);
}

}  // namespace
