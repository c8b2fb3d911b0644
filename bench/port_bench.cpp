// Ports over window DCs: SetPort between two window ports and a line in
// each, beside raw MoveToEx and LineTo on the same two DCs.
#include <windows.h>

#include <cstdio>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kLines = 100000;
constexpr int kRounds = 5;

HWND MakeWindow(int x) {
  WNDCLASSA wc{};
  wc.lpfnWndProc = DefWindowProcA;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.lpszClassName = "PortBenchWindow";
  RegisterClassA(&wc);
  HWND w = CreateWindowA("PortBenchWindow", "", WS_POPUP | WS_VISIBLE, x, 0, 300, 300, nullptr,
                         nullptr, wc.hInstance, nullptr);
  return w;
}

}  // namespace

int main() {
  kwe_bench::Session session;
  GrafPtr screen;
  InitGraf(&screen);
  HWND windows[2] = {MakeWindow(0), MakeWindow(320)};
  HDC dcs[2] = {GetDC(windows[0]), GetDC(windows[1])};
  GrafPort ports[2];
  for (int i = 0; i < 2; ++i) {
    OpenPort(&ports[i]);
    KWE_SwaphDC(dcs[i], true);
  }

  double best[2] = {1e30, 1e30};
  for (int round = 0; round < 2 * kRounds; ++round) {
    double start = kwe_bench::Now();
    if (round % 2 == 0) {
      for (int i = 0; i < kLines; ++i) {
        SetPort(&ports[i & 1]);
        MoveTo(SInt16(i % 200), 10);
        LineTo(SInt16(i % 200 + 50), 60);
      }
    } else {
      for (int i = 0; i < kLines; ++i) {
        HDC dc = dcs[i & 1];
        MoveToEx(dc, i % 200, 10, nullptr);
        LineTo(dc, i % 200 + 50, 60);
      }
    }
    GdiFlush();
    double elapsed = kwe_bench::Now() - start;
    if (elapsed < best[round % 2]) best[round % 2] = elapsed;
  }
  kwe_bench::PrintRatio("SetPort + MoveTo/LineTo vs MoveToEx/LineTo", best[0] * 1e9 / kLines,
                        best[1] * 1e9 / kLines, "ns/line");

  for (int i = 0; i < 2; ++i) {
    ClosePort(&ports[i]);
    ReleaseDC(windows[i], dcs[i]);
    DestroyWindow(windows[i]);
  }
  return 0;
}
