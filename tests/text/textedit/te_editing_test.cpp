// Records edited the way an application and its user edit them: seeded
// scripts of insertions, deletions, keys, cuts, pastes and resizes, a
// library-drawn record checked after every step against a plain string and
// a fresh line layout, a bound one against the edit control it follows.
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

constexpr DWORD kMultiLine = ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;

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

// One table of keys for both kinds of record on "ab\rab": Backspace at 0 and
// Delete at the end do nothing, Delete takes the character after the caret,
// a return goes whole (both halves of a control's CR-LF); on a library-drawn
// record the arrows collapse the selection to a caret one character, or one
// line, away (the same letters stand under each other).
TEST_F(EditScript, KeysAtTheEdgesAndArrows) {
  struct Case {
    int start, end;
    SInt16 key;
    const char* text;
    int caret;
  } cases[] = {
      {0, 0, 8, "ab\rab", 0},  {5, 5, 127, "ab\rab", 5}, {1, 1, 127, "a\rab", 1},
      {3, 3, 8, "abab", 2},    {2, 2, 127, "abab", 2},   {1, 1, 'x', "axb\rab", 2},
      {1, 4, 'y', "ayb", 2},   {0, 0, 28, "ab\rab", 0},  {2, 2, 28, "ab\rab", 1},
      {1, 4, 28, "ab\rab", 0}, {1, 3, 29, "ab\rab", 4},  {5, 5, 29, "ab\rab", 5},
      {4, 4, 30, "ab\rab", 1}, {1, 1, 31, "ab\rab", 4},  {1, 1, 30, "ab\rab", 1},
  };
  for (bool bound : {false, true}) {
    TEHandle te = bound ? Bound({10, 10, 150, 220}, kMultiLine) : Record({10, 10, 300, 200});
    for (const Case& c : cases) {
      if (bound && c.key >= 28 && c.key <= 31) continue;  // the control's own keys
      SCOPED_TRACE(::testing::Message() << (bound ? "bound " : "drawn ") << c.start << ".." << c.end
                                        << " key " << c.key);
      SetText(te, "ab\rab");
      TESetSelect(c.start, c.end, te);
      TEKey(c.key, te);
      EXPECT_EQ(TextOf(te), c.text);
      EXPECT_EQ((*te)->selStart * 100 + (*te)->selEnd, c.caret * 101);
      if (bound) {
        EXPECT_TRUE(AgreesWithControl(te));
      }
    }
  }
}

// Text never passes 32000 characters in either kind of record: inserted and
// typed text is cut, yet typing over a selection of a full record replaces
// it; 0 and negative lengths leave no text and no lines.
TEST_F(EditScript, TheLimitCutsInsertedText) {
  for (bool bound : {false, true}) {
    SCOPED_TRACE(bound ? "bound" : "drawn");
    // One line in the control: 32000 characters in a narrow multi-line
    // control would be re-read line by line at every step.
    TEHandle te = bound ? Bound({10, 10, 30, 220}, ES_AUTOHSCROLL) : Record({10, 10, 300, 200});
    std::string big(32000 - 50, 'x');
    SetText(te, big);
    TESetSelect(32000, 32000, te);
    TEInsert(std::string(100, 'y').data(), 100, te);
    EXPECT_EQ(TextOf(te), big + std::string(50, 'y'));
    TEKey('z', te);
    EXPECT_EQ((*te)->teLength, 32000);
    TESetSelect(10, 20, te);
    TEKey('z', te);
    EXPECT_EQ(TextOf(te).substr(9, 3), "xzx");
    EXPECT_EQ((*te)->teLength, 31991);
    SetText(te, std::string(40000, 'q'));
    EXPECT_EQ((*te)->teLength, 32000);
    if (bound) {
      EXPECT_EQ(GetWindowTextLengthA(edit), 32000);
      EXPECT_TRUE(AgreesWithControl(te));
    } else {
      EXPECT_TRUE(LinesTrue(te));
    }
    TESetSelect(1, 99999, te);
    EXPECT_EQ((*te)->selEnd, 32000);
    for (SInt32 length : {0, -5}) {
      TESetText("abc", length, te);
      EXPECT_EQ((*te)->teLength, 0);
      EXPECT_EQ((*te)->nLines, 0);
    }
    EXPECT_EQ(bound ? GetWindowTextLengthA(edit) : 0, 0);
  }
}

// A record bound to a real edit control: what the user types into the
// control (posted WM_CHAR and WM_KEYDOWN) and what the application does
// through TextEdit; after every step the record's text, line starts and
// selection agree with what the control holds.
TEST_F(EditScript, SeededTypingKeepsABoundRecordWithItsControl) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 rng(seed);
    if (edit) DestroyWindow(edit);
    TEHandle te = Bound({10, 10, 150, 220}, kMultiLine);
    ASSERT_TRUE(te);
    SetFocus(edit);
    for (int step = 0; step < 70; ++step) {
      int n = (*te)->teLength;
      int a = int(rng() % unsigned(n + 1)), b = int(rng() % unsigned(n + 1));
      if (a > b) std::swap(a, b);
      int op = int(rng() % 9);
      switch (op) {
        case 0:  // typed into the control
        case 1:
          for (int i = int(rng() % 6); i >= 0; --i)
            PostMessageA(edit, WM_CHAR, WPARAM("abc de\rfgh "[rng() % 11]), 1);
          break;
        case 2:  // Backspace and Delete in the control
          PostMessageA(edit, WM_CHAR, 8, 1);
          PostMessageA(edit, WM_KEYDOWN, VK_DELETE, 1);
          break;
        case 3:
          for (char c : std::string("xy z\r")) TEKey(SInt16(c), te);
          TEKey(8, te);
          break;
        case 4: TESetSelect(a, b, te); break;
        case 5:
          TESetSelect(a, b, te);
          TECut(te);
          TESetSelect(0, 0, te);
          TEPaste(te);
          break;
        case 6:
          TESetSelect(a, b, te);
          TEInsert("ins\rert", 7, te);
          break;
        case 7:  // the control resized, its lines broken anew
          SetWindowPos(edit, nullptr, 0, 0, 60 + int(rng() % 200), 140, SWP_NOMOVE | SWP_NOZORDER);
          break;
        case 8:  // arrow keys in the control
          PostMessageA(edit, WM_KEYDOWN, rng() % 2 ? VK_LEFT : VK_UP, 1);
          break;
      }
      Pump();
      KWE_SethTEfromhWnd(te, false);
      ASSERT_TRUE(AgreesWithControl(te)) << "seed " << seed << " step " << step << " op " << op;
    }
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
