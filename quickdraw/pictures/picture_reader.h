// Big-endian reading of a picture's opcode stream, shared by the opcode
// walker and its pixel-data reader.
#pragma once
#include <cstddef>
#include <cstdint>

#include "quickdraw/pictures/picture_walker.h"

namespace kwe::pictures {

class Reader {
 public:
  explicit Reader(ByteSource& source) : source_(source) {}
  // False (and ended from then on) when the source has fewer bytes.
  bool Bytes(void* dst, size_t count);
  bool Skip(uint64_t count);
  uint8_t U8();
  uint16_t U16();
  int16_t S16() { return static_cast<int16_t>(U16()); }
  int32_t S32();
  PicPoint Point();
  PicRect Rect();
  PicRGB RGB();
  bool Ended() const { return ended_; }
  uint64_t Count() const { return count_; }

 private:
  ByteSource& source_;
  uint64_t count_ = 0;
  bool ended_ = false;
};

// Reads the data of a pixel opcode (0x0090, 0x0091, 0x0098, 0x0099 and
// 0x009A) and hands its pixels to the sink in bands; false when the data
// cannot be read past (pixel maps whose sizes disagree).
bool ReadPixelData(Reader& in, uint16_t opcode, PictureSink& sink);

}  // namespace kwe::pictures
