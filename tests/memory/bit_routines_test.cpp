// Bit strings in memory and bit operations on long words.
#include "memory/bit_routines.h"

#include <gtest/gtest.h>

#include <cstring>

#include "ToolUtils.h"

namespace {

TEST(BitRoutines, BitZeroIsTheHighBitOfTheFirstByte) {
  unsigned char bytes[4] = {0x80, 0x40, 0x00, 0x01};
  EXPECT_TRUE(BitTst(bytes, 0));
  EXPECT_FALSE(BitTst(bytes, 1));
  EXPECT_TRUE(BitTst(bytes, 9));  // 0x40 of the second byte
  EXPECT_FALSE(BitTst(bytes, 8));
  EXPECT_TRUE(BitTst(bytes, 31));

  unsigned char cleared[4] = {};
  BitSet(cleared, 0);
  BitSet(cleared, 9);
  BitSet(cleared, 31);
  EXPECT_EQ(0, std::memcmp(cleared, bytes, 4));
  BitClr(cleared, 9);
  BitClr(cleared, 10);  // already clear: stays clear, neighbours untouched
  unsigned char expected[4] = {0x80, 0x00, 0x00, 0x01};
  EXPECT_EQ(0, std::memcmp(cleared, expected, 4));
}

TEST(BitRoutines, BitSetWalksEveryBitOfAStringInOrder) {
  unsigned char bytes[8] = {};
  for (int n = 0; n < 64; ++n) {
    BitSet(bytes, n);
    for (int k = 0; k < 64; ++k) ASSERT_EQ(BitTst(bytes, k) != 0, k <= n) << n << " " << k;
  }
  for (int n = 63; n >= 0; --n) BitClr(bytes, n);
  for (unsigned char b : bytes) EXPECT_EQ(b, 0);
}

TEST(BitRoutines, ByteOffsetWrapsAt64K) {
  // Bit 65,536 * 8 lands on byte 0 again, as the 68K's word offset did.
  unsigned char bytes[2] = {0x80, 0};
  EXPECT_TRUE(BitTst(bytes, 0x80000));
  BitClr(bytes, 0x80000);
  EXPECT_EQ(bytes[0], 0);
}

TEST(BitRoutines, LogicalOperationsAndShifts) {
  EXPECT_EQ(BitAnd(0x0F0F0F0F, 0x00FF00FF), 0x000F000F);
  EXPECT_EQ(BitOr(0x0F000000, 0x000000F0), 0x0F0000F0);
  EXPECT_EQ(BitXor(-1, 0x0000FFFF), static_cast<SInt32>(0xFFFF0000));
  EXPECT_EQ(kwe::utilities::BitNot(0x0000FFFF), static_cast<SInt32>(0xFFFF0000));

  EXPECT_EQ(BitShift(static_cast<SInt32>(0x80000000), -4), static_cast<SInt32>(0xF8000000));
  EXPECT_EQ(BitShift(0x40000000, -4), 0x04000000);
  EXPECT_EQ(BitShift(1, 4), 16);
  EXPECT_EQ(BitShift(1, 31), static_cast<SInt32>(0x80000000));
  EXPECT_EQ(BitShift(3, 32), 3);  // counts are taken modulo 32
  EXPECT_EQ(BitShift(3, 33), 6);
  EXPECT_EQ(BitShift(-64, -33), -32);
  EXPECT_EQ(BitShift(0x1234, 0), 0x1234);
  EXPECT_EQ(BitShift(0x1234, -32768), 0x1234);  // -(-32768) & 31 is 0
}

TEST(BitRoutines, WordsAndPointDifferences) {
  EXPECT_EQ(HiWord(static_cast<SInt32>(0x8001FFFE)), static_cast<SInt16>(0x8001));
  EXPECT_EQ(LoWord(static_cast<SInt32>(0x8001FFFE)), -2);
  EXPECT_EQ(HiWord(0x00017FFF), 1);
  EXPECT_EQ(LoWord(0x00017FFF), 0x7FFF);

  Point a{10, 20}, b{3, 25};
  EXPECT_EQ(DeltaPoint(a, b), static_cast<SInt32>(0x0007FFFB));  // v 7, h -5
  Point c{-32768, 0}, d{1, 0};
  EXPECT_EQ(DeltaPoint(c, d), 0x7FFF0000);  // each half wraps in 16 bits
}

}  // namespace
