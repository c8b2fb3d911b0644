/* The library's pixel maps over Windows' own pixels. */
#ifndef KWE_PIXMAPS_H
#define KWE_PIXMAPS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Quickdraw.h"

/* A pixel map over a copy of a packed DIB (header, colours, bits) of 1, 4,
   8 or 24 bits, uncompressed: bounds (0, 0, biHeight, biWidth), a colour
   table of the DIB's colours (reversed, flag 0x0100, unless they run from
   white to black), and deeper DIBs described as 16 bits. biClrUsed past the
   depth's colours and biSizeImage are set in dib. Null for anything else or
   when memory is short. CopyBits puts its pixels on a port's DC. */
KWE_API PixMapHandle KWE_CALL KWE_NewDIBPixMap(BITMAPINFOHEADER* dib);
/* The packed DIB of a library pixel map and, in *bits, its pixels; null
   for a pixel map that is not the library's or holds no DIB. */
KWE_API BITMAPINFO* KWE_CALL KWE_GetDIBFromPixMap(PixMapHandle pm, void** bits);

#endif
