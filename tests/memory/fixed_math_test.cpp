// Fixed and Fract arithmetic, result for result, with the saturation, sign
// and rounding rules of the 68K routines; and the bit routines.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "FixMath.h"
#include "ToolUtils.h"

namespace {

constexpr SInt32 S(uint32_t bits) { return static_cast<SInt32>(bits); }
constexpr SInt32 kMax = 0x7FFFFFFF, kMin = S(0x80000000);

TEST(FixedMath, ArithmeticRoundsAndSaturatesAsThe68KDid) {
  struct {
    SInt32 (*call)(SInt32, SInt32);
    SInt32 a, b, expected;
  } const cases[] = {
      {FixMul, 1, 0x8000, 1},                         // exactly half an ulp: up
      {FixMul, -1, 0x8000, 0},                        // minus half: up, to 0
      {FixMul, 0x7FFF0000, 0x00020000, -0x00020000},  // the low 32 bits
      {FixDiv, -0x7FFF0000, 0x00000100, S(0x80000001)},
      {FixDiv, 0x8000, 1, kMax},  // |a| >> 15 equal to |b| already saturates
      {FixDiv, 0x00020000, -0x00030000, -0xAAAB},
      {FracMul, -1, 1, -1},                           // arithmetic shift: toward -inf
      {FracMul, 0x00030000, 0x20000000, 0x00018000},  // Fixed 3.0 * Fract 0.5
      {FracDiv, -0x40000000, 0x20000000, kMin},       // |a| >> 1 >= |b|
      {FracDiv, 0x3FFFFFFF, 0x20000000, 0x7FFFFFFE},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(c.a, c.b), c.expected) << &c - cases;
  EXPECT_EQ(FixRatio(2, -3), -0xAAAA) << "truncated";
  EXPECT_EQ(FixRatio(-5, 0), S(0x80000001));
  EXPECT_EQ(FixRound(S(0xFFFE8000)), -2) << "-1.5: half away from zero";
  EXPECT_EQ(Fix2Long(S(0xFFFE8000)), -1) << "-1.5: half upward";
  EXPECT_EQ(FixRound(0x7FFF8000), -32768) << "cut to 16 bits";
  EXPECT_EQ(Frac2Fix(-0x2000), -1) << "half a Fixed ulp, away from zero";
  EXPECT_EQ(X2Fix(-1.0 / 131072), -1);
  EXPECT_EQ(X2Frac(2.0), kMax) << "saturates rather than wrapping";
  EXPECT_EQ(X2Fix(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(FracSqrt(S(0xFFFFFFFF)), kMin) << "the Fract is read unsigned";
  EXPECT_EQ(FracSqrt(0x20000000), 0x2D413CCD);
  EXPECT_EQ(AngleFromSlope(-0x10000), -44) << "trunc(-45 + 0.5)";
}

// The trigonometry works in octants of the routines' own pi/4 (51,472), close
// to the true values everywhere, the extreme arguments included.
TEST(FixedMath, SinesCosinesAndArcTangentsFollowTheTrueValues) {
  constexpr double kPi = 3.14159265358979323846;
  EXPECT_EQ(FracCos(kMin), 491156665);
  for (Fixed x = -600000; x <= 600000; x += 997) {
    double angle = x / 51472.0 * (kPi / 4);
    EXPECT_NEAR(FracSin(x), std::sin(angle) * 1073741824.0, 14000) << x;
    EXPECT_NEAR(FracCos(x), std::cos(angle) * 1073741824.0, 14000) << x;
  }
  EXPECT_EQ(FixATan2(kMin, kMin), -154416);
  for (SInt32 x = -1000; x <= 1000; x += 77)
    for (SInt32 y = -1000; y <= 1000; y += 91)
      EXPECT_NEAR(FixATan2(x, y), std::atan2(y, x) * 65536.0, 2.0) << x << "," << y;
}

// Bit zero is the high bit of the first byte; the byte offset wraps at 64K
// as the 68K's word offset did.
TEST(BitRoutines, BitStringsShiftsAndWords) {
  unsigned char bytes[8] = {};
  for (int n = 0; n < 64; ++n) {
    BitSet(bytes, n);
    for (int k = 0; k < 64; ++k) ASSERT_EQ(BitTst(bytes, k) != 0, k <= n) << n << " " << k;
  }
  for (int n = 1; n < 31; ++n) BitClr(bytes, n);
  EXPECT_EQ(0, std::memcmp(bytes, "\x80\0\0\x01", 4));
  BitClr(bytes, 0x80000);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(BitShift(kMin, -4), S(0xF8000000)) << "right shifts are arithmetic";
  EXPECT_EQ(BitShift(3, 33), 6) << "counts are taken modulo 32";
  EXPECT_EQ(HiWord(S(0x8001FFFE)), static_cast<SInt16>(0x8001));
  EXPECT_EQ(DeltaPoint(Point{-32768, 20}, Point{1, 25}), 0x7FFFFFFB) << "v and h each wrap";
}

}  // namespace
