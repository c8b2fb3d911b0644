// The windows' regions and their updates: strucRgn and contRgn follow the
// Win32 window, visRgn is what is not covered by windows in front, and
// updateRgn gathers what Windows asks to be painted until BeginUpdate takes
// it. strucRgn, contRgn and updateRgn are global (screen) coordinates.
#include <windows.h>

#include <algorithm>

#include "KWEPorts.h"
#include "KWERegions.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/regions/region_record.h"
#include "windows/window_manager.h"

namespace kwe::windows {
namespace {

// Global minus local: where the port's local (0, 0) lies on the screen, less
// the port's origin.
POINT GlobalOffset(WindowPtr w) {
  POINT o{0, 0};
  if (HWND hwnd = HwndOf(w)) ClientToScreen(hwnd, &o);
  o.x -= w->portRect.left;
  o.y -= w->portRect.top;
  return o;
}

void SetRegionToRect(RgnHandle rgn, const RECT& r) {
  if (rgn) SetRectRgn(rgn, SInt16(r.left), SInt16(r.top), SInt16(r.right), SInt16(r.bottom));
}

// The window whose port is current, when it is a library window.
WindowPtr CurrentWindow() {
  GrafPtr port = nullptr;
  GetPort(&port);
  return DataOf(port) ? port : nullptr;
}

// A local region of the current window as a Win32 region in client
// coordinates (the caller deletes it).
HRGN ClientRegionOf(WindowPtr w, RgnHandle local) {
  quickdraw::RegionRecord* r = quickdraw::RecordOf(local);
  if (!r) return nullptr;
  HRGN copy = CreateRectRgn(0, 0, 0, 0);
  CombineRgn(copy, quickdraw::ShapeForGdi(*r), nullptr, RGN_COPY);
  OffsetRgn(copy, -w->portRect.left, -w->portRect.top);
  return copy;
}

UpdateLevel* LevelOf(WindowPtr w) {
  ManagerState& st = State();
  for (int i = std::min(st.updateNesting, 2) - 1; i >= 0; --i)
    if (st.levels[i].window == w) return &st.levels[i];
  return nullptr;
}

void MarkUpdatePending(WindowPtr w) {
  if (WStateData* d = DataOf(w)) d->flags |= kUpdatePendingFlag;
  events::RequestUpdate();
}

}  // namespace

void GlobalToLocalRegion(WindowPtr w, RgnHandle rgn) {
  POINT o = GlobalOffset(w);
  OffsetRgn(rgn, SInt16(-o.x), SInt16(-o.y));
}

void LocalToGlobalRegion(WindowPtr w, RgnHandle rgn) {
  POINT o = GlobalOffset(w);
  OffsetRgn(rgn, SInt16(o.x), SInt16(o.y));
}

void RefreshRegions(WindowPtr w) {
  HWND hwnd = HwndOf(w);
  if (!hwnd) return;
  WindowPeek p = Peek(w);
  bool visible = IsIconic(TheSession().mainWindow) ? p->visible : IsWindowVisible(hwnd) != 0;
  quickdraw::PortAttr* a = quickdraw::AttrOf(w);
  if (a) a->visible = visible ? 1 : 0;
  if (visible || !EmptyRgn(w->visRgn)) {
    RECT window, client;
    GetWindowRect(hwnd, &window);
    GetClientRect(hwnd, &client);
    MapWindowPoints(hwnd, nullptr, reinterpret_cast<POINT*>(&client), 2);
    SetRegionToRect(p->strucRgn, window);
    SetRegionToRect(p->contRgn, client);
  }
  CalcVis(w);
}

void RefreshAllRegions() {
  ManagerState& st = State();
  if (st.beingMade) return;
  for (WindowPeek p = ListHead(); p; p = p->nextWindow) RefreshRegions(AsPtr(p));
  st.regionsDirty = false;
}

void EnsureRegionsCurrent() {
  if (State().regionsDirty) RefreshAllRegions();
}

// A window with a picture (SetWindowPic) is redrawn from it here, as the
// Window Manager does, and gets no update event.
bool DrawWindowPicture(WindowPtr w) {
  PicHandle pic = Peek(w)->windowPic;
  if (!pic) return false;
  GrafPtr saved;
  GetPort(&saved);
  SetPort(w);
  BeginUpdate(w);
  DrawPicture(pic, &w->portRect);
  EndUpdate(w);
  SetPort(saved);
  return true;
}

// The update or activate event the windows call for: the pending
// deactivation first, then the pending activation, then the first visible
// window, front to back, whose update region has something to paint.
bool NextUpdateOrActivate(EventMask mask, EventRecord* event, WindowPtr* window) {
  using lowmem::At;
  using lowmem::Slot;
  WindowPtr& activation = At<WindowPtr>(Slot::PendingActivation);
  WindowPtr& deactivation = At<WindowPtr>(Slot::PendingDeactivation);
  WindowPtr chosen = nullptr;
  bool activate = false;
  UInt16 what = nullEvent;
  if (mask & activMask) {
    if (!activation && deactivation && deactivation == FrontWindow()) deactivation = nullptr;
    if (deactivation && deactivation == activation) deactivation = activation = nullptr;
    if (deactivation) {
      chosen = deactivation;
    } else if (activation) {
      if (IsLibraryWindow(activation) && Peek(activation)->visible) {
        chosen = activation;
        activate = true;
      } else {
        activation = nullptr;
      }
    }
    if (chosen) what = activateEvt;
  }
  if (!chosen && (mask & updateMask)) {
    for (WindowPeek p = ListHead(); p && !chosen; p = p->nextWindow) {
      WindowPtr w = AsPtr(p);
      if (p->visible && (FlagsOf(w) & kUpdatePendingFlag) && KWE_TestUpdate(w) &&
          !DrawWindowPicture(w))
        chosen = w;
    }
    if (chosen) what = updateEvt;
  }
  if (!chosen) return false;
  event->what = what;
  event->message = UInt32(reinterpret_cast<uintptr_t>(chosen));
  event->when = lowmem::Ticks();
  event->where = events::MousePosition();
  event->modifiers = UInt16(events::Modifiers() | (activate ? activeFlag : 0));
  *window = chosen;
  return true;
}

void KWE_CALL InvalRectDefault(const Rect* r) {
  WindowPtr w = CurrentWindow();
  if (!w || !r) return;
  RECT rc{r->left - w->portRect.left, r->top - w->portRect.top, r->right - w->portRect.left,
          r->bottom - w->portRect.top};
  InvalidateRect(HwndOf(w), &rc, FALSE);
  MarkUpdatePending(w);
}

void KWE_CALL InvalRgnDefault(RgnHandle rgn) {
  WindowPtr w = CurrentWindow();
  if (!w || !rgn || !*rgn) return;
  // The library's rectangle regions go to Windows as their box.
  if (KWE_IsRectRgn(rgn)) {
    Rect box = (*rgn)->rgnBBox;
    InvalRectDefault(&box);
    return;
  }
  HRGN client = ClientRegionOf(w, rgn);
  if (!client) return;
  InvalidateRgn(HwndOf(w), client, FALSE);
  DeleteObject(client);
  MarkUpdatePending(w);
}

void AcceptWin32Paint(WindowPtr w, HWND hwnd) {
  // GetUpdateRgn erases and paints the frame as BeginPaint would; the paint
  // is then accepted without a paint device context, which would cost as
  // much again.
  HRGN update = CreateRectRgn(0, 0, 0, 0);
  if (GetUpdateRgn(hwnd, update, TRUE) > NULLREGION) {
    POINT o{0, 0};
    ClientToScreen(hwnd, &o);
    OffsetRgn(update, o.x, o.y);
    RgnHandle global = NewRgn();
    if (global && kwe::quickdraw::SetRegionFromWin32(global, update))
      UnionRgn(Peek(w)->updateRgn, global, Peek(w)->updateRgn);
    if (global) DisposeRgn(global);
  }
  DeleteObject(update);
  ValidateRgn(hwnd, nullptr);
}

// BeginUpdate keeps two levels of nesting; deeper calls only count, so that
// the matching EndUpdate does nothing.
void KWE_CALL BeginUpdateDefault(WindowPtr w) {
  ManagerState& st = State();
  if (!DataOf(w)) return;
  int level = st.updateNesting++;
  if (level >= 2) return;
  EnsureRegionsCurrent();
  UpdateLevel& saved = st.levels[level];
  saved.window = w;
  saved.origin = Point{w->portRect.top, w->portRect.left};
  if (!saved.savedVis) saved.savedVis = NewRgn();
  CopyRgn(w->visRgn, saved.savedVis);
  // What UpdateWindow would bring through WM_PAINT and KWE_EventUpdate, taken
  // here without the round trip through the host's window procedure.
  AcceptWin32Paint(w, HwndOf(w));
  GetPort(&saved.savedPort);
  SetPort(w);
  CopyRgn(Peek(w)->updateRgn, st.scratch);
  GlobalToLocalRegion(w, st.scratch);
  SectRgn(saved.savedVis, st.scratch, w->visRgn);
  SetEmptyRgn(Peek(w)->updateRgn);
  DataOf(w)->flags &= UInt16(~kUpdatePendingFlag);
  KWE_ClipRgnChange(w);
}

void KWE_CALL EndUpdateDefault(WindowPtr w) {
  ManagerState& st = State();
  if (st.updateNesting == 0) return;
  int level = --st.updateNesting;
  if (level >= 2) return;
  UpdateLevel& saved = st.levels[level];
  if (saved.window && saved.window == w && DataOf(w)) {
    CopyRgn(saved.savedVis, w->visRgn);
    int dh = w->portRect.left - saved.origin.h, dv = w->portRect.top - saved.origin.v;
    if (dh || dv) OffsetRgn(w->visRgn, SInt16(dh), SInt16(dv));
    KWE_ClipRgnChange(w);
  }
  SetPort(saved.savedPort);
  saved.window = nullptr;
  saved.savedPort = nullptr;
}

}  // namespace kwe::windows

using namespace kwe;
using namespace kwe::windows;

KWE_API void KWE_CALL ValidRect(const Rect* goodRect) {
  GrafPtr port = nullptr;
  GetPort(&port);
  WStateData* d = DataOf(port);
  if (!d || !goodRect) return;
  if (d->flags & kUpdatePendingFlag) {
    RgnHandle rgn = State().scratch;
    RectRgn(rgn, goodRect);
    LocalToGlobalRegion(port, rgn);
    DiffRgn(Peek(port)->updateRgn, rgn, Peek(port)->updateRgn);
  }
  RECT rc{goodRect->left - port->portRect.left, goodRect->top - port->portRect.top,
          goodRect->right - port->portRect.left, goodRect->bottom - port->portRect.top};
  ValidateRect(HwndOf(port), &rc);
}

KWE_API void KWE_CALL ValidRgn(RgnHandle goodRgn) {
  GrafPtr port = nullptr;
  GetPort(&port);
  WStateData* d = DataOf(port);
  if (!d || !goodRgn || !*goodRgn) return;
  if (d->flags & kUpdatePendingFlag) {
    RgnHandle rgn = State().scratch;
    CopyRgn(goodRgn, rgn);
    LocalToGlobalRegion(port, rgn);
    DiffRgn(Peek(port)->updateRgn, rgn, Peek(port)->updateRgn);
  }
  quickdraw::RegionRecord* r = quickdraw::RecordOf(goodRgn);
  if (!r) return;
  HRGN client = CreateRectRgn(0, 0, 0, 0);
  CombineRgn(client, quickdraw::ShapeForGdi(*r), nullptr, RGN_COPY);
  OffsetRgn(client, -port->portRect.left, -port->portRect.top);
  ValidateRgn(HwndOf(port), client);
  DeleteObject(client);
}

KWE_API void KWE_CALL CalcVis(WindowPtr theWindow) {
  WindowPeek p = Peek(theWindow);
  if (!DataOf(theWindow)) return;
  UpdateLevel* level = LevelOf(theWindow);
  RgnHandle target = level ? level->savedVis : theWindow->visRgn;
  if (!p->visible) {
    SetEmptyRgn(target);
  } else {
    RgnHandle work = State().scratch;
    CopyRgn(p->contRgn, work);
    for (WindowPeek q = ListHead(); q && q != p; q = q->nextWindow)
      if (q->visible && q->strucRgn) DiffRgn(work, q->strucRgn, work);
    GlobalToLocalRegion(theWindow, work);
    CopyRgn(work, target);
  }
  if (!level) KWE_ClipRgnChange(theWindow);
}

KWE_API SInt32 KWE_CALL KWE_EventUpdate(HWND hwnd) {
  ManagerState& st = State();
  WindowPtr w = WindowOfHwnd(hwnd);
  if (!w) return 0;
  PAINTSTRUCT ps;
  if (w == st.beingMade) {
    st.beingMadeFlags |= kUpdatePendingFlag;
    BeginPaint(hwnd, &ps);
    EndPaint(hwnd, &ps);
    return 1;
  }
  AcceptWin32Paint(w, hwnd);
  if (!LevelOf(w)) MarkUpdatePending(w);
  return 1;
}

KWE_API Boolean KWE_CALL KWE_CheckUpdateRgn(WindowPtr window) {
  HWND hwnd = HwndOf(window);
  if (!hwnd) return false;
  UpdateWindow(hwnd);
  return (FlagsOf(window) & kUpdatePendingFlag) != 0;
}

KWE_API Boolean KWE_CALL KWE_TestFocus(WindowPtr window, Boolean clear) {
  HWND hwnd = HwndOf(window);
  if (!hwnd) return false;
  EnsureRegionsCurrent();
  UpdateWindow(hwnd);
  RgnHandle work = State().scratch;
  CopyRgn(Peek(window)->updateRgn, work);
  GlobalToLocalRegion(window, work);
  SectRgn(work, window->visRgn, work);
  if (!EmptyRgn(work) || !clear) return true;
  DataOf(window)->flags &= UInt16(~kUpdatePendingFlag);
  SetEmptyRgn(Peek(window)->updateRgn);
  return false;
}

KWE_API Boolean KWE_CALL KWE_TestUpdate(WindowPtr window) { return KWE_TestFocus(window, true); }

KWE_API void KWE_CALL KWE_UpdateWindows(SInt16 now) {
  if (State().beingMade) return;
  if (now)
    RefreshAllRegions();
  else
    State().regionsDirty = true;
}

KWE_API Boolean KWE_CALL CheckUpdate(EventRecord*) { return false; }
KWE_API void KWE_CALL CalcVisBehind(WindowPtr, RgnHandle) {}
KWE_API void KWE_CALL ClipAbove(WindowPtr) {}
KWE_API void KWE_CALL PaintBehind(WindowPtr, RgnHandle) {}
KWE_API void KWE_CALL PaintOne(WindowPtr, RgnHandle) {}
