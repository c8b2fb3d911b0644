// The filter list the dialogs show, from the host's file-type table: which
// records are listed for which asked types, the Windows filter string, and
// fields that fill their whole width without a NUL.
#include "standard_file/file_filters.h"

#include <gtest/gtest.h>

namespace {

using kwe::standardfile::FiltersForTypes;

constexpr OSType kText = 0x54455854, kPicture = 0x50494354, kOther = 0x4F544852;
constexpr OSType kUnknown = 0x3F3F3F3F;

KWEFileTypeEntry Entry(OSType type, const char* extension, const char* description) {
  KWEFileTypeEntry e{};
  e.fileType = type;
  memcpy(e.extension, extension, strnlen(extension, 3));
  memcpy(e.description, description, strnlen(description, 33));
  return e;
}

TEST(FileFilters, ListsAskedRecordsAndAllFilesWhenTheDialogWouldOtherwiseBeEmpty) {
  const KWEFileTypeEntry table[] = {Entry(kText, "TXT", "Text"), Entry(kPicture, "PIC", "Pic"),
                                    Entry(kText, "ASC", "ASCII"), Entry(0, "", "")};
  struct Case {
    std::vector<OSType> types;
    int typeCount;
    std::string expected;
    size_t records;
  } cases[] = {
      {{}, -1, "Text (*.TXT)|*.TXT|Pic (*.PIC)|*.PIC|ASCII (*.ASC)|*.ASC|All Files (*.*)|*.*||", 3},
      {{kText}, 1, "Text (*.TXT)|*.TXT|ASCII (*.ASC)|*.ASC||", 2},
      {{kPicture, kText}, 1, "Pic (*.PIC)|*.PIC||", 1},
      {{kOther}, 1, "All Files (*.*)|*.*||", 0},
      {{kPicture, kUnknown}, 2, "Pic (*.PIC)|*.PIC|All Files (*.*)|*.*||", 1},
  };
  for (const Case& c : cases) {
    auto filters = FiltersForTypes(table, c.typeCount, c.types.data(), kUnknown);
    std::string shown = filters.windowsFilter;
    for (char& ch : shown)
      if (ch == '\0') ch = '|';
    EXPECT_EQ(shown, c.expected) << c.typeCount;
    EXPECT_EQ(filters.records.size(), c.records) << c.expected;
  }
}

TEST(FileFilters, FullWidthFieldsAndAMissingTableStayInBounds) {
  KWEFileTypeEntry table[2] = {Entry(kText, "TXT", ""), Entry(0, "", "")};
  memset(table[0].description, 'D', sizeof table[0].description);
  auto filters = FiltersForTypes(table, 0, nullptr, kUnknown);
  EXPECT_EQ(filters.windowsFilter.substr(0, 33 + 8), std::string(33, 'D') + " (*.TXT)");
  auto none = FiltersForTypes(nullptr, 0, nullptr, kUnknown);
  EXPECT_EQ(none.windowsFilter, std::string("All Files (*.*)\0*.*\0\0", 21));
  EXPECT_TRUE(none.records.empty());
}

}  // namespace
