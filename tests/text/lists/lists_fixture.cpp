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
  for (int h = b.left; h < b.right; ++h)
    for (int v = b.top; v < b.bottom; ++v) {
      Cell c = At(h, v);
      if (LGetSelect(false, &c, l)) cells.push_back((h - b.left) * rows + (v - b.top));
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
