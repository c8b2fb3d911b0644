// The International Utilities' dates, times, numbers and comparisons, and
// the date conversions, over the live records and settings.
#include <windows.h>

#include <cstring>
#include <string>

#include "DateTimeUtils.h"
#include "Memory.h"
#include "Packages.h"
#include "intl/calendar.h"
#include "intl/date_pictures.h"
#include "intl/date_reading.h"
#include "intl/intl_state.h"
#include "intl/text_order.h"

namespace kwe::intl {
namespace {

// The Intl1 record a handle holds, or null when it is too short for one.
const Intl1Rec* Intl1Of(Handle h) {
  if (!h || !*h || GetHandleSize(h) < static_cast<Size>(sizeof(Intl1Rec))) return nullptr;
  return reinterpret_cast<const Intl1Rec*>(*h);
}

const Intl0Rec* Intl0Of(Handle h) {
  if (!h || !*h || GetHandleSize(h) < static_cast<Size>(sizeof(Intl0Rec))) return nullptr;
  return reinterpret_cast<const Intl0Rec*>(*h);
}

void RenderDate(const DateTimeRec& d, DateForm form, Str255 result) {
  IntlState& s = State();
  const char* picture = form == shortDate ? s.settings.shortPicture : s.settings.longPicture;
  // Only once an application holds the "INTL" 1 handle can it have asked
  // for elements to be suppressed.
  const Intl1Rec* intl1 = Intl1Of(s.intl1Handle);
  UInt8 suppressed = intl1 ? intl1->suppressDay : 0;
  if (form != abbrevDate && !suppressed) {
    RenderDatePicture(picture, std::strlen(picture), d, s.settings.abbrLen, result);
    return;
  }
  std::string changed = form == abbrevDate ? AbbreviatePicture(picture) : std::string(picture);
  if (suppressed) changed = SuppressElements(changed, suppressed);
  RenderDatePicture(changed, d, s.settings.abbrLen, result);
}

TimeStyle SettingsStyle() {
  const DateTimeSettings& d = State().settings;
  TimeStyle style;
  style.twentyFourHour = d.timeCycle != 0;
  style.timeFmt = d.timeFmt;
  style.timeSep = d.timeSep;
  style.morning = d.morning;
  style.evening = d.evening;
  style.suffix24 = d.suffix24;
  return style;
}

// The date of the long forms' seconds; false (and an empty result, when
// there is one) without both.
bool LongDateFor(const LongDateTime* dateTime, Str255 result, LongDateRec* l) {
  if (result) result[0] = 0;
  if (!result || !dateTime) return false;
  kwe::intl::LongSecondsToDate(*dateTime, l);
  return true;
}

Today TodayNow() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return Today{now.wYear, now.wMonth, now.wDay};
}

}  // namespace
}  // namespace kwe::intl

using namespace kwe::intl;

KWE_API void KWE_CALL SecondsToDate(UInt32 secs, DateTimeRec* d) {
  if (d) MacSecondsToDate(secs, d);
}

KWE_API void KWE_CALL DateToSeconds(const DateTimeRec* d, UInt32* secs) {
  if (secs) *secs = d ? MacDateToSeconds(*d) : 0;
}

KWE_API void KWE_CALL Secs2Date(UInt32 secs, DateTimeRec* d) { SecondsToDate(secs, d); }
KWE_API void KWE_CALL Date2Secs(const DateTimeRec* d, UInt32* secs) { DateToSeconds(d, secs); }

KWE_API void KWE_CALL LongSecondsToDate(const LongDateTime* lSecs, LongDateRec* lDate) {
  if (lSecs && lDate) kwe::intl::LongSecondsToDate(*lSecs, lDate);
}

KWE_API void KWE_CALL LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs) {
  if (lDate && lSecs) *lSecs = kwe::intl::LongDateToSeconds(*lDate);
}

KWE_API SInt16 KWE_CALL ValidDate(LongDateRec* date, SInt32 fieldMask, LongDateTime* newSecs) {
  if (!date) return static_cast<SInt16>(dateTimeInvalid);
  LongDateTime secs = kwe::intl::LongDateToSeconds(*date);
  if (newSecs) *newSecs = secs;
  LongDateRec back;
  kwe::intl::LongSecondsToDate(secs, &back);
  for (int field = 0; field < 10; ++field)
    if ((fieldMask >> field & 1) && back.list[field] != date->list[field])
      return static_cast<SInt16>(dateTimeInvalid);
  return -1;
}

KWE_API void KWE_CALL IUDateString(UInt32 dateTime, DateForm longFlag, Str255 result) {
  if (!result) return;
  DateTimeRec d;
  MacSecondsToDate(dateTime, &d);
  RenderDate(d, longFlag, result);
}

KWE_API void KWE_CALL IUDatePString(UInt32 dateTime, DateForm longFlag, Str255 result, Handle) {
  IUDateString(dateTime, longFlag, result);
}

KWE_API void KWE_CALL IUTimeString(UInt32 dateTime, Boolean wantSeconds, Str255 result) {
  if (!result) return;
  UInt32 rest = dateTime % kSecondsPerDay;
  RenderTime(int(rest / 3600), int(rest / 60 % 60), int(rest % 60), wantSeconds != 0,
             SettingsStyle(), result);
}

KWE_API void KWE_CALL IUTimePString(UInt32 dateTime, Boolean wantSeconds, Str255 result, Handle) {
  IUTimeString(dateTime, wantSeconds, result);
}

KWE_API void KWE_CALL IULDateString(LongDateTime* dateTime, DateForm longFlag, Str255 result,
                                    Handle intlHandle) {
  LongDateRec l;
  if (!LongDateFor(dateTime, result, &l)) return;
  const Intl1Rec* intl1 = Intl1Of(intlHandle);
  if (longFlag == shortDate || !intl1) {
    RenderDate(l.od.oldDate, longFlag, result);
    return;
  }
  std::string picture = PictureFromIntl1(*intl1);
  if (longFlag == abbrevDate) picture = AbbreviatePicture(picture);
  RenderDatePicture(picture, l.od.oldDate, State().settings.abbrLen, result);
}

KWE_API void KWE_CALL IULTimeString(LongDateTime* dateTime, Boolean wantSeconds, Str255 result,
                                    Handle intlHandle) {
  LongDateRec l;
  if (!LongDateFor(dateTime, result, &l)) return;
  TimeStyle style = SettingsStyle();
  char morning[5] = {}, evening[5] = {};
  if (const Intl0Rec* intl0 = Intl0Of(intlHandle)) {
    std::memcpy(morning, intl0->mornStr, 4);
    std::memcpy(evening, intl0->eveStr, 4);
    style.twentyFourHour = intl0->timeCycle == 0;
    style.timeFmt = intl0->timeFmt;
    style.timeSep = intl0->timeSep;
    style.morning = morning;
    style.evening = evening;
  }
  RenderTime(l.ld.hour, l.ld.minute, l.ld.second, wantSeconds != 0, style, result);
}

KWE_API StringToDateStatus KWE_CALL StringToDate(const char* textPtr, SInt32 textLength,
                                                 DateCachePtr, SInt32* lengthUsed,
                                                 LongDateRec* dateTime) {
  if (!dateTime) return static_cast<StringToDateStatus>(dateTimeNotFound);
  return ReadDate(textPtr, textLength, State().settings, TodayNow(), lengthUsed, dateTime);
}

KWE_API StringToDateStatus KWE_CALL StringToTime(const char* textPtr, SInt32 textLength,
                                                 DateCachePtr, SInt32* lengthUsed,
                                                 LongDateRec* dateTime) {
  if (!dateTime) return static_cast<StringToDateStatus>(dateTimeNotFound);
  return ReadTime(textPtr, textLength, State().settings, lengthUsed, dateTime);
}

KWE_API void KWE_CALL NumToString(SInt32 theNum, Str255 theString) {
  if (theString) NumberToText(theNum, theString);
}

KWE_API void KWE_CALL StringToNum(ConstStr255Param theString, SInt32* theNum) {
  if (theString && theNum) *theNum = TextToNumber(theString);
}

KWE_API SInt16 KWE_CALL IUMagString(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen) {
  size_t a = aPtr && aLen > 0 ? size_t(aLen) : 0, b = bPtr && bLen > 0 ? size_t(bLen) : 0;
  return static_cast<SInt16>(CompareText(static_cast<const unsigned char*>(aPtr), a,
                                         static_cast<const unsigned char*>(bPtr), b));
}

KWE_API SInt16 KWE_CALL IUCompString(ConstStr255Param aStr, ConstStr255Param bStr) {
  return IUMagString(aStr ? aStr + 1 : nullptr, bStr ? bStr + 1 : nullptr, aStr ? aStr[0] : 0,
                     bStr ? bStr[0] : 0);
}

KWE_API SInt16 KWE_CALL IUMagIDString(const void* aPtr, const void* bPtr, SInt16 aLen,
                                      SInt16 bLen) {
  size_t a = aPtr && aLen > 0 ? size_t(aLen) : 0, b = bPtr && bLen > 0 ? size_t(bLen) : 0;
  if (a != b) return 1;
  return ComparePrimary(static_cast<const unsigned char*>(aPtr), a,
                        static_cast<const unsigned char*>(bPtr), b) != 0;
}

KWE_API SInt16 KWE_CALL IUEqualString(ConstStr255Param aStr, ConstStr255Param bStr) {
  size_t a = aStr ? aStr[0] : 0, b = bStr ? bStr[0] : 0;
  return ComparePrimary(aStr ? aStr + 1 : nullptr, a, bStr ? bStr + 1 : nullptr, b) != 0;
}
