/* The library's own Menu Manager calls: the entry points a host's main
   window procedure forwards the menu messages to, and the menu hook. */
#ifndef KWE_MENUS_EXTENSIONS_H
#define KWE_MENUS_EXTENSIONS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Menus.h"

/* WM_INITMENUPOPUP: a bar menu about to open is rebuilt from its record. */
KWE_API void KWE_CALL KWE_InitMenuMsg(HMENU hMenu);
/* WM_COMMAND of a menu item (KWE_EventCommand hands it on): the choice is
   stored for MenuSelect and a mouseDown in the menu bar is posted. */
KWE_API void KWE_CALL KWE_EventMenuSel(UInt32 command);
/* WM_MENUSELECT and WM_ENTERIDLE: tracking of menus with an 'MDEF'. */
KWE_API LRESULT KWE_CALL KWE_MenuSelect(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT KWE_CALL KWE_EnterIdle(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
/* WM_MEASUREITEM and WM_DRAWITEM of owner-drawn menu items; answers 1. */
KWE_API LRESULT KWE_CALL KWE_MenuUserItem(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
/* The menu ID a command ID stands for; else the one hMenu's items carry. */
KWE_API SInt16 KWE_CALL KWE_MenuIDFromCMD(HMENU hMenu, UInt16 command);
KWE_API SInt16 KWE_CALL KWE_MenuIDFromHMENU(HMENU hMenu);
/* Nonzero first restarts; the next menu of the hierarchical list, else 0. */
KWE_API MenuHandle KWE_CALL KWE_SearchHierMenuList(SInt16 first);
/* One item per installed font: TrueType faces only, or the others. */
KWE_API void KWE_CALL KWE_AddResFontMenu(MenuHandle menu, Boolean trueTypeOnly);
/* Called while a pop-up tracked by the library has the mouse outside it. */
typedef void(KWE_CALL* KWEMenuHookProcPtr)(void);
KWE_API void KWE_CALL KWE_SetMenuHook(KWEMenuHookProcPtr hook);
KWE_API KWEMenuHookProcPtr KWE_CALL KWE_GetMenuHook(void);

#endif
