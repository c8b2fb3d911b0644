// Colour constants, reductions and the hue turn of InvertColor.
#include "quickdraw/colour/colour_arithmetic.h"

#include <algorithm>

namespace kwe::quickdraw {
namespace {

struct ConstantRow {
  SInt32 constant;
  RGBColor rgb;
};

constexpr ConstantRow kConstants[] = {
    {33, {0x0000, 0x0000, 0x0000}},  {30, {0xFFFF, 0xFFFF, 0xFFFF}},
    {205, {0xDD6B, 0x08C2, 0x06A2}}, {341, {0x0000, 0x8000, 0x11B0}},
    {409, {0x0000, 0x0000, 0xD400}}, {273, {0x0241, 0xAB54, 0xEAFF}},
    {137, {0xF2D7, 0x0856, 0x84EC}}, {69, {0xFC00, 0xF37D, 0x052F}},
};

// By the top bits of red, green and blue.
constexpr SInt32 kNearest[8] = {33, 409, 341, 273, 205, 137, 69, 30};

const ConstantRow* RowAgreeing(SInt32 constant, SInt32 bits) {
  for (const ConstantRow& row : kConstants)
    if ((row.constant & bits) == (constant & bits)) return &row;
  return nullptr;
}

}  // namespace

Hsv ToHsv(const RGBColor& c) {
  int32_t r = c.red, g = c.green, b = c.blue;
  int32_t max = std::max({r, g, b}), min = std::min({r, g, b});
  int32_t delta = max - min;
  Hsv out{0, 0, max};
  if (max == 0 || delta == 0) return out;
  out.s = static_cast<int32_t>(static_cast<int64_t>(delta) * 65535 / max);
  // Six sectors of 65536/6 each.
  int64_t sector;
  if (max == r)
    sector = static_cast<int64_t>(g - b) * 65536 / (6 * static_cast<int64_t>(delta));
  else if (max == g)
    sector = 65536 / 3 + static_cast<int64_t>(b - r) * 65536 / (6 * static_cast<int64_t>(delta));
  else
    sector =
        2 * 65536 / 3 + static_cast<int64_t>(r - g) * 65536 / (6 * static_cast<int64_t>(delta));
  out.h = static_cast<int32_t>((sector + 65536) % 65536);
  return out;
}

RGBColor ToRgb(const Hsv& c) {
  if (c.s == 0)
    return RGBColor{static_cast<UInt16>(c.v), static_cast<UInt16>(c.v), static_cast<UInt16>(c.v)};
  int64_t h6 = static_cast<int64_t>(c.h & 0xFFFF) * 6;  // 0 .. 6 * 65536
  int sector = static_cast<int>(h6 >> 16);
  int64_t f = h6 & 0xFFFF;
  int64_t v = c.v, s = c.s;
  int64_t p = v * (65535 - s) / 65535;
  int64_t q = v * (65535 - s * f / 65536) / 65535;
  int64_t t = v * (65535 - s * (65536 - f) / 65536) / 65535;
  int64_t r, g, b;
  switch (sector) {
    case 0:
      r = v;
      g = t;
      b = p;
      break;
    case 1:
      r = q;
      g = v;
      b = p;
      break;
    case 2:
      r = p;
      g = v;
      b = t;
      break;
    case 3:
      r = p;
      g = q;
      b = v;
      break;
    case 4:
      r = t;
      g = p;
      b = v;
      break;
    default:
      r = v;
      g = p;
      b = q;
      break;
  }
  auto clamp = [](int64_t x) { return static_cast<UInt16>(std::clamp<int64_t>(x, 0, 65535)); };
  return RGBColor{clamp(r), clamp(g), clamp(b)};
}

bool ColourOfConstant(SInt32 constant, RGBColor* rgb) {
  const ConstantRow* row = RowAgreeing(constant, -1);
  if (!row) row = RowAgreeing(constant, 0x1E0);
  if (!row) row = RowAgreeing(constant, 0x1C0);
  if (!row) return false;
  *rgb = row->rgb;
  return true;
}

SInt32 ConstantNearest(const RGBColor& rgb) {
  int index = 4 * (rgb.red >= 0x8000) + 2 * (rgb.green >= 0x8000) + (rgb.blue >= 0x8000);
  return kNearest[index];
}

RGBColor ReducedToBlackOrWhite(const RGBColor& rgb) {
  int32_t luminance = (5 * static_cast<int32_t>(rgb.red) + 9 * static_cast<int32_t>(rgb.green) +
                       2 * static_cast<int32_t>(rgb.blue)) /
                      16;
  return luminance <= 32768 ? RGBColor{0, 0, 0} : RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
}

uint32_t ColorRefOf(const RGBColor& rgb) {
  uint32_t r = rgb.red >> 8, g = rgb.green >> 8, b = rgb.blue >> 8;
  uint32_t ref = r | (g << 8) | (b << 16);
  bool blackOrWhite = ref == 0 || ref == 0xFFFFFF;
  return blackOrWhite ? ref : ref | 0x02000000;
}

// Half a turn of the hue circle: 32767 added to a hue that is non-negative
// as a signed 16-bit value, taken off one that is negative.
RGBColor OppositeHue(const RGBColor& rgb) {
  Hsv hsv = ToHsv(rgb);
  int16_t hue = static_cast<int16_t>(hsv.h);
  hue = static_cast<int16_t>(hue >= 0 ? hue + 32767 : hue - 32767);
  hsv.h = static_cast<uint16_t>(hue);
  return ToRgb(hsv);
}

}  // namespace kwe::quickdraw
