// Coordinate scaling of dialogs laid out for 96 pixels per inch on screens
// of more, with session flag 0x0040.
#include <windows.h>

#include "Dialogs.h"
#include "frame/session.h"

namespace {

struct Resolution {
  int x, y;
};

Resolution ScreenResolution() {
  static Resolution r = [] {
    HDC dc = GetDC(nullptr);
    Resolution res{GetDeviceCaps(dc, LOGPIXELSX), GetDeviceCaps(dc, LOGPIXELSY)};
    ReleaseDC(nullptr, dc);
    return res;
  }();
  return r;
}

bool Scaling() {
  Resolution r = ScreenResolution();
  return kwe::SessionFlag(kweFlagScaleDialogs) && (r.x > 96 || r.y > 96);
}

// c * dpi / 96 toward the screen, c * 96 / dpi back, rounded half away
// from zero.
SInt16 Scale(int c, int dpi, bool toScreen) {
  int num = toScreen ? dpi : 96, den = toScreen ? 96 : dpi;
  long long twice = 2LL * c * num;
  long long q = (twice + (twice < 0 ? -den : den)) / (2LL * den);
  return SInt16(q);
}

}  // namespace

KWE_API void KWE_CALL KWE_ScaleDlgItemRect(Boolean toScreen, Rect* r) {
  if (!r || !Scaling()) return;
  Resolution res = ScreenResolution();
  *r = Rect{Scale(r->top, res.y, toScreen), Scale(r->left, res.x, toScreen),
            Scale(r->bottom, res.y, toScreen), Scale(r->right, res.x, toScreen)};
}

KWE_API void KWE_CALL KWE_ScaleDlgPoint(Boolean toScreen, Point* pt) {
  if (!pt || !Scaling()) return;
  Resolution res = ScreenResolution();
  *pt = Point{Scale(pt->v, res.y, toScreen), Scale(pt->h, res.x, toScreen)};
}

KWE_API void KWE_CALL KWE_OffsetDlgItemRect(Boolean toScreen, Rect* r) {
  if (!r || !Scaling()) return;
  int width = r->right - r->left, height = r->bottom - r->top;
  Rect s = *r;
  KWE_ScaleDlgItemRect(toScreen, &s);
  int left = (s.left + s.right - width) / 2, top = (s.top + s.bottom - height) / 2;
  *r = Rect{SInt16(top), SInt16(left), SInt16(top + height), SInt16(left + width)};
}

KWE_API void KWE_CALL KWE_ScaleDlgWindow(Boolean toScreen, Rect* r) {
  if (!r || !Scaling()) return;
  Resolution res = ScreenResolution();
  int width = r->right - r->left, height = r->bottom - r->top;
  int newWidth = Scale(width, res.x, toScreen), newHeight = Scale(height, res.y, toScreen);
  int growX = newWidth - width, growY = newHeight - height;
  // The top-left moves by half the growth, rounded up.
  int left = r->left - (growX + (growX > 0 ? 1 : 0)) / 2;
  int top = r->top - (growY + (growY > 0 ? 1 : 0)) / 2;
  *r = Rect{SInt16(top), SInt16(left), SInt16(top + newHeight), SInt16(left + newWidth)};
}
