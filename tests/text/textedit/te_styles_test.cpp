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

// Seeded style changes against a model of every character's style; after
// each step TEContinuousStyle over a random range answers from the model:
// an attribute is kept when every character shares it, the face also when
// some face is common to all.
TEST_F(Styled, SeededStyleChangesAgreeWithEveryCharacter) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 rng(seed);
    TEHandle te = Record({10, 10, 250, 300}, {10, 10, 250, 300}, true);
    std::string text = "styled words run across some lines of text";
    ASSERT_TRUE(RunsTrue(te)) << "a new record holds the end marker alone";
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
      a = int(rng() % unsigned(n));
      b = a + 1 + int(rng() % unsigned(n - a));
      TESetSelect(a, b, te);
      SInt16 kept = doAll, want = doAll;
      UInt8 faces = 0xFF;
      for (int c = a; c < b; ++c) {
        const Attrs &m = model[size_t(c)], &first = model[size_t(a)];
        faces &= m.face;
        if (m.font != first.font) want &= ~doFont;
        if (m.size != first.size) want &= ~doSize;
        if (m.red != first.red) want &= ~doColor;
        if (m.face != first.face) want &= ~doFace;
      }
      TextStyle out{};
      EXPECT_EQ(TEContinuousStyle(&kept, &out, te), want == doAll)
          << "seed " << seed << " step " << step << " range " << a << ".." << b;
      EXPECT_EQ(kept, faces ? want | doFace : want) << "seed " << seed << " step " << step;
      EXPECT_EQ(out.tsFace, faces) << "seed " << seed << " step " << step;
    }
  }
}

// Styles travel with copied text through the style scrap; unstyled records
// have one style and no style records at all.
TEST_F(Styled, StylesTravelWithCopiedTextAndTheStyleScrap) {
  TEHandle from = Record({10, 10, 100, 300}, {10, 10, 100, 300}, true);
  TEInsert("one two three", 13, from);
  TextStyle big{0, 2, 0, 24, {0xFFFF, 0, 0}};
  TESetSelect(4, 7, from);
  TESetStyle(doFace | doSize | doColor, &big, false, from);
  EXPECT_EQ(TENumStyles(0, 13, from) * 10 + TENumStyles(0, 4, from), 31);
  TESetSelect(2, 10, from);
  StScrpHandle scrap = TEGetStyleScrapHandle(from);
  ASSERT_TRUE(scrap);
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
  TEHandle plainRecord = Record({10, 10, 200, 300});
  EXPECT_EQ(TEGetStyleHandle(plainRecord), nullptr);
  EXPECT_EQ(TENumStyles(0, 5, plainRecord), 1);
  EXPECT_EQ(TEGetStyleScrapHandle(plainRecord), nullptr);
}

// TEReplaceStyle turns size 20 into 9 only in the selection's characters
// that have it (and a bold face, when the face is asked for too), runs cut at
// the selection's ends: characters, line heights and continuous styles are
// those of a record given the same sizes by TESetStyle.
TEST_F(Styled, ReplaceStyleChangesOnlyMatchesInTheSelection) {
  using Ranges = std::vector<std::pair<int, int>>;
  struct Row {
    const char* what;
    SInt16 mode;
    int from, to;
    Ranges big, replaced;
  } rows[] = {
      {"a whole run", doSize, 0, 19, {{5, 9}}, {{5, 9}}},
      {"a run past the end", doSize, 0, 14, {{5, 9}, {15, 19}}, {{5, 9}}},
      {"runs over both ends", doSize, 5, 14, {{2, 7}, {12, 17}}, {{5, 7}, {12, 14}}},
      {"inside one run", doSize, 6, 9, {{3, 16}}, {{6, 9}}},
      {"a face no run has", doSize | doFace, 0, 19, {{5, 9}}, {}},
  };
  TextStyle size20{0, bold, 0, 20, {}}, size9{0, 0, 0, 9, {}};
  auto restyle = [](TEHandle te, const Ranges& ranges, const TextStyle& to) {
    for (auto [a, b] : ranges) {
      TESetSelect(a, b, te);
      TESetStyle(doSize, &to, false, te);
    }
  };
  for (const Row& row : rows) {
    TEHandle te = Record({10, 10, 200, 90}, {10, 10, 200, 90}, true);
    TEHandle want = Record({10, 100, 200, 180}, {10, 100, 200, 180}, true);
    for (TEHandle h : {te, want}) {
      TEInsert("aaaa bbbb cccc dddd", 19, h);
      restyle(h, row.big, size20);
    }
    restyle(want, row.replaced, size9);
    TESetSelect(row.from, row.to, te);
    TEReplaceStyle(row.mode, &size20, &size9, true, te);
    for (int c = 0; c < 19; ++c) EXPECT_EQ(At(te, c), At(want, c)) << row.what << " at " << c;
    ASSERT_EQ(StartsOf(te), StartsOf(want)) << row.what;
    for (int line = 1; line <= (*te)->nLines; ++line)
      EXPECT_EQ(TEGetHeight(line, line, te), TEGetHeight(line, line, want))
          << row.what << " line " << line;
    for (auto [a, b] : Ranges{{0, row.from}, {row.from, row.to}, {row.to, 19}}) {
      if (a == b) continue;
      SInt16 kept = doAll, wanted = doAll;
      TextStyle got{}, expected{};
      for (TEHandle h : {te, want}) TESetSelect(a, b, h);
      EXPECT_EQ(TEContinuousStyle(&kept, &got, te), TEContinuousStyle(&wanted, &expected, want))
          << row.what << " over " << a << ".." << b;
      EXPECT_EQ(got.tsSize, expected.tsSize) << row.what << " over " << a << ".." << b;
    }
    EXPECT_TRUE(RunsTrue(te)) << row.what;
  }
}

}  // namespace
}  // namespace kwe_test
