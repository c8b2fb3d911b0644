// InitMenus and the end of the session: the state of the manager, the
// host's own part of the bar, and DisposeMenu.
#include <cstring>

#include "Memory.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "menus/menu_manager.h"

namespace kwe::menus {

namespace {

ManagerState g_state;

const char kDefaultPlainFormat[] = "\tCtrl+%s";
const char kDefaultShiftedFormat[] = "\tCtrl+Shift+%s";

std::string HostString(UINT id, int capacity, const char* fallback) {
  char text[65] = {};
  int n = LoadStringA(TheSession().instance, id, text, capacity + 1);
  return n > 0 ? std::string(text, size_t(n)) : std::string(fallback);
}

// The host's own popup: with exactly two items in its bar (a maximized MDI
// child's system menu in front) it is the second, else the first.
void ExamineHostBar(ManagerState& s) {
  HMENU bar = TheSession().hostMenuBar;
  s.bar = bar;
  if (!bar || !IsMenu(bar)) return;
  int count = GetMenuItemCount(bar);
  s.hostItemCount = count == 2 ? 1 : 0;
  if (count <= s.hostItemCount) return;
  s.hostPopup = GetSubMenu(bar, s.hostItemCount);
  s.hostCommand = GetMenuItemID(bar, s.hostItemCount);
  GetMenuStringA(bar, 0, s.hostTitle, sizeof s.hostTitle, MF_BYPOSITION);
  int items = s.hostPopup ? GetMenuItemCount(s.hostPopup) : 0;
  s.hostLastCommand = items > 0 ? GetMenuItemID(s.hostPopup, items - 1) : 0xFFFF;
}

void ClearReferences(MenuHandle m) {
  ManagerState& s = g_state;
  for (HierSlot& slot : s.hier)
    if (slot.menu == m) slot = HierSlot{};
  // Command IDs already handed to Windows keep their slot's menu ID; the
  // handle is forgotten so that nothing reads the disposed record.
  for (CommandSlot& slot : s.slots)
    if (slot.menu == m) slot.menu = nullptr;
  for (OwnerDrawEntry& e : s.ownerDraw)
    if (e.menu == m) e.menu = nullptr;
  ForgetDefinition(m);
}

}  // namespace

ManagerState& State() { return g_state; }

void DestroyAllMenus() {
  ManagerState& s = g_state;
  if (!s.initialised) return;
  for (HMENU h : s.submenus)
    if (IsMenu(h)) DestroyMenu(h);
  s.submenus.clear();
  HMENU bar = s.bar;
  for (HMENU& h : s.barPopups) {
    int position = Win32PositionOf(h);
    if (position >= 0) RemoveMenu(bar, UINT(position), MF_BYPOSITION);
    if (h && IsMenu(h)) DestroyMenu(h);
    h = nullptr;
  }
  HWND main = TheSession().mainWindow;
  if (s.madeBar && bar) {
    if (main && IsWindow(main) && GetMenu(main) == bar) SetMenu(main, nullptr);
    DestroyMenu(bar);
  }
  ReleaseMeasureDC();
  if (s.hook) ReleaseHostProcedure(reinterpret_cast<ProcPtr>(s.hook));
  s = ManagerState{};
}

}  // namespace kwe::menus

using namespace kwe::menus;

KWE_API void KWE_CALL InitMenus(void) {
  ManagerState& s = State();
  if (s.initialised) DestroyAllMenus();
  s = ManagerState{};
  s.plainFormat = HostString(1025, 32, kDefaultPlainFormat);
  s.shiftedFormat = HostString(1031, 64, kDefaultShiftedFormat);
  ExamineHostBar(s);
  ResetMenuList();
  s.initialised = true;
}

KWE_API void KWE_CALL DisposeMenu(MenuHandle theMenu) {
  if (!theMenu) return;
  // The bar must not keep a disposed menu either.
  RemoveFromBar(theMenu);
  ClearReferences(theMenu);
  DisposeHandle(reinterpret_cast<Handle>(theMenu));
}
