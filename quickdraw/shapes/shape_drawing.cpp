// The drawing verbs' shared GDI work.
#include "quickdraw/shapes/shape_drawing.h"

#include <cstddef>

#include "frame/low_memory.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/patterns/pattern_brush.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/ports/standard_procedures.h"

namespace kwe::quickdraw {
namespace {

static_assert(sizeof(OutlinePoint) == sizeof(POINT) &&
                  offsetof(OutlinePoint, y) == offsetof(POINT, y),
              "outlines go to GDI as they are");

constexpr DWORD kPatNotXor = 0x00A50065;  // DPxn
constexpr DWORD kPatMask = 0x00A000C9;    // DPa

int16_t Rop2Of(const PortAttr& a, Verb verb) {
  switch (verb) {
    case Verb::Frame:
    case Verb::Paint: return a.penRop2;
    case Verb::Invert: return R2_NOT;
    default: return R2_COPYPEN;
  }
}

void SelectRop2(PortAttr& a, int16_t rop2) {
  if (a.selectedRop2 == rop2) return;
  SetROP2(a.hdc, rop2);
  a.selectedRop2 = rop2;
}

// The DC may hold any pen when the port gets it, so the null pen is
// selected unless the port knows it is there.
void SelectNullPen(PortAttr& a) {
  if (a.dirty & kNullPenSelected) return;
  SelectObject(a.hdc, GetStockObject(NULL_PEN));
  a.dirty = static_cast<UInt16>((a.dirty & ~kPenSelected) | kNullPenSelected);
}

PatternSelector SelectorOf(Verb verb) {
  return verb == Verb::Erase  ? PatternSelector::Back
         : verb == Verb::Fill ? PatternSelector::Fill
                              : PatternSelector::Pen;
}

}  // namespace

ProcPtr CustomProc(GrafPtr port, ProcSlot slot) {
  if (!port->grafProcs) return nullptr;
  int i = static_cast<int>(slot);
  ProcPtr p = (&port->grafProcs->textProc)[i];
  return p && p != StandardProcs()[i] ? p : nullptr;
}

StandardProcScope::StandardProcScope(GrafPtr port, ProcSlot slot) {
  if (!port || !port->grafProcs) return;
  slot_ = &(&port->grafProcs->textProc)[static_cast<int>(slot)];
  saved_ = *slot_;
  *slot_ = nullptr;
}

StandardProcScope::~StandardProcScope() {
  if (slot_) *slot_ = saved_;
}

bool PortDraws(GrafPtr port, const PortAttr& a) {
  return port->pnVis >= 0 && a.visible && !a.penModeUnsupported && !a.clipEmpty && a.hdc;
}

RECT DeviceRect(const PortAttr& a, const Rect& r) {
  int left = r.left, top = r.top, right = r.right, bottom = r.bottom;
  LocalToDevice(a, &left, &top);
  LocalToDevice(a, &right, &bottom);
  return RECT{left, top, right, bottom};
}

bool SelectGdiPen(PortAttr& a, COLORREF colour, int width) {
  if (a.pen && a.penColour != colour) a.dirty |= kPenDirty;
  if ((a.dirty & kPenDirty) || !a.pen) {
    HPEN pen = CreatePen(PS_SOLID, a.onePixelPensOnly ? 1 : width, colour);
    if (!pen) return false;
    SelectObject(a.hdc, pen);
    if (a.pen) DeleteObject(a.pen);
    a.pen = pen;
    a.penColour = colour;
    a.dirty = static_cast<UInt16>((a.dirty & ~(kPenDirty | kNullPenSelected)) | kPenSelected);
  } else if (!(a.dirty & kPenSelected)) {
    SelectObject(a.hdc, a.pen);
    a.dirty = static_cast<UInt16>((a.dirty & ~kNullPenSelected) | kPenSelected);
  }
  SelectRop2(a, a.penRop2);
  return true;
}

void PrepareAreaVerb(GrafPtr port, PortAttr& a, Verb verb) {
  SelectRop2(a, Rop2Of(a, verb));
  SelectNullPen(a);
  if (verb == Verb::Invert) return;
  SelectPaintBrush(a, PaintOf(port, a, SelectorOf(verb)));
}

// PatBlt is GDI's fastest fill and draws exactly the rectangle; the other
// modes go through the ROP2 with Rectangle, whose null-pen fill leaves out
// its right and bottom edges. Display drivers old enough to render pattern
// brushes differently through PatBlt, Rectangle and Polygon are gone, so no
// driver probe chooses among them.
void FillDeviceRect(PortAttr& a, Verb verb, const RECT& r) {
  if (r.right <= r.left || r.bottom <= r.top) return;
  int16_t rop2 = Rop2Of(a, verb);
  DWORD rop = verb == Verb::Invert   ? DSTINVERT
              : rop2 == R2_COPYPEN   ? PATCOPY
              : rop2 == R2_NOTXORPEN ? kPatNotXor
              : rop2 == R2_MASKPEN   ? kPatMask
                                     : 0;
  if (rop) {
    PatBlt(a.hdc, r.left, r.top, r.right - r.left, r.bottom - r.top, rop);
    return;
  }
  if (a.selectedBackgroundMode != OPAQUE) {
    SetBkMode(a.hdc, OPAQUE);
    a.selectedBackgroundMode = OPAQUE;
  }
  Rectangle(a.hdc, r.left, r.top, r.right + 1, r.bottom + 1);
}

// Four edge rectangles inside d; a pen that covers it all fills it.
void FrameDeviceRect(PortAttr& a, const RECT& d) {
  int pw = a.onePixelPensOnly ? 1 : a.devicePenWidth;
  int ph = a.onePixelPensOnly ? 1 : a.devicePenHeight;
  if (2 * pw >= d.right - d.left || 2 * ph >= d.bottom - d.top) {
    FillDeviceRect(a, Verb::Frame, d);  // the pen covers it all
    return;
  }
  FillDeviceRect(a, Verb::Frame, RECT{d.left, d.top, d.right, d.top + ph});
  FillDeviceRect(a, Verb::Frame, RECT{d.left, d.bottom - ph, d.right, d.bottom});
  FillDeviceRect(a, Verb::Frame, RECT{d.left, d.top + ph, d.left + pw, d.bottom - ph});
  FillDeviceRect(a, Verb::Frame, RECT{d.right - pw, d.top + ph, d.right, d.bottom - ph});
}

SpanList PolygonSpans(const Outline& outline) {
  SpanList spans;
  if (outline.size() < 3) return spans;
  HRGN rgn = CreatePolygonRgn(reinterpret_cast<const POINT*>(outline.data()),
                              static_cast<int>(outline.size()), ALTERNATE);
  if (!rgn) return spans;
  DWORD size = GetRegionData(rgn, 0, nullptr);
  std::vector<unsigned char> buffer(size);
  auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
  if (size && GetRegionData(rgn, size, data) == size) {
    const RECT* rects = reinterpret_cast<const RECT*>(data->Buffer);
    spans.reserve(data->rdh.nCount);
    for (DWORD i = 0; i < data->rdh.nCount; ++i)
      spans.push_back(ShapeSpan{rects[i].left, rects[i].top, rects[i].right, rects[i].bottom});
  }
  DeleteObject(rgn);
  return spans;
}

// One PatBlt a span costs less under GDI than converting the polygon again,
// and a region's rectangles never overlap, so every mode gives the
// polygon's pixels.
void FillDeviceSpans(PortAttr& a, Verb verb, const SpanList& spans, int left, int top) {
  for (const ShapeSpan& s : spans)
    FillDeviceRect(a, verb, RECT{s.left + left, s.top + top, s.right + left, s.bottom + top});
}

void FillDevicePolygon(PortAttr& a, const Outline& points) {
  if (points.size() < 3) return;
  SetPolyFillMode(a.hdc, ALTERNATE);
  Polygon(a.hdc, reinterpret_cast<const POINT*>(points.data()), static_cast<int>(points.size()));
}

void FillPenSweep(GrafPtr port, PortAttr& a, const Outline& path) {
  std::vector<int> counts;
  Outline polygons = PenSweep(path, a.devicePenWidth, a.devicePenHeight, &counts);
  if (counts.empty()) return;
  PrepareAreaVerb(port, a, Verb::Paint);
  SetPolyFillMode(a.hdc, WINDING);
  PolyPolygon(a.hdc, reinterpret_cast<const POINT*>(polygons.data()), counts.data(),
              static_cast<int>(counts.size()));
}

void FrameDeviceOutline(GrafPtr port, PortAttr& a, const Outline& path) {
  if (path.empty()) return;
  Pattern pat = PenPatternOf(port);
  bool black = PatternIsSolid(pat, 0xFF), white = PatternIsSolid(pat, 0x00);
  bool thin = (a.devicePenWidth <= 1 && a.devicePenHeight <= 1) || a.onePixelPensOnly;
  if (!(thin && (black || white))) {
    FillPenSweep(port, a, path);
    return;
  }
  if (!SelectGdiPen(a, white ? a.bkColorRef : a.fgColorRef, 1)) return;
  Polyline(a.hdc, reinterpret_cast<const POINT*>(path.data()), static_cast<int>(path.size()));
  // Polyline leaves out the last point; a closed outline has it already.
  // The DC's current position is not the pen's, so it is left alone.
  const OutlinePoint& first = path.front();
  const OutlinePoint& last = path.back();
  if (path.size() == 1 || last.x != first.x || last.y != first.y) {
    const POINT end[2] = {{last.x, last.y}, {last.x + 1, last.y}};
    Polyline(a.hdc, end, 2);
  }
}

bool TakeHiliteRequest() {
  UInt8& mode = lowmem::At<UInt8>(lowmem::Slot::HiliteMode);
  bool requested = !(mode & 0x80);
  mode |= 0x80;
  return requested;
}

// Without palettes the exchange is done pixel by pixel on a 32-bit copy of
// the rectangle, written back through the DC's clip.
bool HighlightDeviceRect(GrafPtr port, PortAttr& a, const RECT& r) {
  int w = r.right - r.left, h = r.bottom - r.top;
  if (a.deviceDepth <= 1 || w <= 0 || h <= 0) return false;
  RGBColor hilite = lowmem::At<RGBColor>(lowmem::Slot::HiliteRGB);
  if (const GrafVars* vars = GrafVarsOf(port)) hilite = vars->rgbHiliteColor;
  auto asPixel = [](COLORREF c) -> uint32_t {
    return (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c);
  };
  uint32_t background = asPixel(a.bkColorRef);
  uint32_t highlight =
      (uint32_t(hilite.red >> 8) << 16) | (uint32_t(hilite.green >> 8) << 8) | (hilite.blue >> 8);
  BITMAPINFO info{};
  info.bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC copy = CreateCompatibleDC(a.hdc);
  HBITMAP bitmap =
      copy ? CreateDIBSection(copy, &info, DIB_RGB_COLORS, &bits, nullptr, 0) : nullptr;
  bool done = false;
  if (bitmap) {
    HGDIOBJ old = SelectObject(copy, bitmap);
    if (BitBlt(copy, 0, 0, w, h, a.hdc, r.left, r.top, SRCCOPY)) {
      GdiFlush();
      auto* pixels = static_cast<uint32_t*>(bits);
      for (int i = 0; i < w * h; ++i) {
        uint32_t p = pixels[i] & 0xFFFFFF;
        if (p == background)
          pixels[i] = highlight;
        else if (p == highlight)
          pixels[i] = background;
      }
      done = BitBlt(a.hdc, r.left, r.top, w, h, copy, 0, 0, SRCCOPY) != 0;
    }
    SelectObject(copy, old);
    DeleteObject(bitmap);
  }
  if (copy) DeleteDC(copy);
  return done;
}

bool StoreFillPattern(const Pattern* pat) {
  if (!CurrentAttr() || !pat) return false;
  SetFillPattern(CurrentPort(), *pat);
  return true;
}

}  // namespace kwe::quickdraw
