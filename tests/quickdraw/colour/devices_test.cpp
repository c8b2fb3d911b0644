// Graphics devices and pixel maps through the DLL: the main device InitGraf
// makes, a device of the application's own made current for colour
// matching, and pixel map records made, copied and disposed.
#include <gtest/gtest.h>
#include <windows.h>

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

}  // namespace
