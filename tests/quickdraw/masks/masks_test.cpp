// The mask calls through the DLL: SeedFill and CalcMask on an
// application's rows, CalcCMask and KWE_CreateMask of bitmaps in memory
// (their mask handle and region looked at pixel by pixel).
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class Masks : public PortTest {};

// A 32 x 32 bitmap (rows of 4 bytes) holding a ring around (16, 16).
struct Ring {
  std::vector<UInt8> rows = std::vector<UInt8>(4 * 32, 0);
  BitMap bits{reinterpret_cast<Ptr>(rows.data()), 4, Rect{0, 0, 32, 32}};
  Ring() {
    for (int y = 0; y < 32; ++y)
      for (int x = 0; x < 32; ++x) {
        int d = (x - 16) * (x - 16) + (y - 16) * (y - 16);
        if (d >= 64 && d <= 100) rows[y * 4 + x / 8] |= UInt8(0x80 >> (x % 8));
      }
  }
};

bool Bit(const UInt8* rows, int rowBytes, int x, int y) {
  return rows[y * rowBytes + x / 8] & (0x80 >> (x % 8));
}

// A ring through every mask call: SeedFill from its centre gives the
// inside, CalcMask and CalcCMask the disc (ring and inside), and
// KWE_CreateMask the disc with calc, as rows and as a region.
TEST_F(Masks, RingThroughEveryMaskCall) {
  Ring ring;
  std::vector<UInt8> inside(4 * 32, 0), disc(4 * 32, 0), colour(4 * 32, 0);
  SeedFill(ring.rows.data(), inside.data(), 4, 4, 32, 2, 16, 16);
  CalcMask(ring.rows.data(), disc.data(), 4, 4, 32, 2);
  BitMap dst{reinterpret_cast<Ptr>(colour.data()), 4, Rect{0, 0, 32, 32}};
  RGBColor seed{0x1234, 0, 0xFFFF};
  CalcCMask(&ring.bits, &dst, &ring.bits.bounds, &dst.bounds, &seed, nullptr, 0);
  Handle calc = KWE_CreateMask(&ring.bits, true, false);
  RgnHandle region = reinterpret_cast<RgnHandle>(KWE_CreateMask(&ring.bits, true, true));
  ASSERT_TRUE(calc && region);
  EXPECT_EQ(GetHandleSize(calc), 4 * 32);
  for (int y = 0; y < 32; ++y)
    for (int x = 0; x < 32; ++x) {
      bool inDisc = Bit(disc.data(), 4, x, y);
      int d = (x - 16) * (x - 16) + (y - 16) * (y - 16);
      ASSERT_EQ(Bit(inside.data(), 4, x, y), d < 64) << x << "," << y;
      ASSERT_EQ(inDisc, d <= 100) << x << "," << y;
      ASSERT_EQ(Bit(colour.data(), 4, x, y), inDisc) << x << "," << y;
      ASSERT_EQ(Bit(reinterpret_cast<UInt8*>(*calc), 4, x, y), inDisc) << x << "," << y;
      ASSERT_EQ(PtInRgn(Point{SInt16(y), SInt16(x)}, region), inDisc) << x << "," << y;
    }
  DisposeHandle(calc);
  DisposeRgn(region);
  // Rows shorter than the words asked for are refused, not overrun; empty
  // and missing bitmaps make no mask.
  std::vector<UInt8> untouched(4 * 32, 0);
  SeedFill(ring.rows.data(), untouched.data(), 2, 4, 32, 2, 1, 1);
  CalcMask(ring.rows.data(), untouched.data(), 4, 2, 32, 2);
  EXPECT_EQ(untouched, std::vector<UInt8>(4 * 32, 0));
  BitMap empty{reinterpret_cast<Ptr>(untouched.data()), 4, Rect{5, 5, 5, 40}};
  EXPECT_EQ(KWE_CreateMask(&empty, true, false), nullptr);
}

// Columns 0-7 red, 8-15 green, 16-23 white, in a 32-bit pixel map in memory.
struct Stripes {
  std::vector<UInt8> bytes = std::vector<UInt8>(24 * 4 * 8, 0);
  PixMap map{};
  Stripes() {
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 24; ++x) {
        UInt8* p = &bytes[(y * 24 + x) * 4];
        p[1] = x < 8 || x >= 16 ? 0xFF : 0;
        p[2] = x >= 8 ? 0xFF : 0;
        p[3] = x >= 16 ? 0xFF : 0;
      }
    map.baseAddr = reinterpret_cast<Ptr>(bytes.data());
    map.rowBytes = SInt16(0x8000 | (24 * 4));
    map.bounds = Rect{0, 0, 8, 24};
    map.pixelType = 16;
    map.pixelSize = 32;
    map.cmpCount = 3;
    map.cmpSize = 8;
  }
};

// KWE_CreateMask of every depth QuickDraw has: a checkerboard of 3 x 3
// squares of black and white, 13 pixels wide, in rows with room to spare
// whose spare bits are set, gives the black squares' bits and nothing past
// the right edge. A depth QuickDraw has not makes no mask and says so.
TEST_F(Masks, CreateMaskOfEveryDepth) {
  const int depths[] = {1, 2, 4, 8, 16, 32, 3, 24};
  for (int depth : depths) {
    const int rowBytes = (13 * depth + 7) / 8 / 2 * 2 + 4;
    std::vector<UInt8> bytes(size_t(rowBytes) * 7, 0xFF);
    PixMap map{};
    map.baseAddr = reinterpret_cast<Ptr>(bytes.data());
    map.rowBytes = SInt16(rowBytes | (depth == 1 ? 0 : 0x8000));
    map.bounds = Rect{0, 0, 7, 13};
    map.pixelSize = SInt16(depth);
    // The 4-bit table's first four colours serve the 2-bit pixels: white,
    // yellow, orange and red, the last nearer to black.
    map.pmTable = depth <= 8 ? GetCTable(SInt16(depth == 2 ? 4 : depth)) : nullptr;
    if (depth == 2) (**map.pmTable).ctSize = 3;
    const uint32_t black = depth == 1 ? 1 : depth <= 8 ? (1u << depth) - 1 : 0;
    const uint32_t white = depth == 1 ? 0 : depth <= 8 ? 0 : depth == 16 ? 0x7FFF : 0xFFFFFF;
    // Pixels of 16 and 32 bits are little-endian words; packed ones run
    // from the high bit.
    auto put = [&](int x, int y, uint32_t v) {
      UInt8* row = &bytes[size_t(y) * rowBytes];
      if (depth >= 16) {
        for (int k = 0; k < depth / 8; ++k) row[x * depth / 8 + k] = UInt8(v >> (8 * k));
        return;
      }
      int shift = 8 - depth - (x * depth) % 8;
      UInt8 bits = UInt8(((1u << depth) - 1) << shift);
      row[x * depth / 8] = UInt8((row[x * depth / 8] & ~bits) | ((v << shift) & bits));
    };
    for (int y = 0; y < 7 && depth != 3; ++y)
      for (int x = 0; x < 13; ++x) put(x, y, (x / 3 + y / 3) % 2 ? black : white);
    capture.Clear();
    Handle mask = KWE_CreateMask(reinterpret_cast<const BitMap*>(&map), false, false);
    if (depth == 3 || depth == 24) {
      EXPECT_EQ(mask, nullptr) << depth;
      ASSERT_EQ(capture.Reports().size(), 1u) << depth;
      EXPECT_NE(capture.Reports()[0].find("Undefined CreateMaskCombineProc case"),
                std::string::npos);
    } else {
      ASSERT_NE(mask, nullptr) << depth;
      EXPECT_TRUE(capture.Reports().empty()) << depth;
      for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 16; ++x)
          ASSERT_EQ(Bit(reinterpret_cast<UInt8*>(*mask), 2, x, y), x < 13 && (x / 3 + y / 3) % 2)
              << "depth " << depth << " at " << x << "," << y;
      DisposeHandle(mask);
    }
    if (map.pmTable) DisposeCTable(map.pmTable);
  }
}

int g_offered = 0;
// Red is left out of the mask, green put in; other colours are declined.
Boolean KWE_CALL RedOutGreenIn(RGBColor* rgb, SInt32* position) {
  ++g_offered;
  if (rgb->red == 0xFFFF && rgb->green == 0 && rgb->blue == 0) {
    *position = 0;
    return true;
  }
  if (rgb->red == 0 && rgb->green == 0xFFFF) {
    *position = 1;
    return true;
  }
  return false;
}
// A match procedure decides the colours it answers for; the colours it
// declines are matched as without one (all but white in the mask).
TEST_F(Masks, CalcCMaskAsksTheMatchProcedure) {
  const std::pair<ProcPtr, const char*> cases[] = {
      {nullptr, "################........"},
      {reinterpret_cast<ProcPtr>(&RedOutGreenIn), "........########........"},
  };
  for (auto [match, want] : cases) {
    Stripes src;
    std::vector<UInt8> out(4 * 8, 0);
    BitMap dst{reinterpret_cast<Ptr>(out.data()), 4, Rect{0, 0, 8, 24}};
    RGBColor seed{0, 0, 0};
    g_offered = 0;
    CalcCMask(reinterpret_cast<const BitMap*>(&src.map), &dst, &src.map.bounds, &dst.bounds, &seed,
              match, 7);
    std::string row;
    for (int x = 0; x < 24; ++x) row += Bit(out.data(), 4, x, 4) ? '#' : '.';
    EXPECT_EQ(row, want);
    EXPECT_EQ(g_offered, match ? 24 * 8 : 0) << "every pixel offered once";
  }
}

}  // namespace
