// The keyboard inside a dialog: Tab and Shift+Tab move the focus, the
// arrows move within a radio group, Alt+letter activates the item with that
// mnemonic; the default outline follows the focused push button.
#include <windows.h>

#include <algorithm>
#include <cctype>

#include "Controls.h"
#include "controls/control_manager.h"
#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "frame/host_procedures.h"

namespace kwe::dialogs {
namespace {

constexpr UInt8 kTab = 9;
constexpr UInt8 kLeftArrow = 28, kRightArrow = 29, kUpArrow = 30, kDownArrow = 31;

bool IsPushButton(DialogPtr d, int item) {
  ItemView v;
  if (!ItemAt(d, item, &v) || TypeOf(v.type) != kButtonItem) return false;
  HWND child = ItemWindow(d, item);
  ControlHandle c = child ? controls::ControlOfChild(child) : nullptr;
  return c && controls::KindOf(c) == controls::kPushButton;
}

// The items in the order Tab walks them.
std::vector<int> TabOrder(DialogPtr d, const PrivateTable& t) {
  std::vector<int> order;
  int count = int(ItemsOf(d).size());
  if (t.flags & kTableTabOrderFlag) {
    for (const TableEntry& e : t.entries)
      if (e.item >= 1 && e.item <= count) order.push_back(e.item);
    for (int item = 1; item <= count; ++item)
      if (std::find(order.begin(), order.end(), item) == order.end()) order.push_back(item);
  } else {
    for (int item = 1; item <= count; ++item) order.push_back(item);
  }
  return order;
}

int FocusedItem(DialogPtr d) {
  HWND focus = GetFocus();
  return focus && GetParent(focus) == HwndOf(d) ? ItemOfChild(focus) : 0;
}

void Click(HWND child) {
  SendMessageA(child, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
  SendMessageA(child, WM_LBUTTONUP, 0, MAKELPARAM(1, 1));
}

bool MoveTab(DialogPtr d, bool backward) {
  std::vector<int> order = TabOrder(d, TableOf(d));
  if (order.empty()) return false;
  int n = int(order.size());
  auto at = std::find(order.begin(), order.end(), FocusedItem(d));
  int start = at == order.end() ? (backward ? 0 : n - 1) : int(at - order.begin());
  for (int step = 1; step <= n; ++step) {
    int i = ((start + (backward ? -step : step)) % n + n) % n;
    if (TakesFocus(d, order[size_t(i)])) {
      FocusItem(d, order[size_t(i)]);
      return true;
    }
  }
  return false;
}

// The radio buttons of the focused one's group, in item order: the private
// table's group, else the run of radio items around it.
std::vector<int> RadioGroup(DialogPtr d, int item) {
  std::vector<int> group;
  PrivateTable t = TableOf(d);
  const TableEntry* e = t.EntryOf(item);
  std::vector<ItemView> items = ItemsOf(d);
  if (e && e->Group()) {
    for (const TableEntry& x : t.entries)
      if (x.Group() == e->Group()) group.push_back(x.item);
    std::sort(group.begin(), group.end());
    return group;
  }
  int first = item, last = item;
  while (first > 1 && TypeOf(items[size_t(first) - 2].type) == kRadioItem) --first;
  while (last < int(items.size()) && TypeOf(items[size_t(last)].type) == kRadioItem) ++last;
  for (int i = first; i <= last; ++i) group.push_back(i);
  return group;
}

bool MoveInGroup(DialogPtr d, bool backward) {
  int item = FocusedItem(d);
  ItemView v;
  if (!item || !ItemAt(d, item, &v) || TypeOf(v.type) != kRadioItem) return false;
  std::vector<int> group = RadioGroup(d, item);
  int n = int(group.size());
  int at = int(std::find(group.begin(), group.end(), item) - group.begin());
  for (int step = 1; step < n; ++step) {
    int next = group[size_t(((at + (backward ? -step : step)) % n + n) % n)];
    HWND child = ItemWindow(d, next);
    if (!child || !IsWindowEnabled(child) || !IsWindowVisible(child)) continue;
    FocusItem(d, next);
    Click(child);
    return true;
  }
  return false;
}

void Activate(DialogPtr d, int item) {
  HWND child = ItemWindow(d, item);
  if (!child) return;
  ItemView v;
  ItemAt(d, item, &v);
  UInt8 type = TypeOf(v.type);
  if (TakesFocus(d, item) || type == kRadioItem) FocusItem(d, item);
  if (type == kButtonItem || type == kCheckBoxItem || type == kRadioItem) Click(child);
}

bool Mnemonic(DialogPtr d, UInt8 key) {
  PrivateTable t = TableOf(d);
  UInt8 upper = UInt8(std::toupper(key));
  for (const TableEntry& e : t.entries) {
    if (!e.mnemonic || std::toupper(e.mnemonic) != upper) continue;
    Activate(d, e.item);
    if (e.target != e.item) Activate(d, e.target);
    return true;
  }
  return false;
}

// Tab passes over a radio button that is not checked, but an arrow key may
// have left the focus on one: the application had not yet checked it.
bool HoldsArrowFocus(DialogPtr d, int item) {
  ItemView v;
  HWND child = ItemWindow(d, item);
  return child && ItemAt(d, item, &v) && TypeOf(v.type) == kRadioItem && IsWindowEnabled(child) &&
         IsWindowVisible(child);
}

}  // namespace

// Another program may take the activation before the next idle's upkeep
// sees where the focus went (an arrow key's radio button): activation
// coming back must find that item, as a Windows dialog's does.
void RememberFocus(DialogPtr d, int item) {
  if (DialogInfo* info = InfoOf(d)) info->lastFocus = SInt16(item);
}

int ItemOfChild(HWND child) {
  int id = child ? GetDlgCtrlID(child) : 0;
  return id > 0 && id < 0x100 ? id : 0;
}

bool TakesFocus(DialogPtr d, int item) {
  ItemView v;
  HWND child = ItemWindow(d, item);
  if (!child || !ItemAt(d, item, &v) || v.rect.top >= 8192 || v.rect.left > 8192) return false;
  if (!IsWindowEnabled(child) || !IsWindowVisible(child)) return false;
  switch (TypeOf(v.type)) {
    case kUserItem:
    case kButtonItem:
    case kCheckBoxItem:
    case kResourceControlItem:
    case kEditTextItem: return true;
    case kRadioItem: return SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED;
    default: return false;
  }
}

void MoveDefaultOutline(DialogPtr d, int item) {
  DialogPeek p = Dlg(d);
  if (!IsPushButton(d, item)) item = 0;
  if (p->editOpen == item) return;
  if (HWND old = p->editOpen ? ItemWindow(d, p->editOpen) : nullptr)
    SendMessageA(old, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  if (HWND now = item ? ItemWindow(d, item) : nullptr)
    SendMessageA(now, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
  p->editOpen = SInt16(item);
}

void FocusItem(DialogPtr d, int item) {
  HWND child = ItemWindow(d, item);
  if (!child) return;
  RememberFocus(d, item);
  if (IsEditChild(child)) {
    SelectEditText(child, 0, 32767);
    Dlg(d)->editField = SInt16(item - 1);
  } else {
    SetFocus(child);
  }
  MoveDefaultOutline(d, IsPushButton(d, item) ? item : Dlg(d)->aDefItem);
}

bool Navigate(DialogPtr d, const EventRecord& e) {
  UInt8 key = UInt8(e.message & 0xFF);
  if (e.modifiers & optionKey) return Mnemonic(d, key);
  switch (key) {
    case kTab: return MoveTab(d, (e.modifiers & shiftKey) != 0);
    case kLeftArrow:
    case kUpArrow: return MoveInGroup(d, true);
    case kRightArrow:
    case kDownArrow: return MoveInGroup(d, false);
    default: return false;
  }
}

void KeepFocus(DialogPtr d) {
  int item = FocusedItem(d);
  DialogInfo* info = InfoOf(d);
  if (info && !info->focusChecked) {
    info->focusChecked = true;
    if (info->builtFocus && TakesFocus(d, info->builtFocus) && item != info->builtFocus) {
      FocusItem(d, info->builtFocus);
      item = info->builtFocus;
    }
  }
  HWND child = item ? ItemWindow(d, item) : nullptr;
  if (!child || !IsWindowVisible(child) || !IsWindowEnabled(child)) {
    // Activation gives the focus to the dialog window itself: it goes back
    // to the item that had it, as in a Windows dialog.
    item = 0;
    int last = info ? info->lastFocus : 0;
    for (int candidate : {last, int(Dlg(d)->aDefItem), int(Dlg(d)->editOpen)})
      if (candidate &&
          (TakesFocus(d, candidate) || (candidate == last && HoldsArrowFocus(d, last)))) {
        item = candidate;
        break;
      }
    if (!item)
      for (int candidate : TabOrder(d, TableOf(d)))
        if (TakesFocus(d, candidate)) {
          item = candidate;
          break;
        }
    if (!item) return;
    // The item that had the focus gets it back with its selection: another
    // application taking the activation must not select the whole text the
    // user was typing into. Any other item is focused as by Tab.
    HWND back = ItemWindow(d, item);
    if (item == last && IsEditChild(back))
      SetFocus(back);
    else
      FocusItem(d, item);
  }
  if (info) info->lastFocus = SInt16(item);
  MoveDefaultOutline(d, IsPushButton(d, item) ? item : Dlg(d)->aDefItem);
}

// Windows shows no focus mark on a button without text: an item whose data
// is empty gets a focus rectangle beside it, drawn inverting so that the
// second draw removes it.
void ButtonFocusChanged(HWND button, bool gained) {
  int id = GetDlgCtrlID(button);
  DialogPtr d = (id & 0xFF00) ? nullptr : DialogOfHwnd(GetParent(button));
  ItemView v;
  if (!d || !ItemAt(d, id, &v)) return;
  if (v.length == 0) {
    HDC dc = GetDC(HwndOf(d));
    int side = 13 * GetDeviceCaps(dc, LOGPIXELSX) / 96 + 4;
    RECT r{v.rect.left - 2, v.rect.top, v.rect.left - 2 + side, v.rect.top + side};
    DrawFocusRect(dc, &r);
    ReleaseDC(HwndOf(d), dc);
  }
  if (gained) RememberFocus(d, id);
  if (gained && IsPushButton(d, id) && State().buttonFocusProc)
    State().buttonFocusProc(button, SInt16(id));
}

bool FrameOutlinesDefaultButton(const Rect& framed) {
  constexpr int kNear = 8;
  GrafPtr port = nullptr;
  GetPort(&port);
  if (!IsLibraryDialog(port)) return false;
  std::vector<ItemView> items = ItemsOf(port);
  for (size_t i = 0; i < items.size(); ++i) {
    int item = int(i + 1);
    Rect meet;
    if (!IsPushButton(port, item) || !Intersect(framed, items[i].rect, &meet)) continue;
    // The frame hugs the button: what they share lies within a few pixels
    // of the frame on every side.
    if (meet.top - framed.top >= kNear || meet.left - framed.left >= kNear ||
        framed.bottom - meet.bottom >= kNear || framed.right - meet.right >= kNear)
      continue;
    Dlg(port)->aDefItem = SInt16(item);
    MoveDefaultOutline(port, item);
    return true;
  }
  return false;
}

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API void KWE_CALL KWE_SetDefaultButtonAndFocus(DialogPtr theDialog, SInt16 itemNo,
                                                   Boolean makeDefault) {
  if (!IsLibraryDialog(theDialog)) return;
  int item = itemNo == -1 ? Dlg(theDialog)->aDefItem : itemNo;
  if (HWND child = ItemWindow(theDialog, item)) SetFocus(child);
  MoveDefaultOutline(theDialog, item);
  if (makeDefault && item > 0) Dlg(theDialog)->aDefItem = SInt16(item);
}

KWE_API void KWE_CALL KWE_SetButtonFocusHookProc(KWEButtonFocusProc proc) {
  ManagerState& st = State();
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(st.buttonFocusProc));
  st.buttonFocusProc =
      reinterpret_cast<KWEButtonFocusProc>(WrapHostProcedure(reinterpret_cast<ProcPtr>(proc)));
}
