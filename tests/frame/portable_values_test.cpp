// The frame's tables and arithmetic that need no Windows.
#include <gtest/gtest.h>

#include "frame/gestalt_table.h"
#include "frame/mac_time.h"
#include "frame/pascal_compare.h"
#include "frame/system_values.h"
#include "frame/windows_version.h"

namespace kwe {
namespace {

TEST(WindowsVersion, ClassifiesFromGetVersion) {
  WindowsVersion nt = ClassifyWindowsVersion(0x23F00206);  // bit 31 clear, 6.2
  EXPECT_TRUE(nt.windowsNT);
  EXPECT_FALSE(nt.windows95 || nt.win32s);
  EXPECT_EQ(nt.major, 6);
  EXPECT_EQ(nt.versionWord, 0x0206);
  EXPECT_TRUE(nt.NewShell());
  WindowsVersion w95 = ClassifyWindowsVersion(0xC0000004);
  EXPECT_TRUE(w95.windows95);
  EXPECT_TRUE(w95.NewShell());
  WindowsVersion w32s = ClassifyWindowsVersion(0x80000A03);
  EXPECT_TRUE(w32s.win32s);
  EXPECT_FALSE(w32s.NewShell());
  EXPECT_FALSE(ClassifyWindowsVersion(0x00000003).NewShell());  // NT 3.x
}

TEST(WindowsVersion, InitGlobalsResultOnEveryPlatformIsZero) {
  for (uint32_t v : {0x23F00206u, 0xC0000004u, 0x80000A03u})
    EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(v), 0x0421), 0);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x2), 0x0421), 1);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x3), 0x0423), 2);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x3), 0x0420), 3);
}

TEST(MacTime, SecondsCountFrom1904InLocalTime) {
  EXPECT_EQ(MacSecondsFromUnix(0, 0, false), 2082844800u);
  EXPECT_EQ(MacSecondsFromUnix(0, 60, false), 2082844800u - 3600);   // an hour west
  EXPECT_EQ(MacSecondsFromUnix(0, -120, true), 2082844800u + 3 * 3600);
  // 2040-02-06 06:28:15 UTC is the last second a 32-bit count holds.
  EXPECT_EQ(MacSecondsFromUnix(2212122495, 0, false), 0xFFFFFFFFu);
  EXPECT_EQ(MacSecondsFromUnix(2212122496, 0, false), 0u);
}

TEST(GestaltTable, CoprocessorFollowsTheWindowsFlags) {
  int32_t r = 5;
  EXPECT_TRUE(GestaltResponse(0x66707520 /* 'fpu ' */, 0x0421, &r));
  EXPECT_EQ(r, -1);
  EXPECT_TRUE(GestaltResponse(0x66707520, 0x0021, &r));
  EXPECT_EQ(r, 0);
  r = 5;
  EXPECT_FALSE(GestaltResponse(0x61626364 /* 'abcd' */, 0x0421, &r));
  EXPECT_EQ(r, 0);
}

TEST(PascalCompare, NullStringsEqualOnlyEachOther) {
  const unsigned char a[] = "\x01" "a";
  EXPECT_FALSE(EqualPascalStrings(a, nullptr, true));
  EXPECT_TRUE(EqualPascalStrings(nullptr, nullptr, true));
}

TEST(SystemValueTable, KindsAndDefaults) {
  ResetSystemValues();
  EXPECT_EQ(KindOfSystemValue(25), SystemValueKind::Unassigned);
  EXPECT_EQ(KindOfSystemValue(3), SystemValueKind::GetOnly);
  EXPECT_EQ(KindOfSystemValue(46), SystemValueKind::Long);
  EXPECT_EQ(ReadSystemValue(6), 0x40);
  EXPECT_EQ(ReadSystemValue(33), -1);
  EXPECT_EQ(SystemValue(1, 33, 0x7FFF), -1);
  EXPECT_EQ(ReadSystemValue(33), 0x7FFF);
  ResetSystemValues();
  EXPECT_EQ(ReadSystemValue(33), -1);
}

}  // namespace
}  // namespace kwe
