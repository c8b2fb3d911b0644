// Cells, rows and columns: what LGetCell answers and what the list box
// shows, against a model kept beside, after every step of seeded edit
// scripts; and the bad input a careless caller gives.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "Memory.h"
#include "text/lists/lists_fixture.h"

namespace {

using namespace kwe_test;

// The list's cells as the model sees them: model[h][v].
using Model = std::vector<std::vector<std::string>>;

std::string Check(ListHandle l, const Model& model, bool grid) {
  HWND box = KWE_GetHWNDFromListHandle(l);
  int columns = int(model.size()), rows = columns ? int(model[0].size()) : 0;
  const ListRec& r = **l;
  if (r.dataBounds.right != columns || r.dataBounds.bottom != rows) return "dataBounds";
  if (r.maxIndex != columns * rows - 1) return "maxIndex";
  int items = int(SendMessageA(box, LB_GETCOUNT, 0, 0));
  if (items != (grid ? rows : columns * rows)) return "item count " + std::to_string(items);
  std::vector<std::string> texts = grid ? std::vector<std::string>() : Items(box);
  for (int h = 0; h < columns; ++h)
    for (int v = 0; v < rows; ++v) {
      std::string where = " at " + std::to_string(h) + "," + std::to_string(v);
      if (CellText(l, At(h, v)) != model[size_t(h)][size_t(v)]) return "cell" + where;
      if (!grid && texts[size_t(h * rows + v)] != model[size_t(h)][size_t(v)])
        return "item" + where;
    }
  return "";
}

std::string Word(std::mt19937& rng) {
  std::string s(rng() % 12, ' ');
  for (char& ch : s) ch = char('a' + rng() % 26);
  return s;
}

// Edit scripts over a text list of one column and over a grid: set, append,
// clear, add and delete rows (and columns for the grid).
void Sweep(ListTest* t, ListHandle l, Model model, bool grid, unsigned seed) {
  std::mt19937 rng(seed);
  for (int step = 0; step < 60; ++step) {
    int columns = int(model.size()), rows = int(model[0].size());
    int op = int(rng() % (grid ? 7 : 5));
    int h = columns ? int(rng() % unsigned(columns)) : 0;
    int v = int(rng() % unsigned(rows + 1));
    std::string w = Word(rng);
    if (op == 0 && v < rows) {
      t->SetCell(l, At(h, v), w);
      model[size_t(h)][size_t(v)] = w;
    } else if (op == 1 && v < rows) {
      LAddToCell(w.data(), SInt16(w.size()), At(h, v), l);
      model[size_t(h)][size_t(v)] += w;
    } else if (op == 2 && v < rows) {
      LClrCell(At(h, v), l);
      model[size_t(h)][size_t(v)].clear();
    } else if (op == 3) {
      int n = 1 + int(rng() % 3);
      EXPECT_EQ(LAddRow(SInt16(n), SInt16(v), l), v) << "seed " << seed << " step " << step;
      for (auto& column : model) column.insert(column.begin() + v, size_t(n), "");
    } else if (op == 4 && v < rows && rows > 1) {
      int n = std::min(1 + int(rng() % 2), rows - v - (v == 0 ? 1 : 0));
      if (n <= 0) continue;
      LDelRow(SInt16(n), SInt16(v), l);
      for (auto& column : model) column.erase(column.begin() + v, column.begin() + v + n);
    } else if (op == 5 && columns < 5) {
      int at = int(rng() % unsigned(columns + 1));
      EXPECT_EQ(LAddColumn(1, SInt16(at), l), at) << "seed " << seed << " step " << step;
      model.insert(model.begin() + at, std::vector<std::string>(size_t(rows)));
    } else if (op == 6 && columns > 2) {
      LDelColumn(1, SInt16(h), l);
      model.erase(model.begin() + h);
    }
    ASSERT_EQ(Check(l, model, grid), "") << "seed " << seed << " step " << step << " op " << op;
  }
}

TEST_F(ListTest, TextListCellsMatchItemsThroughEditScripts) {
  // One column, then three columns in one list box that holds every cell.
  for (unsigned seed = 1; seed <= 6; ++seed) {
    int columns = seed <= 3 ? 1 : 3;
    KWE_LSetSelFlags(0x0482);
    ListHandle l = MakeList(columns, 5);
    ASSERT_NE(l, nullptr);
    Sweep(this, l, Model(size_t(columns), std::vector<std::string>(5)), false, seed);
    LDispose(l);
  }
}

TEST_F(ListTest, GridCellsFollowRowsAndColumnsThroughEditScripts) {
  for (unsigned seed = 11; seed <= 14; ++seed) {
    ListHandle l = MakeList(3, 4);
    ASSERT_NE(l, nullptr);
    Sweep(this, l, Model(3, std::vector<std::string>(4)), true, seed);
    LDispose(l);
  }
}

TEST_F(ListTest, CellsAreNumberedColumnByColumn) {
  ListHandle l = MakeList(2, 3);
  SetCell(l, At(1, 2), "last");
  SetCell(l, At(0, 1), "b");
  SInt16 offset = 0, length = 0;
  LGetCellDataLocation(&offset, &length, At(1, 2), l);
  // Index 5: the sixth entry of cellArray, after five cells of which one
  // holds a byte.
  EXPECT_EQ((**l).cellArray[5] & 0x7FFF, offset);
  EXPECT_EQ(offset, 5 * 2 + 2 + 1);
  EXPECT_EQ(length, 4);
  EXPECT_EQ(std::string(*(**l).cells + offset, size_t(length)), "last");
  Cell c = At(0, 0);
  std::vector<std::string> order;
  do order.push_back(std::to_string(c.h) + "," + std::to_string(c.v));
  while (LNextCell(true, true, &c, l));
  EXPECT_EQ(order, (std::vector<std::string>{"0,0", "1,0", "0,1", "1,1", "0,2", "1,2"}));
}

TEST_F(ListTest, SearchFindsTheFirstMatchingCellFromTheGivenOne) {
  ListHandle l = MakeList(1, 6);
  const char* words[] = {"apple", "Pear", "plum", "pear", "fig", "pear"};
  for (int v = 0; v < 6; ++v) SetCell(l, At(0, v), words[v]);
  struct {
    int from;
    const char* key;
    int found;  // -1: none
  } cases[] = {{0, "pear", 1}, {2, "PEAR", 3}, {4, "pear", 5}, {0, "kiwi", -1}, {0, "pea", -1}};
  for (const auto& k : cases) {
    Cell c = At(0, k.from);
    Boolean found = LSearch(k.key, SInt16(strlen(k.key)), nullptr, &c, l);
    EXPECT_EQ(found != 0, k.found >= 0) << k.key << " from " << k.from;
    if (k.found >= 0) {
      EXPECT_EQ(c.v, k.found) << k.key << " from " << k.from;
    }
  }
}

TEST_F(ListTest, BadCellCallsChangeNothing) {
  ListHandle l = MakeList(1, 3);
  SetCell(l, At(0, 1), "kept");
  std::vector<std::string> before = Items(KWE_GetHWNDFromListHandle(l));
  LSetCell("x", 1, At(0, 3), l);   // past dataBounds
  LSetCell("x", 1, At(1, 0), l);   // past the columns
  LSetCell("x", 1, At(0, -1), l);  // before them
  LSetCell("x", -1, At(0, 1), l);  // a negative length
  LSetCell(nullptr, 1, At(0, 1), l);
  LSetCell("x", 1, At(0, 1), nullptr);
  LAddToCell("x", 1, At(0, 9), l);
  LClrCell(At(0, 9), l);
  EXPECT_EQ(Items(KWE_GetHWNDFromListHandle(l)), before);
  EXPECT_EQ(CellText(l, At(0, 1)), "kept");
  char buffer[8] = "zzzzzzz";
  SInt16 length = 0;
  LGetCell(buffer, &length, At(0, 1), l);
  EXPECT_EQ(length, 0);
  length = 2;
  LGetCell(buffer, &length, At(0, 1), l);
  EXPECT_EQ(std::string(buffer, size_t(length)), "ke");
  length = 8;
  LGetCell(buffer, &length, At(0, 7), l);
  EXPECT_EQ(length, 0);
  SInt16 offset = 1;
  LGetCellDataLocation(&offset, &length, At(5, 5), l);
  EXPECT_EQ(offset, 0);
  EXPECT_EQ(length, 0);
  LDelRow(1, 7, l);
  LDelColumn(1, 3, l);
  EXPECT_EQ((**l).dataBounds.bottom, 3);
  EXPECT_EQ(LAddRow(0, 0, l), 0);
  LDispose(nullptr);
}

TEST_F(ListTest, CellDataNeverPasses32767Bytes) {
  ListHandle l = MakeList(1, 4);
  std::string big(30000, 'a');
  SetCell(l, At(0, 0), big);
  SetCell(l, At(0, 1), "small");
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>((**l).cells)), 4 * 2 + 30000 + 5);
  std::string more(2800, 'b');  // would make 32813 bytes
  SetCell(l, At(0, 2), more);
  LAddToCell(more.data(), SInt16(more.size()), At(0, 1), l);
  EXPECT_EQ(CellText(l, At(0, 2)), "");
  EXPECT_EQ(CellText(l, At(0, 1)), "small");
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>((**l).cells)), 4 * 2 + 30000 + 5);
  std::string fits(32767 - (4 * 2 + 30000 + 5), 'c');
  SetCell(l, At(0, 3), fits);
  SInt16 offset = 0, length = 0;
  LGetCellDataLocation(&offset, &length, At(0, 3), l);
  EXPECT_EQ(length, SInt16(fits.size()));
  // A row's two bytes no longer fit either.
  LAddRow(1, 2, l);
  EXPECT_EQ((**l).dataBounds.bottom, 4);
}

}  // namespace
