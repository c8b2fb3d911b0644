// What a list shows, read back as pixels from its list box: a grid's columns
// scrolled sideways by whole cells, an kLdef that draws inside the list box
// only, and a deactivated list in a dialog dimmed by LUpdate.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Resources.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"
#include "text/lists/lists_fixture.h"

namespace {

using namespace kwe_test;

COLORREF BoxPixel(HWND box, int x, int y) {
  HDC dc = GetDC(box);
  COLORREF c = GetPixel(dc, x, y);
  ReleaseDC(box, dc);
  return c;
}

// Pixels of the list box's client rectangle r that are not white, counted
// apart for the two checkerboard parities.
std::pair<int, int> InkByParity(HWND box, const RECT& r) {
  std::pair<int, int> ink{0, 0};
  HDC dc = GetDC(box);
  for (int y = r.top; y < r.bottom; ++y)
    for (int x = r.left; x < r.right; ++x)
      if ((GetPixel(dc, x, y) & 0xFFFFFF) != 0xFFFFFF) ((x + y) % 2 ? ink.second : ink.first)++;
  ReleaseDC(box, dc);
  return ink;
}

TEST_F(ListTest, GridScrollsSidewaysByWholeColumns) {
  // Eight columns of 100 pixels in a view three wide; column h holds h + 1
  // capitals, so each column has an ink count of its own wherever it shows.
  ListHandle l = MakeList(8, 4, Rect{20, 20, 100, 320}, false, true, Point{20, 100});
  ASSERT_NE(l, nullptr);
  for (int h = 0; h < 8; ++h) SetCell(l, At(h, 0), std::string(size_t(h + 1), 'H'));
  HWND box = KWE_GetHWNDFromListHandle(l);
  std::map<int, int> inkOf;
  struct Step {
    int code, thumb, left;
  } steps[] = {{SB_LINERIGHT, 0, 1}, {SB_PAGERIGHT, 0, 3},  {SB_PAGERIGHT, 0, 5},
               {SB_LINERIGHT, 0, 5}, {SB_THUMBTRACK, 2, 2}, {SB_PAGELEFT, 0, 0},
               {SB_LINELEFT, 0, 0},  {SB_ENDSCROLL, 0, 0},  {SB_THUMBPOSITION, 7, 7}};
  for (const Step& s : steps) {
    SendMessageA(box, WM_HSCROLL, MAKEWPARAM(s.code, s.thumb), 0);
    UpdateWindow(box);
    SCOPED_TRACE("code " + std::to_string(s.code) + " thumb " + std::to_string(s.thumb));
    EXPECT_EQ((**l).visible.left, s.left);
    EXPECT_EQ((**l).visible.right, std::min(s.left + 3, 8));
    EXPECT_EQ(GetScrollPos(box, SB_HORZ), s.left);
    for (int h = (**l).visible.left; h < (**l).visible.right; ++h) {
      int slot = h - (**l).visible.left;
      // Inside the slot's edges, which the list box's focus rectangle dots.
      auto ink = InkByParity(box, RECT{slot * 100 + 2, 1, slot * 100 + 98, 19});
      int count = ink.first + ink.second;
      if (inkOf.count(h)) {
        EXPECT_EQ(count, inkOf[h]) << "column " << h << " in slot " << slot;
      } else {
        inkOf[h] = count;
      }
      if (inkOf.count(h - 1)) {
        EXPECT_GT(count, inkOf[h - 1]) << "column " << h;
      }
    }
  }
}

constexpr ResType kLdef = 0x4C444546;  // 'LDEF'

// Paints its cell red, and 6 pixels beyond it on every side.
void KWE_CALL SpillingDefinition(SInt16 message, Boolean, Rect* r, Cell, SInt16, SInt16,
                                 ListHandle) {
  if (message != lDrawMsg || !r) return;
  RGBColor red{0xFFFF, 0, 0};
  RGBForeColor(&red);
  Rect spill = *r;
  InsetRect(&spill, -6, -6);
  PaintRect(&spill);
  ForeColor(blackColor);
}

TEST_F(ListTest, AnLDEFDrawsIntoTheListBoxOnly) {
  KWE_CodeResource(1, kLdef, 300, reinterpret_cast<ProcPtr>(SpillingDefinition));
  Rect view{30, 30, 90, 200}, bounds{0, 0, 3, 1};
  ListHandle l = LNew(&view, &bounds, Point{20, 170}, 300, window, true, false, false, false);
  ASSERT_NE(l, nullptr);
  HWND box = KWE_GetHWNDFromListHandle(l);
  InvalidateRect(box, nullptr, TRUE);
  UpdateWindow(box);
  // Red as the port has it: the window's port may take the nearest of the
  // eight QuickDraw colours.
  auto red = [](COLORREF c) {
    return GetRValue(c) > 0xC0 && GetGValue(c) < 0x40 && GetBValue(c) < 0x40;
  };
  EXPECT_TRUE(red(BoxPixel(box, 80, 10)));
  EXPECT_TRUE(red(BoxPixel(box, 5, 30)));
  EXPECT_FALSE(red(Pixel(window, 24, 50))) << "left of the list box";
  EXPECT_FALSE(red(Pixel(window, 100, 25))) << "above the list box";
  LDispose(l);
  KWE_CodeResource(0, kLdef, 300, nullptr);
}

class ListInDialog : public DialogTest {};

TEST_F(ListInDialog, UpdateDimsAnInactiveList) {
  Resources(DialogTemplate(310, 60, 60, 220, 300, 310) +
            ItemList(310, {{120, 140, 140, 220, 4, "OK"}, {10, 10, 110, 210, 0, ""}}));
  DialogPtr d = GetNewDialog(310, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  SetPort(d);
  Rect view{11, 11, 109, 193}, bounds{0, 0, 4, 1};
  ListHandle l = LNew(&view, &bounds, Point{0, 0}, 0, d, true, false, false, true);
  ASSERT_NE(l, nullptr);
  for (int v = 0; v < 4; ++v) LSetCell("WWWWWWWWWW", 10, Cell{SInt16(v), 0}, l);
  HWND box = KWE_GetHWNDFromListHandle(l);
  RECT cells{2, 2, 80, 60};
  LUpdate(nullptr, l);
  auto active = InkByParity(box, cells);
  EXPECT_GT(active.first, 20);
  EXPECT_GT(active.second, 20);
  LActivate(false, l);
  LUpdate(nullptr, l);
  auto dimmed = InkByParity(box, cells);
  EXPECT_TRUE((dimmed.first == 0) != (dimmed.second == 0))
      << "one checkerboard parity cleared, the other kept: " << dimmed.first << " and "
      << dimmed.second;
  LActivate(true, l);
  LUpdate(nullptr, l);
  auto again = InkByParity(box, cells);
  EXPECT_GT(again.first, 20);
  EXPECT_GT(again.second, 20);
  LDispose(l);
  DisposeDialog(d);
}

}  // namespace
