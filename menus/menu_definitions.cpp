// Menu definition procedures: the 'MDEF' a menu names (a host procedure
// registered for it, since no 68K code runs), the library's standard
// definition used when a pop-up is tracked in a window, the tracking of
// 'MDEF' menus Windows shows from the bar, and the menu hook.
#include <windows.h>

#include <algorithm>

#include "Events.h"
#include "KWEPorts.h"
#include "MacWindows.h"
#include "Memory.h"
#include "events/event_queue.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "menus/item_drawing.h"

namespace kwe::menus {

MenuDefProcPtr DefinitionOf(MenuHandle m) {
  if (!Valid(m) || !ReadLong(Bytes(m) + kMenuProcOffset)) return nullptr;
  for (const MenuDefinition& d : State().definitions)
    if (d.menu == m) return d.procedure;
  return nullptr;
}

Handle DefinitionResource(MenuHandle m) {
  for (const MenuDefinition& d : State().definitions)
    if (d.menu == m) return d.resource;
  return nullptr;
}

void SetDefinition(MenuHandle m, Handle resource, MenuDefProcPtr procedure) {
  ForgetDefinition(m);
  State().definitions.push_back(MenuDefinition{m, resource, procedure});
  // The record's 32-bit slot holds the handle (its low half in the 64-bit
  // build, where the whole handle is the entry above); the 'MDEF' data
  // holds the procedure at offset 2 where a 32-bit pointer fits.
  UInt32 low = UInt32(reinterpret_cast<uintptr_t>(resource));
  WriteLong(Bytes(m) + kMenuProcOffset, low ? low : 1u);
#if UINTPTR_MAX == 0xFFFFFFFFu
  if (GetHandleSize(resource) >= 6)
    WriteLong(reinterpret_cast<UInt8*>(*resource) + 2,
              UInt32(reinterpret_cast<uintptr_t>(procedure)));
#endif
}

void ForgetDefinition(MenuHandle m) {
  std::vector<MenuDefinition>& list = State().definitions;
  list.erase(std::remove_if(list.begin(), list.end(),
                            [m](const MenuDefinition& d) { return d.menu == m; }),
             list.end());
}

void CallDefinition(MenuHandle m, SInt16 message, Rect* r, Point hit, SInt16* whichItem) {
  MenuDefProcPtr procedure = DefinitionOf(m);
  (procedure ? procedure : StandardMenuDefinition)(message, m, r, hit, whichItem);
}

namespace {

int ItemAt(MenuHandle menu, const Rect& r, Point hit) {
  if (hit.v < r.top || hit.v >= r.bottom || hit.h < r.left || hit.h >= r.right) return 0;
  int sum = r.top;
  for (int i = 1, n = ItemCount(menu); i <= n; ++i) {
    sum += MeasureItem(MeasureDC(), menu, i).cy;
    if (sum > hit.v) return i;
  }
  return 0;
}

RECT ItemRect(MenuHandle menu, const Rect& r, int item) {
  int top = r.top;
  for (int i = 1; i < item; ++i) top += MeasureItem(MeasureDC(), menu, i).cy;
  return RECT{r.left, top, r.right, top + MeasureItem(MeasureDC(), menu, item).cy};
}

void DrawOne(MenuHandle menu, const Rect& r, int item, bool selected) {
  HDC dc = KWE_GetCurrentDC();
  if (!dc || item <= 0) return;
  ItemLook look{selected, !ItemEnabled(EnableFlags(menu), item)};
  DrawItem(dc, ItemRect(menu, r, item), menu, item, look);
}

}  // namespace

void KWE_CALL StandardMenuDefinition(SInt16 message, MenuHandle menu, Rect* r, Point hit,
                                     SInt16* whichItem) {
  if (!Valid(menu) || !r) return;
  switch (message) {
    case mSizeMsg: {
      int width = 0, height = 0;
      for (int i = 1, n = ItemCount(menu); i <= n; ++i) {
        SIZE size = MeasureItem(MeasureDC(), menu, i);
        width = std::max<int>(width, size.cx);
        height += size.cy;
      }
      WriteWord(Bytes(menu) + kMenuWidthOffset, UInt16(std::min(width, 0x7FFF)));
      WriteWord(Bytes(menu) + kMenuHeightOffset, UInt16(std::min(height, 0x7FFF)));
      r->right = SInt16(r->left + width);
      r->bottom = SInt16(r->top + height);
      return;
    }
    case mDrawMsg:
      for (int i = 1, n = ItemCount(menu); i <= n; ++i) DrawOne(menu, *r, i, false);
      return;
    case mChooseMsg: {
      if (!whichItem) return;
      if (!Button()) {
        if (*whichItem == 0) {
          *whichItem = 1;
          DrawOne(menu, *r, 1, true);
        }
        return;
      }
      int found = ItemAt(menu, *r, hit);
      if (*whichItem && *whichItem != found) DrawOne(menu, *r, *whichItem, false);
      if (found && found != *whichItem) DrawOne(menu, *r, found, true);
      *whichItem = SInt16(found);
      return;
    }
    default: return;  // mPopUpMsg: the check mark's size is read when drawing
  }
}

}  // namespace kwe::menus

using namespace kwe::menus;

namespace {

bool TrackedButtonDown() {
  return GetAsyncKeyState(State().rightButton ? VK_RBUTTON : VK_LBUTTON) < 0;
}

// One choose step of the 'MDEF' submenu being tracked, in the window its
// items are drawn in.
void ChooseStep(HWND hwnd) {
  ManagerState& s = State();
  MenuHandle menu = SlotMenu(UInt16((s.trackingSlot + 1) << 8));
  if (!Valid(menu)) return;
  POINT mouse;
  GetCursorPos(&mouse);
  RECT area{};
  GetWindowRect(hwnd, &area);
  Rect r{SInt16(area.top), SInt16(area.left), SInt16(area.bottom), SInt16(area.right)};
  bool inside = PtInRect(&area, mouse) != 0;
  if (!(TrackedButtonDown() && inside) && !s.mdefChose) return;
  HDC dc = GetDC(hwnd);
  Rect local = r;
  KWE_SetWMgrPortDC(true, hwnd, dc, &local);
  GrafPtr saved;
  GetPort(&saved);
  GrafPtr wmgr;
  GetWMgrPort(&wmgr);
  SetPort(wmgr);
  SInt16 which = s.mdefChoice;
  CallDefinition(menu, mChooseMsg, &r, Point{SInt16(mouse.y), SInt16(mouse.x)}, &which);
  SetPort(saved);
  KWE_SetWMgrPortDC(false, hwnd, dc, &local);
  ReleaseDC(hwnd, dc);
  s.mdefChoice = which;
  s.mdefChose = which != 0;
}

}  // namespace

KWE_API LRESULT KWE_CALL KWE_MenuSelect(HWND hwnd, UINT, WPARAM wParam, LPARAM lParam) {
  ManagerState& s = State();
  UINT item = LOWORD(wParam), flags = HIWORD(wParam);
  if (item == 0 && lParam == 0 && flags == 0xFFFF) {
    s.trackingSlot = kNoSlot;  // the menu closed
    return 1;
  }
  if ((flags & MF_OWNERDRAW) && !(flags & MF_POPUP)) {
    UInt16 command = UInt16(item);
    MenuHandle menu = SlotMenu(command);
    if ((SlotFlags(command) & kSubmenuSlot) && DefinitionOf(menu)) {
      UInt16 slot = UInt16((command >> 8) - 1);
      if (s.trackingSlot != slot) {
        s.trackingSlot = slot;
        s.mdefChoice = 0;
        s.mdefChose = false;
      }
      HWND menuWindow = FindWindowA("#32768", nullptr);
      ChooseStep(menuWindow ? menuWindow : hwnd);
      return 1;
    }
  }
  if (!s.mdefChose) s.trackingSlot = kNoSlot;
  return 0;
}

KWE_API LRESULT KWE_CALL KWE_EnterIdle(HWND hwnd, UINT, WPARAM, LPARAM) {
  POINT mouse;
  GetCursorPos(&mouse);
  kwe::events::MousePosition() = Point{SInt16(mouse.y), SInt16(mouse.x)};
  UInt16& modifiers = kwe::events::Modifiers();
  bool down = GetAsyncKeyState(VK_LBUTTON) < 0 || GetAsyncKeyState(VK_RBUTTON) < 0;
  modifiers = down ? UInt16(modifiers & ~btnState) : UInt16(modifiers | btnState);
  if (State().trackingSlot != kNoSlot) {
    HWND menuWindow = FindWindowA("#32768", nullptr);
    ChooseStep(menuWindow ? menuWindow : hwnd);
  }
  return 0;
}

KWE_API void KWE_CALL KWE_SetMenuHook(KWEMenuHookProcPtr hook) {
  ManagerState& s = State();
  if (s.hook) kwe::ReleaseHostProcedure(reinterpret_cast<ProcPtr>(s.hook));
  s.hook = hook ? reinterpret_cast<KWEMenuHookProcPtr>(
                      kwe::WrapHostProcedure(reinterpret_cast<ProcPtr>(hook)))
                : nullptr;
}

KWE_API KWEMenuHookProcPtr KWE_CALL KWE_GetMenuHook(void) { return State().hook; }
