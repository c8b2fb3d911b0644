#include "files/transfer_rules.h"

#include <cstring>

namespace kwe::files {

bool OpenModeForPermission(int permission, uint16_t* mode) {
  switch (permission) {
    case 0:
    case 4: *mode = 2; return true;
    case 1: *mode = 0; return true;
    case 2: *mode = 1; return true;
    case 3: *mode = 0x22; return true;
    default: return false;
  }
}

PositionMode DecodePositionMode(int16_t ioPosMode) {
  PositionMode p;
  uint16_t bits = static_cast<uint16_t>(ioPosMode);
  p.newline = (bits & 0x80) != 0;
  p.newlineChar = static_cast<uint8_t>(bits >> 8);
  p.mode = bits & 3;
  return p;
}

size_t NewlineCut(const void* data, size_t count, uint8_t newlineChar) {
  const void* hit = std::memchr(data, newlineChar, count);
  if (!hit) return 0;
  return static_cast<size_t>(static_cast<const uint8_t*>(hit) - static_cast<const uint8_t*>(data)) +
         1;
}

void FitBlockCounts(uint32_t* clusters, uint32_t* freeClusters, uint32_t* blockSize) {
  while (*clusters > 0x7FFF || *freeClusters > 0x7FFF) {
    *clusters /= 2;
    *freeClusters /= 2;
    *blockSize *= 2;
  }
}

}  // namespace kwe::files
