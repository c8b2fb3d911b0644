// Owner-drawn menu items as the library measures and draws them: icons,
// styled text, check marks and command keys that Win32 cannot show itself.
// The standard menu definition draws its items the same way.
#pragma once
#include <windows.h>

#include "menus/menu_manager.h"

namespace kwe::menus {

struct ItemLook {
  bool selected = false;
  bool grayed = false;
};

// Width and height of item of menu, measured in dc.
SIZE MeasureItem(HDC dc, MenuHandle menu, int item);
// Draws item in r of dc.
void DrawItem(HDC dc, const RECT& r, MenuHandle menu, int item, ItemLook look);

}  // namespace kwe::menus
