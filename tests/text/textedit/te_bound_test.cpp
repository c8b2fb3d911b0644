// Records bound to a real edit control: what the user types into the
// control (posted WM_CHAR and WM_KEYDOWN) and what the application does
// through TextEdit, in a seeded script; after every step the record's text,
// line starts and selection agree with what the control holds.
#include <gtest/gtest.h>

#include <random>

#include "text/textedit/textedit_fixture.h"

namespace kwe_test {
namespace {

class BoundRecord : public TextEditTest {
 protected:
  void Deliver() {
    Pump();
    KWE_SethTEfromhWnd(te, false);
  }
  TEHandle te = nullptr;
};

constexpr DWORD kMultiLine = ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;

TEST_F(BoundRecord, SeededTypingAndEditingKeepTheRecordWithTheControl) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 rng(seed);
    if (edit) DestroyWindow(edit);
    te = Bound({10, 10, 150, 220}, kMultiLine);
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
      Deliver();
      ASSERT_TRUE(AgreesWithControl(te)) << "seed " << seed << " step " << step << " op " << op;
    }
  }
}

// Backspace and Delete on a caret take the character before or after it
// (a return goes with both halves of its CR-LF), and nothing at the ends;
// the selection's end is cut to teLength; the limit holds for keys.
TEST_F(BoundRecord, KeysAtTheEdgesAndTheLimit) {
  te = Bound({10, 10, 150, 220}, kMultiLine);
  TESetText("ab\rcd", 5, te);
  struct {
    int caret;
    SInt16 key;
    const char* text;
  } keys[] = {
      {0, 8, "ab\rcd"}, {5, 127, "ab\rcd"}, {1, 127, "a\rcd"}, {1, 'b', "ab\rcd"}, {3, 8, "abcd"}};
  for (const auto& k : keys) {
    TESetSelect(k.caret, k.caret, te);
    TEKey(k.key, te);
    EXPECT_EQ(ControlText(edit), k.text) << k.caret << " key " << k.key;
    EXPECT_TRUE(AgreesWithControl(te)) << k.caret << " key " << k.key;
  }
  TESetSelect(1, 99, te);
  EXPECT_EQ((*te)->selEnd, 4);
  std::string full(32000, 'w');
  TESetText(full.data(), 32000, te);
  TESetSelect(100, 100, te);
  TEKey('x', te);
  EXPECT_EQ((*te)->teLength, 32000);
  EXPECT_EQ(GetWindowTextLengthA(edit), 32000);
  TESetText(nullptr, 0, te);
  EXPECT_EQ(GetWindowTextLengthA(edit), 0);
  EXPECT_EQ((*te)->nLines, 0);
}

}  // namespace
}  // namespace kwe_test
