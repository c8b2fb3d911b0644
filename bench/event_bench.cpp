// The Event Manager against the raw message calls: a PostEvent and
// GetNextEvent round trip against PostMessageA and PeekMessageA, an empty
// WaitNextEvent(sleep 0) against an empty PeekMessageA, and the latency from
// a click posted by another thread to the mouseDown WaitNextEvent returns.
#include <windows.h>

#include <algorithm>
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "bench_support.h"

namespace {

constexpr int kRounds = 200000;
constexpr int kClicks = 1000;

LRESULT CALLBACK ForwardMouse(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST) return KWE_EventMouse(w, msg, wParam, lParam);
  return DefWindowProcA(w, msg, wParam, lParam);
}

HWND MakeWindow() {
  WNDCLASSA wc{};
  wc.lpfnWndProc = ForwardMouse;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.lpszClassName = "EventBenchWindow";
  RegisterClassA(&wc);
  return CreateWindowA("EventBenchWindow", "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr,
                       nullptr, wc.hInstance, nullptr);
}

void RoundTrip(HWND window) {
  EventRecord e;
  double t0 = kwe_bench::Now();
  for (int i = 0; i < kRounds; ++i) {
    PostEvent(keyDown, i);
    GetNextEvent(everyEvent, &e);
  }
  double library = (kwe_bench::Now() - t0) / kRounds * 1e6;
  MSG msg;
  t0 = kwe_bench::Now();
  for (int i = 0; i < kRounds; ++i) {
    PostMessageA(window, WM_USER, WPARAM(i), 0);
    PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE);
  }
  double raw = (kwe_bench::Now() - t0) / kRounds * 1e6;
  kwe_bench::PrintRatio("PostEvent+GetNextEvent vs PostMessageA+PeekMessageA", library, raw, "us");
}

void EmptyPoll() {
  EventRecord e;
  double t0 = kwe_bench::Now();
  for (int i = 0; i < kRounds; ++i) WaitNextEvent(everyEvent, &e, 0, nullptr);
  double library = (kwe_bench::Now() - t0) / kRounds * 1e6;
  MSG msg;
  t0 = kwe_bench::Now();
  for (int i = 0; i < kRounds; ++i) PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE);
  double raw = (kwe_bench::Now() - t0) / kRounds * 1e6;
  kwe_bench::PrintRatio("WaitNextEvent(sleep 0) vs PeekMessageA, empty queue", library, raw, "us");
}

struct Clicker {
  HWND window;
  HANDLE ready;
  double postedAt;
};

DWORD WINAPI PostClicks(void* p) {
  Clicker& c = *static_cast<Clicker*>(p);
  for (int i = 0; i < kClicks; ++i) {
    WaitForSingleObject(c.ready, INFINITE);
    Sleep(1 + i % 3);  // let WaitNextEvent go to sleep first
    c.postedAt = kwe_bench::Now();
    PostMessageA(c.window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  }
  return 0;
}

// Median and worst microseconds from the other thread's post to the click
// coming back from wait().
template <class Wait>
void ClickLatency(HWND window, const char* what, Wait wait) {
  Clicker clicker{window, CreateEventA(nullptr, FALSE, FALSE, nullptr), 0};
  HANDLE thread = CreateThread(nullptr, 0, PostClicks, &clicker, 0, nullptr);
  std::vector<double> latencies;
  for (int i = 0; i < kClicks; ++i) {
    SetEvent(clicker.ready);
    wait();
    latencies.push_back((kwe_bench::Now() - clicker.postedAt) * 1e6);
  }
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
  CloseHandle(clicker.ready);
  std::sort(latencies.begin(), latencies.end());
  std::printf("%-52s median %9.1f us, worst %9.1f us (%d clicks)\n", what,
              latencies[latencies.size() / 2], latencies.back(), kClicks);
}

}  // namespace

int main() {
  HWND window = MakeWindow();
  KWESessionRecord record{};
  record.size = sizeof record;
  record.instance = GetModuleHandleA(nullptr);
  record.mainWindow = window;
  KWE_InitSession(&record);
  KWEGlobalsRecord globals{};
  globals.size = 4;
  KWE_InitGlobals(&globals);
  RoundTrip(window);
  EmptyPoll();
  ClickLatency(window, "PostMessageA(WM_LBUTTONDOWN) to WaitNextEvent", [] {
    EventRecord e;
    while (!WaitNextEvent(mDownMask, &e, 60, nullptr) || e.what != mouseDown) {
    }
  });
  ClickLatency(window, "raw: PostMessageA(WM_LBUTTONDOWN) to GetMessageA", [] {
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0 && msg.message != WM_LBUTTONDOWN) {
    }
  });
  KWE_ExitSession();
  DestroyWindow(window);
  return 0;
}
