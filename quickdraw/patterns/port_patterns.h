// A port's three patterns. A plain port holds them in its record; a colour
// port holds pixel patterns, and an old-style pattern goes into the port's
// own pixel pattern, made on demand.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

void SetBackPattern(GrafPtr port, const Pattern& pat);
void SetFillPattern(GrafPtr port, const Pattern& pat);
// PenPat's work, including the pen style it implies.
void SetPenPattern(GrafPtr port, const Pattern& pat);
Pattern PenPatternOf(GrafPtr port);
Pattern BackPatternOf(GrafPtr port);
Pattern FillPatternOf(GrafPtr port);

// What a verb paints with: a pattern and its two colours.
enum class PatternSelector { Pen, Back, Fill };
struct PatternPaint {
  Pattern pat;
  COLORREF fg;
  COLORREF bk;
  PixPatHandle colourPattern;  // a full-colour pattern, drawn from its pixels
};
PatternPaint PaintOf(GrafPtr port, const PortAttr& a, PatternSelector which);

}  // namespace kwe::quickdraw
