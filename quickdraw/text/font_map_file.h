// The font map as the session finds it on disk.
#pragma once
#include "quickdraw/text/font_map.h"

namespace kwe::quickdraw {

// The host's map file (system values 8, 9 and 10) or kwefont.map beside the
// application; when that cannot be read or holds no entry, the built-in map,
// written out as kwefont.map.
FontMap LoadFontMap();

}  // namespace kwe::quickdraw
