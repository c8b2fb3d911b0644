// The List Manager against the Win32 calls under it, in a visible library
// window of a visible main window:
//   LSetCell of every cell of a 10,000-row text list against LB_ADDSTRING of
//   the same strings into a raw list box of the same size and style, each
//   side with drawing off while it fills (LDoDraw, WM_SETREDRAW) and then
//   repainted, as applications fill long lists. The strings are one
//   character long: ten thousand cells and their 2-byte lengths must stay
//   within the 32767 bytes a list's cell data may take.
#include <windows.h>

#include <string>

#include "KWELists.h"
#include "KWEWindows.h"
#include "Lists.h"
#include "MacWindows.h"
#include "bench_support.h"
#include "host/shell.h"
#include "host_window_session.h"

namespace {

// Each round takes a few tens of milliseconds a side, and its ratio swings
// with what the X server is doing: nine rounds keep the median steady.
constexpr int kRounds = 9;
constexpr int kRows = 10000;

void Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
}

void SetCells(WindowPtr w) {
  const Rect view{20, 20, 320, 220};
  const Rect bounds{0, 0, kRows, 1};
  ListHandle l = LNew(&view, &bounds, Point{0, 0}, 0, w, true, false, false, true);
  HWND box = KWE_GetHWNDFromListHandle(l);
  HWND raw = CreateWindowExA(GetWindowLongA(box, GWL_EXSTYLE), "listbox", "",
                             DWORD(GetWindowLongA(box, GWL_STYLE)), 300, 20, 200, 300,
                             KWE_GethWnd(w), nullptr, GetModuleHandleA(nullptr), nullptr);
  SendMessageA(raw, WM_SETFONT, SendMessageA(box, WM_GETFONT, 0, 0), FALSE);
  SendMessageA(raw, LB_INITSTORAGE, kRows, kRows * 2);
  Pump();
  int round = 0;
  kwe_bench::CompareByRound(
      "LSetCell (10,000 rows) vs LB_ADDSTRING", kRounds, kRows, 1e6, "us",
      [&] {
        // Each round writes other characters, so every item really changes.
        char base = char('a' + round++ % 26);
        LDoDraw(false, l);
        for (int v = 0; v < kRows; ++v) {
          char text = char(base + v % 10);
          LSetCell(&text, 1, Cell{SInt16(v), 0}, l);
        }
        LDoDraw(true, l);
        Pump();
      },
      [&] {
        SendMessageA(raw, WM_SETREDRAW, FALSE, 0);
        SendMessageA(raw, LB_RESETCONTENT, 0, 0);
        char base = char('a' + round % 26);
        for (int v = 0; v < kRows; ++v) {
          char text[2] = {char(base + v % 10), 0};
          SendMessageA(raw, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        }
        SendMessageA(raw, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(raw, nullptr, TRUE);
        Pump();
      });
  LDispose(l);
  DestroyWindow(raw);
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("List bench");
  static const unsigned char title[] = {5, 'B', 'e', 'n', 'c', 'h'};
  const Rect bounds{40, 40, 440, 840};
  WindowPtr w = NewWindow(nullptr, &bounds, title, true, documentProc, WindowPtr(-1), true, 0);
  Pump();
  SetCells(w);
  DisposeWindow(w);
  return 0;
}
