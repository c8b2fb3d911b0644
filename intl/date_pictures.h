// Windows date pictures ("M/d/yy", "dddd, MMMM d, yyyy") as the Toolbox's
// date strings use them: rendering, the abbreviated form, suppressed
// elements, and the long picture against the "INTL" 1 record's fields.
#pragma once
#include <cstdint>
#include <string>

#include "OSUtils.h"
#include "Packages.h"

namespace kwe::intl {

// "d"/"dd" day, "ddd"/"dddd" weekday, "M" to "MMMM" month, "y"/"yy" two
// digits of the year, "yyy"/"yyyy" four; letters compared without case;
// text in single quotes is copied without them, "''" is a quote; every other
// character is copied. The result is cut at 255 characters.
void RenderDatePicture(const std::string& picture, const DateTimeRec& d, int abbrLen,
                       Str255 result);
void RenderDatePicture(const char* picture, size_t length, const DateTimeRec& d, int abbrLen,
                       Str255 result);

// Runs of four or more "m", "M", "d" or "D" cut to three (the abbreviated
// long date).
std::string AbbreviatePicture(const std::string& picture);

// Removes the elements suppressDay names (supDay: the day and the weekday;
// supWeek: the weekday; supMonth, supYear) with the text that separates
// each from its neighbour.
std::string SuppressElements(const std::string& picture, uint8_t suppressDay);

// What the short picture says of the date's order, separator and leading
// zeros (shrtDateFmt).
struct ShortPictureTraits {
  uint8_t dateOrder = 2;
  char dateSep = 0;  // 0: none in the picture
  uint8_t shrtDateFmt = 0;
};
ShortPictureTraits AnalyseShortPicture(const char* picture);

// The long picture into "INTL" 1's suppressDay, lngDateFmt (element 1 in the
// top two bits: 0 day, 1 weekday, 2 month, 3 year; the two common orders as
// 0 and 255), dayLeading0 and st0 to st4.
void LongPictureToIntl1(const char* picture, Intl1Rec* intl1);
// The picture those fields stand for (the reverse, up to the fields' reach).
std::string PictureFromIntl1(const Intl1Rec& intl1);

// hh:mm[:ss] and a suffix, by a cycle, leading-zero bits and suffixes.
struct TimeStyle {
  bool twentyFourHour = false;
  uint8_t timeFmt = 0x60;
  char timeSep = ':';
  const char* morning = "";
  const char* evening = "";
  const char* suffix24 = "";
};
void RenderTime(int hour, int minute, int second, bool wantSeconds, const TimeStyle& style,
                Str255 result);

}  // namespace kwe::intl
