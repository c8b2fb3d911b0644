// FindWindow and the calls that answer frame clicks. Windows itself drags,
// sizes, closes and zooms a window; the frame handling records which window
// it was and posts a mouseDown at a pseudo-point (h -1, v minus the part),
// so that an application's usual FindWindow dispatch reaches DragWindow,
// GrowWindow, TrackGoAway and TrackBox, which answer from those records.
#include <windows.h>

#include <algorithm>

#include "KWEEvents.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "windows/window_manager.h"

namespace kwe::windows {

void ClearPseudoPointsNaming(WindowPtr w) {
  ManagerState& st = State();
  if (st.dragWindow == w || st.dragOldFront == w) st.dragWindow = st.dragOldFront = nullptr;
  if (st.closeWindow == w) st.closeWindow = nullptr;
  if (st.zoomWindow == w) st.zoomWindow = nullptr;
}

void PostDragPseudoPoint(WindowPtr w, WindowPtr oldFront) {
  ManagerState& st = State();
  st.dragWindow = w;
  st.dragOldFront = oldFront;
  events::PostPseudoPoint(kDragPseudoPoint);
}

}  // namespace kwe::windows

using namespace kwe::windows;

KWE_API SInt16 KWE_CALL FindWindo(Point thePoint, WindowPtr* theWindow) {
  WindowPtr found = nullptr;
  SInt16 part = inDesk;
  ManagerState& st = State();
  if (thePoint.h != -1) {
    POINT pt{thePoint.h, thePoint.v};
    for (WindowPeek p = ListHead(); p; p = p->nextWindow) {
      RECT r;
      if (!p->visible || !GetWindowRect(HwndOf(AsPtr(p)), &r) || !PtInRect(&r, pt)) continue;
      found = AsPtr(p);
      part = inContent;
      break;
    }
  } else {
    switch (-thePoint.v) {
      case inMenuBar: part = inMenuBar; break;
      case inGoAway: found = st.closeWindow; break;
      case inZoomIn:
      case inZoomOut: found = st.zoomWindow; break;
      case inGrow:
        for (WindowPeek p = ListHead(); p && !found; p = p->nextWindow)
          if (DataOf(AsPtr(p))->moreFlags & kResizedFlag) found = AsPtr(p);
        break;
      case inDrag: found = st.dragWindow; break;
      default: break;
    }
    if (found) part = SInt16(-thePoint.v);
  }
  if (theWindow) *theWindow = found;
  return part;
}

KWE_API void KWE_CALL DragWindow(WindowPtr theWindow, Point, const Rect*) {
  ManagerState& st = State();
  if (!DataOf(theWindow) || theWindow != st.dragWindow) return;
  WindowPtr oldFront = st.dragOldFront;
  st.dragWindow = st.dragOldFront = nullptr;
  if (!Peek(theWindow)->visible || theWindow == oldFront) return;
  BringToFront(theWindow);
  MoveActivation(oldFront, theWindow);
  st.selected = nullptr;
}

KWE_API SInt32 KWE_CALL GrowWindow(WindowPtr theWindow, Point, const Rect*) {
  WStateData* d = DataOf(theWindow);
  if (!d || !(d->moreFlags & kResizedFlag)) return 0;
  d->moreFlags &= UInt16(~kResizedFlag);
  HWND hwnd = HwndOf(theWindow);
  if (IsIconic(hwnd)) return 0;
  RECT client;
  GetClientRect(hwnd, &client);
  const Rect& port = theWindow->portRect;
  if (client.right == port.right - port.left && client.bottom == port.bottom - port.top) return 0;
  return SInt32(UInt32(client.bottom) << 16 | UInt16(client.right));
}

KWE_API Boolean KWE_CALL TrackGoAway(WindowPtr theWindow, Point) {
  ManagerState& st = State();
  if (!theWindow || theWindow != st.closeWindow) return false;
  st.closeWindow = nullptr;
  return true;
}

KWE_API Boolean KWE_CALL TrackBox(WindowPtr theWindow, Point, SInt16 partCode) {
  ManagerState& st = State();
  if ((partCode != inZoomIn && partCode != inZoomOut) || !theWindow || theWindow != st.zoomWindow)
    return false;
  st.zoomWindow = nullptr;
  return true;
}

KWE_API SInt32 KWE_CALL PinRect(const Rect* theRect, Point thePt) {
  if (!theRect) return SInt32(UInt32(UInt16(thePt.v)) << 16 | UInt16(thePt.h));
  SInt16 h = std::clamp(thePt.h, theRect->left, std::max(theRect->left, theRect->right));
  SInt16 v = std::clamp(thePt.v, theRect->top, std::max(theRect->top, theRect->bottom));
  return SInt32(UInt32(UInt16(v)) << 16 | UInt16(h));
}

namespace {

constexpr SInt32 kOutsideSlop = SInt32(0x80008000);

bool Inside(const Rect* r, Point p) {
  return r && p.h >= r->left && p.h < r->right && p.v >= r->top && p.v < r->bottom;
}

void OutlinePen() {
  PenSize(1, 1);
  PenMode(patXor);
  PenPat(&kwe::lowmem::At<Pattern>(kwe::lowmem::Slot::Gray));
}

}  // namespace

KWE_API SInt32 KWE_CALL DragGrayRgn(RgnHandle theRgn, Point startPt, const Rect* limitRect,
                                    const Rect* slopRect, SInt16 axis,
                                    DragGrayRgnProcPtr actionProc) {
  if (startPt.h == -1 && startPt.v == -kDragPseudoPoint) {
    DragWindow(State().dragWindow, startPt, limitRect);
    return kOutsideSlop;
  }
  if (!theRgn) return kOutsideSlop;
  PenState saved;
  GetPenState(&saved);
  OutlinePen();
  FrameRgn(theRgn);
  bool shown = true;
  auto action = reinterpret_cast<DragGrayRgnProcPtr>(
      kwe::WrapHostProcedure(reinterpret_cast<ProcPtr>(actionProc)));
  KWE_SetCapture(true);
  Point last = startPt;
  while (StillDown()) {
    if (action) action();
    OutlinePen();
    Point now;
    GetMouse(&now);
    if (axis == 1) now.v = startPt.v;  // hAxisOnly
    if (axis == 2) now.h = startPt.h;  // vAxisOnly
    if (limitRect) {
      SInt32 pinned = PinRect(limitRect, now);
      now = Point{SInt16(pinned >> 16), SInt16(pinned & 0xFFFF)};
    }
    bool inSlop = !slopRect || Inside(slopRect, now);
    if (now.h == last.h && now.v == last.v && inSlop == shown) continue;
    if (shown) FrameRgn(theRgn);
    OffsetRgn(theRgn, SInt16(now.h - last.h), SInt16(now.v - last.v));
    last = now;
    shown = inSlop;
    if (shown) FrameRgn(theRgn);
  }
  if (shown) FrameRgn(theRgn);
  KWE_SetCapture(false);
  kwe::ReleaseHostProcedure(reinterpret_cast<ProcPtr>(action));
  SetPenState(&saved);
  OffsetRgn(theRgn, SInt16(startPt.h - last.h), SInt16(startPt.v - last.v));
  if (!shown) return kOutsideSlop;
  return SInt32(UInt32(UInt16(last.v - startPt.v)) << 16 | UInt16(last.h - startPt.h));
}
