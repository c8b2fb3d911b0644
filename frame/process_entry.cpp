#include <windows.h>

#include "frame/session.h"

// The runtime's own start-up has run by the time this is called (a failure
// there makes the loader see 0 without reaching here).
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) kwe::TheSession().libraryModule = module;
  return TRUE;
}
