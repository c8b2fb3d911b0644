// CopyBits through the DLL: copies between memory pixel maps and onto a
// port drawing into a DIB section, read back and compared with the
// reference model of the pipeline.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <vector>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "memory_pixels.h"
#include "pipeline_reference.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

Rect R(int l, int t, int r, int b) { return Rect{SInt16(t), SInt16(l), SInt16(b), SInt16(r)}; }

class CopyBitsTest : public PortTest {
 protected:
  // A colour table handle of the reference model's colours.
  CTabHandle TableOf(const std::vector<reference::Colour>& colours, SInt32 seed) {
    Handle h = NewHandleClear(static_cast<Size>(8 + 8 * colours.size()));
    auto* t = reinterpret_cast<ColorTable*>(*h);
    t->ctSeed = seed;
    t->ctSize = static_cast<SInt16>(colours.size() - 1);
    for (size_t i = 0; i < colours.size(); ++i)
      t->ctTable[i] =
          ColorSpec{static_cast<SInt16>(i),
                    RGBColor{UInt16(colours[i].r), UInt16(colours[i].g), UInt16(colours[i].b)}};
    tables.push_back(h);
    return reinterpret_cast<CTabHandle>(h);
  }
  // A pixel map over the image's bytes: a record of the application's own
  // (a 1-bit image as a plain bitmap when asBitMap), or one NewPixMap made,
  // with the library's fields after the published ones and the direct
  // depths described as an application describes them.
  const BitMap* MapOf(reference::Image& im, bool asBitMap, bool library = false, SInt32 seed = 0) {
    PixMap* pm = &own.emplace_back();
    if (library) {
      PixMapHandle made = NewPixMap();
      EXPECT_NE(made, nullptr);
      made_.push_back(made);
      pm = *made;
      if (im.depth <= 8) DisposeCTable(pm->pmTable);  // replaced below
    }
    pm->baseAddr = reinterpret_cast<Ptr>(im.bytes.data());
    pm->rowBytes = static_cast<SInt16>(im.rowBytes | (asBitMap ? 0 : 0x8000));
    pm->bounds = Rect{0, 0, SInt16(im.height), SInt16(im.width)};
    pm->pixelSize = static_cast<SInt16>(im.depth);
    pm->pixelType = im.depth > 8 ? 16 : 0;
    pm->cmpCount = im.depth > 8 ? 3 : 1;
    pm->cmpSize = static_cast<SInt16>(im.depth == 32 ? 8 : im.depth == 16 ? 5 : im.depth);
    if (im.depth <= 8) pm->pmTable = TableOf(im.table, seed ? seed : im.depth);  // one a depth
    return reinterpret_cast<const BitMap*>(pm);
  }
  // The case's mask as a region in the destination's coordinates.
  RgnHandle MaskOf(const reference::Case& c, int width, int height) {
    SInt16 rowBytes = SInt16((width + 15) / 16 * 2);
    std::vector<UInt8> rows(size_t(rowBytes) * height);
    for (int y = c.dt; y < c.db; ++y)
      for (int x = c.dl; x < c.dr; ++x) {
        int mx = x - c.dl, my = y - c.dt;
        if (c.mask[size_t(my) * c.maskRowBytes + mx / 8] >> (7 - mx % 8) & 1)
          rows[size_t(y) * rowBytes + x / 8] |= UInt8(0x80 >> (x % 8));
      }
    BitMap bits{reinterpret_cast<Ptr>(rows.data()), rowBytes,
                Rect{0, 0, SInt16(height), SInt16(width)}};
    RgnHandle rgn = NewRgn();
    EXPECT_EQ(BitMapToRegion(rgn, &bits), noErr);
    return rgn;
  }
  // The case's colours as the port keeps them (a port may take only some
  // colours): transparent leaves the background out, and a 1-bit source
  // is colorized with both.
  void UseColours(reference::Case& c) {
    RGBColor bk{UInt16(c.bk.r), UInt16(c.bk.g), UInt16(c.bk.b)};
    RGBColor fg{UInt16(c.fg.r), UInt16(c.fg.g), UInt16(c.fg.b)};
    RGBBackColor(&bk);
    RGBForeColor(&fg);
    GetBackColor(&bk);
    GetForeColor(&fg);
    c.bk = reference::Colour{bk.red, bk.green, bk.blue};
    c.fg = reference::Colour{fg.red, fg.green, fg.blue};
  }
  // Case n between memory pixel maps, compared with the reference model.
  void CopyInMemory(uint32_t n, int srcDepth, int dstDepth, uint64_t* sum) {
    reference::Drawn want = reference::Make(n, srcDepth, dstDepth),
                     got = reference::Make(n, srcDepth, dstDepth);
    const reference::Case& c = got.c;
    want.c.op = reference::Colour{0, 0, 0};  // the plain port's op colour
    UseColours(want.c);
    reference::Copy(want.src, want.dst, want.c);
    const BitMap* src = MapOf(got.src, got.src.depth == 1 && (n & 1), n % 3 == 0);
    // Tables of the same colours but another seed are not the same table.
    const BitMap* dst = MapOf(got.dst, got.dst.depth == 1 && (n & 2), n % 5 == 0,
                              c.sameTable ? 0 : 100 + got.dst.depth);
    RgnHandle mask = c.masked ? MaskOf(c, got.dst.width, got.dst.height) : nullptr;
    Rect s = R(c.sl, c.st, c.sr, c.sb), d = R(c.dl, c.dt, c.dr, c.db);
    CopyBits(src, dst, &s, &d, SInt16(c.mode), mask);
    if (mask) DisposeRgn(mask);
    ASSERT_EQ(got.dst.bytes, want.dst.bytes) << "case " << n << ": depth " << got.src.depth
                                             << " to " << got.dst.depth << ", mode " << c.mode;
    *sum = reference::Fold(*sum, got.dst.bytes);
  }
  void TearDown() override {
    for (Handle h : tables) DisposeHandle(h);
    for (PixMapHandle pm : made_) {
      if ((**pm).pixelSize <= 8) (**pm).pmTable = nullptr;  // one of tables
      DisposePixMap(pm);
    }
    PortTest::TearDown();
  }
  std::vector<Handle> tables;
  std::deque<PixMap> own;
  std::vector<PixMapHandle> made_;
};

// Cases of the reference sweep through the DLL: first between memory pixel
// maps (every depth, scaled, masked), then onto the port's DIB section as a
// 32-bit destination (GDI's own stretching rounds differently, so scaled
// copies GDI makes are left to the next test).
TEST_F(CopyBitsTest, SeededSweepThroughTheDllMatchesTheReferenceModel) {
  uint64_t sum = reference::kFoldStart;
  for (uint32_t n = 5001; n <= 5600; ++n) {
    CopyInMemory(n, 0, 0, &sum);
    if (HasFatalFailure()) return;
  }
  // Every pair of depths, a few cases each.
  const int depths[] = {1, 2, 4, 8, 16, 32};
  uint32_t pairCase = 7001;
  for (int from : depths)
    for (int to : depths)
      for (int k = 0; k < 6; ++k, ++pairCase) {
        CopyInMemory(pairCase, from, to, &sum);
        if (HasFatalFailure()) return;
      }
  int onPort = 0;
  for (uint32_t n = 6001; n <= 6400; ++n) {
    reference::Drawn want = reference::Make(n);
    reference::Case& c = want.c;
    bool scaled = c.sr - c.sl != c.dr - c.dl || c.sb - c.st != c.db - c.dt;
    bool byGdi = (c.mode & 63) < 16 && !c.masked;
    if ((scaled && byGdi) || (byGdi && want.src.depth == 16)) continue;
    ++onPort;
    c.op = reference::Colour{0, 0, 0};
    // The destination is what the canvas holds, as 32-bit pixels.
    want.dst.depth = 32;
    want.dst.rowBytes = 4 * want.dst.width;
    want.dst.table.clear();
    want.dst.bytes.assign(size_t(want.dst.rowBytes) * want.dst.height, 0);
    canvas.Clear();
    for (int y = 0; y < want.dst.height; ++y)
      for (int x = 0; x < want.dst.width; ++x) {
        uint32_t v = (n * 2654435761u + uint32_t(x * 40503 + y * 9973)) & 0xFFFFFF;
        want.dst.Put(x, y, v);
        SetPixelV(canvas.Dc(), x, y, RGB(v >> 16, v >> 8 & 255, v & 255));
      }
    UseColours(c);
    const BitMap* src = MapOf(want.src, want.src.depth == 1 && (n & 1));
    RgnHandle mask = c.masked ? MaskOf(c, want.dst.width, want.dst.height) : nullptr;
    Rect s = R(c.sl, c.st, c.sr, c.sb), d = R(c.dl, c.dt, c.dr, c.db);
    CopyBits(src, &port.portBits, &s, &d, SInt16(c.mode), mask);
    if (mask) DisposeRgn(mask);
    reference::Copy(want.src, want.dst, c);
    for (int y = 0; y < want.dst.height; ++y)
      for (int x = 0; x < want.dst.width; ++x)
        ASSERT_EQ(canvas.Pixel(x, y), want.dst.Get(x, y) & 0xFFFFFF)
            << "case " << n << " at " << x << "," << y << ": depth " << want.src.depth << ", mode "
            << c.mode;
    sum = reference::Fold(sum, want.dst.bytes);
  }
  std::printf("CopyBits sweep through the DLL: %d cases on the port, checksum %016llx\n", onPort,
              static_cast<unsigned long long>(sum));
  EXPECT_GT(onPort, 150);
}

// A 1-bit bitmap onto the port (the sweep covers unscaled copies there): a
// twice-as-large destination shows each source pixel as 2 x 2, a source
// reaching past the bitmap is cut, a mask region in local coordinates
// limits the pixels that change, and the port's DC is copied within itself.
TEST_F(CopyBitsTest, BitmapsOntoThePortScaledMaskedAndWithinIt) {
  UInt8 rows[8 * 2] = {};
  for (int y = 0; y < 8; ++y) rows[y * 2] = UInt8(0xF0 >> (y & 1));  // a ragged left half
  BitMap bits{reinterpret_cast<Ptr>(rows), 2, R(0, 0, 16, 8)};
  Rect s = R(0, 0, 8, 8), twice = R(20, 20, 36, 36);
  CopyBits(&bits, &port.portBits, &s, &twice, 0, nullptr);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x) {
      bool black = (rows[(y / 2) * 2] >> (7 - x / 2)) & 1;
      ASSERT_EQ(canvas.Pixel(20 + x, 20 + y), black ? kBlack : kWhite) << x << "," << y;
    }

  // The part of the source outside the bitmap is left out and the
  // destination shrinks with it, unscaled.
  Rect partial = R(-4, 0, 4, 8), shifted = R(60, 60, 68, 68);
  CopyBits(&bits, &port.portBits, &partial, &shifted, 0, nullptr);
  EXPECT_EQ(canvas.Row(60, 58, 70), "......####..");
  EXPECT_EQ(canvas.Row(61, 58, 70), ".......###..");

  // With the port's origin moved, the rectangles and the mask land where
  // the origin puts them on the DC.
  SetOrigin(100, 100);
  RgnHandle moved = RegionOf({R(140, 140, 144, 148)});
  UInt8 black[16];
  memset(black, 0xFF, sizeof black);
  BitMap ink{reinterpret_cast<Ptr>(black), 2, R(0, 0, 16, 8)};
  Rect local = R(140, 140, 148, 148);
  CopyBits(&ink, &port.portBits, &s, &local, 0, moved);
  SetOrigin(0, 0);
  DisposeRgn(moved);
  EXPECT_EQ(BlackIn(40, 40, 48, 48), 32);
  EXPECT_EQ(BlackIn(44, 40, 48, 48), 0);

  // Within the port: the left block moved right by 10.
  Rect from = R(40, 40, 44, 48), to = R(50, 40, 54, 48);
  CopyBits(&port.portBits, &port.portBits, &from, &to, 0, nullptr);
  EXPECT_EQ(BlackIn(50, 40, 54, 48), 32);
}

// ScrollRect moves the pixels of the part of its rectangle that the port
// shows and does not clip, erases what they leave and hands that back; the
// rest of the port keeps its pixels. Each case against a model of the canvas.
TEST_F(CopyBitsTest, ScrollRectMovesOnlyWhatIsShownAndErasesWhatItLeaves) {
  struct Case {
    Rect r;
    int dh, dv;
    Rect clip;
  } cases[] = {
      {R(10, 10, 60, 50), 5, 0, R(0, 0, 256, 256)},
      {R(10, 10, 60, 50), 0, -7, R(0, 0, 256, 256)},
      {R(10, 10, 60, 50), -3, 4, R(20, 0, 256, 30)},  // the clip cuts the rectangle
      {R(10, 10, 60, 50), 70, 0, R(0, 0, 256, 256)},  // moved wholly out: all erased
  };
  constexpr int kSize = 72;
  for (const Case& c : cases) {
    uint32_t before[kSize][kSize];
    for (int y = 0; y < kSize; ++y)
      for (int x = 0; x < kSize; ++x) {
        before[y][x] = (x * 7 + y * 3) % 5 < 2 ? kBlack : kWhite;
        canvas.Fill(before[y][x], RECT{x, y, x + 1, y + 1});
      }
    ClipRect(&c.clip);
    RgnHandle update = NewRgn();
    ScrollRect(&c.r, SInt16(c.dh), SInt16(c.dv), update);
    Rect all = R(-32000, -32000, 32000, 32000);
    ClipRect(&all);
    auto movable = [&](int x, int y) {
      Point p{SInt16(y), SInt16(x)};
      return PtInRect(p, &c.r) && PtInRect(p, &c.clip);
    };
    for (int y = 0; y < kSize; ++y)
      for (int x = 0; x < kSize; ++x) {
        bool moved = movable(x, y) && movable(x - c.dh, y - c.dv);
        uint32_t want = moved ? before[y - c.dv][x - c.dh] : movable(x, y) ? kWhite : before[y][x];
        ASSERT_EQ(canvas.Pixel(x, y), want)
            << "scroll by " << c.dh << "," << c.dv << " at " << x << "," << y;
        ASSERT_EQ(PtInRgn(Point{SInt16(y), SInt16(x)}, update), movable(x, y) && !moved)
            << "update region at " << x << "," << y;
      }
    DisposeRgn(update);
  }
}

// CopyMask and CopyDeepMask: a checkerboard mask twice as coarse as the
// destination lets through 2 x 2 blocks, onto the port and into memory,
// where a region narrows it further.
TEST_F(CopyBitsTest, MaskPicturesLetThroughOnlyTheirSetPixels) {
  UInt8 black[16];
  memset(black, 0xFF, sizeof black);
  BitMap ink{reinterpret_cast<Ptr>(black), 2, R(0, 0, 16, 8)};
  UInt8 checks[4 * 2] = {0xA0, 0, 0x50, 0, 0xA0, 0, 0x50, 0};  // 4 x 4 of 1 0 1 0 / 0 1 0 1
  BitMap mask{reinterpret_cast<Ptr>(checks), 2, R(0, 0, 4, 4)};
  Rect s = R(0, 0, 8, 8), m = R(0, 0, 4, 4), d = R(8, 8, 16, 16);
  CopyMask(&ink, &mask, &port.portBits, &s, &m, &d);
  EXPECT_EQ(canvas.Rows(8, 12, 8, 16), "##..##..|##..##..|..##..##|..##..##|");

  UInt8 memory[16] = {};
  BitMap into{reinterpret_cast<Ptr>(memory), 2, R(0, 0, 16, 8)};
  RgnHandle top = RegionOf({R(0, 0, 8, 2)});
  CopyDeepMask(&ink, &mask, &into, &s, &m, &s, 0, top);
  EXPECT_EQ(memory[0], 0xCC);
  EXPECT_EQ(memory[2], 0xCC);
  EXPECT_EQ(memory[4], 0);  // outside the region
  DisposeRgn(top);
}

// What an application gets wrong draws nothing and leaves GDI's objects as
// they were; a pixel map without a colour table says so.
TEST_F(CopyBitsTest, BadInputDrawsNothing) {
  Pixels pm(8, 8, 8);
  std::fill(pm.bytes.begin(), pm.bytes.end(), UInt8(0xFF));
  Rect s = R(0, 0, 8, 8);
  CopyBits(pm.Bits(), &port.portBits, &s, &s, 0, nullptr);
  ASSERT_EQ(capture.Reports().size(), 1u);
  EXPECT_NE(capture.Reports()[0].find("Oops! Copybits got a NULL color table."), std::string::npos);

  pm.map.pmTable = GetCTable(8);
  const struct {
    int depth, rowBytes;
    bool null;
    Rect src, dst;
  } cases[] = {
      {3, 8, false, s, s},                      // no such depth
      {8, 7, false, s, s},                      // odd rowBytes
      {8, 4, false, s, s},                      // too short for 8 pixels
      {8, 8, true, s, s},                       // no pixels
      {8, 8, false, R(4, 4, 2, 2), s},          // inverted
      {8, 8, false, R(900, 900, 990, 990), s},  // far outside
      {8, 8, false, s, R(-3000, -3000, -2990, -2990)},
  };
  // Twice: the first report's message box makes GDI objects of its own.
  int before = 0;
  for (int pass = 0; pass < 2; ++pass) {
    if (pass == 1) before = LiveGdiObjects();
    for (const auto& c : cases) {
      pm.map.pixelSize = SInt16(c.depth);
      pm.map.rowBytes = SInt16(c.rowBytes | 0x8000);
      pm.map.baseAddr = c.null ? nullptr : reinterpret_cast<Ptr>(pm.bytes.data());
      CopyBits(pm.Bits(), &port.portBits, &c.src, &c.dst, 0, nullptr);
      EXPECT_EQ(BlackIn(0, 0, 16, 16), 0) << "depth " << c.depth << " rowBytes " << c.rowBytes;
    }
  }
  EXPECT_EQ(LiveGdiObjects(), before);
  DisposeCTable(pm.map.pmTable);
}

}  // namespace
