// Ports that draw into a Win32 window.
#include "quickdraw/ports/window_ports.h"

#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::quickdraw {

bool OpenWindowPort(GrafPtr port, bool colour, HWND hwnd) {
  HDC dc = GetDC(hwnd);
  if (!dc) return false;
  // OpenPort takes the pending DC instead of choosing one of its own.
  MutableScreen().pendingDC = dc;
  if (colour)
    OpenCPort(reinterpret_cast<CGrafPtr>(port));
  else
    OpenPort(port);
  MutableScreen().pendingDC = nullptr;
  PortAttr* a = AttrOf(port);
  if (!a) {
    ReleaseDC(hwnd, dc);
    return false;
  }
  a->flags |= kWindowPortFlag;
  a->hwnd = hwnd;
  a->ownedDC = dc;
  return true;
}

void SetWindowPortVisible(GrafPtr port, bool visible) {
  if (PortAttr* a = AttrOf(port)) a->visible = visible ? 1 : 0;
}

}  // namespace kwe::quickdraw
