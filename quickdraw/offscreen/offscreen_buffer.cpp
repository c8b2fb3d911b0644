// The library's temporary offscreen buffer: between KWE_BeginOffScreen and
// KWE_EndOffScreen the current port draws into a bitmap of the buffer's
// rectangle, which then goes onto the port at once. The port's DC is
// swapped for the buffer's; a viewport origin makes the port's device
// coordinates land in the bitmap, and the port's clip follows by the
// buffer's offset (offscreenH, offscreenV: the buffer's device top-left).
#include <windows.h>

#include "KWEPorts.h"
#include "QDOffscreen.h"
#include "quickdraw/copybits/raster_ops.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

struct Buffer {
  GrafPtr port = nullptr;
  HDC dc = nullptr;
  HBITMAP bitmap = nullptr;
  HGDIOBJ replaced = nullptr;
  HDC portDC = nullptr;
  RECT device{};
};
Buffer g_buffer;

void FreeBuffer() {
  if (g_buffer.dc) {
    SelectObject(g_buffer.dc, g_buffer.replaced);
    DeleteDC(g_buffer.dc);
  }
  if (g_buffer.bitmap) DeleteObject(g_buffer.bitmap);
  g_buffer = Buffer{};
}

// Puts the port's own DC back under it and rebuilds what lives in the DC.
void GiveBackDC(GrafPtr port, PortAttr& a) {
  ResetGdiCache(a);
  a.hdc = g_buffer.portDC;
  a.offscreenActive = 0;
  a.offscreenH = a.offscreenV = 0;
  SetCurrentDC(a.hdc);
  KWE_ClipRgnChange(port);
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API Boolean KWE_CALL KWE_BeginOffScreen(Boolean erase, const Rect* r) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !a->hdc) return false;
  if (a->offscreenActive || g_buffer.dc || !r || r->bottom <= r->top || r->right <= r->left)
    return a->offscreenActive != 0;
  int left = r->left, top = r->top, right = r->right, bottom = r->bottom;
  LocalToDevice(*a, &left, &top);
  LocalToDevice(*a, &right, &bottom);
  g_buffer.dc = CreateCompatibleDC(a->hdc);
  g_buffer.bitmap =
      g_buffer.dc ? CreateCompatibleBitmap(a->hdc, right - left, bottom - top) : nullptr;
  if (!g_buffer.bitmap) {
    FreeBuffer();
    return false;
  }
  g_buffer.replaced = SelectObject(g_buffer.dc, g_buffer.bitmap);
  g_buffer.port = port;
  g_buffer.portDC = a->hdc;
  g_buffer.device = RECT{left, top, right, bottom};
  SetViewportOrgEx(g_buffer.dc, -left, -top, nullptr);
  SetTextAlign(g_buffer.dc, GetTextAlign(a->hdc));
  ResetGdiCache(*a);
  a->hdc = g_buffer.dc;
  a->offscreenActive = 1;
  a->offscreenH = static_cast<int16_t>(left);
  a->offscreenV = static_cast<int16_t>(top);
  SetCurrentDC(a->hdc);
  KWE_ClipRgnChange(port);
  if (erase) EraseRect(r);
  return true;
}

KWE_API void KWE_CALL KWE_EndOffScreen(Boolean copy, Boolean excludeUpdate, SInt16 mode) {
  GrafPtr port = g_buffer.port;
  PortAttr* a = port ? AttrOf(port) : nullptr;
  if (!a || !a->offscreenActive) {
    FreeBuffer();
    return;
  }
  GiveBackDC(port, *a);
  if (copy) {
    const RECT& d = g_buffer.device;
    SetViewportOrgEx(g_buffer.dc, 0, 0, nullptr);
    int saved = SaveDC(a->hdc);
    if (excludeUpdate && a->hwnd) {
      HRGN update = CreateRectRgn(0, 0, 0, 0);
      if (GetUpdateRgn(a->hwnd, update, FALSE) > NULLREGION)
        ExtSelectClipRgn(a->hdc, update, RGN_DIFF);
      DeleteObject(update);
    }
    BitBlt(a->hdc, d.left, d.top, d.right - d.left, d.bottom - d.top, g_buffer.dc, 0, 0,
           RasterOpOfMode(mode));
    RestoreDC(a->hdc, saved);
  }
  FreeBuffer();
}
