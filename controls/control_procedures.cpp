// The window procedures the controls' child windows are subclassed with.
// Each passes what it does not take to the class's own procedure.
#include <windows.h>

#include <cstdlib>

#include "KWEEvents.h"
#include "controls/control_manager.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "windows/window_manager.h"

namespace kwe::controls {
namespace {

bool IsButtonMessage(UINT msg) { return msg >= WM_LBUTTONDOWN && msg <= WM_MBUTTONDBLCLK; }

// A click on a control of a window behind (or of an inactive one) goes to
// the window instead, so that the first click activates it as the
// application expects.
bool GoesToOwner(HWND hwnd, UINT msg) {
  if (!IsButtonMessage(msg) || SessionFlag(kweFlagItemsIgnoreMouse)) return false;
  HWND owner = GetParent(hwnd);
  WindowPtr w = windows::WindowOfHwnd(owner);
  if (!w) return false;
  WindowPeek p = windows::Peek(w);
  return !(p->visible && p->hilited) && IsWindowEnabled(owner);
}

LPARAM InOwner(HWND hwnd, LPARAM lParam) {
  POINT at{SInt16(LOWORD(lParam)), SInt16(HIWORD(lParam))};
  MapWindowPoints(hwnd, GetParent(hwnd), &at, 1);
  return MAKELPARAM(at.x, at.y);
}

LRESULT Forward(WNDPROC previous, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (GoesToOwner(hwnd, msg))
    return SendMessageA(GetParent(hwnd), msg, wParam, InOwner(hwnd, lParam));
  if (!previous) return DefWindowProcA(hwnd, msg, wParam, lParam);
  return CallWindowProcA(previous, hwnd, msg, wParam, lParam);
}

// A CDEF control's window text is its handle in decimal.
ControlHandle CdefControlOf(HWND hwnd) {
  char text[32] = "";
  GetWindowTextA(hwnd, text, sizeof text);
  auto c = reinterpret_cast<ControlHandle>(std::strtoull(text, nullptr, 10));
  return c && ControlOfChild(hwnd) == c ? c : nullptr;
}

void PaintCdef(HWND hwnd) {
  PAINTSTRUCT ps;
  BeginPaint(hwnd, &ps);
  EndPaint(hwnd, &ps);
  ControlHandle c = CdefControlOf(hwnd);
  if (!c || Rec(c)->contrlVis != kVisible) return;
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(Rec(c)->contrlOwner);
  CallCdef(c, drawCntl, 0);
  SetPort(saved);
}

}  // namespace
}  // namespace kwe::controls

using namespace kwe::controls;

KWE_API LRESULT CALLBACK K_ButtonWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  LRESULT result = Forward(State().buttonProc, hwnd, msg, wParam, lParam);
  if (msg == WM_SETFOCUS || msg == WM_KILLFOCUS)
    kwe::dialogs::ButtonFocusChanged(hwnd, msg == WM_SETFOCUS);
  return result;
}

KWE_API LRESULT CALLBACK K_ScrollBarWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  return Forward(State().scrollBarProc, hwnd, msg, wParam, lParam);
}

KWE_API LRESULT CALLBACK K_ComboBoxWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  return Forward(State().comboBoxProc, hwnd, msg, wParam, lParam);
}

// The CDEF draws the control in its owner's port and answers its hit tests;
// the mouse goes to the owner as Toolbox mouse events, so the application
// sees a mouseDown in the control and calls TrackControl.
KWE_API LRESULT CALLBACK K_CDEFWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: PaintCdef(hwnd); return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP: {
      ControlHandle c = CdefControlOf(hwnd);
      if (!c || Rec(c)->contrlHilite == kInactive || GoesToOwner(hwnd, msg)) break;
      return KWE_EventMouse(GetParent(hwnd), msg, wParam, InOwner(hwnd, lParam));
    }
    default: break;
  }
  return Forward(State().buttonProc, hwnd, msg, wParam, lParam);
}
