// KWE_FoldPixMap and KWE_UnfoldPixMap: a library pixel map's Macintosh
// pixels made into its packed DIB (and a DDB made from that), and the DIB's
// or DDB's pixels written back as Macintosh pixels.
//
// The DIB of a folded 1-bit map, or of a 4-bit one folded with its 4-bit
// switch, holds each value complemented, so its colours run the other way
// from the pixel map's table and the map is marked reversed (0x0100); the
// 8-bit DIB that 2-, 4- and 8-bit maps fold into holds the values as they
// stand. Unfolding by index undoes exactly that, so a map folded and
// unfolded by index is unchanged; unfolding by colour matches each DIB
// colour to the destination's table.
#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "KWEPixMaps.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/copybits/device_copies.h"
#include "quickdraw/copybits/pixel_pipeline.h"
#include "quickdraw/pixmaps/library_pixmaps.h"
#include "quickdraw/pixmaps/pixel_conversion.h"
#include "quickdraw/ports/graphics_records.h"

namespace kwe::quickdraw {
namespace {

// KWE_FoldPixMap's flags.
constexpr SInt16 kFoldToDib = 0x02, kFoldNoPixels = 0x04, kFoldToDdb = 0x08,
                 kFoldMarkReversed = 0x10, kFoldFourBit = 0x20;
// KWE_UnfoldPixMap's flags.
constexpr SInt16 kUnfoldRelease = 0x01, kUnfoldByIndex = 0x10, kUnfoldForget = 0x40;
constexpr SInt16 kUnfoldOneBit = 0x100, kUnfoldFourBits = 0x200, kUnfoldEightBits = 0x400;

bool HasMacPixels(const PixMap& pm) { return reinterpret_cast<uintptr_t>(pm.baseAddr) > 0xFFFF; }

// The DIB's colour j: the pixel map's entry j, or entry n - 1 - j reversed.
void FillColours(RGBQUAD* quads, int n, CTabHandle table, bool reversed) {
  int count = table ? TableEntryCount(table) : 0;
  for (int j = 0; j < n; ++j) {
    int entry = reversed ? n - 1 - j : j;
    RGBColor c = entry < count ? TableEntries(table)[entry].rgb : RGBColor{0, 0, 0};
    quads[j] = RGBQUAD{static_cast<BYTE>(c.blue >> 8), static_cast<BYTE>(c.green >> 8),
                       static_cast<BYTE>(c.red >> 8), 0};
  }
}

// Releases the DIB a pixel map holds and the DC drawn into it.
void ForgetDib(LibraryPixMap& lib, bool dispose) {
  if (lib.ownDC && lib.ownDC != SharedMemoryDC()) DeleteDC(lib.ownDC);
  lib.ownDC = nullptr;
  if (dispose && lib.dib) DisposeHandle(lib.dib);
  lib.dib = nullptr;
  lib.dibBits = nullptr;
  lib.flags &= static_cast<UInt16>(~kDibPixelsFlag);
}

// A new DDB replacing the pixel map's, in its DC when it has one there.
void TakeDdb(LibraryPixMap& lib, HBITMAP ddb) {
  if (lib.ddb && lib.bitmapDC) SelectObject(lib.bitmapDC, ddb);
  if (lib.ddb) DeleteObject(lib.ddb);
  lib.ddb = ddb;
  lib.flags |= kDdbPixelsFlag;
}

// The Macintosh rows top to bottom of r (within the bounds) into the DIB,
// whole rows wide.
void ConvertRows(const PixMap& pm, const Rect* r, bool fourBit, const DibPixels& dib) {
  int top = 0, bottom = dib.height;
  if (r) {
    top = std::max(0, r->top - pm.bounds.top);
    bottom = std::min(dib.height, r->bottom - pm.bounds.top);
  }
  if (bottom <= top) return;
  MacPixels mac{reinterpret_cast<uint8_t*>(pm.baseAddr) +
                    static_cast<ptrdiff_t>(top) * (pm.rowBytes & 0x3FFF),
                pm.rowBytes & 0x3FFF, pm.pixelSize, dib.width, bottom - top};
  int32_t stride = DibRowBytes(dib.width, dib.depth);
  MacToDib(mac, 0, 0, nullptr, fourBit,
           DibPixels{dib.bits + static_cast<ptrdiff_t>(dib.height - bottom) * stride, dib.depth,
                     dib.width, bottom - top});
}

// A fresh packed DIB for the pixel map, its pixels converted unless told
// not to; false when memory is short or the map's pixels are unusable.
bool Fold(PixMap& pm, LibraryPixMap& lib, const Rect* r, SInt16 flags) {
  int depth = pm.pixelSize, width = pm.bounds.right - pm.bounds.left,
      height = pm.bounds.bottom - pm.bounds.top;
  if (!IsQuickDrawDepth(depth) || width <= 0 || height <= 0) return false;
  bool fourBit = depth == 4 && (flags & kFoldFourBit);
  bool convert = !(flags & kFoldNoPixels) && (lib.flags & kMacPixelsFlag) && HasMacPixels(pm);
  if (convert && CheckMacPixels(MacPixels{reinterpret_cast<uint8_t*>(pm.baseAddr),
                                          pm.rowBytes & 0x3FFF, depth, width, height}) != noErr)
    return false;
  int dibDepth = DibDepthFor(depth, fourBit);
  int n = dibDepth <= 8 ? 1 << dibDepth : 0;
  Size header = static_cast<Size>(sizeof(BITMAPINFOHEADER) + 4 * n);
  Size bits = static_cast<Size>(DibRowBytes(width, dibDepth)) * height;
  Handle h = NewHandleClear(header + bits);
  if (!h) return false;
  auto* info = reinterpret_cast<BITMAPINFO*>(*h);
  info->bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER),
                                     width,
                                     height,
                                     1,
                                     static_cast<WORD>(dibDepth),
                                     BI_RGB,
                                     static_cast<DWORD>(bits),
                                     0,
                                     0,
                                     static_cast<DWORD>(n),
                                     0};
  bool reversed = dibDepth < 8;  // complemented values
  FillColours(info->bmiColors, n, pm.pmTable, reversed);
  ForgetDib(lib, true);
  lib.dib = h;
  lib.dibBits = *h + header;
  lib.flags |= kDibPixelsFlag;
  lib.flags = static_cast<UInt16>(reversed ? lib.flags | kReversedColoursFlag
                                           : lib.flags & ~kReversedColoursFlag);
  DibPixels dib{static_cast<uint8_t*>(lib.dibBits), dibDepth, width, height};
  if (convert) ConvertRows(pm, r, fourBit, dib);
  if ((flags & kFoldMarkReversed) && !convert && (depth == 1 || depth == 8))
    lib.flags |= kReversedColoursFlag;
  if (flags & kFoldToDdb) {
    HDC screen = GetDC(nullptr);
    HBITMAP ddb = CreateDIBitmap(screen, &info->bmiHeader, convert ? CBM_INIT : 0, lib.dibBits,
                                 info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    if (ddb) TakeDdb(lib, ddb);
  }
  uintptr_t base = reinterpret_cast<uintptr_t>(pm.baseAddr);
  if ((flags & kFoldToDib) && (base == kNoBits || (base >= kPortTag && base <= 0xFFFF)))
    lib.flags &= static_cast<UInt16>(~kMacPixelsFlag);
  return true;
}

// The pixels to unfold, as DIB rows bottom-up: the packed DIB as it
// stands, or a DDB read out at 32 bits.
struct Source {
  const BITMAPINFO* info = nullptr;
  const uint8_t* bits = nullptr;
  int depth = 0, width = 0, height = 0;
  bool reversed = false;
  std::unique_ptr<uint8_t[]> owned;
  BITMAPINFO deep{};
};

bool ReadDdb(LibraryPixMap& lib, Source* s) {
  BITMAP bm{};
  if (!lib.ddb || GetObjectA(lib.ddb, sizeof bm, &bm) != sizeof bm || bm.bmWidth <= 0 ||
      bm.bmHeight <= 0)
    return false;
  s->deep.bmiHeader = BITMAPINFOHEADER{
      sizeof(BITMAPINFOHEADER), bm.bmWidth, bm.bmHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  s->owned.reset(new (std::nothrow) uint8_t[static_cast<size_t>(bm.bmWidth) * 4 * bm.bmHeight]);
  if (!s->owned) return false;
  // GetDIBits wants the bitmap out of every DC.
  bool selected = lib.bitmapDC && lib.replaced;
  if (selected) SelectObject(lib.bitmapDC, lib.replaced);
  HDC screen = GetDC(nullptr);
  int rows = GetDIBits(screen, lib.ddb, 0, static_cast<UINT>(bm.bmHeight), s->owned.get(), &s->deep,
                       DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  if (selected) SelectObject(lib.bitmapDC, lib.ddb);
  if (rows != bm.bmHeight) return false;
  s->info = &s->deep;
  s->bits = s->owned.get();
  s->depth = 32;
  s->width = bm.bmWidth;
  s->height = bm.bmHeight;
  return true;
}

uint32_t DibValue(const Source& s, int x, int y) {
  const uint8_t* row =
      s.bits + static_cast<ptrdiff_t>(s.height - 1 - y) * DibRowBytes(s.width, s.depth);
  if (s.depth == 24) return uint32_t{row[3 * x]} | row[3 * x + 1] << 8 | row[3 * x + 2] << 16;
  if (s.depth == 32) return uint32_t{row[4 * x]} | row[4 * x + 1] << 8 | row[4 * x + 2] << 16;
  int bit = x * s.depth;
  return (row[bit >> 3] >> (8 - s.depth - (bit & 7))) & ((1u << s.depth) - 1);
}

RGBColor ColourOf(const Source& s, uint32_t v) {
  if (s.depth > 8) {
    return RGBColor{static_cast<UInt16>((v >> 16 & 255) * 257),
                    static_cast<UInt16>((v >> 8 & 255) * 257),
                    static_cast<UInt16>((v & 255) * 257)};
  }
  const RGBQUAD& q = s.info->bmiColors[v];
  return RGBColor{static_cast<UInt16>(q.rgbRed * 257), static_cast<UInt16>(q.rgbGreen * 257),
                  static_cast<UInt16>(q.rgbBlue * 257)};
}

bool Unfold(const Source& s, BitMap* dst, int depth, bool byIndex) {
  bool pixMap = (dst->rowBytes & 0x8000) != 0;
  CTabHandle table = pixMap ? reinterpret_cast<PixMap*>(dst)->pmTable : nullptr;
  MacPixels mac{reinterpret_cast<uint8_t*>(dst->baseAddr), dst->rowBytes & 0x3FFF, depth, s.width,
                s.height};
  if (reinterpret_cast<uintptr_t>(dst->baseAddr) <= 0xFFFF || CheckMacPixels(mac) != noErr)
    return false;
  const uint8_t* inverse = nullptr;
  if (depth <= 8) {
    inverse = table ? InverseTableOf(table) : OneBitInverse();
    if (!inverse) return false;
  }
  byIndex = byIndex && depth <= 8 && s.depth <= 8;
  uint32_t top = s.depth <= 8 ? (1u << s.depth) - 1 : 0, keep = (1u << (depth & 15)) - 1;
  for (int y = 0; y < s.height; ++y)
    for (int x = 0; x < s.width; ++x) {
      uint32_t v = DibValue(s, x, y);
      uint32_t m =
          byIndex ? (s.reversed ? top - v : v) & keep : RgbToPixel(ColourOf(s, v), depth, inverse);
      SetMacPixel(mac, x, y, m);
    }
  dst->bounds = Rect{0, 0, static_cast<SInt16>(s.height), static_cast<SInt16>(s.width)};
  if (pixMap) reinterpret_cast<PixMap*>(dst)->pixelSize = static_cast<SInt16>(depth);
  return true;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API Boolean KWE_CALL KWE_FoldPixMap(PixMap* pm, Rect* rect, SInt16 flags) {
  LibraryPixMap* lib = LibraryRecordOf(pm);
  if (!lib) return false;
  if (flags & (kFoldToDib | kFoldToDdb)) return Fold(*pm, *lib, rect, flags);
  if ((flags & kFoldMarkReversed) && (pm->pixelSize == 1 || pm->pixelSize == 8))
    lib->flags |= kReversedColoursFlag;
  return true;
}

KWE_API Boolean KWE_CALL KWE_UnfoldPixMap(PixMap* pm, BitMap* dst, void* /*reserved1*/,
                                          void* /*reserved2*/, SInt16 flags) {
  LibraryPixMap* lib = LibraryRecordOf(pm);
  if (!lib || !dst) return false;
  Source s;
  bool fromDib = (lib->flags & kDibPixelsFlag) && lib->dib && *lib->dib;
  if (fromDib) {
    s.info = reinterpret_cast<const BITMAPINFO*>(*lib->dib);
    s.bits = static_cast<const uint8_t*>(lib->dibBits);
    s.depth = s.info->bmiHeader.biBitCount;
    s.width = s.info->bmiHeader.biWidth;
    s.height = s.info->bmiHeader.biHeight;
    s.reversed = (lib->flags & kReversedColoursFlag) != 0;
    if (!s.bits || s.width <= 0 || s.height <= 0 || DibRowBytes(s.width, s.depth) == 0 ||
        (s.depth != 1 && s.depth != 4 && s.depth != 8 && s.depth != 24))
      return false;
  } else if (!ReadDdb(*lib, &s)) {
    return false;
  }
  int depth = flags & kUnfoldOneBit      ? 1
              : flags & kUnfoldFourBits  ? 4
              : flags & kUnfoldEightBits ? 8
              : (dst->rowBytes & 0x8000) ? reinterpret_cast<PixMap*>(dst)->pixelSize
                                         : 1;
  if (!IsQuickDrawDepth(depth) || !Unfold(s, dst, depth, flags & kUnfoldByIndex)) return false;
  if (flags & (kUnfoldRelease | kUnfoldForget)) {
    if (fromDib) {
      ForgetDib(*lib, flags & kUnfoldRelease);
    } else {
      if (lib->bitmapDC && lib->replaced) SelectObject(lib->bitmapDC, lib->replaced);
      if (flags & kUnfoldRelease) DeleteObject(lib->ddb);
      lib->ddb = nullptr;
      lib->replaced = nullptr;
      lib->flags &= static_cast<UInt16>(~kDdbPixelsFlag);
    }
  }
  return true;
}
