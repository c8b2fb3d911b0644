// Graphics devices and pixel maps through the DLL: the main device InitGraf
// makes, a device of the application's own made current for colour
// matching, and pixel map records made, copied and disposed.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <utility>
#include <vector>

#include "KWEPixMaps.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class Devices : public PortTest {};

TEST_F(Devices, TheMainDeviceAndAnApplicationsOwn) {
  GDHandle main = GetMainDevice();
  ASSERT_NE(main, nullptr);
  EXPECT_EQ(GetGDevice(), main);
  EXPECT_EQ(GetDeviceList(), main);
  EXPECT_EQ(GetMaxDevice(nullptr), main);
  EXPECT_EQ(GetNextDevice(main), nullptr);
  // The main device's table is the standard 256 colours, a device's table.
  CTabHandle table = (**(**main).gdPMap).pmTable;
  ASSERT_NE(table, nullptr);
  EXPECT_EQ((**table).ctSize, 255);
  EXPECT_EQ((**table).ctFlags & 0x8000, 0x8000);

  GDHandle mine = NewGDevice(0, 0);
  ASSERT_NE(mine, nullptr);
  EXPECT_EQ(GetGDevice(), main);  // made, not made current
  EXPECT_EQ(GetNextDevice(mine), main);
  EXPECT_EQ((**mine).gdResPref, 3);
  ASSERT_NE((**mine).gdITable, nullptr);
  EXPECT_EQ(reinterpret_cast<ITab*>(*(**mine).gdITable)->iTabRes, 5);
  EXPECT_TRUE(TestDeviceAttribute(mine, 0));
  EXPECT_TRUE(TestDeviceAttribute(mine, 15));
  SetDeviceAttribute(mine, 15, false);
  SetDeviceAttribute(mine, 3, true);
  EXPECT_EQ(UInt16((**mine).gdFlags), 0x2809);
  EXPECT_FALSE(TestDeviceAttribute(mine, 16));
  EXPECT_FALSE(TestDeviceAttribute(nullptr, 0));

  // Colour matching follows the current device's table: with a two-entry
  // table on it, every colour is black or white.
  SetGDevice(mine);
  EXPECT_EQ(GetGDevice(), mine);
  RGBColor red{0xFFFF, 0, 0}, dark{0x3000, 0x3000, 0x3000}, got{};
  EXPECT_EQ(Color2Index(&red), 35);
  CTabHandle own = (**(**mine).gdPMap).pmTable;
  (**own).ctSize = 1;
  (**own).ctTable[1].rgb = RGBColor{0, 0, 0};
  (**own).ctSeed = GetCTSeed();
  EXPECT_EQ(Color2Index(&dark), 1);
  Index2Color(1, &got);
  EXPECT_TRUE(got.red == 0 && got.green == 0 && got.blue == 0);
  Index2Color(2, &got);  // past the end: black
  EXPECT_EQ(got.red, 0);
  MakeITable(own, nullptr, 5);  // the device's inverse table, for the new table
  EXPECT_EQ(reinterpret_cast<ITab*>(*(**mine).gdITable)->iTabSeed, (**own).ctSeed);
  EXPECT_EQ(Color2Index(&dark), 1);

  DisposeGDevice(mine);
  EXPECT_EQ(GetGDevice(), main);  // the current device goes back to the main one
  DisposeGDevice(main);           // the main device stays
  EXPECT_EQ(GetMainDevice(), main);
  EXPECT_EQ(Color2Index(&red), 35);
  SetGDevice(nullptr);
  EXPECT_EQ(GetGDevice(), main);
}

TEST_F(Devices, PixelMapsAreMadeCopiedAndDisposed) {
  PixMapHandle pm = NewPixMap();
  ASSERT_NE(pm, nullptr);
  EXPECT_EQ(UInt16((**pm).pmVersion), 0xC000);
  EXPECT_EQ(reinterpret_cast<uintptr_t>((**pm).baseAddr), 32767u);
  EXPECT_EQ((**pm).rowBytes & 0x8000, 0x8000);
  EXPECT_EQ((**pm).pixelSize, 32);  // the canvas port's DIB section
  EXPECT_EQ((**pm).pixelType, 16);
  EXPECT_EQ((**pm).cmpCount, 3);
  ASSERT_NE((**pm).pmTable, nullptr);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>((**pm).pmTable)), 16);

  PixMapHandle copy = NewPixMap();
  CTabHandle own = (**copy).pmTable;
  CTabHandle colours = GetCTable(4);
  DisposeHandle(reinterpret_cast<Handle>((**pm).pmTable));
  (**pm).pmTable = colours;
  (**pm).bounds = Rect{1, 2, 30, 40};
  (**pm).pixelSize = 4;
  CopyPixMap(pm, copy);
  EXPECT_EQ((**copy).pmTable, own);  // its own handle, with the colours
  EXPECT_EQ((**own).ctSize, 15);
  EXPECT_EQ((**own).ctTable[6].rgb.blue, 0xD4D4);
  EXPECT_EQ((**copy).bounds.right, 40);
  EXPECT_EQ((**copy).pixelSize, 4);
  DisposePixMap(copy);
  DisposePixMap(pm);
  DisposePixMap(nullptr);
}

// Pixel maps over packed DIBs: the record's depth and row lengths, the
// colour table in the DIB's order or reversed with spare greys, the DIB
// handed back, and CopyBits putting its bottom-up rows on the port.
TEST_F(Devices, DibPixelMapsDescribeTheirDibAndDrawIt) {
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
    void* bits = nullptr;
    BITMAPINFO* info = KWE_GetDIBFromPixMap(pm, &bits);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->bmiHeader.biWidth, s.width);
    EXPECT_EQ(info->bmiHeader.biSizeImage, p.header.biSizeImage);
    EXPECT_NE(bits, nullptr);
    DisposePixMap(pm);
  }
  for (int bitCount : {2, 16, 32}) {
    Packed p = packed(8, 2, bitCount, 0);
    EXPECT_EQ(KWE_NewDIBPixMap(&p.header), nullptr) << bitCount;
  }
  Packed rle = packed(8, 2, 8, 0);
  rle.header.biCompression = BI_RLE8;
  EXPECT_EQ(KWE_NewDIBPixMap(&rle.header), nullptr);
  EXPECT_EQ(KWE_NewDIBPixMap(nullptr), nullptr);
  PixMapHandle plain = NewPixMap();
  EXPECT_EQ(KWE_GetDIBFromPixMap(plain, nullptr), nullptr);
  EXPECT_EQ(KWE_GetDIBFromPixMap(nullptr, nullptr), nullptr);
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
  canvas.Clear();
  Rect all{0, 0, 2, 4}, to{10, 10, 12, 14};
  CopyBits(reinterpret_cast<BitMap*>(*pm), &port.portBits, &all, &to, srcCopy, nullptr);
  EXPECT_EQ(canvas.Pixel(10, 11), kBlack);  // bottom row, first pixel
  EXPECT_EQ(canvas.Pixel(10, 10), kWhite);
  EXPECT_EQ(canvas.Pixel(11, 11), kWhite);
  Rect bottomRow{1, 0, 2, 4}, alone{20, 20, 21, 24};
  CopyBits(reinterpret_cast<BitMap*>(*pm), &port.portBits, &bottomRow, &alone, srcCopy, nullptr);
  EXPECT_EQ(canvas.Pixel(20, 20), kBlack);
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
TEST_F(Devices, MacintoshPixelsCopyIntoDibPixelMaps) {
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
  PixMapHandle plain = NewPixMap();
  PixMap src{};
  Rect r{0, 0, 1, 1};
  EXPECT_EQ(KWE_CopyBitsMacToDIB(&src, *plain, r, r, srcCopy, nullptr, nullptr, nullptr), paramErr);
  DisposePixMap(plain);
  DisposeCTable(standard);
  DisposeCTable(swapped);
}

// Pixel maps over DDBs: described from the bitmap, which they own; a copy of
// a bitmap, and a pixel map flattened and made again, hold the same bits.
TEST_F(Devices, DdbPixelMapsFlattenAndComeBackWithTheirBits) {
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
  EXPECT_EQ(KWE_PackPixMap(plain), nullptr);
  DisposePixMap(plain);
  EXPECT_EQ(KWE_NewDDBPixMap(nullptr, nullptr), nullptr);
  EXPECT_EQ(KWE_CopyBM(nullptr), nullptr);
  EXPECT_EQ(KWE_UnpackPixMap(nullptr), nullptr);
}

// Palettes from colour tables and back, their entries, and copies between
// palettes that grow the destination; bad entries change nothing.
TEST_F(Devices, PalettesKeepTheirColoursUsagesAndTolerances) {
  CTabHandle sixteen = GetCTable(4);
  PaletteHandle pal = NewPalette(20, sixteen, 2 /* pmTolerant */, 0x1000);
  ASSERT_NE(pal, nullptr);
  EXPECT_EQ((**pal).pmEntries, 20);
  RGBColor c{};
  GetEntryColor(pal, 6, &c);
  EXPECT_EQ(c.blue, 0xD4D4);   // the table's blue
  GetEntryColor(pal, 17, &c);  // past the table: cleared
  EXPECT_EQ(c.red, 0);
  SInt16 usage = 0, tolerance = 0;
  GetEntryUsage(pal, 3, &usage, &tolerance);
  EXPECT_EQ(usage, 2);
  EXPECT_EQ(tolerance, 0x1000);
  SetEntryUsage(pal, 3, -1, 0x2000);  // -1 leaves the usage
  GetEntryUsage(pal, 3, &usage, &tolerance);
  EXPECT_EQ(usage, 2);
  EXPECT_EQ(tolerance, 0x2000);
  RGBColor grey{0x8000, 0x8000, 0x8000};
  SetEntryColor(pal, 19, &grey);
  SetEntryColor(pal, 20, &grey);  // no such entry
  SetEntryColor(pal, -1, &grey);
  GetEntryColor(pal, 20, &c);
  EXPECT_EQ(c.red, 0);

  // Back to a table: every entry, a new seed.
  CTabHandle back = GetCTable(1);
  SInt32 seed = (**back).ctSeed;
  Palette2CTab(pal, back);
  EXPECT_EQ((**back).ctSize, 19);
  EXPECT_EQ((**back).ctTable[19].rgb.green, 0x8000);
  EXPECT_EQ((**back).ctTable[2].value, 2);
  EXPECT_NE((**back).ctSeed, seed);
  // And a palette resized to a table's entries.
  CTab2Palette(sixteen, pal, 4, 0);
  EXPECT_EQ((**pal).pmEntries, 16);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(pal)), 16 + 16 * 16);

  PaletteHandle copy = NewPalette(2, nullptr, 0, 0);
  CopyPalette(pal, copy, 10, 4, 3);
  EXPECT_EQ((**copy).pmEntries, 7);
  GetEntryColor(copy, 5, &c);
  EXPECT_EQ(c.red, (**sixteen).ctTable[11].rgb.red);
  CopyPalette(pal, copy, 15, 0, 10);  // only what the source has
  EXPECT_EQ((**copy).pmEntries, 7);
  CopyPalette(pal, copy, -1, 0, 1);
  CopyPalette(nullptr, copy, 0, 0, 1);
  EXPECT_EQ(GetNewPalette(999), nullptr);
  EXPECT_EQ(NewPalette(-1, nullptr, 0, 0), nullptr);
  DisposePalette(copy);
  DisposePalette(pal);
  DisposePalette(nullptr);
  DisposeCTable(back);
  DisposeCTable(sixteen);
}

// RGB2HSV and HSV2RGB as the Color Picker has them, round trips over a
// seeded sweep within 16 of 65535 (the hue's 16 bits lose a little, far
// below one step of an 8-bit screen); GetGray finds the
// device's grey between black and white, and none between two neighbours.
TEST_F(Devices, HsvConversionsAndTheGreyBetweenTwoColours) {
  const struct {
    RGBColor rgb;
    HSVColor hsv;
  } cases[] = {{{0xFFFF, 0, 0}, {0, 0xFFFF, 0xFFFF}},
               {{0, 0xFFFF, 0}, {0x5555, 0xFFFF, 0xFFFF}},
               {{0, 0, 0xFFFF}, {0xAAAA, 0xFFFF, 0xFFFF}},
               {{0x8000, 0x8000, 0x8000}, {0, 0, 0x8000}}};
  for (const auto& c : cases) {
    HSVColor hsv{};
    RGB2HSV(&c.rgb, &hsv);
    EXPECT_NEAR(hsv.hue, c.hsv.hue, 1) << c.rgb.red << "," << c.rgb.green << "," << c.rgb.blue;
    EXPECT_EQ(hsv.saturation, c.hsv.saturation);
    EXPECT_EQ(hsv.value, c.hsv.value);
  }
  srand(3);
  for (int step = 0; step < 500; ++step) {
    RGBColor rgb{UInt16(rand() * 2), UInt16(rand() * 2), UInt16(rand() * 2)}, back{};
    HSVColor hsv{};
    RGB2HSV(&rgb, &hsv);
    HSV2RGB(&hsv, &back);
    ASSERT_NEAR(back.red, rgb.red, 16) << "step " << step;
    ASSERT_NEAR(back.green, rgb.green, 16) << "step " << step;
    ASSERT_NEAR(back.blue, rgb.blue, 16) << "step " << step;
  }

  RGBColor white{0xFFFF, 0xFFFF, 0xFFFF}, black{0, 0, 0};
  RGBColor fg = black;
  EXPECT_TRUE(GetGray(GetMainDevice(), &white, &fg));
  EXPECT_TRUE(fg.red == fg.green && fg.green == fg.blue);
  EXPECT_GT(fg.red, 0x6000);
  EXPECT_LT(fg.red, 0xA000);
  RGBColor dim{0x1111, 0x1111, 0x1111};
  fg = black;
  EXPECT_FALSE(GetGray(GetMainDevice(), &dim, &fg));
  EXPECT_EQ(fg.red, 0);
  EXPECT_FALSE(GetGray(nullptr, &white, &fg));
}

}  // namespace
