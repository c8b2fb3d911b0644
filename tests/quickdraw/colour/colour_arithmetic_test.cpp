// What a 1-bit device (a monochrome printer) gets for a colour, natively:
// the screen and DIB sections the other tests draw into are never 1-bit.
#include "quickdraw/colour/colour_arithmetic.h"

#include <gtest/gtest.h>

namespace {

using namespace kwe::quickdraw;

// Luminance (5 red + 9 green + 2 blue) / 16: 32768 or less is black.
TEST(ColourArithmetic, OneBitDevicesGetBlackOrWhiteByLuminance) {
  const struct {
    RGBColor rgb;
    UInt16 reduced;
  } cases[] = {{{0x8000, 0x8000, 0x8000}, 0},      {{0x8002, 0x8002, 0x8002}, 0xFFFF},
               {{0, 0xFFFF, 0}, 0xFFFF},           {{0xFFFF, 0, 0xFFFF}, 0},
               {{0xFFFF, 0xFFFF, 0xFFFF}, 0xFFFF}, {{0, 0, 0xFFFF}, 0}};
  for (const auto& c : cases) {
    RGBColor out = ReducedToBlackOrWhite(c.rgb);
    EXPECT_EQ(out.red, c.reduced) << c.rgb.red << "," << c.rgb.green << "," << c.rgb.blue;
    EXPECT_TRUE(out.red == out.green && out.green == out.blue);
  }
}

}  // namespace
