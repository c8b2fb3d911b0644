// Where KWE_ByteSwap hands 'CURS' and 'crsr' data to QuickDraw's cursor
// conversion (KWE_BrovaskCursor), which converts the hot spot and, when a
// cursor is loaded, makes and caches its Windows cursor
// (quickdraw/cursors/cursor_conversion.cpp).
#pragma once
#include "MacTypes.h"

namespace kwe::quickdraw {

// KWE_BrovaskCursor(make, isColour, cursor, create, swapAndCache) for a
// cursor resource's data of size bytes: nothing at or past cursor + size is
// read or written. The data is a Cursor, or with isColour a CCrsr.
void ConvertCursorResource(Boolean make, Boolean isColour, void* cursor, SInt32 size,
                           Boolean create, Boolean swapAndCache);

}  // namespace kwe::quickdraw
