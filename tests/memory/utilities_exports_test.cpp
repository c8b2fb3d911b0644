// The portable utilities as a host reaches them: through the DLL's exports,
// with arguments passed the way the host's compiler passes them (16-bit
// values, a Point by value, doubles).
#include <gtest/gtest.h>

#include <cstring>

#include "FixMath.h"
#include "KWEStrings.h"
#include "TextUtils.h"
#include "ToolUtils.h"

namespace {

TEST(UtilitiesExports, ArgumentsReachTheLibraryIntact) {
  EXPECT_EQ(FixRatio(1, 3), 0x5555);
  EXPECT_EQ(FixRatio(-5, 0), static_cast<Fixed>(0x80000001));
  EXPECT_EQ(FixDiv(0x7FFF0000, 0x100), 0x7FFFFFFF);
  EXPECT_EQ(X2Fix(-1.5), -0x18000);
  EXPECT_EQ(Fix2X(0x18000), 1.5);
  EXPECT_EQ(FracSqrt(0x20000000), 0x2D413CCD);
  EXPECT_EQ(FixATan2(-1, -1), -154416);
  EXPECT_EQ(BitShift(static_cast<SInt32>(0x80000000), -4), static_cast<SInt32>(0xF8000000));
  EXPECT_EQ(DeltaPoint(Point{10, 20}, Point{3, 25}), 0x0007FFFB);

  unsigned char bits[2] = {0, 0};
  BitSet(bits, 9);
  EXPECT_TRUE(BitTst(bits, 9));
  EXPECT_EQ(bits[1], 0x40);

  char row[200], packed[210], back[200];
  std::memset(row, 0x55, sizeof row);
  Ptr src = row, dst = packed;
  HPackBits(&src, &dst, sizeof row);
  EXPECT_EQ(dst - packed, 4);
  src = packed, dst = back;
  HUnpackBits(&src, &dst, sizeof back);
  EXPECT_EQ(std::memcmp(row, back, sizeof row), 0);

  Str255 s =
      "\x03"
      "abc";
  PLstrcat(s, reinterpret_cast<const unsigned char*>("\x03"
                                                     "def"));
  EXPECT_EQ(PLpos(s, reinterpret_cast<const unsigned char*>("\x02"
                                                            "cd")),
            3);
  UpperString(s, false);
  EXPECT_EQ(std::memcmp(s,
                        "\x06"
                        "ABCDEF",
                        7),
            0);
  EXPECT_EQ(RelString(s,
                      reinterpret_cast<const unsigned char*>("\x06"
                                                             "abcdef"),
                      true, true),
            -1);
  char c[8];
  KWE_CopyPtoC(s, c);
  EXPECT_STREQ(c, "ABCDEF");
}

}  // namespace
