// GetPixel and GetCPixel: one pixel of the port's DC, or of the screen
// under a window port when the DC cannot show it.
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr COLORREF kUnreadable = 0x808080;

bool InClipBox(HDC dc, int x, int y) {
  RECT box;
  if (GetClipBox(dc, &box) == ERROR) return false;
  return x >= box.left && x < box.right && y >= box.top && y < box.bottom;
}

// Copied into a 1 by 1 bitmap and read as a 24-bit DIB, so that every depth
// and every kind of DC answers the same way.
COLORREF ReadOnePixel(HDC dc, int x, int y) {
  HDC memory = CreateCompatibleDC(dc);
  HBITMAP bits = CreateCompatibleBitmap(dc, 1, 1);
  COLORREF result = kUnreadable;
  if (memory && bits) {
    HGDIOBJ old = SelectObject(memory, bits);
    BitBlt(memory, 0, 0, 1, 1, dc, x, y, SRCCOPY);
    SelectObject(memory, old);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 1;
    info.bmiHeader.biHeight = 1;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    BYTE bgr[4] = {};
    if (GetDIBits(memory, bits, 0, 1, bgr, &info, DIB_RGB_COLORS) == 1)
      result = RGB(bgr[2], bgr[1], bgr[0]);
  }
  if (bits) DeleteObject(bits);
  if (memory) DeleteDC(memory);
  return result;
}

COLORREF ReadPortPixel(SInt16 h, SInt16 v) {
  PortAttr* a = CurrentAttr();
  if (!a || !a->hdc) return kUnreadable;
  int x = h, y = v;
  LocalToDevice(*a, &x, &y);
  if (InClipBox(a->hdc, x, y)) return ReadOnePixel(a->hdc, x, y);
  HWND window = a->hwnd;
  if (!window) return kUnreadable;
  POINT p{x, y};
  ClientToScreen(window, &p);
  HWND desktop = GetDesktopWindow();
  HDC screen = GetDC(desktop);
  COLORREF c = InClipBox(screen, p.x, p.y) ? ReadOnePixel(screen, p.x, p.y) : kUnreadable;
  ReleaseDC(desktop, screen);
  return c;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API Boolean KWE_CALL GetPixe(SInt16 h, SInt16 v) { return ReadPortPixel(h, v) != 0xFFFFFF; }

KWE_API void KWE_CALL GetCPixel(SInt16 h, SInt16 v, RGBColor* cPix) {
  if (!cPix) return;
  COLORREF c = ReadPortPixel(h, v);
  // Each byte repeated fills the 16-bit component: 0xAB becomes 0xABAB.
  auto widen = [](BYTE b) { return static_cast<UInt16>(b * 0x0101); };
  *cPix = RGBColor{widen(GetRValue(c)), widen(GetGValue(c)), widen(GetBValue(c))};
}
