/* Routine descriptors. On the Intel processor every procedure is native
   code called with the library's callee-pops convention, so a universal
   procedure pointer is the procedure itself: NewRoutineDescriptor hands the
   procedure back and DisposeRoutineDescriptor has nothing to release. The
   procedure-information words are kept for sources that build them. */
#ifndef KWE_MIXEDMODE_H
#define KWE_MIXEDMODE_H

#include "MacTypes.h"

typedef UInt32 ProcInfoType;
typedef SInt8 ISAType;
typedef UInt16 CallingConventionType;

enum { kM68kISA = 0, kPowerPCISA = 1 };
enum {
  kPascalStackBased = 0,
  kCStackBased = 1,
  kRegisterBased = 2,
  kThinkCStackBased = 5,
  kD0DispatchedPascalStackBased = 8,
  kStackDispatchedPascalStackBased = 14,
  kSpecialCase = 15
};

#define GetCurrentISA() ((ISAType)kPowerPCISA)
#define NewRoutineDescriptor(theProc, theProcInfo, theISA) ((UniversalProcPtr)(theProc))
#define DisposeRoutineDescriptor(theUPP) ((void)(theUPP))

#endif
