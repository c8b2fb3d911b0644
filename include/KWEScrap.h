/* The host's side of the desk scrap: its clipboard procedure and the
   notification it forwards when another program changes the clipboard. */
#ifndef KWE_SCRAP_EXTENSIONS_H
#define KWE_SCRAP_EXTENSIONS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Scrap.h"

/* Operations of the clipboard procedure. */
enum {
  kweScrapGet = 0,     /* produce type from format into destination; p: SInt32* offset,
                          q: SInt32* result (the length, or an error; starts as noTypeErr) */
  kweScrapPut = 1,     /* place the p's bytes of type on the clipboard; q: SInt32* length */
  kweScrapChanged = 2, /* another program changed the clipboard; format is on it */
  kweScrapSuspend = 3, /* the application is being switched away from */
  kweScrapResume = 4   /* back again; format is 1 when the clipboard is to be converted */
};

/* Non-zero when the procedure handled the request. The device context is
   the current port's (the screen's for suspend and resume). The procedure
   runs while the library holds the clipboard open (except suspend and
   resume), so it only reads and sets data. */
typedef SInt32(__stdcall* KWEClipboardProc)(SInt16 operation, UInt16 format, HDC dc,
                                            Handle destination, ResType theType, void* p, void* q);

/* The host calls it on WM_CLIPBOARDUPDATE (or WM_DRAWCLIPBOARD): unless the
   change was the library's own, scrapCount rises by one and the procedure
   is asked about the formats now on the clipboard. */
KWE_API void KWE_CALL KWE_DrawClipboard(void);

#endif
