// Dialog events: which events belong to a dialog, and what an event does
// in one (item hits, keyboard navigation, updates); the Event Manager's
// questions about dialog controls (the keyboard hook's control kinds and
// the clicks a control's WM_COMMAND stands for).
#include <windows.h>

#include "Controls.h"
#include "KWEEvents.h"
#include "TextEdit.h"
#include "controls/control_manager.h"
#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "events/translation_state.h"
#include "frame/subsystems.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {
namespace {

bool IsResourceControlHit(ControlHandle c, Point pt) {
  SInt16 before = GetControlValue(c);
  if (TrackControl(c, pt, reinterpret_cast<ProcPtr>(intptr_t(-1)))) return true;
  return GetControlValue(c) != before;
}

bool HitTest(DialogPtr d, Point local, SInt16* itemHit) {
  std::vector<ItemView> items = ItemsOf(d);
  for (size_t i = 0; i < items.size(); ++i) {
    const ItemView& v = items[i];
    if (!Contains(v.rect, local)) continue;
    int item = int(i + 1);
    UInt8 type = TypeOf(v.type);
    if (type == kEditTextItem && Dlg(d)->editField != item - 1)
      SelectDialogItemText(d, SInt16(item), 0, 32767);
    if (v.type & kDisabledBit) return false;
    *itemHit = SInt16(item);
    if (type < kButtonItem) return true;
    if (type > kResourceControlItem) return true;
    HWND child = ItemWindow(d, item);
    ControlHandle c = child ? controls::ControlOfChild(child) : nullptr;
    if (!c || (**c).contrlHilite == controls::kInactive) return false;
    if (type == kResourceControlItem) return IsResourceControlHit(c, local);
    return TrackControl(c, local, reinterpret_cast<ProcPtr>(intptr_t(-1))) != 0;
  }
  return false;
}

// The value the device layer keeps through KWE_PlayBack, read without
// changing it. While it is set, key events come from a recording rather
// than from the keyboard, so no edit control has seen them: they are typed
// into the focused edit item through its TextEdit record.
bool PlayingBack() {
  SInt32 value = KWE_PlayBack(0);
  KWE_PlayBack(value);
  return value != 0;
}

}  // namespace

WindowPtr EventWindow(const EventRecord& e) {
  switch (e.what) {
    case mouseDown:
    case mouseUp: {
      WindowPtr w = nullptr;
      return FindWindow(e.where, &w) == inContent ? w : nullptr;
    }
    case updateEvt:
    case activateEvt:
      for (WindowPeek p = windows::ListHead(); p; p = p->nextWindow)
        if (UInt32(reinterpret_cast<uintptr_t>(p)) == e.message) return windows::AsPtr(p);
      return nullptr;
    default: return FrontWindow();
  }
}

bool HandleEvent(DialogPtr d, const EventRecord& e, SInt16* itemHit) {
  bool hit = false;
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(d);
  switch (e.what) {
    case mouseDown: {
      Point local = e.where;
      GlobalToLocal(&local);
      hit = HitTest(d, local, itemHit);
      break;
    }
    case keyDown:
    case autoKey: {
      bool taken = Navigate(d, e);
      RefreshEditRecord(d);
      if (!taken && PlayingBack())
        if (TEHandle te = FocusedEditRecord(d)) TEKey(SInt16(e.message & 0xFF), te);
      if (Dlg(d)->editField >= 0) {
        *itemHit = SInt16(Dlg(d)->editField + 1);
        hit = true;
      } else {
        *itemHit = 0;
      }
      break;
    }
    case updateEvt:
      if (EventWindow(e) == d) {
        BeginUpdate(d);
        UpdateDialog(d, d->visRgn);
        EndUpdate(d);
      }
      break;
    case activateEvt:
      if (TEHandle te = EventWindow(e) == d ? FocusedEditRecord(d) : nullptr) {
        if (e.modifiers & activeFlag)
          TEActivate(te);
        else
          TEDeactivate(te);
      }
      break;
    default:
      if (TEHandle te = FocusedEditRecord(d)) TEIdle(te);
      break;
  }
  if (State().modalDialog == d && events::ApplicationActive()) KeepFocus(d);
  SetPort(saved);
  return hit;
}

bool InModalDialog() { return State().modalWindow != nullptr; }

int DialogControlKind(HWND control, HWND* dialog) {
  if (dialog) *dialog = nullptr;
  HWND parent = control ? GetParent(control) : nullptr;
  if (!DialogOfHwnd(parent)) return kNotDialogControl;
  if (dialog) *dialog = parent;
  LONG_PTR proc = GetWindowLongPtrA(control, GWLP_WNDPROC);
  auto is = [proc](WNDPROC p) { return proc == reinterpret_cast<LONG_PTR>(p); };
  if (is(K_EditWndProc) || is(K_ScrollBarWndProc)) return kEditControl;
  if (is(K_ButtonWndProc)) return kButtonControl;
  if (is(K_UserItemWndProc)) return kUserItemControl;
  if (is(K_CDEFWndProc)) return kDefinedControl;
  if (is(K_StaticWndProc)) return kStaticTextControl;
  if (is(K_ComboBoxWndProc)) return kComboBoxControl;
  char cls[16] = "";
  GetClassNameA(control, cls, sizeof cls);
  if (lstrcmpiA(cls, "ListBox") == 0) return kListBoxControl;
  return kOtherControl;
}

bool ControlCommand(HWND dialog, HWND control, UINT notification, Rect* clickRect) {
  DialogPtr d = DialogOfHwnd(dialog);
  if (!d || GetParent(control) != dialog) return false;
  int item = ItemOfChild(control);
  if (IsEditChild(control)) {
    if (notification == EN_SETFOCUS) {
      Dlg(d)->editField = SInt16(item - 1);
      RememberFocus(d, item);
    }
    if (notification == EN_SETFOCUS && !State().buildNesting) BindEditRecord(d, control);
    if (notification == EN_KILLFOCUS && Dlg(d)->editField == item - 1) Dlg(d)->editField = -1;
    return false;
  }
  if (State().buildNesting) return false;
  int kind = DialogControlKind(control, nullptr);
  bool click = false;
  if (kind == kComboBoxControl)
    click = notification == CBN_CLOSEUP ||
            (notification == CBN_SELCHANGE && !SendMessageA(control, CB_GETDROPPEDSTATE, 0, 0));
  else if (kind == kButtonControl)
    click = notification == BN_CLICKED || notification == BN_DOUBLECLICKED;
  if (!click || !clickRect) return click;
  RECT r;
  GetWindowRect(control, &r);
  // The mouseDown goes where the control's window and its item's rectangle
  // overlap: an alert's lone button keeps its width while its item is made
  // 60 pixels wide, and a press on the rest of the button would otherwise
  // fall outside every item and answer nothing.
  ItemView v;
  if (ItemAt(d, item, &v)) {
    POINT corners[2] = {{v.rect.left - d->portRect.left, v.rect.top - d->portRect.top},
                        {v.rect.right - d->portRect.left, v.rect.bottom - d->portRect.top}};
    MapWindowPoints(dialog, nullptr, corners, 2);
    RECT itemRect{corners[0].x, corners[0].y, corners[1].x, corners[1].y}, both;
    if (IntersectRect(&both, &r, &itemRect)) r = both;
  }
  *clickRect = Rect{SInt16(r.top), SInt16(r.left), SInt16(r.bottom), SInt16(r.right)};
  return true;
}

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API Boolean KWE_CALL IsDialogEvent(const EventRecord* theEvent) {
  if (!theEvent) return false;
  WindowPtr w = EventWindow(*theEvent);
  return w && windows::Peek(w)->windowKind == dialogKind;
}

KWE_API Boolean KWE_CALL DialogSelect(const EventRecord* theEvent, DialogPtr* theDialog,
                                      SInt16* itemHit) {
  SInt16 hit = -1;
  if (itemHit) *itemHit = -1;
  if (theDialog) *theDialog = nullptr;
  WindowPtr w = theEvent ? EventWindow(*theEvent) : nullptr;
  if (!w) return false;
  if (theDialog) *theDialog = w;
  if (!IsLibraryDialog(w)) return false;
  bool result = HandleEvent(w, *theEvent, &hit);
  if (itemHit) *itemHit = hit;
  return result;
}
