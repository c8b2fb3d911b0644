// The International Utilities through the DLL: seconds against dates and
// dates and times as WIN.INI's [intl] settings picture them, both against
// Windows' own calendar and formats (FileTimeToSystemTime, GetDateFormatA,
// GetTimeFormatA); dates and times read from text; numbers as text;
// Macintosh Roman words in order; the "INTL" records from WIN.INI and from
// the system resource file. Cases that set WIN.INI keys carry "Profile" in
// their names and run one at a time.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "DateTimeUtils.h"
#include "Memory.h"
#include "Packages.h"
#include "Resources.h"
#include "resource_builder/resource_image.h"
#include "support/test_host.h"

namespace kwe_test {
namespace {

constexpr int64_t kTicksPerSecond = 10000000;  // FILETIME counts 100 ns

int64_t FileTimeOf1904() {
  SYSTEMTIME st{1904, 1, 0, 1, 0, 0, 0, 0};
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

std::string Show(const SYSTEMTIME& st) {
  return Show(DateTimeRec{SInt16(st.wYear), SInt16(st.wMonth), SInt16(st.wDay), SInt16(st.wHour),
                          SInt16(st.wMinute), SInt16(st.wSecond), SInt16(st.wDayOfWeek + 1)});
}

using IntlTest = SessionTest;

// Seconds and dates both ways against Windows' calendar: every leap day's
// first and last second, the ends of the 32-bit seconds, and a seeded sweep
// over the long range from 1601, where Windows' calendar starts, to about
// 29900, half of it within the 32-bit seconds the older calls take.
TEST_F(IntlTest, SecondsAndDatesAgreeWithWindowsCalendar) {
  std::vector<int64_t> seconds = {0, 1, 86399, 86400, 5184000, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF};
  for (int year = 1904; year <= 2036; year += 4) {
    DateTimeRec leap{SInt16(year), 2, 29, 0, 0, 0, 0};
    UInt32 s = 0;
    DateToSeconds(&leap, &s);
    seconds.push_back(s);
    seconds.push_back(s + 86399);
  }
  unsigned seed = std::random_device{}();
  std::mt19937_64 random(seed);
  int64_t first = -FileTimeOf1904() / kTicksPerSecond, last = int64_t(28000) * 31556952;
  for (int i = 0; i < 40000; ++i)
    seconds.push_back(i % 2 ? int64_t(UInt32(random()))
                            : first + int64_t(random() % uint64_t(last - first)));
  for (size_t step = 0; step < seconds.size(); ++step) {
    int64_t secs = seconds[step];
    SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step << " secs " << secs);
    std::string windows = Show(WindowsDate(secs));
    LongDateRec d{};
    LongSecondsToDate(&secs, &d);
    ASSERT_EQ(Show(d.od.oldDate), windows);
    LongDateTime back = 0;
    LongDateToSeconds(&d, &back);
    ASSERT_EQ(back, secs);
    ASSERT_EQ(ValidDate(&d, 0x3FF, &back), -1);
    if (secs < 0 || secs > 0xFFFFFFFF) continue;
    DateTimeRec old{};
    SecondsToDate(UInt32(secs), &old);
    ASSERT_EQ(Show(old), windows);
    UInt32 oldBack = 1;
    DateToSeconds(&old, &oldBack);
    ASSERT_EQ(oldBack, UInt32(secs));
  }
  // Outside the years and months the 32-bit seconds can hold: 0.
  for (DateTimeRec outside :
       {DateTimeRec{1903, 12, 31, 0, 0, 0, 0}, DateTimeRec{2041, 1, 1, 0, 0, 0, 0},
        DateTimeRec{2000, 0, 1, 0, 0, 0, 0}, DateTimeRec{2000, 13, 1, 0, 0, 0, 0}}) {
    UInt32 s = 1;
    DateToSeconds(&outside, &s);
    EXPECT_EQ(s, 0u) << Show(outside);
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

struct ReadText {
  bool time;  // StringToTime, else StringToDate
  const char* text;
  SInt32 length;  // -1: the whole text
  UInt16 status;
  SInt32 used;
  int a, b, c;  // year, month, day (year 0: this year); or hour, minute, second
};

// The library's own settings (no WIN.INI read): month/day/year, "/", ":".
TEST_F(IntlTest, ReadingDatesAndTimesReportsWhatItFound) {
  SYSTEMTIME today;
  GetLocalTime(&today);
  const std::vector<ReadText> cases = {
      {false, "3/5/1999", -1, longDateFound, 8, 1999, 3, 5},
      {false, "  3/5/1999 and more", -1, longDateFound | leftOverChars, 10, 1999, 3, 5},
      {false, "3-5-1999", -1, longDateFound | sepNotIntlSep, 8, 1999, 3, 5},
      {false, "3/5-1999", -1, longDateFound | sepNotConsistent, 8, 1999, 3, 5},
      {false, "2/29/2000", -1, longDateFound, 9, 2000, 2, 29},
      {false, "2/29/1900", -1, dateTimeInvalid, 0, 0, 0, 0},
      {false, "13/1/1999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {false, "12/25", -1, longDateFound, 5, 0, 12, 25},
      {false, "3/5/1999", 3, longDateFound, 3, 0, 3, 5},
      {false, "Friday, March 5, 1999", -1, longDateFound, 21, 1999, 3, 5},
      {false, "5 mar 1999 noon", -1, longDateFound | leftOverChars, 10, 1999, 3, 5},
      {false, "Sat Feb 29 1999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {false, "March 5, 999", -1, dateTimeInvalid, 0, 0, 0, 0},
      {false, "", -1, dateTimeNotFound, 0, 0, 0, 0},
      {false, "     ", -1, dateTimeNotFound, 0, 0, 0, 0},
      {false, "garbage", -1, dateTimeNotFound, 0, 0, 0, 0},
      {false, "\x01\x02\xFF", -1, dateTimeNotFound, 0, 0, 0, 0},
      {false, "99999999999999/3", -1, dateTimeInvalid, 0, 0, 0, 0},
      {false, "1/1/1", -3, dateTimeNotFound, 0, 0, 0, 0},
      {true, "9:05", -1, longDateFound, 4, 9, 5, 0},
      {true, " 9:05:07 pm", -1, longDateFound, 11, 21, 5, 7},
      {true, "12:30 AM", -1, longDateFound, 8, 0, 30, 0},
      {true, "12:30 PM", -1, longDateFound, 8, 12, 30, 0},
      {true, "24:00", -1, longDateFound, 5, 0, 0, 0},
      {true, "23:59:59 and", -1, longDateFound | leftOverChars, 8, 23, 59, 59},
      {true, "24:01", -1, dateTimeInvalid, 0, 0, 0, 0},
      {true, "7:60", -1, dateTimeInvalid, 0, 0, 0, 0},
      {true, "7 pm", -1, dateTimeInvalid, 0, 0, 0, 0},
      {true, "pm", -1, dateTimeInvalid, 0, 0, 0, 0},
      {true, "", -1, dateTimeNotFound, 0, 0, 0, 0},
      {true, "   ", -1, dateTimeNotFound, 0, 0, 0, 0},
  };
  for (const ReadText& c : cases) {
    SCOPED_TRACE(c.text);
    LongDateRec d{};
    SInt32 used = -1;
    SInt32 length = c.length == -1 ? SInt32(std::strlen(c.text)) : c.length;
    auto read = c.time ? StringToTime : StringToDate;
    EXPECT_EQ(UInt16(read(c.text, length, nullptr, &used, &d)), c.status);
    if (c.status & fatalDateTime) continue;
    EXPECT_EQ(used, c.used);
    if (c.time) {
      EXPECT_EQ(d.ld.hour * 10000 + d.ld.minute * 100 + d.ld.second, c.a * 10000 + c.b * 100 + c.c);
    } else {
      EXPECT_EQ(d.ld.year, c.a ? c.a : today.wYear);
      EXPECT_EQ(d.ld.month * 100 + d.ld.day, c.b * 100 + c.c);
    }
  }
  LongDateRec d{};
  SInt32 used;
  // Two-digit years in the hundred years around this one.
  EXPECT_EQ(StringToDate("1/2/05", 6, nullptr, &used, &d), longDateFound);
  EXPECT_EQ(d.ld.year, today.wYear / 100 * 100 + 5);
}

std::string P(const unsigned char* s) {
  return std::string(reinterpret_cast<const char*>(s) + 1, s[0]);
}

struct PString {
  explicit PString(const std::string& text) : bytes(1, char(text.size())) { bytes += text; }
  const unsigned char* p() const { return reinterpret_cast<const unsigned char*>(bytes.data()); }
  std::string bytes;
};

// NumToString's text reads back as the number; in text it did not write,
// signs count wherever they stand, other characters are passed over and the
// sum wraps at 32 bits.
TEST_F(IntlTest, NumbersAsText) {
  struct Case {
    SInt32 number;
    const char* text;
    bool written;
  };
  for (Case c : {Case{0, "0", true}, Case{7, "7", true}, Case{-45, "-45", true},
                 Case{1000000, "1000000", true}, Case{0x7FFFFFFF, "2147483647", true},
                 Case{-0x7FFFFFFF - 1, "-2147483648", true}, Case{-12, "1-2", false},
                 Case{5, "-5+", false}, Case{1234, "1,234", false}, Case{0, "", false},
                 Case{0, "abc", false}, Case{1, "4294967297", false}}) {
    Str255 s;
    NumToString(c.number, s);
    if (c.written) {
      EXPECT_EQ(P(s), c.text);
    }
    SInt32 back = -99;
    StringToNum(PString(c.text).p(), &back);
    EXPECT_EQ(back, c.number) << c.text;
  }
}

// Words sort by base letters, then case, then accent; every pair compares
// by its place in that order, and is equal when the words are the same in
// lower case with the accents of Macintosh Roman (octal) off their base
// letters (A-dieresis 200, a-acute 207, a-grave 210, a-dieresis 212,
// c-cedilla 215, e-acute 216, e-grave 217, o-circumflex 231) and AE 256 and
// ae 276 as two letters: equal words share a group.
TEST_F(IntlTest, AccentedWordsSortByBaseLetterThenCaseAndAccent) {
  const std::vector<std::string> sorted = {
      "",    "A",         "Ab",    "\200b",  "ab",      "\207b",   "\210b", "\212b",
      "abc", "\215a",     "Cote",  "cote",   "c\231te", "ea",      "\216a", "\217a",
      "ETE", "\216t\216", "Zebra", "\256on", "\276on",  "\256ons",
  };
  const int group[] = {0, 1, 2, 2, 2, 2, 2, 2, 3, 4, 5, 5, 5, 6, 6, 6, 7, 7, 8, 9, 9, 10};
  unsigned seed = std::random_device{}();
  std::vector<std::string> words = sorted;
  std::shuffle(words.begin(), words.end(), std::mt19937(seed));
  std::stable_sort(words.begin(), words.end(), [](const std::string& a, const std::string& b) {
    return IUCompString(PString(a).p(), PString(b).p()) < 0;
  });
  EXPECT_EQ(words, sorted) << "seed " << seed;
  for (size_t i = 0; i < sorted.size(); ++i)
    for (size_t j = 0; j < sorted.size(); ++j) {
      const std::string &a = sorted[i], &b = sorted[j];
      SCOPED_TRACE(::testing::Message() << i << " " << j);
      ASSERT_EQ(IUMagString(a.data(), b.data(), SInt16(a.size()), SInt16(b.size())), i < j   ? -1
                                                                                     : i > j ? 1
                                                                                             : 0);
      SInt16 unequal = group[i] != group[j];
      ASSERT_EQ(IUEqualString(PString(a).p(), PString(b).p()), unequal);
      ASSERT_EQ(IUMagIDString(a.data(), b.data(), SInt16(a.size()), SInt16(b.size())), unequal);
    }
  // Lengths decide IUMagIDString before the text does; bad lengths are
  // empty strings.
  EXPECT_EQ(IUMagIDString("abc", "ABCD", 3, 3), 0);
  EXPECT_EQ(IUMagIDString("abc", "ABC", 3, 2), 1);
  EXPECT_EQ(IUMagString("a", "a", -4, 0), 0);
}

constexpr LCID kEnglish = 0x0409;  // the names the pictures spell

UInt32 Seconds(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  DateTimeRec d{
      SInt16(year), SInt16(month), SInt16(day), SInt16(hour), SInt16(minute), SInt16(second), 0};
  UInt32 s = 0;
  DateToSeconds(&d, &s);
  return s;
}

// The date (or the time) as GetDateFormatA (GetTimeFormatA) pictures it.
std::string WindowsPictured(UInt32 secs, const char* picture, bool time = false) {
  SYSTEMTIME st = WindowsDate(secs);
  char text[256] = {};
  (time ? GetTimeFormatA : GetDateFormatA)(kEnglish, 0, &st, picture, text, sizeof text);
  return text;
}

std::string DateString(UInt32 secs, DateForm form) {
  Str255 s;
  IUDateString(secs, form, s);
  return P(s);
}

std::string TimeString(UInt32 secs, bool wantSeconds) {
  Str255 s;
  IUTimeString(secs, wantSeconds, s);
  return P(s);
}

// Sets [intl] keys ("key=value|key=value") and starts the International
// Utilities as InitResources does; every key gets its earlier value (or
// none) back at the end.
class IntlFormatsTest : public SessionTest {
 protected:
  // InitResources' answer: the system resource file.
  SInt16 Profile(const std::string& keys) {
    for (size_t at = 0; at < keys.size();) {
      size_t bar = std::min(keys.find('|', at), keys.size()), equals = keys.find('=', at);
      std::string key = keys.substr(at, equals - at);
      char previous[256];
      GetProfileStringA("intl", key.c_str(), "\x01", previous, sizeof previous);
      saved_.emplace_back(key, previous);
      SetProfileKey("intl", key.c_str(), keys.substr(equals + 1, bar - equals - 1).c_str());
      at = bar + 1;
    }
    return InitResources();
  }
  void TearDown() override {
    for (auto it = saved_.rbegin(); it != saved_.rend(); ++it) {
      if (it->second == "\x01")
        RemoveProfileKey("intl", it->first.c_str());
      else
        SetProfileKey("intl", it->first.c_str(), it->second.c_str());
    }
    SessionTest::TearDown();
  }
  const Intl0Rec& Intl0() { return **reinterpret_cast<Intl0Hndl>(GetIntlResource(0)); }
  const Intl1Rec& Intl1() { return **reinterpret_cast<Intl1Hndl>(GetIntlResource(1)); }

 private:
  std::vector<std::pair<std::string, std::string>> saved_;
};

struct FormatRow {
  const char* keys;
  const char *shortPicture, *longPicture;
  const char* abbreviated;        // the long picture with names cut to three letters
  const char* clockPicture;       // the time as GetTimeFormatA pictures it
  const char *morning, *evening;  // the suffixes IUTimeString adds ("" none)
  UInt8 dateOrder, shrtDateFmt;
  bool inRecord;  // the "INTL" 1 record can hold the long picture
};

TEST_F(IntlFormatsTest, ProfileDatePicturesAndTimesMatchWindows) {
  const std::vector<FormatRow> rows = {
      {"sShortDate=dd.MM.yyyy|sLongDate=dddd, d. MMMM yyyy|sDate=.|iTime=1|iTLZero=1|sTime=:|"
       "s1159=AM|s2359=PM",
       "dd.MM.yyyy", "dddd, d. MMMM yyyy", "ddd, d. MMM yyyy", "HH:mm:ss", "", "", dmy,
       century | mntLdingZ | dayLdingZ, true},
      {"sShortDate=yyyy-MM-dd|sLongDate=MMMM dd, yyyy|sDate=-|iTime=0|iTLZero=0|sTime=.|"
       "s1159=am|s2359=pm",
       "yyyy-MM-dd", "MMMM dd, yyyy", "MMM dd, yyyy", "h.mm.ss", "am", "pm", ymd,
       century | mntLdingZ | dayLdingZ, true},
      {"sShortDate=d/M/yy|sLongDate='Day' d 'of' MMMM yyyy|sDate=/|iTime=0|iTLZero=1|sTime=:|"
       "s1159=vorm|s2359=nachm",
       "d/M/yy", "'Day' d 'of' MMMM yyyy", "'Day' d 'of' MMM yyyy", "hh:mm:ss", "vorm", "nach", dmy,
       0, false},
  };
  unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (size_t r = 0; r < rows.size(); ++r) {
    const FormatRow& row = rows[r];
    SCOPED_TRACE(row.shortPicture);
    Profile(row.keys);
    EXPECT_EQ(Intl0().dateOrder, row.dateOrder);
    EXPECT_EQ(Intl0().shrtDateFmt, row.shrtDateFmt);
    for (int step = 0; step < 300; ++step) {
      // Up to 2040, and from 1904, each second of the day equally likely.
      UInt32 secs = random() % 2
                        ? UInt32(random())
                        : Seconds(1904 + random() % 136, 1, 1) + UInt32(random() % (365 * 86400));
      SCOPED_TRACE(::testing::Message()
                   << "seed " << seed << " row " << r << " step " << step << " secs " << secs);
      ASSERT_EQ(DateString(secs, shortDate), WindowsPictured(secs, row.shortPicture));
      ASSERT_EQ(DateString(secs, longDate), WindowsPictured(secs, row.longPicture));
      ASSERT_EQ(DateString(secs, abbrevDate), WindowsPictured(secs, row.abbreviated));
      // The long picture becomes the "INTL" 1 record's order, separators and
      // leading zero: the record alone pictures the date as Windows does.
      LongDateTime longSecs = secs;
      Str255 fromRecord;
      IULDateString(&longSecs, longDate, fromRecord, GetIntlResource(1));
      if (row.inRecord) {
        ASSERT_EQ(P(fromRecord), WindowsPictured(secs, row.longPicture));
      }
      DateTimeRec d;
      SecondsToDate(secs, &d);
      std::string suffix = d.hour < 12 ? row.morning : row.evening;
      std::string clock = WindowsPictured(secs, row.clockPicture, true);
      ASSERT_EQ(TimeString(secs, true), suffix.empty() ? clock : clock + " " + suffix);
    }
  }
}

TEST_F(IntlFormatsTest, ProfileDefaultPicturesAndTheClassicExamples) {
  Profile(
      "sShortDate=dd.MM.yyyy|sLongDate=dddd, MMMM d, yyyy|iTime=0|iTLZero=0|sTime=:|"
      "s1159=AM|s2359=PM");
  UInt32 fifthMarch = Seconds(1999, 3, 5, 0, 5, 9);
  EXPECT_EQ(TimeString(fifthMarch, false), "12:05 AM");
  EXPECT_EQ(TimeString(fifthMarch, true), "12:05:09 AM");
  EXPECT_EQ(TimeString(fifthMarch + 12 * 3600, false), "12:05 PM");
  // Once the application has the "INTL" 1 handle, its suppressDay applies.
  Intl1Hndl intl1 = reinterpret_cast<Intl1Hndl>(GetIntlResource(1));
  struct Suppressed {
    UInt8 bits;
    const char* text;
  };
  for (Suppressed s : {Suppressed{supYear, "Friday, March 5"}, Suppressed{supWeek, "March 5, 1999"},
                       Suppressed{supMonth, "Friday, 5, 1999"}, Suppressed{supDay, "March 1999"},
                       Suppressed{supWeek | supYear, "March 5"}}) {
    (*intl1)->suppressDay = s.bits;
    EXPECT_EQ(DateString(fifthMarch, longDate), s.text) << int(s.bits);
  }
  (*intl1)->suppressDay = 0;
  EXPECT_EQ(reinterpret_cast<Handle>(intl1), GetIntlResource(1)) << "made once and kept";
}

struct CurrencyRow {
  const char* symbol;
  const char* position;
  char places[3];
  bool leads;
};

TEST_F(IntlFormatsTest, ProfileCurrencyAndNumberSettingsFillIntl0) {
  for (const CurrencyRow& row :
       {CurrencyRow{"$", "0", {'$', 0, 0}, true}, CurrencyRow{"$", "1", {'$', 0, 0}, false},
        CurrencyRow{"$", "2", {'$', ' ', 0}, true}, CurrencyRow{"$", "3", {' ', '$', 0}, false},
        CurrencyRow{"kr", "2", {'k', 'r', ' '}, true},
        CurrencyRow{"EUR", "3", {' ', 'E', 'U'}, false},
        CurrencyRow{"EUR", "2", {'E', 'U', 'R'}, true}}) {
    SCOPED_TRACE(std::string(row.symbol) + " " + row.position);
    Profile(std::string("sCurrency=") + row.symbol + "|iCurrency=" + row.position +
            "|iLZero=0|iDigits=2|iNegCurr=4|sThousand=.|sDecimal=,|sList=;");
    const Intl0Rec& r = Intl0();
    EXPECT_EQ(r.currSym1, row.places[0]);
    EXPECT_EQ(r.currSym2, row.places[1]);
    EXPECT_EQ(r.currSym3, row.places[2]);
    EXPECT_EQ((r.currFmt & currSymLead) != 0, row.leads);
    EXPECT_EQ(r.currFmt & (currLeadingZ | currTrailingZ | currNegSym), currTrailingZ);
  }
  EXPECT_EQ(std::string({Intl0().thousSep, Intl0().decimalPt, Intl0().listSep}), ".,;");
  Profile("iLZero=1|iDigits=0|iNegCurr=1");
  EXPECT_EQ(Intl0().currFmt & (currLeadingZ | currTrailingZ | currNegSym),
            currLeadingZ | currNegSym);
}

TEST_F(IntlFormatsTest, ProfileValuesEmptyTooLongOrMalformed) {
  UInt32 secs = Seconds(1999, 3, 5, 0, 5);
  Profile(
      "sShortDate=|sLongDate=dddd, MMMM d, yyyy 'and a long tail of text'|sTime=|sDate=|"
      "iTime=x|iTLZero=|s1159=morning|s2359=");
  // An empty picture leaves the one before; a long one is cut at 31 characters.
  EXPECT_EQ(DateString(secs, shortDate), "3/5/99");
  EXPECT_EQ(DateString(secs, longDate), "Friday, March 5, 1999 and a long ");
  EXPECT_EQ(TimeString(secs, false), "12:05 morn");
  EXPECT_EQ(std::string(Intl0().mornStr), "mor");
  EXPECT_EQ(Intl0().timeSep, ':');
  EXPECT_EQ(Intl0().dateSep, '/');
  // Letters that are no picture's are copied as they stand.
  Profile("sShortDate=Q.d.M.y g|sLongDate='unclosed d");
  EXPECT_EQ(DateString(secs, shortDate), "Q.5.3.99 g");
  EXPECT_EQ(DateString(secs, longDate), "unclosed d");
  EXPECT_EQ(Intl0().dateOrder, dmy);
}

// The "INTL" resources of a system resource file the test writes.
class IntlResourceTest : public IntlFormatsTest {
 protected:
  virtual std::vector<resource_builder::Resource> SystemResources() const = 0;
  void FillRecord(KWESessionRecord& r) override {
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    path_ = std::string(temp) + "kwe_intl_" + std::to_string(GetCurrentProcessId()) + ".rsr";
    resource_builder::Bytes image = resource_builder::BuildResourceImage(SystemResources());
    std::ofstream(path_, std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()), std::streamsize(image.size()));
    r.systemResourceFile = path_.c_str();
  }
  void TearDown() override {
    IntlFormatsTest::TearDown();
    DeleteFileA(path_.c_str());
  }
  std::string path_;
};

// An "INTL" 0 in Macintosh order: comma decimal, metric, version 0x0102.
resource_builder::Bytes Intl0Bytes(size_t size = 32) {
  resource_builder::Bytes b(32, 0);
  const char head[] = ",. F\0\0";
  std::memcpy(b.data(), head, 6);
  b[29] = 0xFF;  // metricSys
  b[30] = 0x01;
  b[31] = 0x02;
  b.resize(size);
  return b;
}

class DamagedIntl1Test : public IntlResourceTest {
  std::vector<resource_builder::Resource> SystemResources() const override {
    return {resource_builder::MakeResource("INTL", 0, Intl0Bytes()),
            resource_builder::MakeResource("INTL", 1, resource_builder::Bytes(20, 0x41))};
  }
};

TEST_F(DamagedIntl1Test, ProfileRecordsComeFromTheSystemFileUnlessDamaged) {
  Profile("");
  SInt16 systemFile = CurResFile();  // the application's own file is missing
  ASSERT_GT(systemFile, 0);
  EXPECT_EQ(Intl0().intl0Vers, 0x0102);
  EXPECT_EQ(Intl0().metricSys, 0xFF);
  // 20 bytes are no "INTL" 1: the record keeps its names.
  EXPECT_EQ(P(Intl1().days[0]), "Sunday");
  EXPECT_EQ(P(Intl1().months[11]), "December");
  EXPECT_EQ(GetHandleSize(GetIntlResource(1)), Size(sizeof(Intl1Rec)));

  // IUSetIntl makes the record the live one; a file that is not open
  // changes nothing.
  Handle changed = GetIntlResource(0);
  ASSERT_EQ(HandToHand(&changed), noErr);
  reinterpret_cast<Intl0Ptr>(*changed)->decimalPt = '!';
  IUSetIntl(-12, 0, changed);
  EXPECT_EQ(ResError(), resFNotFound);
  EXPECT_NE(Intl0().decimalPt, '!');
  SInt16 current = CurResFile();
  IUSetIntl(systemFile, 0, changed);
  EXPECT_EQ(Intl0().decimalPt, '!');
  EXPECT_EQ(CurResFile(), current);
  DisposeHandle(changed);
}

class ShortIntl0Test : public IntlResourceTest {
  std::vector<resource_builder::Resource> SystemResources() const override {
    return {resource_builder::MakeResource("INTL", 0, Intl0Bytes(31))};
  }
};

TEST_F(ShortIntl0Test, ProfileShortIntl0KeepsTheRecord) {
  Profile("");
  EXPECT_EQ(Intl0().intl0Vers, 0);
  EXPECT_EQ(Intl0().metricSys, 0);
  EXPECT_EQ(P(Intl1().days[5]), "Friday");
}

}  // namespace
}  // namespace kwe_test
