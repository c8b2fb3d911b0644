// The Win32 raster operation of a transfer mode for BitBlt, StretchBlt and
// the DIB calls: modes 0 to 15 by number, the arithmetic modes 32 to 39 by
// the Boolean mode GDI comes nearest with, anything else as (mode and 15);
// the dither bit is not GDI's concern.
#pragma once
#include <cstdint>

namespace kwe::quickdraw {

uint32_t RasterOpOfMode(int mode);

}  // namespace kwe::quickdraw
