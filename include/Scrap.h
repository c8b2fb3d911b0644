/* The desk scrap, kept on the Windows clipboard. The library converts
   nothing itself: every transfer between a scrap type and a clipboard format
   goes through the host's clipboard procedure (KWEScrap.h), named in the
   session record. */
#ifndef KWE_SCRAP_H
#define KWE_SCRAP_H

#include "MacTypes.h"

enum {
  noScrapErr = -100, /* PutScrap: no procedure took the type */
  noTypeErr = -102,  /* GetScrap: no clipboard format gives the type */
  scrapBusyErr = -45 /* the clipboard is held open by another program */
};

/* Empties the clipboard; scrapCount rises by one. Always 0. */
KWE_API SInt32 KWE_CALL ZeroScrap(void);
/* length bytes of type from source onto the clipboard, beside what is
   there. 0, noScrapErr, scrapBusyErr, or paramErr for a negative length or
   a null source with a positive length. */
KWE_API SInt32 KWE_CALL PutScrap(SInt32 length, ResType theType, const void* source);
/* The data of type into destination (null asks only for the length);
   returns the length or an error. *offset counts the clipboard formats
   passed over before the one that gave the type. */
KWE_API SInt32 KWE_CALL GetScrap(Handle destination, ResType theType, SInt32* offset);
KWE_API ScrapStuff* KWE_CALL InfoScrap(void);
/* The scrap is never in memory: both pairs only answer 0 (the second pair
   marks the scrap as on disk, scrapState 0). */
KWE_API SInt32 KWE_CALL LoadScrap(void);
KWE_API SInt32 KWE_CALL LodeScrap(void);
KWE_API SInt32 KWE_CALL UnloadScrap(void);
KWE_API SInt32 KWE_CALL UnlodeScrap(void);

#endif
