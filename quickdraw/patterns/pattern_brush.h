// GDI brushes for Toolbox patterns, cached in the port's record.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

bool PatternIsSolid(const Pattern& pat, UInt8 value);

// The brush that paints pat in fg (its 1 bits) and bk, selected into the
// DC with the DC's text and background colours set for it. The port keeps
// the last brush made until the pattern or a colour changes.
HBRUSH SelectPatternBrush(PortAttr& a, const Pattern& pat, COLORREF fg, COLORREF bk);
// While the port's brush-alignment counter is non-zero, patterns line up
// with the port's position on the screen rather than with the DC's origin:
// the brush origin is the screen position of portRect's top-left, negated,
// modulo 8. A changed origin takes the brush out of the DC, so that the
// next selection realigns it.
void AlignBrushToPort(PortAttr& a);

// The brush of what a verb paints with: a full-colour pixel pattern's own
// pixels (made again when its patXValid is -1), or a pattern in two colours.
struct PatternPaint;
HBRUSH SelectPaintBrush(PortAttr& a, const PatternPaint& paint);

inline HBRUSH SelectPenBrush(PortAttr& a, const Pattern& pat) {
  return SelectPatternBrush(a, pat, a.fgColorRef, a.bkColorRef);
}

}  // namespace kwe::quickdraw
