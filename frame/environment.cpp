// Gestalt, SysEnvirons and Environs: what the application learns of its machine.
#include "Gestalt.h"
#include "OSUtils.h"
#include "frame/gestalt_table.h"
#include "frame/session.h"

KWE_API OSErr KWE_CALL Gestalt(OSType selector, SInt32* response) {
  SInt32 answer = 0;
  bool known = kwe::GestaltResponse(selector, kwe::TheSession().windowsFlags, &answer);
  if (response) *response = answer;
  return known ? OSErr(noErr) : OSErr(gestaltUndefSelectorErr);
}

KWE_API OSErr KWE_CALL SysEnvirons(SInt16 versionRequested, SysEnvRec* theWorld) {
  if (!theWorld) return paramErr;
  theWorld->environsVersion = versionRequested;
  theWorld->machineType = 4;
  theWorld->systemVersion = kwe::kSystemVersion;
  theWorld->processor = 0;
  theWorld->hasFPU = (kwe::TheSession().windowsFlags & kwe::kCoprocessorFlag) ? 1 : 0;
  theWorld->hasColorQD = 1;
  theWorld->keyBoardType = 0;
  theWorld->atDrvrVersNum = 0;
  theWorld->sysVRefNum = 0;
  return noErr;
}

KWE_API void KWE_CALL Environs(SInt16* rom, SInt16* machine) {
  if (rom) *rom = kwe::kSystemVersion;
  if (machine) *machine = 1;
}

// The A5 world does not exist on Intel: globals are ordinary data.
KWE_API SInt32 KWE_CALL SetCurrentA5(void) { return 0; }
KWE_API SInt32 KWE_CALL SetA5(SInt32) { return 0; }
