// A Toolbox pattern as a GDI brush. A monochrome pattern brush draws its 0
// bits in the DC's text colour and its 1 bits in the background colour, so
// each row goes in inverted: the Macintosh's 1 bits are the foreground.
#include "quickdraw/pattern_brush.h"

#include <cstring>

namespace kwe::quickdraw {
namespace {

HBRUSH MakeBrush(const Pattern& pat, COLORREF fg, COLORREF bk) {
  if (PatternIsSolid(pat, 0xFF)) return CreateSolidBrush(fg);
  if (PatternIsSolid(pat, 0x00)) return CreateSolidBrush(bk);
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
HBRUSH SelectPatternBrush(PortAttr& a, const Pattern& pat, COLORREF fg, COLORREF bk) {
  bool same = a.penPatternBrush && std::memcmp(&pat, &a.penBrushPattern, sizeof pat) == 0 &&
              a.penBrushFg == fg && a.penBrushBk == bk;
  if (!same) {
    HBRUSH brush = MakeBrush(pat, fg, bk);
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
    SelectObject(a.hdc, a.penPatternBrush);
    a.brush = a.penPatternBrush;
  }
  return a.penPatternBrush;
}

}  // namespace kwe::quickdraw
