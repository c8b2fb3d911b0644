// Each standard declaration compiles a typical resource into the bytes the
// Toolbox reads (checked by hand against the published layouts), and the
// decompiler gives those bytes back as a resource statement of that type,
// not as raw data.
#include <gtest/gtest.h>

#include "rez_test_support.h"

namespace {

using rez_test::Compile;
using rez_test::Hex;

std::string Repeat(const std::string& hex, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += hex;
  return out;
}

struct Snippet {
  const char* what;
  std::string source;    // one resource statement
  std::string expected;  // its data in hex
};

const std::vector<Snippet>& Snippets() {
  static const std::vector<Snippet> snippets = {
      {"STR ", "resource 'STR ' (128) { \"Hi\" };", "024869"},
      {"STR#", "resource 'STR#' (129) { { \"ab\"; \"\"; \"c\" } };",
       "00030261620001"
       "63"},
      {"TEXT, \\n is a return", "resource 'TEXT' (130) { \"x\\ny\" \"z\" };", "780D797A"},
      {"styl", "resource 'styl' (131) { { 0, 12, 9, 3, bold, 12, 0xFFFF, 0, 0 } };",
       "0001"
       "00000000000C00090003"
       "0100000C"
       "FFFF00000000"},
      {"MENU",
       "resource 'MENU' (128, \"File\") { 128, textMenuProc, 0x7FFFFFFD, enabled, \"File\",\n"
       "  { \"New\", noIcon, \"N\", noMark, plain; \"-\", noIcon, noKey, noMark, plain;\n"
       "    \"Quit\", 3, \"Q\", check, bold } };",
       "0080"
       "00000000"
       "00000000"
       "FFFFFFFB"
       "0446696C65"
       "034E6577"
       "004E0000"
       "012D"
       "00000000"
       "0451756974"
       "03511201"
       "00"},
      {"MBAR", "resource 'MBAR' (128) { { 128; 129 } };", "000200800081"},
      {"WIND",
       "resource 'WIND' (128) { {40, 40, 240, 340}, zoomDocProc, visible, goAway, 0x12345678,"
       " \"Doc\" };",
       "0028002800F00154"
       "0008"
       "0100"
       "0100"
       "12345678"
       "03446F63"},
      {"CNTL",
       "resource 'CNTL' (128) { {10, 20, 30, 100}, 1, visible, 5, 0, checkBoxProc, 0, "
       "\"Check\" };",
       "000A0014001E0064"
       "0001"
       "0100"
       "0005"
       "0000"
       "0001"
       "00000000"
       "05436865636B"},
      {"DLOG",
       "resource 'DLOG' (128) { {50, 60, 250, 400}, movableDBoxProc, invisible, noGoAway, 0, "
       "128, \"Find\" };",
       "0032003C00FA0190"
       "0005"
       "0000"
       "0000"
       "00000000"
       "0080"
       "0446696E64"},
      {"DITL, every kind of item, padded to even lengths",
       "resource 'DITL' (128) { {\n"
       "  {10, 10, 30, 70}, Button { enabled, \"OK\" };\n"
       "  {40, 10, 56, 200}, StaticText { disabled, \"Hello\" };\n"
       "  {60, 10, 76, 200}, Control { enabled, 130 };\n"
       "  {80, 10, 112, 42}, Icon { disabled, 1 };\n"
       "  {0, 0, 0, 0}, UserItem { enabled } } };",
       "0004"
       "00000000000A000A001E0046"
       "04024F4B"
       "000000000028000A003800C8"
       "880548656C6C6F00"
       "00000000003C000A004C00C8"
       "07020082"
       "000000000050000A0070002A"
       "A0020001"
       "000000000000000000000000"
       "0000"},
      {"ALRT: stages 4, 3, 2, 1 from the high nibble",
       "resource 'ALRT' (128) { {100, 100, 200, 400}, 128, { OK, visible, sound1; OK, visible, "
       "sound1; Cancel, visible, silent; Cancel, invisible, sound3 } };",
       "0064006400C80190"
       "0080"
       "55CB"},
      {"PAT ", "resource 'PAT ' (128) { $\"AA55 AA55 AA55 AA55\" };", "AA55AA55AA55AA55"},
      {"PAT#", "resource 'PAT#' (129) { { $\"0000000000000000\"; $\"FFFFFFFFFFFFFFFF\" } };",
       "0002" + Repeat("00", 8) + Repeat("FF", 8)},
      {"ICON", "resource 'ICON' (128) { $\"" + Repeat("0F", 128) + "\" };", Repeat("0F", 128)},
      {"ICN#: icon and mask",
       "resource 'ICN#' (128) { { $\"" + Repeat("01", 128) + "\"; $\"" + Repeat("FF", 128) +
           "\" } };",
       Repeat("01", 128) + Repeat("FF", 128)},
      {"SICN", "resource 'SICN' (128) { { $\"" + Repeat("3C", 32) + "\" } };", Repeat("3C", 32)},
      {"CURS",
       "resource 'CURS' (128) { $\"" + Repeat("81", 32) + "\", $\"" + Repeat("FF", 32) +
           "\", {8, 7} };",
       Repeat("81", 32) + Repeat("FF", 32) + "00080007"},
      {"SIZE",
       "resource 'SIZE' (-1) { acceptSuspendResumeEvents, canBackground, doesActivateOnFGSwitch,"
       " backgroundAndForeground, getFrontClicks, ignoreAppDiedEvents, is32BitCompatible,"
       " isHighLevelEventAware, onlyLocalHLEvents, notStationeryAware, dontUseTextEditServices,"
       " 524288, 262144 };",
       "5AC0"
       "00080000"
       "00040000"},
      {"vers", "resource 'vers' (1) { 0x02, 0x10, beta, 3, 0, \"2.1b3\", \"2.1b3, test\" };",
       "02106003"
       "0000"
       "05322E316233"
       "0B322E3162332C2074657374"},
      {"BNDL: counts minus one at both levels",
       "resource 'BNDL' (128) { 'KWEA', 0, { 'ICN#', { 0, 128; 1, 129 }; 'FREF', { 0, 128 } } };",
       "4B5745410000"
       "0001"
       "49434E23"
       "0001"
       "00000080"
       "00010081"
       "46524546"
       "0000"
       "00000080"},
      {"FREF", "resource 'FREF' (128) { 'APPL', 0, \"\" };",
       "4150504C"
       "0000"
       "00"},
      {"clut", "resource 'clut' (128) { 0, 0x8000, { 0, 0xFFFF, 0xFFFF, 0xFFFF; 1, 0, 0, 0 } };",
       "00000000"
       "8000"
       "0001"
       "0000FFFFFFFFFFFF"
       "0001000000000000"},
      {"wctb has the colour table's layout", "resource 'wctb' (0) { 7, 0, { } };",
       "00000007"
       "0000"
       "FFFF"},
      {"pltt",
       "resource 'pltt' (128) { { 0xFFFF, 0, 0, pmTolerant, 0x1000; 0, 0, 0, pmCourteous, 0 } "
       "};",
       "0002" + Repeat("00", 14) +
           "FFFF000000000002"
           "1000" +
           Repeat("00", 6) + Repeat("00", 10) + Repeat("00", 6)},
      {"KWED",
       "resource 'KWED' (128) { 12, alternativeFont, tabByTable, keepOKCancel, { 1, 1, \"O\", "
       "noGroup, singleLine, notCombo; 3, 4, noMnemonic, 2, multiLine, comboBox } };",
       "0CC0"
       "0002"
       "01014F00"
       "03040023"},
      {"acur", "resource 'acur' (128) { { 128; 129 } };",
       "0002"
       "0000"
       "00800000"
       "00810000"},
  };
  return snippets;
}

TEST(RezStandardTypes, EachTypeCompilesToItsPublishedLayoutAndDecompilesByItsFields) {
  for (const Snippet& s : Snippets()) {
    SCOPED_TRACE(s.what);
    std::vector<rez::CompiledResource> resources;
    std::string error;
    ASSERT_TRUE(Compile({{"main.r", "#include \"Types.r\"\n" + s.source}}, resources, error))
        << error;
    ASSERT_EQ(resources.size(), 1u);
    EXPECT_EQ(Hex(resources[0].data), s.expected);

    std::string text = rez_test::Decompile(resources);
    EXPECT_EQ(text.find("data '"), std::string::npos) << text;
    std::vector<rez::CompiledResource> again;
    ASSERT_TRUE(Compile({{"main.r", text}}, again, error)) << error << "\n" << text;
    ASSERT_EQ(again.size(), 1u);
    EXPECT_EQ(Hex(again[0].data), s.expected) << text;
    EXPECT_EQ(again[0].name, resources[0].name);
  }
}

// What the language offers beyond the standard declarations: labels and the
// functions over them, switch keys, fill and align, symbolic constants in
// expressions, #define and #if, and the data, read and include statements.
TEST(RezStandardTypes, LanguageFeaturesLayOutAsRezDoes) {
  rez_test::Sources files = {
      {"main.r",
       "#define BASE 020   /* octal */\n"
       "#define WIDE\n"
       "type 'TEST' {\n"
       "  integer = (finish - start) / 8;          /* bytes of the array, a forward label */\n"
       "  start: array Items { byte = $$ArrayIndex(Items); unsigned hex byte one = 1, two = 2; };\n"
       "  finish: integer = $$Countof(Items) * 100;\n"
       "  unsigned bitstring[3]; fill bit[4]; boolean; align long;\n"
       "  cstring; cstring[4]; pstring[3]; wstring; string[2];\n"
       "  switch { case A: key byte = 1; integer; case B: key byte = 2; longint; };\n"
       "  longint = $$Word(start) << 16 | $$ID;\n"
       "};\n"
       "#ifdef WIDE\n"
       "#if BASE > 15 && defined(WIDE)\n"
       "resource 'TEST' (BASE + 2, \"t\", preload, locked, protected) {\n"
       "  { one; two + one }, 5, 1, \"c\", \"ab\", \"x\", \"wide\", \"q\", B { -1 } };\n"
       "#else\n"
       "#error not taken\n"
       "#endif\n"
       "#endif\n"
       "data 'RAW ' (1, sysheap, 0x81) { $\"0102\" \"AB\" };\n"
       "read 'RAW ' (2) \"blob.bin\";\n"},
      {"blob.bin", std::string("\x00\xFF\x10", 3)}};
  std::vector<rez::CompiledResource> out;
  std::string error;
  ASSERT_TRUE(Compile(files, out, error)) << error;
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0].id, 0x12);
  EXPECT_EQ(out[0].attributes, 0x1C);
  EXPECT_EQ(Hex(out[0].data),
            "0004"  // (finish - start) / 8
            "01010203"
            "00C8"  // two elements: index, value; count * 100
            "A1"
            "000000"  // 101, four fill bits, boolean 1, then long-aligned
            "6300"
            "61620000"
            "01780000"
            "000477696465"
            "7100"        // the five strings
            "02FFFFFFFF"  // case B
            "01010012");  // the word at start, and the ID
  EXPECT_EQ(out[1].attributes, 0xC1);
  EXPECT_EQ(Hex(out[1].data), "01024142");
  EXPECT_EQ(Hex(out[2].data), "00FF10");

  // include takes resources from a compiled file, filtered and renamed.
  std::string file;
  ASSERT_TRUE(rez::BuildResourceFile(out, file, error)) << error;
  files = {
      {"lib.rsr", file},
      {"main.r", "include \"lib.rsr\" 'RAW ' (2:5) as 'BIN ';\ninclude \"lib.rsr\" not 'RAW ';\n"}};
  ASSERT_TRUE(Compile(files, out, error)) << error;
  ASSERT_EQ(out.size(), 2u);
  EXPECT_EQ(rez::QuoteType(out[0].type), "'BIN '");
  EXPECT_EQ(out[0].id, 2);
  EXPECT_EQ(rez::QuoteType(out[1].type), "'TEST'");
}

}  // namespace
