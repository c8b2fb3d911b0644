// Win32 menu commands back into Toolbox results: a WM_COMMAND from the bar
// becomes (menu ID << 16) | item for MenuSelect, with a mouseDown in the
// menu bar posted for the application's event loop; command keys are looked
// up in the records by MenuKey.
#include "events/event_queue.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "menus/menu_choices.h"
#include "menus/menu_manager.h"

namespace kwe::menus {

namespace {

constexpr int kCommandPasses = 16;         // pump passes a chosen command may take to arrive
constexpr size_t kMaxWaitingChoices = 16;  // an application that never asks loses the oldest

// The owner-draw entry a command names, or null.
const OwnerDrawEntry* OwnerDrawOfCommand(UInt16 command) {
  for (const OwnerDrawEntry& e : State().ownerDraw)
    if (e.command == command && !e.submenu) return &e;
  return nullptr;
}

}  // namespace

// WM_COMMAND from a menu or an accelerator; 0 only clears what a pop-up was
// waiting for (a control's command).
void RecordMenuCommand(UInt32 command) {
  if (command == 0) {
    State().pendingPopUp = 0;
    State().pendingArrived = false;
    return;
  }
  KWE_EventMenuSel(command);
}

size_t WaitingChoices() { return State().selections.size(); }

void DropOldestChoice() {
  if (!State().selections.empty()) State().selections.pop_front();
}

bool WaitForCommand(bool (*arrived)()) {
  for (int pass = 0; pass < kCommandPasses && !arrived(); ++pass)
    events::PumpOnePass(everyEvent, 0);
  return arrived();
}

}  // namespace kwe::menus

using namespace kwe::menus;

KWE_API void KWE_CALL KWE_EventMenuSel(UInt32 command32) {
  ManagerState& s = State();
  // Before InitMenus there are no menus for a command to choose from.
  if (!s.initialised) return;
  UInt16 command = UInt16(command32 & 0xFFFF);
  if (command == kQuitCommand && s.quitCommand) command = s.quitCommand;
  SInt16 menuID;
  SInt16 item;
  bool submenu = false;
  if (command == 0) {
    MenuHandle first = BarMenu(0);
    menuID = Valid(first) ? MenuIDOf(first) : 0;
    item = 1;
  } else {
    menuID = SlotMenuID(command);
    item = SInt16((command & 0xFF) + 1);
    submenu = (SlotFlags(command) & kSubmenuSlot) != 0;
  }
  if (s.popUpNesting > 0) {
    // TrackPopupMenu's own loop is running: PopUpMenuSelect picks it up.
    s.pendingPopUp = command;
    s.pendingArrived = true;
    return;
  }
  s.pendingPopUp = 0;
  s.pendingArrived = false;
  if (s.ownerDrawUsed && submenu && OwnerDrawOfCommand(command) &&
      DefinitionOf(SlotMenu(command))) {
    // A submenu drawn by its 'MDEF': the item is the one the definition chose.
    if (!s.mdefChose || s.mdefChoice <= 0) return;
    item = s.mdefChoice;
    s.mdefChoice = 0;
    s.mdefChose = false;
  }
  if (!submenu) HiliteMenu(menuID);
  if (s.selections.size() >= kMaxWaitingChoices) s.selections.pop_front();
  s.selections.push_back(SInt32(UInt32(UInt16(menuID)) << 16 | UInt16(item)));
  kwe::events::PostPseudoPoint(1);  // a mouseDown at (-1, -1): FindWindow answers inMenuBar
}

KWE_API SInt32 KWE_CALL MenuSelect(Point) {
  // Windows tracks the bar before the application hears of it: the choice is
  // stored when its WM_COMMAND comes. One still on its way (posted while a
  // menu loop ended) is waited for through a few pump passes.
  ManagerState& s = State();
  if (s.selections.empty()) WaitForCommand([] { return !State().selections.empty(); });
  if (s.selections.empty()) return 0;
  SInt32 result = s.selections.front();
  s.selections.pop_front();
  return result;
}

KWE_API SInt32 KWE_CALL MenuKey(SInt16 ch) {
  UInt8 key = UInt8(ch);
  if (key >= 'a' && key <= 'z') key = UInt8(key - 32);
  bool functionKeys = kwe::SessionFlag(kweFlagDigitCommandKeys);
  static const UInt8 kFunctionKeys[10] = {VK_F11, VK_F1, VK_F2, VK_F3, VK_F4,
                                          VK_F5,  VK_F6, VK_F7, VK_F8, VK_F9};
  auto matches = [&](UInt8 equivalent) {
    if (functionKeys && equivalent >= '0' && equivalent <= '9')
      return (GetKeyState(kFunctionKeys[equivalent - '0']) & 0x8000) != 0;
    if (equivalent >= 'a' && equivalent <= 'z') equivalent = UInt8(equivalent - 32);
    return equivalent == key;
  };
  auto search = [&](MenuHandle m) -> SInt32 {
    if (!Valid(m)) return 0;
    UInt32 enable = EnableFlags(m);
    ItemView v;
    for (ItemCursor c = Items(m); c.Next(&v);) {
      int i = c.Index();
      if (i < 32 && !ItemEnabled(enable, i)) continue;
      if (v.key <= sicnItemCmd || !matches(v.key)) continue;
      return SInt32(UInt32(UInt16(MenuIDOf(m))) << 16 | UInt16(i));
    }
    return 0;
  };
  for (int i = 0, n = BarCount(); i < n; ++i)
    if (SInt32 r = search(BarMenu(i))) return r;
  for (const HierSlot& slot : State().hier)
    if (slot.menuID != 0)
      if (SInt32 r = search(slot.menu)) return r;
  return 0;
}

KWE_API SInt16 KWE_CALL KWE_MenuIDFromCMD(HMENU hMenu, UInt16 command) {
  SInt16 id = SlotMenuID(command);
  return id ? id : KWE_MenuIDFromHMENU(hMenu);
}

KWE_API SInt16 KWE_CALL KWE_MenuIDFromHMENU(HMENU hMenu) {
  if (!hMenu || !IsMenu(hMenu)) return 0;
  for (int i = 0, n = GetMenuItemCount(hMenu); i < n; ++i) {
    UINT id = GetMenuItemID(hMenu, i);
    if (id == UINT(-1)) continue;
    if (SInt16 menuID = SlotMenuID(UInt16(id))) return menuID;
  }
  return 0;
}
