#include "colour_wheel.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "Quickdraw.h"
#include "QuickdrawColour.h"

namespace {

constexpr int kSize = 48;
constexpr double kPi = 3.14159265358979323846;

// Hue around the centre, saturation outwards, as 0x00RRGGBB; white outside.
uint32_t WheelPixel(int x, int y) {
  double dx = x - kSize / 2 + 0.5, dy = y - kSize / 2 + 0.5;
  double r = std::sqrt(dx * dx + dy * dy) / (kSize / 2);
  if (r > 1) return 0xFFFFFF;
  double hue = (std::atan2(dy, dx) + kPi) / (2 * kPi) * 6;
  int sector = static_cast<int>(hue) % 6;
  double f = hue - std::floor(hue);
  double rgb[3];
  const double rise = f, fall = 1 - f;
  const double table[6][3] = {{1, rise, 0}, {fall, 1, 0}, {0, 1, rise},
                              {0, fall, 1}, {rise, 0, 1}, {1, 0, fall}};
  uint32_t pixel = 0;
  for (int k = 0; k < 3; ++k) {
    rgb[k] = 1 - r + r * table[sector][k];  // white at the centre
    pixel = pixel << 8 | static_cast<uint32_t>(rgb[k] * 255 + 0.5);
  }
  return pixel;
}

}  // namespace

void DrawColourWheel(SInt16 left, SInt16 top) {
  std::vector<uint32_t> pixels(kSize * kSize);
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) pixels[y * kSize + x] = WheelPixel(x, y);
  PixMap wheel{};
  wheel.baseAddr = reinterpret_cast<Ptr>(pixels.data());
  wheel.rowBytes = static_cast<SInt16>(kSize * 4 | 0x8000);
  wheel.bounds = Rect{0, 0, kSize, kSize};
  wheel.pmVersion = 0;
  wheel.pixelType = 16;
  wheel.pixelSize = 32;
  wheel.cmpCount = 3;
  wheel.cmpSize = 8;
  GrafPtr port;
  GetPort(&port);
  const BitMap* from = reinterpret_cast<const BitMap*>(&wheel);
  Rect all{0, 0, kSize, kSize};
  Rect one{top, left, static_cast<SInt16>(top + kSize), static_cast<SInt16>(left + kSize)};
  CopyBits(from, &port->portBits, &all, &one, srcCopy, nullptr);
  SInt16 left2 = static_cast<SInt16>(left + kSize + 12);
  Rect twice{top, left2, static_cast<SInt16>(top + 2 * kSize),
             static_cast<SInt16>(left2 + 2 * kSize)};
  CopyBits(from, &port->portBits, &all, &twice, srcCopy, nullptr);
  // Through a mask of stripes, under the large one: only the region's
  // pixels change.
  SInt16 top3 = static_cast<SInt16>(top + 2 * kSize + 8);
  Rect masked{top3, left2, static_cast<SInt16>(top3 + 2 * kSize),
              static_cast<SInt16>(left2 + 2 * kSize)};
  RgnHandle mask = NewRgn(), stripe = NewRgn();
  for (int i = 0; i < 2 * kSize; i += 16) {
    SetRectRgn(stripe, left2, static_cast<SInt16>(top3 + i), static_cast<SInt16>(left2 + 2 * kSize),
               static_cast<SInt16>(top3 + i + 8));
    UnionRgn(mask, stripe, mask);
  }
  CopyBits(from, &port->portBits, &all, &masked, srcCopy, mask);
  DisposeRgn(stripe);
  DisposeRgn(mask);
}
