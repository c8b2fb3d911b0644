#include "support/timed_steps.h"

namespace kwe_test {
namespace {

TimedSteps* g_running = nullptr;

}  // namespace

void PumpMessages() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

TimedSteps::TimedSteps(std::vector<std::function<void()>> steps, UINT interval,
                       std::function<void()> idle, std::function<bool()> ready)
    : steps_(std::move(steps)), idle_(std::move(idle)), ready_(std::move(ready)) {
  g_running = this;
  timer_ = SetTimer(nullptr, 0, interval, Tick);
}

TimedSteps::~TimedSteps() {
  KillTimer(nullptr, timer_);
  if (g_running == this) g_running = nullptr;
}

void CALLBACK TimedSteps::Tick(HWND, UINT, UINT_PTR, DWORD) {
  TimedSteps* s = g_running;
  if (!s || (s->ready_ && !s->ready_())) return;
  if (s->next_ < s->steps_.size())
    s->steps_[s->next_++]();
  else if (s->idle_)
    s->idle_();
}

}  // namespace kwe_test
