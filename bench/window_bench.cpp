// The Window Manager against the Win32 calls under it, on windows of the same
// class (KWESubWndClass with the host's forwarding procedure), style and
// size, children of a visible main window; the raw windows stand to the right
// of the library's, so that neither side covers the other:
//   NewWindow + DisposeWindow against CreateWindowExA (visible),
//     UpdateWindow and DestroyWindow: both end with the window shown and
//     painted once;
//   SelectWindow between two overlapping windows against
//     SetWindowPos(HWND_TOP) + SetActiveWindow, the repaints each causes
//     dispatched on both sides (SetActiveWindow leaves a child window's
//     caption alone: the raw side repaints no caption, the library two),
//     and against SetWindowPos(HWND_TOP) and the two caption repaints
//     SetActiveWindow makes for top-level windows (WM_NCACTIVATE to each);
//   BeginUpdate, one PaintRect and EndUpdate on a window Windows has
//     invalidated, against BeginPaint, FillRect and EndPaint.
#include <windows.h>

#include "KWEWindows.h"
#include "MacWindows.h"
#include "bench_support.h"
#include "host/shell.h"
#include "host_window_session.h"

namespace {

constexpr int kRounds = 41;  // short rounds, the median of: the machine is shared
constexpr int kWindows = 10;
constexpr int kSelections = 20;
constexpr int kPaints = 50;

const Rect kBounds{40, 40, 240, 340};    // top, left, bottom, right in the main window
const Rect kBehind{100, 140, 300, 440};  // a second window overlapping the first
constexpr int kRawOffset = 480;          // where the raw windows stand, to the right

template <typename Library, typename Raw>
void Compare(const char* what, int calls, Library library, Raw raw) {
  kwe_bench::CompareByRound(what, kRounds, calls, 1e6, "us", library, raw);
}

// What the library made for bounds, as raw CreateWindowExA arguments.
struct Win32Shape {
  DWORD style, exStyle;
  RECT outer;  // in the main window's client coordinates
};

Win32Shape ShapeOf(WindowPtr w, HWND main) {
  HWND hwnd = KWE_GethWnd(w);
  Win32Shape s{
      DWORD(GetWindowLongA(hwnd, GWL_STYLE)), DWORD(GetWindowLongA(hwnd, GWL_EXSTYLE)), {}};
  GetWindowRect(hwnd, &s.outer);
  MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&s.outer), 2);
  OffsetRect(&s.outer, kRawOffset, 0);
  return s;
}

HWND CreateRaw(const Win32Shape& s, HWND main) {
  return CreateWindowExA(s.exStyle, "KWESubWndClass", "Bench", s.style | WS_VISIBLE, s.outer.left,
                         s.outer.top, s.outer.right - s.outer.left, s.outer.bottom - s.outer.top,
                         main, nullptr, GetModuleHandleA(nullptr), nullptr);
}

WindowPtr NewDocument(const Rect& bounds) {
  static const unsigned char title[] = {5, 'B', 'e', 'n', 'c', 'h'};
  return NewWindow(nullptr, &bounds, title, true, documentProc, WindowPtr(-1), true, 0);
}

// Dispatches what is waiting (the paints a change of order calls for).
void Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
}

void CreateAndDispose(HWND main, const Win32Shape& shape) {
  Compare(
      "NewWindow/DisposeWindow vs CreateWindowEx/Destroy", kWindows,
      [&] {
        for (int i = 0; i < kWindows; ++i) DisposeWindow(NewDocument(kBounds));
      },
      [&] {
        for (int i = 0; i < kWindows; ++i) {
          HWND hwnd = CreateRaw(shape, main);
          UpdateWindow(hwnd);
          DestroyWindow(hwnd);
        }
      });
}

void Select(HWND main, const Win32Shape& front, const Win32Shape& behind) {
  WindowPtr windows[2] = {NewDocument(kBounds), NewDocument(kBehind)};
  HWND raw[2] = {CreateRaw(front, main), CreateRaw(behind, main)};
  Pump();
  auto select = [&] {
    for (int i = 0; i < kSelections; ++i) {
      SelectWindow(windows[i & 1]);
      Pump();
    }
  };
  Compare("SelectWindow vs SetWindowPos(TOP)+SetActiveWindow", kSelections, select, [&] {
    for (int i = 0; i < kSelections; ++i) {
      SetWindowPos(raw[i & 1], HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
      SetActiveWindow(raw[i & 1]);
      Pump();
    }
  });
  // What SetActiveWindow does for top-level windows, and what a Toolbox
  // selection calls for: the old front window's caption drawn inactive, the
  // new one's active.
  Compare("SelectWindow vs SetWindowPos(TOP)+both captions", kSelections, select, [&] {
    for (int i = 0; i < kSelections; ++i) {
      SetWindowPos(raw[i & 1], HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
      SendMessageA(raw[~i & 1], WM_NCACTIVATE, FALSE, 0);
      SendMessageA(raw[i & 1], WM_NCACTIVATE, TRUE, 0);
      Pump();
    }
  });
  for (int i = 0; i < 2; ++i) {
    DisposeWindow(windows[i]);
    DestroyWindow(raw[i]);
  }
}

void Update(HWND main, const Win32Shape& shape) {
  WindowPtr w = NewDocument(kBounds);
  HWND hwnd = KWE_GethWnd(w);
  HWND raw = CreateRaw(shape, main);
  Pump();
  HBRUSH black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  Compare(
      "Begin/EndUpdate+PaintRect vs Begin/EndPaint+FillRect", kPaints,
      [&] {
        for (int i = 0; i < kPaints; ++i) {
          InvalidateRect(hwnd, nullptr, FALSE);
          BeginUpdate(w);
          PaintRect(&w->portRect);
          EndUpdate(w);
        }
      },
      [&] {
        for (int i = 0; i < kPaints; ++i) {
          InvalidateRect(raw, nullptr, FALSE);
          PAINTSTRUCT ps;
          HDC dc = BeginPaint(raw, &ps);
          FillRect(dc, &ps.rcPaint, black);
          EndPaint(raw, &ps);
        }
      });
  DisposeWindow(w);
  DestroyWindow(raw);
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("Window bench");
  HWND main = session.main;

  WindowPtr probes[2] = {NewDocument(kBounds), NewDocument(kBehind)};
  Win32Shape front = ShapeOf(probes[0], main), behind = ShapeOf(probes[1], main);
  for (WindowPtr w : probes) DisposeWindow(w);
  Pump();

  CreateAndDispose(main, front);
  Select(main, front, behind);
  Update(main, front);

  return 0;
}
