// Dates and times read from text, as StringToDate and StringToTime do.
#pragma once
#include <cstdint>

#include "DateTimeUtils.h"

namespace kwe::intl {

struct DateTimeSettings;

// What reading needs besides the settings: today, for fields the text
// leaves out and for the century of two-digit years.
struct Today {
  int year = 2000;
  int month = 1;
  int day = 1;
};

StringToDateStatus ReadDate(const char* text, int32_t length, const DateTimeSettings& settings,
                            const Today& today, int32_t* lengthUsed, LongDateRec* date);
StringToDateStatus ReadTime(const char* text, int32_t length, const DateTimeSettings& settings,
                            int32_t* lengthUsed, LongDateRec* date);

// A two-digit year placed in the 100 years around today's.
int WindowedYear(int year, int currentYear);

}  // namespace kwe::intl
