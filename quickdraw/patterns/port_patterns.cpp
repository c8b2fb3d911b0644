// The pen, background and fill patterns of plain and colour ports.
#include "quickdraw/patterns/port_patterns.h"

#include <cstring>

#include "frame/low_memory.h"
#include "quickdraw/colour/colour_arithmetic.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

// The port's own pixel pattern in slot, installed as the port's pattern.
PixPatHandle OwnPixPat(PortAttr* a, PixPatHandle PortAttr::*own, PixPatHandle* installed,
                       const Pattern& pat) {
  if (!a) return nullptr;
  if (!(a->*own)) a->*own = MakePixPat(pat);
  SetPixPatPattern(a->*own, pat);
  *installed = a->*own;
  return a->*own;
}

Pattern PatternOfPixPat(PixPatHandle pp) {
  return pp && *pp ? (*pp)->pat1Data : lowmem::At<Pattern>(lowmem::Slot::Black);
}

}  // namespace

void SetBackPattern(GrafPtr port, const Pattern& pat) {
  if (IsColourPort(port))
    OwnPixPat(AttrOf(port), &PortAttr::backPixPat, &AsColour(port)->bkPixPat, pat);
  else
    port->bkPat = pat;
}

void SetFillPattern(GrafPtr port, const Pattern& pat) {
  if (IsColourPort(port))
    OwnPixPat(AttrOf(port), &PortAttr::fillPixPat, &AsColour(port)->fillPixPat, pat);
  else
    port->fillPat = pat;
}

// A solid black pen is a GDI pen; any other pattern is drawn with a pattern
// brush. In patXor the style flips back to solid when it was patterned, as
// the Macintosh draws an exclusive-or pen.
void SetPenPattern(GrafPtr port, const Pattern& pat) {
  PortAttr* a = AttrOf(port);
  if (IsColourPort(port))
    OwnPixPat(a, &PortAttr::penPixPat, &AsColour(port)->pnPixPat, pat);
  else
    port->pnPat = pat;
  if (!a) return;
  bool black = std::memcmp(&pat, &lowmem::At<Pattern>(lowmem::Slot::Black), sizeof pat) == 0;
  int16_t style = black ? PS_SOLID : PS_DOT;
  if (!black && port->pnMode == patXor && a->penStyle == PS_DOT) style = PS_SOLID;
  if (style != a->penStyle) a->dirty |= kPenDirty;
  a->penStyle = style;
}

Pattern PenPatternOf(GrafPtr port) {
  return IsColourPort(port) ? PatternOfPixPat(AsColour(port)->pnPixPat) : port->pnPat;
}

Pattern BackPatternOf(GrafPtr port) {
  return IsColourPort(port) ? PatternOfPixPat(AsColour(port)->bkPixPat) : port->bkPat;
}

Pattern FillPatternOf(GrafPtr port) {
  return IsColourPort(port) ? PatternOfPixPat(AsColour(port)->fillPixPat) : port->fillPat;
}

// A plain port's patterns draw in its two colours; a colour port's pixel
// patterns too, except an RGB pattern, which is its one colour throughout.
PatternPaint PaintOf(GrafPtr port, const PortAttr& a, PatternSelector which) {
  PatternPaint paint{{}, a.fgColorRef, a.bkColorRef, nullptr};
  if (!IsColourPort(port)) {
    paint.pat = which == PatternSelector::Pen    ? port->pnPat
                : which == PatternSelector::Back ? port->bkPat
                                                 : port->fillPat;
  } else {
    CGrafPtr c = AsColour(port);
    PixPatHandle pp = which == PatternSelector::Pen    ? c->pnPixPat
                      : which == PatternSelector::Back ? c->bkPixPat
                                                       : c->fillPixPat;
    paint.pat = PatternOfPixPat(pp);
    RGBColor rgb;
    if (pp && *pp && (*pp)->patType == 1) paint.colourPattern = pp;
    if (RgbOfPixPat(pp, &rgb)) {
      std::memset(paint.pat.pat, 0xFF, sizeof paint.pat.pat);
      paint.fg = paint.bk = ColorRefOf(a.deviceDepth == 1 ? ReducedToBlackOrWhite(rgb) : rgb);
    }
  }
  return paint;
}

}  // namespace kwe::quickdraw
