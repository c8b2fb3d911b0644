// The utilities as a host reaches them through the DLL: arguments passed the
// way the host's compiler passes them (16-bit values, a Point by value,
// doubles), string handles, the resource shortcuts with no resource to find,
// the character switch of system value 24, and the clock and screen.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "FixMath.h"
#include "KWECharacters.h"
#include "KWEStrings.h"
#include "Memory.h"
#include "OSUtils.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "support/test_host.h"

namespace {

using Bytes = std::vector<uint8_t>;

const unsigned char* Pascal(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}
std::string Text(StringHandle h) { return std::string(reinterpret_cast<char*>(*h + 1), (*h)[0]); }
Size SizeOf(StringHandle h) { return GetHandleSize(reinterpret_cast<Handle>(h)); }

class UtilitiesExports : public kwe_test::SessionTest {};

TEST_F(UtilitiesExports, ArgumentsReachTheLibraryIntact) {
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

  Str255 s = "\003abc";  // octal: "\x03abc" would be one hex escape
  PLstrcat(s, Pascal("\003def"));
  EXPECT_EQ(PLpos(s, Pascal("\002cd")), 3);
  UpperString(s, false);
  EXPECT_EQ(RelString(s, Pascal("\006abcdef"), true, true), -1);
  char c[8];
  KWE_CopyPtoC(s, c);
  EXPECT_STREQ(c, "ABCDEF");
}

TEST_F(UtilitiesExports, SystemValue24SwitchesBothCharacterDirections) {
  const Bytes mac{'C', 0x8E, 0x87, 0xC9};
  Bytes out(16), back(16);
  ASSERT_EQ(KWE_MacToAnsiBuf(mac.data(), out.data(), 4, 0), 6);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 6), (Bytes{'C', 0xE9, 0xE1, '.', '.', '.'}));
  ASSERT_EQ(KWE_AnsiToMacBuf(out.data(), back.data(), 3), 3);
  EXPECT_EQ(Bytes(back.begin(), back.begin() + 3), (Bytes{'C', 0x8E, 0x87}));
  EXPECT_EQ(KWE_SystemValue(1, 24, 0), 1);
  ASSERT_EQ(KWE_MacToAnsiBuf(mac.data(), out.data(), 3, 0), 3);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 3), (Bytes{'C', 0x8E, 0x87}));
  KWE_SystemValue(1, 24, 1);
}

TEST_F(UtilitiesExports, StringHandlesHoldTheLengthByteAndKeepItWhenShort) {
  StringHandle h = NewString(Pascal("\x05hello"));
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(SizeOf(h), 6);
  EXPECT_EQ(Text(h), "hello");
  Str255 longest;
  longest[0] = 255;
  std::memset(longest + 1, 'w', 255);
  SetString(h, longest);
  EXPECT_EQ(SizeOf(h), 256);
  EXPECT_EQ(Text(h), std::string(255, 'w'));
  SetString(h, Pascal("\x02hi"));
  EXPECT_EQ(SizeOf(h), 3);

  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  KWE_SetMemoryLimits(1, allocated, 1, 0);  // no room for one byte more
  SetString(h, longest);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(Text(h), "hi");
  vars.MemErr = 0;
  EXPECT_EQ(NewString(longest), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  KWE_SetMemoryLimits(0, 0, 0, 0);
  DisposeHandle(reinterpret_cast<Handle>(h));
}

TEST_F(UtilitiesExports, MissingResourcesGiveEmptyResults) {
  EXPECT_EQ(GetString(128), nullptr);
  EXPECT_EQ(GetIcon(128), nullptr);
  EXPECT_EQ(GetPattern(128), nullptr);
  EXPECT_EQ(GetPicture(128), nullptr);
  EXPECT_EQ(GetCurso(128), nullptr);
  for (SInt16 index : {SInt16(1), SInt16(0), SInt16(-3)}) {
    Str255 s;
    std::memcpy(s, "\x04junk", 5);
    GetIndString(s, 128, index);
    EXPECT_EQ(s[0], 0) << index;
    Pattern p{{1, 2, 3, 4, 5, 6, 7, 8}};
    GetIndPattern(&p, 128, index);  // no list: cleared whatever the index
    for (UInt8 b : p.pat) EXPECT_EQ(b, 0) << index;
  }
}

TEST_F(UtilitiesExports, ClockAndScreenUtilities) {
  UInt32 before = 0, read = 0, after = 0;
  GetDateTime(&before);
  EXPECT_EQ(ReadDateTime(&read), noErr);
  GetDateTime(&after);
  EXPECT_GE(read, before);
  EXPECT_LE(read, after);
  EXPECT_EQ(ReadDateTime(nullptr), noErr);
  EXPECT_EQ(SetDateTime(read + 3600), -1);
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"SetDateTime"});

  HDC screen = GetDC(nullptr);
  int dpiX = GetDeviceCaps(screen, LOGPIXELSX), dpiY = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  SInt16 h = 0, v = 0;
  ScreenRes(&h, &v);
  EXPECT_EQ(h, dpiX);
  EXPECT_EQ(v, dpiY);
  ScreenRes(nullptr, nullptr);
}

}  // namespace
