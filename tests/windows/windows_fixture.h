// A session with InitGraf and InitWindows done and the host's main window
// shown, as a ported application starts (and the same with an MDI client);
// helpers to make windows and to read back what USER and GDI hold.
#pragma once
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "Events.h"
#include "KWEWindows.h"
#include "MacWindows.h"
#include "Memory.h"
#include "support/test_host.h"
#include "support/timed_steps.h"
#include "support/user_input.h"

namespace kwe_test {

inline WindowPtr InFront() { return reinterpret_cast<WindowPtr>(intptr_t(-1)); }
inline WindowPeek PeekOf(WindowPtr w) { return reinterpret_cast<WindowPeek>(w); }
inline Point Pt(int h, int v) { return Point{SInt16(v), SInt16(h)}; }
// After a pass with nothing to make, the event calls look for activate and
// update events again only some passes later (system value 5: 32): this many
// null events in a row mean there is none.
constexpr int kQuietPasses = 40;

// The colour Windows holds at a point of a window's client area.
inline COLORREF Pixel(HWND hwnd, int h, int v) {
  HDC dc = GetDC(hwnd);
  COLORREF c = GetPixel(dc, h, v);
  ReleaseDC(hwnd, dc);
  return c;
}
inline COLORREF Pixel(WindowPtr w, int h, int v) { return Pixel(KWE_GethWnd(w), h, v); }

inline BOOL CALLBACK CountOne(HWND w, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  if (!GetParent(w)) EnumChildWindows(w, CountOne, count);
  return TRUE;
}
// Windows of this thread and all their descendants.
inline int CountUserWindows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountOne, reinterpret_cast<LPARAM>(&count));
  return count;
}

// USER's windows, GDI's objects, the Memory Manager's bytes, the window list.
struct Footprint {
  int windows, gdi;
  UInt32 bytes;
  std::vector<WindowPtr> list;
  bool operator==(const Footprint& o) const {
    return windows == o.windows && gdi == o.gdi && bytes == o.bytes && list == o.list;
  }
};
inline std::ostream& operator<<(std::ostream& out, const Footprint& f) {
  return out << f.windows << " windows, " << f.gdi << " GDI objects, " << f.bytes << " bytes, "
             << f.list.size() << " in the list";
}

// Other programs (tests running beside these) take the activation now and
// then, which deactivates the front window as the user's click on their
// window would: WM_ACTIVATEAPP(FALSE) reaches this thread's top-level
// windows only when a window of another thread takes the activation.
inline int g_foreignActivations = 0;
inline LRESULT CALLBACK CountForeignActivations(int code, WPARAM wParam, LPARAM lParam) {
  const auto* m = reinterpret_cast<const CWPSTRUCT*>(lParam);
  if (code == HC_ACTION && m->message == WM_ACTIVATEAPP && !m->wParam) ++g_foreignActivations;
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

inline BOOL CALLBACK AddHwnd(HWND w, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(w);
  return TRUE;
}

class WindowTest : public SessionTest {
 protected:
  void SetUp() override {
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
  void TearDown() override {
    if (activationHook) UnhookWindowsHookEx(activationHook);
    SessionTest::TearDown();
  }

  // A window with these bounds and procID, in front and visible by default.
  WindowPtr Make(SInt16 procID = documentProc, Rect bounds = {40, 40, 140, 200},
                 bool visible = true, WindowPtr behind = InFront(), bool goAway = true) {
    return NewWindow(nullptr, &bounds, reinterpret_cast<const UInt8*>("\x04Test"), visible, procID,
                     behind, goAway, 0);
  }
  // The window of an update or activate event (the WindowPtr's low 32 bits).
  WindowPtr EventWindow(const EventRecord& e) {
    for (WindowPeek p = vars.WindowList; p; p = p->nextWindow)
      if (UInt32(reinterpret_cast<uintptr_t>(p)) == e.message)
        return reinterpret_cast<WindowPtr>(p);
    return nullptr;
  }
  // Every event GetNextEvent returns for mask until kQuietPasses null ones;
  // update events are answered with BeginUpdate and EndUpdate (until then an
  // update comes again), and with the whole port painted black between them
  // when paint is true.
  std::vector<EventRecord> Drain(EventMask mask = everyEvent, bool paint = false) {
    std::vector<EventRecord> events;
    EventRecord e;
    for (int empty = 0; empty < kQuietPasses;) {
      if (!GetNextEvent(mask, &e)) {
        ++empty;
        continue;
      }
      empty = 0;
      events.push_back(e);
      if (WindowPtr w = e.what == updateEvt ? EventWindow(e) : nullptr) {
        BeginUpdate(w);
        if (paint) PaintRect(&w->portRect);
        EndUpdate(w);
      }
    }
    return events;
  }
  void Pump() { PumpMessages(); }  // lets Windows deliver what it has queued
  // Front to back: the WindowList, and the library's windows in Win32 Z-order
  // (this process's owned pop-ups, the main window's children, MDI children).
  std::vector<WindowPtr> ListOrder() {
    std::vector<WindowPtr> order;
    for (WindowPeek p = vars.WindowList; p; p = p->nextWindow)
      order.push_back(reinterpret_cast<WindowPtr>(p));
    return order;
  }
  std::vector<WindowPtr> Win32Order() {
    // EnumWindows takes the top-level windows at once: other programs'
    // windows come and go while the chain is walked.
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
  // The client area in the coordinates bounds are given in: the parent's
  // client area (the main window's for its pop-ups, the screen's for others).
  RECT ClientInParent(WindowPtr w) {
    HWND hwnd = KWE_GethWnd(w);
    HWND parent = GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD ? GetParent(hwnd)
                  : GetWindow(hwnd, GW_OWNER)                ? mainWindow
                                                             : nullptr;
    RECT r;
    GetClientRect(hwnd, &r);
    MapWindowPoints(hwnd, parent, reinterpret_cast<POINT*>(&r), 2);
    return r;
  }
  // Runs the steps one per timer tick while the modal loop that the posted
  // input starts runs (Windows' move and size loops take input only then).
  void DuringModalLoop(std::vector<std::function<void()>> steps) {
    bool done = false;
    steps.push_back([&done] { done = true; });
    WhileModal(
        std::move(steps),
        [&] {
          for (DWORD start = GetTickCount(); !done && GetTickCount() - start < 5000; Sleep(5))
            Pump();
        },
        20);
    Pump();
  }
  // The next mouseDown, as the application's event loop would get it.
  bool NextMouseDown(EventRecord* e) {
    for (int i = 0; i < kQuietPasses; ++i)
      if (GetNextEvent(mDownMask, e)) return true;
    return false;
  }
  // The next mouseDown, which FindWindow must decode as this part of w.
  Point ExpectMouseDown(SInt16 part, WindowPtr w, const std::string& where = "") {
    EventRecord e{};
    EXPECT_TRUE(NextMouseDown(&e)) << where;
    WindowPtr found = nullptr;
    EXPECT_EQ(FindWindo(e.where, &found), part) << where;
    EXPECT_EQ(found, w) << where;
    return e.where;
  }
  Footprint Now() {
    UInt32 bytes = 0;
    KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &bytes);
    return Footprint{CountUserWindows(), LiveGdiObjects(), bytes, ListOrder()};
  }
  // The times other programs took the activation since SetUp.
  int ForeignActivations() { return g_foreignActivations; }
  // Gives the activation back to the front window, as a click on it would;
  // whether it had to.
  bool TakeBackActivation() {
    if (InThisProcess(GetForegroundWindow())) return false;
    WindowPtr front = FrontWindow();
    SetForegroundWindow(front ? GetAncestor(KWE_GethWnd(front), GA_ROOT) : mainWindow);
    Pump();
    return true;
  }

  HWND mdiClient = nullptr;
  HHOOK activationHook = nullptr;
};

inline LRESULT CALLBACK FrameWindowProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  return DefFrameProcA(w, FindWindowExA(w, nullptr, "MDICLIENT", nullptr), msg, wParam, lParam);
}

// A frame window with an MDI client, in the session's MDI mode.
class MdiWindowTest : public WindowTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagMDI; }
  void FillRecord(KWESessionRecord& r) override {
    RECT area;
    GetClientRect(r.mainWindow, &area);
    CLIENTCREATESTRUCT create{nullptr, 0xFF00};
    r.mdiClient =
        CreateWindowA("MDICLIENT", nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                      area.right, area.bottom, r.mainWindow, nullptr, TestInstance(), &create);
    SetWindowLongPtrA(r.mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FrameWindowProc));
  }
};

// The main window moved out of the way of other programs' windows (whose
// main windows stand at the top left), so that real clicks land on it and
// their windows never restack its pop-ups: Wine's X11 driver raises a
// top-level window that X exposes over the windows its exposed area meets.
// These run one at a time. (Not HWND_TOPMOST: Wine then leaves an owned
// pop-up that is raised with HWND_TOP where it was.)
template <class Base>
class OnTop : public Base {
 protected:
  void SetUp() override {
    Base::SetUp();
    SetWindowPos(this->mainWindow, HWND_TOP, 560, 400, 420, 330, SWP_SHOWWINDOW);
    this->Pump();
  }
};
using WindowsOnTop = OnTop<WindowTest>;
using MdiWindowsOnTop = OnTop<MdiWindowTest>;

}  // namespace kwe_test
