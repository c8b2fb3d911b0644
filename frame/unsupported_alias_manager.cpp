// Alias Manager: no alias records on Windows. Each call reports its own name
// (__func__ is the exported name) and answers its fixed result.
#include "Aliases.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL NewAlias(const FSSpec*, const FSSpec*, AliasHandle*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL NewAliasMinimal(const FSSpec*, AliasHandle*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL ResolveAlias(const FSSpec*, AliasHandle, FSSpec*, Boolean*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL ResolveAliasFile(FSSpec*, Boolean, Boolean*, Boolean*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetAliasInfo(AliasHandle, AliasInfoType, Str63) {
  return kwe::Unsupported(__func__, paramErr);
}

KWE_API OSErr KWE_CALL MatchAlias(const FSSpec*, UInt32, AliasHandle, SInt16*, FSSpecArrayPtr,
                                  Boolean*, AliasFilterProcPtr, void*) {
  return kwe::Unsupported(__func__, paramErr);
}

KWE_API OSErr KWE_CALL UpdateAlias(const FSSpec*, const FSSpec*, AliasHandle, Boolean*) {
  return kwe::Unsupported(__func__, paramErr);
}
