// CopyBits with a DC on one side or both.
#include "quickdraw/copybits/device_copies.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "quickdraw/colour/device_colours.h"
#include "quickdraw/copybits/dc_copies.h"
#include "quickdraw/copybits/raster_ops.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

struct DibInfo {
  BITMAPINFOHEADER header;
  RGBQUAD colours[256];
};

// Memory pixels as a DIB GDI can read where they lie: rows already 4-byte
// apart at 1, 4, 8, 16 or 32 bits need no conversion at all (16-bit
// Macintosh pixels are a 5-5-5 DIB's, 32-bit ones a BI_RGB DIB's); other
// rows are copied to 4-byte rows, and 2-bit pixels widened to 8.
// Rows top to top + h - 1 of the source go onto to.
OSErr MemoryBandToDevice(const DeviceCopy& job, HDC dc, const RECT& to, int top, int h) {
  const MacPixels& p = job.src.pipeline.pixels;
  int left = job.srcRect.left - job.src.bounds.left;
  int w = job.srcRect.right - job.srcRect.left;
  DibInfo info{};
  info.header.biSize = sizeof info.header;
  info.header.biPlanes = 1;
  info.header.biCompression = BI_RGB;
  const uint8_t* rows = p.base + static_cast<ptrdiff_t>(top) * p.rowBytes;
  std::unique_ptr<uint8_t[]> owned;
  int depth = p.depth;
  if (depth == 2) {
    int32_t stride = DibRowBytes(w, 8);
    owned.reset(new (std::nothrow) uint8_t[static_cast<size_t>(stride) * h]);
    if (!owned) return memFullErr;
    MacToDib(p, left, top, nullptr, false, DibPixels{owned.get(), 8, w, h});
    info.header.biWidth = w;
    info.header.biHeight = h;
    rows = owned.get();
    left = 0;
    depth = 8;
  } else {
    int32_t stride = p.rowBytes;
    if (stride % 4) {
      stride = (stride + 3) & ~3;
      owned.reset(new (std::nothrow) uint8_t[static_cast<size_t>(stride) * h]);
      if (!owned) return memFullErr;
      for (int y = 0; y < h; ++y)
        std::memcpy(owned.get() + static_cast<size_t>(y) * stride,
                    rows + static_cast<ptrdiff_t>(y) * p.rowBytes, static_cast<size_t>(p.rowBytes));
      rows = owned.get();
    }
    info.header.biWidth = stride * 8 / depth;
    info.header.biHeight = -h;
  }
  info.header.biBitCount = static_cast<WORD>(depth);
  if (depth <= 8) {
    int n = 1 << depth;
    for (int i = 0; i < n && i < job.src.pipeline.count; ++i) {
      const RGBColor& c = job.src.pipeline.table[i].rgb;
      info.colours[i] = RGBQUAD{static_cast<BYTE>(c.blue >> 8), static_cast<BYTE>(c.green >> 8),
                                static_cast<BYTE>(c.red >> 8), 0};
    }
    info.header.biClrUsed = static_cast<DWORD>(n);
  }
  return PutDib(dc, to, reinterpret_cast<const BITMAPINFO*>(&info), rows, left, 0, w, h,
                RasterOpOfMode(job.copy.mode), DIB_RGB_COLORS)
             ? noErr
             : paramErr;
}

// Rows that must be converted before GDI takes them go band by band when
// the copy does not scale them; the others in one call.
OSErr MemoryToDevice(const DeviceCopy& job, HDC dc, const RECT& to) {
  const MacPixels& p = job.src.pipeline.pixels;
  int top = job.srcRect.top - job.src.bounds.top;
  int w = job.srcRect.right - job.srcRect.left, h = job.srcRect.bottom - job.srcRect.top;
  bool converts = p.depth == 2 || p.rowBytes % 4;
  if (!converts || to.bottom - to.top != h) return MemoryBandToDevice(job, dc, to, top, h);
  const int band = BandRows(w, h);
  for (int y = 0; y < h; y += band) {
    int rows = std::min(band, h - y);
    RECT part{to.left, to.top + y, to.right, to.top + y + rows};
    OSErr err = MemoryBandToDevice(job, dc, part, top + y, rows);
    if (err != noErr) return err;
  }
  return noErr;
}

// A DC's pixels into memory: read into a section, then the pipeline. A
// copy of the same height goes band by band; one that scales rows, or
// dithers (the errors run on from row to row), in one piece.
OSErr DeviceToMemory(const DeviceCopy& job, HDC dc, const RECT& from) {
  int w = from.right - from.left, h = from.bottom - from.top;
  PipelineCopy copy = job.copy;
  const Rect whole = Relative(job.dstRect, job.dst.bounds);
  if (job.dst.pipeline.pixels.depth <= 8) {
    copy.inverse = job.dst.table ? InverseTableOf(job.dst.table) : OneBitInverse();
    if (!copy.inverse) return memFullErr;
  }
  bool dithers = (copy.mode & 64) && job.dst.pipeline.pixels.depth <= 8;
  const bool banding = whole.bottom - whole.top == h && !dithers;
  const int band = banding ? BandRows(w, h) : h;
  KeptDib& section = TheKeptDib();
  if (!section.Fit(w, band)) return memFullErr;
  const uint8_t* mask = copy.mask;
  for (int top = 0; top < h; top += band) {
    int rows = std::min(band, h - top);
    RECT part{from.left, from.top + top, from.right, from.top + top + rows};
    if (!section.Read(dc, part)) return memFullErr;
    copy.src = Rect{0, 0, static_cast<SInt16>(rows), static_cast<SInt16>(w)};
    copy.dst = whole;
    if (banding) {
      copy.dst.top = static_cast<SInt16>(whole.top + top);
      copy.dst.bottom = static_cast<SInt16>(copy.dst.top + rows);
      copy.mask = mask ? mask + static_cast<ptrdiff_t>(top) * copy.maskRowBytes : nullptr;
    }
    OSErr err = RunPipeline(section.Side(), job.dst.pipeline, copy);
    if (err != noErr) return err;
  }
  return noErr;
}

}  // namespace

const uint8_t* OneBitInverse() {
  static std::unique_ptr<uint8_t[]> table;
  if (!table) {
    table.reset(new (std::nothrow) uint8_t[kInverseTableSize]);
    if (table) BuildInverseTable(OneBitEntries(), 2, table.get());
  }
  return table.get();
}

OSErr CopyWithDevice(const DeviceCopy& job) {
  // A DIB pixel map's pixels go to a DC as they stand; nothing else reads
  // or writes them.
  if (job.src.kind == SideKind::Dib || job.dst.kind == SideKind::Dib) {
    if (job.src.kind != SideKind::Dib || job.dst.kind != SideKind::Device) return paramErr;
    return NotSimpleOntoDevice(job);
  }
  if (job.dst.kind == SideKind::Memory) {
    RECT from = DeviceRect(*job.src.attr, job.srcRect);
    return DeviceToMemory(job, job.src.attr->hdc, from);
  }
  int base = job.copy.mode & ~64;
  if (job.src.kind == SideKind::Memory && (base > 15 || job.copy.mask || job.copy.colorize))
    return NotSimpleOntoDevice(job);
  HDC dc = job.dst.attr->hdc;
  RECT to = DeviceRect(*job.dst.attr, job.dstRect);
  MaskClip clip(dc, *job.dst.attr, job.clip);
  if (job.src.kind == SideKind::Device) {
    RECT from = DeviceRect(*job.src.attr, job.srcRect);
    HDC source = job.src.attr->hdc;
    int w = to.right - to.left, h = to.bottom - to.top;
    int sw = from.right - from.left, sh = from.bottom - from.top;
    DWORD rop = RasterOpOfMode(job.copy.mode);
    if (w == sw && h == sh)
      return BitBlt(dc, to.left, to.top, w, h, source, from.left, from.top, rop) ? noErr : paramErr;
    SetStretchBltMode(dc, COLORONCOLOR);
    return StretchBlt(dc, to.left, to.top, w, h, source, from.left, from.top, sw, sh, rop)
               ? noErr
               : paramErr;
  }
  return MemoryToDevice(job, dc, to);
}

}  // namespace kwe::quickdraw
