// The map parser and writer and the file-name rule, natively under the
// sanitizers, against files made by the independent resource builder.
#include "resources/resource_map.h"

#include <gtest/gtest.h>

#include <string>

#include "resource_builder/resource_image.h"
#include "resources/resource_file_name.h"

namespace {

using namespace kwe::resources;
using resource_builder::BuildResourceImage;
using resource_builder::Resource;

ResourceMap ParsedMap(const resource_builder::Bytes& file) {
  FileHeader header = ReadFileHeader(file.data());
  EXPECT_TRUE(HeaderIsSound(header, file.size()));
  ResourceMap map;
  EXPECT_TRUE(map.Parse(file.data() + header.mapOffset, header.mapLength));
  return map;
}

Resource Named(const char (&type)[5], int16_t id, const std::string& name) {
  return resource_builder::MakeResource(type, id, {1, 2, 3}, name);
}

TEST(ResourceFileName, SqueezesBareNamesIntoEightDotThree) {
  EXPECT_EQ(ResourceFileName("MYAPP", false), "MYAPP.rsr");
  EXPECT_EQ(ResourceFileName("DATA.RES", false), "DATA.RES");
  EXPECT_EQ(ResourceFileName("a long name.dat", false), "alongnam.rsr");
  EXPECT_EQ(ResourceFileName("notes.backup", false), "notes.rsr");
  EXPECT_EQ(ResourceFileName("ABC.", false), "ABC.");
  EXPECT_EQ(ResourceFileName("ABC.", true), "ABC");
  EXPECT_EQ(ResourceFileName("C:\\a long\\path.x", false), "C:\\a long\\path.x");
}

TEST(ResourceMap, WritesBackExactlyTheLiveReferencesWithPackedNames) {
  auto file = BuildResourceImage({Named("TEXT", 1, "one"), Named("TEXT", 2, ""),
                                  Named("PICT", 9, "nine"), Named("TEXT", 3, "three")});
  ResourceMap map = ParsedMap(file);
  ASSERT_EQ(map.Types().size(), 2u);
  ResourceTypeEntry* text = map.FindType(resource_builder::TypeCode("TEXT"));
  ASSERT_NE(text, nullptr);
  map.FindById(*text, 1)->attributes |= kMarkRemoved;

  std::vector<uint8_t> written;
  ASSERT_TRUE(map.Build(1000, &written));
  ResourceMap again;
  ASSERT_TRUE(again.Parse(written.data(), written.size()));
  EXPECT_EQ(ReadFileHeader(written.data()).mapOffset, 256u + 1000u);
  ResourceTypeEntry* textAgain = again.FindType(resource_builder::TypeCode("TEXT"));
  ASSERT_EQ(textAgain->references.size(), 2u);
  EXPECT_EQ(again.FindById(*textAgain, 1), nullptr);
  EXPECT_TRUE(again.NameEquals(*again.FindById(*textAgain, 3), (const uint8_t*)"\x05three"));
  // 28 + count word + 2 types + 3 references + "three" and "nine".
  EXPECT_EQ(written.size(), 28u + 2 + 2 * 8 + 3 * 12 + 6 + 5);
}

TEST(ResourceMap, RefusesListsThatOverlapOrNamesThatRunPastTheMap) {
  resource_builder::ImageLayout layout;
  auto file = BuildResourceImage({Named("TEXT", 1, "one"), Named("ICON", 2, "two")}, {}, &layout);
  // The second type's reference list moved onto the first one's.
  auto overlapping = file;
  resource_builder::Store16(overlapping, layout.typeEntries[1] + 6,
                            resource_builder::Load16(&file[layout.typeEntries[0] + 6]));
  FileHeader header = ReadFileHeader(file.data());
  ResourceMap map;
  EXPECT_FALSE(map.Parse(overlapping.data() + header.mapOffset, header.mapLength));
  // A name whose length byte reaches past the end of the map.
  auto longName = file;
  longName[layout.names[1]] = 200;
  EXPECT_FALSE(map.Parse(longName.data() + header.mapOffset, header.mapLength));
  EXPECT_TRUE(map.Parse(file.data() + header.mapOffset, header.mapLength));
}

TEST(ResourceMap, RenamingWidensInPlaceAndKeepsLaterNamesReachable) {
  auto file = BuildResourceImage({Named("TEXT", 1, "ab"), Named("TEXT", 2, "cd")});
  ResourceMap map = ParsedMap(file);
  ResourceTypeEntry& text = map.Types()[0];
  Reference& first = *map.FindById(text, 1);
  EXPECT_FALSE(map.Rename(first, (const uint8_t*)"\x01x")) << "shorter: in place";
  EXPECT_TRUE(map.Rename(first, (const uint8_t*)"\x06wider!"));
  EXPECT_TRUE(map.NameEquals(first, (const uint8_t*)"\x06wider!"));
  EXPECT_TRUE(map.NameEquals(*map.FindById(text, 2), (const uint8_t*)"\x02"
                                                                     "cd"));
}

TEST(ResourceMap, RoomRunsOutWhereTheSixteenBitOffsetsEnd) {
  std::vector<Resource> many;
  for (int i = 0; i < 5000; ++i) many.push_back(Named("TEXT", int16_t(i), ""));
  ResourceMap map = ParsedMap(BuildResourceImage(many));
  EXPECT_TRUE(map.RoomFor(false, 0));
  for (int i = 5000; map.RoomFor(false, 0); ++i) {
    Reference ref;
    ref.id = int16_t(i);
    map.Add(resource_builder::TypeCode("TEXT"), ref);
  }
  std::vector<uint8_t> written;
  EXPECT_TRUE(map.Build(0, &written)) << "everything RoomFor let in still writes";
}

}  // namespace
