// Rectangles in the five verbs. A frame lies inside the rectangle: its top
// and bottom edges are the pen's height, its sides the pen's width.
#include <windows.h>

#include <algorithm>

#include "Quickdraw.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {
namespace {

void RecordFrame(GrafPtr port, const Rect& r) {
  if (port->rgnSave) {
    RecordShapeInRegion(port, CreateRectRgn(r.left, r.top, r.right, r.bottom));
  } else if (port->polySave) {
    MoveTo(r.left, r.top);
    LineTo(r.right, r.top);
    LineTo(r.right, r.bottom);
    LineTo(r.left, r.bottom);
    LineTo(r.left, r.top);
  }
}

void StandardRect(Verb verb, const Rect* r) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !r || RectIsEmpty(*r)) return;
  pictures::RecordRect(port, static_cast<int>(verb), *r);
  if (verb == Verb::Frame) RecordFrame(port, *r);
  bool highlight =
      verb != Verb::Erase && verb != Verb::Fill && TakeHiliteRequest() && verb != Verb::Frame;
  if (!PortDraws(port, *a)) return;
  RECT d = DeviceRect(*a, *r);
  if (highlight && HighlightDeviceRect(port, *a, d)) return;
  DrawInPenMode(port, *a, verb, d, [&] {
    PrepareAreaVerb(port, *a, verb);
    if (verb == Verb::Frame)
      FrameDeviceRect(*a, d);
    else
      FillDeviceRect(*a, verb, d);
  });
}

void DrawRect(Verb verb, const Rect* r) { DrawThroughSlot(ProcSlot::Rect, StandardRect, verb, r); }

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL StdRect(SInt16 verb, const Rect* r) {
  StandardProcScope scope(CurrentPort(), ProcSlot::Rect);
  StandardRect(static_cast<Verb>(verb), r);
}

KWE_API void KWE_CALL FrameRec(const Rect* r) { DrawRect(Verb::Frame, r); }
KWE_API void KWE_CALL PaintRect(const Rect* r) { DrawRect(Verb::Paint, r); }
KWE_API void KWE_CALL EraseRect(const Rect* r) { DrawRect(Verb::Erase, r); }
KWE_API void KWE_CALL InvertRec(const Rect* r) { DrawRect(Verb::Invert, r); }

KWE_API void KWE_CALL FillRec(const Rect* r, const Pattern* pat) {
  if (StoreFillPattern(pat)) DrawRect(Verb::Fill, r);
}

// The pixel pattern is the fill pattern for this one call.
KWE_API void KWE_CALL FillCRect(const Rect* r, PixPatHandle pp) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr() || !pp || !IsColourPort(port)) return;
  CGrafPtr c = AsColour(port);
  PixPatHandle saved = c->fillPixPat;
  c->fillPixPat = pp;
  DrawRect(Verb::Fill, r);
  c->fillPixPat = saved;
}
