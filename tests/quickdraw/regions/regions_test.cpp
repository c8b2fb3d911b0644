// Regions through the DLL, as Win32 regions and as mask regions made from
// bitmaps: looked at point by point with PtInRgn and drawn through the clip
// into memory DCs.
#include <gtest/gtest.h>
#include <windows.h>

#include <tuple>

#include "KWERegions.h"
#include "KWESession.h"
#include "Memory.h"
#include "OSUtils.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class Regions : public SessionTest {};

std::tuple<int, int, int, int> BoxOf(RgnHandle rgn) {
  const Rect& b = Box(rgn);
  return {b.top, b.left, b.bottom, b.right};
}

int Inside(RgnHandle rgn, int size) {
  int n = 0;
  for (bool in : Membership(rgn, size)) n += in;
  return n;
}

TEST_F(Regions, EmptyAndRectangularRegions) {
  RgnHandle r = NewRgn(), empty = NewRgn();
  ASSERT_NE(r, nullptr);
  EXPECT_TRUE(EmptyRgn(r));
  EXPECT_EQ(BoxOf(r), std::make_tuple(0, 0, 0, 0));
  SetRectRgn(r, 10, 10, 10, 20);  // no width
  EXPECT_TRUE(EmptyRgn(r));
  SetRectRgn(r, 10, 10, 20, 10);  // no height
  EXPECT_TRUE(EmptyRgn(r));
  SetRectRgn(r, 30, 30, 10, 10);  // inverted: the empty region, equal to any other
  EXPECT_TRUE(EmptyRgn(r));
  EXPECT_TRUE(EqualRgn(r, empty));
  SetRectRgn(r, 1, 2, 30, 40);  // left, top, right, bottom
  EXPECT_EQ(BoxOf(r), std::make_tuple(2, 1, 40, 30));
  // Two halves of one rectangle come back a rectangle, and rectangles meet
  // in a rectangle; ones that do not meet have an empty box.
  RgnHandle whole = RegionOf({{0, 0, 10, 20}, {10, 0, 30, 20}}),
            other = RegionOf({{10, 5, 40, 15}});
  EXPECT_TRUE(KWE_IsRectRgn(whole));
  SectRgn(whole, other, other);
  EXPECT_EQ(BoxOf(other), std::make_tuple(10, 5, 30, 15));
  SetRectRgn(other, 40, 40, 50, 50);
  SectRgn(whole, other, other);
  EXPECT_EQ(BoxOf(other), std::make_tuple(0, 0, 0, 0));
  DisposeRgn(whole);
  DisposeRgn(other);
  // Stored coordinates never leave -16383..16383.
  SetRectRgn(r, -32000, -30000, 32000, 30000);
  EXPECT_EQ(BoxOf(r), std::make_tuple(-16383, -16383, 16383, 16383));

  // A null region is ignored; a placeholder is never disposed.
  SetRectRgn(nullptr, 0, 0, 1, 1);
  RectRgn(nullptr, nullptr);
  DisposeRgn(nullptr);
  EXPECT_EQ(KWE_RgnSetToRealRectRgn(nullptr), nullptr);
  EXPECT_FALSE(KWE_IsRectRgn(nullptr));
  Handle placeholder = NewHandle(0);
  DisposeRgn(reinterpret_cast<RgnHandle>(placeholder));
  EXPECT_EQ(GetHandleSize(placeholder), 0);
  DisposeHandle(placeholder);
  DisposeRgn(r);
  DisposeRgn(empty);
}

TEST_F(Regions, EdgesFollowMacintoshGeometry) {
  RgnHandle rect = RegionOf({{10, 20, 30, 40}});
  EXPECT_TRUE(PtInRgn(Point{10, 20}, rect));
  EXPECT_FALSE(PtInRgn(Point{30, 40}, rect)) << "bottom-right corner lies outside";
  EXPECT_FALSE(PtInRgn(Point{29, 40}, rect));
  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  const struct {
    Rect r;
    bool meets;
  } rects[] = {{{30, 0, 31, 1}, false},  // just below the L's foot
               {{0, 20, 1, 21}, false},  // just beside it
               {{9, 19, 10, 20}, true},
               {{5, 15, 15, 25}, true},
               {{5, 5, 5, 9}, false}};  // empty
  for (const auto& c : rects) EXPECT_EQ(RectInRgn(&c.r, l), c.meets) << c.r.top << "," << c.r.left;
  EXPECT_FALSE(RectInRgn(&rects[4].r, rect));
  DisposeRgn(rect);
  DisposeRgn(l);
}

TEST_F(Regions, CopyInsetMapAndOffset) {
  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}}), copy = NewRgn();
  CopyRgn(l, l);
  CopyRgn(l, copy);
  EXPECT_TRUE(EqualRgn(l, copy));
  OffsetRgn(l, 5, 5);  // the copy has its own shape
  EXPECT_FALSE(EqualRgn(l, copy));
  EXPECT_EQ(BoxOf(copy), std::make_tuple(0, 0, 30, 20));
  EXPECT_EQ(BoxOf(l), std::make_tuple(5, 5, 35, 25));

  RgnHandle r = RegionOf({{10, 10, 20, 20}});
  InsetRgn(r, -5, -3);
  EXPECT_EQ(BoxOf(r), std::make_tuple(7, 5, 23, 25));
  InsetRgn(r, 11, 0);  // nothing left
  EXPECT_TRUE(EmptyRgn(r));
  // An L inset by 2 keeps its shape: both arms get thinner.
  InsetRgn(copy, 2, 2);
  EXPECT_EQ(BoxOf(copy), std::make_tuple(2, 2, 28, 18));
  EXPECT_TRUE(PtInRgn(Point{5, 15}, copy));
  EXPECT_TRUE(PtInRgn(Point{25, 5}, copy));
  EXPECT_FALSE(PtInRgn(Point{25, 9}, copy));
  EXPECT_FALSE(PtInRgn(Point{9, 15}, copy));

  // Mapping rounds to the nearest: a third of 0..30 is 0..10, of 1 is 0.
  Rect from{0, 0, 30, 30}, to{0, 0, 10, 10};
  SetRectRgn(r, 2, 2, 28, 28);
  MapRgn(r, &from, &to);
  EXPECT_EQ(BoxOf(r), std::make_tuple(1, 1, 9, 9));
  MapRgn(l, &from, &to);  // the L at (5,5)
  EXPECT_TRUE(PtInRgn(Point{2, 5}, l));
  EXPECT_FALSE(PtInRgn(Point{5, 5}, l));
  Rect mapped{10, 10, 20, 29};
  MapRect(&mapped, &from, &to);
  EXPECT_EQ(std::make_tuple(mapped.top, mapped.bottom, mapped.right), std::make_tuple(3, 7, 10));

  // A shape moved past the coordinate range is cut to it.
  OffsetRgn(l, 16375, 0);
  EXPECT_LE(Box(l).right, 16383);
  EXPECT_TRUE(PtInRgn(Point{3, 16382}, l));
  for (RgnHandle h : {l, copy, r}) DisposeRgn(h);
}

TEST_F(Regions, ClipSelectionDrawsTheShapeExactly) {
  Canvas canvas(32);
  RgnHandle rect = RegionOf({{3, 2, 7, 6}});
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), rect), SIMPLEREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 16);
  EXPECT_EQ(canvas.Rows(2, 8, 1, 7), "......|.####.|.####.|.####.|.####.|......|");

  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), l), COMPLEXREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 10 * 20 + 20 * 10);
  EXPECT_EQ(canvas.Rows(9, 11, 19, 20), "#|.|");

  RgnHandle empty = NewRgn();
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), empty), NULLREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 0);

  // A mask region's clip is its box.
  ThroughBitmap(l, 32);
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), l), SIMPLEREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 32 * 32);  // the box (0,0,32,32) covers all

  // While system value 23 is set, only the kind is answered.
  SelectClipRgn(canvas.Dc(), nullptr);
  KWE_SystemValue(1, 23, 1);
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), rect), SIMPLEREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 32 * 32);
  KWE_SystemValue(1, 23, 0);
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), nullptr), ERROR);
  for (RgnHandle h : {rect, l, empty}) DisposeRgn(h);
}

// Set laws on random unions of rectangles from a fixed seed, as Win32
// regions and as mask regions, into a third region and in place: every
// result, looked at pixel by pixel, is what the operation says of its
// operands. The pixels looked at run past the masks' 40 columns into the
// padding of their rows, which no operation may bring inside. A failure
// names the round, which replays from the seed.
TEST_F(Regions, SetOperationsObeyTheirLawsPixelByPixel) {
  constexpr int kSize = 40, kSeen = 56;
  unsigned seed = 12345;
  auto next = [&seed](int n) {
    seed = seed * 1103515245u + 12345u;
    return int((seed >> 16) % unsigned(n));
  };
  auto randomRegion = [&] {
    RgnHandle r = NewRgn(), piece = NewRgn();
    for (int i = 0, n = 1 + next(4); i < n; ++i) {
      int top = next(kSize), left = next(kSize);
      SetRectRgn(piece, SInt16(left), SInt16(top), SInt16(left + 1 + next(15)),
                 SInt16(top + 1 + next(15)));
      UnionRgn(r, piece, r);
    }
    DisposeRgn(piece);
    return r;
  };
  void(KWE_CALL* const calls[])(RgnHandle, RgnHandle, RgnHandle) = {SectRgn, UnionRg, DiffRgn,
                                                                    XorRg};
  for (int round = 0; round < 24; ++round) {
    RgnHandle a = randomRegion(), b = randomRegion(), dst = NewRgn();
    if (round % 2) {
      ASSERT_EQ(ThroughBitmap(a, kSize), noErr);
    }
    if (round % 4 == 3) {
      ASSERT_EQ(ThroughBitmap(b, kSize), noErr);
    }
    std::vector<bool> inA = Membership(a, kSeen), inB = Membership(b, kSeen);
    for (int op = 0; op < 8; ++op) {
      bool inPlace = op >= 4;  // the destination is the first operand
      if (inPlace) CopyRgn(a, dst);
      calls[op % 4](inPlace ? dst : a, b, dst);
      std::vector<bool> got = Membership(dst, kSeen);
      for (size_t i = 0; i < got.size(); ++i) {
        bool want = op % 4 == 0   ? inA[i] && inB[i]
                    : op % 4 == 1 ? inA[i] || inB[i]
                    : op % 4 == 2 ? inA[i] && !inB[i]
                                  : inA[i] != inB[i];
        ASSERT_EQ(got[i], want) << "round " << round << " op " << op << " pixel " << i;
      }
    }
    for (RgnHandle h : {a, b, dst}) DisposeRgn(h);
  }
}

// A 16 x 8 Macintosh bitmap (1 = black), two bytes a row, at (top, left).
struct SmallBitmap {
  UInt8 rows[8][2]{};
  BitMap map{reinterpret_cast<Ptr>(&rows[0][0]), 2, Rect{}};
  SmallBitmap(int top, int left) {
    map.bounds = Rect{SInt16(top), SInt16(left), SInt16(top + 8), SInt16(left + 16)};
  }
  void Set(int x, int y) { rows[y][x / 8] |= UInt8(0x80 >> (x % 8)); }
};

// Black pixels become the region, which moves with its box; a white bitmap
// is an empty region, rectangular again.
TEST_F(Regions, MaskRegionsHoldTheirBitmapsBlackPixels) {
  SmallBitmap bits(10, 20);
  for (int y = 0; y < 8; ++y) bits.Set(y, y);  // a diagonal
  bits.Set(15, 7);
  RgnHandle r = NewRgn();
  EXPECT_EQ(BitMapToRegion(r, &bits.map), noErr);
  EXPECT_EQ(BoxOf(r), std::make_tuple(10, 20, 18, 36));
  EXPECT_FALSE(KWE_IsRectRgn(r));
  EXPECT_EQ(Inside(r, 40), 9);
  EXPECT_TRUE(PtInRgn(Point{13, 23}, r));
  EXPECT_TRUE(PtInRgn(Point{17, 35}, r));
  EXPECT_FALSE(PtInRgn(Point{13, 24}, r));
  OffsetRgn(r, -20, -10);
  EXPECT_TRUE(PtInRgn(Point{3, 3}, r));
  EXPECT_FALSE(PtInRgn(Point{13, 23}, r));
  SmallBitmap white(0, 0);
  EXPECT_EQ(BitMapToRegion(r, &white.map), noErr);
  EXPECT_TRUE(EmptyRgn(r));
  EXPECT_TRUE(KWE_IsRectRgn(r));

  // A rectangle holding the mask's box swallows it; copies have their own
  // mask; doubled in size a line is two rows high, and inset keeps its place.
  RgnHandle line = RegionOf({{2, 0, 3, 16}});
  ASSERT_EQ(ThroughBitmap(line, 16), noErr);
  RgnHandle big = RegionOf({{-5, -5, 50, 50}});
  UnionRgn(line, big, r);
  EXPECT_TRUE(KWE_IsRectRgn(r));
  EXPECT_TRUE(EqualRgn(r, big));
  CopyRgn(line, r);
  DisposeRgn(line);
  EXPECT_TRUE(PtInRgn(Point{2, 3}, r));
  Rect from{0, 0, 16, 16}, to{0, 0, 32, 32};
  MapRgn(r, &from, &to);
  EXPECT_EQ(Inside(r, 32), 2 * 32);
  EXPECT_TRUE(PtInRgn(Point{5, 0}, r));
  InsetRgn(r, 1, 1);
  EXPECT_FALSE(PtInRgn(Point{4, 0}, r));
  EXPECT_TRUE(PtInRgn(Point{4, 1}, r));
  DisposeRgn(r);
  DisposeRgn(big);
}

// An 8-bit PixMap is refused (pixMapTooDeepErr), a 1-bit one taken as a
// bitmap; a missing or too narrow bitmap gives rgnTooBigErr; either way the
// region is left as it was.
TEST_F(Regions, BadBitmapsLeaveTheRegionAlone) {
  RgnHandle r = RegionOf({{1, 1, 5, 5}});
  PixMap pixMap{};
  UInt8 pixels[64] = {};
  pixMap.baseAddr = reinterpret_cast<Ptr>(pixels);
  pixMap.rowBytes = SInt16(0x8000 | 8);
  pixMap.bounds = Rect{0, 0, 8, 8};
  pixMap.pixelSize = 8;
  EXPECT_EQ(BitMapToRegion(r, reinterpret_cast<BitMap*>(&pixMap)), -148);
  pixMap.pixelSize = 1;
  pixels[0] = 0x80;
  EXPECT_EQ(BitMapToRegionGlue(r, reinterpret_cast<BitMap*>(&pixMap)), noErr);
  EXPECT_EQ(Inside(r, 8), 1);
  EXPECT_TRUE(PtInRgn(Point{0, 0}, r));

  SetRectRgn(r, 1, 1, 5, 5);
  BitMap none{nullptr, 2, Rect{0, 0, 8, 16}};
  BitMap narrow{reinterpret_cast<Ptr>(pixels), 1, Rect{0, 0, 8, 16}};  // 8 bits a row for 16
  EXPECT_EQ(BitMapToRegion(r, &none), -152);
  EXPECT_EQ(BitMapToRegion(r, &narrow), -152);
  EXPECT_EQ(BitMapToRegion(nullptr, &narrow), -152);
  EXPECT_TRUE(KWE_IsRectRgn(r));
  EXPECT_EQ(BoxOf(r), std::make_tuple(1, 1, 5, 5));
  DisposeRgn(r);
}

}  // namespace
