// The picture opcode walker: reads a Macintosh picture (version 1 or 2)
// from a stream of bytes and tells a sink what each opcode asks for, in
// picture coordinates. It knows the size of every opcode, the standard ones
// and the reserved ones, so that unknown opcodes are read past; pixel data
// is unpacked and handed over as bands of 32-bit pixels. It needs nothing
// of Windows, so it runs natively and under the fuzzer.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kwe::pictures {

struct PicPoint {
  int16_t v = 0, h = 0;
};
struct PicRect {
  int16_t top = 0, left = 0, bottom = 0, right = 0;
};
struct PicRGB {
  uint16_t red = 0, green = 0, blue = 0;
};

// Where the walker's bytes come from: Read gives fewer bytes than asked
// only at the end of the picture.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual size_t Read(uint8_t* dst, size_t count) = 0;
};

// The bytes of one buffer.
class BufferSource : public ByteSource {
 public:
  BufferSource(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  size_t Read(uint8_t* dst, size_t count) override;

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

enum class ShapeKind { Rect, RRect, Oval, Arc, Poly, Rgn };

// One band of a pixel-data opcode: rows [firstRow, firstRow + rowCount) of
// an image width pixels wide, 0x00RRGGBB each, top row first.
struct PixelBand {
  PicRect srcRect;   // within the image's bounds
  PicRect dstRect;   // in picture coordinates
  PicRect bounds;    // the image's bounds
  int16_t mode = 0;  // transfer mode
  int width = 0;
  int firstRow = 0;
  int rowCount = 0;
  const uint32_t* pixels = nullptr;
};

// A full pixel pattern (type 1): its old-style pattern, its pixel map's
// shape and colour table, and its rows unpacked (rowBytes each, as the
// picture holds them: direct pixels big-endian).
struct PatternImage {
  uint8_t pat[8] = {};
  int rowBytes = 0;
  PicRect bounds;
  int16_t pixelType = 0, pixelSize = 1, cmpCount = 1, cmpSize = 1;
  std::vector<PicRGB> colours;  // by position
  std::vector<uint8_t> rows;
};

// What a picture asks for. Every method does nothing unless overridden.
class PictureSink {
 public:
  virtual ~PictureSink() = default;
  // The frame the picture's coordinates live in (picFrame, widened by the
  // resolution of an extended version 2 header).
  virtual void Frame(const PicRect&) {}
  // A region's rectangles: its box alone for a rectangle, or for data that
  // cannot be read.
  virtual void Clip(const PicRect& /*box*/, const std::vector<PicRect>&) {}
  virtual void Pattern(int /*0 back, 1 pen, 2 fill*/, const uint8_t (&)[8]) {}
  virtual void RGBPattern(int, const PicRGB&) {}
  virtual void PixelPattern(int, const PatternImage&) {}
  virtual void TextFont(int16_t) {}
  virtual void TextFace(uint8_t) {}
  virtual void TextMode(int16_t) {}
  virtual void SpaceExtra(int32_t) {}
  virtual void PenSize(PicPoint) {}
  virtual void PenMode(int16_t) {}
  virtual void OvalSize(PicPoint) {}
  virtual void Origin(int16_t, int16_t) {}
  virtual void TextSize(int16_t) {}
  virtual void OldColour(bool, int32_t) {}  // false foreground, true background
  virtual void RGBColour(bool, const PicRGB&) {}
  virtual void HiliteMode() {}
  virtual void HiliteColour(const PicRGB&) {}
  virtual void DefaultHilite() {}
  virtual void Line(PicPoint, PicPoint) {}
  // Text at a picture location; after DHText, DVText and DHDVText the
  // location is the previous one moved, and relative is set.
  virtual void Text(PicPoint, bool, int16_t, int16_t, const std::string&) {}
  virtual void FontName(int16_t, const std::string&) {}
  virtual void Shape(ShapeKind, int, const PicRect&, int16_t, int16_t) {}
  virtual void Poly(int, const std::vector<PicPoint>&) {}
  virtual void Region(int /*verb*/, const PicRect& /*box*/, const std::vector<PicRect>&) {}
  virtual void Pixels(const PixelBand&) {}
  virtual void Comment(int16_t, const std::vector<uint8_t>&) {}
};

enum class WalkEnd {
  EndOpcode,   // 0x00FF was read
  OutOfBytes,  // the source ended first
  BadData,     // data the walker cannot read past (pixel data that lies)
};

// Walks the picture whose first 10 bytes are picSize and picFrame in the
// processor's order (as ClosePicture and the resource loader leave them)
// and whose opcode stream follows. Every opcode reads at least one byte,
// and no opcode allocates more than its own data, bounded by a 64 KB band
// for pixels, so any input ends in time linear in its length.
WalkEnd WalkPicture(ByteSource& source, PictureSink& sink);

// Bytes of a known comment kind's data that the recorder writes as big-
// endian words and longs; each entry is (offset, size). Other kinds are
// bytes.
std::vector<std::pair<int, int>> CommentFields(int16_t kind, int16_t size);

}  // namespace kwe::pictures
