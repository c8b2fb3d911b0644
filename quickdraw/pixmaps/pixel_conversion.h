// Macintosh pixels and the packed DIB's rows, converted both ways. Byte work
// only, so it runs natively (and under the fuzzer).
//
// Macintosh pixels run top-down, rowBytes apart; indexed pixels of 1, 2, 4
// and 8 bits are packed from the most significant bit, direct pixels are
// machine words: 16 bits 0RRRRRGGGGGBBBBB, 32 bits 0x00RRGGBB. A DIB runs
// bottom-up with rows padded to 4 bytes. What a Macintosh depth becomes in
// the DIB:
//   1 bit          1-bit DIB, each byte complemented (DIB 0 is black there,
//                  white on the Macintosh)
//   2, 4, 8 bits   8-bit DIB through a 256-entry index table
//   4 bits, fold   4-bit DIB, each byte complemented (value v as 15 - v)
//   16, 32 bits    24-bit DIB, blue, green, red
#pragma once
#include <cstddef>
#include <cstdint>

#include "MacTypes.h"

namespace kwe::quickdraw {

constexpr OSErr kDepthErr = -157;  // cDepthErr: a depth QuickDraw does not have

struct MacPixels {
  uint8_t* base;
  int32_t rowBytes;  // the row length, without the pixel map's flag bits
  int depth;
  int width;
  int height;
};

struct DibPixels {
  uint8_t* bits;  // the bottom row first
  int depth;
  int width;
  int height;
};

bool IsQuickDrawDepth(int depth);
// The bytes a Macintosh row of width pixels needs at depth.
int32_t MacRowBytesNeeded(int width, int depth);
// A DIB row: width pixels at depth, padded to 4 bytes.
int32_t DibRowBytes(int width, int depth);
// The DIB depth a Macintosh depth converts to; fourBit keeps 4 bits as 4.
int DibDepthFor(int macDepth, bool fourBit);

// noErr, kDepthErr for a depth QuickDraw has not, paramErr for a null base,
// a negative size, or a rowBytes that is odd, negative or too small.
OSErr CheckMacPixels(const MacPixels& pixels);

// One pixel of Macintosh pixels; nothing is checked.
uint32_t MacPixel(const MacPixels& pixels, int x, int y);
void SetMacPixel(const MacPixels& pixels, int x, int y, uint32_t value);

// The width x height pixels of src from (left, top) into dst, whose depth
// must be DibDepthFor(src.depth, fourBit) and whose size is width x height.
// index maps 2-, 4- and 8-bit values into the DIB (null: as they stand). No
// byte of src's rows outside the bytes the area touches is read.
void MacToDib(const MacPixels& src, int left, int top, const uint8_t* index, bool fourBit,
              const DibPixels& dst);

// The inverse: dst's area at (left, top) gets the DIB's pixels; the bits of
// dst's rows outside the area stay as they were. index is the same table as
// for MacToDib and must map no two values to one.
void DibToMac(const DibPixels& src, const uint8_t* index, bool fourBit, const MacPixels& dst,
              int left, int top);

}  // namespace kwe::quickdraw
