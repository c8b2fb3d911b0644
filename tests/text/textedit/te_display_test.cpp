// What a library-drawn record shows in its window, read back from the
// window's pixels: updates stay inside their rectangle, the highlight and
// the caret invert, scrolling moves the text, clicks select what is under
// them, and points and offsets map onto each other.
#include <gtest/gtest.h>

#include "OSUtils.h"
#include "text/textedit/textedit_fixture.h"

namespace kwe_test {
namespace {

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

// Macintosh Roman text reaches Windows through the library's character-set
// conversion: "cafe naive" with their accents in a library-drawn record shows the
// very pixels the port draws for its ANSI bytes with the conversion off, and
// a bound record hands its control the ANSI bytes and reads typed ones back
// as Macintosh characters.
TEST_F(Display, AccentedTextCrossesIntoAnsi) {
  const std::string mac = "caf\x8E na\x95ve", ansi = "caf\xE9 na\xEFve";
  Rect view{20, 20, 60, 220};
  TEHandle te = Record(view);
  SetText(te, mac);
  TEUpdate(&view, te);
  Rect band{100, 20, 140, 220};
  EraseRect(&band);
  MoveTo(20, SInt16(100 + (*te)->fontAscent));
  constexpr SInt16 kTranslation = 24;
  SInt32 was = KWE_SystemValue(1, kTranslation, 0);
  DrawText(ansi.data(), 0, SInt16(ansi.size()));
  KWE_SystemValue(1, kTranslation, was);
  EXPECT_GT(Ink(100, (*te)->lineHeight), 30);
  EXPECT_EQ(Differing(20, 100, (*te)->lineHeight), 0);
  TEHandle bound = Bound({150, 20, 176, 220}, ES_AUTOHSCROLL);
  SetText(bound, mac);
  EXPECT_EQ(RawText(edit), ansi);
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

}  // namespace
}  // namespace kwe_test
