/* QuickDraw's cursor calls. SetCursor and ShowCursor are Win32 names too and
   are exported shortened (SetCurso, ShowCurso); C++ sees the Toolbox names
   as overloads beside Win32's, C gets a macro unless windows.h is already
   in (it would rename Win32's calls).

   A cursor made from a 'CURS' or 'crsr' resource as it is loaded is cached
   for the session, and its record says so in its hot spot: the high byte of
   hotSpot.v is 0xFF and the high byte of hotSpot.h holds the cache slot,
   the coordinates staying in the low bytes. GetCursor's standard cursors
   (IDs 0 to 4) and the arrow global are such records. The data and mask
   rows are used in the byte order a resource holds them. */
#ifndef KWE_CURSORS_H
#define KWE_CURSORS_H

#include "MacTypes.h"

/* The arrow, and the cursor level back to 0 (visible). */
KWE_API void KWE_CALL InitCursor(void);
/* Patchable (trap 0xA851). Over the client area of the library's windows
   the cursor is shown at once and becomes their class cursor; elsewhere it
   is only recorded. */
KWE_API void KWE_CALL SetCurso(const Cursor* crsr);
KWE_API void KWE_CALL HideCursor(void);
/* At cursor level 0 (nothing hidden), only shows an obscured cursor. */
KWE_API void KWE_CALL ShowCurso(void);
/* Hides the cursor while it lies over the host's main window, until the
   mouse moves. */
KWE_API void KWE_CALL ObscureCursor(void);

/* Converts a Cursor, or with isColour the 1-bit part of a colour cursor in
   the 'crsr' resource layout (data at 20, mask at 52, hot spot at 84):
   - make false: the record's cache slot is released, its hot spot unmarked;
   - create false: only the hot spot is unmarked, and with swapAndCache put
     in Macintosh order (as for writing the resource back);
   - otherwise a 32 by 32 Windows cursor (HCURSOR) is made and answered. With
     swapAndCache the hot spot is first taken from Macintosh order and the
     cursor is cached and marked in the record (null, the record left
     unmarked, when all 135 slots are taken); without, the caller owns the
     cursor and destroys it.
   In MOUSE.INI's large-pointer mode the image is doubled, and so is the hot
   spot a cached record carries. */
KWE_API void* KWE_CALL KWE_BrovaskCursor(Boolean make, Boolean isColour, void* cursorPtr,
                                         Boolean create, Boolean swapAndCache);

#ifdef __cplusplus
inline void SetCursor(const Cursor* crsr) { SetCurso(crsr); }
inline void ShowCursor(void) { ShowCurso(); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define SetCursor SetCurso
#define ShowCursor ShowCurso
#endif

#endif
