// The window list in Win32 Z-order, the tie between a WindowPtr and its Win32
// window, and the calls that reorder, show and hide windows.
#include <windows.h>

#include "frame/handle_slots.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/window_ports.h"
#include "windows/window_manager.h"

namespace kwe::windows {
namespace {

ManagerState g_state;
bool g_dialogCreation = false;

WindowPtr NextVisibleAfter(WindowPtr w) {
  for (WindowPeek p = Peek(w)->nextWindow; p; p = p->nextWindow)
    if (p->visible) return AsPtr(p);
  return nullptr;
}

}  // namespace

ManagerState& State() { return g_state; }
bool DialogCreationMode() { return g_dialogCreation; }
void SetDialogCreationMode(bool on) { g_dialogCreation = on; }

WindowPeek& ListHead() { return lowmem::At<WindowPeek>(lowmem::Slot::WindowList); }

bool IsLibraryWindow(WindowPtr w) {
  if (!w) return false;
  if (w == g_state.beingMade || w == g_state.beingClosed) return true;
  quickdraw::PortAttr* a = quickdraw::AttrOf(w);
  return a && (a->flags & quickdraw::kWindowPortFlag) && a->port == w;
}

WStateData* DataOf(WindowPtr w) {
  if (!IsLibraryWindow(w)) return nullptr;
  Handle h = Peek(w)->dataHandle;
  return h && *h ? reinterpret_cast<WStateData*>(*h) : nullptr;
}

HWND HwndOf(WindowPtr w) {
  WStateData* d = DataOf(w);
  return d ? HandleFromSlot<HWND>(d->windowHandle) : nullptr;
}

UInt16 FlagsOf(WindowPtr w) {
  WStateData* d = DataOf(w);
  return d ? d->flags : 0;
}

bool IsColourWindow(WindowPtr w) { return w && w->portBits.rowBytes < 0; }

WindowPtr WindowOfHwnd(HWND hwnd) {
  if (!hwnd) return nullptr;
  if (g_state.beingMade && hwnd == g_state.beingMadeHwnd) return g_state.beingMade;
  if (g_state.beingClosed && hwnd == g_state.beingClosedHwnd) return g_state.beingClosed;
  // Every message of a library window asks this: the list answers without
  // GetPropA, a round trip to the window server each time.
  for (WindowPeek p = ListHead(); p; p = p->nextWindow)
    if (HwndOf(AsPtr(p)) == hwnd) return AsPtr(p);
  return nullptr;
}

int GroupOf(WindowPtr w) {
  UInt16 f = FlagsOf(w);
  if (f & kPopUpFlag) return 0;
  return (f & kMdiChildFlag) ? 2 : 1;
}

WindowPtr PreviousOf(WindowPtr w) {
  WindowPeek prev = nullptr;
  for (WindowPeek p = ListHead(); p && AsPtr(p) != w; p = p->nextWindow) prev = p;
  return AsPtr(prev);
}

void Unlink(WindowPtr w) {
  WindowPeek target = Peek(w);
  for (WindowPeek* link = &ListHead(); *link; link = &(*link)->nextWindow) {
    if (*link == target) {
      *link = target->nextWindow;
      target->nextWindow = nullptr;
      return;
    }
  }
}

void LinkBefore(WindowPtr w, WindowPtr before) {
  WindowPeek* link = &ListHead();
  while (*link && AsPtr(*link) != before) link = &(*link)->nextWindow;
  Peek(w)->nextWindow = *link;
  *link = Peek(w);
}

WindowPtr FirstOfGroup(int group) {
  for (WindowPeek p = ListHead(); p; p = p->nextWindow)
    if (GroupOf(AsPtr(p)) >= group) return AsPtr(p);
  return nullptr;
}

void PlaceInWin32Order(WindowPtr w, WindowPtr after) {
  HWND hwnd = HwndOf(w);
  if (!hwnd) return;
  HWND insertAfter = HWND_TOP;
  if (after && GroupOf(after) == GroupOf(w)) insertAfter = HwndOf(after);
  ++g_state.movingItself;
  SetWindowPos(hwnd, insertAfter, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  --g_state.movingItself;
}

void MoveToFrontOfGroup(WindowPtr w) {
  Unlink(w);
  LinkBefore(w, FirstOfGroup(GroupOf(w)));
  PlaceInWin32Order(w, nullptr);
}

void ShowOrHide(WindowPtr w, bool show, bool activate, bool frameChanged) {
  HWND hwnd = HwndOf(w);
  if (!hwnd) return;
  WindowPeek p = Peek(w);
  ++g_state.movingItself;
  if (show) {
    bool wasHidden = !IsWindowVisible(hwnd);
    WindowPtr before = PreviousOf(w);
    HWND insertAfter = before && GroupOf(before) == GroupOf(w) ? HwndOf(before) : HWND_TOP;
    SetWindowPos(hwnd, insertAfter, 0, 0, 0, 0,
                 SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE | (frameChanged ? SWP_FRAMECHANGED : 0) |
                     (activate ? 0 : SWP_NOACTIVATE));
    p->visible = true;
    quickdraw::SetWindowPortVisible(w, true);
    if (wasHidden && p->windowKind == dialogKind) InvalidateRect(hwnd, nullptr, FALSE);
    RefreshAllRegions();
    UpdateWindow(hwnd);
  } else {
    SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                 SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOZORDER);
    p->visible = false;
    quickdraw::SetWindowPortVisible(w, false);
    RefreshAllRegions();
  }
  --g_state.movingItself;
}

bool SetCaptionState(WindowPtr w, bool on) {
  if (!DataOf(w)) return false;
  if (on && !events::ApplicationActive()) return false;
  WindowPeek p = Peek(w);
  if (bool(p->hilited) == on) return false;
  p->hilited = on;
  controls::WindowHiliteChanged(w, on);
  // WM_NCACTIVATE with -1 changes the caption's state without drawing it.
  if (HWND hwnd = HwndOf(w)) SendMessageA(hwnd, WM_NCACTIVATE, on, -1);
  return true;
}

void InvalidateFrame(HWND hwnd) {
  // The window rectangle less the client area, in client coordinates:
  // RedrawWindow with a null region would invalidate the content as well,
  // and the application would get an update event for nothing.
  RECT window, client;
  GetWindowRect(hwnd, &window);
  GetClientRect(hwnd, &client);
  MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&window), 2);
  HRGN frame = CreateRectRgnIndirect(&window);
  HRGN content = CreateRectRgnIndirect(&client);
  CombineRgn(frame, frame, content, RGN_DIFF);
  RedrawWindow(hwnd, nullptr, frame, RDW_INVALIDATE | RDW_FRAME | RDW_NOCHILDREN);
  DeleteObject(content);
  DeleteObject(frame);
}

void Activate(WindowPtr w) {
  events::SetPendingActivation(w, true);
  HiliteWindow(w, true);
}

void Deactivate(WindowPtr w) {
  events::SetPendingActivation(w, false);
  HiliteWindow(w, false);
}

void MoveActivation(WindowPtr from, WindowPtr to) {
  if (from && from != to) Deactivate(from);
  if (to) Activate(to);
}

WindowPtr KWE_CALL FrontWindowDefault() {
  if (g_state.selected) return g_state.selected;
  for (WindowPeek p = ListHead(); p; p = p->nextWindow)
    if (p->visible) return AsPtr(p);
  return nullptr;
}

void KWE_CALL SelectWindowDefault(WindowPtr w) {
  if (!DataOf(w) || !Peek(w)->visible) return;
  WindowPtr front = FrontWindow();
  if (w != front) {
    if (front) Deactivate(front);
    events::SetPendingActivation(w, true);
    // Hilited before it is raised, with its whole frame marked for painting,
    // the window's frame is drawn once: by the raise, or just after it when
    // the raise uncovered nothing.
    HWND hwnd = HwndOf(w);
    bool changed = SetCaptionState(w, true);
    if (changed) InvalidateFrame(hwnd);
    MoveToFrontOfGroup(w);
    RedrawWindow(hwnd, nullptr, nullptr, RDW_ERASENOW | RDW_NOCHILDREN);
    if (changed && (DataOf(w)->moreFlags & kTakesFocusFlag)) SetFocus(hwnd);
  }
  g_state.selected = w;
}

void KWE_CALL ShowWindowDefault(WindowPtr w) {
  if (!DataOf(w) || Peek(w)->visible) return;
  WindowPtr front = FrontWindow();
  if ((FlagsOf(w) & kToolWindowFlag) || AsPtr(ListHead()) == w) MoveToFrontOfGroup(w);
  ShowOrHide(w, true, false);
  // Shown at the head of the list, the window is in front of the one
  // SelectWindow or HideWindow last brought forward.
  if (AsPtr(ListHead()) == w) g_state.selected = nullptr;
  if (FrontWindow() == w && front != w) MoveActivation(front, w);
  WStateData* d = DataOf(w);
  if (d && (d->moreFlags & kTakesFocusFlag) && FrontWindow() == w) SetFocus(HwndOf(w));
}

void KWE_CALL HideWindowDefault(WindowPtr w) {
  if (!DataOf(w) || !Peek(w)->visible) return;
  bool wasFront = FrontWindow() == w;
  if (g_state.selected == w) g_state.selected = nullptr;
  ShowOrHide(w, false, false);
  if (!wasFront) return;
  // The window behind comes to the front as SelectWindow brings it; with none
  // behind, a pop-up in front of the hidden window is the front window now.
  WindowPtr next = NextVisibleAfter(w);
  if (next) {
    MoveToFrontOfGroup(next);
    g_state.selected = next;
  } else {
    next = FrontWindow();
  }
  MoveActivation(w, next);
}

}  // namespace kwe::windows

using namespace kwe::windows;

KWE_API void KWE_CALL BringToFront(WindowPtr theWindow) {
  if (DataOf(theWindow)) MoveToFrontOfGroup(theWindow);
}

KWE_API void KWE_CALL SendBehind(WindowPtr theWindow, WindowPtr behindWindow) {
  if (!DataOf(theWindow) || theWindow == behindWindow) return;
  if (behindWindow && !DataOf(behindWindow)) return;
  WindowPtr front = FrontWindow();
  if (State().selected == theWindow) State().selected = nullptr;
  Unlink(theWindow);
  // The list keeps its three groups: a window never leaves its own. Behind a
  // window of an earlier group is the front of the window's group; behind
  // none, or behind one of a later group, is its end.
  int group = GroupOf(theWindow);
  int behindGroup = behindWindow ? GroupOf(behindWindow) : 3;
  if (behindGroup < group) {
    MoveToFrontOfGroup(theWindow);
  } else if (behindGroup == group) {
    LinkBefore(theWindow, AsPtr(Peek(behindWindow)->nextWindow));
    PlaceInWin32Order(theWindow, behindWindow);
  } else {
    WindowPtr end = FirstOfGroup(group + 1);
    WindowPtr last = PreviousOf(end);
    LinkBefore(theWindow, end);
    if (last && GroupOf(last) == group) {
      PlaceInWin32Order(theWindow, last);
    } else {
      ++State().movingItself;
      SetWindowPos(HwndOf(theWindow), HWND_BOTTOM, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      --State().movingItself;
    }
  }
  WindowPtr newFront = FrontWindow();
  if (newFront != front) MoveActivation(front, newFront);
}

KWE_API void KWE_CALL HiliteWindow(WindowPtr theWindow, Boolean fHilite) {
  bool on = fHilite != 0;
  if (!SetCaptionState(theWindow, on)) return;
  HWND hwnd = HwndOf(theWindow);
  // The frame is drawn once, with the library's own title-bar buttons.
  if (Peek(theWindow)->visible && hwnd) SendMessageA(hwnd, WM_NCPAINT, 1, 0);
  if (on && hwnd && (DataOf(theWindow)->moreFlags & kTakesFocusFlag)) SetFocus(hwnd);
}

KWE_API void KWE_CALL ShowHide(WindowPtr theWindow, Boolean showFlag) {
  if (!DataOf(theWindow) || bool(Peek(theWindow)->visible) == (showFlag != 0)) return;
  if (!showFlag && State().selected == theWindow) State().selected = nullptr;
  ShowOrHide(theWindow, showFlag != 0, false);
}

KWE_API HWND KWE_CALL KWE_GethWnd(WindowPtr window) { return HwndOf(window); }

KWE_API Boolean KWE_CALL KWE_GetwPtr(HWND hwnd, WindowPtr* window) {
  WindowPtr w = WindowOfHwnd(hwnd);
  if (window) *window = w;
  return w != nullptr;
}

KWE_API WindowPtr KWE_CALL KWE_FocusWindow(void) {
  for (HWND h = GetFocus(); h; h = GetParent(h))
    if (WindowPtr w = WindowOfHwnd(h)) return w;
  return FrontWindow();
}
