// KWE_DSSimple, KWE_DSNotSimple and KWE_NextWriteIsToScreen, and the
// general copy onto a DC that brings the pipeline's results to windows,
// GWorlds and the offscreen bitmap table's DCs.
#include "quickdraw/copybits/dc_copies.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "KWEPixMaps.h"
#include "KWERegions.h"
#include "QuickdrawColour.h"
#include "frame/diagnostics.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/copybits/device_copies.h"
#include "quickdraw/copybits/raster_ops.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

constexpr DWORD kSrcCopyRop = 0x00CC0020;

// Whether the display puts DIBs straight on the device: asked once, since
// the screen DC is the window server's.
bool DisplayTakesDibs() {
  static const bool takes = [] {
    HDC screen = GetDC(nullptr);
    bool yes = screen && (GetDeviceCaps(screen, RASTERCAPS) & RC_DIBTODEV);
    if (screen) ReleaseDC(nullptr, screen);
    return yes;
  }();
  return takes;
}

bool g_armed = false;
bool g_direct = false;

// The copy modes overwrite every pixel they reach: without a mask, the
// destination's pixels need not be read first.
bool OverwritesAll(const PipelineCopy& copy) {
  int base = copy.mode & ~64;
  return !copy.mask && !copy.colorize && (base == 0 || base == 4 || base == 8 || base == 12);
}

// The general routine: band by band, the destination's pixels read into
// the kept DIB (unless the mode overwrites them all), the source combined
// into it by the pipeline with the whole copy's scaling, the DIB put back.
OSErr GeneralOntoDevice(const DeviceCopy& job, HDC dc, const RECT& to) {
  int w = to.right - to.left, h = to.bottom - to.top;
  const int band = BandRows(w, h);
  KeptDib& kept = TheKeptDib();
  if (!kept.Fit(w, band)) return memFullErr;
  PipelineCopy copy = job.copy;
  copy.src = Relative(job.srcRect, job.src.bounds);
  copy.dst = Rect{0, 0, static_cast<SInt16>(h), static_cast<SInt16>(w)};
  const bool read = !OverwritesAll(copy);
  for (int top = 0; top < h; top += band) {
    int rows = std::min(band, h - top);
    RECT part{to.left, to.top + top, to.right, to.top + top + rows};
    if (read && !kept.Read(dc, part)) return memFullErr;
    copy.bandTop = top;
    copy.bandBottom = top + rows;
    OSErr err = RunPipeline(job.src.pipeline, kept.Side(), copy);
    if (err != noErr) return err;
    if (!kept.Put(dc, part)) return paramErr;
  }
  return noErr;
}

// The packed DIB's colours as the DIB_PAL_COLORS form GDI reads through
// the DC's palette: entry i is palette index i.
struct PaletteInfo {
  BITMAPINFOHEADER header;
  WORD indices[256];
};

bool IsMainDeviceTable(CTabHandle table) {
  GDHandle main = GetMainDevice();
  if (!table || !main || !*main) return false;
  PixMapHandle pm = (*main)->gdPMap;
  return pm && *pm && (*pm)->pmTable == table;
}

// The DIB of a library DIB pixel map; null for any other map.
const BITMAPINFO* DibOf(PixMap* pm, const void** bits) {
  LibraryPixMap* lib = LibraryRecordOf(pm);
  if (!lib || !(lib->flags & kDibPixelsFlag) || !lib->dib || !*lib->dib || !lib->dibBits)
    return nullptr;
  *bits = lib->dibBits;
  return reinterpret_cast<const BITMAPINFO*>(*lib->dib);
}

bool Inside(const Rect& r, const Rect& bounds) {
  return r.left >= bounds.left && r.top >= bounds.top && r.right <= bounds.right &&
         r.bottom <= bounds.bottom && r.left < r.right && r.top < r.bottom;
}

OSErr SimpleOntoDevice(HDC dc, const RECT& at, const BITMAPINFO* dib, const void* bits,
                       const Rect& s, CTabHandle table) {
  int sw = s.right - s.left, sh = s.bottom - s.top;
  RECT to{at.left, at.top, at.left + sw, at.top + sh};
  const BITMAPINFO* info = dib;
  UINT usage = DIB_RGB_COLORS;
  PaletteInfo byIndex;
  if (dib->bmiHeader.biBitCount <= 8 && IsMainDeviceTable(table)) {
    byIndex.header = dib->bmiHeader;
    byIndex.header.biSize = sizeof byIndex.header;
    for (int i = 0; i < 256; ++i) byIndex.indices[i] = static_cast<WORD>(i);
    info = reinterpret_cast<const BITMAPINFO*>(&byIndex);
    usage = DIB_PAL_COLORS;
  }
  return PutDib(dc, to, info, bits, s.left, s.top, sw, sh, kSrcCopyRop, usage) ? noErr : paramErr;
}

}  // namespace

DirectSwitch::DirectSwitch() { g_direct = false; }

void DirectSwitch::Decide(const CopySide& dst, int mode) {
  bool plain = mode == 0 || mode == 64;
  g_direct =
      DisplayTakesDibs() && (plain || g_armed) && dst.kind != SideKind::Dib && !dst.tableBitmap;
}

DirectSwitch::~DirectSwitch() {
  g_armed = false;
  g_direct = false;
}

bool DirectToDevice() { return g_direct; }

bool PutDib(HDC dc, const RECT& to, const BITMAPINFO* info, const void* bits, int sx, int sy,
            int sw, int sh, DWORD rop, UINT usage) {
  const LONG height = info->bmiHeader.biHeight;
  // Bottom-up rows are counted from the DIB's last row.
  int ySrc = height > 0 ? static_cast<int>(height) - (sy + sh) : sy;
  int w = to.right - to.left, h = to.bottom - to.top;
  if (g_direct && w == sw && h == sh && (height > 0 || sy == 0)) {
    UINT lines = static_cast<UINT>(height > 0 ? height : -height);
    return SetDIBitsToDevice(dc, to.left, to.top, static_cast<DWORD>(w), static_cast<DWORD>(h), sx,
                             ySrc, 0, lines, bits, info, usage) != 0;
  }
  SetStretchBltMode(dc, COLORONCOLOR);
  return StretchDIBits(dc, to.left, to.top, w, h, sx, ySrc, sw, sh, bits, info, usage, rop) != 0;
}

bool KeptDib::Fit(int width, int height) {
  if (bits_ && width <= width_ && height <= height_) return true;
  Release();
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  dc_ = CreateCompatibleDC(nullptr);
  if (dc_) section_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
  if (!section_) {
    Release();
    return false;
  }
  old_ = SelectObject(dc_, section_);
  width_ = width;
  height_ = height;
  return true;
}

bool KeptDib::Read(HDC dc, const RECT& r) {
  if (!BitBlt(dc_, 0, 0, r.right - r.left, r.bottom - r.top, dc, r.left, r.top, SRCCOPY))
    return false;
  GdiFlush();
  return true;
}

bool KeptDib::Put(HDC dc, const RECT& to) {
  GdiFlush();
  int w = to.right - to.left, h = to.bottom - to.top;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width_, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  return PutDib(dc, to, &info, bits_, 0, 0, w, h, kSrcCopyRop, DIB_RGB_COLORS);
}

PipelineSide KeptDib::Side() const {
  return PipelineSide{MacPixels{static_cast<uint8_t*>(bits_), 4 * width_, 32, width_, height_},
                      nullptr, 0};
}

void KeptDib::Release() {
  if (old_) SelectObject(dc_, old_);
  if (section_) DeleteObject(section_);
  if (dc_) DeleteDC(dc_);
  *this = KeptDib{};
}

KeptDib& TheKeptDib() {
  static KeptDib kept;
  return kept;
}

int BandRows(int width, int height) {
  constexpr int kBandBytes = 64 * 1024;
  int rows = kBandBytes / (4 * std::max(width, 1));
  return std::clamp(rows, 1, std::max(height, 1));
}

MaskClip::MaskClip(HDC dc, const PortAttr& a, RgnHandle mask) : dc_(dc) {
  const RegionRecord* r = mask ? RecordOf(mask) : nullptr;
  if (!r) return;
  saved_ = SaveDC(dc);
  HRGN shape = CreateRectRgn(0, 0, 0, 0);
  if (shape && CombineRgn(shape, ShapeForGdi(*r), nullptr, RGN_COPY) != ERROR) {
    int dh = 0, dv = 0;
    LocalToDevice(a, &dh, &dv);
    OffsetRgn(shape, dh, dv);
    ExtSelectClipRgn(dc, shape, RGN_AND);
  }
  if (shape) DeleteObject(shape);
}

MaskClip::~MaskClip() {
  if (saved_) RestoreDC(dc_, saved_);
}

OSErr NotSimpleOntoDevice(const DeviceCopy& job) {
  HDC dc = job.dst.attr->hdc;
  RECT to = DeviceRect(*job.dst.attr, job.dstRect);
  MaskClip clip(dc, *job.dst.attr, job.clip);
  if (job.src.kind == SideKind::Dib) {
    // A DIB source has no Macintosh pixels for the pipeline to read: it
    // goes out as it stands, or not at all.
    if (job.copy.mask || job.copy.colorize) {
      Report(" SDNotSimple unimplemented");
      return paramErr;
    }
    const Rect s = Relative(job.srcRect, job.src.bounds);
    return PutDib(dc, to, job.src.dib, job.src.dibBits, s.left, s.top, s.right - s.left,
                  s.bottom - s.top, RasterOpOfMode(job.copy.mode), DIB_RGB_COLORS)
               ? noErr
               : paramErr;
  }
  return GeneralOntoDevice(job, dc, to);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL KWE_NextWriteIsToScreen(void) { g_armed = true; }

KWE_API OSErr KWE_CALL KWE_DSSimple(PixMap* src, Rect srcRect, Rect dstRect, CTabHandle table) {
  PortAttr* a = CurrentAttr();
  const void* bits = nullptr;
  const BITMAPINFO* dib = src ? DibOf(src, &bits) : nullptr;
  if (!a || !a->hdc || !dib || !Inside(srcRect, src->bounds)) return paramErr;
  RECT at = DeviceRect(*a, dstRect);
  return SimpleOntoDevice(a->hdc, at, dib, bits, Relative(srcRect, src->bounds), table);
}

KWE_API OSErr KWE_CALL KWE_DSNotSimple(PixMap* src, PixMap* dst, Rect srcRect, Rect dstRect,
                                       SInt16 mode, CTabHandle srcTable, CTabHandle dstTable,
                                       RgnHandle maskRgn) {
  // The current DC is the destination and GDI matches the pipeline's
  // 32-bit results into it: dst and its table have nothing to add.
  (void)dst;
  (void)dstTable;
  PortAttr* a = CurrentAttr();
  if (!src || !a || !a->hdc) return paramErr;
  OSErr err = noErr;
  PixMap source = *src;
  if (srcTable) source.pmTable = srcTable;
  DeviceCopy job{};
  job.src = ClassifySide(
      reinterpret_cast<const BitMap*>(src->pmVersion == kLibraryPixMapVersion ? src : &source),
      &err);
  if (job.src.kind == SideKind::Memory && srcTable) {
    job.src.pipeline.table = TableEntries(srcTable);
    job.src.pipeline.count = TableEntryCount(srcTable);
  }
  if (err != noErr) return err;
  if (job.src.kind != SideKind::Memory && job.src.kind != SideKind::Dib) {
    kwe::Report(" SDNotSimple unimplemented");
    return paramErr;
  }
  if (!Inside(srcRect, src->bounds) || dstRect.right <= dstRect.left ||
      dstRect.bottom <= dstRect.top)
    return paramErr;
  job.dst.kind = SideKind::Device;
  job.dst.attr = a;
  job.dst.bounds = dstRect;
  job.srcRect = srcRect;
  job.dstRect = dstRect;
  job.copy.mode = mode;
  job.copy.bkColor = a->bkRGB;
  job.copy.opColor = OpColourOf(a->port);
  std::unique_ptr<uint8_t[]> bits;
  const RegionRecord* r = maskRgn ? RecordOf(maskRgn) : nullptr;
  if (r && KindOf(*r) != RegionKind::Mask) {
    job.clip = maskRgn;
  } else if (r) {
    bits = RegionMaskBits(maskRgn, dstRect, &job.copy.maskRowBytes);
    if (!bits) return memFullErr;
    job.copy.mask = bits.get();
  }
  DirectSwitch direct;
  direct.Decide(job.dst, mode);
  return NotSimpleOntoDevice(job);
}
