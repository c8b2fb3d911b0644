// The modal loop: ModalDialog with the standard or the application's
// filter, the other windows disabled meanwhile, the keyboard hook that
// routes keys between a dialog's controls and the dialog, and nested modal
// loops saving and restoring the modal state.
#include <windows.h>

#include <vector>

#include "Controls.h"
#include "OSUtils.h"
#include "controls/control_manager.h"
#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "menus/menu_choices.h"
#include "windows/window_manager.h"

namespace kwe::dialogs {
namespace {

constexpr UInt8 kReturn = 13, kEnter = 3, kEscape = 27;
constexpr SInt16 kCloseBoxPoint = -6;
constexpr SInt16 kMenuBarPoint = -1;
constexpr UINT kOldGetDroppedState = 0x0417;  // CB_GETDROPPEDSTATE of 16-bit Windows
constexpr SInt32 kFlashTicks = 6;
constexpr DWORD kIdleWaitMs = 5;

struct ModalLevel {
  DialogPtr dialog;
  HWND window;
  bool installedHook;
  WNDPROC sysCharPrevious;
  KWESysCharFilter sysCharFilter;
};
std::vector<ModalLevel> g_levels;

UInt8 KeyOf(const EventRecord& e) { return UInt8(e.message & 0xFF); }

ControlHandle ButtonOf(DialogPtr d, int item) {
  ItemView v;
  if (!ItemAt(d, item, &v) || TypeOf(v.type) != kButtonItem) return nullptr;
  HWND child = ItemWindow(d, item);
  ControlHandle c = child ? controls::ControlOfChild(child) : nullptr;
  return c && controls::KindOf(c) == controls::kPushButton ? c : nullptr;
}

bool HasPushButton(DialogPtr d) {
  int count = int(ItemsOf(d).size());
  for (int item = 1; item <= count; ++item)
    if (ButtonOf(d, item)) return true;
  return false;
}

HWND OpenComboList(DialogPtr d) {
  HWND focus = GetFocus();
  if (!focus || GetParent(focus) != HwndOf(d) || !KWE_IsComboBox(d, SInt16(ItemOfChild(focus))))
    return nullptr;
  return SendMessageA(focus, kOldGetDroppedState, 0, 0) ? focus : nullptr;
}

Boolean KWE_CALL StandardFilter(DialogPtr d, EventRecord* e, SInt16* itemHit) {
  *itemHit = 0;
  int item = 0;
  DialogPeek p = Dlg(d);
  if (e->what == keyDown) {
    UInt8 key = KeyOf(*e);
    bool cancelKey = key == kEscape || ((e->modifiers & cmdKey) && key == '.');
    if (key == kReturn || key == kEnter) {
      if (key == kReturn && IsMultiLine(GetFocus())) return false;
      item = p->editOpen ? p->editOpen : p->aDefItem ? p->aDefItem : 1;
    } else if (cancelKey) {
      item = ButtonOf(d, 2) ? 2 : p->aDefItem ? p->aDefItem : 1;
    }
  }
  if (item) {
    ControlHandle c = ButtonOf(d, item);
    HWND child = ItemWindow(d, item);
    if (!c || !IsWindowEnabled(child)) return false;
    HiliteControl(c, 1);
    Delay(kFlashTicks, nullptr);
    HiliteControl(c, 0);
    *itemHit = SInt16(item);
    return true;
  }
  if (e->what == mouseDown) {
    WindowPtr w = nullptr;
    if (FindWindow(e->where, &w) == inContent && w == d) {
      if (HasPushButton(d)) return false;
      *itemHit = 1;
      return true;
    }
    SysBeep(1);
  }
  return false;
}

LRESULT CALLBACK SysCharSubclass(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  for (auto level = g_levels.rbegin(); level != g_levels.rend(); ++level) {
    if (level->window != hwnd) continue;
    if (msg == WM_SYSCHAR && level->sysCharFilter && level->sysCharFilter(hwnd, wParam)) return 0;
    return CallWindowProcA(level->sysCharPrevious, hwnd, msg, wParam, lParam);
  }
  return DefWindowProcA(hwnd, msg, wParam, lParam);
}

// Steps 2 and 3 of a modal loop; the level's index.
size_t Enter(DialogPtr d) {
  ManagerState& st = State();
  ModalLevel level{st.modalDialog, st.modalWindow, false, nullptr, nullptr};
  if (!st.keepEnabled) KWE_EnableWindows(d, false, false);
  Session& s = TheSession();
  if (!s.keyboardHook) {
    s.keyboardHook = SetWindowsHookExA(WH_KEYBOARD, events::KeyboardHookProcedure(), nullptr,
                                       GetCurrentThreadId());
    level.installedHook = s.keyboardHook != nullptr;
  }
  st.modalDialog = d;
  st.modalWindow = HwndOf(d);
  g_levels.push_back(level);
  return g_levels.size() - 1;
}

void Leave(DialogPtr d, size_t index) {
  ManagerState& st = State();
  if (index >= g_levels.size()) return;
  ModalLevel level = g_levels[index];
  g_levels.resize(index);
  st.modalDialog = level.dialog;
  st.modalWindow = level.window;
  Session& s = TheSession();
  if (level.installedHook && s.keyboardHook) {
    UnhookWindowsHookEx(s.keyboardHook);
    s.keyboardHook = nullptr;
  }
  if (level.sysCharPrevious && windows::HwndOf(d))
    SetWindowLongPtrA(windows::HwndOf(d), GWLP_WNDPROC,
                      reinterpret_cast<LONG_PTR>(level.sysCharPrevious));
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(level.sysCharFilter));
  KWE_EnableWindows(d, true, false);
}

// Step 5: what the application filter's keys ask before it runs. True ends
// the loop.
bool Prefilter(DialogPtr d, EventRecord& e, SInt16* itemHit) {
  if (e.what == mouseDown && e.where.v == kCloseBoxPoint && e.where.h == -1) {
    e.what = keyDown;
    e.message = kEscape;
  }
  if (e.what != keyDown || (e.modifiers & cmdKey)) return false;
  UInt8 key = KeyOf(e);
  if (key != kReturn && key != kEnter && key != kEscape) return false;
  if (HWND combo = OpenComboList(d)) {
    SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
    *itemHit = 0;
    return true;
  }
  return Dlg(d)->editOpen && StandardFilter(d, &e, itemHit);
}

}  // namespace

void KWE_CALL ModalDialogDefault(ModalFilterProcPtr filterProc, SInt16* itemHit) {
  SInt16 ignored = 0;
  if (!itemHit) itemHit = &ignored;
  *itemHit = 0;
  DialogPtr d = FrontWindow();
  if (!IsLibraryDialog(d)) return;
  ManagerState& st = State();
  auto filter = filterProc ? reinterpret_cast<ModalFilterProcPtr>(
                                 WrapHostProcedure(reinterpret_cast<ProcPtr>(filterProc)))
                           : StandardFilter;
  HWND capture = GetCapture();
  if (capture) ReleaseCapture();
  size_t level = Enter(d);
  GrafPtr savedPort = nullptr;
  GetPort(&savedPort);
  KeepFocus(d);
  for (;;) {
    SystemTask();
    EventRecord e{};
    if (!GetNextEvent(everyEvent, &e))
      MsgWaitForMultipleObjects(0, nullptr, FALSE, kIdleWaitMs, QS_ALLINPUT);
    // The filter reads the edit item's text from the record, as it stands
    // after the keys the control has already taken.
    if (e.what == keyDown || e.what == autoKey) RefreshEditRecord(d);
    if (filterProc && Prefilter(d, e, itemHit)) break;
    // A menu choice's mouseDown: a filter may answer it with MenuSelect (a
    // movable modal dialog does); otherwise the menu bar is not the
    // dialog's, and the choice behind the mouseDown goes with it.
    bool menuChoice = e.what == mouseDown && e.where.v == kMenuBarPoint && e.where.h == -1;
    size_t waiting = menus::WaitingChoices();
    ++st.filterNesting;
    bool taken = filter(d, &e, itemHit);
    --st.filterNesting;
    if (menuChoice && menus::WaitingChoices() >= waiting) menus::DropOldestChoice();
    if (taken) break;
    if (e.what == mouseDown) {
      if (HWND combo = OpenComboList(d)) {
        SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);
        continue;
      }
    } else if (e.what == mouseUp) {
      continue;
    } else if (e.what == updateEvt && EventWindow(e) != d) {
      continue;
    }
    if (e.what != nullEvent && HandleEvent(d, e, itemHit)) break;
    if (e.what != nullEvent) continue;
    if (st.modalDialog == d) KeepFocus(d);
    if (TEHandle te = FocusedEditRecord(d)) TEIdle(te);
  }
  Leave(d, level);
  SetPort(savedPort);
  if (capture) SetCapture(capture);
  if (filterProc) ReleaseHostProcedure(reinterpret_cast<ProcPtr>(filter));
}

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API HWND KWE_CALL KWE_EnableWindowsEx(WindowPtr window, Boolean enable, Boolean fromItself,
                                          Boolean alsoMain) {
  ManagerState& st = State();
  HWND main = TheSession().mainWindow;
  if (!st.filterNesting && alsoMain && main) EnableWindow(main, enable);
  WindowPeek start = windows::IsLibraryWindow(window) ? windows::Peek(window) : nullptr;
  if (start && !fromItself) start = start->nextWindow;
  for (WindowPeek p = start; p; p = p->nextWindow) {
    HWND hwnd = windows::HwndOf(windows::AsPtr(p));
    if (p->visible && hwnd) EnableWindow(hwnd, enable);
    if (st.filterNesting) break;
  }
  HWND own = windows::HwndOf(window);
  return own ? own : main;
}

KWE_API HWND KWE_CALL KWE_EnableWindows(WindowPtr window, Boolean enable, Boolean fromItself) {
  return KWE_EnableWindowsEx(window, enable, fromItself, true);
}

KWE_API void KWE_CALL KWE_PrepareModalWindow(WindowPtr window, SInt32* hookState,
                                             SInt32* modalState, SInt32* captureState,
                                             KWESysCharFilter sysCharFilter) {
  HWND hwnd = windows::HwndOf(window);
  if (hookState) *hookState = 0;
  if (modalState) *modalState = -1;
  if (captureState) *captureState = 0;
  if (!hwnd) return;
  HWND capture = GetCapture();
  if (capture) ReleaseCapture();
  size_t level = Enter(window);
  ModalLevel& l = g_levels[level];
  l.sysCharFilter = reinterpret_cast<KWESysCharFilter>(
      WrapHostProcedure(reinterpret_cast<ProcPtr>(sysCharFilter)));
  l.sysCharPrevious = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SysCharSubclass)));
  if (hookState) *hookState = l.installedHook;
  if (modalState) *modalState = SInt32(level);
  // A window handle has 32 significant bits in every build.
  if (captureState) *captureState = SInt32(reinterpret_cast<intptr_t>(capture));
}

KWE_API void KWE_CALL KWE_CloseModalWindow(WindowPtr window, SInt32, SInt32 modalState,
                                           SInt32 captureState) {
  if (modalState < 0) return;
  Leave(window, size_t(modalState));
  if (HWND capture = reinterpret_cast<HWND>(intptr_t(captureState))) SetCapture(capture);
}
