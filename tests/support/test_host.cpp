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

KWEGlobalsRecord GlobalsFor(HostVariables& v) { return KWEGlobalsRecordFor(&v); }

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
