/* Event Manager: the 32-entry event queue, the calls that read it (each of
   which runs the Windows message pump) and the mouse and keyboard state.
   The translators that hosts call from their window procedures are in
   KWEEvents.h. */
#ifndef KWE_EVENTS_H
#define KWE_EVENTS_H

#include "MacTypes.h"
#include "OSUtils.h"

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
  mDownMask = 0x0002,
  mUpMask = 0x0004,
  keyDownMask = 0x0008,
  keyUpMask = 0x0010,
  autoKeyMask = 0x0020,
  updateMask = 0x0040,
  diskMask = 0x0080,
  activMask = 0x0100,
  highLevelEventMask = 0x0400,
  osMask = 0x8000
};

enum { charCodeMask = 0x000000FF, keyCodeMask = 0x0000FF00 };

/* The message of an osEvt from application switching. */
enum { suspendResumeMessage = 0x01, resumeFlag = 1, convertClipboardFlag = 2 };

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

/* An element of the event queue as GetEvQHdr's applications walk it: qType 1
   for a queued event, -1 for a free element. */
typedef struct EvQEl {
  QElemPtr qLink;
  SInt16 qType;
  UInt16 evtQWhat;
  UInt32 evtQMessage;
  UInt32 evtQWhen;
  Point evtQWhere;
  UInt16 evtQModifiers;
} EvQEl, *EvQElPtr;
#pragma pack(pop)

/* 128 bits, key code n at bit (n mod 8) of byte (n div 8). */
typedef UInt8 KeyMap[16];

KWE_API Boolean KWE_CALL GetNextEvent(EventMask eventMask, EventRecord* theEvent);
KWE_API Boolean KWE_CALL WaitNextEvent(EventMask eventMask, EventRecord* theEvent, UInt32 sleep,
                                       RgnHandle mouseRgn);
KWE_API Boolean KWE_CALL EventAvail(EventMask eventMask, EventRecord* theEvent);
KWE_API Boolean KWE_CALL Button(void);
KWE_API void KWE_CALL GetMouse(Point* mouseLoc);
KWE_API void KWE_CALL SystemTask(void);
KWE_API Boolean KWE_CALL StillDown(void);
KWE_API Boolean KWE_CALL WaitMouseUp(void);

/* GetOSEvent is GetNextEvent; OSEventAvail is EventAvail. */
KWE_API Boolean KWE_CALL GetOSEvent(EventMask mask, EventRecord* theEvent);
KWE_API Boolean KWE_CALL OSEventAvail(EventMask mask, EventRecord* theEvent);
/* 1 (evtNotEnb) when SysEvtMask lacks the kind. A full queue loses its
   eight oldest events with one beep. */
KWE_API OSErr KWE_CALL PostEvent(SInt16 eventNum, SInt32 eventMsg);
/* Also throws away the matching mouse and key messages Windows still holds
   for the thread. */
KWE_API void KWE_CALL FlushEvents(EventMask whichMask, EventMask stopMask);
KWE_API void KWE_CALL SetEventMask(EventMask mask);
KWE_API QHdrPtr KWE_CALL GetEvQHdr(void);
/* Ticks of 16 ms (GetTickCount() >> 4), not 1/60 s. */
KWE_API UInt32 KWE_CALL TickCount(void);
KWE_API UInt32 KWE_CALL GetDblTime(void);
KWE_API UInt32 KWE_CALL GetCaretTime(void);
/* Only space, Command (Ctrl), Shift, Option (Alt) and Escape are reported. */
KWE_API void KWE_CALL GetKeys(KeyMap theKeys);

/* The other event kinds and masks programs test. The library posts none of
   diskEvt, networkEvt and driverEvt; app1Evt to app3Evt come only from
   PostEvent, and app4Evt shares its number with osEvt. */
enum {
  diskEvt = 7,
  networkEvt = 10,
  driverEvt = 11,
  app1Evt = 12,
  app2Evt = 13,
  app3Evt = 14,
  app4Evt = 15,
  kHighLevelEvent = 23
};
enum {
  networkMask = 0x0400,
  driverMask = 0x0800,
  app1Mask = 0x1000,
  app2Mask = 0x2000,
  app3Mask = 0x4000,
  app4Mask = 0x8000
};
/* The high byte of an osEvt's message. */
enum { mouseMovedMessage = 0xFA };
enum {
  activeFlagBit = 0,
  btnStateBit = 7,
  cmdKeyBit = 8,
  shiftKeyBit = 9,
  alphaLockBit = 10,
  optionKeyBit = 11,
  controlKeyBit = 12
};
#endif
