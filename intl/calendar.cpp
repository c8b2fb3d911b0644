#include "intl/calendar.h"

#include <cstring>

namespace kwe::intl {
namespace {

constexpr int kMonthLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int64_t kFirstLongDay = -12663687;  // the long dates' range, days from 1904
constexpr int64_t kLastLongDay = 11272844;

// Floor division, for days and seconds before 1904.
int64_t FloorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

// Days from 1 March of year 0 of the proleptic Gregorian calendar.
int64_t CivilDays(int64_t year, int month, int day) {
  year -= month <= 2;
  int64_t era = FloorDiv(year, 400);
  int64_t yearOfEra = year - era * 400;
  int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra;
}

const int64_t k1904 = CivilDays(1904, 1, 1);

}  // namespace

void MacSecondsToDate(uint32_t secs, DateTimeRec* d) {
  uint32_t days = secs / kSecondsPerDay;
  uint32_t rest = secs % kSecondsPerDay;
  d->dayOfWeek = static_cast<SInt16>((days + 5) % 7 + 1);  // 1 January 1904 was a Friday
  uint32_t year = 1904 + days / 1461 * 4;
  uint32_t inBlock = days % 1461;  // the block's first year is the leap year
  if (inBlock >= 366) {
    inBlock -= 366;
    year += 1 + inBlock / 365;
    inBlock %= 365;
  }
  int month = 0;
  for (;; ++month) {
    uint32_t length = kMonthLengths[month] + (month == 1 && year % 4 == 0);
    if (inBlock < length) break;
    inBlock -= length;
  }
  d->year = static_cast<SInt16>(year);
  d->month = static_cast<SInt16>(month + 1);
  d->day = static_cast<SInt16>(inBlock + 1);
  d->hour = static_cast<SInt16>(rest / 3600);
  d->minute = static_cast<SInt16>(rest / 60 % 60);
  d->second = static_cast<SInt16>(rest % 60);
}

uint32_t MacDateToSeconds(const DateTimeRec& d) {
  if (d.year < 1904 || d.year > 2040 || d.month < 1 || d.month > 12) return 0;
  uint32_t y = static_cast<uint32_t>(d.year - 1904);
  uint32_t days = (y + 3) / 4 + 365 * y;
  for (int m = 0; m < d.month - 1; ++m) days += kMonthLengths[m] + (m == 1 && y % 4 == 0);
  // Unsigned, so that the seconds wrap as the Toolbox's 32-bit sum does.
  return (days + static_cast<uint32_t>(d.day) - 1) * kSecondsPerDay +
         static_cast<uint32_t>(d.hour) * 3600 + static_cast<uint32_t>(d.minute) * 60 +
         static_cast<uint32_t>(d.second);
}

bool GregorianLeapYear(int64_t year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int64_t year, int month) {
  if (month < 1 || month > 12) return 0;
  return kMonthLengths[month - 1] + (month == 2 && GregorianLeapYear(year));
}

int64_t DaysFrom1904(int64_t year, int month, int day) {
  return CivilDays(year, month, day) - k1904;
}

void DateOfDay(int64_t days, int64_t* year, int* month, int* day) {
  int64_t z = days + k1904;
  int64_t era = FloorDiv(z, 146097);
  int64_t dayOfEra = z - era * 146097;
  int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  int64_t mp = (5 * dayOfYear + 2) / 153;
  *day = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1);
  *month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  *year = yearOfEra + era * 400 + (*month <= 2);
}

bool LongSecondsToDate(int64_t secs, LongDateRec* d) {
  std::memset(d, 0, sizeof *d);
  int64_t days = FloorDiv(secs, kSecondsPerDay);
  if (days < kFirstLongDay || days > kLastLongDay) return false;
  int64_t rest = secs - days * kSecondsPerDay;
  int64_t year;
  int month, day;
  DateOfDay(days, &year, &month, &day);
  d->ld.year = static_cast<SInt16>(year);
  d->ld.month = static_cast<SInt16>(month);
  d->ld.day = static_cast<SInt16>(day);
  d->ld.hour = static_cast<SInt16>(rest / 3600);
  d->ld.minute = static_cast<SInt16>(rest / 60 % 60);
  d->ld.second = static_cast<SInt16>(rest % 60);
  d->ld.dayOfWeek = static_cast<SInt16>((days % 7 + 7 + 5) % 7 + 1);
  int dayOfYear = static_cast<int>(days - DaysFrom1904(year, 1, 1)) + 1;
  d->ld.dayOfYear = static_cast<SInt16>(dayOfYear);
  d->ld.weekOfYear = static_cast<SInt16>((dayOfYear - 1) / 7 + 1);
  d->ld.pm = d->ld.hour >= 12;
  return true;
}

int64_t LongDateToSeconds(const LongDateRec& d) {
  // Months outside 1 to 12 carry into the year, days into the month.
  int64_t months = int64_t(d.ld.year) * 12 + d.ld.month - 1;
  int64_t year = FloorDiv(months, 12);
  int month = static_cast<int>(months - year * 12) + 1;
  int64_t days = DaysFrom1904(year, month, 1) + d.ld.day - 1;
  return days * kSecondsPerDay + int64_t(d.ld.hour) * 3600 + int64_t(d.ld.minute) * 60 +
         d.ld.second;
}

}  // namespace kwe::intl
