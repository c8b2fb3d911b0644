// OpenRgn and CloseRgn: a region drawn with the pen. Lines are recorded as a
// polygon; framed rectangles, ovals and rounded rectangles are combined
// into the port's rgnSave as they are drawn.
#include <windows.h>

#include <vector>

#include "KWERegions.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace {

// The polygon's points as a Win32 region with the alternate rule, or null
// when it has none.
HRGN RegionOfPolygon(PolyHandle poly) {
  if (!poly || !*poly) return nullptr;
  int count = ((*poly)->polySize - 10) / 4;
  if (count < 1) return nullptr;
  std::vector<POINT> points(count);
  for (int i = 0; i < count; ++i)
    points[i] = POINT{(*poly)->polyPoints[i].h, (*poly)->polyPoints[i].v};
  return CreatePolygonRgn(points.data(), count, ALTERNATE);
}

}  // namespace

namespace kwe::quickdraw {

void RecordShapeInRegion(GrafPtr port, HRGN shape) {
  RgnHandle saved = reinterpret_cast<RgnHandle>(port->rgnSave);
  HRGN own = KWE_RgnSetToRealRectRgn(saved);
  if (own && shape) {
    CombineRgn(own, own, shape, RGN_XOR);
    if (RegionRecord* r = RecordOf(saved)) RefreshBox(*r);
    KWE_IsRectRgn(saved);
  }
  if (shape) DeleteObject(shape);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// A second OpenRgn before CloseRgn starts the recording afresh.
KWE_API void KWE_CALL OpenRgn(void) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  if (port->rgnSave) {
    ClosePoly();
    KillPoly(reinterpret_cast<PolyHandle>(port->polySave));
    DisposeRgn(reinterpret_cast<RgnHandle>(port->rgnSave));
  }
  port->rgnSave = reinterpret_cast<Handle>(NewRgn());
  OpenPoly();
}

KWE_API void KWE_CALL CloseRgn(RgnHandle dstRgn) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr() || !port->rgnSave) return;
  PolyHandle poly = reinterpret_cast<PolyHandle>(port->polySave);
  ClosePoly();
  HRGN polygon = RegionOfPolygon(poly);
  RgnHandle saved = reinterpret_cast<RgnHandle>(port->rgnSave);
  if (dstRgn) {
    if (polygon) {
      KWE_RgnSetToRealRectRgn(saved);
      HRGN dst = KWE_RgnSetToRealRectRgn(dstRgn);
      CombineRgn(dst, polygon, KWE_RgnSetToRealRectRgn(saved), RGN_XOR);
      if (RegionRecord* r = RecordOf(dstRgn)) RefreshBox(*r);
      KWE_IsRectRgn(dstRgn);
    } else {
      CopyRgn(saved, dstRgn);
    }
  }
  DisposeRgn(saved);
  port->rgnSave = nullptr;
  KillPoly(poly);
  if (polygon) DeleteObject(polygon);
}
