// Mistakes in a source are reported at their file, line and column with what
// was expected, nothing comes out, and kwerez leaves no output file behind.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "rez_test_support.h"

namespace {

struct Mistake {
  rez_test::Sources files;
  const char* message;
};

TEST(RezErrors, EveryKindOfMistakeNamesItsPlaceAndMakesNothing) {
  const std::string types = "#include \"Types.r\"\n";
  const std::vector<Mistake> mistakes = {
      {{{"main.r", types + "resource 'STR ' (1) { \"a\" }"}},
       "main.r:2:27: expected ';' after the resource statement but found the end of the input"},
      {{{"main.r", types + "resource 'STR ' (1) { \"a\", \"b\" };"}},
       "main.r:2:26: expected '}' after the resource's values but found ','"},
      {{{"main.r", types + "resource 'MBAR' (1) {\n  { 128; 70000 } };"}},
       "main.r:3:10: 70000 does not fit a field of 16 bits (-32768 to 65535)"},
      {{{"main.r", types + "resource 'STR ' (40000) { \"a\" };"}},
       "main.r:2:18: a resource ID must be from -32768 to 32767, not 40000"},
      {{{"main.r", "type 'TEST' { array [2] { byte; }; };\nresource 'TEST' (1) { { 1; 2; 3 } };"}},
       "main.r:2:23: array takes 2 elements but 3 are given"},
      {{{"main.r", types + "resource 'STR ' (1) { \"" + std::string(256, 'x') + "\" };"}},
       "main.r:2:23: a string of 256 bytes is longer than the 255 its field holds"},
      {{{"main.r", "#include \"a.r\"\n"},
        {"a.r", "\n#include \"b.r\"\n"},
        {"b.r", "#include \"a.r\"\n"}},
       "b.r:1:10: #include cycle: main.r includes a.r includes b.r includes a.r"},
      {{{"main.r", "#include \"missing.r\"\n"}},
       "main.r:1:10: cannot open the include file \"missing.r\""},
      {{{"main.r", "resource 'ZZZZ' (1) { };"}},
       "main.r:1:10: type 'ZZZZ' is not declared: #include its declaration or use a data "
       "statement"},
      {{{"main.r", types + "resource 'STR ' (1) { \"a\" };\nresource 'STR ' (1) { \"b\" };"}},
       "main.r:3:10: resource 'STR ' (1) is defined twice (first at main.r:2:10)"},
      {{{"main.r", types + "resource 'STR ' (1) { \"open };"}},
       "main.r:2:23: a quote is not closed: expected \""},
      {{{"main.r", "#if 1\nresource\n"}},
       "main.r:1:2: #if is not closed: expected #endif before the end of main.r"},
      {{{"main.r", types + "resource 'DITL' (1) { { {0,0,0,0}, Slider { enabled } } };"}},
       "main.r:2:36: 'Slider' is not a case of the switch (Button, CheckBox, RadioButton, "
       "Control, StaticText, EditText, Icon, Picture, UserItem, OtherItem)"},
      {{{"main.r",
         types + "resource 'WIND' (1) { {0,0,0,0}, fancyProc, visible, goAway, 0, \"\" };"}},
       "main.r:2:34: unknown name 'fancyProc'"},
      {{{"main.r", "resource 'STR ' (1) @"}}, "main.r:1:21: unexpected character '@'"},
      {{{"main.r", "type 'TEST' { integer; }\nresource"}},
       "main.r:2:1: expected ';' after the type declaration but found 'resource'"},
      {{{"main.r", "type 'TEST' { integer = 1 / 0; };\nresource 'TEST' (1) { };"}},
       "main.r:1:27: division by zero"},
      {{{"main.r", "type 'TEST' { int; };"}},
       "main.r:1:15: expected a field (boolean, byte, integer, longint, bitstring, char, string, "
       "pstring, cstring, wstring, point, rect, fill, align, array or switch) but found 'int'"},
      {{{"main.r", "type 'TEST' { point; };\nresource 'TEST' (1) { {1 2} };"}},
       "main.r:2:26: expected ',' between coordinates but found 2"},
      {{{"main.r", "#else\n"}}, "main.r:1:2: #else without #if"},
      {{{"main.r", "read 'RAW ' (1) \"nothing.bin\";"}},
       "main.r:1:17: cannot open the file \"nothing.bin\""},
      {{{"main.r", "include \"main.r\";"}},
       "main.r:1:9: \"main.r\" is not a resource file: not a resource file (the file is shorter "
       "than its 256-byte header), nor an AppleDouble, AppleSingle or MacBinary file"},
      {{{"main.r", "/* never closed"}}, "main.r:1:1: a comment is not closed: expected */"},
      {{{"main.r", "data 'RAW ' (1) { $\"ABC\" };"}},
       "main.r:1:19: a hex string needs an even number of digits"},
  };
  for (const Mistake& m : mistakes) {
    std::vector<rez::CompiledResource> out;
    std::string error;
    EXPECT_FALSE(rez_test::Compile(m.files, out, error)) << m.message;
    EXPECT_EQ(error, m.message);
    EXPECT_TRUE(out.empty());
  }
}

// A deep nest of parentheses or macros is refused, not a stack overflow.
TEST(RezErrors, HostileNestingIsRefused) {
  std::string deep =
      "type 'TEST' { integer = " + std::string(5000, '(') + "1" + std::string(5000, ')') + "; };";
  std::string macros = "#define A B\n#define B A\nresource A";
  std::string arrays = "type 'TEST' {";
  for (int i = 0; i < 40; ++i) arrays += " array {";
  arrays += " byte;";
  for (int i = 0; i < 40; ++i) arrays += " };";
  arrays += " };";
  std::string huge = "type 'TEST' { fill long[65536]; };";
  for (const std::string& text : {deep, macros, arrays, huge}) {
    std::vector<rez::CompiledResource> out;
    std::string error;
    EXPECT_FALSE(rez_test::Compile({{"main.r", text}}, out, error));
    EXPECT_NE(error.find("main.r:"), std::string::npos) << error;
  }
}

// The real program: a mistake writes no output and leaves an older one as
// it was; a good source replaces it.
TEST(RezErrors, KwerezWritesNothingOnAMistake) {
  namespace fs = std::filesystem;
  fs::path dir = fs::temp_directory_path() / ("kwerez-test-" + std::to_string(std::rand()));
  fs::create_directories(dir);
  auto write = [&](const char* name, const std::string& text) {
    std::ofstream(dir / name, std::ios::binary) << text;
  };
  auto run = [&](const char* source) {
    std::string command = std::string(KWEREZ_PROGRAM) + " -o " + (dir / "out.rsr").string() + " " +
                          (dir / source).string() + " 2>" + (dir / "errors").string();
    return std::system(command.c_str());
  };
  auto read = [&](const char* name) {
    std::ifstream in(dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
  write("bad.r", "#include \"Types.r\"\nresource 'STR ' (1) { 12 };\n");
  write("good.r", "#include \"Types.r\"\nresource 'STR ' (1) { \"ok\" };\n");
  EXPECT_NE(run("bad.r"), 0);
  EXPECT_FALSE(fs::exists(dir / "out.rsr"));
  EXPECT_NE(read("errors").find("bad.r:2:23: expected a string but found 12"), std::string::npos)
      << read("errors");
  ASSERT_EQ(run("good.r"), 0) << read("errors");
  std::string good = read("out.rsr");
  EXPECT_EQ(good.size(), 256u + 4 + 3 + 30 + 8 + 12);
  EXPECT_NE(run("bad.r"), 0);
  EXPECT_EQ(read("out.rsr"), good);
  for (const auto& entry : fs::directory_iterator(dir))
    EXPECT_EQ(entry.path().string().find(".partial"), std::string::npos);
  fs::remove_all(dir);
}

}  // namespace
