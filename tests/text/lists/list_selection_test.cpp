// Selection: LSetSelect against the list box's selection, and the user's
// clicks (posted to the list box, as Windows delivers them) read back by
// LClick with the modifier rules and the double-click answer.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/lists/lists_fixture.h"

namespace {

using namespace kwe_test;
using Ints = std::vector<int>;

class ListSelectionTest : public ListTest {
 protected:
  ListHandle Filled(int rows, UInt16 options, int empty = -1) {
    KWE_LSetSelFlags(options);
    ListHandle l = MakeList(1, rows);
    for (int v = 0; v < rows; ++v)
      if (v != empty) SetCell(l, At(0, v), "row " + std::to_string(v));
    return l;
  }
};

TEST_F(ListSelectionTest, SetSelectShowsInTheListBox) {
  struct {
    UInt16 options;
    std::vector<std::pair<int, bool>> steps;
    Ints cells, items;
  } cases[] = {
      // Multiple selection: each cell on its own.
      {0x0000, {{1, true}, {3, true}, {1, false}, {4, true}}, {3, 4}, {3, 4}},
      // lOnlyOne: a new selection moves the old one.
      {0x0080, {{1, true}, {3, true}}, {3}, {3}},
      {0x0080, {{2, true}, {2, false}}, {}, {}},
  };
  for (const auto& k : cases) {
    ListHandle l = Filled(5, k.options);
    for (auto [v, on] : k.steps) LSetSelect(on, At(0, v), l);
    EXPECT_EQ(SelectedCells(l), k.cells) << k.options;
    EXPECT_EQ(SelectedItems(KWE_GetHWNDFromListHandle(l)), k.items) << k.options;
    // New texts replace the items and keep their selection.
    for (int v = 0; v < 5; ++v) SetCell(l, At(0, v), "renamed " + std::to_string(v));
    EXPECT_EQ(SelectedItems(KWE_GetHWNDFromListHandle(l)), k.items) << k.options << " renamed";
    LDispose(l);
  }
}

// Each case clicks the items of a six-row list in turn; LClick answers
// whether the last click was the second of a double click.
TEST_F(ListSelectionTest, ClicksSelectByTheModifierRules) {
  struct Click {
    int item;
    WPARAM keys;
    bool twice;
  };
  struct {
    UInt16 options;
    int empty;  // the row left without text
    std::vector<Click> clicks;
    Ints cells;
    int lastClick;
    bool answer;
  } cases[] = {
      {0x0080, -1, {{1, 0, false}, {3, 0, false}}, {3}, 3, false},
      {0x0080, -1, {{2, 0, false}, {2, MK_SHIFT, false}}, {2}, 2, false},
      {0x0000, -1, {{1, 0, false}, {3, MK_SHIFT, false}}, {1, 2, 3}, 1, false},
      {0x0000, -1, {{1, 0, false}, {3, MK_CONTROL, false}}, {1, 3}, 1, false},
      {0x0000, -1, {{1, 0, false}, {3, MK_CONTROL, false}, {1, MK_CONTROL, false}}, {3}, 3, false},
      {0x0000, -1, {{4, 0, false}, {2, 0, false}}, {2}, 2, false},
      // lNoNilHilite: a click on the empty cell keeps the previous selection.
      {0x0082, 3, {{1, 0, false}, {3, 0, false}}, {1}, 1, false},
      {0x0002, 3, {{1, 0, false}, {3, 0, false}}, {1}, 1, false},
      {0x0080, 3, {{3, 0, false}}, {3}, 3, false},
      {0x0080, -1, {{2, 0, false}, {1, 0, true}}, {1}, 1, true},
      {0x0080, -1, {{1, 0, true}, {1, 0, false}}, {1}, 1, false},
  };
  for (const auto& k : cases) {
    ListHandle l = Filled(6, k.options, k.empty);
    std::string trail;
    bool answer = false;
    for (const Click& c : k.clicks) {
      trail += " " + std::to_string(c.item) + "/" + std::to_string(c.keys);
      answer = ListTest::Click(l, c.item, c.keys, -1, c.twice);
    }
    EXPECT_EQ(answer, k.answer) << k.options << trail;
    EXPECT_EQ(SelectedCells(l), k.cells) << k.options << trail;
    if (k.empty < 0 || (k.options & 0x0002)) {
      EXPECT_EQ(SelectedItems(KWE_GetHWNDFromListHandle(l)), k.cells) << k.options << trail;
    }
    EXPECT_EQ(LLastClick(l), k.lastClick) << k.options << trail;
    LDispose(l);
  }
}

TEST_F(ListSelectionTest, GridClickSelectsTheCellUnderThePoint) {
  ListHandle l = MakeList(4, 3, Rect{20, 20, 120, 220});
  for (int h = 0; h < 4; ++h)
    for (int v = 0; v < 3; ++v) SetCell(l, At(h, v), std::to_string(h) + std::to_string(v));
  ASSERT_EQ((**l).cellSize.h, 50);
  Click(l, 1, 0, 2 * 50 + 10);
  EXPECT_EQ(SelectedCells(l), Ints{2 * 3 + 1});
  Click(l, 2, 0, 10);
  EXPECT_EQ(SelectedCells(l), Ints{2});
  EXPECT_EQ(LLastClick(l), 2);
  // The grid draws the selected cell in the highlight colour, the others
  // in the window's.
  HWND box = KWE_GetHWNDFromListHandle(l);
  UpdateWindow(box);
  RECT row;
  SendMessageA(box, LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row));
  HDC dc = GetDC(box);
  EXPECT_EQ(GetPixel(dc, 45, row.bottom - 2), GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(GetPixel(dc, 95, row.bottom - 2), GetSysColor(COLOR_WINDOW));
  ReleaseDC(box, dc);
}

TEST_F(ListSelectionTest, DeactivationHidesTheSelectionAndActivationRestoresIt) {
  ListHandle l = Filled(5, 0x0000);
  LSetSelect(true, At(0, 1), l);
  LSetSelect(true, At(0, 4), l);
  HWND box = KWE_GetHWNDFromListHandle(l);
  LActivate(false, l);
  EXPECT_EQ((**l).lActive, 0);
  EXPECT_FALSE(IsWindowEnabled(box));
  EXPECT_EQ(SelectedItems(box), Ints{});
  EXPECT_EQ(SelectedCells(l), (Ints{1, 4}));
  LActivate(true, l);
  EXPECT_TRUE(IsWindowEnabled(box));
  EXPECT_EQ(SelectedItems(box), (Ints{1, 4}));
}

}  // namespace
