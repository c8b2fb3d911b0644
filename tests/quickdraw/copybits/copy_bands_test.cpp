// Large copies go in bands: a copy taller than a band onto a port over a
// DIB section gives the pixels of the same copy into memory (which the
// pipeline makes in one piece), and many of them leave GDI objects and
// private bytes where they were. The pipeline stages' reports.
#include <gtest/gtest.h>
#include <windows.h>
// psapi.h needs windows.h's types first.
#include <psapi.h>

#include <cstring>
#include <random>
#include <vector>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "memory_pixels.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

Rect R(int l, int t, int r, int b) { return Rect{SInt16(t), SInt16(l), SInt16(b), SInt16(r)}; }

class CopyBands : public PortTest {};

// n greys from white to black, as an indexed depth's colour table.
CTabHandle Greys(int n) {
  Handle h = NewHandleClear(Size(8 + 8 * n));
  auto* t = reinterpret_cast<ColorTable*>(*h);
  t->ctSeed = 4000 + n;
  t->ctSize = SInt16(n - 1);
  for (int i = 0; i < n; ++i) {
    UInt16 v = UInt16(0xFFFF - i * 0xFFFF / (n - 1));
    t->ctTable[i] = ColorSpec{SInt16(i), RGBColor{v, v, v}};
  }
  return reinterpret_cast<CTabHandle>(h);
}

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
  CTabHandle eight = GetCTable(8), two = Greys(4);
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
