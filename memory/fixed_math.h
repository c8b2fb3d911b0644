// Constants and helpers shared by the Fixed and Fract routines and by the
// managers that compute with them (QuickDraw arcs, CopyBits scaling).
#pragma once
#include <cstdint>

#include "MacTypes.h"

namespace kwe::fixmath {

constexpr Fixed kFixedOne = 0x00010000;
constexpr Fract kFractOne = 0x40000000;
constexpr SInt32 kLargest = 0x7FFFFFFF;
constexpr SInt32 kSmallest = INT32_MIN;

// The 68K routines' own value of pi: quarter, half and whole, in Fixed.
constexpr Fixed kFixedQuarterPi = 51472;
constexpr Fixed kFixedHalfPi = 102944;
constexpr Fixed kFixedPi = 205888;

// The low 32 bits of a 64-bit intermediate, as the 68K registers kept them.
constexpr SInt32 Low32(int64_t value) {
  return static_cast<SInt32>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}

// |value| without overflow: 0x80000000 comes back as 2^31.
constexpr uint32_t Magnitude(SInt32 value) {
  return value < 0 ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
}

// trunc(scaled + 0.5) for scaled >= 0, trunc(scaled - 0.5) below; clamped to
// the 32-bit range, NaN giving 0.
SInt32 RoundScaledToLong(double scaled);

}  // namespace kwe::fixmath
