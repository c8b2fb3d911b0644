// Macintosh pixels to the DIB's rows and back.
#include "quickdraw/pixmaps/pixel_conversion.h"

#include <cstring>

namespace kwe::quickdraw {

bool IsQuickDrawDepth(int depth) {
  return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16 || depth == 32;
}

int32_t MacRowBytesNeeded(int width, int depth) {
  return static_cast<int32_t>((static_cast<int64_t>(width) * depth + 7) / 8);
}

int32_t DibRowBytes(int width, int depth) {
  return static_cast<int32_t>((static_cast<int64_t>(width) * depth + 31) / 32 * 4);
}

int DibDepthFor(int macDepth, bool fourBit) {
  if (macDepth == 1) return 1;
  if (macDepth == 4 && fourBit) return 4;
  return macDepth <= 8 ? 8 : 24;
}

OSErr CheckMacPixels(const MacPixels& p) {
  if (!IsQuickDrawDepth(p.depth)) return kDepthErr;
  if (!p.base || p.width < 0 || p.height < 0 || p.rowBytes < 0 || (p.rowBytes & 1)) return paramErr;
  if (p.rowBytes < MacRowBytesNeeded(p.width, p.depth)) return paramErr;
  return noErr;
}

namespace {

uint8_t* RowOf(const MacPixels& p, int y) {
  return p.base + static_cast<ptrdiff_t>(y) * p.rowBytes;
}

// The bottom-up DIB's row for picture row y.
uint8_t* RowOf(const DibPixels& d, int y) {
  return d.bits + static_cast<ptrdiff_t>(d.height - 1 - y) * DibRowBytes(d.width, d.depth);
}

uint32_t PackedPixel(const uint8_t* row, int x, int depth) {
  int bit = x * depth;
  int shift = 8 - depth - (bit & 7);
  return (row[bit >> 3] >> shift) & ((1u << depth) - 1);
}

void SetPackedPixel(uint8_t* row, int x, int depth, uint32_t value) {
  int bit = x * depth;
  int shift = 8 - depth - (bit & 7);
  uint8_t mask = static_cast<uint8_t>(((1u << depth) - 1) << shift);
  row[bit >> 3] = static_cast<uint8_t>((row[bit >> 3] & ~mask) | ((value << shift) & mask));
}

uint16_t Word(const uint8_t* p) {
  uint16_t w;
  std::memcpy(&w, p, 2);
  return w;
}

uint32_t Long(const uint8_t* p) {
  uint32_t l;
  std::memcpy(&l, p, 4);
  return l;
}

}  // namespace

uint32_t MacPixel(const MacPixels& p, int x, int y) {
  const uint8_t* row = RowOf(p, y);
  if (p.depth == 16) return Word(row + 2 * x);
  if (p.depth == 32) return Long(row + 4 * x);
  return PackedPixel(row, x, p.depth);
}

void SetMacPixel(const MacPixels& p, int x, int y, uint32_t value) {
  uint8_t* row = RowOf(p, y);
  if (p.depth == 16) {
    uint16_t w = static_cast<uint16_t>(value);
    std::memcpy(row + 2 * x, &w, 2);
  } else if (p.depth == 32) {
    std::memcpy(row + 4 * x, &value, 4);
  } else {
    SetPackedPixel(row, x, p.depth, value);
  }
}

void MacToDib(const MacPixels& src, int left, int top, const uint8_t* index, bool fourBit,
              const DibPixels& dst) {
  const int depth = src.depth;
  for (int y = 0; y < dst.height; ++y) {
    const uint8_t* in = RowOf(src, top + y);
    uint8_t* out = RowOf(dst, y);
    if (depth == 1 || (depth == 4 && fourBit)) {
      // Complemented packed values; a row starting on a byte is one pass.
      if ((left * depth & 7) == 0) {
        const uint8_t* from = in + left * depth / 8;
        int32_t bytes = MacRowBytesNeeded(dst.width, depth);
        for (int32_t i = 0; i < bytes; ++i) out[i] = static_cast<uint8_t>(~from[i]);
      } else {
        for (int x = 0; x < dst.width; ++x)
          SetPackedPixel(out, x, depth, ~PackedPixel(in, left + x, depth));
      }
    } else if (depth == 8) {
      const uint8_t* from = in + left;
      if (index) {
        for (int x = 0; x < dst.width; ++x) out[x] = index[from[x]];
      } else {
        std::memcpy(out, from, static_cast<size_t>(dst.width));
      }
    } else if (depth < 8) {
      for (int x = 0; x < dst.width; ++x) {
        uint32_t v = PackedPixel(in, left + x, depth);
        out[x] = index ? index[v] : static_cast<uint8_t>(v);
      }
    } else if (depth == 16) {
      for (int x = 0; x < dst.width; ++x) {
        uint16_t p = Word(in + 2 * (left + x));
        out[3 * x] = static_cast<uint8_t>((p << 3) & 0xF8);
        out[3 * x + 1] = static_cast<uint8_t>((p >> 2) & 0xF8);
        out[3 * x + 2] = static_cast<uint8_t>((p >> 7) & 0xF8);
      }
    } else {
      const uint8_t* from = in + 4 * left;
      for (int x = 0; x < dst.width; ++x) {
        out[3 * x] = from[4 * x];
        out[3 * x + 1] = from[4 * x + 1];
        out[3 * x + 2] = from[4 * x + 2];
      }
    }
  }
}

void DibToMac(const DibPixels& src, const uint8_t* index, bool fourBit, const MacPixels& dst,
              int left, int top) {
  uint8_t back[256];
  if (index) {
    std::memset(back, 0, sizeof back);
    for (int v = 255; v >= 0; --v) back[index[v]] = static_cast<uint8_t>(v);
  }
  const int depth = dst.depth;
  for (int y = 0; y < src.height; ++y) {
    const uint8_t* in = RowOf(src, y);
    uint8_t* out = RowOf(dst, top + y);
    if (depth == 1 || (depth == 4 && fourBit)) {
      for (int x = 0; x < src.width; ++x)
        SetPackedPixel(out, left + x, depth, ~PackedPixel(in, x, depth));
    } else if (depth <= 8) {
      for (int x = 0; x < src.width; ++x)
        SetPackedPixel(out, left + x, depth, index ? back[in[x]] : in[x]);
    } else if (depth == 16) {
      for (int x = 0; x < src.width; ++x) {
        const uint8_t* p = in + 3 * x;
        uint16_t w = static_cast<uint16_t>((p[2] & 0xF8) << 7 | (p[1] & 0xF8) << 2 | p[0] >> 3);
        std::memcpy(out + 2 * (left + x), &w, 2);
      }
    } else {
      for (int x = 0; x < src.width; ++x) {
        const uint8_t* p = in + 3 * x;
        uint32_t l = static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[1]) << 8 | p[0];
        std::memcpy(out + 4 * (left + x), &l, 4);
      }
    }
  }
}

}  // namespace kwe::quickdraw
