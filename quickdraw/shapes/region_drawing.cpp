// Regions in the five verbs. A rectangle draws as a rectangle, a Win32
// region through GDI's region calls, a mask region as its 1-bit mask
// blitted with a raster operation that keeps the destination where the mask
// is white.
#include <windows.h>

#include "KWERegions.h"
#include "Quickdraw.h"
#include "frame/unsupported.h"
#include "quickdraw/patterns/pattern_brush.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/regions/mask_regions.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

constexpr DWORD kBrushWhereMaskIsBlack = 0x00B8074A;   // PSDPxax
constexpr DWORD kInvertWhereMaskIsBlack = 0x00990066;  // DSxn

// The region in device coordinates: itself, or a copy moved by the port's
// mapping (disposed by the caller when it differs from rgn).
RgnHandle DeviceRegion(const PortAttr& a, RgnHandle rgn) {
  const CoordinateMapping& m = a.mapping;
  if (!m.translateActive && !m.scaleActive) return rgn;
  RgnHandle copy = NewRgn();
  if (!copy) return nullptr;
  CopyRgn(rgn, copy);
  RegionToDevice(a, copy);
  return copy;
}

void DrawMask(PortAttr& a, const RegionRecord& r, DWORD rop) {
  const uint8_t* bits = MaskBitsOf(r);
  if (!bits) return;
  const auto* info = reinterpret_cast<const BITMAPINFO*>(*r.mask);
  int w = r.rgnBBox.right - r.rgnBBox.left, h = r.rgnBBox.bottom - r.rgnBBox.top;
  StretchDIBits(a.hdc, r.rgnBBox.left, r.rgnBBox.top, w, h, 0, 0, w, h, bits, info, DIB_RGB_COLORS,
                rop);
}

void DrawDeviceRegion(GrafPtr port, PortAttr& a, Verb verb, RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r || BoxIsEmpty(r->rgnBBox)) return;
  RECT box{r->rgnBBox.left, r->rgnBBox.top, r->rgnBBox.right, r->rgnBBox.bottom};
  switch (KindOf(*r)) {
    case RegionKind::Rectangle:
      PrepareAreaVerb(port, a, verb);
      if (verb == Verb::Frame)
        FrameDeviceRect(a, box);
      else
        FillDeviceRect(a, verb, box);
      return;
    case RegionKind::Win32:
      PrepareAreaVerb(port, a, verb);
      if (verb == Verb::Frame) {
        int pw = a.onePixelPensOnly ? 1 : a.devicePenWidth,
            ph = a.onePixelPensOnly ? 1 : a.devicePenHeight;
        FrameRgn(a.hdc, r->shape, a.brush, pw, ph);
      } else if (verb == Verb::Invert) {
        InvertRgn(a.hdc, r->shape);
      } else {
        PaintRgn(a.hdc, r->shape);
      }
      return;
    case RegionKind::Mask:
      if (verb == Verb::Frame) {
        Unsupported(" FrameRgn - bitmap style");
        return;
      }
      PrepareAreaVerb(port, a, verb);
      DrawMask(a, *r, verb == Verb::Invert ? kInvertWhereMaskIsBlack : kBrushWhereMaskIsBlack);
      return;
  }
}

void StandardRgn(Verb verb, RgnHandle rgn) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !RecordOf(rgn)) return;
  pictures::RecordRgn(port, static_cast<int>(verb), rgn);
  if (!PortDraws(port, *a)) return;
  RgnHandle device = DeviceRegion(*a, rgn);
  if (!device) return;
  const Rect& b = (*device)->rgnBBox;
  DrawInPenMode(port, *a, verb, RECT{b.left, b.top, b.right, b.bottom},
                [&] { DrawDeviceRegion(port, *a, verb, device); });
  if (device != rgn) DisposeRgn(device);
}

void DrawRgn(Verb verb, RgnHandle rgn) { DrawThroughSlot(ProcSlot::Rgn, StandardRgn, verb, rgn); }

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL StdRgn(SInt16 verb, RgnHandle rgn) {
  StandardProcScope scope(CurrentPort(), ProcSlot::Rgn);
  StandardRgn(static_cast<Verb>(verb), rgn);
}

KWE_API void KWE_CALL FrameRg(RgnHandle rgn) { DrawRgn(Verb::Frame, rgn); }
KWE_API void KWE_CALL PaintRg(RgnHandle rgn) { DrawRgn(Verb::Paint, rgn); }
KWE_API void KWE_CALL EraseRgn(RgnHandle rgn) { DrawRgn(Verb::Erase, rgn); }
KWE_API void KWE_CALL InvertRg(RgnHandle rgn) { DrawRgn(Verb::Invert, rgn); }
KWE_API void KWE_CALL FillRg(RgnHandle rgn, const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawRgn(Verb::Fill, rgn);
}
