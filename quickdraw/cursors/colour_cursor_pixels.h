// The colour image of a colour cursor, read from a 'crsr' resource as it
// stays once loaded: all big-endian but its hot spot. The 16 by 16 pixel
// map (1, 2, 4 or 8 bits with its colour table) becomes the 32 by 32
// colour plane of a Windows cursor, laid like the AND plane of
// MakeWindowsCursorPlanes: where the mask is set the pixel's colour, where
// it is clear white for an inverted pixel (the 1-bit data set) and black for
// a transparent one, so that the AND plane and the colour together show
// what the Toolbox's cursor showed. Byte work only: runs natively.
#pragma once
#include <cstddef>
#include <cstdint>

#include "quickdraw/cursors/cursor_planes.h"

namespace kwe::quickdraw {

// 0x00RRGGBB pixels, top row first.
using ColourCursorPlane = uint32_t[kWindowsCursorSide * kWindowsCursorSide];

// False, with plane untouched, when the size bytes at record hold no
// 16 by 16 pixel map of 1, 2, 4 or 8 bits with a colour table inside them
// (a 'crsr' of type 0x8000 has only its 1-bit image).
bool ColourCursorPixels(const uint8_t* record, size_t size, bool doubleSize,
                        ColourCursorPlane plane);

}  // namespace kwe::quickdraw
