#include "text/lists/lists_fixture.h"

namespace kwe_test {

std::string CellText(ListHandle l, Cell c) {
  char text[512];
  SInt16 length = sizeof text;
  LGetCell(text, &length, c, l);
  return std::string(text, size_t(length));
}

std::vector<std::string> Items(HWND box) {
  std::vector<std::string> items;
  for (int i = 0, n = int(SendMessageA(box, LB_GETCOUNT, 0, 0)); i < n; ++i) {
    char text[512] = "";
    SendMessageA(box, LB_GETTEXT, WPARAM(i), reinterpret_cast<LPARAM>(text));
    items.push_back(text);
  }
  return items;
}

std::vector<int> SelectedItems(HWND box) {
  std::vector<int> items;
  for (int i = 0, n = int(SendMessageA(box, LB_GETCOUNT, 0, 0)); i < n; ++i)
    if (SendMessageA(box, LB_GETSEL, WPARAM(i), 0) > 0) items.push_back(i);
  return items;
}

std::vector<int> SelectedCells(ListHandle l) {
  std::vector<int> cells;
  const Rect& b = (**l).dataBounds;
  int rows = b.bottom - b.top;
  // LGetSelect's search from a cell on, the cell itself included, column by
  // column; a cell's own bit must agree with where the search stopped.
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

void ListTest::SetUp() {
  WindowTest::SetUp();
  window = WindowTest::Make(documentProc, Rect{40, 40, 340, 440});
  SetPort(window);
  Drain();
}

ListHandle ListTest::MakeList(int columns, int rows, Rect view, bool scrollVert, bool scrollHoriz,
                              Point cellSize) {
  Rect bounds{0, 0, SInt16(rows), SInt16(columns)};
  return LNew(&view, &bounds, cellSize, 0, window, true, false, scrollHoriz, scrollVert);
}

void ListTest::SetCell(ListHandle l, Cell c, const std::string& text) {
  LSetCell(text.data(), SInt16(text.size()), c, l);
}

bool ListTest::Click(ListHandle l, int item, WPARAM keys, int x, bool twice) {
  HWND box = KWE_GetHWNDFromListHandle(l);
  RECT r{};
  SendMessageA(box, LB_GETITEMRECT, WPARAM(item), reinterpret_cast<LPARAM>(&r));
  LPARAM at = MAKELPARAM(x < 0 ? (r.left + r.right) / 2 : x, (r.top + r.bottom) / 2);
  PostMessageA(box, WM_LBUTTONDOWN, MK_LBUTTON | keys, at);
  PostMessageA(box, WM_LBUTTONUP, keys, at);
  if (twice) {
    PostMessageA(box, WM_LBUTTONDBLCLK, MK_LBUTTON | keys, at);
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

}  // namespace kwe_test
