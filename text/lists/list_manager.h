// The List Manager's own state and the operations its files share: the
// session's table of 255 list slots, the library's per-list fields beside
// it, the cell arithmetic of a ListRec and the tie to its list box.
#pragma once
#include <windows.h>

#include "KWELists.h"
#include "Lists.h"

namespace kwe {
// Allocated cleared by KWE_InitSession, released by KWE_ExitSession.
Ptr ListManagerWorkBlock();
}  // namespace kwe

namespace kwe::lists {

constexpr int kSlotCount = 255;
constexpr Size kMaxCellBytes = 32767;
constexpr UInt16 kSelectedBit = 0x8000;
constexpr UInt16 kOffsetBits = 0x7FFF;
constexpr UInt16 kDefaultNextOptions = 0x0082;

// Slot flags.
enum : UInt16 {
  kDrawingOff = 0x0001,
  kTearOffOutside = 0x0002,
  kSeveralColumns = 0x0004,
  kIgnoreTyping = 0x0008,
  kIgnoreClicks = 0x0010,
  kClicksToWindow = 0x0020
};

// One slot of the table in the List Manager's work block: 18 bytes in the
// 32-bit build. The 64-bit build widens the handle, window and procedure
// fields, and the work block grows with them.
#pragma pack(push, 2)
struct Slot {
  ListHandle list;
  HWND listBox;
  UInt16 flags;
  SInt16 dragWidth, dragHeight;
  ProcPtr dragHook;
};
#pragma pack(pop)
constexpr Size kTableBytes = Size(kSlotCount * sizeof(Slot));

// What the library keeps for a list besides its slot.
struct Extra {
  bool grid = false;        // drawn by the grid procedure, one item per row
  bool ownerDrawn = false;  // grid or LDEF: items hold no text
  bool doubleClick = false;
  bool placing = false;            // LSize moves the list box: its WM_SIZE is not the user's
  bool stale = false;              // texts changed while drawing was off (see RefreshItem)
  bool wrappedDefinition = false;  // an 'LDEF' made callable for the host
  bool dropped = false;
  Point dropPoint{};
  HWND coveredItem = nullptr;  // the dialog user item the list stands on
  WNDPROC previous = nullptr;
};

Slot* Table();  // null outside a session
Slot* SlotOf(ListHandle list);
Extra& ExtraOf(ListHandle list);
// The list whose list box is hwnd, or null.
ListHandle ListOfBox(HWND hwnd);
HWND BoxOf(ListHandle list);
// A list made by LNew and not yet disposed of.
bool IsLive(ListHandle list);
int TakeSlot(ListHandle list);  // -1 when all are taken (and the user is told)
void FreeSlot(int slot);

inline ListPtr Rec(ListHandle l) { return *l; }
inline int Rows(ListHandle l) { return Rec(l)->dataBounds.bottom - Rec(l)->dataBounds.top; }
inline int Columns(ListHandle l) { return Rec(l)->dataBounds.right - Rec(l)->dataBounds.left; }
inline int CellCount(ListHandle l) { return Rec(l)->maxIndex + 1; }
inline Size RecordBytes(int cells) { return Size(offsetof(ListRec, cellArray) + 2 * cells); }
// The cell's index, or -1 outside dataBounds.
int IndexOf(ListHandle l, Cell c);
Cell CellAt(ListHandle l, int index);
inline UInt16& Entry(ListHandle l, int index) {
  return reinterpret_cast<UInt16*>(Rec(l)->cellArray)[index];
}
inline bool Selected(ListHandle l, int index) { return (Entry(l, index) & kSelectedBit) != 0; }
void SetSelectedBit(ListHandle l, int index, bool on);
// The cell's data in cells, and its length.
UInt16 DataOffset(ListHandle l, int index);
SInt16 DataLength(ListHandle l, int index);

// The list-box item that shows a cell: the row for a grid, else the index.
int ItemOf(ListHandle l, int index);

// Replaces cell index's bytes by length bytes (source may be null for
// zeros). False, changing nothing, when cells would pass 32767 bytes or
// cannot grow.
bool ReplaceCellData(ListHandle l, int index, const void* data, int length, bool append);
// Brings the list box's item of the cell up to date.
void RefreshItem(ListHandle l, int index);
// Refills a text list's list box from the cells, keeping its selection and
// scroll position.
void RefillTexts(ListHandle l);

// The listbox selection from the cells' bits.
void PushSelection(ListHandle l);
void PullSelection(ListHandle l);

// Placement and painting.
void PlaceBox(ListHandle l);
void UpdateVisible(ListHandle l);
void InvalidateCell(ListHandle l, int index);
// An owner-drawn list's item (WM_DRAWITEM reaching KWE_UserItem).
bool DrawItem(const DRAWITEMSTRUCT& dis);
// The built-in procedure of grid lists, called like an 'LDEF'.
ProcPtr GridProcedure();
// The definition procedure called like an 'LDEF'.
void CallDefinition(ListHandle l, SInt16 message, bool selected, Rect* r, Cell c);
// Grid lists scroll sideways in whole columns.
void ScrollColumns(ListHandle l, int code, int thumb);

struct ManagerState {
  UInt16 nextOptions = kDefaultNextOptions;
  int drawNesting = 0;  // the library repaints a list: keep its background
  WNDPROC listBoxProc = nullptr;
};
ManagerState& State();

}  // namespace kwe::lists
