#include "frame/app_path_rule.h"

#include <gtest/gtest.h>

#include <string>

namespace kwe {
namespace {

TEST(AppPathRule, PlainNameReplacesTheModulesFileName) {
  EXPECT_EQ(JoinBesideBase("C:\\APP\\X.EXE", "KWEFONT.FON"), "C:\\APP\\KWEFONT.FON");
  EXPECT_EQ(JoinBesideBase("C:\\APP\\", "A.RSR"), "C:\\APP\\A.RSR");
  EXPECT_EQ(JoinBesideBase("C:X.EXE", "Y.RSR"), "C:Y.RSR");
}

TEST(AppPathRule, DotNameReplacesTheExtension) {
  EXPECT_EQ(JoinBesideBase("C:\\APP\\PROG.EXE", ".RSR"), "C:\\APP\\PROG.RSR");
  // Only the last extension goes; a dotted directory is left alone.
  EXPECT_EQ(JoinBesideBase("C:\\A.B\\PROG.EXE", ".RSR"), "C:\\A.B\\PROG.RSR");
}

TEST(AppPathRule, NullNameGivesTheBaseWhole) {
  EXPECT_EQ(JoinBesideBase("C:\\APP\\X.EXE", nullptr), "C:\\APP\\X.EXE");
}

TEST(AppPathRule, NoRoomForAnEightThreeNameGivesAQuestionMark) {
  std::string directory = "C:\\" + std::string(116, 'D') + "\\";  // 120 characters
  ASSERT_EQ(directory.size(), 120u);
  EXPECT_EQ(JoinBesideBase(directory + "X.EXE", "KWEFONT.FON"), directory + "?");
  std::string roomy = "C:\\" + std::string(110, 'D') + "\\";  // backslash at 113: 113 + 13 < 128
  EXPECT_EQ(JoinBesideBase(roomy + "X.EXE", "KWEFONT.FON"), roomy + "KWEFONT.FON");
}

TEST(AppPathRule, AbsoluteNames) {
  EXPECT_TRUE(IsAbsoluteDosName("D:\\F.RSR"));
  EXPECT_TRUE(IsAbsoluteDosName("\\\\server\\share\\f"));
  EXPECT_FALSE(IsAbsoluteDosName("D:F.RSR"));
  EXPECT_FALSE(IsAbsoluteDosName(".RSR"));
  EXPECT_FALSE(IsAbsoluteDosName(""));
  EXPECT_FALSE(IsAbsoluteDosName(nullptr));
  EXPECT_FALSE(IsAbsoluteDosName("F.RSR"));
}

}  // namespace
}  // namespace kwe
