/* Window Manager. The calls below are those applications patch through the
   trap table; the rest of the manager joins them as it is built. */
#ifndef KWE_MACWINDOWS_H
#define KWE_MACWINDOWS_H

#include "MacTypes.h"

KWE_API void KWE_CALL BeginUpdate(WindowPtr theWindow);
KWE_API void KWE_CALL EndUpdate(WindowPtr theWindow);
KWE_API void KWE_CALL InvalRect(const Rect* badRect);
KWE_API void KWE_CALL InvalRgn(RgnHandle badRgn);
KWE_API WindowPtr KWE_CALL NewWindow(void* wStorage, const Rect* boundsRect, ConstStr255Param title,
                                     Boolean visible, SInt16 theProc, WindowPtr behind,
                                     Boolean goAwayFlag, SInt32 refCon);
KWE_API WindowPtr KWE_CALL NewCWindow(void* wStorage, const Rect* boundsRect,
                                      ConstStr255Param title, Boolean visible, SInt16 procID,
                                      WindowPtr behind, Boolean goAwayFlag, SInt32 refCon);
/* ShowWindow and CloseWindow: exported shortened, see KWENames.h. */
KWE_API void KWE_CALL ShowWindo(WindowPtr theWindow);
KWE_API void KWE_CALL HideWindow(WindowPtr theWindow);
KWE_API void KWE_CALL SelectWindow(WindowPtr theWindow);
KWE_API void KWE_CALL CloseWindo(WindowPtr theWindow);
KWE_API WindowPtr KWE_CALL FrontWindow(void);

#endif
