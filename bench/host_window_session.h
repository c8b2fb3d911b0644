// A session on a visible main window of KWEMainWndClass, with the library's
// window classes registered and InitGraf and InitWindows done, as a host
// shell starts one: the user-interface benches run in it.
#pragma once
#include <windows.h>

#include "KWESession.h"
#include "MacWindows.h"
#include "host/shell.h"

namespace kwe_bench {

struct HostWindowSession {
  explicit HostWindowSession(const char* title) {
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = instance;
    wc.lpszClassName = "KWEMainWndClass";
    RegisterClassA(&wc);
    kwe::host::RegisterLibraryClasses(instance);
    main = CreateWindowA("KWEMainWndClass", title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                         1000, 700, nullptr, nullptr, instance, nullptr);
    ShowWindow(main, SW_SHOWNORMAL);
    KWESessionRecord record{};
    record.size = sizeof record;
    record.instance = instance;
    record.mainWindow = main;
    KWE_InitSession(&record);
    KWEGlobalsRecord globals{};
    globals.size = 4;
    KWE_InitGlobals(&globals);
    GrafPtr screen;
    InitGraf(&screen);
    InitWindows();
  }
  ~HostWindowSession() {
    KWE_ExitSession();
    DestroyWindow(main);
  }
  HostWindowSession(const HostWindowSession&) = delete;
  HostWindowSession& operator=(const HostWindowSession&) = delete;

  HWND main = nullptr;
};

}  // namespace kwe_bench
