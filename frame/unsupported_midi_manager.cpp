// MIDI Manager. Every call reports "MIDI", one text for the whole manager, and
// answers noErr, nil or 0. SndDispVersion is silent: applications ask for the
// MIDI Manager's version before they use it, and 0 says it is not there.
#include "MIDI.h"
#include "frame/unsupported.h"

namespace {
constexpr const char kMidi[] = "MIDI";
}  // namespace

KWE_API SInt32 KWE_CALL SndDispVersion(SInt16) { return 0; }

KWE_API OSErr KWE_CALL MIDISignIn(OSType, SInt32, Handle, ConstStr255Param) {
  return kwe::Unsupported(kMidi, noErr);
}

KWE_API MIDIIDListHandle KWE_CALL MIDIGetPorts(OSType) {
  return kwe::Unsupported(kMidi, MIDIIDListHandle{});
}

KWE_API OSErr KWE_CALL MIDIAddPort(OSType, SInt16, MIDIRefNum*, MIDIPortParamsPtr) {
  return kwe::Unsupported(kMidi, noErr);
}

KWE_API MIDIPortInfoHdl KWE_CALL MIDIGetPortInfo(OSType, OSType) {
  return kwe::Unsupported(kMidi, MIDIPortInfoHdl{});
}

KWE_API OSErr KWE_CALL MIDIConnectData(OSType, OSType, OSType, OSType) {
  return kwe::Unsupported(kMidi, noErr);
}

KWE_API void KWE_CALL MIDIFlush(MIDIRefNum) { kwe::Unsupported(kMidi); }
KWE_API SInt32 KWE_CALL MIDIGetCurTime(MIDIRefNum) { return kwe::Unsupported(kMidi, SInt32{0}); }
KWE_API void KWE_CALL MIDISetCurTime(MIDIRefNum, SInt32) { kwe::Unsupported(kMidi); }
KWE_API void KWE_CALL MIDIStartTime(MIDIRefNum) { kwe::Unsupported(kMidi); }
KWE_API void KWE_CALL MIDISetOffsetTime(MIDIRefNum, SInt32) { kwe::Unsupported(kMidi); }

KWE_API OSErr KWE_CALL MIDIWritePacket(MIDIRefNum, MIDIPacketPtr) {
  return kwe::Unsupported(kMidi, noErr);
}

KWE_API void KWE_CALL MIDIWakeUp(MIDIRefNum, SInt32, SInt32, MIDITimeProcPtr) {
  kwe::Unsupported(kMidi);
}
