// Styled records through the DLL: runs split and merge as styles change,
// every character reports the style a plain model gives it, and styles
// travel with copied text through the style scrap.
#include <gtest/gtest.h>

#include <random>

#include "text/textedit/textedit_fixture.h"

namespace kwe_test {
namespace {

struct Attrs {
  SInt16 font, size;
  UInt8 face;
  UInt16 red;
  bool operator==(const Attrs& o) const {
    return font == o.font && size == o.size && face == o.face && red == o.red;
  }
};

std::ostream& operator<<(std::ostream& out, const Attrs& a) {
  return out << "{font " << a.font << " size " << a.size << " face " << int(a.face) << " red "
             << a.red << "}";
}

class Styled : public TextEditTest {
 protected:
  Attrs At(TEHandle te, int offset) {
    TextStyle s{};
    TEGetStyle(SInt16(offset), &s, nullptr, nullptr, te);
    return Attrs{s.tsFont, s.tsSize, s.tsFace, s.tsColor.red};
  }
  std::vector<StyleRun> Runs(TEHandle te) {
    TEStyleHandle s = TEGetStyleHandle(te);
    return std::vector<StyleRun>((*s)->runs, (*s)->runs + (*s)->nRuns);
  }
  // Runs ordered from 0 to teLength + 1, neighbours different, use counts
  // true, every line as high as its highest run.
  ::testing::AssertionResult RunsTrue(TEHandle te) {
    TEStyleHandle s = TEGetStyleHandle(te);
    std::vector<StyleRun> runs = Runs(te);
    int length = (*te)->teLength;
    if (runs.back().startChar != length + 1) return ::testing::AssertionFailure() << "end marker";
    std::vector<int> uses(size_t((*s)->nStyles));
    for (size_t i = 0; i < runs.size(); ++i) {
      if (i > 0 && runs[i].startChar <= runs[i - 1].startChar)
        return ::testing::AssertionFailure() << "runs out of order at " << i;
      if (i > 0 && i + 1 < runs.size() && runs[i].styleIndex == runs[i - 1].styleIndex)
        return ::testing::AssertionFailure() << "equal neighbours at " << i;
      uses.at(size_t(runs[i].styleIndex))++;
    }
    for (size_t i = 0; i < uses.size(); ++i)
      if ((*(*s)->styleTab)[i].stCount != uses[i])
        return ::testing::AssertionFailure() << "use count of entry " << i;
    for (int line = 0; line < (*te)->nLines; ++line) {
      int highest = 0;
      for (int c = (*te)->lineStarts[line]; c < (*te)->lineStarts[line + 1]; ++c) {
        SInt16 h = 0;
        TEGetStyle(SInt16(c), nullptr, &h, nullptr, te);
        highest = std::max<int>(highest, h);
      }
      if ((*(*s)->lhTab)[line].lhHeight != highest)
        return ::testing::AssertionFailure() << "height of line " << line;
    }
    return ::testing::AssertionSuccess();
  }
};

// A new record holds the end marker alone; inserted text gets one run, a
// styled middle splits it in three, and unstyling merges them back and
// drops the style entry nothing uses. Unstyled records have no styles.
TEST_F(Styled, RunsSplitAndMergeBack) {
  TEHandle te = Record({10, 10, 200, 300}, {10, 10, 200, 300}, true);
  ASSERT_TRUE(te);
  EXPECT_EQ((*te)->txSize * 10 + (*te)->lineHeight, -11);
  auto starts = [&] {
    TEStyleHandle s = TEGetStyleHandle(te);
    std::vector<int> out;
    for (int i = 0; i < (*s)->nRuns; ++i) out.push_back((*s)->runs[i].startChar);
    return out;
  };
  EXPECT_EQ(starts(), std::vector<int>{1});
  TEInsert("plain bold plain", 16, te);
  TextStyle bold{0, 1, 0, 0, {}}, none{0, 0, 0, 0, {}};
  TESetSelect(6, 10, te);
  TESetStyle(doFace, &bold, true, te);
  EXPECT_EQ(starts(), (std::vector<int>{0, 6, 10, 17}));
  EXPECT_EQ(TENumStyles(0, 16, te) * 10 + TENumStyles(0, 6, te), 31);
  EXPECT_EQ((*TEGetStyleHandle(te))->nStyles, 2);
  TESetStyle(doFace, &none, true, te);
  EXPECT_EQ(starts(), (std::vector<int>{0, 17}));
  EXPECT_EQ((*TEGetStyleHandle(te))->nStyles, 1);
  EXPECT_TRUE(RunsTrue(te));
  TEHandle plainRecord = Record({10, 10, 200, 300});
  EXPECT_EQ(TEGetStyleHandle(plainRecord), nullptr);
  EXPECT_EQ(TENumStyles(0, 5, plainRecord), 1);
  EXPECT_EQ(TEGetStyleScrapHandle(plainRecord), nullptr);
}

TEST_F(Styled, SeededStyleChangesAgreeWithEveryCharacter) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 rng(seed);
    TEHandle te = Record({10, 10, 250, 300}, {10, 10, 250, 300}, true);
    std::string text = "styled words run across some lines of text";
    TEInsert(text.data(), SInt32(text.size()), te);
    std::vector<Attrs> model(text.size(), At(te, 0));
    // The null style (the port's, from TEStyleNew) styles typing until the
    // first typed character empties it.
    bool nullStyle = true;
    Attrs created = model[0];
    for (int step = 0; step < 40; ++step) {
      int n = int(model.size());
      int a = int(rng() % unsigned(n)), b = a + 1 + int(rng() % unsigned(n - a));
      TESetSelect(a, b, te);
      TextStyle to{SInt16(rng() % 3 ? 0 : 2),
                   UInt8(1u << (rng() % 3)),
                   0,
                   SInt16(9 + rng() % 8),
                   {UInt16(rng() % 2 ? 0xFFFF : 0), 0, 0}};
      SInt16 modes[] = {doFont, doFace, doSize, doColor, addSize, doFace | doToggle, doAll};
      SInt16 mode = modes[rng() % 7];
      UInt8 common = 0xFF;
      for (int c = a; c < b; ++c) common &= model[size_t(c)].face;
      for (int c = a; c < b; ++c) {
        Attrs& m = model[size_t(c)];
        if (mode & addSize)
          m.size = SInt16(std::max(1, m.size + to.tsSize));
        else if (mode & doSize)
          m.size = to.tsSize;
        if (mode & doFont) m.font = to.tsFont;
        if (mode & doColor) m.red = to.tsColor.red;
        if (mode & doFace)
          m.face = (mode & doToggle) && (common & to.tsFace) == to.tsFace
                       ? UInt8(m.face & ~to.tsFace)
                       : UInt8(m.face | to.tsFace);
      }
      TESetStyle(mode, &to, rng() % 2, te);
      if (rng() % 3 == 0) {  // typing over part of it takes the style at the selection's start
        int at = int(rng() % unsigned(n));
        TESetSelect(at, at + 1, te);
        Attrs typed = nullStyle ? created : model[size_t(at)];
        nullStyle = false;
        TEKey('k', te);
        model[size_t(at)] = typed;
      }
      for (int c = 0; c < int(model.size()); ++c)
        ASSERT_EQ(At(te, c), model[size_t(c)])
            << "seed " << seed << " step " << step << " at " << c;
      ASSERT_TRUE(RunsTrue(te)) << "seed " << seed << " step " << step;
    }
  }
}

TEST_F(Styled, StylesTravelWithCopiedTextAndTheStyleScrap) {
  TEHandle from = Record({10, 10, 100, 300}, {10, 10, 100, 300}, true);
  TEInsert("one two three", 13, from);
  TextStyle big{0, 2, 0, 24, {0xFFFF, 0, 0}};
  TESetSelect(4, 7, from);
  TESetStyle(doFace | doSize | doColor, &big, false, from);
  TESetSelect(2, 10, from);
  StScrpHandle scrap = TEGetStyleScrapHandle(from);
  ASSERT_TRUE(scrap);
  std::vector<int> startsAndSizes;
  for (int i = 0; i < (*scrap)->scrpNStyles; ++i)
    startsAndSizes.push_back((*scrap)->scrpStyleTab[i].scrpStartChar * 100 +
                             (*scrap)->scrpStyleTab[i].scrpSize);
  int size = At(from, 0).size;
  EXPECT_EQ(startsAndSizes, (std::vector<int>{size, 224, 500 + size}));
  TECopy(from);
  TEHandle to = Record({110, 10, 200, 300}, {110, 10, 200, 300}, true);
  TEInsert("[]", 2, to);
  TESetSelect(1, 1, to);
  TEStylePaste(to);
  EXPECT_EQ(TextOf(to), "[e two th]");
  for (int c = 0; c < 8; ++c) EXPECT_EQ(At(to, c + 1), At(from, c + 2)) << c;
  EXPECT_TRUE(RunsTrue(to));
  // The same styles given explicitly to text inserted elsewhere.
  TESetSelect(0, 0, to);
  TEStyleInsert("abcdefgh", 8, scrap, to);
  for (int c = 0; c < 8; ++c) EXPECT_EQ(At(to, c), At(from, c + 2)) << c;
  TEUseStyleScrap(0, 8, nullptr, true, to);
  TESetSelect(0, 3, to);
  TEUseStyleScrap(9, 12, scrap, true, to);
  EXPECT_EQ(At(to, 11), At(from, 4));
  EXPECT_TRUE(RunsTrue(to));
  DisposeHandle(reinterpret_cast<Handle>(scrap));
}

TEST_F(Styled, ContinuousAndReplacedStyles) {
  TEHandle te = Record({10, 10, 100, 300}, {10, 10, 100, 300}, true);
  TEInsert("aaaa bbbb cccc", 14, te);
  TextStyle boldBig{0, 1, 0, 20, {}};
  TESetSelect(5, 9, te);
  TESetStyle(doFace | doSize, &boldBig, false, te);
  TextStyle italic{0, 2, 0, 0, {}};
  TESetSelect(7, 14, te);
  TESetStyle(doFace, &italic, false, te);
  struct Case {
    int start, end;
    SInt16 mode;
    SInt16 keptMode;
    bool same;
    UInt8 face;
  } cases[] = {
      {0, 4, doAll, doAll, true, 0},
      {5, 7, doFace | doSize, doFace | doSize, true, 1},
      {5, 9, doFace | doSize, doFace | doSize, false, 1},
      {5, 12, doSize, 0, false, 0},
      {0, 9, doFace, 0, false, 0},
  };
  for (const Case& c : cases) {
    TESetSelect(c.start, c.end, te);
    SInt16 mode = c.mode;
    TextStyle out{};
    EXPECT_EQ(TEContinuousStyle(&mode, &out, te), c.same) << c.start << ".." << c.end;
    EXPECT_EQ(mode, c.keptMode) << c.start << ".." << c.end;
    EXPECT_EQ(out.tsFace, c.face) << c.start << ".." << c.end;
  }
  TextStyle size20{0, 0, 0, 20, {}}, size9{0, 0, 0, 9, {}};
  TESetSelect(0, 14, te);
  TEReplaceStyle(doSize, &size20, &size9, true, te);
  EXPECT_EQ(At(te, 6).size, 9);
  EXPECT_EQ(At(te, 8).size, 9);
  EXPECT_NE(At(te, 1).size, 9);
  EXPECT_TRUE(RunsTrue(te));
}

}  // namespace
}  // namespace kwe_test
