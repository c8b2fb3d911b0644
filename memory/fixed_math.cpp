// Fixed (16.16) and Fract (2.30) multiplication, division, square root and
// conversions, bit-exact with the 68K routines applications were tuned on.
#include "memory/fixed_math.h"

#include <cmath>

#include "FixMath.h"

namespace kwe::fixmath {

SInt32 RoundScaledToLong(double scaled) {
  if (std::isnan(scaled)) return 0;
  double rounded = std::trunc(scaled >= 0 ? scaled + 0.5 : scaled - 0.5);
  if (rounded >= 2147483647.0) return kLargest;
  if (rounded <= -2147483648.0) return kSmallest;
  return static_cast<SInt32>(rounded);
}

namespace {

// Saturated or rounded quotient of two magnitudes, before the sign is
// applied: FixDiv gives up once the integer part would need 16 bits.
uint32_t FixedQuotientMagnitude(uint32_t dividend, uint32_t divisor) {
  if ((dividend >> 15) >= divisor) return static_cast<uint32_t>(kLargest);
  return static_cast<uint32_t>(((uint64_t(dividend) << 16) + divisor / 2) / divisor);
}

// Restoring square root, two bits of the radicand per step, with the
// remainder deciding the rounding: r*r + r < n exactly when n >= (r + 1/2)^2.
uint32_t RoundedSquareRoot(uint64_t radicand) {
  uint64_t remainder = 0, root = 0;
  for (int step = 0; step < 32; ++step) {
    remainder = (remainder << 2) | (radicand >> 62);
    radicand <<= 2;
    root <<= 1;
    uint64_t trial = (root << 1) | 1;
    if (remainder >= trial) {
      remainder -= trial;
      root |= 1;
    }
  }
  if (remainder > root) ++root;
  return static_cast<uint32_t>(root);
}

}  // namespace
}  // namespace kwe::fixmath

using namespace kwe::fixmath;

KWE_API Fixed KWE_CALL FixMul(Fixed a, Fixed b) {
  if (b == kFixedOne) return a;
  if (a == kFixedOne) return b;
  return Low32((int64_t(a) * b + 0x8000) >> 16);
}

KWE_API Fixed KWE_CALL FixDiv(Fixed dividend, Fixed divisor) {
  if (divisor == kFixedOne) return dividend;
  if (divisor == 0) return dividend < 0 ? kSmallest : kLargest;
  uint32_t magnitude = FixedQuotientMagnitude(Magnitude(dividend), Magnitude(divisor));
  SInt32 quotient = static_cast<SInt32>(magnitude);
  return (dividend < 0) != (divisor < 0) ? -quotient : quotient;
}

KWE_API Fixed KWE_CALL FixRatio(SInt16 numer, SInt16 denom) {
  if (numer == denom) return kFixedOne;
  if (denom == 0) return numer < 0 ? -kLargest : kLargest;
  int64_t quotient = int64_t(numer) * kFixedOne / denom;  // C++ division truncates
  return quotient > kLargest ? kLargest : static_cast<Fixed>(quotient);
}

KWE_API SInt16 KWE_CALL FixRound(Fixed x) {
  int64_t value = x;  // 64 bits, so that -0x80000000 has a magnitude
  int64_t whole = value >= 0 ? (value + 0x8000) >> 16 : -((0x8000 - value) >> 16);
  return static_cast<SInt16>(static_cast<uint16_t>(whole));
}

KWE_API SInt32 KWE_CALL Fix2Long(Fixed x) {
  SInt32 whole = static_cast<SInt16>(static_cast<uint16_t>(static_cast<uint32_t>(x) >> 16));
  return whole + ((x & 0x8000) ? 1 : 0);
}

KWE_API Fixed KWE_CALL Long2Fix(SInt32 x) {
  return static_cast<Fixed>(static_cast<uint32_t>(x) << 16);
}

KWE_API double KWE_CALL Fix2X(Fixed x) { return x / 65536.0; }

KWE_API Fixed KWE_CALL X2Fix(double x) { return RoundScaledToLong(x * 65536.0); }

KWE_API Fract KWE_CALL FracMul(Fract a, Fract b) { return Low32((int64_t(a) * b) >> 30); }

KWE_API Fract KWE_CALL FracDiv(Fract dividend, Fract divisor) {
  if (divisor == 0) return dividend >= 0 ? kLargest : kSmallest;
  bool sameSign = (dividend < 0) == (divisor < 0);
  if ((Magnitude(dividend) >> 1) >= Magnitude(divisor)) return sameSign ? kLargest : kSmallest;
  return static_cast<Fract>(int64_t(dividend) * kFractOne / divisor);
}

KWE_API Fract KWE_CALL FracSqrt(Fract x) {
  uint64_t radicand = uint64_t(static_cast<uint32_t>(x)) << 30;
  return static_cast<Fract>(RoundedSquareRoot(radicand));
}

KWE_API double KWE_CALL Frac2X(Fract x) { return x / 1073741824.0; }

KWE_API Fract KWE_CALL X2Frac(double x) { return RoundScaledToLong(x * 1073741824.0); }

KWE_API Fixed KWE_CALL Frac2Fix(Fract x) { return RoundScaledToLong((x / 1073741824.0) * 65536.0); }
