// A block of test data whose every byte follows from a seed, so that any
// byte moved, lost or overwritten shows; shared by the small-block layout
// tests and the small-block heap fuzzer.
#pragma once
#include <cstdint>

namespace kwe_test {

struct SeededBlock {
  unsigned char* data;
  uint32_t size;
  unsigned char seed;
};

inline void FillBlock(const SeededBlock& b) {
  for (uint32_t i = 0; i < b.size; ++i) b.data[i] = static_cast<unsigned char>(b.seed + i);
}

// The first n bytes still as FillBlock left them.
inline bool Holds(const SeededBlock& b, uint32_t n) {
  for (uint32_t i = 0; i < n; ++i) {
    if (b.data[i] != static_cast<unsigned char>(b.seed + i)) return false;
  }
  return true;
}

}  // namespace kwe_test
