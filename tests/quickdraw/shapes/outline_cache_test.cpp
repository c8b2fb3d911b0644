// The outline cache against the outlines computed afresh: a seeded sweep of
// shapes at random places (replayable by its seed), and the bound on what
// the cache keeps.
#include "quickdraw/shapes/outline_cache.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace kwe::quickdraw;

Outline Reference(const OutlineShape& s, int left, int top) {
  Outline points =
      s.kind == OutlineKind::RoundRect
          ? RoundRectOutline(left, top, left + s.width, top + s.height, s.first, s.second)
          : ArcOutline(left, top, left + s.width, top + s.height, s.first, s.second);
  if (s.kind == OutlineKind::Wedge)
    points.push_back(OutlinePoint{left + (s.width + 1) / 2, top + (s.height + 1) / 2});
  return Simplified(points);
}

// Spans that record the outline they were made from: its first point and
// its length.
SpanList Recording(const Outline& outline) {
  if (outline.empty()) return {};
  return {ShapeSpan{outline[0].x, outline[0].y, static_cast<int32_t>(outline.size()), 0}};
}

// Shapes repeat (few sizes) so that most lookups hit, at places on both
// sides of the origin: a cached outline must be the one computed there,
// including the points that lie exactly halfway between two pixels.
TEST(OutlineCache, PlacedOutlinesEqualOutlinesComputedInPlace) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    std::mt19937 random(seed);
    auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    OutlineShape last{};
    for (int step = 0; step < 3000; ++step) {
      OutlineShape s{
          static_cast<OutlineKind>(below(3)), below(2) == 0, 1 + below(12), 1 + below(12), 0, 0};
      if (s.kind == OutlineKind::RoundRect) {
        s.first = below(s.width + 1);
        s.second = below(s.height + 1);
      } else {
        s.first = 45 * below(9) - 90;
        s.second = 30 * below(25) - 360;
      }
      int left = below(2000) - 1000, top = below(2000) - 1000;
      if (step % 2) {  // the same numbers the other way: framed and filled are kept apart
        s = last;
        s.area = !last.area;
      }
      last = s;
      std::string where = "seed " + std::to_string(seed) + " step " + std::to_string(step);
      if (s.area) {  // filled: spans made once from the outline at the origin
        Outline origin = Reference(s, 0, 0);
        const SpanList& spans = ShapeSpans(s, Recording);
        ASSERT_EQ(spans.size(), origin.empty() ? 0u : 1u) << where;
        if (origin.empty()) continue;
        EXPECT_EQ(spans[0].left, origin[0].x) << where;
        EXPECT_EQ(spans[0].top, origin[0].y) << where;
        EXPECT_EQ(spans[0].right, static_cast<int32_t>(origin.size())) << where;
        continue;
      }
      const Outline& placed = PlacedOutline(s, left, top);
      Outline want = Reference(s, left, top);
      ASSERT_EQ(placed.size(), want.size()) << where;
      for (size_t i = 0; i < want.size(); ++i) {
        ASSERT_EQ(placed[i].x, want[i].x) << where << " point " << i;
        ASSERT_EQ(placed[i].y, want[i].y) << where << " point " << i;
      }
    }
  }
}

// A program drawing ever new sizes (a zoom, a growing plot) must not make
// the cache grow without end; what it keeps after starting again is still
// right.
TEST(OutlineCache, StaysWithinItsLimit) {
  size_t most = 0;
  for (int size = 1; size <= 3 * static_cast<int>(kOutlineCacheLimit); ++size) {
    OutlineShape s{OutlineKind::Arc, true, size, size / 2 + 1, 0, 360};
    ShapeSpans(s, Recording);
    PlacedOutline(OutlineShape{OutlineKind::Arc, false, size, 3, 0, 360}, 0, 0);
    most = std::max(most, OutlineCacheSize());
  }
  EXPECT_LE(most, kOutlineCacheLimit);
  EXPECT_GT(most, kOutlineCacheLimit / 2) << "the cache keeps what it is given";
  OutlineShape s{OutlineKind::Arc, false, 20, 10, 0, 360};
  Outline want = Reference(s, 5, 7);
  const Outline& placed = PlacedOutline(s, 5, 7);
  ASSERT_EQ(placed.size(), want.size());
  EXPECT_EQ(placed.back().x, want.back().x);
}

}  // namespace
