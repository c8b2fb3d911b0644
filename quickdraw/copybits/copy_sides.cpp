// Classifying the two sides of a copy.
#include "quickdraw/copybits/copy_sides.h"

#include "quickdraw/colour/device_colours.h"
#include "quickdraw/offscreen/gworld_dc.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/ports/graphics_records.h"

namespace kwe::quickdraw {

namespace {
constexpr uintptr_t kLastPortTag = 0xFFFF;

// Memory pixels: the pipeline's view of them and their colours.
CopySide& MemorySide(CopySide& side, const PixMap* pm, const MacPixels& pixels, OSErr* err);

}  // namespace

const ColourEntry* OneBitEntries() {
  static const ColourEntry kEntries[2] = {{0, {0xFFFF, 0xFFFF, 0xFFFF}}, {1, {0, 0, 0}}};
  return kEntries;
}

const BitMap* PixelsOfBits(const BitMap* bits) {
  if (!bits || (bits->rowBytes & 0xC000) != 0xC000) return bits;
  PixMapHandle pm = reinterpret_cast<PixMapHandle>(bits->baseAddr);
  return pm && *pm ? reinterpret_cast<const BitMap*>(*pm) : nullptr;
}

CopySide ClassifySide(const BitMap* bits, OSErr* err) {
  *err = noErr;
  CopySide side;
  side.bits = bits;
  side.bounds = bits->bounds;
  uintptr_t base = reinterpret_cast<uintptr_t>(bits->baseAddr);
  const PixMap* pm = IsPixMap(bits) ? reinterpret_cast<const PixMap*>(bits) : nullptr;
  // A library pixel map (pmVersion 0xC000) has its own fields after the
  // published ones; one holding a DIB has its pixels there.
  if (pm && pm->pmVersion == kLibraryPixMapVersion) {
    const LibraryPixMap* lib = reinterpret_cast<const LibraryPixMap*>(pm);
    if ((lib->flags & kDibPixelsFlag) && lib->dib && *lib->dib) {
      side.kind = SideKind::Dib;
      side.dib = reinterpret_cast<const BITMAPINFO*>(*lib->dib);
      side.dibBits = lib->dibBits;
      return side;
    }
  }
  if (base >= kPortTag && base <= kLastPortTag) {
    PortAttr* attr = AttrOfSlot(static_cast<int>(base & 0x7FFF));
    if (!attr || !attr->hdc) return side;
    SelectGWorldBitmap(attr->port);  // a GWorld sharing its DC gets its own bitmap in
    side.kind = SideKind::Device;
    side.attr = attr;
    return side;
  }
  int depth = pm ? pm->pixelSize : 1;
  MacPixels pixels{reinterpret_cast<uint8_t*>(bits->baseAddr), bits->rowBytes & 0x3FFF, depth,
                   bits->bounds.right - bits->bounds.left, bits->bounds.bottom - bits->bounds.top};
  // Entries of the offscreen bitmap table: the DC of the port drawing into
  // the entry, or its memory. 32767 (and anything else below the port tags)
  // is no pixels.
  if (EntryAsMemory(bits, &pixels)) return MemorySide(side, nullptr, pixels, err);
  if (PortAttr* attr = EntrySide(base)) {
    side.kind = SideKind::Device;
    side.attr = attr;
    side.tableBitmap = !pm;
    return side;
  }
  if (base <= kLastPortTag) return side;
  return MemorySide(side, pm, pixels, err);
}

namespace {

CopySide& MemorySide(CopySide& side, const PixMap* pm, const MacPixels& pixels, OSErr* err) {
  const int depth = pixels.depth;
  if (pixels.width < 0 || pixels.height < 0) return side;  // nothing to copy
  if ((*err = CheckMacPixels(pixels)) != noErr) return side;
  side.pipeline.pixels = pixels;
  if (depth <= 8) {
    if (!pm) {
      side.pipeline.table = OneBitEntries();
      side.pipeline.count = 2;
    } else {
      if (!pm->pmTable) {
        side.missingTable = true;
        *err = paramErr;
        return side;
      }
      side.table = pm->pmTable;
      side.pipeline.table = TableEntries(pm->pmTable);
      side.pipeline.count = TableEntryCount(pm->pmTable);
      if (side.pipeline.count == 0) {
        *err = paramErr;
        return side;
      }
    }
  }
  side.kind = SideKind::Memory;
  return side;
}

}  // namespace
}  // namespace kwe::quickdraw
