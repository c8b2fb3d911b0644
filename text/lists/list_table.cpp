// The session's list table: 255 slots in the List Manager's work block,
// each tying a list to its list box, and the library's fields beside them.
#include <windows.h>

#include "frame/session.h"
#include "text/lists/list_manager.h"

namespace kwe::lists {
namespace {

// The pointer-wide fields of a slot do not fit the 32-bit table's 18 bytes in
// the 64-bit build, so the whole table widens there (see Slot).
static_assert(sizeof(void*) != 4 || kTableBytes == 4590, "255 slots of 18 bytes");

Extra g_extra[kSlotCount];
ManagerState g_state;

}  // namespace

ManagerState& State() { return g_state; }

Slot* Table() { return reinterpret_cast<Slot*>(ListManagerWorkBlock()); }

Slot* SlotOf(ListHandle list) {
  Slot* table = Table();
  if (!table || !list) return nullptr;
  // lReserved names the slot; the slot must name the list back, so that a
  // stale or foreign handle is never taken for a live one.
  int slot = UInt8(Rec(list)->lReserved);
  if (slot >= kSlotCount || table[slot].list != list || !table[slot].listBox) return nullptr;
  return &table[slot];
}

bool IsLive(ListHandle list) {
  if (!list || !Table()) return false;
  for (int i = 0; i < kSlotCount; ++i)
    if (Table()[i].list == list && Table()[i].listBox) return SlotOf(list) != nullptr;
  return false;
}

Extra& ExtraOf(ListHandle list) { return g_extra[UInt8(Rec(list)->lReserved) % kSlotCount]; }

HWND BoxOf(ListHandle list) {
  Slot* s = SlotOf(list);
  return s ? s->listBox : nullptr;
}

ListHandle ListOfBox(HWND hwnd) {
  Slot* table = Table();
  if (!table || !hwnd) return nullptr;
  // Every message of a list box asks: the slot found last is tried first.
  static int last = 0;
  if (table[last].listBox == hwnd) return table[last].list;
  for (int i = 0; i < kSlotCount; ++i) {
    if (table[i].listBox != hwnd) continue;
    last = i;
    return table[i].list;
  }
  return nullptr;
}

int TakeSlot(ListHandle list) {
  Slot* table = Table();
  if (!table) return -1;
  for (int i = 0; i < kSlotCount; ++i) {
    if (table[i].listBox || table[i].list) continue;
    table[i] = Slot{};
    table[i].list = list;
    g_extra[i] = Extra{};
    return i;
  }
  MessageBoxA(TheSession().mainWindow, "Too many List Boxes", "", MB_OK | MB_ICONINFORMATION);
  return -1;
}

void FreeSlot(int slot) {
  if (!Table() || slot < 0 || slot >= kSlotCount) return;
  Table()[slot] = Slot{};
  g_extra[slot] = Extra{};
}

}  // namespace kwe::lists
