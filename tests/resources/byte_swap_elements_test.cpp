// The element converters natively: exact byte orders of every width, and
// the run converters' counts.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "KWEByteSwap.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Counting(size_t n) {
  Bytes b(n);
  for (size_t i = 0; i < n; ++i) b[i] = uint8_t(i + 1);
  return b;
}

TEST(ByteSwapElements, EachWidthReversesItsBytes) {
  Bytes b = Counting(12);
  KWE_ByteSwapWORD(b.data());
  EXPECT_EQ(b, (Bytes{2, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  b = Counting(12);
  KWE_ByteSwapLONG(b.data());
  KWE_ByteSwapFLOAT(b.data() + 4);
  EXPECT_EQ(b, (Bytes{4, 3, 2, 1, 8, 7, 6, 5, 9, 10, 11, 12}));
  b = Counting(12);
  KWE_ByteSwapDOUBLE(b.data());
  EXPECT_EQ(b, (Bytes{8, 7, 6, 5, 4, 3, 2, 1, 9, 10, 11, 12}));
  b = Counting(12);
  KWE_ByteSwapEXTENDED(b.data());  // byte k takes byte 9 - k
  EXPECT_EQ(b, (Bytes{10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 11, 12}));
  b = Counting(12);
  KWE_ByteSwap881(b.data());
  EXPECT_EQ(b, (Bytes{12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
  b = Counting(10);
  KWE_ByteSwapRect(b.data());
  EXPECT_EQ(b, (Bytes{2, 1, 4, 3, 6, 5, 8, 7, 9, 10}));
}

TEST(ByteSwapElements, RunsConvertWholeElementsOnly) {
  Bytes b = Counting(8);
  KWE_ByteSwapWORDS(b.data(), 5);  // two words; the odd byte stays
  EXPECT_EQ(b, (Bytes{2, 1, 4, 3, 5, 6, 7, 8}));
  b = Counting(8);
  KWE_ByteSwapLONGS(b.data(), 7);
  EXPECT_EQ(b, (Bytes{4, 3, 2, 1, 5, 6, 7, 8}));
  b = Counting(8);
  KWE_ByteSwapFLOATS(b.data(), 8);
  EXPECT_EQ(b, (Bytes{4, 3, 2, 1, 8, 7, 6, 5}));
  KWE_ByteSwapFLOATS(b.data(), -8);  // a negative 16-bit count converts nothing
  EXPECT_EQ(b, (Bytes{4, 3, 2, 1, 8, 7, 6, 5}));
}

TEST(ByteSwapElements, BigEndianReadsLeaveTheBytes) {
  const uint8_t bytes[] = {0x12, 0x34, 0x56, 0x78, 0xFF, 0xF6, 0x00, 0x14};
  EXPECT_EQ(KWE_GetByteSwapLONG(bytes), 0x12345678u);
  EXPECT_EQ(KWE_GetByteSwapWORD(bytes), 0x1234u);
  Rect r;
  KWE_GetByteSwapRect(bytes, &r);
  EXPECT_EQ(r.top, 0x1234);
  EXPECT_EQ(r.left, 0x5678);
  EXPECT_EQ(r.bottom, -10);
  EXPECT_EQ(r.right, 20);
  // In place: the Rect's own bytes hold the big-endian values.
  Rect same;
  std::memcpy(&same, bytes, sizeof same);
  KWE_GetByteSwapRect(&same, &same);
  EXPECT_EQ(same.bottom, -10);
  EXPECT_EQ(same.left, 0x5678);
  EXPECT_EQ(bytes[0], 0x12);
}

TEST(ByteSwapElements, ColourTableCountsItsOwnEntries) {
  // ctSize 1: two entries after the header; the bytes after them stay.
  uint8_t table[28] = {0, 0, 0, 9, 0x80, 0, 0, 1};
  for (int i = 8; i < 28; ++i) table[i] = uint8_t(i);
  KWE_ByteSwapCLUT(kweSwapToNative, table);
  EXPECT_EQ(Bytes(table, table + 8), (Bytes{9, 0, 0, 0, 0, 0x80, 1, 0}));
  EXPECT_EQ(table[8], 9);
  EXPECT_EQ(table[23], 22);
  EXPECT_EQ(Bytes(table + 24, table + 28), (Bytes{24, 25, 26, 27}));
  KWE_ByteSwapCLUT(kweSwapToMac, table);
  EXPECT_EQ(Bytes(table, table + 8), (Bytes{0, 0, 0, 9, 0x80, 0, 0, 1}));
  EXPECT_EQ(table[8], 8);
}

}  // namespace
