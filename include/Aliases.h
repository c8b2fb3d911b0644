/* Alias Manager. Windows has no alias records that survive a file's move, so
   every call reports itself: NewAlias, NewAliasMinimal, ResolveAlias and
   ResolveAliasFile answer noErr, the rest paramErr, and none writes its
   output parameters. */
#ifndef KWE_ALIASES_H
#define KWE_ALIASES_H

#include "Files.h"
#include "MacTypes.h"

typedef SInt16 AliasInfoType;
typedef FSSpec* FSSpecArrayPtr;

#pragma pack(push, 2)
/* The public head of an alias record; the Alias Manager's private data
   follows it. */
typedef struct AliasRecord {
  OSType userType;
  UInt16 aliasSize;
} AliasRecord, *AliasPtr, **AliasHandle;
#pragma pack(pop)

union CInfoPBRec;
typedef Boolean(KWE_CALL* AliasFilterProcPtr)(union CInfoPBRec* cpbPtr, Boolean* quitFlag,
                                              Ptr myDataPtr);

KWE_API OSErr KWE_CALL NewAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle* alias);
KWE_API OSErr KWE_CALL NewAliasMinimal(const FSSpec* target, AliasHandle* alias);
KWE_API OSErr KWE_CALL ResolveAlias(const FSSpec* fromFile, AliasHandle alias, FSSpec* target,
                                    Boolean* wasChanged);
KWE_API OSErr KWE_CALL ResolveAliasFile(FSSpec* theSpec, Boolean resolveAliasChains,
                                        Boolean* targetIsFolder, Boolean* wasAliased);
KWE_API OSErr KWE_CALL GetAliasInfo(AliasHandle alias, AliasInfoType index, Str63 theString);
KWE_API OSErr KWE_CALL MatchAlias(const FSSpec* fromFile, UInt32 rulesMask, AliasHandle alias,
                                  SInt16* aliasCount, FSSpecArrayPtr aliasList,
                                  Boolean* needsUpdate, AliasFilterProcPtr aliasFilter,
                                  void* yourDataPtr);
KWE_API OSErr KWE_CALL UpdateAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle alias,
                                   Boolean* wasChanged);

#endif
