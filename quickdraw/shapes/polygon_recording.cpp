// Polygons: recorded from the pen's moves between OpenPoly and ClosePoly.
#include <algorithm>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kEmptyPolygonSize = 10;  // polySize and polyBBox
constexpr int kPolygonSizeLimit = 32768;

int PointCount(PolyHandle poly) { return ((*poly)->polySize - kEmptyPolygonSize) / 4; }

}  // namespace

// A point that would take polySize to 32768 or more is left out; so is a
// repeat of the last point, as a MoveTo to where the pen already is.
void RecordPolygonPoint(GrafPtr port, Point pt) {
  PolyHandle poly = reinterpret_cast<PolyHandle>(port->polySave);
  if (!poly || !*poly) return;
  int count = PointCount(poly);
  if (count > 0) {
    Point last = (*poly)->polyPoints[count - 1];
    if (last.h == pt.h && last.v == pt.v) return;
  }
  int size = (*poly)->polySize + 4;
  if (size >= kPolygonSizeLimit) return;
  SetHandleSize(reinterpret_cast<Handle>(poly), size);
  if (MemError() != noErr) return;
  struct Polygon& p = **poly;
  p.polySize = static_cast<SInt16>(size);
  p.polyPoints[count] = pt;
  if (count == 0) {
    p.polyBBox = Rect{pt.v, pt.h, pt.v, pt.h};
  } else {
    p.polyBBox.top = std::min(p.polyBBox.top, pt.v);
    p.polyBBox.left = std::min(p.polyBBox.left, pt.h);
    p.polyBBox.bottom = std::max(p.polyBBox.bottom, pt.v);
    p.polyBBox.right = std::max(p.polyBBox.right, pt.h);
  }
  if (PortAttr* a = AttrOf(port)) a->polygonPointCount = static_cast<int16_t>(count + 1);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// The pen is hidden while a polygon is recorded, so its lines are not drawn.
KWE_API PolyHandle KWE_CALL OpenPoly(void) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return nullptr;
  Handle h = NewHandleClear(kEmptyPolygonSize);
  if (!h) return nullptr;
  reinterpret_cast<struct Polygon*>(*h)->polySize = kEmptyPolygonSize;
  HidePen();
  port->polySave = h;
  a->polygonPointCount = 0;
  return reinterpret_cast<PolyHandle>(h);
}

KWE_API void KWE_CALL ClosePoly(void) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !port->polySave) return;
  ShowPen();
  a->polygonPointCount = 0;
  port->polySave = nullptr;
}

KWE_API void KWE_CALL KillPoly(PolyHandle poly) {
  if (poly) DisposeHandle(reinterpret_cast<Handle>(poly));
}
