// What the recorder writes for the state and data that are more than a few
// words: regions in their real shape, pixel patterns with their pixels, and
// the pixels of deep or DC-backed CopyBits sources read back.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "memory/pack_bits.h"
#include "quickdraw/pictures/picture_state.h"
#include "quickdraw/pictures/region_codec.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/regions/mask_regions.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::pictures {
namespace {

using quickdraw::RegionKind;
using quickdraw::RegionRecord;

constexpr size_t kMaxRegionBytes = 32767;

void Word(std::vector<uint8_t>& out, int w) {
  out.push_back(static_cast<uint8_t>(w >> 8));
  out.push_back(static_cast<uint8_t>(w));
}
void Long(std::vector<uint8_t>& out, uint32_t l) {
  Word(out, static_cast<int>(l >> 16));
  Word(out, static_cast<int>(l & 0xFFFF));
}
void PutRect(std::vector<uint8_t>& out, const Rect& r) {
  for (SInt16 edge : {r.top, r.left, r.bottom, r.right}) Word(out, edge);
}

// A row of count bytes as a picture holds it: as it is when the map's rows
// are below 8 bytes, else packed after its length (a word when the map's
// rows are longer than 250 bytes).
void PutRow(std::vector<uint8_t>& out, const uint8_t* row, size_t count, size_t rowBytes) {
  if (rowBytes < 8) {
    out.insert(out.end(), row, row + count);
    return;
  }
  std::vector<uint8_t> packed(packbits::MaxPackedSize(count));
  size_t n = packbits::Pack(row, count, packed.data());
  if (rowBytes > 250)
    Word(out, static_cast<int>(n));
  else
    out.push_back(static_cast<uint8_t>(n));
  out.insert(out.end(), packed.begin(), packed.begin() + static_cast<std::ptrdiff_t>(n));
}

// The rectangles of a region in bands, in the region's own coordinates.
std::vector<PicRect> RectsOf(const RegionRecord& r) {
  std::vector<PicRect> rects;
  const Rect& box = r.rgnBBox;
  if (quickdraw::BoxIsEmpty(box)) return rects;
  switch (quickdraw::KindOf(r)) {
    case RegionKind::Rectangle:
      rects.push_back(PicRect{box.top, box.left, box.bottom, box.right});
      break;
    case RegionKind::Win32: {
      DWORD size = GetRegionData(r.shape, 0, nullptr);
      std::vector<uint8_t> data(size);
      if (!size || GetRegionData(r.shape, size, reinterpret_cast<RGNDATA*>(data.data())) != size)
        break;
      const auto* header = reinterpret_cast<const RGNDATAHEADER*>(data.data());
      const auto* list = reinterpret_cast<const RECT*>(data.data() + header->dwSize);
      for (DWORD i = 0; i < header->nCount; ++i)
        rects.push_back(
            PicRect{static_cast<int16_t>(list[i].top), static_cast<int16_t>(list[i].left),
                    static_cast<int16_t>(list[i].bottom), static_cast<int16_t>(list[i].right)});
      break;
    }
    case RegionKind::Mask: {
      int width = box.right - box.left, height = box.bottom - box.top;
      quickdraw::MaskRaster raster(width, height);
      if (!quickdraw::DrawRegionInto(r, box, raster)) break;
      for (int y = 0; y < height; ++y)
        for (int x = 0; x < width;) {
          if (!raster.Inside(x, y)) {
            ++x;
            continue;
          }
          int start = x;
          while (x < width && raster.Inside(x, y)) ++x;
          rects.push_back(
              PicRect{static_cast<int16_t>(box.top + y), static_cast<int16_t>(box.left + start),
                      static_cast<int16_t>(box.top + y + 1), static_cast<int16_t>(box.left + x)});
        }
      break;
    }
  }
  return rects;
}

// The Macintosh holds 16- and 32-bit pixels big-endian; the library holds
// them in the processor's order.
void SwapPixels(uint8_t* row, size_t rowBytes, int depth) {
  if (depth != 16 && depth != 32) return;
  size_t step = static_cast<size_t>(depth / 8);
  for (size_t at = 0; at + step <= rowBytes; at += step) std::reverse(row + at, row + at + step);
}

void PutColourTable(std::vector<uint8_t>& out, CTabHandle table) {
  Handle h = reinterpret_cast<Handle>(table);
  Size room = h && *h ? GetHandleSize(h) : 0;
  if (room < 8) {
    Long(out, 0);
    Word(out, 0);
    Word(out, -1);
    return;
  }
  const ColorTable& t = **table;
  int count = std::clamp<int>(t.ctSize + 1, 0, static_cast<int>((room - 8) / sizeof(ColorSpec)));
  Long(out, static_cast<uint32_t>(t.ctSeed));
  Word(out, t.ctFlags);
  Word(out, count - 1);
  for (int i = 0; i < count; ++i) {
    const ColorSpec& c = t.ctTable[i];
    Word(out, c.value);
    for (UInt16 v : {c.rgb.red, c.rgb.green, c.rgb.blue}) Word(out, v);
  }
}

}  // namespace

std::vector<uint8_t> RegionBytes(RgnHandle rgn) {
  std::vector<uint8_t> out;
  const RegionRecord* r = quickdraw::RecordOf(rgn);
  if (!r) return out;
  std::vector<uint8_t> lines = EncodeRegion(RectsOf(*r));
  if (lines.size() + 10 > kMaxRegionBytes) lines.clear();  // the box stands for it
  Word(out, static_cast<int>(10 + lines.size()));
  PutRect(out, r->rgnBBox);
  out.insert(out.end(), lines.begin(), lines.end());
  return out;
}

// Type, old-style pattern, then an RGB pattern's colour, or a full one's
// pixel map (without its base address), colour table and rows.
std::vector<uint8_t> PixPatBytes(PixPatHandle pp) {
  std::vector<uint8_t> out;
  if (!pp || !*pp) return out;
  const PixPat& p = **pp;
  RGBColor rgb;
  if (quickdraw::RgbOfPixPat(pp, &rgb)) {
    Word(out, 2);
    out.insert(out.end(), p.pat1Data.pat, p.pat1Data.pat + 8);
    for (UInt16 v : {rgb.red, rgb.green, rgb.blue}) Word(out, v);
    return out;
  }
  if (p.patType != 1 || !p.patMap || !*p.patMap || !p.patData || !*p.patData) return out;
  const PixMap& m = **p.patMap;
  size_t rowBytes = static_cast<size_t>(m.rowBytes & 0x3FFF);
  int height = m.bounds.bottom - m.bounds.top;
  if (height <= 0 || height > 64 || rowBytes == 0 || rowBytes > 512 ||
      static_cast<size_t>(GetHandleSize(p.patData)) < rowBytes * height)
    return out;  // the old-style pattern stands for it
  Word(out, 1);
  out.insert(out.end(), p.pat1Data.pat, p.pat1Data.pat + 8);
  Word(out, static_cast<int>(rowBytes | 0x8000));
  PutRect(out, m.bounds);
  Word(out, 0);  // pmVersion
  Word(out, 0);  // packType: rows packed by PackBits
  Long(out, 0);  // packSize
  Long(out, 72u << 16);
  Long(out, 72u << 16);
  for (SInt16 v : {m.pixelType, m.pixelSize, m.cmpCount, m.cmpSize}) Word(out, v);
  Long(out, 0);  // planeBytes
  Long(out, 0);  // pmTable
  Long(out, 0);  // pmReserved
  PutColourTable(out, m.pmTable);
  std::vector<uint8_t> row(rowBytes);
  for (int y = 0; y < height; ++y) {
    std::memcpy(row.data(), *p.patData + rowBytes * y, rowBytes);
    SwapPixels(row.data(), rowBytes, m.pixelSize);
    PutRow(out, row.data(), rowBytes, rowBytes);
  }
  return out;
}

// The source's pixels go through CopyBits into a 32-bit pixel map of the
// library's own, then into the picture as component planes (red, green,
// blue rows), each packed.
std::vector<uint8_t> DirectBitsBytes(const BitMap* src, const Rect& wholeSrc, const Rect& wholeDst,
                                     SInt16 mode) {
  std::vector<uint8_t> out;
  if (!src) return out;
  // Only the part of srcRect inside the source is copied: the rest of the
  // destination keeps its pixels, so the picture holds that part alone,
  // onto the same part of dstRect.
  Rect bounds = src->bounds;
  if ((src->rowBytes & 0xC000) == 0xC000) {  // a colour port's portBits
    PixMapHandle pm = reinterpret_cast<PixMapHandle>(src->baseAddr);
    if (!pm || !*pm) return out;
    bounds = (*pm)->bounds;
  }
  Rect srcRect;
  if (!SectRect(&wholeSrc, &bounds, &srcRect)) return out;
  int wholeW = wholeSrc.right - wholeSrc.left, wholeH = wholeSrc.bottom - wholeSrc.top;
  int dstW = wholeDst.right - wholeDst.left, dstH = wholeDst.bottom - wholeDst.top;
  auto along = [](int from, int offset, int extent, int whole) {
    return static_cast<SInt16>(from + static_cast<int64_t>(offset) * extent / whole);
  };
  const Rect dstRect{along(wholeDst.top, srcRect.top - wholeSrc.top, dstH, wholeH),
                     along(wholeDst.left, srcRect.left - wholeSrc.left, dstW, wholeW),
                     along(wholeDst.top, srcRect.bottom - wholeSrc.top, dstH, wholeH),
                     along(wholeDst.left, srcRect.right - wholeSrc.left, dstW, wholeW)};
  int width = srcRect.right - srcRect.left, height = srcRect.bottom - srcRect.top;
  if (width > 0x3FFF / 4) return out;
  std::vector<uint32_t> pixels(static_cast<size_t>(width) * height, 0xFFFFFF);
  PixMap deep{};
  deep.baseAddr = reinterpret_cast<Ptr>(pixels.data());
  deep.rowBytes = static_cast<SInt16>(width * 4 | 0x8000);
  deep.bounds = Rect{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  deep.hRes = deep.vRes = 72 << 16;
  deep.pixelType = 16;  // direct
  deep.pixelSize = 32;
  deep.cmpCount = 3;
  deep.cmpSize = 8;
  // The source's own pixels: the port's colours tint a copy, and playback
  // tints the recorded pixels with the colours recorded before them.
  RGBColor fg, bk;
  GetForeColor(&fg);
  GetBackColor(&bk);
  const RGBColor black{0, 0, 0}, white{0xFFFF, 0xFFFF, 0xFFFF};
  RGBForeColor(&black);
  RGBBackColor(&white);
  CopyBits(src, reinterpret_cast<const BitMap*>(&deep), &srcRect, &deep.bounds, srcCopy, nullptr);
  OSErr copied = QDError();
  RGBForeColor(&fg);
  RGBBackColor(&bk);
  if (copied != noErr) return out;
  Long(out, 0x000000FF);  // base address
  Word(out, width * 4 | 0x8000);
  PutRect(out, deep.bounds);
  Word(out, 0);  // pmVersion
  Word(out, 4);  // packType: component planes
  Long(out, 0);
  Long(out, 72u << 16);
  Long(out, 72u << 16);
  for (int v : {16, 32, 3, 8}) Word(out, v);
  Long(out, 0);
  Long(out, 0);
  Long(out, 0);
  PutRect(out, deep.bounds);
  PutRect(out, dstRect);
  Word(out, mode);
  std::vector<uint8_t> row(static_cast<size_t>(width) * 4);
  for (int y = 0; y < height; ++y) {
    const uint32_t* line = pixels.data() + static_cast<size_t>(width) * y;
    if (width * 4 < 8) {  // one pixel: as it is, xRGB
      Long(out, line[0] & 0xFFFFFF);
      continue;
    }
    for (int x = 0; x < width; ++x) {
      row[x] = static_cast<uint8_t>(line[x] >> 16);
      row[width + x] = static_cast<uint8_t>(line[x] >> 8);
      row[2 * width + x] = static_cast<uint8_t>(line[x]);
    }
    // Three planes of the row's four bytes a pixel: no alpha plane.
    PutRow(out, row.data(), static_cast<size_t>(width) * 3, static_cast<size_t>(width) * 4);
  }
  return out;
}

}  // namespace kwe::pictures
