/* The International Utilities: the "INTL" 0 and 1 records, which the
   library fills from the [intl] section of WIN.INI; dates and times
   formatted by the Windows date pictures; numbers as text; and the
   Macintosh Roman ordering of text. */
#ifndef KWE_PACKAGES_H
#define KWE_PACKAGES_H

#include "DateTimeUtils.h"

#pragma pack(push, 2)
/* "INTL" 0: numbers, currency, short dates and times (32 bytes). */
typedef struct Intl0Rec {
  char decimalPt, thousSep, listSep;
  char currSym1, currSym2, currSym3;
  UInt8 currFmt;
  UInt8 dateOrder;
  UInt8 shrtDateFmt;
  char dateSep;
  UInt8 timeCycle;
  UInt8 timeFmt;
  char mornStr[4];
  char eveStr[4];
  char timeSep;
  char time1Suff, time2Suff, time3Suff, time4Suff, time5Suff, time6Suff, time7Suff, time8Suff;
  UInt8 metricSys;
  SInt16 intl0Vers;
} Intl0Rec, *Intl0Ptr, **Intl0Hndl;

/* "INTL" 1: long dates (332 bytes). */
typedef struct Intl1Rec {
  Str15 days[7];
  Str15 months[12];
  UInt8 suppressDay;
  UInt8 lngDateFmt;
  UInt8 dayLeading0;
  UInt8 abbrLen;
  char st0[4], st1[4], st2[4], st3[4], st4[4];
  SInt16 intl1Vers;
  SInt16 localRtn[1];
} Intl1Rec, *Intl1Ptr, **Intl1Hndl;
#pragma pack(pop)

/* currFmt bits */
enum { currSymLead = 0x10, currNegSym = 0x20, currTrailingZ = 0x40, currLeadingZ = 0x80 };
/* dateOrder */
enum { mdy = 0, dmy = 1, ymd = 2 };
/* shrtDateFmt bits */
enum { century = 0x80, mntLdingZ = 0x40, dayLdingZ = 0x20 };
/* suppressDay bits */
enum { supDay = 1, supWeek = 2, supMonth = 4, supYear = 8 };
/* IUDateString forms */
typedef SInt8 DateForm;
enum { shortDate = 0, longDate = 1, abbrevDate = 2 };

/* 0 and 1: the library's live records as handles, made at the first call and
   the same handles afterwards (a change to them reaches the formats that
   read them); other ids: the 'INTL' resource. */
KWE_API Handle KWE_CALL GetIntlResource(SInt16 theID);
KWE_API Handle KWE_CALL IUGetIntl(SInt16 theID);
/* Stores a copy of intlHandle as 'INTL' theID in the resource file refNum;
   ids 0 and 1 also become the live records. ResError tells. */
KWE_API void KWE_CALL IUSetIntl(SInt16 refNum, SInt16 theID, Handle intlHandle);

/* form 0: the short date picture of WIN.INI (sShortDate); 1: the long one
   (sLongDate); 2: the long one with names abbreviated. */
KWE_API void KWE_CALL IUDateString(UInt32 dateTime, DateForm longFlag, Str255 result);
KWE_API void KWE_CALL IUDatePString(UInt32 dateTime, DateForm longFlag, Str255 result,
                                    Handle intlHandle);
KWE_API void KWE_CALL IUTimeString(UInt32 dateTime, Boolean wantSeconds, Str255 result);
KWE_API void KWE_CALL IUTimePString(UInt32 dateTime, Boolean wantSeconds, Str255 result,
                                    Handle intlHandle);
/* With an "INTL" 1 handle, the long forms are built from its lngDateFmt
   (element 1 in the top two bits; 0 stands for weekday, day, month, year and
   255 for weekday, month, day, year), separators and suppressDay. */
KWE_API void KWE_CALL IULDateString(LongDateTime* dateTime, DateForm longFlag, Str255 result,
                                    Handle intlHandle);
/* With an "INTL" 0 handle, its time separator, suffixes, cycle and leading
   zeros are used. */
KWE_API void KWE_CALL IULTimeString(LongDateTime* dateTime, Boolean wantSeconds, Str255 result,
                                    Handle intlHandle);

KWE_API void KWE_CALL NumToString(SInt32 theNum, Str255 theString);
KWE_API void KWE_CALL StringToNum(ConstStr255Param theString, SInt32* theNum);

/* -1, 0 or 1: letters by their base letter first, then case and accent. */
KWE_API SInt16 KWE_CALL IUCompString(ConstStr255Param aStr, ConstStr255Param bStr);
KWE_API SInt16 KWE_CALL IUMagString(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen);
/* 0 when equal but for case and accents, else 1. */
KWE_API SInt16 KWE_CALL IUEqualString(ConstStr255Param aStr, ConstStr255Param bStr);
KWE_API SInt16 KWE_CALL IUMagIDString(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen);

#endif
