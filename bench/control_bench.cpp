// The Control Manager against the Win32 calls under it, in a visible
// library window of a visible main window:
//   NewControl + DisposeControl of a push button against CreateWindowExA
//     ("button", the same style, size and font) + DestroyWindow; both sides
//     make the button visible and leave the parent's paint pending;
//   SetControlValue on a scroll bar against SetScrollInfo(SIF_POS, redraw).
#include <windows.h>

#include "Controls.h"
#include "KWEWindows.h"
#include "MacWindows.h"
#include "bench_support.h"
#include "host/shell.h"
#include "host_window_session.h"

namespace {

constexpr int kRounds = 41;  // short rounds, the median of: the machine is shared
constexpr int kButtons = 20;
constexpr int kValues = 200;

const Rect kButton{20, 20, 44, 120};
const Rect kBar{20, 200, 220, 216};

template <typename Library, typename Raw>
void Compare(const char* what, int calls, Library library, Raw raw) {
  kwe_bench::CompareByRound(what, kRounds, calls, 1e6, "us", library, raw);
}

void Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
}

void CreateAndDispose(WindowPtr w) {
  static const unsigned char title[] = {2, 'O', 'K'};
  HWND parent = KWE_GethWnd(w);
  ControlHandle probe = NewControl(w, &kButton, title, true, 0, 0, 1, pushButProc, 0);
  HFONT font = nullptr;
  HWND child = GetWindow(parent, GW_CHILD);
  font = reinterpret_cast<HFONT>(SendMessageA(child, WM_GETFONT, 0, 0));
  DisposeControl(probe);
  Pump();
  Compare(
      "NewControl/DisposeControl vs CreateWindowEx/Destroy", kButtons,
      [&] {
        for (int i = 0; i < kButtons; ++i)
          DisposeControl(NewControl(w, &kButton, title, true, 0, 0, 1, pushButProc, 0));
      },
      [&] {
        for (int i = 0; i < kButtons; ++i) {
          HWND button = CreateWindowExA(0, "button", "OK", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON,
                                        kButton.left + 300, kButton.top, 100, 24, parent, nullptr,
                                        GetModuleHandleA(nullptr), nullptr);
          SendMessageA(button, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
          DestroyWindow(button);
        }
      });
  Pump();
}

void SetValues(WindowPtr w) {
  ControlHandle bar = NewControl(w, &kBar, nullptr, true, 0, 0, 1000, scrollBarProc, 0);
  HWND raw = CreateWindowExA(0, "scrollbar", "", WS_CHILD | WS_VISIBLE | SBS_VERT, 260, 20, 16, 200,
                             KWE_GethWnd(w), nullptr, GetModuleHandleA(nullptr), nullptr);
  SCROLLINFO range{sizeof range, SIF_RANGE, 0, 1000, 0, 0, 0};
  SetScrollInfo(raw, SB_CTL, &range, FALSE);
  Pump();
  Compare(
      "SetControlValue vs SetScrollInfo (scroll bar)", kValues,
      [&] {
        for (int i = 0; i < kValues; ++i) SetControlValue(bar, SInt16(i * 5));
      },
      [&] {
        for (int i = 0; i < kValues; ++i) {
          SCROLLINFO si{sizeof si, SIF_POS, 0, 0, 0, i * 5, 0};
          SetScrollInfo(raw, SB_CTL, &si, TRUE);
        }
      });
  DisposeControl(bar);
  DestroyWindow(raw);
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("Control bench");
  static const unsigned char title[] = {5, 'B', 'e', 'n', 'c', 'h'};
  const Rect bounds{40, 40, 440, 840};
  WindowPtr w = NewWindow(nullptr, &bounds, title, true, documentProc, WindowPtr(-1), true, 0);
  Pump();

  CreateAndDispose(w);
  SetValues(w);

  DisposeWindow(w);
  return 0;
}
