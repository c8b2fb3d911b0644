// The List Manager through the DLL: the list box USER holds for each shape
// of list, its place, scrolling and drawing read back as pixels (in a
// dialog too), the 255-list limit and a flat footprint; cells against a
// model through seeded edit scripts, bad cell calls, and selection by
// LSetSelect and by the user's clicks posted to the list box.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "KWELists.h"
#include "Lists.h"
#include "Memory.h"
#include "Resources.h"
#include "dialogs/dialogs_fixture.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline Cell At(int h, int v) { return Cell{SInt16(v), SInt16(h)}; }

// LGetCell's answer as a string.
inline std::string CellText(ListHandle l, Cell c) {
  char text[512];
  SInt16 length = sizeof text;
  LGetCell(text, &length, c, l);
  return std::string(text, size_t(length));
}

// The list box's items as LB_GETTEXT reads them.
inline std::vector<std::string> Items(HWND box) {
  std::vector<std::string> items;
  for (int i = 0, n = int(SendMessageA(box, LB_GETCOUNT, 0, 0)); i < n; ++i) {
    char text[512] = "";
    SendMessageA(box, LB_GETTEXT, WPARAM(i), reinterpret_cast<LPARAM>(text));
    items.push_back(text);
  }
  return items;
}

// The selected items as LB_GETSEL reads them.
inline std::vector<int> SelectedItems(HWND box) {
  std::vector<int> items;
  for (int i = 0, n = int(SendMessageA(box, LB_GETCOUNT, 0, 0)); i < n; ++i)
    if (SendMessageA(box, LB_GETSEL, WPARAM(i), 0) > 0) items.push_back(i);
  return items;
}

// The selected cells as LGetSelect's search from a cell on (the cell itself
// included, column by column) finds them, in index order; {-1} when the
// search goes back, {-2} when it stops on a cell whose own bit is clear.
inline std::vector<int> SelectedCells(ListHandle l) {
  std::vector<int> cells;
  const Rect& b = (**l).dataBounds;
  int rows = b.bottom - b.top;
  for (Cell c = At(b.left, b.top); LGetSelect(true, &c, l);) {
    int index = (c.h - b.left) * rows + (c.v - b.top);
    if (!cells.empty() && index <= cells.back()) return {-1};
    Cell self = c;
    if (!LGetSelect(false, &self, l)) return {-2};
    cells.push_back(index);
    if (++c.v >= b.bottom) c = At(c.h + 1, b.top);
    if (c.h >= b.right) break;
  }
  return cells;
}

class ListTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    window = WindowTest::Make(documentProc, Rect{40, 40, 340, 440});
    SetPort(window);
    Drain();
  }
  ListHandle MakeList(int columns, int rows, Rect view = Rect{20, 20, 180, 220},
                      bool scrollVert = true, bool scrollHoriz = false, Point cellSize = {}) {
    Rect bounds{0, 0, SInt16(rows), SInt16(columns)};
    return LNew(&view, &bounds, cellSize, 0, window, true, false, scrollHoriz, scrollVert);
  }

 public:
  void SetCell(ListHandle l, Cell c, const std::string& text) {
    LSetCell(text.data(), SInt16(text.size()), c, l);
  }

 protected:
  // The user's click at the centre of list-box item (posted), as the
  // application's loop meets it: the next mouseDown, then LClick with its
  // point and modifiers. The answer of LClick.
  bool Click(ListHandle l, int item, WPARAM keys = 0, int x = -1, bool twice = false) {
    HWND box = KWE_GetHWNDFromListHandle(l);
    RECT r{};
    SendMessageA(box, LB_GETITEMRECT, WPARAM(item), reinterpret_cast<LPARAM>(&r));
    LPARAM at = MAKELPARAM(x < 0 ? (r.left + r.right) / 2 : x, (r.top + r.bottom) / 2);
    for (int press = 0; press < (twice ? 2 : 1); ++press) {
      PostMessageA(box, press ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
      PostMessageA(box, WM_LBUTTONUP, keys, at);
    }
    bool answer = false;
    for (int clicks = twice ? 2 : 1; clicks > 0; --clicks) {
      EventRecord e;
      if (!NextMouseDown(&e)) return false;
      Point local = e.where;
      GlobalToLocal(&local);
      answer = LClick(local, e.modifiers, l);
    }
    return answer;
  }

  WindowPtr window = nullptr;
};

namespace {

TEST_F(ListTest, EachShapeOfListGetsItsListBox) {
  // Every list keeps the scroll bars it has, disabled while everything fits.
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
    EXPECT_TRUE(style & LBS_DISABLENOSCROLL) << k.name;
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    GetScrollBarInfo(box, OBJID_VSCROLL, &bar);
    EXPECT_EQ(!(bar.rgstate[0] & STATE_SYSTEM_INVISIBLE), k.vBar) << k.name;
    EXPECT_EQ((bar.rgstate[0] & STATE_SYSTEM_UNAVAILABLE) != 0, k.vBar) << k.name;
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
  EXPECT_TRUE(red(Pixel(box, 80, 10)));
  EXPECT_TRUE(red(Pixel(box, 5, 30)));
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
  EXPECT_EQ(Pixel(box, 45, row.bottom - 2), GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(Pixel(box, 95, row.bottom - 2), GetSysColor(COLOR_WINDOW));
}

}  // namespace
}  // namespace kwe_test
