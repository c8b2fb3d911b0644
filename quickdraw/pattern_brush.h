// GDI brushes for Toolbox patterns, cached in the port's record.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/port_attr.h"

namespace kwe::quickdraw {

bool PatternIsSolid(const Pattern& pat, UInt8 value);

// The brush that paints pat in fg (its 1 bits) and bk, selected into the
// DC with the DC's text and background colours set for it. The port keeps
// the last brush made until the pattern or a colour changes.
HBRUSH SelectPatternBrush(PortAttr& a, const Pattern& pat, COLORREF fg, COLORREF bk);
inline HBRUSH SelectPenBrush(PortAttr& a, const Pattern& pat) {
  return SelectPatternBrush(a, pat, a.fgColorRef, a.bkColorRef);
}

}  // namespace kwe::quickdraw
