/* Process Manager: one process, the host's. */
#ifndef KWE_PROCESSES_H
#define KWE_PROCESSES_H

#include "Files.h"
#include "MacTypes.h"

#pragma pack(push, 2)
typedef struct ProcessSerialNumber {
  UInt32 highLongOfPSN;
  UInt32 lowLongOfPSN;
} ProcessSerialNumber;

typedef struct LaunchParamBlockRec {
  UInt32 reserved1;
  UInt16 reserved2;
  UInt16 launchBlockID;
  UInt32 launchEPBLength;
  UInt16 launchFileFlags;
  UInt16 launchControlFlags;
  FSSpecPtr launchAppSpec;
  ProcessSerialNumber launchProcessSN;
  UInt32 launchPreferredSize;
  UInt32 launchMinimumSize;
  UInt32 launchAvailableSize;
  void* launchAppParameters;
} LaunchParamBlockRec, *LaunchPBPtr;
#pragma pack(pop)

/* Runs the application with WinExec; its failures map onto memFullErr,
   fnfErr, dirNFErr and -37 (bdNamErr). */
KWE_API OSErr KWE_CALL LaunchApplication(LaunchPBPtr launchParams);
/* GetCurrentProcess: exported shortened, see KWENames.h. The serial number
   is (0, the host's instance handle). */
KWE_API OSErr KWE_CALL GetCurrentProces(ProcessSerialNumber* PSN);
KWE_API OSErr KWE_CALL GetFrontProcess(ProcessSerialNumber* PSN);
KWE_API OSErr KWE_CALL GetNextProcess(ProcessSerialNumber* PSN);
KWE_API OSErr KWE_CALL SameProcess(const ProcessSerialNumber* PSN1, const ProcessSerialNumber* PSN2,
                                   Boolean* result);

#endif
