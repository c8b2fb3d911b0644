// The session's Windows cursors: the 140-slot cache behind converted Toolbox
// cursors (slots 0 to 4 hold the standard cursors of GetCursor 0 to 4, slots
// 5 to 139 the cursors made from 'CURS' and 'crsr' resources), the records of
// the standard cursors, the drag cursors and the pointer-size setting. A
// record names its cursor by slot number in the high byte of its hot spot's
// h; the HCURSOR itself, pointer-wide, stays here.
#pragma once
#include <windows.h>

#include <cstdint>

#include "MacTypes.h"
#include "quickdraw/cursors/cursor_planes.h"

namespace kwe::quickdraw {

constexpr int kCursorCacheSlots = 140;
constexpr int kStandardCursorCount = 5;  // arrow, I-beam, cross, plus, watch
constexpr int kArrowCursorSlot = 0;

// What a made cursor was built from: its data and mask, and its hot spot
// without the cache mark.
struct CursorImage {
  uint8_t bits[2 * kCursorImageBytes];
  HotSpotWords hotSpot;
};

// MOUSE.INI's [WindowsPointer] PointerSize=Large, as read at session start.
bool DoubleSizeCursors();

// The cursor in a slot (0 to 139), or null.
HCURSOR CachedCursor(int slot);
bool IsCachedCursor(HCURSOR cursor);
bool CursorCacheHasRoom();
// Puts a cursor made from image into the first free slot from 5 and answers
// the slot, or -1 when every slot is taken.
int CacheMadeCursor(HCURSOR cursor, const CursorImage& image);
// A made cursor leaves the cache and is destroyed once nothing shows it.
// The standard slots are never released.
void ReleaseCachedCursor(int slot);

// Resource data written back to its file goes to Macintosh order and comes
// straight back; the slot of a cursor whose record is out in file order is
// parked, so the same image coming back takes the same slot and Windows
// cursor again instead of a new one each time.
void ParkCachedCursor(int slot, const CursorImage& image);
int TakeParkedCursor(const CursorImage& image);

// The Window Manager's drag feedback: one document, or several.
HCURSOR DragCursor(bool multiple);

}  // namespace kwe::quickdraw
