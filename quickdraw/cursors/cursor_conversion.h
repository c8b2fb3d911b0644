// Toolbox cursor records into Windows cursors (KWE_BrovaskCursor).
#pragma once
#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "MacTypes.h"

namespace kwe::quickdraw {

// The cached Windows cursor a record's hot spot names, or null.
HCURSOR CachedCursorOf(const Cursor* cursor);
// A Windows cursor made from a Cursor (or, with isColour, the 1-bit part
// of a CCrsr as a 'crsr' resource lays it out) for the caller to destroy.
HCURSOR MakeUncachedCursor(const void* record, bool isColour);
// A colour cursor's colour pixels over its 1-bit planes, from the size
// bytes of a 'crsr' resource's layout, for the caller to destroy; null when
// the record holds no colour pixels.
HCURSOR MakeUncachedColourCursor(const uint8_t* record, size_t size);
// KWE_BrovaskCursor over the size bytes at record: a record too short to
// hold the cursor is left as it is.
HCURSOR ConvertCursorRecord(bool make, bool isColour, uint8_t* record, size_t size, bool create,
                            bool swapAndCache);

}  // namespace kwe::quickdraw
