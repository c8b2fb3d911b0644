#include "frame/document_list.h"

#include <gtest/gtest.h>

namespace kwe {
namespace {

TEST(DocumentList, CommandLineSplitsAtBlanksAndCommas) {
  EXPECT_EQ(SplitCommandLine("a.txt,b.txt"), (std::vector<std::string>{"a.txt", "b.txt"}));
  EXPECT_EQ(SplitCommandLine("  x ,, y\tz "), (std::vector<std::string>{"x", "y", "z"}));
  EXPECT_TRUE(SplitCommandLine("").empty());
  EXPECT_TRUE(SplitCommandLine(nullptr).empty());
}

TEST(DocumentList, OnlyAsciiLettersAreUpperCased) {
  EXPECT_EQ(UpperCaseAscii("ab_z.\x8Ex"), "AB_Z.\x8EX");
}

TEST(DocumentList, EncodesThePublishedLayoutWithEvenPadding) {
  std::vector<DocumentEntry> docs(2);
  docs[0] = {-1, 0x54455854, 0, "AB"};    // odd total: a pad byte follows
  docs[1] = {-2, 0x3F3F3F3F, 0, "ABC"};
  std::vector<uint8_t> bytes = EncodeDocumentList(docs);
  ASSERT_EQ(bytes.size(), 4u + (8 + 1 + 2 + 1) + (8 + 1 + 3));
  int16_t message, count;
  DecodeDocumentHeader(bytes.data(), bytes.size(), &message, &count);
  EXPECT_EQ(message, 0);
  EXPECT_EQ(count, 2);
  DocumentEntry e;
  ASSERT_TRUE(DecodeDocumentEntry(bytes.data(), bytes.size(), 2, &e));
  EXPECT_EQ(e.vRefNum, -2);
  EXPECT_EQ(e.fileType, 0x3F3F3F3Fu);
  EXPECT_EQ(e.name, "ABC");
  EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), 3, &e));
  EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), 0, &e));
}

TEST(DocumentList, LongNamesAreCutTo63Bytes) {
  std::vector<DocumentEntry> docs{{0, 0, 0, std::string(100, 'N')}};
  std::vector<uint8_t> bytes = EncodeDocumentList(docs);
  DocumentEntry e;
  ASSERT_TRUE(DecodeDocumentEntry(bytes.data(), bytes.size(), 1, &e));
  EXPECT_EQ(e.name.size(), 63u);
}

TEST(DocumentList, TruncatedListsAreReadOnlyAsFarAsTheyGo) {
  std::vector<DocumentEntry> docs{{0, 0, 0, "FIRST"}, {0, 0, 0, "SECOND"}};
  std::vector<uint8_t> bytes = EncodeDocumentList(docs);
  // Short of the second name's last byte (the pad byte may be missing).
  for (size_t size = 0; size + 1 < bytes.size(); ++size) {
    std::vector<uint8_t> cut(bytes.begin(), bytes.begin() + static_cast<long>(size));
    DocumentEntry e;
    bool second = DecodeDocumentEntry(cut.data(), cut.size(), 2, &e);
    EXPECT_FALSE(second) << size;
  }
  int16_t message = 1, count = 1;
  DecodeDocumentHeader(bytes.data(), 3, &message, &count);
  EXPECT_EQ(count, 0);
}

TEST(DocumentList, HostileCountsNeverReadPastTheList) {
  std::vector<uint8_t> bytes = EncodeDocumentList({{0, 0, 0, "A"}});
  bytes[2] = 0x7F;  // claims 127 entries
  bytes[4 + 8] = 200;  // and a name running past the end
  DocumentEntry e;
  for (int i = 1; i <= 127; ++i) EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), i, &e));
}

}  // namespace
}  // namespace kwe
