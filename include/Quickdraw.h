/* QuickDraw. The calls below are those applications patch through the trap
   table; the rest of QuickDraw joins them as it is built. */
#ifndef KWE_QUICKDRAW_H
#define KWE_QUICKDRAW_H

#include "MacTypes.h"

KWE_API void KWE_CALL SetOrigin(SInt16 h, SInt16 v);
/* SetCursor: exported shortened, see KWENames.h. */
KWE_API void KWE_CALL SetCurso(const Cursor *crsr);

#endif
