// A pop-up control's combo box lists the items of a 'MENU'. The items are
// read here from the resource itself; once the Menu Manager keeps menus,
// this is the one place to ask it instead.
#include <windows.h>

#include <string>
#include <vector>

#include "Memory.h"
#include "Resources.h"
#include "controls/control_manager.h"
#include "controls/control_templates.h"
#include "memory/character_conversion.h"

namespace kwe::controls {
namespace {

constexpr ResType kMenuType = 0x4D454E55;  // 'MENU'

}  // namespace

void FillPopUp(ControlHandle c, HWND combo) {
  SendMessageA(combo, CB_RESETCONTENT, 0, 0);
  SInt16 menuId = 0;
  Handle menu = nullptr;
  if (PopUpMenuId(Rec(c)->contrlTitle, &menuId)) menu = GetResource(kMenuType, menuId);
  if (menu && *menu) {
    std::vector<std::string> items =
        MenuItemTexts(reinterpret_cast<const UInt8*>(*menu), size_t(GetHandleSize(menu)));
    for (std::string& item : items) {
      auto* bytes = reinterpret_cast<UInt8*>(item.data());
      text::MacToAnsiBytes(bytes, bytes, item.size());
      SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    SetPopUpMenu(c, reinterpret_cast<MenuHandle>(menu));
  }
  Rec(c)->contrlMin = 1;
  Rec(c)->contrlMax = SInt16(SendMessageA(combo, CB_GETCOUNT, 0, 0));
}

}  // namespace kwe::controls
