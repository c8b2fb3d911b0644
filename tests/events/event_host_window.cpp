#include "events/event_host_window.h"

#include "KWESession.h"

namespace kwe_test {
namespace {

HostWindowLog g_log;

LRESULT CALLBACK ForwardingWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  if ((msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) ||
      (msg >= WM_NCMOUSEMOVE && msg <= WM_NCMBUTTONDBLCLK) || msg == WM_SETCURSOR)
    return KWE_EventMouse(w, msg, wParam, lParam);
  if (msg >= WM_KEYFIRST && msg <= WM_KEYLAST) {
    KWE_EventKey(w, msg, wParam, lParam);
    return 0;
  }
  if (msg == WM_COMMAND) {
    g_log.commands.push_back(wParam);
    KWE_EventCommand(w, msg, wParam, reinterpret_cast<HWND>(lParam));
    return 0;
  }
  if (msg == WM_USER + 1) {
    ++g_log.userMessages;
    if (g_onUserMessage) g_onUserMessage();
    return 0;
  }
  return DefWindowProcA(w, msg, wParam, lParam);
}

}  // namespace

void (*g_onUserMessage)() = nullptr;
HostWindowLog& WindowLog() { return g_log; }

void EventTest::SetUp() {
  WNDCLASSA wc{};
  wc.lpfnWndProc = ForwardingWindowProc;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.lpszClassName = "EventTestHostWindow";
  RegisterClassA(&wc);
  window = CreateWindowA("EventTestHostWindow", "events", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 40,
                         320, 240, nullptr, nullptr, wc.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  KWESessionRecord record{};
  record.size = sizeof record;
  record.instance = wc.hInstance;
  record.mainWindow = window;
  record.flags = SessionFlags();
  record.accelerators = Accelerators();
  KWE_InitSession(&record);
  KWEGlobalsRecord globals = KWEGlobalsRecordFor(&vars);
  ASSERT_EQ(KWE_InitGlobals(&globals), 0);
  // Messages Windows queued while the window was made are not under test.
  FlushEvents(everyEvent, 0);
  DrainEvents();
  g_log = HostWindowLog{};
}

void EventTest::TearDown() {
  g_onUserMessage = nullptr;
  HoldKeys({});
  KWE_ExitSession();
  DestroyWindow(window);
}

std::vector<EventRecord> EventTest::DrainEvents(EventMask mask) {
  std::vector<EventRecord> events;
  EventRecord e;
  // A pass may stop one message short of the last; a few empty passes settle it.
  for (int empty = 0; empty < 3;) {
    if (GetNextEvent(mask, &e))
      events.push_back(e);
    else
      ++empty;
  }
  return events;
}

Point EventTest::GlobalPoint(int x, int y) const {
  POINT p{x, y};
  ClientToScreen(window, &p);
  return Point{static_cast<SInt16>(p.y), static_cast<SInt16>(p.x)};
}

void EventTest::HoldKeys(std::initializer_list<int> virtualKeys) {
  BYTE state[256] = {};
  for (int vk : virtualKeys) state[vk] = 0x80;
  SetKeyboardState(state);
}

}  // namespace kwe_test
