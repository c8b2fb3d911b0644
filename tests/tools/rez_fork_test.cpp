// kwederez's inputs: a resource file, and its fork inside AppleDouble,
// AppleSingle and MacBinary files. Headers whose offsets or lengths lie are
// refused with a message, as are damaged forks.
#include <gtest/gtest.h>

#include "rez_test_support.h"

namespace {

std::string Be32(std::uint32_t v) { return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)}; }
std::string Be16(std::uint16_t v) { return {char(v >> 8), char(v)}; }

std::string SampleFork() {
  std::vector<rez::CompiledResource> resources(2);
  resources[0].type = 0x53545220;  // 'STR '
  resources[0].id = 5;
  resources[0].data = "\x02hi";
  resources[1].type = 0x54455854;  // 'TEXT'
  resources[1].id = -7;
  resources[1].named = true;
  resources[1].name = "note";
  resources[1].data = "text";
  std::string file, error;
  EXPECT_TRUE(rez::BuildResourceFile(resources, file, error)) << error;
  return file;
}

// AppleDouble (or AppleSingle): a finder-info entry, then the fork.
std::string AppleDouble(const std::string& fork, std::uint32_t magic = 0x00051607) {
  std::string head = Be32(magic) + Be32(0x00020000) + std::string(16, '\0') + Be16(2);
  std::uint32_t infoAt = 26 + 24, forkAt = infoAt + 32;
  head += Be32(9) + Be32(infoAt) + Be32(32);
  head += Be32(2) + Be32(forkAt) + Be32(static_cast<std::uint32_t>(fork.size()));
  return head + std::string(32, '\0') + fork;
}

std::uint16_t Crc(const std::string& header) {
  std::uint16_t crc = 0;
  for (int i = 0; i < 124; ++i) {
    crc ^= static_cast<std::uint16_t>(static_cast<unsigned char>(header[i]) << 8);
    for (int b = 0; b < 8; ++b)
      crc = static_cast<std::uint16_t>(crc & 0x8000 ? crc << 1 ^ 0x1021 : crc << 1);
  }
  return crc;
}

// MacBinary II: a 128-byte header, a 5-byte data fork padded to 128, the fork.
std::string MacBinary(const std::string& fork) {
  std::string h(128, '\0');
  h[1] = 4;
  h.replace(2, 4, "Demo");
  h.replace(65, 8, "APPLKWEA");
  h.replace(83, 4, Be32(5));
  h.replace(87, 4, Be32(static_cast<std::uint32_t>(fork.size())));
  h[122] = static_cast<char>(129);
  h[123] = static_cast<char>(129);
  h.replace(124, 2, Be16(Crc(h)));
  return h + "hello" + std::string(123, '\0') + fork;
}

TEST(RezForks, EveryContainerGivesTheSameResources) {
  std::string fork = SampleFork();
  const struct {
    const char* name;
    std::string file;
    rez::ForkFormat format;
  } containers[] = {{"resource file", fork, rez::ForkFormat::ResourceFile},
                    {"AppleDouble", AppleDouble(fork), rez::ForkFormat::AppleDouble},
                    {"AppleSingle", AppleDouble(fork, 0x00051600), rez::ForkFormat::AppleSingle},
                    {"MacBinary", MacBinary(fork), rez::ForkFormat::MacBinary}};
  for (const auto& c : containers) {
    SCOPED_TRACE(c.name);
    std::vector<rez::CompiledResource> got;
    std::string problem;
    rez::ForkFormat format = rez::ForkFormat::ResourceFile;
    ASSERT_TRUE(rez::ReadResourceFork(c.file, got, problem, &format)) << problem;
    EXPECT_EQ(format, c.format);
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(rez_test::Describe(got[0]), "'STR ' (5, no name, attributes 0) 026869");
    EXPECT_EQ(rez_test::Describe(got[1]), "'TEXT' (-7, \"note\", attributes 0) 74657874");
  }
}

TEST(RezForks, LyingHeadersAndDamagedForksAreRefused) {
  std::string fork = SampleFork();
  std::string ad = AppleDouble(fork), mb = MacBinary(fork);
  auto patched = [](std::string file, std::size_t at, const std::string& bytes) {
    file.replace(at, bytes.size(), bytes);
    return file;
  };
  std::string badCrc = patched(mb, 87, Be32(static_cast<std::uint32_t>(fork.size() + 1)));
  std::string longFork = patched(badCrc, 124, Be16(Crc(badCrc)));
  std::string damaged = fork;
  damaged.replace(4, 4, Be32(0x7FFFFFF0));
  const struct {
    const char* name;
    std::string file;
    const char* problem;
  } cases[] = {
      {"empty", "",
       "not a resource file (the file is shorter than its 256-byte header), nor an "
       "AppleDouble, AppleSingle or MacBinary file"},
      {"AppleDouble cut in its header", ad.substr(0, 20), "the AppleDouble header is cut short"},
      {"AppleDouble entry count one past the end",
       patched(ad, 24, Be16(static_cast<std::uint16_t>((ad.size() - 26) / 12 + 1))),
       "the AppleDouble entry list runs past the end of the file"},
      {"AppleDouble fork offset past the end", patched(ad, 26 + 12 + 4, Be32(0xFFFFFF00)),
       "the AppleDouble resource fork entry points past the end of the file"},
      {"AppleDouble fork length past the end", patched(ad, 26 + 12 + 8, Be32(0xFFFFFFFF)),
       "the AppleDouble resource fork entry points past the end of the file"},
      {"AppleDouble with a damaged fork", AppleDouble(damaged),
       "the resource fork is damaged: the map does not follow the data area"},
      {"MacBinary whose CRC does not match", badCrc,
       "the MacBinary header's CRC does not match it"},
      {"MacBinary fork length past the end", longFork,
       "the MacBinary fork lengths run past the end of the file"},
      {"MacBinary data length past the end",
       [&] {
         std::string f = patched(mb, 83, Be32(0xFFFFFFF0));
         return patched(f, 124, Be16(Crc(f)));
       }(),
       "the MacBinary fork lengths run past the end of the file"},
      {"a resource file with a lying map offset", damaged,
       "not a resource file (the map does not follow the data area), nor an AppleDouble, "
       "AppleSingle or MacBinary file"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<rez::CompiledResource> got(1);
    std::string problem;
    EXPECT_FALSE(rez::ReadResourceFork(c.file, got, problem));
    EXPECT_EQ(problem, c.problem);
    EXPECT_TRUE(got.empty());
  }
}

}  // namespace
