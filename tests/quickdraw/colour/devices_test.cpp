// Graphics devices through the DLL: the main device InitGraf makes, a
// device of the application's own made current for colour matching,
// palettes from colour tables, and the colour model conversions.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <utility>

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
  EXPECT_TRUE(TestDeviceAttribute(mine, 0));
  EXPECT_TRUE(TestDeviceAttribute(mine, 15));
  SetDeviceAttribute(mine, 15, false);
  SetDeviceAttribute(mine, 3, true);
  EXPECT_FALSE(TestDeviceAttribute(mine, 15));
  EXPECT_TRUE(TestDeviceAttribute(mine, 3));
  EXPECT_FALSE(TestDeviceAttribute(mine, 16));
  EXPECT_FALSE(TestDeviceAttribute(nullptr, 0));

  // Colour matching follows the current device's table: with a two-entry
  // table on it, every colour is black or white.
  SetGDevice(mine);
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

// Search procedures for the table below: A answers every colour with 1, B
// pure blue with 7, K pure blue with 255 (black), and G pure green with 5;
// G writes its guess before it decides, so a declined answer still leaves
// a position behind.
Boolean KWE_CALL AllIsOne(RGBColor*, SInt32* position) {
  *position = 1;
  return true;
}
Boolean KWE_CALL BlueIsSeven(RGBColor* rgb, SInt32* position) {
  if (rgb->blue != 0xFFFF || rgb->red || rgb->green) return false;
  *position = 7;
  return true;
}
Boolean KWE_CALL BlueIsBlack(RGBColor* rgb, SInt32* position) {
  if (rgb->blue != 0xFFFF || rgb->red || rgb->green) return false;
  *position = 255;
  return true;
}
Boolean KWE_CALL GreenIsFive(RGBColor* rgb, SInt32* position) {
  *position = 200;
  if (rgb->green != 0xFFFF || rgb->red || rgb->blue) return false;
  *position = 5;
  return true;
}
ColorSearchProcPtr SearchProcedure(char name) {
  return name == 'A'   ? AllIsOne
         : name == 'B' ? BlueIsSeven
         : name == 'K' ? BlueIsBlack
                       : GreenIsFive;
}

// A device's search procedures are asked newest first, a declining one
// passes the colour on to the older ones, and DelSearch unlinks one record
// leaving the rest in order. Each row adds (+) and deletes (-) procedures
// on a device of the application's own, then matches pure red, green and
// blue (the table's own answers are 35, 185 and 210).
TEST_F(Devices, SearchProceduresAnswerNewestFirstAndDecliningOnesPassOn) {
  const struct {
    const char* steps;
    SInt32 red, green, blue;
    bool realRed, realBlue;
  } rows[] = {
      {"", 35, 185, 210, true, true},      {"+G", 35, 5, 210, true, true},
      {"+A+B+G", 1, 5, 7, false, false},   {"+A+B+G-B", 1, 5, 1, false, false},
      {"+A+B+G-G", 1, 1, 7, false, false}, {"+A+B+G-A", 35, 5, 7, true, false},
      {"+B+B-B", 35, 185, 7, true, false}, {"+K", 35, 185, 255, true, false},
      {"-B+G-B", 35, 5, 210, true, true},
  };
  GDHandle main = GetMainDevice();
  const RGBColor red{0xFFFF, 0, 0}, green{0, 0xFFFF, 0}, blue{0, 0, 0xFFFF};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "steps \"" << row.steps << "\"");
    GDHandle device = NewGDevice(0, 0);
    ASSERT_NE(device, nullptr);
    SetGDevice(device);
    for (const char* s = row.steps; *s; s += 2)
      (s[0] == '+' ? AddSearch : DelSearch)(SearchProcedure(s[1]));
    EXPECT_EQ(Color2Index(&red), row.red);
    EXPECT_EQ(Color2Index(&green), row.green);
    EXPECT_EQ(Color2Index(&blue), row.blue);
    EXPECT_EQ(bool(RealColor(&red)), row.realRed);
    EXPECT_EQ(bool(RealColor(&blue)), row.realBlue);
    DisposeGDevice(device);  // takes its procedures along
    EXPECT_EQ(GetGDevice(), main);
    EXPECT_EQ(Color2Index(&blue), 210);
  }
  EXPECT_EQ((**main).gdSearchProc, nullptr);
}

// A standard table by id holds its id as its seed and its count less one
// (their colours are checked natively in colour_tables_test); GetSubTable
// makes each entry's value its nearest index in the target.
TEST_F(Devices, StandardTablesAndSubTables) {
  CTabHandle device = GetCTable(8), mine = GetCTable(4);
  EXPECT_EQ(std::make_pair((**device).ctSeed, (**device).ctSize), std::make_pair(8, SInt16(255)));
  EXPECT_EQ(GetCTable(3), nullptr);
  RGBColor odd{0x7000, 0x1000, 0xF000};
  EXPECT_FALSE(RealColor(&odd));
  GetSubTable(mine, 5, device);
  EXPECT_EQ((**mine).ctTable[0].value, 0);     // white
  EXPECT_EQ((**mine).ctTable[15].value, 255);  // black
  DisposeCTable(mine);
  DisposeCTable(device);
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
