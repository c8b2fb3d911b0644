// The DOS path rules of the file naming model, natively.
#include "files/dos_path.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

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

TEST(FilesPortablePath, FullNamesAndVolumes) {
  EXPECT_TRUE(IsFullDosName("c:\\x"));
  EXPECT_TRUE(IsFullDosName("\\\\s"));
  EXPECT_FALSE(IsFullDosName("C:"));
  EXPECT_FALSE(IsFullDosName("C:x"));
  EXPECT_FALSE(IsFullDosName("1:\\x"));
  EXPECT_FALSE(IsFullDosName("x.txt"));

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
}

TEST(FilesPortablePath, TypeExtensionsAreThreeUpperCaseCharacters) {
  EXPECT_EQ(TypeExtension("readme.txt"), "TXT");
  EXPECT_EQ(TypeExtension("page.html"), "HTM");
  EXPECT_EQ(TypeExtension("a.b.c"), "C");
  EXPECT_EQ(TypeExtension("noext"), "");
  EXPECT_EQ(TypeExtension("trailing."), "");
}

TEST(FilesPortablePath, FilterExtensions) {
  const char txt[3] = {'T', 'X', 'T'};
  const char c[3] = {'C', 0, 0};
  EXPECT_EQ(WithFilterExtension("report", txt, true), "report.TXT");
  EXPECT_EQ(WithFilterExtension("report.doc", txt, true), "report.doc");
  EXPECT_EQ(WithFilterExtension("report.", txt, true), "report.TXT");
  EXPECT_EQ(WithFilterExtension("a.b.doc", txt, false), "a.TXT");
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

}  // namespace
