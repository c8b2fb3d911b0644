// Cells, rows and columns: what LGetCell answers and what the list box
// shows, against a model kept beside, after every step of seeded edit
// scripts; the bad input a careless caller gives; and selection, by
// LSetSelect and by the user's clicks posted to the list box, read back
// through LClick and the list box's own selection.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "Memory.h"
#include "text/lists/lists_fixture.h"

namespace {

using namespace kwe_test;
using Ints = std::vector<int>;

// The list's cells as the model sees them: model[h][v], its text and whether
// it is selected.
struct Item {
  std::string text;
  bool selected = false;
};
using Model = std::vector<std::vector<Item>>;

std::string Check(ListHandle l, const Model& model, bool grid) {
  HWND box = KWE_GetHWNDFromListHandle(l);
  int columns = int(model.size()), rows = columns ? int(model[0].size()) : 0;
  const ListRec& r = **l;
  if (r.dataBounds.right != columns || r.dataBounds.bottom != rows) return "dataBounds";
  if (r.maxIndex != columns * rows - 1) return "maxIndex";
  int items = int(SendMessageA(box, LB_GETCOUNT, 0, 0));
  if (items != (grid ? rows : columns * rows)) return "item count " + std::to_string(items);
  std::vector<std::string> texts = grid ? std::vector<std::string>() : Items(box);
  Ints selected;
  for (int h = 0; h < columns; ++h)
    for (int v = 0; v < rows; ++v) {
      const Item& m = model[size_t(h)][size_t(v)];
      std::string where = " at " + std::to_string(h) + "," + std::to_string(v);
      if (CellText(l, At(h, v)) != m.text) return "cell" + where;
      if (!grid && texts[size_t(h * rows + v)] != m.text) return "item" + where;
      if (m.selected) selected.push_back(h * rows + v);
    }
  if (SelectedCells(l) != selected)
    return "selected cells " + ::testing::PrintToString(SelectedCells(l)) + " against " +
           ::testing::PrintToString(selected);
  if (!grid && SelectedItems(box) != selected) return "selected items";
  return "";
}

std::string Word(std::mt19937& rng) {
  std::string s(rng() % 12, ' ');
  for (char& ch : s) ch = char('a' + rng() % 26);
  return s;
}

// Edit scripts over a list: set, append, clear, add and delete rows (and
// columns for the grid), select and deselect cells (lOnlyOne keeps one), and
// deactivate, which hides a multiple selection until LActivate brings it back;
// after each step, search for a cell's text from a cell on.
void Sweep(ListTest* t, ListHandle l, Model model, bool grid, bool onlyOne, unsigned seed) {
  std::mt19937 rng(seed);
  HWND box = KWE_GetHWNDFromListHandle(l);
  for (int step = 0; step < 60; ++step) {
    int columns = int(model.size()), rows = int(model[0].size());
    int op = int(rng() % (grid ? 9 : 7));
    int h = columns ? int(rng() % unsigned(columns)) : 0;
    int v = int(rng() % unsigned(rows + 1));
    std::string w = Word(rng);
    SCOPED_TRACE(::testing::Message() << "seed " << seed << " step " << step << " op " << op);
    if (op == 0 && v < rows) {
      t->SetCell(l, At(h, v), w);
      model[size_t(h)][size_t(v)].text = w;
    } else if (op == 1 && v < rows) {
      LAddToCell(w.data(), SInt16(w.size()), At(h, v), l);
      model[size_t(h)][size_t(v)].text += w;
    } else if (op == 2 && v < rows) {
      LClrCell(At(h, v), l);
      model[size_t(h)][size_t(v)].text.clear();
    } else if (op == 3) {
      int n = 1 + int(rng() % 3);
      EXPECT_EQ(LAddRow(SInt16(n), SInt16(v), l), v);
      for (auto& column : model) column.insert(column.begin() + v, size_t(n), Item{});
    } else if (op == 4 && v < rows && rows > 1) {
      int n = std::min(1 + int(rng() % 2), rows - v - (v == 0 ? 1 : 0));
      if (n <= 0) continue;
      LDelRow(SInt16(n), SInt16(v), l);
      for (auto& column : model) column.erase(column.begin() + v, column.begin() + v + n);
    } else if (op == 5 && v < rows) {
      bool on = rng() % 3 != 0;
      LSetSelect(on, At(h, v), l);
      for (auto& column : model)
        for (Item& m : column) m.selected &= !(on && onlyOne);
      model[size_t(h)][size_t(v)].selected = on;
    } else if (op == 6) {
      LActivate(false, l);
      EXPECT_FALSE(IsWindowEnabled(box));
      if (!grid && !onlyOne) {
        EXPECT_EQ(SelectedItems(box), Ints{});
      }
      LActivate(true, l);
      EXPECT_TRUE(IsWindowEnabled(box));
    } else if (op == 7 && columns < 5) {
      int at = int(rng() % unsigned(columns + 1));
      EXPECT_EQ(LAddColumn(1, SInt16(at), l), at);
      model.insert(model.begin() + at, std::vector<Item>(size_t(rows)));
    } else if (op == 8 && columns > 2) {
      LDelColumn(1, SInt16(h), l);
      model.erase(model.begin() + h);
    }
    ASSERT_EQ(Check(l, model, grid), "");
    // LSearch from a cell on, in cell order (column by column), finds the
    // first cell whose text equals a cell's text (or that text less its last
    // letter) in capitals: the comparison ignores case and takes no prefix.
    columns = int(model.size());
    rows = int(model[0].size());
    std::string key = model[size_t(h % columns)][size_t(v % rows)].text;
    if (rng() % 2 && !key.empty()) key.pop_back();
    if (key.empty()) continue;
    int from = int(rng() % unsigned(rows * columns)), found = -1;
    for (int i = from; i < rows * columns && found < 0; ++i)
      if (model[size_t(i / rows)][size_t(i % rows)].text == key) found = i;
    for (char& ch : key) ch = char(std::toupper(ch));
    Cell c = At(from / rows, from % rows);
    bool searched = LSearch(key.data(), SInt16(key.size()), nullptr, &c, l);
    ASSERT_EQ(searched ? c.h * rows + c.v : -1, found) << key << " from " << from;
  }
}

// Seeds 1-4: a text list of one column; 5-8: three columns in one list box
// that holds every cell; 9-12: a grid. Odd seeds ask for lOnlyOne; a grid,
// one list box item a row, keeps one selected cell whatever the flags.
TEST_F(ListTest, CellsMatchItemsThroughEditScripts) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    bool grid = seed > 8, onlyOne = grid || seed % 2;
    int columns = seed <= 4 ? 1 : 3, rows = grid ? 4 : 5;
    KWE_LSetSelFlags(UInt16((seed > 4 && !grid ? 0x0400 : 0) | (onlyOne ? 0x0082 : 0x0002)));
    ListHandle l = MakeList(columns, rows);
    ASSERT_NE(l, nullptr);
    Sweep(this, l, Model(size_t(columns), std::vector<Item>(size_t(rows))), grid, onlyOne, seed);
    LDispose(l);
  }
}

// Cells are numbered column by column (in 2 x 3, (1, 2) is index 5) and
// LNextCell walks them row by row; calls outside dataBounds, null data,
// negative lengths and a null list change nothing and read back nothing.
TEST_F(ListTest, CellNumberingAndBadCellCalls) {
  ListHandle l = MakeList(2, 3);
  SetCell(l, At(1, 2), "last");
  SetCell(l, At(0, 1), "kept");
  SInt16 offset = 0, length = 0;
  LGetCellDataLocation(&offset, &length, At(1, 2), l);
  EXPECT_EQ(std::string(*(**l).cells + offset, size_t(length)), "last");
  Cell c = At(0, 0);
  std::string order;
  do order += std::to_string(c.h) + std::to_string(c.v) + " ";
  while (LNextCell(true, true, &c, l));
  EXPECT_EQ(order, "00 10 01 11 02 12 ");
  std::vector<std::string> before = Items(KWE_GetHWNDFromListHandle(l));
  for (Cell bad : {At(0, 3), At(2, 0), At(0, -1), At(-1, 0)}) {
    LSetCell("x", 1, bad, l);
    LAddToCell("x", 1, bad, l);
    LClrCell(bad, l);
    EXPECT_EQ(CellText(l, bad), "") << bad.h << "," << bad.v;
    LGetCellDataLocation(&offset, &length, bad, l);
    EXPECT_EQ(offset + length, 0) << bad.h << "," << bad.v;
  }
  LSetCell("x", -1, At(0, 1), l);
  LSetCell(nullptr, 1, At(0, 1), l);
  LSetCell("x", 1, At(0, 1), nullptr);
  EXPECT_EQ(Items(KWE_GetHWNDFromListHandle(l)), before);
  char buffer[8] = "zzzzzzz";
  for (SInt16 asked : {0, -3, 2}) {
    length = asked;
    LGetCell(buffer, &length, At(0, 1), l);
    EXPECT_EQ(std::string(buffer, size_t(std::max<SInt16>(length, 0))), asked > 0 ? "ke" : "");
  }
  LDelRow(1, 7, l);
  LDelColumn(1, 3, l);
  EXPECT_EQ((**l).dataBounds.bottom, 3);
  EXPECT_EQ((**l).dataBounds.right, 2);
  EXPECT_EQ(LAddRow(0, 0, l), 0);
  LDispose(nullptr);
}

TEST_F(ListTest, CellDataNeverPasses32767Bytes) {
  ListHandle l = MakeList(1, 4);
  SetCell(l, At(0, 0), std::string(30000, 'a'));
  SetCell(l, At(0, 1), "small");
  const Size full = 4 * 2 + 30000 + 5;
  std::string more(2800, 'b');  // would make 32813 bytes
  SetCell(l, At(0, 2), more);
  LAddToCell(more.data(), SInt16(more.size()), At(0, 1), l);
  EXPECT_EQ(CellText(l, At(0, 2)), "");
  EXPECT_EQ(CellText(l, At(0, 1)), "small");
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>((**l).cells)), full);
  std::string fits(size_t(32767 - full), 'c');
  SetCell(l, At(0, 3), fits);
  SInt16 offset = 0, length = 0;
  LGetCellDataLocation(&offset, &length, At(0, 3), l);
  EXPECT_EQ(length, SInt16(fits.size()));
  LAddRow(1, 2, l);  // a row's two bytes no longer fit either
  EXPECT_EQ((**l).dataBounds.bottom, 4);
}

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

}  // namespace
