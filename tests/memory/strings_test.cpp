// Pascal strings at the edges of a Str255 (empty, full, results that would
// not fit), UpperString and RelString, and picking strings out of 'STR#'
// data and patterns out of 'PAT#' data as the Resource Manager hands them
// over (count in the processor's order), lists whose counts and lengths lie
// included.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "KWEStrings.h"
#include "TextUtils.h"
#include "memory/indexed_lists.h"

namespace {

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

TEST(PascalStrings, EditsAndSearchesAtTheEdgesOfAStr255) {
  EXPECT_EQ(PLstrcmp(P("a").s, P("\xFF").s), 'a' - 0xFF) << "unsigned bytes";
  P cat(std::string(250, 'a'));
  PLstrncat(cat.s, P("ghijk").s, 2);
  PLstrcat(cat.s, P("0123456789").s);  // cut at 255; then full, unchanged
  PLstrcat(cat.s, P("more").s);
  EXPECT_EQ(cat.Text(), std::string(250, 'a') + "gh012");
  P self("abc");
  PLstrcat(self.s, self.s);
  EXPECT_EQ(self.Text(), "abcabc") << "appending a string to itself doubles it";
  KWE_CopyCtoP(std::string(400, 'L').c_str(), cat.s);
  EXPECT_EQ(cat.Text(), std::string(255, 'L'));
  char inPlace[16] = "\x03xyz";  // turned into C where it stands, and back
  KWE_CopyPtoC(reinterpret_cast<unsigned char*>(inPlace), inPlace);
  EXPECT_STREQ(inPlace, "xyz");

  P s("abca\x8E");
  EXPECT_EQ(PLstrrchr(s.s, 'a'), s.At(4));
  EXPECT_EQ(PLstrchr(s.s, static_cast<signed char>(0x8E)), s.At(5)) << "found signed or not";
  EXPECT_EQ(PLstrchr(P("").s, 0), nullptr) << "the length byte is no character";
  // PLstrstr and PLpos read both strings as C strings: a NUL ends the text.
  EXPECT_EQ(PLpos(P("one two").s, P("").s), 1) << "like strstr, the empty string is found at once";
  EXPECT_EQ(PLstrstr(P(std::string("ab\0cd", 5)).s, P("cd").s), nullptr);
  EXPECT_EQ(PLpos(P(std::string(254, 'a') + "b").s, P("ab").s), 254);
}

TEST(StringCase, UpperStringAndRelStringByEachSensitivity) {
  P s("\x8Et\x8E"), keep("a\xBE\xA7 1-z\xD8\x8E");  // é t é; æ, ß (no capital), ÿ, é
  UpperString(s.s, false);
  EXPECT_EQ(s.Text(), "ETE");
  UpperString(keep.s, true);
  EXPECT_EQ(keep.Text(), "A\xAE\xA7 1-Z\xD9\x83");
  struct {
    const char *a, *b;
    bool caseSens, diacSens;
    short expected;
  } const cases[] = {
      {"\x8E", "E", false, false, 0},  // neither: base letters, then the shorter first
      {"abcd", "AB", false, false, 1},
      {"abc", "ABC", true, true, 1},  // both: the primary pass decides first
      {"\xE7", "a", true, true, -1},  // A acute (1) before a (10)
      {"Ab", "aa", true, true, 1},
      {"e", "\x83", false, true, -1},  // diacritics only: the accent's rank decides
      {"ab", "ABCDE", false, true, -3},
      {"b", "\x83", false, true, -1},  // base letters first
      {"A", "a", true, false, -1},     // case only: capitals first, accents ignored
      {"\x8E", "e", true, false, 0},
      {"abcd", "a", true, false, 3},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RelString(P(c.a).s, P(c.b).s, c.caseSens, c.diacSens), c.expected)
        << c.a << " " << c.b << " " << c.caseSens << c.diacSens;
  }
}

using kwe::utilities::CopyIndexedPattern;
using kwe::utilities::PatternLookup;

std::string List(SInt16 count, const std::string& elements) {
  return std::string(reinterpret_cast<const char*>(&count), 2) + elements;
}

// The string at index (from an exact-size copy, for AddressSanitizer); "-"
// when there is none, the result then untouched.
std::string Get(const std::string& list, SInt16 index) {
  Str255 s = {1, '-'};
  std::vector<unsigned char> data(list.begin(), list.end());
  kwe::utilities::CopyIndexedString(data.data(), data.size(), index, s);
  return std::string(reinterpret_cast<const char*>(s + 1), s[0]);
}

TEST(IndexedLists, StringsAndPatternsAreCountedFromOneWithinTheirData) {
  std::string longest(255, 'L'), list = List(3, std::string("\5first\0\xFF", 8) + longest);
  const std::pair<SInt16, std::string> cases[] = {{1, "first"}, {2, ""},  {3, longest},
                                                  {0, "-"},     {4, "-"}, {-1, "-"}};
  for (const auto& [index, text] : cases) EXPECT_EQ(Get(list, index), text) << index;
  for (size_t size = 0; size < list.size(); ++size) EXPECT_EQ(Get(list.substr(0, size), 3), "-");
  EXPECT_EQ(Get(List(9, "\3one"), 2), "-") << "a count larger than the data";
  EXPECT_EQ(Get(List(-3, "\1a"), 1), "-");

  std::string patterns =
      List(2, "\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1A\x1B\x1C\x1D\x1E\x1F");
  auto* data = reinterpret_cast<const unsigned char*>(patterns.data());
  Pattern p{{1, 2, 3, 4, 5, 6, 7, 8}};
  EXPECT_EQ(CopyIndexedPattern(data, patterns.size(), 0, &p), PatternLookup::kBeforeFirst);
  EXPECT_EQ(CopyIndexedPattern(data, patterns.size() - 1, 2, &p), PatternLookup::kBeyondLast);
  EXPECT_EQ(p.pat[0], 1) << "untouched";
  EXPECT_EQ(CopyIndexedPattern(data, patterns.size(), 2, &p), PatternLookup::kFound);
  EXPECT_EQ(p.pat[0], 0x18);
  EXPECT_EQ(p.pat[7], 0x1F);
}

}  // namespace
