// The main window: the frame that holds the menu bar and, as children, the
// program's windows. Its menu messages go to the Menu Manager, application
// switches and clipboard changes to the Event Manager and the scrap, palette
// changes to colour QuickDraw.
#include "KWEEvents.h"
#include "KWEMenus.h"
#include "KWEPalettes.h"
#include "KWEScrap.h"
#include "KWEWindows.h"
#include "host/shell.h"

namespace kwe::host {

namespace {

HWND g_mdiClient = nullptr;
KWEMainWindowHook g_hook = nullptr;

LRESULT CALLBACK DefaultFrameProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (g_mdiClient) return DefFrameProcA(window, g_mdiClient, msg, wParam, lParam);
  return DefWindowProcA(window, msg, wParam, lParam);
}

// Answers true when msg was one of the menu bar's (*result is the answer).
bool MenuMessage(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result) {
  switch (msg) {
    case WM_INITMENUPOPUP: KWE_InitMenuMsg(reinterpret_cast<HMENU>(wParam)); return true;
    case WM_MENUSELECT: *result = KWE_MenuSelect(window, msg, wParam, lParam); return false;
    case WM_ENTERIDLE: *result = KWE_EnterIdle(window, msg, wParam, lParam); return false;
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
      if (wParam != 0) return false;  // a control's, not a menu's
      *result = KWE_MenuUserItem(window, msg, wParam, lParam);
      return true;
    default: return false;
  }
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  LRESULT answer = 0;
  if (g_hook && g_hook(window, msg, wParam, lParam, &answer)) return answer;
  if (MenuMessage(window, msg, wParam, lParam, &answer)) return answer;
  switch (msg) {
    case WM_COMMAND:  // menu items and accelerators become the pending menu command
      // Command 0 is the shell's About item, which stands for the Apple
      // menu's first item; the event translator takes 0 for "no command",
      // so it goes to the Menu Manager directly.
      if (LOWORD(wParam) == 0 && !lParam)
        KWE_EventMenuSel(0);
      else
        KWE_EventCommand(window, msg, wParam, reinterpret_cast<HWND>(lParam));
      return 0;
    case WM_USER + 1: EndProgram(0);  // ExitToShell
    case WM_CLOSE: EndProgram(0);
    case WM_ACTIVATEAPP: KWE_ActivateApp(wParam != 0); break;
    // On a palette display the front window's palette is realised when the
    // program comes forward, and again when another program changes the
    // system palette.
    case WM_QUERYNEWPALETTE: return KWE_QueryNewPalette(window);
    case WM_PALETTECHANGED: KWE_PaletteChanged(window, reinterpret_cast<HWND>(wParam)); break;
    case WM_CLIPBOARDUPDATE: KWE_DrawClipboard(); return 0;
    // The program's windows move on the screen with it: their global
    // regions (strucRgn, contRgn) are brought up to date.
    case WM_MOVE: KWE_UpdateWindows(1); break;
    default: break;
  }
  return ForwardToLibrary(window, msg, wParam, lParam, DefaultFrameProc);
}

// The MDI frame's children are the program's windows.
HWND MakeMdiClient(HINSTANCE instance, HWND frame) {
  RECT area;
  GetClientRect(frame, &area);
  CLIENTCREATESTRUCT create{nullptr, 0xFF00};
  return CreateWindowA("MDICLIENT", nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                       area.right, area.bottom, frame, nullptr, instance, &create);
}

// The host's own popup, titled with the program's name. The Menu Manager
// merges the Apple menu into it: its one item takes the text of the Apple
// menu's first item (About ...), and its command 0 chooses that item. The
// program's menus follow it in the bar.
HMENU MakeMenuBar(const char* title) {
  HMENU bar = CreateMenu();
  HMENU popup = CreatePopupMenu();
  AppendMenuA(popup, MF_STRING, 0, "About");
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), title);
  return bar;
}

}  // namespace

HWND CreateMainWindow(HINSTANCE instance, const KWEApplication& app, HWND* mdiClient) {
  g_hook = app.mainWindowHook;
  RegisterLibraryClass(instance, "KWEMainWndClass", MainWindowProc, 0);
  char name[MAX_PATH] = "";
  const char* title = app.windowTitle;
  if (!title) {
    GetModuleFileNameA(nullptr, name, sizeof name);
    const char* slash = strrchr(name, '\\');
    title = slash ? slash + 1 : name;
  }
  RECT area{0, 0, app.windowWidth, app.windowHeight};
  if (app.windowWidth <= 0 || app.windowHeight <= 0)
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  HWND main = CreateWindowA("KWEMainWndClass", title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                            area.left, area.top, area.right - area.left, area.bottom - area.top,
                            nullptr, MakeMenuBar(title), instance, nullptr);
  g_mdiClient = main && (app.sessionFlags & kweFlagMDI) ? MakeMdiClient(instance, main) : nullptr;
  *mdiClient = g_mdiClient;
  return main;
}

}  // namespace kwe::host
