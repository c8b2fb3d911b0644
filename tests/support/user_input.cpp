#include "support/user_input.h"

#include <gtest/gtest.h>

#include "support/timed_steps.h"

namespace kwe_test {

void SendMouse(DWORD flags, POINT at) {
  INPUT in{};
  in.type = INPUT_MOUSE;
  int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  in.mi.dx = (at.x * 65536 + width - 1) / width;
  in.mi.dy = (at.y * 65536 + height - 1) / height;
  in.mi.dwFlags = flags | (flags & MOUSEEVENTF_MOVE ? MOUSEEVENTF_ABSOLUTE : 0);
  SendInput(1, &in, sizeof in);
}

void PostKey(HWND to, UINT vk, bool shift, bool ctrl, bool alt) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_SHIFT] = shift ? 0x80 : 0;
  keys[VK_CONTROL] = ctrl ? 0x80 : 0;
  keys[VK_MENU] = alt ? 0x80 : 0;
  SetKeyboardState(keys);
  // Alt makes them system keys, with the context bit (29) set.
  LPARAM down = LPARAM(1 | (MapVirtualKeyA(vk, 0) << 16) | (alt ? 1u << 29 : 0));
  PostMessageA(to, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, vk, down);
  PostMessageA(to, alt ? WM_SYSKEYUP : WM_KEYUP, vk, down | LPARAM(3u << 30));
}

POINT FrameSpot(HWND hwnd, LRESULT hit) {
  RECT r;
  GetWindowRect(hwnd, &r);
  for (int y = r.top; y < r.bottom; ++y)
    for (int x = r.left; x < r.right; ++x)
      if (SendMessageA(hwnd, WM_NCHITTEST, 0, MAKELPARAM(x, y)) == hit) return POINT{x, y};
  ADD_FAILURE() << "no frame spot with hit test " << hit;
  return POINT{r.left, r.top};
}

void PostFrameClick(HWND hwnd, LRESULT hit) {
  POINT p = FrameSpot(hwnd, hit);
  SetCursorPos(p.x, p.y);
  PostMessageA(hwnd, WM_NCLBUTTONDOWN, WPARAM(hit), MAKELPARAM(p.x, p.y));
  PostMessageA(hwnd, WM_LBUTTONUP, 0, 0);
}

bool InThisProcess(HWND hwnd) {
  DWORD process = 0;
  return hwnd && GetWindowThreadProcessId(hwnd, &process) && process == GetCurrentProcessId();
}

namespace {

// This thread's frontmost visible, enabled top-level window: the modal one,
// since the loop disables the others.
HWND OwnFrontWindow() {
  for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT))
    if (GetWindowThreadProcessId(w, nullptr) == GetCurrentThreadId() && IsWindowVisible(w) &&
        IsWindowEnabled(w))
      return w;
  return nullptr;
}

// The tests share one desktop, and another test's program may take the
// activation between two steps: with a window it opens, or with none once
// it closes it, which Wine does not hand back. The focus is then no
// window's of this thread, and BM_CLICK on an inactive dialog's button does
// nothing. A user comes back to the program before the next key or click:
// true when it had to, so the step waits a tick for the program to take
// the activation (a dialog gives the focus back to its item at idle).
bool CameBack() {
  if (InThisProcess(GetForegroundWindow())) return false;
  HWND own = OwnFrontWindow();
  return own && SetForegroundWindow(own);
}

}  // namespace

void WhileModal(std::vector<std::function<void()>> steps, const std::function<void()>& call,
                UINT interval) {
  constexpr int kMostWaits = 10;
  int waits = 0;
  UINT idle = 0;
  TimedSteps run(
      std::move(steps), interval,
      [&idle, interval] {
        if ((++idle) * interval < 1000) return;
        if (HWND front = GetForegroundWindow()) PostKey(front, VK_ESCAPE);
        idle = 0;
      },
      [&waits] {
        if (waits < kMostWaits && CameBack()) {
          ++waits;
          return false;
        }
        waits = 0;
        return true;
      });
  call();
}

}  // namespace kwe_test
