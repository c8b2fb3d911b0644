/* Event Manager. The calls below are those applications patch through the
   trap table; the rest of the manager joins them as it is built. */
#ifndef KWE_EVENTS_H
#define KWE_EVENTS_H

#include "MacTypes.h"

typedef UInt16 EventMask;

enum {
  nullEvent = 0,
  mouseDown = 1,
  mouseUp = 2,
  keyDown = 3,
  keyUp = 4,
  autoKey = 5,
  updateEvt = 6,
  activateEvt = 8,
  osEvt = 15,
  everyEvent = 0xFFFF
};

enum {
  activeFlag = 0x0001,
  btnState = 0x0080,
  cmdKey = 0x0100,
  shiftKey = 0x0200,
  alphaLock = 0x0400,
  optionKey = 0x0800,
  controlKey = 0x1000
};

#pragma pack(push, 2)
typedef struct EventRecord {
  UInt16 what;
  UInt32 message;
  UInt32 when;
  Point where;
  UInt16 modifiers;
} EventRecord;
#pragma pack(pop)

KWE_API Boolean KWE_CALL GetNextEvent(EventMask eventMask, EventRecord *theEvent);
KWE_API Boolean KWE_CALL WaitNextEvent(EventMask eventMask, EventRecord *theEvent, UInt32 sleep,
                                       RgnHandle mouseRgn);
KWE_API Boolean KWE_CALL EventAvail(EventMask eventMask, EventRecord *theEvent);
KWE_API Boolean KWE_CALL Button(void);
KWE_API void KWE_CALL GetMouse(Point *mouseLoc);
KWE_API void KWE_CALL SystemTask(void);
KWE_API Boolean KWE_CALL StillDown(void);
KWE_API Boolean KWE_CALL WaitMouseUp(void);

#endif
