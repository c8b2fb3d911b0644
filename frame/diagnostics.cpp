#include "frame/diagnostics.h"

#include <windows.h>

#include "Diagnostics.h"
#include "frame/session.h"

namespace kwe {
namespace {

// Read once, at the first report of the process; WIN.INI changes after that
// take effect only in a new process.
struct ReportSettings {
  bool read = false;
  int messageBox = 1;
  int breakAfter = 0;
};

ReportSettings& Settings() {
  static ReportSettings settings;
  if (!settings.read) {
    settings.messageBox = static_cast<int>(GetProfileIntA("kweport2", "DebugStrMBox", 1));
    settings.breakAfter = static_cast<int>(GetProfileIntA("kweport2", "DebugStrBreak", 0));
    settings.read = true;
  }
  return settings;
}

}  // namespace

void Report(const char* text) {
  if (SessionFlag(kweFlagSilentDiagnostics)) return;
  const ReportSettings& settings = Settings();
  if (settings.messageBox) {
    char title[64] = "";
    LoadStringA(TheSession().instance, 1029, title, sizeof title);
    MessageBoxA(TheSession().mainWindow, text, title, MB_OK | MB_ICONEXCLAMATION);
  } else {
    OutputDebugStringA(text);
    OutputDebugStringA("\r\n");
  }
  if (settings.breakAfter) DebugBreak();
}

}  // namespace kwe

KWE_API void KWE_CALL DebugStr(ConstStr255Param message) {
  // The length byte is not used: the text runs to the first NUL.
  kwe::Report(message ? reinterpret_cast<const char*>(message) + 1 : "");
}

KWE_API void KWE_CALL Debugger(void) { kwe::Report("Debugger Trap"); }

// The code is not shown; the call returns, unlike the Macintosh's bomb box.
KWE_API void KWE_CALL SysError(SInt16) { kwe::Report("SysError"); }
