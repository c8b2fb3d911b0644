/* Offscreen drawing's Win32-typed call: the memory DC the next port opens
   on. QDOffscreen.h brings this in when windows.h is already in, so classic
   sources never see windows.h. */
#ifndef KWE_KWEOFFSCREEN_H
#define KWE_KWEOFFSCREEN_H

#include <windows.h>

#include "KWEWin32.h"
#include "QDOffscreen.h"

/* The DC the next OpenPort or OpenCPort takes: how bit 0 the shared memory
   DC, else a new memory DC compatible with the current one. */
KWE_API HDC KWE_CALL KWE_OffScreenDC(PixMapHandle pm, SInt32 how);

#endif
