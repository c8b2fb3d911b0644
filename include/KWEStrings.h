/* Pascal strings (Str255: a length byte and up to 255 characters): the
   PLstr... family of the Toolbox's C glue and the library's converters
   between Pascal and C strings.

   Results that would pass 255 characters (PLstrcat, PLstrncat,
   KWE_CopyCtoP) are cut at 255: a Str255 holds no more. */
#ifndef KWE_STRINGS_H
#define KWE_STRINGS_H

#include "MacTypes.h"

/* a[i] - b[i] at the first difference (unsigned bytes); else 1, -1 or 0 by
   length. */
KWE_API SInt16 KWE_CALL PLstrcmp(ConstStr255Param str1, ConstStr255Param str2);
/* Compares at most n characters; equal prefixes give 0 whatever the lengths. */
KWE_API SInt16 KWE_CALL PLstrncmp(ConstStr255Param str1, ConstStr255Param str2, SInt16 num);
KWE_API StringPtr KWE_CALL PLstrcpy(StringPtr str1, ConstStr255Param str2);
KWE_API StringPtr KWE_CALL PLstrncpy(StringPtr str1, ConstStr255Param str2, SInt16 num);
KWE_API StringPtr KWE_CALL PLstrcat(StringPtr str1, ConstStr255Param str2);
KWE_API StringPtr KWE_CALL PLstrncat(StringPtr str1, ConstStr255Param str2, SInt16 num);
/* The searches compare the low byte of ch1 with each character and return an
   address inside str1, or null. */
KWE_API Ptr KWE_CALL PLstrchr(ConstStr255Param str1, SInt16 ch1);
KWE_API Ptr KWE_CALL PLstrrchr(ConstStr255Param str1, SInt16 ch1);
KWE_API Ptr KWE_CALL PLstrpbrk(ConstStr255Param str1, ConstStr255Param str2);
KWE_API SInt16 KWE_CALL PLstrspn(ConstStr255Param str1, ConstStr255Param str2);
/* Both strings end at their first NUL, as C strings would. */
KWE_API Ptr KWE_CALL PLstrstr(ConstStr255Param str1, ConstStr255Param str2);
/* 1-based position of str2 in str1, 0 when absent. */
KWE_API SInt16 KWE_CALL PLpos(ConstStr255Param str1, ConstStr255Param str2);
KWE_API SInt16 KWE_CALL PLstrlen(ConstStr255Param str);

/* The characters followed by a NUL: dst needs str[0] + 1 bytes. */
KWE_API void KWE_CALL KWE_CopyPtoC(ConstStr255Param src, char* dst);
/* The C string's first 255 characters behind a length byte. */
KWE_API void KWE_CALL KWE_CopyCtoP(const char* src, StringPtr dst);
KWE_API void KWE_CALL KWE_CopyPtoP(ConstStr255Param src, StringPtr dst);

#endif
