// Showing, hiding and drawing controls, their highlighting, position and
// size. Windows paints the child windows; drawing a control asks it to now.
#include <windows.h>

#include <algorithm>

#include "KWEWindows.h"
#include "Memory.h"
#include "controls/control_manager.h"
#include "frame/session.h"
#include "windows/window_manager.h"

namespace kwe::controls {
namespace {

constexpr UINT kQuietPlacement = SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE;

bool Valid(ControlHandle c) { return c && *c && ChildOf(c); }

void PlaceChild(ControlHandle c) {
  POINT at = ToClient(c, Rec(c)->contrlRect.left, Rec(c)->contrlRect.top);
  RecordPortOrigin(c);
  SetWindowPos(ChildOf(c), nullptr, at.x, at.y, 0, 0, kQuietPlacement | SWP_NOSIZE);
}

// The part of a that lies in b; false when they do not meet.
bool Intersect(const Rect& a, const Rect& b, Rect* out) {
  *out = Rect{std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
              std::min(a.right, b.right)};
  return out->top < out->bottom && out->left < out->right;
}

// The next child after this one that can take the focus in a dialog, in the
// order the items were made, wrapping to the first; else the owner itself.
HWND NextFocus(ControlHandle c) {
  HWND child = ChildOf(c), owner = OwnerWindow(c);
  if (!(windows::FlagsOf(Rec(c)->contrlOwner) & windows::kMadeForDialogFlag)) return owner;
  for (HWND h = GetWindow(child, GW_HWNDNEXT);; h = GetWindow(h, GW_HWNDNEXT)) {
    if (!h) h = GetWindow(child, GW_HWNDFIRST);
    if (h == child) return owner;
    if (IsWindowVisible(h) && IsWindowEnabled(h)) return h;
  }
}

void Unlink(ControlHandle c) {
  WindowPtr w = Rec(c)->contrlOwner;
  if (!windows::DataOf(w)) return;
  for (ControlHandle* link = &windows::Peek(w)->controlList; *link && **link;
       link = &Rec(*link)->nextControl) {
    if (*link == c) {
      *link = Rec(c)->nextControl;
      return;
    }
  }
}

}  // namespace

void WindowHiliteChanged(WindowPtr w, bool on) {
  if (!windows::DataOf(w)) return;
  for (ControlHandle c = windows::Peek(w)->controlList; c && *c; c = Rec(c)->nextControl) {
    if (!IsScrollBar(c) || Rec(c)->contrlVis != kVisible) continue;
    if (on)
      EnableScrollBar(c);
    else if (IsWindowEnabled(ChildOf(c)))
      EnableWindow(ChildOf(c), FALSE);
  }
}

void DisposeWindowControls(WindowPtr w) { KillControls(w); }

void Relink(ControlHandle c, WindowPtr to) {
  for (ControlHandle k = windows::Peek(to)->controlList; k && *k; k = Rec(k)->nextControl)
    if (k == c) return;
  Rec(c)->nextControl = windows::Peek(to)->controlList;
  windows::Peek(to)->controlList = c;
}

}  // namespace kwe::controls

using namespace kwe::controls;

KWE_API void KWE_CALL ShowControl(ControlHandle theControl) {
  if (!Valid(theControl)) return;
  Rec(theControl)->contrlVis = kVisible;
  HWND child = ChildOf(theControl);
  SetWindowPos(child, nullptr, 0, 0, 0, 0,
               SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE | kQuietPlacement);
  if (IsScrollBar(theControl)) EnableScrollBar(theControl);
  if (PortOriginMoved(theControl)) PlaceChild(theControl);
  InvalidateRect(child, nullptr, TRUE);
  UpdateWindow(child);
}

KWE_API void KWE_CALL HideControl(ControlHandle theControl) {
  if (!Valid(theControl)) return;
  ControlPtr p = Rec(theControl);
  p->contrlVis = 0;
  HWND child = ChildOf(theControl), owner = OwnerWindow(theControl);
  ValidateRect(child, nullptr);
  RECT was;
  GetWindowRect(child, &was);
  MapWindowPoints(nullptr, owner, reinterpret_cast<POINT*>(&was), 2);
  SetWindowPos(child, nullptr, 0, 0, 0, 0,
               SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | kQuietPlacement);
  if (FieldsOf(theControl).hasCdef) {
    GrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(p->contrlOwner);
    EraseRect(&p->contrlRect);
    SetPort(saved);
    InvalidateInOwner(theControl, p->contrlRect);
  }
  InvalidateRect(owner, &was, TRUE);
}

KWE_API void KWE_CALL Draw1Control(ControlHandle theControl) {
  if (!Valid(theControl) || Rec(theControl)->contrlVis != kVisible) return;
  HWND child = ChildOf(theControl);
  if (!IsWindowVisible(child)) {
    ShowControl(theControl);
    return;
  }
  ManagerState& st = State();
  ++st.drawNesting;
  ControlPtr p = Rec(theControl);
  RgnHandle vis = p->contrlOwner->visRgn;
  Rect box = vis && *vis ? (*vis)->rgnBBox : p->contrlRect;
  Rect part;
  if (Intersect(p->contrlRect, box, &part)) {
    if (IsScrollBar(theControl)) {
      InvalidateRect(child, nullptr, TRUE);
    } else {
      RECT r{part.left - p->contrlRect.left, part.top - p->contrlRect.top,
             part.right - p->contrlRect.left, part.bottom - p->contrlRect.top};
      InvalidateRect(child, &r, TRUE);
    }
    UpdateWindow(child);
  }
  --st.drawNesting;
}

KWE_API void KWE_CALL UpdateControls(WindowPtr theWindow, RgnHandle) {
  HWND hwnd = kwe::windows::HwndOf(theWindow);
  if (!hwnd || !IsWindowVisible(hwnd)) return;
  for (ControlHandle c = kwe::windows::Peek(theWindow)->controlList; c && *c;
       c = Rec(c)->nextControl)
    Draw1Control(c);
}

KWE_API void KWE_CALL DrawControls(WindowPtr theWindow) {
  if (kwe::windows::DataOf(theWindow)) UpdateControls(theWindow, theWindow->visRgn);
}

KWE_API void KWE_CALL HiliteControl(ControlHandle theControl, SInt16 hiliteState) {
  if (!Valid(theControl) || !Rec(theControl)->contrlOwner) return;
  ControlPtr p = Rec(theControl);
  UInt8 state = UInt8(hiliteState);
  bool changed = p->contrlHilite != state;
  p->contrlHilite = state;
  if (FieldsOf(theControl).hasCdef) {
    if (!changed) return;
    GrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(p->contrlOwner);
    CallCdef(theControl, drawCntl, 0);
    ValidRect(&p->contrlRect);
    SetPort(saved);
    return;
  }
  HWND child = ChildOf(theControl);
  if (state == kInactive && GetFocus() == child) SetFocus(NextFocus(theControl));
  if (IsScrollBar(theControl)) {
    EnableScrollBar(theControl);
    InvalidateRect(child, nullptr, TRUE);
    UpdateWindow(child);
    return;
  }
  EnableWindow(child, state != kInactive);
  if (changed && KindOf(theControl) != kPopUp)
    SendMessageA(child, BM_SETSTATE, state == kInactive ? 0 : state, 0);
}

KWE_API void KWE_CALL MoveControl(ControlHandle theControl, SInt16 h, SInt16 v) {
  if (!Valid(theControl)) return;
  ControlPtr p = Rec(theControl);
  bool visible = p->contrlVis == kVisible;
  if (visible) InvalidateInOwner(theControl, p->contrlRect);
  Rect& r = p->contrlRect;
  r = Rect{v, h, SInt16(v + r.bottom - r.top), SInt16(h + r.right - r.left)};
  PlaceChild(theControl);
  if (visible) Draw1Control(theControl);
}

KWE_API void KWE_CALL SizeControl(ControlHandle theControl, SInt16 w, SInt16 h) {
  if (!Valid(theControl)) return;
  ControlPtr p = Rec(theControl);
  Rect r = p->contrlRect;
  int oldW = r.right - r.left, oldH = r.bottom - r.top;
  if (oldW == w && oldH == h) return;
  bool visible = p->contrlVis == kVisible;
  if (visible) InvalidateInOwner(theControl, r);
  r.right = SInt16(r.left + w);
  r.bottom = SInt16(r.top + h);
  if (IsScrollBar(theControl) && (oldW <= oldH) != (w <= h)) {
    // Windows fixes a scroll bar's orientation when it is made.
    DestroyWindow(ChildOf(theControl));
    CreationContext again;
    again.existing = theControl;
    Str255 title;
    GetControlTitle(theControl, title);
    UInt8 hilite = p->contrlHilite;
    Create(p->contrlOwner, &r, title, visible, p->contrlValue, p->contrlMin, p->contrlMax,
           scrollBarProc, p->contrlRfCon, again);
    p->contrlHilite = hilite;
    EnableScrollBar(theControl);
    return;
  }
  p->contrlRect = r;
  int extra = KindOf(theControl) == kCheckBox ? 2 : KindOf(theControl) == kRadioButton ? 1 : 0;
  SetWindowPos(ChildOf(theControl), nullptr, 0, 0, w + extra, h, kQuietPlacement | SWP_NOMOVE);
  if (visible) Draw1Control(theControl);
}

KWE_API void KWE_CALL KWE_SetWindowDefaultButton(ControlHandle theControl, Boolean on) {
  if (Valid(theControl))
    SendMessageA(ChildOf(theControl), BM_SETSTYLE, on ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
}

KWE_API void KWE_CALL KWE_SetCtlFocus(ControlHandle theControl, Boolean on) {
  if (!Valid(theControl)) return;
  if (on) {
    SetFocus(ChildOf(theControl));
    return;
  }
  WindowPtr w = Rec(theControl)->contrlOwner;
  if (kwe::windows::DataOf(w) && kwe::windows::Peek(w)->visible && kwe::windows::Peek(w)->hilited)
    SetFocus(OwnerWindow(theControl));
}

KWE_API void KWE_CALL KWE_contrlOwnerChange(ControlHandle theControl, WindowPtr newWindow) {
  HWND to = kwe::windows::HwndOf(newWindow);
  if (!Valid(theControl) || !to) return;
  if (GetParent(ChildOf(theControl)) != to) SetParent(ChildOf(theControl), to);
  Relink(theControl, newWindow);
  Rec(theControl)->contrlOwner = newWindow;
}

KWE_API SInt16 KWE_CALL KWE_SetScrollBarWH(SInt16 width, SInt16 height) {
  State().scrollBarWidth = width;
  State().scrollBarHeight = height;
  return height;
}

KWE_API void KWE_CALL DisposeControl(ControlHandle theControl) {
  if (!Valid(theControl)) return;
  ControlPtr p = Rec(theControl);
  if (FieldsOf(theControl).hasCdef) {
    CallCdef(theControl, dispCntl, 0);
    p->contrlDefProc = nullptr;
  }
  ForgetTracked(theControl);
  HWND child = ChildOf(theControl);
  if (GetFocus() == child) SetFocus(kwe::TheSession().mainWindow);
  // Destroying a visible child makes Windows repaint the owner beneath it:
  // the owner's update event covers the control's area without hiding it
  // first.
  DestroyWindow(child);
  Unlink(theControl);
  DisposeHandle(reinterpret_cast<Handle>(theControl));
}

KWE_API void KWE_CALL KillControls(WindowPtr theWindow) {
  if (!kwe::windows::DataOf(theWindow)) return;
  while (ControlHandle c = kwe::windows::Peek(theWindow)->controlList) {
    if (!*c || !ChildOf(c)) break;
    DisposeControl(c);
  }
}
