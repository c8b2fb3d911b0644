#include "support/test_host.h"

namespace kwe_test {

HINSTANCE TestInstance() { return GetModuleHandleA(nullptr); }

void RegisterHostClasses() {
  static bool registered = false;
  if (registered) return;
  for (const char* name : {"KWEMainWndClass", "KWESubWndClass", "KWESubMDIWndClass"}) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = TestInstance();
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    wc.lpszClassName = name;
    RegisterClassA(&wc);
  }
  registered = true;
}

HWND CreateMainWindow() {
  RegisterHostClasses();
  return CreateWindowA("KWEMainWndClass", "KWE test host", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                       nullptr, nullptr, TestInstance(), nullptr);
}

KWEGlobalsRecord GlobalsFor(HostVariables& v) {
  KWEGlobalsRecord g{};
  g.size = sizeof g;
  g.SFSaveDisk = &v.SFSaveDisk;
  g.CurDirStore = &v.CurDirStore;
  g.CurrentVolume = &v.CurrentVolume;
  g.MainDevice = &v.MainDevice;
  g.DeviceList = &v.DeviceList;
  g.WMgrPort = &v.WMgrPort;
  g.EventQueue = &v.EventQueue;
  g.unused32 = &v.unused32;
  g.MemErr = &v.MemErr;
  g.GrayRgn = &v.GrayRgn;
  g.WindowList = &v.WindowList;
  g.thePort = &v.thePort;
  g.white = &v.white;
  g.black = &v.black;
  g.gray = &v.gray;
  g.dkGray = &v.dkGray;
  g.ltGray = &v.ltGray;
  g.arrow = &v.arrow;
  g.screenBits = &v.screenBits;
  g.unused80 = &v.unused80;
  g.ScrapInfo = &v.ScrapInfo;
  g.PrintErr = &v.PrintErr;
  g.Ticks = &v.Ticks;
  g.unused96 = &v.unused96;
  g.unused100 = &v.unused100;
  g.unused104 = &v.unused104;
  g.unused108 = &v.unused108;
  g.CaretTime = &v.CaretTime;
  g.PendingActivation = &v.PendingActivation;
  g.HiliteMode = &v.HiliteMode;
  g.TheGDevice = &v.TheGDevice;
  g.ResErr = &v.ResErr;
  g.unused132 = &v.unused132;
  g.HiliteRGB = &v.HiliteRGB;
  g.ButtonState = &v.ButtonState;
  g.unused144 = &v.unused144;
  g.unused148 = &v.unused148;
  g.unused152 = &v.unused152;
  g.FractEnable = &v.FractEnable;
  g.WidthTabHandle = &v.WidthTabHandle;
  g.TheMenu = &v.TheMenu;
  g.ResumeProc = &v.ResumeProc;
  g.SysEvtMask = &v.SysEvtMask;
  g.DoubleTime = &v.DoubleTime;
  g.ApplZone = &v.ApplZone;
  g.MenuList = &v.MenuList;
  g.MenuFlash = &v.MenuFlash;
  g.TEScrpLength = &v.TEScrpLength;
  g.TEScrpHandle = &v.TEScrpHandle;
  g.ResLoad = &v.ResLoad;
  g.unused204 = &v.unused204;
  g.unused208 = &v.unused208;
  g.PendingDeactivation = &v.PendingDeactivation;
  g.unused216 = &v.unused216;
  g.TEStyleScrapFlag = &v.TEStyleScrapFlag;
  g.TEStyleScrap = &v.TEStyleScrap;
  return g;
}

void SessionTest::SetUp() {
  mainWindow = CreateMainWindow();
  ASSERT_NE(mainWindow, nullptr);
  record = KWESessionRecord{};
  record.size = sizeof record;
  record.instance = TestInstance();
  record.mainWindow = mainWindow;
  record.flags = SessionFlags();
  FillRecord(record);
  KWE_InitSession(&record);
  KWEGlobalsRecord globals = GlobalsFor(vars);
  ASSERT_EQ(KWE_InitGlobals(&globals), 0);
}

void SessionTest::TearDown() {
  KWE_ExitSession();
  if (mainWindow) DestroyWindow(mainWindow);
}

}  // namespace kwe_test
