// The Macintosh-Roman character table, UpperString and RelString.
#include "memory/string_case.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TextUtils.h"
#include "memory/character_table.h"

namespace {

using kwe::text::CharacterInfo;

struct P {
  Str255 s{};
  explicit P(const std::string& text) {
    s[0] = static_cast<unsigned char>(text.size());
    std::memcpy(s + 1, text.data(), text.size());
  }
  std::string Text() const { return std::string(reinterpret_cast<const char*>(s + 1), s[0]); }
};

TEST(StringCase, TableRowsOfTheCharacterSet) {
  struct {
    unsigned char code, upper, lower, base, secondary, classBits;
  } const rows[] = {
      {0x41, 0x41, 0x61, 0x41, 0, 0xA0},  {0x61, 0x41, 0x61, 0x41, 10, 0x20},
      {0x80, 0x80, 0x8A, 0x41, 4, 0xC0},  {0x87, 0xE7, 0x87, 0x41, 11, 0x40},
      {0x8D, 0x82, 0x8D, 0x43, 11, 0x40}, {0xAE, 0xAE, 0xBE, 0xAE, 0, 0xC0},
      {0xBE, 0xAE, 0xBE, 0xAE, 10, 0x40}, {0xA7, 0xA7, 0xA7, 0xA7, 0, 0x40},
      {0xD8, 0xD9, 0xD8, 0x59, 14, 0x40}, {0x35, 0x35, 0x35, 0x35, 0, 0x10},
      {0x00, 0x00, 0x00, 0x00, 0, 0x01},  {0x0D, 0x0D, 0x0D, 0x0D, 0, 0x01},
      {0x20, 0x20, 0x20, 0x20, 0, 0x01},  {0x2E, 0x2E, 0x2E, 0x2E, 0, 0x04},
      {0x81, 0x81, 0x8C, 0x41, 6, 0xC0},  {0x9B, 0xCD, 0x9B, 0x4F, 15, 0x40},
      {0xCF, 0xCE, 0xCF, 0xCE, 10, 0x40}, {0xB5, 0xB5, 0xB5, 0xB5, 0, 0x02},
  };
  for (const auto& r : rows) {
    const auto& e = CharacterInfo(r.code);
    EXPECT_EQ(e.upper, r.upper) << std::hex << int(r.code);
    EXPECT_EQ(e.lower, r.lower) << std::hex << int(r.code);
    EXPECT_EQ(e.base, r.base) << std::hex << int(r.code);
    EXPECT_EQ(e.secondary, r.secondary) << std::hex << int(r.code);
    EXPECT_EQ(e.classBits, r.classBits) << std::hex << int(r.code);
  }
}

// Every letter's case partners point back at each other and share a base
// letter; capitals order below their small letters; the base is a capital.
TEST(StringCase, CasePartnersAreConsistentAcrossTheTable) {
  int accented = 0;
  for (int c = 0; c < 256; ++c) {
    const auto& e = CharacterInfo(static_cast<unsigned char>(c));
    const auto& up = CharacterInfo(e.upper);
    const auto& low = CharacterInfo(e.lower);
    EXPECT_EQ(up.lower, e.lower) << c;
    EXPECT_EQ(low.upper, e.upper) << c;
    EXPECT_EQ(up.base, e.base) << c;
    EXPECT_EQ(CharacterInfo(e.base).base, e.base) << c;
    if (e.upper != e.lower) {
      EXPECT_TRUE(up.classBits & 0x80) << c;
      EXPECT_FALSE(low.classBits & 0x80) << c;
      EXPECT_EQ(low.secondary, up.secondary + 10) << c;
    }
    if ((e.classBits & 0xC0) == 0xC0) ++accented;
  }
  EXPECT_EQ(accented, 29);  // 26 accented capitals and the three ligatures
}

TEST(StringCase, UpperStringKeepsOrDropsDiacritics) {
  P s("\x8Et\x8E");  // e acute, t, e acute
  UpperString(s.s, false);
  EXPECT_EQ(s.Text(), "ETE");
  P keep("\x8Et\x8E");
  UpperString(keep.s, true);
  EXPECT_EQ(keep.Text(), "\x83T\x83");
  P mixed("a\xBE\xA7 1-z\xD8");  // ae ligature, sharp s (no capital), y dieresis
  UpperString(mixed.s, true);
  EXPECT_EQ(mixed.Text(), "A\xAE\xA7 1-Z\xD9");
  P empty("");
  UpperString(empty.s, false);
  EXPECT_EQ(empty.s[0], 0);
  P full(std::string(255, 'q'));
  UpperString(full.s, false);
  EXPECT_EQ(full.Text(), std::string(255, 'Q'));
  EXPECT_EQ(full.s[0], 255);  // the length byte is not a character
}

TEST(StringCase, LowerCompanionMapsThroughTheBaseWithoutDiacritics) {
  unsigned char text[] = {0x83, 'T', 0x80, 0xAE};
  unsigned char keep[sizeof text];
  std::memcpy(keep, text, sizeof text);
  kwe::text::LowerText(keep, sizeof keep, true);
  EXPECT_EQ(std::string(keep, keep + 4), "\x8Et\x8A\xBE");
  kwe::text::LowerText(text, sizeof text, false);
  EXPECT_EQ(std::string(text, text + 4), "eta\xBE");
}

TEST(StringCase, RelStringWithNeitherSensitivityComparesBaseLetters) {
  EXPECT_EQ(RelString(P("abc").s, P("ABC").s, false, false), 0);
  EXPECT_EQ(RelString(P("\x8E").s, P("E").s, false, false), 0);
  EXPECT_EQ(RelString(P("abc").s, P("abd").s, false, false), -1);
  EXPECT_EQ(RelString(P("b").s, P("A").s, false, false), 1);
  EXPECT_EQ(RelString(P("ab").s, P("abcd").s, false, false), -1);  // shorter first
  EXPECT_EQ(RelString(P("abcd").s, P("AB").s, false, false), 1);
  EXPECT_EQ(RelString(P("").s, P("").s, false, false), 0);
}

TEST(StringCase, RelStringWithBothSensitivitiesIsTheMagnitudeOrder) {
  EXPECT_EQ(RelString(P("abc").s, P("ABC").s, true, true), 1);
  EXPECT_EQ(RelString(P("ABC").s, P("abc").s, true, true), -1);
  EXPECT_EQ(RelString(P("\x87").s, P("a").s, true, true), 1);   // a acute after a
  EXPECT_EQ(RelString(P("\xE7").s, P("a").s, true, true), -1);  // A acute (1) before a (10)
  EXPECT_EQ(RelString(P("Ab").s, P("aa").s, true, true), 1);    // primary pass decides first
  EXPECT_EQ(RelString(P("a").s, P("ab").s, true, true), -1);
  EXPECT_EQ(RelString(P("abc").s, P("abc").s, true, true), 0);
}

TEST(StringCase, RelStringWithOneSensitivityEndsWithTheLengthDifference) {
  // Diacritics only: the accent's rank decides, case does not.
  EXPECT_EQ(RelString(P("e").s, P("\x83").s, false, true), -1);    // plain before acute
  EXPECT_EQ(RelString(P("\x8F").s, P("\x83").s, false, true), 1);  // grave after acute
  EXPECT_EQ(RelString(P("\x8E").s, P("\x83").s, false, true), 0);  // case ignored
  EXPECT_EQ(RelString(P("ab").s, P("ABCDE").s, false, true), -3);
  EXPECT_EQ(RelString(P("b").s, P("\x83").s, false, true), -1);  // base letters first

  // Case only: capitals before small letters, accents ignored.
  EXPECT_EQ(RelString(P("A").s, P("a").s, true, false), -1);
  EXPECT_EQ(RelString(P("a").s, P("A").s, true, false), 1);
  EXPECT_EQ(RelString(P("\x8E").s, P("e").s, true, false), 0);
  EXPECT_EQ(RelString(P("\x83").s, P("e").s, true, false), -1);
  EXPECT_EQ(RelString(P("abcd").s, P("a").s, true, false), 3);
}

}  // namespace
