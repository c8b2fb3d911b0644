/* Offscreen drawing: GWorlds (colour ports whose pixels are a Windows
   bitmap in a memory DC, in the screen's format), the pixels-state calls,
   and the library's temporary offscreen buffer and bitmap transforms. */
#ifndef KWE_QD_OFFSCREEN_H
#define KWE_QD_OFFSCREEN_H

#include "Quickdraw.h"

/* A CGrafPort followed by the GDHandle given to NewGWorld. */
typedef CGrafPtr GWorldPtr;
typedef UInt32 GWorldFlags;
typedef SInt8 GWorldPixelsState;

enum {
  pixelsPurgeable = 0x40, /* bit 6 of the pixels state */
  pixelsLocked = 0x80,    /* bit 7 */
  /* NewGWorld flag bit 1: the GWorld draws in the one memory DC every such
     GWorld shares (its bitmap is selected in while it is current). */
  kweSharedGWorldDC = 0x02
};

/* 0, or -1 when the record, the DC, the bitmap or the port cannot be made.
   pixelDepth and cTable do not change the result: the pixels take the
   screen's format. */
KWE_API OSErr KWE_CALL NewGWorld(GWorldPtr* offscreenGWorld, SInt16 pixelDepth,
                                 const Rect* boundsRect, CTabHandle cTable, GDHandle aGDevice,
                                 GWorldFlags flags);
KWE_API void KWE_CALL DisposeGWorld(GWorldPtr offscreenGWorld);
KWE_API void KWE_CALL SetGWorld(CGrafPtr port, GDHandle gdh);
KWE_API void KWE_CALL GetGWorld(CGrafPtr* port, GDHandle* gdh);
KWE_API PixMapHandle KWE_CALL GetGWorldPixMap(GWorldPtr offscreenGWorld);
KWE_API Ptr KWE_CALL GetPixBaseAddr(PixMapHandle pm);
/* Changes nothing and answers 0: the GWorld keeps its pixels whatever the
   depth asked for. */
KWE_API GWorldFlags KWE_CALL UpdateGWorld(GWorldPtr* offscreenGWorld, SInt16 pixelDepth,
                                          const Rect* boundsRect, CTabHandle cTable,
                                          GDHandle aGDevice, GWorldFlags flags);
/* One pixels state for the whole process, whatever pixel map is named. */
KWE_API Boolean KWE_CALL LockPixels(PixMapHandle pm);
KWE_API void KWE_CALL UnlockPixels(PixMapHandle pm);
KWE_API void KWE_CALL AllowPurgePixels(PixMapHandle pm);
KWE_API void KWE_CALL NoPurgePixels(PixMapHandle pm);
KWE_API GWorldPixelsState KWE_CALL GetPixelsState(PixMapHandle pm);
KWE_API void KWE_CALL SetPixelsState(PixMapHandle pm, GWorldPixelsState state);
/* The table gets a new seed, so that colour matching builds it again. */
KWE_API void KWE_CALL CTabChanged(CTabHandle ctab);

/* Draws the current port into a bitmap of r until KWE_EndOffScreen (with
   erase, r is first erased); answers whether the buffer is active. */
KWE_API Boolean KWE_CALL KWE_BeginOffScreen(Boolean erase, const Rect* r);
/* Ends the buffer; with copy, its pixels go onto the port with the mode's
   raster operation (with excludeUpdate, not over a window's update region). */
KWE_API void KWE_CALL KWE_EndOffScreen(Boolean copy, Boolean excludeUpdate, SInt16 mode);
/* Turns the Windows bitmap of a GWorld's pixel map (the one selected in its
   DC) in place. angle in degrees clockwise: 90, 180 or 270; a quarter turn
   swaps the bounds' width and height (bounds moved to (0, 0)). */
KWE_API Boolean KWE_CALL KWE_OffScreenRotate(PixMapHandle pm, SInt16 angle);
/* how: 1 mirrors left to right, 2 top to bottom, 3 both. */
KWE_API Boolean KWE_CALL KWE_OffScreenFlip(PixMapHandle pm, SInt16 how);

/* Windows-side sources see the library's own Win32-typed calls. */
#if defined(_WINDOWS_) || defined(_WINDOWS_H)
#include "KWEOffscreen.h"
#endif

#endif
