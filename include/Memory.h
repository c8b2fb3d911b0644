/* The Memory Manager: relocatable blocks (Handle) and fixed blocks (Ptr) on
   the Windows local heap.

   A Handle points at a master record whose first field is the master
   pointer, so **h reaches the data as on the Macintosh. The data of every
   handle stays locked for its whole life: a dereferenced handle stays valid
   until the handle is resized or disposed, and only SetHandleSize (and the
   calls built on it) ever moves data. Every new block is zero-filled, so the
   ...Clear variants are the same calls as the plain ones. */
#ifndef KWE_MEMORY_H
#define KWE_MEMORY_H

#include "MacTypes.h"

/* Called with the number of bytes an allocation still lacks; answers the
   number of bytes it freed. Wrapped through the host's make procedure. */
typedef SInt32(KWE_CALL* GrowZoneProcPtr)(Size cbNeeded);

#pragma pack(push, 2)
/* The one zone of the library (54 bytes in the 32-bit build). Only moreMast
   is read: the number of master records each new master block holds. */
struct Zone {
  Ptr bkLim;
  Ptr purgePtr;
  Ptr hFstFree;
  SInt32 zcbFree;
  GrowZoneProcPtr gzProc;
  SInt16 moreMast;
  SInt16 flags;
  SInt16 cntRel;
  SInt16 maxRel;
  SInt16 cntNRel;
  SInt8 heapType;
  SInt8 unused;
  SInt16 cntEmpty;
  SInt16 cntHandles;
  SInt32 minCBFree;
  ProcPtr purgeProc;
  Ptr sparePtr;
  Ptr allocPtr;
  SInt16 heapData;
};
#pragma pack(pop)
typedef struct Zone Zone;

/* HGetState bits. */
enum { kHandleLockedMask = 0x80, kHandlePurgeableMask = 0x40, kHandleResourceMask = 0x20 };

/* --- Handles. NewHandle, SetHandleSize, GetHandleSize set MemErr. --- */
KWE_API Handle KWE_CALL NewHandle(Size byteCount);
KWE_API Handle KWE_CALL NewHandleSys(Size byteCount);
KWE_API Handle KWE_CALL NewHandleClear(Size byteCount);
KWE_API Handle KWE_CALL NewHandleSysClear(Size byteCount);
KWE_API Handle KWE_CALL TempNewHandle(Size logicalSize, OSErr* resultCode);
/* Master pointer 0 and size 0, like a purged handle. */
KWE_API Handle KWE_CALL NewEmptyHandle(void);
/* Leaves MemErr as it was. A resource handle is detached from its file. */
KWE_API void KWE_CALL DisposeHandle(Handle h);
KWE_API void KWE_CALL TempDisposeHandle(Handle h, OSErr* resultCode);
/* nilHandleErr for a null handle. */
KWE_API Size KWE_CALL GetHandleSize(Handle h);
/* A negative size changes nothing, MemErr included. On memFullErr the handle
   keeps its data and size. */
KWE_API void KWE_CALL SetHandleSize(Handle h, Size newSize);
KWE_API void KWE_CALL ReallocateHandle(Handle h, Size byteCount);
/* Frees the data; master pointer 0, size 0; purgeable and C bits survive. */
KWE_API void KWE_CALL EmptyHandle(Handle h);
/* Leaves MemErr as it was; null when no handle holds p. */
KWE_API Handle KWE_CALL RecoverHandle(Ptr p);

/* 0x80 locked (every handle with data), 0x40 purgeable, 0x20 resource. */
KWE_API SInt8 KWE_CALL HGetState(Handle h);
/* Takes the purgeable and resource bits; the lock state is the library's. */
KWE_API void KWE_CALL HSetState(Handle h, SInt8 flags);
KWE_API void KWE_CALL HPurge(Handle h);
KWE_API void KWE_CALL HNoPurge(Handle h);
KWE_API void KWE_CALL HSetCBit(Handle h);

/* Handle data never moves behind the application's back, so locking has
   nothing to do and the library exports no entry point for it; these keep
   application code compiling. The resource bit belongs to the Resource
   Manager (DetachResource). */
#ifdef __cplusplus
#define KWE_MEMORY_INLINE inline
#else
#define KWE_MEMORY_INLINE static __inline
#endif
KWE_MEMORY_INLINE void HLock(Handle h) { (void)h; }
KWE_MEMORY_INLINE void HUnlock(Handle h) { (void)h; }
KWE_MEMORY_INLINE void HLockHi(Handle h) { (void)h; }
KWE_MEMORY_INLINE void MoveHHi(Handle h) { (void)h; }
KWE_MEMORY_INLINE void HSetRBit(Handle h) { (void)h; }
KWE_MEMORY_INLINE void HClrRBit(Handle h) { (void)h; }
#undef KWE_MEMORY_INLINE

/* --- Copies between handles and memory. Each sets MemErr and returns it. --- */
/* nilHandleErr for a null handle; on memFullErr *theHndl becomes null. */
KWE_API OSErr KWE_CALL HandToHand(Handle* theHndl);
KWE_API OSErr KWE_CALL PtrToHand(const void* srcPtr, Handle* dstHndl, SInt32 size);
KWE_API OSErr KWE_CALL PtrToXHand(const void* srcPtr, Handle dstHndl, SInt32 size);
KWE_API OSErr KWE_CALL HandAndHand(Handle hand1, Handle hand2);
KWE_API OSErr KWE_CALL PtrAndHand(const void* ptr1, Handle hand2, SInt32 size);

/* --- Fixed blocks. NewPtr and SetPtrSize set MemErr. --- */
KWE_API Ptr KWE_CALL NewPtr(Size byteCount);
KWE_API Ptr KWE_CALL NewPtrSys(Size byteCount);
KWE_API Ptr KWE_CALL NewPtrClear(Size byteCount);
KWE_API Ptr KWE_CALL NewPtrSysClear(Size byteCount);
KWE_API void KWE_CALL DisposePtr(Ptr p);
KWE_API Size KWE_CALL GetPtrSize(Ptr p);
/* Resizes in place only: memFullErr when the block cannot grow where it is. */
KWE_API void KWE_CALL SetPtrSize(Ptr p, Size newSize);

/* Overlap-safe. Addresses 0 and 0x0000FFFF (an empty handle's master
   pointer) copy nothing. */
KWE_API void KWE_CALL BlockMove(const void* srcPtr, void* destPtr, Size byteCount);

/* --- The zone and its figures. --- */
KWE_API OSErr KWE_CALL MemError(void);
/* Free memory of the page file, or what the memory limit leaves. */
KWE_API SInt32 KWE_CALL FreeMem(void);
KWE_API Size KWE_CALL MaxBlock(void);
/* The platform heap's largest free block; grow is not written. */
KWE_API Size KWE_CALL MaxMem(Size* grow);
/* contig is never more than 65,536. */
KWE_API void KWE_CALL PurgeSpace(SInt32* total, SInt32* contig);
KWE_API Size KWE_CALL CompactMem(Size cbNeeded);
/* Purges only for requests below 65,536 bytes. */
KWE_API void KWE_CALL PurgeMem(Size cbNeeded);
KWE_API void KWE_CALL SetGrowZone(GrowZoneProcPtr growZone);
KWE_API void KWE_CALL MoreMasters(void);

KWE_API THz KWE_CALL HandleZone(Handle h);
KWE_API THz KWE_CALL GetZone(void);
KWE_API THz KWE_CALL ApplicationZone(void);
KWE_API void KWE_CALL InitZone(GrowZoneProcPtr pgrowZone, SInt16 cmoreMasters, void* limitPtr,
                               void* startPtr);
KWE_API void KWE_CALL SetZone(THz hz);
KWE_API void KWE_CALL ReserveMem(Size cbNeeded);
KWE_API void KWE_CALL SetApplLimit(void* zoneLimit);
KWE_API void KWE_CALL MaxApplZone(void);
KWE_API Ptr KWE_CALL GetApplLimit(void);
KWE_API SInt32 KWE_CALL StackSpace(void);
KWE_API OSErr KWE_CALL HoldMemory(void* address, UInt32 count);
KWE_API OSErr KWE_CALL UnholdMemory(void* address, UInt32 count);

/* No Windows counterpart: each reports itself and returns 0. */
KWE_API THz KWE_CALL SystemZone(void);
KWE_API Ptr KWE_CALL TopMem(void);
KWE_API Handle KWE_CALL GZSaveHnd(void);
KWE_API SInt32 KWE_CALL TempFreeMem(void);

/* --- Library extensions. --- */
/* With enable non-zero, requests of at least checkSize bytes must fit within
   limit bytes of Memory Manager blocks and maxBlocks blocks (0: 32,767);
   when they do not, purgeable handles are purged and the grow-zone procedure
   is asked before the request fails. */
KWE_API void KWE_CALL KWE_SetMemoryLimits(UInt8 enable, UInt32 limit, UInt32 checkSize,
                                          SInt16 maxBlocks);
/* Samples GlobalMemoryStatus; allocated is the bytes the Memory Manager holds
   on the platform heap. Null pointers are skipped. */
KWE_API void KWE_CALL KWE_ComputeMemorySize(UInt32* totalPageFile, UInt32* availPageFile,
                                            UInt32* totalPhys, UInt32* availPhys,
                                            UInt32* allocated);
/* Percentage of free GDI (1) or USER (2) resources, the smaller of both (0).
   100 everywhere but on Windows 3.x. */
KWE_API UInt32 KWE_CALL KWE_GetFreeSystemResources(UInt16 which);

#endif
