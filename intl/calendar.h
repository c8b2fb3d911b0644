// The Toolbox's calendars: the 32-bit seconds since 1904, whose every fourth
// year is a leap year (they end in 2040), and the Gregorian calendar of the
// 64-bit long dates and of dates read from text.
#pragma once
#include <cstdint>

#include "DateTimeUtils.h"

namespace kwe::intl {

constexpr uint32_t kSecondsPerDay = 86400;

void MacSecondsToDate(uint32_t secs, DateTimeRec* d);
// 0 outside years 1904 to 2040 and months 1 to 12.
uint32_t MacDateToSeconds(const DateTimeRec& d);

bool GregorianLeapYear(int64_t year);
// Days of month (1 to 12) in the Gregorian calendar.
int DaysInMonth(int64_t year, int month);

// The Gregorian day count from 1 January 1904 and back.
int64_t DaysFrom1904(int64_t year, int month, int day);
void DateOfDay(int64_t days, int64_t* year, int* month, int* day);

// False (and an all-zero record) when the day lies outside the long range.
bool LongSecondsToDate(int64_t secs, LongDateRec* d);
int64_t LongDateToSeconds(const LongDateRec& d);

}  // namespace kwe::intl
