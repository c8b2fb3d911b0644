// The picture opcode walker natively: hand-made pictures of both versions,
// the size rule of every range of opcodes it does not act on, and pixel data
// of every depth and packing. Pictures cut short or garbled anywhere are the
// fuzz target's (fuzz/picture_walker_fuzz.cpp).
#include "quickdraw/pictures/picture_walker.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "quickdraw/pictures/region_codec.h"

namespace {

using namespace kwe::pictures;

// A picture's bytes: the 10-byte header in the processor's order, then
// big-endian opcodes and data.
struct Bytes {
  std::vector<uint8_t> b;
  Bytes& Byte(int v) {
    b.push_back(static_cast<uint8_t>(v));
    return *this;
  }
  Bytes& Word(int v) { return Byte(v >> 8).Byte(v); }
  Bytes& Long(uint32_t v) {
    return Word(static_cast<int>(v >> 16)).Word(static_cast<int>(v & 0xFFFF));
  }
  Bytes& Rect(int top, int left, int bottom, int right) {
    return Word(top).Word(left).Word(bottom).Word(right);
  }
  Bytes& Fill(int n, int v = 0) {
    for (int i = 0; i < n; ++i) Byte(v);
    return *this;
  }
};

Bytes Header(int version) {
  Bytes p;
  // picSize, then top, left, bottom, right little-endian: (0, 0, 100, 200).
  p.b = {0, 0, 0, 0, 0, 0, 100, 0, 200, 0};
  if (version == 1) return p.Byte(0x11).Byte(0x01), p;
  p.Word(0x0011).Word(0x02FF).Word(0x0C00).Long(0xFFFFFFFF).Fill(20);
  return p;
}

// Everything the walker reports, as text.
struct Log : PictureSink {
  std::string s;
  std::vector<uint32_t> pixels;
  void Add(const std::string& t) { s += t + ";"; }
  void Frame(const PicRect& f) override {
    Add("frame " + std::to_string(f.right - f.left) + "x" + std::to_string(f.bottom - f.top));
  }
  void Clip(const PicRect& r, const std::vector<PicRect>& rects) override {
    Add("clip " + std::to_string(r.bottom) + " n" + std::to_string(rects.size()));
  }
  void Region(int verb, const PicRect&, const std::vector<PicRect>& rects) override {
    std::string t = "rgn " + std::to_string(verb);
    for (const PicRect& r : rects)
      t += " " + std::to_string(r.left) + "," + std::to_string(r.top) + "," +
           std::to_string(r.right) + "," + std::to_string(r.bottom);
    Add(t);
  }
  void PixelPattern(int which, const PatternImage& image) override {
    Add("ppat " + std::to_string(which) + " " + std::to_string(image.pixelSize) + " c" +
        std::to_string(image.colours.size()) + " r" + std::to_string(image.rows.size()));
  }
  void Shape(ShapeKind k, int verb, const PicRect& r, int16_t a, int16_t b) override {
    Add("shape " + std::to_string(int(k)) + "/" + std::to_string(verb) + " " +
        std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
        std::to_string(r.bottom) +
        (k == ShapeKind::Arc ? " " + std::to_string(a) + "+" + std::to_string(b) : ""));
  }
  void Line(PicPoint a, PicPoint b) override {
    Add("line " + std::to_string(a.h) + "," + std::to_string(a.v) + "-" + std::to_string(b.h) +
        "," + std::to_string(b.v));
  }
  void Text(PicPoint at, bool rel, int16_t, int16_t, const std::string& t) override {
    Add(std::string(rel ? "dtext " : "text ") + std::to_string(at.h) + "," + std::to_string(at.v) +
        " " + t);
  }
  void Poly(int verb, const std::vector<PicPoint>& pts) override {
    Add("poly " + std::to_string(verb) + " n" + std::to_string(pts.size()));
  }
  void Comment(int16_t kind, const std::vector<uint8_t>& d) override {
    Add("comment " + std::to_string(kind) + " " + std::to_string(d.size()));
  }
  void Pixels(const PixelBand& band) override {
    pixels.insert(pixels.end(), band.pixels, band.pixels + size_t(band.width) * band.rowCount);
    Add("pixels " + std::to_string(band.width) + "x" + std::to_string(band.rowCount) + " mode " +
        std::to_string(band.mode));
  }
};

WalkEnd Walk(const Bytes& p, Log* log) {
  BufferSource src(p.b.data(), p.b.size());
  return WalkPicture(src, *log);
}

// Version 1 has byte opcodes and no padding; version 2 pads odd data and may
// carry the extended header, whose resolution scales the frame.
TEST(PictureWalker, BothVersionsReadTheirOpcodes) {
  Bytes one = Header(1);
  one.Byte(0x31).Rect(1, 2, 3, 4);                               // PaintRect
  one.Byte(0x22).Word(10).Word(20).Byte(5).Byte(0xFD);           // ShortLine (20,10) by (5,-3)
  one.Byte(0x28).Word(30).Word(40).Byte(2).Byte('h').Byte('i');  // LongText, odd length
  one.Byte(0x38 + 3).Byte(0xA0).Word(100).Byte(0xFF);            // InvertSameRect, ShortComment
  Bytes two;
  two.b = {0, 0, 0, 0, 0, 0, 72, 0, 72, 0};  // frame 72 x 72; 300 dpi across, 144 down
  two.Word(0x0011).Word(0x02FF).Word(0x0C00).Word(0xFFFE).Word(0);
  two.Long(300u << 16).Long(144u << 16).Rect(0, 0, 144, 300).Long(0);
  two.Word(0x0004).Byte(1).Byte(0);       // TxFace, padded
  two.Word(0x0051).Rect(0, 0, 300, 300);  // PaintOval
  two.Word(0x0061).Rect(0, 0, 10, 10).Word(45).Word(90).Word(0x00FF);
  const std::pair<Bytes, const char*> cases[] = {
      {one,
       "frame 200x100;shape 0/1 2,1,4,3;line 20,10-25,7;text 40,30 hi;shape 0/3 2,1,4,3;"
       "comment 100 0;"},
      {two, "frame 300x144;shape 2/1 0,0,300,300;shape 3/1 0,0,10,10 45+90;"}};
  for (const auto& [bytes, want] : cases) {
    Log log;
    EXPECT_EQ(Walk(bytes, &log), WalkEnd::EndOpcode) << want;
    EXPECT_EQ(log.s, want);
  }
}

// Each opcode the walker does not act on, with data of the size its range
// gives, then a PaintRect that must still be seen.
TEST(PictureWalker, UnknownOpcodesAreSkippedBySize) {
  struct Case {
    int op;
    std::vector<uint8_t> data;
  };
  const std::vector<Case> cases = {
      {0x0000, {}},
      {0x0017, {}},
      {0x0010, std::vector<uint8_t>(8, 7)},
      {0x0015, {1, 2}},
      {0x001F, std::vector<uint8_t>(6)},
      {0x0024, {0, 3, 9, 9, 9, 0}},  // length word 3, then a pad
      {0x002E, {0, 0}},
      {0x002D, std::vector<uint8_t>(10)},
      {0x0035, std::vector<uint8_t>(8)},
      {0x003D, {}},
      {0x0065, std::vector<uint8_t>(12)},
      {0x006D, std::vector<uint8_t>(4)},
      {0x0073, {0, 14, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2}},  // InvertPoly is read past
      {0x0075, {0, 10, 0, 0, 0, 0, 0, 0, 0, 0}},
      {0x007A, {}},
      {0x0085, {0, 12, 0, 0, 0, 0, 0, 5, 0, 5, 1, 2}},  // a reserved region verb
      {0x008A, {}},
      {0x0092, {0, 2, 1, 1}},
      {0x00A5, {0, 4, 1, 2, 3, 4}},
      {0x00B7, {}},
      {0x00D0, {0, 0, 0, 6, 1, 2, 3, 4, 5, 6}},
      {0x00FE, {0, 0, 0, 0}},
      {0x0100, {1, 2}},
      {0x0C00, std::vector<uint8_t>(24)},
      {0x7F00, std::vector<uint8_t>(254)},
      {0x8000, {}},
      {0x80FF, {}},
      {0x8100, {0, 0, 0, 2, 7, 7}},
      {0xFFFF, {0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    Bytes p = Header(2);
    p.Word(c.op);
    // Zeros would read as no-op opcodes if skipped short: the data reads as
    // FrameRect opcodes instead, which the log would show.
    for (size_t i = 0; i < c.data.size(); ++i)
      p.Byte(c.op < 0x0100 || c.op > 0x7FFF ? c.data[i] : (i % 2 ? 0x30 : 0x00));
    p.Word(0x0031).Rect(1, 2, 3, 4).Word(0x00FF);
    Log log;
    EXPECT_EQ(Walk(p, &log), WalkEnd::EndOpcode) << std::hex << c.op;
    EXPECT_EQ(log.s, "frame 200x100;shape 0/1 2,1,4,3;") << std::hex << c.op;
  }
}

// A pixel map's fields after rowBytes and bounds.
void PixMapFields(Bytes& p, int packType, int pixelSize, int cmpCount) {
  p.Word(0).Word(packType).Long(0).Long(72u << 16).Long(72u << 16);
  p.Word(pixelSize > 8 ? 16 : 0).Word(pixelSize).Word(cmpCount).Word(pixelSize > 8 ? 8 : pixelSize);
  p.Long(0).Long(0).Long(0);
}

TEST(PictureWalker, PixelDataOfEveryPackingExpandsToTheSamePixels) {
  // A 16-pixel row: left half the first colour, right half the second.
  const uint32_t red = 0xFF0000, blue = 0x0000FF;
  struct Form {
    const char* name;
    Bytes body;
    uint32_t left, right;
  };
  std::vector<Form> forms;
  {  // 1-bit bitmap, BitsRect, rows as they are (2 bytes < 8)
    Bytes p;
    p.Word(0x0090).Word(2).Rect(0, 0, 2, 16).Rect(0, 0, 2, 16).Rect(0, 0, 2, 16).Word(0);
    p.Byte(0xFF).Byte(0x00).Byte(0xFF).Byte(0x00);
    forms.push_back({"bitmap", p, 0x000000, 0xFFFFFF});
  }
  {  // 8-bit indexed, PackBitsRect, each row two runs of 8
    Bytes p;
    p.Word(0x0098).Word(0x8000 | 16).Rect(0, 0, 2, 16);
    PixMapFields(p, 0, 8, 1);
    p.Long(0).Word(0).Word(1).Word(0).Word(0xFFFF).Word(0).Word(0).Word(1).Word(0).Word(0).Word(
        0xFFFF);
    p.Rect(0, 0, 2, 16).Rect(0, 0, 2, 16).Word(0);
    for (int row = 0; row < 2; ++row) p.Byte(4).Byte(0xF9).Byte(0).Byte(0xF9).Byte(1);
    forms.push_back({"indexed", p, red, blue});
  }
  {  // 16-bit direct, packed by words
    Bytes p;
    p.Word(0x009A).Long(0xFF).Word(0x8000 | 32).Rect(0, 0, 2, 16);
    PixMapFields(p, 3, 16, 3);
    p.Rect(0, 0, 2, 16).Rect(0, 0, 2, 16).Word(0);
    for (int row = 0; row < 2; ++row) p.Byte(6).Byte(0xF9).Word(0x7C00).Byte(0xF9).Word(0x001F);
    forms.push_back({"direct16", p, red, blue});
  }
  {  // 32-bit direct, component planes R, G, B
    Bytes p;
    p.Word(0x009A).Long(0xFF).Word(0x8000 | 64).Rect(0, 0, 2, 16);
    PixMapFields(p, 4, 32, 3);
    p.Rect(0, 0, 2, 16).Rect(0, 0, 2, 16).Word(0);
    for (int row = 0; row < 2; ++row) {
      p.Byte(10);
      p.Byte(0xF9).Byte(0xFF).Byte(0xF9).Byte(0);  // red plane
      p.Byte(0xF1).Byte(0);                        // green plane
      p.Byte(0xF9).Byte(0).Byte(0xF9).Byte(0xFF);  // blue plane
    }
    forms.push_back({"planes", p, red, blue});
  }
  for (Form& f : forms) {
    Bytes p = Header(2);
    p.b.insert(p.b.end(), f.body.b.begin(), f.body.b.end());
    if (p.b.size() & 1) p.Byte(0);
    p.Word(0x00FF);
    Log log;
    EXPECT_EQ(Walk(p, &log), WalkEnd::EndOpcode) << f.name;
    ASSERT_EQ(log.pixels.size(), 32u) << f.name << " " << log.s;
    for (int i = 0; i < 32; ++i)
      EXPECT_EQ(log.pixels[i], (i % 16) < 8 ? f.left : f.right) << f.name << " pixel " << i;
  }
}

// The region of two squares meeting at a corner, as the Macintosh encodes
// it: each line lists where the inside flips against the line above.
TEST(RegionCodec, TwoSquaresEncodeAsHandChecked) {
  std::vector<PicRect> rects = {{0, 0, 10, 10}, {10, 10, 20, 20}};
  Bytes expected;
  expected.Word(0).Word(0).Word(10).Word(0x7FFF);
  expected.Word(10).Word(0).Word(20).Word(0x7FFF);
  expected.Word(20).Word(10).Word(20).Word(0x7FFF).Word(0x7FFF);
  EXPECT_EQ(EncodeRegion(rects), expected.b);
  EXPECT_TRUE(EncodeRegion({{0, 0, 10, 10}}).empty()) << "a rectangle is its box alone";
  Log log;
  Bytes p = Header(2);
  p.Word(0x0081).Word(int(10 + expected.b.size())).Rect(0, 0, 20, 20);
  p.b.insert(p.b.end(), expected.b.begin(), expected.b.end());
  p.Word(0x0083).Word(10).Rect(1, 2, 3, 4).Word(0x00FF);
  EXPECT_EQ(Walk(p, &log), WalkEnd::EndOpcode);
  EXPECT_EQ(log.s, "frame 200x100;rgn 1 0,0,10,10 10,10,20,20;rgn 3 2,1,4,3;");
}

// Random shapes on a grid, as banded rectangles of their row runs, come
// back from their encoding covering the same pixels; lines cut short, lines
// that do not go down and too many rectangles are refused.
TEST(RegionCodec, RandomShapesRoundTripAndBadDataIsRefused) {
  const unsigned seed = 611;
  std::mt19937 random(seed);
  for (int step = 0; step < 300; ++step) {
    int size = 1 + random() % 24, density = random() % 100;
    std::vector<bool> inside(size_t(size) * size);
    for (size_t i = 0; i < inside.size(); ++i) inside[i] = int(random() % 100) < density;
    std::vector<PicRect> rows;
    for (int y = 0; y < size; ++y)
      for (int x = 0; x < size;) {
        if (!inside[size_t(y) * size + x] && ++x) continue;
        int start = x;
        while (x < size && inside[size_t(y) * size + x]) ++x;
        rows.push_back({int16_t(y), int16_t(start), int16_t(y + 1), int16_t(x)});
      }
    std::vector<uint8_t> data = EncodeRegion(rows);
    std::vector<PicRect> back;
    if (rows.size() < 2) continue;
    ASSERT_TRUE(DecodeRegion(data.data(), data.size(), &back))
        << "seed " << seed << " step " << step;
    std::vector<bool> drawn(inside.size());
    for (const PicRect& r : back)
      for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x)
          drawn[size_t(y) * size + x] = !drawn[size_t(y) * size + x];
    ASSERT_EQ(drawn, inside) << "seed " << seed << " step " << step;
    size_t needed = back.size();
    EXPECT_FALSE(DecodeRegion(data.data(), data.size() - 2, &back)) << "step " << step;
    EXPECT_FALSE(DecodeRegion(data.data(), data.size(), &back, needed - 1)) << "step " << step;
  }
  Bytes upwards;
  upwards.Word(5).Word(0).Word(4).Word(0x7FFF).Word(3).Word(0).Word(4).Word(0x7FFF).Word(0x7FFF);
  std::vector<PicRect> back;
  EXPECT_FALSE(DecodeRegion(upwards.b.data(), upwards.b.size(), &back));
}

}  // namespace
