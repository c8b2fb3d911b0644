/* MIDI Manager. Windows' MIDI services are not reached through it: every call
   reports "MIDI" and answers noErr, nil or 0 without writing its output
   parameters. SndDispVersion is silent and answers 0 (no tool installed). */
#ifndef KWE_MIDI_H
#define KWE_MIDI_H

#include "MacTypes.h"

typedef SInt16 MIDIRefNum;
typedef struct MIDIIDList** MIDIIDListHandle;
typedef struct MIDIPortInfo** MIDIPortInfoHdl;
typedef struct MIDIPortParams* MIDIPortParamsPtr;
typedef struct MIDIPacket* MIDIPacketPtr;
typedef void(KWE_CALL* MIDITimeProcPtr)(SInt32 curTime, SInt32 refCon);

/* The NumVersion of the tool numbered toolnum, as one long. */
KWE_API SInt32 KWE_CALL SndDispVersion(SInt16 toolnum);
KWE_API OSErr KWE_CALL MIDISignIn(OSType clientID, SInt32 refCon, Handle icon,
                                  ConstStr255Param name);
KWE_API MIDIIDListHandle KWE_CALL MIDIGetPorts(OSType clientID);
KWE_API OSErr KWE_CALL MIDIAddPort(OSType clientID, SInt16 BufSize, MIDIRefNum* refnum,
                                   MIDIPortParamsPtr init);
KWE_API MIDIPortInfoHdl KWE_CALL MIDIGetPortInfo(OSType clientID, OSType portID);
KWE_API OSErr KWE_CALL MIDIConnectData(OSType srcClID, OSType srcPortID, OSType dstClID,
                                       OSType dstPortID);
KWE_API void KWE_CALL MIDIFlush(MIDIRefNum refnum);
KWE_API SInt32 KWE_CALL MIDIGetCurTime(MIDIRefNum refnum);
KWE_API void KWE_CALL MIDISetCurTime(MIDIRefNum refnum, SInt32 time);
KWE_API void KWE_CALL MIDIStartTime(MIDIRefNum refnum);
KWE_API void KWE_CALL MIDISetOffsetTime(MIDIRefNum refnum, SInt32 offsetTime);
KWE_API OSErr KWE_CALL MIDIWritePacket(MIDIRefNum refnum, MIDIPacketPtr packet);
KWE_API void KWE_CALL MIDIWakeUp(MIDIRefNum refnum, SInt32 time, SInt32 period,
                                 MIDITimeProcPtr timeProc);

#endif
