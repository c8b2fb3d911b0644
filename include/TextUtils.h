/* Text utilities: Munger, string handles and string resources, and the
   case conversion and ordering of Macintosh-Roman strings. EqualString is
   declared in OSUtils.h. */
#ifndef KWE_TEXTUTILS_H
#define KWE_TEXTUTILS_H

#include "MacTypes.h"

/* Finds, replaces, inserts or deletes bytes of h from offset on:
   - ptr2 null: find ptr1[0..len1) and return its offset, or -1;
   - ptr1 null: the target is len1 bytes at offset (len1 < 0: up to the end);
   - len1 = 0 and ptr2 given: insert ptr2 at offset (beyond the end, the
     handle grows first);
   - ptr2 given with len2 = 0 and ptr1 null: delete len1 bytes at offset.
   Returns the offset just past the new bytes, or -1 when the target is not
   found or the handle cannot grow (MemError tells; the handle is then as it
   was). */
KWE_API SInt32 KWE_CALL Munger(Handle h, SInt32 offset, const void* ptr1, SInt32 len1,
                               const void* ptr2, SInt32 len2);

/* A handle holding a copy of s (length byte included); null on failure. */
KWE_API StringHandle KWE_CALL NewString(ConstStr255Param theString);
KWE_API void KWE_CALL SetString(StringHandle theString, ConstStr255Param strNew);
/* The 'STR ' resource id, or null. */
KWE_API StringHandle KWE_CALL GetString(SInt16 stringID);
/* The index-th string (from 1) of 'STR#' strListID, or an empty string. The
   list is released again afterwards, so each call reads it anew. */
KWE_API void KWE_CALL GetIndString(Str255 theString, SInt16 strListID, SInt16 index);

/* In place; without diacSensitive accented letters lose their accents. */
KWE_API void KWE_CALL UpperString(StringPtr theString, Boolean diacSensitive);
/* -1, 0 or 1 as str1 sorts before, with or after str2. With exactly one of
   the two sensitivities, strings that agree over the shorter length give
   the difference of their lengths instead. */
KWE_API SInt16 KWE_CALL RelString(ConstStr255Param str1, ConstStr255Param str2,
                                  Boolean caseSensitive, Boolean diacSensitive);

#endif
