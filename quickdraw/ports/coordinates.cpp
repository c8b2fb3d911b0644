// Local, device and global coordinates of a port, and the Point calls.
#include <windows.h>

#include <algorithm>

#include "Memory.h"
#include "Quickdraw.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

int MapAxis(const CoordinateMapping& m, int c, int origin, int sourceExtent, int destExtent,
            int destOrigin) {
  if (m.scaleActive) return MulDiv(c - origin, destExtent, sourceExtent) + destOrigin;
  if (m.translateActive) return c - origin + destOrigin;
  return c;
}

int UnmapAxis(const CoordinateMapping& m, int c, int origin, int sourceExtent, int destExtent,
              int destOrigin) {
  if (m.scaleActive) return MulDiv(c - destOrigin, sourceExtent, destExtent) + origin;
  if (m.translateActive) return c - destOrigin + origin;
  return c;
}

void RecomputeTranslate(CoordinateMapping& m) {
  m.translateActive = m.scaleActive || m.originH || m.originV || m.destOriginH || m.destOriginV;
}

SInt16 Clamp16(int c) { return static_cast<SInt16>(std::clamp(c, -32768, 32767)); }

POINT ClientOriginOfMainWindow() {
  POINT origin{0, 0};
  if (HWND main = TheSession().mainWindow) ClientToScreen(main, &origin);
  return origin;
}

}  // namespace

void LocalToDevice(const PortAttr& a, int* h, int* v) {
  const CoordinateMapping& m = a.mapping;
  *h = MapAxis(m, *h, m.originH, m.sourceExtentH, m.destExtentH, m.destOriginH);
  *v = MapAxis(m, *v, m.originV, m.sourceExtentV, m.destExtentV, m.destOriginV);
}

void DeviceToLocal(const PortAttr& a, int* h, int* v) {
  const CoordinateMapping& m = a.mapping;
  *h = UnmapAxis(m, *h, m.originH, m.sourceExtentH, m.destExtentH, m.destOriginH);
  *v = UnmapAxis(m, *v, m.originV, m.sourceExtentV, m.destExtentV, m.destOriginV);
}

bool MappingIsIdentity(const PortAttr& a) {
  return !a.mapping.translateActive && !a.mapping.scaleActive;
}

HWND WindowOf(const PortAttr& a) {
  if (a.hwnd) return a.hwnd;
  return a.hdc ? WindowFromDC(a.hdc) : nullptr;
}

// A port drawing into application memory maps its bits' top left onto the
// first pixel, as the Macintosh does; a window's bits are the screen's, its
// port rectangle's top left the client area's.
void TakeOriginFromPortRect(PortAttr& a) {
  if (a.bitsEntry <= 0 || !EntryOrigin(a.port, &a.mapping.originH, &a.mapping.originV)) {
    a.mapping.originH = a.port->portRect.left;
    a.mapping.originV = a.port->portRect.top;
  }
  RecomputeTranslate(a.mapping);
}

void UpdateDevicePen(PortAttr& a) {
  int h = a.port->pnLoc.h, v = a.port->pnLoc.v;
  LocalToDevice(a, &h, &v);
  a.devicePenH = h;
  a.devicePenV = v;
}

// Scaled with the mapping, then by the pen scale factor, never below 1.
void UpdateDevicePenSize(PortAttr& a) {
  int w = a.port->pnSize.h, h = a.port->pnSize.v;
  const CoordinateMapping& m = a.mapping;
  if (m.scaleActive) {
    w = MulDiv(w, m.destExtentH, m.sourceExtentH);
    h = MulDiv(h, m.destExtentV, m.sourceExtentV);
  }
  if (a.penScaleOn) {
    w = static_cast<int>((static_cast<int64_t>(w) * a.penScale) >> 16);
    h = static_cast<int>((static_cast<int64_t>(h) * a.penScale) >> 16);
  }
  a.devicePenWidth = std::max(w, 1);
  a.devicePenHeight = std::max(h, 1);
}

void RegionToDevice(const PortAttr& a, RgnHandle rgn) {
  const CoordinateMapping& m = a.mapping;
  if (m.scaleActive) {
    Rect src{static_cast<SInt16>(m.originV), static_cast<SInt16>(m.originH),
             static_cast<SInt16>(m.originV + m.sourceExtentV),
             static_cast<SInt16>(m.originH + m.sourceExtentH)};
    Rect dst{static_cast<SInt16>(m.destOriginV), static_cast<SInt16>(m.destOriginH),
             static_cast<SInt16>(m.destOriginV + m.destExtentV),
             static_cast<SInt16>(m.destOriginH + m.destExtentH)};
    MapRgn(rgn, &src, &dst);
  } else if (m.translateActive) {
    OffsetRgn(rgn, static_cast<SInt16>(m.destOriginH - m.originH),
              static_cast<SInt16>(m.destOriginV - m.originV));
  }
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL LocalToGlobal(Point* pt) {
  PortAttr* a = CurrentAttr();
  if (!pt || !a) return;
  int h = pt->h, v = pt->v;
  LocalToDevice(*a, &h, &v);
  POINT p{h, v};
  if (HWND w = WindowOf(*a)) ClientToScreen(w, &p);
  *pt = Point{Clamp16(p.y), Clamp16(p.x)};
}

KWE_API void KWE_CALL GlobalToLocal(Point* pt) {
  PortAttr* a = CurrentAttr();
  if (!pt || !a) return;
  POINT p{pt->h, pt->v};
  if (HWND w = WindowOf(*a)) ScreenToClient(w, &p);
  int h = p.x, v = p.y;
  DeviceToLocal(*a, &h, &v);
  *pt = Point{Clamp16(v), Clamp16(h)};
}

// For points kept relative to the host's main window's client area.
KWE_API void KWE_CALL KWE_LocalToScreen(Point* pt) {
  if (!pt) return;
  LocalToGlobal(pt);
  POINT origin = ClientOriginOfMainWindow();
  *pt = Point{Clamp16(pt->v + origin.y), Clamp16(pt->h + origin.x)};
}

KWE_API void KWE_CALL KWE_ScreenToLocal(Point* pt) {
  if (!pt) return;
  POINT origin = ClientOriginOfMainWindow();
  *pt = Point{Clamp16(pt->v - origin.y), Clamp16(pt->h - origin.x)};
  GlobalToLocal(pt);
}

// Point arithmetic wraps at 16 bits, as the 68000's word arithmetic did.
KWE_API void KWE_CALL AddPt(Point src, Point* dst) {
  if (!dst) return;
  dst->h = static_cast<SInt16>(dst->h + src.h);
  dst->v = static_cast<SInt16>(dst->v + src.v);
}

KWE_API void KWE_CALL SubPt(Point src, Point* dst) {
  if (!dst) return;
  dst->h = static_cast<SInt16>(dst->h - src.h);
  dst->v = static_cast<SInt16>(dst->v - src.v);
}

KWE_API void KWE_CALL SetPt(Point* pt, SInt16 h, SInt16 v) {
  if (pt) *pt = Point{v, h};
}

KWE_API Boolean KWE_CALL EqualPt(Point pt1, Point pt2) { return pt1.h == pt2.h && pt1.v == pt2.v; }

KWE_API void KWE_CALL Pt2Rect(Point pt1, Point pt2, Rect* dstRect) {
  if (!dstRect) return;
  *dstRect = Rect{std::min(pt1.v, pt2.v), std::min(pt1.h, pt2.h), std::max(pt1.v, pt2.v),
                  std::max(pt1.h, pt2.h)};
}

KWE_API void KWE_CALL ScalePt(Point* pt, const Rect* srcRect, const Rect* dstRect) {
  if (!pt || !srcRect || !dstRect) return;
  int sw = srcRect->right - srcRect->left, sh = srcRect->bottom - srcRect->top;
  int dw = dstRect->right - dstRect->left, dh = dstRect->bottom - dstRect->top;
  pt->h = sw ? Clamp16(MulDiv(pt->h, dw, sw)) : SInt16{0};
  pt->v = sh ? Clamp16(MulDiv(pt->v, dh, sh)) : SInt16{0};
}

KWE_API void KWE_CALL MapPoly(PolyHandle poly, const Rect* srcRect, const Rect* dstRect) {
  if (!poly || !*poly || !srcRect || !dstRect) return;
  int count =
      (std::min<Size>((*poly)->polySize, GetHandleSize(reinterpret_cast<Handle>(poly))) - 10) / 4;
  for (int i = 0; i < count; ++i) MapPt(&(*poly)->polyPoints[i], srcRect, dstRect);
}
