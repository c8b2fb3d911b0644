// A host's Windows shell, as the tests play it: the window classes the
// library names, a main window, the session record and the host's own
// variables for every low-memory global.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include "KWEHostGlobals.h"
#include "KWESession.h"
#include "host/shell.h"
#include "support/diagnostic_capture.h"

namespace kwe_test {

using HostVariables = KWELowMemoryGlobals;

HINSTANCE TestInstance();

// Live GDI objects of this process, counted in the GDI handle table the PEB
// shares with user mode (GetGuiResources answers 0 under Wine); -1 without
// one (the 32-bit build).
int LiveGdiObjects();

// Registers KWEMainWndClass once, and the library's two window classes with
// the host shell's procedures.
void RegisterHostClasses();
HWND CreateMainWindow();

// A globals record whose every pointer names a field of vars.
KWEGlobalsRecord GlobalsFor(HostVariables& vars);

// A fixture that starts a full session (main window, record, globals) and
// ends it. Reports are captured, never shown.
class SessionTest : public ::testing::Test {
 protected:
  virtual UInt32 SessionFlags() const { return 0; }
  virtual void FillRecord(KWESessionRecord&) {}
  void SetUp() override;
  void TearDown() override;

  HostVariables vars{};
  KWESessionRecord record{};
  HWND mainWindow = nullptr;
  DiagnosticCapture capture;
};

}  // namespace kwe_test
