// Plays the user of a common dialog (print, page setup, open, save) from a
// second thread: waits for the dialog the test's thread opens, then hands
// it to a script that reads what it shows and clicks, types and presses as
// a person at the keyboard would.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <thread>

namespace kwe_test {

class DialogUser {
 public:
  explicit DialogUser(std::function<void(HWND dialog)> script);
  ~DialogUser();
  // Waits for the script to end; the dialog's title ("" when none came).
  const std::string& Title();

 private:
  void Run();
  std::function<void(HWND)> script_;
  DWORD testThread_;
  std::string title_;
  std::thread thread_;
};

// A window's text, sent for (so it works across threads).
std::string TextOf(HWND window);
// Gives the dialog's thread time to act on posted input.
void Pause();

}  // namespace kwe_test
