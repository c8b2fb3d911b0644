// The scanline seed fill behind SeedFill, CalcMask, CalcCMask and
// KWE_CreateMask: over 1-bit rows (leftmost pixel in the high bit), with a
// stack of at most 999 segments. Portable: it runs natively.
#pragma once
#include <cstdint>

namespace kwe::masks {

constexpr int kSegmentStackEntries = 999;

struct OneBitImage {
  const uint8_t* src = nullptr;
  int srcRow = 0;  // bytes per row
  uint8_t* dst = nullptr;
  int dstRow = 0;
  int width = 0;  // pixels
  int height = 0;
};

// Sets in dst every pixel reachable from (seedH, seedV) through pixels that
// are white in src and clear in dst (left, right, up and down). False when
// the seed lies outside the image or when a segment did not fit on the
// stack (the fill then stops short of some pixels); true otherwise.
bool SeedFillRows(const OneBitImage& image, int seedH, int seedV);

// CalcMask's work: in dst, every pixel of the width x height image that
// cannot be reached from outside it through white pixels. Bits of dst past
// width are left as they are. False when memory is short (dst untouched).
bool CalcMaskRows(const uint8_t* src, int srcRow, uint8_t* dst, int dstRow, int width, int height);

}  // namespace kwe::masks
