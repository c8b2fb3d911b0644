// The run table of styled records, without Win32: a seeded sweep of
// insertions, removals and restyling against a plain per-character model,
// and style scraps read from bytes.
#include "text/textedit/style_runs.h"

#include <gtest/gtest.h>

#include <random>

namespace kwe::textedit {
namespace {

STElement Style(SInt16 font, UInt8 face = 0) {
  STElement s{};
  s.stFont = font;
  s.stFace = face;
  s.stSize = 12;
  s.stHeight = 16;
  s.stAscent = 12;
  return s;
}

RunTable Fresh() {
  RunTable t;
  STElement first = Style(1);
  first.stCount = 1;
  t.styles.push_back(first);
  t.runs.push_back({1, 0});
  return t;
}

// The font of each character, as the runs say.
std::vector<int> Fonts(const RunTable& t, int length) {
  std::vector<int> fonts;
  for (int c = 0; c < length; ++c)
    fonts.push_back(t.styles[size_t(t.runs[size_t(RunAt(t, c))].styleIndex)].stFont);
  return fonts;
}

TEST(StyleRuns, SeededEditsAgreeWithAPerCharacterModel) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    std::mt19937 rng(seed);
    RunTable t = Fresh();
    std::vector<int> model;
    for (int step = 0; step < 80; ++step) {
      int n = int(model.size());
      int a = int(rng() % unsigned(n + 1)), b = int(rng() % unsigned(n + 1));
      if (a > b) std::swap(a, b);
      std::vector<ScrpSTElement> elements;
      int k = int(rng() % 3), length = 1 + int(rng() % 6);
      for (int i = 0; i < k; ++i)
        elements.push_back(ElementOf(Style(SInt16(1 + rng() % 4)), i == 0 ? 0 : int(rng() % 8)));
      std::sort(elements.begin(), elements.end(),
                [](const ScrpSTElement& x, const ScrpSTElement& y) {
                  return x.scrpStartChar < y.scrpStartChar;
                });
      switch (rng() % 3) {
        case 0: {  // insertion at a
          int here = n == 0 ? t.styles[size_t(t.runs.back().styleIndex)].stFont
                            : Fonts(t, n)[size_t(std::min(a, n - 1))];
          InsertRuns(t, a, length, elements, nullptr);
          std::vector<int> added(size_t(length), here);
          for (size_t i = 0; i < elements.size(); ++i) {
            int from = i == 0 ? 0 : int(elements[i].scrpStartChar);
            if (from >= length) break;
            if (i > 0 && elements[i].scrpStartChar <= elements[i - 1].scrpStartChar) continue;
            for (int c = from; c < length; ++c) added[size_t(c)] = elements[i].scrpFont;
          }
          model.insert(model.begin() + a, added.begin(), added.end());
          break;
        }
        case 1:                   // removal of [a, b)
          if (b - a == n) break;  // the text never empties in this sweep
          RemoveRuns(t, a, b - a);
          model.erase(model.begin() + a, model.begin() + b);
          break;
        case 2:  // [a, b) in one new style
          if (a == b) break;
          RemoveRuns(t, a, b - a);
          {
            STElement s = Style(SInt16(1 + rng() % 4));
            InsertRuns(t, a, b - a, {ElementOf(s, 0)}, nullptr);
            for (int c = a; c < b; ++c) model[size_t(c)] = s.stFont;
          }
          break;
      }
      ASSERT_TRUE(RunTableConsistent(t, int(model.size()))) << "seed " << seed << " step " << step;
      ASSERT_EQ(Fonts(t, int(model.size())), model) << "seed " << seed << " step " << step;
      for (size_t i = 1; i + 1 < t.runs.size(); ++i)
        ASSERT_NE(t.runs[i].styleIndex, t.runs[i - 1].styleIndex) << "unmerged, seed " << seed;
      for (size_t i = 0; i < t.styles.size(); ++i)
        for (size_t j = i + 1; j < t.styles.size(); ++j)
          ASSERT_FALSE(SameStyle(t.styles[i], t.styles[j])) << "duplicate entry, seed " << seed;
    }
  }
}

TEST(StyleRuns, ScrapsFromBytes) {
  std::vector<ScrpSTElement> in{ElementOf(Style(3), 0), ElementOf(Style(4, 1), 5)};
  std::vector<UInt8> bytes = WriteStyleScrap(in);
  EXPECT_EQ(bytes.size(), 2u + 2 * 20);
  std::vector<ScrpSTElement> out;
  ASSERT_TRUE(ReadStyleScrap(bytes.data(), bytes.size(), &out));
  ASSERT_EQ(out.size(), 2u);
  EXPECT_EQ(out[1].scrpStartChar, 5);
  EXPECT_EQ(out[1].scrpFont, 4);
  struct Bad {
    const char* why;
    std::vector<UInt8> bytes;
  } bad[] = {
      {"short", {1}},
      {"count past the bytes", std::vector<UInt8>(bytes.begin(), bytes.end() - 1)},
      {"negative count", {0xFF, 0xFF}},
  };
  for (const Bad& b : bad)
    EXPECT_FALSE(ReadStyleScrap(b.bytes.data(), b.bytes.size(), &out)) << b.why;
  std::vector<ScrpSTElement> backwards{ElementOf(Style(3), 6), ElementOf(Style(4), 2)};
  bytes = WriteStyleScrap(backwards);
  EXPECT_FALSE(ReadStyleScrap(bytes.data(), bytes.size(), &out));
  EXPECT_TRUE(out.empty());
  EXPECT_FALSE(ReadStyleScrap(nullptr, 10, &out));
}

}  // namespace
}  // namespace kwe::textedit
