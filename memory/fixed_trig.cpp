// Sine, cosine and arctangent in Fixed and Fract: the 68K routines' own
// polynomials over octants of their pi, so that angles computed by ported
// drawing code land on the same pixels as on the Macintosh.
#include <cmath>

#include "FixMath.h"
#include "memory/fixed_math.h"

using namespace kwe::fixmath;

namespace {

enum class Series { kSine, kCosine };

// sin(|x| + k * pi/4) for k = 0 (sine), 2 (cosine) or 4 (sine of a negative
// angle), folded into the first octant and evaluated there.
Fract OctantSine(Fixed x, int k) {
  uint32_t magnitude = Magnitude(x);
  uint32_t octantIndex = magnitude / kFixedQuarterPi;
  SInt32 rest = static_cast<SInt32>(magnitude % kFixedQuarterPi);
  int octant = static_cast<int>((octantIndex + k) & 7);
  int phase = octant & 3;
  // Fixed to Fract is a shift by 14; odd octants run backward from pi/4.
  Fract t = ((phase == 0 || phase == 2) ? rest : kFixedQuarterPi - rest) << 14;
  Fract s = FracMul(t, t);
  Series series = (phase == 0 || phase == 3) ? Series::kSine : Series::kCosine;
  Fract value;
  if (series == Series::kSine) {
    value = FracMul(-209399, s) + 8946434;
    value = FracMul(value, s) - 178956794;
    value = FracMul(value, s) + kFractOne;
    value = FracMul(value, t);
  } else {
    value = FracMul(-1364951, s) + 44547129;
    value = FracMul(value, s) - 536776893;
    value = FracMul(value, s) + kFractOne;
  }
  return octant >= 4 ? -value : value;
}

// atan(t) for 0 <= t <= 1 (a Fract), as a Fixed angle.
Fixed ArcTangentOfRatio(Fract t) {
  Fract s = FracMul(t, t);
  Fract p = FracMul(-12583336, s) + 56529665;
  p = FracMul(p, s) - 125011984;
  p = FracMul(p, s) + 207812392;
  p = FracMul(p, s) - 357151043;
  p = FracMul(p, s) + 0x3FFFA070;
  p = FracMul(p, t);
  return (p >> 14) + ((p >> 13) & 1);  // Fract to Fixed, rounded
}

// The smaller magnitude over the larger, as a Fract in [0, 1]. Magnitudes
// are unsigned so that -0x80000000 takes part like any other value.
Fract RatioOfMagnitudes(uint32_t smaller, uint32_t larger) {
  return static_cast<Fract>((uint64_t(smaller) << 30) / larger);
}

}  // namespace

KWE_API Fract KWE_CALL FracSin(Fixed radians) { return OctantSine(radians, radians < 0 ? 4 : 0); }

KWE_API Fract KWE_CALL FracCos(Fixed radians) { return OctantSine(radians, 2); }

KWE_API Fixed KWE_CALL FixATan2(SInt32 x, SInt32 y) {
  if (x == 0) return y == 0 ? 0 : (y < 0 ? -kFixedHalfPi : kFixedHalfPi);
  if (y == 0) return x < 0 ? kFixedPi : 0;
  uint32_t ax = Magnitude(x), ay = Magnitude(y);
  Fixed angle;
  if (ay >= ax) {  // measured from the vertical axis
    Fixed a = ArcTangentOfRatio(RatioOfMagnitudes(ax, ay));
    angle = x > 0 ? kFixedHalfPi - a : a + kFixedHalfPi;
  } else {
    Fixed a = ArcTangentOfRatio(RatioOfMagnitudes(ay, ax));
    angle = x < 0 ? kFixedPi - a : a;
  }
  return y < 0 ? -angle : angle;
}

KWE_API SInt16 KWE_CALL AngleFromSlope(Fixed slope) {
  constexpr double kPi = 3.14159265358979323846;
  return static_cast<SInt16>(std::trunc(std::atan(slope / 65536.0) * 180.0 / kPi + 0.5));
}
