// The menu bar as the Toolbox keeps it (the MenuList handle in the MenuList
// global) and the hierarchical list of submenus and pop-ups. Windows sees
// the bar only when DrawMenuBar rebuilds it.
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "frame/system_values.h"
#include "menus/menu_manager.h"

namespace kwe::menus {

constexpr ResType kMenuBarType = 0x4D424152;  // 'MBAR'
constexpr size_t kListHeader = 6;

namespace {

Handle& ListHandle() { return lowmem::At<Handle>(lowmem::Slot::MenuList); }

// The entries a list handle really holds, never more than the bar's 24.
int EntriesOf(Handle list) {
  if (!list || !*list) return 0;
  Size size = GetHandleSize(list);
  if (size < Size(kListHeader)) return 0;
  auto* rec = reinterpret_cast<MenuListPtr>(*list);
  int claimed = rec->lastMenu > 0 ? rec->lastMenu / int(sizeof(MenuPair)) : 0;
  int held = int((size_t(size) - kListHeader) / sizeof(MenuPair));
  int count = claimed < held ? claimed : held;
  return count < kBarPositions ? count : kBarPositions;
}

Handle NewList(int count) {
  Handle h = NewHandleClear(Size(kListHeader + size_t(count) * sizeof(MenuPair)));
  if (h) reinterpret_cast<MenuListPtr>(*h)->lastMenu = SInt16(count * int(sizeof(MenuPair)));
  return h;
}

SInt16 WidthOf(MenuHandle m) { return SInt16(ReadWord(Bytes(m) + kMenuWidthOffset)); }

// menuLeft and lastRight again from the widths, after a change of order.
void Relayout(MenuListPtr rec, int count) {
  SInt16 left = 0;
  for (int i = 0; i < count; ++i) {
    rec->menus[i].menuLeft = left;
    if (Valid(rec->menus[i].menuOH)) left = SInt16(left + WidthOf(rec->menus[i].menuOH));
  }
  rec->lastRight = left;
}

}  // namespace

MenuListPtr BarList() {
  Handle h = ListHandle();
  return h && *h ? reinterpret_cast<MenuListPtr>(*h) : nullptr;
}

int BarCount() { return EntriesOf(ListHandle()); }

MenuHandle BarMenu(int index) {
  MenuListPtr rec = BarList();
  return rec && index >= 0 && index < BarCount() ? rec->menus[index].menuOH : nullptr;
}

int BarIndexOf(SInt16 menuID) {
  for (int i = 0, n = BarCount(); i < n; ++i)
    if (Valid(BarMenu(i)) && MenuIDOf(BarMenu(i)) == menuID) return i;
  return -1;
}

bool MergedAppleMenu() { return ReadSystemValue(kSysValueMergedAppleMenu) != 0; }

void ResetMenuList() {
  Handle& h = ListHandle();
  if (!h) h = NewList(0);
  if (h) {
    SetHandleSize(h, kListHeader);
    std::memset(*h, 0, kListHeader);
  }
}

namespace {
// Later entries move up and lose the removed menu's width.
void RemoveAt(int at) {
  int count = BarCount();
  Handle h = ListHandle();
  auto* rec = reinterpret_cast<MenuListPtr>(*h);
  std::memmove(&rec->menus[at], &rec->menus[at + 1], size_t(count - at - 1) * sizeof(MenuPair));
  rec->lastMenu = SInt16((count - 1) * int(sizeof(MenuPair)));
  Relayout(rec, count - 1);
  SetHandleSize(h, Size(kListHeader + size_t(count - 1) * sizeof(MenuPair)));
}
}  // namespace

void RemoveFromBar(MenuHandle m) {
  for (int i = BarCount() - 1; i >= 0; --i)
    if (BarMenu(i) == m) RemoveAt(i);
}

}  // namespace kwe::menus

using namespace kwe::menus;

namespace {

// A copy of the first count entries of a list (the bar's own, or one the
// application hands in), laid out again; null without memory.
Handle CopyList(const MenuListRec* from, int count) {
  Handle h = NewList(count);
  if (!h) return nullptr;
  auto* rec = reinterpret_cast<MenuListPtr>(*h);
  if (from) {
    rec->mbResID = from->mbResID;
    for (int i = 0; i < count; ++i) rec->menus[i].menuOH = from->menus[i].menuOH;
  }
  Relayout(rec, count);
  return h;
}

}  // namespace

KWE_API Handle KWE_CALL GetMenuBar(void) { return CopyList(BarList(), BarCount()); }

KWE_API void KWE_CALL SetMenuBar(Handle menuList) {
  int count = EntriesOf(menuList);
  if (!menuList || !*menuList) return;
  Handle copy = CopyList(reinterpret_cast<MenuListPtr>(*menuList), count);
  if (!copy) return;
  if (Handle old = ListHandle()) DisposeHandle(old);
  ListHandle() = copy;
}

KWE_API void KWE_CALL ClearMenuBar(void) { ResetMenuList(); }

KWE_API Handle KWE_CALL GetNewMBar(SInt16 menuBarID) {
  Handle mbar = GetResource(kMenuBarType, menuBarID);
  if (!mbar || !*mbar) return nullptr;
  int count = MenuBarCount(reinterpret_cast<const UInt8*>(*mbar), size_t(GetHandleSize(mbar)));
  // A menu ID whose 'MENU' is missing is left out: the bar cannot show a
  // menu that is not there, and the list stays free of null entries.
  std::vector<MenuHandle> menus;
  for (int i = 0; i < count && int(menus.size()) < kBarPositions; ++i) {
    SInt16 id = SInt16(ReadWord(reinterpret_cast<const UInt8*>(*mbar) + 2 + 2 * i));
    if (MenuHandle m = GetMen(id)) menus.push_back(m);
  }
  ReleaseResource(mbar);
  Handle h = NewList(int(menus.size()));
  if (!h) return nullptr;
  auto* rec = reinterpret_cast<MenuListPtr>(*h);
  for (size_t i = 0; i < menus.size(); ++i) rec->menus[i].menuOH = menus[i];
  Relayout(rec, int(menus.size()));
  return h;
}

KWE_API void KWE_CALL InsertMen(MenuHandle theMenu, SInt16 beforeID) {
  if (!Valid(theMenu)) return;
  SInt16 id = MenuIDOf(theMenu);
  ManagerState& s = State();
  if (beforeID == -1) {
    for (HierSlot& slot : s.hier) {
      if (slot.menuID == id && slot.menuID != 0) return;
      if (slot.menuID == 0) {
        slot = HierSlot{id, theMenu};
        return;
      }
    }
    return;  // a full list ignores it
  }
  Handle h = ListHandle();
  int count = BarCount();
  // The bar holds 24 menus, as many as its Win32 positions; a 25th is not
  // taken.
  if (!h || BarIndexOf(id) >= 0 || count >= kBarPositions) return;
  int at = BarIndexOf(beforeID);
  if (at < 0) at = count;
  SetHandleSize(h, Size(kListHeader + size_t(count + 1) * sizeof(MenuPair)));
  if (MemError() != noErr) return;
  auto* rec = reinterpret_cast<MenuListPtr>(*h);
  std::memmove(&rec->menus[at + 1], &rec->menus[at], size_t(count - at) * sizeof(MenuPair));
  rec->menus[at].menuOH = theMenu;
  rec->lastMenu = SInt16((count + 1) * int(sizeof(MenuPair)));
  Relayout(rec, count + 1);
}

KWE_API void KWE_CALL DeleteMen(SInt16 menuID) {
  for (HierSlot& slot : State().hier) {
    if (slot.menuID != 0 && slot.menuID == menuID) {
      slot = HierSlot{};
      return;
    }
  }
  int at = BarIndexOf(menuID);
  if (at >= 0) RemoveAt(at);
}

KWE_API MenuHandle KWE_CALL GetMenuHandle(SInt16 menuID) {
  int at = BarIndexOf(menuID);
  if (at >= 0) return BarMenu(at);
  for (const HierSlot& slot : State().hier)
    if (slot.menuID != 0 && slot.menuID == menuID && Valid(slot.menu)) return slot.menu;
  return nullptr;
}

KWE_API MenuHandle KWE_CALL KWE_SearchHierMenuList(SInt16 first) {
  ManagerState& s = State();
  if (first) s.hierSearch = 0;
  while (s.hierSearch < kHierSlots) {
    const HierSlot& slot = s.hier[s.hierSearch++];
    if (slot.menuID != 0) return slot.menu;
  }
  return nullptr;
}

KWE_API SInt16 KWE_CALL GetMBarHeight(void) { return 0; }
