// The arithmetic pen modes drawn through the pixel pipeline.
#include "quickdraw/shapes/arithmetic_drawing.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <vector>

#include "quickdraw/copybits/copy_sides.h"
#include "quickdraw/copybits/pixel_pipeline.h"

namespace kwe::quickdraw {
namespace {

constexpr int kBlend = 32, kAdMin = 39;
constexpr uint32_t kOnBlack = 0x000000, kOnWhite = 0xFFFFFF;

ArithmeticSheets g_kept;
std::vector<uint8_t> g_mask;  // the coverage mask, kept with its room

void Free(ArithmeticSheets& s) {
  if (s.replaced) SelectObject(s.dc, s.replaced);
  for (HBITMAP section : s.sections)
    if (section) DeleteObject(section);
  if (s.dc) DeleteDC(s.dc);
  s = ArithmeticSheets{};
}

// Sections from (0, 0) to width, height: a box's pixels sit at the port's
// device coordinates, so no viewport origin is needed.
bool Make(ArithmeticSheets& s, int width, int height) {
  s.dc = CreateCompatibleDC(nullptr);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  for (int k = 0; s.dc && k < 2; ++k)
    s.sections[k] = CreateDIBSection(s.dc, &info, DIB_RGB_COLORS, &s.bits[k], nullptr, 0);
  if (!s.sections[0] || !s.sections[1]) {
    Free(s);
    return false;
  }
  s.replaced = SelectObject(s.dc, s.sections[0]);
  s.width = width;
  s.height = height;
  return true;
}

// The box's pixels of a section set to colour: the rest is never read.
void Fill(const ArithmeticSheets& s, int k, const RECT& box, uint32_t colour) {
  for (int y = box.top; y < box.bottom; ++y)
    std::fill_n(static_cast<uint32_t*>(s.bits[k]) + static_cast<size_t>(y) * s.width + box.left,
                box.right - box.left, colour);
}

}  // namespace

void ReleaseArithmeticSheets(const PortAttr* closing) {
  if (!closing || g_kept.user == closing) Free(g_kept);
}

bool DrawsArithmetic(GrafPtr port, const PortAttr& a, Verb verb) {
  return (verb == Verb::Frame || verb == Verb::Paint) && port->pnMode >= kBlend &&
         port->pnMode <= kAdMin && a.deviceDepth > 1 && IsColourPort(port);
}

// The pen can reach past bounds by its size; the box is cut to what the
// port's clip lets through, so a shape mostly outside costs only its
// visible part. The sections' pixels are the port's logical coordinates as
// they stand, with no viewport origin: GDI's region calls do not all move
// their regions by it.
ArithmeticLayer::ArithmeticLayer(GrafPtr port, PortAttr& a, const RECT& bounds)
    : port_(port), a_(a) {
  int reach = std::max(a.devicePenWidth, a.devicePenHeight) + 1;
  RECT wide{bounds.left - reach, bounds.top - reach, bounds.right + reach, bounds.bottom + reach};
  RECT clip, sheet{0, 0, SHRT_MAX, SHRT_MAX};
  if (GetClipBox(a.hdc, &clip) == ERROR || !IntersectRect(&box_, &wide, &clip) ||
      !IntersectRect(&box_, &box_, &sheet))
    return;
  const int right = box_.right, bottom = box_.bottom;
  if (g_kept.dc && g_kept.width >= right && g_kept.height >= bottom) {
    sheets_ = &g_kept;
  } else if (int64_t{right} * bottom <= kKeptSheetPixels) {
    // Grown to hold both the old and the new box, while that stays small.
    int width = std::max(right, g_kept.width), height = std::max(bottom, g_kept.height);
    if (int64_t{width} * height > kKeptSheetPixels) width = right, height = bottom;
    Free(g_kept);
    if (Make(g_kept, width, height)) sheets_ = &g_kept;
  } else if (Make(own_, right, bottom)) {
    sheets_ = &own_;
  }
  if (!sheets_) return;
  sheets_->user = &a;
  HDC dc = sheets_->dc;
  Fill(*sheets_, 0, box_, kOnBlack);
  Fill(*sheets_, 1, box_, kOnWhite);
  SelectObject(dc, sheets_->sections[0]);
  // The pattern keeps the alignment it has on the port's DC.
  POINT origin{}, viewport{};
  GetBrushOrgEx(a.hdc, &origin);
  GetViewportOrgEx(a.hdc, &viewport);
  int16_t h0 = static_cast<int16_t>((origin.x - viewport.x) & 7);
  int16_t v0 = static_cast<int16_t>((origin.y - viewport.y) & 7);
  SetBrushOrgEx(dc, h0, v0, nullptr);
  brushOriginH_ = a.brushOriginH;
  brushOriginV_ = a.brushOriginV;
  a.brushOriginH = h0;
  a.brushOriginV = v0;
  penRop2_ = a.penRop2;
  a.penRop2 = R2_COPYPEN;
  // The port's pen and brush move over as they are: made once, not for
  // every shape.
  DeselectGdiObjects(a);
  portDC_ = a.hdc;
  a.hdc = dc;
}

ArithmeticLayer::~ArithmeticLayer() {
  GiveBackDC();
  Free(own_);
}

bool ArithmeticLayer::NextPass() {
  if (!portDC_) return false;
  if (++pass_ == 1) SelectObject(sheets_->dc, sheets_->sections[1]);
  if (pass_ < 2) return true;
  GiveBackDC();
  Combine();
  return false;
}

// The objects the passes selected leave the sections' DC; the port's own
// DC gets them again at its next drawing.
void ArithmeticLayer::GiveBackDC() {
  if (!portDC_) return;
  DeselectGdiObjects(a_);
  a_.hdc = portDC_;
  a_.penRop2 = penRop2_;
  a_.brushOriginH = brushOriginH_;
  a_.brushOriginV = brushOriginV_;
  portDC_ = nullptr;
}

// Covered pixels became the same on black and on white; they are the
// pipeline's source and the mask, over the port's pixels read into the
// second section. Only the rectangle around the covered pixels is read,
// combined and put back: the box's margin for the pen is mostly bare.
void ArithmeticLayer::Combine() {
  GdiFlush();
  const int stride = sheets_->width;
  const size_t origin = static_cast<size_t>(box_.top) * stride + box_.left;
  const uint32_t* onBlack = static_cast<const uint32_t*>(sheets_->bits[0]) + origin;
  const uint32_t* onWhite = static_cast<const uint32_t*>(sheets_->bits[1]) + origin;
  const int boxW = box_.right - box_.left, boxH = box_.bottom - box_.top;
  RECT c{boxW, boxH, 0, 0};  // covered pixels, box-relative
  for (int y = 0; y < boxH; ++y) {
    const uint32_t* b = onBlack + static_cast<size_t>(y) * stride;
    const uint32_t* w = onWhite + static_cast<size_t>(y) * stride;
    for (int x = 0; x < boxW; ++x) {
      if (((b[x] ^ w[x]) & 0xFFFFFF) != 0) continue;
      c = RECT{std::min<LONG>(c.left, x), std::min<LONG>(c.top, y), std::max<LONG>(c.right, x + 1),
               std::max<LONG>(c.bottom, y + 1)};
    }
  }
  if (c.right <= c.left) return;
  const int w = c.right - c.left, h = c.bottom - c.top;
  const int32_t maskRowBytes = (w + 7) / 8;
  g_mask.assign(static_cast<size_t>(maskRowBytes) * h, 0);
  const size_t first = static_cast<size_t>(c.top) * stride + c.left;
  for (int y = 0; y < h; ++y) {
    const uint32_t* b = onBlack + first + static_cast<size_t>(y) * stride;
    const uint32_t* wh = onWhite + first + static_cast<size_t>(y) * stride;
    uint8_t* row = g_mask.data() + static_cast<size_t>(y) * maskRowBytes;
    for (int x = 0; x < w; ++x)
      if (((b[x] ^ wh[x]) & 0xFFFFFF) == 0) row[x / 8] |= static_cast<uint8_t>(0x80 >> (x & 7));
  }
  const int left = box_.left + c.left, top = box_.top + c.top;
  if (!BitBlt(sheets_->dc, left, top, w, h, a_.hdc, left, top, SRCCOPY)) return;
  GdiFlush();
  const Rect all{0, 0, static_cast<SInt16>(h), static_cast<SInt16>(w)};
  auto coveredOf = [&](void* bits) {
    uint8_t* at = static_cast<uint8_t*>(bits) + 4 * (origin + first);
    return PipelineSide{MacPixels{at, 4 * stride, 32, w, h}, nullptr, 0};
  };
  PipelineCopy copy{};
  copy.src = copy.dst = all;
  copy.mode = port_->pnMode;
  copy.mask = g_mask.data();
  copy.maskRowBytes = maskRowBytes;
  copy.opColor = OpColourOf(port_);
  // transparent leaves out the background as the pattern's pixels show it.
  copy.bkColor = PixelToRgb(RgbToPixel(a_.bkRGB, 32, nullptr), 32, nullptr, 0);
  if (RunPipeline(coveredOf(sheets_->bits[0]), coveredOf(sheets_->bits[1]), copy) == noErr)
    BitBlt(a_.hdc, left, top, w, h, sheets_->dc, left, top, SRCCOPY);
}

}  // namespace kwe::quickdraw
