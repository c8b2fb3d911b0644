#include "quickdraw/cursors/cursor_library_windows.h"

#include "frame/session.h"

namespace kwe::quickdraw {
namespace {

HWND g_remembered[kLibraryWindowClassCount] = {};

// Class names compare as Windows compares them, without regard to case.
// Another copy of the host registers the same names: only this process's
// windows count.
int LibraryClassIndex(HWND window) {
  char name[256];
  DWORD process = 0;
  if (!window || !GetWindowThreadProcessId(window, &process) || process != GetCurrentProcessId() ||
      !GetClassNameA(window, name, sizeof name))
    return -1;
  const char* names[kLibraryWindowClassCount] = {MainWindowClassName(), WindowClassName(),
                                                 MdiWindowClassName()};
  for (int i = 0; i < kLibraryWindowClassCount; ++i)
    if (names[i] && lstrcmpiA(name, names[i]) == 0) return i;
  return -1;
}

}  // namespace

void NoticeLibraryWindow(HWND window) {
  int index = LibraryClassIndex(window);
  if (index >= 0) g_remembered[index] = window;
}

HWND RememberedLibraryWindow(int classIndex) {
  if (classIndex < 0 || classIndex >= kLibraryWindowClassCount) return nullptr;
  HWND& window = g_remembered[classIndex];
  // The handle of a destroyed window may since name another window.
  if (window && LibraryClassIndex(window) != classIndex) window = nullptr;
  return window;
}

void ForgetLibraryWindows() {
  for (HWND& window : g_remembered) window = nullptr;
}

HWND LibraryWindowUnderMouse() {
  POINT at;
  if (!GetCursorPos(&at)) return nullptr;
  HWND window = WindowFromPoint(at);
  if (LibraryClassIndex(window) < 0) return nullptr;
  NoticeLibraryWindow(window);
  // Asked as Windows asks before WM_SETCURSOR: a grow box in the client area
  // answers as a sizing corner, and keeps the sizing cursor.
  LRESULT hit = SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y));
  return hit == HTCLIENT ? window : nullptr;
}

}  // namespace kwe::quickdraw
