// Pixel maps over packed DIBs: KWE_NewDIBPixMap copies a DIB into a library
// pixel map whose pixels are the DIB's (flag 0x0020), with a colour table
// made from the DIB's colours, and KWE_GetDIBFromPixMap hands the DIB back.
#include <cstring>

#include "KWEPixMaps.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/pixmaps/library_pixmaps.h"
#include "quickdraw/pixmaps/pixel_conversion.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr UInt16 kMadeFromDibFlag = 0x0200;
constexpr int kLargestSide = 16383;  // what a Rect holds

// The DIB's row length at its bit count; 0 for a count a library pixel map
// does not hold as a DIB.
int32_t DibRowFor(int width, int bitCount) {
  return bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 24
             ? DibRowBytes(width, bitCount)
             : 0;
}

RGBColor FromQuad(const RGBQUAD& q) {
  return RGBColor{static_cast<UInt16>(q.rgbRed * 257), static_cast<UInt16>(q.rgbGreen * 257),
                  static_cast<UInt16>(q.rgbBlue * 257)};
}

UInt16 Grey(UInt16 base, int value) { return static_cast<UInt16>(base + value + 1); }

// n entries from the u colours: in the palette's order when it runs from
// white to black, spare greys last; otherwise reversed, spare greys first.
CTabHandle TableOfColours(const RGBQUAD* colours, int n, int u, bool* reversed) {
  const RGBQUAD& first = colours[0];
  const RGBQUAD& last = colours[u - 1];
  bool macOrder = first.rgbRed == 255 && first.rgbGreen == 255 && first.rgbBlue == 255 &&
                  last.rgbRed == 0 && last.rgbGreen == 0 && last.rgbBlue == 0;
  *reversed = !macOrder;
  RGBColor entries[256];
  for (int i = 0; i < n; ++i) {
    if (macOrder) {
      UInt16 g = Grey(0x0100, i);
      entries[i] = i < u ? FromQuad(colours[i]) : RGBColor{g, g, g};
    } else {
      UInt16 g = Grey(0xFE00, i);
      entries[i] = i < n - u ? RGBColor{g, g, g} : FromQuad(colours[n - 1 - i]);
    }
  }
  return NewColourTable(entries, n, GetCTSeed());
}

}  // namespace

Ptr SharedPixelByte() {
  static char byte = 0;
  return &byte;
}

void ReadResourcePixMap(const UInt8* bytes, size_t at, PixMap* pm, UInt32* table) {
  pm->rowBytes = ReadNative<SInt16>(bytes, at + 4);
  pm->bounds = Rect{ReadNative<SInt16>(bytes, at + 6), ReadNative<SInt16>(bytes, at + 8),
                    ReadNative<SInt16>(bytes, at + 10), ReadNative<SInt16>(bytes, at + 12)};
  pm->pmVersion = ReadNative<SInt16>(bytes, at + 14);
  pm->packType = ReadNative<SInt16>(bytes, at + 16);
  pm->packSize = ReadNative<SInt32>(bytes, at + 18);
  pm->hRes = ReadNative<Fixed>(bytes, at + 22);
  pm->vRes = ReadNative<Fixed>(bytes, at + 26);
  pm->pixelType = ReadNative<SInt16>(bytes, at + 30);
  pm->pixelSize = ReadNative<SInt16>(bytes, at + 32);
  pm->cmpCount = ReadNative<SInt16>(bytes, at + 34);
  pm->cmpSize = ReadNative<SInt16>(bytes, at + 36);
  pm->planeBytes = ReadNative<SInt32>(bytes, at + 38);
  *table = ReadNative<UInt32>(bytes, at + 42);
}

size_t ResourceTableBytes(const UInt8* bytes, size_t size, size_t table) {
  if (table > size || size - table < kColourTableHeader) return 0;
  int entries = ReadNative<SInt16>(bytes, table + 6) + 1;
  size_t tableBytes = kColourTableHeader + sizeof(ColorSpec) * static_cast<size_t>(entries);
  return entries > 0 && entries <= 256 && size - table >= tableBytes ? tableBytes : 0;
}

Handle HandleOfBytes(const void* bytes, size_t size) {
  Handle h = NewHandle(static_cast<Size>(size));
  if (h && size) std::memcpy(*h, bytes, size);
  return h;
}

void DescribePixels(PixMap& p, int width, int height, int depth) {
  p.bounds = Rect{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  p.rowBytes = static_cast<SInt16>(((MacRowBytesNeeded(width, depth) + 1) & ~1) | 0x8000);
  p.pixelType = depth > 8 ? 16 : 0;
  p.pixelSize = static_cast<SInt16>(depth > 8 ? 16 : depth);
  p.cmpCount = depth > 8 ? 3 : 1;
  p.cmpSize = static_cast<SInt16>(depth > 8 ? 5 : depth);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API PixMapHandle KWE_CALL KWE_NewDIBPixMap(BITMAPINFOHEADER* dib) {
  if (!dib || dib->biSize < sizeof(BITMAPINFOHEADER) || dib->biPlanes != 1 || dib->biWidth <= 0 ||
      dib->biHeight <= 0 || dib->biWidth > kLargestSide || dib->biHeight > kLargestSide ||
      dib->biCompression != BI_RGB)
    return nullptr;
  int bitCount = dib->biBitCount;
  int32_t dibRow = DibRowFor(dib->biWidth, bitCount);
  if (dibRow == 0) return nullptr;
  int depth = bitCount == 24 ? 32 : bitCount;
  int n = depth == 1 ? 2 : depth == 4 ? 16 : depth == 8 ? 256 : 0;
  int u = dib->biClrUsed ? static_cast<int>(dib->biClrUsed) : n;
  if (n && u > n) {
    u = n;
    dib->biClrUsed = static_cast<DWORD>(n);
  }
  if (!n) u = 0;
  Ptr byte = SharedPixelByte();
  PixMapHandle pm = byte ? NewPixMap() : nullptr;
  if (!pm) return nullptr;
  const RGBQUAD* colours =
      reinterpret_cast<const RGBQUAD*>(reinterpret_cast<const uint8_t*>(dib) + dib->biSize);
  bool reversed = false;
  CTabHandle table = n ? TableOfColours(colours, n, u, &reversed) : nullptr;
  Size bitsSize = static_cast<Size>(dibRow) * dib->biHeight;
  Size headerSize = static_cast<Size>(sizeof(BITMAPINFOHEADER) + 4 * u);
  Handle copy = (n == 0 || table) ? NewHandle(headerSize + bitsSize) : nullptr;
  if (!copy) {
    DisposeCTable(table);
    DisposePixMap(pm);
    return nullptr;
  }
  dib->biSizeImage = static_cast<DWORD>(bitsSize);
  std::memcpy(*copy, dib, sizeof(BITMAPINFOHEADER));
  reinterpret_cast<BITMAPINFOHEADER*>(*copy)->biSize = sizeof(BITMAPINFOHEADER);
  std::memcpy(*copy + sizeof(BITMAPINFOHEADER), colours, static_cast<size_t>(4 * u));
  std::memcpy(*copy + headerSize, reinterpret_cast<const uint8_t*>(colours) + 4 * u,
              static_cast<size_t>(bitsSize));

  PixMap& p = **pm;
  DisposeHandle(reinterpret_cast<Handle>(p.pmTable));
  p.pmTable = table;
  p.baseAddr = byte;
  DescribePixels(p, dib->biWidth, dib->biHeight, depth);
  LibraryPixMap& lib = *reinterpret_cast<LibraryPixMap*>(*pm);
  lib.flags = static_cast<UInt16>(kDibPixelsFlag | kMadeFromDibFlag |
                                  (reversed ? kReversedColoursFlag : 0));
  lib.dib = copy;
  lib.dibBits = *copy + headerSize;
  return pm;
}

KWE_API BITMAPINFO* KWE_CALL KWE_GetDIBFromPixMap(PixMapHandle pm, void** bits) {
  if (!IsLibraryPixMap(pm)) return nullptr;
  LibraryPixMap& lib = *reinterpret_cast<LibraryPixMap*>(*pm);
  if (!(lib.flags & kDibPixelsFlag) || !lib.dib) return nullptr;
  if (bits) *bits = lib.dibBits;
  return reinterpret_cast<BITMAPINFO*>(*lib.dib);
}
