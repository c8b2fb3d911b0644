/* The Desk Manager: desk accessories and the system's share of events.
   Windows has no desk accessories, so the Apple menu's 'DRVR' list stays
   empty, no window is ever a desk accessory's, and these calls answer as
   the Toolbox did when none was open: nothing opens, and every event and
   edit command is left to the application. They are inline because the
   library has nothing to do for them. */
#ifndef KWE_DESK_H
#define KWE_DESK_H

#include "Events.h"
#include "MacTypes.h"

static inline SInt16 OpenDeskAcc(ConstStr255Param deskAccName) {
  (void)deskAccName;
  return 0;
}
static inline void CloseDeskAcc(SInt16 refNum) { (void)refNum; }
static inline void SystemClick(const EventRecord* theEvent, WindowPtr theWindow) {
  (void)theEvent;
  (void)theWindow;
}
static inline Boolean SystemEdit(SInt16 editCmd) {
  (void)editCmd;
  return 0;
}
static inline Boolean SystemEvent(const EventRecord* theEvent) {
  (void)theEvent;
  return 0;
}
static inline void SystemMenu(SInt32 menuResult) { (void)menuResult; }

#endif
