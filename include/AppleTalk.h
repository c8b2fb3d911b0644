/* AppleTalk Manager. Windows offers no AppleTalk network, so the calls
   report themselves and answer noErr (BuildBDS 0 buffers, the NBP helpers
   nothing) without touching their parameter blocks or buffers. */
#ifndef KWE_APPLETALK_H
#define KWE_APPLETALK_H

#include "MacTypes.h"

typedef const unsigned char* ConstStr32Param;

#pragma pack(push, 2)
/* 4 bytes, passed by value to ATPOpenSocket. */
typedef struct AddrBlock {
  UInt16 aNet;
  UInt8 aNode;
  UInt8 aSocket;
} AddrBlock;
#pragma pack(pop)

/* Parameter blocks and records the calls take only by address. */
typedef union MPPParamBlock* MPPPBPtr;
typedef union ATPParamBlock* ATPPBPtr;
typedef struct ABusRecord** ABRecHandle;
typedef struct EntityName EntityName, *EntityPtr;

KWE_API OSErr KWE_CALL MPPOpen(void);
KWE_API OSErr KWE_CALL ATPLoad(void);
KWE_API OSErr KWE_CALL PGetAppleTalkInfo(MPPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PKillNBP(MPPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PLookupName(MPPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PRegisterName(MPPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PRemoveName(MPPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PSendRequest(ATPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL POpenATPSkt(ATPPBPtr thePBptr, Boolean async);
KWE_API OSErr KWE_CALL PCloseATPSkt(ATPPBPtr thePBptr, Boolean async);
KWE_API SInt16 KWE_CALL GetBridgeAddress(void);
KWE_API OSErr KWE_CALL GetNodeAddress(SInt16* myNode, SInt16* myNet);
KWE_API OSErr KWE_CALL NBPExtract(Ptr theBuffer, SInt16 numInBuf, SInt16 whichOne,
                                  EntityName* abEntity, AddrBlock* address);
KWE_API OSErr KWE_CALL ATPOpenSocket(AddrBlock addrRcvd, UInt8* atpSocket);
KWE_API OSErr KWE_CALL NBPLookup(ABRecHandle abRecord, Boolean async);
KWE_API OSErr KWE_CALL NBPRegister(ABRecHandle abRecord, Boolean async);
KWE_API OSErr KWE_CALL NBPRemove(EntityPtr abEntity);
KWE_API void KWE_CALL NBPSetEntity(Ptr buffer, ConstStr32Param nbpObject, ConstStr32Param nbpType,
                                   ConstStr32Param nbpZone);
KWE_API void KWE_CALL NBPSetNTE(Ptr ntePtr, ConstStr32Param nbpObject, ConstStr32Param nbpType,
                                ConstStr32Param nbpZone, SInt16 Socket);
/* Answers 0 buffer elements; the buffer data structure is not built. */
KWE_API SInt16 KWE_CALL BuildBDS(Ptr buffPtr, Ptr bdsPtr, SInt16 buffSize);

#endif
