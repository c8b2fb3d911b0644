// make_resource_file's description language: each data line adds its bytes
// in Macintosh order, and a mistake names its line.
#include "resource_builder/resource_description.h"

#include <gtest/gtest.h>

namespace {

using namespace resource_builder;

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
