// Drawing text at the pen: the standard text procedure and the calls that go
// through the port's textProc. The pen is on the baseline, and the DCs of
// every port have TA_BASELINE alignment, so TextOut takes the pen as it is.
#include <windows.h>

#include <algorithm>

#include "Quickdraw.h"
#include "frame/low_memory.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/port_font.h"
#include "quickdraw/text/text_ink.h"
#include "quickdraw/text/text_measuring.h"
#include "quickdraw/text/text_rotation.h"

namespace kwe::quickdraw {
namespace {

RECT DeviceBox(const PortAttr& a, const Rect& r) {
  int left = r.left, top = r.top, right = r.right, bottom = r.bottom;
  LocalToDevice(a, &left, &top);
  LocalToDevice(a, &right, &bottom);
  return RECT{left, top, right, bottom};
}

void Intersect(RECT& box, const RECT& limit) {
  box.left = std::max(box.left, limit.left);
  box.top = std::max(box.top, limit.top);
  box.right = std::min(box.right, limit.right);
  box.bottom = std::min(box.bottom, limit.bottom);
}

// srcCopy clears the text's box first: within portRect and the boxes of the
// clip and visible regions, with a pixel to spare left and right.
void EraseTextBox(GrafPtr port, PortAttr& a, RECT box) {
  Intersect(box, DeviceBox(a, port->portRect));
  for (RgnHandle rgn : {port->clipRgn, port->visRgn}) {
    if (!rgn || !*rgn) continue;
    RECT limit = DeviceBox(a, (**rgn).rgnBBox);
    limit.left -= 1;
    limit.right += 1;
    Intersect(box, limit);
  }
  if (box.right <= box.left || box.bottom <= box.top) return;
  if (a.selectedBkColorRef != a.bkColorRef) {
    SetBkColor(a.hdc, a.bkColorRef);
    a.selectedBkColorRef = a.bkColorRef;
  }
  ExtTextOutA(a.hdc, 0, 0, ETO_OPAQUE, &box, nullptr, 0, nullptr);
}

void SelectTextColours(PortAttr& a) {
  if (a.selectedTextColorRef != a.fgColorRef) {
    SetTextColor(a.hdc, a.fgColorRef);
    a.selectedTextColorRef = a.fgColorRef;
  }
  if (a.selectedBkColorRef != a.bkColorRef) {
    SetBkColor(a.hdc, a.bkColorRef);
    a.selectedBkColorRef = a.bkColorRef;
  }
  if (a.selectedBackgroundMode != a.textBackgroundMode) {
    SetBkMode(a.hdc, a.textBackgroundMode);
    a.selectedBackgroundMode = a.textBackgroundMode;
  }
}

void Output(HDC dc, int h, int v, const ConvertedText& t) {
  if (t.advances) {
    ExtTextOutA(dc, h, v, 0, nullptr, t.bytes, static_cast<UINT>(t.length), t.advances);
  } else if (t.justification) {
    SetTextJustification(dc, t.justification, t.spaces);
    TextOutA(dc, h, v, t.bytes, t.length);
    SetTextJustification(dc, 0, 0);
  } else {
    TextOutA(dc, h, v, t.bytes, t.length);
  }
}

// Modes TextOut cannot do: the text goes into a mask over the part of its
// box the DC can show, and the mask into the port.
void DrawThroughMask(PortAttr& a, const ConvertedText& t, int h, int v, RECT box, int inkMode) {
  RECT visible{};
  if (GetClipBox(a.hdc, &visible) == ERROR) return;
  Intersect(box, visible);
  if (box.right <= box.left || box.bottom <= box.top) return;
  InkMask mask(a.hdc, box.right - box.left, box.bottom - box.top);
  if (!mask.Ready()) return;
  HGDIOBJ oldFont = SelectObject(mask.Dc(), a.textFont);
  SetTextAlign(mask.Dc(), TA_BASELINE);
  SetTextColor(mask.Dc(), RGB(255, 255, 255));
  SetBkMode(mask.Dc(), TRANSPARENT);
  Output(mask.Dc(), h - box.left, v - box.top, t);
  SelectObject(mask.Dc(), oldFont);
  CombineInk(a, mask.Dc(), box, inkMode);
}

void DrawConverted(GrafPtr port, PortAttr& a, const ConvertedText& t, int inkMode) {
  int h = a.devicePenH, v = a.devicePenV;
  // Turned text: its origin turned about the centre, drawn with its
  // colours and no box erased behind it.
  if (TextEscapementOf(port)) {
    int centreH, centreV;
    TextRotationCentre(&centreH, &centreV);
    LocalToDevice(a, &centreH, &centreV);
    TurnTextOrigin(port, centreH, centreV, &h, &v);
    SelectTextColours(a);
    Output(a.hdc, h, v, t);
    return;
  }
  const TEXTMETRICA& tm = a.textMetrics;
  RECT box{h - 1, v - tm.tmAscent - 1, h + t.deviceWidth + 9, v + tm.tmDescent + 1};
  if (inkMode == kInkCopy) EraseTextBox(port, a, box);
  if (t.commandKey) {
    DrawCommandKey(a, h, v, t.deviceWidth, inkMode == kInkCopy ? kInkOr : inkMode);
  } else if (inkMode == kInkCopy || inkMode == kInkOr) {
    SelectTextColours(a);
    Output(a.hdc, h, v, t);
  } else {
    DrawThroughMask(a, t, h, v, box, inkMode);
  }
}

void AdvancePen(GrafPtr port, PortAttr& a, int localWidth) {
  port->pnLoc.h = static_cast<SInt16>(port->pnLoc.h + localWidth);
  UpdateDevicePen(a);
  if (port->pnVis >= 0 && a.hdc) MoveToEx(a.hdc, a.devicePenH, a.devicePenV, nullptr);
}

// The pen moves by the text's width even while it is hidden.
void StandardText(GrafPtr port, PortAttr& a, int count, const UInt8* text) {
  if (count < 1 || !text || !PrepareFont(port, a)) return;
  ConvertedText t = ConvertAndMeasure(port, a, text, count);
  if (!t.commandKey && t.length == 0) return;
  int inkMode = InkModeOf(port->txMode);
  if (port->pnVis >= 0 && a.visible && !a.clipEmpty && inkMode >= 0)
    DrawConverted(port, a, t, inkMode);
  AdvancePen(port, a, LocalWidth(a, t.deviceWidth));
}

using TextProc = void(KWE_CALL*)(SInt16, const void*, Point, Point);

// The application's text procedure, when it installed one.
TextProc CustomTextProc(GrafPtr port) {
  if (!port->grafProcs) return nullptr;
  ProcPtr p = port->grafProcs->textProc;
  if (!p || p == reinterpret_cast<ProcPtr>(&StdText)) return nullptr;
  return reinterpret_cast<TextProc>(p);
}

// Text drawn gives the application's HiliteMode its bit 7 back, as QuickDraw
// does after every drawing call that could have highlighted.
void DrawThroughTextProc(SInt16 count, const void* text) {
  GrafPtr port = CurrentPort();
  if (port && CurrentAttr() && count > 0 && text) {
    Point one{1, 1};
    if (TextProc custom = CustomTextProc(port))
      custom(count, text, one, one);
    else
      StdText(count, text, one, one);
  }
  lowmem::At<UInt8>(lowmem::Slot::HiliteMode) |= 0x80;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// numer:denom scales the font size for the call.
KWE_API void KWE_CALL StdText(SInt16 count, const void* textAddr, Point numer, Point denom) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || count < 1 || !textAddr) return;
  kwe::pictures::RecordText(port, static_cast<const UInt8*>(textAddr), count);
  TextRatio ratio(port, *a, numer, denom);
  StandardText(port, *a, count, static_cast<const UInt8*>(textAddr));
}

KWE_API void KWE_CALL DrawChar(SInt16 ch) {
  UInt8 c = static_cast<UInt8>(ch);
  DrawThroughTextProc(1, &c);
}

KWE_API void KWE_CALL DrawString(ConstStr255Param s) {
  DrawThroughTextProc(s ? s[0] : 0, s ? s + 1 : nullptr);
}

KWE_API void KWE_CALL DrawTex(const void* textBuf, SInt16 firstByte, SInt16 byteCount) {
  DrawThroughTextProc(byteCount,
                      textBuf ? static_cast<const UInt8*>(textBuf) + firstByte : nullptr);
}
