// The clock and screen-resolution utilities.
#include <windows.h>

#include "OSUtils.h"
#include "ToolUtils.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL ReadDateTime(UInt32* secs) {
  GetDateTime(secs);
  return noErr;
}

KWE_API OSErr KWE_CALL SetDateTime(UInt32) {
  return kwe::Unsupported("SetDateTime", static_cast<OSErr>(-1));
}

// Read from the screen's device context at each call: the figures change
// when the user changes the display's text size.
KWE_API void KWE_CALL ScreenRes(SInt16* scrnHRes, SInt16* scrnVRes) {
  HDC screen = GetDC(nullptr);
  int h = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 96;
  int v = screen ? GetDeviceCaps(screen, LOGPIXELSY) : 96;
  if (screen) ReleaseDC(nullptr, screen);
  if (scrnHRes) *scrnHRes = static_cast<SInt16>(h);
  if (scrnVRes) *scrnVRes = static_cast<SInt16>(v);
}
