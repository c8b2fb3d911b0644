// ScrollRect: the pixels of a rectangle of the current port move by (dh, dv)
// with CopyBits onto themselves, and the part they leave is painted with the
// background and handed back, for the application to draw (classically
// with InvalRgn, or at once).
#include "Quickdraw.h"
#include "QuickdrawColour.h"

KWE_API void KWE_CALL ScrollRect(const Rect* r, SInt16 dh, SInt16 dv, RgnHandle updateRgn) {
  GrafPtr port = nullptr;
  GetPort(&port);
  if (updateRgn) SetEmptyRgn(updateRgn);
  if (!port || !r) return;
  // What can move: the rectangle where the port shows and is not clipped.
  // Pixels moved in from outside it would be stale or someone else's.
  RgnHandle movable = NewRgn();
  RgnHandle moved = NewRgn();
  if (!movable || !moved) {
    if (movable) DisposeRgn(movable);
    if (moved) DisposeRgn(moved);
    return;
  }
  RectRgn(movable, r);
  SectRgn(movable, port->visRgn, movable);
  SectRgn(movable, port->clipRgn, movable);
  CopyRgn(movable, moved);
  OffsetRg(moved, dh, dv);
  SectRgn(moved, movable, moved);
  if (!EmptyRgn(moved)) {
    Rect from = *r;
    Rect to = *r;
    OffsetRect(&to, dh, dv);
    // The copy is a blit of the port's own pixels; the pen and colours play
    // no part in srcCopy, but a colour port's would tint it, so plain black
    // on white for the copy.
    RGBColor fore, back;
    GetForeColor(&fore);
    GetBackColor(&back);
    ForeColor(blackColor);
    BackColor(whiteColor);
    CopyBits(&port->portBits, &port->portBits, &from, &to, srcCopy, moved);
    RGBForeColor(&fore);
    RGBBackColor(&back);
  }
  DiffRgn(movable, moved, movable);
  EraseRgn(movable);
  if (updateRgn) CopyRgn(movable, updateRgn);
  DisposeRgn(movable);
  DisposeRgn(moved);
}
