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

// Fills and masks hanging over the raster's edges are cut to it, natively
// under the sanitizers, which watch every write; what the operations make
// of the pixels is checked through the DLL in the regions' set laws.
TEST(MaskRaster, FillsAndMasksAreCutToTheRaster) {
  MaskRaster whole(37, 5);  // rows of 8 bytes, 27 padding bits
  whole.FillInside(-10, -10, 100, 100);
  EXPECT_EQ(CountInside(whole), 37 * 5);
  MaskRaster small(3, 3), big(10, 10);
  small.FillInside(0, 0, 3, 3);
  big.AddMask(small, 8, -1);  // hangs over the right and top edges
  EXPECT_EQ(CountInside(big), 2 * 2);
  EXPECT_TRUE(big.Inside(9, 1));
  EXPECT_FALSE(big.Inside(7, 1));
}

}  // namespace
