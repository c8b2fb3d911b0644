/* Resource data between Macintosh (big-endian) and native byte order.

   The Resource Manager converts every resource to native order right after
   reading it and back to Macintosh order right before writing it, so an
   application reads 'MENU', 'DLOG', 'clut' and the other Toolbox records
   with their published layouts. Types the library does not know go to the
   host's byte-swap procedure (session record), chosen by their position in
   the host's byte-swap type list; with no procedure for a type the data is
   left as it is and "XXXX unknown byteswap type" is reported through
   DebugStr.

   The element converters reverse the bytes of one field in place, for hosts
   that convert structures of their own; each is its own inverse. */
#ifndef KWE_BYTESWAP_H
#define KWE_BYTESWAP_H

#include "MacTypes.h"

/* KWE_ByteSwap directions. */
enum { kweSwapToMac = 0, kweSwapToNative = 1 };

/* The host's byte-swap procedure: index is the type's position in the type
   list, counted from 0. Session flag 0x00008000 (kweFlagExtendedByteSwap)
   selects the second form, which also gets the resource ID. */
typedef void(KWE_CALL* KWEByteSwapProcedure)(UInt32 direction, SInt32 index, SInt32 size,
                                             void* data);
typedef void(KWE_CALL* KWEByteSwapExtendedProcedure)(UInt32 direction, SInt32 index, SInt32 id,
                                                     SInt32 size, void* data);

/* Converts one resource's data in place by its type; direction non-zero is
   Macintosh to native order. No byte at or past data + size is read or
   written, whatever the counts inside the data say: a record whose counts
   or offsets run past its size is converted as far as it goes and reported
   as "XXXX damaged byteswap data". A size of 0 or less changes nothing. */
KWE_API void KWE_CALL KWE_ByteSwap(UInt32 direction, ResType type, SInt16 id, SInt32 size,
                                   void* data);

KWE_API void KWE_CALL KWE_ByteSwapWORD(void* p);
KWE_API void KWE_CALL KWE_ByteSwapLONG(void* p);
KWE_API void KWE_CALL KWE_ByteSwapRect(void* p);
/* byteCount / 2 words, the count taken unsigned. */
KWE_API void KWE_CALL KWE_ByteSwapWORDS(void* p, SInt32 byteCount);
/* byteCount / 4 longs, the count taken unsigned. */
KWE_API void KWE_CALL KWE_ByteSwapLONGS(void* p, SInt32 byteCount);
KWE_API void KWE_CALL KWE_ByteSwapFLOAT(void* p);
/* byteCount / 4 floats; a negative count converts nothing. */
KWE_API void KWE_CALL KWE_ByteSwapFLOATS(void* p, SInt16 byteCount);
KWE_API void KWE_CALL KWE_ByteSwapDOUBLE(void* p);
/* The 12-byte format of the 68881 coprocessor. */
KWE_API void KWE_CALL KWE_ByteSwap881(void* p);
/* SANE's 10-byte extended. */
KWE_API void KWE_CALL KWE_ByteSwapEXTENDED(void* p);
/* A ColorTable: ctSeed, ctFlags, ctSize, then ctSize + 1 ColorSpecs (none
   for ctSize -1). The table's own ctSize is trusted here. */
KWE_API void KWE_CALL KWE_ByteSwapCLUT(UInt32 direction, void* table);

/* Big-endian values read without changing the bytes. */
KWE_API UInt16 KWE_CALL KWE_GetByteSwapWORD(const void* p);
KWE_API UInt32 KWE_CALL KWE_GetByteSwapLONG(const void* p);
/* Four big-endian words into a native Rect; src may equal dst. */
KWE_API void KWE_CALL KWE_GetByteSwapRect(const void* src, Rect* dst);

#ifdef _WIN32
#include "KWEWin32.h"
/* Toolbox Rect (top, left, bottom, right; 16-bit) and Win32 RECT (left, top,
   right, bottom; 32-bit). Widening keeps the sign; narrowing keeps the low
   16 bits. */
KWE_API void KWE_CALL KWE_ConvMRtoWR(const Rect* mac, RECT* win);
KWE_API void KWE_CALL KWE_ConvWRtoMR(const RECT* win, Rect* mac);
#endif

#endif
