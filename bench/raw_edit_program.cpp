// The raw Win32 side of the editor bench: the least a Windows program does
// to offer what the document editor offers at start-up: a main window with
// a menu bar (File and Edit) and a multi-line edit control with scroll bars
// the size of the editor's first document, and a message loop. Its Edit
// commands carry the editor's command identifiers, so that the bench drives
// both programs with the same posted WM_COMMANDs.
#include <windows.h>

namespace {

// The identifiers the library gives the editor's Edit menu: (slot + 1) << 8
// | (item - 1), the Apple menu's items going to Windows' own places and
// File taking slot 0, Edit slot 1.
constexpr UINT kCopy = 0x203, kClear = 0x205, kSelectAll = 0x207;

HWND g_edit = nullptr;

LRESULT CALLBACK MainProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case kSelectAll: SendMessageA(g_edit, EM_SETSEL, 0, -1); return 0;
        case kCopy: SendMessageA(g_edit, WM_COPY, 0, 0); return 0;
        case kClear: SendMessageA(g_edit, WM_CLEAR, 0, 0); return 0;
      }
      break;
    case WM_DESTROY: PostQuitMessage(0); return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

HMENU MenuBar() {
  HMENU bar = CreateMenu(), file = CreatePopupMenu(), edit = CreatePopupMenu();
  const char* const fileItems[] = {"&New",        "&Open...", "&Close", "&Save",
                                   "Save &As...", nullptr,    "&Quit"};
  UINT id = 0x100;
  for (const char* item : fileItems)
    AppendMenuA(file, item ? MF_STRING : MF_SEPARATOR, item ? id++ : 0, item);
  const char* const editItems[] = {"&Undo",  nullptr,  "Cu&t",  "&Copy",
                                   "&Paste", "Cl&ear", nullptr, "Select &All"};
  id = 0x200;
  for (const char* item : editItems) AppendMenuA(edit, item ? MF_STRING : MF_SEPARATOR, id++, item);
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), "&Edit");
  return bar;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
  WNDCLASSA wc{};
  wc.lpfnWndProc = MainProc;
  wc.hInstance = instance;
  wc.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
  wc.lpszClassName = "RawEditMain";
  RegisterClassA(&wc);
  HWND main = CreateWindowA("RawEditMain", "Raw Editor", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
                            0, 800, 600, nullptr, MenuBar(), instance, nullptr);
  // The editor's first document: 400 by 260 at (20, 40).
  g_edit = CreateWindowExA(WS_EX_CLIENTEDGE, "edit", "",
                           WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                               ES_AUTOVSCROLL | ES_AUTOHSCROLL,
                           20, 40, 400, 260, main, nullptr, instance, nullptr);
  SendMessageA(g_edit, EM_LIMITTEXT, 32000, 0);
  ShowWindow(main, show);
  UpdateWindow(main);
  SetFocus(g_edit);
  MSG msg;
  while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
  return 0;
}
