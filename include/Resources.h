/* The Resource Manager: Macintosh-format resource files kept beside the
   application (".rsr"), a chain of open files searched newest first, and
   resource handles whose data is in native byte order once loaded. */
#ifndef KWE_RESOURCES_H
#define KWE_RESOURCES_H

#include "Files.h"
#include "MacTypes.h"

/* resNotFound, resFNotFound and mapReadErr are in MacTypes.h. */
enum { addResFailed = -194 };

/* Resource attributes (GetResAttrs / SetResAttrs). */
enum {
  resSysHeap = 0x40,
  resPurgeable = 0x20,
  resLocked = 0x10,
  resProtected = 0x08,
  resPreload = 0x04,
  resChanged = 0x02
};

/* Resource file attributes (GetResFileAttrs). */
enum { mapReadOnly = 0x80, mapCompact = 0x40, mapChanged = 0x20 };

/* OpenRFPerm / HOpenResFile take the File Manager's permissions (Files.h). */

/* --- Files and the chain. A name without a drive path gets ".rsr" and the
   current directory; OpenResFile answers -1 on failure, with ResError. --- */
KWE_API SInt16 KWE_CALL InitResources(void);
KWE_API SInt16 KWE_CALL OpenResFile(ConstStr255Param fileName);
KWE_API SInt16 KWE_CALL OpenRFPerm(ConstStr255Param fileName, SInt16 vRefNum, SInt8 permission);
KWE_API SInt16 KWE_CALL HOpenResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                     SInt8 permission);
KWE_API void KWE_CALL CreateResFile(ConstStr255Param fileName);
KWE_API void KWE_CALL HCreateResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName);
KWE_API void KWE_CALL CloseResFile(SInt16 refNum);
KWE_API void KWE_CALL UpdateResFile(SInt16 refNum);
KWE_API void KWE_CALL UseResFile(SInt16 refNum);
KWE_API SInt16 KWE_CALL CurResFile(void);
KWE_API SInt16 KWE_CALL HomeResFile(Handle theResource);
KWE_API SInt16 KWE_CALL GetResFileAttrs(SInt16 refNum);

/* --- Getting resources. --- */
KWE_API Handle KWE_CALL GetResource(ResType theType, SInt16 theID);
KWE_API Handle KWE_CALL Get1Resource(ResType theType, SInt16 theID);
KWE_API Handle KWE_CALL GetNamedResource(ResType theType, ConstStr255Param name);
KWE_API Handle KWE_CALL Get1NamedResource(ResType theType, ConstStr255Param name);
KWE_API Handle KWE_CALL GetIndResource(ResType theType, SInt16 index);
KWE_API Handle KWE_CALL Get1IndResource(ResType theType, SInt16 index);
KWE_API Handle KWE_CALL RGetResource(ResType theType, SInt16 theID);
KWE_API SInt16 KWE_CALL CountResources(ResType theType);
KWE_API SInt16 KWE_CALL Count1Resources(ResType theType);
KWE_API SInt16 KWE_CALL CountTypes(void);
KWE_API SInt16 KWE_CALL Count1Types(void);
KWE_API void KWE_CALL GetIndType(ResType* theType, SInt16 index);
KWE_API void KWE_CALL Get1IndType(ResType* theType, SInt16 index);
/* LoadResource: exported shortened, as the name is Win32's. C++ sees the
   Toolbox name as an overload beside Win32's two-argument LoadResource; C
   gets a macro unless windows.h is already in (it would rename Win32's). */
KWE_API void KWE_CALL LoadResourc(Handle theResource);
#ifdef __cplusplus
inline void LoadResource(Handle theResource) { LoadResourc(theResource); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define LoadResource LoadResourc
#endif
KWE_API void KWE_CALL SetResLoad(Boolean load);

/* --- Information and attributes. --- */
KWE_API void KWE_CALL GetResInfo(Handle theResource, SInt16* theID, ResType* theType, Str255 name);
KWE_API void KWE_CALL SetResInfo(Handle theResource, SInt16 theID, ConstStr255Param name);
KWE_API SInt16 KWE_CALL GetResAttrs(Handle theResource);
KWE_API void KWE_CALL SetResAttrs(Handle theResource, SInt16 attrs);
KWE_API SInt32 KWE_CALL SizeRsrc(Handle theResource);
#define SizeResource SizeRsrc
KWE_API SInt32 KWE_CALL GetResourceSizeOnDisk(Handle theResource);
KWE_API SInt32 KWE_CALL GetMaxResourceSize(Handle theResource);
KWE_API void KWE_CALL SetResPurge(Boolean install);

/* --- Changing resources. --- */
KWE_API void KWE_CALL AddResource(Handle theData, ResType theType, SInt16 theID,
                                  ConstStr255Param name);
KWE_API void KWE_CALL ChangedResource(Handle theResource);
KWE_API void KWE_CALL RemoveResource(Handle theResource);
#define RmveResource RemoveResource
KWE_API void KWE_CALL DetachResource(Handle theResource);
KWE_API void KWE_CALL ReleaseResource(Handle theResource);
KWE_API void KWE_CALL WriteResource(Handle theResource);
KWE_API SInt16 KWE_CALL UniqueID(ResType theType);
KWE_API SInt16 KWE_CALL Unique1ID(ResType theType);
KWE_API OSErr KWE_CALL ResError(void);

/* --- Host procedures standing in for code resources ('MDEF', 'CDEF',
   'WDEF', 'LDEF'). op: 0 release and clear the entries of (type, id),
   1 register, 2 clear all without releasing, 3 look up, 4 as 0,
   5 is this procedure registered under this type. --- */
KWE_API ProcPtr KWE_CALL KWE_CodeResource(SInt16 op, ResType theType, SInt16 theID,
                                          ProcPtr procedure);

#endif
