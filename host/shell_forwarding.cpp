// The window procedures of the library's window classes: every message the
// Window Manager, the Dialog Manager and the event translators take goes to
// them, the rest to the class's default procedure.
#include "KWEDialogs.h"
#include "KWEEvents.h"
#include "KWEMenus.h"
#include "KWEWindows.h"
#include "host/shell.h"

namespace kwe::host {
namespace {

bool IsMouseMessage(UINT msg) {
  return (msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) ||
         (msg >= WM_NCMOUSEMOVE && msg <= WM_NCMBUTTONDBLCLK) || msg == WM_SETCURSOR;
}

LRESULT CALLBACK LibraryMdiWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  return ForwardToLibrary(window, msg, wParam, lParam, DefMDIChildProcA);
}

}  // namespace

LRESULT CALLBACK LibraryWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  return ForwardToLibrary(window, msg, wParam, lParam, DefWindowProcA);
}

LRESULT ForwardToLibrary(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, WNDPROC defaultProc) {
  switch (msg) {
    case WM_PAINT:  // an update event; the program draws between BeginUpdate and EndUpdate
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
    case WM_SYSCOMMAND:  // close and zoom become the pseudo-points FindWindow decodes
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
    case WM_ENTERIDLE: return KWE_EnterIdle(window, msg, wParam, lParam);
    case WM_GETMINMAXINFO:
      defaultProc(window, msg, wParam, lParam);
      return KWE_GetMinMaxInfo(window, reinterpret_cast<MINMAXINFO*>(lParam));
    default: break;
  }
  if (IsMouseMessage(msg)) return KWE_EventMouse(window, msg, wParam, lParam);
  if (msg >= WM_KEYFIRST && msg <= WM_KEYLAST) {
    KWE_EventKey(window, msg, wParam, lParam);
    // Alt+F4 and the other system keys keep working.
    if (msg == WM_SYSKEYDOWN || msg == WM_SYSKEYUP || msg == WM_SYSCHAR)
      return defaultProc(window, msg, wParam, lParam);
    return 0;
  }
  return defaultProc(window, msg, wParam, lParam);
}

void RegisterLibraryClass(HINSTANCE instance, const char* name, WNDPROC procedure, int extra) {
  WNDCLASSA wc{};
  wc.lpfnWndProc = procedure;
  wc.cbWndExtra = extra;
  wc.hInstance = instance;
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  wc.lpszClassName = name;
  RegisterClassA(&wc);
}

void RegisterLibraryClasses(HINSTANCE instance) {
  RegisterLibraryClass(instance, "KWESubWndClass", LibraryWindowProc, 32);
  RegisterLibraryClass(instance, "KWESubMDIWndClass", LibraryMdiWindowProc, 32);
}

}  // namespace kwe::host
