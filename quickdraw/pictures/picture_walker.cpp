// The opcode walker: the size rules of every opcode and the decoding of the
// ones a player acts on.
#include "quickdraw/pictures/picture_walker.h"

#include <algorithm>
#include <cstring>

#include "memory/pack_bits.h"
#include "quickdraw/pictures/picture_reader.h"
#include "quickdraw/pictures/region_codec.h"

namespace kwe::pictures {

size_t BufferSource::Read(uint8_t* dst, size_t count) {
  size_t n = std::min(count, size_ - at_);
  if (n) std::memcpy(dst, data_ + at_, n);
  at_ += n;
  return n;
}

bool Reader::Bytes(void* dst, size_t count) {
  if (ended_) return false;
  size_t got = count ? source_.Read(static_cast<uint8_t*>(dst), count) : 0;
  count_ += got;
  if (got < count) {
    ended_ = true;
    std::memset(static_cast<uint8_t*>(dst) + got, 0, count - got);
  }
  return !ended_;
}

bool Reader::Skip(uint64_t count) {
  uint8_t scratch[512];
  while (count && !ended_) {
    size_t n = static_cast<size_t>(std::min<uint64_t>(count, sizeof scratch));
    Bytes(scratch, n);
    count -= n;
  }
  return !ended_;
}

uint8_t Reader::U8() {
  uint8_t b = 0;
  Bytes(&b, 1);
  return b;
}

uint16_t Reader::U16() {
  uint8_t b[2];
  Bytes(b, 2);
  return static_cast<uint16_t>(b[0] << 8 | b[1]);
}

int32_t Reader::S32() {
  uint8_t b[4];
  Bytes(b, 4);
  return static_cast<int32_t>(static_cast<uint32_t>(b[0]) << 24 |
                              static_cast<uint32_t>(b[1]) << 16 | static_cast<uint32_t>(b[2]) << 8 |
                              b[3]);
}

PicPoint Reader::Point() {
  PicPoint p;
  p.v = S16();
  p.h = S16();
  return p;
}

PicRect Reader::Rect() {
  PicRect r;
  r.top = S16();
  r.left = S16();
  r.bottom = S16();
  r.right = S16();
  return r;
}

PicRGB Reader::RGB() {
  PicRGB c;
  c.red = U16();
  c.green = U16();
  c.blue = U16();
  return c;
}

std::vector<std::pair<int, int>> CommentFields(int16_t kind, int16_t size) {
  std::vector<std::pair<int, int>> fields;
  switch (kind) {
    case 150:  // TextBegin
      if (size >= 4) fields.push_back({2, 2});
      if (size > 6 && size >= 10) fields.push_back({6, 4});
      if (size > 10 && size >= 12) fields.push_back({10, 2});
      break;
    case 154:  // TextCenter
    case 202:  // RotateCenter
      if (size == 8) fields = {{0, 4}, {4, 4}};
      break;
    case 182:  // SetLineWidth
      if (size == 4) fields = {{0, 2}, {2, 2}};
      break;
    case 200:  // RotateBegin
      if (size >= 4) fields = {{0, 2}, {2, 2}};
      if (size >= 8) fields.push_back({4, 4});
      break;
    default: break;
  }
  return fields;
}

namespace {

// Fixed-point width * res / 72, rounded.
int16_t AtResolution(int extent, int32_t res) {
  int64_t scaled = (static_cast<int64_t>(extent) * res + 72 * 32768) / (72 * 65536);
  return static_cast<int16_t>(std::clamp<int64_t>(scaled, -32767, 32767));
}

class Walker {
 public:
  Walker(ByteSource& source, PictureSink& sink) : in_(source), sink_(sink) {}

  WalkEnd Run() {
    uint8_t head[10];
    if (!in_.Bytes(head, sizeof head)) return WalkEnd::OutOfBytes;
    PicRect frame;
    std::memcpy(&frame, head + 2, sizeof frame);  // the processor's order
    uint8_t first[2];
    if (!in_.Bytes(first, 2)) return WalkEnd::OutOfBytes;
    version1_ = first[0] == 0x11 && first[1] == 0x01;
    if (!version1_) ReadVersion2Header(&frame);
    sink_.Frame(frame);
    while (!in_.Ended()) {
      uint16_t op = version1_ ? in_.U8() : in_.U16();
      if (in_.Ended()) break;
      if (op == 0x00FF) return WalkEnd::EndOpcode;
      if (!Execute(op)) return WalkEnd::BadData;
      if (!version1_ && (in_.Count() & 1)) in_.U8();
    }
    return WalkEnd::OutOfBytes;
  }

 private:
  // The version opcode and version are read already; the header opcode and
  // the 24-byte header follow.
  void ReadVersion2Header(PicRect* frame) {
    in_.Skip(4);
    int16_t version = in_.S16();
    in_.Skip(2);
    int32_t hRes = in_.S32(), vRes = in_.S32();
    PicRect src = in_.Rect();
    in_.Skip(4);
    bool srcEmpty = src.bottom <= src.top || src.right <= src.left;
    if (version != -2 || hRes <= 0 || vRes <= 0 || srcEmpty) return;
    frame->right =
        static_cast<int16_t>(frame->left + AtResolution(frame->right - frame->left, hRes));
    frame->bottom =
        static_cast<int16_t>(frame->top + AtResolution(frame->bottom - frame->top, vRes));
  }

  void Pattern(int which) {
    uint8_t pat[8];
    in_.Bytes(pat, 8);
    sink_.Pattern(which, pat);
  }

  // 0x0012-0x0014: a pixel pattern; an RGB one gives its colour, a full
  // one its old-style pattern, then its pixel map, colour table and rows.
  bool PixPat(int which) {
    int16_t type = in_.S16();
    uint8_t pat[8];
    in_.Bytes(pat, 8);
    if (type != 1) {
      sink_.RGBPattern(which, in_.RGB());
      return true;
    }
    sink_.Pattern(which, pat);
    PatternImage image;
    std::memcpy(image.pat, pat, sizeof pat);
    if (!ReadPatternPixels(image)) return false;
    if (!in_.Ended()) sink_.PixelPattern(which, image);
    return true;
  }

  // A pixel map without its base address, the colour table, then the rows,
  // packed as PackBitsRect packs them. Patterns are small: at most 64 rows
  // of 512 bytes.
  bool ReadPatternPixels(PatternImage& image) {
    image.rowBytes = in_.U16() & 0x3FFF;
    image.bounds = in_.Rect();
    in_.Skip(2 + 2 + 4 + 4 + 4);  // pmVersion, packType, packSize, hRes, vRes
    image.pixelType = in_.S16();
    image.pixelSize = in_.S16();
    image.cmpCount = in_.S16();
    image.cmpSize = in_.S16();
    in_.Skip(4 + 4 + 4 + 4 + 2);  // planeBytes, pmTable, pmReserved; seed, flags
    int16_t size = in_.S16();
    if (size < -1 || size > 255) return false;
    for (int i = 0; i <= size && !in_.Ended(); ++i) {
      in_.U16();
      image.colours.push_back(in_.RGB());
    }
    int height = image.bounds.bottom - image.bounds.top;
    if (height < 0 || height > 64 || image.rowBytes > 512) return false;
    size_t rowBytes = static_cast<size_t>(image.rowBytes);
    image.rows.assign(rowBytes * height, 0);
    std::vector<uint8_t> packed;
    for (int y = 0; y < height && !in_.Ended(); ++y) {
      uint8_t* row = image.rows.data() + rowBytes * y;
      if (rowBytes < 8) {
        in_.Bytes(row, rowBytes);
        continue;
      }
      packed.resize(rowBytes > 250 ? in_.U16() : in_.U8());
      if (!packed.empty() && in_.Bytes(packed.data(), packed.size()))
        packbits::Unpack(packed.data(), packed.size(), row, rowBytes);
    }
    return true;
  }

  void Text(bool relative, int16_t dh, int16_t dv, PicPoint at) {
    uint8_t count = in_.U8();
    std::string s(count, '\0');
    in_.Bytes(s.data(), count);
    sink_.Text(at, relative, dh, dv, s);
  }

  void LongComment() {
    int16_t kind = in_.S16();
    int16_t size = in_.S16();
    std::vector<uint8_t> data(size > 0 ? size : 0);
    if (!data.empty()) in_.Bytes(data.data(), data.size());
    if (!in_.Ended()) sink_.Comment(kind, data);
  }

  // A polygon record: size word (counting itself), box, points.
  void Poly(int verb, bool draw) {
    uint16_t size = in_.U16();
    if (size < 2) return;
    if (!draw || size < 10) {
      in_.Skip(size - 2u);
      return;
    }
    in_.Rect();
    std::vector<PicPoint> points;
    int count = (size - 10) / 4;
    for (int i = 0; i < count && !in_.Ended(); ++i) points.push_back(in_.Point());
    in_.Skip((size - 10) % 4);
    if (!in_.Ended()) sink_.Poly(verb, points);
  }

  // A region record: size word (counting itself and the box), box, then
  // its lines; data that cannot be read leaves the box.
  void Region(int verb, bool clip) {
    uint16_t size = in_.U16();
    if (size < 10) {
      in_.Skip(size >= 2 ? size - 2u : 0u);
      return;
    }
    PicRect box = in_.Rect();
    std::vector<uint8_t> data(size - 10u);
    if (!data.empty()) in_.Bytes(data.data(), data.size());
    if (in_.Ended()) return;
    std::vector<PicRect> rects;
    if (data.empty() || !DecodeRegion(data.data(), data.size(), &rects)) rects = {box};
    if (clip)
      sink_.Clip(box, rects);
    else if (verb <= 4)
      sink_.Region(verb, box, rects);
  }

  void Shape(ShapeKind kind, uint16_t op) {
    int verb = op & 7;
    bool same = op & 8;
    if (kind == ShapeKind::Poly) {
      Poly(verb, verb < 3 || verb == 4);
      return;
    }
    if (kind == ShapeKind::Rgn) {
      Region(verb, false);
      return;
    }
    if (verb > 4) {  // reserved: the rectangle's 8 bytes (arcs 12, same 4)
      in_.Skip(kind == ShapeKind::Arc ? (same ? 4 : 12) : (same ? 0 : 8));
      return;
    }
    if (!same) lastRect_ = in_.Rect();
    int16_t start = 0, arc = 0;
    if (kind == ShapeKind::Arc) {
      start = in_.S16();
      arc = in_.S16();
    }
    if (!in_.Ended()) sink_.Shape(kind, verb, lastRect_, start, arc);
  }

  bool Execute(uint16_t op) {
    switch (op) {
      case 0x0001: Region(0, true); return true;
      case 0x0002: Pattern(0); return true;
      case 0x0003: sink_.TextFont(in_.S16()); return true;
      case 0x0004: sink_.TextFace(in_.U8()); return true;
      case 0x0005: sink_.TextMode(in_.S16()); return true;
      case 0x0006: sink_.SpaceExtra(in_.S32()); return true;
      case 0x0007: sink_.PenSize(in_.Point()); return true;
      case 0x0008: sink_.PenMode(in_.S16()); return true;
      case 0x0009: Pattern(1); return true;
      case 0x000A: Pattern(2); return true;
      case 0x000B: sink_.OvalSize(in_.Point()); return true;
      case 0x000C: {
        int16_t dh = in_.S16(), dv = in_.S16();
        sink_.Origin(dh, dv);
        return true;
      }
      case 0x000D: sink_.TextSize(in_.S16()); return true;
      case 0x000E: sink_.OldColour(false, in_.S32()); return true;
      case 0x000F: sink_.OldColour(true, in_.S32()); return true;
      case 0x0010: in_.Skip(8); return true;
      case 0x0011: in_.Skip(version1_ ? 1 : 2); return true;
      case 0x0012: return PixPat(0);
      case 0x0013: return PixPat(1);
      case 0x0014: return PixPat(2);
      case 0x0015:
      case 0x0016: in_.Skip(2); return true;
      case 0x001A: sink_.RGBColour(false, in_.RGB()); return true;
      case 0x001B: sink_.RGBColour(true, in_.RGB()); return true;
      case 0x001C: sink_.HiliteMode(); return true;
      case 0x001D: sink_.HiliteColour(in_.RGB()); return true;
      case 0x001E: sink_.DefaultHilite(); return true;
      case 0x001F: in_.Skip(6); return true;
      case 0x0020: {
        PicPoint a = in_.Point(), b = in_.Point();
        Line(a, b);
        return true;
      }
      case 0x0021: Line(pen_, in_.Point()); return true;
      case 0x0022: {
        PicPoint a = in_.Point();
        int8_t dh = static_cast<int8_t>(in_.U8()), dv = static_cast<int8_t>(in_.U8());
        Line(a, PicPoint{static_cast<int16_t>(a.v + dv), static_cast<int16_t>(a.h + dh)});
        return true;
      }
      case 0x0023: {
        int8_t dh = static_cast<int8_t>(in_.U8()), dv = static_cast<int8_t>(in_.U8());
        Line(pen_, PicPoint{static_cast<int16_t>(pen_.v + dv), static_cast<int16_t>(pen_.h + dh)});
        return true;
      }
      case 0x0028: {
        text_ = in_.Point();
        Text(false, 0, 0, text_);
        return true;
      }
      case 0x0029:
      case 0x002A:
      case 0x002B: {
        int16_t dh = op != 0x002A ? in_.U8() : 0;
        int16_t dv = op != 0x0029 ? in_.U8() : 0;
        text_.h = static_cast<int16_t>(text_.h + dh);
        text_.v = static_cast<int16_t>(text_.v + dv);
        Text(true, dh, dv, text_);
        return true;
      }
      case 0x002C: {
        in_.U16();  // data length
        int16_t font = in_.S16();
        uint8_t length = in_.U8();
        std::string name(length, '\0');
        in_.Bytes(name.data(), length);
        if (!in_.Ended()) sink_.FontName(font, name);
        return true;
      }
      case 0x002D: in_.Skip(10); return true;
      case 0x00A0: {
        int16_t kind = in_.S16();
        if (!in_.Ended()) sink_.Comment(kind, {});
        return true;
      }
      case 0x00A1: LongComment(); return true;
      default: break;
    }
    if (op >= 0x0030 && op <= 0x0087) return ShapeOrReserved(op);
    if (op >= 0x0090 && op <= 0x009A && op != 0x0092 && (op <= 0x0091 || op >= 0x0098))
      return pictures::ReadPixelData(in_, op, sink_);
    return SkipBySize(op);
  }

  bool ShapeOrReserved(uint16_t op) {
    static const ShapeKind kinds[] = {ShapeKind::Rect, ShapeKind::RRect, ShapeKind::Oval,
                                      ShapeKind::Arc,  ShapeKind::Poly,  ShapeKind::Rgn};
    int group = (op >> 4) - 3;
    int low = op & 0xF;
    ShapeKind kind = kinds[group];
    bool reserved = (low & 7) > 4;
    if (kind == ShapeKind::Poly && op >= 0x0078) return true;  // no data
    if (kind == ShapeKind::Rgn && op >= 0x0088) return true;
    if (reserved && (low & 8) && kind != ShapeKind::Poly && kind != ShapeKind::Rgn &&
        kind != ShapeKind::Arc)
      return true;  // 0x3D-0x3F, 0x4D-0x4F, 0x5D-0x5F: no data
    if (reserved && kind == ShapeKind::Arc && (low & 8)) {
      in_.Skip(4);
      return true;
    }
    Shape(kind, static_cast<uint16_t>(op));
    return true;
  }

  // Opcodes the player does not act on, by the ranges' size rules.
  bool SkipBySize(uint16_t op) {
    if (op == 0x0000 || (op >= 0x0017 && op <= 0x0019) || (op >= 0x00B0 && op <= 0x00CF) ||
        (op >= 0x8000 && op <= 0x80FF))
      return true;
    if ((op >= 0x0024 && op <= 0x0027) || op == 0x002E || op == 0x002F ||
        (op >= 0x0092 && op <= 0x009F) || (op >= 0x00A2 && op <= 0x00AF)) {
      in_.Skip(in_.U16());
      return true;
    }
    if ((op >= 0x00D0 && op <= 0x00FE) || op >= 0x8100) {
      in_.Skip(static_cast<uint32_t>(in_.S32()));
      return true;
    }
    if (op >= 0x0100 && op <= 0x7FFF) {
      in_.Skip(2u * (op >> 8));
      return true;
    }
    return true;
  }

  void Line(PicPoint from, PicPoint to) {
    if (in_.Ended()) return;
    pen_ = to;
    sink_.Line(from, to);
  }

  Reader in_;
  PictureSink& sink_;
  bool version1_ = false;
  PicPoint pen_;
  PicPoint text_;
  PicRect lastRect_;
};

}  // namespace

WalkEnd WalkPicture(ByteSource& source, PictureSink& sink) { return Walker(source, sink).Run(); }

}  // namespace kwe::pictures
