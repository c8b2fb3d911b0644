#include "host/program_driver.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace kwe_drive {
namespace {

// Written by the script's thread, read at exit on the program's.
std::atomic<int> g_checks{0};
std::atomic<int> g_failures{0};
std::atomic<bool> g_finished{false};

void Verdict() {
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

}  // namespace

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

void WaitFor(const std::function<bool()>& condition, const std::string& what, int ms) {
  for (int waited = 0; waited < ms; waited += 20) {
    if (condition()) return Check(true, what);
    Sleep(20);
  }
  Check(false, "timed out waiting until " + what);
  DescribeWindows();
  Verdict();
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

}  // namespace kwe_drive
