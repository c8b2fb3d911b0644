// What the library's pixel maps over Windows' pixels (DIBs and DDBs) share.
#pragma once
#include <cstddef>
#include <cstring>

#include "Quickdraw.h"

namespace kwe::quickdraw {

constexpr UInt16 kReversedColoursFlag = 0x0100;

// The one byte every pixel map over a DIB or DDB has as baseAddr: its
// pixels are Windows', never behind baseAddr. Kept outside the
// application's heap, so that it outlives every session.
Ptr SharedPixelByte();

// bounds (0, 0, height, width), the Macintosh row length of width at depth
// (even, bit 15 set) and the depth fields; deeper than 8 bits is described
// as 16 bits of three 5-bit components.
void DescribePixels(PixMap& p, int width, int height, int depth);

// --- Pixel maps inside resources ('ppat', 'cicn'), in native order once
// loaded: 32-bit slots where the record has handles and pointers.
constexpr size_t kResourcePixMapBytes = 50;

template <typename T>
T ReadNative(const UInt8* bytes, size_t at) {
  T value;
  std::memcpy(&value, bytes + at, sizeof value);
  return value;
}

inline size_t RowsOf(const Rect& r) {
  return r.bottom > r.top ? static_cast<size_t>(r.bottom - r.top) : 0;
}

// The PixMap at offset at, but for baseAddr and pmTable; the offset its
// pmTable slot holds in *table.
void ReadResourcePixMap(const UInt8* bytes, size_t at, PixMap* pm, UInt32* table);
// The bytes of the colour table at offset table of a resource of size
// bytes; 0 when it does not lie wholly inside.
size_t ResourceTableBytes(const UInt8* bytes, size_t size, size_t table);
// A new handle of the bytes; null when memory is short.
Handle HandleOfBytes(const void* bytes, size_t size);

}  // namespace kwe::quickdraw
