// What the library's pixel maps over Windows' pixels (DIBs and DDBs) share.
#pragma once
#include "Quickdraw.h"

namespace kwe::quickdraw {

constexpr UInt16 kReversedColoursFlag = 0x0100;

// The one byte every pixel map over a DIB or DDB has as baseAddr: its
// pixels are Windows', never behind baseAddr. Kept outside the
// application's heap, so that it outlives every session.
Ptr SharedPixelByte();

// bounds (0, 0, height, width), the Macintosh row length of width at depth
// (even, bit 15 set) and the depth fields; deeper than 8 bits is described
// as 16 bits of three 5-bit components.
void DescribePixels(PixMap& p, int width, int height, int depth);

}  // namespace kwe::quickdraw
