#include "quickdraw/regions/mask_raster.h"

#include <gtest/gtest.h>

namespace {

using kwe::quickdraw::MaskRaster;

int CountInside(const MaskRaster& m) {
  int n = 0;
  for (int y = 0; y < m.Height(); ++y)
    for (int x = 0; x < m.Width(); ++x) n += m.Inside(x, y);
  return n;
}

// Ragged edges, rows stored bottom-up, fills and masks cut to the raster,
// and padding bits that never count as inside whatever an operation does.
TEST(MaskRaster, FillsCombinesAndKeepsPaddingOutside) {
  MaskRaster m(37, 5);  // rows of 8 bytes, 27 padding bits
  m.FillInside(3, 1, 29, 2);
  EXPECT_EQ(CountInside(m), 26);
  EXPECT_EQ(m.Bits()[3 * 8 + 0], 0xE0);  // row 1 from the top is the fourth stored
  EXPECT_TRUE(m.Inside(28, 1));
  EXPECT_FALSE(m.Inside(29, 1));
  MaskRaster whole(37, 5);
  whole.FillInside(-10, -10, 100, 100);
  EXPECT_EQ(CountInside(whole), 37 * 5);

  const MaskRaster::Operation ops[] = {
      MaskRaster::Operation::Intersect, MaskRaster::Operation::Unite,
      MaskRaster::Operation::ExclusiveOr, MaskRaster::Operation::Subtract};
  const int inside[] = {26, 37 * 5, 37 * 5 - 26, 0};
  for (int i = 0; i < 4; ++i) {
    MaskRaster r = m;
    r.Combine(whole, ops[i]);
    EXPECT_EQ(CountInside(r), inside[i]);
    EXPECT_EQ(r.Bits()[7] & 0xFF, 0xFF) << "padding stays outside";
    EXPECT_EQ(r.NothingInside(), inside[i] == 0);
  }

  MaskRaster small(3, 3), big(10, 10);
  small.FillInside(0, 0, 3, 3);
  big.AddMask(small, 8, -1);  // hangs over the right and top edges
  EXPECT_EQ(CountInside(big), 2 * 2);
  EXPECT_TRUE(big.Inside(9, 1));
}

}  // namespace
