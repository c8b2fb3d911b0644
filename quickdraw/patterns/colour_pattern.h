// Full-colour pixel patterns (patType 1): their pixel map and data as a
// packed DIB for a DIB pattern brush.
#pragma once
#include <windows.h>

#include "Quickdraw.h"

namespace kwe::quickdraw {

// A brush of the pattern's pixels, or null when the pattern is better drawn
// as an old-style pattern (a 1-bit 8 by 8 map, or data shorter than its
// map says); then *pat holds its first 8 bytes and *fg, *bk the last and
// first colours of its table.
HBRUSH MakeColourPatternBrush(PixPatHandle pp, Pattern* pat, RGBColor* fg, RGBColor* bk);

}  // namespace kwe::quickdraw
