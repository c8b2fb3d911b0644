// Pixel maps over pixels in the program's memory, as the CopyBits tests
// make them: any depth, rows even, and the colour table given.
#pragma once
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "Quickdraw.h"

namespace kwe_test {

struct Pixels {
  Pixels(int w, int h, int depth, CTabHandle table = nullptr)
      : rowBytes((w * depth + 15) / 16 * 2), bytes(size_t(rowBytes) * h) {
    map.baseAddr = reinterpret_cast<Ptr>(bytes.data());
    map.rowBytes = SInt16(rowBytes | 0x8000);
    map.bounds = Rect{0, 0, SInt16(h), SInt16(w)};
    map.pixelSize = SInt16(depth);
    map.pixelType = depth > 8 ? 16 : 0;
    map.cmpCount = depth > 8 ? 3 : 1;
    map.cmpSize = SInt16(depth == 32 ? 8 : depth == 16 ? 5 : depth);
    map.pmTable = table;
  }
  // Every byte from the seed.
  Pixels& Scatter(unsigned seed) {
    std::mt19937 random(seed);
    for (UInt8& b : bytes) b = UInt8(random());
    return *this;
  }
  BitMap* Bits() { return reinterpret_cast<BitMap*>(&map); }
  uint32_t At32(int x, int y) const {
    uint32_t v;
    std::memcpy(&v, &bytes[size_t(y) * rowBytes + 4 * x], 4);
    return v & 0xFFFFFF;
  }
  int rowBytes;
  std::vector<UInt8> bytes;
  PixMap map{};
};

}  // namespace kwe_test
