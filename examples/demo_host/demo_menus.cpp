#include "demo_menus.h"

#include <windows.h>

#include <cstdio>

#include "KWEMenus.h"
#include "MacWindows.h"
#include "Memory.h"
#include "Menus.h"
#include "demo_menu_messages.h"

namespace {

constexpr SInt16 kStyleMenu = 131;
constexpr SInt16 kSizeMenu = 132;

std::string ItemName(SInt32 choice) {
  MenuHandle menu = GetMenuHandle(SInt16(choice >> 16));
  Str255 text{0};
  if (menu) GetMenuItemText(menu, SInt16(choice & 0xFFFF), text);
  char line[300];
  std::snprintf(line, sizeof line, " menu %d item %d \"%.*s\";", int(choice >> 16),
                int(choice & 0xFFFF), int(text[0]), reinterpret_cast<const char*>(text + 1));
  return line;
}

// The Style menu's items are checked as a Macintosh program checks them.
void Choose(SInt32 choice) {
  if ((choice >> 16) == kStyleMenu) {
    MenuHandle style = GetMenuHandle(kStyleMenu);
    for (SInt16 i = 1; i <= 3; ++i) CheckItem(style, i, i == SInt16(choice & 0xFFFF));
  }
  HiliteMenu(0);
}

}  // namespace

void SetUpMenuBar() {
  InitMenus();
  Handle bar = GetNewMBar(128);
  if (!bar) return;
  SetMenuBar(bar);
  DisposeHandle(bar);
  InsertMenu(GetMenu(kSizeMenu), -1);
  DrawMenuBar();
}

std::string HandleMenuEvent(const EventRecord& event) {
  SInt32 choice = 0;
  if (event.what == mouseDown) {
    WindowPtr window = nullptr;
    if (FindWindo(event.where, &window) != inMenuBar) return "";
    choice = MenuSelect(event.where);
  } else if ((event.what == keyDown || event.what == autoKey) && (event.modifiers & cmdKey)) {
    choice = MenuKey(SInt16(event.message & charCodeMask));
  } else {
    return "";
  }
  if (!choice) return " no menu choice;";
  Choose(choice);
  return ItemName(choice);
}

void PostMenuInput(HWND mainWindow) {
  // Bold chosen in the Style menu: the command Windows sends when a user
  // picks it from the bar.
  HMENU bar = GetMenu(mainWindow);
  int count = bar ? GetMenuItemCount(bar) : 0;
  for (int i = 0; i < count; ++i) {
    HMENU popup = GetSubMenu(bar, i);
    if (popup && KWE_MenuIDFromHMENU(popup) == kStyleMenu) {
      PostMessageA(mainWindow, WM_COMMAND, GetMenuItemID(popup, 1), 0);
      break;
    }
  }
  // Ctrl+N, File's New, as the keyboard makes it.
  SetForegroundWindow(mainWindow);
  SetFocus(mainWindow);
  INPUT strokes[4] = {};
  const WORD keys[4] = {VK_CONTROL, 'N', 'N', VK_CONTROL};
  for (int i = 0; i < 4; ++i) {
    strokes[i].type = INPUT_KEYBOARD;
    strokes[i].ki.wVk = keys[i];
    strokes[i].ki.dwFlags = i >= 2 ? KEYEVENTF_KEYUP : 0;
  }
  SendInput(4, strokes, sizeof(INPUT));
}
