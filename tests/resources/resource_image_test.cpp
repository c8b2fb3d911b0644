// The tests' own resource-file builder and reader, which the Resource
// Manager's tests trust as their second opinion: the images they make are
// what the format says, the reader gives back what was built, and no
// damaged image makes the reader step outside it.
#include "resource_builder/resource_image.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "resource_builder/resource_description.h"
#include "resource_builder/resource_reader.h"

namespace {

using namespace resource_builder;

std::vector<Resource> Sample() {
  std::vector<Resource> list = {
      MakeResource("STR ", 128, {5, 'H', 'e', 'l', 'l', 'o'}, "Greeting", 0x20),
      MakeResource("TEXT", -1, {}),
      MakeResource("STR ", 129, {0}, "", 0x04),
      MakeResource("PAT ", 0, {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}, "gray"),
      MakeResource("TEXT", 7, {}, "shares"),
  };
  list[4].sharesDataOf = 3;
  return list;
}

TEST(ResourceImage, ReaderGivesBackWhatWasBuiltAtAnyBase) {
  for (std::size_t base : {0u, 512u}) {
    ImageOptions options;
    options.baseOffset = base;
    options.gapBeforeMap = 16;
    options.trailingBytes = 9;
    ImageLayout layout;
    Bytes image = BuildResourceImage(Sample(), options, &layout);
    EXPECT_EQ(layout.fileSize, image.size());
    EXPECT_EQ(Load32(&image[layout.header + 4]), layout.map - base);
    EXPECT_EQ(layout.types,
              (std::vector<std::uint32_t>{TypeCode("STR "), TypeCode("TEXT"), TypeCode("PAT ")}));
    EXPECT_EQ(layout.dataBlocks[4], layout.dataBlocks[3]);
    EXPECT_EQ(image[layout.names[0]], 8);
    EXPECT_EQ(Load16(&image[layout.references[2]]), 129);

    ResourceListing listing;
    std::string problem;
    ASSERT_TRUE(ReadResourceImage(image.data(), image.size(), base, listing, problem)) << problem;
    EXPECT_TRUE(listing.mapRepeatsHeader);
    ASSERT_EQ(listing.resources.size(), 5u);
    for (const Resource& r : Sample()) {
      const ListedResource* got = FindListed(listing, r.type, r.id);
      ASSERT_NE(got, nullptr) << TypeText(r.type) << r.id;
      EXPECT_EQ(got->named, r.named);
      EXPECT_EQ(got->name, r.name);
      EXPECT_EQ(got->attributes, r.attributes);
      EXPECT_EQ(got->data, r.sharesDataOf < 0 ? r.data : Sample()[3].data);
    }
  }
}

TEST(ResourceImage, BuilderRefusesWhatTheFormatCannotHold) {
  // The name list's offset is 16 bits from the map's start: 12 bytes per
  // reference fill it at about 5,400 references, whatever their types.
  std::vector<Resource> many(5400, MakeResource("TEXT", 1, {}));
  many[0].type = TypeCode("STR ");
  many[1].type = TypeCode("PAT ");
  EXPECT_NO_THROW(BuildResourceImage(many));
  many.insert(many.end(), 60, MakeResource("vers", 1, {}));
  EXPECT_THROW(BuildResourceImage(many), std::length_error);
  std::vector<Resource> shareLater = Sample();
  shareLater[0].sharesDataOf = 4;
  EXPECT_THROW(BuildResourceImage(shareLater), std::length_error);
}

// Every shorter file, and every byte of the header and map set to values
// that break counts and offsets: the reader refuses or reads, never strays
// (AddressSanitizer watches the bounds).
TEST(ResourceImage, ReaderSurvivesTruncationAndCorruption) {
  ImageLayout layout;
  const Bytes image = BuildResourceImage(Sample(), {}, &layout);
  ResourceListing listing;
  std::string problem;
  for (std::size_t size = 0; size < image.size(); ++size) {
    Bytes cut(image.begin(), image.begin() + static_cast<long>(size));
    EXPECT_FALSE(ReadResourceImage(cut, listing, problem)) << size;
    EXPECT_TRUE(listing.resources.empty());
    EXPECT_FALSE(problem.empty());
  }
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < 16; ++i) positions.push_back(i);
  for (std::size_t i = layout.map; i < image.size(); ++i) positions.push_back(i);
  for (std::size_t i : layout.dataBlocks) positions.insert(positions.end(), {i, i + 3});
  for (std::size_t at : positions) {
    for (std::uint8_t value : {0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF}) {
      Bytes damaged = image;
      damaged[at] = value;
      if (ReadResourceImage(damaged, listing, problem)) continue;
      EXPECT_TRUE(listing.resources.empty());
    }
  }
  Bytes nameTooLong = image;
  nameTooLong[layout.names[3]] = 200;  // the last name, now running past the map
  EXPECT_FALSE(ReadResourceImage(nameTooLong, listing, problem));
  EXPECT_EQ(problem, "PAT  0: the name runs past the map");
}

TEST(ResourceDescription, EveryDataLineAddsItsBytes) {
  const char* text =
      "# comment\n"
      "resource 'STR#' -3 \"A \\\"name\\\"\" attrs 0x24  # trailing comment\n"
      "  strings \"ab\" \"\"\n"
      "  words 1 -1 0xFFFF\n"
      "  longs -2 0x12345678\n"
      "  hex 0a0B ff\n"
      "  text \"x\\x01\"\n"
      "  cstring \"c\"\n"
      "  pstring \"p#\\t\"\n"
      "\n"
      "resource '\\x00ab ' 5\n";
  std::vector<Resource> resources;
  std::string error;
  ASSERT_TRUE(ParseResourceDescription(text, resources, error)) << error;
  ASSERT_EQ(resources.size(), 2u);
  EXPECT_EQ(resources[0].type, TypeCode("STR#"));
  EXPECT_EQ(resources[0].id, -3);
  EXPECT_EQ(resources[0].name, "A \"name\"");
  EXPECT_EQ(resources[0].attributes, 0x24);
  const Bytes expected = {0,    2,    2,    'a',  'b',  0,    0,    1,    0xFF, 0xFF, 0xFF,
                          0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0x12, 0x34, 0x56, 0x78, 0x0A, 0x0B,
                          0xFF, 'x',  1,    'c',  0,    3,    'p',  '#',  '\t'};
  EXPECT_EQ(resources[0].data, expected);
  EXPECT_EQ(resources[1].type, 0x00616220u);
  EXPECT_FALSE(resources[1].named);
  EXPECT_TRUE(resources[1].data.empty());
}

TEST(ResourceDescription, MistakesNameTheirLine) {
  const std::string longName = "resource 'STR ' 1\n  pstring \"" + std::string(256, 'x') + "\"\n";
  const std::pair<std::string, const char*> cases[] = {
      {"hex 00\n", "line 1: data before the first \"resource\" line"},
      {"resource 'STR ' 32768\n", "line 1: the resource ID must be a number from -32768 to 32767"},
      {"resource 'STR ' 1\n\n  hex 0\n", "line 3: hex takes pairs of hexadecimal digits"},
      {"resource 'STR ' 1\n  words 65536\n", "line 2: words: \"65536\" is not a number in range"},
      {"resource 'STR ' 1\n  pstring \"open\n", "line 2: a quote is not closed"},
      {longName, "line 2: a Pascal string is longer than 255 bytes"},
  };
  for (const auto& c : cases) {
    std::vector<Resource> resources;
    std::string error;
    EXPECT_FALSE(ParseResourceDescription(c.first, resources, error)) << c.first;
    EXPECT_EQ(error, c.second);
    EXPECT_TRUE(resources.empty());
  }
}

}  // namespace
