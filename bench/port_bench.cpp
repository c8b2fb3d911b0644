// Ports over window DCs: SetPort between two window ports and a line in
// each, beside raw MoveToEx and LineTo on the same two DCs.
#include <windows.h>

#include <cstdio>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kLines = 100000;
constexpr int kPorts = 2000;
constexpr int kRounds = 9;

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

  // Round by round: the machine is shared, and each round's ratio compares
  // two runs made moments apart.
  kwe_bench::CompareByRound(
      "SetPort + MoveTo/LineTo vs MoveToEx/LineTo", kRounds, kLines, 1e9, "ns/line",
      [&] {
        for (int i = 0; i < kLines; ++i) {
          SetPort(&ports[i & 1]);
          MoveTo(SInt16(i % 200), 10);
          LineTo(SInt16(i % 200 + 50), 60);
        }
      },
      [&] {
        for (int i = 0; i < kLines; ++i) {
          HDC dc = dcs[i & 1];
          MoveToEx(dc, i % 200, 10, nullptr);
          LineTo(dc, i % 200 + 50, 60);
        }
      });
  // Lines at any angle end with their last pixel set on its own.
  kwe_bench::CompareByRound(
      "SetPort + MoveTo/LineTo, any angle", kRounds, kLines, 1e9, "ns/line",
      [&] {
        for (int i = 0; i < kLines; ++i) {
          SetPort(&ports[i & 1]);
          MoveTo(SInt16(i % 200), 10);
          LineTo(SInt16(i % 200 + 50 - i % 37), SInt16(60 + i % 23));
        }
      },
      [&] {
        for (int i = 0; i < kLines; ++i) {
          HDC dc = dcs[i & 1];
          MoveToEx(dc, i % 200, 10, nullptr);
          LineTo(dc, i % 200 + 50 - i % 37, 60 + i % 23);
        }
      });

  // A temporary port opened, closed while current and the window's port
  // made current again, beside a memory DC made and deleted.
  kwe_bench::CompareByRound(
      "OpenPort + ClosePort vs CreateCompatibleDC/DeleteDC", kRounds, kPorts, 1e6, "us/port",
      [&] {
        for (int i = 0; i < kPorts; ++i) {
          GrafPort temporary;
          OpenPort(&temporary);
          ClosePort(&temporary);
          SetPort(&ports[0]);
        }
      },
      [&] {
        for (int i = 0; i < kPorts; ++i) DeleteDC(CreateCompatibleDC(nullptr));
      });

  for (int i = 0; i < 2; ++i) {
    ClosePort(&ports[i]);
    ReleaseDC(windows[i], dcs[i]);
    DestroyWindow(windows[i]);
  }
  return 0;
}
