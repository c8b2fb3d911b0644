// Apple Event Manager and Object Support Library: no inter-application events
// on Windows. Each call reports its own name (__func__ is the exported name)
// and answers noErr; the handler calls are silent, so that an application's
// usual start-up installs its handlers without a report per handler.
#include "AppleEvents.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL AECreateDesc(DescType, const void*, Size, AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AECoerceDesc(const AEDesc*, DescType, AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEDisposeDesc(AEDesc*) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL AECreateList(const void*, Size, Boolean, AEDescList*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AECountItems(const AEDescList*, SInt32*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutPtr(AEDescList*, SInt32, DescType, const void*, Size) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutDesc(AEDescList*, SInt32, const AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetNthPtr(const AEDescList*, SInt32, DescType, AEKeyword*, DescType*,
                                   void*, Size, Size*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetNthDesc(const AEDescList*, SInt32, DescType, AEKeyword*, AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutParamPtr(AppleEvent*, AEKeyword, DescType, const void*, Size) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutParamDesc(AppleEvent*, AEKeyword, const AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetParamPtr(const AppleEvent*, AEKeyword, DescType, DescType*, void*, Size,
                                     Size*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetParamDesc(const AppleEvent*, AEKeyword, DescType, AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AESizeOfParam(const AppleEvent*, AEKeyword, DescType*, Size*) {
  return errAEDescNotFound;
}

KWE_API OSErr KWE_CALL AEDeleteParam(AppleEvent*, AEKeyword) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetAttributePtr(const AppleEvent*, AEKeyword, DescType, DescType*, void*,
                                         Size, Size*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetAttributeDesc(const AppleEvent*, AEKeyword, DescType, AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutAttributePtr(AppleEvent*, AEKeyword, DescType, const void*, Size) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEPutAttributeDesc(AppleEvent*, AEKeyword, const AEDesc*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AECreateAppleEvent(AEEventClass, AEEventID, const AEAddressDesc*, AEReturnID,
                                          AETransactionID, AppleEvent*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AESend(const AppleEvent*, AppleEvent*, AESendMode, AESendPriority, SInt32,
                              AEIdleProcPtr, AEFilterProcPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEProcessAppleEvent(const EventRecord*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AESuspendTheCurrentEvent(const AppleEvent*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEResumeTheCurrentEvent(const AppleEvent*, const AppleEvent*,
                                               AEEventHandlerProcPtr, SInt32) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AESetTheCurrentEvent(const AppleEvent*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEGetInteractionAllowed(AEInteractAllowed*) { return noErr; }

KWE_API OSErr KWE_CALL AESetInteractionAllowed(AEInteractAllowed) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEInteractWithUser(SInt32, NMRecPtr, AEIdleProcPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AEInstallEventHandler(AEEventClass, AEEventID, AEEventHandlerProcPtr, SInt32,
                                             Boolean) {
  return noErr;
}

KWE_API OSErr KWE_CALL AERemoveEventHandler(AEEventClass, AEEventID, AEEventHandlerProcPtr,
                                            Boolean) {
  return errAEHandlerNotFound;
}

KWE_API OSErr KWE_CALL AEGetEventHandler(AEEventClass, AEEventID, AEEventHandlerProcPtr*, SInt32*,
                                         Boolean) {
  return errAEHandlerNotFound;
}

KWE_API OSErr KWE_CALL AEInstallCoercionHandler(DescType, DescType, AECoercionHandlerProcPtr,
                                                SInt32, Boolean, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

// The Object Support Library came with System 7's scripting; its reports say
// so.

KWE_API OSErr KWE_CALL AEObjectInit(void) {
  return kwe::Unsupported("AEObjectInit - Not Supported, System 7", noErr);
}

KWE_API OSErr KWE_CALL AEResolve(const AEDesc*, SInt16, AEDesc*) {
  return kwe::Unsupported("AEResolve - Not Supported, System 7", noErr);
}

KWE_API OSErr KWE_CALL AEInstallObjectAccessor(DescType, DescType, OSLAccessorProcPtr, SInt32,
                                               Boolean) {
  return kwe::Unsupported("AEInstallObjectAccessor - Not Supported, System 7", noErr);
}

KWE_API OSErr KWE_CALL CreateObjSpecifier(DescType, AEDesc*, DescType, AEDesc*, Boolean, AEDesc*) {
  return kwe::Unsupported("CreateObjSpecifier - Not Supported, System 7", noErr);
}

KWE_API OSErr KWE_CALL CreateOffsetDescriptor(SInt32, AEDesc*) {
  return kwe::Unsupported("CreateOffsetDescriptor - Not Supported, System 7", noErr);
}

KWE_API OSErr KWE_CALL CreateCompDescriptor(DescType, AEDesc*, AEDesc*, Boolean, AEDesc*) {
  return kwe::Unsupported("CreateCompDescriptor - Not Supported, System 7", noErr);
}
