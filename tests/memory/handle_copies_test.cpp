#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "Memory.h"
#include "memory/memory_test_support.h"

namespace {

using namespace kwe_test;

class HandleCopies : public SessionTest {};

TEST_F(HandleCopies, HandToHandMakesAnIndependentCopy) {
  Handle original = NewHandle(300);
  Fill(original, 11);
  Handle copy = original;
  vars.MemErr = kPoison;
  EXPECT_EQ(HandToHand(&copy), noErr);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(copy, original);
  EXPECT_EQ(GetHandleSize(copy), 300);
  EXPECT_TRUE(HoldsFill(copy, 11, 300));
  (*original)[0] = 0;
  EXPECT_EQ((*copy)[0], 11);

  Handle none = nullptr;
  vars.MemErr = kPoison;
  EXPECT_EQ(HandToHand(&none), nilHandleErr);
  EXPECT_EQ(vars.MemErr, nilHandleErr);
  EXPECT_EQ(HandToHand(nullptr), nilHandleErr);

  Handle empty = NewHandle(0);
  Handle emptyCopy = empty;
  EXPECT_EQ(HandToHand(&emptyCopy), noErr);
  ASSERT_NE(emptyCopy, empty);
  EXPECT_EQ(*emptyCopy, kNoBlock) << "a copy of a 0-byte handle is a new 0-byte handle";
  EXPECT_EQ(GetHandleSize(emptyCopy), 0);
  for (Handle h : {original, copy, empty, emptyCopy}) DisposeHandle(h);
}

TEST_F(HandleCopies, HandToHandThatCannotBeHadLeavesNull) {
  Handle original = NewHandle(20000);
  KWE_SetMemoryLimits(1, LibraryBytes() + 1000, 0, 0);
  Handle copy = original;
  vars.MemErr = kPoison;
  EXPECT_EQ(HandToHand(&copy), memFullErr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(copy, nullptr);
  EXPECT_EQ(GetHandleSize(original), 20000) << "the original is not touched";
  DisposeHandle(original);
}

TEST_F(HandleCopies, PtrToHandAndPtrToXHand) {
  const char text[] = "Inside Macintosh";
  Handle h = nullptr;
  vars.MemErr = kPoison;
  EXPECT_EQ(PtrToHand(text, &h, sizeof text), noErr);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(GetHandleSize(h), static_cast<Size>(sizeof text));
  EXPECT_STREQ(*h, text);

  EXPECT_EQ(PtrToXHand("abc", h, 4), noErr);
  EXPECT_EQ(GetHandleSize(h), 4);
  EXPECT_STREQ(*h, "abc");
  vars.MemErr = kPoison;
  EXPECT_EQ(PtrToXHand("abc", nullptr, 4), noErr) << "a null destination is ignored";
  EXPECT_EQ(vars.MemErr, noErr);

  KWE_SetMemoryLimits(1, LibraryBytes() + 1000, 0, 0);
  Handle failed = h;
  EXPECT_EQ(PtrToHand(text, &failed, 100000), memFullErr);
  EXPECT_EQ(failed, nullptr);
  static char big[100000];
  EXPECT_EQ(PtrToXHand(big, h, sizeof big), memFullErr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(GetHandleSize(h), 4);
  EXPECT_STREQ(*h, "abc");
  DisposeHandle(h);
}

TEST_F(HandleCopies, HandAndHandAndPtrAndHandAppend) {
  Handle a = nullptr, b = nullptr;
  PtrToHand("abc", &a, 3);
  PtrToHand("de", &b, 2);
  vars.MemErr = kPoison;
  EXPECT_EQ(HandAndHand(a, b), noErr);
  EXPECT_EQ(vars.MemErr, noErr);
  ASSERT_EQ(GetHandleSize(b), 5);
  EXPECT_EQ(std::memcmp(*b, "deabc", 5), 0);
  EXPECT_EQ(HandAndHand(b, b), noErr) << "a handle appended to itself";
  ASSERT_EQ(GetHandleSize(b), 10);
  EXPECT_EQ(std::memcmp(*b, "deabcdeabc", 10), 0);
  EXPECT_EQ(PtrAndHand("xyz", a, 3), noErr);
  ASSERT_EQ(GetHandleSize(a), 6);
  EXPECT_EQ(std::memcmp(*a, "abcxyz", 6), 0);

  EXPECT_EQ(HandAndHand(nullptr, b), noErr);
  EXPECT_EQ(PtrAndHand(nullptr, b, 3), noErr);
  EXPECT_EQ(PtrAndHand("x", nullptr, 1), noErr);
  EXPECT_EQ(GetHandleSize(b), 10);

  KWE_SetMemoryLimits(1, LibraryBytes() + 1000, 0, 0);
  static char big[50000];
  vars.MemErr = kPoison;
  EXPECT_EQ(PtrAndHand(big, a, sizeof big), memFullErr);
  EXPECT_EQ(vars.MemErr, memFullErr);
  EXPECT_EQ(GetHandleSize(a), 6);
  EXPECT_EQ(std::memcmp(*a, "abcxyz", 6), 0);
  DisposeHandle(a);
  DisposeHandle(b);
}

}  // namespace
