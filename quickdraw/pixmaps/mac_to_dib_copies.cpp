// KWE_CopyBitsMacToDIB: Macintosh pixels copied into a DIB pixel map. Rows
// of two 8-bit maps with the same colours, copied one for one, are written
// into the DIB as they stand; every other copy goes through CopyBits into a
// Macintosh view of the DIB (its pixels, with a colour table that gives each
// value the DIB's colour), which is then written back.
#include <cstring>
#include <memory>
#include <new>

#include "KWEPixMaps.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/pixmaps/pixel_conversion.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

bool SameSize(const Rect& a, const Rect& b) {
  return a.right - a.left == b.right - b.left && a.bottom - a.top == b.bottom - b.top;
}

bool Inside(const Rect& r, const Rect& bounds) {
  return r.left >= bounds.left && r.top >= bounds.top && r.right <= bounds.right &&
         r.bottom <= bounds.bottom && r.left < r.right && r.top < r.bottom;
}

SInt32 SeedOf(CTabHandle table) { return table && *table ? (*table)->ctSeed : 0; }

// The Macintosh depth that holds a DIB's pixels, and whether the values are
// complemented on the way (1 bit, and 4 bits kept as 4).
int MacDepthOfDib(int bitCount) { return bitCount == 24 ? 32 : bitCount; }

// The Macintosh view's colours: value v has the DIB's colour of the value v
// becomes in the DIB.
CTabHandle ViewTable(const BITMAPINFO& dib, int depth) {
  if (depth > 8) return nullptr;
  int n = 1 << depth;
  RGBColor colours[256];
  for (int v = 0; v < n; ++v) {
    const RGBQUAD& q = dib.bmiColors[depth == 8 ? v : n - 1 - v];
    colours[v] =
        RGBColor{static_cast<UInt16>(q.rgbRed * 257), static_cast<UInt16>(q.rgbGreen * 257),
                 static_cast<UInt16>(q.rgbBlue * 257)};
  }
  return NewColourTable(colours, n, GetCTSeed());
}

void CopyRowsAsTheyStand(const PixMap& src, const Rect& srcRect, const BITMAPINFOHEADER& header,
                         UInt8* bits, const Rect& dstRect, const Rect& dstBounds) {
  int32_t srcRow = src.rowBytes & 0x3FFF, dibRow = DibRowBytes(header.biWidth, 8);
  int w = srcRect.right - srcRect.left;
  for (int y = 0; y < srcRect.bottom - srcRect.top; ++y) {
    const UInt8* from = reinterpret_cast<const UInt8*>(src.baseAddr) +
                        static_cast<ptrdiff_t>(srcRect.top - src.bounds.top + y) * srcRow +
                        (srcRect.left - src.bounds.left);
    int dibY = header.biHeight - 1 - (dstRect.top - dstBounds.top + y);
    std::memcpy(bits + static_cast<ptrdiff_t>(dibY) * dibRow + (dstRect.left - dstBounds.left),
                from, static_cast<size_t>(w));
  }
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API OSErr KWE_CALL KWE_CopyBitsMacToDIB(PixMap* src, PixMap* dst, Rect srcRect, Rect dstRect,
                                            SInt16 mode, CTabHandle srcTable, CTabHandle dstTable,
                                            RgnHandle maskRgn) {
  LibraryPixMap* record = LibraryRecordOf(dst);
  if (!src || !record) return paramErr;
  auto& lib = *record;
  if (!(lib.flags & kDibPixelsFlag) || !lib.dib || !*lib.dib || !lib.dibBits) return paramErr;
  if (!Inside(srcRect, src->bounds) || !Inside(dstRect, dst->bounds)) return paramErr;
  HLock(lib.dib);
  const BITMAPINFO& dib = *reinterpret_cast<const BITMAPINFO*>(*lib.dib);
  const BITMAPINFOHEADER& header = dib.bmiHeader;
  UInt8* bits = static_cast<UInt8*>(lib.dibBits);
  if (!srcTable) srcTable = src->pmTable;
  if (!dstTable) dstTable = dst->pmTable;
  int base = mode & ~64;
  if (SameSize(srcRect, dstRect) && src->pixelSize == 8 && header.biBitCount == 8 &&
      (base == srcCopy || base == patCopy) && SeedOf(srcTable) == SeedOf(dstTable) && !maskRgn) {
    CopyRowsAsTheyStand(*src, srcRect, header, bits, dstRect, dst->bounds);
    HUnlock(lib.dib);
    return noErr;
  }
  int depth = MacDepthOfDib(header.biBitCount);
  bool fourBit = depth == 4;
  int width = header.biWidth, height = header.biHeight;
  int32_t rowBytes = (MacRowBytesNeeded(width, depth) + 1) & ~1;
  std::unique_ptr<UInt8[]> view(
      new (std::nothrow) UInt8[static_cast<size_t>(rowBytes) * static_cast<size_t>(height)]);
  CTabHandle viewTable = ViewTable(dib, depth);
  OSErr err = view && (depth > 8 || viewTable) ? noErr : memFullErr;
  if (err == noErr) {
    MacPixels mac{view.get(), rowBytes, depth, width, height};
    DibPixels pixels{bits, header.biBitCount, width, height};
    DibToMac(pixels, nullptr, fourBit, mac, 0, 0);
    PixMap target = *dst;
    target.baseAddr = reinterpret_cast<Ptr>(view.get());
    target.rowBytes = static_cast<SInt16>(rowBytes | 0x8000);
    target.pmVersion = 0;
    target.pixelType = depth > 8 ? 16 : 0;
    target.pixelSize = static_cast<SInt16>(depth);
    target.cmpCount = depth > 8 ? 3 : 1;
    target.cmpSize = static_cast<SInt16>(depth > 8 ? 8 : depth);
    target.pmTable = viewTable;
    PixMap source = *src;
    source.pmTable = srcTable;
    CopyBits(reinterpret_cast<const BitMap*>(&source), reinterpret_cast<const BitMap*>(&target),
             &srcRect, &dstRect, mode, maskRgn);
    err = QDError();
    if (err == noErr) MacToDib(mac, 0, 0, nullptr, fourBit, pixels);
  }
  DisposeCTable(viewTable);
  HUnlock(lib.dib);
  return err;
}
