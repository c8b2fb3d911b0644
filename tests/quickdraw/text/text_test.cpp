// QuickDraw text through the DLL: drawn into a DIB section and read back
// pixel by pixel, measured against what GDI measures with the font the
// port put into the DC, and the font map read from and written to disk.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

#include "Files.h"
#include "Fonts.h"
#include "KWEPorts.h"
#include "OSUtils.h"
#include "Quickdraw.h"
#include "files/files_fixture.h"
#include "quickdraw/regions/region_canvas.h"
#include "support/temp_tree.h"

namespace {

using kwe_test::Canvas;
using kwe_test::InkBox;
using kwe_test::kBlack;
using kwe_test::kWhite;
using kwe_test::ReadRaw;

constexpr int kSize = 256;

using Pascal = kwe_test::P;

// Which pixels are black.
std::vector<bool> Ink(const Canvas& c) {
  std::vector<bool> ink;
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) ink.push_back(c.Pixel(x, y) == kBlack);
  return ink;
}

LOGFONTA FontIn(HDC dc) {
  LOGFONTA lf{};
  GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof lf, &lf);
  return lf;
}

class Text : public kwe_test::PortTest {
 protected:
  void SetUp() override {
    PortTest::SetUp();
    TextFont(geneva);
    TextSize(24);
  }
};

TEST_F(Text, StringsStandOnTheBaselineAndMoveThePenByTheirWidth) {
  Pascal s("Hxp");
  SInt16 width = StringWidth(s);
  MoveTo(20, 100);
  DrawString(s);
  EXPECT_TRUE(EqualPt(Pen(), Point{100, SInt16(20 + width)}));

  // GDI's own measure of the font the port put into the DC.
  SIZE extent{};
  TEXTMETRICA tm{};
  GetTextExtentPoint32A(canvas.Dc(), "Hxp", 3, &extent);
  GetTextMetricsA(canvas.Dc(), &tm);
  EXPECT_EQ(width, extent.cx - tm.tmOverhang);
  EXPECT_EQ(FontIn(canvas.Dc()).lfHeight, -24);

  InkBox h(canvas, 20, 0, 20 + CharWidth('H'), kSize);
  EXPECT_EQ(h.bottom, 99) << "H ends on the row above the baseline";
  EXPECT_LT(h.top, 90);
  InkBox p(canvas, 20 + CharWidth('H') + CharWidth('x'), 0, 20 + width, kSize);
  EXPECT_GT(p.bottom, 100) << "p's descender goes below it";

  // The next string starts where the pen is.
  DrawString(Pascal("H"));
  EXPECT_FALSE(InkBox(canvas, 20 + width, 0, kSize, kSize).Empty());
  EXPECT_EQ(Pen().h, 20 + width + CharWidth('H'));

  // Hidden, the pen still moves and nothing is drawn.
  canvas.Clear();
  HidePen();
  DrawString(s);
  ShowPen();
  EXPECT_EQ(Pen().h, 20 + 2 * width + CharWidth('H'));
  EXPECT_TRUE(InkBox(canvas, 0, 0, kSize, kSize).Empty());
}

// The face as Windows holds it in the DC's font: extend strikes out. (GDI
// draws what the font says.)
TEST_F(Text, StyleBitsMakeTheFontBoldItalicUnderlinedAndStruckOut) {
  Pascal s("mmmm");
  SInt16 plain = StringWidth(s);
  const struct {
    SInt16 face;
    LONG weight;
    BYTE italic, underline, strikeOut;
  } faces[] = {{bold | extend, FW_BOLD, 0, 0, 1},
               {italic, FW_NORMAL, 1, 0, 0},
               {underline, FW_NORMAL, 0, 1, 0}};
  for (const auto& f : faces) {
    TextFace(f.face);
    DrawChar('x');
    LOGFONTA lf = FontIn(canvas.Dc());
    EXPECT_EQ(std::make_tuple(lf.lfWeight, lf.lfItalic, lf.lfUnderline, lf.lfStrikeOut),
              std::make_tuple(f.weight, f.italic, f.underline, f.strikeOut))
        << f.face;
  }
  TextFace(bold);
  EXPECT_GT(StringWidth(s), plain);
}

TEST_F(Text, MacintoshCharactersAreDrawnAsTheirAnsiCounterpartsOrTheLibrarysBitmap) {
  MoveTo(10, 50);
  DrawChar(0xA5);  // the bullet, ANSI 0x95
  MoveTo(60, 50);
  DrawChar(0x8E);  // e acute, ANSI 0xE9
  Canvas reference(kSize);
  reference.Clear();
  HGDIOBJ old = SelectObject(reference.Dc(), GetCurrentObject(canvas.Dc(), OBJ_FONT));
  SetTextAlign(reference.Dc(), TA_BASELINE);
  SetBkMode(reference.Dc(), TRANSPARENT);
  TextOutA(reference.Dc(), 10, 50, "\x95", 1);
  TextOutA(reference.Dc(), 60, 50, "\xE9", 1);
  SIZE bullet{};
  GetTextExtentPoint32A(reference.Dc(), "\x95", 1, &bullet);
  SelectObject(reference.Dc(), old);
  EXPECT_FALSE(InkBox(canvas, 0, 0, kSize, kSize).Empty());
  EXPECT_EQ(Ink(canvas), Ink(reference));
  EXPECT_EQ(CharWidth(0xA5), bullet.cx);

  // The command key (18) comes from the library's own bitmap.
  canvas.Clear();
  FontInfo info;
  GetFontInfo(&info);
  MoveTo(30, 60);
  DrawChar(18);
  EXPECT_EQ(canvas.Row(49, 29, 43), "..##.....##...");
  EXPECT_EQ(canvas.Row(52, 29, 43), "..#########...");
  EXPECT_EQ(canvas.Row(55, 29, 43), "....#...#.....");
  EXPECT_EQ(canvas.Row(59, 29, 43), "..##.....##...");
  EXPECT_EQ(canvas.Row(60, 29, 43), "..............");
  EXPECT_EQ(Pen().h, 30 + std::min<int>(info.widMax, 12));
  EXPECT_EQ(CharWidth(18), std::min<int>(info.widMax, 12));
}

// The pixels GDI inks for text in a 1-bit bitmap, which is how the modes
// other than srcOr and srcCopy see the text (no antialiasing).
std::vector<bool> OneBitInk(HFONT font, const char* text, int h, int v) {
  Canvas target(kSize);
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bits = CreateBitmap(kSize, kSize, 1, 1, nullptr);
  HGDIOBJ oldBits = SelectObject(dc, bits);
  HGDIOBJ oldFont = SelectObject(dc, font);
  PatBlt(dc, 0, 0, kSize, kSize, WHITENESS);
  SetTextAlign(dc, TA_BASELINE);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, RGB(0, 0, 0));
  TextOutA(dc, h, v, text, static_cast<int>(std::strlen(text)));
  BitBlt(target.Dc(), 0, 0, kSize, kSize, dc, 0, 0, SRCCOPY);
  SelectObject(dc, oldFont);
  SelectObject(dc, oldBits);
  DeleteObject(bits);
  DeleteDC(dc);
  return Ink(target);
}

// On black, srcXor and srcBic turn the ink white; notSrcCopy inks the
// text's box and leaves the characters white; srcCopy clears the box first
// and then draws as srcOr does.
TEST_F(Text, TransferModesCombineTheInkTheToolboxWay) {
  Pascal s("AB");
  auto draw = [&](SInt16 mode, bool onBlack) {
    canvas.Clear();
    if (onBlack) {
      RECT all{0, 0, kSize, kSize};
      FillRect(canvas.Dc(), &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    }
    TextMode(mode);
    MoveTo(10, 50);
    DrawString(s);
    return Ink(canvas);
  };
  draw(srcOr, false);
  std::vector<bool> ink =
      OneBitInk(static_cast<HFONT>(GetCurrentObject(canvas.Dc(), OBJ_FONT)), "AB", 10, 50);
  ASSERT_GT(std::count(ink.begin(), ink.end(), true), 50);
  std::vector<bool> inverse(ink.size());
  std::transform(ink.begin(), ink.end(), inverse.begin(), [](bool b) { return !b; });
  EXPECT_EQ(draw(srcXor, true), inverse);
  EXPECT_EQ(draw(srcBic, true), inverse);
  EXPECT_EQ(draw(patXor, true), inverse);

  std::vector<bool> inverted = draw(notSrcCopy, false);
  for (size_t i = 0; i < ink.size(); ++i) {
    if (ink[i]) {
      ASSERT_FALSE(inverted[i]) << i;
    }
  }
  EXPECT_TRUE(inverted[50 * kSize + 10 + StringWidth(s) + 2]) << "the box is inked";
  EXPECT_FALSE(inverted[5 * kSize + 5]);

  draw(srcOr, false);
  std::vector<uint32_t> onWhite;
  for (int x = 10; x < 10 + StringWidth(s); ++x) onWhite.push_back(canvas.Pixel(x, 40));
  draw(srcCopy, true);
  for (int x = 10; x < 10 + StringWidth(s); ++x)
    ASSERT_EQ(canvas.Pixel(x, 40), onWhite[x - 10])
        << "the box is cleared under the text, at " << x;
  EXPECT_EQ(canvas.Pixel(5, 5), kBlack) << "outside the box nothing changes";
  EXPECT_EQ(canvas.Pixel(5, 40), kBlack);

  TextMode(grayishTextOr);  // a mode GDI cannot draw: nothing, but the pen moves
  canvas.Clear();
  MoveTo(10, 50);
  DrawString(s);
  EXPECT_TRUE(InkBox(canvas, 0, 0, kSize, kSize).Empty());
  EXPECT_EQ(Pen().h, 10 + StringWidth(s));
}

TEST_F(Text, SpaceExtraWidensEverySpace) {
  Pascal s("a b c");
  SInt16 plain = StringWidth(s);
  MoveTo(10, 50);
  DrawString(s);
  int plainRight = InkBox(canvas, 0, 0, kSize, kSize).right;
  SpaceExtra(3 << 16);
  EXPECT_EQ(StringWidth(s), plain + 6);
  canvas.Clear();
  MoveTo(10, 50);
  DrawString(s);
  EXPECT_EQ(Pen().h, 10 + plain + 6);
  EXPECT_EQ(InkBox(canvas, 0, 0, kSize, kSize).right, plainRight + 6);
  SpaceExtra(0x8000);  // half a pixel a space, rounded over the two
  EXPECT_EQ(StringWidth(s), plain + 1);
}

int g_textCalls;
void KWE_CALL CountingText(SInt16 count, const void* text, Point numer, Point denom) {
  ++g_textCalls;
  StdText(count, text, numer, denom);
}
SInt16 KWE_CALL FixedMeasure(SInt16, const void*, Point*, Point*, FontInfo*) { return 77; }

TEST_F(Text, MeasuringCallsAgreeCharacterByCharacter) {
  SInt16 locs[3] = {-1, -1, -1};
  MeasureText(2, "ab", locs);
  EXPECT_EQ(std::make_tuple(locs[0], locs[1], locs[2]),
            std::make_tuple(0, CharWidth('a'), CharWidth('a') + CharWidth('b')));
  EXPECT_EQ(TextWidth("xabx", 1, 2), StringWidth(Pascal("ab")));
  EXPECT_EQ(TextWidth("ab", 0, 0), 0);
  EXPECT_EQ(TextWidth("ab", 0, -3), 0);
  FontInfo info;
  GetFontInfo(&info);
  TEXTMETRICA tm{};
  GetTextMetricsA(canvas.Dc(), &tm);
  EXPECT_EQ(std::make_tuple(info.ascent, info.descent, info.widMax, info.leading),
            std::make_tuple(tm.tmAscent, tm.tmDescent, tm.tmMaxCharWidth, tm.tmExternalLeading));

  // numer:denom 2:1 draws at twice the size for that call only.
  MoveTo(10, 100);
  StdText(1, "H", Point{2, 2}, Point{1, 1});
  InkBox big(canvas, 0, 0, kSize, kSize);
  EXPECT_EQ(port.txSize, 24);
  canvas.Clear();
  MoveTo(10, 100);
  DrawChar('H');
  InkBox normal(canvas, 0, 0, kSize, kSize);
  EXPECT_NEAR(big.Height(), 2 * normal.Height(), 2);

  // The port's own procedures are called instead of the standard ones.
  QDProcs procs;
  SetStdProcs(&procs);
  procs.textProc = reinterpret_cast<ProcPtr>(&CountingText);
  procs.txMeasProc = reinterpret_cast<ProcPtr>(&FixedMeasure);
  port.grafProcs = &procs;
  g_textCalls = 0;
  DrawString(Pascal("ab"));
  DrawChar('c');
  EXPECT_EQ(g_textCalls, 2);
  EXPECT_EQ(StringWidth(Pascal("ab")), 77);
  port.grafProcs = nullptr;
}

TEST_F(Text, NilEmptyAndHugeTextsAreHarmless) {
  vars.HiliteMode = 0;
  MoveTo(10, 50);
  DrawString(Pascal(""));
  DrawString(nullptr);
  DrawText(nullptr, 0, 5);
  DrawText("abc", 0, 0);
  DrawText("abc", 0, -1);
  StdText(5, nullptr, Point{1, 1}, Point{1, 1});
  EXPECT_EQ(Pen().h, 10);
  EXPECT_TRUE(InkBox(canvas, 0, 0, kSize, kSize).Empty());
  EXPECT_EQ(vars.HiliteMode, 0x80);
  EXPECT_EQ(StringWidth(nullptr), 0);
  EXPECT_EQ(TextWidth(nullptr, 0, 3), 0);
  MeasureText(3, nullptr, nullptr);
  GetFontInfo(nullptr);

  // 32,767 bytes, ellipses among them (each drawn as three bytes).
  std::vector<char> text(32767, 'i');
  for (size_t i = 0; i < text.size(); i += 100) text[i] = '\xC9';
  SInt16 width = TextWidth(text.data(), 0, 32767);
  MoveTo(0, 50);
  DrawText(text.data(), 0, 32767);
  EXPECT_EQ(Pen().h, width);
  EXPECT_FALSE(InkBox(canvas, 0, 0, 40, kSize).Empty());
}

// A dialog port draws in the library's fonts; a raster face asked for one
// of its own sizes is made from that size's LOGFONT (Monaco 12 is the
// 10-pixel bitmap), any other size by character height. The preset fonts
// are never deleted.
TEST_F(Text, DialogPortsUseTheLibraryFonts) {
  KWE_DialogFontMode(&port, true);
  const struct {
    SInt16 font, size;
    const char* face;  // null: any face
    LONG height;       // 0: any height
  } cases[] = {{systemFont, 12, "KWE_System", 0},
               {monaco, 9, "KWE_Mono", -8},
               {monaco, 12, "KWE_Mono", -10},
               {monaco, 13, nullptr, -13}};
  HGDIOBJ preset = nullptr;
  for (const auto& c : cases) {
    TextFont(c.font);
    TextSize(c.size);
    DrawChar('A');
    LOGFONTA lf = FontIn(canvas.Dc());
    EXPECT_TRUE((!c.face || lf.lfFaceName == std::string(c.face)) &&
                (!c.height || lf.lfHeight == c.height))
        << c.size << ": " << lf.lfFaceName << " " << lf.lfHeight;
    if (!preset) preset = GetCurrentObject(canvas.Dc(), OBJ_FONT);
  }
  KWE_DialogFontMode(&port, false);
  TextFont(systemFont);
  DrawChar('A');
  EXPECT_EQ(GetObjectType(preset), static_cast<DWORD>(OBJ_FONT)) << "never deleted";
}

TEST_F(Text, FontManagerMeasuresThePortsFont) {
  InitFonts();
  ASSERT_NE(vars.WidthTabHandle, nullptr);
  FMetricRec metrics{};
  FontMetrics(&metrics);
  FontInfo info;
  GetFontInfo(&info);
  EXPECT_EQ(metrics.ascent, info.ascent << 16);
  EXPECT_EQ(metrics.widMax, info.widMax << 16);
  ASSERT_EQ(metrics.wTabHandle, vars.WidthTabHandle);
  const WidthTable& table = *reinterpret_cast<WidthTable*>(*metrics.wTabHandle);
  EXPECT_EQ(table.tabData['a'], CharWidth('a') << 16);
  EXPECT_EQ(table.tabData[0xA5], CharWidth(0xA5) << 16);

  // Extended text: measured from the table, drawn character by character.
  SInt16 a = CharWidth('a'), b = CharWidth('b');
  Fixed widths[256];
  for (Fixed& w : widths) w = 7 << 16;
  KWE_ExtDrawText(true, widths, 0);
  EXPECT_EQ(StringWidth(Pascal("abc")), 21);
  widths['b'] = 0x78000;  // 7.5
  EXPECT_EQ(StringWidth(Pascal("bbb")), 23);
  MoveTo(10, 50);
  DrawString(Pascal("iii"));
  EXPECT_EQ(Pen().h, 31);
  EXPECT_FALSE(InkBox(canvas, 24, 0, 31, kSize).Empty()) << "the third i sits 14 pixels on";
  KWE_ExtDrawText(true, nullptr, 2);  // the Font Manager's table, 2 pixels more
  EXPECT_EQ(StringWidth(Pascal("ab")), a + b + 2);
  KWE_ExtDrawText(false, nullptr, 0);
  EXPECT_EQ(StringWidth(Pascal("abc")), TextWidth("abc", 0, 3));

  // FMSwapFont measures in a port of its own and leaves this one current.
  FMInput in{geneva, 24, 0, false, 0, Point{1, 1}, Point{1, 1}};
  FMOutput* out = FMSwapFont(&in);
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(out->ascent, info.ascent);
  EXPECT_EQ(out->descent, info.descent);
  EXPECT_EQ(vars.thePort, &port);
  EXPECT_EQ(FMSwapFont(nullptr), nullptr);
}

// A session whose application lives in a directory of its own, so that the
// font map beside it is this test's alone.
class FontMapFiles : public Text {
 protected:
  void SetUp() override {
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    dir = std::string(temp) + "kwefont" + std::to_string(GetCurrentProcessId()) + "\\";
    CreateDirectoryA(dir.c_str(), nullptr);
    char library[MAX_PATH];
    GetModuleFileNameA(GetModuleHandleA("KWEJMP.dll"), library, MAX_PATH);
    CopyFileA(library, (dir + "HOST.DLL").c_str(), FALSE);
    module = LoadLibraryExA((dir + "HOST.DLL").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    ASSERT_NE(module, nullptr);
    Text::SetUp();
  }
  void TearDown() override {
    Text::TearDown();
    if (module) FreeLibrary(module);
    kwe_test::RemoveTree(dir);
  }
  void FillRecord(KWESessionRecord& r) override { r.instance = module; }

  std::string MapFile() const { return ReadRaw(dir + "kwefont.map"); }
  // The map is read again at the first font use after the last port closed.
  void ReopenWithMap(const std::string& text) {
    ClosePort(&port);
    kwe_test::WriteRaw(dir + "kwefont.map", text);
    OpenOnCanvas();
  }
  SInt16 Number(const char* name) {
    SInt16 n = -1;
    GetFNum(Pascal(name), &n);
    return n;
  }
  std::string Name(SInt16 number) {
    Str255 name;
    GetFontName(number, name);
    return kwe_test::Text(name);
  }

  std::string dir;
  HMODULE module = nullptr;
};

TEST_F(FontMapFiles, MapLinesPutNumbersOnTheirFirstInstalledFace) {
  char installed[LF_FACESIZE] = "";
  DrawChar('x');
  GetTextFaceA(canvas.Dc(), sizeof installed, installed);  // a face Windows has
  std::string face = installed;
  std::string map = "  geneva(3):No Such Face," + face +
                    ",Arial(Swiss)\r\n\r\n"
                    "\tlondon():" +
                    face +
                    "(Roman) anything after\n"
                    "cairo(300):No Such Face Either(decorative)\r\n";
  ReopenWithMap(map);
  EXPECT_EQ(Name(geneva), face);
  EXPECT_EQ(Number(face.c_str()), geneva);
  EXPECT_EQ(Number("london"), 0) << "an entry without a number";
  EXPECT_EQ(Number("times"), 0) << "the built-in map is not used";
  EXPECT_EQ(MapFile(), map) << "a map with entries is left as it is";
  TextFont(geneva);
  DrawString(Pascal("x"));
  EXPECT_EQ(FontIn(canvas.Dc()).lfFaceName, face);

  // A number the map does not know, with no applFont to fall back on: no
  // face name; Windows still draws in a face of its choosing.
  TextFont(999);
  EXPECT_EQ(Name(999), "");
  MoveTo(10, 50);
  DrawString(Pascal("Hello"));
  EXPECT_FALSE(InkBox(canvas, 0, 0, kSize, kSize).Empty());
}

// A program without a map gets the built-in one written beside it; a map
// with no line at all is replaced by the built-in one. (Which lines end a
// map is font_map_test's.)
TEST_F(FontMapFiles, MissingOrUnreadableMapsGiveTheBuiltInOne) {
  std::string map = MapFile();
  EXPECT_EQ(map.substr(0, 29), "systemFont(0):System(Swiss)\r\n");
  EXPECT_EQ(std::count(map.begin(), map.end(), '\n'), 17);
  EXPECT_EQ(Number("TIMES"), 20);
  EXPECT_EQ(Number("noSuchFont"), 0);
  GetFNum(Pascal("times"), nullptr);

  ReopenWithMap("\x01\x02 no delimiters at all\r\n");
  EXPECT_EQ(Number("times"), 20);
  EXPECT_EQ(MapFile().substr(0, 29), "systemFont(0):System(Swiss)\r\n");
}

}  // namespace
