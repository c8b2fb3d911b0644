// Windows with the small tool caption: the library draws their frame and
// caption, with its own close and zoom boxes, instead of Windows.
#pragma once
#include <windows.h>

#include "MacWindows.h"

namespace kwe::windows {

// The frame around the client area: a sizing frame for windows with a grow
// box, else one pixel.
SIZE SmallCaptionFrame(bool growBox);

// The frame messages of a small-caption window; false for the ones that
// take default processing.
bool SmallCaptionMessage(WindowPtr w, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam,
                         LRESULT* result);

}  // namespace kwe::windows
