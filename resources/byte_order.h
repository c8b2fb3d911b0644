// Byte reversal of the fields of resource data, the one operation every
// conversion between Macintosh (big-endian) and native order is made of.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kwe::byteswap {

inline void ReverseWord(uint8_t* p) {
  uint16_t v;
  std::memcpy(&v, p, 2);
  v = __builtin_bswap16(v);
  std::memcpy(p, &v, 2);
}

inline void ReverseLong(uint8_t* p) {
  uint32_t v;
  std::memcpy(&v, p, 4);
  v = __builtin_bswap32(v);
  std::memcpy(p, &v, 4);
}

// Four consecutive words (a Rect, a ColorSpec) in one 64-bit step.
inline void ReverseFourWords(uint8_t* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  v = ((v & 0x00FF00FF00FF00FFull) << 8) | ((v >> 8) & 0x00FF00FF00FF00FFull);
  std::memcpy(p, &v, 8);
}

// Byte k takes byte n - 1 - k.
inline void ReverseBytes(uint8_t* p, size_t n) {
  for (size_t i = 0, j = n - 1; i < j; ++i, --j) {
    uint8_t t = p[i];
    p[i] = p[j];
    p[j] = t;
  }
}

inline uint16_t NativeWord(const uint8_t* p) {
  uint16_t v;
  std::memcpy(&v, p, 2);
  return v;
}

inline uint32_t NativeLong(const uint8_t* p) {
  uint32_t v;
  std::memcpy(&v, p, 4);
  return v;
}

inline void StoreNativeWord(uint8_t* p, uint16_t v) { std::memcpy(p, &v, 2); }

}  // namespace kwe::byteswap
