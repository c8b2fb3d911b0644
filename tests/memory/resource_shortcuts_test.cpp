// String handles, the resource shortcuts with no resource to find, and the
// clock and screen utilities, through the DLL.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "KWESession.h"
#include "Memory.h"
#include "OSUtils.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "support/test_host.h"

namespace {

class ResourceShortcutsTest : public kwe_test::SessionTest {};

std::string Text(StringHandle h) {
  return std::string(reinterpret_cast<const char*>(*h + 1), (*h)[0]);
}

TEST_F(ResourceShortcutsTest, NewStringAndSetStringHoldTheLengthByteToo) {
  const unsigned char hello[] = "\x05hello";
  StringHandle h = NewString(hello);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(h)), 6);
  EXPECT_EQ(Text(h), "hello");

  Str255 longest;
  longest[0] = 255;
  std::memset(longest + 1, 'w', 255);
  SetString(h, longest);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(h)), 256);
  EXPECT_EQ(Text(h), std::string(255, 'w'));
  const unsigned char empty[] = "\x00";
  SetString(h, empty);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(h)), 1);
  EXPECT_EQ((*h)[0], 0);
  DisposeHandle(reinterpret_cast<Handle>(h));

  StringHandle blank = NewString(empty);
  ASSERT_NE(blank, nullptr);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(blank)), 1);
  DisposeHandle(reinterpret_cast<Handle>(blank));
}

TEST_F(ResourceShortcutsTest, StringHandlesThatCannotGrowKeepTheirString) {
  const unsigned char shortText[] = "\x02hi";
  StringHandle h = NewString(shortText);
  ASSERT_NE(h, nullptr);
  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  KWE_SetMemoryLimits(1, allocated, 1, 0);  // no room for one byte more

  Str255 longer;
  longer[0] = 200;
  std::memset(longer + 1, 'x', 200);
  SetString(h, longer);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(Text(h), "hi");
  vars.MemErr = 0;
  EXPECT_EQ(NewString(longer), nullptr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  KWE_SetMemoryLimits(0, 0, 0, 0);
  DisposeHandle(reinterpret_cast<Handle>(h));
}

TEST_F(ResourceShortcutsTest, MissingResourcesGiveEmptyResults) {
  EXPECT_EQ(GetString(128), nullptr);
  EXPECT_EQ(GetIcon(128), nullptr);
  EXPECT_EQ(GetPattern(128), nullptr);
  EXPECT_EQ(GetPicture(128), nullptr);
  EXPECT_EQ(GetCurso(128), nullptr);

  Str255 s;
  std::memcpy(s, "\x04junk", 5);
  GetIndString(s, 128, 1);
  EXPECT_EQ(s[0], 0);
  std::memcpy(s, "\x04junk", 5);
  GetIndString(s, 128, 0);
  EXPECT_EQ(s[0], 0);

  for (SInt16 index : {SInt16(1), SInt16(0), SInt16(-3)}) {
    Pattern p{{1, 2, 3, 4, 5, 6, 7, 8}};
    GetIndPattern(&p, 128, index);  // no list: cleared whatever the index
    for (UInt8 b : p.pat) EXPECT_EQ(b, 0) << index;
  }
}

TEST_F(ResourceShortcutsTest, ClockAndScreenUtilities) {
  UInt32 before = 0, read = 0, after = 0;
  GetDateTime(&before);
  EXPECT_EQ(ReadDateTime(&read), noErr);
  GetDateTime(&after);
  EXPECT_GE(read, before);
  EXPECT_LE(read, after);
  EXPECT_EQ(ReadDateTime(nullptr), noErr);

  capture.Clear();
  EXPECT_EQ(SetDateTime(read + 3600), -1);
  ASSERT_EQ(capture.Reports().size(), 1u);
  EXPECT_EQ(capture.Reports()[0], "SetDateTime");

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
