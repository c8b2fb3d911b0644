// Moving, sizing and zooming windows, their titles, and the plain fields.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "KWEPorts.h"
#include "Memory.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/system_values.h"
#include "memory/character_conversion.h"
#include "windows/window_frame.h"
#include "windows/window_manager.h"

namespace kwe::windows {
namespace {

// The frame around a window's client area: how far the outer rectangle
// reaches past it on each side.
RECT FrameThickness(HWND hwnd) {
  RECT window, client;
  GetWindowRect(hwnd, &window);
  GetClientRect(hwnd, &client);
  MapWindowPoints(hwnd, nullptr, reinterpret_cast<POINT*>(&client), 2);
  return RECT{client.left - window.left, client.top - window.top, window.right - client.right,
              window.bottom - client.bottom};
}

bool IsChildStyle(HWND hwnd) { return (GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD) != 0; }

// The parent's client area origin on the screen: the main window's for
// pop-ups, whose bounds are kept relative to it like the children's.
POINT ParentOrigin(HWND hwnd) {
  POINT o{0, 0};
  HWND parent = IsChildStyle(hwnd) ? GetParent(hwnd) : TheSession().mainWindow;
  if (parent) ClientToScreen(parent, &o);
  return o;
}

// The current port's rectangle follows the client size.
void ResizePort(WindowPtr w, int width, int height) {
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(w);
  PortSize(SInt16(width), SInt16(height));
  SetPort(saved);
}

}  // namespace

void PlacePortRect(WindowPtr w, const Rect& r, bool redraw) {
  HWND hwnd = HwndOf(w);
  if (!hwnd) return;
  RECT frame = FrameThickness(hwnd);
  int x = r.left - frame.left, y = r.top - frame.top;
  if (!IsChildStyle(hwnd)) {
    POINT o = ParentOrigin(hwnd);
    x += o.x;
    y += o.y;
  }
  int cx = (r.right - r.left) + frame.left + frame.right;
  int cy = (r.bottom - r.top) + frame.top + frame.bottom;
  ++State().movingItself;
  SetWindowPos(hwnd, nullptr, x, y, cx, cy,
               SWP_NOZORDER | SWP_NOACTIVATE | (redraw ? 0 : SWP_NOREDRAW));
  --State().movingItself;
  RECT client;
  GetClientRect(hwnd, &client);
  ResizePort(w, client.right, client.bottom);
  RefreshAllRegions();
}

Rect StandardStateOf(WindowPtr w) {
  HWND hwnd = HwndOf(w);
  RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  HWND parent = IsChildStyle(hwnd) ? GetParent(hwnd) : TheSession().mainWindow;
  if (parent) GetClientRect(parent, &area);
  RECT frame = FrameThickness(hwnd);
  return Rect{SInt16(area.top + frame.top), SInt16(area.left + frame.left),
              SInt16(area.bottom - frame.bottom), SInt16(area.right - frame.right)};
}

}  // namespace kwe::windows

using namespace kwe;
using namespace kwe::windows;

KWE_API void KWE_CALL MoveWindo(WindowPtr theWindow, SInt16 hGlobal, SInt16 vGlobal,
                                Boolean front) {
  HWND hwnd = HwndOf(theWindow);
  if (!hwnd) return;
  RECT frame = FrameThickness(hwnd);
  RECT client;
  GetClientRect(hwnd, &client);
  int x = hGlobal - frame.left, y = vGlobal - frame.top;
  // A captioned window stays where the user can reach its title bar.
  if (GetWindowLongA(hwnd, GWL_STYLE) & WS_CAPTION) {
    RECT parentArea{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    HWND parent = IsChildStyle(hwnd) ? GetParent(hwnd) : TheSession().mainWindow;
    if (parent) GetClientRect(parent, &parentArea);
    x = std::clamp<int>(
        x, -frame.left,
        std::max<int>(-frame.left, parentArea.right - GetSystemMetrics(SM_CXVSCROLL)));
    y = std::clamp<int>(
        y, -frame.top,
        std::max<int>(-frame.top, parentArea.bottom - GetSystemMetrics(SM_CYHSCROLL)));
  }
  if (!IsChildStyle(hwnd)) {
    POINT o = ParentOrigin(hwnd);
    x += o.x;
    y += o.y;
  }
  ++State().movingItself;
  SetWindowPos(hwnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  --State().movingItself;
  RefreshAllRegions();
  if (front) SelectWindow(theWindow);
}

KWE_API void KWE_CALL SizeWindow(WindowPtr theWindow, SInt16 w, SInt16 h, Boolean fUpdate) {
  WStateData* d = DataOf(theWindow);
  HWND hwnd = HwndOf(theWindow);
  if (!d || w < 0 || h < 0) return;
  if ((d->flags & kMdiChildFlag) && IsIconic(hwnd)) return;
  RECT frame = FrameThickness(hwnd);
  ++State().movingItself;
  SetWindowPos(hwnd, nullptr, 0, 0, w + frame.left + frame.right, h + frame.top + frame.bottom,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | (fUpdate ? 0 : SWP_NOREDRAW));
  --State().movingItself;
  RECT client;
  GetClientRect(hwnd, &client);
  ResizePort(theWindow, client.right, client.bottom);
  if (d->flags & kToolWindowFlag) {
    Rect& std = d->stdState;
    std.right = SInt16(std::max<int>(std.right, std.left + client.right));
    std.bottom = SInt16(std::max<int>(std.bottom, std.top + client.bottom));
    Peek(theWindow)->spareFlag =
        client.right == std.right - std.left && client.bottom == std.bottom - std.top;
  }
  RefreshAllRegions();
}

KWE_API void KWE_CALL ZoomWindow(WindowPtr theWindow, SInt16 partCode, Boolean front) {
  WStateData* d = DataOf(theWindow);
  if (!d || (partCode != inZoomIn && partCode != inZoomOut)) return;
  if (partCode == inZoomIn) {
    PlacePortRect(theWindow, d->userState, true);
    Peek(theWindow)->spareFlag = false;
  } else {
    if (!Peek(theWindow)->spareFlag) {
      // Zooming out from the user state keeps where the window stands now,
      // also after the program's own MoveWindow and SizeWindow, which do
      // not pass through the user's WM_MOVE and WM_SIZE.
      HWND hwnd = HwndOf(theWindow);
      POINT at{0, 0}, origin = ParentOrigin(hwnd);
      RECT client;
      ClientToScreen(hwnd, &at);
      GetClientRect(hwnd, &client);
      d->userState =
          Rect{SInt16(at.y - origin.y), SInt16(at.x - origin.x),
               SInt16(at.y - origin.y + client.bottom), SInt16(at.x - origin.x + client.right)};
    }
    if (!kwe::ReadSystemValue(kSysValueStandardStateAtOnce) ||
        d->stdState.bottom <= d->stdState.top)
      d->stdState = StandardStateOf(theWindow);
    Rect target = DataOf(theWindow)->stdState;
    PlacePortRect(theWindow, target, true);
    Peek(theWindow)->spareFlag = true;
  }
  if (front) SelectWindow(theWindow);
}

KWE_API void KWE_CALL SetWTitle(WindowPtr theWindow, ConstStr255Param title) {
  WindowPeek p = Peek(theWindow);
  HWND hwnd = HwndOf(theWindow);
  if (!hwnd) return;
  size_t length = title ? title[0] : 0;
  char ansi[256];
  kwe::text::MacToAnsiBytes(title ? title + 1 : nullptr, reinterpret_cast<UInt8*>(ansi), length);
  ansi[length] = 0;
  bool quiet = p->visible && (FlagsOf(theWindow) & kToolWindowFlag);
  if (quiet) SendMessageA(hwnd, WM_SETREDRAW, FALSE, 0);
  SetWindowTextA(hwnd, ansi);
  if (quiet) {
    SendMessageA(hwnd, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(hwnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
  }
  Handle h = reinterpret_cast<Handle>(p->titleHandle);
  if (!h) return;
  SetHandleSize(h, Size(length + 1));
  if (GetHandleSize(h) != Size(length + 1)) return;
  (*h)[0] = char(length);
  if (length) std::memcpy(*h + 1, title + 1, length);
}

KWE_API void KWE_CALL GetWTitle(WindowPtr theWindow, Str255 title) {
  if (!title) return;
  title[0] = 0;
  WindowPeek p = Peek(theWindow);
  if (!DataOf(theWindow) || !p->titleHandle || !*p->titleHandle) return;
  std::memcpy(title, *p->titleHandle, size_t((*p->titleHandle)[0]) + 1);
}

KWE_API void KWE_CALL SetWRefCon(WindowPtr theWindow, SInt32 data) {
  if (theWindow) Peek(theWindow)->refCon = data;
}
KWE_API SInt32 KWE_CALL GetWRefCon(WindowPtr theWindow) {
  return theWindow ? Peek(theWindow)->refCon : 0;
}
KWE_API void KWE_CALL SetWindowPic(WindowPtr theWindow, PicHandle pic) {
  if (theWindow) Peek(theWindow)->windowPic = pic;
}
KWE_API PicHandle KWE_CALL GetWindowPic(WindowPtr theWindow) {
  return theWindow ? Peek(theWindow)->windowPic : nullptr;
}
KWE_API SInt16 KWE_CALL GetWVariant(WindowPtr theWindow) {
  if (!theWindow) return 0;
  return SInt16(reinterpret_cast<intptr_t>(Peek(theWindow)->windowDefProc) & 0xFFFF);
}

KWE_API void KWE_CALL GetWMgrPort(GrafPtr* wPort) {
  if (wPort) *wPort = kwe::lowmem::At<GrafPtr>(kwe::lowmem::Slot::WMgrPort);
}
KWE_API void KWE_CALL GetCWMgrPort(CGrafPtr* wMgrCPort) {
  if (wMgrCPort)
    *wMgrCPort = reinterpret_cast<CGrafPtr>(kwe::lowmem::At<GrafPtr>(kwe::lowmem::Slot::WMgrPort));
}
KWE_API RgnHandle KWE_CALL GetGrayRgn(void) {
  return kwe::lowmem::At<RgnHandle>(kwe::lowmem::Slot::GrayRgn);
}

KWE_API void KWE_CALL KWE_SetMinWinSize(SInt16 width, SInt16 height) {
  State().minWidth = width;
  State().minHeight = height;
}

KWE_API void KWE_CALL KWE_SetwPtrMinSize(WindowPtr window, SInt16 width, SInt16 height) {
  HWND hwnd = HwndOf(window);
  if (!hwnd) return;
  SetWindowWord(hwnd, kMinWidthWord, WORD(width));
  SetWindowWord(hwnd, kMinHeightWord, WORD(height));
}

KWE_API void KWE_CALL DrawGrowIcon(WindowPtr theWindow) {
  HWND hwnd = HwndOf(theWindow);
  if (!hwnd || IsIconic(hwnd) || !(FlagsOf(theWindow) & kGrowBoxFlag)) return;
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(theWindow);
  PenState pen;
  GetPenState(&pen);
  PenNormal();
  RECT client;
  GetClientRect(hwnd, &client);
  int cx = GetSystemMetrics(SM_CXVSCROLL), cy = GetSystemMetrics(SM_CYHSCROLL);
  RECT square{client.right - cx + 2, client.bottom - cy + 2, client.right, client.bottom};
  FillRect(KWE_GetCurrentDC(), &square, State().frameBrushes[0]);
  int dh = theWindow->portRect.left, dv = theWindow->portRect.top;
  Rect local{SInt16(square.top + dv), SInt16(square.left + dh), SInt16(square.bottom + dv),
             SInt16(square.right + dh)};
  ValidRect(&local);
  int from = (FlagsOf(theWindow) & kHorizontalScrollBarFlag) ? client.left : client.right - cx + 1;
  MoveTo(SInt16(from + dh), SInt16(client.bottom - cy + dv));
  LineTo(SInt16(client.right - cx - 1 + dh), SInt16(client.bottom - cy + dv));
  SetPenState(&pen);
  SetPort(saved);
}
