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
    std::string model;
    for (int step = 0; step < 60; ++step) {
      int n = int(model.size());
      int a = int(rng() % unsigned(n + 1)), b = int(rng() % unsigned(n + 1));
      if (a > b) std::swap(a, b);
      TESetSelect(a, b, te);
      int selStart = a, selEnd = a;  // most steps leave a caret at a
      std::string s = RandomText(rng, 30);
      switch (rng() % 6) {
        case 0:  // TEInsert in front of the selection, which moves on
          TEInsert(s.data(), SInt32(s.size()), te);
          model.insert(size_t(a), s);
          selStart = a + int(s.size());
          selEnd = b + int(s.size());
          break;
        case 1:  // typing over the selection (TEDelete when nothing is typed)
          s.resize(s.size() % 8);
          model.replace(size_t(a), size_t(b - a), s);
          for (char c : s) TEKey(SInt16(UInt8(c)), te);
          if (s.empty()) TEDelete(te);
          selStart = selEnd = a + int(s.size());
          break;
        case 2:  // Backspace: the selection, or the character before the caret
          TEKey(8, te);
          if (a == b && a > 0) selStart = selEnd = --a;
          model.erase(size_t(a), size_t(std::max(b - a, 0)));
          break;
        case 3: {  // cut, then paste somewhere else
          TECut(te);
          std::string scrap = model.substr(size_t(a), size_t(b - a));
          model.erase(size_t(a), size_t(b - a));
          int at = int(rng() % unsigned(model.size() + 1));
          TESetSelect(at, at, te);
          TEPaste(te);
          model.insert(size_t(at), scrap);
          selStart = selEnd = at + int(scrap.size());
          break;
        }
        case 4:  // the window narrower or wider: the lines again
          (*te)->destRect.right = SInt16(60 + rng() % 200);
          TECalText(te);
          selEnd = b;
          break;
        case 5:  // a selection given the wrong way round
          TESetSelect(b, a, te);
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

// Text that would pass 32000 characters is cut; 0 and negative lengths
// leave no text and no lines.
TEST_F(EditScript, TheLimitCutsInsertedText) {
  TEHandle te = Record({10, 10, 300, 200});
  std::string big(32000 - 50, 'x');
  SetText(te, big);
  TEInsert(std::string(100, 'y').data(), 100, te);
  EXPECT_EQ(TextOf(te), big + std::string(50, 'y'));
  TEKey('z', te);
  EXPECT_EQ((*te)->teLength, 32000);
  SetText(te, std::string(40000, 'q'));
  EXPECT_EQ((*te)->teLength, 32000);
  EXPECT_EQ((*te)->selStart, 32000);
  EXPECT_TRUE(LinesTrue(te));
  for (SInt32 length : {0, -5}) {
    TESetText("abc", length, te);
    EXPECT_EQ((*te)->teLength, 0);
    EXPECT_EQ((*te)->nLines, 0);
  }
}

// Backspace at 0 and Delete at the end do nothing; the arrows collapse the
// selection to a caret one character, or one line, away.
TEST_F(EditScript, KeysAtTheEdgesAndArrows) {
  TEHandle te = Record({10, 10, 300, 200});
  SetText(te, "aaaaaaa\raaaaa");  // the same letter under the same letter
  struct Case {
    int start, end;
    SInt16 key;
    int caret;
  } cases[] = {
      {0, 0, 8, 0},  {13, 13, 127, 13}, {0, 0, 28, 0},   {3, 3, 28, 2},  {4, 7, 28, 3},
      {2, 5, 29, 6}, {13, 13, 29, 13},  {10, 10, 30, 2}, {2, 2, 31, 10}, {2, 2, 30, 2},
  };
  for (const Case& c : cases) {
    TESetSelect(c.start, c.end, te);
    TEKey(c.key, te);
    EXPECT_EQ(TextOf(te), "aaaaaaa\raaaaa") << c.start << " key " << c.key;
    EXPECT_EQ((*te)->selStart, c.caret) << c.start << " key " << c.key;
    EXPECT_EQ((*te)->selEnd, c.caret) << c.start << " key " << c.key;
  }
}

// A word wider than the line breaks inside; one that ends exactly at the
// right edge stays; with crOnly only returns end lines.
TEST_F(EditScript, LongWordsBreakInsideAndReturnsOnlyWithCrOnly) {
  TEHandle te = Record({10, 10, 200, 80});
  SetText(te, "abcdefghijklmnopqrstuvwxyzabcdefghijklmnop end");
  EXPECT_GE((*te)->nLines, 3) << ::testing::PrintToString(StartsOf(te));
  EXPECT_TRUE(LinesTrue(te));
  (*te)->destRect.right = SInt16((*te)->destRect.left + TextWidth("exact fit", 0, 9));
  SetText(te, "exact fit more");
  EXPECT_EQ(StartsOf(te), (std::vector<int>{0, 10, 14}));
  (*te)->crOnly = -1;
  SetText(te, "a long paragraph that would wrap many times\rsecond");
  EXPECT_EQ(StartsOf(te), (std::vector<int>{0, 44, 50}));
}

// Null handles and records without text: nothing happens; a damaged
// length is taken as the limit.
TEST_F(EditScript, BadInputChangesNothing) {
  TEHandle noText = TENew(nullptr, nullptr);
  Handle text = (*noText)->hText;
  (*noText)->hText = nullptr;
  for (TEHandle te : {TEHandle(nullptr), noText}) {
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
    EXPECT_EQ(TEGetText(te), nullptr);
  }
  EXPECT_EQ((*noText)->teLength, 0);
  (*noText)->hText = text;
  TEDispose(noText);
  TEHandle te = Record({10, 10, 300, 200});
  SetText(te, "hello world");
  (*te)->teLength = -7;
  TEKey('x', te);
  EXPECT_LE((*te)->teLength, 32000);
  EXPECT_GE((*te)->teLength, 0);
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
