#include "library_windows.h"

#include "Dialogs.h"
#include "KWEEvents.h"
#include "KWEWindows.h"

LRESULT ForwardToLibrary(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, WNDPROC defaultProc) {
  switch (msg) {
    case WM_PAINT:  // becomes an update event; the application draws then
      if (KWE_EventUpdate(window)) return 0;
      break;
    case WM_MOUSEACTIVATE: return KWE_EventActivate(window, msg, wParam, lParam);
    case WM_ACTIVATE:
    case WM_MDIACTIVATE:
    case WM_CHILDACTIVATE: KWE_EventActivate(window, msg, wParam, lParam); break;
    case WM_NCCALCSIZE:
    case WM_NCHITTEST:
    case WM_NCPAINT:
    case WM_NCACTIVATE: return KWE_NCMessage(window, msg, wParam, lParam);
    case WM_SYSCOMMAND:  // close and zoom become pseudo-points
      if (KWE_SysCommand(0, window, UINT(wParam))) return 0;
      break;
    case WM_MOVE:
    case WM_SIZE:
    case WM_ERASEBKGND:
    case WM_HSCROLL:
    case WM_VSCROLL: return KWE_WindChange(window, msg, wParam, lParam);
    case WM_DRAWITEM:  // a dialog's user items, icons and pictures
      if (KWE_UserItem(window, msg, wParam, lParam)) return TRUE;
      break;
    case WM_COMMAND:  // clicks in the window's controls
      KWE_EventCommand(window, msg, wParam, reinterpret_cast<HWND>(lParam));
      return 0;
    case WM_GETMINMAXINFO:
      defaultProc(window, msg, wParam, lParam);
      return KWE_GetMinMaxInfo(window, reinterpret_cast<MINMAXINFO*>(lParam));
    default: break;
  }
  if ((msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) ||
      (msg >= WM_NCMOUSEMOVE && msg <= WM_NCMBUTTONDBLCLK) || msg == WM_SETCURSOR)
    return KWE_EventMouse(window, msg, wParam, lParam);
  if (msg >= WM_KEYFIRST && msg <= WM_KEYLAST) {
    KWE_EventKey(window, msg, wParam, lParam);
    // Alt+F4 and the other system keys keep working.
    if (msg == WM_SYSKEYDOWN || msg == WM_SYSKEYUP || msg == WM_SYSCHAR)
      return defaultProc(window, msg, wParam, lParam);
    return 0;
  }
  return defaultProc(window, msg, wParam, lParam);
}

LRESULT CALLBACK LibraryWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  return ForwardToLibrary(window, msg, wParam, lParam, DefWindowProcA);
}

LRESULT CALLBACK LibraryMdiWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  return ForwardToLibrary(window, msg, wParam, lParam, DefMDIChildProcA);
}

void RegisterLibraryWindowClasses(HINSTANCE instance) {
  const struct {
    const char* name;
    WNDPROC procedure;
  } classes[] = {{"KWESubWndClass", LibraryWindowProc},
                 {"KWESubMDIWndClass", LibraryMdiWindowProc}};
  for (const auto& c : classes) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = c.procedure;
    wc.cbWndExtra = 32;
    wc.hInstance = instance;
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    wc.lpszClassName = c.name;
    RegisterClassA(&wc);
  }
}
