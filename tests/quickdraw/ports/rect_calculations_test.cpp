// The rectangle calculations as a table of Toolbox answers: empty results
// are (0, 0, 0, 0), the bottom and right edges lie outside, results may land
// on an argument, and null pointers are refused.
#include <gtest/gtest.h>

#include "Quickdraw.h"

namespace {

std::string Show(const Rect& r) {
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}

TEST(RectCalculations, SectAndUnionOfPairs) {
  struct Case {
    Rect a, b;
    bool meets;
    const char* sect;
    const char* unite;
  } cases[] = {
      {{0, 0, 10, 10}, {5, 5, 15, 15}, true, "5,5,10,10", "0,0,15,15"},
      {{0, 0, 10, 10}, {10, 0, 20, 10}, false, "0,0,0,0", "0,0,20,10"},  // edges only touch
      {{0, 0, 10, 10}, {2, 3, 4, 5}, true, "2,3,4,5", "0,0,10,10"},
      {{5, 5, 5, 9}, {0, 0, 10, 10}, false, "0,0,0,0", "0,0,10,10"},  // empty takes part
      {{-8, -8, -2, -2}, {-4, -6, 6, -3}, true, "-4,-6,-2,-3", "-8,-8,6,-2"},
      {{3, 3, 1, 1}, {0, 0, 4, 4}, false, "0,0,0,0", "0,0,4,4"},  // inverted
  };
  for (const Case& c : cases) {
    Rect sect, unite;
    EXPECT_EQ(SectRect(&c.a, &c.b, &sect), c.meets) << Show(c.a) << " " << Show(c.b);
    EXPECT_EQ(Show(sect), c.sect) << Show(c.a) << " " << Show(c.b);
    UnionRec(&c.a, &c.b, &unite);
    EXPECT_EQ(Show(unite), c.unite) << Show(c.a) << " " << Show(c.b);
    Rect alias = c.a;  // the result may be one of the arguments
    SectRect(&alias, &c.b, &alias);
    EXPECT_EQ(Show(alias), c.sect);
  }
}

TEST(RectCalculations, SetOffsetInsetPointsAndEmptiness) {
  Rect r;
  SetRec(&r, 10, 20, 30, 60);  // left, top, right, bottom
  EXPECT_EQ(Show(r), "20,10,60,30");
  OffsetRec(&r, -15, 5);
  EXPECT_EQ(Show(r), "25,-5,65,15");
  InsetRec(&r, 2, 10);
  EXPECT_EQ(Show(r), "35,-3,55,13");
  InsetRec(&r, -3, -1);
  EXPECT_EQ(Show(r), "34,-6,56,16");
  Rect thin = r;
  InsetRec(&thin, 11, 0);  // width 22 - 2 x 11 = 0: empty, so all zeros
  EXPECT_EQ(Show(thin), "0,0,0,0");
  EXPECT_TRUE(EmptyRect(&thin));
  EXPECT_FALSE(EmptyRect(&r));

  const Rect box{0, 0, 10, 20};
  struct {
    Point pt;
    bool in;
  } points[] = {{{0, 0}, true},   {{9, 19}, true},  {{10, 5}, false},
                {{5, 20}, false}, {{-1, 5}, false}, {{5, -1}, false}};
  for (auto& p : points) EXPECT_EQ(PtInRec(p.pt, &box), p.in) << p.pt.v << "," << p.pt.h;

  Rect same = box, other{0, 0, 10, 21};
  EXPECT_TRUE(EqualRec(&box, &same));
  EXPECT_FALSE(EqualRec(&box, &other));
  EXPECT_FALSE(EqualRec(&box, nullptr));
  EXPECT_FALSE(SectRect(nullptr, &box, &same));
  EXPECT_FALSE(PtInRec(Point{1, 1}, nullptr));
  EXPECT_TRUE(EmptyRect(nullptr));
}

}  // namespace
