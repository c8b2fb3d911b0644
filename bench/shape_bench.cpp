// Shapes in a window port beside raw GDI on the same DC: PaintRect and
// FrameRect of 10,000 random rectangles against FillRect and FrameRect, and
// ovals, rounded rectangles and wedges, whose outlines the library computes,
// against Ellipse, RoundRect and Pie.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kShapes = 10000;
constexpr int kRounds = 9;

kwe_bench::Numbers g_numbers(7);
int Next(int n) { return g_numbers.Below(n); }

template <typename Library, typename Raw>
void Compare(const char* what, Library library, Raw raw) {
  // Round by round: the machine is shared, and each round's ratio compares
  // two runs made moments apart.
  kwe_bench::CompareByRound(what, kRounds, kShapes, 1e9, "ns/shape", library, raw);
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
  // The raw side draws GDI's own shapes with the brush or pen the verb
  // uses, selected once.
  auto withRaw = [&](HGDIOBJ pen, HGDIOBJ brush, auto draw) {
    return [=] {
      HGDIOBJ oldPen = SelectObject(dc, pen);
      HGDIOBJ oldBrush = SelectObject(dc, brush);
      draw();
      SelectObject(dc, oldBrush);
      SelectObject(dc, oldPen);
    };
  };
  HGDIOBJ nullPen = GetStockObject(NULL_PEN), nullBrush = GetStockObject(NULL_BRUSH);
  HGDIOBJ blackPen = GetStockObject(BLACK_PEN);
  Compare(
      "PaintOval vs Ellipse",
      [&] {
        for (const Rect& r : rects) PaintOval(&r);
      },
      withRaw(nullPen, black, [&] {
        for (const Rect& r : rects) Ellipse(dc, r.left, r.top, r.right + 1, r.bottom + 1);
      }));
  Compare(
      "FrameOval vs Ellipse (null brush)",
      [&] {
        for (const Rect& r : rects) FrameOval(&r);
      },
      withRaw(blackPen, nullBrush, [&] {
        for (const Rect& r : rects) Ellipse(dc, r.left, r.top, r.right, r.bottom);
      }));
  Compare(
      "PaintRoundRect vs RoundRect",
      [&] {
        for (const Rect& r : rects) PaintRoundRect(&r, 12, 12);
      },
      withRaw(nullPen, black, [&] {
        for (const Rect& r : rects) RoundRect(dc, r.left, r.top, r.right + 1, r.bottom + 1, 12, 12);
      }));
  // A quarter wedge from 12 to 3 o'clock; Pie runs counterclockwise, so
  // from 3 to 12.
  Compare(
      "PaintArc vs Pie",
      [&] {
        for (const Rect& r : rects) PaintArc(&r, 0, 90);
      },
      withRaw(nullPen, black, [&] {
        for (const Rect& r : rects) {
          int cx = (r.left + r.right) / 2, cy = (r.top + r.bottom) / 2;
          Pie(dc, r.left, r.top, r.right + 1, r.bottom + 1, r.right, cy, cx, r.top);
        }
      }));

  // The arithmetic pen modes go through the pixel pipeline: ovals in
  // addOver against the same ovals in patCopy on a colour port, for
  // information.
  CGrafPort colour;
  OpenCPort(&colour);
  KWE_SwaphDC(dc, true);
  const std::vector<Rect> some(rects.begin(), rects.begin() + 1000);
  auto ovalsIn = [&](SInt16 mode) {
    return [&, mode] {
      PenMode(mode);
      for (const Rect& r : some) PaintOval(&r);
    };
  };
  kwe_bench::CompareByRound("PaintOval addOver vs patCopy (colour port)", 5, int(some.size()), 1e9,
                            "ns/shape", ovalsIn(addOver), ovalsIn(patCopy));
  CloseCPort(&colour);
  SetPort(&port);

  KWE_SwaphDC(dc, false);
  ClosePort(&port);
  ReleaseDC(window, dc);
  DestroyWindow(window);
  return 0;
}
