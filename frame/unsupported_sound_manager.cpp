// Sound Manager channels: nothing is played. Each call reports its own name
// (__func__ is the exported name) and answers noErr; no channel is made.
// SetSoundVol and GetSoundVol are real: see sound_volume.cpp.
#include "Sound.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL SndNewChannel(SndChannelPtr*, SInt16, SInt32, SndCallBackProcPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL SndDisposeChannel(SndChannelPtr, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL SndDoCommand(SndChannelPtr, const SndCommand*, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL SndPlay(SndChannelPtr, SndListHandle, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}
