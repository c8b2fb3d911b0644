// The host's thin Windows shell: what a ported application keeps of its own
// besides its Macintosh code.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "MacTypes.h"

// Registers the window classes the library names (the Toolbox windows' two
// with the forwarding procedures of library_windows.h), creates the main
// window, and starts a session with every low-memory global bound to host
// variables.
HWND StartHost(HINSTANCE instance, const char* commandLine);
void EndHost(HWND mainWindow);

// The host's variables behind the low-memory globals (thePort, the
// patterns, ...), as the Macintosh code reads them.
struct KWELowMemoryGlobals;
const KWELowMemoryGlobals* HostGlobals();

// Lines the main window shows (the Toolbox tour fills them in), and what
// paints below them: the Macintosh side's QuickDraw scene, given the paint
// DC and the top of the free space.
void SetWindowLines(const std::vector<std::string>& lines);
using ScenePainter = void (*)(HDC dc, int top);
void SetScenePainter(ScenePainter painter);

// Posts what a user would do: a click in the main window, a click at click
// in documentWindow (client coordinates), the keys H and I, and Escape,
// which ends the tour's event loop.
void PostDemoInput(HWND mainWindow, HWND documentWindow, POINT click);

// Saves the main window, frame and all, as a PNG.
bool SaveWindowScreenshot(HWND window, const std::string& path);
