#include "quickdraw/cursors/cursor_planes.h"

#include <cstring>

namespace kwe::quickdraw {
namespace {

// Each bit of a nibble twice: 0b1010 becomes 0b11001100.
constexpr uint8_t kDoubledNibble[16] = {0x00, 0x03, 0x0C, 0x0F, 0x30, 0x33, 0x3C, 0x3F,
                                        0xC0, 0xC3, 0xCC, 0xCF, 0xF0, 0xF3, 0xFC, 0xFF};

uint16_t Swapped(uint16_t w) { return uint16_t(w << 8 | w >> 8); }

}  // namespace

void MakeWindowsCursorPlanes(const uint8_t* data, const uint8_t* mask, bool doubleSize,
                             WindowsCursorPlanes* planes) {
  std::memset(planes->andPlane, 0xFF, sizeof planes->andPlane);
  std::memset(planes->xorPlane, 0x00, sizeof planes->xorPlane);
  for (int row = 0; row < kCursorRows; ++row) {
    uint8_t andBytes[2], xorBytes[2];
    for (int i = 0; i < 2; ++i) {
      uint8_t d = data[row * 2 + i], m = mask[row * 2 + i];
      andBytes[i] = uint8_t(~m);
      xorBytes[i] = uint8_t(d ^ m);
    }
    if (!doubleSize) {
      size_t at = size_t(row) * kWindowsCursorRowBytes;
      std::memcpy(planes->andPlane + at, andBytes, 2);
      std::memcpy(planes->xorPlane + at, xorBytes, 2);
      continue;
    }
    for (int copy = 0; copy < 2; ++copy) {
      size_t at = size_t(row * 2 + copy) * kWindowsCursorRowBytes;
      for (int i = 0; i < 2; ++i) {
        planes->andPlane[at + i * 2] = kDoubledNibble[andBytes[i] >> 4];
        planes->andPlane[at + i * 2 + 1] = kDoubledNibble[andBytes[i] & 0x0F];
        planes->xorPlane[at + i * 2] = kDoubledNibble[xorBytes[i] >> 4];
        planes->xorPlane[at + i * 2 + 1] = kDoubledNibble[xorBytes[i] & 0x0F];
      }
    }
  }
}

HotSpotWords ReadHotSpot(const uint8_t* p, bool bigEndian) {
  HotSpotWords spot;
  std::memcpy(&spot.v, p, 2);
  std::memcpy(&spot.h, p + 2, 2);
  if (bigEndian) spot = HotSpotWords{Swapped(spot.v), Swapped(spot.h)};
  return spot;
}

void WriteHotSpot(uint8_t* p, HotSpotWords spot, bool bigEndian) {
  if (bigEndian) spot = HotSpotWords{Swapped(spot.v), Swapped(spot.h)};
  std::memcpy(p, &spot.v, 2);
  std::memcpy(p + 2, &spot.h, 2);
}

}  // namespace kwe::quickdraw
