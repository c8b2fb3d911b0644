// Toolbox menus mirrored into Win32 menus: the command slots that give each
// item its command ID, the owner-drawn items, and the rebuilding of the
// host main window's bar (DrawMenuBar) and of a bar menu about to open
// (WM_INITMENUPOPUP), so that what the application changed in its records
// reaches Windows.
#include <cstring>

#include "frame/host_tables.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/system_values.h"
#include "menus/menu_manager.h"

namespace kwe::menus {

namespace {

constexpr int kSubmenuDepth = 5;  // levels of submenus below a menu, as the Toolbox allows
constexpr UInt16 kOverrideFromEnd = 0x0200;
constexpr UInt16 kOverrideQuit = 0x0400;
constexpr UInt16 kOverrideEnd = 0x8000;

// A record of the host's item override table (KWE_Set_Tovel), 72 bytes.
#pragma pack(push, 1)
struct ItemOverride {
  UInt16 flags;
  UInt16 barPosition;
  UInt16 itemPosition;
  UInt8 mnemonic;
  UInt8 spare;
  char text[64];
};
#pragma pack(pop)
static_assert(sizeof(ItemOverride) == 72, "the host's item override record");

bool IsSubmenuOfOurs(HMENU h) {
  for (HMENU m : State().submenus)
    if (m == h) return true;
  return false;
}

void RecordSubmenu(HMENU h) {
  std::vector<HMENU>& list = State().submenus;
  if (IsSubmenuOfOurs(h) || int(list.size()) >= kSubmenuLimit) return;
  list.push_back(h);
}

// Takes h and the submenus inside it off the submenu list (Windows destroys
// them with the item that holds them).
void ForgetSubmenuTree(HMENU h) {
  for (int i = GetMenuItemCount(h) - 1; i >= 0; --i)
    if (HMENU sub = GetSubMenu(h, i)) ForgetSubmenuTree(sub);
  std::vector<HMENU>& list = State().submenus;
  for (size_t i = 0; i < list.size(); ++i) {
    if (list[i] == h) {
      list.erase(list.begin() + long(i));
      break;
    }
  }
}

MenuHandle HierMenu(SInt16 id) {
  for (const HierSlot& slot : State().hier)
    if (slot.menuID != 0 && slot.menuID == id && Valid(slot.menu)) return slot.menu;
  return nullptr;
}

const ItemOverride* Overrides() {
  return MergedAppleMenu() ? static_cast<const ItemOverride*>(MenuOverrideTable()) : nullptr;
}

struct Builder {
  MenuHandle menu;
  HMENU target;
  UInt16 base;
  bool popUp;
  int depth;
  UsedLetters used;
  const char* overrideText[256] = {};
  UInt16 quitByOverride = 0;
  bool quitNamed = false;

  void ApplyOverrides(int count) {
    const ItemOverride* table = Overrides();
    if (!table || popUp || depth > 0) return;
    SInt16 id = MenuIDOf(menu);
    ManagerState& s = State();
    for (const ItemOverride* o = table; o->flags < kOverrideEnd; ++o) {
      if (o->barPosition == 0 || o->barPosition >= kBarPositions) continue;
      if (s.barIDs[o->barPosition] != id) continue;
      int index = (o->flags & kOverrideFromEnd) ? count - o->itemPosition : o->itemPosition - 1;
      if (index < 0 || index >= count || index > 255) continue;
      overrideText[index] = o->text;
      if (o->mnemonic) used.Mark(o->mnemonic);
      if (o->flags & kOverrideQuit) {
        quitNamed = true;
        quitByOverride = UInt16(base | index);
      }
    }
  }

  // The submenu of an item whose key is 0x1B: a new Win32 menu filled from
  // the hierarchical menu the mark names, or null.
  HMENU Submenu(UInt8 mark) {
    MenuHandle sub = depth < kSubmenuDepth ? HierMenu(SInt16(mark)) : nullptr;
    if (!sub) return nullptr;
    HMENU h = popUp ? CreatePopupMenu() : CreateMenu();
    if (!h) return nullptr;
    RecordSubmenu(h);
    UInt16 slot = RegisterSlot(MenuIDOf(sub), sub, kSubmenuSlot);
    Builder inner{sub, h, UInt16(slot << 8), popUp, depth + 1, {}};
    inner.Build();
    return h;
  }

  int Build() {
    if (DefinitionOf(menu)) {
      // The definition draws the whole menu in one owner-drawn item.
      int entry = AddOwnerDraw(menu, base, base, nullptr);
      AppendMenuA(target, MF_OWNERDRAW, base, reinterpret_cast<LPCSTR>(intptr_t(entry)));
      return 1;
    }
    int count = ItemCount(menu);
    ApplyOverrides(count);
    UInt32 enable = EnableFlags(menu);
    TextOptions options = CurrentTextOptions();
    const Session& session = TheSession();
    ManagerState& s = State();
    bool digitKeys = SessionFlag(kweFlagDigitCommandKeys);
    int rows = 0, appended = 0;
    ItemView v;
    for (ItemCursor c = Items(menu); c.Next(&v);) {
      int i = c.Index() - 1;
      UINT_PTR id = UInt16(base | i);
      if (quitNamed && id == quitByOverride) s.quitCommand = UInt16(id);
      UINT flags = MF_STRING;
      bool enabled = ItemEnabled(enable, i + 1);
      if (i + 1 < 32 && !enabled) flags |= MF_GRAYED | MF_DISABLED;
      const UInt8* text = v.text;
      if (text[0] == 1 && text[1] == '-') flags |= MF_SEPARATOR;
      std::string win32;
      if (overrideText[i])
        win32.assign(overrideText[i], strnlen(overrideText[i], 64));
      else if (v.icon < 128)
        win32 = Win32MenuText(text + 1, text[0], popUp ? nullptr : &used, options);
      else
        win32.assign(reinterpret_cast<const char*>(text + 1), text[0]);
      HMENU submenu = nullptr;
      if (v.key != hMenuCmd) {
        if (v.key > sicnItemCmd)
          win32 += AcceleratorText(v.key, v.style, s.plainFormat.c_str(), s.shiftedFormat.c_str(),
                                   digitKeys);
        if (v.mark) flags |= MF_CHECKED;
      } else if (v.mark && enabled) {
        submenu = Submenu(v.mark);
        if (submenu) {
          flags |= MF_POPUP;
          id = reinterpret_cast<UINT_PTR>(submenu);
        }
      }
      ++rows;
      LPCSTR content = win32.c_str();
      if ((v.icon & 0x7F) || (v.style & 0x47)) {
        flags = (flags & ~UINT(MF_STRING | MF_SEPARATOR)) | MF_OWNERDRAW;
        UInt16 key = submenu ? UInt16(reinterpret_cast<uintptr_t>(submenu)) : UInt16(id);
        int entry = AddOwnerDraw(menu, key, UInt16(base | i), submenu);
        content = reinterpret_cast<LPCSTR>(intptr_t(entry));
        if ((v.icon & 0x7F) && v.key != iconItemCmd && v.key != sicnItemCmd) ++rows;
      }
      if (rows >= kColumnRows) {
        flags |= MF_MENUBARBREAK;
        rows = 0;
      }
      if (AppendMenuA(target, flags, id, content)) ++appended;
    }
    (void)session;
    if (!quitNamed && base == 0x100 && count > 0) s.quitCommand = UInt16(0x100 | (count - 1));
    return appended;
  }
};

bool DoubleByteLead(UInt8 c) { return IsDBCSLeadByte(c) != 0; }

}  // namespace

TextOptions CurrentTextOptions() {
  TextOptions o;
  o.keepAmpersands = SessionFlag(kweFlagAmpersandAsMnemonic);
  o.convert = ReadSystemValue(kSysValueConvertTexts) != 0;
  if (TheSession().dbcsMode) o.leadByte = DoubleByteLead;
  return o;
}

UInt16 RegisterSlot(SInt16 menuID, MenuHandle menu, UInt8 flags) {
  std::vector<CommandSlot>& slots = State().slots;
  for (size_t i = 0; i < slots.size(); ++i) {
    if (slots[i].menuID == menuID && slots[i].menu == menu) {
      slots[i].flags |= flags;
      return UInt16(i + 1);
    }
  }
  if (int(slots.size()) >= kCommandSlotLimit) return kNoSlot;
  slots.push_back(CommandSlot{menuID, menu, flags});
  return UInt16(slots.size());
}

namespace {
const CommandSlot* SlotOf(UInt16 command) {
  const std::vector<CommandSlot>& slots = State().slots;
  int slot = (command >> 8) - 1;
  return slot >= 0 && slot < int(slots.size()) ? &slots[size_t(slot)] : nullptr;
}
}  // namespace

SInt16 SlotMenuID(UInt16 command) {
  const CommandSlot* slot = SlotOf(command);
  return slot ? slot->menuID : 0;
}
MenuHandle SlotMenu(UInt16 command) {
  const CommandSlot* slot = SlotOf(command);
  return slot ? slot->menu : nullptr;
}
UInt8 SlotFlags(UInt16 command) {
  const CommandSlot* slot = SlotOf(command);
  return slot ? slot->flags : 0;
}

int AddOwnerDraw(MenuHandle menu, UInt16 key, UInt16 command, HMENU submenu) {
  ManagerState& s = State();
  s.ownerDrawUsed = true;
  for (size_t i = 0; i < s.ownerDraw.size(); ++i) {
    OwnerDrawEntry& e = s.ownerDraw[i];
    if (e.menu == menu && e.key == key) {
      e.command = command;
      e.submenu = submenu;
      return int(i);
    }
  }
  s.ownerDraw.push_back(OwnerDrawEntry{menu, key, command, submenu});
  return int(s.ownerDraw.size() - 1);
}

int BuildWin32Menu(MenuHandle menu, HMENU target, UInt16 base, bool popUp) {
  if (!Valid(menu) || !target) return 0;
  Builder b{menu, target, base, popUp, 0, {}};
  int n = b.Build();
  CalcMenuSize(menu);
  return n;
}

void DestroyWin32Items(HMENU target) {
  for (int i = GetMenuItemCount(target) - 1; i >= 0; --i) {
    if (HMENU sub = GetSubMenu(target, i)) ForgetSubmenuTree(sub);
    DeleteMenu(target, UINT(i), MF_BYPOSITION);
  }
}

HMENU MainBar() {
  ManagerState& s = State();
  HWND main = TheSession().mainWindow;
  if (!main) return nullptr;
  if (!s.bar || !IsMenu(s.bar)) {
    s.bar = GetMenu(main);
    if (!s.bar) {
      // A host without a bar of its own: the library gives its main window one.
      s.bar = CreateMenu();
      if (s.bar && SetMenu(main, s.bar)) s.madeBar = true;
    }
  }
  return s.bar;
}

int Win32PositionOf(HMENU popup) {
  HMENU bar = State().bar;
  if (!bar || !popup) return -1;
  for (int i = 0, n = GetMenuItemCount(bar); i < n; ++i)
    if (GetSubMenu(bar, i) == popup) return i;
  return -1;
}

}  // namespace kwe::menus

using namespace kwe::menus;

namespace kwe::menus {

namespace {

// HiliteMenuItem, and where the window system answers it by selecting the
// item whatever the flag says (Wine), the item's state set and the bar drawn
// again, so that the title shows what was asked.
void HiliteBarItem(HWND main, HMENU bar, int position, bool on) {
  HiliteMenuItem(main, bar, UINT(position), MF_BYPOSITION | (on ? MF_HILITE : MF_UNHILITE));
  bool lit = (GetMenuState(bar, UINT(position), MF_BYPOSITION) & MF_HILITE) != 0;
  if (lit == on) return;
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STATE;
  if (!GetMenuItemInfoA(bar, UINT(position), TRUE, &info)) return;
  info.fState = on ? info.fState | MFS_HILITE : info.fState & ~UINT(MFS_HILITE);
  SetMenuItemInfoA(bar, UINT(position), TRUE, &info);
  DrawMenuBar(main);
}

}  // namespace

void KWE_CALL HiliteMenuDefault(SInt16 menuID) {
  ManagerState& s = State();
  HWND main = TheSession().mainWindow;
  HMENU bar = s.bar;
  if (s.hilitedPosition >= 0 && main && bar) HiliteBarItem(main, bar, s.hilitedPosition, false);
  s.hilitedPosition = -1;
  lowmem::At<SInt16>(lowmem::Slot::TheMenu) = menuID;
  if (!menuID || !main || !bar) return;
  int index = BarIndexOf(menuID);
  if (index < 0) index = 0;
  int position;
  if (MergedAppleMenu() && index == 0)
    position = s.hostPopup ? Win32PositionOf(s.hostPopup) : GetMenuItemCount(bar) - 1;
  else
    position = index < kBarPositions ? Win32PositionOf(s.barPopups[index]) : -1;
  if (position < 0) return;
  s.hilitedPosition = position;
  HiliteBarItem(main, bar, position, true);
}

void KWE_CALL DrawMenuBarDefault() {
  ManagerState& s = State();
  if (!s.initialised) return;
  HiliteMenuDefault(0);
  HMENU bar = MainBar();
  if (!bar) return;
  bool merged = MergedAppleMenu();
  // Take the Toolbox menus now shown out, remembering their titles and
  // where the first one stood.
  char oldTitles[kBarPositions][17] = {};
  int insertAt = s.hostPopup ? Win32PositionOf(s.hostPopup) + 1 : -1;
  for (int p = 0; p < kBarPositions; ++p) {
    std::memcpy(oldTitles[p], s.shownTitles[p], 17);
    HMENU popup = s.barPopups[p];
    s.barPopups[p] = nullptr;
    int position = Win32PositionOf(popup);
    if (position < 0) continue;
    if (insertAt < 0) insertAt = position;
    ForgetSubmenuTree(popup);
    DeleteMenu(bar, UINT(position), MF_BYPOSITION);
  }
  if (insertAt < 0) insertAt = GetMenuItemCount(bar);
  int count = BarCount();
  bool changed = count != s.shownCount;
  std::memset(s.barIDs, 0, sizeof s.barIDs);
  std::memset(s.shownTitles, 0, sizeof s.shownTitles);
  TextOptions options = CurrentTextOptions();
  for (int p = 0; p < count; ++p) {
    MenuHandle m = BarMenu(p);
    if (!Valid(m)) continue;
    s.barIDs[p] = MenuIDOf(m);
    ItemView first;
    if (merged && p == 0) {
      // The Apple menu is the host's own: its first item names the last
      // item of the host's popup.
      if (s.hostPopup && s.hostLastCommand != 0xFFFF && Item(m, 1, &first)) {
        UsedLetters used;
        std::string text = Win32MenuText(first.text + 1, first.text[0], &used, options);
        ModifyMenuA(s.hostPopup, s.hostLastCommand, MF_BYCOMMAND | MF_STRING, s.hostLastCommand,
                    text.c_str());
      }
      continue;
    }
    HMENU popup = CreateMenu();
    if (!popup) continue;
    UInt16 slot = RegisterSlot(MenuIDOf(m), m, 0);
    BuildWin32Menu(m, popup, UInt16(slot << 8), false);
    UsedLetters used;
    const UInt8* title = Bytes(m) + kTitleOffset;
    std::string text = Win32MenuText(title + 1, title[0], &used, options);
    if (!InsertMenuA(bar, UINT(insertAt), MF_BYPOSITION | MF_POPUP,
                     reinterpret_cast<UINT_PTR>(popup), text.c_str())) {
      DestroyMenu(popup);
      continue;
    }
    ++insertAt;
    s.barPopups[p] = popup;
    std::strncpy(s.shownTitles[p], text.c_str(), 16);
    if (std::strncmp(oldTitles[p], s.shownTitles[p], 16) != 0) changed = true;
  }
  s.shownCount = count;
  // Windows repaints the bar only when what it shows changed.
  if (changed) DrawMenuBar(TheSession().mainWindow);
}

}  // namespace kwe::menus

KWE_API void KWE_CALL KWE_InitMenuMsg(HMENU hMenu) {
  using kwe::TheSession;
  ManagerState& s = State();
  if (!hMenu || !s.initialised) return;
  for (int p = MergedAppleMenu() ? 1 : 0; p < kBarPositions; ++p) {
    if (s.barPopups[p] != hMenu) continue;
    MenuHandle m = BarMenu(p);
    if (!Valid(m)) return;
    DestroyWin32Items(hMenu);
    UInt16 slot = RegisterSlot(MenuIDOf(m), m, 0);
    BuildWin32Menu(m, hMenu, UInt16(slot << 8), false);
    HWND main = TheSession().mainWindow;
    HWND focus = GetFocus();
    char cls[16] = {};
    if (focus) GetClassNameA(focus, cls, sizeof cls);
    if (main && focus != main && lstrcmpiA(cls, "Edit") != 0) SetFocus(main);
    return;
  }
}
