// The dialog table: one entry per library dialog, for its private table,
// its caption item and the item handles; and item lookup in the item list.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "dialogs/dialog_manager.h"
#include "frame/session.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {

ManagerState& State() {
  static ManagerState state;
  return state;
}

DialogInfo* InfoOf(DialogPtr d) {
  if (!d) return nullptr;
  for (auto& e : State().table)
    if (e && e->dialog == d) return e.get();
  return nullptr;
}

DialogInfo* Register(DialogPtr d) {
  auto& table = State().table;
  for (auto& e : table)
    if (!e->dialog) {
      *e = DialogInfo{};
      e->dialog = d;
      return e.get();
    }
  if (table.size() >= kMaxDialogs) {
    // The dialog still works, with no entry: no private table, no caption.
    MessageBoxA(TheSession().mainWindow, "Too many Dialogs", nullptr, MB_OK | MB_ICONINFORMATION);
    return nullptr;
  }
  table.push_back(std::make_unique<DialogInfo>());
  table.back()->dialog = d;
  return table.back().get();
}

void Unregister(DialogPtr d) {
  DialogInfo* info = InfoOf(d);
  if (!info) return;
  if (info->table) DisposeHandle(info->table);
  *info = DialogInfo{};
}

bool IsLibraryDialog(DialogPtr d) {
  return d && (windows::FlagsOf(d) & windows::kMadeForDialogFlag) &&
         windows::Peek(d)->windowKind == dialogKind;
}

HWND HwndOf(DialogPtr d) { return windows::HwndOf(d); }

DialogPtr DialogOfHwnd(HWND hwnd) {
  WindowPtr w = hwnd ? windows::WindowOfHwnd(hwnd) : nullptr;
  return IsLibraryDialog(w) ? w : nullptr;
}

std::vector<ItemView> ItemsOf(DialogPtr d) {
  Handle items = IsLibraryDialog(d) ? Dlg(d)->items : nullptr;
  if (!items || !*items) return {};
  return ReadItems(reinterpret_cast<const UInt8*>(*items), size_t(GetHandleSize(items)));
}

bool ItemAt(DialogPtr d, int item, ItemView* view) {
  std::vector<ItemView> items = ItemsOf(d);
  if (item < 1 || size_t(item) > items.size()) return false;
  *view = items[size_t(item) - 1];
  return true;
}

UInt8* ItemBytes(DialogPtr d, const ItemView& v) {
  return reinterpret_cast<UInt8*>(*Dlg(d)->items) + v.offset;
}

HWND ItemWindow(DialogPtr d, int item) {
  HWND hwnd = HwndOf(d);
  return hwnd && item > 0 ? GetDlgItem(hwnd, item) : nullptr;
}

void* ItemHandle(DialogPtr d, int item) {
  DialogInfo* info = InfoOf(d);
  if (info && item > 0 && size_t(item) <= info->handles.size())
    return info->handles[size_t(item) - 1];
  ItemView v;
  if (!ItemAt(d, item, &v)) return nullptr;
  SInt32 slot;
  std::memcpy(&slot, ItemBytes(d, v), sizeof slot);
  return reinterpret_cast<void*>(intptr_t(slot));
}

void SeedHandles(DialogPtr d) {
  DialogInfo* info = InfoOf(d);
  if (!info) return;
  std::vector<ItemView> items = ItemsOf(d);
  info->handles.resize(std::min(info->handles.size(), items.size()));
  for (size_t i = info->handles.size(); i < items.size(); ++i) {
    SInt32 slot;
    std::memcpy(&slot, ItemBytes(d, items[i]), sizeof slot);
    info->handles.push_back(reinterpret_cast<void*>(intptr_t(slot)));
  }
}

void SetItemHandle(DialogPtr d, int item, void* handle) {
  ItemView v;
  if (!ItemAt(d, item, &v)) return;
  DialogInfo* info = InfoOf(d);
  if (info) {
    if (info->handles.size() < size_t(item)) info->handles.resize(size_t(item), nullptr);
    info->handles[size_t(item) - 1] = handle;
  }
  // A window handle or a caption mark fits the slot in every build; other
  // handles only where pointers are 32 bits.
  intptr_t value = reinterpret_cast<intptr_t>(handle);
  bool fits = sizeof(void*) == 4 || value == intptr_t(SInt32(value));
  SInt32 slot = fits ? SInt32(value) : 0;
  std::memcpy(ItemBytes(d, v), &slot, sizeof slot);
}

void SetItemRect(DialogPtr d, int item, const Rect& r) {
  ItemView v;
  if (ItemAt(d, item, &v)) std::memcpy(ItemBytes(d, v) + 4, &r, sizeof r);
}

PrivateTable TableOf(DialogPtr d) {
  PrivateTable t;
  DialogInfo* info = InfoOf(d);
  if (info && info->table && *info->table)
    ReadPrivateTable(reinterpret_cast<const UInt8*>(*info->table),
                     size_t(GetHandleSize(info->table)), &t);
  return t;
}

}  // namespace kwe::dialogs
