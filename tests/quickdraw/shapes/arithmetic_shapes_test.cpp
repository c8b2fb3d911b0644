// Lines and shapes in the arithmetic pen modes on a colour port drawing
// into 32-bit DIB sections. Each seeded case draws one shape in one verb
// over random pixels under a random clip. What the verb covers is learnt by
// drawing it again in patCopy, black on white; every covered pixel must
// hold the reference model's result of the mode, every other pixel what it
// held. Erase, invert and fill do not use the pen mode: they must match the
// same verb drawn in patCopy.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/copybits/pipeline_reference.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

constexpr int kSize = 64;
enum Shape { kRect, kOval, kRoundRect, kArc, kPoly, kRgn, kLine, kShapeCount };
const char* const kShapeNames[] = {"rect", "oval", "roundRect", "arc", "poly", "rgn", "line"};
constexpr Pattern kBlackPat{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
constexpr Pattern kStripes{{0xF0, 0xCC, 0xAA, 0x0F, 0x81, 0x00, 0xFF, 0x3C}};

struct ShapeCase {
  int shape, verb, mode, pen;
  Rect r, clip;
  SInt16 start, arc;
  RGBColor fg, bk, op;
  bool patterned;
};

// The canvas's pixels, 0xRRGGBB row by row, written and read straight.
uint32_t* Bits(const Canvas& canvas) {
  DIBSECTION section{};
  GetObject(GetCurrentObject(canvas.Dc(), OBJ_BITMAP), sizeof section, &section);
  return static_cast<uint32_t*>(section.dsBm.bmBits);
}

SInt16 Coord(std::mt19937& rng) { return SInt16(int(rng() % (kSize + 8)) - 4); }

RGBColor Colour(std::mt19937& rng) { return RGBColor{UInt16(rng()), UInt16(rng()), UInt16(rng())}; }

ShapeCase MakeCase(uint32_t n) {
  std::mt19937 rng(n);
  ShapeCase c{};
  c.shape = int(rng() % kShapeCount);
  c.verb = c.shape == kLine ? 1 : int(rng() % 5);
  c.mode = 32 + int(rng() % 8);
  c.pen = 1 + int(rng() % 4);
  SInt16 a = Coord(rng), b = Coord(rng), d = Coord(rng), e = Coord(rng);
  c.r = Rect{std::min(a, b), std::min(d, e), std::max(a, b), std::max(d, e)};
  SInt16 t = SInt16(rng() % 24), l = SInt16(rng() % 24);
  c.clip = Rect{t, l, SInt16(t + 16 + rng() % 40), SInt16(l + 16 + rng() % 40)};
  c.start = SInt16(rng() % 360);
  c.arc = SInt16(int(rng() % 540) - 270);
  c.fg = Colour(rng);
  c.bk = Colour(rng);
  c.op = Colour(rng);
  if (rng() % 4 == 0) c.bk = c.fg;  // transparent then leaves all of it
  if (rng() % 4 == 0) c.op = RGBColor{0xFFFF, 0x8000, 0};
  c.patterned = rng() % 4 == 0;
  // Shapes in one pair of colours meet the tables kept from earlier ones,
  // made for another mode or op colour.
  if (rng() % 3 == 0) {
    c.fg = RGBColor{0x4000, 0x8000, 0xC000};
    c.bk = RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
  }
  return c;
}

// The shape through the standard procedures, the bottleneck every call of
// its family reaches.
void Draw(const ShapeCase& c) {
  PenSize(SInt16(c.pen), SInt16(1 + c.pen % 3));
  const Rect& r = c.r;
  switch (c.shape) {
    case kRect: StdRect(SInt16(c.verb), &r); break;
    case kOval: StdOval(SInt16(c.verb), &r); break;
    case kRoundRect: StdRRect(SInt16(c.verb), &r, 12, 9); break;
    case kArc: StdArc(SInt16(c.verb), &r, c.start, c.arc); break;
    case kPoly: {
      PolyHandle poly = OpenPoly();
      MoveTo(r.left, r.top);
      LineTo(r.right, SInt16((r.top + r.bottom) / 2));
      LineTo(SInt16((r.left + r.right) / 2), r.bottom);
      LineTo(r.left, r.top);
      ClosePoly();
      StdPoly(SInt16(c.verb), poly);
      KillPoly(poly);
      break;
    }
    case kRgn: {
      RgnHandle rgn = RegionOf(
          {r, Rect{SInt16(r.top + 5), SInt16(r.left - 6), SInt16(r.top + 11), SInt16(r.left + 3)}});
      StdRgn(SInt16(c.verb), rgn);
      DisposeRgn(rgn);
      break;
    }
    default: MoveTo(r.left, r.top); LineTo(r.right, r.bottom);
  }
}

class ArithmeticShapes : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    InitGraf(&screen);
    OpenCPort(&port);
  }
  void TearDown() override {
    CloseCPort(&port);
    SessionTest::TearDown();
  }
  // Draws c onto canvas in mode with its colours and pattern.
  void DrawOn(Canvas& canvas, const ShapeCase& c, int mode, bool coverage) {
    KWE_SwaphDC(canvas.Dc(), true);
    ClipRect(&c.clip);
    PenMode(SInt16(mode));
    const RGBColor black{0, 0, 0};
    // The coverage is drawn with the same pattern (and so the same GDI
    // calls), its pixels all black.
    RGBForeColor(coverage ? &black : &c.fg);
    RGBBackColor(coverage ? &black : &c.bk);
    OpColor(&c.op);
    PenPat(c.patterned ? &kStripes : &kBlackPat);
    Draw(c);
  }
  // Random pixels on both canvases, the same on each.
  void Noise(uint32_t seed) {
    std::mt19937 rng(seed ^ 0x9E3779B9u);
    GdiFlush();
    for (int i = 0; i < kSize * kSize; ++i) Bits(drawn)[i] = Bits(expected)[i] = rng() & 0xFFFFFF;
  }
  GrafPtr screen = nullptr;
  CGrafPort port{};
  Canvas drawn{kSize}, expected{kSize}, cover{kSize};
};

// What a covered pixel becomes: the pattern's colour there combined with
// the pixel by the mode, in 8-bit components as the DIB holds them.
uint32_t Expected(const ShapeCase& c, int x, int y, uint32_t d) {
  bool fore = !c.patterned || (kStripes.pat[y & 7] >> (7 - (x & 7)) & 1);
  const RGBColor& rgb = fore ? c.fg : c.bk;
  uint32_t s = uint32_t(rgb.red >> 8) << 16 | uint32_t(rgb.green >> 8) << 8 | rgb.blue >> 8;
  uint32_t bk = uint32_t(c.bk.red >> 8) << 16 | uint32_t(c.bk.green >> 8) << 8 | c.bk.blue >> 8;
  if (c.mode == 36) return s == bk ? d : s;
  const int op[3] = {c.op.red, c.op.green, c.op.blue};
  uint32_t out = 0;
  for (int k = 0; k < 3; ++k) {
    int shift = 16 - 8 * k;
    int sc = int(s >> shift & 255) * 257, dc = int(d >> shift & 255) * 257;
    out |= uint32_t(reference::Arithmetic(c.mode, sc, dc, op[k]) >> 8) << shift;
  }
  return out;
}

TEST_F(ArithmeticShapes, EveryShapeVerbAndModeMatchesTheReference) {
  // Case n is MakeCase(n) over Noise(n): a failure names it for replaying.
  const uint32_t seed = 0x5A4E0000u;
  constexpr int kCases = 500;
  int covered = 0;
  for (uint32_t step = 0; step < kCases; ++step) {
    const uint32_t n = seed + step;
    const ShapeCase c = MakeCase(n);
    SCOPED_TRACE("case " + std::to_string(n) + ": " + kShapeNames[c.shape] + " verb " +
                 std::to_string(c.verb) + " mode " + std::to_string(c.mode));
    Noise(n);
    DrawOn(drawn, c, c.mode, false);
    bool penMode = c.verb <= 1;
    if (!penMode) {
      DrawOn(expected, c, patCopy, false);
    } else {
      cover.Clear();
      DrawOn(cover, c, patCopy, true);
      GdiFlush();
      uint32_t* e = Bits(expected);
      for (int i = 0; i < kSize * kSize; ++i)
        if (cover.Black(i % kSize, i / kSize)) {
          e[i] = Expected(c, i % kSize, i / kSize, e[i] & 0xFFFFFF);
          ++covered;
        }
    }
    GdiFlush();
    for (int i = 0; i < kSize * kSize; ++i)
      ASSERT_EQ(Bits(drawn)[i] & 0xFFFFFF, Bits(expected)[i] & 0xFFFFFF)
          << "at " << i % kSize << "," << i / kSize;
  }
  EXPECT_GT(covered, kCases * 20) << "the sweep drew almost nothing";
}

// A pixel pattern of fifteen colours is more than the kept component
// tables hold: each mode then combines the whole box through the pipeline,
// and every pixel under the rectangle must hold the reference's result for
// the pattern's colour there.
TEST_F(ArithmeticShapes, ManyColouredPixelPatternsCombineThroughThePipeline) {
  // Pixel (x, y) of the pattern has colour x + y: fifteen of them.
  std::vector<RGBColor> colours;
  for (int i = 0; i < 16; ++i)
    colours.push_back(
        RGBColor{UInt16(i * 0x1111), UInt16((15 - i) * 0x1111), UInt16(i * 7 % 16 * 0x1111)});
  PixPatHandle pp = IndexedPixPat(4, colours, [](int x, int y) { return (x + y) % 16; });

  const Rect r{8, 12, 40, 50};
  for (int mode = 32; mode <= 39; ++mode) {
    SCOPED_TRACE("mode " + std::to_string(mode));
    ShapeCase c{};
    c.mode = mode;
    c.bk = RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
    c.op = RGBColor{0x4000, 0xC000, 0x8000};
    Noise(uint32_t(mode));
    KWE_SwaphDC(drawn.Dc(), true);
    ClipRect(&r);
    PenMode(SInt16(mode));
    RGBBackColor(&c.bk);
    OpColor(&c.op);
    PenPixPat(pp);
    PaintRect(&r);
    GdiFlush();
    for (int y = 0; y < kSize; ++y)
      for (int x = 0; x < kSize; ++x) {
        uint32_t d = Bits(expected)[y * kSize + x] & 0xFFFFFF;
        if (y >= r.top && y < r.bottom && x >= r.left && x < r.right) {
          c.fg = colours[(x & 7) + (y & 7)];
          d = Expected(c, x, y, d);
        }
        ASSERT_EQ(Bits(drawn)[y * kSize + x] & 0xFFFFFF, d) << "at " << x << "," << y;
      }
  }
  PenPat(&kBlackPat);
  DisposePixPat(pp);
}

// The sections the passes draw into are kept from shape to shape: GDI's
// object count stays flat over 10,000 ovals of changing sizes, and closing
// the port that drew them gives every object back.
TEST_F(ArithmeticShapes, TenThousandShapesLeaveGdiObjectsFlat) {
  const int start = LiveGdiObjects();
  CGrafPort second{};
  OpenCPort(&second);
  KWE_SwaphDC(drawn.Dc(), true);
  PenMode(addOver);
  int kept = 0;
  for (int i = 0; i < 10000; ++i) {
    const SInt16 at = SInt16(i % 11), size = SInt16(2 + i * 7 % 60);
    const Rect r{at, SInt16(at / 2), SInt16(at + size), SInt16(at / 2 + size)};
    PaintOval(&r);
    if (i == 100) kept = LiveGdiObjects();
  }
  EXPECT_EQ(LiveGdiObjects(), kept);
  CloseCPort(&second);
  SetPort(reinterpret_cast<GrafPtr>(&port));
  EXPECT_EQ(LiveGdiObjects(), start);
}

// A plain port keeps only the eight old colours, also when its
// portBits.rowBytes has bit 15 set as a pixel map's has: only both top bits
// make a colour port, so no colour call writes a CGrafPort's fields over the
// plain port's patterns or reads its bounds as a GrafVars handle. (Its
// arithmetic modes draw as Boolean ones: ports_test's transfer modes.)
TEST_F(ArithmeticShapes, PlainPortsKeepOldColours) {
  const struct {
    const char* name;
    UInt16 flags;
  } rows[] = {{"plain port", 0}, {"plain port, rowBytes bit 15", 0x8000}};
  const RGBColor red{0xFFFF, 0, 0}, blue{0, 0, 0xFFFF}, grey{0x8000, 0x8000, 0x8000};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    GrafPort plain{};
    OpenPort(&plain);
    KWE_SwaphDC(drawn.Dc(), true);
    plain.portBits.rowBytes = SInt16(UInt16(plain.portBits.rowBytes) | row.flags);
    const GrafPort before = plain;
    RGBForeColor(&red);
    RGBBackColor(&blue);
    OpColor(&grey);
    HiliteColor(&grey);
    EXPECT_EQ(plain.fgColor, redColor);
    EXPECT_EQ(plain.bkColor, blueColor);
    EXPECT_EQ(std::memcmp(&plain.bkPat, &before.bkPat, sizeof before.bkPat), 0);
    EXPECT_EQ(std::memcmp(&plain.fillPat, &before.fillPat, sizeof before.fillPat), 0);
    EXPECT_EQ(std::memcmp(&plain.portBits.bounds, &before.portBits.bounds, sizeof(Rect)), 0);
    RGBColor got{};
    GetForeColor(&got);
    EXPECT_GT(got.red, 0xC000);
    EXPECT_LT(got.blue, 0x4000);

    plain.portBits.rowBytes = before.portBits.rowBytes;
    ClosePort(&plain);
  }
  SetPort(reinterpret_cast<GrafPtr>(&port));
}

}  // namespace
