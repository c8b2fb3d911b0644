// Library-drawn records edited the way an application edits them: a seeded
// script of insertions, deletions, keys, cuts, pastes and resizes, checked
// after every step against a plain string and against a fresh line layout.
#include <gtest/gtest.h>

#include <random>

#include "text/textedit/textedit_fixture.h"

namespace kwe_test {
namespace {

std::string RandomText(std::mt19937& rng, int most) {
  static const char pieces[] = "abcdefghij klmnop qrstu vwxyz WIDE MMMMMMMMMMMMMMMMMMMMMMMM\r";
  std::string s;
  int n = int(rng() % unsigned(most + 1));
  for (int i = 0; i < n; ++i) s += pieces[rng() % (sizeof pieces - 1)];
  return s;
}

class EditScript : public TextEditTest {};

TEST_F(EditScript, SeededScriptsKeepTextLinesAndSelectionTrue) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    std::mt19937 rng(seed);
    TEHandle te = Record({10, 10, 250, SInt16(160 + seed * 7)}, {10, 10, 250, 300});
    ASSERT_TRUE(te);
    TEActivate(te);
    std::string model, scrap;
    int selStart = 0, selEnd = 0;
    for (int step = 0; step < 60; ++step) {
      int n = int(model.size());
      int a = int(rng() % unsigned(n + 1)), b = int(rng() % unsigned(n + 1));
      if (a > b) std::swap(a, b);
      switch (rng() % 7) {
        case 0: {  // TEInsert in front of a selection
          std::string s = RandomText(rng, 30);
          TESetSelect(a, b, te);
          TEInsert(s.data(), SInt32(s.size()), te);
          model.insert(size_t(a), s);
          selStart = a + int(s.size());
          selEnd = b + int(s.size());
          break;
        }
        case 1: {  // typing over a selection
          std::string s = RandomText(rng, 8);
          TESetSelect(a, b, te);
          model.erase(size_t(a), size_t(b - a));
          selStart = selEnd = a;
          for (char c : s) {
            TEKey(SInt16(UInt8(c)), te);
            model.insert(size_t(selStart++), 1, c);
          }
          selEnd = selStart;
          if (s.empty()) TEDelete(te);
          break;
        }
        case 2:  // TEDelete
          TESetSelect(a, b, te);
          TEDelete(te);
          model.erase(size_t(a), size_t(b - a));
          selStart = selEnd = a;
          break;
        case 3:  // Backspace
          TESetSelect(a, b, te);
          TEKey(8, te);
          if (a < b) {
            model.erase(size_t(a), size_t(b - a));
          } else if (a > 0) {
            model.erase(size_t(--a), 1);
          }
          selStart = selEnd = a;
          break;
        case 4:  // cut, then paste somewhere else
          TESetSelect(a, b, te);
          TECut(te);
          scrap = model.substr(size_t(a), size_t(b - a));
          model.erase(size_t(a), size_t(b - a));
          {
            int at = int(rng() % unsigned(model.size() + 1));
            TESetSelect(at, at, te);
            TEPaste(te);
            model.insert(size_t(at), scrap);
            selStart = selEnd = at + int(scrap.size());
          }
          break;
        case 5: {  // the window narrower or wider: the lines again
          SInt16 right = SInt16(60 + rng() % 200);
          (*te)->destRect.right = right;
          TECalText(te);
          TESetSelect(a, b, te);
          selStart = a;
          selEnd = b;
          break;
        }
        case 6:
          TESetSelect(b, a, te);  // given the wrong way round
          selStart = a;
          selEnd = b;
          break;
      }
      ASSERT_EQ(TextOf(te), model) << "seed " << seed << " step " << step;
      ASSERT_EQ((*te)->teLength, int(model.size()));
      ASSERT_EQ(GetHandleSize((*te)->hText), Size(model.size()));
      ASSERT_EQ((*te)->selStart, selStart) << "seed " << seed << " step " << step;
      ASSERT_EQ((*te)->selEnd, selEnd) << "seed " << seed << " step " << step;
      ASSERT_TRUE(LinesTrue(te)) << "seed " << seed << " step " << step;
    }
  }
}

TEST_F(EditScript, TheLimitCutsInsertedText) {
  TEHandle te = Record({10, 10, 300, 200});
  std::string big(32000 - 50, 'x');
  SetText(te, big);
  std::string hundred(100, 'y');
  TEInsert(hundred.data(), 100, te);
  EXPECT_EQ((*te)->teLength, 32000);
  EXPECT_EQ(TextOf(te), big + std::string(50, 'y'));
  TEKey('z', te);
  EXPECT_EQ((*te)->teLength, 32000);
  std::string huge(40000, 'q');
  SetText(te, huge);
  EXPECT_EQ((*te)->teLength, 32000);
  EXPECT_EQ((*te)->selStart, 32000);
  EXPECT_TRUE(LinesTrue(te));
  SetText(te, "");
  EXPECT_EQ((*te)->teLength, 0);
  EXPECT_EQ((*te)->nLines, 0);
  TESetText("abc", -5, te);
  EXPECT_EQ((*te)->teLength, 0);
}

TEST_F(EditScript, KeysAtTheEdgesAndArrows) {
  TEHandle te = Record({10, 10, 300, 200});
  SetText(te, "one two\raaaaa");  // the same letter under the same letter
  TESetSelect(0, 0, te);
  TEKey(8, te);  // Backspace at offset 0
  EXPECT_EQ(TextOf(te), "one two\raaaaa");
  TESetSelect(13, 13, te);
  TEKey(127, te);  // Delete at the end
  EXPECT_EQ(TextOf(te), "one two\raaaaa");
  SetText(te, "aaaaaaa\raaaaa");
  struct Case {
    int start, end;
    SInt16 key;
    int caret;
  } cases[] = {
      {0, 0, 28, 0},    {3, 3, 28, 2},   {4, 7, 28, 3},  {2, 5, 29, 6},
      {13, 13, 29, 13}, {10, 10, 30, 2}, {2, 2, 31, 10}, {2, 2, 30, 2},
  };
  for (const Case& c : cases) {
    TESetSelect(c.start, c.end, te);
    TEKey(c.key, te);
    EXPECT_EQ((*te)->selStart, c.caret) << c.start << " key " << c.key;
    EXPECT_EQ((*te)->selEnd, c.caret) << c.start << " key " << c.key;
  }
}

TEST_F(EditScript, LongWordsBreakInsideAndReturnsOnlyWithCrOnly) {
  TEHandle te = Record({10, 10, 200, 80});
  SetText(te, "abcdefghijklmnopqrstuvwxyzabcdefghijklmnop end");
  EXPECT_GE((*te)->nLines, 3) << ::testing::PrintToString(StartsOf(te));
  EXPECT_TRUE(LinesTrue(te));
  // A word that ends exactly at destRect's right edge stays on its line.
  (*te)->destRect.right = SInt16((*te)->destRect.left + TextWidth("exact fit", 0, 9));
  SetText(te, "exact fit more");
  EXPECT_EQ(StartsOf(te), (std::vector<int>{0, 10, 14}));
  (*te)->crOnly = -1;
  SetText(te, "a long paragraph that would wrap many times\rsecond");
  EXPECT_EQ((*te)->nLines, 2);
  EXPECT_EQ(StartsOf(te), (std::vector<int>{0, 44, 50}));
}

TEST_F(EditScript, BadInputChangesNothing) {
  TEHandle none = nullptr;
  Handle empty = NewHandle(0);
  TEHandle noText = TENew(nullptr, nullptr);
  DisposeHandle((*noText)->hText);
  (*noText)->hText = nullptr;
  for (TEHandle te : {none, noText}) {
    TESetText("abc", 3, te);
    TEKey('a', te);
    TEInsert("abc", 3, te);
    TEDelete(te);
    TESetSelect(-5, 9, te);
    TECut(te);
    TEPaste(te);
    TEUpdate(nullptr, te);
    TEIdle(te);
    TEActivate(te);
    TEScroll(5, 5, te);
    TECalText(te);
    EXPECT_EQ(TEGetText(te), te ? (*te)->hText : nullptr);
  }
  EXPECT_EQ((*noText)->teLength, 0);
  (*noText)->hText = empty;
  TEDispose(noText);
  TEHandle te = Record({10, 10, 300, 200});
  SetText(te, "hello world");
  TESetSelect(-20, -3, te);
  EXPECT_EQ((*te)->selStart, 0);
  EXPECT_EQ((*te)->selEnd, 0);
  TESetSelect(50, 4, te);
  EXPECT_EQ((*te)->selStart, 4);
  EXPECT_EQ((*te)->selEnd, 11);
  (*te)->teLength = -7;  // a damaged length field is taken as the limit
  TEKey('x', te);
  EXPECT_LE((*te)->teLength, 32000);
  EXPECT_GE((*te)->teLength, 0);
  TESetAlignment(2, te);
  EXPECT_EQ((*te)->just, 0);
  TESetAlignment(-1, te);
  EXPECT_EQ((*te)->just, -1);
}

TEST_F(EditScript, AThousandRecordsLeaveNothingBehind) {
  auto cycle = [&] {
    Rect r{10, 10, 200, 200};
    TEHandle te = TENew(&r, &r);
    TEActivate(te);
    for (char c : std::string("typing a line\rand more")) TEKey(SInt16(c), te);
    TESetSelect(2, 9, te);
    TECopy(te);
    TEPaste(te);
    TEDispose(te);
    TEHandle styled = TEStyleNew(&r, &r);
    TEInsert("styled", 6, styled);
    TEDispose(styled);
  };
  cycle();
  Footprint before = Now();
  for (int i = 0; i < 1000; ++i) cycle();
  Footprint after = Now();
  EXPECT_EQ(before.windows, after.windows);
  EXPECT_NEAR(before.gdi, after.gdi, 8);
  EXPECT_EQ(before.bytes, after.bytes);
}

}  // namespace
}  // namespace kwe_test
