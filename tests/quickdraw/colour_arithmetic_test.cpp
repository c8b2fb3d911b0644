// The colour arithmetic and transfer-mode table, natively.
#include "quickdraw/colour_arithmetic.h"

#include <gtest/gtest.h>

#include "quickdraw/transfer_modes.h"

namespace {

using namespace kwe::quickdraw;

TEST(ColourArithmetic, ConstantsMatchExactlyThenByTheirHighBits) {
  struct Case {
    SInt32 constant;
    bool found;
    UInt16 red;
  } cases[] = {
      {33, true, 0x0000},    {30, true, 0xFFFF},   {205, true, 0xDD6B},
      {137, true, 0xF2D7},   {0xCF, true, 0xDD6B},  // bits 0x1E0 agree with redColor
      {0x1D, true, 0xFFFF},                         // bits 0x1E0 are 0, as whiteColor's
      {0x15F, true, 0x0000},                        // bits 0x1E0 agree with greenColor (red 0)
      {0x1E5, false, 0},     {-1, false, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.constant);
    RGBColor rgb{1, 2, 3};
    EXPECT_EQ(ColourOfConstant(c.constant, &rgb), c.found);
    if (c.found) {
      EXPECT_EQ(rgb.red, c.red);
    }
  }
  EXPECT_EQ(ConstantNearest(RGBColor{0x8000, 0, 0x8000}), 137);
  EXPECT_EQ(ConstantNearest(RGBColor{0x7FFF, 0x7FFF, 0x7FFF}), 33);
  EXPECT_EQ(ConstantNearest(RGBColor{0xFFFF, 0xFFFF, 0}), 69);
}

TEST(ColourArithmetic, ReductionAndColorRefs) {
  // Luminance (5 red + 9 green + 2 blue) / 16: 32768 or less is black.
  EXPECT_EQ(ReducedToBlackOrWhite(RGBColor{0x8000, 0x8000, 0x8000}).red, 0);
  EXPECT_EQ(ReducedToBlackOrWhite(RGBColor{0x8002, 0x8002, 0x8002}).red, 0xFFFF);
  EXPECT_EQ(ReducedToBlackOrWhite(RGBColor{0, 0xFFFF, 0}).green, 0xFFFF);
  EXPECT_EQ(ReducedToBlackOrWhite(RGBColor{0xFFFF, 0, 0xFFFF}).blue, 0);
  EXPECT_EQ(ColorRefOf(RGBColor{0, 0, 0}), 0u);
  EXPECT_EQ(ColorRefOf(RGBColor{0xFFFF, 0xFFFF, 0xFFFF}), 0xFFFFFFu);
  EXPECT_EQ(ColorRefOf(RGBColor{0xDD6B, 0x08C2, 0x06A2}), 0x020608DDu);
}

TEST(ColourArithmetic, OppositeHueKeepsSaturationAndValue) {
  RGBColor cyan = OppositeHue(RGBColor{0xFFFF, 0, 0});
  EXPECT_LT(cyan.red, 0x100);
  EXPECT_GT(cyan.green, 0xFF00);
  EXPECT_GT(cyan.blue, 0xFF00);
  RGBColor back = OppositeHue(cyan);
  EXPECT_GT(back.red, 0xFF00);
  EXPECT_LT(back.green, 0x100);
  RGBColor gray = OppositeHue(RGBColor{0x4000, 0x4000, 0x4000});
  EXPECT_EQ(gray.red, 0x4000);
  EXPECT_EQ(gray.blue, 0x4000);
}

TEST(TransferModes, BooleanArithmeticAndUnrenderableModes) {
  struct Case {
    int mode;
    bool unsupported;
    int16_t rop2, background;
  } cases[] = {
      {0, false, 13, 2}, {1, false, 9, 1},   {2, false, 10, 1},  {3, false, 12, 1},
      {4, false, 4, 2},  {5, false, 3, 2},   {6, false, 7, 2},   {7, false, 15, 2},
      {8, false, 13, 2}, {10, false, 10, 1}, {15, false, 15, 2}, {32, false, 13, 2},
      {36, false, 9, 1}, {39, false, 9, 1},  {47, false, 9, 1},  {41, true, 9, 1},
      {42, true, 9, 1},  {64, true, 9, 1},   {16, true, 9, 1},   {-1, true, 9, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.mode);
    ModeInGdi m = ModeInGdiOf(c.mode);
    EXPECT_EQ(m.unsupported, c.unsupported);
    EXPECT_EQ(m.rop2, c.rop2);
    EXPECT_EQ(m.backgroundMode, c.background);
  }
  EXPECT_EQ(StoredPenMode(49), 41);
  EXPECT_EQ(StoredPenMode(50), 42);
  EXPECT_EQ(StoredPenMode(36), 36);
  EXPECT_EQ(StoredPenMode(64), 64);
}

}  // namespace
