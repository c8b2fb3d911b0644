// The standard colour tables, the nearest-entry search and the inverse table,
// natively: the laws Color2Index and Index2Color rest on.
#include "quickdraw/colour/colour_tables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace {

using namespace kwe::quickdraw;

std::vector<ColourEntry> Table(int id) {
  RGBColor colours[256];
  int n = StandardTableColours(id, colours);
  std::vector<ColourEntry> t;
  for (int i = 0; i < n; ++i) t.push_back(ColourEntry{static_cast<SInt16>(i), colours[i]});
  return t;
}

long Distance(RGBColor a, RGBColor b) {
  return std::labs(long{a.red} - b.red) + std::labs(long{a.green} - b.green) +
         std::labs(long{a.blue} - b.blue);
}

TEST(ColourTables, StandardTablesHoldTheToolboxColours) {
  const struct {
    int id, count, entry;
    RGBColor rgb;
  } cases[] = {
      {1, 2, 0, {0xFFFF, 0xFFFF, 0xFFFF}},
      {1, 2, 1, {0, 0, 0}},
      {2, 4, 1, {0xACAC, 0xACAC, 0xACAC}},
      {2, 4, 2, {0x5555, 0x5555, 0x5555}},
      {2, 4, 3, {0, 0, 0}},
      {4, 16, 2, {0xFFFF, 0x6464, 0x0202}},
      {4, 16, 15, {0, 0, 0}},
      {8, 256, 0, {0xFFFF, 0xFFFF, 0xFFFF}},
      {8, 256, 35, {0xFFFF, 0, 0}},
      {8, 256, 215, {0xEEEE, 0, 0}},
      {8, 256, 225, {0, 0xEEEE, 0}},
      {8, 256, 245, {0xEEEE, 0xEEEE, 0xEEEE}},
      {8, 256, 254, {0x1111, 0x1111, 0x1111}},
      {8, 256, 255, {0, 0, 0}},
      {20, 16, 1, {0xEEEE, 0xEEEE, 0xEEEE}},
      {33, 2, 1, {0, 0, 0}},
      {34, 4, 1, {0xAAAA, 0xAAAA, 0xAAAA}},
      {34, 4, 3, {0, 0, 0}},
      {36, 16, 1, {0xEEEE, 0xEEEE, 0xEEEE}},
      {36, 16, 15, {0, 0, 0}},
      {40, 256, 1, {0xFEFE, 0xFEFE, 0xFEFE}},
      {40, 256, 255, {0, 0, 0}},
  };
  for (const auto& c : cases) {
    auto t = Table(c.id);
    ASSERT_EQ(static_cast<int>(t.size()), c.count) << "table " << c.id;
    const RGBColor& got = t[static_cast<size_t>(c.entry)].rgb;
    EXPECT_TRUE(got.red == c.rgb.red && got.green == c.rgb.green && got.blue == c.rgb.blue)
        << "table " << c.id << " entry " << c.entry << ": " << std::hex << got.red << " "
        << got.green << " " << got.blue;
  }
  RGBColor none[256];
  for (int id : {-1, 0, 3, 16, 32, 35, 48}) EXPECT_EQ(StandardTableColours(id, none), 0) << id;
}

// A seeded sweep of random colours over random tables with repeated entries:
// the search answers the first of the nearest entries and never a skipped one.
TEST(ColourTables, NearestEntryIsTheFirstOfTheNearest) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    std::mt19937 rng(seed);
    std::vector<ColourEntry> t(1 + rng() % 40);
    for (auto& e : t) {
      e.value = static_cast<SInt16>((rng() % 5 == 0) ? kSkipEntry : 0);
      // Few levels, so that ties are common.
      e.rgb = RGBColor{static_cast<UInt16>((rng() % 4) * 0x5555),
                       static_cast<UInt16>((rng() % 4) * 0x5555),
                       static_cast<UInt16>((rng() % 4) * 0x5555)};
    }
    RGBColor c{static_cast<UInt16>(rng()), static_cast<UInt16>(rng()), static_cast<UInt16>(rng())};
    int got = NearestEntry(t.data(), static_cast<int>(t.size()), c);
    int want = -1;
    for (size_t i = 0; i < t.size(); ++i) {
      if (t[i].value & kSkipEntry) continue;
      if (want < 0 || Distance(t[i].rgb, c) < Distance(t[static_cast<size_t>(want)].rgb, c))
        want = static_cast<int>(i);
    }
    ASSERT_EQ(got, want) << "seed " << seed;
  }
}

// Every cell of the inverse table holds the nearest entry to the colour at
// its middle, the first of equally near ones; a colour's cell is found the
// same way the Toolbox reads the table.
TEST(ColourTables, InverseTableHoldsTheNearestEntryOfEveryCell) {
  for (int id : {1, 2, 4, 8, 34, 40}) {
    auto t = Table(id);
    std::vector<uint8_t> itab(kInverseTableSize);
    BuildInverseTable(t.data(), static_cast<int>(t.size()), itab.data());
    std::mt19937 rng(static_cast<unsigned>(id));
    for (int step = 0; step < 2000; ++step) {
      int cell = static_cast<int>(rng() % kInverseTableSize);
      RGBColor middle{CellComponent(cell >> 10 & 31), CellComponent(cell >> 5 & 31),
                      CellComponent(cell & 31)};
      ASSERT_EQ(InverseCell(middle, 5), cell) << "table " << id << " step " << step;
      int want = NearestEntry(t.data(), static_cast<int>(t.size()), middle);
      ASSERT_EQ(itab[static_cast<size_t>(cell)], want) << "table " << id << " step " << step;
    }
    // Pure red finds the cube's red; white and black themselves.
    if (id == 8) {
      EXPECT_EQ(itab[static_cast<size_t>(InverseCell(RGBColor{0xFFFF, 0, 0}, 5))], 35);
      EXPECT_EQ(itab[static_cast<size_t>(InverseCell(RGBColor{0xFFFF, 0xFFFF, 0xFFFF}, 5))], 0);
      EXPECT_EQ(itab[static_cast<size_t>(InverseCell(RGBColor{0, 0, 0}, 5))], 255);
    }
  }
  EXPECT_EQ(InverseCell(RGBColor{0xFFFF, 0, 0x8000}, 3), 7 << 6 | 4);
  EXPECT_EQ(InverseCell(RGBColor{0x1000, 0x2000, 0xF000}, 4), 1 << 8 | 2 << 4 | 15);
  EXPECT_EQ(InverseCell(RGBColor{0x0300, 0x0400, 0xFC00}, 5), 0 << 10 | 1 << 5 | 31);
}

}  // namespace
