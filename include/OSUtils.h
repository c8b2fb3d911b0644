/* Operating-system utilities: the trap table, the environment, time, the
   Notification Manager, the A5 world and the library's tunable values. */
#ifndef KWE_OSUTILS_H
#define KWE_OSUTILS_H

#include "MacTypes.h"

#pragma pack(push, 2)
typedef struct SysEnvRec {
  SInt16 environsVersion;
  SInt16 machineType;
  SInt16 systemVersion;
  SInt16 processor;
  Boolean hasFPU;
  Boolean hasColorQD;
  SInt16 keyBoardType;
  SInt16 atDrvrVersNum;
  SInt16 sysVRefNum;
} SysEnvRec;

typedef struct DateTimeRec {
  SInt16 year;
  SInt16 month;
  SInt16 day;
  SInt16 hour;
  SInt16 minute;
  SInt16 second;
  SInt16 dayOfWeek;
} DateTimeRec;

typedef struct NMRec {
  QElemPtr qLink;
  SInt16 qType;
  SInt16 nmFlags;
  SInt32 nmPrivate;
  SInt16 nmReserved;
  SInt16 nmMark;
  Handle nmIcon;
  Handle nmSound;
  StringPtr nmStr;
  ProcPtr nmResp;
  SInt32 nmRefCon;
} NMRec, *NMRecPtr;
#pragma pack(pop)

typedef SInt16 TrapType;
enum { OSTrap = 0, ToolTrap = 1 };

/* Words of the trap table give the procedure the call runs now; 0xAB03,
   0x0060, 0xA1AD and 0x008F give themselves; every other word, the
   unimplemented trap's included, gives 0xFFFFFFFF. */
KWE_API UniversalProcPtr KWE_CALL NGetTrapAddress(UInt16 trapNum, TrapType tTyp);
KWE_API UniversalProcPtr KWE_CALL GetTrapAddress(UInt16 trapNum);
KWE_API UniversalProcPtr KWE_CALL GetToolboxTrapAddress(UInt16 trapNum);
/* Storing the address NGetTrapAddress gave before patching (or null)
   restores the library's behaviour. */
KWE_API void KWE_CALL NSetTrapAddress(UniversalProcPtr trapAddr, UInt16 trapNum, TrapType tTyp);
KWE_API void KWE_CALL SetTrapAddress(UniversalProcPtr trapAddr, UInt16 trapNum);

KWE_API OSErr KWE_CALL SysEnvirons(SInt16 versionRequested, SysEnvRec* theWorld);
KWE_API void KWE_CALL Environs(SInt16* rom, SInt16* machine);
KWE_API void KWE_CALL Delay(SInt32 numTicks, SInt32* finalTicks);
KWE_API void KWE_CALL SysBeep(SInt16 duration);
KWE_API OSErr KWE_CALL NMInstall(NMRecPtr nmReqPtr);
KWE_API OSErr KWE_CALL NMRemove(NMRecPtr nmReqPtr);
KWE_API void KWE_CALL GetDateTime(UInt32* secs);
KWE_API void KWE_CALL GetTime(DateTimeRec* d);
KWE_API SInt32 KWE_CALL SetCurrentA5(void);
KWE_API SInt32 KWE_CALL SetA5(SInt32 newA5);
KWE_API Boolean KWE_CALL EqualString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens,
                                     Boolean diacSens);

/* The library's 46 tunable values: operation 1 stores value and answers the
   previous one; any other operation answers the current one. */
KWE_API SInt32 KWE_CALL KWE_SystemValue(SInt16 operation, SInt16 index, SInt32 value);

/* What SysEnvirons may report. The library answers envMacII, a processor
   of envCPUUnknown and an envUnknownKbd keyboard whatever the PC holds. */
enum { curSysEnvVers = 2 };
enum {
  envMac = -1,
  envXL = -2,
  envMachUnknown = 0,
  env512KE = 1,
  envMacPlus = 2,
  envSE = 3,
  envMacII = 4,
  envMacIIx = 5,
  envMacIIcx = 6,
  envSE30 = 7,
  envPortable = 8,
  envMacIIci = 9,
  envMacIIfx = 11
};
enum { envCPUUnknown = 0, env68000 = 1, env68010 = 2, env68020 = 3, env68030 = 4, env68040 = 5 };
enum {
  envUnknownKbd = 0,
  envMacKbd = 1,
  envMacAndPad = 2,
  envMacPlusKbd = 3,
  envAExtendKbd = 4,
  envStandADBKbd = 5,
  envPrtblADBKbd = 6,
  envPrtblISOKbd = 7,
  envStdISOADBKbd = 8,
  envExtISOADBKbd = 9
};
enum { envNotPresent = -5500, envBadVers = -5501, envVersTooBig = -5502 };
#endif
