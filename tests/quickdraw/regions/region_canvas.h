// What the QuickDraw tests draw into and look at: a 32-bit top-down DIB
// section in a memory DC, a port drawing into one, and regions built from
// rectangle lists or bitmaps.
#pragma once
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "KWEPorts.h"
#include "KWERegions.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "support/test_host.h"

namespace kwe_test {

constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kBlack = 0x000000;

class Canvas {
 public:
  explicit Canvas(int size) : size_(size) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, size, -size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    dc_ = CreateCompatibleDC(nullptr);
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels_ = static_cast<uint32_t*>(bits);
    old_ = SelectObject(dc_, bitmap_);
  }
  ~Canvas() {
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  HDC Dc() const { return dc_; }
  // White everywhere, then black over the whole DC through its clip; the
  // number of black pixels.
  int FillThroughClip() {
    Clear();
    RECT all{0, 0, size_, size_};
    FillRect(dc_, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    GdiFlush();
    int n = 0;
    for (int i = 0; i < size_ * size_; ++i) n += (pixels_[i] & 0xFFFFFF) == 0;
    return n;
  }
  // 0xRRGGBB, as the DIB holds it.
  uint32_t Pixel(int x, int y) const {
    GdiFlush();
    return pixels_[y * size_ + x] & 0xFFFFFF;
  }
  void Clear() { Fill(kWhite, RECT{0, 0, size_, size_}); }
  // Written straight into the DIB: sweeps fill and read millions of pixels.
  void Fill(uint32_t colour, const RECT& r) {
    GdiFlush();
    for (int y = r.top; y < r.bottom; ++y)
      for (int x = r.left; x < r.right; ++x) pixels_[y * size_ + x] = colour;
  }
  bool Black(int x, int y) const { return (pixels_[y * size_ + x] & 0xFFFFFF) == 0; }
  // The black pixels of row y, as a string of '#' and '.'.
  std::string Row(int y, int from, int to) const {
    std::string s;
    for (int x = from; x < to; ++x) s += Pixel(x, y) == 0 ? '#' : '.';
    return s;
  }
  // Rows top to bottom - 1 of the same columns, each followed by '|'.
  std::string Rows(int top, int bottom, int from, int to) const {
    std::string s;
    for (int y = top; y < bottom; ++y) s += Row(y, from, to) + '|';
    return s;
  }

 private:
  int size_;
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ old_;
  uint32_t* pixels_;
};

// A session with QuickDraw started and a plain port drawing into a 256 by
// 256 canvas, current.
class PortTest : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    InitGraf(&screen);
    OpenOnCanvas();
  }
  void TearDown() override {
    ClosePort(&port);
    SessionTest::TearDown();
  }
  void OpenOnCanvas() {
    OpenPort(&port);
    KWE_SwaphDC(canvas.Dc(), true);
    canvas.Clear();
  }
  Point Pen() {
    Point p;
    GetPen(&p);
    return p;
  }
  // Pixels (x, y) that must be black, then ones that must be white.
  using Points = std::initializer_list<std::pair<int, int>>;
  void ExpectInk(const char* what, Points black, Points white = {}) {
    for (auto [x, y] : black) EXPECT_EQ(canvas.Pixel(x, y), kBlack) << what << " " << x << "," << y;
    for (auto [x, y] : white) EXPECT_EQ(canvas.Pixel(x, y), kWhite) << what << " " << x << "," << y;
  }
  // Black pixels inside [left, right) x [top, bottom).
  int BlackIn(int left, int top, int right, int bottom) {
    int n = 0;
    for (int y = top; y < bottom; ++y)
      for (int x = left; x < right; ++x) n += canvas.Pixel(x, y) == kBlack;
    return n;
  }
  GrafPtr screen = nullptr;
  GrafPort port{};
  Canvas canvas{256};
};

// The box of the pixels that are not white, edges inside.
struct InkBox {
  int left = 1 << 30, top = 1 << 30, right = -1, bottom = -1;
  InkBox(const Canvas& c, int x0, int y0, int x1, int y1) {
    for (int y = y0; y < y1; ++y)
      for (int x = x0; x < x1; ++x)
        if (c.Pixel(x, y) != kWhite) {
          left = std::min(left, x), right = std::max(right, x);
          top = std::min(top, y), bottom = std::max(bottom, y);
        }
  }
  bool Empty() const { return right < 0; }
  int Width() const { return right - left + 1; }
  int Height() const { return bottom - top + 1; }
};

inline RgnHandle RegionOf(std::initializer_list<Rect> rects) {
  RgnHandle result = NewRgn(), piece = NewRgn();
  for (const Rect& r : rects) {
    RectRgn(piece, &r);
    UnionRgn(result, piece, result);
  }
  DisposeRgn(piece);
  return result;
}

// PtInRgn over [0, size) x [0, size), row by row.
inline std::vector<bool> Membership(RgnHandle rgn, int size) {
  std::vector<bool> inside;
  for (int v = 0; v < size; ++v)
    for (int h = 0; h < size; ++h) inside.push_back(PtInRgn(Point{SInt16(v), SInt16(h)}, rgn));
  return inside;
}

// Makes rgn a mask region of the same pixels (within [0, size) squared):
// drawn into a Macintosh bitmap pixel by pixel and made a region again.
inline OSErr ThroughBitmap(RgnHandle rgn, int size) {
  SInt16 rowBytes = SInt16((size + 15) / 16 * 2);
  std::vector<UInt8> rows(size_t(rowBytes) * size);
  std::vector<bool> inside = Membership(rgn, size);
  for (int i = 0; i < size * size; ++i)
    if (inside[i]) rows[(i / size) * rowBytes + (i % size) / 8] |= UInt8(0x80 >> (i % size % 8));
  BitMap bits{reinterpret_cast<Ptr>(rows.data()), rowBytes, Rect{0, 0, SInt16(size), SInt16(size)}};
  return BitMapToRegion(rgn, &bits);
}

inline const Rect& Box(RgnHandle rgn) { return (**rgn).rgnBBox; }

// An 8 by 8 pixel pattern of depth bits a pixel, indexing colours: pixel
// (x, y) is pixelOf(x, y).
template <typename PixelOf>
PixPatHandle IndexedPixPat(int depth, const std::vector<RGBColor>& colours, PixelOf pixelOf) {
  PixPatHandle pp = NewPixPat();
  SetHandleSize(reinterpret_cast<Handle>((**(**pp).patMap).pmTable),
                Size(8 + colours.size() * sizeof(ColorSpec)));
  SetHandleSize((**pp).patData, 8 * depth);
  PixMap& m = **(**pp).patMap;
  m.rowBytes = SInt16(depth | 0x8000);
  m.bounds = Rect{0, 0, 8, 8};
  m.pixelSize = m.cmpSize = SInt16(depth);
  m.cmpCount = 1;
  (**m.pmTable).ctSize = SInt16(colours.size() - 1);
  for (size_t i = 0; i < colours.size(); ++i)
    (**m.pmTable).ctTable[i] = ColorSpec{SInt16(i), colours[i]};
  UInt8* data = reinterpret_cast<UInt8*>(*(**pp).patData);
  for (int i = 0; i < 8 * depth; ++i) data[i] = 0;
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x)
      data[y * depth + x * depth / 8] |= UInt8(pixelOf(x, y) << (8 - depth - x * depth % 8));
  (**pp).patXValid = -1;
  return pp;
}

}  // namespace kwe_test
