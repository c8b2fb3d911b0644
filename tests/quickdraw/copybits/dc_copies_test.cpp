// Pixels put on a port's DC as DIBs: KWE_DSSimple with a DIB pixel map,
// KWE_DSNotSimple against what CopyBits makes of the same copy in memory,
// the direct-to-device switch as KWE_NextWriteIsToScreen arms it, and the
// colorizing of 1-bit sources that cannot be colorized. Large copies go in
// bands: a copy taller than a band gives the pixels of the same copy into
// memory (which the pipeline makes in one piece), and many of them leave
// GDI objects and private bytes where they were. The pipeline stages'
// reports.
#include <gtest/gtest.h>
#include <windows.h>
// psapi.h needs windows.h's types first.
#include <psapi.h>

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
  // Outside the map, or not a DIB pixel map: paramErr, no pixels.
  canvas.Clear();
  PixMapHandle plain = NewPixMap();
  EXPECT_EQ(KWE_DSSimple(*pm, R(5, 5, 14, 9), R(0, 0, 9, 4), nullptr), paramErr);
  EXPECT_EQ(KWE_DSSimple(*plain, R(0, 0, 4, 4), R(0, 0, 4, 4), nullptr), paramErr);
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
// port's DC. Without the mask the DIB goes out as it stands.
TEST_F(DcCopies, NotSimpleRefusesWhatItCannotCopy) {
  PackedDib dib(8, 8);
  PixMapHandle pm = KWE_NewDIBPixMap(&dib.header);
  ASSERT_NE(pm, nullptr);
  RgnHandle ragged = RegionOf({R(0, 0, 3, 8), R(5, 2, 8, 6)});
  ASSERT_EQ(ThroughBitmap(ragged, 16), noErr);
  Rect all = R(0, 0, 8, 8);
  EXPECT_EQ(KWE_DSNotSimple(*pm, nullptr, all, all, srcCopy, nullptr, nullptr, ragged), paramErr);
  Pixels portPixels(8, 8, 32);
  portPixels.map.baseAddr = port.portBits.baseAddr;
  EXPECT_EQ(KWE_DSNotSimple(&portPixels.map, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr),
            paramErr);
  EXPECT_EQ(BlackIn(0, 0, 64, 64), 0);
  ASSERT_EQ(capture.Reports().size(), 2u);
  for (const std::string& text : capture.Reports())
    EXPECT_NE(text.find("SDNotSimple unimplemented"), std::string::npos) << text;
  EXPECT_EQ(KWE_DSNotSimple(*pm, nullptr, all, all, srcCopy, nullptr, nullptr, nullptr), noErr);
  EXPECT_EQ(canvas.Pixel(5, 0), dib.Shown(5, 0));
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

class CopyBands : public PortTest {};

// Each case is replayable by its seed: random source pixels, a copy onto
// the canvas and the same copy into white 32-bit memory, compared.
TEST_F(CopyBands, TallCopiesMatchTheCopyMadeInOnePiece) {
  struct Case {
    unsigned seed;
    int depth, w, h;
    Rect dst;
    SInt16 mode;
    bool masked;
  } cases[] = {
      {1, 32, 100, 120, R(10, 5, 210, 245), 34, false},     // addOver, 2x: three bands
      {2, 32, 120, 240, R(0, 0, 240, 240), 39, true},       // adMin through a mask region
      {3, 8, 200, 250, R(0, 0, 200, 250), 37, false},       // addMax, indexed source
      {4, 2, 250, 250, R(0, 0, 250, 250), srcCopy, false},  // GDI takes converted rows
      {5, 16, 90, 200, R(30, 0, 210, 250), 32 + 64, true},  // blend, dither bit, 2x wide
  };
  CTabHandle eight = GetCTable(8), two = GetCTable(34);  // four greys
  RgnHandle mask = RegionOf({R(0, 0, 256, 40), R(20, 60, 200, 130), R(50, 170, 256, 256)});
  for (const Case& c : cases) {
    std::mt19937 random(c.seed);
    Pixels src(c.w, c.h, c.depth, c.depth == 8 ? eight : c.depth == 2 ? two : nullptr);
    for (UInt8& b : src.bytes) b = UInt8(random());
    Pixels reference(256, 256, 32);
    std::memset(reference.bytes.data(), 0xFF, reference.bytes.size());
    Rect from = R(0, 0, c.w, c.h);
    canvas.Clear();
    CopyBits(src.Bits(), &port.portBits, &from, &c.dst, c.mode, c.masked ? mask : nullptr);
    CopyBits(src.Bits(), reference.Bits(), &from, &c.dst, c.mode, c.masked ? mask : nullptr);
    int wrong = 0;
    for (int y = 0; y < 256 && wrong < 3; ++y)
      for (int x = 0; x < 256 && wrong < 3; ++x)
        if (canvas.Pixel(x, y) != reference.At32(x, y)) {
          ADD_FAILURE() << "seed " << c.seed << " at " << x << "," << y << ": " << std::hex
                        << canvas.Pixel(x, y) << " against " << reference.At32(x, y);
          ++wrong;
        }
  }
  // The canvas back into memory through the mask, in bands too.
  Pixels back(256, 256, 32);
  std::memset(back.bytes.data(), 0x5A, back.bytes.size());
  Rect all = R(0, 0, 256, 256);
  CopyBits(&port.portBits, back.Bits(), &all, &all, srcCopy, mask);
  int wrong = 0;
  for (int y = 0; y < 256 && wrong < 3; ++y)
    for (int x = 0; x < 256 && wrong < 3; ++x) {
      bool inside = PtInRgn(Point{SInt16(y), SInt16(x)}, mask);
      uint32_t want = inside ? canvas.Pixel(x, y) : 0x5A5A5A;
      if (back.At32(x, y) != want) {
        ADD_FAILURE() << "read back at " << x << "," << y;
        ++wrong;
      }
    }
  DisposeRgn(mask);
  DisposeCTable(eight);
  DisposeCTable(two);
}

size_t PrivateBytes() {
  PROCESS_MEMORY_COUNTERS_EX counters{};
  counters.cb = sizeof counters;
  K32GetProcessMemoryInfo(GetCurrentProcess(),
                          reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters), sizeof counters);
  return counters.PrivateUsage;
}

TEST_F(CopyBands, ManyBandedCopiesKeepObjectsAndMemoryFlat) {
  Pixels src(200, 180, 32);
  Pixels back(200, 180, 32);
  Rect all = R(0, 0, 200, 180);
  RgnHandle mask = RegionOf({R(0, 0, 100, 180), R(120, 20, 200, 60)});
  for (int i = 0; i < 20; ++i) CopyBits(src.Bits(), &port.portBits, &all, &all, 33, mask);
  int objects = LiveGdiObjects();
  size_t bytes = PrivateBytes();
  for (int i = 0; i < 10000; ++i) {
    CopyBits(src.Bits(), &port.portBits, &all, &all, SInt16(i % 2 ? 33 : 39),
             i % 3 ? mask : nullptr);
    if (i % 10 == 0) CopyBits(&port.portBits, back.Bits(), &all, &all, srcCopy, nullptr);
  }
  EXPECT_EQ(LiveGdiObjects(), objects);
  EXPECT_LT(PrivateBytes(), bytes + 512 * 1024) << "from " << bytes;
  DisposeRgn(mask);
}

// A stage with no case for what it meets reports its own text once; the
// copy goes on without that stage, or, when no pixel can be read or
// written, copies nothing.
TEST_F(CopyBands, StagesReportWhatTheyCannotDo) {
  struct Case {
    const char* text;
    int srcDepth, dstDepth, maskDepth;
    SInt16 mode;
    bool copies;
  } cases[] = {
      {"Undefined PVToRGBProc case", 24, 32, 0, srcCopy, false},
      {"Undefined RGBToPVProc case", 32, 3, 0, srcCopy, false},
      {"Undefined DitherProc case", 32, 8, 0, srcOr + 64, true},
      {"Undefined PixelValueMaskProc case", 32, 32, 24, srcCopy, true},
      {"Undefined RGBCombineProc case", 32, 32, 0, 20, true},
      {nullptr, 32, 32, 0, srcOr + 64, false},  // direct pixels: no dithering; black stays
  };
  CTabHandle eight = GetCTable(8);
  for (const Case& c : cases) {
    Pixels src(16, 8, c.srcDepth == 24 ? 32 : c.srcDepth);
    src.map.pixelSize = SInt16(c.srcDepth);
    std::memset(src.bytes.data(), 0x40, src.bytes.size());  // dark grey
    Pixels dst(16, 8, c.dstDepth == 3 ? 8 : c.dstDepth, eight);
    dst.map.pixelSize = SInt16(c.dstDepth);
    Pixels maskPixels(16, 8, 32);
    maskPixels.map.pixelSize = SInt16(c.maskDepth);
    std::vector<UInt8> before = dst.bytes;
    Rect all = R(0, 0, 16, 8);
    capture.Clear();
    if (c.maskDepth)
      CopyMask(src.Bits(), maskPixels.Bits(), dst.Bits(), &all, &all, &all);
    else
      CopyBits(src.Bits(), dst.Bits(), &all, &all, c.mode, nullptr);
    const char* what = c.text ? c.text : "no report";
    ASSERT_EQ(capture.Reports().size(), c.text ? 1u : 0u) << what;
    if (c.text) {
      EXPECT_NE(capture.Reports()[0].find(c.text), std::string::npos) << capture.Reports()[0];
    }
    EXPECT_EQ(dst.bytes != before, c.copies) << what;
  }
  DisposeCTable(eight);
}

}  // namespace
