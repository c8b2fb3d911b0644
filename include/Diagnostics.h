/* The Toolbox's debugging calls. Reports go to a message box titled with the
   host's string resource 1029, or to the debugger output when WIN.INI
   [kweport2] DebugStrMBox=0; DebugStrBreak=1 breaks into the debugger after
   each. Session flag 0x00020000 silences them. */
#ifndef KWE_DIAGNOSTICS_H
#define KWE_DIAGNOSTICS_H

#include "MacTypes.h"

/* The text starts at the second byte and runs to the first NUL: pass a
   Pascal string that also ends in a NUL. */
KWE_API void KWE_CALL DebugStr(ConstStr255Param message);
KWE_API void KWE_CALL Debugger(void);
KWE_API void KWE_CALL SysError(SInt16 errorCode);

#endif
