// Copies with a DC on one side or both: GDI's blits between DCs, memory
// pixels handed to GDI as a DIB, and the pipeline over a 32-bit DIB section
// holding the DC's pixels for what GDI cannot do.
#pragma once
#include <windows.h>

#include <memory>

#include "quickdraw/copybits/copy_sides.h"

namespace kwe::quickdraw {

struct DeviceCopy {
  CopySide src, dst;
  Rect srcRect, dstRect;  // clipped, in each side's own coordinates
  PipelineCopy copy;      // mode, mask bits and colours; rectangles unused
  RgnHandle clip;         // a mask region the destination DC is clipped to
};

OSErr CopyWithDevice(const DeviceCopy& job);

// The copy itself, after the bits procedure (CopyBits and StdBits), and
// with a mask picture (CopyMask, CopyDeepMask): maskRect of maskBits spread
// over dstRect, only pixels under its set pixels changing.
void CopyBitsNow(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                 const Rect* dstRect, SInt16 mode, RgnHandle maskRgn, const BitMap* maskBits,
                 const Rect* maskRect);

// The pixels of dst (in dst's coordinates) inside rgn, one bit a pixel,
// rows of *rowBytes; null when memory is short.
std::unique_ptr<uint8_t[]> RegionMaskBits(RgnHandle rgn, const Rect& dst, int32_t* rowBytes);

// The inverse table of the standard 1-bit table, made once.
const uint8_t* OneBitInverse();

}  // namespace kwe::quickdraw
