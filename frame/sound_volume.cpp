// The speaker volume of SetSoundVol and GetSoundVol: one level of the
// library's own, kept for the application to read back. The Windows mixer is
// left alone, since its volume belongs to the user; hence the calls are
// silent rather than reported.
#include "Sound.h"

namespace {
SInt16 g_soundVolume = 7;  // the Macintosh's loudest level until told otherwise
}  // namespace

KWE_API void KWE_CALL SetSoundVol(SInt16 level) { g_soundVolume = level; }

KWE_API void KWE_CALL GetSoundVol(SInt16* level) {
  if (level) *level = g_soundVolume;
}
