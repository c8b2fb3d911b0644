// The pixel pipeline: scaling, colour conversion, dithering, transfer modes
// and the mask, one destination row at a time.
#include "quickdraw/copybits/pixel_pipeline.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace kwe::quickdraw {

namespace {

constexpr int kSrcCopy = 0, kBlend = 32, kAdMin = 39, kDither = 64;
constexpr int kAddPin = 33, kAddOver = 34, kSubPin = 35, kTransparent = 36, kAddMax = 37,
              kSubOver = 38;

uint32_t DepthMask(int depth) {
  if (depth == 32) return 0xFFFFFF;
  if (depth == 16) return 0x7FFF;
  return (1u << depth) - 1;
}

UInt16 FromFive(uint32_t c) {
  c &= 31;
  return static_cast<UInt16>(c << 11 | c << 6 | c << 1 | c >> 4);
}

bool Inside(const Rect& r, const MacPixels& p) {
  return r.left >= 0 && r.top >= 0 && r.right <= p.width && r.bottom <= p.height;
}

bool Indexed(const PipelineSide& s) { return s.pixels.depth <= 8; }

// The logical modes on pixel values. Direct pixels are complemented around
// the operation, so that black is all ones there too and the modes mean on
// a direct destination what they mean on an indexed one.
uint32_t Logical(int mode, uint32_t d, uint32_t s, uint32_t mask, bool direct) {
  if (direct) {
    d = ~d & mask;
    s = ~s & mask;
  }
  uint32_t r = d;
  switch (mode & 7) {
    case 0: r = s; break;
    case 1: r = d | s; break;
    case 2: r = d ^ s; break;
    case 3: r = d & ~s; break;
    case 4: r = ~s; break;
    case 5: r = d | ~s; break;
    case 6: r = d ^ ~s; break;
    case 7: r = d & s; break;
  }
  r &= mask;
  return direct ? ~r & mask : r;
}

UInt16 Component(int mode, UInt16 s, UInt16 d, UInt16 op) {
  switch (mode) {
    case kBlend:
      return static_cast<UInt16>((uint32_t{s} * op + uint32_t{d} * (0xFFFFu - op)) / 0xFFFFu);
    case kAddPin: return static_cast<UInt16>(std::min<uint32_t>(uint32_t{s} + d, op));
    case kAddOver: return static_cast<UInt16>(s + d);
    case kSubPin: return static_cast<UInt16>(std::max<int32_t>(int32_t{d} - s, op));
    case kAddMax: return std::max(s, d);
    case kSubOver: return static_cast<UInt16>(d - s);
    default: return std::min(s, d);  // adMin
  }
}

RGBColor Arithmetic(int mode, RGBColor s, RGBColor d, const PipelineCopy& copy) {
  if (mode == kTransparent) {
    bool background =
        s.red == copy.bkColor.red && s.green == copy.bkColor.green && s.blue == copy.bkColor.blue;
    return background ? d : s;
  }
  const RGBColor& op = copy.opColor;
  return RGBColor{Component(mode, s.red, d.red, op.red),
                  Component(mode, s.green, d.green, op.green),
                  Component(mode, s.blue, d.blue, op.blue)};
}

// A colorized 1-bit source pixel in a logical mode: the foreground or
// background colour's value, the destination, or the destination inverted
// (the Xor modes, which have no colours to give).
uint32_t Colorized(int mode, bool ink, uint32_t d, uint32_t fg, uint32_t bk, uint32_t mask) {
  switch (mode & 7) {
    case 0: return ink ? fg : bk;
    case 1: return ink ? fg : d;
    case 2: return ink ? ~d & mask : d;
    case 3: return ink ? bk : d;
    case 4: return ink ? bk : fg;
    case 5: return ink ? d : fg;
    case 6: return ink ? d : ~d & mask;
    default: return ink ? d : bk;
  }
}

bool MaskBit(const PipelineCopy& copy, int x, int y) {
  if (!copy.mask) return true;
  const uint8_t* row = copy.mask + static_cast<ptrdiff_t>(y) * copy.maskRowBytes;
  return (row[x >> 3] >> (7 - (x & 7))) & 1;
}

// Floyd-Steinberg error diffusion over one destination rectangle: errors of
// 16-bit components carried right and to the next row.
class Diffusion {
 public:
  bool Start(int width) {
    width_ = width;
    size_t n = static_cast<size_t>(width + 2) * 3;
    here_.reset(new (std::nothrow) int32_t[n]());
    next_.reset(new (std::nothrow) int32_t[n]());
    return here_ && next_;
  }
  void NextRow() {
    std::swap(here_, next_);
    std::fill(next_.get(), next_.get() + static_cast<size_t>(width_ + 2) * 3, 0);
  }
  // The colour wanted at column x, with the errors that reached it.
  RGBColor Wanted(RGBColor c, int x) const {
    const int32_t* e = here_.get() + static_cast<size_t>(x + 1) * 3;
    return RGBColor{Clamp(c.red + e[0] / 16), Clamp(c.green + e[1] / 16),
                    Clamp(c.blue + e[2] / 16)};
  }
  void Spread(RGBColor wanted, RGBColor got, int x) {
    const int32_t error[3] = {int32_t{wanted.red} - got.red, int32_t{wanted.green} - got.green,
                              int32_t{wanted.blue} - got.blue};
    for (int k = 0; k < 3; ++k) {
      here_[static_cast<size_t>(x + 2) * 3 + k] += error[k] * 7;
      next_[static_cast<size_t>(x) * 3 + k] += error[k] * 3;
      next_[static_cast<size_t>(x + 1) * 3 + k] += error[k] * 5;
      next_[static_cast<size_t>(x + 2) * 3 + k] += error[k];
    }
  }

 private:
  static UInt16 Clamp(int32_t v) { return static_cast<UInt16>(std::clamp<int32_t>(v, 0, 0xFFFF)); }
  int width_ = 0;
  std::unique_ptr<int32_t[]> here_, next_;
};

// The common case of an 8-bit picture put on a 32-bit one: whole rows
// through the lookup table.
void CopyIndexedRows(const MacPixels& src, const Rect& s, const MacPixels& dst, const Rect& d,
                     const uint32_t* lookup) {
  const int width = s.right - s.left;
  for (int y = 0; y < s.bottom - s.top; ++y) {
    const uint8_t* in = src.base + static_cast<ptrdiff_t>(s.top + y) * src.rowBytes + s.left;
    uint8_t* out = dst.base + static_cast<ptrdiff_t>(d.top + y) * dst.rowBytes + 4 * d.left;
    for (int x = 0; x < width; ++x) std::memcpy(out + 4 * x, &lookup[in[x]], 4);
  }
}

}  // namespace

int OneBitModeFor(int mode) {
  static const int kLogical[8] = {0, 3, 2, 1, 1, 3, 2, 1};
  return mode >= kBlend && mode <= kAdMin ? kLogical[mode - kBlend] : mode;
}

RGBColor PixelToRgb(uint32_t value, int depth, const ColourEntry* table, int count) {
  if (depth == 16) return RGBColor{FromFive(value >> 10), FromFive(value >> 5), FromFive(value)};
  if (depth == 32) {
    auto wide = [](uint32_t byte) { return static_cast<UInt16>((byte & 0xFF) * 0x101); };
    return RGBColor{wide(value >> 16), wide(value >> 8), wide(value)};
  }
  if (static_cast<int>(value) >= count) return RGBColor{0, 0, 0};
  return table[value].rgb;
}

uint32_t RgbToPixel(RGBColor c, int depth, const uint8_t* inverse) {
  if (depth == 16) return uint32_t{c.red} >> 11 << 10 | uint32_t{c.green} >> 11 << 5 | c.blue >> 11;
  if (depth == 32) return uint32_t{c.red} >> 8 << 16 | uint32_t{c.green} >> 8 << 8 | c.blue >> 8;
  return inverse[InverseCell(c, 5)] & DepthMask(depth);
}

OSErr RunPipeline(const PipelineSide& src, const PipelineSide& dst, const PipelineCopy& copy) {
  OSErr err = CheckMacPixels(src.pixels);
  if (err == noErr) err = CheckMacPixels(dst.pixels);
  if (err != noErr) return err;
  int mode = copy.mode & ~kDither;
  if (mode < 0 || (mode > 15 && mode < kBlend) || mode > kAdMin) return paramErr;
  if ((Indexed(src) && (!src.table || src.count <= 0)) ||
      (Indexed(dst) && (!dst.table || dst.count <= 0 || !copy.inverse)))
    return paramErr;
  const Rect& s = copy.src;
  const Rect& d = copy.dst;
  if (s.right <= s.left || s.bottom <= s.top || d.right <= d.left || d.bottom <= d.top)
    return noErr;
  const int64_t srcW = s.right - s.left, srcH = s.bottom - s.top;
  const int64_t dstW = d.right - d.left, dstH = d.bottom - d.top;
  const bool banded = copy.bandBottom > copy.bandTop;
  const int firstRow = banded ? copy.bandTop : 0;
  const int endRow = banded ? copy.bandBottom : static_cast<int>(dstH);
  if (firstRow < 0 || endRow > dstH) return paramErr;
  Rect written = d;
  written.bottom = static_cast<SInt16>(d.top + (endRow - firstRow));
  if (!Inside(s, src.pixels) || !Inside(written, dst.pixels)) return paramErr;

  const int dstDepth = dst.pixels.depth, srcDepth = src.pixels.depth;
  if (mode < kBlend) mode &= 7;
  if (dstDepth == 1) mode = OneBitModeFor(mode);
  const bool dither = (copy.mode & kDither) && dstDepth <= 8 && mode == kSrcCopy;
  const bool asValues = srcDepth == dstDepth && (srcDepth > 8 || copy.sameTable);
  const uint32_t mask = DepthMask(dstDepth);
  const bool colorize = copy.colorize && srcDepth == 1 && mode < kBlend;
  const uint32_t fgValue = colorize ? RgbToPixel(copy.fgColor, dstDepth, copy.inverse) : 0;
  const uint32_t bkValue = colorize ? RgbToPixel(copy.bkColor, dstDepth, copy.inverse) : 0;
  Diffusion diffusion;
  if (dither && !diffusion.Start(d.right - d.left)) return memFullErr;

  // Indexed source pixels convert through a table made once for the call.
  uint32_t lookup[256];
  const bool lookUp = srcDepth <= 8 && !asValues && !dither && mode < kBlend;
  if (lookUp) {
    for (uint32_t v = 0; v < (1u << srcDepth); ++v)
      lookup[v] = RgbToPixel(PixelToRgb(v, srcDepth, src.table, src.count), dstDepth, copy.inverse);
  }
  if (lookUp && mode == kSrcCopy && !copy.mask && !banded && srcW == dstW && srcH == dstH &&
      srcDepth == 8 && dstDepth == 32) {
    CopyIndexedRows(src.pixels, s, dst.pixels, d, lookup);
    return noErr;
  }
  // Nearest-neighbour scaling (ResizePV) works on pixel values of every
  // depth alike. A depth QuickDraw has not is refused above, before any
  // stage is chosen (CopyBits reports it as the PVToRGB or RGBToPV case),
  // so no input reaches an undefined ResizePV case and that message is
  // never given.
  for (int y = firstRow; y < endRow; ++y) {
    int sy = s.top + static_cast<int>(y * srcH / dstH);
    const int dy = d.top + y - firstRow;
    for (int x = 0; x < dstW; ++x) {
      int sx = s.left + static_cast<int>(x * srcW / dstW);
      uint32_t sv = MacPixel(src.pixels, sx, sy);
      uint32_t dv = MacPixel(dst.pixels, d.left + x, dy);
      uint32_t out;
      if (colorize) {
        out = Colorized(mode, sv & 1, dv & mask, fgValue, bkValue, mask);
      } else if (mode >= kBlend) {
        RGBColor rgb = Arithmetic(mode, PixelToRgb(sv, srcDepth, src.table, src.count),
                                  PixelToRgb(dv, dstDepth, dst.table, dst.count), copy);
        out = RgbToPixel(rgb, dstDepth, copy.inverse);
      } else {
        uint32_t value;
        if (asValues) {
          value = sv & mask;
        } else if (lookUp) {
          value = lookup[sv];
        } else {
          RGBColor rgb = PixelToRgb(sv, srcDepth, src.table, src.count);
          if (dither) {
            RGBColor wanted = diffusion.Wanted(rgb, x);
            value = RgbToPixel(wanted, dstDepth, copy.inverse);
            diffusion.Spread(wanted, PixelToRgb(value, dstDepth, dst.table, dst.count), x);
          } else {
            value = RgbToPixel(rgb, dstDepth, copy.inverse);
          }
        }
        out = Logical(mode, dv & mask, value, mask, dstDepth > 8);
      }
      if (MaskBit(copy, x, y)) SetMacPixel(dst.pixels, d.left + x, dy, out);
    }
    if (dither) diffusion.NextRow();
  }
  return noErr;
}

}  // namespace kwe::quickdraw
