#include "support/dialog_user.h"

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

std::string TextOf(HWND window) {
  char text[512] = "";
  if (window) SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(300)); }

DialogUser::DialogUser(std::function<void(HWND)> script)
    : script_(std::move(script)), testThread_(GetCurrentThreadId()), thread_([this] { Run(); }) {}

DialogUser::~DialogUser() {
  if (thread_.joinable()) thread_.join();
}

const std::string& DialogUser::Title() {
  if (thread_.joinable()) thread_.join();
  return title_;
}

void DialogUser::Run() {
  HWND dialog = nullptr;
  for (int wait = 0; wait < 300 && !dialog; ++wait) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    HWND found = FindDialog(testThread_);
    if (!found) continue;
    Pause();
    // Wine's file dialogs now and then show an empty dialog box for a moment
    // before the real one (its Cancel once went to it, and the real one
    // waited for ever): the user acts on the one still there after a pause.
    if (FindDialog(testThread_) == found) dialog = found;
  }
  if (!dialog) return;
  title_ = TextOf(dialog);
  script_(dialog);
}

}  // namespace kwe_test
