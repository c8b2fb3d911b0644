// Seconds against dates, checked against Windows' own calendar
// (FileTimeToSystemTime), and dates and times read from text.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "DateTimeUtils.h"
#include "Packages.h"
#include "support/test_host.h"

namespace kwe_test {
namespace {

constexpr int64_t kTicksPerSecond = 10000000;  // FILETIME counts 100 ns

int64_t FileTimeOf1904() {
  SYSTEMTIME st{};
  st.wYear = 1904;
  st.wMonth = 1;
  st.wDay = 1;
  FILETIME ft;
  SystemTimeToFileTime(&st, &ft);
  return int64_t(ULARGE_INTEGER{{ft.dwLowDateTime, ft.dwHighDateTime}}.QuadPart);
}

// What Windows makes of seconds since 1904.
SYSTEMTIME WindowsDate(int64_t secs) {
  ULARGE_INTEGER u;
  u.QuadPart = uint64_t(FileTimeOf1904() + secs * kTicksPerSecond);
  FILETIME ft{u.LowPart, u.HighPart};
  SYSTEMTIME st{};
  FileTimeToSystemTime(&ft, &st);
  return st;
}

std::string Show(const DateTimeRec& d) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d dow %d", d.year, d.month, d.day,
                d.hour, d.minute, d.second, d.dayOfWeek);
  return text;
}

DateTimeRec FromWindows(const SYSTEMTIME& st) {
  return DateTimeRec{SInt16(st.wYear),         SInt16(st.wMonth),  SInt16(st.wDay),
                     SInt16(st.wHour),         SInt16(st.wMinute), SInt16(st.wSecond),
                     SInt16(st.wDayOfWeek + 1)};
}

using IntlTest = SessionTest;

TEST_F(IntlTest, SecondsAndDatesAgreeWithWindowsCalendar) {
  std::vector<UInt32> seconds = {0, 1, 86399, 86400, 5184000, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF};
  // Every leap day, its first and last second.
  for (int year = 1904; year <= 2036; year += 4) {
    DateTimeRec leap{SInt16(year), 2, 29, 0, 0, 0, 0};
    UInt32 s = 0;
    DateToSeconds(&leap, &s);
    seconds.push_back(s);
    seconds.push_back(s + 86399);
  }
  unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int i = 0; i < 20000; ++i) seconds.push_back(UInt32(random()));
  for (size_t step = 0; step < seconds.size(); ++step) {
    UInt32 s = seconds[step];
    DateTimeRec d{}, expected = FromWindows(WindowsDate(s));
    SecondsToDate(s, &d);
    ASSERT_EQ(Show(d), Show(expected)) << "seed " << seed << " step " << step << " secs " << s;
    UInt32 back = 1;
    DateToSeconds(&d, &back);
    ASSERT_EQ(back, s) << "seed " << seed << " step " << step;
  }
  // The old names are the same calls.
  DateTimeRec march{};
  Secs2Date(5184000, &march);
  UInt32 s = 0;
  Date2Secs(&march, &s);
  EXPECT_EQ(s, 5184000u);
  // Outside the years and months the seconds can hold: 0.
  for (DateTimeRec outside :
       {DateTimeRec{1903, 12, 31, 0, 0, 0, 0}, DateTimeRec{2041, 1, 1, 0, 0, 0, 0},
        DateTimeRec{2000, 0, 1, 0, 0, 0, 0}, DateTimeRec{2000, 13, 1, 0, 0, 0, 0}}) {
    s = 1;
    DateToSeconds(&outside, &s);
    EXPECT_EQ(s, 0u) << Show(outside);
  }
}

TEST_F(IntlTest, LongDatesAgreeWithWindowsCalendar) {
  unsigned seed = std::random_device{}();
  std::mt19937_64 random(seed);
  // From 1601, where Windows' calendar starts, to 30827.
  int64_t first = -FileTimeOf1904() / kTicksPerSecond,
          last = int64_t(28000) * 31556952;  // to about 29900
  for (int step = 0; step < 20000; ++step) {
    int64_t secs = first + int64_t(random() % uint64_t(last - first));
    LongDateRec d{};
    LongSecondsToDate(&secs, &d);
    ASSERT_EQ(Show(d.od.oldDate), Show(FromWindows(WindowsDate(secs))))
        << "seed " << seed << " step " << step << " secs " << secs;
    LongDateTime back = 0;
    LongDateToSeconds(&d, &back);
    ASSERT_EQ(back, secs) << "seed " << seed << " step " << step;
    ASSERT_EQ(ValidDate(&d, 0x3FF, &back), -1) << "seed " << seed << " step " << step;
  }
  // The long range's ends, in days from 1904.
  struct End {
    int64_t day;
    bool inside;
  };
  for (End end :
       {End{-12663687, true}, End{-12663688, false}, End{11272844, true}, End{11272845, false}}) {
    LongDateTime secs = end.day * 86400 + 43200;
    LongDateRec d;
    std::memset(&d, 0x55, sizeof d);
    LongSecondsToDate(&secs, &d);
    EXPECT_EQ(d.ld.day != 0, end.inside) << end.day;
  }
  // 30 February does not survive the trip; its year alone does.
  LongDateRec feb{};
  feb.ld.year = 2023;
  feb.ld.month = 2;
  feb.ld.day = 30;
  LongDateTime secs = 0;
  EXPECT_EQ(UInt16(ValidDate(&feb, 1 << 3, &secs)), dateTimeInvalid);
  EXPECT_EQ(ValidDate(&feb, 1 << 1, &secs), -1);
}

struct DateText {
  const char* text;
  SInt32 length;  // -1: the whole text
  UInt16 status;
  SInt32 used;
  int year, month, day;  // 0: today's
};

// The library's own settings (no WIN.INI read): month/day/year, "/".
TEST_F(IntlTest, StringToDateReportsWhatItFound) {
  SYSTEMTIME today;
  GetLocalTime(&today);
  const std::vector<DateText> cases = {
      {"3/5/1999", -1, longDateFound, 8, 1999, 3, 5},
      {"  3/5/1999 and more", -1, longDateFound | leftOverChars, 10, 1999, 3, 5},
      {"3-5-1999", -1, longDateFound | sepNotIntlSep, 8, 1999, 3, 5},
      {"3/5-1999", -1, longDateFound | sepNotConsistent, 8, 1999, 3, 5},
      {"2/29/2000", -1, longDateFound, 9, 2000, 2, 29},
      {"2/29/1900", -1, dateTimeInvalid, 0, 0, 0, 0},
      {"13/1/1999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {"12/25", -1, longDateFound, 5, 0, 12, 25},
      {"3/5/1999", 3, longDateFound, 3, 0, 3, 5},
      {"Friday, March 5, 1999", -1, longDateFound, 21, 1999, 3, 5},
      {"5 mar 1999 noon", -1, longDateFound | leftOverChars, 10, 1999, 3, 5},
      {"Sat Feb 29 1999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {"March 5, 999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {"", -1, dateTimeNotFound, 0, 0, 0, 0},
      {"     ", -1, dateTimeNotFound, 0, 0, 0, 0},
      {"garbage", -1, dateTimeNotFound, 0, 0, 0, 0},
      {"\x01\x02\xFF", -1, dateTimeNotFound, 0, 0, 0, 0},
      {"99999999999999/3", -1, dateTimeInvalid, 0, 0, 0, 0},
  };
  for (const DateText& c : cases) {
    SCOPED_TRACE(c.text);
    LongDateRec d{};
    SInt32 used = -1;
    SInt32 length = c.length < 0 ? SInt32(std::strlen(c.text)) : c.length;
    EXPECT_EQ(UInt16(StringToDate(c.text, length, nullptr, &used, &d)), c.status);
    if (c.status & fatalDateTime) continue;
    EXPECT_EQ(used, c.used);
    EXPECT_EQ(d.ld.year, c.year ? c.year : today.wYear);
    EXPECT_EQ(d.ld.month, c.month);
    EXPECT_EQ(d.ld.day, c.day);
  }
  LongDateRec d{};
  SInt32 used;
  EXPECT_EQ(UInt16(StringToDate(nullptr, 5, nullptr, &used, &d)), dateTimeNotFound);
  EXPECT_EQ(UInt16(StringToDate("1/1/1", -3, nullptr, &used, &d)), dateTimeNotFound);
  // Two-digit years in the hundred years around this one.
  EXPECT_EQ(StringToDate("1/2/05", 6, nullptr, &used, &d), longDateFound);
  EXPECT_EQ(d.ld.year, today.wYear / 100 * 100 + 5);
}

struct TimeText {
  const char* text;
  UInt16 status;
  SInt32 used;
  int hour, minute, second;
};

TEST_F(IntlTest, StringToTimeReportsWhatItFound) {
  const std::vector<TimeText> cases = {
      {"9:05", longDateFound, 4, 9, 5, 0},
      {" 9:05:07 pm", longDateFound, 11, 21, 5, 7},
      {"12:30 AM", longDateFound, 8, 0, 30, 0},
      {"12:30 PM", longDateFound, 8, 12, 30, 0},
      {"24:00", longDateFound, 5, 0, 0, 0},
      {"23:59:59 and", longDateFound | leftOverChars, 8, 23, 59, 59},
      {"24:01", dateTimeInvalid, 0, 0, 0, 0},
      {"7:60", dateTimeInvalid, 0, 0, 0, 0},
      {"7 pm", dateTimeInvalid, 0, 0, 0, 0},
      {"pm", dateTimeInvalid, 0, 0, 0, 0},
      {"", dateTimeNotFound, 0, 0, 0, 0},
      {"   ", dateTimeNotFound, 0, 0, 0, 0},
  };
  for (const TimeText& c : cases) {
    SCOPED_TRACE(c.text);
    LongDateRec d{};
    SInt32 used = -1;
    EXPECT_EQ(UInt16(StringToTime(c.text, SInt32(std::strlen(c.text)), nullptr, &used, &d)),
              c.status);
    if (c.status & fatalDateTime) continue;
    EXPECT_EQ(used, c.used);
    EXPECT_EQ(d.ld.hour, c.hour);
    EXPECT_EQ(d.ld.minute, c.minute);
    EXPECT_EQ(d.ld.second, c.second);
  }
}

}  // namespace
}  // namespace kwe_test
