// The seed fill and CalcMask natively against a plain flood fill (a queue
// of pixels, no segments) on seeded random 1-bit images; a segment stack
// that fills up; seeds outside the image or on black.
#include "quickdraw/masks/seed_fill.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <random>
#include <vector>

namespace {

using namespace kwe::masks;

struct Image {
  int width, height, row;
  std::vector<uint8_t> bits;
  Image(int w, int h) : width(w), height(h), row((w + 15) / 16 * 2), bits(size_t(row) * h, 0) {}
  bool Get(int x, int y) const { return bits[y * row + x / 8] & (0x80 >> (x % 8)); }
  void Set(int x, int y) { bits[y * row + x / 8] |= uint8_t(0x80 >> (x % 8)); }
};

// What the fill must set: every pixel reachable from the seeds through
// pixels white in src and clear in dst.
Image Reference(const Image& src, const Image& dst, std::vector<std::pair<int, int>> seeds) {
  Image out = dst;
  std::deque<std::pair<int, int>> queue;
  auto visit = [&](int x, int y) {
    if (x < 0 || y < 0 || x >= src.width || y >= src.height) return;
    if (src.Get(x, y) || out.Get(x, y)) return;
    out.Set(x, y);
    queue.push_back({x, y});
  };
  for (auto [x, y] : seeds) visit(x, y);
  while (!queue.empty()) {
    auto [x, y] = queue.front();
    queue.pop_front();
    visit(x - 1, y);
    visit(x + 1, y);
    visit(x, y - 1);
    visit(x, y + 1);
  }
  return out;
}

Image Random(std::mt19937& random, int w, int h, int blackPercent) {
  Image m(w, h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      if (int(random() % 100) < blackPercent) m.Set(x, y);
  return m;
}

// From one seed, and from outside the image (CalcMask: what the edges
// cannot reach), on the same random image.
TEST(SeedFill, SeedFillAndCalcMaskMatchAPlainFloodFill) {
  for (unsigned seed = 1; seed <= 400; ++seed) {
    std::mt19937 random(seed);
    int w = 16 * (1 + random() % 6), h = 1 + random() % 60;
    Image src = Random(random, w, h, int(random() % 60));
    Image dst = Random(random, w, h, int(random() % 3) == 0 ? 10 : 0);
    int sx = random() % w, sy = random() % h;
    Image expected = Reference(src, dst, {{sx, sy}});
    bool complete =
        SeedFillRows(OneBitImage{src.bits.data(), src.row, dst.bits.data(), dst.row, w, h}, sx, sy);
    ASSERT_TRUE(complete) << "seed " << seed;
    ASSERT_EQ(dst.bits, expected.bits) << "seed " << seed << " at " << sx << "," << sy;
    std::vector<std::pair<int, int>> edges;
    for (int x = 0; x < w; ++x) edges.push_back({x, 0}), edges.push_back({x, h - 1});
    for (int y = 0; y < h; ++y) edges.push_back({0, y}), edges.push_back({w - 1, y});
    Image reached = Reference(src, Image(w, h), edges), mask(w, h);
    ASSERT_TRUE(CalcMaskRows(src.bits.data(), src.row, mask.bits.data(), mask.row, w, h));
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        ASSERT_NE(mask.Get(x, y), reached.Get(x, y)) << "seed " << seed << " at " << x << "," << y;
  }
}

TEST(SeedFill, SeedsOutsideOrOnBlackAndAFullStack) {
  Image src(32, 8), dst(32, 8);
  src.Set(3, 3);
  OneBitImage image{src.bits.data(), src.row, dst.bits.data(), dst.row, 32, 8};
  EXPECT_FALSE(SeedFillRows(image, 32, 0));
  EXPECT_FALSE(SeedFillRows(image, -1, 0));
  EXPECT_FALSE(SeedFillRows(image, 0, 8));
  EXPECT_TRUE(SeedFillRows(image, 3, 3));
  EXPECT_EQ(dst.bits, Image(32, 8).bits) << "nothing filled";

  // A comb of many one-pixel teeth fills up the stack: the fill stops
  // short, inside what a complete fill sets, and reports it.
  Image comb(2048, 64), out(2048, 64);
  for (int x = 1; x < 2048; x += 2)
    for (int y = 1; y < 64; ++y) comb.Set(x, y);
  bool complete = SeedFillRows(
      OneBitImage{comb.bits.data(), comb.row, out.bits.data(), out.row, 2048, 64}, 0, 63);
  Image expected = Reference(comb, Image(2048, 64), {{0, 63}});
  EXPECT_FALSE(complete);
  for (size_t i = 0; i < out.bits.size(); ++i)
    ASSERT_EQ(out.bits[i] & ~expected.bits[i], 0) << "byte " << i;
}

}  // namespace
