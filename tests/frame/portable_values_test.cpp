// The frame's rules that need no Windows: handles in 32-bit slots, the
// platform's classification, the clock, the application path rule and the
// Segment Loader's document list against short and hostile input.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/app_path_rule.h"
#include "frame/document_list.h"
#include "frame/handle_slots.h"
#include "frame/mac_time.h"
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

// GetVersion's answer: bit 31 clear is NT, set with major 4 or more is 95,
// else Win32s. KWE_InitGlobals answers 0 on every Win32 platform; Windows
// before 3, a 286 (or frame flags) and real mode each have their refusal.
TEST(WindowsVersion, PlatformDecidesTheShellAndInitGlobalsResult) {
  const struct {
    uint32_t getVersion;
    uint16_t flags;
    bool nt, newShell;
    int16_t initGlobals;
  } cases[] = {
      {0x23F00206, 0x0421, true, true, 0},   {0xC0000004, 0x0421, false, true, 0},
      {0x80000A03, 0x0421, false, false, 0}, {0x00000003, 0x0421, true, false, 0},
      {0x00000002, 0x0421, true, false, 1},  {0x00000003, 0x0423, true, false, 2},
      {0x00000003, 0x0420, true, false, 3},
  };
  for (const auto& c : cases) {
    WindowsVersion v = ClassifyWindowsVersion(c.getVersion);
    EXPECT_EQ(v.windowsNT, c.nt) << std::hex << c.getVersion;
    EXPECT_EQ(v.NewShell(), c.newShell) << std::hex << c.getVersion;
    EXPECT_EQ(InitGlobalsResult(v, c.flags), c.initGlobals) << std::hex << c.getVersion;
  }
}

TEST(MacTime, SecondsCountFrom1904InLocalTime) {
  EXPECT_EQ(MacSecondsFromUnix(0, 0, false), 2082844800u);
  EXPECT_EQ(MacSecondsFromUnix(0, 60, false), 2082844800u - 3600);  // an hour west
  EXPECT_EQ(MacSecondsFromUnix(0, -120, true), 2082844800u + 3 * 3600);
  // 2040-02-06 06:28:15 UTC is the last second a 32-bit count holds.
  EXPECT_EQ(MacSecondsFromUnix(2212122495, 0, false), 0xFFFFFFFFu);
  EXPECT_EQ(MacSecondsFromUnix(2212122496, 0, false), 0u);
}

// A plain name replaces the module's file name (KWE_MakeAppPathName shows
// the common cases), a dot name its last extension, leaving a dotted
// directory alone; no room left for an 8.3 name gives a question mark.
TEST(AppPathRule, NamesReplaceTheFileNameOrTheExtension) {
  const std::string full = "C:\\" + std::string(116, 'D') + "\\";   // 120 characters
  const std::string roomy = "C:\\" + std::string(110, 'D') + "\\";  // 113 + 13 < 128
  const struct {
    std::string base;
    const char* name;
    std::string joined;
  } cases[] = {
      {"C:\\APP\\", "A.RSR", "C:\\APP\\A.RSR"},
      {"C:X.EXE", "Y.RSR", "C:Y.RSR"},
      {"C:\\A.B\\PROG.EXE", ".RSR", "C:\\A.B\\PROG.RSR"},
      {full + "X.EXE", "KWEFONT.FON", full + "?"},
      {roomy + "X.EXE", "KWEFONT.FON", roomy + "KWEFONT.FON"},
  };
  for (const auto& c : cases) EXPECT_EQ(JoinBesideBase(c.base, c.name), c.joined) << c.base;
  EXPECT_TRUE(IsAbsoluteDosName("D:\\F.RSR"));
  EXPECT_TRUE(IsAbsoluteDosName("\\\\server\\share\\f"));
  for (const char* relative : {"D:F.RSR", ".RSR", "", static_cast<const char*>(nullptr), "F.RSR"})
    EXPECT_FALSE(IsAbsoluteDosName(relative)) << (relative ? relative : "null");
}

TEST(DocumentList, CommandLineSplitsAtBlanksAndCommasAndOnlyAsciiIsUpperCased) {
  EXPECT_EQ(SplitCommandLine("  x ,, y\tz "), (std::vector<std::string>{"x", "y", "z"}));
  EXPECT_TRUE(SplitCommandLine("").empty());
  EXPECT_TRUE(SplitCommandLine(nullptr).empty());
  EXPECT_EQ(UpperCaseAscii("ab_z.\x8Ex"), "AB_Z.\x8EX");
}

// Names are cut to 63 bytes; every cut short of an entry's name refuses
// that entry, and counts and lengths that claim more than the list holds
// never read past it.
TEST(DocumentList, ShortAndHostileListsAreReadOnlyAsFarAsTheyGo) {
  std::vector<uint8_t> bytes = EncodeDocumentList(
      {{-1, 0x54455854, 0, std::string(100, 'N')}, {-2, 0x3F3F3F3F, 0, "SECOND"}});
  int16_t message = 1, count = 1;
  DecodeDocumentHeader(bytes.data(), bytes.size(), &message, &count);
  EXPECT_EQ(message, 0);
  EXPECT_EQ(count, 2);
  DocumentEntry e;
  ASSERT_TRUE(DecodeDocumentEntry(bytes.data(), bytes.size(), 1, &e));
  EXPECT_EQ(e.name, std::string(63, 'N'));
  ASSERT_TRUE(DecodeDocumentEntry(bytes.data(), bytes.size(), 2, &e));
  EXPECT_EQ(e.vRefNum, -2);
  EXPECT_EQ(e.fileType, 0x3F3F3F3Fu);
  EXPECT_EQ(e.name, "SECOND");
  for (int index : {0, 3}) EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), index, &e));
  // Short of the second name's last byte (a pad byte may be missing).
  for (size_t size = 0; size + 1 < bytes.size(); ++size) {
    std::vector<uint8_t> cut(bytes.begin(), bytes.begin() + static_cast<long>(size));
    EXPECT_FALSE(DecodeDocumentEntry(cut.data(), cut.size(), 2, &e)) << size;
  }
  DecodeDocumentHeader(bytes.data(), 3, &message, &count);
  EXPECT_EQ(count, 0);

  bytes = EncodeDocumentList({{0, 0, 0, "A"}});
  bytes[2] = 0x7F;     // claims 127 entries
  bytes[4 + 8] = 200;  // and a name running past the end
  for (int i = 1; i <= 127; ++i)
    EXPECT_FALSE(DecodeDocumentEntry(bytes.data(), bytes.size(), i, &e));
}

}  // namespace
}  // namespace kwe
