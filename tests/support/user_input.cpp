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

void WhileModal(std::vector<std::function<void()>> steps, const std::function<void()>& call,
                UINT interval) {
  UINT idle = 0;
  TimedSteps run(std::move(steps), interval, [&idle, interval] {
    if ((++idle) * interval < 1000) return;
    if (HWND front = GetForegroundWindow()) PostKey(front, VK_ESCAPE);
    idle = 0;
  });
  call();
}

}  // namespace kwe_test
