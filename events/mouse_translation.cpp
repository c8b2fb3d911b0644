// Mouse messages as Toolbox mouse events, in global coordinates. A double
// click is an ordinary mouseDown: applications time double clicks themselves
// with GetDblTime. The right button makes events only when the session asks
// for it (flag 0x400), or makes them with controlKey (flag 0x800).
#include <windows.h>
#include <windowsx.h>

#include "KWEEvents.h"
#include "events/event_queue.h"
#include "events/translation_state.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::events {
namespace {

constexpr UInt32 kCursorMemoryTicks = 180;

bool g_rightButtonHeld = false;
HWND g_cursorWindow = nullptr;
UInt32 g_cursorTicks = 0;

bool IsRightButton(UINT msg) {
  switch (msg) {
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONUP:
    case WM_NCRBUTTONDBLCLK: return true;
    default: return false;
  }
}

Point PointOf(LPARAM lParam) {
  return Point{static_cast<SInt16>(GET_Y_LPARAM(lParam)),
               static_cast<SInt16>(GET_X_LPARAM(lParam))};
}

void RefreshFromKeyFlags(WPARAM keyFlags) {
  UInt16 m = Modifiers() & ~(shiftKey | cmdKey | optionKey);
  if (keyFlags & MK_SHIFT) m |= shiftKey;
  if (keyFlags & MK_CONTROL) m |= cmdKey;
  if (GetKeyState(VK_MENU) < 0) m |= optionKey;
  Modifiers() = m;
}

LRESULT AnswerSetCursor(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (!ApplicationActive()) return DefWindowProcA(window, msg, wParam, lParam);
  bool client = LOWORD(lParam) == HTCLIENT;
  UInt32 now = CurrentTicks();
  // MDI children are asked over and over while the mouse rests on them.
  if (client && SessionFlag(kweFlagMDI) && window == g_cursorWindow &&
      now - g_cursorTicks < kCursorMemoryTicks)
    return 1;
  if (!(Modifiers() & btnState)) return 1;  // the tracking code keeps its cursor
  LRESULT answer = DefWindowProcA(window, msg, wParam, lParam);
  if (client) {
    g_cursorWindow = window;
    g_cursorTicks = now;
  }
  return answer;
}

}  // namespace
}  // namespace kwe::events

using namespace kwe;
using namespace kwe::events;

KWE_API LRESULT KWE_CALL KWE_EventMouse(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  UInt16 what = nullEvent;
  bool pressed = false;
  // A cursor ObscureCursor hid comes back when the mouse really moves.
  static LPARAM lastMove = -1;
  if ((msg == WM_MOUSEMOVE || msg == WM_NCMOUSEMOVE) && lParam != lastMove) {
    if (lastMove != -1) quickdraw::ShowObscuredCursor();
    lastMove = lParam;
  }
  switch (msg) {
    case WM_SETCURSOR: return AnswerSetCursor(window, msg, wParam, lParam);
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONDBLCLK:
      Modifiers() &= ~btnState;
      MousePosition() = PointOf(lParam);
      if (IsRightButton(msg)) g_rightButtonHeld = true;
      return windows::NonClientMessage(window, msg, wParam, lParam);
    case WM_NCLBUTTONUP:
    case WM_NCRBUTTONUP:
      MousePosition() = PointOf(lParam);
      what = mouseUp;
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK: {
      if (window && window == TheSession().mdiClient) break;
      POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      ClientToScreen(window, &at);
      MousePosition() = Point{static_cast<SInt16>(at.y), static_cast<SInt16>(at.x)};
      RefreshFromKeyFlags(wParam);
      what = mouseDown;
      pressed = true;
      break;
    }
    case WM_LBUTTONUP:
    case WM_RBUTTONUP: {
      POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      ClientToScreen(window, &at);
      MousePosition() = Point{static_cast<SInt16>(at.y), static_cast<SInt16>(at.x)};
      RefreshFromKeyFlags(wParam);
      what = mouseUp;
      break;
    }
    case WM_MOUSEMOVE: RefreshFromKeyFlags(wParam); break;
    case WM_NCHITTEST: MousePosition() = PointOf(lParam); break;
    default: break;
  }

  Modifiers() &= ~controlKey;
  bool right = IsRightButton(msg);
  if (what != nullEvent && (right || g_rightButtonHeld)) {
    if (SessionFlag(kweFlagRightButtonControlKey))
      Modifiers() |= controlKey;
    else if (right && !SessionFlag(kweFlagRightButtonEvents))
      what = nullEvent;
  }
  if (right) g_rightButtonHeld = pressed;
  if (what == nullEvent) return DefWindowProcA(window, msg, wParam, lParam);

  if (pressed)
    Modifiers() &= ~btnState;
  else
    Modifiers() |= btnState;
  Post(what, 0);
  return 1;
}
