// Picking strings out of 'STR#' data and patterns out of 'PAT#' data, as
// the Resource Manager hands them over (count in the processor's order),
// including lists whose counts and lengths lie.
#include "memory/indexed_lists.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using kwe::utilities::CopyIndexedPattern;
using kwe::utilities::CopyIndexedString;
using kwe::utilities::PatternLookup;
using Bytes = std::vector<unsigned char>;

Bytes StringList(SInt16 count, std::initializer_list<std::string> strings) {
  Bytes list(2);
  std::memcpy(list.data(), &count, 2);
  for (const std::string& s : strings) {
    list.push_back(static_cast<unsigned char>(s.size()));
    list.insert(list.end(), s.begin(), s.end());
  }
  return list;
}

std::string Get(const Bytes& list, SInt16 index, bool* found = nullptr) {
  Str255 s;
  std::memset(s, 0x7A, sizeof s);
  s[0] = 0;
  bool ok = CopyIndexedString(list.data(), list.size(), index, s);
  if (found) *found = ok;
  return std::string(reinterpret_cast<const char*>(s + 1), s[0]);
}

TEST(IndexedLists, StringsAreCountedFromOne) {
  std::string longest(255, 'L');
  Bytes list = StringList(4, {"first", "", longest, "last"});
  EXPECT_EQ(Get(list, 1), "first");
  EXPECT_EQ(Get(list, 2), "");
  EXPECT_EQ(Get(list, 3), longest);
  EXPECT_EQ(Get(list, 4), "last");
  bool found = true;
  for (SInt16 index : {SInt16(0), SInt16(-1), SInt16(5), SInt16(32767)}) {
    EXPECT_EQ(Get(list, index, &found), "") << index;
    EXPECT_FALSE(found) << index;
  }
}

TEST(IndexedLists, LyingStringListsStayInsideTheirData) {
  // The count claims more strings than there are.
  Bytes list = StringList(9, {"one", "two"});
  bool found = true;
  EXPECT_EQ(Get(list, 2), "two");
  EXPECT_EQ(Get(list, 3, &found), "");
  EXPECT_FALSE(found);
  // The last string's length runs past the end of the data.
  Bytes cut = StringList(2, {"one", "twelve"});
  cut.resize(cut.size() - 3);
  EXPECT_EQ(Get(cut, 1), "one");
  EXPECT_EQ(Get(cut, 2, &found), "");
  EXPECT_FALSE(found);
  // A negative count, a lone byte, nothing at all.
  EXPECT_EQ(Get(StringList(-3, {"a"}), 1, &found), "");
  EXPECT_FALSE(found);
  Str255 scratch{};
  EXPECT_FALSE(CopyIndexedString(Bytes{1}.data(), 1, 1, scratch));
  EXPECT_FALSE(CopyIndexedString(nullptr, 0, 1, scratch));
  // Every truncation of a valid list, under AddressSanitizer in exact-size
  // blocks, reads nothing outside it.
  Bytes whole = StringList(3, {"alpha", "beta", "gamma"});
  for (size_t size = 0; size <= whole.size(); ++size) {
    Bytes part(whole.begin(), whole.begin() + static_cast<long>(size));
    for (SInt16 i = 1; i <= 3; ++i) Get(part, i);
  }
}

TEST(IndexedLists, PatternsBeforeInsideAndBeyondTheList) {
  Bytes list(2 + 16);
  SInt16 count = 2;
  std::memcpy(list.data(), &count, 2);
  for (int i = 0; i < 16; ++i) list[2 + i] = static_cast<unsigned char>(0x10 + i);

  Pattern p{};
  EXPECT_EQ(CopyIndexedPattern(list.data(), list.size(), 2, &p), PatternLookup::kFound);
  EXPECT_EQ(p.pat[0], 0x18);
  EXPECT_EQ(p.pat[7], 0x1F);
  Pattern untouched{{1, 2, 3, 4, 5, 6, 7, 8}};
  Pattern q = untouched;
  EXPECT_EQ(CopyIndexedPattern(list.data(), list.size(), 0, &q), PatternLookup::kBeforeFirst);
  EXPECT_EQ(CopyIndexedPattern(list.data(), list.size(), 3, &q), PatternLookup::kBeyondLast);
  EXPECT_EQ(std::memcmp(&q, &untouched, sizeof q), 0);
  // A count larger than the data: the missing patterns are beyond the list.
  count = 5;
  std::memcpy(list.data(), &count, 2);
  EXPECT_EQ(CopyIndexedPattern(list.data(), list.size(), 3, &q), PatternLookup::kBeyondLast);
  EXPECT_EQ(CopyIndexedPattern(list.data(), list.size() - 1, 2, &q), PatternLookup::kBeyondLast);
}

}  // namespace
