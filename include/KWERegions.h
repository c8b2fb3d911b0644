/* The library's region helpers, through which QuickDraw and the Window
   Manager hand Toolbox regions to GDI. */
#ifndef KWE_REGIONS_H
#define KWE_REGIONS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Quickdraw.h"

/* The region's own Win32 region, made first (a copy of its box) when the
   region is a rectangle. Null for a null region. */
KWE_API HRGN KWE_CALL KWE_RgnSetToRealRectRgn(RgnHandle rgn);
/* Makes the region the rectangle of its box, releasing its Win32 region or
   mask; answers the shared rectangle marker. */
KWE_API HRGN KWE_CALL KWE_RgnSetToFakeRectRgn(RgnHandle rgn);
/* True for a rectangle; an empty region, or a Win32 region that covers
   exactly its box, becomes a rectangle on the way. */
KWE_API Boolean KWE_CALL KWE_IsRectRgn(RgnHandle rgn);
/* The box as a Win32 RECT (read afresh from GDI for a Win32 region). */
KWE_API void KWE_CALL KWE_RgnGetBBoxRECTFromRgn(RgnHandle rgn, RECT* box);
/* Selects the region as the DC's clip region: 1 empty (NULLREGION),
   2 rectangle (SIMPLEREGION), 3 anything else (COMPLEXREGION). While system
   value 23 is non-zero only the kind is answered. */
KWE_API SInt16 KWE_CALL KWE_SelectClipRgn(HDC dc, RgnHandle rgn);

#endif
