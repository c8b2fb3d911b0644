// Input a user makes while a modal loop runs (a dialog's, a menu's, Windows'
// move and size loops): the test's steps run one per timer tick, delivered by
// whichever message loop is running at the time, so input can be posted
// before a modal call and answered from inside it.
#pragma once
#include <windows.h>

#include <functional>
#include <vector>

namespace kwe_test {

// Delivers what Windows has queued for this thread.
void PumpMessages();

class TimedSteps {
 public:
  // The first step after interval milliseconds, then one a tick; once they
  // have all run, idle (when given) runs every tick. One runs at a time. A
  // tick on which ready (when given) answers false runs nothing.
  TimedSteps(std::vector<std::function<void()>> steps, UINT interval,
             std::function<void()> idle = nullptr, std::function<bool()> ready = nullptr);
  ~TimedSteps();
  TimedSteps(const TimedSteps&) = delete;
  TimedSteps& operator=(const TimedSteps&) = delete;
  bool Done() const { return next_ >= steps_.size(); }

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
  std::vector<std::function<void()>> steps_;
  std::function<void()> idle_;
  std::function<bool()> ready_;
  size_t next_ = 0;
  UINT_PTR timer_ = 0;
};

}  // namespace kwe_test
