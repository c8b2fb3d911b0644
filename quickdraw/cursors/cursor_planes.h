// The bytes of a Toolbox cursor and of the Windows cursor made from it. Pure
// byte work, so it builds everywhere.
//
// A Cursor's data and mask rows are used in the order a 'CURS' resource holds
// them (the byte swap leaves them alone): two bytes a row, the leftmost
// pixel in the high bit of the first byte, which is also how a monochrome
// Windows bitmap lays out its rows.
#pragma once
#include <cstddef>
#include <cstdint>

namespace kwe::quickdraw {

constexpr int kCursorRows = 16;
constexpr size_t kCursorImageBytes = 32;  // one of data or mask
constexpr int kWindowsCursorSide = 32;
constexpr size_t kWindowsCursorRowBytes = kWindowsCursorSide / 8;
constexpr size_t kWindowsCursorPlaneBytes = kWindowsCursorSide * kWindowsCursorRowBytes;

// Where a cursor record keeps its pieces: a Cursor, or the 1-bit part of a
// CCrsr as the 'crsr' resource lays it out (its handle fields are 32-bit
// slots there, so the offsets hold in every build).
struct CursorLayout {
  size_t data;
  size_t mask;
  size_t hotSpot;  // v then h
};
constexpr CursorLayout kPlainCursorLayout = {0, 32, 64};
constexpr CursorLayout kColourCursorLayout = {20, 52, 84};
inline const CursorLayout& LayoutOf(bool isColour) {
  return isColour ? kColourCursorLayout : kPlainCursorLayout;
}
// Bytes a record must hold for the cursor to be made from it.
inline size_t CursorRecordSize(bool isColour) { return LayoutOf(isColour).hotSpot + 4; }

// The AND and XOR planes CreateCursor takes for a 32 by 32 cursor. AND is
// NOT mask and XOR is data XOR mask, so Macintosh black, white, transparent
// and inverted pixels stay what they are. The 16 by 16 image sits in the
// top-left corner with the rest transparent, or, doubled, fills the cursor:
// every pixel twice across and every row twice down.
struct WindowsCursorPlanes {
  uint8_t andPlane[kWindowsCursorPlaneBytes];
  uint8_t xorPlane[kWindowsCursorPlaneBytes];
};
void MakeWindowsCursorPlanes(const uint8_t* data, const uint8_t* mask, bool doubleSize,
                             WindowsCursorPlanes* planes);

// The hot spot's two words carry the cache mark: once a cursor is cached the
// high byte of v is 0xFF and the high byte of h holds its cache slot, the
// real coordinates staying in the low bytes.
constexpr uint16_t kCachedMark = 0xFF00;
struct HotSpotWords {
  uint16_t v;
  uint16_t h;
};
inline bool IsCachedHotSpot(HotSpotWords spot) { return (spot.v & 0xFF00) == kCachedMark; }
inline int CacheSlotOf(HotSpotWords spot) { return spot.h >> 8; }
inline HotSpotWords CachedHotSpot(uint8_t v, uint8_t h, int slot) {
  return HotSpotWords{uint16_t(kCachedMark | v), uint16_t(slot << 8 | h)};
}
// The coordinates without the mark, halved again when the cursor was made
// double-sized.
inline HotSpotWords PlainHotSpot(HotSpotWords spot, bool doubleSize) {
  int shift = doubleSize ? 1 : 0;
  return HotSpotWords{uint16_t((spot.v & 0xFF) >> shift), uint16_t((spot.h & 0xFF) >> shift)};
}

// The words at p in the processor's order, or in the Macintosh's.
HotSpotWords ReadHotSpot(const uint8_t* p, bool bigEndian);
void WriteHotSpot(uint8_t* p, HotSpotWords spot, bool bigEndian);

}  // namespace kwe::quickdraw
