#include "support/diagnostic_capture.h"

namespace kwe_test {
namespace {

std::string g_debugOutput;
std::vector<MessageBoxSeen> g_boxes;
HWND g_lastBox = nullptr;
int g_breakpoints = 0;

LONG CALLBACK OnException(EXCEPTION_POINTERS* info) {
  EXCEPTION_RECORD* record = info->ExceptionRecord;
  if (record->ExceptionCode == DBG_PRINTEXCEPTION_C && record->NumberParameters >= 2) {
    g_debugOutput += reinterpret_cast<const char*>(record->ExceptionInformation[1]);
    return EXCEPTION_CONTINUE_EXECUTION;
  }
  if (record->ExceptionCode == EXCEPTION_BREAKPOINT) {
    ++g_breakpoints;
#ifdef _WIN64
    info->ContextRecord->Rip += 1;  // past the int3
#else
    info->ContextRecord->Eip += 1;
#endif
    return EXCEPTION_CONTINUE_EXECUTION;
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

LRESULT CALLBACK OnWindowEvent(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HCBT_DESTROYWND && reinterpret_cast<HWND>(wParam) == g_lastBox) g_lastBox = nullptr;
  if (code == HCBT_ACTIVATE) {
    HWND window = reinterpret_cast<HWND>(wParam);
    char className[32] = "";
    GetClassNameA(window, className, sizeof className);
    // A box may be activated again before our OK reaches it (another test's
    // window took the focus meanwhile): count each box once.
    // The common open and save dialogs (a file-name field, edt1 or cmb13)
    // are left to the tests that drive them.
    bool fileDialog = GetDlgItem(window, 0x480) || GetDlgItem(window, 0x47c);
    if (std::string(className) == "#32770" && !fileDialog && window != g_lastBox) {
      g_lastBox = window;
      MessageBoxSeen seen;
      char buffer[1024] = "";
      GetWindowTextA(window, buffer, sizeof buffer);
      seen.title = buffer;
      buffer[0] = 0;
      GetDlgItemTextA(window, 0xFFFF, buffer, sizeof buffer);
      seen.text = buffer;
      g_boxes.push_back(seen);
      PostMessageA(window, WM_COMMAND, IDOK, 0);
    }
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

DiagnosticCapture::DiagnosticCapture()
    : handler_(AddVectoredExceptionHandler(1, OnException)),
      hook_(SetWindowsHookExA(WH_CBT, OnWindowEvent, nullptr, GetCurrentThreadId())) {
  Clear();
}

DiagnosticCapture::~DiagnosticCapture() {
  if (hook_) UnhookWindowsHookEx(hook_);
  if (handler_) RemoveVectoredExceptionHandler(handler_);
}

const std::string& DiagnosticCapture::DebugOutput() const { return g_debugOutput; }
const std::vector<MessageBoxSeen>& DiagnosticCapture::MessageBoxes() const { return g_boxes; }
int DiagnosticCapture::Breakpoints() const { return g_breakpoints; }

std::vector<std::string> DiagnosticCapture::Reports() const {
  std::vector<std::string> reports;
  for (const MessageBoxSeen& box : g_boxes) reports.push_back(box.text);
  size_t at = 0;
  while (at < g_debugOutput.size()) {
    size_t end = g_debugOutput.find("\r\n", at);
    if (end == std::string::npos) end = g_debugOutput.size();
    reports.push_back(g_debugOutput.substr(at, end - at));
    at = end + 2;
  }
  return reports;
}

void DiagnosticCapture::Clear() {
  g_debugOutput.clear();
  g_boxes.clear();
  g_breakpoints = 0;
}

void SetProfileKey(const char* section, const char* key, const char* value) {
  WriteProfileStringA(section, key, value);
}

void RemoveProfileKey(const char* section, const char* key) {
  WriteProfileStringA(section, key, nullptr);
}

}  // namespace kwe_test
