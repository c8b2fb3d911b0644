#include "frame/library_fonts.h"

#include <windows.h>

#include <string>

#include "frame/app_path.h"

namespace kwe {
namespace {

constexpr char kFontFile[] = "KWEFONT.FON";
// "ＭＳ ゴシック" in code page 932.
constexpr char kJapaneseFace[] = "\x82\x6C\x82\x72\x20\x83\x53\x83\x56\x83\x62\x83\x4E";

struct FontRequest {
  LibraryFontIndex index;
  const char* face;
  int height;
  int weight;
  DWORD pitchAndFamily;
};

void Measure(HDC dc, LibraryFont& font) {
  HGDIOBJ previous = SelectObject(dc, font.font);
  SIZE brace{};
  GetTextExtentPointA(dc, "{", 1, &brace);
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  SelectObject(dc, previous);
  font.braceHeight = brace.cy;
  font.ascent = metrics.tmAscent;
  font.descent = metrics.tmDescent;
}

HFONT Create(const FontRequest& r) {
  const bool dbcs = TheSession().dbcsMode != 0;
  return CreateFontA(r.height, 0, 0, 0, r.weight, 0, 0, 0, dbcs ? SHIFTJIS_CHARSET : 0, 0, 0, 0,
                     r.pitchAndFamily, dbcs ? kJapaneseFace : r.face);
}

}  // namespace

void MakeLibraryFonts() {
  Session& s = TheSession();
  std::string fontFile = AppPathName(kFontFile);
  // Failing to add the file leaves the faces to the system's font mapper.
  s.fontFileAdded = AddFontResourceA(fontFile.c_str()) > 0;

  HDC dc = GetDC(s.mainWindow);
  LibraryFont& stock = s.fonts[kStockSystemFont];
  stock.font = static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
  Measure(dc, stock);
  TEXTMETRICA stockMetrics{};
  HGDIOBJ previous = SelectObject(dc, stock.font);
  GetTextMetricsA(dc, &stockMetrics);
  SelectObject(dc, previous);

  int systemHeight = s.dbcsMode ? 12 : 16;
  if (systemHeight > stockMetrics.tmHeight) systemHeight = stockMetrics.tmHeight;
  const char* boldFace = s.version.versionWord == 3 ? "Helv" : "MS Sans Serif";
  const FontRequest requests[] = {
      {kSystemFont, "KWE_System", systemHeight, static_cast<int>(stockMetrics.tmWeight), 0},
      {kBoldDialogFont, boldFace, -8, 700, 0},
      {kSmallSystemFont, "KWE_System", 10, 400, 0},
      {kMonoFont, "KWE_Mono", -10, 400, 0x31},
      {kSmallMonoFont, "KWE_Mono", -8, 400, 0x31},
  };
  for (const FontRequest& r : requests) {
    LibraryFont& font = s.fonts[r.index];
    font.font = Create(r);
    Measure(dc, font);
    if (r.index == kBoldDialogFont) s.dialogFont = kSystemFont;
  }
  ReleaseDC(s.mainWindow, dc);
}

void DeleteLibraryFonts() {
  Session& s = TheSession();
  for (int i = kSystemFont; i < kLibraryFontCount; ++i) {
    if (s.fonts[i].font) DeleteObject(s.fonts[i].font);
  }
  for (LibraryFont& font : s.fonts) font = LibraryFont{};
  if (s.fontFileAdded) RemoveFontResourceA(AppPathName(kFontFile).c_str());
  s.fontFileAdded = false;
}

void DeleteLibraryBrushes() {
  for (HBRUSH& brush : TheSession().brushes) {
    if (brush) DeleteObject(brush);
    brush = nullptr;
  }
}

const LibraryFont& GetLibraryFont(LibraryFontIndex which) { return TheSession().fonts[which]; }

bool IsLibraryFont(HFONT font) {
  for (const LibraryFont& f : TheSession().fonts)
    if (f.font && f.font == font) return true;
  return false;
}

}  // namespace kwe

// Remade on each call, so the host may call it again after WM_SYSCOLORCHANGE.
KWE_API void KWE_CALL KWE_InitColors(void) {
  kwe::DeleteLibraryBrushes();
  HBRUSH* brushes = kwe::TheSession().brushes;
  brushes[0] = CreateSolidBrush(GetSysColor(COLOR_WINDOWTEXT));
  brushes[1] = CreateSolidBrush(GetSysColor(COLOR_ACTIVECAPTION));
  brushes[2] = CreateSolidBrush(GetSysColor(COLOR_INACTIVECAPTION));
}
