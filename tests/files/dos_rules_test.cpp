// Macintosh seconds through DOS dates, natively, over the whole range; what
// only the DLL shows is in the other files.
#include <gtest/gtest.h>

#include <string>

#include "files/dos_dates.h"

namespace {

using namespace kwe::files;

uint16_t Date(int year, int month, int day) {
  return static_cast<uint16_t>(((year - 1980) << 9) | (month << 5) | day);
}
uint16_t Time(int hour, int minute, int second) {
  return static_cast<uint16_t>((hour << 11) | (minute << 5) | (second / 2));
}

// Known moments both ways, a sweep of the whole range (every 37 days and an
// hour) back and forth, and the moments before 1980 that DOS cannot hold.
TEST(FilesPortableDates, MacintoshSecondsAndDosDates) {
  const struct {
    int y, mo, d, h, mi, s;
    uint32_t mac;
  } cases[] = {
      {1980, 1, 1, 0, 0, 0, 2398377600u},  // the first DOS date
      {1999, 6, 15, 12, 30, 42, 0xB38BF7F2u},
      {2000, 2, 29, 23, 59, 58, 3034713598u},  // a leap day
      {2040, 2, 6, 6, 28, 14, 4294967294u},    // the last even second of Macintosh time
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MacSecondsFromDosDateTime(Date(c.y, c.mo, c.d), Time(c.h, c.mi, c.s)), c.mac) << c.y;
    uint16_t date = 0, time = 0;
    ASSERT_TRUE(DosDateTimeFromMacSeconds(c.mac, &date, &time)) << c.y;
    EXPECT_EQ(date, Date(c.y, c.mo, c.d));
    EXPECT_EQ(time, Time(c.h, c.mi, c.s));
  }
  for (uint64_t step = 2398377600u; step < 4294967296u; step += 86400u * 37 + 3602) {
    uint16_t date, time;
    ASSERT_TRUE(DosDateTimeFromMacSeconds(uint32_t(step), &date, &time));
    EXPECT_EQ(MacSecondsFromDosDateTime(date, time), uint32_t(step) & ~1u) << step;
  }
  uint16_t date = 7, time = 7;
  EXPECT_FALSE(DosDateTimeFromMacSeconds(0, &date, &time));
  EXPECT_FALSE(DosDateTimeFromMacSeconds(2398377599u, &date, &time));
  EXPECT_EQ(date, 7);
}

}  // namespace
