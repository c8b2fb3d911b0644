// Pixel maps over device-dependent bitmaps: KWE_NewDDBPixMap describes a
// DDB (which the pixel map then owns), KWE_PackPixMap flattens such a pixel
// map with its colours and bits into one block and KWE_UnpackPixMap makes
// it again; KWE_CopyBM copies a DDB's pixels into a new one.
#include <cstring>
#include <vector>

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

// The flattened block: five offsets and sizes, then the library record (84
// bytes in the 32-bit build; the 64-bit build's record is wider and so are
// the offsets after it), the colour table, the BITMAP and the bits.
struct FlatHeader {
  UInt32 record, table, bitmap, bits, bitsSize;
};

// The palette's colours reversed (Windows' last entry is the Toolbox's
// first), or null for no palette.
CTabHandle TableOfPalette(HPALETTE palette) {
  WORD n = 0;
  if (!palette || GetObjectA(palette, sizeof n, &n) == 0 || n == 0) return nullptr;
  std::vector<PALETTEENTRY> entries(n);
  GetPaletteEntries(palette, 0, n, entries.data());
  std::vector<RGBColor> colours(n);
  for (WORD i = 0; i < n; ++i) {
    const PALETTEENTRY& e = entries[n - 1 - i];
    colours[i] = RGBColor{static_cast<UInt16>(e.peRed * 257), static_cast<UInt16>(e.peGreen * 257),
                          static_cast<UInt16>(e.peBlue * 257)};
  }
  return NewColourTable(colours.data(), n, GetCTSeed());
}

CTabHandle CopyOfMainTable() {
  CTabHandle main = CurrentDeviceTable();
  Handle copy = reinterpret_cast<Handle>(main);
  return main && HandToHand(&copy) == noErr ? reinterpret_cast<CTabHandle>(copy) : nullptr;
}

LibraryPixMap* LibraryOf(PixMapHandle pm) {
  return IsLibraryPixMap(pm) ? reinterpret_cast<LibraryPixMap*>(*pm) : nullptr;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API PixMapHandle KWE_CALL KWE_NewDDBPixMap(HBITMAP bitmap, HPALETTE palette) {
  BITMAP bm{};
  if (!bitmap || GetObjectA(bitmap, sizeof bm, &bm) != sizeof bm || bm.bmWidth <= 0 ||
      bm.bmHeight <= 0 || bm.bmWidth > 16383 || bm.bmHeight > 16383)
    return nullptr;
  int depth = bm.bmBitsPixel * bm.bmPlanes;
  depth = depth == 24 ? 32 : depth;
  if (!IsQuickDrawDepth(depth)) return nullptr;
  CTabHandle table = depth <= 8 ? TableOfPalette(palette) : nullptr;
  if (!table) table = CopyOfMainTable();
  PixMapHandle pm = table ? NewPixMap() : nullptr;
  if (!pm) {
    DisposeCTable(table);
    return nullptr;
  }
  PixMap& p = **pm;
  DisposeHandle(reinterpret_cast<Handle>(p.pmTable));
  p.pmTable = table;
  p.baseAddr = SharedPixelByte();
  DescribePixels(p, bm.bmWidth, bm.bmHeight, depth);
  LibraryPixMap& lib = *reinterpret_cast<LibraryPixMap*>(*pm);
  lib.flags = kDdbPixelsFlag | kReversedColoursFlag;
  lib.ddb = bitmap;
  return pm;
}

KWE_API HBITMAP KWE_CALL KWE_CopyBM(HBITMAP bitmap) {
  BITMAP bm{};
  if (!bitmap || GetObjectA(bitmap, sizeof bm, &bm) != sizeof bm || bm.bmWidth <= 0 ||
      bm.bmHeight <= 0)
    return nullptr;
  struct {
    BITMAPINFOHEADER header;
    RGBQUAD colours[256];
  } info{};
  int depth = bm.bmBitsPixel * bm.bmPlanes;
  info.header = {sizeof info.header,
                 bm.bmWidth,
                 bm.bmHeight,
                 1,
                 static_cast<WORD>(depth),
                 BI_RGB,
                 0,
                 0,
                 0,
                 0,
                 0};
  std::vector<BYTE> bits(static_cast<size_t>(DibRowBytes(bm.bmWidth, depth)) *
                         static_cast<size_t>(bm.bmHeight));
  auto* bmi = reinterpret_cast<BITMAPINFO*>(&info);
  HDC screen = GetDC(nullptr);
  HBITMAP copy = nullptr;
  if (GetDIBits(screen, bitmap, 0, static_cast<UINT>(bm.bmHeight), bits.data(), bmi,
                DIB_RGB_COLORS) == bm.bmHeight)
    copy = CreateDIBitmap(screen, &info.header, CBM_INIT, bits.data(), bmi, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  return copy;
}

KWE_API Handle KWE_CALL KWE_PackPixMap(PixMapHandle pm) {
  LibraryPixMap* lib = LibraryOf(pm);
  BITMAP bm{};
  if (!lib || !(lib->flags & kDdbPixelsFlag) || !lib->ddb ||
      GetObjectA(lib->ddb, sizeof bm, &bm) != sizeof bm)
    return nullptr;
  Handle table = reinterpret_cast<Handle>(lib->published.pmTable);
  UInt32 tableSize = table && *table ? static_cast<UInt32>(GetHandleSize(table)) : 0;
  FlatHeader header;
  header.record = sizeof(FlatHeader);
  header.table = header.record + sizeof(LibraryPixMap);
  header.bitmap = header.table + tableSize;
  header.bits = header.bitmap + sizeof(BITMAP);
  header.bitsSize = static_cast<UInt32>(bm.bmWidthBytes) * static_cast<UInt32>(bm.bmHeight) *
                    static_cast<UInt32>(bm.bmPlanes);
  Handle flat = NewHandle(static_cast<Size>(header.bits + header.bitsSize));
  if (!flat) return nullptr;
  lib = LibraryOf(pm);  // the allocation may have moved the record
  LibraryPixMap record = *lib;
  record.bitmapDC = nullptr;
  record.ddb = record.replaced = nullptr;
  std::memcpy(*flat, &header, sizeof header);
  std::memcpy(*flat + header.record, &record, sizeof record);
  if (tableSize) std::memcpy(*flat + header.table, *table, tableSize);
  std::memcpy(*flat + header.bitmap, &bm, sizeof bm);
  if (GetBitmapBits(lib->ddb, static_cast<LONG>(header.bitsSize), *flat + header.bits) !=
      static_cast<LONG>(header.bitsSize)) {
    DisposeHandle(flat);
    return nullptr;
  }
  return flat;
}

// The block is checked against its own offsets before anything is made.
KWE_API PixMapHandle KWE_CALL KWE_UnpackPixMap(Handle flat) {
  if (!flat || !*flat || GetHandleSize(flat) < static_cast<Size>(sizeof(FlatHeader)))
    return nullptr;
  FlatHeader header;
  std::memcpy(&header, *flat, sizeof header);
  UInt32 size = static_cast<UInt32>(GetHandleSize(flat));
  if (header.record != sizeof(FlatHeader) ||
      header.table != header.record + sizeof(LibraryPixMap) || header.bitmap < header.table ||
      header.bits != header.bitmap + sizeof(BITMAP) || header.bits > size ||
      size - header.bits < header.bitsSize)
    return nullptr;
  UInt32 tableSize = header.bitmap - header.table;
  PixMapHandle pm = NewPixMap();
  Handle table = nullptr;
  if (pm && tableSize &&
      PtrToHand(*flat + header.table, &table, static_cast<Size>(tableSize)) != noErr)
    table = nullptr;
  if (!pm || (tableSize && !table)) {
    DisposePixMap(pm);
    return nullptr;
  }
  BITMAP bm;
  std::memcpy(&bm, *flat + header.bitmap, sizeof bm);
  bm.bmBits = *flat + header.bits;
  HBITMAP ddb = CreateBitmapIndirect(&bm);
  if (!ddb) {
    if (table) DisposeHandle(table);
    DisposePixMap(pm);
    return nullptr;
  }
  LibraryPixMap& lib = *reinterpret_cast<LibraryPixMap*>(*pm);
  DisposeHandle(reinterpret_cast<Handle>(lib.published.pmTable));
  std::memcpy(&lib, *flat + header.record, sizeof lib);
  lib.published.pmTable = reinterpret_cast<CTabHandle>(table);
  lib.published.baseAddr = SharedPixelByte();
  lib.flags = static_cast<UInt16>((lib.flags | kDdbPixelsFlag) & ~kDibPixelsFlag);
  lib.ownDC = nullptr;
  lib.dib = nullptr;
  lib.dibBits = nullptr;
  lib.replaced = nullptr;
  lib.ddb = ddb;
  lib.bitmapDC = SharedMemoryDC();
  return pm;
}
