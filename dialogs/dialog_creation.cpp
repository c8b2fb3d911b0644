// Making and closing dialogs: the window (a library window made in dialog
// mode), the record's dialog fields, the item list and its children.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "KWEPorts.h"
#include "Memory.h"
#include "Resources.h"
#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "frame/session.h"
#include "frame/unsupported.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {
namespace {

constexpr ResType kDialogType = 0x444C4F47;        // 'DLOG'
constexpr ResType kItemListType = 0x4449544C;      // 'DITL'
constexpr ResType kPrivateTableType = 0x4B574544;  // 'KWED'
constexpr size_t kDialogTemplateFixedSize = 20;

struct Owned {
  std::vector<DialogPtr> records;
} g_owned;

void ScaleItems(DialogPtr d, int first, bool buttons) {
  std::vector<ItemView> items = ItemsOf(d);
  for (size_t i = size_t(first) - 1; i < items.size(); ++i) {
    Rect r = items[i].rect;
    UInt8 type = TypeOf(items[i].type);
    if (type >= kButtonItem && type <= kRadioItem) {
      if (!buttons) continue;
      KWE_ScaleDlgItemRect(true, &r);
    } else if (type == kIconItem || type == kPictureItem) {
      KWE_OffsetDlgItemRect(true, &r);
    } else {
      KWE_ScaleDlgItemRect(true, &r);
    }
    SetItemRect(d, int(i + 1), r);
  }
}

// The record's storage: the caller's, else a block of the library's.
DialogPtr Make(void* storage, const Rect* boundsRect, ConstStr255Param title, Boolean visible,
               SInt16 procID, WindowPtr behind, Boolean goAway, SInt32 refCon, Handle items,
               bool colour, SInt16 ditlId) {
  if (!boundsRect) return nullptr;
  auto* record = static_cast<DialogPeek>(storage);
  if (!record) record = reinterpret_cast<DialogPeek>(NewPtrClear(sizeof(DialogRecord)));
  if (!record) return nullptr;
  Rect bounds = *boundsRect;
  if (SessionFlag(kweFlagScaleDialogs)) KWE_ScaleDlgWindow(true, &bounds);
  windows::SetDialogCreationMode(true);
  WindowPtr w = colour ? NewCWindow(record, &bounds, title, false, procID, behind, goAway, refCon)
                       : NewWindow(record, &bounds, title, false, procID, behind, goAway, refCon);
  windows::SetDialogCreationMode(false);
  if (!w) {
    if (!storage) DisposePtr(reinterpret_cast<Ptr>(record));
    return nullptr;
  }
  record->items = items;
  record->textH = nullptr;
  record->editField = -1;
  record->editOpen = 0;
  record->aDefItem = 0;
  KWE_DialogFontMode(w, true);
  if (!storage) g_owned.records.push_back(w);
  Register(w);
  if (SessionFlag(kweFlagScaleDialogs)) ScaleItems(w, 1, true);
  if (!BuildItems(w, 1, ditlId)) {
    CloseDialog(w);
    if (!storage) {
      g_owned.records.erase(std::find(g_owned.records.begin(), g_owned.records.end(), w));
      DisposePtr(reinterpret_cast<Ptr>(record));
    }
    return nullptr;
  }
  if (visible) ShowWindo(w);
  return w;
}

Handle ItemListCopy(SInt16 id) {
  Handle h = GetResource(kItemListType, id);
  if (!h || !*h) return nullptr;
  std::vector<UInt8> list =
      TrimmedItemList(reinterpret_cast<const UInt8*>(*h), size_t(GetHandleSize(h)));
  Handle copy = NewHandle(Size(list.size()));
  if (copy) std::memcpy(*copy, list.data(), list.size());
  return copy;
}

}  // namespace

Handle CopyOfItemList(SInt16 id) { return ItemListCopy(id); }

DialogPtr NewDialogFromList(const Rect* bounds, ConstStr255Param title, SInt16 procID, Handle items,
                            SInt16 ditlId) {
  return Make(nullptr, bounds, title, false, procID, reinterpret_cast<WindowPtr>(intptr_t(-1)),
              false, 0, items, false, ditlId);
}

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API DialogPtr KWE_CALL NewDialog(void* dStorage, const Rect* boundsRect, ConstStr255Param title,
                                     Boolean visible, SInt16 procID, WindowPtr behind,
                                     Boolean goAwayFlag, SInt32 refCon, Handle items) {
  return Make(dStorage, boundsRect, title, visible, procID, behind, goAwayFlag, refCon, items,
              false, -1);
}

KWE_API DialogPtr KWE_CALL NewColorDialog(void* dStorage, const Rect* boundsRect,
                                          ConstStr255Param title, Boolean visible, SInt16 procID,
                                          WindowPtr behind, Boolean goAwayFlag, SInt32 refCon,
                                          Handle items) {
  return Make(dStorage, boundsRect, title, visible, procID, behind, goAwayFlag, refCon, items, true,
              -1);
}

KWE_API DialogPtr KWE_CALL GetNewDialog(SInt16 dialogID, void* dStorage, WindowPtr behind) {
  Handle h = GetResource(kDialogType, dialogID);
  if (!h || !*h || size_t(GetHandleSize(h)) <= kDialogTemplateFixedSize) return nullptr;
  const UInt8* p = reinterpret_cast<const UInt8*>(*h);
  size_t size = size_t(GetHandleSize(h));
  Rect bounds;
  SInt16 procID, itemsID;
  SInt32 refCon;
  std::memcpy(&bounds, p, sizeof bounds);
  std::memcpy(&procID, p + 8, sizeof procID);
  bool visible = p[10] != 0, goAway = p[12] != 0;
  std::memcpy(&refCon, p + 14, sizeof refCon);
  std::memcpy(&itemsID, p + 18, sizeof itemsID);
  Str255 title;
  title[0] = UInt8(std::min<size_t>(p[20], size - kDialogTemplateFixedSize - 1));
  std::memcpy(title + 1, p + 21, title[0]);
  ReleaseResource(h);
  Handle items = ItemListCopy(itemsID);
  if (!items) return nullptr;
  DialogPtr d =
      Make(dStorage, &bounds, title, visible, procID, behind, goAway, refCon, items, true, itemsID);
  if (!d) DisposeHandle(items);
  return d;
}

KWE_API void KWE_CALL CloseDialog(DialogPtr theDialog) {
  if (!IsLibraryDialog(theDialog)) return;
  ManagerState& st = State();
  int count = int(ItemsOf(theDialog).size());
  for (int item = 1; item <= count; ++item) ReleaseItem(theDialog, item, false);
  for (int k = 0; k < 4; ++k)
    if (st.paramDialog[k] == theDialog) st.paramDialog[k] = nullptr;
  if (st.modalDialog == theDialog) st.modalDialog = nullptr;
  DisposeEditRecord(theDialog);
  Unregister(theDialog);
  CloseWindo(theDialog);
}

KWE_API void KWE_CALL DisposeDialog(DialogPtr theDialog) {
  if (!IsLibraryDialog(theDialog)) return;
  Handle items = Dlg(theDialog)->items;
  CloseDialog(theDialog);
  if (items) DisposeHandle(items);
  auto& owned = g_owned.records;
  auto at = std::find(owned.begin(), owned.end(), theDialog);
  if (at != owned.end()) {
    owned.erase(at);
    DisposePtr(reinterpret_cast<Ptr>(theDialog));
  }
}

KWE_API void KWE_CALL CouldDialog(SInt16) {}
KWE_API void KWE_CALL FreeDialog(SInt16) {}

KWE_API void KWE_CALL SetDialogFont(SInt16 fontNum) { State().dialogFontNumber = fontNum; }

KWE_API Handle KWE_CALL KWE_UseKWEDItems(DialogPtr theDialog, SInt16 resourceID) {
  DialogInfo* info = InfoOf(theDialog);
  if (resourceID == -1) return info ? info->table : nullptr;
  if (!IsLibraryDialog(theDialog)) return nullptr;
  // Dialogs being made were registered (or found the table full) already.
  if (!info && !State().buildNesting) info = Register(theDialog);
  std::vector<UInt8> bytes;
  Handle h = GetResource(kPrivateTableType, resourceID);
  PrivateTable table;
  if (h && *h &&
      ReadPrivateTable(reinterpret_cast<const UInt8*>(*h), size_t(GetHandleSize(h)), &table))
    bytes = TableBytes(table);
  else
    bytes = TableBytes(BuildPrivateTable(ItemsOf(theDialog)));
  Handle copy = NewHandle(Size(bytes.size()));
  if (copy) std::memcpy(*copy, bytes.data(), bytes.size());
  if (!info) return copy;  // not registered: the caller's to keep
  if (info->table) DisposeHandle(info->table);
  info->table = copy;
  return copy;
}

KWE_API SInt16 KWE_CALL CountDITL(DialogPtr theDialog) { return SInt16(ItemsOf(theDialog).size()); }

KWE_API void KWE_CALL KWE_AddDitlItems(DialogPtr theDialog, SInt16 fromItem) {
  if (!IsLibraryDialog(theDialog)) return;
  if (SessionFlag(kweFlagScaleDialogs)) ScaleItems(theDialog, fromItem + 1, false);
  BuildItems(theDialog, fromItem + 1, -2);
}

KWE_API void KWE_CALL AppendDITL(DialogPtr theDialog, Handle theDITL, SInt16 method) {
  if (!IsLibraryDialog(theDialog) || !theDITL || !*theDITL) return;
  if (method != overlayDITL) {
    Unsupported("AppendDITL");
    return;
  }
  Handle items = Dlg(theDialog)->items;
  std::vector<ItemView> have = ItemsOf(theDialog);
  std::vector<UInt8> more =
      TrimmedItemList(reinterpret_cast<const UInt8*>(*theDITL), size_t(GetHandleSize(theDITL)));
  size_t end = have.empty() ? 2 : have.back().offset + ItemSize(have.back().length);
  if (more.size() <= 2) return;
  SetHandleSize(items, Size(end + more.size() - 2));
  if (MemError() != noErr) return;
  std::memcpy(*items + end, more.data() + 2, more.size() - 2);
  SInt16 count = SInt16(have.size() + ReadItems(more.data(), more.size()).size() - 1);
  std::memcpy(*items, &count, sizeof count);
  KWE_AddDitlItems(theDialog, SInt16(have.size()));
}

KWE_API void KWE_CALL ShortenDITL(DialogPtr theDialog, SInt16 numberItems) {
  std::vector<ItemView> items = ItemsOf(theDialog);
  int n = std::min<int>(numberItems, int(items.size()));
  if (n <= 0) return;
  for (int item = int(items.size()); item > int(items.size()) - n; --item)
    KWE_DisposeDlgItem(theDialog, SInt16(item));
  size_t keep = int(items.size()) == n ? 2 : items[items.size() - size_t(n)].offset;
  SInt16 count = SInt16(int(items.size()) - n - 1);
  std::memcpy(*Dlg(theDialog)->items, &count, sizeof count);
  SetHandleSize(Dlg(theDialog)->items, Size(keep));
  SeedHandles(theDialog);
}

KWE_API void KWE_CALL KWE_DisposeDlgItem(DialogPtr theDialog, SInt16 itemNo) {
  ReleaseItem(theDialog, itemNo, true);
}
