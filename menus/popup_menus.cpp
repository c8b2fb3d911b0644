// PopUpMenuSelect: a standard menu is shown as a Win32 pop-up menu that
// Windows tracks; a menu with an 'MDEF' (or any menu while a menu hook is
// installed) is drawn by its definition in a temporary window that the
// library tracks itself.
#include <windows.h>

#include <algorithm>

#include "Events.h"
#include "MacWindows.h"
#include "events/event_queue.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "menus/menu_manager.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::menus {

namespace {

constexpr SInt16 kTemporaryWindowProc = 255;
constexpr int kStartSlop = 4;  // the mouse must move this far before tracking starts

int HeightAbove(MenuHandle menu, int item) {
  int height = 0;
  ItemView v;
  for (ItemCursor c = Items(menu); c.Index() + 1 < item && c.Next(&v);) height += ItemHeight(v);
  return height;
}

void RefreshButtonState() {
  bool down = GetAsyncKeyState(VK_LBUTTON) < 0 || GetAsyncKeyState(VK_RBUTTON) < 0;
  UInt16& modifiers = events::Modifiers();
  modifiers = down ? UInt16(modifiers & ~btnState) : UInt16(modifiers | btnState);
}

SInt32 TrackWithWin32(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem) {
  ManagerState& s = State();
  HMENU popup = CreatePopupMenu();
  if (!popup) return 0;
  SInt16 id = MenuIDOf(menu);
  UInt16 slot = RegisterSlot(id, menu, kPopUpSlot);
  BuildWin32Menu(menu, popup, UInt16(slot << 8), true);
  int y = top - HeightAbove(menu, popUpItem);
  int x = left;
  int width = SInt16(ReadWord(Bytes(menu) + kMenuWidthOffset));
  int screen =
      quickdraw::Screen().width > 0 ? quickdraw::Screen().width : GetSystemMetrics(SM_CXSCREEN);
  if (x + width > screen - 20) x = std::max(0, screen - width - 30);
  POINT mouse;
  GetCursorPos(&mouse);
  RECT around{mouse.x - 5, mouse.y - 5, mouse.x + 5, mouse.y + 5};
  UINT flags = TPM_LEFTALIGN | (s.rightButton ? TPM_RIGHTBUTTON : TPM_LEFTBUTTON);
  ++s.popUpNesting;
  s.pendingPopUp = 0;
  s.pendingArrived = false;
  s.mdefChose = false;
  SInt32 result = 0;
  if (TrackPopupMenu(popup, flags, x - 1, y - 1, 0, TheSession().mainWindow, &around) &&
      WaitForCommand([] { return State().pendingArrived; })) {
    UInt16 command = UInt16(s.pendingPopUp);
    SInt16 item = SInt16((command & 0xFF) + 1);
    if (s.mdefChose && s.mdefChoice > 0) item = s.mdefChoice;
    result = SInt32(UInt32(UInt16(SlotMenuID(command))) << 16 | UInt16(item));
  }
  --s.popUpNesting;
  s.pendingArrived = false;
  s.pendingPopUp = 0;
  s.mdefChose = false;
  DestroyWin32Items(popup);
  DestroyMenu(popup);
  RefreshButtonState();
  return result;
}

// The global mouse position.
Point Mouse() {
  POINT p;
  GetCursorPos(&p);
  return Point{SInt16(p.y), SInt16(p.x)};
}

bool Inside(const Rect& r, Point p) {
  return p.v >= r.top && p.v < r.bottom && p.h >= r.left && p.h < r.right;
}

SInt32 TrackInWindow(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem) {
  ManagerState& s = State();
  GrafPtr saved;
  GetPort(&saved);
  GrafPtr wmgr = nullptr;
  GetWMgrPort(&wmgr);
  if (wmgr) SetPort(wmgr);
  Rect r{top, left, top, left};
  SInt16 which = popUpItem;
  CallDefinition(menu, mSizeMsg, &r, Point{top, left}, &which);
  r.right = SInt16(r.left + SInt16(ReadWord(Bytes(menu) + kMenuWidthOffset)));
  r.bottom = SInt16(r.top + SInt16(ReadWord(Bytes(menu) + kMenuHeightOffset)));
  CallDefinition(menu, mPopUpMsg, &r, Point{top, left}, &which);
  // Kept on the screen.
  int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
  int dx = std::min(0, width - r.right) + std::max(0, -int(r.left));
  int dy = std::min(0, height - r.bottom) + std::max(0, -int(r.top));
  r.left = SInt16(r.left + dx);
  r.right = SInt16(r.right + dx);
  r.top = SInt16(r.top + dy);
  r.bottom = SInt16(r.bottom + dy);
  SInt32 result = 0;
  WindowPtr window = NewCWindow(nullptr, &r, reinterpret_cast<const UInt8*>(""), false,
                                kTemporaryWindowProc, reinterpret_cast<WindowPtr>(-1), false, 0);
  if (!window) {
    SetPort(saved);
    return which > 0 ? SInt32(UInt32(UInt16(MenuIDOf(menu))) << 16 | UInt16(which)) : 0;
  }
  ShowWindow(window);
  SetPort(window);
  SetOrigin(r.left, r.top);
  HWND hwnd = windows::WindowHandleOf(window);
  SetCapture(hwnd);
  CallDefinition(menu, mDrawMsg, &r, Point{top, left}, &which);
  Point start = Mouse();
  // The button's real state, which the messages may not have told yet.
  Button();
  while (StillDown() && GetCapture() == hwnd) {
    Point p = Mouse();
    if (std::abs(p.h - start.h) > kStartSlop || std::abs(p.v - start.v) > kStartSlop ||
        Inside(r, p))
      break;
    Sleep(10);
  }
  bool started = false;
  which = 0;
  // Tracking also ends when another window takes the capture away.
  while (WaitMouseUp() && GetCapture() == hwnd) {
    Point p = Mouse();
    if (which == 0 && !Inside(r, p)) {
      if (s.hook) s.hook();
      if (started) CallDefinition(menu, mChooseMsg, &r, p, &which);
    } else {
      started = true;
      CallDefinition(menu, mChooseMsg, &r, p, &which);
    }
    Sleep(10);
  }
  ReleaseCapture();
  SetPort(saved);
  DisposeWindow(window);
  if (which > 0) result = SInt32(UInt32(UInt16(MenuIDOf(menu))) << 16 | UInt16(which));
  return result;
}

}  // namespace

SInt32 PopUpMenuSelectWork(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem) {
  ManagerState& s = State();
  s.rightButton = popUpItem == kwePopUpRightButton;
  if (s.rightButton) popUpItem = 0;
  if (!Valid(menu) || !s.initialised) return 0;
  if (DefinitionOf(menu) || s.hook) return TrackInWindow(menu, top, left, popUpItem);
  return TrackWithWin32(menu, top, left, popUpItem);
}

}  // namespace kwe::menus
