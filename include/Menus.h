/* Menu Manager: Toolbox menus kept as MenuInfo records and mirrored into
   Win32 menus, the menu bar into the host main window's menu. */
#ifndef KWE_MENUS_H
#define KWE_MENUS_H

#include <stdint.h>

#include "MacTypes.h"
#include "Quickdraw.h"

/* Win32's InsertMenuItem is a macro for InsertMenuItemA: the Toolbox call of
   that name takes its place wherever this header is included. */
#ifdef InsertMenuItem
#undef InsertMenuItem
#endif

enum {
  noMark = 0,
  checkMark = 18,
  hMenuCmd = 0x1B,       /* the item has a submenu: its mark is the submenu's ID */
  iconItemCmd = 0x1D,    /* the item's 'ICON' is drawn at 16 x 16 */
  sicnItemCmd = 0x1E,    /* the item's icon is a 'SICN' */
  shiftedKeyStyle = 0x80 /* style bit: the keyboard equivalent is a shifted one */
};

/* Messages to a menu definition procedure ('MDEF'). */
enum { mDrawMsg = 0, mChooseMsg = 1, mSizeMsg = 2, mPopUpMsg = 3 };

/* The right mouse button tracks a pop-up given this popUpItem. */
enum { kwePopUpRightButton = -666 };

#pragma pack(push, 2)
/* The published record, as a 'MENU' resource holds it after conversion to
   the processor's byte order: the title and then each item (Pascal string,
   then icon, key, mark and style bytes); a 0 length byte ends the items. */
typedef struct MenuInfo {
  SInt16 menuID;
  SInt16 menuWidth;
  SInt16 menuHeight;
#if UINTPTR_MAX == 0xFFFFFFFFu
  Handle menuProc; /* 0, or the 'MDEF' resource's handle */
#else
  /* The 'MDEF' handle's low 32 bits (nonzero when there is one): a 64-bit
     handle does not fit the record's 32-bit slot, so the library keeps the
     whole handle beside the record. */
  UInt32 menuProc;
#endif
  UInt32 enableFlags; /* bit 0 the menu, bit n item n (items 32 on have none) */
  Str255 menuData;
} MenuInfo, *MenuPtr;

/* One menu of the bar. 6 bytes in the 32-bit build; the 64-bit build widens
   menuOH to the pointer's size (10 bytes), and lastMenu counts in that. */
typedef struct MenuPair {
  MenuHandle menuOH;
  SInt16 menuLeft; /* the widths of the menus before it */
} MenuPair;

typedef struct MenuListRec {
  SInt16 lastMenu;  /* the byte size of the entries: count x sizeof(MenuPair) */
  SInt16 lastRight; /* the widths of all menus */
  SInt16 mbResID;
  MenuPair menus[1];
} MenuListRec, *MenuListPtr, **MenuListHandle;
#pragma pack(pop)

/* (message, menu, rectangle, point, whichItem), callee-pops. */
typedef void(KWE_CALL* MenuDefProcPtr)(SInt16 message, MenuHandle theMenu, Rect* menuRect,
                                       Point hitPt, SInt16* whichItem);

KWE_API void KWE_CALL InitMenus(void);
KWE_API MenuHandle KWE_CALL NewMenu(SInt16 menuID, ConstStr255Param menuTitle);
/* GetMenu, InsertMenu, DeleteMenu, AppendMenu and DrawMenuBar are exported
   shortened: Win32 has functions (or macros) of those names. */
KWE_API MenuHandle KWE_CALL GetMen(SInt16 resourceID);
KWE_API Handle KWE_CALL GetNewMBar(SInt16 menuBarID);
KWE_API Handle KWE_CALL GetMenuBar(void);
KWE_API void KWE_CALL SetMenuBar(Handle menuList);
KWE_API void KWE_CALL ClearMenuBar(void);
/* beforeID -1: the hierarchical list (submenus and pop-ups). */
KWE_API void KWE_CALL InsertMen(MenuHandle theMenu, SInt16 beforeID);
KWE_API void KWE_CALL DeleteMen(SInt16 menuID);
KWE_API MenuHandle KWE_CALL GetMenuHandle(SInt16 menuID);
KWE_API void KWE_CALL DisposeMenu(MenuHandle theMenu);
KWE_API void KWE_CALL DrawMenuBa(void);
KWE_API void KWE_CALL HiliteMenu(SInt16 menuID);
/* Always 0: the Win32 menu bar lies outside the client area. */
KWE_API SInt16 KWE_CALL GetMBarHeight(void);
/* The choice Windows' tracking made, (menuID << 16) | item; 0 for none. */
KWE_API SInt32 KWE_CALL MenuSelect(Point startPt);
KWE_API SInt32 KWE_CALL MenuKey(SInt16 ch);
KWE_API SInt32 KWE_CALL PopUpMenuSelect(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem);

/* Item data: items split at ";" or return; "^" icon, "!" mark, "<" style,
   "/" keyboard equivalent take the next character; "(" disables. */
KWE_API void KWE_CALL AppendMen(MenuHandle menu, ConstStr255Param data);
KWE_API void KWE_CALL InsertMenuItem(MenuHandle theMenu, ConstStr255Param itemString,
                                     SInt16 afterItem);
KWE_API void KWE_CALL AppendResMenu(MenuHandle theMenu, ResType theType);
KWE_API void KWE_CALL InsertResMenu(MenuHandle theMenu, ResType theType, SInt16 afterItem);
KWE_API void KWE_CALL DeleteMenuItem(MenuHandle theMenu, SInt16 item);
KWE_API SInt16 KWE_CALL CountMItems(MenuHandle theMenu);
KWE_API void KWE_CALL GetMenuItemText(MenuHandle theMenu, SInt16 item, Str255 itemString);
KWE_API void KWE_CALL SetMenuItemText(MenuHandle theMenu, SInt16 item, ConstStr255Param itemString);
/* The older names of the two above. */
KWE_API void KWE_CALL GetItem(MenuHandle theMenu, SInt16 item, Str255 itemString);
KWE_API void KWE_CALL SetItem(MenuHandle theMenu, SInt16 item, ConstStr255Param itemString);
KWE_API void KWE_CALL GetItemIcon(MenuHandle theMenu, SInt16 item, SInt16* iconIndex);
KWE_API void KWE_CALL SetItemIcon(MenuHandle theMenu, SInt16 item, SInt16 iconIndex);
KWE_API void KWE_CALL GetItemCmd(MenuHandle theMenu, SInt16 item, SInt16* cmdChar);
KWE_API void KWE_CALL SetItemCmd(MenuHandle theMenu, SInt16 item, SInt16 cmdChar);
KWE_API void KWE_CALL GetItemMark(MenuHandle theMenu, SInt16 item, SInt16* markChar);
KWE_API void KWE_CALL SetItemMark(MenuHandle theMenu, SInt16 item, SInt16 markChar);
KWE_API void KWE_CALL GetItemStyle(MenuHandle theMenu, SInt16 item, Style* chStyle);
KWE_API void KWE_CALL SetItemStyle(MenuHandle theMenu, SInt16 item, SInt16 chStyle);
KWE_API void KWE_CALL CheckItem(MenuHandle theMenu, SInt16 item, Boolean checked);
/* Item 0 is the whole menu; items 32 and on are always enabled. */
KWE_API void KWE_CALL EnableItem(MenuHandle theMenu, SInt16 item);
KWE_API void KWE_CALL DisableItem(MenuHandle theMenu, SInt16 item);
KWE_API void KWE_CALL CalcMenuSize(MenuHandle theMenu);

#ifdef __cplusplus
inline MenuHandle GetMenu(SInt16 resourceID) { return GetMen(resourceID); }
inline void InsertMenu(MenuHandle m, SInt16 beforeID) { InsertMen(m, beforeID); }
inline void DeleteMenu(SInt16 menuID) { DeleteMen(menuID); }
inline void AppendMenu(MenuHandle m, ConstStr255Param data) { AppendMen(m, data); }
inline void DrawMenuBar() { DrawMenuBa(); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define GetMenu GetMen
#define InsertMenu InsertMen
#define DeleteMenu DeleteMen
#define AppendMenu AppendMen
#define DrawMenuBar DrawMenuBa
#endif

#endif
