// The portable pieces of the International Utilities: what a date or time
// written by a picture reads back as, and how pictures lose elements.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "intl/calendar.h"
#include "intl/date_pictures.h"
#include "intl/date_reading.h"
#include "intl/date_settings.h"

namespace kwe::intl {
namespace {

std::string P(const unsigned char* s) {
  return std::string(reinterpret_cast<const char*>(s) + 1, s[0]);
}

struct Picture {
  const char* picture;
  uint8_t dateOrder;
  char dateSep;
};

// Any date a picture writes with a four-digit year, or with the month's
// name, reads back as the same date.
TEST(DatePictures, WrittenDatesReadBackAsTheSameDate) {
  unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  const Picture pictures[] = {{"M/d/yyyy", 0, '/'},   {"dd.MM.yyyy", 1, '.'},
                              {"yyyy-MM-dd", 2, '-'}, {"dddd, MMMM d, yyyy", 0, '/'},
                              {"d MMM yyyy", 1, '.'}, {"ddd, d. MMMM yyyy", 1, '.'}};
  Today today{2026, 11, 26};
  for (int step = 0; step < 20000; ++step) {
    const Picture& p = pictures[step % 6];
    int year = 1000 + int(random() % 9000), month = 1 + int(random() % 12);
    int day = 1 + int(random() % unsigned(DaysInMonth(year, month)));
    int64_t days = DaysFrom1904(year, month, day);
    DateTimeRec d{SInt16(year),
                  SInt16(month),
                  SInt16(day),
                  0,
                  0,
                  0,
                  SInt16(((days % 7 + 7) % 7 + 5) % 7 + 1)};
    Str255 text;
    RenderDatePicture(p.picture, d, 3, text);
    DateTimeSettings settings;
    settings.dateOrder = p.dateOrder;
    settings.dateSep = p.dateSep;
    LongDateRec back{};
    int32_t used = -1;
    StringToDateStatus status =
        ReadDate(reinterpret_cast<const char*>(text + 1), text[0], settings, today, &used, &back);
    ASSERT_EQ(status, longDateFound) << "seed " << seed << " step " << step << " " << P(text);
    ASSERT_EQ(used, text[0]) << "seed " << seed << " step " << step;
    ASSERT_EQ(back.ld.year * 10000 + back.ld.month * 100 + back.ld.day,
              year * 10000 + month * 100 + day)
        << "seed " << seed << " step " << step << " " << P(text);
  }
}

// Every second of the day, in both cycles, with and without leading zeros.
TEST(DatePictures, EveryTimeOfDayReadsBack) {
  for (int style = 0; style < 4; ++style) {
    DateTimeSettings settings;
    settings.timeSep = style == 3 ? '.' : ':';
    TimeStyle t;
    t.twentyFourHour = style % 2 == 1;
    t.timeFmt = style >= 2 ? 0xE0 : 0x60;
    t.timeSep = settings.timeSep;
    t.morning = settings.morning;
    t.evening = settings.evening;
    for (int s = 0; s < 86400; ++s) {
      Str255 text;
      RenderTime(s / 3600, s / 60 % 60, s % 60, true, t, text);
      LongDateRec back{};
      int32_t used = 0;
      ASSERT_EQ(ReadTime(reinterpret_cast<const char*>(text + 1), text[0], settings, &used, &back),
                longDateFound)
          << style << " " << P(text);
      ASSERT_EQ(used, text[0]);
      ASSERT_EQ(back.ld.hour * 3600 + back.ld.minute * 60 + back.ld.second, s)
          << style << " " << P(text);
    }
  }
}

TEST(DatePictures, AbbreviatedAndSuppressedPictures) {
  struct Row {
    const char* picture;
    uint8_t suppress;
    const char* suppressed;
    const char* abbreviated;
  };
  for (const Row& r : {
           Row{"dddd, MMMM d, yyyy", supYear, "dddd, MMMM d", "ddd, MMM d, yyyy"},
           Row{"dddd, MMMM d, yyyy", supWeek | supMonth, "d, yyyy", "ddd, MMM d, yyyy"},
           Row{"d. MMMM yyyy", supYear | supMonth, "d", "d. MMM yyyy"},
           Row{"yyyy'年'M'月'd'日'", supDay, "yyyy'年'M'日'", "yyyy'年'M'月'd'日'"},
           Row{"'dddd' MMMMM", supMonth, "'dddd' ", "'dddd' MMM"},
           Row{"", supDay | supWeek | supMonth | supYear, "", ""},
       }) {
    SCOPED_TRACE(r.picture);
    EXPECT_EQ(SuppressElements(r.picture, r.suppress), r.suppressed);
    EXPECT_EQ(AbbreviatePicture(r.picture), r.abbreviated);
  }
}

}  // namespace
}  // namespace kwe::intl
