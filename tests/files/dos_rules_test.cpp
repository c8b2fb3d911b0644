// The DOS path rules of the file naming model and Macintosh seconds through
// DOS dates, natively.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "files/dos_dates.h"
#include "files/dos_path.h"

namespace {

using namespace kwe::files;

TEST(FilesPortablePath, SplitsAtTheLastBackslashOrColon) {
  struct Case {
    const char* path;
    const char* directory;
    const char* name;
  } cases[] = {
      {"C:\\DIR\\F.TXT", "C:\\DIR\\", "F.TXT"},
      {"C:F.TXT", "C:", "F.TXT"},
      {"F.TXT", "", "F.TXT"},
      {"C:\\DIR\\", "C:\\DIR\\", ""},
      {"\\\\S\\SH\\F", "\\\\S\\SH\\", "F"},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    SplitPath s = SplitAtLastSeparator(c.path);
    EXPECT_EQ(s.directory, c.directory) << c.path;
    EXPECT_EQ(s.name, c.name) << c.path;
  }
}

TEST(FilesPortablePath, DoubledBackslashesReduceExceptAShareOpening) {
  EXPECT_EQ(ReduceDoubledBackslashes("C:\\\\DIR\\\\\\F"), "C:\\DIR\\F");
  EXPECT_EQ(ReduceDoubledBackslashes("\\\\SERVER\\\\SHARE\\F"), "\\\\SERVER\\SHARE\\F");
  EXPECT_EQ(ReduceDoubledBackslashes("\\\\\\SERVER"), "\\\\SERVER");
  EXPECT_EQ(ReduceDoubledBackslashes("C:\\"), "C:\\");
}

TEST(FilesPortablePath, FullNamesVolumesAndTypeExtensions) {
  for (const char* full : {"c:\\x", "\\\\s"}) EXPECT_TRUE(IsFullDosName(full)) << full;
  for (const char* part : {"C:", "C:x", "1:\\x", "x.txt"})
    EXPECT_FALSE(IsFullDosName(part)) << part;
  PathVolume d = VolumeOfDosPath("d:\\work");
  EXPECT_EQ(d.kind, PathVolume::kDrive);
  EXPECT_EQ(d.drive, 3);
  EXPECT_EQ(d.root, "D:\\");
  PathVolume s = VolumeOfDosPath("\\\\Server\\Share\\dir\\f");
  EXPECT_EQ(s.kind, PathVolume::kShare);
  EXPECT_EQ(s.share, "\\\\Server\\Share");
  EXPECT_EQ(s.root, "\\\\Server\\Share\\");
  for (const char* none : {"", "dir\\f", "\\\\", "\\\\server", "\\\\server\\", "\\\\\\x\\y"})
    EXPECT_EQ(VolumeOfDosPath(none).kind, PathVolume::kNone) << none;
  EXPECT_TRUE(IsVolumeRoot("c:\\"));
  EXPECT_TRUE(IsVolumeRoot("\\\\server\\SHARE\\"));
  EXPECT_FALSE(IsVolumeRoot("C:\\DIR\\"));
  EXPECT_FALSE(IsVolumeRoot("\\\\server\\share\\dir\\"));
  EXPECT_EQ(CanonicalDirectory("c:\\dir"), "C:\\dir\\");
  EXPECT_EQ(CanonicalDirectory("c:"), "C:\\");

  // Three upper-case characters at most; the filter's own are added as given.
  EXPECT_EQ(TypeExtension("page.html"), "HTM");
  EXPECT_EQ(TypeExtension("a.b.c"), "C");
  EXPECT_EQ(TypeExtension("trailing."), "");
  const char c[3] = {'C', 0, 0};
  EXPECT_EQ(WithFilterExtension("main.cpp", c, false), "main.C");
}

TEST(FilesPortablePath, ParsableNames) {
  for (const char* good : {"C:\\DIR\\F.TXT", "F", "\\\\S\\SH\\F", "C:F"})
    EXPECT_TRUE(IsParsableDosPath(good)) << good;
  for (const char* bad : {"", "C:\\DIR\\", "C:\\A?B", "C:\\A*", "C:\\A<B", "C:\\A|B", "C:\\A:B",
                          "C:\\A\"B", "C:\\A\tB"})
    EXPECT_FALSE(IsParsableDosPath(bad)) << bad;
  EXPECT_FALSE(IsParsableDosPath("C:\\" + std::string(300, 'x')));
}

TEST(FilesPortablePath, ExchangeNamesStepThroughTheAlphabet) {
  size_t position = 0;
  std::string name = ExchangeTemporaryName("C:\\DIR\\A.TXT", &position);
  EXPECT_EQ(name, "C:\\DIR\\A.aaa");
  size_t other = 0;
  EXPECT_EQ(ExchangeTemporaryName("C:\\DIR.X\\NOEXT", &other), "C:\\DIR.X\\NOEXT.aaa");
  EXPECT_EQ(other, 17u);
  ASSERT_TRUE(NextExchangeName(name, position));
  EXPECT_EQ(name, "C:\\DIR\\A.aab");
  // Each letter from the last to the first runs through b..z and '{', then
  // rests at 'a' while the one before it runs; the steps end at the dot.
  std::vector<std::string> names{name};
  while (NextExchangeName(name, position)) names.push_back(name);
  ASSERT_EQ(names.size(), 78u);
  EXPECT_EQ(names[25], "C:\\DIR\\A.aa{");
  EXPECT_EQ(names[26], "C:\\DIR\\A.aba");
  EXPECT_EQ(names[52], "C:\\DIR\\A.baa");
  EXPECT_EQ(names[77], "C:\\DIR\\A.{aa");
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
}

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
