/* Vertical-retrace tasks. There is no retrace interrupt: tasks run from the
   message pump while the mouse button is down and from KWE_VBL_Interrupt,
   which the host calls from its own timer. While any task is installed the
   main window holds the mouse capture. */
#ifndef KWE_RETRACE_H
#define KWE_RETRACE_H

#include "MacTypes.h"

typedef void(KWE_CALL* VBLProcPtr)(void);

#pragma pack(push, 2)
typedef struct VBLTask {
  QElemPtr qLink;
  SInt16 qType;
  VBLProcPtr vblAddr;
  SInt16 vblCount; /* counts down each run; at 0 vblAddr is called once */
  SInt16 vblPhase;
} VBLTask, *VBLTaskPtr;
#pragma pack(pop)

KWE_API OSErr KWE_CALL VInstall(VBLTaskPtr vblTaskPtr);
/* -1 (qErr) when the task is not installed. */
KWE_API OSErr KWE_CALL VRemove(VBLTaskPtr vblTaskPtr);

#endif
