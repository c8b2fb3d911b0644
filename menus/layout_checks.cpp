// The published layouts of the Menu Manager's records, which applications
// read field by field. Checked where pointers are 32 bits wide; the 64-bit
// build keeps the 'MDEF' handle beside MenuInfo and widens MenuPair.
#include <cstdint>

#include "Menus.h"
#include "frame/layout_check.h"
#include "menus/menu_records.h"

KWE_FIELD(MenuInfo, menuID, kwe::menus::kMenuIdOffset);
KWE_FIELD(MenuInfo, menuWidth, kwe::menus::kMenuWidthOffset);
KWE_FIELD(MenuInfo, menuHeight, kwe::menus::kMenuHeightOffset);
KWE_FIELD(MenuInfo, menuProc, kwe::menus::kMenuProcOffset);
KWE_FIELD(MenuInfo, enableFlags, kwe::menus::kEnableFlagsOffset);
KWE_FIELD(MenuInfo, menuData, kwe::menus::kTitleOffset);
KWE_FIELD(MenuListRec, lastMenu, 0);
KWE_FIELD(MenuListRec, lastRight, 2);
KWE_FIELD(MenuListRec, mbResID, 4);
KWE_FIELD(MenuListRec, menus, 6);

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(MenuPair) == 6, "MenuPair");
KWE_FIELD(MenuPair, menuLeft, 4);
#endif
