// Fixed and Fract arithmetic, result for result, with every saturation rule
// and sign case of the 68K routines; and the bit routines.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "FixMath.h"
#include "ToolUtils.h"
#include "memory/bit_routines.h"

namespace {

constexpr SInt32 S(uint32_t bits) { return static_cast<SInt32>(bits); }

struct BinaryCase {
  SInt32 a, b, expected;
};

void ExpectBinary(const char* name, SInt32 (*call)(SInt32, SInt32),
                  std::initializer_list<BinaryCase> cases) {
  for (const BinaryCase& c : cases)
    EXPECT_EQ(call(c.a, c.b), c.expected)
        << name << std::hex << "(0x" << c.a << ", 0x" << c.b << ")";
}

TEST(FixedMath, MultiplicationRoundsAndDivisionSaturates) {
  ExpectBinary("FixMul", FixMul,
               {
                   {0x00018000, 0x00018000, 0x00024000},        // 1.5 * 1.5
                   {-1, 1, 0},                                  // -2^-32 rounds up to 0
                   {1, 0x8000, 1},                              // exactly half an ulp: up
                   {-1, 0x8000, 0},                             // minus half: up, to 0
                   {-1, 0x8001, -1},                            // past half: down
                   {S(0x80000000), 0x00010000, S(0x80000000)},  // b = 1.0 gives a
                   {-0x00020000, 0x00030000, -0x00060000},
                   {0x7FFF0000, 0x00020000, -0x00020000},  // the low 32 bits
               });
  ExpectBinary("FixDiv", FixDiv,
               {
                   {0x00010000, 0, 0x7FFFFFFF},
                   {0, 0, 0x7FFFFFFF},
                   {-0x00010000, 0, S(0x80000000)},
                   {0x7FFF0000, 0x00000100, 0x7FFFFFFF},
                   {-0x7FFF0000, 0x00000100, S(0x80000001)},
                   {0x7FFF0000, -0x00000100, S(0x80000001)},
                   {-0x7FFF0000, -0x00000100, 0x7FFFFFFF},
                   {S(0x80000000), 2, S(0x80000001)},
                   {0x8000, 1, 0x7FFFFFFF},  // |a| >> 15 equal to |b| already saturates
                   {0x7FFF, 1, 0x7FFF0000},  // just below it does not
                   {S(0x80000000), 0x00010000, S(0x80000000)},  // b = 1.0 gives a untouched
                   {0x00010000, 0x00030000, 0x5555},            // 1/3 rounds down
                   {0x00020000, 0x00030000, 0xAAAB},            // 2/3 rounds up
                   {-0x00020000, 0x00030000, -0xAAAB},
                   {0x00020000, -0x00030000, -0xAAAB},
               });
  ExpectBinary("FracMul", FracMul,
               {
                   {0x40000000, 0x12345678, 0x12345678},
                   {-0x40000000, 0x20000000, -0x20000000},
                   {-1, 1, -1},  // arithmetic shift: toward -inf
                   {1, 1, 0},
                   {0x00030000, 0x20000000, 0x00018000},  // Fixed 3.0 * Fract 0.5
                   {0x7FFFFFFF, 0x7FFFFFFF, -4},          // no overflow check
               });
  ExpectBinary("FracDiv", FracDiv,
               {
                   {0x12345678, 0, 0x7FFFFFFF},
                   {0, 0, 0x7FFFFFFF},
                   {-1, 0, S(0x80000000)},
                   {0x40000000, 0x40000000, 0x40000000},
                   {0x40000000, 0x20000000, 0x7FFFFFFF},  // |a| >> 1 >= |b|, signs agree
                   {-0x40000000, 0x20000000, S(0x80000000)},
                   {0x40000000, -0x20000000, S(0x80000000)},
                   {-0x40000000, -0x20000000, 0x7FFFFFFF},
                   {1, 3, 357913941},
                   {-1, 3, -357913941},
                   {0x3FFFFFFF, 0x20000000, 0x7FFFFFFE},  // just below saturation
               });
}

TEST(FixedMath, RatiosAndRoundingTruncateOrRoundByTheirOwnRules) {
  // FixRatio truncates toward zero and saturates on a zero denominator.
  struct {
    SInt16 numer, denom;
    Fixed expected;
  } const ratios[] = {{1, 3, 0x5555},           {2, -3, -0xAAAA},
                      {-2, 3, -0xAAAA},         {1, 2, 0x8000},
                      {0, 0, 0x10000},          {-7, -7, 0x10000},
                      {5, 0, 0x7FFFFFFF},       {-5, 0, S(0x80000001)},
                      {-32768, -1, 0x7FFFFFFF}, {-32768, 1, S(0x80000000)},
                      {32767, 1, 0x7FFF0000}};
  for (const auto& c : ratios)
    EXPECT_EQ(FixRatio(c.numer, c.denom), c.expected) << c.numer << "/" << c.denom;

  // FixRound goes half away from zero, Fix2Long half upward.
  struct {
    Fixed x;
    SInt16 round;
    SInt32 toLong;
  } const roundings[] = {
      {0x00018000, 2, 2},           // 1.5
      {S(0xFFFE8000), -2, -1},      // -1.5
      {S(0xFFFEC000), -1, -1},      // -1.25
      {S(0xFFFD8000), -3, -2},      // -2.5
      {S(0xFFFF4000), -1, -1},      // -0.75
      {0x0000FFFF, 1, 1},           //
      {S(0xFFFF0001), -1, -1},      //
      {S(0xFFFD0000), -3, -3},      // whole numbers stay
      {0x7FFF8000, -32768, 32768},  // FixRound cut to 16 bits; Fix2Long is not
      {S(0x80000000), -32768, -32768},
  };
  for (const auto& c : roundings) {
    EXPECT_EQ(FixRound(c.x), c.round) << std::hex << c.x;
    EXPECT_EQ(Fix2Long(c.x), c.toLong) << std::hex << c.x;
  }
  EXPECT_EQ(Long2Fix(-1), S(0xFFFF0000));
  EXPECT_EQ(Long2Fix(0x12345), 0x23450000) << "no overflow check";
  EXPECT_EQ(Frac2Fix(0x2000), 1) << "half a Fixed ulp, away from zero";
  EXPECT_EQ(Frac2Fix(-0x2000), -1);
  EXPECT_EQ(Frac2Fix(0x1FFF), 0);
  EXPECT_EQ(Frac2Fix(S(0x80000000)), -0x20000);
  EXPECT_EQ(AngleFromSlope(0x10000), 45);
  EXPECT_EQ(AngleFromSlope(-0x10000), -44) << "trunc(-45 + 0.5): a half whatever the sign";
  EXPECT_EQ(AngleFromSlope(0x1BB68), 60);
  EXPECT_EQ(AngleFromSlope(0x7FFFFFFF), 90);
}

TEST(FixedMath, DoubleConversionsSaturateAndRoundAwayFromZero) {
  EXPECT_EQ(Fix2X(-0x8000), -0.5);
  EXPECT_EQ(Frac2X(S(0xC0000000)), -1.0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct {
    double x;
    Fixed fixed;
    Fract fract;
  } const cases[] = {
      {-1.5, -0x18000, -0x60000000},
      {1.0 / 131072, 1, 0x2000},  // half a Fixed ulp rounds away from zero
      {-1.0 / 131072, -1, -0x2000},
      {32767.99999, 0x7FFFFFFF, 0x7FFFFFFF},
      {32768.0, 0x7FFFFFFF, 0x7FFFFFFF},  // saturates rather than wrapping
      {-32768.0, S(0x80000000), S(0x80000000)},
      {1e10, 0x7FFFFFFF, 0x7FFFFFFF},
      {-1e10, S(0x80000000), S(0x80000000)},
      {2.0, 0x20000, 0x7FFFFFFF},
      {-2.0, -0x20000, S(0x80000000)},
      {nan, 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(X2Fix(c.x), c.fixed) << c.x;
    EXPECT_EQ(X2Frac(c.x), c.fract) << c.x;
  }
}

TEST(FixedMath, FracSqrtRoundsTheRootOfAnUnsignedFract) {
  struct {
    uint32_t x, root;
  } const cases[] = {{0x40000000, 0x40000000}, {0x20000000, 0x2D413CCD},
                     {0xFFFFFFFF, 0x80000000}, {0, 0},
                     {0x80000000, 0x5A82799A}, {1, 0x8000}};
  for (const auto& c : cases)
    EXPECT_EQ(static_cast<uint32_t>(FracSqrt(S(c.x))), c.root) << std::hex << c.x;
}

// The polynomial works in octants of the routines' own pi/4 (51,472).
constexpr double kPi = 3.14159265358979323846;
double OctantAngle(Fixed x) { return std::fabs(double(x)) / 51472.0 * (kPi / 4); }

TEST(FixedMath, FracSinAndFracCosFollowTheOctantPolynomials) {
  struct {
    Fixed x;
    Fract sine, cosine;
  } const exact[] = {
      {0, 0, 0x40000000},
      {1, 16384, 0x40000000},
      {25736, 410904313, 992018015},
      {51472, 759259157, 759251815},
      {102944, 0x40000000, 0},
      {205888, 0, -0x40000000},
      {300000, -1064007689, -144265873},
      {-25736, -410904313, 992018015},
      {0x7FFFFFFF, 954828152, 491171235},
      {S(0x80000000), -954835646, 491156665},
  };
  for (const auto& c : exact) {
    EXPECT_EQ(FracSin(c.x), c.sine) << c.x;
    EXPECT_EQ(FracCos(c.x), c.cosine) << c.x;
  }
  for (Fixed x = -600000; x <= 600000; x += 997) {
    double sign = x < 0 ? -1.0 : 1.0;
    EXPECT_NEAR(FracSin(x), sign * std::sin(OctantAngle(x)) * 1073741824.0, 14000) << x;
    EXPECT_NEAR(FracCos(x), std::cos(OctantAngle(x)) * 1073741824.0, 14000) << x;
  }
}

TEST(FixedMath, FixATan2CoversEveryQuadrantAndAxis) {
  struct {
    SInt32 x, y;
    Fixed angle;
  } const cases[] = {{0, 0, 0},
                     {0, 5, 102944},
                     {0, -5, -102944},
                     {-3, 0, 205888},
                     {3, 0, 0},
                     {1, 1, 51472},
                     {-1, 1, 154416},
                     {1, -1, -51472},
                     {-1, -1, -154416},
                     {3, 4, 60771},
                     {4, 3, 42173},
                     {-4, 3, 163715},
                     {100, -173, -68596},
                     {0x7FFFFFFF, 1, 0},
                     {1, 0x7FFFFFFF, 102944},
                     {S(0x80000000), S(0x80000000), -154416}};
  for (const auto& c : cases) EXPECT_EQ(FixATan2(c.x, c.y), c.angle) << c.x << "," << c.y;
  for (SInt32 x = -1000; x <= 1000; x += 77)
    for (SInt32 y = -1000; y <= 1000; y += 91)
      EXPECT_NEAR(FixATan2(x, y), std::atan2(y, x) * 65536.0, 2.0) << x << "," << y;
}

// Bit zero is the high bit of the first byte; the byte offset wraps at 64K
// as the 68K's word offset did.
TEST(BitRoutines, BitStringsCountFromTheHighBitOfTheFirstByte) {
  unsigned char bytes[8] = {};
  for (int n = 0; n < 64; ++n) {
    BitSet(bytes, n);
    for (int k = 0; k < 64; ++k) ASSERT_EQ(BitTst(bytes, k) != 0, k <= n) << n << " " << k;
  }
  const unsigned char expected[4] = {0x80, 0x00, 0x00, 0x01};
  for (int n = 1; n < 31; ++n) BitClr(bytes, n);
  EXPECT_EQ(0, std::memcmp(bytes, expected, 4));
  EXPECT_TRUE(BitTst(bytes, 0x80000));
  BitClr(bytes, 0x80000);
  EXPECT_EQ(bytes[0], 0);
}

TEST(BitRoutines, LogicalOperationsShiftsAndWords) {
  EXPECT_EQ(BitAnd(0x0F0F0F0F, 0x00FF00FF), 0x000F000F);
  EXPECT_EQ(BitOr(0x0F000000, 0x000000F0), 0x0F0000F0);
  EXPECT_EQ(BitXor(-1, 0x0000FFFF), S(0xFFFF0000));
  EXPECT_EQ(kwe::utilities::BitNot(0x0000FFFF), S(0xFFFF0000));
  struct {
    SInt32 value;
    SInt16 count;
    SInt32 expected;
  } const shifts[] = {
      {S(0x80000000), -4, S(0xF8000000)},  // right shifts are arithmetic
      {1, 31, S(0x80000000)},
      {3, 32, 3},  // counts are taken modulo 32
      {3, 33, 6},
      {-64, -33, -32},
      {0x1234, -32768, 0x1234},  // -(-32768) & 31 is 0
  };
  for (const auto& c : shifts) EXPECT_EQ(BitShift(c.value, c.count), c.expected) << c.count;
  EXPECT_EQ(HiWord(S(0x8001FFFE)), static_cast<SInt16>(0x8001));
  EXPECT_EQ(LoWord(S(0x8001FFFE)), -2);
  EXPECT_EQ(DeltaPoint(Point{10, 20}, Point{3, 25}), S(0x0007FFFB));  // v 7, h -5
  EXPECT_EQ(DeltaPoint(Point{-32768, 0}, Point{1, 0}), 0x7FFF0000);   // each half wraps
}

}  // namespace
