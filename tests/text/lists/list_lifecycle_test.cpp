// Lists made, placed, scrolled and disposed of: the list box USER holds for
// each shape of list, its place over rView, the visible cells as the list
// box scrolls, the 255-list limit, and a footprint that stays flat.
#include <gtest/gtest.h>

#include <string>

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
    EXPECT_EQ((**l).selFlags, SInt8(k.options & 0xFF)) << k.name;
    LDispose(l);
    EXPECT_FALSE(IsWindow(box)) << k.name;
  }
}

TEST_F(ListTest, ListBoxStandsOverTheViewAndFollowsItsSize) {
  ListHandle l = MakeList(1, 30, Rect{20, 30, 120, 230}, false, false, Point{20, 200});
  HWND box = KWE_GetHWNDFromListHandle(l);
  RECT outer;
  GetWindowRect(box, &outer);
  MapWindowPoints(nullptr, GetParent(box), reinterpret_cast<POINT*>(&outer), 2);
  EXPECT_EQ(outer.left, 29);
  EXPECT_EQ(outer.top, 19);
  EXPECT_EQ(outer.right, 231);
  // Without LBS_NOINTEGRALHEIGHT the list box drops a partial item.
  EXPECT_LE(outer.bottom, 121);
  EXPECT_GT(outer.bottom, 121 - 20);
  LSize(150, 60, l);
  EXPECT_EQ((**l).rView.right, 180);
  EXPECT_EQ((**l).rView.bottom, 80);
  GetWindowRect(box, &outer);
  EXPECT_EQ(outer.right - outer.left, 152);
  EXPECT_EQ((**l).visible.bottom, 3);
  // The user (or the application through Windows) sizes the list box.
  RECT client;
  SetWindowPos(box, nullptr, 0, 0, 182, 102, SWP_NOMOVE | SWP_NOZORDER);
  GetClientRect(box, &client);
  EXPECT_EQ((**l).rView.right - (**l).rView.left, client.right);
  EXPECT_EQ((**l).rView.bottom - (**l).rView.top, client.bottom);
  LSize(0, 40, l);  // no size: the view stays
  EXPECT_EQ((**l).rView.right - (**l).rView.left, client.right);
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

TEST_F(ListTest, FootprintStaysFlatOverAThousandLists) {
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
  for (int i = 0; i < 1000; ++i) cycle(i);
  EXPECT_EQ(Now(), before);
}

}  // namespace
