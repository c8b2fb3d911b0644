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

// The port's op colour: blend's weight, addPin's and subPin's limits. A
// colour port without its GrafVars has the default, black.
// A section from (0, 0) to the box's bottom right, the box's pixels set to
// colour: the rest is never read.
HBITMAP NewSection(HDC dc, const RECT& box, uint32_t colour, void** bits) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, box.right, -box.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, bits, nullptr, 0);
  for (int y = box.top; bitmap && y < box.bottom; ++y)
    std::fill_n(static_cast<uint32_t*>(*bits) + static_cast<size_t>(y) * box.right + box.left,
                box.right - box.left, colour);
  return bitmap;
}

}  // namespace

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
  dc_ = CreateCompatibleDC(a.hdc);
  if (!dc_) return;
  sections_[0] = NewSection(dc_, box_, kOnBlack, &bits_[0]);
  sections_[1] = sections_[0] ? NewSection(dc_, box_, kOnWhite, &bits_[1]) : nullptr;
  if (!sections_[1]) return;
  replaced_ = SelectObject(dc_, sections_[0]);
  // The pattern keeps the alignment it has on the port's DC.
  POINT origin{}, viewport{};
  GetBrushOrgEx(a.hdc, &origin);
  GetViewportOrgEx(a.hdc, &viewport);
  int16_t h0 = static_cast<int16_t>((origin.x - viewport.x) & 7);
  int16_t v0 = static_cast<int16_t>((origin.y - viewport.y) & 7);
  SetBrushOrgEx(dc_, h0, v0, nullptr);
  brushOriginH_ = a.brushOriginH;
  brushOriginV_ = a.brushOriginV;
  a.brushOriginH = h0;
  a.brushOriginV = v0;
  penRop2_ = a.penRop2;
  a.penRop2 = R2_COPYPEN;
  ResetGdiCache(a);
  portDC_ = a.hdc;
  a.hdc = dc_;
}

ArithmeticLayer::~ArithmeticLayer() {
  GiveBackDC();
  if (replaced_) SelectObject(dc_, replaced_);
  for (HBITMAP section : sections_)
    if (section) DeleteObject(section);
  if (dc_) DeleteDC(dc_);
}

bool ArithmeticLayer::NextPass() {
  if (!portDC_) return false;
  if (++pass_ == 1) SelectObject(dc_, sections_[1]);
  if (pass_ < 2) return true;
  GiveBackDC();
  Combine();
  return false;
}

// The objects the passes selected leave the section's DC with the port's
// cache; the port's own DC gets them again at its next drawing.
void ArithmeticLayer::GiveBackDC() {
  if (!portDC_) return;
  ResetGdiCache(a_);
  a_.hdc = portDC_;
  a_.penRop2 = penRop2_;
  a_.brushOriginH = brushOriginH_;
  a_.brushOriginV = brushOriginV_;
  portDC_ = nullptr;
}

// Covered pixels became the same on black and on white; they are the
// pipeline's source and the mask, over the port's pixels read into the
// second section.
void ArithmeticLayer::Combine() {
  GdiFlush();
  const int w = box_.right - box_.left, h = box_.bottom - box_.top;
  const int32_t maskRowBytes = (w + 7) / 8;
  std::vector<uint8_t> mask(static_cast<size_t>(maskRowBytes) * h);
  const size_t first = static_cast<size_t>(box_.top) * box_.right + box_.left;
  const uint32_t* onBlack = static_cast<const uint32_t*>(bits_[0]) + first;
  const uint32_t* onWhite = static_cast<const uint32_t*>(bits_[1]) + first;
  bool any = false;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      size_t i = static_cast<size_t>(y) * box_.right + x;
      if (((onBlack[i] ^ onWhite[i]) & 0xFFFFFF) != 0) continue;
      mask[static_cast<size_t>(y) * maskRowBytes + x / 8] |= static_cast<uint8_t>(0x80 >> (x & 7));
      any = true;
    }
  }
  if (!any || !BitBlt(dc_, box_.left, box_.top, w, h, a_.hdc, box_.left, box_.top, SRCCOPY)) return;
  GdiFlush();
  const Rect all{0, 0, static_cast<SInt16>(h), static_cast<SInt16>(w)};
  auto boxOf = [&](void* bits) {
    return PipelineSide{
        MacPixels{static_cast<uint8_t*>(bits) + 4 * first, 4 * box_.right, 32, w, h}, nullptr, 0};
  };
  PipelineCopy copy{};
  copy.src = copy.dst = all;
  copy.mode = port_->pnMode;
  copy.mask = mask.data();
  copy.maskRowBytes = maskRowBytes;
  copy.opColor = OpColourOf(port_);
  // transparent leaves out the background as the pattern's pixels show it.
  copy.bkColor = PixelToRgb(RgbToPixel(a_.bkRGB, 32, nullptr), 32, nullptr, 0);
  if (RunPipeline(boxOf(bits_[0]), boxOf(bits_[1]), copy) == noErr)
    BitBlt(a_.hdc, box_.left, box_.top, w, h, dc_, box_.left, box_.top, SRCCOPY);
}

}  // namespace kwe::quickdraw
