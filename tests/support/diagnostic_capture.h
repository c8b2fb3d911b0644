// Catches what the library reports, by the routes Windows really takes:
// OutputDebugStringA raises DBG_PRINTEXCEPTION_C, which a vectored handler
// sees before any debugger; MessageBoxA's dialog is seen by a CBT hook as it
// activates, read, and answered with OK. Breakpoints from DebugBreak are
// counted and stepped over.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace kwe_test {

struct MessageBoxSeen {
  std::string title;
  std::string text;
};

class DiagnosticCapture {
 public:
  DiagnosticCapture();
  ~DiagnosticCapture();
  DiagnosticCapture(const DiagnosticCapture&) = delete;
  DiagnosticCapture& operator=(const DiagnosticCapture&) = delete;

  const std::string& DebugOutput() const;
  const std::vector<MessageBoxSeen>& MessageBoxes() const;
  int Breakpoints() const;
  // Everything reported, by either route, one text per report.
  std::vector<std::string> Reports() const;
  void Clear();

 private:
  void* handler_;
  HHOOK hook_;
};

// WIN.INI as GetProfileIntA reads it. Tests that call these carry "Profile"
// in their name, which makes CTest run them one at a time.
void SetProfileKey(const char* section, const char* key, const char* value);
void RemoveProfileKey(const char* section, const char* key);

}  // namespace kwe_test
