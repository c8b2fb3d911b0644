// Pascal strings at the edges of a Str255 (empty, full, results that would
// not fit), the Macintosh-Roman character table, UpperString and RelString.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KWEStrings.h"
#include "TextUtils.h"
#include "memory/character_table.h"
#include "memory/string_case.h"

namespace {

using kwe::text::CharacterInfo;

// A Pascal string made from text (no longer than 255 characters).
struct P {
  Str255 s{};
  explicit P(const std::string& text) {
    s[0] = static_cast<unsigned char>(text.size());
    std::memcpy(s + 1, text.data(), text.size());
  }
  std::string Text() const { return std::string(reinterpret_cast<const char*>(s + 1), s[0]); }
  Ptr At(int i) { return reinterpret_cast<Ptr>(s + i); }
};

TEST(PascalStrings, CompareByUnsignedBytesThenByLength) {
  struct {
    const char *a, *b;
    short n;  // PLstrncmp's count; 0 for PLstrcmp
    short expected;
  } const cases[] = {
      {"ab", "abc", 0, -1}, {"abc", "ab", 0, 1},          {"", "", 0, 0},
      {"abd", "abb", 0, 2}, {"\x8E", "e", 0, 0x8E - 'e'}, {"a", "\xFF", 0, 'a' - 0xFF},
      {"ab", "abc", 3, 0},  // an equal prefix is 0 whatever the lengths
      {"abX", "abY", 2, 0}, {"abX", "abY", 3, 'X' - 'Y'}, {"x", "y", -5, 0},
  };
  for (const auto& c : cases) {
    short got = c.n ? PLstrncmp(P(c.a).s, P(c.b).s, c.n) : PLstrcmp(P(c.a).s, P(c.b).s);
    EXPECT_EQ(got, c.expected) << c.a << " " << c.b << " " << c.n;
  }
}

TEST(PascalStrings, CopyAndCatCutAt255) {
  std::string full(255, 'z');
  P dst("old text");
  EXPECT_EQ(PLstrcpy(dst.s, P(full).s), dst.s);
  EXPECT_EQ(dst.Text(), full);
  PLstrncpy(dst.s, P("abcdef").s, 3);
  EXPECT_EQ(dst.Text(), "abc");
  PLstrncpy(dst.s, P("ab").s, 10);
  EXPECT_EQ(dst.Text(), "ab");
  PLstrncpy(dst.s, P("ab").s, -1);
  EXPECT_EQ(dst.Text(), "");

  P cat("abc");
  EXPECT_EQ(PLstrcat(cat.s, P("def").s), cat.s);
  PLstrncat(cat.s, P("ghijk").s, 2);
  PLstrncat(cat.s, P("xyz").s, 0);
  EXPECT_EQ(cat.Text(), "abcdefgh");
  P nearlyFull(std::string(250, 'a'));
  PLstrcat(nearlyFull.s, P("0123456789").s);  // 260 characters do not fit: cut at 255
  EXPECT_EQ(nearlyFull.Text(), std::string(250, 'a') + "01234");
  PLstrcat(nearlyFull.s, P("more").s);  // already full: unchanged
  EXPECT_EQ(nearlyFull.s[0], 255);
  EXPECT_EQ(nearlyFull.s[255], '4');
  P full2(full);
  PLstrncat(full2.s, P(full).s, 255);
  EXPECT_EQ(full2.Text(), full);
  P self("abc");  // appending a string to itself doubles it
  PLstrcat(self.s, self.s);
  EXPECT_EQ(self.Text(), "abcabc");
}

TEST(PascalStrings, Searches) {
  P s("abca");
  EXPECT_EQ(PLstrchr(s.s, 'a'), s.At(1));
  EXPECT_EQ(PLstrrchr(s.s, 'a'), s.At(4));
  EXPECT_EQ(PLstrchr(s.s, 'z'), nullptr);
  EXPECT_EQ(PLstrrchr(s.s, 'z'), nullptr);
  EXPECT_EQ(PLstrchr(P("").s, 0), nullptr) << "the length byte is no character";
  P accented("x\x8E");  // characters above 127 are found whether c comes signed or not
  EXPECT_EQ(PLstrchr(accented.s, 0x8E), accented.At(2));
  EXPECT_EQ(PLstrchr(accented.s, static_cast<signed char>(0x8E)), accented.At(2));

  P text("hello, world");
  EXPECT_EQ(PLstrpbrk(text.s, P(" ,").s), text.At(6));
  EXPECT_EQ(PLstrpbrk(text.s, P("").s), nullptr);
  P bytes("\xFF\x01");
  EXPECT_EQ(PLstrpbrk(bytes.s, P("\x01").s), bytes.At(2));
  EXPECT_EQ(PLstrspn(text.s, P("hel").s), 4);
  EXPECT_EQ(PLstrspn(P("\xFF\xFE\x01").s, P("\xFE\xFF").s), 2) << "all 256 codes take part";
  EXPECT_EQ(PLstrlen(P(std::string(255, 'z')).s), 255);

  // PLstrstr and PLpos read both strings as C strings: a NUL ends the text.
  P two("one two two");
  EXPECT_EQ(PLstrstr(two.s, P("two").s), two.At(5));
  EXPECT_EQ(PLpos(two.s, P("two").s), 5);
  EXPECT_EQ(PLstrstr(two.s, P("three").s), nullptr);
  EXPECT_EQ(PLpos(two.s, P("three").s), 0);
  EXPECT_EQ(PLpos(P("ab").s, P("abc").s), 0);
  EXPECT_EQ(PLpos(two.s, P("").s), 1) << "like strstr, the empty string is found at once";
  EXPECT_EQ(PLstrstr(P(std::string("ab\0cd", 5)).s, P("cd").s), nullptr);
  EXPECT_EQ(PLpos(P("abcd").s, P(std::string("bc\0x", 4)).s), 2);
  EXPECT_EQ(PLpos(P(std::string(254, 'a') + "b").s, P("ab").s), 254);
}

TEST(PascalStrings, ConvertersBetweenPascalAndC) {
  char c[300];
  std::memset(c, 'x', sizeof c);
  KWE_CopyPtoC(P("").s, c);
  EXPECT_STREQ(c, "");
  std::string full(255, 'q');
  KWE_CopyPtoC(P(full).s, c);
  EXPECT_EQ(std::string(c), full);

  Str255 p;
  std::memset(p, 0x55, sizeof p);
  KWE_CopyCtoP("hello", p);
  EXPECT_EQ(std::memcmp(p, "\x05hello", 6), 0);
  KWE_CopyCtoP(nullptr, p);  // lstrlenA counts a null string as empty
  EXPECT_EQ(p[0], 0);
  std::string tooLong(400, 'L');
  KWE_CopyCtoP(tooLong.c_str(), p);  // cut to what a Str255 holds
  EXPECT_EQ(p[0], 255);
  EXPECT_EQ(p[255], 'L');
  Str255 copy;
  KWE_CopyPtoP(P(full).s, copy);
  EXPECT_EQ(std::memcmp(copy, P(full).s, 256), 0);

  char inPlace[16] = "\x03xyz";  // a Pascal string turned into C where it stands
  KWE_CopyPtoC(reinterpret_cast<unsigned char*>(inPlace), inPlace);
  EXPECT_STREQ(inPlace, "xyz");
  KWE_CopyCtoP(inPlace, reinterpret_cast<unsigned char*>(inPlace));
  EXPECT_EQ(std::memcmp(inPlace, "\x03xyz", 4), 0);
}

TEST(StringCase, TableRowsOfTheCharacterSet) {
  struct {
    unsigned char code, upper, lower, base, secondary, classBits;
  } const rows[] = {
      {0x41, 0x41, 0x61, 0x41, 0, 0xA0},  {0x61, 0x41, 0x61, 0x41, 10, 0x20},
      {0x80, 0x80, 0x8A, 0x41, 4, 0xC0},  {0x8D, 0x82, 0x8D, 0x43, 11, 0x40},
      {0xBE, 0xAE, 0xBE, 0xAE, 10, 0x40}, {0xA7, 0xA7, 0xA7, 0xA7, 0, 0x40},
      {0xD8, 0xD9, 0xD8, 0x59, 14, 0x40}, {0x35, 0x35, 0x35, 0x35, 0, 0x10},
      {0x0D, 0x0D, 0x0D, 0x0D, 0, 0x01},  {0x2E, 0x2E, 0x2E, 0x2E, 0, 0x04},
      {0xB5, 0xB5, 0xB5, 0xB5, 0, 0x02},
  };
  for (const auto& r : rows) {
    const auto& e = CharacterInfo(r.code);
    SCOPED_TRACE(::testing::Message() << std::hex << int(r.code));
    EXPECT_EQ(e.upper, r.upper);
    EXPECT_EQ(e.lower, r.lower);
    EXPECT_EQ(e.base, r.base);
    EXPECT_EQ(e.secondary, r.secondary);
    EXPECT_EQ(e.classBits, r.classBits);
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

TEST(StringCase, UpperAndLowerKeepOrDropDiacritics) {
  P s("\x8Et\x8E");  // e acute, t, e acute
  UpperString(s.s, false);
  EXPECT_EQ(s.Text(), "ETE");
  P keep("\x8Et\x8E");
  UpperString(keep.s, true);
  EXPECT_EQ(keep.Text(), "\x83T\x83");
  P mixed("a\xBE\xA7 1-z\xD8");  // ae ligature, sharp s (no capital), y dieresis
  UpperString(mixed.s, true);
  EXPECT_EQ(mixed.Text(), "A\xAE\xA7 1-Z\xD9");
  P full(std::string(255, 'q'));
  UpperString(full.s, false);
  EXPECT_EQ(full.Text(), std::string(255, 'Q')) << "the length byte is not a character";

  unsigned char text[] = {0x83, 'T', 0x80, 0xAE}, kept[4];
  std::memcpy(kept, text, 4);
  kwe::text::LowerText(kept, 4, true);
  EXPECT_EQ(std::string(kept, kept + 4), "\x8Et\x8A\xBE");
  kwe::text::LowerText(text, 4, false);
  EXPECT_EQ(std::string(text, text + 4), "eta\xBE");
}

TEST(StringCase, RelStringOrdersByEachSensitivity) {
  struct {
    const char *a, *b;
    bool caseSens, diacSens;
    short expected;
  } const cases[] = {
      // Neither: base letters, then the shorter first.
      {"abc", "ABC", false, false, 0},
      {"\x8E", "E", false, false, 0},
      {"abc", "abd", false, false, -1},
      {"b", "A", false, false, 1},
      {"ab", "abcd", false, false, -1},
      {"abcd", "AB", false, false, 1},
      // Both: the magnitude order, the primary pass deciding first.
      {"abc", "ABC", true, true, 1},
      {"ABC", "abc", true, true, -1},
      {"\x87", "a", true, true, 1},   // a acute after a
      {"\xE7", "a", true, true, -1},  // A acute (1) before a (10)
      {"Ab", "aa", true, true, 1},
      {"a", "ab", true, true, -1},
      {"abc", "abc", true, true, 0},
      // Diacritics only: the accent's rank decides, case does not; the
      // length difference ends it.
      {"e", "\x83", false, true, -1},
      {"\x8F", "\x83", false, true, 1},
      {"\x8E", "\x83", false, true, 0},
      {"ab", "ABCDE", false, true, -3},
      {"b", "\x83", false, true, -1},  // base letters first
      // Case only: capitals before small letters, accents ignored.
      {"A", "a", true, false, -1},
      {"a", "A", true, false, 1},
      {"\x8E", "e", true, false, 0},
      {"\x83", "e", true, false, -1},
      {"abcd", "a", true, false, 3},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RelString(P(c.a).s, P(c.b).s, c.caseSens, c.diacSens), c.expected)
        << c.a << " " << c.b << " " << c.caseSens << c.diacSens;
  }
}

}  // namespace
