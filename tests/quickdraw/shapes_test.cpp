// Shapes in the five verbs, drawn through the DLL into a DIB section and
// probed where Macintosh geometry differs from GDI's.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "KWEPorts.h"
#include "KWESession.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/gdi_objects.h"
#include "quickdraw/region_canvas.h"

namespace {

using namespace kwe_test;

constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kBlack = 0x000000;

class Shapes : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    InitGraf(&screen);
    OpenPort(&port);
    KWE_SwaphDC(canvas.Dc(), true);
    canvas.Clear();
  }
  void TearDown() override {
    ClosePort(&port);
    SessionTest::TearDown();
  }
  // Black pixels inside [left, right) x [top, bottom).
  int BlackIn(int left, int top, int right, int bottom) {
    int n = 0;
    for (int y = top; y < bottom; ++y)
      for (int x = left; x < right; ++x) n += canvas.Pixel(x, y) == kBlack;
    return n;
  }
  GrafPtr screen = nullptr;
  GrafPort port;
  Canvas canvas{64};
};

Rect R(int left, int top, int right, int bottom) {
  return Rect{SInt16(top), SInt16(left), SInt16(bottom), SInt16(right)};
}

TEST_F(Shapes, RectanglesExcludeTheirBottomAndRightEdges) {
  Rect r = R(10, 10, 20, 20);
  PaintRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 100);
  EXPECT_EQ(BlackIn(10, 10, 20, 20), 100);
  InvertRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);

  // The frame lies inside: edges of the pen's height and width.
  PenSize(3, 2);
  r = R(30, 30, 50, 45);
  FrameRect(&r);
  EXPECT_EQ(canvas.Row(30, 28, 52), "..####################..");
  EXPECT_EQ(canvas.Row(31, 28, 52), "..####################..");
  EXPECT_EQ(canvas.Row(32, 28, 52), "..###..............###..");
  EXPECT_EQ(canvas.Row(43, 28, 52), "..####################..");
  EXPECT_EQ(canvas.Row(45, 28, 52), "........................");

  // Empty and inverted rectangles draw nothing.
  canvas.Clear();
  Rect empty = R(5, 5, 5, 20), inverted = R(20, 20, 10, 10);
  PaintRect(&empty);
  FrameRect(&inverted);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
}

TEST_F(Shapes, VerbsUseTheirPatternsAndColours) {
  Rect r = R(0, 0, 8, 2);
  BackPat(&vars.gray);
  EraseRect(&r);
  EXPECT_EQ(canvas.Row(0, 0, 8), "#.#.#.#.");
  EXPECT_EQ(canvas.Row(1, 0, 8), ".#.#.#.#");
  r = R(0, 4, 8, 5);
  FillRect(&r, &vars.ltGray);  // rows 88 22 ...: row 4 is 0x88
  EXPECT_EQ(canvas.Row(4, 0, 8), "#...#...");
  ForeColor(redColor);
  r = R(10, 10, 14, 14);
  PaintRect(&r);
  EXPECT_EQ(canvas.Pixel(12, 12), 0xDD0806u);
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

// A full-colour pattern paints from its own pixels and colour table; a
// 1-bit 8 by 8 one is an old-style pattern in its table's last and first
// colours.
TEST_F(Shapes, FullColourPixelPatterns) {
  CGrafPort colour;
  OpenCPort(&colour);
  KWE_SwaphDC(canvas.Dc(), true);
  struct Table {
    SInt32 seed;
    SInt16 flags, size;
    struct {
      SInt16 value;
      RGBColor rgb;
    } entries[3];
  };
  Handle table = NewHandleClear(sizeof(Table));
  *reinterpret_cast<Table*>(*table) =
      Table{0, 0, 2, {{0, {0xFFFF, 0xFFFF, 0xFFFF}}, {1, {0xFFFF, 0, 0}}, {2, {0, 0, 0xFFFF}}}};
  Handle map = NewHandleClear(sizeof(PixMap));
  PixMap& pm = *reinterpret_cast<PixMap*>(*map);
  pm.rowBytes = SInt16(0x8000 | 16);
  pm.bounds = R(0, 0, 16, 16);
  pm.pixelSize = 8;
  pm.cmpCount = 1;
  pm.cmpSize = 8;
  pm.pmTable = reinterpret_cast<CTabHandle>(table);
  Handle data = NewHandle(16 * 16);
  for (int i = 0; i < 256; ++i) (*data)[i] = char(i % 16 < 8 ? 1 : 2);  // red left, blue right
  PixPatHandle pp = reinterpret_cast<PixPatHandle>(NewHandleClear(sizeof(PixPat)));
  (**pp).patType = 1;
  (**pp).patMap = reinterpret_cast<PixMapHandle>(map);
  (**pp).patData = data;
  (**pp).patXValid = -1;
  Rect r = R(0, 20, 40, 24);
  FillCRect(&r, pp);
  EXPECT_EQ(canvas.Pixel(3, 21), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(10, 21), 0x0000FFu);
  EXPECT_EQ(canvas.Pixel(19, 21), 0xFF0000u);
  EXPECT_EQ((**pp).patXValid, 0);

  // 1 bit, 8 by 8: the old-style path, blue on white.
  pm.rowBytes = SInt16(0x8000 | 2);
  pm.bounds = R(0, 0, 8, 8);
  pm.pixelSize = 1;
  for (int i = 0; i < 16; ++i) (*data)[i] = char(0xF0);
  (**pp).patXValid = -1;
  r = R(0, 30, 8, 31);
  FillCRect(&r, pp);
  EXPECT_EQ(canvas.Pixel(1, 30), 0x0000FFu);
  EXPECT_EQ(canvas.Pixel(6, 30), 0xFFFFFFu);
  CloseCPort(&colour);
  for (Handle h : {table, map, data, reinterpret_cast<Handle>(pp)}) DisposeHandle(h);
}

// With bit 7 of HiliteMode cleared, invert highlights: background-coloured
// pixels and highlight-coloured ones trade places, others stay.
TEST_F(Shapes, HighlightingExchangesBackgroundAndHighlightColours) {
  vars.HiliteRGB = RGBColor{0xFFFF, 0xFFFF, 0};
  Rect black = R(0, 0, 4, 4), both = R(0, 0, 8, 4);
  PaintRect(&black);
  vars.HiliteMode = UInt8(vars.HiliteMode & 0x7F);
  InvertRect(&both);
  EXPECT_EQ(vars.HiliteMode & 0x80, 0x80);
  EXPECT_EQ(canvas.Pixel(1, 1), kBlack);
  EXPECT_EQ(canvas.Pixel(6, 1), 0xFFFF00u);
  EXPECT_EQ(canvas.Pixel(6, 6), kWhite);
  vars.HiliteMode = UInt8(vars.HiliteMode & 0x7F);
  InvertRect(&both);  // and back
  EXPECT_EQ(canvas.Pixel(6, 1), kWhite);
  InvertRect(&both);  // bit 7 set again: a plain invert
  EXPECT_EQ(canvas.Pixel(1, 1), kWhite);
  EXPECT_EQ(canvas.Pixel(6, 1), kBlack);
}

// Each Boolean mode over black and white, with the gray pen pattern: the
// left half of each probe row lies over black, the right over white.
TEST_F(Shapes, TransferModesOverAKnownBackground) {
  struct Case {
    SInt16 mode;
    const char* overBlack;  // pattern 1 bit, pattern 0 bit
    const char* overWhite;
  } cases[] = {
      {patCopy, "#.", "#."},   {patOr, "##", "#."},      {patXor, ".#", "#."},
      {patBic, ".#", ".."},    {notPatCopy, ".#", ".#"}, {notPatOr, "##", ".#"},
      {notPatXor, "#.", ".#"}, {notPatBic, "#.", ".."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mode);
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
    EXPECT_EQ(row.substr(0, 2), c.overBlack);
    EXPECT_EQ(row.substr(8, 2), c.overWhite);
  }
  // srcXor with a black pattern inverts.
  canvas.Clear();
  PenMode(srcXor);
  PenPat(&vars.black);
  Rect r = R(2, 2, 6, 6);
  PaintRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 10, 10), 16);
  PenMode(hilite);  // not renderable: nothing
  PaintRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 10, 10), 16);
}

TEST_F(Shapes, OvalsArcsAndRoundedRectangles) {
  Rect r = R(0, 0, 40, 20);
  PaintOval(&r);
  EXPECT_EQ(canvas.Pixel(20, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(0, 10), kBlack);  // the outermost columns are in
  EXPECT_EQ(canvas.Pixel(39, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(40, 10), kWhite);
  EXPECT_EQ(canvas.Pixel(0, 0), kWhite);
  EXPECT_EQ(canvas.Pixel(39, 19), kWhite);

  // A frame is the outline alone, through the outermost pixels.
  canvas.Clear();
  FrameOval(&r);
  EXPECT_EQ(canvas.Pixel(0, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(39, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(20, 0), kBlack);
  EXPECT_EQ(canvas.Pixel(20, 19), kBlack);
  EXPECT_EQ(canvas.Pixel(20, 10), kWhite);

  // Angles run clockwise from 12 o'clock: 0 to 90 is the upper-right wedge,
  // and a negative arc from 90 is the same one.
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
  Rect point = R(50, 50, 51, 51);
  PaintOval(&point);
  EXPECT_LE(BlackIn(0, 0, 64, 64), 1);  // nothing for the arc, at most a point

  // Rounded corners leave the rectangle's corners out.
  canvas.Clear();
  r = R(0, 0, 30, 30);
  PaintRoundRect(&r, 16, 16);
  EXPECT_EQ(canvas.Pixel(0, 0), kWhite);
  EXPECT_EQ(canvas.Pixel(29, 29), kWhite);
  EXPECT_EQ(canvas.Pixel(15, 0), kBlack);
  EXPECT_EQ(canvas.Pixel(0, 15), kBlack);
  EXPECT_EQ(canvas.Pixel(29, 15), kBlack);
  canvas.Clear();
  FrameRoundRect(&r, 100, 4000);  // diameters clamp to the rectangle: an oval
  EXPECT_EQ(canvas.Pixel(0, 15), kBlack);
  EXPECT_EQ(canvas.Pixel(15, 15), kWhite);
  EXPECT_EQ(canvas.Pixel(3, 3), kWhite);

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

TEST_F(Shapes, PolygonsAndTheirLimit) {
  PolyHandle triangle = OpenPoly();
  MoveTo(10, 10);
  LineTo(40, 10);
  LineTo(10, 40);
  LineTo(10, 10);
  ClosePoly();
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);  // recorded, not drawn
  EXPECT_EQ((**triangle).polySize, 10 + 4 * 4);
  PaintPoly(triangle);
  EXPECT_EQ(canvas.Pixel(12, 12), kBlack);
  EXPECT_EQ(canvas.Pixel(35, 35), kWhite);
  int painted = BlackIn(0, 0, 64, 64);
  ErasePoly(triangle);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  FramePoly(triangle);
  EXPECT_EQ(canvas.Pixel(10, 10), kBlack);
  EXPECT_EQ(canvas.Pixel(12, 12), kWhite);
  EXPECT_LT(BlackIn(0, 0, 64, 64), painted);
  OffsetPoly(triangle, 5, 5);
  EXPECT_EQ((**triangle).polyBBox.left, 15);
  EXPECT_EQ((**triangle).polyPoints[1].h, 45);
  KillPoly(triangle);

  // polySize stops at 32766: 8,189 points.
  PolyHandle big = OpenPoly();
  for (int i = 0; i < 9000; ++i) MoveTo(SInt16(i % 50), SInt16(i / 50));
  ClosePoly();
  EXPECT_EQ((**big).polySize, 32766);
  KillPoly(big);
}

TEST_F(Shapes, RegionsOfEveryKind) {
  RgnHandle ell = RegionOf({R(0, 0, 20, 10), R(0, 10, 10, 20)});
  PaintRgn(ell);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 300);
  EXPECT_EQ(canvas.Pixel(15, 15), kWhite);
  InvertRgn(ell);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  FrameRgn(ell);
  EXPECT_EQ(canvas.Pixel(0, 0), kBlack);
  EXPECT_EQ(canvas.Pixel(5, 5), kWhite);
  canvas.Clear();
  Rect box = R(30, 30, 40, 40);
  RgnHandle rect = NewRgn();
  RectRgn(rect, &box);
  FillRgn(rect, &vars.black);
  EXPECT_EQ(BlackIn(30, 30, 40, 40), 100);
  EraseRgn(rect);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);

  // A mask region fills exactly its 0 bits, and cannot be framed.
  UInt8 rows[8] = {0xF0, 0x0F, 0xF0, 0x0F, 0, 0, 0xFF, 0xFF};
  BitMap bits{reinterpret_cast<Ptr>(rows), 1, R(8, 48, 16, 56)};
  RgnHandle mask = NewRgn();
  ASSERT_EQ(BitMapToRegion(mask, &bits), noErr);
  FillRgn(mask, &vars.black);
  EXPECT_EQ(canvas.Row(48, 8, 16), "####....");
  EXPECT_EQ(canvas.Row(49, 8, 16), "....####");
  EXPECT_EQ(canvas.Row(52, 8, 16), "........");
  EXPECT_EQ(canvas.Row(54, 8, 16), "########");
  FrameRgn(mask);
  std::vector<std::string> reports = capture.Reports();
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_NE(reports[0].find("FrameRgn - bitmap style"), std::string::npos);
  for (RgnHandle h : {ell, rect, mask}) DisposeRgn(h);
}

TEST_F(Shapes, FramedShapesAreCutOutOfARecordedRegion) {
  OpenRgn();
  MoveTo(0, 0);
  LineTo(60, 0);
  LineTo(0, 60);
  LineTo(0, 0);
  Rect hole = R(5, 5, 15, 15);
  FrameRect(&hole);
  RgnHandle shape = NewRgn();
  CloseRgn(shape);
  EXPECT_TRUE(PtInRgn(Point{3, 3}, shape));
  EXPECT_FALSE(PtInRgn(Point{10, 10}, shape));  // exclusive-or cut it out
  EXPECT_TRUE(PtInRgn(Point{20, 20}, shape));
  DisposeRgn(shape);
}

int g_rectCalls = 0;
void KWE_CALL CountingRectProc(SInt16 verb, const Rect* r) {
  ++g_rectCalls;
  StdRect(verb, r);
}

TEST_F(Shapes, ApplicationRectProcedureAndGdiObjectsOverManyCycles) {
  QDProcs procs;
  SetStdProcs(&procs);
  procs.rectProc = reinterpret_cast<ProcPtr>(&CountingRectProc);
  port.grafProcs = &procs;
  Rect r = R(1, 1, 5, 5);
  PaintRect(&r);
  FillRect(&r, &vars.gray);
  EXPECT_EQ(g_rectCalls, 2);
  EXPECT_EQ(BlackIn(0, 0, 8, 8), 8);
  port.grafProcs = nullptr;

  if (LiveGdiObjects() < 0) GTEST_SKIP() << "no GDI handle table to count in";
  const Pattern* patterns[] = {&vars.black, &vars.gray, &vars.ltGray, &vars.dkGray, &vars.white};
  RgnHandle rgn = RegionOf({R(0, 0, 20, 10), R(0, 10, 10, 20)});
  // The first cycles leave the port's cached pen and brush; from then on
  // nothing may grow.
  int before = 0;
  for (int i = 0; i < 10060; ++i) {
    if (i == 60) before = LiveGdiObjects();
    Rect s = R(i % 30, i % 20, 30 + i % 30, 25 + i % 20);
    PenSize(SInt16(1 + i % 4), SInt16(1 + i % 3));
    PenPat(patterns[i % 5]);
    ForeColor(i % 2 ? redColor : blueColor);
    PenMode(SInt16(8 + i % 8));
    switch (i % 6) {
      case 0: FrameRect(&s); break;
      case 1: FillOval(&s, patterns[(i / 6) % 5]); break;
      case 2: FrameRoundRect(&s, 8, 8); break;
      case 3: PaintArc(&s, SInt16(i % 360), 120); break;
      case 4: FrameRgn(rgn); break;
      default: FrameOval(&s); break;
    }
  }
  EXPECT_EQ(LiveGdiObjects(), before);
  DisposeRgn(rgn);
}

}  // namespace
