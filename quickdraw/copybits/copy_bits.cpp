// CopyBits and StdBits: clip the rectangles, then copy through GDI where GDI
// can do the whole copy (BitBlt and StretchBlt between DCs, StretchDIBits of
// memory pixels handed to GDI as they stand) and through the pixel pipeline
// otherwise (arithmetic modes, dithering, mask regions made from bitmaps,
// depth and colour changes between memory pixels).
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "KWERegions.h"
#include "frame/diagnostics.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/copybits/copy_sides.h"
#include "quickdraw/copybits/dc_copies.h"
#include "quickdraw/copybits/device_copies.h"
#include "quickdraw/copybits/raster_ops.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

using BitsProc = void(KWE_CALL*)(const BitMap*, const Rect*, const Rect*, SInt16, RgnHandle);

bool Empty(const Rect& r) { return r.right <= r.left || r.bottom <= r.top; }

constexpr int kDitherBit = 64;

// srcCopy to notPatBic (0 to 15) and blend to adMin (32 to 39), with or
// without the dither bit.
bool CombinesMode(int mode) {
  int base = mode & ~kDitherBit;
  return (base >= 0 && base <= 15) || (base >= 32 && base <= 39);
}

// Cuts src to within its bounds and dst to within its, moving the other
// rectangle's edges in proportion so that the scale stays the same. False
// when nothing is left.
bool ClipPair(Rect& src, const Rect& srcBounds, Rect& dst, const Rect& dstBounds) {
  for (int pass = 0; pass < 2; ++pass) {
    Rect& a = pass == 0 ? src : dst;
    Rect& b = pass == 0 ? dst : src;
    const Rect& bounds = pass == 0 ? srcBounds : dstBounds;
    if (Empty(a) || Empty(b)) return false;
    int64_t aw = a.right - a.left, ah = a.bottom - a.top;
    int64_t bw = b.right - b.left, bh = b.bottom - b.top;
    int left = std::max<int>(a.left, bounds.left), right = std::min<int>(a.right, bounds.right);
    int top = std::max<int>(a.top, bounds.top), bottom = std::min<int>(a.bottom, bounds.bottom);
    if (right <= left || bottom <= top) return false;
    Rect nb{static_cast<SInt16>(b.top + (top - a.top) * bh / ah),
            static_cast<SInt16>(b.left + (left - a.left) * bw / aw),
            static_cast<SInt16>(b.top + (bottom - a.top) * bh / ah),
            static_cast<SInt16>(b.left + (right - a.left) * bw / aw)};
    a = Rect{static_cast<SInt16>(top), static_cast<SInt16>(left), static_cast<SInt16>(bottom),
             static_cast<SInt16>(right)};
    b = nb;
  }
  return !Empty(src) && !Empty(dst);
}

// A mask bitmap's rectangle, mapped onto the whole (unclipped) destination
// rectangle as CopyMask and CopyDeepMask have it.
struct MaskPicture {
  const BitMap* bits;
  Rect rect;
  Rect whole;
};

// The mask picture's pixels, as CheckMacPixels must accept them before
// any is read.
MacPixels PixelsOfMask(const BitMap* b) {
  int depth = IsPixMap(b) ? reinterpret_cast<const PixMap*>(b)->pixelSize : 1;
  return MacPixels{reinterpret_cast<uint8_t*>(b->baseAddr), b->rowBytes & 0x3FFF, depth,
                   b->bounds.right - b->bounds.left, b->bounds.bottom - b->bounds.top};
}

bool UsableMask(const BitMap* b) {
  return b && reinterpret_cast<uintptr_t>(b->baseAddr) > 0xFFFF &&
         CheckMacPixels(PixelsOfMask(b)) == noErr;
}

// A mask picture with pixels of a depth QuickDraw has not: the masking
// stage cannot read it, and the copy goes on without it.
bool MaskOfNoDepth(const BitMap* b) {
  return b && reinterpret_cast<uintptr_t>(b->baseAddr) > 0xFFFF &&
         CheckMacPixels(PixelsOfMask(b)) == kDepthErr;
}

// The pipeline stages that meet pixels they have no case for say so: a
// source or destination of a depth QuickDraw has not (nothing is copied),
// and dithering asked for with another mode the pipeline combines than
// srcCopy on an indexed destination (the copy goes on undithered).
void ReportStages(OSErr srcErr, OSErr dstErr, const CopySide& dst, int mode) {
  if (srcErr == kDepthErr) Report(" Undefined PVToRGBProc case");
  if (dstErr == kDepthErr) Report(" Undefined RGBToPVProc case");
  bool indexed = dst.kind == SideKind::Memory && dst.pipeline.pixels.depth <= 8;
  if ((mode & kDitherBit) && (mode & ~kDitherBit) != 0 && CombinesMode(mode) && indexed)
    Report(" Undefined DitherProc case");
}

// Whether the mask picture's pixel over destination point (x, y) is set: a
// 1 bit, or any pixel value but 0 in a deeper mask.
bool MaskPictureSet(const MaskPicture& m, int x, int y) {
  const BitMap* b = m.bits;
  int64_t ww = m.whole.right - m.whole.left, wh = m.whole.bottom - m.whole.top;
  int mx = m.rect.left + static_cast<int>((x - m.whole.left) * (m.rect.right - m.rect.left) / ww);
  int my = m.rect.top + static_cast<int>((y - m.whole.top) * (m.rect.bottom - m.rect.top) / wh);
  if (mx < b->bounds.left || mx >= b->bounds.right || my < b->bounds.top || my >= b->bounds.bottom)
    return false;
  return MacPixel(PixelsOfMask(b), mx - b->bounds.left, my - b->bounds.top) != 0;
}

// The pixels over dst (in dst's coordinates) that the mask region and the
// mask picture both let through, one bit a pixel; null when memory is short.
std::unique_ptr<uint8_t[]> MaskBits(RgnHandle rgn, const MaskPicture* picture, const Rect& dst,
                                    int32_t* rowBytes) {
  int w = dst.right - dst.left, h = dst.bottom - dst.top;
  *rowBytes = (w + 7) / 8;
  std::unique_ptr<uint8_t[]> bits(new (std::nothrow) uint8_t[static_cast<size_t>(*rowBytes) * h]());
  if (!bits) return bits;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      SInt16 v = static_cast<SInt16>(dst.top + y), hh = static_cast<SInt16>(dst.left + x);
      if (rgn && !PtInRgn(Point{v, hh}, rgn)) continue;
      if (picture && !MaskPictureSet(*picture, hh, v)) continue;
      bits[static_cast<size_t>(y) * *rowBytes + x / 8] |= static_cast<uint8_t>(0x80 >> (x & 7));
    }
  return bits;
}

bool SameColours(const CopySide& a, const CopySide& b) {
  if (a.pipeline.pixels.depth != b.pipeline.pixels.depth) return false;
  if (a.table == b.table) return true;
  return a.table && b.table && (*a.table)->ctSeed == (*b.table)->ctSeed;
}

// A copy of the source rectangle's rows when they share memory with the
// destination, so that the pipeline never reads what it has written.
struct SourceCopy {
  std::unique_ptr<uint8_t[]> bytes;
};

bool Overlaps(const MacPixels& a, const MacPixels& b) {
  const uint8_t* aEnd = a.base + static_cast<ptrdiff_t>(a.rowBytes) * a.height;
  const uint8_t* bEnd = b.base + static_cast<ptrdiff_t>(b.rowBytes) * b.height;
  return a.base < bEnd && b.base < aEnd;
}

OSErr MemoryToMemory(CopySide src, const CopySide& dst, PipelineCopy copy) {
  SourceCopy keep;
  if (Overlaps(src.pipeline.pixels, dst.pipeline.pixels)) {
    MacPixels& p = src.pipeline.pixels;
    size_t size = static_cast<size_t>(p.rowBytes) * p.height;
    keep.bytes.reset(new (std::nothrow) uint8_t[size]);
    if (!keep.bytes) return memFullErr;
    std::memcpy(keep.bytes.get(), p.base, size);
    p.base = keep.bytes.get();
  }
  copy.sameTable = SameColours(src, dst);
  if (dst.pipeline.pixels.depth <= 8) {
    copy.inverse = dst.table ? InverseTableOf(dst.table) : OneBitInverse();
    if (!copy.inverse) return memFullErr;
  }
  return RunPipeline(src.pipeline, dst.pipeline, copy);
}

void FillColours(PipelineCopy& copy) {
  PortAttr* a = CurrentAttr();
  copy.bkColor = a ? a->bkRGB : RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
  copy.fgColor = a ? a->fgRGB : RGBColor{0, 0, 0};
  copy.opColor = OpColourOf(CurrentPort());
}

bool SameRgb(const RGBColor& a, const RGBColor& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

int DepthOf(const CopySide& side) {
  return side.kind == SideKind::Device ? side.attr->deviceDepth : side.pipeline.pixels.depth;
}

// PrepareColorize: a 1-bit source in memory copied onto colour pixels
// takes the port's foreground colour for its 1 bits and background colour
// for its 0 bits. Black on white is what the bits show anyway; otherwise
// the logical modes but the Xor ones are colorized, and the Xor modes
// (which only invert) and the arithmetic modes say they cannot be.
void PrepareColorize(const CopySide& src, const CopySide& dst, PipelineCopy& copy) {
  if (src.kind != SideKind::Memory || src.pipeline.pixels.depth != 1) return;
  if (dst.kind == SideKind::None || dst.kind == SideKind::Dib || DepthOf(dst) <= 1) return;
  if (SameRgb(copy.fgColor, RGBColor{0, 0, 0}) &&
      SameRgb(copy.bkColor, RGBColor{0xFFFF, 0xFFFF, 0xFFFF}))
    return;
  int base = copy.mode & ~kDitherBit;
  if (base > 15) {
    Report(" Undefined PrepareColorize case");
  } else if ((base & 7) == 2) {
    Report(" Invalid PrepareColorize case (Xor)");
  } else if ((base & 7) == 6) {
    Report(" Invalid PrepareColorize case (notXor)");
  } else {
    copy.colorize = true;
  }
}

// A colour port's portBits is its pixel map handle and portVersion (top two
// bits of rowBytes set): the pixel map itself is meant.
}  // namespace

std::unique_ptr<uint8_t[]> RegionMaskBits(RgnHandle rgn, const Rect& dst, int32_t* rowBytes) {
  return MaskBits(rgn, nullptr, dst, rowBytes);
}

void CopyBitsNow(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                 const Rect* dstRect, SInt16 mode, RgnHandle maskRgn, const BitMap* maskBits,
                 const Rect* maskRect) {
  DirectSwitch direct;  // disarms KWE_NextWriteIsToScreen however the copy ends
  srcBits = PixelsOfBits(srcBits);
  dstBits = PixelsOfBits(dstBits);
  if (!srcBits || !dstBits || !srcRect || !dstRect) {
    SetQDError(paramErr);
    return;
  }
  SyncBeforeCopy(srcBits, dstBits);
  OSErr err = noErr, dstErr = noErr;
  CopySide src = ClassifySide(srcBits, &err);
  CopySide dst = ClassifySide(dstBits, &dstErr);
  if (src.missingTable || dst.missingTable) {
    Report(" Oops! Copybits got a NULL color table.");
    SetQDError(paramErr);
    return;
  }
  ReportStages(err, dstErr, dst, mode);
  if (err == noErr) err = dstErr;
  SetQDError(err);
  if (err != noErr || src.kind == SideKind::None || dst.kind == SideKind::None) return;
  Rect s = *srcRect, d = *dstRect;
  if (!ClipPair(s, src.bounds, d, dst.bounds)) return;

  RegionKind maskKind = RegionKind::Rectangle;
  if (maskRgn) {
    const RegionRecord* r = RecordOf(maskRgn);
    if (!r || EmptyRgn(maskRgn)) return;  // only the region's pixels change: none
    maskKind = KindOf(*r);
  }
  PipelineCopy copy{};
  copy.mode = mode;
  // GDI takes any mode (by its low four bits); the pipeline's combining
  // stage has only the logical and arithmetic modes, and copies without
  // combining when it meets another.
  bool byGdi = src.kind != SideKind::Memory && dst.kind == SideKind::Device;
  if (!byGdi && !CombinesMode(mode)) {
    Report(" Undefined RGBCombineProc case");
    copy.mode = mode & kDitherBit;
  }
  FillColours(copy);
  if (CombinesMode(copy.mode)) PrepareColorize(src, dst, copy);
  direct.Decide(dst, mode);
  MaskPicture picture{maskBits, maskRect ? *maskRect : Rect{}, *dstRect};
  bool withPicture = maskRect && !Empty(*maskRect) && UsableMask(maskBits);
  if (MaskOfNoDepth(maskBits)) {
    Report(" Undefined PixelValueMaskProc case");
    maskBits = nullptr;
  }
  if (maskBits && !withPicture) return;  // a mask with no pixels lets none through
  std::unique_ptr<uint8_t[]> mask;
  bool gdiClip =
      dst.kind == SideKind::Device && maskRgn && maskKind != RegionKind::Mask && !withPicture;
  if ((maskRgn && !gdiClip) || withPicture) {
    mask = MaskBits(gdiClip ? nullptr : maskRgn, withPicture ? &picture : nullptr, d,
                    &copy.maskRowBytes);
    if (!mask) {
      SetQDError(memFullErr);
      return;
    }
    copy.mask = mask.get();
  }

  if (src.kind == SideKind::Memory && dst.kind == SideKind::Memory) {
    copy.src = Relative(s, src.bounds);
    copy.dst = Relative(d, dst.bounds);
    SetQDError(MemoryToMemory(src, dst, copy));
  } else {
    DeviceCopy job{src, dst, s, d, copy, gdiClip ? maskRgn : nullptr};
    SetQDError(CopyWithDevice(job));
  }
  SyncAfterCopy(dstBits);
}

namespace {

// An open picture records the source's pixels as they are now: memory the
// current port draws into gets that port's drawing first.
void RecordCopy(GrafPtr port, const BitMap* src, const Rect& srcRect, const Rect& dstRect,
                SInt16 mode) {
  SyncBeforeCopy(src, nullptr);
  kwe::pictures::RecordBits(port, src, srcRect, dstRect, mode);
}

}  // namespace

RGBColor OpColourOf(GrafPtr port) {
  if (!port || !IsColourPort(port)) return RGBColor{0, 0, 0};  // a colour port's default
  Handle vars = AsColour(port)->grafVars;
  return vars && *vars ? reinterpret_cast<GrafVars*>(*vars)->rgbOpColor : RGBColor{0, 0, 0};
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL CopyBits(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                               const Rect* dstRect, SInt16 mode, RgnHandle maskRgn) {
  // A copy into the current port goes through its bits procedure.
  GrafPtr port = CurrentPort();
  if (port && dstBits && dstBits->baseAddr == port->portBits.baseAddr) {
    if (ProcPtr custom = CustomProc(port, ProcSlot::Bits)) {
      reinterpret_cast<BitsProc>(custom)(srcBits, srcRect, dstRect, mode, maskRgn);
      return;
    }
    if (srcRect && dstRect) RecordCopy(port, srcBits, *srcRect, *dstRect, mode);
  }
  CopyBitsNow(srcBits, dstBits, srcRect, dstRect, mode, maskRgn, nullptr, nullptr);
}

KWE_API void KWE_CALL StdBits(const BitMap* srcBits, const Rect* srcRect, const Rect* dstRect,
                              SInt16 mode, RgnHandle maskRgn) {
  GrafPtr port = CurrentPort();
  if (!port) return;
  if (srcRect && dstRect) RecordCopy(port, srcBits, *srcRect, *dstRect, mode);
  CopyBitsNow(srcBits, &port->portBits, srcRect, dstRect, mode, maskRgn, nullptr, nullptr);
}

// The source where the mask picture is set, in srcCopy.
KWE_API void KWE_CALL CopyMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits,
                               const Rect* srcRect, const Rect* maskRect, const Rect* dstRect) {
  if (!maskBits || !maskRect) return;
  CopyBitsNow(srcBits, dstBits, srcRect, dstRect, 0, nullptr, PixelsOfBits(maskBits), maskRect);
}

KWE_API void KWE_CALL CopyDeepMask(const BitMap* srcBits, const BitMap* maskBits,
                                   const BitMap* dstBits, const Rect* srcRect, const Rect* maskRect,
                                   const Rect* dstRect, SInt16 mode, RgnHandle maskRgn) {
  if (!maskBits || !maskRect) return;
  CopyBitsNow(srcBits, dstBits, srcRect, dstRect, mode, maskRgn, PixelsOfBits(maskBits), maskRect);
}
