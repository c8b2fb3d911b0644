// Recording a picture: OpenPicture, OpenCPicture, ClosePicture, the put
// bottleneck, and the opcodes the standard drawing procedures write. Each
// drawing call becomes one burst of bytes (the state it changed, then its
// opcode) handed to the put procedure at once, so that the handle grows
// once per call rather than once per field.
#include <algorithm>
#include <cstring>
#include <vector>

#include "Fonts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "memory/pack_bits.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/pictures/picture_state.h"
#include "quickdraw/pictures/picture_walker.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::pictures {
namespace {

using quickdraw::AsColour;
using quickdraw::IsColourPort;

bool SameRGB(const RGBColor& a, const RGBColor& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

// The bytes of one drawing call. Every opcode starts on an even offset
// (the stream does, and data of odd length gets a pad byte).
class Burst {
 public:
  void Op(uint16_t op) {
    if (bytes_.size() & 1) bytes_.push_back(0);
    Word(op);
  }
  void Byte(uint8_t b) { bytes_.push_back(b); }
  void Word(uint16_t w) {
    bytes_.push_back(static_cast<uint8_t>(w >> 8));
    bytes_.push_back(static_cast<uint8_t>(w));
  }
  void Long(uint32_t l) {
    Word(static_cast<uint16_t>(l >> 16));
    Word(static_cast<uint16_t>(l));
  }
  void Bytes(const void* p, size_t n) {
    const uint8_t* b = static_cast<const uint8_t*>(p);
    bytes_.insert(bytes_.end(), b, b + n);
  }
  void Point(::Point p) {
    Word(static_cast<uint16_t>(p.v));
    Word(static_cast<uint16_t>(p.h));
  }
  void Rect(const ::Rect& r) {
    Word(static_cast<uint16_t>(r.top));
    Word(static_cast<uint16_t>(r.left));
    Word(static_cast<uint16_t>(r.bottom));
    Word(static_cast<uint16_t>(r.right));
  }
  void Colour(const RGBColor& c) {
    Word(c.red);
    Word(c.green);
    Word(c.blue);
  }
  // Pads to even length and hands the bytes to the put procedure.
  void Put() {
    if (bytes_.size() & 1) bytes_.push_back(0);
    PutPictureBytes(bytes_.data(), bytes_.size());
    bytes_.clear();
  }

 private:
  std::vector<uint8_t> bytes_;
};

// which: 0 background, 1 pen, 2 fill. A colour port's pixel pattern goes
// in as a pixel pattern opcode, anything else as its old-style pattern.
void PutPattern(GrafPtr port, RecordState& s, Burst& b, int which) {
  static const uint16_t oldOps[3] = {0x0002, 0x0009, 0x000A};
  std::vector<uint8_t> now;
  if (IsColourPort(port)) {
    CGrafPtr c = AsColour(port);
    now = PixPatBytes(which == 0 ? c->bkPixPat : which == 1 ? c->pnPixPat : c->fillPixPat);
  }
  bool pixel = !now.empty();
  if (!pixel) {
    Pattern pat = which == 0   ? quickdraw::BackPatternOf(port)
                  : which == 1 ? quickdraw::PenPatternOf(port)
                               : quickdraw::FillPatternOf(port);
    now.assign(pat.pat, pat.pat + 8);
  }
  if (now == s.patterns[which]) return;
  b.Op(static_cast<uint16_t>(pixel ? 0x0012 + which : oldOps[which]));
  b.Bytes(now.data(), now.size());
  s.patterns[which] = std::move(now);
}

// Colours, origin and clip: what every opcode is drawn with.
void SyncCommon(GrafPtr port, RecordState& s, Burst& b) {
  if (IsColourPort(port)) {
    CGrafPtr c = AsColour(port);
    if (!SameRGB(c->rgbFgColor, s.rgbFg)) {
      b.Op(0x001A);
      b.Colour(c->rgbFgColor);
      s.rgbFg = c->rgbFgColor;
    }
    if (!SameRGB(c->rgbBkColor, s.rgbBk)) {
      b.Op(0x001B);
      b.Colour(c->rgbBkColor);
      s.rgbBk = c->rgbBkColor;
    }
  } else {
    if (port->fgColor != s.fg) {
      b.Op(0x000E);
      b.Long(static_cast<uint32_t>(port->fgColor));
      s.fg = port->fgColor;
    }
    if (port->bkColor != s.bk) {
      b.Op(0x000F);
      b.Long(static_cast<uint32_t>(port->bkColor));
      s.bk = port->bkColor;
    }
  }
  ::Point origin{port->portRect.top, port->portRect.left};
  if (origin.h != s.origin.h || origin.v != s.origin.v) {
    b.Op(0x000C);
    b.Word(static_cast<uint16_t>(origin.h - s.origin.h));
    b.Word(static_cast<uint16_t>(origin.v - s.origin.v));
    s.origin = origin;
  }
  if (port->clipRgn && *port->clipRgn) {
    std::vector<uint8_t> clip = RegionBytes(port->clipRgn);
    if (!clip.empty() && clip != s.clip) {
      b.Op(0x0001);
      b.Bytes(clip.data(), clip.size());
      s.clip = std::move(clip);
    }
  }
}

// The pen before a frame (size, mode, pattern) or a paint (mode,
// pattern); the background pattern before an erase; the fill pattern
// before a fill.
void SyncVerb(GrafPtr port, RecordState& s, Burst& b, int verb) {
  SyncCommon(port, s, b);
  if (verb == 0 && (port->pnSize.h != s.pnSize.h || port->pnSize.v != s.pnSize.v)) {
    b.Op(0x0007);
    b.Point(port->pnSize);
    s.pnSize = port->pnSize;
  }
  if (verb == 0 || verb == 1) {
    if (port->pnMode != s.pnMode) {
      b.Op(0x0008);
      b.Word(static_cast<uint16_t>(port->pnMode));
      s.pnMode = port->pnMode;
    }
    PutPattern(port, s, b, 1);
  } else if (verb == 2) {
    PutPattern(port, s, b, 0);
  } else if (verb == 4) {
    PutPattern(port, s, b, 2);
  }
}

void SyncText(GrafPtr port, RecordState& s, Burst& b) {
  SyncCommon(port, s, b);
  if (std::find(s.fonts.begin(), s.fonts.end(), port->txFont) == s.fonts.end()) {
    Str255 name{};
    GetFontName(port->txFont, name);
    b.Op(0x002C);
    b.Word(static_cast<uint16_t>(name[0] + 3));
    b.Word(static_cast<uint16_t>(port->txFont));
    b.Bytes(name, name[0] + 1u);
    s.fonts.push_back(port->txFont);
  }
  if (port->txFont != s.font) {
    b.Op(0x0003);
    b.Word(static_cast<uint16_t>(port->txFont));
    s.font = port->txFont;
  }
  if (port->txFace != s.face) {
    b.Op(0x0004);
    b.Byte(port->txFace);
    s.face = port->txFace;
  }
  if (port->txMode != s.txMode) {
    b.Op(0x0005);
    b.Word(static_cast<uint16_t>(port->txMode));
    s.txMode = port->txMode;
  }
  if (port->txSize != s.size) {
    b.Op(0x000D);
    b.Word(static_cast<uint16_t>(port->txSize));
    s.size = port->txSize;
  }
  if (port->spExtra != s.spExtra) {
    b.Op(0x0006);
    b.Long(static_cast<uint32_t>(port->spExtra));
    s.spExtra = port->spExtra;
  }
}

void RecordShape(GrafPtr port, uint16_t base, int verb, const Rect& r) {
  RecordState& s = *StateOf(port);
  Burst b;
  SyncVerb(port, s, b, verb);
  b.Op(static_cast<uint16_t>(base + verb));
  b.Rect(r);
  b.Put();
}

bool Fits(int d) { return d >= -128 && d <= 127; }

}  // namespace

bool Recording(GrafPtr port) {
  return port && port->picSave && *port->picSave && !port->rgnSave && !port->polySave &&
         StateOf(port);
}

void RecordLine(GrafPtr port, Point from, Point to) {
  if (!Recording(port)) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncVerb(port, s, b, 0);
  int dh = to.h - from.h, dv = to.v - from.v;
  bool short_ = Fits(dh) && Fits(dv);
  bool fromPen = s.penKnown && from.h == s.pen.h && from.v == s.pen.v;
  b.Op(static_cast<uint16_t>(0x0020 + (short_ ? 2 : 0) + (fromPen ? 1 : 0)));
  if (!fromPen) b.Point(from);
  if (short_) {
    b.Byte(static_cast<uint8_t>(dh));
    b.Byte(static_cast<uint8_t>(dv));
  } else {
    b.Point(to);
  }
  s.pen = to;
  s.penKnown = true;
  b.Put();
}

void RecordRect(GrafPtr port, int verb, const Rect& r) {
  if (Recording(port)) RecordShape(port, 0x0030, verb, r);
}

void RecordOval(GrafPtr port, int verb, const Rect& r) {
  if (Recording(port)) RecordShape(port, 0x0050, verb, r);
}

void RecordRoundRect(GrafPtr port, int verb, const Rect& r, SInt16 ovalWidth, SInt16 ovalHeight) {
  if (!Recording(port)) return;
  RecordState& s = *StateOf(port);
  Burst b;
  if (ovalWidth != s.ovSize.h || ovalHeight != s.ovSize.v) {
    b.Op(0x000B);
    s.ovSize = Point{ovalHeight, ovalWidth};
    b.Point(s.ovSize);
  }
  SyncVerb(port, s, b, verb);
  b.Op(static_cast<uint16_t>(0x0040 + verb));
  b.Rect(r);
  b.Put();
}

void RecordArc(GrafPtr port, int verb, const Rect& r, SInt16 start, SInt16 arc) {
  if (!Recording(port)) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncVerb(port, s, b, verb);
  b.Op(static_cast<uint16_t>(0x0060 + verb));
  b.Rect(r);
  b.Word(static_cast<uint16_t>(start));
  b.Word(static_cast<uint16_t>(arc));
  b.Put();
}

void RecordPoly(GrafPtr port, int verb, PolyHandle poly) {
  if (!Recording(port) || !poly || !*poly) return;
  int count = ((*poly)->polySize - 10) / 4;
  if (count < 0) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncVerb(port, s, b, verb);
  b.Op(static_cast<uint16_t>(0x0070 + verb));
  b.Word(static_cast<uint16_t>(10 + 4 * count));
  b.Rect((*poly)->polyBBox);
  for (int i = 0; i < count; ++i) b.Point((*poly)->polyPoints[i]);
  b.Put();
}

void RecordRgn(GrafPtr port, int verb, RgnHandle rgn) {
  if (!Recording(port)) return;
  std::vector<uint8_t> region = RegionBytes(rgn);
  if (region.empty()) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncVerb(port, s, b, verb);
  b.Op(static_cast<uint16_t>(0x0080 + verb));
  b.Bytes(region.data(), region.size());
  b.Put();
}

// LongText holds at most 255 bytes of the text; the rest is left out.
void RecordText(GrafPtr port, const UInt8* text, int count) {
  if (!Recording(port) || count < 1 || !text) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncText(port, s, b);
  b.Op(0x0028);
  b.Point(port->pnLoc);
  int n = std::min(count, 255);
  b.Byte(static_cast<uint8_t>(n));
  b.Bytes(text, n);
  b.Put();
}

void RecordComment(GrafPtr port, SInt16 kind, SInt16 size, Handle data) {
  if (!Recording(port)) return;
  Burst b;
  if (size <= 0 || !data || !*data) {
    b.Op(0x00A0);
    b.Word(static_cast<uint16_t>(kind));
    b.Put();
    return;
  }
  size = static_cast<SInt16>(std::min<long>(size, GetHandleSize(data)));
  std::vector<uint8_t> bytes(*data, *data + size);
  for (auto [at, width] : CommentFields(kind, size))
    std::reverse(bytes.begin() + at, bytes.begin() + at + width);
  b.Op(0x00A1);
  b.Word(static_cast<uint16_t>(kind));
  b.Word(static_cast<uint16_t>(size));
  b.Bytes(bytes.data(), bytes.size());
  b.Put();
}

// A 1-bit bitmap in application memory, rows packed when they are 8 bytes
// or longer (PackBitsRect), else as they are (BitsRect); any other source
// (a pixel map, a port's or GWorld's bits behind a DC) as its pixels read
// back (DirectBitsRect).
void RecordBits(GrafPtr port, const BitMap* src, const Rect& srcRect, const Rect& dstRect,
                SInt16 mode) {
  if (!Recording(port) || !src) return;
  if ((src->rowBytes & 0x8000) || reinterpret_cast<uintptr_t>(src->baseAddr) <= 0xFFFF) {
    std::vector<uint8_t> direct = DirectBitsBytes(src, srcRect, dstRect, mode);
    if (direct.empty()) return;
    RecordState& s = *StateOf(port);
    Burst b;
    SyncCommon(port, s, b);
    b.Op(0x009A);
    b.Bytes(direct.data(), direct.size());
    b.Put();
    return;
  }
  int rowBytes = src->rowBytes & 0x3FFF;
  int height = src->bounds.bottom - src->bounds.top;
  if (rowBytes == 0 || height <= 0) return;
  RecordState& s = *StateOf(port);
  Burst b;
  SyncCommon(port, s, b);
  bool packed = rowBytes >= 8;
  b.Op(packed ? 0x0098 : 0x0090);
  b.Word(static_cast<uint16_t>(rowBytes));
  b.Rect(src->bounds);
  b.Rect(srcRect);
  b.Rect(dstRect);
  b.Word(static_cast<uint16_t>(mode));
  std::vector<uint8_t> row(packbits::MaxPackedSize(rowBytes));
  for (int y = 0; y < height; ++y) {
    const uint8_t* line = reinterpret_cast<const uint8_t*>(src->baseAddr) + y * rowBytes;
    if (!packed) {
      b.Bytes(line, rowBytes);
      continue;
    }
    size_t n = packbits::Pack(line, rowBytes, row.data());
    if (rowBytes > 250)
      b.Word(static_cast<uint16_t>(n));
    else
      b.Byte(static_cast<uint8_t>(n));
    b.Bytes(row.data(), n);
  }
  b.Put();
}

}  // namespace kwe::pictures
