// The Macintosh/ANSI conversion natively: every byte there and back, known
// letters, the expansions, password mode and the switch.
#include "memory/character_conversion.h"

#include <gtest/gtest.h>

#include <vector>

#include "KWECharacters.h"
#include "frame/system_values.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes MacToAnsi(const Bytes& in, SInt16 flags) {
  Bytes out(in.size() * 4 + 1, 0xCC);
  SInt32 n = KWE_MacToAnsiBuf(in.data(), out.data(), UInt16(in.size()), flags);
  EXPECT_EQ(out[size_t(n)], 0xCC) << "wrote past its result";
  out.resize(size_t(n));
  return out;
}

Bytes AnsiToMac(const Bytes& in, SInt16 count) {
  Bytes out(in.size() + 1, 0xCC);
  out.resize(size_t(KWE_AnsiToMacBuf(in.data(), out.data(), count)));
  return out;
}

// Without expansions every byte comes back (AnsiToMac stops at a NUL, so
// code 0 is left out), and known letters land right.
TEST(CharacterConversion, EveryByteComesBackAndKnownLettersLandRight) {
  Bytes all(255);
  for (int c = 1; c < 256; ++c) all[size_t(c - 1)] = uint8_t(c);
  Bytes ansi = MacToAnsi(all, kweKeepTypographic);
  EXPECT_EQ(AnsiToMac(ansi, 255), all);
  // A dieresis, e acute, sharp s, the currency sign; the ANSI euro slot.
  EXPECT_EQ(MacToAnsi({0x80, 0x8E, 0xA7, 0xDB}, 0), (Bytes{0xC4, 0xE9, 0xDF, 0xA4}));
  EXPECT_EQ(AnsiToMac({0x80, 0x61, 0x00, 0x62}, 4), (Bytes{0xAD, 0x61}));
}

// Typographic characters expand and returns drop on request; password mode
// writes stars; flag 8 turns the switch of system value 24 off for one call.
TEST(CharacterConversion, ExpansionsPasswordModeAndTheSwitch) {
  kwe::ResetSystemValues();
  EXPECT_EQ(MacToAnsi({'A', 0xC9, 0xAA, 0xD2}, 0),
            (Bytes{'A', '.', '.', '.', '(', 't', 'm', ')', '"'}));
  EXPECT_EQ(MacToAnsi({0xC9, 0xAA}, kweKeepTypographic), (Bytes{0x85, 0x99}));
  EXPECT_EQ(MacToAnsi({'a', 0x0D, 'b', 0x0D}, kweDropReturns), (Bytes{'a', 'b'}));
  kwe::text::SetPasswordMode(true);
  EXPECT_EQ(MacToAnsi({'a', 0x8E, 0xC9}, 0), (Bytes{'*', '*', '*', '*', '*'}));
  kwe::text::SetPasswordMode(false);
  EXPECT_EQ(MacToAnsi({0x8E, 0xC9}, kweNoTranslation), (Bytes{0x8E, '.', '.', '.'}));
  EXPECT_EQ(MacToAnsi({0x8E}, 0), (Bytes{0xE9})) << "the switch is on again";
  kwe::SystemValue(1, kwe::kSysValueConvertTexts, 0);
  EXPECT_EQ(MacToAnsi({0x8E}, 0), (Bytes{0x8E}));
  EXPECT_EQ(AnsiToMac({0xE9}, 1), (Bytes{0xE9}));
}

}  // namespace
