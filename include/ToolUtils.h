/* Toolbox utilities: bit operations, PackBits, and the shortcuts that fetch
   icons, patterns, pictures and cursors by resource ID. */
#ifndef KWE_TOOLUTILS_H
#define KWE_TOOLUTILS_H

#include "FixMath.h"
#include "MacTypes.h"
#include "TextUtils.h"

typedef Pattern *PatPtr, **PatHandle;
typedef Cursor *CursPtr, **CursHandle;
typedef struct Picture** PicHandle;

/* --- Bits. Bit 0 is the most significant bit of the first byte; the byte
   index (n >> 3) wraps at 65,536, as on the 68K. --- */
KWE_API Boolean KWE_CALL BitTst(const void* bytePtr, SInt32 bitNum);
KWE_API void KWE_CALL BitSet(void* bytePtr, SInt32 bitNum);
KWE_API void KWE_CALL BitClr(void* bytePtr, SInt32 bitNum);
KWE_API SInt32 KWE_CALL BitAnd(SInt32 value1, SInt32 value2);
KWE_API SInt32 KWE_CALL BitOr(SInt32 value1, SInt32 value2);
KWE_API SInt32 KWE_CALL BitXor(SInt32 value1, SInt32 value2);
/* Left for a positive count, arithmetic right for a negative one; the count
   is taken modulo 32. */
KWE_API SInt32 KWE_CALL BitShift(SInt32 value, SInt16 count);
KWE_API SInt16 KWE_CALL HiWord(SInt32 x);
KWE_API SInt16 KWE_CALL LoWord(SInt32 x);
/* (a.v - b.v) in the high word, (a.h - b.h) in the low word. */
KWE_API SInt32 KWE_CALL DeltaPoint(Point ptA, Point ptB);

/* --- PackBits run-length coding. Both advance *srcPtr and *dstPtr past what
   they read and wrote. Pieces are at most 127 bytes, so packed data takes
   at most srcBytes + (srcBytes + 126) / 127 bytes. UnpackBits never writes
   more than dstBytes bytes, whatever the packed data says. The H forms are
   the same calls. --- */
KWE_API void KWE_CALL PackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 srcBytes);
KWE_API void KWE_CALL UnpackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 dstBytes);
KWE_API void KWE_CALL HPackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 srcBytes);
KWE_API void KWE_CALL HUnpackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 dstBytes);

/* --- Resource shortcuts ('ICON', 'PAT ', 'PAT#', 'PICT', 'CURS'). --- */
KWE_API Handle KWE_CALL GetIcon(SInt16 iconID);
KWE_API PatHandle KWE_CALL GetPattern(SInt16 patID);
/* index < 1 or no 'PAT#' resource clears the pattern; an index beyond the
   list's count leaves it as it was. */
KWE_API void KWE_CALL GetIndPattern(Pattern* thePattern, SInt16 patternListID, SInt16 index);
KWE_API PicHandle KWE_CALL GetPicture(SInt16 picID);
/* GetCursor: exported shortened, as the name is Win32's. IDs 0 to 4 are the
   library's built-in cursors, other IDs 'CURS' resources. */
KWE_API CursHandle KWE_CALL GetCurso(SInt16 cursorID);
#ifdef __cplusplus
inline CursHandle GetCursor(SInt16 cursorID) { return GetCurso(cursorID); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define GetCursor GetCurso
#endif

/* The screen's logical pixels per inch (GetDeviceCaps LOGPIXELSX/Y). */
KWE_API void KWE_CALL ScreenRes(SInt16* scrnHRes, SInt16* scrnVRes);

/* --- Clock. ReadDateTime is GetDateTime returning noErr; the library never
   sets the Windows clock, so SetDateTime reports itself and returns -1. --- */
KWE_API OSErr KWE_CALL ReadDateTime(UInt32* secs);
KWE_API OSErr KWE_CALL SetDateTime(UInt32 secs);

#endif
