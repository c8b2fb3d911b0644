// Pixel patterns ('ppat') and colour icons ('cicn') from a resource file on
// disk, painted into a colour port on a DIB section: their own pixels, an
// icon through its mask at its size and scaled; damaged resources give null.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/regions/region_canvas.h"
#include "resource_builder/resource_image.h"
#include "support/resource_image_file.h"

namespace {

using namespace kwe_test;
using resource_builder::Bytes;

// Both kinds hold 8 by 8 pixels of 4 bits, (x + y) % 4 over these colours.
const uint32_t kColours[4] = {0xFF0000, 0x00FF00, 0x0000FF, 0x000000};

void Word(Bytes& b, int v) { b.insert(b.end(), {UInt8(v >> 8), UInt8(v)}); }
void Long(Bytes& b, long v) {
  Word(b, int(v >> 16));
  Word(b, int(v & 0xFFFF));
}
// A PixMap of the 8 by 8 pixels (rowBytes 0: none) with its table at tableAt.
void MapRecord(Bytes& b, int rowBytes, long tableAt) {
  Long(b, 0);
  Word(b, 0x8000 | rowBytes);
  for (int v : {0, 0, 8, 8, 0, 0}) Word(b, v);
  Long(b, 0);
  Long(b, 0x480000);
  Long(b, 0x480000);
  for (int v : {0, 4, 1, 4}) Word(b, v);
  Long(b, 0);
  Long(b, tableAt);
  Long(b, 0);
}
void Table(Bytes& b) {
  Long(b, 0);
  Word(b, 0);
  Word(b, 3);
  for (int i = 0; i < 4; ++i) {
    Word(b, i);
    for (int shift : {16, 8, 0}) Word(b, int((kColours[i] >> shift) & 0xFF) * 0x0101);
  }
}
void Pixels(Bytes& b) {
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; x += 2) b.push_back(UInt8(((x + y) % 4) << 4 | (x + 1 + y) % 4));
}

Bytes PixelPattern(long tableAt = 110, int type = 1) {
  Bytes b;
  Word(b, type);
  Long(b, 28);  // patMap
  Long(b, 78);  // patData
  Long(b, 0);
  Word(b, -1);
  Long(b, 0);
  b.insert(b.end(), {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55});
  MapRecord(b, 4, tableAt);
  Pixels(b);
  Table(b);
  return b;
}

// Masked to the lower-left triangle; its 1-bit image a checkerboard.
Bytes ColourIcon(int pixelRowBytes) {
  Bytes b;
  MapRecord(b, pixelRowBytes, 0);
  for (int i = 0; i < 2; ++i) {  // the mask and 1-bit BitMaps
    Long(b, 0);
    for (int v : {2, 0, 0, 8, 8}) Word(b, v);
  }
  Long(b, 0);
  for (int y = 0; y < 8; ++y) Word(b, ((0xFF00 >> (y + 1)) & 0xFF) << 8);
  for (int y = 0; y < 8; ++y) Word(b, y % 2 ? 0x5500 : 0xAA00);
  Table(b);
  if (pixelRowBytes) Pixels(b);
  return b;
}

class ColourResources : public PortTest {
 protected:
  void SetUp() override {
    PortTest::SetUp();
    Bytes shortPattern = PixelPattern(), shortIcon = ColourIcon(4), shortTable = PixelPattern();
    shortPattern.resize(20);
    shortTable.resize(110 + 8 + 8);  // the table's header and one of its four entries
    shortIcon.resize(120);
    using resource_builder::MakeResource;
    auto image = resource_builder::BuildResourceImage(
        {MakeResource("ppat", 128, PixelPattern()), MakeResource("ppat", 129, PixelPattern(4000)),
         MakeResource("ppat", 130, shortPattern), MakeResource("ppat", 131, PixelPattern(110, 0)),
         MakeResource("ppat", 132, shortTable), MakeResource("cicn", 128, ColourIcon(4)),
         MakeResource("cicn", 129, ColourIcon(0)), MakeResource("cicn", 130, shortIcon)});
    OpenResourceImage(image, "kwe_colour_", &file, &refNum);
    ClosePort(&port);
    OpenCPort(&colour);
    KWE_SwaphDC(canvas.Dc(), true);
    canvas.Clear();
  }
  void TearDown() override {
    CloseCPort(&colour);
    OpenPort(&port);  // what PortTest closes
    CloseResFile(refNum);
    DeleteFileA(file.c_str());
    PortTest::TearDown();
  }
  // Pixels of the 16 by 16 square at (left, top) that differ from the
  // pattern's colours.
  int Wrong(int left, int top) {
    int wrong = 0;
    for (int y = top; y < top + 16; ++y)
      for (int x = left; x < left + 16; ++x) wrong += canvas.Pixel(x, y) != kColours[(x + y) % 4];
    return wrong;
  }
  CGrafPort colour{};
  std::string file;
  SInt16 refNum = 0;
};

TEST_F(ColourResources, PixelPatternsPaintWithTheirOwnPixels) {
  PixPatHandle pp = GetPixPat(128);
  ASSERT_NE(pp, nullptr);
  EXPECT_EQ((**(**pp).patMap).pixelSize, 4);
  Rect r{0, 0, 16, 16}, second{32, 32, 48, 48}, third{64, 64, 72, 72};
  FillCRect(&r, pp);
  EXPECT_EQ(Wrong(0, 0), 0);
  // A copy paints the same, as the pen's pattern too.
  PixPatHandle copy = NewPixPat();
  CopyPixPat(pp, copy);
  DisposePixPat(pp);
  PenPixPat(copy);
  PaintRect(&second);
  EXPECT_EQ(Wrong(32, 32), 0);
  PenNormal();
  // An old-style pattern in a 'ppat' paints its 1-bit pattern.
  PixPatHandle plain = GetPixPat(131);
  ASSERT_NE(plain, nullptr);
  FillCRect(&third, plain);
  EXPECT_EQ(canvas.Row(64, 64, 72), "#.#.#.#.");
  DisposePixPat(plain);
  DisposePixPat(copy);
  for (SInt16 damaged : {129, 130, 132, 200}) EXPECT_EQ(GetPixPat(damaged), nullptr) << damaged;
  CopyPixPat(nullptr, nullptr);

  int before = 0;
  for (int i = 0; i < 300; ++i) {
    if (i == 1) before = LiveGdiObjects();  // the port's brush is made once
    PixPatHandle again = GetPixPat(128);
    FillCRect(&r, again);
    DisposePixPat(again);
  }
  EXPECT_EQ(LiveGdiObjects(), before);
}

TEST_F(ColourResources, IconsPlotTheirPixelsThroughTheirMask) {
  const struct {
    SInt16 id;
    int scale;
  } cases[] = {{128, 1}, {128, 2}, {129, 1}, {129, 3}};
  for (const auto& c : cases) {
    canvas.Clear();
    CIconHandle icon = GetCIcon(c.id);
    ASSERT_NE(icon, nullptr) << c.id;
    Rect r{20, 30, SInt16(20 + 8 * c.scale), SInt16(30 + 8 * c.scale)};
    PlotCIcon(&r, icon);
    for (int y = 0; y < 8 * c.scale; ++y)
      for (int x = 0; x < 8 * c.scale; ++x) {
        int ix = x / c.scale, iy = y / c.scale;
        uint32_t checker = (ix + iy) % 2 ? kWhite : kBlack;
        uint32_t want = ix > iy ? kWhite : c.id == 128 ? kColours[(ix + iy) % 4] : checker;
        ASSERT_EQ(canvas.Pixel(30 + x, 20 + y), want)
            << "icon " << c.id << " scale " << c.scale << " at " << x << "," << y;
      }
    DisposeCIcon(icon);
  }
  EXPECT_EQ(GetCIcon(130), nullptr);
  EXPECT_EQ(GetCIcon(131), nullptr);
  Rect r{0, 0, 8, 8};
  PlotCIcon(&r, nullptr);
}

}  // namespace
