#include "document_controls.h"

#include "Controls.h"
#include "Quickdraw.h"

namespace {

constexpr SInt16 kBar = 16;
constexpr SInt16 kLine = 8, kPage = 64;
constexpr SInt16 kDrawingWidth = 560, kDrawingHeight = 420;

ControlHandle g_vertical = nullptr, g_horizontal = nullptr;
ControlHandle g_outlines = nullptr, g_small = nullptr, g_large = nullptr;

const unsigned char kOutlines[] = "\x08Outlines";
const unsigned char kSmall[] = "\x05Small";
const unsigned char kLarge[] = "\x05Large";

// The scroll bars' action procedure: a line or a page per call, and the
// drawing redrawn at once, as the Macintosh scrolls while the button is down.
void KWE_CALL ScrollAction(ControlHandle c, SInt16 part) {
  SInt16 step = part == inUpButton     ? -kLine
                : part == inDownButton ? kLine
                : part == inPageUp     ? -kPage
                : part == inPageDown   ? kPage
                                       : 0;
  SetControlValue(c, SInt16(GetControlValue(c) + step));
  WindowPtr w = (**c).contrlOwner;
  SetPort(w);
  InvalRect(&w->portRect);
}

}  // namespace

void AddDocumentControls(WindowPtr w) {
  const Rect& port = w->portRect;
  Rect vertical{SInt16(port.top - 1), SInt16(port.right - kBar + 1), SInt16(port.bottom - kBar + 1),
                SInt16(port.right + 1)};
  Rect horizontal{SInt16(port.bottom - kBar + 1), SInt16(port.left + 196), SInt16(port.bottom + 1),
                  SInt16(port.right - kBar + 1)};
  SInt16 maxV = SInt16(kDrawingHeight - (port.bottom - port.top));
  SInt16 maxH = SInt16(kDrawingWidth - (port.right - port.left));
  g_vertical = NewControl(w, &vertical, nullptr, true, 0, 0, maxV, scrollBarProc, 0);
  g_horizontal = NewControl(w, &horizontal, nullptr, true, 0, 0, maxH, scrollBarProc, 0);
  Rect box{SInt16(port.bottom - kBar + 1), 2, SInt16(port.bottom + 1), 84};
  g_outlines = NewControl(w, &box, kOutlines, true, 0, 0, 1, checkBoxProc, 1);
  box.left = 86;
  box.right = 140;
  g_small = NewControl(w, &box, kSmall, true, 1, 0, 1, radioButProc, 2);
  box.left = 142;
  box.right = 194;
  g_large = NewControl(w, &box, kLarge, true, 0, 0, 1, radioButProc, 3);
}

void BeginScrolledDrawing(WindowPtr w) {
  SetPort(w);
  Rect drawing = w->portRect;
  drawing.right = SInt16(drawing.right - kBar);
  drawing.bottom = SInt16(drawing.bottom - kBar);
  ClipRect(&drawing);
  SetOrigin(GetControlValue(g_horizontal), GetControlValue(g_vertical));
}

// The controls last, over the drawing, as a Macintosh update does.
void EndScrolledDrawing(WindowPtr w) {
  SetOrigin(0, 0);
  ClipRect(&w->portRect);
  DrawControls(w);
}

bool TrackDocumentControls(WindowPtr w, Point where) {
  SetPort(w);
  GlobalToLocal(&where);
  ControlHandle c = nullptr;
  SInt16 part = FindControl(where, w, &c);
  if (!part || !c) return false;
  bool bar = c == g_vertical || c == g_horizontal;
  part = TrackControl(c, where, bar ? reinterpret_cast<ProcPtr>(ScrollAction) : nullptr);
  if (part == inCheckBox && c == g_outlines) SetControlValue(c, SInt16(!GetControlValue(c)));
  if (part == inCheckBox && (c == g_small || c == g_large)) {
    SetControlValue(g_small, c == g_small);
    SetControlValue(g_large, c == g_large);
  }
  if (part) InvalRect(&w->portRect);
  return true;
}
