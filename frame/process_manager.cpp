#include <windows.h>

#include <cstdint>

#include "Processes.h"
#include "frame/handle_slots.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace {

OSErr ResultOfWinExec(UINT result) {
  if (result >= 32) return noErr;
  switch (result) {
    case 0:
    case 8: return memFullErr;
    case 2: return fnfErr;
    case 3: return -35;   // nsvErr
    case 11: return -37;  // bdNamErr
    default: return static_cast<OSErr>(result);
  }
}

OSErr ThisProcess(ProcessSerialNumber* PSN) {
  if (!PSN) return paramErr;
  PSN->highLongOfPSN = 0;
  PSN->lowLongOfPSN = UInt32(kwe::HandleToSlot(kwe::TheSession().instance));
  return noErr;
}

}  // namespace

KWE_API OSErr KWE_CALL LaunchApplication(LaunchPBPtr launchParams) {
  if (!launchParams || !launchParams->launchAppSpec) return paramErr;
  char path[MAX_PATH];
  OSErr err = kwe::files::DosPathFromSpec(launchParams->launchAppSpec, path);
  if (err != noErr) return err;
  return ResultOfWinExec(WinExec(path, SW_SHOWNORMAL));
}

KWE_API OSErr KWE_CALL GetCurrentProces(ProcessSerialNumber* PSN) { return ThisProcess(PSN); }
KWE_API OSErr KWE_CALL GetFrontProcess(ProcessSerialNumber* PSN) { return ThisProcess(PSN); }
KWE_API OSErr KWE_CALL GetNextProcess(ProcessSerialNumber*) { return procNotFound; }

KWE_API OSErr KWE_CALL SameProcess(const ProcessSerialNumber* PSN1, const ProcessSerialNumber* PSN2,
                                   Boolean* result) {
  if (!PSN1 || !PSN2 || !result) return paramErr;
  *result = PSN1->highLongOfPSN == PSN2->highLongOfPSN && PSN1->lowLongOfPSN == PSN2->lowLongOfPSN;
  return noErr;
}
