#include "quickdraw/regions/mask_raster.h"

#include <algorithm>
#include <cstring>

namespace kwe::quickdraw {

size_t MaskRowBytes(int width) { return (size_t(width) + 31) / 32 * 4; }

MaskRaster::MaskRaster(int width, int height)
    : width_(width),
      height_(height),
      rowBytes_(MaskRowBytes(width)),
      bits_(rowBytes_ * size_t(height), 0xFF) {}

MaskRaster::MaskRaster(int width, int height, const uint8_t* bits)
    : width_(width),
      height_(height),
      rowBytes_(MaskRowBytes(width)),
      bits_(bits, bits + rowBytes_ * size_t(height)) {}

bool MaskRaster::Inside(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return false;
  return (RowOf(y)[x >> 3] & (0x80 >> (x & 7))) == 0;
}

void MaskRaster::FillInside(int left, int top, int right, int bottom) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, width_);
  bottom = std::min(bottom, height_);
  if (left >= right || top >= bottom) return;
  for (int y = top; y < bottom; ++y) {
    uint8_t* row = RowOf(y);
    int x = left;
    // Ragged start, whole bytes, ragged end.
    for (; x < right && (x & 7); ++x) row[x >> 3] &= uint8_t(~(0x80 >> (x & 7)));
    int wholeEnd = right & ~7;
    if (x < wholeEnd) {
      std::memset(row + (x >> 3), 0, size_t(wholeEnd - x) >> 3);
      x = wholeEnd;
    }
    for (; x < right; ++x) row[x >> 3] &= uint8_t(~(0x80 >> (x & 7)));
  }
}

void MaskRaster::SetRowFromBlackBits(int y, const uint8_t* blackBits) {
  uint8_t* row = RowOf(y);
  size_t used = (size_t(width_) + 7) / 8;
  for (size_t i = 0; i < used; ++i) row[i] = uint8_t(~blackBits[i]);
  for (size_t x = size_t(width_); x < rowBytes_ * 8; ++x) row[x >> 3] |= uint8_t(0x80 >> (x & 7));
}

void MaskRaster::AddMask(const MaskRaster& other, int dx, int dy) {
  int firstY = std::max(0, -dy), endY = std::min(other.height_, height_ - dy);
  int firstX = std::max(0, -dx), endX = std::min(other.width_, width_ - dx);
  for (int y = firstY; y < endY; ++y) {
    // Runs of inside pixels become one fill each.
    int x = firstX;
    while (x < endX) {
      while (x < endX && !other.Inside(x, y)) ++x;
      int runStart = x;
      while (x < endX && other.Inside(x, y)) ++x;
      if (x > runStart) FillInside(runStart + dx, y + dy, x + dx, y + dy + 1);
    }
  }
}

void MaskRaster::Combine(const MaskRaster& other, Operation operation) {
  const uint8_t* b = other.bits_.data();
  uint8_t* a = bits_.data();
  size_t n = std::min(bits_.size(), other.bits_.size());
  // A 0 bit is inside, so the set operations are the duals of the usual ones.
  switch (operation) {
    case Operation::Intersect:
      for (size_t i = 0; i < n; ++i) a[i] |= b[i];
      break;
    case Operation::Unite:
      for (size_t i = 0; i < n; ++i) a[i] &= b[i];
      break;
    case Operation::ExclusiveOr:
      for (size_t i = 0; i < n; ++i) a[i] = uint8_t(~(a[i] ^ b[i]));
      break;
    case Operation::Subtract:
      for (size_t i = 0; i < n; ++i) a[i] |= uint8_t(~b[i]);
      break;
  }
  SetPaddingOutside();
}

void MaskRaster::SetPaddingOutside() {
  for (int y = 0; y < height_; ++y) {
    uint8_t* row = RowOf(y);
    for (size_t x = size_t(width_); x < rowBytes_ * 8; ++x) row[x >> 3] |= uint8_t(0x80 >> (x & 7));
  }
}

bool MaskRaster::NothingInside() const {
  size_t wholeBytes = size_t(width_) / 8;
  int restBits = width_ % 8;
  uint8_t restMask = uint8_t(0xFF00 >> restBits);
  for (int y = 0; y < height_; ++y) {
    const uint8_t* row = RowOf(y);
    for (size_t i = 0; i < wholeBytes; ++i)
      if (row[i] != 0xFF) return false;
    if (restBits && (row[wholeBytes] & restMask) != restMask) return false;
  }
  return true;
}

}  // namespace kwe::quickdraw
