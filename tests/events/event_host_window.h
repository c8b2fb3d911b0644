// A host's main window as a ported application's shell writes it: its window
// procedure forwards mouse, key and command messages to the library's
// translators. The fixture starts a session around it.
#pragma once
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "support/test_host.h"

namespace kwe_test {

// What the forwarding window procedure saw besides the translated messages.
struct HostWindowLog {
  std::vector<WPARAM> commands;       // WM_COMMAND wParams
  int userMessages = 0;               // WM_USER + 1 messages dispatched
  void (*onUserMessage)() = nullptr;  // called inside that dispatch
};
inline HostWindowLog g_windowLog;

inline LRESULT CALLBACK ForwardingWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  if ((msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) || msg == WM_SETCURSOR)
    return KWE_EventMouse(w, msg, wParam, lParam);
  if (msg >= WM_KEYFIRST && msg <= WM_KEYLAST) return KWE_EventKey(w, msg, wParam, lParam);
  if (msg == WM_COMMAND) {
    g_windowLog.commands.push_back(wParam);
    KWE_EventCommand(w, msg, wParam, reinterpret_cast<HWND>(lParam));
    return 0;
  }
  if (msg == WM_USER + 1) {
    ++g_windowLog.userMessages;
    if (g_windowLog.onUserMessage) g_windowLog.onUserMessage();
    return 0;
  }
  return DefWindowProcA(w, msg, wParam, lParam);
}

class EventTest : public SessionTest {
 protected:
  // The window procedure is the host's before the session starts, as in a shell.
  void FillRecord(KWESessionRecord& r) override {
    SetWindowLongPtrA(r.mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ForwardingWindowProc));
    ShowWindow(r.mainWindow, SW_SHOW);
    r.accelerators = accelerators;
  }
  void SetUp() override {
    g_windowLog = HostWindowLog{};
    HoldKeys({});
    SessionTest::SetUp();
    FlushEvents(everyEvent, 0);  // what Windows queued for the new window is not under test
    DrainEvents();
  }

  // Every event GetNextEvent returns now, until a null event. A pass may stop
  // one message short of the last; a few empty passes settle it.
  std::vector<EventRecord> DrainEvents(EventMask mask = everyEvent) {
    std::vector<EventRecord> events;
    EventRecord e;
    for (int empty = 0; empty < 3;) {
      if (GetNextEvent(mask, &e))
        events.push_back(e);
      else
        ++empty;
    }
    return events;
  }
  // The thread's key state: each listed key down (Caps Lock toggled on instead).
  static void HoldKeys(std::initializer_list<int> virtualKeys) {
    BYTE state[256] = {};
    for (int vk : virtualKeys) state[vk] = vk == VK_CAPITAL ? 0x01 : 0x80;
    SetKeyboardState(state);
  }
  // A key pressed (or let go) in the window, with its scan code.
  void PressKey(int vk, bool extended = false, UINT msg = WM_KEYDOWN) {
    LPARAM scan = static_cast<LPARAM>(MapVirtualKeyA(static_cast<UINT>(vk), MAPVK_VK_TO_VSC));
    LPARAM flags = (extended ? 1 << 24 : 0) | (msg == WM_KEYUP ? 0xC0000000 : 0);
    PostMessageA(mainWindow, msg, WPARAM(vk), flags | scan << 16 | 1);
  }
  // A button message at the client point (x, y).
  void Mouse(UINT msg, WPARAM keys = 0, int x = 4, int y = 4) {
    PostMessageA(mainWindow, msg, keys, MAKELPARAM(x, y));
  }

  HACCEL accelerators = nullptr;  // the session's, when set before SetUp
};

}  // namespace kwe_test
