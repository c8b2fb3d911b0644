#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "KWERegions.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/region_canvas.h"

namespace {

using namespace kwe_test;

class MaskRegions : public SessionTest {};

// A 16 x 8 Macintosh bitmap (1 = black), two bytes a row, at (top, left).
struct SmallBitmap {
  UInt8 rows[8][2]{};
  BitMap map{};
  SmallBitmap(int top, int left) {
    map.baseAddr = reinterpret_cast<Ptr>(&rows[0][0]);
    map.rowBytes = 2;
    map.bounds = Rect{SInt16(top), SInt16(left), SInt16(top + 8), SInt16(left + 16)};
  }
  void Set(int x, int y) { rows[y][x / 8] |= UInt8(0x80 >> (x % 8)); }
};

TEST_F(MaskRegions, BlackPixelsBecomeTheRegion) {
  SmallBitmap bits(10, 20);
  for (int y = 0; y < 8; ++y) bits.Set(y, y);  // a diagonal
  bits.Set(15, 7);
  RgnHandle r = NewRgn();
  EXPECT_EQ(BitMapToRegion(r, &bits.map), noErr);
  EXPECT_EQ(RgnSize(r), 16);
  EXPECT_EQ(Box(r).top, 10);
  EXPECT_EQ(Box(r).right, 36);
  EXPECT_FALSE(EmptyRgn(r));
  EXPECT_FALSE(KWE_IsRectRgn(r));
  int inside = 0;
  for (int v = 0; v < 40; ++v)
    for (int h = 0; h < 40; ++h) inside += PtInRgn(Point{SInt16(v), SInt16(h)}, r);
  EXPECT_EQ(inside, 9);
  EXPECT_TRUE(PtInRgn(Point{13, 23}, r));
  EXPECT_TRUE(PtInRgn(Point{17, 35}, r));
  EXPECT_FALSE(PtInRgn(Point{13, 24}, r));

  // The mask moves with its box.
  OffsetRgn(r, -20, -10);
  EXPECT_TRUE(PtInRgn(Point{3, 3}, r));
  EXPECT_FALSE(PtInRgn(Point{13, 23}, r));

  // A white bitmap is an empty region, turned rectangular when asked.
  SmallBitmap white(0, 0);
  EXPECT_EQ(BitMapToRegion(r, &white.map), noErr);
  EXPECT_TRUE(EmptyRgn(r));
  EXPECT_EQ(RgnSize(r), 12);
  DisposeRgn(r);
}

TEST_F(MaskRegions, CombinedWithRectanglesCopiedAndMapped) {
  RgnHandle line = RegionOf({{2, 0, 3, 16}});
  ASSERT_EQ(ThroughBitmap(line, 16), noErr);
  // A rectangle holding the mask's box swallows it.
  RgnHandle big = RegionOf({{-5, -5, 50, 50}});
  RgnHandle dst = NewRgn();
  UnionRgn(line, big, dst);
  EXPECT_TRUE(KWE_IsRectRgn(dst));
  EXPECT_TRUE(EqualRgn(dst, big));
  SectRgn(line, big, dst);
  EXPECT_EQ(RgnSize(dst), 16);

  // Copies have their own mask.
  CopyRgn(line, dst);
  EXPECT_EQ(RgnSize(dst), 16);
  EXPECT_TRUE(EqualRgn(dst, line));
  DisposeRgn(line);
  EXPECT_TRUE(PtInRgn(Point{2, 3}, dst));

  // Doubled in size, the line is two rows high; inset, it keeps its place.
  Rect from{0, 0, 16, 16}, to{0, 0, 32, 32};
  MapRgn(dst, &from, &to);
  EXPECT_TRUE(PtInRgn(Point{4, 31}, dst));
  EXPECT_TRUE(PtInRgn(Point{5, 0}, dst));
  EXPECT_FALSE(PtInRgn(Point{6, 0}, dst));
  InsetRgn(dst, 1, 1);
  EXPECT_FALSE(PtInRgn(Point{4, 0}, dst));
  EXPECT_TRUE(PtInRgn(Point{4, 1}, dst));
  DisposeRgn(dst);
  DisposeRgn(big);
}

TEST_F(MaskRegions, BadBitmapsLeaveTheRegionAlone) {
  RgnHandle r = RegionOf({{1, 1, 5, 5}});
  // A PixMap (rowBytes' high bit) 8 bits deep.
  struct {
    Ptr baseAddr;
    SInt16 rowBytes;
    Rect bounds;
    SInt16 pmVersion, packType;
    SInt32 packSize, hRes, vRes;
    SInt16 pixelType, pixelSize;
  } __attribute__((packed, aligned(2))) pixMap{};
  UInt8 pixels[64] = {};
  pixMap.baseAddr = reinterpret_cast<Ptr>(pixels);
  pixMap.rowBytes = SInt16(0x8000 | 8);
  pixMap.bounds = Rect{0, 0, 8, 8};
  pixMap.pixelSize = 8;
  EXPECT_EQ(BitMapToRegion(r, reinterpret_cast<BitMap*>(&pixMap)), -148);
  pixMap.pixelSize = 1;  // a 1-bit PixMap is taken as a bitmap
  pixels[0] = 0x80;
  EXPECT_EQ(BitMapToRegionGlue(r, reinterpret_cast<BitMap*>(&pixMap)), noErr);
  EXPECT_TRUE(PtInRgn(Point{0, 0}, r));
  EXPECT_FALSE(PtInRgn(Point{0, 1}, r));

  SetRectRgn(r, 1, 1, 5, 5);
  BitMap none{nullptr, 2, Rect{0, 0, 8, 16}};
  EXPECT_EQ(BitMapToRegion(r, &none), -152);
  BitMap narrow{reinterpret_cast<Ptr>(pixels), 1, Rect{0, 0, 8, 16}};  // 8 bits a row for 16
  EXPECT_EQ(BitMapToRegion(r, &narrow), -152);
  EXPECT_EQ(BitMapToRegion(nullptr, &narrow), -152);
  EXPECT_EQ(RgnSize(r), 12);
  EXPECT_TRUE(KWE_IsRectRgn(r));
  EXPECT_EQ(Box(r).bottom, 5);
  DisposeRgn(r);
}

}  // namespace
