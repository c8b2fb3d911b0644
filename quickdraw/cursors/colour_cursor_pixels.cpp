#include "quickdraw/cursors/colour_cursor_pixels.h"

#include <algorithm>

#include "resources/big_endian.h"

namespace kwe::quickdraw {
namespace {

using resources::ReadBig16;
using resources::ReadBig32;

// Offsets in the CCrsr record and its PixMap.
constexpr size_t kTypeAt = 0, kMapAt = 2, kDataAt = 6, kOneBitAt = 20, kMaskAt = 52;
constexpr size_t kRowBytesAt = 4, kBoundsAt = 6, kPixelSizeAt = 32, kTableAt = 42;
constexpr size_t kPixMapBytes = 50, kTableHeaderBytes = 8, kColourSpecBytes = 8;
constexpr uint16_t kColourCursorType = 0x8001;
constexpr uint16_t kDeviceTableFlag = 0x8000;  // entries by position, not by value

bool Holds(size_t size, uint64_t at, uint64_t bytes) { return at <= size && bytes <= size - at; }

bool Bit(const uint8_t* rows, int x, int y) { return rows[y * 2 + x / 8] >> (7 - x % 8) & 1; }

// A colour table's entries as 0x00RRGGBB by pixel value.
class Colours {
 public:
  Colours(const uint8_t* table, int count, bool byPosition) {
    for (int i = 0; i < count; ++i) {
      const uint8_t* spec = table + kTableHeaderBytes + size_t(i) * kColourSpecBytes;
      uint32_t value = byPosition ? uint32_t(i) : ReadBig16(spec);
      if (value >= 256 || known_[value]) continue;  // the first entry of a value counts
      known_[value] = true;
      rgb_[value] = uint32_t(spec[2]) << 16 | uint32_t(spec[4]) << 8 | spec[6];
    }
  }
  uint32_t Of(uint32_t value) const { return known_[value] ? rgb_[value] : 0; }

 private:
  uint32_t rgb_[256] = {};
  bool known_[256] = {};
};

}  // namespace

bool ColourCursorPixels(const uint8_t* record, size_t size, bool doubleSize,
                        ColourCursorPlane plane) {
  if (!record || !Holds(size, 0, kMaskAt + 32) || ReadBig16(record + kTypeAt) != kColourCursorType)
    return false;
  const uint64_t map = ReadBig32(record + kMapAt), data = ReadBig32(record + kDataAt);
  if (!Holds(size, map, kPixMapBytes)) return false;
  const uint8_t* pm = record + map;
  const int depth = ReadBig16(pm + kPixelSizeAt);
  const int rowBytes = ReadBig16(pm + kRowBytesAt) & 0x3FFF;
  const int rows = int16_t(ReadBig16(pm + kBoundsAt + 4)) - int16_t(ReadBig16(pm + kBoundsAt));
  const int columns =
      int16_t(ReadBig16(pm + kBoundsAt + 6)) - int16_t(ReadBig16(pm + kBoundsAt + 2));
  if ((depth != 1 && depth != 2 && depth != 4 && depth != 8) || rows != kCursorRows ||
      columns != kCursorRows || rowBytes < 2 * depth ||
      !Holds(size, data, uint64_t(rowBytes) * rows))
    return false;
  const uint64_t table = ReadBig32(pm + kTableAt);
  if (!Holds(size, table, kTableHeaderBytes)) return false;
  const int count = ReadBig16(record + table + 6) + 1;
  if (!Holds(size, table + kTableHeaderBytes, uint64_t(count) * kColourSpecBytes)) return false;
  const Colours colours(record + table, std::min(count, 256),
                        (ReadBig16(record + table + 4) & kDeviceTableFlag) != 0);

  const uint8_t *oneBit = record + kOneBitAt, *mask = record + kMaskAt, *pixels = record + data;
  const int scale = doubleSize ? 2 : 1;
  std::fill_n(plane, kWindowsCursorSide * kWindowsCursorSide, 0u);
  for (int y = 0; y < kCursorRows; ++y) {
    for (int x = 0; x < kCursorRows; ++x) {
      int bit = x * depth;
      uint32_t value =
          pixels[y * rowBytes + bit / 8] >> (8 - depth - bit % 8) & ((1u << depth) - 1);
      uint32_t rgb = Bit(mask, x, y) ? colours.Of(value) : Bit(oneBit, x, y) ? 0xFFFFFFu : 0u;
      for (int dy = 0; dy < scale; ++dy)
        for (int dx = 0; dx < scale; ++dx)
          plane[(y * scale + dy) * kWindowsCursorSide + x * scale + dx] = rgb;
    }
  }
  return true;
}

}  // namespace kwe::quickdraw
