#include "support/test_host.h"

#include "KWEEvents.h"
#include "KWEWindows.h"

namespace kwe_test {

HINSTANCE TestInstance() { return GetModuleHandleA(nullptr); }

namespace {

// Every message the Window Manager and the translators take goes to them;
// the rest to the class's default procedure.
LRESULT Forward(HWND w, UINT msg, WPARAM wParam, LPARAM lParam, WNDPROC defaultProc) {
  switch (msg) {
    case WM_PAINT:
      if (KWE_EventUpdate(w)) return 0;
      break;
    case WM_MOUSEACTIVATE: return KWE_EventActivate(w, msg, wParam, lParam);
    case WM_ACTIVATE:
    case WM_MDIACTIVATE:
    case WM_CHILDACTIVATE: KWE_EventActivate(w, msg, wParam, lParam); break;
    case WM_NCCALCSIZE:
    case WM_NCHITTEST:
    case WM_NCPAINT:
    case WM_NCACTIVATE: return KWE_NCMessage(w, msg, wParam, lParam);
    case WM_SYSCOMMAND:
      if (KWE_SysCommand(0, w, UINT(wParam))) return 0;
      break;
    case WM_MOVE:
    case WM_SIZE:
    case WM_ERASEBKGND:
    case WM_HSCROLL:
    case WM_VSCROLL: return KWE_WindChange(w, msg, wParam, lParam);
    case WM_COMMAND: KWE_EventCommand(w, msg, wParam, reinterpret_cast<HWND>(lParam)); return 0;
    case WM_GETMINMAXINFO:
      defaultProc(w, msg, wParam, lParam);
      return KWE_GetMinMaxInfo(w, reinterpret_cast<MINMAXINFO*>(lParam));
    default: break;
  }
  if ((msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) ||
      (msg >= WM_NCMOUSEMOVE && msg <= WM_NCMBUTTONDBLCLK) || msg == WM_SETCURSOR)
    return KWE_EventMouse(w, msg, wParam, lParam);
  if (msg >= WM_KEYFIRST && msg <= WM_KEYLAST) {
    KWE_EventKey(w, msg, wParam, lParam);
    if (msg == WM_SYSKEYDOWN || msg == WM_SYSKEYUP || msg == WM_SYSCHAR)
      return defaultProc(w, msg, wParam, lParam);
    return 0;
  }
  return defaultProc(w, msg, wParam, lParam);
}

LRESULT CALLBACK LibraryMdiWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  return Forward(w, msg, wParam, lParam, DefMDIChildProcA);
}

}  // namespace

LRESULT CALLBACK LibraryWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  return Forward(w, msg, wParam, lParam, DefWindowProcA);
}

void RegisterHostClasses() {
  static bool registered = false;
  if (registered) return;
  const struct {
    const char* name;
    WNDPROC procedure;
  } classes[] = {{"KWEMainWndClass", DefWindowProcA},
                 {"KWESubWndClass", LibraryWindowProc},
                 {"KWESubMDIWndClass", LibraryMdiWindowProc}};
  for (const auto& c : classes) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = c.procedure;
    wc.cbWndExtra = 32;
    wc.hInstance = TestInstance();
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = c.name;
    RegisterClassA(&wc);
  }
  registered = true;
}

HWND CreateMainWindow() {
  RegisterHostClasses();
  return CreateWindowA("KWEMainWndClass", "KWE test host", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                       nullptr, nullptr, TestInstance(), nullptr);
}

KWEGlobalsRecord GlobalsFor(HostVariables& v) { return KWEGlobalsRecordFor(&v); }

void SessionTest::SetUp() {
  mainWindow = CreateMainWindow();
  ASSERT_NE(mainWindow, nullptr);
  record = KWESessionRecord{};
  record.size = sizeof record;
  record.instance = TestInstance();
  record.mainWindow = mainWindow;
  record.flags = SessionFlags();
  FillRecord(record);
  KWE_InitSession(&record);
  KWEGlobalsRecord globals = GlobalsFor(vars);
  ASSERT_EQ(KWE_InitGlobals(&globals), 0);
}

void SessionTest::TearDown() {
  KWE_ExitSession();
  if (mainWindow) DestroyWindow(mainWindow);
}

}  // namespace kwe_test
