// What InitGraf learns about the screen, and the screen DC's bookkeeping.
#pragma once
#include <windows.h>

#include "Quickdraw.h"

namespace kwe::quickdraw {

struct ScreenState {
  int width = 0;
  int height = 0;
  int portHeight = 0;  // the screen port's height
  int depth = 1;
  int paletteSize = 0;
  int logPixelsX = 96;
  int logPixelsY = 96;
  int menuItemHeight = 0;
  GDHandle mainDevice = nullptr;

  HWND window = nullptr;    // GetDC's window for the screen port: null is the whole screen
  HDC dcHeld = nullptr;     // held only while the screen port is current
  HDC pendingDC = nullptr;  // the DC the next OpenCPort takes (the screen port's)
  int wmgrNesting = 0;      // KWE_SetWMgrPortDC in force
};

const ScreenState& Screen();
ScreenState& MutableScreen();
HDC TakePendingScreenDC();

}  // namespace kwe::quickdraw
