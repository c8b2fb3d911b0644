// Munger through the DLL on real handles: every combination of null
// pointers and lengths, insertion past the end, failed growth, and
// replacement bytes taken from the handle itself.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KWESession.h"
#include "Memory.h"
#include "TextUtils.h"
#include "support/test_host.h"

namespace {

class MungerTest : public kwe_test::SessionTest {
 protected:
  Handle Make(const std::string& text) {
    Handle h = NewHandle(static_cast<Size>(text.size()));
    EXPECT_NE(h, nullptr);
    if (!text.empty()) std::memcpy(*h, text.data(), text.size());
    return h;
  }
  static std::string Text(Handle h) {
    Size n = GetHandleSize(h);
    return n ? std::string(*h, static_cast<size_t>(n)) : std::string();
  }
};

TEST_F(MungerTest, EveryCombinationOfPointersAndLengths) {
  // ptr1 is "c" followed by zeros, so that a length of 100 reads no further
  // than its buffer; the handle is "abcabc" and the offset 1 throughout.
  // Without ptr1 the target is offset and len1, a negative or overlong len1
  // meaning "to the end"; with it the target is searched for: "c" is found
  // at 2, empty and overlong patterns never.
  char pattern[100] = {'c'};
  struct {
    bool ptr1;
    SInt32 len1;
    bool ptr2;
    SInt32 len2;
    SInt32 result;
    const char* after;
  } const cases[] = {
      {false, -1, false, 0, 1, "abcabc"},  {false, -1, false, 2, 1, "abcabc"},
      {false, -1, true, 0, 1, "a"},        {false, -1, true, 2, 3, "aXY"},
      {false, 0, false, 0, 1, "abcabc"},   {false, 0, false, 2, 1, "abcabc"},
      {false, 0, true, 0, 1, "abcabc"},    {false, 0, true, 2, 3, "aXYbcabc"},
      {false, 1, false, 0, 1, "abcabc"},   {false, 1, false, 2, 1, "abcabc"},
      {false, 1, true, 0, 1, "acabc"},     {false, 1, true, 2, 3, "aXYcabc"},
      {false, 100, false, 0, 1, "abcabc"}, {false, 100, false, 2, 1, "abcabc"},
      {false, 100, true, 0, 1, "a"},       {false, 100, true, 2, 3, "aXY"},
      {true, -1, false, 0, -1, "abcabc"},  {true, -1, false, 2, -1, "abcabc"},
      {true, -1, true, 0, -1, "abcabc"},   {true, -1, true, 2, -1, "abcabc"},
      {true, 0, false, 0, -1, "abcabc"},   {true, 0, false, 2, -1, "abcabc"},
      {true, 0, true, 0, -1, "abcabc"},    {true, 0, true, 2, 3, "aXYbcabc"},
      {true, 1, false, 0, 2, "abcabc"},    {true, 1, false, 2, 2, "abcabc"},
      {true, 1, true, 0, 2, "ababc"},      {true, 1, true, 2, 4, "abXYabc"},
      {true, 100, false, 0, -1, "abcabc"}, {true, 100, false, 2, -1, "abcabc"},
      {true, 100, true, 0, -1, "abcabc"},  {true, 100, true, 2, -1, "abcabc"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.ptr1 << " " << c.len1 << " " << c.ptr2 << " " << c.len2);
    Handle h = Make("abcabc");
    EXPECT_EQ(Munger(h, 1, c.ptr1 ? pattern : nullptr, c.len1, c.ptr2 ? "XY" : nullptr, c.len2),
              c.result);
    EXPECT_EQ(Text(h), c.after);
    DisposeHandle(h);
  }
}

TEST_F(MungerTest, FindsReplacesInsertsAndDeletes) {
  Handle h = Make("hello, wonderful world");
  EXPECT_EQ(Munger(h, 8, "wo", 2, nullptr, 0), 17);  // the search starts at the offset
  EXPECT_EQ(Munger(h, 18, "wo", 2, nullptr, 0), -1);
  EXPECT_EQ(Munger(h, 0, "wonderful", 9, "big", 3), 10);  // shrinks
  EXPECT_EQ(Munger(h, 0, "big", 3, "enormous", 8), 15);   // grows
  EXPECT_EQ(Munger(h, 0, ",", 1, "", 0), 5);              // replaced by nothing: deleted
  EXPECT_EQ(Munger(h, 0, "world", 5, "globe", 5), 20);    // same length, at the very end
  EXPECT_EQ(Text(h), "hello enormous globe");
  DisposeHandle(h);

  h = Make("abc");
  EXPECT_EQ(Munger(h, 0, nullptr, 0, ">>", 2), 2);
  EXPECT_EQ(Munger(h, 5, nullptr, 0, "<<", 2), 7);   // at the end
  EXPECT_EQ(Munger(h, 10, nullptr, 0, "!", 1), 11);  // past the end: the gap is zero-filled
  EXPECT_EQ(Text(h), std::string(">>abc<<\0\0\0!", 11));
  EXPECT_EQ(Munger(h, 2, nullptr, 3, "", 0), 2);
  EXPECT_EQ(Munger(h, 4, nullptr, -1, "", 0), 4);
  EXPECT_EQ(Text(h), ">><<");
  EXPECT_EQ(Munger(h, 1, nullptr, 1000, "", 0), 1);  // an overlong deletion stops at the end
  EXPECT_EQ(Text(h), ">");
  DisposeHandle(h);

  Handle empty = NewHandle(0);  // no storage yet: the insertion gives it some
  EXPECT_EQ(Munger(empty, 0, "a", 1, nullptr, 0), -1);
  EXPECT_EQ(Munger(empty, 0, nullptr, 0, "first", 5), 5);
  EXPECT_EQ(Text(empty), "first");
  Handle emptied = NewEmptyHandle();  // master pointer 0
  EXPECT_EQ(Munger(emptied, 0, nullptr, -1, nullptr, 0), 0);
  EXPECT_EQ(Munger(emptied, 0, nullptr, 0, "z", 1), 1);
  EXPECT_EQ(Text(emptied), "z");
  DisposeHandle(empty);
  DisposeHandle(emptied);
}

TEST_F(MungerTest, BadHandlesOffsetsAndFailedGrowthChangeNothing) {
  vars.MemErr = 0x5A5A;
  EXPECT_EQ(Munger(nullptr, 0, "a", 1, "b", 1), -1);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  Handle h = Make("keep me");
  EXPECT_EQ(Munger(h, -1, nullptr, 0, "x", 1), -1);
  EXPECT_EQ(Munger(h, -1, "k", 1, nullptr, 0), -1);
  EXPECT_EQ(Munger(h, 8, "k", 1, nullptr, 0), -1);  // offset past the end
  EXPECT_EQ(Munger(h, 8, nullptr, -1, "x", 1), -1);
  EXPECT_EQ(Munger(h, 8, nullptr, 1, "", 0), -1);
  EXPECT_EQ(Munger(h, 7, nullptr, -1, nullptr, 0), 7);  // at the end: an empty target

  UInt32 allocated = 0;
  KWE_ComputeMemorySize(nullptr, nullptr, nullptr, nullptr, &allocated);
  KWE_SetMemoryLimits(1, allocated + 50000, 1, 0);  // half of what the growth asks
  static char big[100000];
  vars.MemErr = 0;
  EXPECT_EQ(Munger(h, 2, nullptr, 0, big, sizeof big), -1);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(Munger(h, 0, "me", 2, big, sizeof big), -1);
  EXPECT_EQ(Text(h), "keep me");
  EXPECT_EQ(Munger(h, 0, "me", 2, "you", 3), 8);  // small growth still fits
  EXPECT_EQ(Text(h), "keep you");
  KWE_SetMemoryLimits(0, 0, 0, 0);
  DisposeHandle(h);
}

TEST_F(MungerTest, ReplacementBytesMayComeFromTheHandleItself) {
  // Growing may move the data; the bytes to insert must survive that.
  std::string text(5000, 'q');
  text += "tail";
  Handle h = Make(text);
  SInt32 size = GetHandleSize(h);
  EXPECT_EQ(Munger(h, 0, nullptr, 0, *h, size), size);
  EXPECT_EQ(Text(h), text + text);
  EXPECT_EQ(Munger(h, 0, "tail", 4, *h + size, size), 2 * size - 4);
  EXPECT_EQ(GetHandleSize(h), 3 * size - 4);
  DisposeHandle(h);
}

class MungerSmallBlockTest : public MungerTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagSmallBlocks; }
};

TEST_F(MungerSmallBlockTest, GrowingOutOfASmallBlockKeepsTheBytes) {
  Handle h = Make("small block text");
  std::string large(20000, 'L');  // past the small-block limit: the data moves out
  EXPECT_EQ(Munger(h, 6, nullptr, 0, large.data(), static_cast<SInt32>(large.size())), 20006);
  EXPECT_EQ(Text(h), "small " + large + "block text");
  EXPECT_EQ(Munger(h, 6, nullptr, 20000, "", 0), 6);  // and shrinks back
  EXPECT_EQ(Text(h), "small block text");
  DisposeHandle(h);
}

}  // namespace
