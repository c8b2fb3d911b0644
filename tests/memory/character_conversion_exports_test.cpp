// The character converters through the DLL: the switch is system value 24
// of KWE_SystemValue, and the File Manager's names go through the tables.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "KWECharacters.h"
#include "OSUtils.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(CharacterConversionExports, SystemValue24SwitchesBothDirections) {
  const Bytes mac{'C', 0x8E, 0x87, 0xC9};
  Bytes out(16);
  ASSERT_EQ(KWE_MacToAnsiBuf(mac.data(), out.data(), 4, 0), 6);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 6), (Bytes{'C', 0xE9, 0xE1, '.', '.', '.'}));
  Bytes back(16);
  ASSERT_EQ(KWE_AnsiToMacBuf(out.data(), back.data(), 3), 3);
  EXPECT_EQ(Bytes(back.begin(), back.begin() + 3), (Bytes{'C', 0x8E, 0x87}));

  EXPECT_EQ(KWE_SystemValue(1, 24, 0), 1);
  ASSERT_EQ(KWE_MacToAnsiBuf(mac.data(), out.data(), 3, 0), 3);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 3), (Bytes{'C', 0x8E, 0x87}));
  KWE_SystemValue(1, 24, 1);
}

}  // namespace
