// The handle-based utilities through the DLL on real handles: Munger with
// every combination of null pointers and lengths, insertion past the end,
// failed growth and bytes taken from the handle itself; and string handles.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KWESession.h"
#include "Memory.h"
#include "TextUtils.h"
#include "support/test_host.h"

namespace {

class HandleUtilities : public kwe_test::SessionTest {
 protected:
  Handle Make(const std::string& text) {
    Handle h = nullptr;
    EXPECT_EQ(PtrToHand(text.data(), &h, static_cast<SInt32>(text.size())), noErr);
    return h;
  }
  static std::string Text(Handle h) { return std::string(*h, size_t(GetHandleSize(h))); }
};

TEST_F(HandleUtilities, MungerEveryCombinationOfPointersAndLengths) {
  // ptr1 is "c" followed by zeros, so that a length of 100 reads no further
  // than its buffer; the handle is "abcabc" and the offset 1 throughout.
  // Without ptr1 the target is offset and len1, a negative or overlong len1
  // meaning "to the end"; with it the target is searched for: "c" is found
  // at 2, empty and overlong patterns never. Without ptr2 nothing changes.
  char pattern[100] = {'c'};
  struct {
    bool ptr1;
    SInt32 len1;
    bool ptr2;
    SInt32 len2;
    SInt32 result;
    const char* after;
  } const cases[] = {
      {false, -1, false, 0, 1, "abcabc"}, {false, -1, true, 0, 1, "a"},
      {false, -1, true, 2, 3, "aXY"},     {false, 0, false, 0, 1, "abcabc"},
      {false, 0, true, 0, 1, "abcabc"},   {false, 0, true, 2, 3, "aXYbcabc"},
      {false, 1, false, 0, 1, "abcabc"},  {false, 1, true, 0, 1, "acabc"},
      {false, 1, true, 2, 3, "aXYcabc"},  {false, 100, false, 0, 1, "abcabc"},
      {false, 100, true, 0, 1, "a"},      {false, 100, true, 2, 3, "aXY"},
      {true, -1, false, 0, -1, "abcabc"}, {true, -1, true, 0, -1, "abcabc"},
      {true, -1, true, 2, -1, "abcabc"},  {true, 0, false, 0, -1, "abcabc"},
      {true, 0, true, 0, -1, "abcabc"},   {true, 0, true, 2, 3, "aXYbcabc"},
      {true, 1, false, 0, 2, "abcabc"},   {true, 1, true, 0, 2, "ababc"},
      {true, 1, true, 2, 4, "abXYabc"},   {true, 100, false, 0, -1, "abcabc"},
      {true, 100, true, 0, -1, "abcabc"}, {true, 100, true, 2, -1, "abcabc"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.ptr1 << " " << c.len1 << " " << c.ptr2 << " " << c.len2);
    Handle h = Make("abcabc");
    EXPECT_EQ(Munger(h, 1, c.ptr1 ? pattern : nullptr, c.len1, c.ptr2 ? "XY" : nullptr, c.len2),
              c.result);
    EXPECT_EQ(Text(h), c.after);
  }
}

// Insertion past the end zero-fills the gap; an overlong deletion stops at
// the end; bad handles and offsets, and growth that cannot be had, change
// nothing.
TEST_F(HandleUtilities, MungerPastTheEndAndWhenItCannotGrow) {
  EXPECT_EQ(Munger(nullptr, 0, "a", 1, "b", 1), -1);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  Handle h = NewEmptyHandle();
  EXPECT_EQ(Munger(h, 0, nullptr, 0, "keep", 4), 4);
  EXPECT_EQ(Munger(h, 7, nullptr, 0, "!", 1), 8);
  EXPECT_EQ(Text(h), std::string("keep\0\0\0!", 8));
  EXPECT_EQ(Munger(h, 4, nullptr, 1000, " me", 3), 7);
  EXPECT_EQ(Munger(h, -1, nullptr, 0, "x", 1), -1);
  EXPECT_EQ(Munger(h, 8, "k", 1, nullptr, 0), -1);  // offset past the end
  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  KWE_SetMemoryLimits(1, allocated + 50000, 1, 0);  // half of what the growth asks
  static char big[100000];
  EXPECT_EQ(Munger(h, 2, nullptr, 0, big, sizeof big), -1);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(Munger(h, 0, "me", 2, big, sizeof big), -1);
  EXPECT_EQ(Text(h), "keep me");
  EXPECT_EQ(Munger(h, 0, "me", 2, "you", 3), 8);  // small growth still fits
  EXPECT_EQ(Text(h), "keep you");
}

// Growing may move the data; bytes to insert that come from the handle
// itself must survive that.
TEST_F(HandleUtilities, MungerReplacementBytesMayComeFromTheHandleItself) {
  std::string text = std::string(5000, 'q') + "tail";
  Handle h = Make(text);
  SInt32 size = GetHandleSize(h);
  EXPECT_EQ(Munger(h, 0, nullptr, 0, *h, size), size);
  EXPECT_EQ(Text(h), text + text);
  EXPECT_EQ(Munger(h, 0, "tail", 4, *h + size, size), 2 * size - 4);
  EXPECT_EQ(GetHandleSize(h), 3 * size - 4);
}

// A string handle holds the length byte and the characters, no more; one
// that cannot grow keeps its string.
TEST_F(HandleUtilities, StringHandlesHoldTheLengthByteAndKeepItWhenShort) {
  StringHandle h = NewString(reinterpret_cast<const unsigned char*>("\x05hello"));
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(GetHandleSize(reinterpret_cast<Handle>(h)), 6);
  Str255 longest = {255};
  std::memset(longest + 1, 'w', 255);
  SetString(h, longest);
  EXPECT_EQ(Text(reinterpret_cast<Handle>(h)), "\xFF" + std::string(255, 'w'));
  SetString(h, reinterpret_cast<const unsigned char*>("\x02hi"));
  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  KWE_SetMemoryLimits(1, allocated, 1, 0);  // no room for one byte more
  SetString(h, longest);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(Text(reinterpret_cast<Handle>(h)), "\x02hi");
  EXPECT_EQ(NewString(longest), nullptr);
}

}  // namespace
