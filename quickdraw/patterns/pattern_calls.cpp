// BackPat, BackPixPat, MakeRGBPat and KWE_PolyPolygon.
#include <windows.h>

#include <algorithm>
#include <iterator>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/shape_drawing.h"

using namespace kwe::quickdraw;

KWE_API void KWE_CALL BackPat(const Pattern* pat) {
  if (pat && CurrentAttr()) SetBackPattern(CurrentPort(), *pat);
}

// The port's own background pattern is given up when another takes its place.
KWE_API void KWE_CALL BackPixPat(PixPatHandle pp) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!pp || !a || !IsColourPort(port)) return;
  CGrafPtr c = AsColour(port);
  if (c->bkPixPat == pp) return;
  if (a->backPixPat && c->bkPixPat == a->backPixPat) {
    DisposePixPatRecord(a->backPixPat);
    a->backPixPat = nullptr;
  }
  c->bkPixPat = pp;
}

// The colour travels beside the published record; a pattern an application
// made smaller than that grows to hold it.
KWE_API void KWE_CALL MakeRGBPat(PixPatHandle pp, const RGBColor* rgb) {
  if (!pp || !*pp || !rgb) return;
  Handle h = reinterpret_cast<Handle>(pp);
  if (GetHandleSize(h) < static_cast<Size>(sizeof(LibraryPixPat))) {
    SetHandleSize(h, sizeof(LibraryPixPat));
    if (MemError() != noErr) return;
  }
  LibraryPixPat& p = *reinterpret_cast<LibraryPixPat*>(*h);
  p.published.patType = 2;
  std::fill(std::begin(p.published.pat1Data.pat), std::end(p.published.pat1Data.pat), UInt8{0xFF});
  p.published.patXValid = -1;
  p.rgb = *rgb;
}

KWE_API Boolean KWE_CALL KWE_PolyPolygon(HDC hdc, const POINT* points, const INT* counts,
                                         int polygonCount) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !a->hdc || (hdc && hdc != a->hdc) || !points || !counts || polygonCount <= 0)
    return false;
  PrepareAreaVerb(port, *a, Verb::Paint);
  SetBkMode(a->hdc, OPAQUE);
  a->selectedBackgroundMode = OPAQUE;
  SetLastError(0);
  PolyPolygon(a->hdc, points, counts, polygonCount);
  return GetLastError() == 0;
}
