#include "printing/print_status_window.h"

#include <windows.h>

#include <string>

#include "Printing.h"
#include "frame/session.h"
#include "printing/print_job.h"
#include "printing/printer.h"

namespace kwe::printing {
namespace {

constexpr char kClassName[] = "KWEPrintStatus";
constexpr int kCancelId = IDCANCEL;
HWND g_window = nullptr;

bool RegisterOnce() {
  static bool registered = false;
  if (registered) return true;
  WNDCLASSA wc{};
  wc.lpfnWndProc = K_AbortDlg;
  wc.hInstance = reinterpret_cast<HINSTANCE>(TheSession().libraryModule);
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  wc.lpszClassName = kClassName;
  registered = RegisterClassA(&wc) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
  return registered;
}

// Command-period or Escape while printing cancels, as on the Macintosh.
bool IsCancelKey(const MSG& msg) {
  if (msg.message != WM_KEYDOWN) return false;
  if (msg.wParam == VK_ESCAPE) return true;
  return msg.wParam == VK_OEM_PERIOD && (GetKeyState(VK_CONTROL) & 0x8000);
}

}  // namespace

void ShowStatusWindow(const char* documentName) {
  if (g_window || !RegisterOnce()) return;
  HINSTANCE instance = reinterpret_cast<HINSTANCE>(TheSession().libraryModule);
  std::string text = std::string("Printing \"") + documentName + "\".";
  g_window = CreateWindowExA(WS_EX_DLGMODALFRAME | WS_EX_TOPMOST, kClassName, "Printing",
                             WS_POPUP | WS_CAPTION, CW_USEDEFAULT, CW_USEDEFAULT, 320, 120,
                             TheSession().mainWindow, nullptr, instance, nullptr);
  if (!g_window) return;
  HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  HWND label = CreateWindowA("STATIC", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFT, 12, 12, 290,
                             36, g_window, nullptr, instance, nullptr);
  HWND cancel =
      CreateWindowA("BUTTON", "Cancel", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 220,
                    56, 80, 24, g_window, reinterpret_cast<HMENU>(kCancelId), instance, nullptr);
  SendMessageA(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
  SendMessageA(cancel, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
  ShowWindow(g_window, SW_SHOWNOACTIVATE);
}

void HideStatusWindow() {
  if (g_window) DestroyWindow(g_window);
  g_window = nullptr;
}

void PumpStatusWindow() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (IsCancelKey(msg)) {
      SetPrintError(iPrAbort);
      continue;
    }
    if (g_window && IsDialogMessageA(g_window, &msg)) continue;
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

}  // namespace kwe::printing

// Cancel (or closing the window) ends the job: PrError becomes iPrAbort and
// the abort procedure answers false at the next band or page.
KWE_API LRESULT CALLBACK K_AbortDlg(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  if ((msg == WM_COMMAND && LOWORD(wParam) == kwe::printing::kCancelId) || msg == WM_CLOSE) {
    kwe::printing::SetPrintError(iPrAbort);
    return 0;
  }
  return DefWindowProcA(w, msg, wParam, lParam);
}
