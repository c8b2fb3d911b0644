// A host's Windows shell, as the tests play it: the window classes the
// library names, a main window, the session record and the host's own
// variables for every low-memory global.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include "KWESession.h"
#include "support/diagnostic_capture.h"

namespace kwe_test {

struct HostVariables {
  SInt16 SFSaveDisk;
  SInt32 CurDirStore;
  SInt16 CurrentVolume;
  GDHandle MainDevice;
  GDHandle DeviceList;
  GrafPtr WMgrPort;
  QHdr EventQueue;
  SInt16 unused32;
  OSErr MemErr;
  RgnHandle GrayRgn;
  WindowPeek WindowList;
  GrafPtr thePort;
  Pattern white, black, gray, dkGray, ltGray;
  Cursor arrow;
  BitMap screenBits;
  SInt32 unused80;
  ScrapStuff ScrapInfo;
  SInt16 PrintErr;
  UInt32 Ticks;
  SInt32 unused96, unused100, unused104, unused108;
  UInt32 CaretTime;
  WindowPtr PendingActivation;
  UInt8 HiliteMode;
  GDHandle TheGDevice;
  OSErr ResErr;
  UInt8 unused132;
  RGBColor HiliteRGB;
  UInt8 ButtonState;
  SInt32 unused144, unused148, unused152;
  UInt8 FractEnable;
  Handle WidthTabHandle;
  SInt16 TheMenu;
  ProcPtr ResumeProc;
  SInt16 SysEvtMask;
  UInt32 DoubleTime;
  THz ApplZone;
  Handle MenuList;
  SInt16 MenuFlash;
  SInt16 TEScrpLength;
  Handle TEScrpHandle;
  UInt8 ResLoad;
  SInt32 unused204, unused208;
  WindowPtr PendingDeactivation;
  SInt32 unused216;
  SInt16 TEStyleScrapFlag;
  Handle TEStyleScrap;
};

HINSTANCE TestInstance();

// Registers KWEMainWndClass, KWESubWndClass and KWESubMDIWndClass once.
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
