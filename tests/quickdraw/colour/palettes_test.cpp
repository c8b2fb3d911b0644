// Palettes as Windows holds them: the logical palette behind each Toolbox
// palette and what an 8-bit DIB section indexing it shows; the device's
// table written with SetEntries into the screen palette; reserved entries,
// complement procedures and DeviceLoop.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <vector>

#include "KWEPalettes.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class Palettes : public PortTest {};

WindowPtr DefaultOwner() { return reinterpret_cast<WindowPtr>(intptr_t{-1}); }
uint32_t Rgb(const RGBColor& c) { return (c.red >> 8) << 16 | (c.green >> 8) << 8 | c.blue >> 8; }
uint32_t Rgb(const PALETTEENTRY& e) { return e.peRed << 16 | e.peGreen << 8 | e.peBlue; }

// The colours an 8-bit DIB section made with DIB_PAL_COLORS shows for
// pixel values 0 to n - 1 in a DC that has hpal selected, drawn on row y.
void DrawPaletteRow(Canvas& canvas, HPALETTE hpal, int n, int y) {
  struct {
    BITMAPINFOHEADER header;
    WORD indexes[256];
  } info{};
  info.header = {sizeof info.header, n, 1, 1, 8, BI_RGB, 0, 0, 0, DWORD(n), 0};
  for (int i = 0; i < n; ++i) info.indexes[i] = WORD(i);
  HDC dc = CreateCompatibleDC(canvas.Dc());
  HPALETTE old = SelectPalette(dc, hpal, FALSE);
  void* bits = nullptr;
  HBITMAP dib =
      CreateDIBSection(dc, reinterpret_cast<BITMAPINFO*>(&info), DIB_PAL_COLORS, &bits, nullptr, 0);
  ASSERT_NE(dib, nullptr);
  for (int i = 0; i < n; ++i) static_cast<BYTE*>(bits)[i] = BYTE(i);
  HGDIOBJ oldBitmap = SelectObject(dc, dib);
  BitBlt(canvas.Dc(), 0, y, n, 1, dc, 0, 0, SRCCOPY);
  SelectObject(dc, oldBitmap);
  SelectPalette(dc, old, FALSE);
  DeleteObject(dib);
  DeleteDC(dc);
}

// Each palette's Windows palette has its entries (a 256-entry one
// reversed), animated ones PC_RESERVED; a seeded sweep of colour changes
// reaches what an indexed DIB section shows; a resize to 16 entries
// unreverses; disposing deletes it.
TEST_F(Palettes, WindowsPalettesFollowTheirToolboxPalettes) {
  const struct {
    SInt16 table, entries, usage;
  } cases[] = {{4, 16, pmAnimated}, {8, 256, pmTolerant}, {1, 2, pmCourteous}, {8, 256, 6}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "table " << c.table << " usage " << c.usage);
    int before = LiveGdiObjects();
    CTabHandle table = GetCTable(c.table), sixteen = GetCTable(4);
    PaletteHandle pal = NewPalette(c.entries, table, c.usage, 0);
    SetPalette(DefaultOwner(), pal, false);
    ActivatePalette(DefaultOwner());
    KWE_ForcePalette();
    HPALETTE hpal = nullptr;
    ASSERT_EQ(KWE_GetWindowsPalette(DefaultOwner(), &hpal), noErr);
    ASSERT_EQ(GetPaletteEntries(hpal, 0, 0, nullptr), UINT(c.entries));
    unsigned seed = unsigned(c.table * 100 + c.usage);
    srand(seed);
    for (int step = 0; step < 40; ++step) {
      RGBColor colour{UInt16(rand() * 2), UInt16(rand() * 2), UInt16(rand() * 2)};
      SetEntryColor(pal, SInt16(rand() % c.entries), &colour);
    }
    // Windows entry k is Toolbox entry 255 - k of a 256-entry palette.
    std::vector<PALETTEENTRY> entries(size_t(c.entries));
    GetPaletteEntries(hpal, 0, UINT(c.entries), entries.data());
    DrawPaletteRow(canvas, hpal, c.entries, 5);
    for (int k = 0; k < c.entries; ++k) {
      RGBColor want{};
      GetEntryColor(pal, SInt16(c.entries == 256 ? 255 - k : k), &want);
      ASSERT_EQ(canvas.Pixel(k, 5), Rgb(want)) << "seed " << seed << " pixel " << k;
      ASSERT_EQ(entries[size_t(k)].peFlags, (c.usage & pmAnimated) ? PC_RESERVED : 0) << k;
    }
    CTab2Palette(sixteen, pal, pmCourteous, 0);
    ASSERT_EQ(GetPaletteEntries(hpal, 0, 0, nullptr), 16u);
    GetPaletteEntries(hpal, 0, 16, entries.data());
    EXPECT_EQ(Rgb(entries[6]), 0x0000D4u);  // blue, in Toolbox order again
    DisposePalette(pal);
    EXPECT_EQ(GetObjectType(hpal), 0u);
    EXPECT_EQ(KWE_GetWindowsPalette(DefaultOwner(), &hpal), paramErr);
    DisposeCTable(sixteen);
    DisposeCTable(table);
    EXPECT_EQ(LiveGdiObjects(), before);
  }
  EXPECT_EQ(KWE_GetWindowsPalette(DefaultOwner(), nullptr), paramErr);
}

void KWE_CALL ToGrey(RGBColor* rgb) { *rgb = RGBColor{0x8000, 0x8000, 0x8000}; }

struct LoopCall {
  SInt16 depth, flags;
  GDHandle device;
  SInt32 data;
};
std::vector<LoopCall> g_loops;
void KWE_CALL RecordLoop(SInt16 depth, SInt16 flags, GDHandle device, SInt32 data) {
  g_loops.push_back({depth, flags, device, data});
}

// What colour matching answers as the device's table and its reserved
// entries change; the screen palette SetEntries mirrors into; complement
// procedures; DeviceLoop.
TEST_F(Palettes, TheDevicesTableAndProceduresDecideColourMatching) {
  RGBColor red{0xFFFF, 0, 0}, dim{0x2000, 0x1000, 0x1000};
  CTabHandle device = (**(**GetMainDevice()).gdPMap).pmTable;
  SInt32 seed = (**device).ctSeed;
  ColorSpec specs[] = {{0, dim}, {0, {0, 0, 0}}, {0, {0xFFFF, 0xFFFF, 0xFFFF}}};
  SetEntries(10, 2, specs);
  EXPECT_EQ(QDError(), noErr);
  EXPECT_NE((**device).ctSeed, seed);
  EXPECT_EQ(Color2Index(&dim), 10);
  HPALETTE screen = nullptr;
  ASSERT_EQ(KWE_GetWindowsPalette(nullptr, &screen), noErr);
  PALETTEENTRY e[256];
  GetPaletteEntries(screen, 0, 256, e);
  EXPECT_EQ(Rgb(e[245]), Rgb(dim));
  EXPECT_EQ(e[245].peFlags, PC_RESERVED);
  EXPECT_EQ(e[244].peFlags, 0);  // black
  EXPECT_EQ(e[243].peFlags, 0);  // white
  // Bad specs change nothing.
  ColorSpec outside[] = {{300, red}};
  seed = (**device).ctSeed;
  SetEntries(-1, 0, outside);
  EXPECT_EQ(QDError(), cRangeErr);
  SetEntries(0, -1, specs);
  SetEntries(0, 0, nullptr);
  EXPECT_EQ(QDError(), paramErr);
  EXPECT_EQ((**device).ctSeed, seed);

  // A reserved entry is passed over: pure red falls to the next nearest.
  EXPECT_EQ(Color2Index(&red), 35);
  ReserveEntry(35, true);
  EXPECT_NE(Color2Index(&red), 35);
  ReserveEntry(35, false);
  EXPECT_EQ(Color2Index(&red), 35);
  ReserveEntry(256, true);
  EXPECT_EQ(QDError(), cRangeErr);

  RGBColor c = red;
  AddComp(ToGrey);
  InvertColor(&c);
  EXPECT_EQ(c.green, 0x8000);
  DelComp(ToGrey);

  g_loops.clear();
  RgnHandle empty = NewRgn(), some = NewRgn();
  SetRectRgn(some, 0, 0, 10, 10);
  DeviceLoop(some, RecordLoop, 1234, 0);
  DeviceLoop(nullptr, RecordLoop, 5, 0);
  DeviceLoop(empty, RecordLoop, 6, 0);
  DeviceLoop(some, nullptr, 7, 0);
  ASSERT_EQ(g_loops.size(), 2u);
  EXPECT_EQ(g_loops[0].device, GetGDevice());
  EXPECT_EQ(g_loops[0].depth, (**(**GetGDevice()).gdPMap).pixelSize);
  EXPECT_EQ(g_loops[0].flags, (**GetGDevice()).gdFlags);
  EXPECT_EQ(g_loops[0].data, 1234);
  EXPECT_EQ(g_loops[1].data, 5);
  DisposeRgn(empty);
  DisposeRgn(some);
}

}  // namespace
