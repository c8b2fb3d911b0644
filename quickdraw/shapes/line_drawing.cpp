// LineTo, Line and the standard line procedure. The Macintosh pen is a
// rectangle hanging below and to the right of the point: a line covers every
// pixel the pen touches, both ends included, where GDI's LineTo leaves out
// the last pixel and its pens are centred on the line.
#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "Quickdraw.h"
#include "quickdraw/patterns/pattern_brush.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

bool g_useRectForLine = false;

// A one-pixel pen in one GDI call: Polyline leaves out the last pixel of
// each segment, and a second segment one pixel long sets the line's end
// pixel once (once also in the XOR modes). Polyline takes its points as
// given, so the DC's current position, shared by every port on the DC, is
// neither read nor kept.
// At 45 degrees the line itself runs one step further instead, which
// leaves the driver one segment to set up rather than two.
void StrokeThinLine(PortAttr& a, COLORREF colour, int h0, int v0, int h1, int v1) {
  if (!SelectGdiPen(a, colour, 1)) return;
  int dh = h1 - h0, dv = v1 - v0;
  if (dh == dv || dh == -dv) {
    const POINT points[2] = {{h0, v0}, {h1 + (dh > 0 ? 1 : -1), v1 + (dv > 0 ? 1 : -1)}};
    Polyline(a.hdc, points, 2);
    return;
  }
  const POINT points[3] = {{h0, v0}, {h1, v1}, {h1 + 1, v1}};
  Polyline(a.hdc, points, 3);
}

void StrokeDeviceLine(PortAttr& a, GrafPtr port, int h0, int v0, int h1, int v1) {
  Pattern pat = PenPatternOf(port);
  bool black = PatternIsSolid(pat, 0xFF), white = PatternIsSolid(pat, 0x00);
  bool diagonal = h0 != h1 && v0 != v1;
  bool widePen = a.devicePenWidth > 1 || a.devicePenHeight > 1;
  if (diagonal && (widePen || !(black || white)) && !a.onePixelPensOnly) {
    FillPenSweep(port, a, Outline{{h0, v0}, {h1, v1}});
    return;
  }
  if (!diagonal) {  // the rectangle the pen sweeps
    PrepareAreaVerb(port, a, Verb::Paint);
    RECT r{std::min(h0, h1), std::min(v0, v1), 0, 0};
    r.right = r.left + std::abs(h1 - h0) + a.devicePenWidth;
    r.bottom = r.top + std::abs(v1 - v0) + a.devicePenHeight;
    FillDeviceRect(a, Verb::Paint, r);
    return;
  }
  StrokeThinLine(a, white ? a.bkColorRef : a.fgColorRef, h0, v0, h1, v1);
}

// A line is painted with the pen: in an arithmetic mode it is combined
// over the pixels between its ends.
void DrawDeviceLine(GrafPtr port, PortAttr& a, Point from, Point to) {
  int h0 = from.h, v0 = from.v, h1 = to.h, v1 = to.v;
  LocalToDevice(a, &h0, &v0);
  LocalToDevice(a, &h1, &v1);
  RECT bounds{std::min(h0, h1), std::min(v0, v1), std::max(h0, h1) + 1, std::max(v0, v1) + 1};
  DrawInPenMode(port, a, Verb::Paint, bounds, [&] { StrokeDeviceLine(a, port, h0, v0, h1, v1); });
}

void StandardLine(Point end) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  Point start = port->pnLoc;
  pictures::RecordLine(port, start, end);
  port->pnLoc = end;
  RecordPolygonPoint(port, end);
  UpdateDevicePen(*a);
  if (port->pnSize.h != 0 && port->pnSize.v != 0 && PortDraws(port, *a))
    DrawDeviceLine(port, *a, start, end);
}

using LineProc = void(KWE_CALL*)(Point);

// The application's line procedure, when it installed one.
LineProc CustomLineProc(GrafPtr port) {
  if (!port->grafProcs) return nullptr;
  ProcPtr p = port->grafProcs->lineProc;
  if (!p || p == reinterpret_cast<ProcPtr>(&StdLine)) return nullptr;
  return reinterpret_cast<LineProc>(p);
}

void LineToPoint(Point end) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  if (LineProc custom = CustomLineProc(port))
    custom(end);
  else
    StandardLine(end);
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL LineT(SInt16 h, SInt16 v) { LineToPoint(Point{v, h}); }

KWE_API void KWE_CALL Line(SInt16 dh, SInt16 dv) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  LineToPoint(
      Point{static_cast<SInt16>(port->pnLoc.v + dv), static_cast<SInt16>(port->pnLoc.h + dh)});
}

// A line procedure that calls StdLine must not be called again from it.
KWE_API void KWE_CALL StdLine(Point newPt) {
  GrafPtr port = CurrentPort();
  if (!port || !CurrentAttr()) return;
  QDProcsPtr procs = port->grafProcs;
  ProcPtr saved = procs ? procs->lineProc : nullptr;
  if (procs) procs->lineProc = nullptr;
  StandardLine(newPt);
  if (procs) procs->lineProc = saved;
}

// Horizontal and vertical lines are already filled as the rectangles the pen
// sweeps on every DC, so the printer's switch is only kept.
KWE_API void KWE_CALL KWE_UseRectForLine(Boolean useRect) { g_useRectForLine = useRect != 0; }
