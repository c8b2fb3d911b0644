// Trap-dispatch, Event, Component and Process Manager calls that have nothing
// to act on in one Windows process. Each call reports its own name (__func__
// is the exported name) and answers its fixed value. No <windows.h> here: it would declare
// kernel32's own GetProcessInformation beside the Toolbox's.
#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

namespace {
constexpr OSErr kNoOutstandingHLE = -608;  // noOutstandingHLE
}  // namespace

KWE_API SInt32 KWE_CALL OSDispatch(void) { return kwe::Unsupported(__func__, SInt32{0}); }

KWE_API OSErr KWE_CALL PPostEvent(EventKind, SInt32, EvQElPtr*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CloseComponent(ComponentInstance) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API void KWE_CALL CallPascal(ProcPtr) { kwe::Unsupported(__func__); }
KWE_API Boolean KWE_CALL CallPascalB(ProcPtr) { return kwe::Unsupported(__func__, false); }
KWE_API SInt16 KWE_CALL CallPascalW(ProcPtr) { return kwe::Unsupported(__func__, SInt16{0}); }
KWE_API SInt32 KWE_CALL CallPascalL(ProcPtr) { return kwe::Unsupported(__func__, SInt32{0}); }

KWE_API OSErr KWE_CALL GetProcessInformation(const ProcessSerialNumber*, ProcessInfoRec*) {
  return kwe::Unsupported(__func__, paramErr);
}

KWE_API OSErr KWE_CALL SetFrontProcess(const ProcessSerialNumber*) {
  return kwe::Unsupported(__func__, procNotFound);
}

KWE_API OSErr KWE_CALL AcceptHighLevelEvent(TargetID*, UInt32*, Ptr, UInt32*) {
  return kwe::Unsupported(__func__, kNoOutstandingHLE);
}

KWE_API Boolean KWE_CALL GetSpecificHighLevelEvent(GetSpecificFilterProcPtr, void*, OSErr*) {
  return kwe::Unsupported(__func__, Boolean{0xA0});
}
