// QuickDraw text into a DIB section: DrawString of short strings with the
// font, size and face changing every 100 strings, beside raw TextOutA with
// the same fonts selected at the same moments.
#include <windows.h>

#include <cstring>
#include <vector>

#include "Fonts.h"
#include "KWEPorts.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kStrings = 100000;
constexpr int kStringsPerFont = 100;
constexpr int kRounds = 3;

struct Setting {
  SInt16 font, size, face;
};
constexpr Setting kSettings[] = {
    {geneva, 12, 0}, {times, 14, bold}, {courier, 10, 0}, {helvetica, 18, italic}};
constexpr int kSettingCount = 4;
const char* const kWords[] = {"Hello",    "QuickDraw", "font map",
                              "Toolbox!", "abc 123",   "Windows GDI"};

void Apply(const Setting& s) {
  TextFont(s.font);
  TextSize(s.size);
  TextFace(s.face);
}

}  // namespace

int main() {
  kwe_bench::Session session;
  GrafPtr screen;
  InitGraf(&screen);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, 512, -512, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC dc = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ oldBitmap = SelectObject(dc, bitmap);
  GrafPort port;
  OpenPort(&port);
  KWE_SwaphDC(dc, true);

  // The fonts the library makes, made again for the raw loop.
  std::vector<HFONT> fonts;
  for (const Setting& s : kSettings) {
    Apply(s);
    DrawChar('x');
    LOGFONTA lf{};
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof lf, &lf);
    fonts.push_back(CreateFontIndirectA(&lf));
  }
  std::vector<unsigned char> strings[6];
  for (int i = 0; i < 6; ++i) {
    size_t n = std::strlen(kWords[i]);
    strings[i].assign(1, static_cast<unsigned char>(n));
    strings[i].insert(strings[i].end(), kWords[i], kWords[i] + n);
  }

  double best[2] = {1e30, 1e30};
  for (int round = 0; round < 2 * kRounds; ++round) {
    double start = kwe_bench::Now();
    if (round % 2 == 0) {
      HGDIOBJ saved = GetCurrentObject(dc, OBJ_FONT);
      SetTextAlign(dc, TA_BASELINE);
      SetBkMode(dc, TRANSPARENT);
      for (int i = 0; i < kStrings; ++i) {
        if (i % kStringsPerFont == 0)
          SelectObject(dc, fonts[(i / kStringsPerFont) % kSettingCount]);
        const char* word = kWords[i % 6];
        TextOutA(dc, i % 300, 20 + i % 480, word, static_cast<int>(std::strlen(word)));
      }
      SelectObject(dc, saved);
    } else {
      for (int i = 0; i < kStrings; ++i) {
        if (i % kStringsPerFont == 0) Apply(kSettings[(i / kStringsPerFont) % kSettingCount]);
        MoveTo(SInt16(i % 300), SInt16(20 + i % 480));
        DrawString(strings[i % 6].data());
      }
    }
    GdiFlush();
    double elapsed = kwe_bench::Now() - start;
    if (elapsed < best[round % 2]) best[round % 2] = elapsed;
  }
  kwe_bench::PrintRatio("DrawString, new font every 100, vs TextOutA", best[1] * 1e6 / kStrings,
                        best[0] * 1e6 / kStrings, "us/string");

  ClosePort(&port);
  for (HFONT f : fonts) DeleteObject(f);
  SelectObject(dc, oldBitmap);
  DeleteObject(bitmap);
  DeleteDC(dc);
  return 0;
}
