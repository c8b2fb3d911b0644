// Activation from Windows: the activation messages of library windows (and
// of the host's main window, for which the front window stands in) become
// the Toolbox's pending activate and deactivate events.
#include <windows.h>

#include "frame/handle_slots.h"
#include "frame/session.h"
#include "frame/system_values.h"
#include "windows/window_manager.h"

using namespace kwe;
using namespace kwe::windows;

KWE_API SInt32 KWE_CALL KWE_EventActivate(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  ManagerState& st = State();
  const Session& s = TheSession();
  WindowPtr w = WindowOfHwnd(hwnd);
  if (msg == WM_MOUSEACTIVATE) {
    SInt32 modal = ReadSystemValue(kSysValueModalDialog);
    if (modal && HandleFromSlot<HWND>(modal) != hwnd) return MA_NOACTIVATE;
    UINT hit = LOWORD(lParam);
    HWND parent = GetParent(hwnd);
    bool child = (GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD) &&
                 (parent == s.mainWindow || (parent && parent == s.mdiClient));
    WindowPtr front = FrontWindow();
    // A click on the frame of a window behind: Windows drags or sizes it
    // next; the application sees the drag as inDrag.
    if (w && child && hit != HTCLIENT && hit != HTHSCROLL && hit != HTVSCROLL && w != front &&
        DataOf(w)) {
      PostDragPseudoPoint(w, front);
      MoveActivation(front, w);
    }
    return MA_ACTIVATE;
  }
  // While a window is being made or closed, the activation Windows (or the
  // MDI client) moves is not the application's: the library moves it itself.
  if (st.beingMade || st.beingClosed) return 0;
  bool activate;
  switch (msg) {
    case WM_ACTIVATE: activate = LOWORD(wParam) != WA_INACTIVE; break;
    case WM_MDIACTIVATE: activate = reinterpret_cast<HWND>(lParam) == hwnd; break;
    case WM_CHILDACTIVATE: activate = true; break;
    default: return 0;
  }
  if (hwnd == s.mainWindow) w = FrontWindow();
  if (!DataOf(w)) return 0;
  if (activate) {
    WindowPtr front = FrontWindow();
    // Windows raises the window it activates (a click, another program giving
    // the activation back), after this message: the list and Z-order take
    // that order now.
    if (hwnd != s.mainWindow) MoveToFrontOfGroup(w);
    if (!Peek(w)->hilited || front != w) {
      MoveActivation(front, w);
      st.selected = nullptr;
    }
    KWE_UpdateWindows(2);
  } else if (Peek(w)->hilited) {
    Deactivate(w);
  }
  return 0;
}

KWE_API void KWE_CALL KWE_ForceDeactActPair(WindowPtr off, WindowPtr on) {
  if (DataOf(off)) {
    Peek(off)->hilited = true;  // so that the deactivation takes effect
    Deactivate(off);
  }
  if (DataOf(on)) Activate(on);
}
