// Dates and times as WIN.INI's [intl] settings say, against what Windows
// itself makes of the same pictures (GetDateFormatA, GetTimeFormatA); the
// "INTL" records from WIN.INI and from the system resource file. Cases that
// set WIN.INI keys carry "Profile" in their names and run one at a time.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "Memory.h"
#include "Packages.h"
#include "Resources.h"
#include "resource_builder/resource_image.h"
#include "support/temp_tree.h"
#include "support/test_host.h"

namespace kwe_test {
namespace {

constexpr LCID kEnglish = 0x0409;  // the names the pictures spell

std::string P(const unsigned char* s) {
  return std::string(reinterpret_cast<const char*>(s) + 1, s[0]);
}

UInt32 Seconds(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  DateTimeRec d{
      SInt16(year), SInt16(month), SInt16(day), SInt16(hour), SInt16(minute), SInt16(second), 0};
  UInt32 s = 0;
  DateToSeconds(&d, &s);
  return s;
}

SYSTEMTIME WindowsTime(UInt32 secs) {
  DateTimeRec d;
  SecondsToDate(secs, &d);
  SYSTEMTIME st{};
  st.wYear = WORD(d.year);
  st.wMonth = WORD(d.month);
  st.wDay = WORD(d.day);
  st.wDayOfWeek = WORD(d.dayOfWeek - 1);
  st.wHour = WORD(d.hour);
  st.wMinute = WORD(d.minute);
  st.wSecond = WORD(d.second);
  return st;
}

std::string WindowsDate(UInt32 secs, const char* picture) {
  SYSTEMTIME st = WindowsTime(secs);
  char text[256] = {};
  GetDateFormatA(kEnglish, 0, &st, picture, text, sizeof text);
  return text;
}

std::string WindowsClock(UInt32 secs, const char* picture) {
  SYSTEMTIME st = WindowsTime(secs);
  char text[256] = {};
  GetTimeFormatA(kEnglish, 0, &st, picture, text, sizeof text);
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
};

TEST_F(IntlFormatsTest, ProfileDatePicturesAndTimesMatchWindows) {
  const std::vector<FormatRow> rows = {
      {"sShortDate=dd.MM.yyyy|sLongDate=dddd, d. MMMM yyyy|sDate=.|iTime=1|iTLZero=1|sTime=:|"
       "s1159=AM|s2359=PM",
       "dd.MM.yyyy", "dddd, d. MMMM yyyy", "ddd, d. MMM yyyy", "HH:mm:ss", "", "", dmy,
       century | mntLdingZ | dayLdingZ},
      {"sShortDate=yyyy-MM-dd|sLongDate=MMMM d, yyyy|sDate=-|iTime=0|iTLZero=0|sTime=.|"
       "s1159=am|s2359=pm",
       "yyyy-MM-dd", "MMMM d, yyyy", "MMM d, yyyy", "h.mm.ss", "am", "pm", ymd,
       century | mntLdingZ | dayLdingZ},
      {"sShortDate=d/M/yy|sLongDate='Day' d 'of' MMMM yyyy|sDate=/|iTime=0|iTLZero=1|sTime=:|"
       "s1159=vorm|s2359=nachm",
       "d/M/yy", "'Day' d 'of' MMMM yyyy", "'Day' d 'of' MMM yyyy", "hh:mm:ss", "vorm", "nach", dmy,
       0},
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
      ASSERT_EQ(DateString(secs, shortDate), WindowsDate(secs, row.shortPicture));
      ASSERT_EQ(DateString(secs, longDate), WindowsDate(secs, row.longPicture));
      ASSERT_EQ(DateString(secs, abbrevDate), WindowsDate(secs, row.abbreviated));
      DateTimeRec d;
      SecondsToDate(secs, &d);
      std::string suffix = d.hour < 12 ? row.morning : row.evening;
      std::string clock = WindowsClock(secs, row.clockPicture);
      ASSERT_EQ(TimeString(secs, true), suffix.empty() ? clock : clock + " " + suffix);
    }
  }
}

TEST_F(IntlFormatsTest, ProfileDefaultPicturesAndTheClassicExamples) {
  Profile(
      "sShortDate=dd.MM.yyyy|sLongDate=dddd, MMMM d, yyyy|iTime=0|iTLZero=0|sTime=:|"
      "s1159=AM|s2359=PM");
  UInt32 fifthMarch = Seconds(1999, 3, 5, 0, 5, 9);
  EXPECT_EQ(DateString(fifthMarch, shortDate), "05.03.1999");
  EXPECT_EQ(DateString(fifthMarch, abbrevDate), "Fri, Mar 5, 1999");
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

// The long picture becomes the "INTL" 1 record's order, separators and
// leading zero: the record alone pictures dates as Windows does.
TEST_F(IntlFormatsTest, ProfileLongPicturesIntoTheIntl1Record) {
  for (const char* picture : {"dddd, d. MMMM yyyy", "MMMM dd, yyyy", "d MMMM yyyy"}) {
    SCOPED_TRACE(picture);
    Profile(std::string("sLongDate=") + picture);
    for (int day : {5, 17}) {
      LongDateTime secs = Seconds(1999, 3, day);
      Str255 fromRecord;
      IULDateString(&secs, longDate, fromRecord, GetIntlResource(1));
      EXPECT_EQ(P(fromRecord), WindowsDate(UInt32(secs), picture));
    }
  }
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
    EXPECT_EQ(r.thousSep, '.');
    EXPECT_EQ(r.decimalPt, ',');
    EXPECT_EQ(r.listSep, ';');
  }
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
    directory_ = std::string(temp) + "kwe_intl_" + std::to_string(GetCurrentProcessId()) + "\\";
    CreateDirectoryA(directory_.c_str(), nullptr);
    path_ = directory_ + "SYSTEM.RSR";
    resource_builder::Bytes image = resource_builder::BuildResourceImage(SystemResources());
    std::ofstream(path_, std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()), std::streamsize(image.size()));
    r.systemResourceFile = path_.c_str();
  }
  void TearDown() override {
    IntlFormatsTest::TearDown();
    RemoveTree(directory_);
  }
  std::string directory_, path_;
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
