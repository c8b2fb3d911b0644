// A PostScript printer that prints into a file, installed for one test as
// Windows' default printer (Wine's PostScript driver with a small printer
// description of our own) and removed after it.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace kwe_test {

class TestPrinter {
 public:
  TestPrinter();
  ~TestPrinter();
  bool Installed() const { return installed_; }
  // What the printer has written so far.
  std::string Output() const;
  // The "%%Pages:" count of the finished job, -1 when there is none.
  int Pages() const;
  // The text the job drew, page by page, as the glyphs' names spell it.
  std::vector<std::string> PageTexts() const;
  // Forgets what the printer wrote (Windows writes a new job over the old
  // one without shortening the file).
  void Clear();
  void Remove();
  const std::string& Name() const { return name_; }

 private:
  std::string name_, outputPath_, previousDefault_;
  bool installed_ = false;
};

}  // namespace kwe_test
