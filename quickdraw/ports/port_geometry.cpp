// The port's rectangle, origin, bits and clip, and what follows from them in
// the device context: the mapping origin and the GDI clip region.
#include <windows.h>

#include "KWEPorts.h"
#include "KWERegions.h"
#include "frame/trap_defaults.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/patterns/pattern_brush.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {
namespace {

// The clip and visible regions meet in device coordinates; the Macintosh
// clips to both, GDI to one region.
void SelectDeviceClip(GrafPtr port, PortAttr& a) {
  if (!a.hdc || !port->clipRgn || !port->visRgn) return;
  RgnHandle scratch = ScratchRegion();
  SectRgn(port->clipRgn, port->visRgn, scratch);
  RegionToDevice(a, scratch);
  if (a.offscreenActive)
    OffsetRgn(scratch, static_cast<SInt16>(-a.offscreenH), static_cast<SInt16>(-a.offscreenV));
  // A rectangle that holds all the DC can show clips nothing: GDI draws
  // faster with no clip region at all.
  const Rect& box = (**scratch).rgnBBox;
  RECT all;
  if (KWE_IsRectRgn(scratch) && SelectClipRgn(a.hdc, nullptr) != ERROR &&
      GetClipBox(a.hdc, &all) != ERROR && box.left <= all.left && box.top <= all.top &&
      box.right >= all.right && box.bottom >= all.bottom) {
    a.clipEmpty = 0;
    return;
  }
  SInt16 kind = KWE_SelectClipRgn(a.hdc, scratch);
  a.clipEmpty = kind == NULLREGION && !IsForeignDC(a.hdc);
}

}  // namespace

void RebuildClip(GrafPtr port) {
  if (PortAttr* a = AttrOf(port)) SelectDeviceClip(port, *a);
}

void KWE_CALL SetOriginDefault(SInt16 h, SInt16 v) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  int dh = h - port->portRect.left, dv = v - port->portRect.top;
  port->portRect.left = h;
  port->portRect.top = v;
  port->portRect.right = static_cast<SInt16>(port->portRect.right + dh);
  port->portRect.bottom = static_cast<SInt16>(port->portRect.bottom + dv);
  // The bits' bounds move with the origin, as on the Macintosh, so that
  // CopyBits cuts a copy into the port where its pixels really are.
  Rect* bounds = &port->portBits.bounds;
  if (IsColourPort(port)) {
    PixMapHandle pm = AsColour(port)->portPixMap;
    bounds = pm && *pm ? &(*pm)->bounds : nullptr;
  }
  if (bounds) OffsetRect(bounds, static_cast<SInt16>(dh), static_cast<SInt16>(dv));
  TakeOriginFromPortRect(*a);
  OffsetRgn(port->visRgn, static_cast<SInt16>(dh), static_cast<SInt16>(dv));
  RebuildClip(port);
  AlignBrushToPort(*a);
  Move(0, 0);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL PortSize(SInt16 width, SInt16 height) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  port->portRect.bottom = static_cast<SInt16>(port->portRect.top + height);
  port->portRect.right = static_cast<SInt16>(port->portRect.left + width);
}

KWE_API void KWE_CALL MovePortTo(SInt16 leftGlobal, SInt16 topGlobal) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  Rect& r = port->portRect;
  r = Rect{topGlobal, leftGlobal, static_cast<SInt16>(topGlobal + (r.bottom - r.top)),
           static_cast<SInt16>(leftGlobal + (r.right - r.left))};
}

// Bits in application memory go through the offscreen bitmap table: the
// port draws into the entry's DC and the pixels reach the memory as that
// table keeps them in step.
KWE_API Boolean KWE_CALL SetPortBits(const BitMap* bm) {
  GrafPtr port = CurrentPort();
  if (!bm || !CurrentAttr() || IsColourPort(port)) {
    SetQDError(paramErr);
    return false;
  }
  BitMap bits = *bm;
  port->portBits = bits;
  bool drawable = GiveBits(port, bits, false);
  // Refused bits leave no pixels, and no rowBytes flag bits either: they
  // share their place with a colour port's portVersion.
  if (!drawable) {
    port->portBits.baseAddr = reinterpret_cast<Ptr>(kNoBits);
    port->portBits.rowBytes = static_cast<SInt16>(bits.rowBytes & 0x3FFF);
  }
  AlignBrushToPort(*CurrentAttr());
  return drawable;
}

// The program's pixel map stays as it is (it reads baseAddr to reach its
// pixels); only the port's drawing goes to the entry.
KWE_API Boolean KWE_CALL SetPortPix(PixMapHandle pm) {
  GrafPtr port = CurrentPort();
  if (!pm || !*pm || !CurrentAttr() || !IsColourPort(port)) {
    SetQDError(paramErr);
    return false;
  }
  AsColour(port)->portPixMap = pm;
  bool drawable = GiveBits(port, *reinterpret_cast<const BitMap*>(*pm), true);
  AlignBrushToPort(*CurrentAttr());
  return drawable;
}

KWE_API void KWE_CALL ClipRect(const Rect* r) {
  GrafPtr port = CurrentPort();
  if (!r || !CurrentAttr()) return;
  RectRgn(port->clipRgn, r);
  RebuildClip(port);
}

KWE_API void KWE_CALL SetClip(RgnHandle rgn) {
  GrafPtr port = CurrentPort();
  if (!rgn || !CurrentAttr()) return;
  CopyRgn(rgn, port->clipRgn);
  RebuildClip(port);
}

KWE_API void KWE_CALL GetClip(RgnHandle rgn) {
  GrafPtr port = CurrentPort();
  if (!rgn || !CurrentAttr()) return;
  CopyRgn(port->clipRgn, rgn);
}

KWE_API void KWE_CALL KWE_PortRectChange(void) {
  if (PortAttr* a = CurrentAttr()) {
    TakeOriginFromPortRect(*a);
    UpdateDevicePen(*a);
  }
}

KWE_API void KWE_CALL KWE_ClipRgnChange(GrafPtr port) { RebuildClip(port); }

// The visible region changes only when the Window Manager says so; the DC's
// clip is made again the same way.
KWE_API void KWE_CALL KWE_VisRgnChange(GrafPtr port) { RebuildClip(port); }
