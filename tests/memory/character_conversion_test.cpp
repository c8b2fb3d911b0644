// The Macintosh/ANSI conversion natively: the tables against known
// characters and each other, the expansions, password mode, the switch and
// the measuring hook.
#include "memory/character_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "KWECharacters.h"
#include "frame/system_values.h"

namespace {

using Bytes = std::vector<uint8_t>;
using kwe::text::AnsiToMacCharacter;
using kwe::text::MacToAnsiCharacter;

class CharacterConversion : public ::testing::Test {
 protected:
  void SetUp() override {
    kwe::ResetSystemValues();
    kwe::text::SetPasswordMode(false);
    kwe::text::InstallTextMeasurer(nullptr);
  }
  void TearDown() override { SetUp(); }

  static Bytes MacToAnsi(const Bytes& in, SInt16 flags) {
    Bytes out(in.size() * 4 + 1, 0xCC);
    SInt32 n = KWE_MacToAnsiBuf(in.data(), out.data(), UInt16(in.size()), flags);
    EXPECT_EQ(out[size_t(n)], 0xCC) << "wrote past its result";
    out.resize(size_t(n));
    return out;
  }
  static Bytes AnsiToMac(const Bytes& in, SInt16 count) {
    Bytes out(in.size() + 1, 0xCC);
    out.resize(size_t(KWE_AnsiToMacBuf(in.data(), out.data(), count)));
    return out;
  }
};

TEST_F(CharacterConversion, EveryByteComesBackAndKnownLettersLandRight) {
  Bytes all(256), ansi(256), back(256);
  for (int c = 0; c < 256; ++c) all[size_t(c)] = uint8_t(c);
  // Without expansions one byte gives one byte; AnsiToMac stops at the NUL,
  // so code 0 is left out of its half.
  ASSERT_EQ(KWE_MacToAnsiBuf(all.data(), ansi.data(), 256, kweKeepTypographic), 256);
  ASSERT_EQ(KWE_AnsiToMacBuf(ansi.data() + 1, back.data() + 1, 255), 255);
  back[0] = 0;
  EXPECT_EQ(back, all);
  std::vector<bool> seen(256);
  for (int c = 0; c < 256; ++c) seen[ansi[size_t(c)]] = true;
  EXPECT_EQ(std::count(seen.begin(), seen.end(), true), 256);  // a permutation
  for (int c = 0; c < 0x80; ++c) EXPECT_EQ(ansi[size_t(c)], c);

  EXPECT_EQ(MacToAnsiCharacter(0x8E), 0xE9);  // e acute
  EXPECT_EQ(AnsiToMacCharacter(0xE9), 0x8E);
  EXPECT_EQ(MacToAnsiCharacter(0x80), 0xC4);  // A dieresis
  EXPECT_EQ(MacToAnsiCharacter(0xA7), 0xDF);  // sharp s
  EXPECT_EQ(MacToAnsiCharacter(0xDB), 0xA4);  // currency sign
  EXPECT_EQ(AnsiToMacCharacter(0x80), 0xAD);  // the ANSI euro slot keeps a Mac code
}

TEST_F(CharacterConversion, TypographicCharactersExpandUnlessKept) {
  EXPECT_EQ(MacToAnsi({0x41, 0xC9, 0x42}, 0), (Bytes{0x41, 0x2E, 0x2E, 0x2E, 0x42}));
  EXPECT_EQ(MacToAnsi({0x41, 0xC9, 0x42}, kweKeepTypographic), (Bytes{0x41, 0x85, 0x42}));
  EXPECT_EQ(MacToAnsi({0xAA}, 0), (Bytes{'(', 't', 'm', ')'}));
  EXPECT_EQ(MacToAnsi({0xAA}, kweKeepTypographic), (Bytes{0x99}));
  EXPECT_EQ(MacToAnsi({0xD2, 'x', 0xD3}, 0), (Bytes{'"', 'x', '"'}));
  EXPECT_EQ(MacToAnsi({0xAA, 0xAA, 0xC9}, 0).size(), 11u);
}

TEST_F(CharacterConversion, ReturnsAreDroppedOnRequest) {
  EXPECT_EQ(MacToAnsi({0x61, 0x0D, 0x62}, kweDropReturns), (Bytes{0x61, 0x62}));
  EXPECT_EQ(MacToAnsi({0x61, 0x0D, 0x62}, 0), (Bytes{0x61, 0x0D, 0x62}));
  EXPECT_EQ(MacToAnsi({0x0D, 0x0D}, kweDropReturns), Bytes{});
}

TEST_F(CharacterConversion, PasswordModeShowsStarsForEveryWrittenCharacter) {
  kwe::text::SetPasswordMode(true);
  EXPECT_EQ(MacToAnsi({'a', 0x8E, 0xC9}, 0), (Bytes{'*', '*', '*', '*', '*'}));
  kwe::text::SetPasswordMode(false);
  EXPECT_EQ(MacToAnsi({'a'}, 0), (Bytes{'a'}));
}

TEST_F(CharacterConversion, TheSwitchAndFlag8LeaveBytesUnchanged) {
  const Bytes high{0x8E, 0xA7, 0xFF};
  kwe::SystemValue(1, kwe::kSysValueConvertTexts, 0);
  EXPECT_EQ(MacToAnsi(high, 0), high);
  EXPECT_EQ(AnsiToMac({0xE9, 0x80}, 2), (Bytes{0xE9, 0x80}));
  kwe::text::SetCharacterTranslation(true);
  EXPECT_EQ(kwe::ReadSystemValue(kwe::kSysValueConvertTexts), 1);
  // Flag 8 turns the switch off for the call only.
  EXPECT_EQ(MacToAnsi(high, kweNoTranslation), high);
  EXPECT_TRUE(kwe::text::CharacterTranslationOn());
  EXPECT_EQ(MacToAnsi(high, 0), (Bytes{0xE9, 0xDF, 0xFD}));
}

TEST_F(CharacterConversion, AnsiToMacStopsBeforeANulOrAtTheCount) {
  EXPECT_EQ(AnsiToMac({0x61, 0x62, 0x00, 0x63}, 4), (Bytes{0x61, 0x62}));
  EXPECT_EQ(AnsiToMac({0xE9, 0xE9, 0xE9}, 2), (Bytes{0x8E, 0x8E}));
  EXPECT_EQ(AnsiToMac({0x61}, 0), Bytes{});
  EXPECT_EQ(AnsiToMac({0x61}, -5), Bytes{});
}

std::string g_measured;
int g_begins, g_ends;
int g_switchSeen;

TEST_F(CharacterConversion, MeasuringSeesTheMacintoshCharactersWritten) {
  static const kwe::text::TextMeasurer measurer = {
      [] { ++g_begins; },
      [](UInt8 c) {
        g_measured += char(c);
        g_switchSeen = kwe::ReadSystemValue(kwe::kSysValueConvertTexts);
      },
      [] { ++g_ends; },
  };
  g_measured.clear();
  g_begins = g_ends = 0;
  MacToAnsi({'a', 0xC9}, kweMeasureText);  // nothing installed: nothing extra
  kwe::text::InstallTextMeasurer(&measurer);
  MacToAnsi({'a', 0xC9, 0x8E}, 0);  // not asked to measure
  EXPECT_EQ(g_begins, 0);
  EXPECT_EQ(MacToAnsi({'a', 0xC9, 0x8E}, kweMeasureText | kweNoTranslation),
            (Bytes{'a', '.', '.', '.', 0x8E}));
  EXPECT_EQ(g_measured, "a...\x8E");
  EXPECT_EQ(g_switchSeen, 0);
  EXPECT_EQ(g_begins, 1);
  EXPECT_EQ(g_ends, 1);
}

}  // namespace
