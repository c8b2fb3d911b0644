// Foreground and background colours of plain and colour ports, and the
// colour-port extras (op colour, highlight colour).
#include <windows.h>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/colour/colour_arithmetic.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

SInt32 g_colourTableSeed = 0x00010101;

// What the DC gets: on a 1-bit device only black or white.
RGBColor AsDrawn(const PortAttr& a, const RGBColor& rgb) {
  return a.deviceDepth == 1 ? ReducedToBlackOrWhite(rgb) : rgb;
}

void UseForeground(PortAttr& a, const RGBColor& rgb) {
  a.fgRGB = AsDrawn(a, rgb);
  COLORREF ref = ColorRefOf(a.fgRGB);
  if (ref != a.fgColorRef) a.dirty |= kPenDirty;
  a.fgColorRef = ref;
}

void UseBackground(PortAttr& a, const RGBColor& rgb) {
  a.bkRGB = AsDrawn(a, rgb);
  a.bkColorRef = ColorRefOf(a.bkRGB);
}

}  // namespace

GrafVars* GrafVarsOf(GrafPtr port) {
  if (!IsColourPort(port)) return nullptr;
  Handle h = AsColour(port)->grafVars;
  return h && *h && GetHandleSize(h) >= static_cast<Size>(sizeof(GrafVars))
             ? reinterpret_cast<GrafVars*>(*h)
             : nullptr;
}

void ApplyForeColor(SInt32 color) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  RGBColor rgb;
  if (!a || !ColourOfConstant(color, &rgb)) return;
  if (color != port->fgColor) a->dirty |= kPenDirty;
  port->fgColor = color;
  UseForeground(*a, rgb);
  if (IsColourPort(port)) AsColour(port)->rgbFgColor = rgb;
}

void ApplyBackColor(SInt32 color) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  RGBColor rgb;
  if (!a || !ColourOfConstant(color, &rgb)) return;
  port->bkColor = color;
  UseBackground(*a, rgb);
  if (IsColourPort(port)) AsColour(port)->rgbBkColor = rgb;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL ForeColor(SInt32 color) { ApplyForeColor(color); }
KWE_API void KWE_CALL BackColor(SInt32 color) { ApplyBackColor(color); }

static bool SameColour(const RGBColor& x, const RGBColor& y) {
  return x.red == y.red && x.green == y.green && x.blue == y.blue;
}

// A plain port holds only the eight old colours: the nearest one is used.
KWE_API void KWE_CALL RGBForeColor(const RGBColor* color) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!color || !a) return;
  if (!IsColourPort(port)) {
    ApplyForeColor(ConstantNearest(*color));
    return;
  }
  CGrafPtr c = AsColour(port);
  if (SameColour(*color, c->rgbFgColor)) return;
  c->rgbFgColor = *color;
  UseForeground(*a, *color);
  a->dirty |= kPenDirty;
}

KWE_API void KWE_CALL RGBBackColor(const RGBColor* color) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!color || !a) return;
  if (!IsColourPort(port)) {
    ApplyBackColor(ConstantNearest(*color));
    return;
  }
  CGrafPtr c = AsColour(port);
  if (SameColour(*color, c->rgbBkColor)) return;
  c->rgbBkColor = *color;
  UseBackground(*a, *color);
}

KWE_API void KWE_CALL GetForeColor(RGBColor* color) {
  GrafPtr port = CurrentPort();
  if (!color || !CurrentAttr()) return;
  if (IsColourPort(port))
    *color = AsColour(port)->rgbFgColor;
  else if (!ColourOfConstant(port->fgColor, color))
    *color = RGBColor{0, 0, 0};
}

KWE_API void KWE_CALL GetBackColor(RGBColor* color) {
  GrafPtr port = CurrentPort();
  if (!color || !CurrentAttr()) return;
  if (IsColourPort(port))
    *color = AsColour(port)->rgbBkColor;
  else if (!ColourOfConstant(port->bkColor, color))
    *color = RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
}

KWE_API void KWE_CALL OpColor(const RGBColor* color) {
  if (GrafVars* vars = color && CurrentAttr() ? GrafVarsOf(CurrentPort()) : nullptr)
    vars->rgbOpColor = *color;
}

KWE_API void KWE_CALL HiliteColor(const RGBColor* color) {
  if (GrafVars* vars = color && CurrentAttr() ? GrafVarsOf(CurrentPort()) : nullptr)
    vars->rgbHiliteColor = *color;
}

KWE_API void KWE_CALL InvertColor(RGBColor* color) {
  if (color && !ComplementByProcedure(color)) *color = OppositeHue(*color);
}

KWE_API SInt32 KWE_CALL GetCTSeed(void) { return ++g_colourTableSeed; }
