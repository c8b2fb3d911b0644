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
  int bitsPerPixel = 0;  // BITSPIXEL x PLANES of the screen DC; 0 before InitGraf
  int paletteSize = 0;
  int logPixelsX = 96;
  int logPixelsY = 96;
  int menuItemHeight = 0;
  GDHandle mainDevice = nullptr;

  HWND window = nullptr;    // GetDC's window for the screen port: null is the whole screen
  HDC dcHeld = nullptr;     // held only while the screen port is current
  HDC pendingDC = nullptr;  // the DC the next OpenCPort takes (the screen port's)
  // The pending DC is a memory DC made from no DC, which answers
  // GetDeviceCaps with the screen's figures.
  bool pendingScreenCaps = false;
  bool pendingOwned = false;  // the port that takes the pending DC deletes it
  int wmgrNesting = 0;        // KWE_SetWMgrPortDC in force
};

const ScreenState& Screen();
ScreenState& MutableScreen();
HDC TakePendingScreenDC();

// Memory DCs made from no DC (the shared one, a GWorld's) answer
// GetDeviceCaps with the screen's figures, and under Wine each such question
// asks the window server whether the display changed; the library takes the
// figures InitGraf measured instead. True when dc is such a DC and they are
// known.
bool HasScreenCaps(HDC dc);

}  // namespace kwe::quickdraw
