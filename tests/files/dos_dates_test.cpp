// Macintosh seconds through DOS dates, natively.
#include "files/dos_dates.h"

#include <gtest/gtest.h>

namespace {

using namespace kwe::files;

uint16_t Date(int year, int month, int day) {
  return static_cast<uint16_t>(((year - 1980) << 9) | (month << 5) | day);
}
uint16_t Time(int hour, int minute, int second) {
  return static_cast<uint16_t>((hour << 11) | (minute << 5) | (second / 2));
}

TEST(FilesPortableDates, KnownMoments) {
  struct Case {
    int y, mo, d, h, mi, s;
    uint32_t mac;
  } cases[] = {
      {1980, 1, 1, 0, 0, 0, 2398377600u},  // the first DOS date
      {1999, 6, 15, 12, 30, 42, 0xB38BF7F2u},
      {2000, 2, 29, 23, 59, 58, 3034713598u},  // a leap day
      {2040, 2, 6, 6, 28, 14, 4294967294u},    // the last even second of Macintosh time
  };
  for (const Case& c : cases) {
    EXPECT_EQ(MacSecondsFromDosDateTime(Date(c.y, c.mo, c.d), Time(c.h, c.mi, c.s)), c.mac) << c.y;
    uint16_t date = 0, time = 0;
    ASSERT_TRUE(DosDateTimeFromMacSeconds(c.mac, &date, &time)) << c.y;
    EXPECT_EQ(date, Date(c.y, c.mo, c.d));
    EXPECT_EQ(time, Time(c.h, c.mi, c.s));
  }
}

TEST(FilesPortableDates, RoundTripsEverySecondDayOfTheDosRange) {
  for (uint64_t step = 2398377600u; step < 4294967296u; step += 86400u * 37 + 3602) {
    uint32_t s = static_cast<uint32_t>(step);
    uint16_t date, time;
    ASSERT_TRUE(DosDateTimeFromMacSeconds(s, &date, &time));
    EXPECT_EQ(MacSecondsFromDosDateTime(date, time), s & ~1u) << s;
  }
}

TEST(FilesPortableDates, MomentsBefore1980DoNotFit) {
  uint16_t date = 7, time = 7;
  EXPECT_FALSE(DosDateTimeFromMacSeconds(0, &date, &time));
  EXPECT_FALSE(DosDateTimeFromMacSeconds(2398377599u, &date, &time));
  EXPECT_EQ(date, 7);
}

}  // namespace
