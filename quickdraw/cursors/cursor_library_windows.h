// Which Win32 windows are the library's, as the cursor calls judge them: by
// their class, one of the session's three window class names. The Window
// Manager takes this judgement over once Toolbox windows exist.
#pragma once
#include <windows.h>

namespace kwe::quickdraw {

constexpr int kLibraryWindowClassCount = 3;  // main, document, MDI child

// The library window under the mouse whose client area (outside a grow box)
// holds it, or null. The window is remembered for its class.
HWND LibraryWindowUnderMouse();
// Remembers window for its class when it is a library window.
void NoticeLibraryWindow(HWND window);
// The window last seen of each class (index 0 to 2), or null once it is gone.
HWND RememberedLibraryWindow(int classIndex);
void ForgetLibraryWindows();

}  // namespace kwe::quickdraw
