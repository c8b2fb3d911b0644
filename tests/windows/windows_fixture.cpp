#include "windows/windows_fixture.h"

namespace kwe_test {

void WindowTest::SetUp() {
  SessionTest::SetUp();
  ShowWindow(mainWindow, SW_SHOW);
  GrafPtr screen = nullptr;
  InitGraf(&screen);
  InitWindows();
  Drain();
}

void WindowTest::TearDown() { SessionTest::TearDown(); }

WindowPtr WindowTest::Make(SInt16 procID, Rect bounds, bool visible, WindowPtr behind,
                           bool goAway) {
  return NewWindow(nullptr, &bounds, reinterpret_cast<const UInt8*>("\x04Test"), visible, procID,
                   behind, goAway, 0);
}

WindowPtr WindowTest::EventWindow(const EventRecord& e) {
  for (WindowPeek p = vars.WindowList; p; p = p->nextWindow)
    if (UInt32(reinterpret_cast<uintptr_t>(p)) == e.message) return reinterpret_cast<WindowPtr>(p);
  return nullptr;
}

std::vector<EventRecord> WindowTest::Drain(EventMask mask) {
  std::vector<EventRecord> events;
  EventRecord e;
  for (int empty = 0; empty < 3;) {
    if (GetNextEvent(mask, &e)) {
      events.push_back(e);
      // An application paints on an update event; until then it comes again.
      if (e.what == updateEvt) {
        BeginUpdate(EventWindow(e));
        EndUpdate(EventWindow(e));
      }
    } else {
      ++empty;
    }
  }
  return events;
}

void WindowTest::Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

}  // namespace kwe_test
