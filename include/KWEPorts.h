/* The library's port calls that take Win32 objects: the device context under
   the current port, and the Window Manager's use of the screen port. */
#ifndef KWE_PORTS_H
#define KWE_PORTS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Quickdraw.h"

KWE_API HDC KWE_CALL KWE_GetCurrentDC(void);
/* Puts dc under the current port (install true remembers it as a foreign DC,
   for example a WM_PAINT DC; false gives the DC being replaced its text
   alignment back). A null dc only answers the current DC. Answers the DC
   the port drew into before. */
KWE_API HDC KWE_CALL KWE_SwaphDC(HDC dc, Boolean install);
/* Lets the screen port draw into a window's DC with portRect *rect, until
   the matching call with enter false. Answers the window used (found under
   the rectangle when hwnd is null). */
KWE_API HWND KWE_CALL KWE_SetWMgrPortDC(Boolean enter, HWND hwnd, HDC dc, Rect* rect);
/* After an application wrote port fields directly. */
KWE_API void KWE_CALL KWE_ChangeThePortAttr(void);
KWE_API void KWE_CALL KWE_PortRectChange(void);
KWE_API void KWE_CALL KWE_ClipRgnChange(GrafPtr port);
KWE_API void KWE_CALL KWE_VisRgnChange(GrafPtr port);
KWE_API void KWE_CALL KWE_DialogFontMode(GrafPtr port, Boolean on);
KWE_API void KWE_CALL KWE_BrushAlign(SInt16 delta);
/* Several polygons at once in the current port's pen pattern and mode; false
   when hdc is neither 0 nor the current DC. */
KWE_API Boolean KWE_CALL KWE_PolyPolygon(HDC hdc, const POINT* points, const INT* counts,
                                         int polygonCount);

#endif
