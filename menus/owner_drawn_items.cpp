// WM_MEASUREITEM and WM_DRAWITEM for the library's owner-drawn menu items:
// items with icons or text styles, and whole menus drawn by their 'MDEF'.
#include "KWEPorts.h"
#include "MacWindows.h"
#include "frame/session.h"
#include "menus/item_drawing.h"

using namespace kwe::menus;

namespace {

const OwnerDrawEntry* EntryOf(ULONG_PTR itemData) {
  const std::vector<OwnerDrawEntry>& table = State().ownerDraw;
  return itemData < table.size() ? &table[itemData] : nullptr;
}

LRESULT Measure(MEASUREITEMSTRUCT* mis) {
  const OwnerDrawEntry* e = EntryOf(mis->itemData);
  if (!e || !Valid(e->menu)) return 1;
  MenuHandle menu = e->menu;
  int check = LOWORD(GetMenuCheckMarkDimensions());
  if (DefinitionOf(menu)) {
    Rect r{0, 0, 0, 0};
    SInt16 which = 0;
    CallDefinition(menu, mSizeMsg, &r, Point{0, 0}, &which);
    mis->itemWidth = UINT(std::max(0, SInt16(ReadWord(Bytes(menu) + kMenuWidthOffset)) - check));
    mis->itemHeight = UINT(std::max<int>(0, SInt16(ReadWord(Bytes(menu) + kMenuHeightOffset))));
    return 1;
  }
  HWND main = kwe::TheSession().mainWindow;
  HDC dc = main ? GetDC(main) : MeasureDC();
  SIZE size = MeasureItem(dc, menu, (e->command & 0xFF) + 1);
  if (main) ReleaseDC(main, dc);
  mis->itemWidth = UINT(size.cx);
  mis->itemHeight = UINT(size.cy);
  return 1;
}

LRESULT Draw(DRAWITEMSTRUCT* dis) {
  if (dis->CtlType != ODT_MENU) return 1;
  const OwnerDrawEntry* e = EntryOf(dis->itemData);
  if (!e || !Valid(e->menu)) return 1;
  if (!(dis->itemAction & (ODA_DRAWENTIRE | ODA_SELECT))) return 1;
  MenuHandle menu = e->menu;
  if (DefinitionOf(menu)) {
    HWND hwnd = WindowFromDC(dis->hDC);
    Rect r{SInt16(dis->rcItem.top), SInt16(dis->rcItem.left), SInt16(dis->rcItem.bottom),
           SInt16(dis->rcItem.right)};
    Rect portRect = r;
    KWE_SetWMgrPortDC(true, hwnd, dis->hDC, &portRect);
    GrafPtr saved, wmgr = nullptr;
    GetPort(&saved);
    GetWMgrPort(&wmgr);
    if (wmgr) SetPort(wmgr);
    SInt16 which = 0;
    CallDefinition(menu, mDrawMsg, &r, Point{0, 0}, &which);
    SetPort(saved);
    KWE_SetWMgrPortDC(false, hwnd, dis->hDC, &portRect);
    return 1;
  }
  ItemLook look{(dis->itemState & ODS_SELECTED) != 0, (dis->itemState & ODS_GRAYED) != 0};
  DrawItem(dis->hDC, dis->rcItem, menu, (e->command & 0xFF) + 1, look);
  return 1;
}

}  // namespace

KWE_API LRESULT KWE_CALL KWE_MenuUserItem(HWND, UINT message, WPARAM, LPARAM lParam) {
  if (!lParam) return 1;
  if (message == WM_MEASUREITEM) return Measure(reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
  if (message == WM_DRAWITEM) return Draw(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
  return 1;
}
