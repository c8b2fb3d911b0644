// Pictures through the DLL: the bytes the recorder writes for small
// pictures, checked by hand; seeded scenes drawn directly and through a
// recorded picture giving the same pixels, at the frame's size and at
// twice it; pictures made by hand at version 1; the bottleneck procedures;
// and pictures cut short, with frames that make no sense, or recorded over
// and over.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "Fonts.h"
#include "KWEPorts.h"
#include "Memory.h"
#include "QDOffscreen.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "files/files_fixture.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;
using Bytes = std::vector<uint8_t>;

struct ColourExtras;

class Pictures : public PortTest {
 protected:
  void SetUp() override {
    PortTest::SetUp();
    Reset();
  }
  // The state a picture starts from, on the port and in the recorder.
  void Reset() {
    PenNormal();
    Pattern white{};
    BackPat(&white);
    TextFont(0);
    TextFace(0);
    TextSize(0);
    TextMode(srcOr);
    ForeColor(blackColor);
    BackColor(whiteColor);
    Rect all{0, 0, 256, 256};
    ClipRect(&all);
  }
  void ExpectSceneReplays(unsigned seed, const ColourExtras* extras);
  std::vector<uint32_t> Pixels() {
    std::vector<uint32_t> p;
    for (int y = 0; y < 256; ++y)
      for (int x = 0; x < 256; ++x) p.push_back(canvas.Pixel(x, y));
    return p;
  }
  // Where the canvas first differs from pixels, or "".
  std::string Differs(const std::vector<uint32_t>& pixels) {
    std::vector<uint32_t> now = Pixels();
    size_t i = size_t(std::mismatch(now.begin(), now.end(), pixels.begin()).first - now.begin());
    if (i == now.size()) return "";
    char where[64];
    std::snprintf(where, sizeof where, "at %d,%d: %06x, not %06x", int(i % 256), int(i / 256),
                  unsigned(now[i]), unsigned(pixels[i]));
    return where;
  }
};

Bytes BytesOf(PicHandle pic) {
  const UInt8* p = reinterpret_cast<const UInt8*>(*pic);
  return Bytes(p, p + GetHandleSize(reinterpret_cast<Handle>(pic)));
}

Bytes Concat(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& b : parts) all.insert(all.end(), b.begin(), b.end());
  return all;
}

// Pairs of hex digits; the spaces are for the eye.
Bytes Hex(const char* text) {
  Bytes b;
  for (const char* p = text; *p; p += *p == ' ' ? 1 : 2)
    if (*p != ' ') b.push_back(UInt8(std::stoi(std::string(p, 2), nullptr, 16)));
  return b;
}

// The header OpenPicture writes for the frame (10, 20, 110, 220), after
// picSize (given) and the frame, both in the processor's order.
Bytes HeaderFor(int size) {
  return Concat({{UInt8(size), UInt8(size >> 8)},
                 Hex("0A00 1400 6E00 DC00"                                    // picFrame
                     "0011 02FF 0C00 FFFF FFFF"                               // version 2, -1
                     "0014 0000 000A 0000 00DC 0000 006E 0000 0000 0000")});  // fixed frame
}

TEST_F(Pictures, RecordedBytesEqualHandCheckedVersion2Pictures) {
  Rect frame{10, 20, 110, 220};
  PicHandle empty = OpenPicture(&frame);
  ASSERT_NE(empty, nullptr);
  ClosePicture();
  EXPECT_EQ(BytesOf(empty), Concat({HeaderFor(42), {0x00, 0xFF}}));
  KillPicture(empty);

  PicHandle pic = OpenPicture(&frame);
  ClipRect(&frame);
  Rect r{20, 30, 40, 50};
  PaintRect(&r);
  MoveTo(50, 50);
  LineTo(55, 47);   // ShortLine: start, then 5 and -3
  LineTo(60, 44);   // ShortLineFrom: the last recorded point, 5 and -3
  LineTo(60, 244);  // LineFrom: too far for a byte
  MoveTo(60, 100);  // the pen's h, not its v: a line of its own
  LineTo(62, 101);
  ClosePicture();
  Bytes body = {0x00, 0x01, 0x00, 0x0A, 0, 10, 0,    20,   0, 110, 0, 220,  // clip
                0x00, 0x31, 0,    20,   0, 30, 0,    40,   0, 50,           // PaintRect
                0x00, 0x22, 0,    50,   0, 50, 0x05, 0xFD,                  // ShortLine
                0x00, 0x23, 0x05, 0xFD,                                     // ShortLineFrom
                0x00, 0x21, 0,    244,  0, 60,                              // LineFrom
                0x00, 0x22, 0,    100,  0, 60, 0x02, 0x01,                  // ShortLine
                0x00, 0xFF};
  EXPECT_EQ(BytesOf(pic), Concat({HeaderFor(40 + int(body.size())), body}));
  KillPicture(pic);
}

TEST_F(Pictures, OpenCPictureHeaderAndCommentData) {
  OpenCPicParams params{{0, 0, 100, 200}, 300 << 16, 150 << 16, -2, 0, 0};
  PicHandle pic = OpenCPicture(&params);
  ASSERT_NE(pic, nullptr);
  Handle data = NewHandle(8);
  const UInt8 native[8] = {0x02, 0x01, 0x04, 0x03, 0x08, 0x07, 0x06, 0x05};
  std::memcpy(*data, native, 8);
  PicComment(200, 8, data);  // RotateBegin: two words and a long
  PicComment(100, 0, nullptr);
  ClosePicture();
  Bytes expected =
      Hex("3C00 0000 0000 6400 C800"                      // picSize, picFrame: processor order
          "0011 02FF 0C00 FFFE 0000 012C 0000 0096 0000"  // version 2, -2, 300 and 150 dpi
          "0000 0000 0064 00C8 0000 0000"                 // source rectangle, reserved
          "00A1 00C8 0008 0102 0304 0506 0708"            // LongComment 200, big-endian data
          "00A0 0064 00FF");                              // ShortComment 100, end
  EXPECT_EQ(BytesOf(pic), expected);
  EXPECT_EQ(std::memcmp(*data, native, 8), 0) << "the caller's data stays in its order";
  DisposeHandle(data);
  KillPicture(pic);
}

TEST_F(Pictures, TextRecordsItsFontNameOnce) {
  Rect frame{0, 0, 100, 100};
  PicHandle pic = OpenPicture(&frame);
  TextFont(times);
  TextSize(18);
  MoveTo(10, 40);
  DrawString(P("ab"));
  DrawString(P("cd"));
  ClosePicture();
  // The name goes in with the first text in a font; the font number and
  // each string once.
  Bytes b = BytesOf(pic);
  auto count = [&](const Bytes& what) {
    int n = 0;
    for (auto at = b.begin(); (at = std::search(at, b.end(), what.begin(), what.end())) != b.end();
         ++at)
      ++n;
    return n;
  };
  Str255 name;
  GetFontName(times, name);
  ASSERT_GT(name[0], 0);
  EXPECT_EQ(count(Bytes(name, name + 1 + name[0])), 1);
  EXPECT_EQ(count({0x00, 0x03, 0x00, times}), 1);  // TxFont
  EXPECT_EQ(count({2, 'a', 'b'}) + count({2, 'c', 'd'}), 2);
  KillPicture(pic);
}

// What a colour port's scene draws with beyond a plain port's: an RGB and
// a full pixel pattern, and a GWorld to copy from.
struct ColourExtras {
  PixPatHandle patterns[2];
  GWorldPtr gw;
  const BitMap* dst;
};

// A region that is no rectangle: an oval, or two overlapping rectangles.
RgnHandle RandomRegion(std::mt19937& random, const Rect& r) {
  if (random() % 2) {
    RgnHandle rgn = NewRgn();
    OpenRgn();
    FrameOval(&r);
    CloseRgn(rgn);
    return rgn;
  }
  Rect other = r;
  OffsetRect(&other, SInt16(r.right - r.left) / 2, SInt16(r.bottom - r.top) / 2);
  return RegionOf({r, other});
}

// A rectangle or an oval in the five verbs: frame, paint, erase, invert
// and fill with pat.
void RectOrOval(bool oval, int verb, const Rect& r, const Pattern& pat) {
  switch (verb) {
    case 0: oval ? FrameOval(&r) : FrameRect(&r); break;
    case 1: oval ? PaintOval(&r) : PaintRect(&r); break;
    case 2: oval ? EraseOval(&r) : EraseRect(&r); break;
    case 3: oval ? InvertOval(&r) : InvertRect(&r); break;
    default: oval ? FillOval(&r, &pat) : FillRect(&r, &pat); break;
  }
}

// One random drawing call of a scene, the same whether it is drawn or
// recorded.
void RandomCall(std::mt19937& random, const ColourExtras* extras = nullptr) {
  static const Pattern patterns[] = {{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
                                     {{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}},
                                     {{0x88, 0x22, 0x88, 0x22, 0x88, 0x22, 0x88, 0x22}},
                                     {{0, 0, 0, 0, 0, 0, 0, 0}}};
  static const SInt16 modes[] = {patCopy, patOr, patXor, patBic, notPatCopy};
  static const SInt32 colours[] = {blackColor, redColor, blueColor, greenColor, cyanColor};
  auto coord = [&] { return SInt16(random() % 240); };
  Rect r{coord(), coord(), 0, 0};
  r.bottom = SInt16(r.top + 4 + random() % 60);
  r.right = SInt16(r.left + 4 + random() % 60);
  const Pattern& pat = patterns[random() % 4];
  switch (random() % (extras ? 17 : 14)) {
    case 0: PenSize(SInt16(1 + random() % 4), SInt16(1 + random() % 4)); break;
    case 1: PenMode(modes[random() % 5]); break;
    case 2: PenPat(&pat); break;
    case 3: ForeColor(colours[random() % 5]); break;
    case 4: BackPat(&pat); break;
    case 5: RectOrOval(false, int(random() % 5), r, pat); break;
    case 6: RectOrOval(true, int(random() % 5), r, pat); break;
    case 7: {
      SInt16 w = SInt16(random() % 30), h = SInt16(random() % 30);
      int verb = random() % 3;
      if (verb == 0) FrameRoundRect(&r, w, h);
      if (verb == 1) PaintRoundRect(&r, w, h);
      if (verb == 2) FillRoundRect(&r, w, h, &pat);
      break;
    }
    case 8: {
      SInt16 start = SInt16(random() % 360), arc = SInt16(random() % 300 + 10);
      if (random() % 2)
        PaintArc(&r, start, arc);
      else
        FrameArc(&r, start, arc);
      break;
    }
    case 9: {
      PolyHandle poly = OpenPoly();
      MoveTo(r.left, r.top);
      LineTo(r.right, r.top + 5);
      LineTo(r.left + 7, r.bottom);
      LineTo(r.left, r.top);
      ClosePoly();
      if (random() % 2)
        PaintPoly(poly);
      else
        FramePoly(poly);
      KillPoly(poly);
      break;
    }
    case 10:
      MoveTo(r.left, r.top);
      LineTo(r.right, r.bottom);
      if (random() % 2) Line(SInt16(random() % 20 - 10), SInt16(random() % 20 - 10));
      break;
    case 11: {
      Rect clip{SInt16(random() % 40), SInt16(random() % 40), SInt16(200 + random() % 56),
                SInt16(200 + random() % 56)};
      ClipRect(&clip);
      break;
    }
    case 12: {
      RgnHandle rgn = RandomRegion(random, r);
      int verb = random() % 5;
      if (verb == 0) FrameRgn(rgn);
      if (verb == 1) PaintRgn(rgn);
      if (verb == 2) EraseRgn(rgn);
      if (verb == 3) InvertRgn(rgn);
      if (verb == 4) FillRgn(rgn, &pat);
      DisposeRgn(rgn);
      break;
    }
    case 13: {
      Rect big{r.top, r.left, SInt16(r.bottom + 60), SInt16(r.right + 60)};
      RgnHandle rgn = RandomRegion(random, big);
      SetClip(rgn);
      DisposeRgn(rgn);
      break;
    }
    case 14: {
      PixPatHandle pp = extras->patterns[random() % 2];
      if (random() % 2)
        PenPixPat(pp);
      else
        BackPixPat(pp);
      break;
    }
    case 15: FillCRect(&r, extras->patterns[random() % 2]); break;
    case 16: {
      Rect from{SInt16(random() % 20), SInt16(random() % 20), 0, 0};
      from.bottom = SInt16(from.top + 4 + random() % 20);
      from.right = SInt16(from.left + 4 + random() % 20);
      const BitMap* src = reinterpret_cast<const BitMap*>(*GetGWorldPixMap(extras->gw));
      Rect to{r.top, r.left, SInt16(r.top + from.bottom - from.top),
              SInt16(r.left + from.right - from.left)};
      CopyBits(src, extras->dst, &from, &to, srcCopy, nullptr);
      break;
    }
  }
}

// Seed's scene of 40 calls drawn directly, then recorded (drawing
// nothing) and played back: the same pixels.
void Pictures::ExpectSceneReplays(unsigned seed, const ColourExtras* extras) {
  Rect frame{0, 0, 256, 256};
  std::mt19937 direct(seed), recorded(seed);
  canvas.Clear();
  Reset();
  for (int i = 0; i < 40; ++i) RandomCall(direct, extras);
  std::vector<uint32_t> expected = Pixels();
  canvas.Clear();
  Reset();
  PicHandle pic = OpenPicture(&frame);
  ASSERT_NE(pic, nullptr);
  for (int i = 0; i < 40; ++i) RandomCall(recorded, extras);
  ClosePicture();
  // CopyBits draws while a picture records, as it does on the Macintosh.
  if (!extras) {
    EXPECT_EQ(Pixels(), std::vector<uint32_t>(256 * 256, kWhite)) << "drew; seed " << seed;
  }
  Reset();
  DrawPicture(pic, &frame);
  EXPECT_EQ(Differs(expected), "") << "seed " << seed;
  KillPicture(pic);
}

TEST_F(Pictures, SeededScenesPlayBackPixelForPixel) {
  for (unsigned seed = 1; seed <= 24; ++seed) ExpectSceneReplays(seed, nullptr);
}

// A colour port over the same canvas: RGB and full pixel patterns for the
// pen, the background and FillCRect, and copies from a GWorld (its pixels
// read back into the picture), besides everything a plain port draws.
class ColourPictures : public Pictures {
 protected:
  void SetUp() override {
    Pictures::SetUp();
    OpenCPort(&cport);
    KWE_SwaphDC(canvas.Dc(), true);
    Rect bounds{0, 0, 24, 24};
    ASSERT_EQ(NewGWorld(&extras.gw, 32, &bounds, nullptr, nullptr, 0), noErr);
    SetGWorld(extras.gw, nullptr);
    const RGBColor stripes[] = {
        {0xFFFF, 0, 0}, {0, 0x8000, 0}, {0, 0, 0xFFFF}, {0xFFFF, 0xFFFF, 0}};
    for (int i = 0; i < 4; ++i) {
      Rect band{0, SInt16(6 * i), 24, SInt16(6 * i + 6)};
      RGBForeColor(&stripes[i]);
      PaintRect(&band);
    }
    SetPort(reinterpret_cast<GrafPtr>(&cport));
    RGBColor teal{0, 0x8080, 0x8080};
    extras.patterns[0] = NewPixPat();
    MakeRGBPat(extras.patterns[0], &teal);
    // Diagonal bands of four colours, 2 bits a pixel.
    extras.patterns[1] =
        IndexedPixPat(2, {{0xFFFF, 0xFFFF, 0xFFFF}, {0xFFFF, 0, 0}, {0, 0, 0xFFFF}, {0, 0, 0}},
                      [](int x, int y) { return (x + y) / 2 % 4; });
    extras.dst = &reinterpret_cast<GrafPtr>(&cport)->portBits;
  }
  void TearDown() override {
    DisposePixPat(extras.patterns[0]);
    DisposePixPat(extras.patterns[1]);
    DisposeGWorld(extras.gw);
    CloseCPort(&cport);
    SetPort(&port);
    Pictures::TearDown();
  }
  CGrafPort cport{};
  ColourExtras extras{};
};

TEST_F(ColourPictures, SeededScenesPlayBackPixelForPixel) {
  for (unsigned seed = 1; seed <= 16; ++seed) ExpectSceneReplays(seed, &extras);
}

// At twice the frame's size, shapes land on the doubled rectangles and
// frames use the doubled pen.
TEST_F(Pictures, DoubleSizePlaybackMatchesTheSceneDrawnDoubled) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    auto draw = [&](int scale) {  // the seed's calls, at the scale
      std::mt19937 random(seed);
      for (int i = 0; i < 30; ++i) {
        int t = int(random() % 110), l = int(random() % 110), pen = int(1 + random() % 3),
            oval = int(random() % 2), verb = int(random() % 4);
        Rect r{SInt16(scale * t), SInt16(scale * l), SInt16(scale * (t + 2 + random() % 30)),
               SInt16(scale * (l + 2 + random() % 30))};
        PenSize(SInt16(pen * scale), SInt16(pen * scale));
        RectOrOval(oval, verb, r, vars.black);
      }
    };
    canvas.Clear();
    Reset();
    draw(2);
    std::vector<uint32_t> expected = Pixels();
    canvas.Clear();
    Reset();
    Rect frame{0, 0, 128, 128}, doubled{0, 0, 256, 256};
    PicHandle pic = OpenPicture(&frame);
    draw(1);
    ClosePicture();
    Reset();
    DrawPicture(pic, &doubled);
    EXPECT_EQ(Differs(expected), "") << "seed " << seed;
    KillPicture(pic);
  }
}

Handle HandleOf(const Bytes& b) {
  Handle h = NewHandle(Size(b.size()));
  std::memcpy(*h, b.data(), b.size());
  return h;
}

// Version 1: byte opcodes, no padding (the walker's own tests read every
// opcode range); a region whose lines cannot be read draws as its box, and
// the next opcode still plays.
TEST_F(Pictures, HandMadePicturesPlay) {
  struct Case {
    const char* name;
    Bytes bytes;
    int black;
  };
  const Bytes frame = {0, 0, 0, 0, 0, 0, 100, 0, 100, 0};
  const Bytes v2 = Concat({frame, {0x00, 0x11, 0x02, 0xFF, 0x0C, 0x00}, Bytes(24, 0)});
  const Case cases[] = {
      {"version 1", Concat({frame, {0x11, 0x01, 0x31, 0, 10, 0, 10, 0, 20, 0, 20, 0xFF}}), 400},
      {"rectangular region",
       Concat({v2,
               {0x00, 0x83, 0x00, 0x0A, 0, 0, 0, 0, 0, 5, 0, 5},
               {0x00, 0x31, 0, 10, 0, 10, 0, 20, 0, 20, 0x00, 0xFF}}),
       400 + 100},
      {"region whose lines lie",
       Concat({v2,
               {0x00, 0x83, 0x00, 0x0E, 0, 0, 0, 0, 0, 5, 0, 5},
               {0x00, 0x09, 0x00, 0x03},
               {0x00, 0x31, 0, 10, 0, 10, 0, 20, 0, 20, 0x00, 0xFF}}),
       400 + 100},
  };
  Rect dst{0, 0, 200, 200};
  for (const Case& c : cases) {
    canvas.Clear();
    Reset();
    Handle h = HandleOf(c.bytes);
    DrawPicture(reinterpret_cast<PicHandle>(h), &dst);
    EXPECT_EQ(BlackIn(0, 0, 256, 256), c.black) << c.name;
    EXPECT_EQ(canvas.Pixel(20, 20), kBlack) << c.name;
    EXPECT_EQ(canvas.Pixel(39, 39), kBlack) << c.name;
    DisposeHandle(h);
  }
}

Bytes g_put;
size_t g_getAt = 0;
void KWE_CALL CapturePut(const void* data, SInt16 count) {
  const UInt8* p = static_cast<const UInt8*>(data);
  g_put.insert(g_put.end(), p, p + count);
}
void KWE_CALL ReplayGet(void* data, SInt16 count) {
  for (int i = 0; i < count; ++i) static_cast<UInt8*>(data)[i] = g_put[(g_getAt++) % g_put.size()];
}

// An application's put procedure receives the stream instead of the handle;
// its get procedure feeds playback.
TEST_F(Pictures, BottleneckProceduresCarryTheStream) {
  QDProcs procs;
  SetStdProcs(&procs);
  procs.putPicProc = reinterpret_cast<ProcPtr>(&CapturePut);
  port.grafProcs = &procs;
  Rect frame{0, 0, 100, 100}, r{10, 10, 30, 30};
  g_put.clear();
  PicHandle pic = OpenPicture(&frame);
  PaintRect(&r);
  ClosePicture();
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(pic)), 10);
  ASSERT_GE(g_put.size(), 30u + 12u);
  EXPECT_EQ(Bytes(g_put.end() - 12, g_put.end()),
            Bytes({0x00, 0x31, 0, 10, 0, 10, 0, 30, 0, 30, 0x00, 0xFF}));
  // Playback reads the stream back through the get procedure.
  procs.putPicProc = nullptr;
  procs.getPicProc = reinterpret_cast<ProcPtr>(&ReplayGet);
  Bytes head = BytesOf(pic);  // picSize and picFrame, read first
  g_put.insert(g_put.begin(), head.begin(), head.end());
  g_getAt = 0;
  Rect dst{0, 0, 200, 200};
  DrawPicture(pic, &dst);
  port.grafProcs = nullptr;
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 40 * 40);
  KillPicture(pic);
}

// Frames of no size, negative or huge, and nested OpenPicture: nothing
// breaks and nothing is left behind. (Pictures cut anywhere are the walker
// fuzz target's.)
TEST_F(Pictures, BadPicturesAndNestingStayClean) {
  Rect frame{0, 0, 100, 100}, r{10, 10, 60, 60};
  PicHandle pic = OpenPicture(&frame);
  EXPECT_EQ(OpenPicture(&frame), nullptr) << "nested OpenPicture";
  FrameOval(&r);
  PaintRect(&r);
  MoveTo(1, 1);
  DrawString(P("cut"));
  ClosePicture();
  EXPECT_EQ(port.picSave, nullptr);
  EXPECT_EQ(port.pnVis, 0);
  Rect dst{0, 0, 200, 200};
  const Rect frames[] = {{0, 0, 0, 0}, {50, 50, 10, 10}, {-32767, -32767, 32767, 32767}};
  for (const Rect& f : frames) {
    (**pic).picFrame = f;
    DrawPicture(pic, &dst);
    DrawPicture(pic, &f);
  }
  KillPicture(pic);
  KillPicture(nullptr);
  DrawPicture(nullptr, &dst);

  KWE_AllowPictStatePush(true);
  PicHandle outer = OpenPicture(&frame);
  PicHandle inner = OpenPicture(&frame);
  ASSERT_NE(inner, nullptr);
  PaintRect(&r);
  ClosePicture();
  EXPECT_EQ(port.picSave, reinterpret_cast<Handle>(outer));
  ClosePicture();
  KWE_AllowPictStatePush(false);
  EXPECT_EQ(port.pnVis, 0);
  EXPECT_GT(GetHandleSize(reinterpret_cast<Handle>(inner)), 42);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(outer)), 42);
  KillPicture(inner);
  KillPicture(outer);
}

// The scrap picture: a picture header and a packed DIB, white, that the
// drawing until ClosePicture reaches (nothing reaches the port meanwhile);
// DrawPicture draws it as the bitmap it is.
TEST_F(Pictures, ScrapPictureHoldsTheDrawingAsADib) {
  Rect empty{10, 10, 10, 40}, rect{10, 20, 40, 60};
  EXPECT_EQ(KWE_OpenScrapPict(&empty), nullptr);
  PicHandle scrap = KWE_OpenScrapPict(&rect);
  ASSERT_NE(scrap, nullptr);
  EXPECT_EQ(port.picSave, reinterpret_cast<Handle>(scrap));
  EXPECT_EQ(OpenPicture(&rect), nullptr) << "the port records already";
  Rect ink{15, 30, 25, 40};  // 5 down and 10 across into the picture
  PaintRect(&ink);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 0) << "the pen is hidden while it records";
  ClosePicture();
  EXPECT_EQ(port.picSave, nullptr);
  EXPECT_EQ(port.pnVis, 0);

  const UInt8* bytes = reinterpret_cast<const UInt8*>(*scrap);
  const BITMAPINFO* info = reinterpret_cast<const BITMAPINFO*>(bytes + 10);
  ASSERT_EQ(info->bmiHeader.biBitCount, 24) << "a true-colour screen";
  const Size rowBytes = (40 * 3 + 3) / 4 * 4;
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(scrap)), 10 + 40 + rowBytes * 30);
  // Another program draws the DIB as Windows reads it.
  SetDIBitsToDevice(canvas.Dc(), 0, 0, 40, 30, 0, 0, 0, 30, bytes + 50, info, DIB_RGB_COLORS);
  EXPECT_EQ(BlackIn(10, 5, 20, 15), 100) << "rows bottom-up";
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 100);

  canvas.Clear();
  Rect dst{100, 100, 160, 180};  // twice the size
  DrawPicture(scrap, &dst);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 400);
  ExpectInk("scrap drawn", {{120, 110}, {139, 129}}, {{119, 110}, {140, 129}, {120, 130}});
  KillPicture(scrap);
}

// RotateBegin turns the text that follows by its angle, clockwise about
// the centre RotateCenter set, until RotateEnd; in a picture as on the
// screen.
TEST_F(Pictures, RotationCommentsTurnTextWhenPlayed) {
  TextFont(times);
  TextSize(24);
  auto comment = [](SInt16 kind, std::initializer_list<SInt16> words) {
    Handle data = NewHandleClear(Size(2 * words.size()));
    std::memcpy(*data, words.begin(), 2 * words.size());
    PicComment(kind, SInt16(2 * words.size()), data);
    DisposeHandle(data);
  };
  Rect frame{0, 0, 256, 256};
  for (SInt16 angle : {0, 90, 180}) {
    canvas.Clear();
    PicHandle pic = OpenPicture(&frame);
    MoveTo(128, 128);
    comment(202, {0, 0, 0, 0});  // the centre at the pen
    comment(200, {0, angle});
    DrawString(P("WWWWWW"));
    comment(201, {});
    ClosePicture();
    DrawPicture(pic, &frame);
    InkBox box(canvas, 0, 0, 256, 256);
    int wide = box.Width(), tall = box.Height();
    ASSERT_GT(wide, 0) << angle << ": the text is drawn about the pen it was placed at";
    if (angle == 90) {
      EXPECT_GT(tall, 2 * wide) << "runs down";
      EXPECT_GE(box.top, 120);
      EXPECT_GE(box.left, 124) << "its top to the right of the centre";
      EXPECT_GE(box.right, 136);
    } else {
      EXPECT_GT(wide, 2 * tall) << angle;
      EXPECT_TRUE(angle == 180 ? box.right <= 128 : box.left >= 127) << angle << " runs its way";
    }
    KillPicture(pic);
  }
  canvas.Clear();
  MoveTo(10, 100);
  DrawString(P("WWWWWW"));
  InkBox box(canvas, 0, 0, 256, 256);
  EXPECT_GT(box.Width(), 2 * box.Height()) << "unturned after playback";
}

}  // namespace
