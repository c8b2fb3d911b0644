// The demonstration's menu bar: an Apple menu, File and Edit with command
// keys, a Style menu with checked and styled items and a Size submenu, all
// from the application's 'MBAR' and 'MENU' resources.
// Free of <windows.h>, for the Macintosh side; demo_menu_messages.h has the
// host shell's part.
#pragma once
#include <string>

#include "Events.h"

// InitMenus, the bar from 'MBAR' 128 and DrawMenuBar.
void SetUpMenuBar();

// A mouseDown in the menu bar (MenuSelect) or a command key (MenuKey): what
// was chosen, as the event loop's line says it; empty for other events.
std::string HandleMenuEvent(const EventRecord& event);
