// A Toolbox pattern as a GDI brush. A monochrome pattern brush draws its 0
// bits in the DC's text colour and its 1 bits in the background colour, so
// each row goes in inverted: the Macintosh's 1 bits are the foreground.
#include "quickdraw/patterns/pattern_brush.h"

#include <cstring>

#include "quickdraw/colour/colour_arithmetic.h"
#include "quickdraw/patterns/colour_pattern.h"
#include "quickdraw/patterns/port_patterns.h"

namespace kwe::quickdraw {
namespace {

// A brush of a monochrome DDB (16-bit rows) reaches an enhanced metafile
// misread, every other row black, so the pattern goes in as a 1-bit DIB
// (32-bit rows, bottom-up) with its two colours in the table: 1 bits, the
// Macintosh's foreground, take fg. Palette-relative colours have no RGB to
// put in a table and keep the DDB brush, which takes the DC's text and
// background colours.
HBRUSH MakeBrush(const Pattern& pat, COLORREF fg, COLORREF bk) {
  if (PatternIsSolid(pat, 0xFF)) return CreateSolidBrush(fg);
  if (PatternIsSolid(pat, 0x00)) return CreateSolidBrush(bk);
  if ((fg | bk) >> 24 == 0) {
    struct {
      BITMAPINFOHEADER header;
      RGBQUAD colours[2];
      DWORD rows[8];
    } dib{};
    dib.header = BITMAPINFOHEADER{sizeof dib.header, 8, 8, 1, 1, BI_RGB, 0, 0, 0, 2, 0};
    for (int i = 0; i < 2; ++i) {
      COLORREF c = i ? fg : bk;
      dib.colours[i] = RGBQUAD{GetBValue(c), GetGValue(c), GetRValue(c), 0};
    }
    for (int i = 0; i < 8; ++i) dib.rows[7 - i] = pat.pat[i];  // the first byte of each row
    if (HBRUSH brush = CreateDIBPatternBrushPt(&dib, DIB_RGB_COLORS)) return brush;
  }
  WORD rows[8];  // monochrome bitmap rows are 16-bit aligned
  for (int i = 0; i < 8; ++i) rows[i] = static_cast<WORD>(static_cast<UInt8>(~pat.pat[i]));
  HBITMAP bits = CreateBitmap(8, 8, 1, 1, rows);
  if (!bits) return nullptr;
  HBRUSH brush = CreatePatternBrush(bits);
  DeleteObject(bits);  // the brush keeps its own copy
  return brush;
}

}  // namespace

bool PatternIsSolid(const Pattern& pat, UInt8 value) {
  for (UInt8 row : pat.pat)
    if (row != value) return false;
  return true;
}

// A brush that cannot be made falls back to the stock gray brush.
HBRUSH SelectPaintBrush(PortAttr& a, const PatternPaint& paint) {
  PixPatHandle pp = paint.colourPattern;
  if (!pp || !*pp) return SelectPatternBrush(a, paint.pat, paint.fg, paint.bk);
  bool same = a.penPatternBrush && a.brushColourPattern == pp && (*pp)->patXValid != -1;
  if (!same) {
    Pattern pat;
    RGBColor fg, bk;
    HBRUSH brush = MakeColourPatternBrush(pp, &pat, &fg, &bk);
    if (!brush) return SelectPatternBrush(a, pat, ColorRefOf(fg), ColorRefOf(bk));
    SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
    if (a.penPatternBrush) DeleteObject(a.penPatternBrush);
    a.penPatternBrush = brush;
    a.brushColourPattern = pp;
    (*pp)->patXValid = 0;
  }
  if (a.brush != a.penPatternBrush || !same) {
    SelectObject(a.hdc, a.penPatternBrush);
    a.brush = a.penPatternBrush;
  }
  return a.penPatternBrush;
}

HBRUSH SelectPatternBrush(PortAttr& a, const Pattern& pat, COLORREF fg, COLORREF bk) {
  bool same = a.penPatternBrush && !a.brushColourPattern &&
              std::memcmp(&pat, &a.penBrushPattern, sizeof pat) == 0 && a.penBrushFg == fg &&
              a.penBrushBk == bk;
  if (!same) {
    HBRUSH brush = MakeBrush(pat, fg, bk);
    a.brushColourPattern = nullptr;
    SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
    if (a.penPatternBrush) DeleteObject(a.penPatternBrush);
    a.penPatternBrush = brush;
    a.penBrushPattern = pat;
    a.penBrushFg = fg;
    a.penBrushBk = bk;
    if (!brush) {
      a.brush = static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH));
      SelectObject(a.hdc, a.brush);
      return a.brush;
    }
  }
  if (a.selectedTextColorRef != fg) {
    SetTextColor(a.hdc, fg);
    a.selectedTextColorRef = fg;
  }
  if (a.selectedBkColorRef != bk) {
    SetBkColor(a.hdc, bk);
    a.selectedBkColorRef = bk;
  }
  if (a.brush != a.penPatternBrush || !same) {
    if (a.brushAlignCount) {
      SetBrushOrgEx(a.hdc, a.brushOriginH, a.brushOriginV, nullptr);
      UnrealizeObject(a.penPatternBrush);
    }
    SelectObject(a.hdc, a.penPatternBrush);
    a.brush = a.penPatternBrush;
  }
  return a.penPatternBrush;
}

void AlignBrushToPort(PortAttr& a) {
  if (!a.brushAlignCount) return;
  int h = a.port->portRect.left, v = a.port->portRect.top;
  LocalToDevice(a, &h, &v);
  POINT p{h, v};
  if (a.offscreenActive) {
    p.x -= a.offscreenH;
    p.y -= a.offscreenV;
  } else if (HWND w = WindowOf(a)) {
    ClientToScreen(w, &p);
  }
  int16_t originH = static_cast<int16_t>(-p.x & 7), originV = static_cast<int16_t>(-p.y & 7);
  if (originH == a.brushOriginH && originV == a.brushOriginV) return;
  a.brushOriginH = originH;
  a.brushOriginV = originV;
  if (a.hdc && a.brush) SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
  a.brush = nullptr;
}

}  // namespace kwe::quickdraw
