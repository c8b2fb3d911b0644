// Ovals, arcs and wedges, and rounded rectangles, with outlines from the
// sine table. A fill covers the shape's pixels [left, right) like a
// rectangle's; a frame's pixels lie on the outline through the outermost
// pixels, right - 1 and bottom - 1.
#include <windows.h>

#include <algorithm>
#include <cmath>

#include "Quickdraw.h"
#include "frame/subsystems.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/shapes/outline_cache.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

// Corner diameters larger than the rectangle, or below 1, become its size.
int ClampDiameter(int diameter, int extent) {
  return diameter > extent || diameter < 1 ? extent : diameter;
}

// A frame strokes the outline; the other verbs fill the shape's rectangles.
void DrawShape(GrafPtr port, PortAttr& a, Verb verb, const OutlineShape& shape, const RECT& d) {
  DrawInPenMode(port, a, verb, d, [&] {
    if (verb == Verb::Frame) {
      FrameDeviceOutline(port, a, PlacedOutline(shape, d.left, d.top));
      return;
    }
    PrepareAreaVerb(port, a, verb);
    FillDeviceSpans(a, verb, ShapeSpans(shape, PolygonSpans), d.left, d.top);
  });
}

void StandardArc(Verb verb, const Rect* r, int start, int arc, bool oval) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !r || RectIsEmpty(*r) || arc == 0) return;
  if (oval)
    pictures::RecordOval(port, static_cast<int>(verb), *r);
  else
    pictures::RecordArc(port, static_cast<int>(verb), *r, static_cast<SInt16>(start),
                        static_cast<SInt16>(arc));
  if (verb == Verb::Frame && oval && port->rgnSave)
    RecordShapeInRegion(port, CreateEllipticRgn(r->left, r->top, r->right, r->bottom));
  if (verb != Verb::Erase && verb != Verb::Fill) RestoreHiliteBit();
  if (!PortDraws(port, *a)) return;
  RECT d = DeviceRect(*a, *r);
  int width = d.right - d.left, height = d.bottom - d.top;
  if (verb == Verb::Frame) {
    DrawShape(port, *a, verb, {OutlineKind::Arc, false, width - 1, height - 1, start, arc}, d);
    return;
  }
  // A wedge closes at the centre.
  OutlineKind kind = !oval && std::abs(arc) < 360 ? OutlineKind::Wedge : OutlineKind::Arc;
  DrawShape(port, *a, verb, {kind, true, width, height, start, arc}, d);
}

void StandardRoundRect(Verb verb, const Rect* r, int ovalWidth, int ovalHeight) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !r || RectIsEmpty(*r)) return;
  pictures::RecordRoundRect(port, static_cast<int>(verb), *r, static_cast<SInt16>(ovalWidth),
                            static_cast<SInt16>(ovalHeight));
  ovalWidth = ClampDiameter(ovalWidth, r->right - r->left);
  ovalHeight = ClampDiameter(ovalHeight, r->bottom - r->top);
  if (verb == Verb::Frame && port->rgnSave)
    RecordShapeInRegion(
        port, CreateRoundRectRgn(r->left, r->top, r->right, r->bottom, ovalWidth, ovalHeight));
  if (verb != Verb::Erase && verb != Verb::Fill) RestoreHiliteBit();
  if (!PortDraws(port, *a)) return;
  RECT d = DeviceRect(*a, *r);
  const CoordinateMapping& m = a->mapping;
  if (m.scaleActive) {
    ovalWidth = MulDiv(ovalWidth, m.destExtentH, m.sourceExtentH);
    ovalHeight = MulDiv(ovalHeight, m.destExtentV, m.sourceExtentV);
  }
  ovalWidth = ClampDiameter(ovalWidth, d.right - d.left);
  ovalHeight = ClampDiameter(ovalHeight, d.bottom - d.top);
  int width = d.right - d.left, height = d.bottom - d.top;
  if (verb == Verb::Frame)
    DrawShape(port, *a, verb,
              {OutlineKind::RoundRect, false, width - 1, height - 1, ovalWidth - 1, ovalHeight - 1},
              d);
  else
    DrawShape(port, *a, verb, {OutlineKind::RoundRect, true, width, height, ovalWidth, ovalHeight},
              d);
}

void StandardOval(Verb verb, const Rect* r) { StandardArc(verb, r, 0, 360, true); }

void StandardArcOnly(Verb verb, const Rect* r, SInt16 start, SInt16 arc) {
  StandardArc(verb, r, start, arc, false);
}

void DrawOval(Verb verb, const Rect* r) { DrawThroughSlot(ProcSlot::Oval, StandardOval, verb, r); }

void DrawArc(Verb verb, const Rect* r, SInt16 start, SInt16 arc) {
  DrawThroughSlot(ProcSlot::Arc, StandardArcOnly, verb, r, start, arc);
}

void DrawRoundRect(Verb verb, const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  DrawThroughSlot(ProcSlot::RRect, StandardRoundRect, verb, r, ovalWidth, ovalHeight);
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL StdOval(SInt16 verb, const Rect* r) {
  StandardProcScope scope(CurrentPort(), ProcSlot::Oval);
  StandardArc(static_cast<Verb>(verb), r, 0, 360, true);
}

KWE_API void KWE_CALL StdArc(SInt16 verb, const Rect* r, SInt16 startAngle, SInt16 arcAngle) {
  StandardProcScope scope(CurrentPort(), ProcSlot::Arc);
  StandardArc(static_cast<Verb>(verb), r, startAngle, arcAngle, false);
}

KWE_API void KWE_CALL StdRRect(SInt16 verb, const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  StandardProcScope scope(CurrentPort(), ProcSlot::RRect);
  StandardRoundRect(static_cast<Verb>(verb), r, ovalWidth, ovalHeight);
}

KWE_API void KWE_CALL FrameOval(const Rect* r) { DrawOval(Verb::Frame, r); }
KWE_API void KWE_CALL PaintOval(const Rect* r) { DrawOval(Verb::Paint, r); }
KWE_API void KWE_CALL EraseOval(const Rect* r) { DrawOval(Verb::Erase, r); }
KWE_API void KWE_CALL InvertOval(const Rect* r) { DrawOval(Verb::Invert, r); }
KWE_API void KWE_CALL FillOval(const Rect* r, const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawOval(Verb::Fill, r);
}

KWE_API void KWE_CALL FrameArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle) {
  DrawArc(Verb::Frame, r, startAngle, arcAngle);
}
KWE_API void KWE_CALL PaintArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle) {
  DrawArc(Verb::Paint, r, startAngle, arcAngle);
}
KWE_API void KWE_CALL EraseArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle) {
  DrawArc(Verb::Erase, r, startAngle, arcAngle);
}
KWE_API void KWE_CALL InvertArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle) {
  DrawArc(Verb::Invert, r, startAngle, arcAngle);
}
KWE_API void KWE_CALL FillArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle,
                              const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawArc(Verb::Fill, r, startAngle, arcAngle);
}

KWE_API void KWE_CALL FrameRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  if (r && kwe::dialogs::FrameOutlinesDefaultButton(*r)) return;
  DrawRoundRect(Verb::Frame, r, ovalWidth, ovalHeight);
}
KWE_API void KWE_CALL PaintRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  DrawRoundRect(Verb::Paint, r, ovalWidth, ovalHeight);
}
KWE_API void KWE_CALL EraseRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  DrawRoundRect(Verb::Erase, r, ovalWidth, ovalHeight);
}
KWE_API void KWE_CALL InvertRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight) {
  DrawRoundRect(Verb::Invert, r, ovalWidth, ovalHeight);
}
KWE_API void KWE_CALL FillRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight,
                                    const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawRoundRect(Verb::Fill, r, ovalWidth, ovalHeight);
}

// Angles as QuickDraw measures them: clockwise from 12 o'clock, on a
// rectangle stretched to a square, so that the corners are at 45 degrees.
KWE_API void KWE_CALL PtToAngle(const Rect* r, Point pt, SInt16* angle) {
  if (!r || !angle) return;
  double cx = (r->left + r->right) / 2.0, cy = (r->top + r->bottom) / 2.0;
  if (std::fabs(pt.v - cy) < 0.25) {
    *angle = pt.h < cx ? 270 : 90;
    return;
  }
  if (std::fabs(pt.h - cx) < 0.25) {
    *angle = pt.v < cy ? 0 : 180;
    return;
  }
  Point mirrored{static_cast<SInt16>(r->top + r->bottom - pt.v), pt.h};
  Rect square{-500, -500, 500, 500};
  MapPt(&mirrored, r, &square);
  const double pi = std::acos(-1.0);
  int degrees =
      90 - static_cast<int>(std::floor(std::atan2(mirrored.v, mirrored.h) * 180.0 / pi + 0.5));
  while (degrees < 0) degrees += 360;
  *angle = static_cast<SInt16>(degrees);
}
