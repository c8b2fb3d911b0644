// The pixel maps, pixel patterns and the main graphics device that colour
// ports need. Each record is the published one; the colour-table and
// device calls that fill them in further come with colour QuickDraw.
#pragma once
#include <windows.h>

#include <cstdint>

#include "Quickdraw.h"

namespace kwe::quickdraw {

constexpr SInt16 kLibraryPixMapVersion = static_cast<SInt16>(0xC000);
// baseAddr of a pixel map or bitmap with no pixels of its own.
constexpr uintptr_t kNoBits = 32767;
constexpr uintptr_t kPortTag = 0x8000;  // + slot: a port on the screen or a window

inline Ptr PortTag(int slot) { return reinterpret_cast<Ptr>(kPortTag + slot); }

// The library's pixel map: the published record, then the fields that say
// where its pixels are. In the 32-bit build these follow the 50 published
// bytes as 32-bit slots (84 bytes in all); a 64-bit HDC, HBITMAP, Handle or
// pointer does not fit such a slot, so the 64-bit build widens them.
#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(push, 2)
#else
#pragma pack(push, 8)
#endif
struct LibraryPixMap {
  PixMap published;
  UInt16 flags;
  HDC ownDC;     // made when a DIB pixel map is drawn into
  HDC bitmapDC;  // the DC the DDB is selected into
  HBITMAP ddb;
  HBITMAP replaced;  // what the DDB replaced in bitmapDC
  SInt32 conversion;
  Handle dib;  // a packed DIB: header, colours, bits
  void* dibBits;
  SInt32 deviceField;
};
#pragma pack(pop)

// LibraryPixMap.flags
constexpr UInt16 kMacPixelsFlag = 0x0010;
constexpr UInt16 kDibPixelsFlag = 0x0020;
constexpr UInt16 kDdbPixelsFlag = 0x0040;

// A library pixel map: NewPixMap's (pmVersion 0xC000, a handle of the
// library record's size).
bool IsLibraryPixMap(PixMapHandle pm);
// The library's record behind a pixel map the program passes by pointer
// (pmVersion 0xC000 and rowBytes' top bit set); null for any other.
LibraryPixMap* LibraryRecordOf(PixMap* pm);

// A pixel map of the depth of dc, covering the screen, with no pixels; null
// when memory is short.
PixMapHandle MakePixMap(HDC dc);
void DisposePixMapRecord(PixMapHandle pm);

// A pixel pattern as the library makes it: the published record, then the
// colour of an RGB pattern (patType 2, MakeRGBPat).
#pragma pack(push, 2)
struct LibraryPixPat {
  PixPat published;
  RGBColor rgb;
};
#pragma pack(pop)

// The colour of an RGB pixel pattern; false for other patterns.
bool RgbOfPixPat(PixPatHandle pp, RGBColor* rgb);

// An old-style pixel pattern of pat; null when memory is short.
PixPatHandle MakePixPat(const Pattern& pat);
void DisposePixPatRecord(PixPatHandle pp);
void SetPixPatPattern(PixPatHandle pp, const Pattern& pat);

// The main device: gdRect covers the screen port.
GDHandle MakeMainDevice(HDC dc, const Rect& rect);
void DisposeMainDevice(GDHandle device);

}  // namespace kwe::quickdraw
