// What every shape's drawing verbs share: whether the port draws at all,
// the verb's raster operation and brush, and the GDI calls that fill
// rectangles and polygons and stroke outlines the Macintosh way.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/outline_cache.h"
#include "quickdraw/shapes/shape_outlines.h"

namespace kwe::quickdraw {

enum class Verb : SInt16 { Frame = 0, Paint = 1, Erase = 2, Invert = 3, Fill = 4 };

inline bool RectIsEmpty(const Rect& r) { return r.bottom <= r.top || r.right <= r.left; }

// Slots of a QDProcs record.
enum class ProcSlot { Text = 0, Line, Rect, RRect, Oval, Arc, Poly, Rgn, Bits };

// The application's procedure in the current port's slot; null when the
// port has none there or has the standard one.
ProcPtr CustomProc(GrafPtr port, ProcSlot slot);

// A shape call's way to its bottleneck: the application's procedure in the
// current port's slot when it set one (the verb goes first, as a 16-bit
// value), else standard; nothing without a current port.
template <class Standard, class... Args>
void DrawThroughSlot(ProcSlot slot, Standard standard, Verb verb, Args... args) {
  using Procedure = void(KWE_CALL*)(SInt16, Args...);
  GrafPtr port = CurrentPort();
  if (!CurrentAttr()) return;
  if (ProcPtr custom = CustomProc(port, slot))
    reinterpret_cast<Procedure>(custom)(static_cast<SInt16>(verb), args...);
  else
    standard(verb, args...);
}

// The pattern of a Fill call, kept in the current port for its bottleneck;
// false (draw nothing) without a current port or a pattern.
bool StoreFillPattern(const Pattern* pat);

// While a standard procedure runs, its own slot is cleared, so that an
// application's procedure that calls it is not called back.
class StandardProcScope {
 public:
  StandardProcScope(GrafPtr port, ProcSlot slot);
  ~StandardProcScope();
  StandardProcScope(const StandardProcScope&) = delete;
  StandardProcScope& operator=(const StandardProcScope&) = delete;

 private:
  ProcPtr* slot_ = nullptr;
  ProcPtr saved_ = nullptr;
};

// Region recording: a framed shape's Win32 region joins the port's rgnSave
// by exclusive-or (the shape is deleted).
void RecordShapeInRegion(GrafPtr port, HRGN shape);

// The pen is visible, the port is visible, the pen mode is one GDI can draw
// and the clip is not empty.
bool PortDraws(GrafPtr port, const PortAttr& a);

// The port's rectangle in device pixels (right and bottom exclusive).
RECT DeviceRect(const PortAttr& a, const Rect& r);

// The GDI pen of the port's colour (one pixel, or the pen size with
// onePixelPensOnly off), selected with the pen's ROP2.
bool SelectGdiPen(PortAttr& a, COLORREF colour, int width);

// Selects the verb's ROP2 and brush with the null pen; paint and frame use
// the pen pattern and mode, erase the background pattern, fill the fill
// pattern (both in copy mode), invert no pattern.
void PrepareAreaVerb(GrafPtr port, PortAttr& a, Verb verb);

// Fills [left, right) x [top, bottom) after PrepareAreaVerb.
void FillDeviceRect(PortAttr& a, Verb verb, const RECT& r);
// Frames d with the pen after PrepareAreaVerb(Frame): the top and bottom
// edges the pen's height, the sides its width, all inside d.
void FrameDeviceRect(PortAttr& a, const RECT& d);
// What GDI's polygon fill (alternate rule) covers of outline, as
// rectangles: the region GDI makes of the polygon, read back.
SpanList PolygonSpans(const Outline& outline);
// Fills spans moved by (left, top) after PrepareAreaVerb: the same pixels
// as filling their polygon.
void FillDeviceSpans(PortAttr& a, Verb verb, const SpanList& spans, int left, int top);
// Fills a polygon (alternate rule) after PrepareAreaVerb.
void FillDevicePolygon(PortAttr& a, const Outline& points);
// Fills the area the pen covers along path with the pen pattern in the pen
// mode.
void FillPenSweep(GrafPtr port, PortAttr& a, const Outline& path);

// A frame's outline: a one-pixel solid pen strokes it with Polyline, any
// other pen sweeps it.
void FrameDeviceOutline(GrafPtr port, PortAttr& a, const Outline& path);

// Frame, paint and invert give the application's HiliteMode its bit 7
// back, as QuickDraw does after every highlighting chance; true when the
// application had cleared it to ask for highlighting.
bool TakeHiliteRequest();
inline void RestoreHiliteBit() { TakeHiliteRequest(); }

// Highlighting instead of inverting: inside r the pixels of the port's
// background colour and of the highlight colour trade places. False when
// the device cannot show it (1 bit deep) or the pixels cannot be read.
bool HighlightDeviceRect(GrafPtr port, PortAttr& a, const RECT& r);

}  // namespace kwe::quickdraw
