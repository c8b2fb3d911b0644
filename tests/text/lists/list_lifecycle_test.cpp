// Lists made, placed, scrolled, drawn and disposed of: the list box USER
// holds for each shape of list, its place over rView, the visible cells as
// the list box scrolls, what it shows read back as pixels (a grid scrolled
// sideways by whole cells, an 'LDEF' kept inside the list box, an inactive
// list in a dialog dimmed by LUpdate), the 255-list limit, and a footprint
// that stays flat.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "Resources.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"
#include "text/lists/lists_fixture.h"

namespace {

using namespace kwe_test;

TEST_F(ListTest, EachShapeOfListGetsItsListBox) {
  // Every list keeps the scroll bars it has, disabled while everything fits,
  // on every Windows since 3.0.
  const bool keepsBars = (GetVersion() & 0xFFFF) > 3;
  const LONG kinds = LBS_OWNERDRAWFIXED | LBS_MULTICOLUMN | LBS_EXTENDEDSEL;
  struct {
    const char* name;
    UInt16 options;
    int columns, rows;
    bool hScroll;
    LONG style;
    int idMark, items;
    bool vBar;
  } cases[] = {
      {"text", 0x0082, 1, 6, false, 0, 0xFF00, 6, true},
      {"text, several selected", 0x0002, 1, 6, false, LBS_EXTENDEDSEL, 0xFF00, 6, true},
      {"grid", 0x0082, 3, 4, false, LBS_OWNERDRAWFIXED, 0xFE00, 4, true},
      {"grid, sideways", 0x0082, 3, 4, true, LBS_OWNERDRAWFIXED, 0xFE00, 4, true},
      {"no grid", 0x0482, 3, 4, false, LBS_MULTICOLUMN, 0xFF00, 12, false},
      {"one row", 0x0082, 3, 1, false, LBS_MULTICOLUMN, 0xFF00, 3, false},
      {"several columns", 0x0882, 1, 5, false, LBS_MULTICOLUMN, 0xFF00, 5, false},
      {"text, sideways", 0x0082, 1, 5, true, LBS_MULTICOLUMN, 0xFF00, 5, false},
  };
  for (const auto& k : cases) {
    KWE_LSetSelFlags(k.options);
    ListHandle l = MakeList(k.columns, k.rows, Rect{20, 20, 180, 220}, true, k.hScroll);
    ASSERT_NE(l, nullptr) << k.name;
    HWND box = KWE_GetHWNDFromListHandle(l);
    LONG style = GetWindowLongA(box, GWL_STYLE);
    EXPECT_EQ(GetParent(box), KWE_GethWnd(window)) << k.name;
    EXPECT_EQ(style & kinds, k.style) << k.name;
    EXPECT_EQ((style & LBS_DISABLENOSCROLL) != 0, keepsBars) << k.name;
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    GetScrollBarInfo(box, OBJID_VSCROLL, &bar);
    EXPECT_EQ(!(bar.rgstate[0] & STATE_SYSTEM_INVISIBLE), k.vBar && keepsBars) << k.name;
    EXPECT_EQ((bar.rgstate[0] & STATE_SYSTEM_UNAVAILABLE) != 0, k.vBar && keepsBars) << k.name;
    EXPECT_EQ(GetDlgCtrlID(box), k.idMark | (**l).lReserved) << k.name;
    EXPECT_EQ(SendMessageA(box, LB_GETCOUNT, 0, 0), k.items) << k.name;
    LDispose(l);
    EXPECT_FALSE(IsWindow(box)) << k.name;
  }
}

// The list box stands over rView (its frame just outside) and keeps whole
// items only; LSize sizes it, and a list box the user sizes sizes rView.
TEST_F(ListTest, ListBoxStandsOverTheViewAndFollowsItsSize) {
  ListHandle l = MakeList(1, 30, Rect{20, 30, 120, 230}, false, false, Point{20, 200});
  HWND box = KWE_GetHWNDFromListHandle(l);
  RECT outer, client;
  GetWindowRect(box, &outer);
  MapWindowPoints(nullptr, GetParent(box), reinterpret_cast<POINT*>(&outer), 2);
  EXPECT_EQ(outer.left, 29);
  EXPECT_EQ(outer.top, 19);
  EXPECT_EQ(outer.right, 231);
  EXPECT_GT(outer.bottom, 121 - 20);
  EXPECT_LE(outer.bottom, 121);
  LSize(150, 60, l);
  GetWindowRect(box, &outer);
  EXPECT_EQ(outer.right - outer.left, 152);
  EXPECT_EQ((**l).visible.bottom, 3);
  SetWindowPos(box, nullptr, 0, 0, 182, 102, SWP_NOMOVE | SWP_NOZORDER);
  GetClientRect(box, &client);
  for (int sized : {0, 1}) {
    EXPECT_EQ((**l).rView.right - (**l).rView.left, client.right) << sized;
    EXPECT_EQ((**l).rView.bottom - (**l).rView.top, client.bottom) << sized;
    LSize(0, 40, l);  // no size: the view stays
  }
}

TEST_F(ListTest, ScrollingMovesTheTopItemAndTheVisibleCells) {
  // 110 pixels of 20-pixel rows: five whole rows and half of a sixth.
  ListHandle l = MakeList(1, 40, Rect{20, 20, 130, 220}, true, false, Point{20, 200});
  HWND box = KWE_GetHWNDFromListHandle(l);
  struct {
    int dRows, top;
  } steps[] = {{3, 3}, {10, 13}, {-5, 8}, {-50, 0}, {100, 39}};
  for (const auto& s : steps) {
    LScroll(0, SInt16(s.dRows), l);
    int top = int(SendMessageA(box, LB_GETTOPINDEX, 0, 0));
    EXPECT_LE(top, s.top) << s.dRows;
    EXPECT_EQ((**l).visible.top, top) << s.dRows;
    EXPECT_EQ((**l).visible.bottom, std::min(top + 6, 40)) << s.dRows;
  }
  LSetSelect(true, At(0, 30), l);
  LScroll(0, -100, l);
  EXPECT_EQ(SendMessageA(box, LB_GETTOPINDEX, 0, 0), 0);
  LAutoScroll(l);  // listFlags ask for none
  EXPECT_EQ(SendMessageA(box, LB_GETTOPINDEX, 0, 0), 0);
  (**l).listFlags = lDoVAutoscroll;
  LAutoScroll(l);
  EXPECT_LE(SendMessageA(box, LB_GETTOPINDEX, 0, 0), 30);
  EXPECT_GE(SendMessageA(box, LB_GETTOPINDEX, 0, 0), 26);
  Rect r;
  LRect(&r, At(0, 30), l);
  RECT item;
  SendMessageA(box, LB_GETITEMRECT, 30, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(r.top, item.top + 20);
  EXPECT_EQ(r.bottom - r.top, 20);
  LRect(&r, At(0, 0), l);
  EXPECT_EQ(r.bottom, 0);
  EXPECT_EQ(r.right, 0);
}

TEST_F(ListTest, DrawingModeHoldsOffTheListBoxPainting) {
  ListHandle l = MakeList(1, 5);
  HWND box = KWE_GetHWNDFromListHandle(l);
  UpdateWindow(box);
  LSetDrawingMode(false, l);
  LSetSelect(true, At(0, 3), l);
  LScroll(0, 1, l);
  SetCell(l, At(0, 2), "quiet");
  SetCell(l, At(0, 3), "chosen");
  EXPECT_FALSE(GetUpdateRect(box, nullptr, FALSE));
  // The list box takes the texts when drawing comes back on, in one pass
  // that keeps the selection and the scroll position.
  EXPECT_EQ(Items(box)[2], "");
  LDoDraw(true, l);
  EXPECT_TRUE(GetUpdateRect(box, nullptr, FALSE));
  EXPECT_EQ(Items(box), (std::vector<std::string>{"", "", "quiet", "chosen", ""}));
  EXPECT_EQ(SelectedItems(box), std::vector<int>{3});
}

TEST_F(ListTest, The256thListIsRefusedWithAMessage) {
  std::vector<ListHandle> lists;
  for (int i = 0; i < 255; ++i) {
    lists.push_back(MakeList(1, 1, Rect{20, 20, 40, 60}, false));
    ASSERT_NE(lists.back(), nullptr) << i;
  }
  // The session's capture answers the message box with OK, as a user does.
  ListHandle refused = MakeList(1, 1);
  EXPECT_EQ(refused, nullptr);
  ASSERT_EQ(capture.MessageBoxes().size(), 1u);
  EXPECT_EQ(capture.MessageBoxes()[0].text, "Too many List Boxes");
  EXPECT_EQ(capture.MessageBoxes()[0].title, "");
  LDispose(lists[100]);
  ListHandle again = MakeList(1, 1);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ((**again).lReserved, 100);
}

// More lists than the table's 255 slots, so a slot left behind shows as a
// refused list; windows, GDI objects and memory come back exactly.
TEST_F(ListTest, FootprintStaysFlatOverThreeHundredLists) {
  auto cycle = [&](int i) {
    KWE_LSetSelFlags(i % 2 ? 0x0082 : 0x0002);
    ListHandle l = MakeList(1 + i % 3, 8, Rect{20, 20, 120, 220}, true, i % 4 == 0);
    ASSERT_NE(l, nullptr) << i;
    SetCell(l, At(0, i % 8), "cycle " + std::to_string(i));
    LAddRow(2, 1, l);
    LSetSelect(true, At(0, 2), l);
    UpdateWindow(KWE_GetHWNDFromListHandle(l));
    LDispose(l);
  };
  for (int i = 0; i < 20; ++i) cycle(i);
  Footprint before = Now();
  for (int i = 0; i < 300; ++i) cycle(i);
  EXPECT_EQ(Now(), before);
}

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
