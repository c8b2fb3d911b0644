// The Menu Manager's state and the operations its files share: MenuInfo
// records in handles, the menu bar and the hierarchical list, the command
// slots that name Win32 command IDs, the owner-drawn items, and the Win32
// menus the bar is rebuilt into.
#pragma once
#include <windows.h>

#include <deque>
#include <string>
#include <vector>

#include "KWEMenus.h"
#include "Menus.h"
#include "menus/menu_records.h"
#include "menus/menu_text.h"

namespace kwe::menus {

constexpr int kBarPositions = 24;
constexpr int kHierSlots = 128;
constexpr int kSubmenuLimit = 128;
// Command IDs are ((slot + 1) << 8) | (item - 1) in 16 bits: slot 254 is
// never made, so 0xFF00 | (item - 1), what a full table answers, names no
// menu, and 0xFFFF stays the Quit command.
constexpr int kCommandSlotLimit = 254;
constexpr UInt16 kNoSlot = 0xFFFF;
constexpr UInt16 kQuitCommand = 0xFFFF;
constexpr int kColumnRows = 26;  // rows before Windows starts a new column

constexpr UInt8 kPopUpSlot = 1;
constexpr UInt8 kSubmenuSlot = 2;  // a submenu, or a menu with an 'MDEF'

constexpr SInt16 kSysValueMergedAppleMenu = 13;

struct CommandSlot {
  SInt16 menuID;
  MenuHandle menu;
  UInt8 flags;
};

struct OwnerDrawEntry {
  MenuHandle menu;
  UInt16 key;  // the submenu's low 16 bits, else the command ID
  UInt16 command;
  HMENU submenu;
};

struct HierSlot {
  SInt16 menuID = 0;  // 0: free
  MenuHandle menu = nullptr;
};

// The 'MDEF' of a menu: its resource handle and the procedure that plays it.
struct MenuDefinition {
  MenuHandle menu;
  Handle resource;
  MenuDefProcPtr procedure;
};

struct ManagerState {
  bool initialised = false;
  HierSlot hier[kHierSlots];
  int hierSearch = 0;  // KWE_SearchHierMenuList's place
  std::vector<CommandSlot> slots;
  std::vector<OwnerDrawEntry> ownerDraw;
  bool ownerDrawUsed = false;
  std::vector<HMENU> submenus;
  std::vector<MenuDefinition> definitions;

  // The Win32 bar: the popup and menu ID of each bar position, and how many
  // positions the last DrawMenuBar showed.
  HMENU barPopups[kBarPositions] = {};
  SInt16 barIDs[kBarPositions] = {};
  int shownCount = 0;
  char shownTitles[kBarPositions][17] = {};
  HMENU bar = nullptr;  // the main window's menu bar (the host's or ours)
  bool madeBar = false;

  // The host's own popup (see InitMenus).
  int hostItemCount = 0;
  HMENU hostPopup = nullptr;
  UINT hostCommand = 0;
  UINT hostLastCommand = 0xFFFF;
  char hostTitle[65] = {};

  std::string plainFormat, shiftedFormat;

  // Choices made faster than the application asks MenuSelect for them (two
  // accelerators in one pump pass), oldest first.
  std::deque<SInt32> selections;
  int hilitedPosition = -1;  // Win32 bar position, -1 for none
  UInt16 quitCommand = 0;
  bool quitFromOverride = false;
  int popUpNesting = 0;
  UInt32 pendingPopUp = 0;
  bool pendingArrived = false;
  bool rightButton = false;
  KWEMenuHookProcPtr hook = nullptr;
  UInt16 trackingSlot = kNoSlot;
  SInt16 mdefChoice = 0;
  bool mdefChose = false;

  HDC measureDC = nullptr;  // a memory DC with the menu font, for sizes
};

ManagerState& State();

// Records (menu_records_calls.cpp).
inline UInt8* Bytes(MenuHandle m) { return reinterpret_cast<UInt8*>(*m); }
size_t RecordSize(MenuHandle m);
inline UInt32 EnableFlags(MenuHandle m) { return ReadLong(Bytes(m) + kEnableFlagsOffset); }
inline SInt16 MenuIDOf(MenuHandle m) { return SInt16(ReadWord(Bytes(m) + kMenuIdOffset)); }
int ItemCount(MenuHandle m);
bool Item(MenuHandle m, int item, ItemView* view);
// The items of a valid menu in one walk.
inline ItemCursor Items(MenuHandle m) { return ItemCursor(Bytes(m), RecordSize(m)); }
// A usable menu handle: not null, its data there and its title whole.
bool Valid(MenuHandle m);
// Items whose texts are taken as they are (no metacharacters), after item
// after (clamped to the count).
void InsertPlainItems(MenuHandle m, const std::vector<std::string>& texts, int after);

// The 'MDEF' procedure of a menu, null for a standard menu.
MenuDefProcPtr DefinitionOf(MenuHandle m);
Handle DefinitionResource(MenuHandle m);
void SetDefinition(MenuHandle m, Handle resource, MenuDefProcPtr procedure);
void ForgetDefinition(MenuHandle m);
// Sends message to the menu's definition (the standard one without an
// 'MDEF'), with the current port as it is.
void CallDefinition(MenuHandle m, SInt16 message, Rect* r, Point hit, SInt16* whichItem);
void KWE_CALL StandardMenuDefinition(SInt16 message, MenuHandle menu, Rect* r, Point hit,
                                     SInt16* whichItem);

// Sizes (menu_sizes.cpp).
int StandardItemHeight();
// The icon's size for an item: 16 x 16 for 0x1D and 0x1E, the 'cicn's
// bounds, else 32 x 32; 0 x 0 without an icon.
SIZE IconSize(int icon, UInt8 key);
int ItemHeight(const ItemView& v);
HDC MeasureDC();
void ReleaseMeasureDC();

// The bar (menu_bar.cpp).
MenuListPtr BarList();
int BarCount();
MenuHandle BarMenu(int index);
int BarIndexOf(SInt16 menuID);
bool MergedAppleMenu();
void ResetMenuList();  // an empty bar (6 bytes)
void RemoveFromBar(MenuHandle m);

// Win32 menus (win32_menus.cpp).
UInt16 RegisterSlot(SInt16 menuID, MenuHandle menu, UInt8 flags);
// The slot's menu ID, 0 for a slot that does not exist.
SInt16 SlotMenuID(UInt16 command);
MenuHandle SlotMenu(UInt16 command);
UInt8 SlotFlags(UInt16 command);
int AddOwnerDraw(MenuHandle menu, UInt16 key, UInt16 command, HMENU submenu);
// Fills target with the items of menu; base is (slot + 1) << 8. The number
// of items appended.
int BuildWin32Menu(MenuHandle menu, HMENU target, UInt16 base, bool popUp);
void DestroyWin32Items(HMENU target);
TextOptions CurrentTextOptions();
HMENU MainBar();
int Win32PositionOf(HMENU popup);

// Commands (menu_commands.cpp).
// Pumps up to 16 passes until arrived() holds; whether it does.
bool WaitForCommand(bool (*arrived)());
void RecordMenuCommand(UInt32 command);
void DestroyAllMenus();
void KWE_CALL DrawMenuBarDefault();
void KWE_CALL HiliteMenuDefault(SInt16 menuID);
SInt32 PopUpMenuSelectWork(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem);

}  // namespace kwe::menus
