// K_ListBoxWndProc: what the library adds to a list's list box. Windows
// tracks clicks, keys and scrolling; the library notes double clicks, keeps
// rView in step with the list box's size, applies the list's options, scrolls
// grids sideways by whole columns and reports clicks to the window as
// Toolbox mouse events, so that the application sees a mouseDown and calls
// LClick.
#include <windows.h>

#include "KWEEvents.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "text/lists/list_manager.h"
#include "windows/window_manager.h"

namespace kwe::lists {
namespace {

bool IsButton(UINT msg) { return msg >= WM_LBUTTONDOWN && msg <= WM_MBUTTONDBLCLK; }

LPARAM InParent(HWND hwnd, LPARAM lParam) {
  POINT at{SInt16(LOWORD(lParam)), SInt16(HIWORD(lParam))};
  MapWindowPoints(hwnd, GetParent(hwnd), &at, 1);
  return MAKELPARAM(at.x, at.y);
}

// A click in a list of a window behind (or of an inactive one) goes to the
// window, so that the first click activates it.
bool GoesToOwner(HWND hwnd, UINT msg) {
  if (!IsButton(msg) || SessionFlag(kweFlagItemsIgnoreMouse)) return false;
  WindowPtr w = windows::WindowOfHwnd(GetParent(hwnd));
  if (!w) return false;
  WindowPeek p = windows::Peek(w);
  return !(p->visible && p->hilited) && IsWindowEnabled(GetParent(hwnd));
}

bool Printable(WPARAM key) { return key >= 32 && key <= 126; }

// The list's options: true when the message is answered without action.
bool Ignored(UInt16 flags, UINT msg, WPARAM wParam) {
  bool button = msg == WM_LBUTTONDOWN || msg == WM_LBUTTONUP || msg == WM_LBUTTONDBLCLK;
  bool key = msg == WM_KEYDOWN || msg == WM_KEYUP || msg == WM_CHAR;
  return ((flags & kIgnoreClicks) && button) ||
         ((flags & kIgnoreTyping) && key && Printable(wParam));
}

void FollowSize(ListHandle l, LPARAM lParam) {
  ListRec& r = **l;
  r.rView.right = SInt16(r.rView.left + LOWORD(lParam));
  r.rView.bottom = SInt16(r.rView.top + HIWORD(lParam));
  if (r.vScroll) (*r.vScroll)->contrlRect.bottom = r.rView.bottom;
}

// Tear-off: a press that starts a drag and ends outside the list box
// records the drop point (screen coordinates) for KWE_LTearOff's mode 2.
void TrackTearOff(ListHandle l, HWND hwnd, LPARAM lParam) {
  if (!(Rec(l)->selFlags & 1)) return;
  POINT at{SInt16(LOWORD(lParam)), SInt16(HIWORD(lParam))};
  ClientToScreen(hwnd, &at);
  if (!DragDetect(hwnd, at)) return;
  POINT drop;
  GetCursorPos(&drop);
  RECT inside;
  GetWindowRect(hwnd, &inside);
  if (Slot* s = SlotOf(l); s && s->dragHook) s->dragHook();
  if (PtInRect(&inside, drop)) return;
  ExtraOf(l).dropped = true;
  ExtraOf(l).dropPoint = Point{SInt16(drop.y), SInt16(drop.x)};
}

LRESULT Previous(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  WNDPROC previous = State().listBoxProc;
  return previous ? CallWindowProcA(previous, hwnd, msg, wParam, lParam)
                  : DefWindowProcA(hwnd, msg, wParam, lParam);
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe;
using namespace kwe::lists;

KWE_API LRESULT CALLBACK K_ListBoxWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  ListHandle l = ListOfBox(hwnd);
  if (!l) return Previous(hwnd, msg, wParam, lParam);
  if (GoesToOwner(hwnd, msg))
    return SendMessageA(GetParent(hwnd), msg, wParam, InParent(hwnd, lParam));
  UInt16 flags = SlotOf(l)->flags;
  if (Ignored(flags, msg, wParam)) return 0;
  switch (msg) {
    case WM_ERASEBKGND:
      if (State().drawNesting) return 1;
      break;
    case WM_SIZE:
      if (!ExtraOf(l).placing) FollowSize(l, lParam);
      break;
    case WM_HSCROLL:
      if (!ExtraOf(l).grid) break;
      ScrollColumns(l, LOWORD(wParam), SInt16(HIWORD(wParam)));
      return 0;
    case WM_VSCROLL:
      if (ExtraOf(l).grid && LOWORD(wParam) == SB_ENDSCROLL) return 0;
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      ExtraOf(l).doubleClick = msg == WM_LBUTTONDBLCLK;
      if (flags & kClicksToWindow)
        return KWE_EventMouse(GetParent(hwnd), WM_LBUTTONDOWN, wParam, InParent(hwnd, lParam));
      if (msg == WM_LBUTTONDOWN) TrackTearOff(l, hwnd, lParam);
      break;
    default: break;
  }
  LRESULT result = Previous(hwnd, msg, wParam, lParam);
  if (msg == WM_LBUTTONDOWN || msg == WM_LBUTTONDBLCLK || msg == WM_LBUTTONUP)
    KWE_EventMouse(GetParent(hwnd), msg, wParam, InParent(hwnd, lParam));
  if (msg == WM_VSCROLL || msg == WM_KEYDOWN || msg == WM_MOUSEWHEEL) UpdateVisible(l);
  return result;
}

KWE_API SInt32 KWE_CALL KWE_LTearOff(ListHandle lHandle, SInt16 mode, Point* param) {
  Slot* s = SlotOf(IsLive(lHandle) ? lHandle : nullptr);
  if (!s) return 0;
  Extra& e = ExtraOf(lHandle);
  switch (mode & 0x0F) {
    case 1: {
      Rec(lHandle)->selFlags = SInt8(Rec(lHandle)->selFlags | 1);
      if (mode & 0x8000) s->flags |= kTearOffOutside;
      RECT first{};
      SendMessageA(s->listBox, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
      s->dragWidth = param ? param->h : SInt16(first.right - first.left);
      s->dragHeight = param ? param->v : SInt16(first.bottom - first.top);
      e.dropped = false;
      e.dropPoint = Point{};
      return 1;
    }
    case 2: {
      bool dropped = e.dropped;
      if (dropped && param) *param = e.dropPoint;
      e.dropped = false;
      e.dropPoint = Point{};
      return dropped;
    }
    default: return 0;
  }
}

KWE_API void KWE_CALL KWE_LSetTearOffDragHook(ListHandle lHandle, ProcPtr hook) {
  Slot* s = SlotOf(IsLive(lHandle) ? lHandle : nullptr);
  if (!s) return;
  if (s->dragHook) ReleaseHostProcedure(s->dragHook);
  s->dragHook = WrapHostProcedure(hook);
}
