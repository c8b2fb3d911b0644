// The sine table and the outlines built from it, natively.
#include "quickdraw/shape_outlines.h"

#include <gtest/gtest.h>

namespace {

using namespace kwe::quickdraw;

TEST(ShapeOutlines, SineTableIsExactAtTheQuadrants) {
  EXPECT_EQ(SineOfDegrees(0), 0.0);
  EXPECT_EQ(SineOfDegrees(90), 1.0);
  EXPECT_EQ(SineOfDegrees(180), 0.0);
  EXPECT_EQ(SineOfDegrees(270), -1.0);
  EXPECT_EQ(SineOfDegrees(-90), -1.0);
  EXPECT_EQ(CosineOfDegrees(0), 1.0);
  EXPECT_EQ(SineOfDegrees(30 + 720), SineOfDegrees(30));
  EXPECT_NEAR(SineOfDegrees(30), 0.5, 1e-12);
}

TEST(ShapeOutlines, ArcsStepFourDegreesClockwiseFromTwelve) {
  Outline oval = ArcOutline(0, 0, 100, 50, 0, 360);
  ASSERT_EQ(oval.size(), 91u);
  EXPECT_EQ(oval[0].x, 50);  // 12 o'clock
  EXPECT_EQ(oval[0].y, 0);
  EXPECT_EQ(oval[90].x, oval[0].x);
  Outline quarter = ArcOutline(0, 0, 100, 100, 0, 90);
  ASSERT_EQ(quarter.size(), 24u);    // 0, 4, ..., 88, then 90 exactly
  EXPECT_EQ(quarter.back().x, 100);  // 3 o'clock
  EXPECT_EQ(quarter.back().y, 50);
  Outline backwards = ArcOutline(0, 0, 100, 100, 90, -90);
  EXPECT_EQ(backwards.front().x, quarter.front().x);
  EXPECT_EQ(backwards.back().y, quarter.back().y);
  EXPECT_TRUE(ArcOutline(0, 0, 10, 10, 45, 0).empty());
  EXPECT_EQ(ArcOutline(0, 0, 10, 10, -30, 10).front().x,
            ArcOutline(0, 0, 10, 10, 330, 10).front().x);
}

TEST(ShapeOutlines, RoundRectsCloseAndPenSweepsCoverBothEnds) {
  Outline rr = RoundRectOutline(0, 0, 40, 20, 10, 10);
  EXPECT_EQ(rr.front().x, rr.back().x);
  EXPECT_EQ(rr.front().y, rr.back().y);
  for (const OutlinePoint& p : rr) {
    EXPECT_GE(p.x, 0);
    EXPECT_LE(p.x, 40);
    EXPECT_GE(p.y, 0);
    EXPECT_LE(p.y, 20);
  }
  std::vector<int> counts;
  Outline sweep = PenSweep(Outline{{10, 10}, {20, 0}, {0, 0}}, 3, 2, &counts);
  ASSERT_EQ(counts.size(), 2u);
  EXPECT_EQ(counts[0], 6);
  EXPECT_EQ(sweep[0].x, 10);  // up and to the right: from the start corner
  EXPECT_EQ(sweep[2].x, 23);
  PenSweep(Outline{{5, 5}}, 2, 2, &counts);
  EXPECT_EQ(counts.size(), 1u);
}

}  // namespace
