// Numbers as text, and Macintosh Roman words in the International
// Utilities' order.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "Packages.h"
#include "support/test_host.h"

namespace kwe_test {
namespace {

std::string P(const unsigned char* s) {
  return std::string(reinterpret_cast<const char*>(s) + 1, s[0]);
}

struct PString {
  explicit PString(const std::string& text) : bytes(1, char(text.size())) { bytes += text; }
  const unsigned char* p() const { return reinterpret_cast<const unsigned char*>(bytes.data()); }
  std::string bytes;
};

using IntlTextTest = SessionTest;

TEST_F(IntlTextTest, NumbersAsText) {
  struct Case {
    SInt32 number;
    const char* text;
  };
  for (Case c : {Case{0, "0"}, Case{7, "7"}, Case{-45, "-45"}, Case{1000000, "1000000"},
                 Case{0x7FFFFFFF, "2147483647"}, Case{-0x7FFFFFFF - 1, "-2147483648"}}) {
    Str255 s;
    NumToString(c.number, s);
    EXPECT_EQ(P(s), c.text);
    SInt32 back = 1;
    StringToNum(s, &back);
    EXPECT_EQ(back, c.number) << c.text;
  }
  // Signs count wherever they stand; other characters are passed over; the
  // sum wraps at 32 bits.
  struct Reading {
    const char* text;
    SInt32 number;
  };
  for (Reading r : {Reading{"1-2", -12}, Reading{"-5+", 5}, Reading{"1,234", 1234}, Reading{"", 0},
                    Reading{"abc", 0}, Reading{"4294967297", 1}}) {
    SInt32 n = -99;
    StringToNum(PString(r.text).p(), &n);
    EXPECT_EQ(n, r.number) << r.text;
  }
}

// Macintosh Roman (octal): a-acute 207, a-grave 210, a-dieresis 212,
// A-dieresis 200, c-cedilla 215, e-acute 216, e-grave 217, o-circumflex 231,
// AE 256, ae 276.
TEST_F(IntlTextTest, AccentedWordsSortByBaseLetterThenCaseAndAccent) {
  const std::vector<std::string> sorted = {
      "Ab",   "\200b",   "ab", "\207b", "\210b", "\212b", "abc",    "\215a",  "Cote",
      "cote", "c\231te", "ea", "\216a", "\217a", "Zebra", "\256on", "\276on", "\256ons",
  };
  unsigned seed = std::random_device{}();
  std::vector<std::string> words = sorted;
  std::shuffle(words.begin(), words.end(), std::mt19937(seed));
  std::stable_sort(words.begin(), words.end(), [](const std::string& a, const std::string& b) {
    return IUCompString(PString(a).p(), PString(b).p()) < 0;
  });
  EXPECT_EQ(words, sorted) << "seed " << seed;
  for (size_t i = 0; i < sorted.size(); ++i)
    for (size_t j = 0; j < sorted.size(); ++j) {
      int expected = i < j ? -1 : i > j ? 1 : 0;
      ASSERT_EQ(IUMagString(sorted[i].data(), sorted[j].data(), SInt16(sorted[i].size()),
                            SInt16(sorted[j].size())),
                expected)
          << i << " " << j;
    }
}

TEST_F(IntlTextTest, EqualityIgnoresCaseAndAccentsButNotLength) {
  struct Case {
    std::string a, b;
    SInt16 equal;    // IUEqualString
    SInt16 compare;  // IUCompString
  };
  for (const Case& c : {Case{"abc", "ABC", 0, 1}, Case{"ABC", "abc", 0, -1},
                        Case{"\216t\216", "ETE", 0, 1}, Case{"abc", "abd", 1, -1},
                        Case{"ab", "abc", 1, -1}, Case{"", "", 0, 0}, Case{"\xAE", "A", 1, 1}}) {
    SCOPED_TRACE(c.a + " / " + c.b);
    EXPECT_EQ(IUEqualString(PString(c.a).p(), PString(c.b).p()), c.equal);
    EXPECT_EQ(IUCompString(PString(c.a).p(), PString(c.b).p()), c.compare);
    EXPECT_EQ(IUMagIDString(c.a.data(), c.b.data(), SInt16(c.a.size()), SInt16(c.b.size())),
              c.equal);
  }
  // Lengths decide IUMagIDString before the text does; bad lengths and null
  // texts are empty strings.
  EXPECT_EQ(IUMagIDString("abc", "ABCD", 3, 3), 0);
  EXPECT_EQ(IUMagIDString("abc", "ABC", 3, 2), 1);
  EXPECT_EQ(IUMagString(nullptr, "a", 5, 1), -1);
  EXPECT_EQ(IUMagString("a", "a", -4, 0), 0);
  EXPECT_EQ(IUCompString(nullptr, nullptr), 0);
}

}  // namespace
}  // namespace kwe_test
