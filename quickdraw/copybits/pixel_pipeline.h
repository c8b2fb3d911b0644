// The pixel pipeline of CopyBits as byte work: source pixels of any depth
// are scaled to the destination rectangle (nearest neighbour), turned into
// the destination's pixel values (index to RGB through the source's colour
// table, RGB to index through the destination's inverse table, with or
// without error diffusion), combined with the destination's pixels by the
// transfer mode and written through an optional 1-bit mask. Runs natively
// and under the fuzzer; CopyBits runs it on Macintosh pixels and DIB rows.
#pragma once
#include <cstdint>

#include "MacTypes.h"
#include "quickdraw/colour/colour_tables.h"
#include "quickdraw/pixmaps/pixel_conversion.h"

namespace kwe::quickdraw {

// One side of a copy: its pixels and, for depths of 8 or less, its colour
// table (count entries; entry i is pixel value i).
struct PipelineSide {
  MacPixels pixels;
  const ColourEntry* table;
  int count;
};

// Rectangles are in pixel coordinates of their side, (0, 0) the top left.
struct PipelineCopy {
  Rect src;
  Rect dst;
  int mode;  // srcCopy to notSrcBic (0 to 7), blend to adMin (32 to 39), + 64 to dither
  // 1 bits of the mask, one row per destination row of dst (MSB first,
  // maskRowBytes apart), say which pixels change; null: all of them.
  const uint8_t* mask;
  int32_t maskRowBytes;
  RGBColor opColor;  // blend's weight, addPin's and subPin's limits
  RGBColor bkColor;  // the colour transparent leaves out
  // The destination table's inverse table (kInverseTableSize bytes), needed
  // for destinations of 8 bits or less.
  const uint8_t* inverse;
  // The two tables are the same: indexed pixel values of equal depth are
  // combined as they stand, without going through RGB.
  bool sameTable;
  // A band of a large copy: only rows bandTop to bandBottom - 1 of dst
  // (counted from its top) are made, scaled as in the whole copy, and the
  // destination pixels hold just those rows, bandTop's at dst.top. Both 0:
  // every row, in place.
  int bandTop;
  int bandBottom;
  // A 1-bit source colorized with the port's colours: its 1 bits stand for
  // fgColor and its 0 bits for bkColor (srcCopy; the other logical modes
  // choose between them and the destination as the Toolbox has it).
  bool colorize;
  RGBColor fgColor;
};

// Pipeline results: the copy is refused with paramErr for pixels that fail
// CheckMacPixels, rectangles outside their sides, a mode the pipeline has
// not, an indexed side without a table or a destination without its inverse
// table; with memFullErr when its row buffers cannot be had. Nothing is
// written then. Empty rectangles copy nothing and succeed.
OSErr RunPipeline(const PipelineSide& src, const PipelineSide& dst, const PipelineCopy& copy);

// A pixel value of depth as 16-bit components (through table for indexed
// depths) and back (through the inverse table).
RGBColor PixelToRgb(uint32_t value, int depth, const ColourEntry* table, int count);
uint32_t RgbToPixel(RGBColor c, int depth, const uint8_t* inverse);

// The logical mode a 1-bit destination uses for an arithmetic one.
int OneBitModeFor(int mode);

}  // namespace kwe::quickdraw
