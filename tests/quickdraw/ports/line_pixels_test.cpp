// One-pixel lines pixel by pixel: every direction up to a length, each
// compared with GDI's own line and its end pixel drawn on a second DIB (the
// Macintosh pen covers both ends, GDI's LineTo leaves out the last), in the
// pen modes that copy, invert and erase.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <random>
#include <string>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

constexpr int kSize = 256;

// A 32-bit top-down DIB whose pixels are read straight from memory: the
// sweeps below look at millions of them.
class Surface : public Canvas {
 public:
  Surface() : Canvas(kSize) {}
  void Fill(uint32_t colour, const RECT& r = kAll) { Canvas::Fill(colour, r); }
  // The first pixel of r where two surfaces differ, as "x,y", or "".
  std::string FirstDifference(const Surface& other, const RECT& r = kAll) const {
    GdiFlush();
    for (int y = r.top; y < r.bottom; ++y)
      for (int x = r.left; x < r.right; ++x)
        if (Black(x, y) != other.Black(x, y)) return std::to_string(x) + "," + std::to_string(y);
    return "";
  }
  static constexpr RECT kAll{0, 0, kSize, kSize};
};

// GDI's line from (h0, v0) to (h1, v1) with the end pixel added, in black
// (or white over black when erasing).
void ReferenceLine(const Surface& s, int h0, int v0, int h1, int v1, bool erase) {
  HPEN pen = CreatePen(PS_SOLID, 1, erase ? RGB(255, 255, 255) : RGB(0, 0, 0));
  HGDIOBJ old = SelectObject(s.Dc(), pen);
  MoveToEx(s.Dc(), h0, v0, nullptr);
  LineTo(s.Dc(), h1, v1);
  SetPixelV(s.Dc(), h1, v1, erase ? RGB(255, 255, 255) : RGB(0, 0, 0));
  SelectObject(s.Dc(), old);
  DeleteObject(pen);
}

class LinePixels : public PortTest {
 protected:
  void SetUp() override {
    PortTest::SetUp();
    KWE_SwaphDC(drawn.Dc(), true);
  }
  Surface drawn, expected;
};

// Every direction with |dh|, |dv| up to 40 from the middle, in patCopy and
// patXor over white (both must set each pixel of the line exactly once) and
// in patBic over black.
TEST_F(LinePixels, EveryDirectionMatchesGdisLineWithItsEndPixel) {
  const struct {
    SInt16 mode;
    uint32_t ground;
  } modes[] = {{patCopy, 0xFFFFFF}, {patXor, 0xFFFFFF}, {patBic, 0x000000}};
  constexpr int kReach = 40, kMiddle = 128;
  // Room for a pixel too many at either end.
  const RECT around{kMiddle - kReach - 2, kMiddle - kReach - 2, kMiddle + kReach + 3,
                    kMiddle + kReach + 3};
  for (const auto& m : modes) {
    PenMode(m.mode);
    for (int dv = -kReach; dv <= kReach; ++dv) {
      for (int dh = -kReach; dh <= kReach; ++dh) {
        drawn.Fill(m.ground, around);
        expected.Fill(m.ground, around);
        MoveTo(kMiddle, kMiddle);
        LineTo(SInt16(kMiddle + dh), SInt16(kMiddle + dv));
        ReferenceLine(expected, kMiddle, kMiddle, kMiddle + dh, kMiddle + dv, m.ground == 0);
        ASSERT_EQ(drawn.FirstDifference(expected, around), "")
            << "mode " << m.mode << " from the middle by " << dh << "," << dv;
      }
    }
  }
}

// Random lines, long ones and ones reaching past the DIB's edges, in chains
// that alternate between two ports over the same DC: each line starts at
// its own port's pen, never where the DC's position was left. Replay a
// failure with its seed.
TEST_F(LinePixels, SeededChainsOnTwoPortsSharingADc) {
  GrafPort other;
  GrafPtr ours = nullptr;
  GetPort(&ours);
  OpenPort(&other);
  KWE_SwaphDC(drawn.Dc(), true);
  for (unsigned seed = 1; seed <= 24; ++seed) {
    std::mt19937 random(seed);
    auto coordinate = [&] { return int(random() % (kSize + 120)) - 60; };
    drawn.Fill(0xFFFFFF);
    expected.Fill(0xFFFFFF);
    int pens[2][2];
    GrafPtr ports[2] = {ours, &other};
    for (int p = 0; p < 2; ++p) {
      SetPort(ports[p]);
      pens[p][0] = coordinate();
      pens[p][1] = coordinate();
      MoveTo(SInt16(pens[p][0]), SInt16(pens[p][1]));
    }
    for (int step = 0; step < 16; ++step) {
      int p = int(random() % 2), h = coordinate(), v = coordinate();
      SetPort(ports[p]);
      LineTo(SInt16(h), SInt16(v));
      ReferenceLine(expected, pens[p][0], pens[p][1], h, v, false);
      ASSERT_EQ(drawn.FirstDifference(expected), "")
          << "seed " << seed << " step " << step << ": port " << p << " from " << pens[p][0] << ","
          << pens[p][1] << " to " << h << "," << v;
      pens[p][0] = h;
      pens[p][1] = v;
    }
  }
  SetPort(ours);
  ClosePort(&other);
  EXPECT_EQ(vars.thePort, ours);
}

}  // namespace
