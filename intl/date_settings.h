// The date and time settings read from WIN.INI at start-up, and the English
// names the date pictures spell out.
#pragma once
#include <cstdint>

namespace kwe::intl {

constexpr int kShortPictureMax = 15;
constexpr int kLongPictureMax = 31;
constexpr int kSuffixMax = 4;

struct DateTimeSettings {
  char timeSep = ':';
  uint8_t timeCycle = 0;   // 0: 12-hour, 1: 24-hour
  uint8_t timeFmt = 0x60;  // 0x80: hours with a leading zero; 0x40 minutes, 0x20 seconds
  char morning[kSuffixMax + 1] = "AM";
  char evening[kSuffixMax + 1] = "PM";
  char suffix24[kSuffixMax + 1] = "";
  char shortPicture[kShortPictureMax + 1] = "M/d/yy";
  uint8_t dateOrder = 0;  // 0 month-day-year, 1 day-month-year, 2 year-month-day
  char dateSep = '/';
  char longPicture[kLongPictureMax + 1] = "dddd, MMMM d, yyyy";
  uint8_t abbrLen = 3;
};

extern const char* const kMonthNames[12];
extern const char* const kDayNames[7];

}  // namespace kwe::intl
