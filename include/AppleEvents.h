/* Apple Event Manager and the Object Support Library. Windows has no
   inter-application events of this kind: the calls report themselves and
   answer noErr without writing their output parameters. Handler installation
   is silent and keeps nothing, so an application may install its handlers
   as usual and every lookup answers errAEHandlerNotFound. */
#ifndef KWE_APPLEEVENTS_H
#define KWE_APPLEEVENTS_H

#include "Events.h"
#include "MacTypes.h"
#include "OSUtils.h"

typedef ResType DescType;
typedef UInt32 AEKeyword;
typedef UInt32 AEEventClass;
typedef UInt32 AEEventID;
typedef SInt16 AEReturnID;
typedef SInt32 AETransactionID;
typedef SInt32 AESendMode;
typedef SInt16 AESendPriority;
typedef SInt8 AEInteractAllowed;

enum { errAEDescNotFound = -1701 };

#pragma pack(push, 2)
typedef struct AEDesc {
  DescType descriptorType;
  Handle dataHandle;
} AEDesc;
#pragma pack(pop)

typedef AEDesc AEDescList;
typedef AEDesc AERecord;
typedef AEDesc AEAddressDesc;
typedef AEDesc AppleEvent;

typedef OSErr(KWE_CALL* AEEventHandlerProcPtr)(const AppleEvent* theAppleEvent, AppleEvent* reply,
                                               SInt32 handlerRefcon);
typedef Boolean(KWE_CALL* AEIdleProcPtr)(EventRecord* theEvent, SInt32* sleepTime,
                                         RgnHandle* mouseRgn);
typedef Boolean(KWE_CALL* AEFilterProcPtr)(EventRecord* theEvent, SInt32 returnID,
                                           SInt32 transactionID, const AEAddressDesc* sender);
/* A descriptor or a pointer coercion handler, as fromTypeIsDesc says. */
typedef ProcPtr AECoercionHandlerProcPtr;
typedef OSErr(KWE_CALL* OSLAccessorProcPtr)(DescType desiredClass, const AEDesc* container,
                                            DescType containerClass, DescType form,
                                            const AEDesc* selectionData, AEDesc* value,
                                            SInt32 accessorRefcon);

KWE_API OSErr KWE_CALL AECreateDesc(DescType typeCode, const void* dataPtr, Size dataSize,
                                    AEDesc* result);
KWE_API OSErr KWE_CALL AECoerceDesc(const AEDesc* theAEDesc, DescType toType, AEDesc* result);
KWE_API OSErr KWE_CALL AEDisposeDesc(AEDesc* theAEDesc);
KWE_API OSErr KWE_CALL AECreateList(const void* factoringPtr, Size factoredSize, Boolean isRecord,
                                    AEDescList* resultList);
KWE_API OSErr KWE_CALL AECountItems(const AEDescList* theAEDescList, SInt32* theCount);
KWE_API OSErr KWE_CALL AEPutPtr(AEDescList* theAEDescList, SInt32 index, DescType typeCode,
                                const void* dataPtr, Size dataSize);
KWE_API OSErr KWE_CALL AEPutDesc(AEDescList* theAEDescList, SInt32 index, const AEDesc* theAEDesc);
KWE_API OSErr KWE_CALL AEGetNthPtr(const AEDescList* theAEDescList, SInt32 index,
                                   DescType desiredType, AEKeyword* theAEKeyword,
                                   DescType* typeCode, void* dataPtr, Size maximumSize,
                                   Size* actualSize);
KWE_API OSErr KWE_CALL AEGetNthDesc(const AEDescList* theAEDescList, SInt32 index,
                                    DescType desiredType, AEKeyword* theAEKeyword, AEDesc* result);
KWE_API OSErr KWE_CALL AEPutParamPtr(AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                     DescType typeCode, const void* dataPtr, Size dataSize);
KWE_API OSErr KWE_CALL AEPutParamDesc(AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                      const AEDesc* theAEDesc);
KWE_API OSErr KWE_CALL AEGetParamPtr(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                     DescType desiredType, DescType* typeCode, void* dataPtr,
                                     Size maximumSize, Size* actualSize);
KWE_API OSErr KWE_CALL AEGetParamDesc(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                      DescType desiredType, AEDesc* result);
/* Silent: answers errAEDescNotFound, as for an event without the parameter. */
KWE_API OSErr KWE_CALL AESizeOfParam(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                     DescType* typeCode, Size* dataSize);
KWE_API OSErr KWE_CALL AEDeleteParam(AppleEvent* theAppleEvent, AEKeyword theAEKeyword);
KWE_API OSErr KWE_CALL AEGetAttributePtr(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                         DescType desiredType, DescType* typeCode, void* dataPtr,
                                         Size maximumSize, Size* actualSize);
KWE_API OSErr KWE_CALL AEGetAttributeDesc(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                          DescType desiredType, AEDesc* result);
KWE_API OSErr KWE_CALL AEPutAttributePtr(AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                         DescType typeCode, const void* dataPtr, Size dataSize);
KWE_API OSErr KWE_CALL AEPutAttributeDesc(AppleEvent* theAppleEvent, AEKeyword theAEKeyword,
                                          const AEDesc* theAEDesc);
KWE_API OSErr KWE_CALL AECreateAppleEvent(AEEventClass theAEEventClass, AEEventID theAEEventID,
                                          const AEAddressDesc* target, AEReturnID returnID,
                                          AETransactionID transactionID, AppleEvent* result);
KWE_API OSErr KWE_CALL AESend(const AppleEvent* theAppleEvent, AppleEvent* reply,
                              AESendMode sendMode, AESendPriority sendPriority,
                              SInt32 timeOutInTicks, AEIdleProcPtr idleProc,
                              AEFilterProcPtr filterProc);
KWE_API OSErr KWE_CALL AEProcessAppleEvent(const EventRecord* theEventRecord);
KWE_API OSErr KWE_CALL AESuspendTheCurrentEvent(const AppleEvent* theAppleEvent);
KWE_API OSErr KWE_CALL AEResumeTheCurrentEvent(const AppleEvent* theAppleEvent,
                                               const AppleEvent* reply,
                                               AEEventHandlerProcPtr dispatcher,
                                               SInt32 handlerRefcon);
KWE_API OSErr KWE_CALL AESetTheCurrentEvent(const AppleEvent* theAppleEvent);
/* Silent; level is not written. */
KWE_API OSErr KWE_CALL AEGetInteractionAllowed(AEInteractAllowed* level);
KWE_API OSErr KWE_CALL AESetInteractionAllowed(AEInteractAllowed level);
KWE_API OSErr KWE_CALL AEInteractWithUser(SInt32 timeOutInTicks, NMRecPtr nmReqPtr,
                                          AEIdleProcPtr idleProc);
/* Silent: answers noErr and keeps nothing. */
KWE_API OSErr KWE_CALL AEInstallEventHandler(AEEventClass theAEEventClass, AEEventID theAEEventID,
                                             AEEventHandlerProcPtr handler, SInt32 handlerRefcon,
                                             Boolean isSysHandler);
/* Silent: answer errAEHandlerNotFound whatever was installed. */
KWE_API OSErr KWE_CALL AERemoveEventHandler(AEEventClass theAEEventClass, AEEventID theAEEventID,
                                            AEEventHandlerProcPtr handler, Boolean isSysHandler);
KWE_API OSErr KWE_CALL AEGetEventHandler(AEEventClass theAEEventClass, AEEventID theAEEventID,
                                         AEEventHandlerProcPtr* handler, SInt32* handlerRefcon,
                                         Boolean isSysHandler);
KWE_API OSErr KWE_CALL AEInstallCoercionHandler(DescType fromType, DescType toType,
                                                AECoercionHandlerProcPtr handler,
                                                SInt32 handlerRefcon, Boolean fromTypeIsDesc,
                                                Boolean isSysHandler);

/* Object Support Library: each reports "<name> - Not Supported, System 7". */
KWE_API OSErr KWE_CALL AEObjectInit(void);
KWE_API OSErr KWE_CALL AEResolve(const AEDesc* objectSpecifier, SInt16 callbackFlags,
                                 AEDesc* theToken);
KWE_API OSErr KWE_CALL AEInstallObjectAccessor(DescType desiredClass, DescType containerType,
                                               OSLAccessorProcPtr theAccessor,
                                               SInt32 accessorRefcon, Boolean isSysHandler);
KWE_API OSErr KWE_CALL CreateObjSpecifier(DescType desiredClass, AEDesc* theContainer,
                                          DescType keyForm, AEDesc* keyData, Boolean disposeInputs,
                                          AEDesc* objSpecifier);
KWE_API OSErr KWE_CALL CreateOffsetDescriptor(SInt32 theOffset, AEDesc* theDescriptor);
KWE_API OSErr KWE_CALL CreateCompDescriptor(DescType comparisonOperator, AEDesc* operand1,
                                            AEDesc* operand2, Boolean disposeInputs,
                                            AEDesc* theDescriptor);

#endif
