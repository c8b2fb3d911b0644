// The pixel data of BitsRect, BitsRgn, PackBitsRect, PackBitsRgn and
// DirectBitsRect: a bitmap or pixel map with its colour table, rows packed
// by PackBits (bytes), by words (16-bit pixels) or by component planes
// (32-bit pixels), expanded to 32-bit pixels in bands of at most 64 KB.
#include <algorithm>
#include <array>
#include <vector>

#include "memory/pack_bits.h"
#include "quickdraw/pictures/picture_reader.h"

namespace kwe::pictures {
namespace {

constexpr int kBandBytes = 65536;

struct ImageForm {
  bool pixMap = false;
  int rowBytes = 0;
  PicRect bounds;
  int16_t packType = 0;
  int16_t pixelSize = 1;
  int16_t cmpCount = 1;
  std::array<uint32_t, 256> colours{};
};

uint32_t Rgb(uint16_t r, uint16_t g, uint16_t b) {
  return static_cast<uint32_t>((r >> 8) << 16 | (g >> 8) << 8 | (b >> 8));
}

// Seed, flags, size and size + 1 entries; a device table (flags bit 15)
// gives entries by position, any other by their value.
bool ReadColourTable(Reader& in, ImageForm& f) {
  in.S32();
  uint16_t flags = in.U16();
  int16_t size = in.S16();
  if (size < -1 || size > 32766) return false;
  for (int i = 0; i <= size && !in.Ended(); ++i) {
    uint16_t value = in.U16();
    PicRGB c = in.RGB();
    int index = (flags & 0x8000) ? i : value;
    if (index >= 0 && index < 256) f.colours[index] = Rgb(c.red, c.green, c.blue);
  }
  return !in.Ended();
}

bool ReadForm(Reader& in, uint16_t opcode, ImageForm& f) {
  if (opcode == 0x009A) in.Skip(4);  // base address
  uint16_t rowWord = in.U16();
  f.pixMap = (rowWord & 0x8000) != 0;
  f.rowBytes = rowWord & 0x3FFF;
  f.bounds = in.Rect();
  if (!f.pixMap) {
    f.colours[0] = 0xFFFFFF;  // white
    f.colours[1] = 0x000000;
    return !in.Ended();
  }
  in.S16();  // pmVersion
  f.packType = in.S16();
  in.Skip(4 + 8);  // packSize, hRes, vRes
  in.S16();        // pixelType
  f.pixelSize = in.S16();
  f.cmpCount = in.S16();
  in.Skip(2 + 4 + 4 + 4);  // cmpSize, planeBytes, pmTable, pmReserved
  if (opcode != 0x009A && !ReadColourTable(in, f)) return false;
  return !in.Ended();
}

bool FormIsSound(const ImageForm& f, int width) {
  switch (f.pixelSize) {
    case 1:
    case 2:
    case 4:
    case 8:
    case 16:
    case 32: break;
    default: return false;
  }
  if (f.pixelSize == 32 && (f.cmpCount < 3 || f.cmpCount > 4)) return false;
  return static_cast<int64_t>(f.rowBytes) * 8 >= static_cast<int64_t>(width) * f.pixelSize;
}

// 16-bit pixels packed by words: a count byte n < 128 gives n + 1 words as
// they are, n > 128 repeats the next word 257 - n times.
void UnpackWords(const uint8_t* src, size_t size, uint8_t* dst, size_t wanted) {
  size_t i = 0, o = 0;
  while (i < size && o + 1 < wanted) {
    uint8_t n = src[i++];
    if (n < 128) {
      for (int k = 0; k <= n && i + 1 < size && o + 1 < wanted; ++k, i += 2, o += 2) {
        dst[o] = src[i];
        dst[o + 1] = src[i + 1];
      }
    } else if (n > 128) {
      if (i + 1 >= size) break;
      for (int k = 0; k < 257 - n && o + 1 < wanted; ++k, o += 2) {
        dst[o] = src[i];
        dst[o + 1] = src[i + 1];
      }
      i += 2;
    }
  }
}

class RowReader {
 public:
  RowReader(Reader& in, const ImageForm& f, uint16_t opcode, int width)
      : in_(in), f_(f), width_(width) {
    bool packedForm = opcode == 0x0098 || opcode == 0x0099 || opcode == 0x009A;
    packed_ = packedForm && f.rowBytes >= 8 && f.packType != 1 && f.packType != 2;
    planes_ = f.pixelSize == 32 && (f.packType == 0 || f.packType == 4) && packed_;
    words_ = f.pixelSize == 16 && packed_;
    threeBytes_ = f.pixelSize == 32 && f.packType == 2;
    size_t unpacked = planes_ ? static_cast<size_t>(f.cmpCount) * width : f.rowBytes;
    if (threeBytes_) unpacked = static_cast<size_t>(width) * 3;
    row_.assign(unpacked, 0);
  }

  // One row into out (width pixels); false when the data ran out.
  bool Next(uint32_t* out) {
    if (!packed_) {
      if (!in_.Bytes(row_.data(), row_.size())) return false;
    } else {
      size_t n = f_.rowBytes > 250 ? in_.U16() : in_.U8();
      packedRow_.resize(n);
      if (!in_.Bytes(packedRow_.data(), n)) return false;
      std::fill(row_.begin(), row_.end(), 0);
      if (words_)
        UnpackWords(packedRow_.data(), n, row_.data(), row_.size());
      else
        packbits::Unpack(packedRow_.data(), n, row_.data(), row_.size());
    }
    Expand(out);
    return true;
  }

 private:
  void Expand(uint32_t* out) const {
    const uint8_t* r = row_.data();
    int depth = f_.pixelSize;
    for (int x = 0; x < width_; ++x) {
      if (planes_) {
        int skip = f_.cmpCount - 3;  // alpha plane first
        out[x] =
            static_cast<uint32_t>(r[(skip)*width_ + x] << 16 | r[(skip + 1) * width_ + x] << 8 |
                                  r[(skip + 2) * width_ + x]);
      } else if (threeBytes_) {
        out[x] = static_cast<uint32_t>(r[3 * x] << 16 | r[3 * x + 1] << 8 | r[3 * x + 2]);
      } else if (depth == 32) {
        out[x] = static_cast<uint32_t>(r[4 * x + 1] << 16 | r[4 * x + 2] << 8 | r[4 * x + 3]);
      } else if (depth == 16) {
        unsigned p = static_cast<unsigned>(r[2 * x] << 8 | r[2 * x + 1]);
        unsigned red = (p >> 10) & 31, green = (p >> 5) & 31, blue = p & 31;
        out[x] =
            (red << 3 | red >> 2) << 16 | (green << 3 | green >> 2) << 8 | (blue << 3 | blue >> 2);
      } else {
        int bit = x * depth;
        int value = (r[bit >> 3] >> (8 - depth - (bit & 7))) & ((1 << depth) - 1);
        out[x] = f_.colours[value];
      }
    }
  }

  Reader& in_;
  const ImageForm& f_;
  int width_;
  bool packed_ = false, planes_ = false, words_ = false, threeBytes_ = false;
  std::vector<uint8_t> row_;
  std::vector<uint8_t> packedRow_;
};

}  // namespace

bool ReadPixelData(Reader& in, uint16_t opcode, PictureSink& sink) {
  ImageForm f;
  if (!ReadForm(in, opcode, f)) return false;
  PixelBand band;
  band.srcRect = in.Rect();
  band.dstRect = in.Rect();
  band.mode = in.S16();
  band.bounds = f.bounds;
  if (opcode == 0x0091 || opcode == 0x0099) {
    uint16_t size = in.U16();
    if (size < 10) return false;
    in.Skip(size - 2u);  // the mask region: the drawing is not masked
  }
  if (in.Ended()) return false;
  int width = f.bounds.right - f.bounds.left;
  int height = f.bounds.bottom - f.bounds.top;
  if (width <= 0 || height <= 0) return true;  // no rows follow
  if (!FormIsSound(f, width)) return false;
  RowReader rows(in, f, opcode, width);
  int bandRows = std::max(1, kBandBytes / 4 / width - 1);
  std::vector<uint32_t> pixels(static_cast<size_t>(width) * std::min(bandRows, height));
  band.width = width;
  for (int y = 0; y < height;) {
    int n = std::min(bandRows, height - y);
    int got = 0;
    while (got < n && rows.Next(&pixels[static_cast<size_t>(got) * width])) ++got;
    band.firstRow = y;
    band.rowCount = got;
    band.pixels = pixels.data();
    if (got) sink.Pixels(band);
    if (got < n) return false;
    y += n;
  }
  return true;
}

}  // namespace kwe::pictures
