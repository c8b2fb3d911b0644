#include "windows/windows_fixture.h"

#include "Memory.h"
#include "support/timed_steps.h"

namespace kwe_test {
namespace {

BOOL CALLBACK CountOne(HWND w, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  if (!GetParent(w)) EnumChildWindows(w, CountOne, count);
  return TRUE;
}

BOOL CALLBACK AddHwnd(HWND w, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(w);
  return TRUE;
}

int g_foreignActivations = 0;

// WM_ACTIVATEAPP(FALSE) reaches this thread's top-level windows only when a
// window of another thread takes the activation.
LRESULT CALLBACK CountForeignActivations(int code, WPARAM wParam, LPARAM lParam) {
  const auto* m = reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && m->message == WM_ACTIVATEAPP && !m->wParam) ++g_foreignActivations;
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK FrameWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  return DefFrameProcA(w, FindWindowExA(w, nullptr, "MDICLIENT", nullptr), msg, wParam, lParam);
}

}  // namespace

int CountUserWindows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountOne, reinterpret_cast<LPARAM>(&count));
  return count;
}

std::ostream& operator<<(std::ostream& out, const Footprint& f) {
  return out << f.windows << " windows, " << f.gdi << " GDI objects, " << f.bytes << " bytes, "
             << f.list.size() << " in the list";
}

Footprint WindowTest::Now() {
  UInt32 bytes = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &bytes);
  return Footprint{CountUserWindows(), LiveGdiObjects(), bytes, ListOrder()};
}

void WindowTest::SetUp() {
  SessionTest::SetUp();
  mdiClient = record.mdiClient;
  ShowWindow(mainWindow, SW_SHOW);
  GrafPtr screen = nullptr;
  InitGraf(&screen);
  InitWindows();
  Drain();
  g_foreignActivations = 0;
  activationHook =
      SetWindowsHookExA(WH_CALLWNDPROC, CountForeignActivations, nullptr, GetCurrentThreadId());
}

void WindowTest::TearDown() {
  if (activationHook) UnhookWindowsHookEx(activationHook);
  SessionTest::TearDown();
}

int WindowTest::ForeignActivations() { return g_foreignActivations; }

bool WindowTest::TakeBackActivation() {
  DWORD process = 0;
  GetWindowThreadProcessId(GetForegroundWindow(), &process);
  if (process == GetCurrentProcessId()) return false;
  WindowPtr front = FrontWindow();
  SetForegroundWindow(front ? GetAncestor(KWE_GethWnd(front), GA_ROOT) : mainWindow);
  Pump();
  return true;
}

void MdiWindowTest::FillRecord(KWESessionRecord& r) {
  RECT area;
  GetClientRect(r.mainWindow, &area);
  CLIENTCREATESTRUCT create{nullptr, 0xFF00};
  r.mdiClient =
      CreateWindowA("MDICLIENT", nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, area.right,
                    area.bottom, r.mainWindow, nullptr, TestInstance(), &create);
  SetWindowLongPtrA(r.mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FrameWindowProc));
}

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

std::vector<EventRecord> WindowTest::Drain(EventMask mask, bool paint) {
  std::vector<EventRecord> events;
  EventRecord e;
  for (int empty = 0; empty < kQuietPasses;) {
    if (!GetNextEvent(mask, &e)) {
      ++empty;
      continue;
    }
    empty = 0;
    events.push_back(e);
    // An application paints on an update event; until then it comes again.
    if (WindowPtr w = e.what == updateEvt ? EventWindow(e) : nullptr) {
      BeginUpdate(w);
      if (paint) PaintRect(&w->portRect);
      EndUpdate(w);
    }
  }
  return events;
}

void WindowTest::Pump() { PumpMessages(); }

std::vector<WindowPtr> WindowTest::ListOrder() {
  std::vector<WindowPtr> order;
  for (WindowPeek p = vars.WindowList; p; p = p->nextWindow)
    order.push_back(reinterpret_cast<WindowPtr>(p));
  return order;
}

std::vector<WindowPtr> WindowTest::Win32Order() {
  // EnumWindows takes the top-level windows at once: other programs' windows
  // come and go while the chain is walked.
  std::vector<HWND> windows;
  EnumWindows(AddHwnd, reinterpret_cast<LPARAM>(&windows));
  for (HWND group : {mainWindow, mdiClient})
    for (HWND h = group ? GetTopWindow(group) : nullptr; h; h = GetWindow(h, GW_HWNDNEXT))
      windows.push_back(h);
  std::vector<WindowPtr> order;
  for (HWND h : windows) {
    DWORD process = 0;
    WindowPtr w = nullptr;
    GetWindowThreadProcessId(h, &process);
    if (process == GetCurrentProcessId() && KWE_GetwPtr(h, &w)) order.push_back(w);
  }
  return order;
}

RECT WindowTest::ClientInParent(WindowPtr w) {
  HWND hwnd = KWE_GethWnd(w);
  HWND parent = GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD ? GetParent(hwnd)
                : GetWindow(hwnd, GW_OWNER)                ? mainWindow
                                                           : nullptr;
  RECT r;
  GetClientRect(hwnd, &r);
  MapWindowPoints(hwnd, parent, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

COLORREF WindowTest::Pixel(WindowPtr w, int h, int v) {
  HWND hwnd = KWE_GethWnd(w);
  HDC dc = GetDC(hwnd);
  COLORREF c = GetPixel(dc, h, v);
  ReleaseDC(hwnd, dc);
  return c;
}

void WindowTest::DuringModalLoop(std::vector<std::function<void()>> steps) {
  bool done = false;
  steps.push_back([&done] { done = true; });
  WhileModal(
      std::move(steps),
      [&] {
        for (DWORD start = GetTickCount(); !done && GetTickCount() - start < 5000; Sleep(5)) Pump();
      },
      20);
  Pump();
}

bool WindowTest::NextMouseDown(EventRecord* e) {
  for (int i = 0; i < kQuietPasses; ++i)
    if (GetNextEvent(mDownMask, e)) return true;
  return false;
}

Point WindowTest::ExpectMouseDown(SInt16 part, WindowPtr w, const std::string& where) {
  EventRecord e{};
  EXPECT_TRUE(NextMouseDown(&e)) << where;
  WindowPtr found = nullptr;
  EXPECT_EQ(FindWindow(e.where, &found), part) << where;
  EXPECT_EQ(found, w) << where;
  return e.where;
}

}  // namespace kwe_test
