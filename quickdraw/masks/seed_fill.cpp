// Heckbert's scanline seed fill: a segment (row, left, right, direction)
// says that row + direction holds pixels below [left, right] still to be
// looked at; each popped segment is filled leftwards and rightwards and
// pushes the runs it finds, and the parts that overhang its parent in the
// other direction.
#include "quickdraw/masks/seed_fill.h"

#include <cstddef>
#include <new>
#include <vector>

namespace kwe::masks {
namespace {

struct Segment {
  int16_t y, left, right, dir;
};

class Filler {
 public:
  explicit Filler(const OneBitImage& image) : m_(image) { stack_.reserve(kSegmentStackEntries); }

  bool Run(int h, int v) {
    if (h < 0 || v < 0 || h >= m_.width || v >= m_.height) return false;
    if (!Can(h, v)) return true;
    Push(v, h, h, 1);
    Push(v + 1, h, h, -1);
    while (!stack_.empty()) {
      Segment s = stack_.back();
      stack_.pop_back();
      Scan(s.y + s.dir, s.left, s.right, s.dir);
    }
    return complete_;
  }

 private:
  bool Can(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_.width || y >= m_.height) return false;
    uint8_t bit = static_cast<uint8_t>(0x80 >> (x & 7));
    return !(m_.src[y * m_.srcRow + (x >> 3)] & bit) && !(m_.dst[y * m_.dstRow + (x >> 3)] & bit);
  }
  void Set(int x, int y) {
    m_.dst[y * m_.dstRow + (x >> 3)] |= static_cast<uint8_t>(0x80 >> (x & 7));
  }

  void Push(int y, int left, int right, int dir) {
    if (y + dir < 0 || y + dir >= m_.height) return;
    if (static_cast<int>(stack_.size()) >= kSegmentStackEntries) {
      complete_ = false;
      return;
    }
    stack_.push_back(Segment{static_cast<int16_t>(y), static_cast<int16_t>(left),
                             static_cast<int16_t>(right), static_cast<int16_t>(dir)});
  }

  void Scan(int y, int x1, int x2, int dir) {
    int x = x1;
    while (Can(x, y)) Set(x--, y);
    int left;
    if (x >= x1) {
      // Nothing at x1: look right for the first pixel to fill.
      for (++x; x <= x2 && !Can(x, y); ++x) {
      }
      left = x;
      if (x > x2) return;
    } else {
      left = x + 1;
      if (left < x1) Push(y, left, x1 - 1, -dir);
      x = x1 + 1;
    }
    do {
      while (Can(x, y)) Set(x++, y);
      Push(y, left, x - 1, dir);
      if (x > x2 + 1) Push(y, x2 + 1, x - 1, -dir);
      for (++x; x <= x2 && !Can(x, y); ++x) {
      }
      left = x;
    } while (x <= x2);
  }

  OneBitImage m_;
  std::vector<Segment> stack_;
  bool complete_ = true;
};

}  // namespace

bool SeedFillRows(const OneBitImage& image, int seedH, int seedV) {
  if (!image.src || !image.dst || image.width <= 0 || image.height <= 0) return false;
  return Filler(image).Run(seedH, seedV);
}

// The image inside a white border one pixel wide, filled from the border's
// corner: what the fill does not reach is the mask.
bool CalcMaskRows(const uint8_t* src, int srcRow, uint8_t* dst, int dstRow, int width, int height) {
  if (!src || !dst || width <= 0 || height <= 0) return false;
  int w = (width + 2 + 15) / 16 * 16, h = height + 2, row = w / 8;
  std::vector<uint8_t> border, reached;
  try {
    border.assign(static_cast<size_t>(row) * h, 0);
    reached.assign(border.size(), 0);
  } catch (const std::bad_alloc&) {
    return false;
  }
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      if (src[y * srcRow + (x >> 3)] & (0x80 >> (x & 7)))
        border[(y + 1) * row + ((x + 1) >> 3)] |= static_cast<uint8_t>(0x80 >> ((x + 1) & 7));
  SeedFillRows(OneBitImage{border.data(), row, reached.data(), row, w, h}, 0, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      bool out = reached[(y + 1) * row + ((x + 1) >> 3)] & (0x80 >> ((x + 1) & 7));
      uint8_t& b = dst[y * dstRow + (x >> 3)];
      uint8_t bit = static_cast<uint8_t>(0x80 >> (x & 7));
      b = static_cast<uint8_t>(out ? b & ~bit : b | bit);
    }
  }
  return true;
}

}  // namespace kwe::masks
