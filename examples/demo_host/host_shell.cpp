#include "host_shell.h"

#include "KWEEvents.h"
#include "KWEHostGlobals.h"
#include "KWEPalettes.h"
#include "KWESession.h"
#include "KWEWindows.h"
#include "demo_clipboard.h"
#include "demo_menu_messages.h"
#include "library_windows.h"
#include "png_writer.h"

namespace {

std::vector<std::string> g_lines;
ScenePainter g_painter = nullptr;

// The application's low-memory globals: ordinary variables of the host that
// the library reads and writes through the globals record.
KWELowMemoryGlobals g_globals;

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_PAINT) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    RECT client;
    GetClientRect(window, &client);
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    SetBkMode(dc, TRANSPARENT);
    int y = 12;
    for (const std::string& line : g_lines) {
      TextOutA(dc, 12, y, line.c_str(), static_cast<int>(line.size()));
      y += 16;
    }
    if (g_painter) g_painter(dc, y + 4);
    EndPaint(window, &ps);
    return 0;
  }
  if (message == WM_COMMAND) {
    KWE_EventCommand(window, message, wParam, reinterpret_cast<HWND>(lParam));
    return 0;
  }
  if (LRESULT answer = 0; ForwardMenuMessage(window, message, wParam, lParam, &answer))
    return answer;
  if (message == WM_ACTIVATEAPP) KWE_ActivateApp(wParam != 0);
  if (message == WM_QUERYNEWPALETTE) return KWE_QueryNewPalette(window);
  if (message == WM_PALETTECHANGED) KWE_PaletteChanged(window, reinterpret_cast<HWND>(wParam));
  if (message == WM_CLIPBOARDUPDATE) KWE_DrawClipboard();
  // The Toolbox windows move on the screen with it: their global regions
  // (strucRgn, contRgn) are brought up to date.
  if (message == WM_MOVE) KWE_UpdateWindows(1);
  // Input goes to the library's translators, which post Toolbox events for
  // the application's WaitNextEvent loop; the activation stands for the
  // front window's, and the frame messages go to the Window Manager.
  return ForwardToLibrary(window, message, wParam, lParam, DefWindowProcA);
}

void RegisterClasses(HINSTANCE instance) {
  WNDCLASSA wc{};
  wc.lpfnWndProc = MainWindowProc;
  wc.hInstance = instance;
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  wc.lpszClassName = "KWEMainWndClass";
  RegisterClassA(&wc);
  RegisterLibraryWindowClasses(instance);
}

}  // namespace

HWND StartHost(HINSTANCE instance, const char* commandLine) {
  RegisterClasses(instance);
  // The Toolbox windows are its children: it paints around them.
  HWND main =
      CreateWindowA("KWEMainWndClass", "Toolbox Tour", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 6, 4,
                    1012, 760, nullptr, nullptr, instance, nullptr);
  KWESessionRecord session{};
  session.size = sizeof session;
  session.instance = instance;
  session.mainWindow = main;
  session.commandLine = commandLine;
  session.clipboardProcedure = reinterpret_cast<ProcPtr>(DemoClipboardProc);
  KWE_InitSession(&session);
  KWEGlobalsRecord globals = KWEGlobalsRecordFor(&g_globals);
  KWE_InitGlobals(&globals);
  ListenToClipboard(main);
  ShowWindow(main, SW_SHOWNORMAL);
  UpdateWindow(main);
  return main;
}

void EndHost(HWND mainWindow) {
  KWE_ExitSession();
  DestroyWindow(mainWindow);
}

const KWELowMemoryGlobals* HostGlobals() { return &g_globals; }

void SetWindowLines(const std::vector<std::string>& lines) { g_lines = lines; }
void SetScenePainter(ScenePainter painter) { g_painter = painter; }

void PostDemoInput(HWND mainWindow, HWND documentWindow, POINT click) {
  PostMessageA(mainWindow, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(120, 40));
  PostMessageA(mainWindow, WM_LBUTTONUP, 0, MAKELPARAM(120, 40));
  PostMessageA(documentWindow, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(click.x, click.y));
  PostMessageA(documentWindow, WM_LBUTTONUP, 0, MAKELPARAM(click.x, click.y));
  // The keys as a keyboard makes them, so that each key's WM_CHAR follows
  // its WM_KEYDOWN.
  SetForegroundWindow(mainWindow);
  SetFocus(mainWindow);
  for (WORD key : {WORD('H'), WORD('I'), WORD(VK_ESCAPE)}) {
    INPUT strokes[2] = {};
    for (INPUT& stroke : strokes) {
      stroke.type = INPUT_KEYBOARD;
      stroke.ki.wVk = key;
    }
    strokes[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, strokes, sizeof(INPUT));
  }
}

bool SaveWindowScreenshot(HWND window, const std::string& path) {
  RECT r;
  GetWindowRect(window, &r);
  int width = r.right - r.left, height = r.bottom - r.top;
  HDC windowDc = GetWindowDC(window);
  HDC memory = CreateCompatibleDC(windowDc);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top-down rows
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ previous = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, windowDc, 0, 0, SRCCOPY);
  GdiFlush();
  std::vector<uint8_t> rgb(size_t(width) * height * 3);
  const uint8_t* bgrx = static_cast<const uint8_t*>(bits);
  for (size_t i = 0; i < size_t(width) * height; ++i) {
    rgb[i * 3] = bgrx[i * 4 + 2];
    rgb[i * 3 + 1] = bgrx[i * 4 + 1];
    rgb[i * 3 + 2] = bgrx[i * 4];
  }
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, windowDc);
  return WritePng(path, width, height, rgb);
}
