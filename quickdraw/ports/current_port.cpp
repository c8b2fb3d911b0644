// The current port and the device context under it: SetPort, the screen DC,
// foreign DCs and the Window Manager's use of the screen port.
#include <windows.h>

#include <vector>

#include "KWEPorts.h"
#include "frame/session.h"
#include "quickdraw/patterns/pattern_brush.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"
#include "quickdraw/text/port_font.h"

namespace kwe::quickdraw {
namespace {

HDC g_foreignDC = nullptr;
UINT g_foreignAlign = 0;

// One KWE_SetWMgrPortDC in force.
struct WMgrFrame {
  HDC dc;
  HWND window;
  GrafPtr savedPort;
  HDC savedScreenDC;
  HWND savedScreenWindow;
  HWND savedAttrWindow;
  Rect savedPortRect;
  UINT savedAlign;
  HGDIOBJ savedFont;
};
std::vector<WMgrFrame> g_wmgrFrames;

void BindCurrentDC(PortAttr* a) { SetCurrentDC(a ? a->hdc : nullptr); }

}  // namespace

bool IsForeignDC(HDC dc) { return dc && dc == g_foreignDC; }

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// The screen DC is held only while the screen port is current, so a program
// that draws in its windows does not keep the whole screen's DC.
KWE_API void KWE_CALL SetPort(GrafPtr port) {
  GrafPtr screen = ScreenPort();
  if (!port) port = screen;
  MakeCurrent(port);
  PortAttr* a = CurrentAttr();
  ScreenState& s = MutableScreen();
  PortAttr* screenAttr = AttrOf(screen);
  if (a && port == screen) {
    if (!s.dcHeld) {
      s.dcHeld = GetDC(s.window);
      ResetGdiCache(*a);
      a->hdc = s.dcHeld;
      SetTextAlign(a->hdc, TA_BASELINE);
      KWE_ClipRgnChange(port);
    }
  } else if (screenAttr && s.dcHeld && s.wmgrNesting == 0) {
    FlushGdiState(*screenAttr);
    ReleaseDC(s.window, s.dcHeld);
    s.dcHeld = nullptr;
    screenAttr->hdc = nullptr;
  }
  BindCurrentDC(a);
}

KWE_API void KWE_CALL GetPort(GrafPtr* port) {
  if (port) *port = CurrentPort();
}

KWE_API HDC KWE_CALL KWE_GetCurrentDC(void) { return CurrentDC(); }

KWE_API HDC KWE_CALL KWE_SwaphDC(HDC dc, Boolean install) {
  HDC previous = CurrentDC();
  if (!dc) return previous;
  if (install) {
    g_foreignDC = dc;
    g_foreignAlign = GetTextAlign(dc);
    SetTextAlign(dc, TA_BASELINE);
  } else {
    if (g_foreignDC && previous == g_foreignDC) SetTextAlign(g_foreignDC, g_foreignAlign);
    g_foreignDC = nullptr;
  }
  if (PortAttr* a = CurrentAttr()) {
    ResetGdiCache(*a);
    a->hdc = dc;
    a->deviceDepth = static_cast<uint8_t>(DeviceDepthOf(dc));
  }
  SetCurrentDC(dc);
  // The new DC knows nothing of the port's clip yet.
  if (CurrentAttr()) KWE_ClipRgnChange(CurrentPort());
  return previous;
}

KWE_API HWND KWE_CALL KWE_SetWMgrPortDC(Boolean enter, HWND hwnd, HDC dc, Rect* rect) {
  ScreenState& s = MutableScreen();
  GrafPtr screen = ScreenPort();
  PortAttr* screenAttr = AttrOf(screen);
  if (!screenAttr) return nullptr;
  if (enter) {
    if (!dc || !rect) return nullptr;
    WMgrFrame f{};
    f.dc = dc;
    f.savedAlign = SetTextAlign(dc, TA_BASELINE);
    f.savedFont =
        SelectObject(dc, kwe::TheSession().fonts[kwe::kSystemFont].font
                             ? static_cast<HGDIOBJ>(kwe::TheSession().fonts[kwe::kSystemFont].font)
                             : GetStockObject(SYSTEM_FONT));
    if (!hwnd) {
      POINT origin{};
      GetDCOrgEx(dc, &origin);
      hwnd = WindowFromPoint(POINT{origin.x + rect->left + 1, origin.y + rect->top + 1});
    }
    f.window = hwnd;
    f.savedPort = CurrentPort();
    f.savedScreenDC = s.dcHeld;
    f.savedScreenWindow = s.window;
    f.savedAttrWindow = screenAttr->hwnd;
    ++s.wmgrNesting;
    ResetGdiCache(*screenAttr);
    s.dcHeld = dc;
    s.window = hwnd;
    screenAttr->hdc = dc;
    screenAttr->hwnd = hwnd;
    SetPort(screen);
    f.savedPortRect = screen->portRect;
    screen->portRect = *rect;
    KWE_PortRectChange();
    KWE_ClipRgnChange(screen);
    g_wmgrFrames.push_back(f);
    return hwnd;
  }
  if (g_wmgrFrames.empty()) return nullptr;
  WMgrFrame f = g_wmgrFrames.back();
  g_wmgrFrames.pop_back();
  screen->portRect = f.savedPortRect;
  FlushGdiState(*screenAttr);
  s.dcHeld = f.savedScreenDC;
  s.window = f.savedScreenWindow;
  screenAttr->hdc = f.savedScreenDC;
  screenAttr->hwnd = f.savedAttrWindow;
  MakeCurrent(screen);
  KWE_PortRectChange();
  --s.wmgrNesting;
  SetPort(f.savedPort);
  SelectObject(f.dc, f.savedFont);
  SetTextAlign(f.dc, f.savedAlign);
  return f.window;
}

// Each field is perturbed so that the colour calls see a change and apply.
KWE_API void KWE_CALL KWE_ChangeThePortAttr(void) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  a->dirty |= kPenDirty | kTextDirty;
  DerivePenMode(*a, port->pnMode);
  DeriveTextMode(*a, port->txMode);
  if (port->spExtra == 0 && a->hdc) SetTextJustification(a->hdc, 0, 0);
  SInt32 fg = port->fgColor, bk = port->bkColor;
  port->fgColor = fg + 1;
  port->bkColor = bk + 1;
  ApplyForeColor(fg);
  ApplyBackColor(bk);
}

KWE_API void KWE_CALL KWE_DialogFontMode(GrafPtr port, Boolean on) {
  PortAttr* a = AttrOf(port);
  if (!a) return;
  a->flags = static_cast<UInt16>(on ? a->flags | kDialogFontFlag : a->flags & ~kDialogFontFlag);
  a->dirty |= kTextDirty;
}

// -1 resets the current port's counter, 0 counts one alignment down and any
// other value counts one up; while it is non-zero pattern brushes follow the
// port's position on the screen.
KWE_API void KWE_CALL KWE_BrushAlign(SInt16 delta) {
  PortAttr* a = CurrentAttr();
  if (!a) return;
  if (delta == -1)
    a->brushAlignCount = 0;
  else if (delta != 0)
    ++a->brushAlignCount;
  else if (a->brushAlignCount > 0)
    --a->brushAlignCount;
  AlignBrushToPort(*a);
}
