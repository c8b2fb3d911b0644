// The Dialog Manager's own state and the small operations its files share:
// the dialog table (one entry per library dialog, with its private table
// and the item handles the published list cannot hold), item lookup, and
// the modal state of the keyboard and event handling.
#pragma once
#include <windows.h>

#include <memory>
#include <vector>

#include "Dialogs.h"
#include "dialogs/dialog_data.h"

namespace kwe::dialogs {

inline DialogPeek Dlg(DialogPtr d) { return reinterpret_cast<DialogPeek>(d); }

struct DialogInfo {
  DialogPtr dialog = nullptr;
  Handle table = nullptr;  // the private table, 'KWED' layout in native order
  SInt16 captionItem = -1;
  bool registered = false;
  bool ownsRecord = false;
  bool overlap = false;
  bool focusChecked = false;
  SInt16 builtFocus = 0;  // the item focus upkeep takes first after building
  SInt16 lastFocus = 0;   // the item that last took the focus, or had it at upkeep
  // Item handles by item index. The item list's slot is 32 bits wide: the
  // 32-bit build keeps each handle there too, the 64-bit build only the
  // window handles (32 significant bits), so GetDialogItem answers from here.
  std::vector<void*> handles;
};

struct ManagerState {
  bool initialised = false;
  std::vector<std::unique_ptr<DialogInfo>> table;  // never shrinks
  HWND captions[255] = {};
  // ParamText: four strings, and per string the last static text that used
  // it with that item's unexpanded text.
  UInt8 params[4][256] = {};
  DialogPtr paramDialog[4] = {};
  SInt16 paramItem[4] = {};
  UInt8 paramSource[4][256] = {};
  SInt16 dialogFontNumber = 0;  // SetDialogFont's, recorded
  int buildNesting = 0;
  int drawNesting = 0;
  // Modal state.
  DialogPtr modalDialog = nullptr;
  HWND modalWindow = nullptr;
  int filterNesting = 0;
  bool keepEnabled = false;
  KWEButtonFocusProc buttonFocusProc = nullptr;
  // Alerts.
  Handle alertIcon = nullptr;  // the icon item's handle while an alert is built
  SInt16 alertStage = -1;
  SInt16 lastAlert = 0;
  SoundProcPtr soundProc = nullptr;  // null: the standard one
  bool silent = false;
  HICON icons[3] = {};
  int baseUnits = 0;
  // The classes' own procedures, kept when the first child is subclassed.
  WNDPROC staticProc = nullptr, editProc = nullptr, userItemProc = nullptr;
};
ManagerState& State();

// Dialogs registered in the table; null for anything else.
DialogInfo* InfoOf(DialogPtr d);
// The entry for a new dialog: a free one or a new one; null when the table
// is full ("Too many Dialogs" has been shown then).
DialogInfo* Register(DialogPtr d);
void Unregister(DialogPtr d);
// Below the 64 ports QuickDraw keeps, so that the table fills before them.
constexpr size_t kMaxDialogs = 48;

bool IsLibraryDialog(DialogPtr d);  // a library window made for a dialog
HWND HwndOf(DialogPtr d);
DialogPtr DialogOfHwnd(HWND hwnd);

// The item list's whole items.
std::vector<ItemView> ItemsOf(DialogPtr d);
bool ItemAt(DialogPtr d, int item, ItemView* view);
UInt8* ItemBytes(DialogPtr d, const ItemView& v);  // the item's slot in the list
HWND ItemWindow(DialogPtr d, int item);
void* ItemHandle(DialogPtr d, int item);
void SetItemHandle(DialogPtr d, int item, void* handle);
// The handles of items added to the list since, from their slots.
void SeedHandles(DialogPtr d);
void SetItemRect(DialogPtr d, int item, const Rect& r);
// A static text that became the window caption has the handle
// 0xFFFFFF00 | its caption slot: the slot, or -1 for any other handle.
inline int CaptionSlot(const void* handle) {
  intptr_t v = reinterpret_cast<intptr_t>(handle);
  return v < 0 && v >= -256 ? int(v & 0xFF) : -1;
}
// The private table, parsed; empty without one.
PrivateTable TableOf(DialogPtr d);

// Creation (dialog_creation.cpp): a detached copy of a 'DITL' holding its
// whole items; an invisible black-and-white dialog in front, without a close
// box, over an item list it takes (null when it cannot be made).
Handle CopyOfItemList(SInt16 id);
DialogPtr NewDialogFromList(const Rect* bounds, ConstStr255Param title, SInt16 procID, Handle items,
                            SInt16 ditlId);

// Building (dialog_building.cpp): children from item first (1-based);
// false when an edit child could not be made.
bool BuildItems(DialogPtr d, int first, SInt16 ditlId);
// Frees an item's resources and destroys its child.
void ReleaseItem(DialogPtr d, int item, bool destroyChild);
// The font the items get.
HFONT ItemFont(DialogPtr d);

// Text (item_text.cpp).
void SetChildText(HWND child, const UInt8* text, size_t length);
// Expanded with the current parameters, recording the ones used for item.
void ExpandForItem(DialogPtr d, int item, const UInt8* text, size_t length, UInt8 out[256]);

// Keyboard and focus (dialog_keyboard.cpp).
bool Navigate(DialogPtr d, const EventRecord& e);
void KeepFocus(DialogPtr d);
void RememberFocus(DialogPtr d, int item);
void MoveDefaultOutline(DialogPtr d, int item);
void FocusItem(DialogPtr d, int item);
int ItemOfChild(HWND child);
bool TakesFocus(DialogPtr d, int item);

// Event handling (dialog_events.cpp).
bool HandleEvent(DialogPtr d, const EventRecord& e, SInt16* itemHit);
WindowPtr EventWindow(const EventRecord& e);

// Alerts' stage sound (alerts.cpp).
void PlaySound(SInt16 n);

}  // namespace kwe::dialogs
