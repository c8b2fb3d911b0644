// Pixels put on a port's DC as DIBs: KWE_DSSimple with a DIB pixel map,
// KWE_DSNotSimple against what CopyBits makes of the same copy in memory,
// the direct-to-device switch as KWE_NextWriteIsToScreen arms it, and the
// colorizing of 1-bit sources that cannot be colorized.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "KWEPixMaps.h"
#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "memory_pixels.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

Rect R(int l, int t, int r, int b) { return Rect{SInt16(t), SInt16(l), SInt16(b), SInt16(r)}; }

// An 8-bit packed DIB, bottom-up, of its own colours: value v is
// RGB(v * 40, 255 - v * 40, v * 7) for v below 6, white to black order.
struct PackedDib {
  PackedDib(int w, int h) : width(w), height(h) {
    header = {sizeof header, w, h, 1, 8, BI_RGB, 0, 0, 0, 6, 0};
    for (int v = 0; v < 6; ++v) colours[v] = Quad(v);
    colours[0] = RGBQUAD{255, 255, 255, 0};
    colours[5] = RGBQUAD{0, 0, 0, 0};
    stride = (w + 3) & ~3;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) bits[size_t(h - 1 - y) * stride + x] = UInt8((x + 2 * y) % 6);
  }
  static RGBQUAD Quad(int v) { return RGBQUAD{BYTE(v * 7), BYTE(255 - v * 40), BYTE(v * 40), 0}; }
  // What pixel (x, y), counted from the top, shows.
  uint32_t Shown(int x, int y) const {
    const RGBQUAD& q = colours[(x + 2 * y) % 6];
    return uint32_t(q.rgbRed) << 16 | uint32_t(q.rgbGreen) << 8 | q.rgbBlue;
  }
  BITMAPINFOHEADER header;
  RGBQUAD colours[6];
  UInt8 bits[64 * 64];
  int width, height, stride;
};

class DcCopies : public PortTest {
 protected:
  // The canvas and same (64 x 64, 32 bits) filled with the pattern the
  // seed draws.
  void ScatterOnBoth(Pixels& same, unsigned seed) {
    same.Scatter(seed);
    for (int y = 0; y < 64; ++y)
      for (int x = 0; x < 64; ++x) {
        uint32_t v = same.At32(x, y);
        std::memcpy(&same.bytes[size_t(y) * same.rowBytes + 4 * x], &v, 4);
        canvas.Fill(v, RECT{x, y, x + 1, y + 1});
      }
  }
  // The first canvas pixel that differs from the memory pixels, or "".
  std::string Difference(const Pixels& want) {
    for (int y = 0; y < 64; ++y)
      for (int x = 0; x < 64; ++x)
        if (canvas.Pixel(x, y) != want.At32(x, y))
          return std::to_string(x) + "," + std::to_string(y);
    return "";
  }
};

// srcRect of the DIB lands unscaled at dstRect's top left, whatever
// dstRect's size; the pixels around it stay white.
TEST_F(DcCopies, DibPixelMapsGoOnTheDcAsTheyStand) {
  PackedDib dib(13, 9);
  PixMapHandle pm = KWE_NewDIBPixMap(&dib.header);
  ASSERT_NE(pm, nullptr);
  const struct {
    Rect src, dst;
  } cases[] = {
      {R(0, 0, 13, 9), R(10, 10, 23, 19)},
      {R(3, 2, 9, 7), R(40, 30, 41, 31)},  // only the top left of dstRect counts
      {R(12, 8, 13, 9), R(0, 0, 50, 50)},
  };
  for (const auto& c : cases) {
    canvas.Clear();
    ASSERT_EQ(KWE_DSSimple(*pm, c.src, c.dst, nullptr), noErr);
    int w = c.src.right - c.src.left, h = c.src.bottom - c.src.top;
    int changed = 0;
    for (int y = 0; y < 80; ++y)
      for (int x = 0; x < 80; ++x) changed += canvas.Pixel(x, y) != kWhite;
    int shown = 0;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        uint32_t want = dib.Shown(c.src.left + x, c.src.top + y);
        ASSERT_EQ(canvas.Pixel(c.dst.left + x, c.dst.top + y), want) << x << "," << y;
        shown += want != kWhite;
      }
    EXPECT_EQ(changed, shown);
  }
  // Outside the map, not a DIB pixel map, or no map: paramErr, no pixels.
  canvas.Clear();
  PixMapHandle plain = NewPixMap();
  EXPECT_EQ(KWE_DSSimple(*pm, R(5, 5, 14, 9), R(0, 0, 9, 4), nullptr), paramErr);
  EXPECT_EQ(KWE_DSSimple(*pm, R(5, 5, 5, 9), R(0, 0, 9, 4), nullptr), paramErr);
  EXPECT_EQ(KWE_DSSimple(*plain, R(0, 0, 4, 4), R(0, 0, 4, 4), nullptr), paramErr);
  EXPECT_EQ(KWE_DSSimple(nullptr, R(0, 0, 4, 4), R(0, 0, 4, 4), nullptr), paramErr);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  DisposePixMap(plain);
  // The main device's table asks for the DC's palette by index: values 0
  // and 1 show the default palette's black and dark red, whatever the
  // DIB's own colours.
  GDHandle main = GetMainDevice();
  ASSERT_TRUE(main && (**main).gdPMap && (**(**main).gdPMap).pmTable);
  canvas.Clear();
  ASSERT_EQ(KWE_DSSimple(*pm, R(0, 0, 2, 1), R(0, 0, 2, 1), (**(**main).gdPMap).pmTable), noErr);
  EXPECT_EQ(canvas.Pixel(0, 0), 0x000000u);
  EXPECT_EQ(canvas.Pixel(1, 0), 0x800000u);
  ASSERT_EQ(KWE_DSSimple(*pm, R(0, 0, 2, 1), R(0, 1, 2, 2), (**pm).pmTable), noErr);
  EXPECT_EQ(canvas.Pixel(0, 1), dib.Shown(0, 0)) << "any other table: the DIB's own colours";
  EXPECT_EQ(canvas.Pixel(1, 1), dib.Shown(1, 0));
  DisposePixMap(pm);
}

// KWE_DSNotSimple onto the port gives what CopyBits makes of the same copy
// into memory pixels holding the port's pixels: scaled, in the copy modes
// (which need not read the DC) and the others, through a rectangular
// region (which clips the DC) and a bitmap-made one (which the pipeline
// masks with). Replayable by case number.
TEST_F(DcCopies, NotSimpleCopiesMatchCopyBitsInMemory) {
  const SInt16 modes[] = {srcCopy, notSrcCopy, srcOr, srcBic, 32, 34, 37, 39, 64};
  RgnHandle box = RegionOf({R(5, 5, 50, 40)});
  RgnHandle ragged = RegionOf({R(0, 0, 30, 10), R(20, 20, 64, 30), R(3, 40, 9, 64)});
  ASSERT_EQ(ThroughBitmap(ragged, 64), noErr);
  CTabHandle eight = GetCTable(8);
  for (unsigned n = 1; n <= 54; ++n) {
    SInt16 mode = modes[n % 9];
    RgnHandle mask = n % 3 == 0 ? nullptr : n % 3 == 1 ? box : ragged;
    int depth = n % 2 ? 32 : 8;
    Pixels src(20, 15, depth, depth == 8 ? eight : nullptr);
    src.Scatter(n);
    Pixels want(64, 64, 32);
    ScatterOnBoth(want, 1000 + n);
    Rect s = R(n % 5, n % 4, 20, 15), d = R(2 + n % 7, 3, 2 + n % 7 + (n % 4 ? 18 : 40), 50);
    CopyBits(src.Bits(), want.Bits(), &s, &d, mode, mask);
    ASSERT_EQ(KWE_DSNotSimple(&src.map, nullptr, s, d, mode, nullptr, nullptr, mask), noErr);
    ASSERT_EQ(Difference(want), "") << "case " << n << ": mode " << mode << ", depth " << depth;
  }
  DisposeCTable(eight);
  DisposeRgn(box);
  DisposeRgn(ragged);
}

// Sources the complex-source path has no case for say so and draw
// nothing: a DIB pixel map under a bitmap-made mask, and pixels behind a
// port's DC. Bad pixels and rectangles are refused without a word.
TEST_F(DcCopies, NotSimpleRefusesWhatItCannotCopy) {
  PackedDib dib(8, 8);
  PixMapHandle pm = KWE_NewDIBPixMap(&dib.header);
  ASSERT_NE(pm, nullptr);
  RgnHandle ragged = RegionOf({R(0, 0, 3, 8), R(5, 2, 8, 6)});
  ASSERT_EQ(ThroughBitmap(ragged, 16), noErr);
  Rect all = R(0, 0, 8, 8);
  canvas.Clear();
  capture.Clear();
  EXPECT_EQ(KWE_DSNotSimple(*pm, nullptr, all, all, srcCopy, nullptr, nullptr, ragged), paramErr);
  PixMap portPixels{};
  portPixels.baseAddr = port.portBits.baseAddr;
  portPixels.rowBytes = SInt16(0x8000 | 32);
  portPixels.bounds = port.portBits.bounds;
  portPixels.pixelSize = 32;
  EXPECT_EQ(KWE_DSNotSimple(&portPixels, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr),
            paramErr);
  ASSERT_EQ(capture.Reports().size(), 2u);
  for (const std::string& text : capture.Reports())
    EXPECT_NE(text.find("SDNotSimple unimplemented"), std::string::npos) << text;
  // Without a mask the DIB goes out as it stands.
  EXPECT_EQ(KWE_DSNotSimple(*pm, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr), noErr);
  EXPECT_EQ(canvas.Pixel(5, 0), dib.Shown(5, 0));
  canvas.Clear();
  Pixels odd(8, 8, 8);  // no colour table
  odd.map.rowBytes = SInt16(0x8000 | 7);
  EXPECT_NE(KWE_DSNotSimple(&odd.map, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr),
            noErr);
  EXPECT_EQ(KWE_DSNotSimple(nullptr, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr),
            paramErr);
  Pixels deep(8, 8, 32);
  EXPECT_EQ(
      KWE_DSNotSimple(&deep.map, nullptr, R(4, 4, 12, 12), all, srcCopy, nullptr, nullptr, nullptr),
      paramErr);
  EXPECT_EQ(
      KWE_DSNotSimple(&deep.map, nullptr, all, R(4, 4, 4, 9), srcCopy, nullptr, nullptr, nullptr),
      paramErr);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  EXPECT_EQ(capture.Reports().size(), 2u);
  DisposeRgn(ragged);
  DisposePixMap(pm);
}

bool DisplayTakesDibs() {
  HDC screen = GetDC(nullptr);
  bool yes = GetDeviceCaps(screen, RASTERCAPS) & RC_DIBTODEV;
  ReleaseDC(nullptr, screen);
  return yes;
}

// Armed, the next copy is a plain write wherever the display takes DIBs
// to the device: srcOr paints the 0 bits white there. The copy after it,
// and a copy into a 1-bit bitmap of the offscreen table (which never goes
// straight to the device), keep their mode; a copy that draws nothing
// still uses the switch up.
TEST_F(DcCopies, NextWriteIsToScreenMakesOnlyTheNextCopyPlain) {
  UInt8 rows[8 * 2] = {};
  for (int y = 0; y < 8; ++y) rows[y * 2] = 0xF0;
  BitMap bits{reinterpret_cast<Ptr>(rows), 2, R(0, 0, 16, 8)};
  Rect s = R(0, 0, 8, 8);
  const bool plain = DisplayTakesDibs();
  std::printf("the display %s DIBs straight to the device\n", plain ? "takes" : "does not take");
  RECT all{0, 0, 64, 64};
  canvas.Fill(0x808080, all);
  const struct {
    bool arm, drawsNothing;
    int at;
    uint32_t under0;  // what the pixels under 0 bits show
  } steps[] = {
      {true, false, 0, plain ? kWhite : 0x808080u},
      {false, false, 10, 0x808080u},
      {true, true, 20, 0x808080u},
      {false, false, 20, 0x808080u},
  };
  for (const auto& step : steps) {
    if (step.arm) KWE_NextWriteIsToScreen();
    Rect d = R(step.at, 0, step.at + 8, 8), nowhere = R(300, 300, 308, 308);
    CopyBits(&bits, &port.portBits, &s, step.drawsNothing ? &nowhere : &d, srcOr, nullptr);
    if (step.drawsNothing) CopyBits(&bits, &port.portBits, &s, &d, srcOr, nullptr);
    EXPECT_EQ(canvas.Pixel(step.at, 3), kBlack) << "at " << step.at;
    EXPECT_EQ(canvas.Pixel(step.at + 5, 3), step.under0) << "at " << step.at;
  }

  // A port drawing into 1-bit memory: black everywhere first, then the
  // armed srcOr leaves the 0 bits black.
  std::vector<UInt8> memory(2 * 8, 0);
  BitMap offBits{reinterpret_cast<Ptr>(memory.data()), 2, R(0, 0, 16, 8)};
  GrafPort off{};
  OpenPort(&off);
  SetPortBits(&offBits);
  Rect whole = R(0, 0, 16, 8);
  PaintRect(&whole);
  SetPort(&port);
  KWE_NextWriteIsToScreen();
  CopyBits(&bits, &off.portBits, &s, &s, srcOr, nullptr);
  SetPort(&off);
  SetPort(&port);
  EXPECT_EQ(memory[2 * 3], 0xFF);
  ClosePort(&off);
}

// Colours that cannot colorize a 1-bit source: the Xor modes only invert
// and the arithmetic modes have no colorized form. Each says so once and
// the copy goes on with the bits' own black and white.
TEST_F(DcCopies, ColorizingThatCannotBeSaysSo) {
  const struct {
    SInt16 mode;
    const char* text;
    uint32_t under1;  // on white, under the source's 1 bits
  } cases[] = {
      {srcXor, "Invalid PrepareColorize case (Xor)", kBlack},
      {notSrcXor, "Invalid PrepareColorize case (notXor)", kWhite},
      {39, "Undefined PrepareColorize case", kBlack},  // adMin: the darker
      {srcOr, nullptr, 0},                             // the foreground colour
  };
  UInt8 rows[8 * 2];
  std::memset(rows, 0xF0, sizeof rows);
  BitMap bits{reinterpret_cast<Ptr>(rows), 2, R(0, 0, 16, 8)};
  Rect s = R(0, 0, 8, 8);
  RGBColor red{0xFFFF, 0, 0};
  RGBForeColor(&red);
  GetForeColor(&red);  // the nearest a plain port keeps
  const uint32_t fg = uint32_t(red.red >> 8) << 16 | uint32_t(red.green >> 8) << 8 | red.blue >> 8;
  for (const auto& c : cases) {
    canvas.Clear();
    capture.Clear();
    CopyBits(&bits, &port.portBits, &s, &s, c.mode, nullptr);
    ASSERT_EQ(capture.Reports().size(), c.text ? 1u : 0u) << c.mode;
    if (c.text) {
      EXPECT_NE(capture.Reports()[0].find(c.text), std::string::npos);
    }
    EXPECT_EQ(canvas.Pixel(1, 1), c.text ? c.under1 : fg) << c.mode;
    EXPECT_EQ(canvas.Pixel(6, 1), c.mode == notSrcXor ? kBlack : kWhite) << c.mode;
  }
}

}  // namespace
