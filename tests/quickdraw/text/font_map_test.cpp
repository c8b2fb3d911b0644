// The font map's text form: lines read, lines refused, and the map written
// back.
#include "quickdraw/text/font_map.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

namespace {

using namespace kwe::quickdraw;

FontMap Parse(const std::string& text) { return ParseFontMap(text.data(), text.size()); }

std::string Faces(const FontMapEntry& e) {
  std::string s;
  for (int i = 0; i < e.faceCount; ++i) s += (i ? "|" : "") + std::string(e.faces[i]);
  return s;
}

// The built-in map (written out when a program has none) reads back the
// same, entry by entry.
TEST(FontMap, BuiltInMapReadsBackTheSame) {
  FontMap back = Parse(WriteFontMap(BuiltInFontMap()));
  ASSERT_EQ(back.entries.size(), BuiltInFontMap().entries.size());
  for (size_t i = 0; i < back.entries.size(); ++i) {
    const FontMapEntry &a = back.entries[i], &b = BuiltInFontMap().entries[i];
    EXPECT_EQ(std::make_tuple(a.number, std::string(a.macName), Faces(a), a.family),
              std::make_tuple(b.number, std::string(b.macName), Faces(b), b.family));
  }
  EXPECT_EQ(MapEntryOfName(back, "TIMES", 5)->number, 20);
  EXPECT_EQ(MapEntryOfName(back, "time", 4), nullptr);
  EXPECT_STREQ(MapEntryOfNumber(back, 11)->macName, "cairo");
  EXPECT_EQ(MapEntryOfNumber(back, 10), nullptr);
}

TEST(FontMap, LinesGiveNumbersFacesAndFamilies) {
  FontMap map = Parse(
      "\r\n   \t\x01geneva(3):Arial,Times New Roman(Swiss)\n"
      "london():Times New Roman(Roman) and the rest of the line\r"
      "big( 300 ):  A , ,B,C,D (decorative)\r\n"
      "odd(-2):" +
      std::string(40, 'x') +
      ",Kept(NoSuchWord)\r\n"
      "last(129):Z(dontcare)");
  // Blanks trimmed, empty faces skipped, three at most; a face name too
  // long for Windows dropped; an unknown family word is Modern.
  const std::tuple<std::string, int, std::string, int> expected[] = {
      {"geneva", 3, "Arial|Times New Roman", 0x20},
      {"london", -1, "Times New Roman", 0x10},
      {"big", 300, "A|B|C", 0x50},
      {"odd", -2, "Kept", 0x30},
      {"last", 129, "Z", 0x00}};
  ASSERT_EQ(map.entries.size(), 5u);
  for (size_t i = 0; i < 5; ++i) {
    const FontMapEntry& e = map.entries[i];
    EXPECT_EQ(std::make_tuple(std::string(e.macName), int(e.number), Faces(e), int(e.family)),
              expected[i]);
  }
  EXPECT_EQ(map.nextFreeNumber, 301);
  EXPECT_EQ(WriteFontMap(Parse("london():Times New Roman(Roman)")),
            "london():Times New Roman(Roman)\r\n");
}

TEST(FontMap, AMalformedLineEndsTheMapWithTheEntriesReadSoFar) {
  const char* good = "a(1):A(Swiss)\r\n";
  for (const char* bad : {"b2):B(Swiss)", "b(2:B(Swiss)", "b(2)B(Swiss)", "b(2):B Swiss)",
                          "b(2):B(Swiss", "b(x):B(Swiss)", "b(99999):B(Swiss)", "b(-):B(Swiss)"}) {
    FontMap map = Parse(std::string(good) + bad + "\r\nc(3):C(Roman)\r\n");
    ASSERT_EQ(map.entries.size(), 1u) << bad;
    EXPECT_EQ(map.entries[0].number, 1) << bad;
  }
  EXPECT_TRUE(Parse("").entries.empty());
  EXPECT_TRUE(ParseFontMap(nullptr, 10).entries.empty());
  // The delimiters must lie on the line itself.
  EXPECT_TRUE(Parse("a(1)\r\n:A(Swiss)").entries.empty());
}

TEST(FontMap, FiveHundredEntriesAtMostAndLongNamesCut) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += "f(" + std::to_string(i) + "):F(Swiss)\n";
  FontMap map = Parse(text);
  EXPECT_EQ(map.entries.size(), 500u);
  EXPECT_EQ(map.nextFreeNumber, 500);
  FontMap longName = Parse(std::string(300, 'n') + "(5):F(Swiss)");
  ASSERT_EQ(longName.entries.size(), 1u);
  EXPECT_EQ(std::strlen(longName.entries[0].macName), kMacFontNameCapacity - 1);
}

}  // namespace
