// Ports that draw into a Win32 window: the Window Manager opens them on the
// window's own device context and tells them when the window shows or hides.
#pragma once
#include <windows.h>

#include "Quickdraw.h"

namespace kwe::quickdraw {

// OpenPort or OpenCPort on hwnd's DC (GetDC), tied to the window: the DC is
// given back with ReleaseDC when the port closes. False (nothing left open)
// when no port slot or DC could be had.
bool OpenWindowPort(GrafPtr port, bool colour, HWND hwnd);
// A hidden window's port draws nothing.
void SetWindowPortVisible(GrafPtr port, bool visible);

}  // namespace kwe::quickdraw
