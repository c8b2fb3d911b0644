// KWE_ByteSwap's table natively under the sanitizers, every buffer a heap
// block of exactly the data's size so that any byte touched past it is seen:
// every listed type against its independently written Macintosh and native
// forms, cut at every length, and counts that point past the data. And the
// element converters a host calls for its own structures.
#include "resources/byte_swap_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "KWEByteSwap.h"
#include "resources/byte_swap_records.h"
#include "sample_resources.h"

namespace {

using kwe::byteswap::SwapOutcome;
using kwe_samples::Bytes;
using kwe_samples::TypeOf;

std::vector<std::string> g_reports;

const kwe::byteswap::ByteSwapHost kHost = {
    [](bool isColour, void* data, SInt32 size, UInt32) {
      kwe::byteswap::SwapCursorHotSpot(isColour, static_cast<uint8_t*>(data), size);
    },
    nullptr,
    [](const char* text) { g_reports.emplace_back(text); },
};

// Converts a copy of the data, held in a block of exactly its size.
Bytes Swapped(const Bytes& data, UInt32 direction, const char* type,
              SwapOutcome* outcome = nullptr) {
  std::unique_ptr<uint8_t[]> block(new uint8_t[data.size() + !data.size()]);
  if (!data.empty()) std::memcpy(block.get(), data.data(), data.size());
  SwapOutcome result = kwe::byteswap::SwapResource(direction, TypeOf(type), 128,
                                                   SInt32(data.size()), block.get(), kHost);
  if (outcome) *outcome = result;
  return Bytes(block.get(), block.get() + data.size());
}

TEST(ByteSwapTable, EveryTypeLoadsToItsNativeFormAndWritesBackWholeOrCut) {
  for (const auto& sample : kwe_samples::AllSamples()) {
    SCOPED_TRACE(sample.type);
    const Bytes mac = sample.make(true), native = sample.make(false);
    g_reports.clear();
    EXPECT_EQ(Swapped(mac, kweSwapToNative, sample.type), native);
    EXPECT_EQ(Swapped(native, kweSwapToMac, sample.type), mac);
    EXPECT_TRUE(g_reports.empty());
    // Cut short, converted as far as the data goes and undone exactly.
    for (size_t length = 1; length < mac.size(); ++length) {
      const Bytes cut(mac.begin(), mac.begin() + std::ptrdiff_t(length));
      ASSERT_EQ(Swapped(Swapped(cut, kweSwapToNative, sample.type), kweSwapToMac, sample.type), cut)
          << "cut to " << length;
    }
  }
  // Every type of the table has a sample; no size touches nothing.
  g_reports.clear();
  uint8_t guard[4] = {1, 2, 3, 4};
  for (int i = 0; i < kwe::byteswap::TableTypeCount(); ++i) {
    for (SInt32 size : {0, -1, -32768})
      kwe::byteswap::SwapResource(1, kwe::byteswap::TableType(i), 0, size, guard, kHost);
    bool sampled = false;
    for (const auto& sample : kwe_samples::AllSamples())
      sampled |= TypeOf(sample.type) == kwe::byteswap::TableType(i);
    EXPECT_TRUE(sampled) << std::hex << kwe::byteswap::TableType(i);
  }
  EXPECT_EQ(Bytes(guard, guard + 4), (Bytes{1, 2, 3, 4}));
  EXPECT_TRUE(g_reports.empty());
}

Bytes MacSample(const char* type) {
  for (const auto& sample : kwe_samples::AllSamples())
    if (TypeOf(sample.type) == TypeOf(type)) return sample.make(true);
  return {};
}

// Counts at their edges convert exactly what they say (native given); counts
// and offsets that point past the data or back into a header are damage
// (native empty): converted as far as the data goes, reported, and undone
// by the opposite direction.

TEST(ByteSwapTable, CountsAtTheirEdgesAndPastTheData) {
  Bytes ppatBack = MacSample("ppat"), ppatFar = ppatBack, cicnNegative = MacSample("cicn");
  Bytes ditlMac = {0, 0, 1, 2, 3, 4, 0, 1, 0, 2, 0, 3, 0, 4, 32, 2, 1, 2},
        ditlNative = {0, 0, 4, 3, 2, 1, 1, 0, 2, 0, 3, 0, 4, 0, 32, 2, 2, 1};
  ditlMac.resize(32, 0xEE);  // a second item the count does not include
  ditlNative.resize(32, 0xEE);
  for (int i = 70; i < 74; ++i) ppatBack[i] = 0;  // colour table offset 0: inside the header
  ppatFar[70] = 0x7F;                             // offset past the data
  cicnNegative[10] = 0x80;                        // bounds bottom -32768: a negative image height
  const struct {
    const char* what;
    const char* type;
    Bytes mac, native;
  } cases[] = {
      {"count 0: one item", "DITL", ditlMac, ditlNative},
      {"count 0: only the count", "MBAR", {0, 0, 1, 2, 3, 4}, {0, 0, 1, 2, 3, 4}},
      {"ctSize -1: only the header",
       "clut",
       {1, 2, 3, 4, 5, 6, 0xFF, 0xFF, 7, 8},
       {4, 3, 2, 1, 6, 5, 0xFF, 0xFF, 7, 8}},
      {"32,768 items in 20 bytes",
       "DITL",
       {0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0},
       {}},
      {"an icon item cut inside its ID",
       "DITL",
       {0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 32, 0xFF},
       {}},
      {"an icon item whose ID is the next item's",
       "DITL",
       {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 9, 9},
       {}},
      {"a DLOG cut before its fixed fields end", "DLOG", {0, 1, 0, 2, 0, 3, 0, 4, 0, 1, 1, 0}, {}},
      {"clut", "clut", {0, 0, 0, 1, 0, 0, 0x7F, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {}},
      {"pltt", "pltt", {0x7F, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3}, {}},
      {"acur", "acur", {0x7F, 0xFF, 0, 0, 0, 1, 0, 2, 0, 3}, {}},
      {"MBAR", "MBAR", {0x40, 0x00, 0, 1, 0, 2, 0}, {}},
      {"ppat table in its header", "ppat", ppatBack, {}},
      {"ppat table past the data", "ppat", ppatFar, {}},
      {"cicn of negative height", "cicn", cicnNegative, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    g_reports.clear();
    SwapOutcome outcome;
    const Bytes loaded = Swapped(c.mac, kweSwapToNative, c.type, &outcome);
    EXPECT_EQ(Swapped(loaded, kweSwapToMac, c.type), c.mac);
    if (!c.native.empty()) {
      EXPECT_EQ(loaded, c.native);
      EXPECT_TRUE(g_reports.empty());
    } else {
      EXPECT_EQ(outcome, SwapOutcome::Damaged);
      // Reported both ways.
      EXPECT_EQ(g_reports,
                std::vector<std::string>(2, std::string(c.type) + " damaged byteswap data"));
    }
  }
}

// Twelve counting bytes after each converter: whole elements reversed, the
// bytes past them left.
TEST(ByteSwapElements, EachConverterReversesWholeElementsOnly) {
  const struct {
    const char* name;
    void (*swap)(void*);
    Bytes expected;
  } cases[] = {
      {"WORD", KWE_ByteSwapWORD, {2, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"LONG", KWE_ByteSwapLONG, {4, 3, 2, 1, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"FLOAT", KWE_ByteSwapFLOAT, {4, 3, 2, 1, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"DOUBLE", KWE_ByteSwapDOUBLE, {8, 7, 6, 5, 4, 3, 2, 1, 9, 10, 11, 12}},
      {"EXTENDED", KWE_ByteSwapEXTENDED, {10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 11, 12}},
      {"881", KWE_ByteSwap881, {12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
      {"Rect", KWE_ByteSwapRect, {2, 1, 4, 3, 6, 5, 8, 7, 9, 10, 11, 12}},
      {"WORDS of 5",
       [](void* b) { KWE_ByteSwapWORDS(b, 5); },
       {2, 1, 4, 3, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"LONGS of 7",
       [](void* b) { KWE_ByteSwapLONGS(b, 7); },
       {4, 3, 2, 1, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"FLOATS of 8",
       [](void* b) { KWE_ByteSwapFLOATS(b, 8); },
       {4, 3, 2, 1, 8, 7, 6, 5, 9, 10, 11, 12}},
      {"FLOATS of -8",
       [](void* b) { KWE_ByteSwapFLOATS(b, -8); },
       {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
  };
  for (const auto& c : cases) {
    Bytes b = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    c.swap(b.data());
    EXPECT_EQ(b, c.expected) << c.name;
  }
}

TEST(ByteSwapElements, BigEndianReadsAndColourTables) {
  const uint8_t bytes[] = {0x12, 0x34, 0x56, 0x78, 0xFF, 0xF6, 0x00, 0x14};
  EXPECT_EQ(KWE_GetByteSwapLONG(bytes), 0x12345678u);
  EXPECT_EQ(KWE_GetByteSwapWORD(bytes), 0x1234u);
  Rect r;
  std::memcpy(&r, bytes, sizeof r);
  KWE_GetByteSwapRect(&r, &r);  // in place: the Rect's own bytes are big-endian
  EXPECT_EQ(r.top, 0x1234);
  EXPECT_EQ(r.left, 0x5678);
  EXPECT_EQ(r.bottom, -10);
  EXPECT_EQ(r.right, 20);

  // ctSize 1: two entries after the header; the bytes after them stay.
  uint8_t table[28] = {0, 0, 0, 9, 0x80, 0, 0, 1};
  for (int i = 8; i < 28; ++i) table[i] = uint8_t(i);
  KWE_ByteSwapCLUT(kweSwapToNative, table);
  EXPECT_EQ(Bytes(table, table + 10), (Bytes{9, 0, 0, 0, 0, 0x80, 1, 0, 9, 8}));
  EXPECT_EQ(table[23], 22);
  EXPECT_EQ(Bytes(table + 24, table + 28), (Bytes{24, 25, 26, 27}));
  KWE_ByteSwapCLUT(kweSwapToMac, table);
  EXPECT_EQ(Bytes(table, table + 10), (Bytes{0, 0, 0, 9, 0x80, 0, 0, 1, 8, 9}));
}

}  // namespace
