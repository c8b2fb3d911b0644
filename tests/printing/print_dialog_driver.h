// Plays the user of the common print and print-setup dialogs from a second
// thread: waits for the dialog the test's thread opens, clicks and types
// into its controls as its script says, then presses OK or Cancel.
#pragma once
#include <windows.h>

#include <string>
#include <thread>
#include <vector>

namespace kwe_test {

struct DialogStep {
  int control;       // a control ID of commdlg's templates (dlgs.h)
  std::string text;  // typed into it; empty: the control is clicked
};

class PrintDialogDriver {
 public:
  PrintDialogDriver(std::vector<DialogStep> steps, int finalButton);
  ~PrintDialogDriver();
  // The dialog's title, once the script has run ("" when no dialog came).
  std::string Title();

 private:
  void Run();
  std::vector<DialogStep> steps_;
  int finalButton_;
  DWORD testThread_;
  std::string title_;
  std::thread thread_;
};

}  // namespace kwe_test
