// kwederez then kwerez gives back every resource byte for byte, with its
// name, ID and attributes: over randomly made resource files (seeded,
// replayable with the printed seed), and over our own KWEPORT.RSR source.
// Resources with the standard layouts must come out as resource statements
// of their type; anything else, including damaged standard resources, as
// data statements.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "rez_test_support.h"

namespace {

using rez::CompiledResource;

std::uint32_t Code(const char (&four)[5]) {
  return std::uint32_t(std::uint8_t(four[0])) << 24 | std::uint32_t(std::uint8_t(four[1])) << 16 |
         std::uint32_t(std::uint8_t(four[2])) << 8 | std::uint8_t(four[3]);
}

class Maker {
 public:
  explicit Maker(unsigned seed) : rng_(seed) {}

  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  std::string Bytes(int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s += static_cast<char>(Below(256));
    return s;
  }
  std::string Word(int v) { return {static_cast<char>(v >> 8), static_cast<char>(v)}; }
  std::string Pascal(int most) {
    std::string s = Bytes(Below(most + 1));
    return static_cast<char>(s.size()) + s;
  }

  // Well-formed data of a standard layout; the decompiler must print it by
  // its fields.
  CompiledResource Structured() {
    CompiledResource r;
    switch (Below(6)) {
      case 0: {
        r.type = Code("STR#");
        int n = Below(6);
        r.data = Word(n);
        for (int i = 0; i < n; ++i) r.data += Pascal(40);
        break;
      }
      case 1: {
        r.type = Code("MENU");
        r.data =
            Word(Below(400)) + std::string(4, '\0') + Word(0) + Word(0) + Bytes(4) + Pascal(20);
        for (int i = Below(5); i > 0; --i) r.data += Pascal(20).substr(0, 1) + "x" + Bytes(4);
        for (std::size_t at = 14 + 1 + std::uint8_t(r.data[14]); at < r.data.size(); at += 6)
          r.data[at] = 1;  // every item text: one byte, never the 0 that ends the list
        r.data += '\0';
        break;
      }
      case 2: {
        r.type = Code("DITL");
        int n = Below(4) + 1;
        r.data = Word(n - 1);
        static const int kKinds[] = {4, 5, 6, 8, 16, 7, 32, 64, 0};
        for (int i = 0; i < n; ++i) {
          int kind = kKinds[Below(9)];
          r.data += std::string(4, '\0') + Bytes(8) + static_cast<char>(kind | (Below(2) << 7));
          if (kind == 7 || kind == 32 || kind == 64)
            r.data += '\x02' + Bytes(2);
          else if (kind == 0)
            r.data += '\0';
          else
            r.data += Pascal(30);
          if (r.data.size() % 2) r.data += '\0';
        }
        break;
      }
      case 3: {
        r.type = Code("clut");
        int n = Below(5);
        r.data = Bytes(4) + Bytes(2) + Word(n - 1) + Bytes(8 * n);
        break;
      }
      case 4:
        r.type = Code("WIND");
        r.data = Bytes(8) + Word(Below(17)) + std::string(1, static_cast<char>(Below(2))) + '\0' +
                 static_cast<char>(Below(2)) + '\0' + Bytes(4) + Pascal(30);
        break;
      default:
        r.type = Code("ALRT");
        r.data = Bytes(12);
        break;
    }
    return r;
  }

  // Data a declaration cannot describe: unknown types, and standard types
  // with damaged counts or trailing bytes.
  CompiledResource Raw() {
    static const char* const kTypes[] = {"XYZW", "PICT", "STR#", "MENU", "DITL", "snd ", "ab\"\\"};
    CompiledResource r;
    const char* type = kTypes[Below(7)];
    r.type = std::uint32_t(std::uint8_t(type[0])) << 24 |
             std::uint32_t(std::uint8_t(type[1])) << 16 |
             std::uint32_t(std::uint8_t(type[2])) << 8 | std::uint8_t(type[3]);
    r.data = Bytes(Below(3) == 0 ? 0 : Below(70));
    return r;
  }

  std::vector<CompiledResource> File(std::vector<bool>& structured) {
    std::vector<CompiledResource> file;
    std::set<std::pair<std::uint32_t, std::int16_t>> used;
    for (int i = Below(25) + 1; i > 0; --i) {
      bool typed = Below(2) == 0;
      CompiledResource r = typed ? Structured() : Raw();
      r.id = static_cast<std::int16_t>(Below(65536) - 32768);
      if (!used.insert({r.type, r.id}).second) continue;
      r.named = Below(2) == 0;
      if (r.named) r.name = Bytes(Below(12));
      r.attributes = static_cast<std::uint8_t>(Below(256));
      structured.push_back(typed);
      file.push_back(std::move(r));
    }
    return file;
  }

 private:
  std::mt19937 rng_;
};

void ExpectSame(const std::vector<CompiledResource>& a, const std::vector<CompiledResource>& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i)
    EXPECT_EQ(rez_test::Describe(a[i]), rez_test::Describe(b[i])) << "resource " << i;
}

// Our file bytes -> the fork reader -> Rez -> kwerez -> the same resources.
TEST(RezRoundTrip, RandomResourceFilesComeBackByteForByte) {
  for (unsigned seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Maker maker(seed);
    std::vector<bool> structured;
    std::vector<CompiledResource> made = maker.File(structured), read, again;
    std::string file, problem, error;
    ASSERT_TRUE(rez::BuildResourceFile(made, file, error)) << error;
    ASSERT_TRUE(rez::ReadResourceFork(file, read, problem)) << problem;
    std::string text = rez_test::Decompile(read);
    ASSERT_TRUE(rez_test::Compile({{"main.r", text}}, again, error)) << error << "\n" << text;
    ExpectSame(read, again);
    for (std::size_t i = 0; i < made.size(); ++i) {
      if (!structured[i]) continue;
      EXPECT_NE(
          text.find("resource " + rez::QuoteType(made[i].type) + " (" + std::to_string(made[i].id)),
          std::string::npos)
          << rez_test::Describe(made[i]) << "\n"
          << text;
    }
    if (HasFailure()) return;
  }
}

TEST(RezRoundTrip, TheSystemResourceFileComesBack) {
  rez::CompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  std::vector<CompiledResource> first, again;
  std::string error;
  ASSERT_TRUE(rez::CompileRez(KWE_ROOT_DIR "/resources/kweport.r", options, first, error)) << error;
  ASSERT_EQ(first.size(), 2u);
  std::string text = rez_test::Decompile(first);
  EXPECT_EQ(text.find("data '"), std::string::npos) << text;
  ASSERT_TRUE(rez_test::Compile({{"main.r", text}}, again, error)) << error;
  ExpectSame(first, again);
}

}  // namespace
