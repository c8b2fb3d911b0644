/* Dialog Manager. ModalDialog is patchable through the trap table; the rest of
   the manager joins it as it is built. */
#ifndef KWE_DIALOGS_H
#define KWE_DIALOGS_H

#include "Events.h"
#include "MacTypes.h"

typedef Boolean(KWE_CALL* ModalFilterProcPtr)(DialogPtr theDialog, EventRecord* theEvent,
                                              SInt16* itemHit);

KWE_API void KWE_CALL ModalDialog(ModalFilterProcPtr filterProc, SInt16* itemHit);

#endif
