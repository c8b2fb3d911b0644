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
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

bool g_useRectForLine = false;

// A one-pixel pen: GDI's own line from (h0, v0), where the DC's position
// is, its last pixel added. A line at 45 degrees reaches its last pixel when
// GDI's line runs one step further, which costs nothing; any other line gets
// the pixel set directly in copy mode and otherwise drawn as a one-pixel
// line. True when the DC's position is left at the end.
bool StrokeThinLine(PortAttr& a, COLORREF colour, int h0, int v0, int h1, int v1) {
  int width = a.onePixelPensOnly ? 1 : (a.devicePenWidth + a.devicePenHeight) / 2;
  if (!SelectGdiPen(a, colour, width)) return false;
  int dh = h1 - h0, dv = v1 - v0;
  if (width <= 1 && std::abs(dh) == std::abs(dv)) {
    LineTo(a.hdc, h1 + (dh > 0 ? 1 : -1), v1 + (dv > 0 ? 1 : -1));
    return false;
  }
  LineTo(a.hdc, h1, v1);
  if (a.penRop2 == R2_COPYPEN && width <= 1) {
    SetPixelV(a.hdc, h1, v1, colour);
    return true;
  }
  LineTo(a.hdc, h1 + 1, v1);
  return false;
}

// True when the DC's position is left at the device pen.
bool DrawDeviceLine(GrafPtr port, PortAttr& a, Point from, Point to) {
  int h0 = from.h, v0 = from.v, h1 = to.h, v1 = to.v;
  LocalToDevice(a, &h0, &v0);
  LocalToDevice(a, &h1, &v1);
  Pattern pat = PenPatternOf(port);
  bool black = PatternIsSolid(pat, 0xFF), white = PatternIsSolid(pat, 0x00);
  bool diagonal = h0 != h1 && v0 != v1;
  bool widePen = a.devicePenWidth > 1 || a.devicePenHeight > 1;
  if (diagonal && (widePen || !(black || white)) && !a.onePixelPensOnly) {
    FillPenSweep(port, a, Outline{{h0, v0}, {h1, v1}});
    return false;
  }
  if (!diagonal) {  // the rectangle the pen sweeps
    PrepareAreaVerb(port, a, Verb::Paint);
    RECT r{std::min(h0, h1), std::min(v0, v1), 0, 0};
    r.right = r.left + std::abs(h1 - h0) + a.devicePenWidth;
    r.bottom = r.top + std::abs(v1 - v0) + a.devicePenHeight;
    FillDeviceRect(a, Verb::Paint, r);
    return false;
  }
  // MoveTo and every line leave the DC at the device pen: the stroke starts
  // from there.
  return StrokeThinLine(a, white ? a.bkColorRef : a.fgColorRef, h0, v0, h1, v1);
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
  bool draws = port->pnSize.h != 0 && port->pnSize.v != 0 && PortDraws(port, *a);
  bool placed = draws && DrawDeviceLine(port, *a, start, end);
  if (!placed && a->hdc && port->pnVis >= 0)
    MoveToEx(a->hdc, a->devicePenH, a->devicePenV, nullptr);
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
