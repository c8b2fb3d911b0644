// The frame's tables, arithmetic and rules that need no Windows: the
// application path rule and the Segment Loader's document list among them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/app_path_rule.h"
#include "frame/document_list.h"
#include "frame/gestalt_table.h"
#include "frame/handle_slots.h"
#include "frame/mac_time.h"
#include "frame/pascal_compare.h"
#include "frame/system_values.h"
#include "frame/windows_version.h"

namespace kwe {
namespace {

// A 32-bit slot keeps a handle's low half and gives it back sign-extended,
// as 64-bit Windows defines its handles: values above 0x7FFFFFFF survive.
TEST(HandleSlots, HandlesSurviveTheRoundTripSignExtended) {
  for (std::intptr_t value : {std::intptr_t(0x1234), std::intptr_t(0x7FFFFFFF),
                              std::intptr_t(-0x7FFFEDCC), std::intptr_t(-1)}) {
    void* handle = reinterpret_cast<void*>(value);
    EXPECT_EQ(HandleFromSlot<void*>(HandleToSlot(handle)), handle) << value;
  }
  EXPECT_EQ(HandleToSlot(reinterpret_cast<void*>(std::intptr_t(-0x7FFFEDCC))), SInt32(0x80001234u));
}

TEST(WindowsVersion, ClassifiesFromGetVersion) {
  WindowsVersion nt = ClassifyWindowsVersion(0x23F00206);  // bit 31 clear, 6.2
  EXPECT_TRUE(nt.windowsNT);
  EXPECT_FALSE(nt.windows95 || nt.win32s);
  EXPECT_EQ(nt.major, 6);
  EXPECT_EQ(nt.versionWord, 0x0206);
  EXPECT_TRUE(nt.NewShell());
  WindowsVersion w95 = ClassifyWindowsVersion(0xC0000004);
  EXPECT_TRUE(w95.windows95);
  EXPECT_TRUE(w95.NewShell());
  WindowsVersion w32s = ClassifyWindowsVersion(0x80000A03);
  EXPECT_TRUE(w32s.win32s);
  EXPECT_FALSE(w32s.NewShell());
  EXPECT_FALSE(ClassifyWindowsVersion(0x00000003).NewShell());  // NT 3.x
}

TEST(WindowsVersion, InitGlobalsResultOnEveryPlatformIsZero) {
  for (uint32_t v : {0x23F00206u, 0xC0000004u, 0x80000A03u})
    EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(v), 0x0421), 0);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x2), 0x0421), 1);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x3), 0x0423), 2);
  EXPECT_EQ(InitGlobalsResult(ClassifyWindowsVersion(0x3), 0x0420), 3);
}

TEST(MacTime, SecondsCountFrom1904InLocalTime) {
  EXPECT_EQ(MacSecondsFromUnix(0, 0, false), 2082844800u);
  EXPECT_EQ(MacSecondsFromUnix(0, 60, false), 2082844800u - 3600);  // an hour west
  EXPECT_EQ(MacSecondsFromUnix(0, -120, true), 2082844800u + 3 * 3600);
  // 2040-02-06 06:28:15 UTC is the last second a 32-bit count holds.
  EXPECT_EQ(MacSecondsFromUnix(2212122495, 0, false), 0xFFFFFFFFu);
  EXPECT_EQ(MacSecondsFromUnix(2212122496, 0, false), 0u);
}

TEST(GestaltTable, CoprocessorFollowsTheWindowsFlags) {
  int32_t r = 5;
  EXPECT_TRUE(GestaltResponse(0x66707520 /* 'fpu ' */, 0x0421, &r));
  EXPECT_EQ(r, -1);
  EXPECT_TRUE(GestaltResponse(0x66707520, 0x0021, &r));
  EXPECT_EQ(r, 0);
  r = 5;
  EXPECT_FALSE(GestaltResponse(0x61626364 /* 'abcd' */, 0x0421, &r));
  EXPECT_EQ(r, 0);
}

TEST(PascalCompare, NullStringsEqualOnlyEachOther) {
  const unsigned char a[] =
      "\x01"
      "a";
  EXPECT_FALSE(EqualPascalStrings(a, nullptr, true));
  EXPECT_TRUE(EqualPascalStrings(nullptr, nullptr, true));
}

TEST(SystemValueTable, KindsAndDefaults) {
  ResetSystemValues();
  EXPECT_EQ(KindOfSystemValue(25), SystemValueKind::Unassigned);
  EXPECT_EQ(KindOfSystemValue(3), SystemValueKind::GetOnly);
  EXPECT_EQ(KindOfSystemValue(46), SystemValueKind::Long);
  EXPECT_EQ(ReadSystemValue(6), 0x40);
  EXPECT_EQ(ReadSystemValue(33), -1);
  EXPECT_EQ(SystemValue(1, 33, 0x7FFF), -1);
  EXPECT_EQ(ReadSystemValue(33), 0x7FFF);
  ResetSystemValues();
  EXPECT_EQ(ReadSystemValue(33), -1);
}

// A plain name replaces the module's file name, a dot name its last
// extension (a dotted directory is left alone), no name gives the base whole.
TEST(AppPathRule, NamesReplaceTheFileNameOrTheExtension) {
  EXPECT_EQ(JoinBesideBase("C:\\APP\\X.EXE", "KWEFONT.FON"), "C:\\APP\\KWEFONT.FON");
  EXPECT_EQ(JoinBesideBase("C:\\APP\\", "A.RSR"), "C:\\APP\\A.RSR");
  EXPECT_EQ(JoinBesideBase("C:X.EXE", "Y.RSR"), "C:Y.RSR");
  EXPECT_EQ(JoinBesideBase("C:\\A.B\\PROG.EXE", ".RSR"), "C:\\A.B\\PROG.RSR");
  EXPECT_EQ(JoinBesideBase("C:\\APP\\X.EXE", nullptr), "C:\\APP\\X.EXE");
  // No room left for an 8.3 name gives a question mark.
  std::string directory = "C:\\" + std::string(116, 'D') + "\\";  // 120 characters
  EXPECT_EQ(JoinBesideBase(directory + "X.EXE", "KWEFONT.FON"), directory + "?");
  std::string roomy = "C:\\" + std::string(110, 'D') + "\\";  // backslash at 113: 113 + 13 < 128
  EXPECT_EQ(JoinBesideBase(roomy + "X.EXE", "KWEFONT.FON"), roomy + "KWEFONT.FON");
}

TEST(AppPathRule, AbsoluteNames) {
  EXPECT_TRUE(IsAbsoluteDosName("D:\\F.RSR"));
  EXPECT_TRUE(IsAbsoluteDosName("\\\\server\\share\\f"));
  for (const char* relative : {"D:F.RSR", ".RSR", "", static_cast<const char*>(nullptr), "F.RSR"})
    EXPECT_FALSE(IsAbsoluteDosName(relative)) << (relative ? relative : "null");
}

TEST(DocumentList, CommandLineSplitsAtBlanksAndCommasAndOnlyAsciiIsUpperCased) {
  EXPECT_EQ(SplitCommandLine("a.txt,b.txt"), (std::vector<std::string>{"a.txt", "b.txt"}));
  EXPECT_EQ(SplitCommandLine("  x ,, y\tz "), (std::vector<std::string>{"x", "y", "z"}));
  EXPECT_TRUE(SplitCommandLine("").empty());
  EXPECT_TRUE(SplitCommandLine(nullptr).empty());
  EXPECT_EQ(UpperCaseAscii("ab_z.\x8Ex"), "AB_Z.\x8EX");
}

TEST(DocumentList, EncodesThePublishedLayoutWithEvenPadding) {
  std::vector<DocumentEntry> docs(2);
  docs[0] = {-1, 0x54455854, 0, "AB"};  // odd total: a pad byte follows
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
  bytes[2] = 0x7F;     // claims 127 entries
  bytes[4 + 8] = 200;  // and a name running past the end
  DocumentEntry e;
  for (int i = 1; i <= 127; ++i)
    EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), i, &e));
}

}  // namespace
}  // namespace kwe
