#include "support/test_host.h"

#include <winternl.h>

namespace kwe_test {

HINSTANCE TestInstance() { return GetModuleHandleA(nullptr); }

int LiveGdiObjects() {
  using Query = LONG(WINAPI*)(HANDLE, PROCESSINFOCLASS, void*, ULONG, ULONG*);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll"), "NtQueryInformationProcess")));
  PROCESS_BASIC_INFORMATION basic{};
  if (sizeof(void*) != 8 || !query ||
      query(GetCurrentProcess(), ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0)
    return -1;
  // 24-byte entries on x86_64, the object type in byte 14 (0: free).
  auto* table = *reinterpret_cast<const UInt8* const*>(
      reinterpret_cast<const UInt8*>(basic.PebBaseAddress) + 0xF8);
  int live = 0;
  for (int i = 0; table && i < 0x10000; ++i) live += table[i * 24 + 14] != 0;
  return table ? live : -1;
}

void RegisterHostClasses() {
  static bool registered = false;
  if (registered) return;
  WNDCLASSA wc{};
  wc.lpfnWndProc = DefWindowProcA;
  wc.hInstance = TestInstance();
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  wc.lpszClassName = "KWEMainWndClass";
  RegisterClassA(&wc);
  kwe::host::RegisterLibraryClasses(TestInstance());
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
