// Polygons in the five verbs, and OffsetPoly.
#include <windows.h>

#include <algorithm>
#include <climits>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

// The points polySize names, never more than the handle holds.
int PointCount(PolyHandle poly) {
  Size bytes = std::min<Size>((*poly)->polySize, GetHandleSize(reinterpret_cast<Handle>(poly)));
  return bytes > 10 ? static_cast<int>((bytes - 10) / 4) : 0;
}

void StandardPoly(Verb verb, PolyHandle poly) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !poly || !*poly || RectIsEmpty((*poly)->polyBBox)) return;
  int count = PointCount(poly);
  if (count == 0) return;
  if (reinterpret_cast<Handle>(poly) != port->polySave)
    pictures::RecordPoly(port, static_cast<int>(verb), poly);
  // Framed into another polygon being recorded: its points are replayed.
  if (verb == Verb::Frame && port->polySave && reinterpret_cast<Handle>(poly) != port->polySave) {
    std::vector<Point> points((*poly)->polyPoints, (*poly)->polyPoints + count);
    MoveTo(points[0].h, points[0].v);
    for (int i = 1; i < count; ++i) LineTo(points[i].h, points[i].v);
  }
  if (verb != Verb::Erase && verb != Verb::Fill) RestoreHiliteBit();
  if (!PortDraws(port, *a)) return;
  Outline device(count);
  RECT bounds{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
  for (int i = 0; i < count; ++i) {
    int h = (*poly)->polyPoints[i].h, v = (*poly)->polyPoints[i].v;
    LocalToDevice(*a, &h, &v);
    device[i] = OutlinePoint{h, v};
    bounds = RECT{std::min<LONG>(bounds.left, h), std::min<LONG>(bounds.top, v),
                  std::max<LONG>(bounds.right, h + 1), std::max<LONG>(bounds.bottom, v + 1)};
  }
  DrawInPenMode(port, *a, verb, bounds, [&] {
    if (verb == Verb::Frame) {
      FrameDeviceOutline(port, *a, device);
    } else {
      PrepareAreaVerb(port, *a, verb);
      FillDevicePolygon(*a, device);
    }
  });
}

void DrawPoly(Verb verb, PolyHandle poly) {
  DrawThroughSlot(ProcSlot::Poly, StandardPoly, verb, poly);
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL StdPoly(SInt16 verb, PolyHandle poly) {
  StandardProcScope scope(CurrentPort(), ProcSlot::Poly);
  StandardPoly(static_cast<Verb>(verb), poly);
}

KWE_API void KWE_CALL FramePoly(PolyHandle poly) { DrawPoly(Verb::Frame, poly); }
KWE_API void KWE_CALL PaintPoly(PolyHandle poly) { DrawPoly(Verb::Paint, poly); }
KWE_API void KWE_CALL ErasePoly(PolyHandle poly) { DrawPoly(Verb::Erase, poly); }
KWE_API void KWE_CALL InvertPoly(PolyHandle poly) { DrawPoly(Verb::Invert, poly); }
KWE_API void KWE_CALL FillPoly(PolyHandle poly, const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawPoly(Verb::Fill, poly);
}

KWE_API void KWE_CALL OffsetPoly(PolyHandle poly, SInt16 dh, SInt16 dv) {
  if (!poly || !*poly) return;
  int count = PointCount(poly);
  struct Polygon& p = **poly;
  for (int i = 0; i < count; ++i) {
    p.polyPoints[i].h = static_cast<SInt16>(p.polyPoints[i].h + dh);
    p.polyPoints[i].v = static_cast<SInt16>(p.polyPoints[i].v + dv);
  }
  p.polyBBox =
      Rect{static_cast<SInt16>(p.polyBBox.top + dv), static_cast<SInt16>(p.polyBBox.left + dh),
           static_cast<SInt16>(p.polyBBox.bottom + dv), static_cast<SInt16>(p.polyBBox.right + dh)};
}
