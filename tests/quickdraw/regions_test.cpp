#include <gtest/gtest.h>
#include <windows.h>

#include "KWERegions.h"
#include "KWESession.h"
#include "Memory.h"
#include "OSUtils.h"
#include "Quickdraw.h"
#include "quickdraw/region_canvas.h"

namespace {

using namespace kwe_test;

class Regions : public SessionTest {};

void ExpectBox(RgnHandle rgn, int top, int left, int bottom, int right) {
  const Rect& b = Box(rgn);
  EXPECT_EQ(b.top, top);
  EXPECT_EQ(b.left, left);
  EXPECT_EQ(b.bottom, bottom);
  EXPECT_EQ(b.right, right);
}

TEST_F(Regions, EmptyAndRectangularRegions) {
  RgnHandle r = NewRgn();
  ASSERT_NE(r, nullptr);
  EXPECT_TRUE(EmptyRgn(r));
  ExpectBox(r, 0, 0, 0, 0);
  EXPECT_EQ(RgnSize(r), 12);

  SetRectRgn(r, 10, 10, 10, 20);  // no width
  EXPECT_TRUE(EmptyRgn(r));
  SetRectRgn(r, 30, 30, 10, 10);  // inverted: the empty region, equal to any other
  EXPECT_TRUE(EmptyRgn(r));
  RgnHandle empty = NewRgn();
  EXPECT_TRUE(EqualRgn(r, empty));

  // Stored coordinates never leave -16383..16383.
  SetRectRgn(r, -32000, -30000, 32000, 30000);
  ExpectBox(r, -16383, -16383, 16383, 16383);
  EXPECT_TRUE(KWE_IsRectRgn(r));

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

TEST_F(Regions, UnionSectAndTheirKinds) {
  // An L: two overlapping rectangles.
  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  EXPECT_FALSE(KWE_IsRectRgn(l));
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(l)), sizeof(void*) == 4 ? 14 : 24);
  ExpectBox(l, 0, 0, 30, 20);
  // Two halves of one rectangle come back rectangular.
  RgnHandle whole = RegionOf({{0, 0, 10, 20}, {10, 0, 30, 20}});
  EXPECT_TRUE(KWE_IsRectRgn(whole));
  ExpectBox(whole, 0, 0, 30, 20);
  // Disjoint rectangles meet nowhere.
  RgnHandle a = RegionOf({{0, 0, 10, 10}});
  RgnHandle b = RegionOf({{20, 20, 30, 30}});
  RgnHandle meet = NewRgn();
  SectRgn(a, b, meet);
  ExpectBox(meet, 0, 0, 0, 0);
  EXPECT_TRUE(EmptyRgn(meet));
  // The operands stay rectangles; only the destination owns a Win32 region.
  UnionRgn(a, b, meet);
  EXPECT_TRUE(KWE_IsRectRgn(a));
  EXPECT_FALSE(KWE_IsRectRgn(meet));
  // Diff and Xor in place (destination = operand).
  DiffRgn(l, whole, l);
  EXPECT_TRUE(EmptyRgn(l));
  XorRgn(whole, a, whole);
  EXPECT_FALSE(PtInRgn(Point{5, 5}, whole));
  EXPECT_TRUE(PtInRgn(Point{5, 15}, whole));
  for (RgnHandle r : {l, whole, a, b, meet}) DisposeRgn(r);
}

TEST_F(Regions, EdgesFollowMacintoshGeometry) {
  RgnHandle rect = RegionOf({{10, 20, 30, 40}});
  EXPECT_TRUE(PtInRgn(Point{10, 20}, rect));
  EXPECT_FALSE(PtInRgn(Point{30, 40}, rect)) << "bottom-right corner lies outside";
  EXPECT_FALSE(PtInRgn(Point{29, 40}, rect));
  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  Rect touching{30, 0, 31, 1};  // just below the L's foot
  EXPECT_FALSE(RectInRgn(&touching, l));
  Rect beside{0, 20, 1, 21};
  EXPECT_FALSE(RectInRgn(&beside, l));
  Rect corner{9, 19, 10, 20};
  EXPECT_TRUE(RectInRgn(&corner, l));
  Rect reaching{5, 15, 15, 25};
  EXPECT_TRUE(RectInRgn(&reaching, l));
  Rect empty{5, 5, 5, 9};
  EXPECT_FALSE(RectInRgn(&empty, l));
  EXPECT_FALSE(RectInRgn(&empty, rect));
  DisposeRgn(rect);
  DisposeRgn(l);
}

TEST_F(Regions, CopyInsetMapAndOffset) {
  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  CopyRgn(l, l);
  ExpectBox(l, 0, 0, 30, 20);
  RgnHandle copy = NewRgn();
  CopyRgn(l, copy);
  EXPECT_TRUE(EqualRgn(l, copy));
  OffsetRgn(l, 5, 5);  // the copy has its own shape
  EXPECT_FALSE(EqualRgn(l, copy));
  ExpectBox(copy, 0, 0, 30, 20);
  ExpectBox(l, 5, 5, 35, 25);

  RgnHandle r = RegionOf({{10, 10, 20, 20}});
  InsetRgn(r, -5, -5);
  ExpectBox(r, 5, 5, 25, 25);
  InsetRgn(r, 11, 0);  // nothing left
  EXPECT_TRUE(EmptyRgn(r));

  // An L inset by 2 keeps its shape: both arms get thinner.
  InsetRgn(copy, 2, 2);
  ExpectBox(copy, 2, 2, 28, 18);
  EXPECT_TRUE(PtInRgn(Point{5, 15}, copy));
  EXPECT_TRUE(PtInRgn(Point{25, 5}, copy));
  EXPECT_FALSE(PtInRgn(Point{25, 9}, copy));
  EXPECT_FALSE(PtInRgn(Point{9, 15}, copy));

  Rect from{0, 0, 100, 100}, to{0, 0, 50, 50};
  SetRectRgn(r, 0, 0, 100, 100);
  MapRgn(r, &from, &to);
  ExpectBox(r, 0, 0, 50, 50);
  MapRgn(l, &from, &to);  // the L at (5,5) halved
  EXPECT_TRUE(PtInRgn(Point{3, 11}, l));
  EXPECT_FALSE(PtInRgn(Point{10, 11}, l));
  Rect mapped{10, 10, 30, 30};
  MapRect(&mapped, &from, &to);
  EXPECT_EQ(mapped.bottom, 15);
  EXPECT_EQ(mapped.left, 5);

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
  EXPECT_TRUE(canvas.Black(2, 3));
  EXPECT_TRUE(canvas.Black(5, 6));
  EXPECT_FALSE(canvas.Black(6, 6));
  EXPECT_FALSE(canvas.Black(5, 7));

  RgnHandle l = RegionOf({{0, 0, 10, 20}, {0, 0, 30, 10}});
  EXPECT_EQ(KWE_SelectClipRgn(canvas.Dc(), l), COMPLEXREGION);
  EXPECT_EQ(canvas.FillThroughClip(), 10 * 20 + 20 * 10);
  EXPECT_TRUE(canvas.Black(19, 9));
  EXPECT_FALSE(canvas.Black(19, 10));

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
// regions and as mask regions: every result, looked at pixel by pixel, is
// what the operation says of its operands.
TEST_F(Regions, SetOperationsObeyTheirLawsPixelByPixel) {
  constexpr int kSize = 40;
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
  for (int round = 0; round < 24; ++round) {
    RgnHandle a = randomRegion(), b = randomRegion(), dst = NewRgn();
    if (round % 2) {
      ASSERT_EQ(ThroughBitmap(a, kSize), noErr);
    }
    if (round % 4 == 3) {
      ASSERT_EQ(ThroughBitmap(b, kSize), noErr);
    }
    std::vector<bool> inA = Membership(a, kSize), inB = Membership(b, kSize);
    for (int op = 0; op < 4; ++op) {
      void(KWE_CALL* const calls[])(RgnHandle, RgnHandle, RgnHandle) = {SectRgn, UnionRg, DiffRgn,
                                                                        XorRg};
      calls[op](a, b, dst);
      std::vector<bool> got = Membership(dst, kSize);
      for (size_t i = 0; i < got.size(); ++i) {
        bool want = op == 0   ? inA[i] && inB[i]
                    : op == 1 ? inA[i] || inB[i]
                    : op == 2 ? inA[i] && !inB[i]
                              : inA[i] != inB[i];
        ASSERT_EQ(got[i], want) << "round " << round << " op " << op << " pixel " << i;
      }
    }
    for (RgnHandle h : {a, b, dst}) DisposeRgn(h);
  }
}

}  // namespace
