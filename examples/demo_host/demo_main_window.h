// The demonstration's main window: the host shell makes it and forwards its
// messages; the demonstration paints its lines and scene in it, posts a
// user's input to it and saves it as a screenshot.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

// The shell's main-window hook: paints the lines and the scene.
BOOL PaintMainWindow(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result);

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
