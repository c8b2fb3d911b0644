#include "quickdraw/cursors/cursor_conversion.h"

#include <cstring>
#include <initializer_list>

#include "KWECursors.h"
#include "frame/session.h"
#include "quickdraw/cursors/colour_cursor_pixels.h"
#include "quickdraw/cursors/cursor_cache.h"
#include "resources/cursor_conversion_hook.h"

namespace kwe::quickdraw {
namespace {

CursorImage ImageOf(const uint8_t* record, const CursorLayout& at, HotSpotWords hotSpot) {
  CursorImage image;
  std::memcpy(image.bits, record + at.data, kCursorImageBytes);
  std::memcpy(image.bits + kCursorImageBytes, record + at.mask, kCursorImageBytes);
  image.hotSpot = hotSpot;
  return image;
}

// A record's own coordinates: a cached record's without the mark and the
// doubling, any other's as they are.
HotSpotWords UnmarkedHotSpot(HotSpotWords spot) {
  return IsCachedHotSpot(spot) ? PlainHotSpot(spot, DoubleSizeCursors()) : spot;
}

// A cached record carries its coordinates doubled along with its cursor.
HotSpotWords MarkedHotSpot(HotSpotWords plain, int slot) {
  int scale = DoubleSizeCursors() ? 2 : 1;
  return CachedHotSpot(uint8_t(plain.v * scale), uint8_t(plain.h * scale), slot);
}

// CreateCursor wants the hot spot on the cursor.
int WindowsCoordinate(uint16_t coordinate) {
  int c = SInt16(coordinate);
  c = c < 0 ? 0 : c >= kCursorRows ? kCursorRows - 1 : c;
  return DoubleSizeCursors() ? c * 2 : c;
}

// A colour cursor's record (colour, size bytes) gives its colour pixels
// over the AND plane through CreateIconIndirect; without them the 1-bit
// image is the cursor.
HCURSOR CreateFromImage(const CursorImage& image, const uint8_t* colour = nullptr,
                        size_t size = 0) {
  WindowsCursorPlanes planes;
  MakeWindowsCursorPlanes(image.bits, image.bits + kCursorImageBytes, DoubleSizeCursors(), &planes);
  const int hotX = WindowsCoordinate(image.hotSpot.h), hotY = WindowsCoordinate(image.hotSpot.v);
  ColourCursorPlane pixels;
  if (colour && ColourCursorPixels(colour, size, DoubleSizeCursors(), pixels)) {
    ICONINFO info{FALSE, DWORD(hotX), DWORD(hotY),
                  CreateBitmap(kWindowsCursorSide, kWindowsCursorSide, 1, 1, planes.andPlane),
                  CreateBitmap(kWindowsCursorSide, kWindowsCursorSide, 1, 32, pixels)};
    HCURSOR cursor = info.hbmMask && info.hbmColor ? CreateIconIndirect(&info) : nullptr;
    for (HBITMAP bitmap : {info.hbmMask, info.hbmColor})
      if (bitmap) DeleteObject(bitmap);
    return cursor;
  }
  HINSTANCE instance = TheSession().instance ? TheSession().instance : GetModuleHandleA(nullptr);
  return CreateCursor(instance, hotX, hotY, kWindowsCursorSide, kWindowsCursorSide, planes.andPlane,
                      planes.xorPlane);
}

// Resource data just read from its file: the hot spot comes to the
// processor's order and the cursor is made (or its parked one taken back)
// and cached. With the cache full the record stays an uncached cursor, which
// SetCursor converts for each use.
HCURSOR LoadAndCache(uint8_t* record, size_t size, bool isColour) {
  const CursorLayout& at = LayoutOf(isColour);
  uint8_t* hotSpot = record + at.hotSpot;
  HotSpotWords plain = ReadHotSpot(hotSpot, true);
  WriteHotSpot(hotSpot, plain, false);
  CursorImage image = ImageOf(record, at, plain);
  int slot = TakeParkedCursor(image);
  if (slot < 0 && CursorCacheHasRoom()) {
    HCURSOR cursor = CreateFromImage(image, isColour ? record : nullptr, size);
    if (cursor) slot = CacheMadeCursor(cursor, image);
  }
  if (slot < 0) return nullptr;
  WriteHotSpot(hotSpot, MarkedHotSpot(plain, slot), false);
  return CachedCursor(slot);
}

// Without create only the hot spot changes: its mark goes and, with
// swapAndCache, it goes to Macintosh order. A record on its way to its file
// parks its slot until it comes back; one that simply drops its mark no
// longer names the slot, which is released.
void Normalise(uint8_t* record, const CursorLayout& at, bool toFileOrder) {
  uint8_t* hotSpot = record + at.hotSpot;
  HotSpotWords spot = ReadHotSpot(hotSpot, false);
  HotSpotWords plain = UnmarkedHotSpot(spot);
  if (IsCachedHotSpot(spot)) {
    if (toFileOrder)
      ParkCachedCursor(CacheSlotOf(spot), ImageOf(record, at, plain));
    else
      ReleaseCachedCursor(CacheSlotOf(spot));
  }
  WriteHotSpot(hotSpot, plain, toFileOrder);
}

}  // namespace

HCURSOR CachedCursorOf(const Cursor* cursor) {
  HotSpotWords spot = ReadHotSpot(reinterpret_cast<const uint8_t*>(&cursor->hotSpot), false);
  return IsCachedHotSpot(spot) ? CachedCursor(CacheSlotOf(spot)) : nullptr;
}

HCURSOR MakeUncachedCursor(const void* record, bool isColour) {
  const CursorLayout& at = LayoutOf(isColour);
  auto bytes = static_cast<const uint8_t*>(record);
  return CreateFromImage(
      ImageOf(bytes, at, UnmarkedHotSpot(ReadHotSpot(bytes + at.hotSpot, false))));
}

HCURSOR MakeUncachedColourCursor(const uint8_t* record, size_t size) {
  const CursorLayout& at = LayoutOf(true);
  ColourCursorPlane pixels;
  if (size < CursorRecordSize(true) || !ColourCursorPixels(record, size, false, pixels))
    return nullptr;
  return CreateFromImage(
      ImageOf(record, at, UnmarkedHotSpot(ReadHotSpot(record + at.hotSpot, false))), record, size);
}

HCURSOR ConvertCursorRecord(bool make, bool isColour, uint8_t* record, size_t size, bool create,
                            bool swapAndCache) {
  const CursorLayout& at = LayoutOf(isColour);
  if (!record || size < CursorRecordSize(isColour)) return nullptr;
  if (!make) {
    // The standard cursors' slots (0 to 4) belong to the session.
    HotSpotWords spot = ReadHotSpot(record + at.hotSpot, false);
    if (IsCachedHotSpot(spot) && CacheSlotOf(spot) >= kStandardCursorCount)
      Normalise(record, at, false);
    return nullptr;
  }
  if (!create) {
    Normalise(record, at, swapAndCache);
    return nullptr;
  }
  return swapAndCache ? LoadAndCache(record, size, isColour) : MakeUncachedCursor(record, isColour);
}

void ConvertCursorResource(Boolean make, Boolean isColour, void* cursor, SInt32 size,
                           Boolean create, Boolean swapAndCache) {
  if (size <= 0) return;
  ConvertCursorRecord(make, isColour, static_cast<uint8_t*>(cursor), size_t(size), create,
                      swapAndCache);
}

}  // namespace kwe::quickdraw

// The record is taken to be whole: a Cursor (68 bytes) or a colour cursor's
// first 88 bytes in the 'crsr' resource layout.
KWE_API void* KWE_CALL KWE_BrovaskCursor(Boolean make, Boolean isColour, void* cursorPtr,
                                         Boolean create, Boolean swapAndCache) {
  return kwe::quickdraw::ConvertCursorRecord(make, isColour, static_cast<uint8_t*>(cursorPtr),
                                             kwe::quickdraw::CursorRecordSize(isColour), create,
                                             swapAndCache);
}
