/* Sound Manager. Sound channels have no counterpart here: the channel calls
   report themselves and answer noErr without writing their output
   parameters, and nothing is played. SetSoundVol and GetSoundVol are silent
   and keep one volume level of the library's own, which nothing else uses
   and which never reaches the Windows mixer. */
#ifndef KWE_SOUND_H
#define KWE_SOUND_H

#include "MacTypes.h"

typedef struct SndChannel* SndChannelPtr;
typedef struct SndCommand SndCommand;
typedef struct SndListResource** SndListHandle;
typedef void(KWE_CALL* SndCallBackProcPtr)(SndChannelPtr chan, SndCommand* cmd);

KWE_API OSErr KWE_CALL SndNewChannel(SndChannelPtr* chan, SInt16 synth, SInt32 init,
                                     SndCallBackProcPtr userRoutine);
KWE_API OSErr KWE_CALL SndDisposeChannel(SndChannelPtr chan, Boolean quietNow);
KWE_API OSErr KWE_CALL SndDoCommand(SndChannelPtr chan, const SndCommand* cmd, Boolean noWait);
KWE_API OSErr KWE_CALL SndPlay(SndChannelPtr chan, SndListHandle sndHdl, Boolean async);
/* Stores level as given (the Macintosh's levels run 0 to 7); the level is 7
   until the first SetSoundVol. GetSoundVol ignores a nil level. */
KWE_API void KWE_CALL SetSoundVol(SInt16 level);
KWE_API void KWE_CALL GetSoundVol(SInt16* level);

#endif
