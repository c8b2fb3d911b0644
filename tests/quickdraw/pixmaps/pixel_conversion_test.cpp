// Macintosh pixels to DIB rows and back, natively under the sanitizers: every
// depth, odd widths, areas off the left edge, rows longer than they need.
#include "quickdraw/pixmaps/pixel_conversion.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using namespace kwe::quickdraw;

// Pixel values as the Macintosh has them: the unused top bit of a 16-bit
// pixel and the top byte of a 32-bit one are clear.
uint32_t RandomPixel(std::mt19937& rng, int depth) {
  if (depth == 16) return rng() & 0x7FFF;
  if (depth == 32) return rng() & 0xFFFFFF;
  return rng() & ((1u << depth) - 1);
}

// A seeded sweep: random depth, size, area and spare row bytes; the area goes
// to a DIB and back into a second buffer filled with other bytes, which
// must then equal the first inside the area and keep its own bytes outside.
TEST(PixelConversion, RoundTripThroughTheDibLeavesEveryPixelAndEveryOtherBitAlone) {
  const int depths[] = {1, 2, 4, 8, 16, 32};
  for (unsigned seed = 1; seed <= 400; ++seed) {
    std::mt19937 rng(seed);
    int depth = depths[rng() % 6];
    bool fourBit = depth == 4 && (rng() & 1);
    int width = 1 + static_cast<int>(rng() % 67);
    int height = 1 + static_cast<int>(rng() % 9);
    int32_t rowBytes = (MacRowBytesNeeded(width, depth) + static_cast<int32_t>(rng() % 7) + 1) & ~1;
    std::vector<uint8_t> a(static_cast<size_t>(rowBytes) * height);
    for (auto& b : a) b = static_cast<uint8_t>(rng());
    MacPixels src{a.data(), rowBytes, depth, width, height};
    ASSERT_EQ(CheckMacPixels(src), noErr) << "seed " << seed;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) SetMacPixel(src, x, y, RandomPixel(rng, depth));

    int left = static_cast<int>(rng() % width), top = static_cast<int>(rng() % height);
    int w = 1 + static_cast<int>(rng() % (width - left));
    int h = 1 + static_cast<int>(rng() % (height - top));
    uint8_t index[256];
    for (int i = 0; i < 256; ++i) index[i] = static_cast<uint8_t>(255 - i);  // the reversed order
    const uint8_t* table = (rng() & 1) ? index : nullptr;

    int dibDepth = DibDepthFor(depth, fourBit);
    std::vector<uint8_t> bits(static_cast<size_t>(DibRowBytes(w, dibDepth)) * h);
    DibPixels dib{bits.data(), dibDepth, w, h};
    MacToDib(src, left, top, table, fourBit, dib);

    std::vector<uint8_t> b(a.size());
    for (auto& byte : b) byte = static_cast<uint8_t>(rng());
    const std::vector<uint8_t> before = b;
    MacPixels dst{b.data(), rowBytes, depth, width, height};
    DibToMac(dib, table, fourBit, dst, left, top);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        bool inside = x >= left && x < left + w && y >= top && y < top + h;
        MacPixels old{const_cast<uint8_t*>(before.data()), rowBytes, depth, width, height};
        uint32_t want = inside ? MacPixel(src, x, y) : MacPixel(old, x, y);
        ASSERT_EQ(MacPixel(dst, x, y), want)
            << "seed " << seed << " depth " << depth << " at " << x << "," << y;
      }
      // Bytes past the row's pixels are never written.
      int32_t used = MacRowBytesNeeded(width, depth);
      for (int32_t i = used; i < rowBytes; ++i)
        ASSERT_EQ(b[static_cast<size_t>(y) * rowBytes + i],
                  before[static_cast<size_t>(y) * rowBytes + i])
            << "seed " << seed;
    }
  }
}

TEST(PixelConversion, BadPixelsAreRefusedWithTheirError) {
  uint8_t byte[64] = {};
  const struct {
    MacPixels p;
    OSErr err;
  } cases[] = {
      {{byte, 2, 3, 8, 1}, kDepthErr}, {{byte, 2, 24, 1, 1}, kDepthErr},
      {{byte, 2, 0, 1, 1}, kDepthErr}, {{nullptr, 2, 1, 8, 1}, paramErr},
      {{byte, 3, 8, 3, 1}, paramErr},  {{byte, -2, 1, 8, 1}, paramErr},
      {{byte, 2, 8, 3, 1}, paramErr},  {{byte, 2, 1, 17, 1}, paramErr},
      {{byte, 8, 32, 2, 1}, noErr},    {{byte, 4, 2, 16, 1}, noErr},
      {{byte, 0, 8, 0, 0}, noErr},     {{byte, 2, 8, -1, 1}, paramErr},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CheckMacPixels(c.p), c.err)
        << "depth " << c.p.depth << " rowBytes " << c.p.rowBytes << " width " << c.p.width;
}

}  // namespace
