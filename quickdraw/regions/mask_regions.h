// Mask regions: the packed 1-bit DIB in a handle, and drawing any region into
// a mask raster so that regions of every kind can be combined bit by bit.
#pragma once
#include <windows.h>

#include <cstdint>

#include "quickdraw/regions/mask_raster.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {

// BITMAPINFOHEADER and two colour entries before the bits.
constexpr Size kMaskHeaderBytes = sizeof(BITMAPINFOHEADER) + 2 * sizeof(RGBQUAD);

// The bits of a mask region's mask; null when it has none, or one that does
// not cover its box.
const uint8_t* MaskBitsOf(const RegionRecord& r);

// Marks inside raster (covering over) every pixel of the region.
// False when a Win32 region's rectangles cannot be read.
bool DrawRegionInto(const RegionRecord& r, const Rect& over, MaskRaster& raster);

// A new handle holding raster as a packed DIB; null when memory runs out.
Handle MaskHandleFrom(const MaskRaster& raster);

}  // namespace kwe::quickdraw
