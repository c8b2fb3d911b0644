// The 1-bit mask behind a mask region, as the bits of a bottom-up DIB: rows
// padded to 32 bits, the first byte of the bits holding the box's bottom row,
// the most significant bit of a byte leftmost, and a pixel inside the region
// when its bit is 0. Coordinates here are relative to the box's top-left
// corner, rows counted downwards as in QuickDraw.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kwe::quickdraw {

size_t MaskRowBytes(int width);

class MaskRaster {
 public:
  // All outside. Width and height must be positive.
  MaskRaster(int width, int height);
  // A copy of existing mask bits of the same geometry.
  MaskRaster(int width, int height, const uint8_t* bits);

  int Width() const { return width_; }
  int Height() const { return height_; }
  size_t RowBytes() const { return rowBytes_; }
  const uint8_t* Bits() const { return bits_.data(); }
  size_t ByteCount() const { return bits_.size(); }

  bool Inside(int x, int y) const;
  // Marks [left, right) x [top, bottom) inside, cut to the raster.
  void FillInside(int left, int top, int right, int bottom);
  // Row y from a Macintosh bitmap row, where a 1 bit (black) is inside.
  void SetRowFromBlackBits(int y, const uint8_t* blackBits);
  // Marks inside every pixel that is inside in other, other's top-left
  // corner lying at (dx, dy) of this raster.
  void AddMask(const MaskRaster& other, int dx, int dy);

  enum class Operation { Intersect, Unite, ExclusiveOr, Subtract };
  // this = this (operation) other, pixel by pixel; same geometry.
  void Combine(const MaskRaster& other, Operation operation);
  bool NothingInside() const;

 private:
  uint8_t* RowOf(int y) { return bits_.data() + size_t(height_ - 1 - y) * rowBytes_; }
  const uint8_t* RowOf(int y) const { return bits_.data() + size_t(height_ - 1 - y) * rowBytes_; }
  void SetPaddingOutside();

  int width_;
  int height_;
  size_t rowBytes_;
  std::vector<uint8_t> bits_;
};

}  // namespace kwe::quickdraw
