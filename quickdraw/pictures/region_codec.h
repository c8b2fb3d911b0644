// Regions in a picture's own encoding: after the size word and the box, the
// region's inversion points line by line (a line's v, then the h values
// where the region's inside flips relative to the line above, then 0x7FFF),
// and a last 0x7FFF; a rectangle is the box with no data. The library keeps
// regions as Win32 regions, whose rectangles come in bands, top to bottom
// and left to right; these two turn such rectangles into the encoding and
// back. They need nothing of Windows, so they run natively and under the
// fuzzer.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "quickdraw/pictures/picture_walker.h"

namespace kwe::pictures {

// The data words (big-endian bytes) of the region the rectangles cover,
// ending with the last 0x7FFF; empty when they cover exactly one rectangle.
std::vector<uint8_t> EncodeRegion(const std::vector<PicRect>& rects);

// The rectangles of encoded data (the bytes after the box), at most limit of
// them; false when the data is cut short, its lines do not go downwards or
// it needs more rectangles than limit.
bool DecodeRegion(const uint8_t* data, size_t size, std::vector<PicRect>* rects,
                  size_t limit = 1 << 16);

}  // namespace kwe::pictures
