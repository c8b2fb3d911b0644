// TextEdit through the DLL: seeded edit scripts on library-drawn records
// (against a plain string and a fresh line layout) and on bound ones
// (against their edit control); the desk scrap; what a drawn record shows
// in its window's pixels (updates, highlight, caret, scrolling, clicks); and
// styled records' runs against a model of every character's style.
#include <gtest/gtest.h>
#include <windows.h>

#include <random>
#include <string>
#include <vector>

#include "Memory.h"
#include "OSUtils.h"
#include "TextEdit.h"
#include "scrap/scrap_fixture.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline std::string TextOf(TEHandle te) {
  if (!te || !(*te)->hText || !*(*te)->hText) return {};
  return std::string(*(*te)->hText, size_t((*te)->teLength));
}

inline std::vector<int> StartsOf(TEHandle te) {
  return std::vector<int>((*te)->lineStarts, (*te)->lineStarts + (*te)->nLines + 1);
}

// The control's text as Windows holds it, and with CR-LF pairs as single
// returns.
inline std::string RawText(HWND control) {
  std::string text(size_t(GetWindowTextLengthA(control)) + 1, '\0');
  text.resize(size_t(GetWindowTextA(control, &text[0], int(text.size()))));
  return text;
}
inline std::string ControlText(HWND control) {
  std::string text = RawText(control), out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    out += text[i] == '\n' ? '\r' : text[i];
  }
  return out;
}

// A control offset in the record's terms (every CR-LF counts once).
inline int RecordOffsetOf(const std::string& raw, int offset) {
  int pairs = 0;
  for (int i = 0; i + 1 < offset && i + 1 < int(raw.size()); ++i)
    pairs += raw[size_t(i)] == '\r' && raw[size_t(i) + 1] == '\n';
  return offset - pairs;
}

class TextEditTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    TEInit();
    window = Make(documentProc, {60, 60, 360, 460});
    SetPort(window);
    Pump();
  }
  void TearDown() override {
    for (TEHandle te : records) TEDispose(te);
    if (edit) DestroyWindow(edit);
    WindowTest::TearDown();
  }
  TEHandle Record(Rect dest, Rect view, bool styled = false) {
    TEHandle te = styled ? TEStyleNew(&dest, &view) : TENew(&dest, &view);
    if (te) records.push_back(te);
    return te;
  }
  TEHandle Record(Rect both) { return Record(both, both); }
  // An edit control in the window and a record bound to it.
  TEHandle Bound(Rect place, DWORD style) {
    edit = CreateWindowExA(0, "edit", "", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, Hwnd(), nullptr,
                           TestInstance(), nullptr);
    SendMessageA(edit, WM_SETFONT, WPARAM(GetStockObject(ANSI_VAR_FONT)), FALSE);
    TEHandle te = KWE_TENewBound(edit, &place);
    if (te) records.push_back(te);
    return te;
  }
  void SetText(TEHandle te, const std::string& text) {
    TESetText(text.data(), SInt32(text.size()), te);
  }
  HWND Hwnd() { return KWE_GethWnd(window); }

  // Lines that a greedy word wrap of destRect makes, checked line by line:
  // no line wider than destRect but a lone word, each breaks before a word
  // that would not fit, returns end lines; and the same starts as a fresh
  // record given the whole text at once.
  ::testing::AssertionResult LinesTrue(TEHandle te) {
    std::string text = TextOf(te);
    std::vector<int> starts = StartsOf(te);
    const TERec& r = **te;
    int width = r.destRect.right - r.destRect.left;
    auto fail = [&](int line, const char* why) {
      return ::testing::AssertionFailure()
             << "line " << line << " of " << r.nLines << ": " << why << " in \"" << text << "\"";
    };
    if (starts.back() != int(text.size())) return fail(r.nLines, "last entry is not teLength");
    if (text.empty() != (r.nLines == 0)) return fail(0, "empty text and line count disagree");
    SetPort(r.inPort);
    TextFont(r.txFont);
    TextSize(r.txSize);
    TextFace(r.txFace);
    for (int i = 0; i < r.nLines; ++i) {
      int a = starts[size_t(i)], b = starts[size_t(i) + 1];
      if (b <= a) return fail(i, "empty or backward line");
      std::string line = text.substr(size_t(a), size_t(b - a));
      size_t cr = line.find('\r');
      if (cr != std::string::npos && cr + 1 != line.size()) return fail(i, "return inside a line");
      size_t end = line.find_last_not_of(" \r");
      std::string shown = end == std::string::npos ? "" : line.substr(0, end + 1);
      bool oneWord = shown.find(' ') == std::string::npos;
      if (!oneWord && TextWidth(shown.data(), 0, SInt16(shown.size())) > width)
        return fail(i, "wider than destRect");
      if (cr == std::string::npos && i + 1 < r.nLines && !oneWord) {
        std::string next = text.substr(size_t(b));
        std::string joined = line + next.substr(0, next.find_first_of(" \r"));
        if (TextWidth(joined.data(), 0, SInt16(joined.size())) <= width)
          return fail(i, "the next word would have fitted");
      }
    }
    Rect dest = r.destRect;
    TEHandle fresh = TENew(&dest, &dest);
    TESetText(text.data(), SInt32(text.size()), fresh);
    std::vector<int> all = StartsOf(fresh);
    TEDispose(fresh);
    if (all != starts) return fail(0, "starts differ from a fresh record's");
    return ::testing::AssertionSuccess();
  }

  // Record against control: text, line starts (EM_LINEINDEX), selection
  // (EM_GETSEL), first visible line.
  ::testing::AssertionResult AgreesWithControl(TEHandle te) {
    HWND control = (*te)->hDispText;
    std::string raw = RawText(control), text = ControlText(control);
    if (TextOf(te) != text)
      return ::testing::AssertionFailure()
             << "text \"" << TextOf(te) << "\" against \"" << text << "\"";
    std::vector<int> starts;
    int count = int(SendMessageA(control, EM_GETLINECOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
      int at = RecordOffsetOf(raw, int(SendMessageA(control, EM_LINEINDEX, WPARAM(i), 0)));
      if (at < int(text.size())) starts.push_back(at);
    }
    starts.push_back(int(text.size()));
    if (StartsOf(te) != starts)
      return ::testing::AssertionFailure()
             << "line starts " << ::testing::PrintToString(StartsOf(te)) << " against "
             << ::testing::PrintToString(starts);
    DWORD a = 0, b = 0;
    SendMessageA(control, EM_GETSEL, WPARAM(&a), LPARAM(&b));
    if ((*te)->selStart != RecordOffsetOf(raw, int(a)) ||
        (*te)->selEnd != RecordOffsetOf(raw, int(b)))
      return ::testing::AssertionFailure() << "selection " << (*te)->selStart << ".."
                                           << (*te)->selEnd << " against " << a << ".." << b;
    int first = int(SendMessageA(control, EM_GETFIRSTVISIBLELINE, 0, 0));
    if ((*te)->destRect.top != (*te)->viewRect.top - (*te)->lineHeight * first)
      return ::testing::AssertionFailure() << "destRect.top for first visible line " << first;
    return ::testing::AssertionSuccess();
  }

  WindowPtr window = nullptr;
  HWND edit = nullptr;
  std::vector<TEHandle> records;
};

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

using TextScrap = ScrapTest;

// Copy reaches another program on the clipboard, its text comes back with
// TEPaste, a cut deletes, and TEFromScrap / TEToScrap move text between the
// TextEdit scrap and the desk scrap.
TEST_F(TextScrap, CopyCutAndPasteCrossTheDeskScrap) {
  TEInit();
  Rect r{10, 10, 100, 200};
  TEHandle te = TENew(&r, &r);
  TESetText("copy this text", 14, te);
  auto Text = [te] { return std::string(*(*te)->hText, size_t((*te)->teLength)); };
  auto TEScrap = [] { return std::string(*TEScrapHandle(), size_t(TEGetScrapLength())); };
  TESetSelect(5, 9, te);
  TECopy(te);
  EXPECT_EQ(TEScrap(), "this");
  EXPECT_EQ(PeerGet(), "this");
  ASSERT_EQ(PeerPut("other's words"), 0u);
  TESetSelect(0, 4, te);
  TEPaste(te);
  EXPECT_EQ(Text(), "other's words this text");
  EXPECT_EQ((*te)->selStart * 100 + (*te)->selEnd, 1313);
  TESetSelect(0, 14, te);
  TECut(te);
  EXPECT_EQ(Text(), "this text");
  EXPECT_EQ(PeerGet(), "other's words ");
  ASSERT_EQ(PeerPut("from outside"), 0u);
  EXPECT_EQ(TEFromScrap(), 0);
  EXPECT_EQ(TEScrap(), "from outside");
  TESetScrapLength(4);
  EXPECT_EQ(TEToScrap(), 0);
  EXPECT_EQ(PeerGet(), "from");
  TEInit();
  EXPECT_EQ(TEGetScrapLength(), 0);
  TEDispose(te);
}

class Display : public TextEditTest {
 protected:
  void Black() {
    Rect all = window->portRect;
    ForeColor(blackColor);
    PaintRect(&all);
  }
  bool Dark(int h, int v) {
    COLORREF c = Pixel(window, h, v);
    return GetRValue(c) + GetGValue(c) + GetBValue(c) < 384;
  }
  // Dark pixels of a rectangle, every second pixel in each direction.
  int DarkIn(const Rect& r) {
    int n = 0;
    for (int v = r.top; v < r.bottom; v += 2)
      for (int h = r.left; h < r.right; h += 2) n += Dark(h, v);
    return n;
  }
  int Cells(const Rect& r) { return ((r.bottom - r.top + 1) / 2) * ((r.right - r.left + 1) / 2); }
  // Pixels of the band of rows from v that differ from the band from w, and
  // that are not white, across the window's width.
  int Differing(int v, int w, int height) { return Count(v, height, w); }
  int Ink(int v, int height) { return Count(v, height, -1); }
  int Count(int v, int height, int w) {
    HDC dc = GetDC(Hwnd());
    int n = 0;
    for (int y = 0; y < height; ++y)
      for (int h = 20; h < 380; ++h) {
        COLORREF c = GetPixel(dc, h, v + y);
        n += w < 0 ? c != RGB(255, 255, 255) : c != GetPixel(dc, h, w + y);
      }
    ReleaseDC(Hwnd(), dc);
    return n;
  }
};

const char kText[] = "The quick brown fox jumps over the lazy dog\rand keeps running far away";

// TEUpdate draws only inside its rectangle and the view, TETextBox only
// inside its box: the text on a fresh background, mostly light.
TEST_F(Display, UpdatesAndTextBoxesDrawOnlyInsideTheirRectangle) {
  Rect view{20, 20, 120, 220};
  TEHandle te = Record(view);
  SetText(te, kText);
  Rect areas[] = {{0, 0, 300, 400}, {30, 40, 60, 120}, {10, 10, 40, 300}, {100, 200, 140, 260}};
  for (bool box : {false, true})
    for (const Rect& area : areas) {
      SCOPED_TRACE(::testing::Message()
                   << (box ? "box " : "update ") << area.top << "," << area.left);
      Black();
      Rect inside = area;
      if (box) {
        TETextBox(kText, sizeof kText - 1, &area, teJustCenter);
      } else {
        TEUpdate(&area, te);
        SectRect(&area, &view, &inside);
      }
      for (int v = 0; v < 160; v += 3)
        for (int h = 0; h < 260; h += 3) {
          bool in = v >= inside.top && v < inside.bottom && h >= inside.left && h < inside.right;
          ASSERT_TRUE(in || Dark(h, v)) << "drawn outside at " << h << "," << v;
        }
      EXPECT_LT(DarkIn(inside), Cells(inside) / 2);
      EXPECT_TRUE(!box || DarkIn(inside) > 0) << "the box shows text";
    }
  Black();
  TETextBox("nothing", 0, &areas[1], teJustLeft);
  EXPECT_EQ(DarkIn(areas[1]), Cells(areas[1]));
}

// The selection shows inverted while the record is active; the caret blinks
// at the caret time; deactivation leaves the plain text.
TEST_F(Display, HighlightAndCaretInvertAndComeBack) {
  Rect view{20, 20, 120, 220};
  TEHandle te = Record(view);
  SetText(te, kText);
  TEUpdate(&view, te);
  Rect line{20, 20, SInt16(20 + (*te)->lineHeight), 220};
  int plain = DarkIn(line);
  TEActivate(te);
  TESetSelect(0, 9, te);
  Rect selected{20, 20, line.bottom, TEGetPoint(9, te).h};
  EXPECT_GT(DarkIn(selected), Cells(selected) / 2);
  TEDeactivate(te);
  EXPECT_EQ(DarkIn(line), plain);
  TEActivate(te);
  TESetSelect(4, 4, te);
  for (int blink = 0; blink < 4; ++blink) {
    bool before = (*te)->caretState != 0;
    (*te)->caretTime = TickCount() - GetCaretTime() - 1;
    TEIdle(te);
    EXPECT_NE((*te)->caretState != 0, before) << "blink " << blink;
  }
  TEDeactivate(te);
  EXPECT_EQ(DarkIn(line), plain);
}

// Clicks at the points TEGetPoint gives, in each alignment: a click puts the
// caret there, Shift extends from the far end, a double click takes words.
TEST_F(Display, ClicksSelectCharactersWordsAndExtend) {
  Rect view{20, 20, 120, 300};
  TEHandle te = Record(view);
  SetText(te, kText);
  TEActivate(te);
  auto at = [&](int offset) {
    Point p = TEGetPoint(SInt16(offset), te);
    p.v = SInt16(p.v - 2);
    return p;
  };
  struct Case {
    int offset;
    bool extend, twice;
    int start, end;
  } cases[] = {
      {6, false, false, 6, 6},   {12, true, false, 6, 12},  {2, true, false, 2, 12},
      {11, false, true, 10, 15}, {17, false, true, 16, 19}, {50, false, false, 50, 50},
  };
  for (SInt16 just : {teJustLeft, teJustCenter, teJustRight}) {
    TESetAlignment(just, te);
    for (const Case& c : cases) {
      (*te)->clickTime = 0;
      TEClick(at(c.offset), c.extend, te);
      if (c.twice) TEClick(at(c.offset), false, te);
      EXPECT_EQ((*te)->selStart, c.start) << c.offset << " just " << just;
      EXPECT_EQ((*te)->selEnd, c.end) << c.offset << " just " << just;
      EXPECT_EQ(TEGetOffset(at(c.offset), te), c.offset) << " just " << just;
    }
  }
}

TEST_F(Display, ScrollingMovesTheTextAndPinsAtTheBottom) {
  Rect view{20, 20, 80, 220};
  TEHandle te = Record(view);
  SetText(te, std::string(kText) + "\rthree\rfour\rfive\rsix\rseven\reight");
  TEUpdate(&view, te);
  EXPECT_GT(DarkIn({20, 20, 30, 220}), 0);
  TEScroll(0, 30, te);
  EXPECT_EQ((*te)->destRect.top, 50);
  EXPECT_EQ(DarkIn({20, 20, 48, 220}), 0);
  TEScroll(0, -30, te);
  for (SInt16 dv : {-5000, -10}) {
    TEPinScroll(0, dv, te);
    EXPECT_EQ((*te)->destRect.top + (*te)->lineHeight * (*te)->nLines, view.bottom) << dv;
  }
  // Text that ends inside the view is not scrolled at all.
  TEHandle shortText = Record({100, 20, 200, 220});
  SetText(shortText, "one line");
  TEPinScroll(0, -20, shortText);
  EXPECT_EQ((*shortText)->destRect.top, 100);
  TEAutoView(true, te);
  TESetSelect(0, 0, te);
  EXPECT_EQ((*te)->destRect.top, view.top);
  TESetSelect((*te)->teLength, (*te)->teLength, te);
  Point p = TEGetPoint((*te)->teLength, te);
  EXPECT_LE(p.v, view.bottom);
  EXPECT_GE(p.v - (*te)->lineHeight, view.top);
}

// A bound record hands its control the ANSI bytes of its Macintosh Roman
// text and reads typed ones back as Macintosh characters.
TEST_F(Display, AccentedTextCrossesIntoAnsi) {
  const std::string mac = "caf\x8E na\x95ve";
  TEHandle bound = Bound({150, 20, 176, 220}, ES_AUTOHSCROLL);
  SetText(bound, mac);
  EXPECT_EQ(RawText(edit), "caf\xE9 na\xEFve");
  SendMessageA(edit, EM_SETSEL, 0, 0);
  SendMessageA(edit, WM_CHAR, 0xE8, 1);
  KWE_SethTEfromhWnd(bound, false);
  EXPECT_EQ(TextOf(bound), "\x8F" + mac) << "e grave typed into the control";
}

// A password record keeps its text but shows and measures a "*" for each
// character: it looks exactly like a plain record holding the stars, and
// text drawn after it (a plain record with the same secret) shows letters.
TEST_F(Display, PasswordRecordsShowAndMeasureStarsOnly) {
  const std::string secret = "lil itll fill", stars(secret.size(), '*');
  const SInt16 n = SInt16(secret.size());
  const int letters = TextWidth(secret.data(), 0, n);
  ASSERT_LT(letters, TextWidth(stars.data(), 0, n));
  for (bool styled : {false, true}) {
    SCOPED_TRACE(styled ? "styled" : "plain");
    Rect top{20, 20, 60, 380}, middle{70, 20, 110, 380}, low{120, 20, 160, 380};
    TEHandle hidden = Record(top, top, styled), shown = Record(middle, middle, styled),
             plain = Record(low, low, styled);
    (*hidden)->active |= kweTEPasswordFlag;
    SetText(hidden, secret);
    SetText(shown, stars);
    SetText(plain, secret);
    TEActivate(hidden);  // the caret after the last star, in both
    TEActivate(shown);
    TEUpdate(&top, hidden);
    TEUpdate(&middle, shown);
    TEUpdate(&low, plain);
    EXPECT_EQ(TextOf(hidden), secret);
    int height = TEGetHeight(1, 1, shown);
    EXPECT_GT(Ink(70, height), 30);
    EXPECT_EQ(Differing(20, 70, height), 0);
    EXPECT_GT(Differing(20, 120, height), 30);
    EXPECT_EQ(TEGetPoint(n, hidden).h, TEGetPoint(n, shown).h);
    EXPECT_EQ(TEGetPoint(n, plain).h, 20 + letters);
    EXPECT_EQ(TextWidth(secret.data(), 0, n), letters) << "password mode left on";
    // Lines break by the stars' widths: the letters fit where they do not.
    for (TEHandle te : {hidden, plain}) {
      (*te)->destRect.right = SInt16(20 + letters + 2);
      TECalText(te);
    }
    EXPECT_EQ((*plain)->nLines, 1);
    EXPECT_GT((*hidden)->nLines, 1);
  }
}

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
