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

constexpr int kBlend = 32, kTransparent = 36, kAdMin = 39;
constexpr uint32_t kOnBlack = 0x000000, kOnWhite = 0xFFFFFF;

ArithmeticSheets g_kept;
std::vector<uint8_t> g_mask;  // the coverage mask, kept with its room

// The pipeline's arithmetic works on each component alone: a result
// component is a function of the source colour and the destination's
// component. A shape has few source colours (its pattern's), so each gets
// three 256-entry tables, made by the pipeline itself over a grey ramp and
// kept for the next shapes in the same colours and mode.
struct ComponentTables {
  bool made = false;
  int mode = 0;
  uint32_t source = 0;
  RGBColor op{}, bk{};
  uint8_t out[3][256];
};
constexpr int kKeptTables = 8;
ComponentTables g_tables[kKeptTables];
int g_nextTables = 0;

bool Same(const RGBColor& a, const RGBColor& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

const ComponentTables* TablesFor(uint32_t source, const PipelineCopy& copy) {
  for (const ComponentTables& t : g_tables)
    if (t.made && t.source == source && t.mode == copy.mode && Same(t.op, copy.opColor) &&
        Same(t.bk, copy.bkColor))
      return &t;
  uint32_t sources[256], ramp[256];
  for (uint32_t i = 0; i < 256; ++i) {
    sources[i] = source;
    ramp[i] = i * 0x010101u;
  }
  auto row = [](uint32_t* pixels) {
    return PipelineSide{MacPixels{reinterpret_cast<uint8_t*>(pixels), 4 * 256, 32, 256, 1}, nullptr,
                        0};
  };
  PipelineCopy line = copy;
  line.src = line.dst = Rect{0, 0, 1, 256};
  line.mask = nullptr;
  if (RunPipeline(row(sources), row(ramp), line) != noErr) return nullptr;
  ComponentTables& t = g_tables[g_nextTables];
  g_nextTables = (g_nextTables + 1) % kKeptTables;
  t = ComponentTables{true, copy.mode, source, copy.opColor, copy.bkColor, {}};
  for (int i = 0; i < 256; ++i)
    for (int k = 0; k < 3; ++k) t.out[k][i] = static_cast<uint8_t>(ramp[i] >> (16 - 8 * k));
  return &t;
}

void Free(ArithmeticSheets& s) {
  for (int k = 0; k < 2; ++k) {
    if (s.replaced[k]) SelectObject(s.dcs[k], s.replaced[k]);
    if (s.sections[k]) DeleteObject(s.sections[k]);
    if (s.dcs[k]) DeleteDC(s.dcs[k]);
  }
  s = ArithmeticSheets{};
}

// Sections from (0, 0) to width, height: a box's pixels sit at the port's
// device coordinates, so no viewport origin is needed.
bool Make(ArithmeticSheets& s, int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  for (int k = 0; k < 2; ++k) {
    s.dcs[k] = CreateCompatibleDC(nullptr);
    s.sections[k] = s.dcs[k]
                        ? CreateDIBSection(s.dcs[k], &info, DIB_RGB_COLORS, &s.bits[k], nullptr, 0)
                        : nullptr;
    if (!s.sections[k]) {
      Free(s);
      return false;
    }
    s.replaced[k] = SelectObject(s.dcs[k], s.sections[k]);
  }
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

// What a scan of the two passes found: the covered pixels as a 1-bit mask
// over the box (MSB first), the rectangle around them, and their colours
// while there are few enough for the kept tables.
struct Coverage {
  int32_t rowBytes = 0;
  RECT around{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
  uint32_t colours[kKeptTables] = {};
  int count = 0;
  bool many = false;
};

Coverage Scan(const uint32_t* onBlack, const uint32_t* onWhite, int stride, int w, int h) {
  Coverage c;
  c.rowBytes = (w + 7) / 8;
  g_mask.assign(static_cast<size_t>(c.rowBytes) * h, 0);
  uint32_t last = 0xFFFFFFFF;
  for (int y = 0; y < h; ++y) {
    const uint32_t* b = onBlack + static_cast<size_t>(y) * stride;
    const uint32_t* wh = onWhite + static_cast<size_t>(y) * stride;
    uint8_t* row = g_mask.data() + static_cast<size_t>(y) * c.rowBytes;
    for (int x = 0; x < w; ++x) {
      if (((b[x] ^ wh[x]) & 0xFFFFFF) != 0) continue;
      row[x / 8] |= static_cast<uint8_t>(0x80 >> (x & 7));
      c.around = RECT{std::min<LONG>(c.around.left, x), std::min<LONG>(c.around.top, y),
                      std::max<LONG>(c.around.right, x + 1), y + 1};
      const uint32_t colour = b[x] & 0xFFFFFF;
      if (colour == last || c.many) continue;
      last = colour;
      if (std::find(c.colours, c.colours + c.count, colour) != c.colours + c.count) continue;
      if (c.count == kKeptTables)
        c.many = true;
      else
        c.colours[c.count++] = colour;
    }
  }
  return c;
}

// Covered pixels of dst (inside r, box-relative like the mask) become
// their source's tables' results; false, leaving dst as it is, when the
// tables cannot all be had.
bool CombineByTables(const Coverage& c, const uint32_t* src, uint32_t* dst, int stride,
                     const RECT& r, const PipelineCopy& copy) {
  if (c.many) return false;
  // Copies: a table made later in this call may take a kept one's place.
  ComponentTables used[kKeptTables];
  for (int i = 0; i < c.count; ++i) {
    const ComponentTables* t = TablesFor(c.colours[i], copy);
    if (!t) return false;
    used[i] = *t;
  }
  const ComponentTables* t = &used[0];
  for (int y = r.top; y < r.bottom; ++y) {
    const uint32_t* s = src + static_cast<size_t>(y) * stride;
    uint32_t* d = dst + static_cast<size_t>(y) * stride;
    const uint8_t* m = g_mask.data() + static_cast<size_t>(y) * c.rowBytes;
    for (int x = r.left; x < r.right; ++x) {
      if (!((m[x >> 3] >> (7 - (x & 7))) & 1)) continue;
      const uint32_t colour = s[x] & 0xFFFFFF;
      if (t->source != colour)
        t = std::find_if(used, used + c.count, [&](auto& u) { return u.source == colour; });
      d[x] = uint32_t{t->out[0][d[x] >> 16 & 255]} << 16 |
             uint32_t{t->out[1][d[x] >> 8 & 255]} << 8 | t->out[2][d[x] & 255];
    }
  }
  return true;
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
  if (g_kept.dcs[0] && g_kept.width >= right && g_kept.height >= bottom) {
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
  Fill(*sheets_, 0, box_, kOnBlack);
  Fill(*sheets_, 1, box_, kOnWhite);
  // The pattern keeps the alignment it has on the port's DC.
  POINT origin{}, viewport{};
  GetBrushOrgEx(a.hdc, &origin);
  GetViewportOrgEx(a.hdc, &viewport);
  int16_t h0 = static_cast<int16_t>((origin.x - viewport.x) & 7);
  int16_t v0 = static_cast<int16_t>((origin.y - viewport.y) & 7);
  for (HDC dc : sheets_->dcs) SetBrushOrgEx(dc, h0, v0, nullptr);
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
  a.hdc = sheets_->dcs[0];
}

ArithmeticLayer::~ArithmeticLayer() {
  GiveBackDC();
  Free(own_);
}

bool ArithmeticLayer::NextPass() {
  if (!portDC_) return false;
  if (++pass_ == 1) {
    DeselectGdiObjects(a_);
    a_.hdc = sheets_->dcs[1];
  }
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
// source and the mask, over the port's pixels read into the second
// section. Only the rectangle around the covered pixels is read, combined
// and put back (the box's margin for the pen is mostly bare), unless the
// pipeline has to run over the whole box for a shape of many colours.
void ArithmeticLayer::Combine() {
  GdiFlush();
  const int stride = sheets_->width;
  const size_t origin = static_cast<size_t>(box_.top) * stride + box_.left;
  uint32_t* onBlack = static_cast<uint32_t*>(sheets_->bits[0]) + origin;
  uint32_t* onWhite = static_cast<uint32_t*>(sheets_->bits[1]) + origin;
  const int boxW = box_.right - box_.left, boxH = box_.bottom - box_.top;
  const Coverage c = Scan(onBlack, onWhite, stride, boxW, boxH);
  if (c.around.right <= c.around.left) return;
  const RECT r = c.many ? RECT{0, 0, boxW, boxH} : c.around;
  const int left = box_.left + r.left, top = box_.top + r.top;
  const int w = r.right - r.left, h = r.bottom - r.top;
  if (!BitBlt(sheets_->dcs[1], left, top, w, h, a_.hdc, left, top, SRCCOPY)) return;
  GdiFlush();
  PipelineCopy copy{};
  copy.mode = port_->pnMode;
  copy.opColor = OpColourOf(port_);
  // transparent leaves out the background as the pattern's pixels show it;
  // the other modes leave it black, so that their kept tables do not
  // depend on it.
  if (copy.mode == kTransparent)
    copy.bkColor = PixelToRgb(RgbToPixel(a_.bkRGB, 32, nullptr), 32, nullptr, 0);
  bool done = CombineByTables(c, onBlack, onWhite, stride, r, copy);
  if (!done) {
    auto wholeBox = [&](uint32_t* pixels) {
      return PipelineSide{MacPixels{reinterpret_cast<uint8_t*>(pixels), 4 * stride, 32, boxW, boxH},
                          nullptr, 0};
    };
    copy.src = copy.dst = Rect{0, 0, static_cast<SInt16>(boxH), static_cast<SInt16>(boxW)};
    copy.mask = g_mask.data();
    copy.maskRowBytes = c.rowBytes;
    done = c.many && RunPipeline(wholeBox(onBlack), wholeBox(onWhite), copy) == noErr;
  }
  if (done) BitBlt(a_.hdc, left, top, w, h, sheets_->dcs[1], left, top, SRCCOPY);
}

}  // namespace kwe::quickdraw
