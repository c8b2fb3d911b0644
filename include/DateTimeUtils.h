/* Dates and times: seconds since 1 January 1904 (local time) against date
   records, the 64-bit long forms, and dates and times read from text. */
#ifndef KWE_DATETIMEUTILS_H
#define KWE_DATETIMEUTILS_H

#include "OSUtils.h"

typedef int64_t LongDateTime; /* the Toolbox's 64-bit wide */

#pragma pack(push, 2)
typedef union LongDateRec {
  struct {
    SInt16 era, year, month, day, hour, minute, second, dayOfWeek, dayOfYear, weekOfYear, pm, res1,
        res2, res3;
  } ld;
  SInt16 list[14];
  struct {
    SInt16 eraAlt;
    DateTimeRec oldDate;
  } od;
} LongDateRec;
#pragma pack(pop)

/* What StringToDate and StringToTime report: a sum of the flags below, or
   one of the fatal codes (whose top bit is set). */
typedef SInt16 StringToDateStatus;
enum {
  longDateFound = 1,
  leftOverChars = 2,
  sepNotIntlSep = 4,
  fieldOrderNotIntl = 8,
  extraneousStrings = 16,
  tooManySeps = 32,
  sepNotConsistent = 64,
  fatalDateTime = 0x8000,
  dateTimeNotFound = 0x8400,
  dateTimeInvalid = 0x8800
};

/* Kept for the caller between calls; the library needs none of it. */
typedef struct DateCacheRecord {
  SInt16 hidden[256];
} DateCacheRecord, *DateCachePtr;

/* Every year divisible by 4 is a leap year here; the range ends in 2040. */
KWE_API void KWE_CALL SecondsToDate(UInt32 secs, DateTimeRec* d);
/* Years 1904 to 2040 and months 1 to 12, else *secs is 0. The day is not
   checked, so day 0 or 32 lands on the neighbouring month. */
KWE_API void KWE_CALL DateToSeconds(const DateTimeRec* d, UInt32* secs);
KWE_API void KWE_CALL Secs2Date(UInt32 secs, DateTimeRec* d);
KWE_API void KWE_CALL Date2Secs(const DateTimeRec* d, UInt32* secs);

/* The Gregorian calendar over signed 64-bit seconds; days outside
   -12,663,687 to 11,272,844 from 1904 give an all-zero record. */
KWE_API void KWE_CALL LongSecondsToDate(const LongDateTime* lSecs, LongDateRec* lDate);
KWE_API void KWE_CALL LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs);
/* -1 when every field selected by fieldMask (bit n: the n-th of the first
   ten fields) survives the trip to seconds and back, else dateTimeInvalid;
   *newSecs gets the seconds. */
KWE_API SInt16 KWE_CALL ValidDate(LongDateRec* date, SInt32 fieldMask, LongDateTime* newSecs);

/* Reads a date (numbers in the international order, or a month name) or a
   time (hours, the time separator, minutes, seconds and a suffix) from the
   start of textLength bytes; *lengthUsed counts what was read. */
KWE_API StringToDateStatus KWE_CALL StringToDate(const char* textPtr, SInt32 textLength,
                                                 DateCachePtr theCache, SInt32* lengthUsed,
                                                 LongDateRec* dateTime);
KWE_API StringToDateStatus KWE_CALL StringToTime(const char* textPtr, SInt32 textLength,
                                                 DateCachePtr theCache, SInt32* lengthUsed,
                                                 LongDateRec* dateTime);

#endif
