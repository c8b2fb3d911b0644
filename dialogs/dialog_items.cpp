// Item access: the item list's fields, kept in step with the children
// (position, visibility, enabling), and the drawing of a dialog's children.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Controls.h"
#include "controls/control_manager.h"
#include "dialogs/dialog_manager.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "memory/character_conversion.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {
namespace {

constexpr int kHiddenShift = 16384;
constexpr int kHiddenLimit = 8192;

bool IsControlType(UInt8 type) { return type >= kButtonItem && type <= kResourceControlItem; }

ControlHandle ControlOfItem(DialogPtr d, int item) {
  HWND child = ItemWindow(d, item);
  return child ? controls::ControlOfChild(child) : nullptr;
}

void ShiftHidden(DialogPtr d, int item, bool hide) {
  ItemView v;
  if (!ItemAt(d, item, &v)) return;
  Rect r = v.rect;
  if (hide && r.left < kHiddenLimit + 1)
    Offset(r, kHiddenShift, 0);
  else if (!hide && r.left > kHiddenLimit)
    Offset(r, -kHiddenShift, 0);
  else
    return;
  SetItemRect(d, item, r);
  if (ControlHandle c = ControlOfItem(d, item)) (**c).contrlVis = hide ? 0 : controls::kVisible;
  if (HWND child = ItemWindow(d, item)) ShowWindow(child, hide ? SW_HIDE : SW_SHOWNA);
}

}  // namespace
}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API void KWE_CALL GetDialogItem(DialogPtr theDialog, SInt16 itemNo, SInt16* itemType,
                                    Handle* item, Rect* box) {
  if (itemType) *itemType = 0;
  if (item) *item = nullptr;
  if (box) *box = Rect{0, 0, 0, 0};
  if (!theDialog) return;
  if (!IsLibraryDialog(theDialog)) {
    // Another window: the control whose reference's low word is the item.
    if (!kwe::windows::DataOf(theDialog)) return;
    for (ControlHandle c = kwe::windows::Peek(theDialog)->controlList; c && *c;
         c = (**c).nextControl)
      if (SInt16((**c).contrlRfCon) == itemNo) {
        if (itemType) *itemType = kButtonItem;
        if (box) *box = (**c).contrlRect;
        return;
      }
    return;
  }
  ItemView v;
  if (!ItemAt(theDialog, itemNo, &v)) return;
  if (itemType) *itemType = v.type;
  if (item) *item = static_cast<Handle>(ItemHandle(theDialog, itemNo));
  if (box) *box = v.rect;
}

KWE_API void KWE_CALL SetDialogItem(DialogPtr theDialog, SInt16 itemNo, SInt16 itemType,
                                    Handle item, const Rect* box) {
  ItemView v;
  if (!ItemAt(theDialog, itemNo, &v)) return;
  bool changed = false;
  UInt8 newType = UInt8(itemType);
  void* old = ItemHandle(theDialog, itemNo);
  HWND child = ItemWindow(theDialog, itemNo);
  if (TypeOf(newType) == kUserItem && !ControlOfItem(theDialog, itemNo)) {
    if (old != static_cast<void*>(item)) {
      ReleaseHostProcedure(reinterpret_cast<ProcPtr>(old));
      SetItemHandle(theDialog, itemNo,
                    reinterpret_cast<void*>(
                        WrapHostProcedure(reinterpret_cast<ProcPtr>(static_cast<void*>(item)))));
      changed = true;
    }
  } else if (!IsControlType(TypeOf(newType)) || item) {
    if (old != static_cast<void*>(item)) changed = true;
    SetItemHandle(theDialog, itemNo, item);
  }
  if ((newType ^ v.type) & kDisabledBit) {
    changed = true;
    if (child && TypeOf(newType) != kUserItem) EnableWindow(child, !(newType & kDisabledBit));
  }
  if (newType != v.type) changed = true;
  ItemBytes(theDialog, v)[12] = newType;
  if (box && std::memcmp(box, &v.rect, sizeof v.rect) != 0) {
    SetItemRect(theDialog, itemNo, *box);
    if (child)
      SetWindowPos(child, nullptr, box->left, box->top, std::max(0, box->right - box->left),
                   std::max(0, box->bottom - box->top), SWP_NOZORDER | SWP_NOACTIVATE);
    changed = true;
  }
  if (changed && child) InvalidateRect(child, nullptr, TRUE);
}

KWE_API void KWE_CALL HideDialogItem(DialogPtr theDialog, SInt16 itemNo) {
  ShiftHidden(theDialog, itemNo, true);
}

KWE_API void KWE_CALL ShowDialogItem(DialogPtr theDialog, SInt16 itemNo) {
  ShiftHidden(theDialog, itemNo, false);
}

KWE_API SInt16 KWE_CALL FindDialogItem(DialogPtr theDialog, Point thePt) {
  std::vector<ItemView> items = ItemsOf(theDialog);
  for (size_t i = 0; i < items.size(); ++i)
    if (Contains(items[i].rect, thePt)) return SInt16(i);
  return -1;
}

KWE_API void KWE_CALL GetDItem(DialogPtr theDialog, SInt16 itemNo, SInt16* itemType, Handle* item,
                               Rect* box) {
  GetDialogItem(theDialog, itemNo, itemType, item, box);
}
KWE_API void KWE_CALL SetDItem(DialogPtr theDialog, SInt16 itemNo, SInt16 itemType, Handle item,
                               const Rect* box) {
  SetDialogItem(theDialog, itemNo, itemType, item, box);
}
KWE_API void KWE_CALL HideDItem(DialogPtr theDialog, SInt16 itemNo) {
  HideDialogItem(theDialog, itemNo);
}
KWE_API void KWE_CALL ShowDItem(DialogPtr theDialog, SInt16 itemNo) {
  ShowDialogItem(theDialog, itemNo);
}
KWE_API SInt16 KWE_CALL FindDItem(DialogPtr theDialog, Point thePt) {
  return FindDialogItem(theDialog, thePt);
}

namespace {

struct Redraw {
  RECT area;  // screen coordinates
};

BOOL CALLBACK RedrawChild(HWND child, LPARAM context) {
  const RECT& area = reinterpret_cast<Redraw*>(context)->area;
  RECT r, meet;
  if (!IsWindowVisible(child) || !GetWindowRect(child, &r) || !IntersectRect(&meet, &r, &area))
    return TRUE;
  char cls[16] = "";
  GetClassNameA(child, cls, sizeof cls);
  bool listBox = lstrcmpiA(cls, "ListBox") == 0;
  if (!listBox) InflateRect(&meet, 3, 3);
  MapWindowPoints(nullptr, child, reinterpret_cast<POINT*>(&meet), 2);
  InvalidateRect(child, &meet, listBox);
  UpdateWindow(child);
  return TRUE;
}

void RedrawChildren(DialogPtr d, const Rect& local) {
  HWND hwnd = HwndOf(d);
  if (!hwnd) return;
  Redraw redraw{{local.left, local.top, local.right, local.bottom}};
  MapWindowPoints(hwnd, nullptr, reinterpret_cast<POINT*>(&redraw.area), 2);
  ++State().drawNesting;
  EnumChildWindows(hwnd, RedrawChild, reinterpret_cast<LPARAM>(&redraw));
  --State().drawNesting;
}

}  // namespace

KWE_API void KWE_CALL DrawDialog(DialogPtr theDialog) {
  if (!IsLibraryDialog(theDialog)) return;
  RgnHandle vis = theDialog->visRgn;
  RedrawChildren(theDialog, vis && *vis ? (**vis).rgnBBox : theDialog->portRect);
}

KWE_API void KWE_CALL UpdateDialog(DialogPtr theDialog, RgnHandle updateRgn) {
  if (!IsLibraryDialog(theDialog)) return;
  RedrawChildren(theDialog, updateRgn && *updateRgn ? (**updateRgn).rgnBBox : theDialog->portRect);
}

KWE_API void KWE_CALL KWE_SetDlgTextFont(DialogPtr theDialog, SInt16 itemNo) {
  HWND child = ItemWindow(theDialog, itemNo);
  if (child) SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(ItemFont(theDialog)), TRUE);
}

KWE_API Boolean KWE_CALL KWE_IsComboBox(DialogPtr theDialog, SInt16 itemNo) {
  HWND child = ItemWindow(theDialog, itemNo);
  return child &&
         GetWindowLongPtrA(child, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(K_ComboBoxWndProc);
}

KWE_API void KWE_CALL KWE_BuildComboBox(DialogPtr theDialog, SInt16 itemNo, MenuHandle menu,
                                        SInt16 selected) {
  if (!KWE_IsComboBox(theDialog, itemNo)) return;
  HWND combo = ItemWindow(theDialog, itemNo);
  SendMessageA(combo, CB_RESETCONTENT, 0, 0);
  HDC dc = GetDC(combo);
  HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(combo, WM_GETFONT, 0, 0)));
  int count = menu ? CountMItems(menu) : 0, widest = 0;
  for (int i = 1; i <= count; ++i) {
    Str255 text;
    GetMenuItemText(menu, SInt16(i), text);
    char ansi[256];
    kwe::text::MacToAnsiBytes(text + 1, reinterpret_cast<UInt8*>(ansi), text[0]);
    ansi[text[0]] = 0;
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ansi));
    SIZE size{};
    GetTextExtentPoint32A(dc, ansi, text[0], &size);
    widest = std::max<int>(widest, size.cx);
  }
  TEXTMETRICA tm{};
  GetTextMetricsA(dc, &tm);
  SelectObject(dc, old);
  ReleaseDC(combo, dc);
  ItemView v;
  ItemAt(theDialog, itemNo, &v);
  int width = std::max(v.rect.right - v.rect.left, widest + GetSystemMetrics(SM_CXVSCROLL));
  int line = tm.tmHeight + tm.tmExternalLeading;
  int height = std::min(count + 1, 16) * line + line + 8;
  SetWindowPos(combo, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  SendMessageA(combo, CB_SETCURSEL, WPARAM(selected - 1), 0);
  if (ControlHandle c = ControlOfItem(theDialog, itemNo)) {
    (**c).contrlMin = 1;
    (**c).contrlMax = SInt16(std::max(count, 1));
    (**c).contrlValue = SInt16(std::clamp<int>(selected, 1, std::max(count, 1)));
  }
}

KWE_API SInt16 KWE_CALL KWE_GetComboBoxSelect(DialogPtr theDialog, SInt16 itemNo) {
  if (!KWE_IsComboBox(theDialog, itemNo)) return 0;
  return SInt16(SendMessageA(ItemWindow(theDialog, itemNo), CB_GETCURSEL, 0, 0) + 1);
}

KWE_API Boolean KWE_CALL KWE_SetComboBoxSelect(DialogPtr theDialog, SInt16 itemNo, SInt16 n) {
  if (!KWE_IsComboBox(theDialog, itemNo)) return false;
  LRESULT r = SendMessageA(ItemWindow(theDialog, itemNo), CB_SETCURSEL, WPARAM(n - 1), 0);
  return r + 1 == n;
}
