// The PLstr... family and the Pascal/C converters, at the edges of a Str255:
// empty strings, full 255-character strings and results that would not fit.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KWEStrings.h"

namespace {

// A Pascal string made from text (no longer than 255 characters).
struct P {
  Str255 s{};
  explicit P(const std::string& text) {
    s[0] = static_cast<unsigned char>(text.size());
    std::memcpy(s + 1, text.data(), text.size());
  }
  std::string Text() const { return std::string(reinterpret_cast<const char*>(s + 1), s[0]); }
};

TEST(PascalStrings, CompareByBytesThenByLength) {
  EXPECT_EQ(PLstrcmp(P("ab").s, P("abc").s), -1);
  EXPECT_EQ(PLstrcmp(P("abc").s, P("ab").s), 1);
  EXPECT_EQ(PLstrcmp(P("abc").s, P("abc").s), 0);
  EXPECT_EQ(PLstrcmp(P("").s, P("").s), 0);
  EXPECT_EQ(PLstrcmp(P("abd").s, P("abb").s), 2);          // the byte difference itself
  EXPECT_EQ(PLstrcmp(P("\x8E").s, P("e").s), 0x8E - 'e');  // unsigned bytes
  EXPECT_EQ(PLstrcmp(P("a").s, P("\xFF").s), 'a' - 0xFF);

  EXPECT_EQ(PLstrncmp(P("ab").s, P("abc").s, 3), 0);  // equal prefix: 0 whatever the lengths
  EXPECT_EQ(PLstrncmp(P("abX").s, P("abY").s, 2), 0);
  EXPECT_EQ(PLstrncmp(P("abX").s, P("abY").s, 3), 'X' - 'Y');
  EXPECT_EQ(PLstrncmp(P("x").s, P("y").s, 0), 0);
  EXPECT_EQ(PLstrncmp(P("x").s, P("y").s, -5), 0);
}

TEST(PascalStrings, CopyAndCatCutAt255) {
  std::string full(255, 'z');
  P dst("old text");
  EXPECT_EQ(PLstrcpy(dst.s, P(full).s), dst.s);
  EXPECT_EQ(dst.Text(), full);
  PLstrcpy(dst.s, P("").s);
  EXPECT_EQ(dst.s[0], 0);

  PLstrncpy(dst.s, P("abcdef").s, 3);
  EXPECT_EQ(dst.Text(), "abc");
  PLstrncpy(dst.s, P("ab").s, 10);
  EXPECT_EQ(dst.Text(), "ab");
  PLstrncpy(dst.s, P("ab").s, -1);
  EXPECT_EQ(dst.Text(), "");

  P cat("abc");
  EXPECT_EQ(PLstrcat(cat.s, P("def").s), cat.s);
  EXPECT_EQ(cat.Text(), "abcdef");
  PLstrncat(cat.s, P("ghijk").s, 2);
  EXPECT_EQ(cat.Text(), "abcdefgh");
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

TEST(PascalStrings, CharacterSearches) {
  P s("abca");
  EXPECT_EQ(PLstrchr(s.s, 'a'), reinterpret_cast<Ptr>(s.s + 1));
  EXPECT_EQ(PLstrrchr(s.s, 'a'), reinterpret_cast<Ptr>(s.s + 4));  // the fourth character
  EXPECT_EQ(PLstrchr(s.s, 'z'), nullptr);
  EXPECT_EQ(PLstrrchr(s.s, 'z'), nullptr);
  EXPECT_EQ(PLstrchr(P("").s, 0), nullptr);  // the length byte is no character

  P accented("x\x8E");  // characters above 127 are found whether c comes signed or not
  EXPECT_EQ(PLstrchr(accented.s, 0x8E), reinterpret_cast<Ptr>(accented.s + 2));
  EXPECT_EQ(PLstrchr(accented.s, static_cast<signed char>(0x8E)),
            reinterpret_cast<Ptr>(accented.s + 2));

  P text("hello, world");
  EXPECT_EQ(PLstrpbrk(text.s, P(" ,").s), reinterpret_cast<Ptr>(text.s + 6));
  EXPECT_EQ(PLstrpbrk(text.s, P("").s), nullptr);
  P bytes("\xFF\x01");
  EXPECT_EQ(PLstrpbrk(bytes.s, P("\x01").s), reinterpret_cast<Ptr>(bytes.s + 2));
  EXPECT_EQ(PLstrspn(text.s, P("hel").s), 4);
  EXPECT_EQ(PLstrspn(text.s, P("").s), 0);
  P high("\xFF\xFE\x01");
  EXPECT_EQ(PLstrspn(high.s, P("\xFE\xFF").s), 2);  // all 256 codes take part
  EXPECT_EQ(PLstrlen(P(std::string(255, 'z')).s), 255);
  EXPECT_EQ(PLstrlen(P("").s), 0);
}

TEST(PascalStrings, SubstringSearchReadsBothAsCStrings) {
  P s("one two two");
  EXPECT_EQ(PLstrstr(s.s, P("two").s), reinterpret_cast<Ptr>(s.s + 5));
  EXPECT_EQ(PLpos(s.s, P("two").s), 5);
  EXPECT_EQ(PLstrstr(s.s, P("three").s), nullptr);
  EXPECT_EQ(PLpos(s.s, P("three").s), 0);
  EXPECT_EQ(PLpos(P("ab").s, P("abc").s), 0);
  EXPECT_EQ(PLpos(s.s, P("").s), 1);  // like strstr, the empty string is found at once

  P withNul(std::string("ab\0cd", 5));  // a NUL ends the text
  EXPECT_EQ(PLstrstr(withNul.s, P("cd").s), nullptr);
  EXPECT_EQ(PLpos(P("abcd").s, P(std::string("bc\0x", 4)).s), 2);

  P longest(std::string(254, 'a') + "b");
  EXPECT_EQ(PLpos(longest.s, P("ab").s), 254);
}

TEST(PascalStrings, ConvertersBetweenPascalAndC) {
  char c[300];
  std::memset(c, 'x', sizeof c);
  KWE_CopyPtoC(P("abc").s, c);
  EXPECT_STREQ(c, "abc");
  KWE_CopyPtoC(P("").s, c);
  EXPECT_STREQ(c, "");
  std::string full(255, 'q');
  KWE_CopyPtoC(P(full).s, c);
  EXPECT_EQ(std::string(c), full);

  Str255 p;
  std::memset(p, 0x55, sizeof p);
  KWE_CopyCtoP("hello", p);
  EXPECT_EQ(p[0], 5);
  EXPECT_EQ(std::memcmp(p + 1, "hello", 5), 0);
  KWE_CopyCtoP("", p);
  EXPECT_EQ(p[0], 0);
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

}  // namespace
