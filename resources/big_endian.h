// Numbers as a resource file holds them: big-endian, at any byte offset.
#pragma once
#include <cstdint>

namespace kwe::resources {

inline uint16_t ReadBig16(const uint8_t* p) { return uint16_t(p[0] << 8 | p[1]); }

inline uint32_t ReadBig32(const uint8_t* p) {
  return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
}

inline void WriteBig16(uint8_t* p, uint32_t v) {
  p[0] = uint8_t(v >> 8);
  p[1] = uint8_t(v);
}

inline void WriteBig32(uint8_t* p, uint32_t v) {
  p[0] = uint8_t(v >> 24);
  p[1] = uint8_t(v >> 16);
  p[2] = uint8_t(v >> 8);
  p[3] = uint8_t(v);
}

}  // namespace kwe::resources
