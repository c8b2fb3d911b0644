#include "host/program_driver.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

namespace kwe_drive {
namespace {

// Written by the script's thread, read at exit on the program's.
std::atomic<int> g_checks{0};
std::atomic<int> g_failures{0};
std::atomic<bool> g_finished{false};

std::atomic<int> g_releasesAgain{0};

void Verdict() {
  if (g_releasesAgain)
    std::printf("releases sent again to a frame box's loop that missed one: %d\n",
                g_releasesAgain.load());
  std::printf("%d checks, %d failed%s\n", g_checks.load(), g_failures.load(),
              g_finished ? "" : ", the script did not reach its end");
  std::fflush(stdout);
  if (g_failures || !g_finished) _exit(1);
}

BOOL CALLBACK CollectLibraryWindow(HWND window, LPARAM list) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  if (IsWindowVisible(window) && std::string(name) == "KWESubWndClass")
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

struct ChildSearch {
  const char* text;
  HWND found;
};

BOOL CALLBACK MatchChild(HWND window, LPARAM search) {
  auto* s = reinterpret_cast<ChildSearch*>(search);
  if (TextOf(window).find(s->text) == std::string::npos) return TRUE;
  s->found = window;
  return FALSE;
}

BOOL CALLBACK DescribeWindow(HWND window, LPARAM depth) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  std::printf("%*s%s \"%s\"%s\n", int(depth) * 2, "", name, TextOf(window).c_str(),
              IsWindowVisible(window) ? "" : " (hidden)");
  if (depth == 1) EnumChildWindows(window, DescribeWindow, 2);
  return TRUE;
}

// What the program shows when a wait times out: its top-level windows and
// their children.
void DescribeWindows() {
  std::printf("windows of the program:\n");
  EnumThreadWindows(GetWindowThreadProcessId(MainWindow(), nullptr), DescribeWindow, 1);
}

// The last system command posted to the program (a system-menu choice):
// Windows' own loops for some of them hold the program.
std::atomic<WPARAM> g_lastSysCommand{0};

// Where the program's thread is when a wait times out: what USER says of it
// (a capture, a menu or move loop) and its stack as module+offset frames,
// read off the suspended thread, for nm or addr2line on the build's files.
void DescribeProgramThread() {
  DWORD id = GetWindowThreadProcessId(MainWindow(), nullptr);
  GUITHREADINFO gui = ProgramThreadInfo();
  if (gui.cbSize)
    std::printf("program thread: flags %#lx, capture %p, menu owner %p, move-size %p, button %s\n",
                gui.flags, static_cast<void*>(gui.hwndCapture),
                static_cast<void*>(gui.hwndMenuOwner), static_cast<void*>(gui.hwndMoveSize),
                GetAsyncKeyState(VK_LBUTTON) < 0 ? "down" : "up");
  std::printf("last system command taken from the queue: %#llx\n",
              static_cast<unsigned long long>(g_lastSysCommand.load()));
  if (int loop = LoopTakingInput(); loop >= 0)
    std::printf("the last marker was taken by a Windows loop, message filter code %d\n", loop);
#ifdef _WIN64
  HANDLE thread =
      OpenThread(THREAD_SUSPEND_RESUME | THREAD_GET_CONTEXT | THREAD_QUERY_INFORMATION, FALSE, id);
  if (!thread || SuspendThread(thread) == DWORD(-1)) return;
  CONTEXT context{};
  context.ContextFlags = CONTEXT_FULL;
  if (GetThreadContext(thread, &context)) {
    for (int frame = 0; frame < 48 && context.Rip; ++frame) {
      HMODULE module = nullptr;
      char name[MAX_PATH] = "?";
      GetModuleHandleExA(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<LPCSTR>(context.Rip), &module);
      if (module) GetModuleFileNameA(module, name, sizeof name);
      std::printf("  #%d %s+%#llx\n", frame,
                  std::strrchr(name, '\\') ? std::strrchr(name, '\\') + 1 : name,
                  static_cast<unsigned long long>(context.Rip - DWORD64(module)));
      DWORD64 base = 0;
      PRUNTIME_FUNCTION entry = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
      if (!entry) {  // a leaf function: its return address is on top of the stack
        context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
        context.Rsp += 8;
        continue;
      }
      void* handlerData = nullptr;
      DWORD64 establisher = 0;
      RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, entry, &context, &handlerData,
                       &establisher, nullptr);
    }
  }
  ResumeThread(thread);
  CloseHandle(thread);
#endif
  std::fflush(stdout);
}

// The markers the program's thread has taken from its queue; the hook runs
// on that thread.
std::atomic<WPARAM> g_markerSeen{0};
WPARAM g_markerPosted = 0;
const UINT g_marker = RegisterWindowMessageA("KWE driver marker");

LRESULT CALLBACK SeeMarker(int code, WPARAM removed, LPARAM message) {
  const MSG* m = reinterpret_cast<const MSG*>(message);
  if (code == HC_ACTION && removed == PM_REMOVE && m->message == g_marker) g_markerSeen = m->wParam;
  if (code == HC_ACTION && removed == PM_REMOVE && m->message == WM_SYSCOMMAND)
    g_lastSysCommand = m->wParam;
  return CallNextHookEx(nullptr, code, removed, message);
}

// Windows' modal loops (a menu's, a dialog box's, a move or size) hand each
// message they take to CallMsgFilter with their MSGF_ code: the last marker
// a loop took (0: none yet) and that loop's code, which may be 0 itself
// (MSGF_DIALOGBOX). USER's GUITHREADINFO does not always show such a loop:
// at the end of a long soak run the program's thread sat in the main
// window's system-command handling, taking every message, while USER
// showed no capture, menu or move mode.
std::atomic<WPARAM> g_markerInLoop{0};
std::atomic<int> g_loopOfMarker{0};

LRESULT CALLBACK SeeMarkerInLoop(int code, WPARAM unused, LPARAM message) {
  const MSG* m = reinterpret_cast<const MSG*>(message);
  if (code >= 0 && m->message == g_marker) {
    g_loopOfMarker = code;
    g_markerInLoop = m->wParam;
  }
  return CallNextHookEx(nullptr, code, unused, message);
}

// Windows' own loop for a frame box (zoom, close) takes only mouse
// messages and ends at the button's release; in the soak, once in some
// thousands of clicks on a document's zoom box, the loop never receives the
// release: the button is up, the window holds the capture and the program
// waits on. (A raw Win32 program under Wine clicking the zoom boxes of its
// child windows 3,000 times in the same way never showed it; the cause is
// not known.) A user then clicks again, and so does the driver: once, and
// the count is printed at the end.

bool HeldInFrameLoop() {
  GUITHREADINFO gui = ProgramThreadInfo();
  return gui.hwndCapture && !(gui.flags & (GUI_INMENUMODE | GUI_INMOVESIZE)) &&
         GetAsyncKeyState(VK_LBUTTON) >= 0;
}

void PassMarker(const std::string& step) {
  static HHOOK hook = SetWindowsHookExA(WH_GETMESSAGE, SeeMarker, nullptr,
                                        GetWindowThreadProcessId(MainWindow(), nullptr));
  static HHOOK filter = SetWindowsHookExA(WH_MSGFILTER, SeeMarkerInLoop, nullptr,
                                          GetWindowThreadProcessId(MainWindow(), nullptr));
  Check(hook && filter, "the driver's hooks are on the program's thread");
  WPARAM serial = ++g_markerPosted;
  PostMessageA(MainWindow(), g_marker, serial, 0);
  auto taken = [serial] { return g_markerSeen >= serial; };
  if (!PollFor(taken, 3000) && HeldInFrameLoop()) {
    ++g_releasesAgain;
    MouseButton(false);
  }
  WaitFor(taken, step + ": the program takes its input");
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

BOOL CALLBACK CountProcessWindow(HWND window, LPARAM count) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId()) return TRUE;
  CountWindow(window, count);
  EnumChildWindows(window, CountWindow, count);
  return TRUE;
}

BOOL CALLBACK AddUpdateRegion(HWND window, LPARAM dirty) {
  if (GetUpdateRect(window, nullptr, FALSE)) *reinterpret_cast<bool*>(dirty) = true;
  return TRUE;
}

bool AnyUpdatePending() {
  bool dirty = false;
  DWORD thread = GetWindowThreadProcessId(MainWindow(), nullptr);
  EnumThreadWindows(thread, AddUpdateRegion, reinterpret_cast<LPARAM>(&dirty));
  EnumChildWindows(MainWindow(), AddUpdateRegion, reinterpret_cast<LPARAM>(&dirty));
  return dirty;
}

}  // namespace

void Settle(const std::string& step) {
  PassMarker(step);
  WaitFor([] { return !AnyUpdatePending(); }, step + ": the program draws its windows");
  PassMarker(step);
}

void MouseTo(POINT at) {
  INPUT in{};
  in.type = INPUT_MOUSE;
  int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  in.mi.dx = (at.x * 65536 + width - 1) / width;
  in.mi.dy = (at.y * 65536 + height - 1) / height;
  in.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  SendInput(1, &in, sizeof in);
}

void MouseButton(bool down) {
  INPUT in{};
  in.type = INPUT_MOUSE;
  in.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
  SendInput(1, &in, sizeof in);
}

void Drag(POINT from, POINT to, const std::string& step) {
  MouseTo(from);
  MouseButton(true);
  Settle(step);
  MouseTo(to);
  Sleep(60);
  MouseButton(false);
  Settle(step);
}

POINT FrameSpot(HWND window, LRESULT hit) {
  RECT r;
  GetWindowRect(window, &r);
  int y = r.top + GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) / 2;
  for (int x = r.right - 2; x > r.left; x -= 2)
    if (SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == hit) return POINT{x, y};
  return POINT{-1, -1};
}

int CountProcessWindows() {
  int count = 0;
  EnumWindows(CountProcessWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

std::vector<unsigned char> CaptureWindow(HWND window, SIZE* size) {
  RECT r;
  GetWindowRect(window, &r);
  *size = SIZE{r.right - r.left, r.bottom - r.top};
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size->cx, -size->cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC dc = GetWindowDC(window), memory = CreateCompatibleDC(dc);
  HBITMAP image = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(memory, image);
  BitBlt(memory, 0, 0, size->cx, size->cy, dc, 0, 0, SRCCOPY);
  GdiFlush();
  std::vector<unsigned char> rgb(size_t(size->cx) * size_t(size->cy) * 3);
  const auto* bgrx = static_cast<const unsigned char*>(bits);
  for (size_t i = 0; bgrx && i < rgb.size() / 3; ++i)
    for (int c = 0; c < 3; ++c) rgb[i * 3 + c] = bgrx[i * 4 + 2 - c];
  SelectObject(memory, old);
  DeleteObject(image);
  DeleteDC(memory);
  ReleaseDC(window, dc);
  return rgb;
}

bool StartScript(Script script) {
  std::atexit(Verdict);
  std::thread([script] { script(); }).detach();
  return true;
}

void Finished() { g_finished = true; }

void Check(bool ok, const std::string& what) {
  ++g_checks;
  if (ok) return;
  ++g_failures;
  std::printf("FAILED: %s\n", what.c_str());
  std::fflush(stdout);
}

bool PollFor(const std::function<bool()>& condition, int ms) {
  for (int waited = 0; waited < ms; waited += 20) {
    if (condition()) return true;
    Sleep(20);
  }
  return false;
}

void WaitFor(const std::function<bool()>& condition, const std::string& what, int ms) {
  if (PollFor(condition, ms)) return Check(true, what);
  Check(false, "timed out waiting until " + what);
  DescribeWindows();
  DescribeProgramThread();
  Verdict();
}

GUITHREADINFO ProgramThreadInfo() {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (!GetGUIThreadInfo(GetWindowThreadProcessId(MainWindow(), nullptr), &info)) info = {};
  return info;
}

int LoopTakingInput() {
  WPARAM seen = g_markerSeen;
  return seen && g_markerInLoop == seen ? g_loopOfMarker.load() : -1;
}

// This process's: tests running beside it have main windows of the class too.
HWND MainWindow() {
  HWND window = nullptr;
  DWORD process = 0;
  while ((window = FindWindowExA(nullptr, window, "KWEMainWndClass", nullptr)) != nullptr)
    if (GetWindowThreadProcessId(window, &process) && process == GetCurrentProcessId()) break;
  return window;
}

std::vector<HWND> LibraryWindows() {
  std::vector<HWND> list;
  EnumThreadWindows(GetWindowThreadProcessId(MainWindow(), nullptr), CollectLibraryWindow,
                    reinterpret_cast<LPARAM>(&list));
  EnumChildWindows(MainWindow(), CollectLibraryWindow, reinterpret_cast<LPARAM>(&list));
  return list;
}

// InternalGetWindowText asks nothing of the window's thread, which may be
// inside a modal loop.
std::string TextOf(HWND window) {
  wchar_t text[256] = L"";
  int n = InternalGetWindowText(window, text, 256);
  std::string narrow;
  for (int i = 0; i < n; ++i) narrow += static_cast<char>(text[i] < 0x80 ? text[i] : '?');
  return narrow;
}

HWND ChildWithText(HWND parent, const char* text) {
  ChildSearch search{text, nullptr};
  EnumChildWindows(parent, MatchChild, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::string MenuText(HMENU menu, int position) {
  char text[128] = "";
  GetMenuStringA(menu, position, text, sizeof text, MF_BYPOSITION);
  return text;
}

void ChooseMenuItem(int menu, int item) {
  HMENU popup = GetSubMenu(GetMenu(MainWindow()), menu);
  PostMessageA(MainWindow(), WM_COMMAND, MAKEWPARAM(GetMenuItemID(popup, item), 0), 0);
}

void ClickClient(HWND window, int x, int y) {
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

COLORREF ClientPixel(HWND window, int x, int y) {
  HDC dc = GetDC(window);
  COLORREF colour = GetPixel(dc, x, y);
  ReleaseDC(window, dc);
  return colour;
}

SIZE ClientSize(HWND window) {
  RECT r{};
  GetClientRect(window, &r);
  return SIZE{r.right, r.bottom};
}

HWND WindowTitled(const std::string& title) {
  for (HWND w : LibraryWindows())
    if (TextOf(w) == title) return w;
  return nullptr;
}

void Type(const std::string& text) {
  for (char c : text) PostMessageA(MainWindow(), WM_CHAR, WPARAM(static_cast<unsigned char>(c)), 1);
}

void PressButton(HWND dialog, HWND button) {
  PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
               reinterpret_cast<LPARAM>(button));
}

HWND ClickButton(HWND dialog, const char* title) {
  HWND button = ChildWithText(dialog, title);
  Check(button != nullptr, std::string("the dialog has its ") + title + " button");
  if (button) PressButton(dialog, button);
  return button;
}

HWND WaitForDialogWith(const char* text, const std::string& what) {
  HWND found = nullptr;
  WaitFor(
      [&] {
        for (HWND w : LibraryWindows())
          if (ChildWithText(w, text)) found = w;
        return found != nullptr;
      },
      what);
  return found;
}

HWND FileDialog() {
  HWND dialog = FindWindowA("#32770", nullptr);
  return dialog && IsWindowVisible(dialog) ? dialog : nullptr;
}

// The old-style dialog's edit field, or the edit of the Explorer-style
// one's combo box (inside a ComboBoxEx32 where Wine makes one).
HWND FileNameField(HWND dialog) {
  HWND field = GetDlgItem(dialog, edt1);
  HWND combo = GetDlgItem(dialog, cmb13);
  if (!field && combo) field = FindWindowExA(combo, nullptr, "Edit", nullptr);
  if (!field && combo)
    field =
        FindWindowExA(FindWindowExA(combo, nullptr, "ComboBox", nullptr), nullptr, "Edit", nullptr);
  return field;
}

void AnswerFileDialog(const std::string& path, const std::string& step) {
  HWND dialog = nullptr;
  WaitFor([&] { return (dialog = FileDialog()) != nullptr; },
          step + " shows the common file dialog");
  HWND field = FileNameField(dialog);
  Check(field != nullptr, step + ": the dialog has a file-name field");
  SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
  PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  WaitFor([&] { return !IsWindow(dialog); }, step + ": the dialog closes on OK");
}

std::string ClipboardText() {
  std::string text;
  if (!OpenClipboard(nullptr)) return text;
  if (HANDLE data = GetClipboardData(CF_TEXT)) {
    text = static_cast<const char*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

void PutClipboardText(const std::string& text) {
  WaitFor([] { return OpenClipboard(nullptr) != 0; }, "the clipboard opens");
  EmptyClipboard();
  HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  std::memcpy(GlobalLock(data), text.c_str(), text.size() + 1);
  GlobalUnlock(data);
  SetClipboardData(CF_TEXT, data);
  CloseClipboard();
}

std::string TempFolder(const std::string& prefix) {
  char path[MAX_PATH];
  GetTempPathA(MAX_PATH, path);
  std::string folder = path + prefix + "_" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(folder.c_str(), nullptr);
  return folder;
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace kwe_drive
