// KWE_ByteSwap's table natively under the sanitizers: every listed type
// against independently written Macintosh and native forms, the edge cases
// of the counts, and damaged data that must never be read or written past
// its size. Buffers are allocated to exactly the data's size, so the address
// sanitizer sees any byte touched beyond it. And the element converters a
// host calls for its own structures.
#include "resources/byte_swap_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "KWEByteSwap.h"
#include "resources/byte_swap_records.h"
#include "sample_resources.h"

namespace {

using kwe::byteswap::ByteSwapHost;
using kwe::byteswap::SwapOutcome;
using kwe_samples::Bytes;
using kwe_samples::TypeOf;

std::vector<std::string> g_reports;

const ByteSwapHost kHost = {
    [](bool isColour, void* data, SInt32 size, UInt32) {
      kwe::byteswap::SwapCursorHotSpot(isColour, static_cast<uint8_t*>(data), size);
    },
    nullptr,
    [](const char* text) { g_reports.emplace_back(text); },
};

// The data in a heap block of exactly its size.
class ExactBlock {
 public:
  explicit ExactBlock(const Bytes& bytes)
      : size_(bytes.size()), block_(new uint8_t[bytes.empty() ? 1 : bytes.size()]) {
    if (size_) std::memcpy(block_.get(), bytes.data(), size_);
  }
  SwapOutcome Swap(UInt32 direction, const char* type) {
    return kwe::byteswap::SwapResource(direction, TypeOf(type), 128, SInt32(size_), block_.get(),
                                       kHost);
  }
  Bytes Contents() const { return Bytes(block_.get(), block_.get() + size_); }

 private:
  size_t size_;
  std::unique_ptr<uint8_t[]> block_;
};

// Loading, writing (to Macintosh order and back) and loading again.
Bytes LoadWriteReload(const Bytes& mac, const char* type, SwapOutcome* outcome = nullptr) {
  ExactBlock block(mac);
  SwapOutcome first = block.Swap(kweSwapToNative, type);
  if (outcome) *outcome = first;
  Bytes loaded = block.Contents();
  block.Swap(kweSwapToMac, type);
  EXPECT_EQ(block.Contents(), mac) << type << " written back differs";
  block.Swap(kweSwapToNative, type);
  EXPECT_EQ(block.Contents(), loaded) << type << " reloaded differs";
  return loaded;
}

class ByteSwapTable : public ::testing::Test {
 protected:
  void SetUp() override { g_reports.clear(); }
};

TEST_F(ByteSwapTable, EveryListedTypeLoadsToTheNativeLayoutAndWritesBack) {
  for (const auto& sample : kwe_samples::AllSamples()) {
    SCOPED_TRACE(sample.type);
    EXPECT_TRUE(kwe::byteswap::TableKnows(TypeOf(sample.type)));
    EXPECT_EQ(LoadWriteReload(sample.make(true), sample.type), sample.make(false));
  }
  EXPECT_TRUE(g_reports.empty());
  // Every type of the table has a sample.
  for (int i = 0; i < kwe::byteswap::TableTypeCount(); ++i) {
    ResType type = kwe::byteswap::TableType(i);
    bool sampled = false;
    for (const auto& sample : kwe_samples::AllSamples()) sampled |= TypeOf(sample.type) == type;
    EXPECT_TRUE(sampled) << std::hex << type;
  }
}

TEST_F(ByteSwapTable, AlertStagesMatchAHostBitFieldDeclaration) {
  // Every stage word, not only the sample's: the two re-packings undo each
  // other exactly, and the native word reads back as the bit fields say.
  for (uint32_t word = 0; word <= 0xFFFF; ++word) {
    uint16_t native = kwe::byteswap::AlertStagesToNative(uint16_t((word >> 8) | (word << 8)));
    ASSERT_EQ(kwe::byteswap::AlertStagesToMac(native), uint16_t((word >> 8) | (word << 8)));
    kwe_samples::StageList list;
    uint32_t whole = native;
    std::memcpy(&list, &whole, sizeof list);
    ASSERT_EQ(list.sound1, word & 3);
    ASSERT_EQ(list.boldItm4, (word >> 15) & 1);
    ASSERT_EQ(list.boxDrwn2, (word >> 6) & 1);
  }
}

TEST_F(ByteSwapTable, CountsOfZeroAndMinusOne) {
  // A 'DITL' whose count word is 0 holds exactly one item.
  kwe_samples::RecordWriter ditl(true);
  ditl.Word(0).Long(0x01020304).Rect(1, 2, 3, 4).Byte(32).Byte(2).Word(0x0102);
  ditl.Fill(14, 0xEE);  // a second item the count does not include
  Bytes loaded = LoadWriteReload(ditl.Result(), "DITL");
  EXPECT_EQ(Bytes(loaded.begin(), loaded.begin() + 18),
            (Bytes{0, 0, 4, 3, 2, 1, 1, 0, 2, 0, 3, 0, 4, 0, 32, 2, 2, 1}));
  EXPECT_EQ(Bytes(loaded.begin() + 18, loaded.end()), Bytes(14, 0xEE));

  // A 'MBAR' with count 0 converts only its count.
  Bytes mbar = LoadWriteReload({0, 0, 1, 2, 3, 4}, "MBAR");
  EXPECT_EQ(mbar, (Bytes{0, 0, 1, 2, 3, 4}));

  // A colour table whose ctSize is -1 converts only its 8-byte header.
  Bytes clut = LoadWriteReload({1, 2, 3, 4, 5, 6, 0xFF, 0xFF, 7, 8, 9, 10}, "clut");
  EXPECT_EQ(clut, (Bytes{4, 3, 2, 1, 6, 5, 0xFF, 0xFF, 7, 8, 9, 10}));
  EXPECT_TRUE(g_reports.empty());
}

TEST_F(ByteSwapTable, UnknownTypesAndNoSizeTouchNothing) {
  uint8_t guard[4] = {1, 2, 3, 4};
  for (SInt32 size : {0, -1, -32768}) {
    for (int i = 0; i < kwe::byteswap::TableTypeCount(); ++i)
      kwe::byteswap::SwapResource(1, kwe::byteswap::TableType(i), 0, size, guard, kHost);
    kwe::byteswap::SwapResource(1, TypeOf("XYZW"), 0, size, guard, kHost);
  }
  EXPECT_TRUE(g_reports.empty());
  ExactBlock block(Bytes{1, 2, 3, 4});
  EXPECT_EQ(block.Swap(kweSwapToNative, "XYZW"), SwapOutcome::UnknownType);
  EXPECT_EQ(block.Contents(), Bytes(guard, guard + 4));
  EXPECT_EQ(g_reports, std::vector<std::string>{"XYZW unknown byteswap type"});
}

// Every sample cut at every length: nothing is touched past the cut (the
// sanitizer watches the block's end), the write undoes the load, and a cut
// inside the fields the layout needs is reported.
TEST_F(ByteSwapTable, TruncatedRecordsStopAtTheirEnd) {
  for (const auto& sample : kwe_samples::AllSamples()) {
    Bytes whole = sample.make(true);
    for (size_t length = 1; length < whole.size(); ++length) {
      SCOPED_TRACE(std::string(sample.type) + " cut to " + std::to_string(length));
      Bytes cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
      SwapOutcome outcome;
      LoadWriteReload(cut, sample.type, &outcome);
      EXPECT_NE(outcome, SwapOutcome::UnknownType);
    }
  }
  // The fixed fields of a 'DLOG' end at 20: a 12-byte one is damaged.
  g_reports.clear();
  Bytes dlogBytes = kwe_samples::Dlog(true);
  ExactBlock dlog(Bytes(dlogBytes.begin(), dlogBytes.begin() + 12));
  EXPECT_EQ(dlog.Swap(kweSwapToNative, "DLOG"), SwapOutcome::Damaged);
  EXPECT_EQ(g_reports, std::vector<std::string>{"DLOG damaged byteswap data"});
}

// Counts and offsets that point far past the data: converted as far as the
// data goes, reported, and undone exactly by the opposite direction.
TEST_F(ByteSwapTable, HostileCountsAndOffsetsStopAtTheEndOfTheData) {
  struct Case {
    const char* type;
    Bytes mac;
  };
  Bytes ppatBack = kwe_samples::Ppat(true), ppatFar = ppatBack,
        cicnNegative = kwe_samples::Cicn(true);
  for (int i = 70; i < 74; ++i) ppatBack[i] = 0;  // colour table offset 0: inside the header
  ppatFar[70] = 0x7F;                             // offset past the data
  cicnNegative[10] = 0x80;                        // bounds bottom -32768: a negative image height
  Bytes ditlIconWithoutData{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 9, 9};
  const Case cases[] = {
      {"DITL", {0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0}},
      {"DITL", {0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 32, 0xFF}},
      {"DITL", ditlIconWithoutData},
      {"clut", {0, 0, 0, 1, 0, 0, 0x7F, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
      {"pltt", {0x7F, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3}},
      {"acur", {0x7F, 0xFF, 0, 0, 0, 1, 0, 2, 0, 3}},
      {"MBAR", {0x40, 0x00, 0, 1, 0, 2, 0}},
      {"ppat", ppatBack},
      {"ppat", ppatFar},
      {"cicn", cicnNegative},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    g_reports.clear();
    SwapOutcome outcome;
    LoadWriteReload(c.mac, c.type, &outcome);
    EXPECT_EQ(outcome, SwapOutcome::Damaged);
    ASSERT_FALSE(g_reports.empty());
    EXPECT_EQ(g_reports[0], std::string(c.type) + " damaged byteswap data");
  }
}

Bytes Counting(size_t n) {
  Bytes b(n);
  for (size_t i = 0; i < n; ++i) b[i] = uint8_t(i + 1);
  return b;
}

// Twelve counting bytes after each converter: whole elements reversed, the
// bytes past them left.
TEST(ByteSwapElements, EachConverterReversesWholeElementsOnly) {
  struct {
    const char* name;
    void (*swap)(uint8_t*);
    Bytes expected;
  } const cases[] = {
      {"WORD", [](uint8_t* b) { KWE_ByteSwapWORD(b); }, {2, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"LONG", [](uint8_t* b) { KWE_ByteSwapLONG(b); }, {4, 3, 2, 1, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"FLOAT",
       [](uint8_t* b) { KWE_ByteSwapFLOAT(b + 4); },
       {1, 2, 3, 4, 8, 7, 6, 5, 9, 10, 11, 12}},
      {"DOUBLE",
       [](uint8_t* b) { KWE_ByteSwapDOUBLE(b); },
       {8, 7, 6, 5, 4, 3, 2, 1, 9, 10, 11, 12}},
      {"EXTENDED",
       [](uint8_t* b) { KWE_ByteSwapEXTENDED(b); },
       {10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 11, 12}},  // byte k takes byte 9 - k
      {"881", [](uint8_t* b) { KWE_ByteSwap881(b); }, {12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
      {"Rect", [](uint8_t* b) { KWE_ByteSwapRect(b); }, {2, 1, 4, 3, 6, 5, 8, 7, 9, 10, 11, 12}},
      {"WORDS of 5",
       [](uint8_t* b) { KWE_ByteSwapWORDS(b, 5); },
       {2, 1, 4, 3, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"LONGS of 7",
       [](uint8_t* b) { KWE_ByteSwapLONGS(b, 7); },
       {4, 3, 2, 1, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"FLOATS of 8",
       [](uint8_t* b) { KWE_ByteSwapFLOATS(b, 8); },
       {4, 3, 2, 1, 8, 7, 6, 5, 9, 10, 11, 12}},
      {"FLOATS of -8", [](uint8_t* b) { KWE_ByteSwapFLOATS(b, -8); }, Counting(12)},
  };
  for (const auto& c : cases) {
    Bytes b = Counting(12);
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

// Seeded random data of every listed type at random sizes; any case can be
// replayed from its number.
TEST_F(ByteSwapTable, RandomDataOfEveryTypeRoundTrips) {
  std::mt19937 rng(31);
  std::uniform_int_distribution<int> byte(0, 255), length(0, 600), type(0, 1 << 20);
  for (int round = 0; round < 4000; ++round) {
    SCOPED_TRACE(round);
    const auto& samples = kwe_samples::AllSamples();
    const auto& sample = samples[size_t(type(rng)) % samples.size()];
    Bytes data = sample.make(true);
    data.resize(size_t(length(rng)));
    for (uint8_t& b : data)
      if (byte(rng) < 40) b = uint8_t(byte(rng));  // damage a sixth of the bytes
    if (data.empty()) continue;
    LoadWriteReload(data, sample.type);
  }
}

}  // namespace
