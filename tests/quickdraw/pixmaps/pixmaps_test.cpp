// Library pixel maps through the DLL: records made, copied and disposed;
// pixel maps over packed DIBs and over DDBs, Macintosh pixels copied into
// them, and DDB pixel maps flattened and made again.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "KWEPixMaps.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class PixelMaps : public PortTest {};

// A new pixel map describes the current port's device, here the canvas's
// 32-bit DIB section; a copy takes the other's fields, and its colours into
// its own table.
TEST_F(PixelMaps, CopiesKeepTheirOwnColourTable) {
  PixMapHandle pm = NewPixMap(), copy = NewPixMap();
  ASSERT_TRUE(pm && copy);
  EXPECT_EQ((**pm).pixelSize, 32);
  CTabHandle own = (**copy).pmTable;
  DisposeCTable((**pm).pmTable);
  (**pm).pmTable = GetCTable(4);
  (**pm).bounds = Rect{1, 2, 30, 40};
  (**pm).pixelSize = 4;
  CopyPixMap(pm, copy);
  EXPECT_EQ((**copy).pmTable, own);
  EXPECT_EQ((**own).ctTable[6].rgb.blue, 0xD4D4);
  EXPECT_EQ((**copy).bounds.right, 40);
  DisposePixMap(copy);
  DisposePixMap(pm);
}

// Pixel maps over packed DIBs: the record's depth and row lengths, the
// colour table in the DIB's order or reversed with spare greys, the DIB
// handed back, and CopyBits putting its bottom-up rows on the port.
TEST_F(PixelMaps, DibPixelMapsDescribeTheirDibAndDrawIt) {
  struct Packed {
    BITMAPINFOHEADER header;
    RGBQUAD colours[256];
    UInt8 bits[4096];
  };
  auto packed = [](int width, int height, int bitCount, int used) {
    Packed p{};
    p.header = {sizeof p.header, width, height, 1, WORD(bitCount), BI_RGB, 0, 0, 0, DWORD(used), 0};
    return p;
  };
  const struct {
    int width, bitCount;
    UInt16 rowBytes;
    SInt16 pixelSize, pixelType;
  } shapes[] = {{101, 24, 0x8000 + 404, 16, 16},
                {17, 1, 0x8000 + 4, 1, 0},
                {33, 1, 0x8000 + 6, 1, 0},
                {5, 4, 0x8000 + 4, 4, 0},
                {7, 8, 0x8000 + 8, 8, 0}};
  for (const auto& s : shapes) {
    Packed p = packed(s.width, 2, s.bitCount, 0);
    PixMapHandle pm = KWE_NewDIBPixMap(&p.header);
    ASSERT_NE(pm, nullptr) << s.width << " x " << s.bitCount;
    EXPECT_EQ(UInt16((**pm).rowBytes), s.rowBytes) << s.width << " x " << s.bitCount;
    EXPECT_EQ((**pm).pixelSize, s.pixelSize);
    EXPECT_EQ((**pm).pixelType, s.pixelType);
    EXPECT_EQ((**pm).bounds.right, s.width);
    DisposePixMap(pm);
  }
  for (int bitCount : {2, 16, 32, 0}) {  // 0: an 8-bit DIB run-length encoded
    Packed p = packed(8, 2, bitCount ? bitCount : 8, 0);
    if (!bitCount) p.header.biCompression = BI_RLE8;
    EXPECT_EQ(KWE_NewDIBPixMap(&p.header), nullptr) << bitCount;
  }
  PixMapHandle plain = NewPixMap();
  EXPECT_EQ(KWE_GetDIBFromPixMap(plain, nullptr), nullptr);
  DisposePixMap(plain);

  // 200 colours from white to black: the table keeps their order, and the
  // 56 spare entries are greys just above black.
  Packed grey = packed(4, 2, 8, 200);
  for (int i = 0; i < 200; ++i) {
    BYTE level = BYTE(255 - i * 255 / 199);
    grey.colours[i] = RGBQUAD{level, level, level, 0};
  }
  // The bits follow the 200 colours: the bottom row's first pixel, black.
  reinterpret_cast<UInt8*>(&grey.colours[200])[0] = 199;
  PixMapHandle pm = KWE_NewDIBPixMap(&grey.header);
  ASSERT_NE(pm, nullptr);
  CTabHandle table = (**pm).pmTable;
  EXPECT_EQ((**table).ctSize, 255);
  EXPECT_EQ((**table).ctTable[0].rgb.red, 0xFFFF);
  EXPECT_EQ((**table).ctTable[200].rgb.red, 0x01C9);
  EXPECT_EQ((**table).ctTable[255].rgb.red, 0x0200);
  Rect bottomRow{1, 0, 2, 4}, alone{20, 20, 21, 24};
  CopyBits(reinterpret_cast<BitMap*>(*pm), &port.portBits, &bottomRow, &alone, srcCopy, nullptr);
  EXPECT_EQ(canvas.Row(20, 20, 24), "#...") << "the bottom row, its first pixel black";
  DisposePixMap(pm);

  // A palette from black up is reversed: the spare greys come first.
  Packed dark = packed(4, 2, 4, 3);
  dark.colours[0] = RGBQUAD{0, 0, 0, 0};
  dark.colours[1] = RGBQUAD{0, 0, 255, 0};
  dark.colours[2] = RGBQUAD{255, 255, 255, 0};
  pm = KWE_NewDIBPixMap(&dark.header);
  ASSERT_NE(pm, nullptr);
  table = (**pm).pmTable;
  EXPECT_EQ((**table).ctTable[0].rgb.red, 0xFE01);
  EXPECT_EQ((**table).ctTable[13].rgb.blue, 0xFFFF);  // the last palette colour
  EXPECT_EQ((**table).ctTable[14].rgb.red, 0xFFFF);   // red
  EXPECT_EQ((**table).ctTable[15].rgb.red, 0);        // the first: black
  DisposePixMap(pm);
}

// Macintosh pixels into DIB pixel maps: 8-bit rows with the same colours as
// they stand, other tables and scaling through the pipeline, 32-bit pixels
// into a 24-bit DIB; the DIB's rows run bottom-up.
TEST_F(PixelMaps, MacintoshPixelsCopyIntoDibPixelMaps) {
  struct {
    BITMAPINFOHEADER header;
    RGBQUAD colours[256];
    UInt8 bits[16 * 8 * 3];
  } packed{};
  CTabHandle standard = GetCTable(8), swapped = GetCTable(8);
  std::swap((**swapped).ctTable[0].rgb, (**swapped).ctTable[255].rgb);  // white and black
  for (int i = 0; i < 256; ++i) {
    const RGBColor& c = (**standard).ctTable[i].rgb;
    packed.colours[i] = RGBQUAD{BYTE(c.blue >> 8), BYTE(c.green >> 8), BYTE(c.red >> 8), 0};
  }
  srand(20);
  UInt8 mac[8][16];
  UInt32 deep[8][16];
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 16; ++x) mac[y][x] = UInt8(rand()), deep[y][x] = UInt32(rand()) & 0xFFFFFF;
  mac[0][0] = 0, mac[0][1] = 255;
  const struct {
    int bitCount, scale;
    bool sameTable;
  } cases[] = {{8, 1, true}, {8, 1, false}, {8, 2, false}, {24, 1, false}, {24, 2, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.bitCount << " bits, scale " << c.scale);
    packed.header = {sizeof packed.header, 16, 8, 1, WORD(c.bitCount), BI_RGB, 0, 0, 0, 0, 0};
    PixMapHandle dst = KWE_NewDIBPixMap(&packed.header);
    ASSERT_NE(dst, nullptr);
    PixMap src{};
    src.baseAddr = c.bitCount == 8 ? Ptr(mac) : Ptr(deep);
    src.rowBytes = SInt16(0x8000 | (c.bitCount == 8 ? 16 : 64));
    src.bounds = Rect{0, 0, 8, 16};
    src.pixelSize = c.bitCount == 8 ? 8 : 32;
    src.pixelType = c.bitCount == 8 ? 0 : 16;
    src.cmpCount = c.bitCount == 8 ? 1 : 3;
    src.cmpSize = 8;
    src.pmTable = c.sameTable ? (**dst).pmTable : swapped;
    Rect from{0, 0, SInt16(8 / c.scale), SInt16(16 / c.scale)}, to{0, 0, 8, 16};
    ASSERT_EQ(KWE_CopyBitsMacToDIB(&src, *dst, from, to, srcCopy, nullptr, nullptr, nullptr),
              noErr);
    void* bits = nullptr;
    KWE_GetDIBFromPixMap(dst, &bits);
    int row = c.bitCount == 8 ? 16 : 48;
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 16; ++x) {
        const UInt8* at = static_cast<UInt8*>(bits) + (7 - y) * row + x * (c.bitCount / 8);
        UInt32 got = c.bitCount == 8 ? at[0] : UInt32(at[0] | at[1] << 8 | at[2] << 16);
        UInt32 want =
            c.bitCount == 8 ? mac[y / c.scale][x / c.scale] : deep[y / c.scale][x / c.scale];
        if (c.bitCount == 8 && !c.sameTable && (want == 0 || want == 255)) want = 255 - want;
        ASSERT_EQ(got, want) << x << "," << y;
      }
    Rect outside{0, 0, 9, 16};
    EXPECT_EQ(KWE_CopyBitsMacToDIB(&src, *dst, outside, to, srcCopy, nullptr, nullptr, nullptr),
              paramErr);
    DisposePixMap(dst);
  }
  DisposeCTable(standard);
  DisposeCTable(swapped);
}

// Pixel maps over DDBs: described from the bitmap, which they own; a copy of
// a bitmap, and a pixel map flattened and made again, hold the same bits.
TEST_F(PixelMaps, DdbPixelMapsFlattenAndComeBackWithTheirBits) {
  const struct {
    int width, height, depth;
    UInt16 rowBytes;
    SInt16 pixelSize;
  } shapes[] = {{20, 10, 32, 0x8000 + 80, 16}, {33, 5, 1, 0x8000 + 6, 1}, {1, 1, 32, 0x8004, 16}};
  HPALETTE greys = nullptr;
  {
    struct {
      WORD version, count;
      PALETTEENTRY entries[2];
    } log{0x300, 2, {{0, 0, 0, 0}, {255, 255, 255, 0}}};
    greys = CreatePalette(reinterpret_cast<LOGPALETTE*>(&log));
  }
  auto bitsOf = [](HBITMAP bm) {
    BITMAP info{};
    GetObjectA(bm, sizeof info, &info);
    std::vector<uint8_t> bytes(size_t(info.bmWidthBytes * info.bmHeight));
    GetBitmapBits(bm, LONG(bytes.size()), bytes.data());
    return bytes;
  };
  for (const auto& s : shapes) {
    SCOPED_TRACE(testing::Message() << s.width << " x " << s.height << " x " << s.depth);
    HDC screen = GetDC(nullptr);
    HBITMAP bm = s.depth == 1 ? CreateBitmap(s.width, s.height, 1, 1, nullptr)
                              : CreateCompatibleBitmap(screen, s.width, s.height);
    ReleaseDC(nullptr, screen);
    std::vector<uint8_t> bytes = bitsOf(bm);
    srand(unsigned(s.width));
    for (uint8_t& b : bytes) b = uint8_t(rand());
    SetBitmapBits(bm, LONG(bytes.size()), bytes.data());
    bytes = bitsOf(bm);
    int before = LiveGdiObjects();  // with bm, which the pixel map takes over

    HBITMAP copy = KWE_CopyBM(bm);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, bm);
    if (s.depth == 32) {
      EXPECT_EQ(bitsOf(copy), bytes);
    }
    DeleteObject(copy);

    PixMapHandle pm = KWE_NewDDBPixMap(bm, greys);
    ASSERT_NE(pm, nullptr);
    EXPECT_EQ(UInt16((**pm).rowBytes), s.rowBytes);
    EXPECT_EQ((**pm).bounds.right, s.width);
    EXPECT_EQ((**pm).pixelSize, s.pixelSize);
    if (s.depth == 1) {
      EXPECT_EQ((**(**pm).pmTable).ctTable[0].rgb.red, 0xFFFF);  // the palette reversed
    }
    Handle flat = KWE_PackPixMap(pm);
    ASSERT_NE(flat, nullptr);
    PixMapHandle back = KWE_UnpackPixMap(flat);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ((**back).bounds.bottom, s.height);
    EXPECT_EQ((**back).rowBytes, (**pm).rowBytes);
    Handle again = KWE_PackPixMap(back);
    ASSERT_NE(again, nullptr);
    ASSERT_EQ(GetHandleSize(again), GetHandleSize(flat));
    UInt32 bitsAt = reinterpret_cast<UInt32*>(*flat)[3];
    EXPECT_EQ(std::vector<uint8_t>(*again + bitsAt, *again + GetHandleSize(again)), bytes);
    SetHandleSize(flat, GetHandleSize(flat) - 1);
    EXPECT_EQ(KWE_UnpackPixMap(flat), nullptr);
    DisposeHandle(again);
    DisposeHandle(flat);
    DisposePixMap(back);
    DisposePixMap(pm);
    EXPECT_EQ(GetObjectType(bm), 0u);
    EXPECT_EQ(LiveGdiObjects(), before - 1);
  }
  DeleteObject(greys);
  PixMapHandle plain = NewPixMap();
  EXPECT_EQ(KWE_PackPixMap(plain), nullptr) << "no DDB to flatten";
  DisposePixMap(plain);
}

// A seeded sweep over every depth, odd widths and rows longer than they
// need: a pixel map folded into its DIB shows, put on the canvas by GDI,
// each pixel's colour from the map's table; unfolded by index into other
// memory it gives the same pixels back, and by colour too; folded into a
// DDB whose DIB is then let go, the DDB unfolds to the same pixels.
TEST_F(PixelMaps, FoldedMapsShowTheirColoursAndUnfoldUnchanged) {
  const int depths[] = {1, 2, 4, 8, 16, 32};
  int before = 0;
  for (uint32_t seed = 1; seed <= 60; ++seed) {
    if (seed == 7) before = LiveGdiObjects();  // Windows' own objects made by then
    srand(seed);
    int depth = depths[seed % 6], width = 1 + rand() % 37, height = 1 + rand() % 19;
    bool fourBit = depth == 4 && (seed & 1);
    SInt16 rowBytes = SInt16(((width * depth + 7) / 8 + 1 + rand() % 6) & ~1);
    std::vector<UInt8> mac(size_t(rowBytes) * height), back(mac.size(), 0xA5);
    for (UInt8& b : mac) b = UInt8(rand());
    for (int y = 0; y < height && depth == 32; ++y)  // the unused byte stays 0
      for (int x = 0; x < width; ++x) mac[size_t(y) * rowBytes + 4 * x + 3] = 0;
    for (int y = 0; y < height && depth == 16; ++y)
      for (int x = 0; x < width; ++x) mac[size_t(y) * rowBytes + 2 * x + 1] &= 0x7F;
    PixMapHandle pm = NewPixMap();
    ASSERT_NE(pm, nullptr);
    (**pm).baseAddr = reinterpret_cast<Ptr>(mac.data());
    (**pm).rowBytes = SInt16(rowBytes | 0x8000);
    (**pm).bounds = Rect{0, 0, SInt16(height), SInt16(width)};
    (**pm).pixelSize = SInt16(depth);
    if (depth <= 8) {
      DisposeCTable((**pm).pmTable);
      (**pm).pmTable = GetCTable(SInt16(depth == 2 ? 4 : depth));
    }
    ASSERT_TRUE(KWE_FoldPixMap(*pm, nullptr, SInt16(0x02 | (fourBit ? 0x20 : 0))));
    void* bits = nullptr;
    BITMAPINFO* info = KWE_GetDIBFromPixMap(pm, &bits);
    ASSERT_NE(info, nullptr) << "seed " << seed;
    canvas.Clear();
    StretchDIBits(canvas.Dc(), 0, 0, width, height, 0, 0, width, height, bits, info, DIB_RGB_COLORS,
                  SRCCOPY);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const UInt8* row = mac.data() + size_t(y) * rowBytes;
        uint32_t want;
        if (depth == 32) {
          want = row[4 * x] | row[4 * x + 1] << 8 | row[4 * x + 2] << 16;
        } else if (depth == 16) {
          uint32_t p = row[2 * x] | row[2 * x + 1] << 8;
          want = (p >> 7 & 0xF8) << 16 | (p >> 2 & 0xF8) << 8 | (p << 3 & 0xF8);
        } else {
          int v = row[x * depth / 8] >> (8 - depth - x * depth % 8) & ((1 << depth) - 1);
          const RGBColor& c = (**(**pm).pmTable).ctTable[v].rgb;
          want = uint32_t(c.red >> 8) << 16 | uint32_t(c.green >> 8) << 8 | (c.blue >> 8);
        }
        ASSERT_EQ(canvas.Pixel(x, y), want)
            << "seed " << seed << " depth " << depth << " at " << x << "," << y;
      }
    // Back into memory of the same form, by index and then by colour.
    auto same = [&](const char* how) {
      for (int y = 0; y < height; ++y)
        ASSERT_EQ(0, memcmp(&mac[size_t(y) * rowBytes], &back[size_t(y) * rowBytes],
                            size_t(width * depth / 8)))
            << how << ": seed " << seed << " depth " << depth << " row " << y;
    };
    PixMap into = **pm;
    into.baseAddr = reinterpret_cast<Ptr>(back.data());
    into.bounds = Rect{3, 3, 4, 4};
    ASSERT_TRUE(KWE_UnfoldPixMap(*pm, reinterpret_cast<BitMap*>(&into), nullptr, nullptr, 0x10));
    EXPECT_EQ(into.bounds.bottom, height);
    same("by index");
    std::fill(back.begin(), back.end(), 0x5A);
    ASSERT_TRUE(KWE_UnfoldPixMap(*pm, reinterpret_cast<BitMap*>(&into), nullptr, nullptr, 0));
    same("by colour");
    // Into a DDB; the DIB let go; the DDB unfolds the same.
    ASSERT_TRUE(KWE_FoldPixMap(*pm, nullptr, 0x08));
    ASSERT_TRUE(KWE_UnfoldPixMap(*pm, reinterpret_cast<BitMap*>(&into), nullptr, nullptr, 0x01));
    EXPECT_EQ(KWE_GetDIBFromPixMap(pm, nullptr), nullptr);
    std::fill(back.begin(), back.end(), 0x3C);
    ASSERT_TRUE(KWE_UnfoldPixMap(*pm, reinterpret_cast<BitMap*>(&into), nullptr, nullptr, 0));
    same("from the DDB");
    DisposePixMap(pm);
  }
  EXPECT_EQ(LiveGdiObjects(), before);

  // What cannot fold or unfold: a bitmap, a map with neither DIB nor DDB,
  // a destination without memory or room.
  UInt8 few[8] = {};
  BitMap plain{reinterpret_cast<Ptr>(few), 2, Rect{0, 0, 4, 16}};
  EXPECT_FALSE(KWE_FoldPixMap(reinterpret_cast<PixMap*>(&plain), nullptr, 0x02));
  PixMapHandle bare = NewPixMap();
  EXPECT_FALSE(KWE_UnfoldPixMap(*bare, &plain, nullptr, nullptr, 0));
  (**bare).baseAddr = reinterpret_cast<Ptr>(few);
  (**bare).rowBytes = SInt16(0x8000 | 2);
  (**bare).bounds = Rect{0, 0, 4, 16};
  (**bare).pixelSize = 1;
  ASSERT_TRUE(KWE_FoldPixMap(*bare, nullptr, 0x02));
  BitMap nowhere{nullptr, 2, Rect{0, 0, 4, 16}},
      narrow{reinterpret_cast<Ptr>(few), 1, plain.bounds};
  EXPECT_FALSE(KWE_UnfoldPixMap(*bare, &nowhere, nullptr, nullptr, 0x01));
  EXPECT_FALSE(KWE_UnfoldPixMap(*bare, &narrow, nullptr, nullptr, 0x01));
  EXPECT_NE(KWE_GetDIBFromPixMap(bare, nullptr), nullptr);  // kept after a failure
  DisposePixMap(bare);
}

}  // namespace
