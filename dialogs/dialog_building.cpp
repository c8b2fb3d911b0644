// Building a dialog's items: each item of the list becomes the Win32 child
// its type calls for, with the item number as its control ID; the private
// table adds the caption band, mnemonics, radio groups and combo boxes.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Controls.h"
#include "Memory.h"
#include "Resources.h"
#include "controls/control_manager.h"
#include "controls/control_templates.h"
#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "memory/character_conversion.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {
namespace {

constexpr ResType kControlTemplateType = 0x434E544C;  // 'CNTL'
constexpr ResType kIconType = 0x49434F4E;             // 'ICON'
constexpr ResType kPictureType = 0x50494354;          // 'PICT'
constexpr DWORD kOwnerDrawnItemStyle = 0x5800000B;    // child, visible, disabled, owner-drawn
constexpr DWORD kStaticStyle = 0x50000000;
constexpr DWORD kDividingLineStyle = 0x50000004;  // SS_BLACKRECT
constexpr DWORD kCaptionDialogStyle = 0x84C800C0;
constexpr UInt16 kItemsOverlapFlag = 0x0008;
constexpr int kUserItemGrowHeight = 18;

struct Build {
  DialogPtr d;
  HWND hwnd;
  PrivateTable table;
  int band = 0, offset = 0;
  HFONT font;
  HWND firstEdit = nullptr;
  bool failed = false;
};

int Width(const Rect& r) { return std::max(0, r.right - r.left); }
int Height(const Rect& r) { return std::max(0, r.bottom - r.top); }

HWND MakeChild(const Build& b, int item, const char* cls, DWORD style, const Rect& r, int height,
               WNDPROC procedure, WNDPROC* previous, const char* text = "") {
  HWND child =
      CreateWindowExA(0, cls, text, style, r.left, r.top, Width(r), height, b.hwnd,
                      reinterpret_cast<HMENU>(intptr_t(item)), TheSession().instance, nullptr);
  if (!child) return nullptr;
  WNDPROC old = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
  if (!*previous) *previous = old;
  SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(b.font), FALSE);
  return child;
}

Handle DetachedCopy(ResType type, SInt16 id) {
  Handle h = GetResource(type, id);
  if (!h || !*h) return nullptr;
  Size size = GetHandleSize(h);
  Handle copy = NewHandle(size);
  if (copy) std::memcpy(*copy, *h, size_t(size));
  return copy;
}

SInt16 IdOf(const ItemView& v) {
  SInt16 id = 0;
  if (v.length >= 2) std::memcpy(&id, v.data, sizeof id);
  return id;
}

void MakeCaption(Build& b, int item, const ItemView& v) {
  ManagerState& st = State();
  int slot = 0;
  while (slot < 255 && st.captions[slot]) ++slot;
  if (slot == 255) return;
  UInt8 expanded[256];
  ExpandForItem(b.d, item, v.data, v.length, expanded);
  char ansi[256];
  text::MacToAnsiBytes(expanded + 1, reinterpret_cast<UInt8*>(ansi), expanded[0]);
  ansi[expanded[0]] = 0;
  SetWindowTextA(b.hwnd, ansi);
  SetWindowLongA(b.hwnd, GWL_STYLE, LONG(kCaptionDialogStyle));
  RECT r;
  GetWindowRect(b.hwnd, &r);
  SetWindowPos(b.hwnd, nullptr, 0, 0, r.right - r.left,
               r.bottom - r.top - b.offset + GetSystemMetrics(SM_CYCAPTION),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  HMENU menu = GetSystemMenu(b.hwnd, FALSE);
  for (UINT command : {SC_SIZE, SC_MINIMIZE, SC_MAXIMIZE, SC_RESTORE, SC_TASKLIST})
    DeleteMenu(menu, command, MF_BYCOMMAND);
  DeleteMenu(menu, 3, MF_BYPOSITION);
  DeleteMenu(menu, 1, MF_BYPOSITION);
  st.captions[slot] = b.hwnd;
  SetItemHandle(b.d, item, reinterpret_cast<void*>(intptr_t(SInt32(0xFFFFFF00u | UInt32(slot)))));
  if (DialogInfo* info = InfoOf(b.d)) info->captionItem = SInt16(item);
}

void MakeStaticText(Build& b, int item, const ItemView& v, Rect r) {
  UInt8 text[256];
  ExpandForItem(b.d, item, v.data, v.length, text);
  HWND child = MakeChild(b, item, "static", kStaticStyle, r, std::max(0, Height(r) - 1),
                         K_StaticWndProc, &State().staticProc);
  if (!child) return;
  SetChildText(child, text + 1, text[0]);
  SetItemHandle(b.d, item, child);
}

void MakeControl(Build& b, int item, const ItemView& v, Rect r) {
  UInt8 type = TypeOf(v.type);
  controls::CreationContext context;
  context.itemNumber = SInt16(item);
  ControlHandle c = nullptr;
  if (type == kResourceControlItem) {
    Handle h = GetResource(kControlTemplateType, IdOf(v));
    controls::ControlTemplate t;
    if (!h || !*h ||
        !controls::ReadControlTemplate(reinterpret_cast<const UInt8*>(*h), size_t(GetHandleSize(h)),
                                       &t))
      return;
    c = controls::Create(b.d, &r, t.title, true, t.value, t.min, t.max, t.procID, t.refCon,
                         context);
    if (c && controls::KindOf(c) == controls::kPushButton) {
      ItemBytes(b.d, v)[12] = UInt8((v.type & kDisabledBit) | kButtonItem);
    }
  } else {
    UInt8 title[256];
    title[0] = v.length;
    std::memcpy(title + 1, v.data, v.length);
    c = controls::Create(b.d, &r, title, true, 0, 0, 1, SInt16(type - kButtonItem), 0, context);
  }
  if (c) SetItemHandle(b.d, item, c);
}

void MakeOwnerDrawn(Build& b, int item, const Rect& r, WNDPROC procedure, WNDPROC* previous) {
  MakeChild(b, item, "button", kOwnerDrawnItemStyle, r, Height(r), procedure, previous);
}

void MakeItem(Build& b, int item, ItemView v) {
  Rect r = v.rect;
  r.bottom = std::max(r.bottom, r.top);
  r.right = std::max(r.right, r.left);
  UInt8 type = TypeOf(v.type);
  if (b.band) Offset(r, 0, -b.offset);
  const TableEntry* entry = b.table.EntryOf(item);
  void* existing = ItemHandle(b.d, item);
  switch (type) {
    case kButtonItem:
      if (Width(r) <= 1 || Height(r) <= 1) {
        HWND line = MakeChild(b, item, "static", kDividingLineStyle, r, Height(r), K_StaticWndProc,
                              &State().staticProc);
        SetItemHandle(b.d, item, line);
        break;
      }
      if (Dlg(b.d)->aDefItem == 0 && item == 1) Dlg(b.d)->aDefItem = 1;
      [[fallthrough]];
    case kCheckBoxItem:
    case kRadioItem:
    case kResourceControlItem:
      if (!existing) MakeControl(b, item, v, r);
      break;
    case kStaticTextItem: MakeStaticText(b, item, v, r); break;
    case kEditTextItem: {
      bool multi = (entry && (entry->flags & kMultiLineEntry));
      TEXTMETRICA tm{};
      HDC dc = GetDC(b.hwnd);
      HGDIOBJ old = SelectObject(dc, b.font);
      GetTextMetricsA(dc, &tm);
      SelectObject(dc, old);
      ReleaseDC(b.hwnd, dc);
      multi = multi || Height(r) > 2 * tm.tmHeight + 8;
      UInt8 text[256];
      ExpandForItem(b.d, item, v.data, v.length, text);
      HWND child = MakeEditChild(b.hwnd, item, r, multi, b.font, text + 1, text[0]);
      if (!child) {
        b.failed = true;
        break;
      }
      SetItemHandle(b.d, item, child);
      if (!b.firstEdit) b.firstEdit = child;
      break;
    }
    case kUserItem:
      if (entry && (entry->flags & kComboBoxEntry)) {
        controls::CreationContext context;
        context.itemNumber = SInt16(item);
        context.comboBox = true;
        ControlHandle c =
            controls::Create(b.d, &r, nullptr, true, 1, 1, 1, popupMenuProc, 0, context);
        if (c) SetItemHandle(b.d, item, c);
        break;
      }
      if (Height(r) == kUserItemGrowHeight) r.bottom = SInt16(r.bottom + 2);
      MakeOwnerDrawn(b, item, r, K_UserItemWndProc, &State().userItemProc);
      break;
    case kIconItem:
    case kPictureItem:
      if (!existing && State().alertIcon && size_t(item) == ItemsOf(b.d).size()) {
        SetItemHandle(b.d, item, State().alertIcon);
        State().alertIcon = nullptr;
      } else if (!existing)
        SetItemHandle(b.d, item,
                      DetachedCopy(type == kIconItem ? kIconType : kPictureType, IdOf(v)));
      MakeOwnerDrawn(b, item, r, K_ButtonWndProc, &controls::State().buttonProc);
      break;
    default: break;
  }
}

bool Overlaps(const std::vector<ItemView>& items) {
  for (size_t i = 0; i < items.size(); ++i)
    for (size_t j = i + 1; j < items.size(); ++j) {
      Rect x;
      if (Intersect(items[i].rect, items[j].rect, &x)) return true;
    }
  return false;
}

}  // namespace

HFONT ItemFont(DialogPtr d) {
  const Session& s = TheSession();
  int size = d && d->txSize ? d->txSize : 12;
  return s.fonts[size >= 10 ? s.dialogFont : kSmallSystemFont].font;
}

bool BuildItems(DialogPtr d, int first, SInt16 ditlId) {
  Build b{d, HwndOf(d), {}, 0, 0, nullptr};
  if (!b.hwnd) return false;
  ManagerState& st = State();
  ++st.buildNesting;
  Handle tableHandle = KWE_UseKWEDItems(d, ditlId < 0 ? SInt16(-1) : ditlId);
  if (tableHandle && *tableHandle)
    ReadPrivateTable(reinterpret_cast<const UInt8*>(*tableHandle),
                     size_t(GetHandleSize(tableHandle)), &b.table);
  // A dialog the full table could not take keeps no table of its own.
  DialogInfo* info = InfoOf(d);
  if (tableHandle && !info) DisposeHandle(tableHandle);
  b.band = b.table.band;
  b.offset = b.band * 3 / 4;
  TheSession().dialogFont = (b.table.flags & kAlternativeFontFlag) ? kBoldDialogFont : kSystemFont;
  b.font = ItemFont(d);
  std::vector<ItemView> items = ItemsOf(d);
  SeedHandles(d);
  if (first == 1 && (b.table.flags & kSwapFirstButtonsFlag) && items.size() >= 2 &&
      TypeOf(items[0].type) == kButtonItem && TypeOf(items[1].type) == kButtonItem) {
    SetItemRect(d, 1, items[1].rect);
    SetItemRect(d, 2, items[0].rect);
    items = ItemsOf(d);
  }
  bool captionMade = InfoOf(d) && InfoOf(d)->captionItem > 0;
  for (size_t i = size_t(std::max(first, 1)) - 1; i < items.size() && !b.failed; ++i) {
    int item = int(i + 1);
    const ItemView& v = items[i];
    if (b.band && v.rect.top < b.band) {
      if (TypeOf(v.type) != kStaticTextItem) continue;
      if (!captionMade) {
        MakeCaption(b, item, v);
        captionMade = true;
        continue;
      }
    }
    MakeItem(b, item, v);
  }
  if (!b.failed && first == 1) {
    if (b.firstEdit) {
      SelectEditText(b.firstEdit, 0, 32767);
      Dlg(d)->editField = SInt16(GetDlgCtrlID(b.firstEdit) - 1);
    }
    // The outline shows on the default button while an edit item has the
    // focus, as Return presses it.
    if (Dlg(d)->aDefItem) MoveDefaultOutline(d, Dlg(d)->aDefItem);
    if (info) {
      info->focusChecked = false;
      info->builtFocus = b.firstEdit ? SInt16(GetDlgCtrlID(b.firstEdit)) : 0;
      if ((b.table.flags & kTableTabOrderFlag) && !b.table.entries.empty())
        info->builtFocus = b.table.entries.back().item;
    }
  }
  if (WStateData* data = windows::DataOf(d)) {
    if (Overlaps(ItemsOf(d)))
      data->moreFlags |= kItemsOverlapFlag;
    else
      data->moreFlags &= UInt16(~kItemsOverlapFlag);
  }
  --st.buildNesting;
  return !b.failed;
}

void ReleaseItem(DialogPtr d, int item, bool destroyChild) {
  ItemView v;
  if (!ItemAt(d, item, &v)) return;
  void* handle = ItemHandle(d, item);
  UInt8 type = TypeOf(v.type);
  HWND child = ItemWindow(d, item);
  if (type == kStaticTextItem && CaptionSlot(handle) >= 0) {
    State().captions[CaptionSlot(handle)] = nullptr;
    SetItemHandle(d, item, nullptr);
  } else if (type == kUserItem && handle && !controls::ControlOfChild(child)) {
    ReleaseHostProcedure(reinterpret_cast<ProcPtr>(handle));
    SetItemHandle(d, item, nullptr);
  } else if ((type == kIconItem || type == kPictureItem) && handle) {
    DisposeHandle(static_cast<Handle>(handle));
    SetItemHandle(d, item, nullptr);
  } else if (destroyChild && type >= kButtonItem && type <= kResourceControlItem && handle) {
    DisposeControl(static_cast<ControlHandle>(handle));
    SetItemHandle(d, item, nullptr);
    child = nullptr;
  } else if (destroyChild && type == kUserItem && handle) {
    DisposeControl(static_cast<ControlHandle>(handle));
    SetItemHandle(d, item, nullptr);
    child = nullptr;
  }
  if (destroyChild && child) DestroyWindow(child);
}

}  // namespace kwe::dialogs
