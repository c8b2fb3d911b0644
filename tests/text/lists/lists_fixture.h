// A document window of a session with InitGraf and InitWindows done, lists
// made in it, and what USER holds for their list boxes read back.
#pragma once
#include <string>
#include <vector>

#include "KWELists.h"
#include "Lists.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline Cell At(int h, int v) { return Cell{SInt16(v), SInt16(h)}; }
// LGetCell's answer as a string.
std::string CellText(ListHandle l, Cell c);
// The list box's items as LB_GETTEXT reads them.
std::vector<std::string> Items(HWND box);
// The selected items as LB_GETSEL reads them.
std::vector<int> SelectedItems(HWND box);
// The selected cells as LGetSelect finds them one after another, in index
// order ({-1} or {-2} when the search goes back or stops on an unselected cell).
std::vector<int> SelectedCells(ListHandle l);

class ListTest : public WindowTest {
 protected:
  void SetUp() override;
  ListHandle MakeList(int columns, int rows, Rect view = Rect{20, 20, 180, 220},
                      bool scrollVert = true, bool scrollHoriz = false, Point cellSize = {});

 public:
  void SetCell(ListHandle l, Cell c, const std::string& text);

 protected:
  // The user's click at the centre of list-box item (posted), as the
  // application's loop meets it: the next mouseDown, then LClick with its
  // point and modifiers. The answer of LClick.
  bool Click(ListHandle l, int item, WPARAM keys = 0, int x = -1, bool twice = false);

  WindowPtr window = nullptr;
};

}  // namespace kwe_test
