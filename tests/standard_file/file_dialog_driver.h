// Plays the user of the common open and save dialogs from a second thread:
// waits for the dialog the test's thread opens, reads what it shows, types
// each name of its script into the file-name field and presses Open/Save
// (an empty name presses Cancel), as a person at the keyboard would.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace kwe_test {

struct DialogSeen {
  std::string title;
  std::string typedName;             // the file-name field as the dialog opened
  std::vector<std::string> filters;  // the file-type list's entries
  int refusals = 0;                  // names after which the dialog stayed open
};

class FileDialogDriver {
 public:
  // duringDialog runs on the driver's thread once the dialog is up.
  explicit FileDialogDriver(std::vector<std::string> names,
                            std::function<void()> duringDialog = nullptr);
  ~FileDialogDriver();
  // Waits for the script to end; what the dialog showed.
  const DialogSeen& Seen();

 private:
  void Run();
  std::vector<std::string> names_;
  std::function<void()> duringDialog_;
  DWORD testThread_;
  DialogSeen seen_;
  std::thread thread_;
};

}  // namespace kwe_test
