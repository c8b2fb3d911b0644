// Colour arithmetic of QuickDraw's colour calls: the old colour constants,
// reduction to black or white, Win32 COLORREFs and the HSV turn of
// InvertColor. Byte work only, so it runs natively too.
#pragma once
#include <cstdint>

#include "MacTypes.h"

namespace kwe::quickdraw {

// The table row of an old colour constant: an exact match, else the first
// row agreeing in bits 0x1E0, else in bits 0x1C0; false when none does.
bool ColourOfConstant(SInt32 constant, RGBColor* rgb);
// The old constant nearest an RGB colour, by the top bit of each component.
SInt32 ConstantNearest(const RGBColor& rgb);

// Black or white by luminance, for 1-bit devices.
RGBColor ReducedToBlackOrWhite(const RGBColor& rgb);
// The high byte of each component; palette-relative unless pure black or white.
uint32_t ColorRefOf(const RGBColor& rgb);

// HSV with each of hue, saturation and value in 0..65535, and the
// Toolbox's conversions both ways.
struct Hsv {
  int32_t h, s, v;
};
Hsv ToHsv(const RGBColor& c);
RGBColor ToRgb(const Hsv& c);

// The colour opposite on the hue circle, same saturation and value.
RGBColor OppositeHue(const RGBColor& rgb);

}  // namespace kwe::quickdraw
