// AppleTalk Manager and PPC Toolbox: Windows offers no AppleTalk network.
// Each call reports its own name (__func__ is the exported name) and answers
// noErr, touching no parameter block or buffer.
#include "AppleTalk.h"
#include "PPCToolbox.h"
#include "frame/unsupported.h"

static_assert(sizeof(AddrBlock) == 4, "AddrBlock is passed by value in one long");

KWE_API OSErr KWE_CALL MPPOpen(void) { return kwe::Unsupported(__func__, noErr); }
KWE_API OSErr KWE_CALL ATPLoad(void) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL PGetAppleTalkInfo(MPPPBPtr, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL PKillNBP(MPPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }
KWE_API OSErr KWE_CALL PLookupName(MPPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL PRegisterName(MPPPBPtr, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL PRemoveName(MPPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL PSendRequest(ATPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL POpenATPSkt(ATPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL PCloseATPSkt(ATPPBPtr, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API SInt16 KWE_CALL GetBridgeAddress(void) { return kwe::Unsupported(__func__, SInt16{0}); }

KWE_API OSErr KWE_CALL GetNodeAddress(SInt16*, SInt16*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL NBPExtract(Ptr, SInt16, SInt16, EntityName*, AddrBlock*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL ATPOpenSocket(AddrBlock, UInt8*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL NBPLookup(ABRecHandle, Boolean) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL NBPRegister(ABRecHandle, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL NBPRemove(EntityPtr) { return kwe::Unsupported(__func__, noErr); }

KWE_API void KWE_CALL NBPSetEntity(Ptr, ConstStr32Param, ConstStr32Param, ConstStr32Param) {
  kwe::Unsupported(__func__);
}

KWE_API void KWE_CALL NBPSetNTE(Ptr, ConstStr32Param, ConstStr32Param, ConstStr32Param, SInt16) {
  kwe::Unsupported(__func__);
}

KWE_API SInt16 KWE_CALL BuildBDS(Ptr, Ptr, SInt16) { return kwe::Unsupported(__func__, SInt16{0}); }

KWE_API OSErr KWE_CALL PPCBrowser(ConstStr255Param, ConstStr255Param, Boolean, LocationNameRec*,
                                  PortInfoRec*, PPCFilterProcPtr, ConstStr32Param) {
  return kwe::Unsupported("PPCBROWSER", noErr);
}
