// DrawPicture: the walker's opcodes carried out on the current port, every
// coordinate mapped from the picture's frame onto the destination
// rectangle; StdGetPic, the get bottleneck it reads through.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "Fonts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "frame/low_memory.h"
#include "quickdraw/copybits/raster_ops.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/pictures/picture_state.h"
#include "quickdraw/pictures/picture_walker.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/text/text_rotation.h"

namespace kwe::pictures {
namespace {

constexpr int16_t kRotateCenterComment = 202;

using quickdraw::AsColour;
using quickdraw::CurrentAttr;
using quickdraw::CurrentPort;
using quickdraw::IsColourPort;

// The picture StdGetPic reads from; saved and restored around a nested
// DrawPicture.
struct PlayPosition {
  Handle pic = nullptr;
  long at = 0;
  bool ended = false;
};
PlayPosition g_play;

using GetProc = void(KWE_CALL*)(void*, SInt16);

class GetProcSource : public ByteSource {
 public:
  explicit GetProcSource(GetProc get) : get_(get) {}
  size_t Read(uint8_t* dst, size_t count) override {
    size_t done = 0;
    while (done < count && !g_play.ended) {
      SInt16 n = static_cast<SInt16>(std::min<size_t>(count - done, 32766));
      get_(dst + done, n);
      if (g_play.ended) break;
      done += static_cast<size_t>(n);
    }
    return done;
  }

 private:
  GetProc get_;
};

SInt16 Clamp(int64_t v) { return static_cast<SInt16>(std::clamp<int64_t>(v, -32767, 32767)); }

bool Empty(const Rect& r) { return r.bottom <= r.top || r.right <= r.left; }

// The pixel patterns a picture makes, disposed once the port has its own
// patterns back.
struct PatternStore {
  std::vector<PixPatHandle> made;
  PatternStore() = default;
  PatternStore(const PatternStore&) = delete;
  PatternStore& operator=(const PatternStore&) = delete;
  ~PatternStore() {
    for (PixPatHandle pp : made) DisposePixPat(pp);
  }
};

// Pixels of 16 and 32 bits come big-endian in a picture and are held in
// the processor's order.
void SwapPixels(uint8_t* row, size_t rowBytes, int depth) {
  if (depth != 16 && depth != 32) return;
  size_t step = static_cast<size_t>(depth / 8);
  for (size_t at = 0; at + step <= rowBytes; at += step) std::reverse(row + at, row + at + step);
}

// A full pixel pattern of the picture's: its map, colours and rows. A map
// whose sizes disagree with its rows draws as its old-style pattern (the
// brush maker refuses it).
PixPatHandle MakePixelPattern(const PatternImage& image) {
  PixPatHandle pp = NewPixPat();
  if (!pp) return nullptr;
  std::memcpy((*pp)->pat1Data.pat, image.pat, 8);
  Handle table = reinterpret_cast<Handle>((**(*pp)->patMap).pmTable);
  Size tableBytes =
      static_cast<Size>(8 + sizeof(ColorSpec) * std::max<size_t>(1, image.colours.size()));
  if (table) SetHandleSize(table, tableBytes);
  Handle data = (*pp)->patData;
  SetHandleSize(data, static_cast<Size>(image.rows.size()));
  if (!table || GetHandleSize(table) != tableBytes ||
      GetHandleSize(data) != static_cast<Size>(image.rows.size())) {
    DisposePixPat(pp);
    return nullptr;
  }
  PixMap& m = **(*pp)->patMap;
  m.rowBytes = static_cast<SInt16>(image.rowBytes | 0x8000);
  m.bounds = Rect{image.bounds.top, image.bounds.left, image.bounds.bottom, image.bounds.right};
  m.pixelType = image.pixelType;
  m.pixelSize = image.pixelSize;
  m.cmpCount = image.cmpCount;
  m.cmpSize = image.cmpSize;
  ColorTable& t = **reinterpret_cast<CTabHandle>(table);
  t.ctSeed = GetCTSeed();
  t.ctFlags = 0;
  t.ctSize = static_cast<SInt16>(image.colours.size() - 1);
  for (size_t i = 0; i < image.colours.size(); ++i) {
    const PicRGB& c = image.colours[i];
    t.ctTable[i] = ColorSpec{static_cast<SInt16>(i), RGBColor{c.red, c.green, c.blue}};
  }
  if (!image.rows.empty()) std::memcpy(*data, image.rows.data(), image.rows.size());
  size_t rowBytes = static_cast<size_t>(image.rowBytes);
  for (size_t at = 0; rowBytes && at + rowBytes <= image.rows.size(); at += rowBytes)
    SwapPixels(reinterpret_cast<uint8_t*>(*data) + at, rowBytes, image.pixelSize);
  (*pp)->patXValid = -1;
  return pp;
}

// A colour port fills with a pixel pattern for the length of one call, as
// FillCRect does.
class PixelFill {
 public:
  PixelFill(GrafPtr port, PixPatHandle pp) : port_(AsColour(port)), saved_(port_->fillPixPat) {
    port_->fillPixPat = pp;
  }
  ~PixelFill() { port_->fillPixPat = saved_; }
  PixelFill(const PixelFill&) = delete;
  PixelFill& operator=(const PixelFill&) = delete;

 private:
  CGrafPtr port_;
  PixPatHandle saved_;
};

class Player : public PictureSink {
 public:
  Player(GrafPtr port, const Rect& dst, RgnHandle callerClip, PatternStore& store)
      : port_(port), dst_(dst), callerClip_(callerClip), store_(store) {}

  void Frame(const PicRect& f) override {
    src_ = Rect{f.top, f.left, f.bottom, f.right};
    if (src_.right <= src_.left) src_.right = static_cast<SInt16>(src_.left + 1);
    if (src_.bottom <= src_.top) src_.bottom = static_cast<SInt16>(src_.top + 1);
    ::PenSize(ScaleH(1), ScaleV(1));  // the pen playback starts with, scaled
  }

  void Clip(const PicRect& box, const std::vector<PicRect>& rects) override {
    clip_ = Rect{box.top, box.left, box.bottom, box.right};
    clipRects_ = rects;
    ApplyClip();
  }

  void Pattern(int which, const uint8_t (&bytes)[8]) override {
    ::Pattern pat;
    std::memcpy(pat.pat, bytes, 8);
    if (which == 0)
      BackPat(&pat);
    else if (which == 1)
      PenPat(&pat);
    else
      fill_ = pat;
    if (which == 2) fillPP_ = nullptr;
  }
  void RGBPattern(int which, const PicRGB& c) override {
    PixPatHandle pp = IsColourPort(port_) ? NewPixPat() : nullptr;
    if (!pp) return;
    RGBColor rgb{c.red, c.green, c.blue};
    MakeRGBPat(pp, &rgb);
    Install(which, pp);
  }
  void PixelPattern(int which, const PatternImage& image) override {
    if (PixPatHandle pp = IsColourPort(port_) ? MakePixelPattern(image) : nullptr)
      Install(which, pp);
  }

  void TextFont(int16_t font) override {
    for (auto [picture, local] : fonts_)
      if (picture == font) font = local;
    ::TextFont(font);
  }
  void TextFace(uint8_t face) override { ::TextFace(face); }
  void TextMode(int16_t mode) override { ::TextMode(mode); }
  void SpaceExtra(int32_t extra) override { ::SpaceExtra(extra); }
  void PenSize(PicPoint p) override {
    if (p.h && p.v)
      ::PenSize(ScaleH(p.h), ScaleV(p.v));
    else
      ::PenSize(p.h, p.v);
  }
  void PenMode(int16_t mode) override { ::PenMode(mode); }
  // A corner size of 0 or less means the whole rectangle; it stays so.
  void OvalSize(PicPoint p) override {
    oval_ = Point{p.v > 0 ? ScaleV(p.v) : p.v, p.h > 0 ? ScaleH(p.h) : p.h};
  }
  void Origin(int16_t dh, int16_t dv) override {
    OffsetRect(&src_, dh, dv);
    OffsetRect(&clip_, dh, dv);
    for (PicRect& r : clipRects_) {
      r.left = static_cast<int16_t>(r.left + dh);
      r.right = static_cast<int16_t>(r.right + dh);
      r.top = static_cast<int16_t>(r.top + dv);
      r.bottom = static_cast<int16_t>(r.bottom + dv);
    }
    if (!Empty(clip_)) ApplyClip();
  }
  void TextSize(int16_t size) override {
    if (size <= 0) {
      ::TextSize(size);
      return;
    }
    int scaled = static_cast<int>(static_cast<int64_t>(size) * Height(dst_) / Height(src_));
    ::TextSize(static_cast<SInt16>(std::clamp(scaled, 1, 32767)));
  }
  void OldColour(bool back, int32_t colour) override {
    if (back)
      BackColor(colour);
    else
      ForeColor(colour);
  }
  void RGBColour(bool back, const PicRGB& c) override {
    RGBColor rgb{c.red, c.green, c.blue};
    if (back)
      RGBBackColor(&rgb);
    else
      RGBForeColor(&rgb);
  }
  void HiliteMode() override { lowmem::At<UInt8>(lowmem::Slot::HiliteMode) &= 0x7F; }
  void HiliteColour(const PicRGB& c) override {
    RGBColor rgb{c.red, c.green, c.blue};
    HiliteColor(&rgb);
  }
  void DefaultHilite() override {
    COLORREF c = GetSysColor(COLOR_HIGHLIGHT);
    lowmem::At<RGBColor>(lowmem::Slot::HiliteRGB) =
        RGBColor{static_cast<UInt16>(GetRValue(c) * 257), static_cast<UInt16>(GetGValue(c) * 257),
                 static_cast<UInt16>(GetBValue(c) * 257)};
  }

  void Line(PicPoint a, PicPoint b) override {
    Point from = Map(a), to = Map(b);
    MoveTo(from.h, from.v);
    LineTo(to.h, to.v);
  }

  // DHText that carries on from where the last text ended keeps the pen
  // there, so that text drawn in pieces stays as the font spaced it.
  void Text(PicPoint at, bool relative, int16_t dh, int16_t dv, const std::string& s) override {
    bool carriesOn = relative && dv == 0 && textEnded_ && port_->pnLoc.h == textEnd_.h &&
                     port_->pnLoc.v == textEnd_.v && dh >= lastAdvance_ - 20 &&
                     dh <= lastAdvance_ + 2;
    if (!carriesOn) {
      Point p = Map(at);
      MoveTo(p.h, p.v);
    }
    if (centrePending_) {
      centrePending_ = false;
      quickdraw::SetTextRotationCentre(
          port_, port_->pnLoc.h + centreOffset_.h * Width(dst_) / Width(src_),
          port_->pnLoc.v + centreOffset_.v * Height(dst_) / Height(src_));
    }
    SInt16 before = port_->pnLoc.h;
    DrawText(s.data(), 0, static_cast<SInt16>(s.size()));
    textEnd_ = port_->pnLoc;
    textEnded_ = true;
    lastAdvance_ =
        static_cast<int>(static_cast<int64_t>(port_->pnLoc.h - before) * Width(src_) / Width(dst_));
  }

  void FontName(int16_t font, const std::string& name) override {
    Str255 fontName{};
    fontName[0] = static_cast<UInt8>(std::min<size_t>(name.size(), 255));
    std::memcpy(fontName + 1, name.data(), fontName[0]);
    SInt16 local = 0;
    GetFNum(fontName, &local);
    fonts_.push_back({font, local});
  }

  void Shape(ShapeKind kind, int verb, const PicRect& r, int16_t start, int16_t arc) override {
    Rect m = Map(r);
    switch (kind) {
      case ShapeKind::Rect: RectVerb(verb, &m); break;
      case ShapeKind::RRect: RoundRectVerb(verb, &m); break;
      case ShapeKind::Oval: OvalVerb(verb, &m); break;
      case ShapeKind::Arc: ArcVerb(verb, &m, start, arc); break;
      default: break;
    }
  }

  void Poly(int verb, const std::vector<PicPoint>& points) override {
    if (points.empty() || points.size() > 8000) return;
    Size bytes = static_cast<Size>(10 + 4 * points.size());
    PolyHandle poly = reinterpret_cast<PolyHandle>(NewHandle(bytes));
    if (!poly) return;
    struct Polygon& p = **poly;
    p.polySize = static_cast<SInt16>(bytes);
    Rect box{32767, 32767, -32767, -32767};
    for (size_t i = 0; i < points.size(); ++i) {
      Point q = Map(points[i]);
      p.polyPoints[i] = q;
      box = Rect{std::min(box.top, q.v), std::min(box.left, q.h), std::max(box.bottom, q.v),
                 std::max(box.right, q.h)};
    }
    p.polyBBox = box;
    if (verb == 0) FramePoly(poly);
    if (verb == 1) PaintPoly(poly);
    if (verb == 2) ErasePoly(poly);
    if (verb == 4 && fillPP_) {
      PixelFill scope(port_, fillPP_);
      StdPoly(4, poly);
    } else if (verb == 4) {
      FillPoly(poly, &fill_);
    }
    DisposeHandle(reinterpret_cast<Handle>(poly));
  }

  void Region(int verb, const PicRect&, const std::vector<PicRect>& rects) override {
    RgnHandle rgn = RegionOf(rects);
    if (!rgn) return;
    switch (verb) {
      case 0: FrameRgn(rgn); break;
      case 1: PaintRgn(rgn); break;
      case 2: EraseRgn(rgn); break;
      case 3: InvertRgn(rgn); break;
      case 4:
        if (fillPP_) {
          PixelFill scope(port_, fillPP_);
          StdRgn(4, rgn);
        } else {
          FillRgn(rgn, &fill_);
        }
        break;
    }
    DisposeRgn(rgn);
  }

  void Pixels(const PixelBand& band) override;

  void Comment(int16_t kind, const std::vector<uint8_t>& data) override {
    if (data.empty()) {
      PicComment(kind, 0, nullptr);
      return;
    }
    Handle h = NewHandle(static_cast<Size>(data.size()));
    if (!h) return;
    std::memcpy(*h, data.data(), data.size());
    UInt8* p = reinterpret_cast<UInt8*>(*h);
    for (auto [at, width] : CommentFields(kind, static_cast<int16_t>(data.size())))
      std::reverse(p + at, p + at + width);
    PicComment(kind, static_cast<SInt16>(data.size()), h);
    // A picture has no pen moves: the pen that RotateCenter's offsets start
    // from is where the next text is placed, as it was when recorded.
    if (kind == kRotateCenterComment && data.size() >= 8) {
      const Fixed* offsets = reinterpret_cast<const Fixed*>(*h);
      centreOffset_ =
          Point{static_cast<SInt16>(offsets[0] >> 16), static_cast<SInt16>(offsets[1] >> 16)};
      centrePending_ = true;
    }
    DisposeHandle(h);
  }

 private:
  static int64_t Width(const Rect& r) { return std::max(1, r.right - r.left); }
  static int64_t Height(const Rect& r) { return std::max(1, r.bottom - r.top); }

  SInt16 MapH(int h) const {
    return Clamp(dst_.left + (static_cast<int64_t>(h) - src_.left) * Width(dst_) / Width(src_));
  }
  SInt16 MapV(int v) const {
    return Clamp(dst_.top + (static_cast<int64_t>(v) - src_.top) * Height(dst_) / Height(src_));
  }
  Point Map(PicPoint p) const { return Point{MapV(p.v), MapH(p.h)}; }
  Rect Map(const PicRect& r) const {
    return Rect{MapV(r.top), MapH(r.left), MapV(r.bottom), MapH(r.right)};
  }
  // Sizes (pens, ovals) scale by the ratio of widths and heights, each at
  // least 1.
  SInt16 ScaleH(int h) const { return Clamp(std::max<int64_t>(1, h * Width(dst_) / Width(src_))); }
  SInt16 ScaleV(int v) const {
    return Clamp(std::max<int64_t>(1, v * Height(dst_) / Height(src_)));
  }

  // Background and pen pixel patterns go into a colour port; the fill
  // pattern is kept for the fill verbs.
  void Install(int which, PixPatHandle pp) {
    store_.made.push_back(pp);
    if (which == 0)
      BackPixPat(pp);
    else if (which == 1)
      PenPixPat(pp);
    else
      fillPP_ = pp;
  }

  // A region of the rectangles, mapped onto the destination; null when
  // memory or GDI runs out.
  RgnHandle RegionOf(const std::vector<PicRect>& rects) const {
    std::vector<uint8_t> data(sizeof(RGNDATAHEADER) + sizeof(RECT) * rects.size());
    auto* header = reinterpret_cast<RGNDATAHEADER*>(data.data());
    *header = RGNDATAHEADER{sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(rects.size()),
                            0, RECT{}};
    auto* list = reinterpret_cast<RECT*>(data.data() + sizeof(RGNDATAHEADER));
    for (size_t i = 0; i < rects.size(); ++i) {
      Rect m = Map(rects[i]);
      list[i] = RECT{m.left, m.top, m.right, m.bottom};
    }
    HRGN shape = ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()),
                                 reinterpret_cast<const RGNDATA*>(data.data()));
    RgnHandle rgn = shape ? NewRgn() : nullptr;
    if (rgn && !quickdraw::SetRegionFromWin32(rgn, shape)) {
      DisposeRgn(rgn);
      rgn = nullptr;
    }
    if (shape) DeleteObject(shape);
    return rgn;
  }

  // The picture's clip never reaches past the caller's.
  void ApplyClip() {
    RgnHandle rgn = RegionOf(clipRects_);
    if (!rgn) return;
    SectRgn(rgn, callerClip_, rgn);
    SetClip(rgn);
    DisposeRgn(rgn);
  }

  void RectVerb(int verb, const Rect* r) {
    switch (verb) {
      case 0: FrameRect(r); break;
      case 1: PaintRect(r); break;
      case 2: EraseRect(r); break;
      case 3: InvertRect(r); break;
      case 4:
        if (fillPP_) {
          PixelFill scope(port_, fillPP_);
          StdRect(4, r);
        } else {
          FillRect(r, &fill_);
        }
        break;
    }
  }
  void RoundRectVerb(int verb, const Rect* r) {
    switch (verb) {
      case 0: FrameRoundRect(r, oval_.h, oval_.v); break;
      case 1: PaintRoundRect(r, oval_.h, oval_.v); break;
      case 2: EraseRoundRect(r, oval_.h, oval_.v); break;
      case 3: InvertRoundRect(r, oval_.h, oval_.v); break;
      case 4:
        if (fillPP_) {
          PixelFill scope(port_, fillPP_);
          StdRRect(4, r, oval_.h, oval_.v);
        } else {
          FillRoundRect(r, oval_.h, oval_.v, &fill_);
        }
        break;
    }
  }
  void OvalVerb(int verb, const Rect* r) {
    switch (verb) {
      case 0: FrameOval(r); break;
      case 1: PaintOval(r); break;
      case 2: EraseOval(r); break;
      case 3: InvertOval(r); break;
      case 4:
        if (fillPP_) {
          PixelFill scope(port_, fillPP_);
          StdOval(4, r);
        } else {
          FillOval(r, &fill_);
        }
        break;
    }
  }
  void ArcVerb(int verb, const Rect* r, SInt16 start, SInt16 arc) {
    switch (verb) {
      case 0: FrameArc(r, start, arc); break;
      case 1: PaintArc(r, start, arc); break;
      case 2: EraseArc(r, start, arc); break;
      case 3: InvertArc(r, start, arc); break;
      case 4:
        if (fillPP_) {
          PixelFill scope(port_, fillPP_);
          StdArc(4, r, start, arc);
        } else {
          FillArc(r, start, arc, &fill_);
        }
        break;
    }
  }

  GrafPtr port_;
  Rect dst_;
  RgnHandle callerClip_;
  PatternStore& store_;
  Rect src_{0, 0, 1, 1};
  Rect clip_{};
  std::vector<PicRect> clipRects_;
  PixPatHandle fillPP_ = nullptr;
  ::Pattern fill_{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
  Point oval_{0, 0};
  std::vector<std::pair<int16_t, int16_t>> fonts_;
  bool textEnded_ = false;
  Point textEnd_{0, 0};
  int lastAdvance_ = 0;
  bool centrePending_ = false;
  Point centreOffset_{0, 0};
};

// The band's rows of srcRect, stretched onto their slice of dstRect
// through the port's DC (already clipped to the port's clip).
void Player::Pixels(const PixelBand& band) {
  quickdraw::PortAttr* a = CurrentAttr();
  if (!a || !a->hdc || port_->pnVis < 0) return;
  const PicRect& s = band.srcRect;
  int srcH = s.bottom - s.top, srcW = s.right - s.left;
  if (srcH <= 0 || srcW <= 0) return;
  int bandTop = band.bounds.top + band.firstRow;
  int top = std::max<int>(s.top, bandTop);
  int bottom = std::min<int>(s.bottom, bandTop + band.rowCount);
  if (top >= bottom) return;
  const PicRect& d = band.dstRect;
  int dstH = d.bottom - d.top;
  auto sliceV = [&](int row) {
    return static_cast<int>(d.top + static_cast<int64_t>(row - s.top) * dstH / srcH);
  };
  PicRect slice{static_cast<int16_t>(sliceV(top)), d.left, static_cast<int16_t>(sliceV(bottom)),
                d.right};
  Rect local = Map(slice);
  int l = local.left, t = local.top, r = local.right, b = local.bottom;
  quickdraw::LocalToDevice(*a, &l, &t);
  quickdraw::LocalToDevice(*a, &r, &b);
  BITMAPINFO info{};
  info.bmiHeader = {
      sizeof info.bmiHeader, band.width, -band.rowCount, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  SetStretchBltMode(a->hdc, COLORONCOLOR);
  // StretchDIBits counts a top-down DIB's source rows from its bottom.
  int firstInBand = top - bandTop;
  int ySrc = band.rowCount - (firstInBand + (bottom - top));
  StretchDIBits(a->hdc, l, t, r - l, b - t, s.left - band.bounds.left, ySrc, srcW, bottom - top,
                band.pixels, &info, DIB_RGB_COLORS, quickdraw::RasterOpOfMode(band.mode & ~64));
}

// What a picture changes in the port, put back when it has played.
class SavedPortState {
 public:
  explicit SavedPortState(GrafPtr port) : port_(port) {
    GetPenState(&pen_);
    font_ = port->txFont;
    face_ = port->txFace;
    mode_ = port->txMode;
    size_ = port->txSize;
    extra_ = port->spExtra;
    GetForeColor(&fg_);
    GetBackColor(&bk_);
    fgOld_ = port->fgColor;
    bkOld_ = port->bkColor;
    back_ = quickdraw::BackPatternOf(port);
    fill_ = quickdraw::FillPatternOf(port);
    if (IsColourPort(port)) {
      CGrafPtr c = quickdraw::AsColour(port);
      pixPats_[0] = c->bkPixPat;
      pixPats_[1] = c->pnPixPat;
      pixPats_[2] = c->fillPixPat;
    }
    clip_ = NewRgn();
    if (clip_) GetClip(clip_);
    rotating_ = quickdraw::TextRotationActive(port);
  }
  ~SavedPortState() {
    SetPenState(&pen_);
    TextFont(font_);
    TextFace(face_);
    TextMode(mode_);
    TextSize(size_);
    SpaceExtra(extra_);
    if (IsColourPort(port_)) {
      RGBForeColor(&fg_);
      RGBBackColor(&bk_);
    } else {
      ForeColor(fgOld_);
      BackColor(bkOld_);
    }
    BackPat(&back_);
    quickdraw::SetFillPattern(port_, fill_);
    // Pixel patterns the application had installed come back as they were.
    if (IsColourPort(port_)) {
      CGrafPtr c = quickdraw::AsColour(port_);
      if (pixPats_[0] && pixPats_[0] != c->bkPixPat) BackPixPat(pixPats_[0]);
      if (pixPats_[1] && pixPats_[1] != c->pnPixPat) PenPixPat(pixPats_[1]);
      if (pixPats_[2]) c->fillPixPat = pixPats_[2];
    }
    if (clip_) {
      SetClip(clip_);
      DisposeRgn(clip_);
    }
    // A picture that turned its text and never said RotateEnd.
    if (!rotating_ && quickdraw::TextRotationActive(port_)) quickdraw::EndTextRotation();
  }
  SavedPortState(const SavedPortState&) = delete;
  SavedPortState& operator=(const SavedPortState&) = delete;
  RgnHandle Clip() const { return clip_; }

 private:
  GrafPtr port_;
  PenState pen_{};
  SInt16 font_, mode_, size_;
  UInt8 face_;
  Fixed extra_;
  RGBColor fg_{}, bk_{};
  SInt32 fgOld_, bkOld_;
  ::Pattern back_, fill_;
  PixPatHandle pixPats_[3] = {};
  RgnHandle clip_ = nullptr;
  bool rotating_ = false;
};

// Playback starts from the state recording assumed.
void StartState() {
  PenNormal();
  BackPat(&lowmem::At<::Pattern>(lowmem::Slot::White));
  TextFont(0);
  TextFace(0);
  TextMode(srcOr);
  TextSize(0);
  SpaceExtra(0);
  ForeColor(blackColor);
  BackColor(whiteColor);
}

}  // namespace
}  // namespace kwe::pictures

using namespace kwe::pictures;

KWE_API void KWE_CALL StdGetPic(void* dataPtr, SInt16 byteCount) {
  if (!dataPtr || byteCount <= 0) return;
  Handle pic = g_play.pic;
  long size = pic && *pic ? GetHandleSize(pic) : 0;
  long n = std::min<long>(byteCount, std::max<long>(0, size - g_play.at));
  if (n > 0) std::memcpy(dataPtr, *pic + g_play.at, static_cast<size_t>(n));
  if (n < byteCount) {
    std::memset(static_cast<UInt8*>(dataPtr) + n, 0, static_cast<size_t>(byteCount - n));
    g_play.ended = true;
  }
  g_play.at += n;
}

KWE_API void KWE_CALL DrawPicture(PicHandle myPicture, const Rect* dstRect) {
  GrafPtr port = CurrentPort();
  Handle pic = reinterpret_cast<Handle>(myPicture);
  if (!pic || !*pic || !dstRect || !port || !CurrentAttr()) return;
  if (IsScrapDib(pic)) {
    if (!Empty(*dstRect)) DrawScrapDib(pic, *dstRect);
    return;
  }
  if (GetHandleSize(pic) < 10 || Empty((*myPicture)->picFrame) || Empty(*dstRect)) return;
  PatternStore patterns;  // outlives saved, which puts the port's own back
  SavedPortState saved(port);
  if (!saved.Clip()) return;
  StartState();
  PlayPosition outer = g_play;
  g_play = PlayPosition{pic, 0, false};
  GetProc get = &StdGetPic;
  if (port->grafProcs && port->grafProcs->getPicProc)
    get = reinterpret_cast<GetProc>(port->grafProcs->getPicProc);
  GetProcSource source(get);
  Player player(port, *dstRect, saved.Clip(), patterns);
  WalkPicture(source, player);
  g_play = outer;
}
