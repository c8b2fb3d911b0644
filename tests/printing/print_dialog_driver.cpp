#include "printing/print_dialog_driver.h"

#include <chrono>

namespace kwe_test {
namespace {

HWND FindDialog(DWORD thread) {
  HWND found = nullptr;
  EnumThreadWindows(
      thread,
      [](HWND window, LPARAM param) -> BOOL {
        char name[16] = "";
        GetClassNameA(window, name, sizeof name);
        if (std::string(name) != "#32770" || !IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(param) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace

PrintDialogDriver::PrintDialogDriver(std::vector<DialogStep> steps, int finalButton)
    : steps_(std::move(steps)),
      finalButton_(finalButton),
      testThread_(GetCurrentThreadId()),
      thread_([this] { Run(); }) {}

PrintDialogDriver::~PrintDialogDriver() {
  if (thread_.joinable()) thread_.join();
}

std::string PrintDialogDriver::Title() {
  if (thread_.joinable()) thread_.join();
  return title_;
}

void PrintDialogDriver::Run() {
  HWND dialog = nullptr;
  for (int wait = 0; wait < 300 && !dialog; ++wait) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    dialog = FindDialog(testThread_);
  }
  if (!dialog) return;
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  char title[256] = "";
  GetWindowTextA(dialog, title, sizeof title);
  title_ = title;
  for (const DialogStep& step : steps_) {
    HWND control = GetDlgItem(dialog, step.control);
    if (!control) continue;
    if (step.text.empty())
      SendMessageA(control, BM_CLICK, 0, 0);
    else
      SendMessageA(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(step.text.c_str()));
  }
  PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(finalButton_, BN_CLICKED),
               reinterpret_cast<LPARAM>(GetDlgItem(dialog, finalButton_)));
}

}  // namespace kwe_test
