/* Fixed-point (Fixed, 16.16) and fraction (Fract, 2.30) arithmetic.

   Results are bit-exact with the 68K routines: FixMul rounds halves upward,
   FracMul truncates, the divisions saturate instead of faulting. "extended"
   is the platform's 64-bit double. */
#ifndef KWE_FIXMATH_H
#define KWE_FIXMATH_H

#include "MacTypes.h"

enum {
  fixed1 = 0x00010000,
  fract1 = 0x40000000,
  positiveInfinity = 0x7FFFFFFF,
  negativeInfinity = (SInt32)0x80000000
};

/* Rounded to nearest, halves upward; no overflow check. */
KWE_API Fixed KWE_CALL FixMul(Fixed a, Fixed b);
/* Division by zero gives 0x7FFFFFFF (0x80000000 for a negative dividend); an
   overflowing quotient gives 0x7FFFFFFF, or 0x80000001 when negative. */
KWE_API Fixed KWE_CALL FixDiv(Fixed dividend, Fixed divisor);
/* Truncated toward zero; denom 0 gives 0x7FFFFFFF or 0x80000001. */
KWE_API Fixed KWE_CALL FixRatio(SInt16 numer, SInt16 denom);
/* Halves away from zero. */
KWE_API SInt16 KWE_CALL FixRound(Fixed x);
/* Halves upward; the integer part is taken as 16 bits. */
KWE_API SInt32 KWE_CALL Fix2Long(Fixed x);
KWE_API Fixed KWE_CALL Long2Fix(SInt32 x);
KWE_API double KWE_CALL Fix2X(Fixed x);
/* Values beyond the Fixed range saturate to 0x7FFFFFFF / 0x80000000, NaN
   gives 0 (the 68K package substituted -32767.0 for 32768.0 and above). */
KWE_API Fixed KWE_CALL X2Fix(double x);

/* Truncating; also serves Fixed x Fract giving Fixed. */
KWE_API Fract KWE_CALL FracMul(Fract a, Fract b);
/* Truncated toward zero; saturates like FixDiv but to 0x80000000. */
KWE_API Fract KWE_CALL FracDiv(Fract dividend, Fract divisor);
/* x is read as unsigned (0 to 4). */
KWE_API Fract KWE_CALL FracSqrt(Fract x);
KWE_API double KWE_CALL Frac2X(Fract x);
/* Saturates like X2Fix. */
KWE_API Fract KWE_CALL X2Frac(double x);
KWE_API Fixed KWE_CALL Frac2Fix(Fract x);

/* Polynomial approximations over the octant of the angle. */
KWE_API Fract KWE_CALL FracSin(Fixed radians);
KWE_API Fract KWE_CALL FracCos(Fixed radians);
/* The angle of (x, y) in Fixed radians, -pi to pi. */
KWE_API Fixed KWE_CALL FixATan2(SInt32 x, SInt32 y);
/* Degrees, rounded by adding 0.5 whatever the sign. */
KWE_API SInt16 KWE_CALL AngleFromSlope(Fixed slope);

#endif
