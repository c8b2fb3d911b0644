#include <gtest/gtest.h>
#include <windows.h>

#include "OSUtils.h"

namespace {

enum { kGet = 0, kSet = 1 };

TEST(SystemValues, SetAnswersThePreviousValueAndGetTheCurrent) {
  EXPECT_EQ(KWE_SystemValue(kSet, 15, 4096), 0x2000);  // the small-block limit
  EXPECT_EQ(KWE_SystemValue(kGet, 15, 0), 4096);
  EXPECT_EQ(KWE_SystemValue(2, 15, 77), 4096);  // any other operation only reads
  EXPECT_EQ(KWE_SystemValue(kGet, 36, 0), 0x3F3F3F3F);  // '????'
  EXPECT_EQ(KWE_SystemValue(kGet, 8, 0), -1);
}

TEST(SystemValues, IndexesOutsideTheTableAndUnassignedOnesAnswerZero) {
  for (SInt16 index : {0, -1, 47, 1000, 25, 40, 45}) {
    EXPECT_EQ(KWE_SystemValue(kSet, index, 1234), 0) << index;
    EXPECT_EQ(KWE_SystemValue(kGet, index, 0), 0) << index;
  }
}

TEST(SystemValues, ScrollBarSizesFollowTheSystemAndCannotBeSet) {
  EXPECT_EQ(KWE_SystemValue(kGet, 3, 0), GetSystemMetrics(SM_CXVSCROLL));
  EXPECT_EQ(KWE_SystemValue(kGet, 4, 0), GetSystemMetrics(SM_CYHSCROLL));
  KWE_SystemValue(kSet, 3, 99);
  EXPECT_EQ(KWE_SystemValue(kGet, 3, 0), GetSystemMetrics(SM_CXVSCROLL));
  KWE_SystemValue(kSet, 21, 99);
  EXPECT_EQ(KWE_SystemValue(kGet, 21, 0), 0);
}

TEST(SystemValues, SixteenBitSettingsKeepTheLowWord) {
  KWE_SystemValue(kSet, 5, 0x18000);
  EXPECT_EQ(KWE_SystemValue(kGet, 5, 0), -32768);  // sign-extended
  KWE_SystemValue(kSet, 1, 0x12345);
  EXPECT_EQ(KWE_SystemValue(kGet, 1, 0), 0x2345);
  KWE_SystemValue(kSet, 32, -1);
  EXPECT_EQ(KWE_SystemValue(kGet, 32, 0), 0xFFFF);  // kept as value & 0xFFFF
  KWE_SystemValue(kSet, 39, 0x12345678);
  EXPECT_EQ(KWE_SystemValue(kGet, 39, 0), 0x12345678);
}

}  // namespace
