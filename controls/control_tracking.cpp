// Finding and tracking controls. Windows tracks the mouse in its own child
// controls: a button's click has already happened when the application
// hears of it, and a scroll bar runs its own loop, whose scroll reports
// (WM_HSCROLL, WM_VSCROLL) call the application's action procedure.
#include <windows.h>

#include <algorithm>

#include "Events.h"
#include "controls/control_manager.h"
#include "events/event_queue.h"
#include "frame/host_procedures.h"
#include "frame/unsupported.h"
#include "windows/window_manager.h"

namespace kwe::controls {
namespace {

const ProcPtr kFromRecord = reinterpret_cast<ProcPtr>(intptr_t(-1));

bool ArrowOrPage(SInt16 part) { return part >= inUpButton && part <= inPageDown; }

// The control's point for a global (screen) point.
Point LocalPoint(ControlHandle c, POINT screen) {
  ScreenToClient(OwnerWindow(c), &screen);
  const Rect& port = Rec(c)->contrlOwner->portRect;
  return Point{SInt16(screen.y + port.top), SInt16(screen.x + port.left)};
}

void TakeThumb(ControlHandle c, int thumb) {
  ControlPtr p = Rec(c);
  p->contrlValue = SInt16(std::max<int>(p->contrlMin, std::min<int>(thumb, p->contrlMax)));
  SetScrollPos(ChildOf(c), SB_CTL, p->contrlValue, TRUE);
}

KWEControlParam PointParam(Point pt) {
  return KWEControlParam(SInt32(UInt32(UInt16(pt.v)) << 16 | UInt16(pt.h)));
}

// The indicator's constraints a CDEF fills for thumbCntl; the start point
// goes in through the first four bytes.
struct IndicatorDragConstraint {
  Rect limitRect;
  Rect slopRect;
  SInt16 axis;
};

SInt16 TrackCdefPart(ControlHandle c, SInt16 part) {
  Tracking& t = State().tracking;
  HWND child = ChildOf(c);
  HiliteControl(c, part);
  HWND captured = GetCapture();
  SetCapture(child);
  SInt16 now = part;
  while (StillDown()) {
    Point m;
    GetMouse(&m);
    now = TestControl(c, m) == part ? part : 0;
    if (Rec(c)->contrlHilite != now) HiliteControl(c, now);
    CallAction(c, t.actionKind == ActionKind::CdefTracks ? part : now);
  }
  ReleaseAction();
  ReleaseCapture();
  if (captured) SetCapture(captured);
  HiliteControl(c, 0);
  return now;
}

SInt16 TrackCdefIndicator(ControlHandle c, SInt16 part, Point start) {
  Tracking& t = State().tracking;
  if (!CallCdef(c, dragCntl, 0)) {
    RgnHandle rgn = NewRgn();
    CallCdef(c, calcThumbRgn, reinterpret_cast<KWEControlParam>(rgn));
    IndicatorDragConstraint limits{};
    std::copy_n(reinterpret_cast<const UInt8*>(&start), sizeof start,
                reinterpret_cast<UInt8*>(&limits.limitRect));
    CallCdef(c, thumbCntl, reinterpret_cast<KWEControlParam>(&limits));
    auto action = t.actionKind == ActionKind::Application
                      ? reinterpret_cast<DragGrayRgnProcPtr>(t.action)
                      : nullptr;
    SInt32 moved =
        DragGrayRgn(rgn, start, &limits.limitRect, &limits.slopRect, limits.axis, action);
    if (moved != 0 && UInt32(moved) != 0x80008000u) CallCdef(c, posCntl, moved);
    DisposeRgn(rgn);
  }
  ReleaseAction();
  return part;
}

// Windows' own loop tracks the arrow or page area from a button press the
// scroll bar is given where the mouse is now; each of its scroll reports
// calls the action procedure.
void RunWindowsLoop(ControlHandle c) {
  Tracking& t = State().tracking;
  HWND bar = ChildOf(c);
  POINT at;
  GetCursorPos(&at);
  ScreenToClient(bar, &at);
  t.windowsTracking = true;
  SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  while (t.windowsTracking && StillDown()) {
    if (t.part == inThumb) SetControlValue(c, SInt16(t.thumb));
  }
  t.windowsTracking = false;
}

}  // namespace

SInt16 PartOfScrollCode(int code) {
  switch (code) {
    case SB_LINEUP: return inUpButton;
    case SB_LINEDOWN: return inDownButton;
    case SB_PAGEUP:
    case SB_TOP: return inPageUp;
    case SB_PAGEDOWN:
    case SB_BOTTOM: return inPageDown;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK: return inThumb;
    default: return 0;
  }
}

void PrepareAction(ControlHandle c, ProcPtr action) {
  Tracking& t = State().tracking;
  ReleaseAction();
  if (action == kFromRecord) action = Rec(c)->contrlAction;
  if (!action) return;
  if (action == kFromRecord) {
    t.actionKind = ActionKind::CdefTracks;
    return;
  }
  t.action = WrapHostProcedure(action);
  t.actionKind = t.action ? ActionKind::Application : ActionKind::None;
}

void ReleaseAction() {
  Tracking& t = State().tracking;
  if (t.actionKind == ActionKind::Application) ReleaseHostProcedure(t.action);
  t.action = nullptr;
  t.actionKind = ActionKind::None;
}

void CallAction(ControlHandle c, SInt16 part) {
  Tracking& t = State().tracking;
  if (t.actionKind == ActionKind::Application)
    reinterpret_cast<ControlActionProcPtr>(t.action)(c, part);
  else if (t.actionKind == ActionKind::CdefTracks)
    CallCdef(c, autoTrack, part);
  ++t.calls;
}

void ForgetTracked(ControlHandle c) {
  Tracking& t = State().tracking;
  if (t.control == c || (t.scrollBar && t.scrollBar == ChildOf(c))) {
    ReleaseAction();
    t = Tracking{};
  }
}

// The scroll reports of a window's scroll-bar controls. The first one of a
// click comes before the application knows of it: it hears of it as a
// mouseDown, and Windows' loop over an arrow or page area is cancelled so
// that the application's TrackControl runs it again with its own action
// procedure. A thumb is left to Windows, and its value follows the thumb.
LRESULT ScrollBarMessage(HWND hwnd, UINT, WPARAM wParam, LPARAM lParam) {
  HWND bar = reinterpret_cast<HWND>(lParam);
  WindowPtr w = windows::WindowOfHwnd(hwnd);
  ControlHandle c = bar && w ? ControlOfChild(bar) : nullptr;
  if (!c) return 0;
  Tracking& t = State().tracking;
  int code = LOWORD(wParam);
  if (code == SB_ENDSCROLL) {
    if (!t.inTrackControl) ReleaseAction();
    t.windowsTracking = false;
    return 0;
  }
  t.window = w;
  t.code = code;
  t.scrollBar = bar;
  SInt16 part = PartOfScrollCode(code);
  if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK) {
    t.thumb = SInt16(HIWORD(wParam));
    TakeThumb(c, t.thumb);
  }
  if (!t.windowsTracking && !t.inTrackControl) {
    POINT at;
    GetCursorPos(&at);
    events::MousePosition() = Point{SInt16(at.y), SInt16(at.x)};
    events::Modifiers() &= ~btnState;
    events::Post(mouseDown, 0);
    ControlHandle found = nullptr;
    FindControl(LocalPoint(c, at), w, &found);
    if (ArrowOrPage(part)) SendMessageA(bar, WM_CANCELMODE, 0, 0);
    t.windowsTracking = true;
    PrepareAction(c, kFromRecord);
    t.calls = -1;
  }
  if (t.calls >= 0)
    CallAction(c, part);
  else
    ++t.calls;
  // A release Windows' loop did not see (it came before the loop began)
  // would leave the loop repeating for ever.
  if (t.inTrackControl && t.windowsTracking && ArrowOrPage(part) && !Button())
    SendMessageA(bar, WM_CANCELMODE, 0, 0);
  return 0;
}

}  // namespace kwe::controls

using namespace kwe::controls;

KWE_API SInt16 KWE_CALL TestControl(ControlHandle theControl, Point thePt) {
  if (!theControl || !*theControl || !ChildOf(theControl)) return 0;
  ControlPtr p = Rec(theControl);
  if (p->contrlVis != kVisible || p->contrlHilite == kInactive) return 0;
  const Tracking& t = State().tracking;
  if (t.scrollBar && ChildOf(theControl) == t.scrollBar) return PartOfScrollCode(t.code);
  if (FieldsOf(theControl).hasCdef)
    return SInt16(CallCdef(theControl, testCntl, PointParam(thePt)));
  if (IsScrollBar(theControl)) return 0;
  const Rect& r = p->contrlRect;
  if (thePt.h < r.left || thePt.h >= r.right || thePt.v < r.top || thePt.v >= r.bottom) return 0;
  intptr_t kind = KindOf(theControl);
  return kind == kCheckBox || kind == kRadioButton ? inCheckBox : inButton;
}

KWE_API SInt16 KWE_CALL FindControl(Point thePoint, WindowPtr theWindow,
                                    ControlHandle* theControl) {
  if (theControl) *theControl = nullptr;
  if (!kwe::windows::DataOf(theWindow)) return 0;
  Tracking& t = State().tracking;
  for (ControlHandle c = kwe::windows::Peek(theWindow)->controlList; c && *c;
       c = Rec(c)->nextControl) {
    SInt16 part = TestControl(c, thePoint);
    if (!part) continue;
    if (theControl) *theControl = c;
    if (theWindow == t.window && ChildOf(c) == t.scrollBar) {
      t.control = c;
      t.part = part;
    }
    return part;
  }
  return 0;
}

KWE_API SInt16 KWE_CALL TrackControl(ControlHandle theControl, Point thePoint, ProcPtr actionProc) {
  if (!theControl || !*theControl || !ChildOf(theControl)) return 0;
  if (Rec(theControl)->contrlHilite == kInactive) {
    while (StillDown()) {
    }
    return 0;
  }
  Tracking& t = State().tracking;
  PrepareAction(theControl, actionProc);
  SInt16 part = TestControl(theControl, thePoint);
  bool reported = t.scrollBar && ChildOf(theControl) == t.scrollBar;
  if (FieldsOf(theControl).hasCdef && part) {
    GrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(Rec(theControl)->contrlOwner);
    part = part < inThumb ? TrackCdefPart(theControl, part)
                          : TrackCdefIndicator(theControl, part, thePoint);
    SetPort(saved);
    return part;
  }
  if (!reported) {
    ReleaseAction();
    return part;
  }
  t.control = theControl;
  t.part = part;
  t.inTrackControl = true;
  t.calls = 0;
  // Windows' loop ends only on a button release it sees itself: it is
  // started only while the button is really down.
  if (ArrowOrPage(part) && Button()) RunWindowsLoop(theControl);
  if (t.actionKind != ActionKind::None && t.calls <= 0) CallAction(theControl, part);
  ReleaseAction();
  t = Tracking{};
  return part;
}

KWE_API void KWE_CALL DragControl(ControlHandle, Point, const Rect*, const Rect*, SInt16) {
  kwe::Unsupported("DragControl");
}
