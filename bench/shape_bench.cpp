// Shapes in a window port beside raw GDI on the same DC: PaintRect and
// FrameRect of 10,000 random rectangles against FillRect and FrameRect, and
// PaintOval, whose outline the library computes, against Ellipse.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kShapes = 10000;
constexpr int kRounds = 5;

kwe_bench::Numbers g_numbers(7);
int Next(int n) { return g_numbers.Below(n); }

template <typename Library, typename Raw>
void Compare(const char* what, Library library, Raw raw) {
  kwe_bench::CompareBest(what, kRounds, kShapes, 1e9, "ns/shape", library, raw);
}

}  // namespace

int main() {
  kwe_bench::Session session;
  GrafPtr screen;
  InitGraf(&screen);
  WNDCLASSA wc{};
  wc.lpfnWndProc = DefWindowProcA;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.lpszClassName = "ShapeBenchWindow";
  RegisterClassA(&wc);
  HWND window = CreateWindowA("ShapeBenchWindow", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 400,
                              nullptr, nullptr, wc.hInstance, nullptr);
  HDC dc = GetDC(window);
  GrafPort port;
  OpenPort(&port);
  KWE_SwaphDC(dc, true);

  std::vector<Rect> rects(kShapes);
  for (Rect& r : rects) {
    int left = Next(350), top = Next(350);
    r = Rect{SInt16(top), SInt16(left), SInt16(top + 2 + Next(48)), SInt16(left + 2 + Next(48))};
  }
  HBRUSH black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  Compare(
      "PaintRect vs FillRect",
      [&] {
        for (const Rect& r : rects) PaintRect(&r);
      },
      [&] {
        for (const Rect& r : rects) {
          RECT w{r.left, r.top, r.right, r.bottom};
          FillRect(dc, &w, black);
        }
      });
  Compare(
      "FrameRect vs FrameRect",
      [&] {
        for (const Rect& r : rects) FrameRec(&r);
      },
      [&] {
        for (const Rect& r : rects) {
          RECT w{r.left, r.top, r.right, r.bottom};
          FrameRect(dc, &w, black);
        }
      });
  Compare(
      "PaintOval vs Ellipse",
      [&] {
        for (const Rect& r : rects) PaintOval(&r);
      },
      [&] {
        HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
        HGDIOBJ oldBrush = SelectObject(dc, black);
        for (const Rect& r : rects) Ellipse(dc, r.left, r.top, r.right + 1, r.bottom + 1);
        SelectObject(dc, oldBrush);
        SelectObject(dc, oldPen);
      });

  KWE_SwaphDC(dc, false);
  ClosePort(&port);
  ReleaseDC(window, dc);
  DestroyWindow(window);
  return 0;
}
