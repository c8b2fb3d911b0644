// The installed font list: built by enumeration at the first font use, again
// when the default printer changes, and let go when the last port closes.
#include "quickdraw/text/font_list.h"

#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "frame/session.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/font_map_file.h"

namespace kwe::quickdraw {
namespace {

constexpr size_t kFaceCapacity = 4096;  // more than any system holds

struct FontData {
  bool mapLoaded = false;
  bool listBuilt = false;
  FontMap map;
  std::vector<InstalledFace> faces;
  std::string printerDriver, printerDevice;  // of the last build
  SInt16 intlSystemFont = 0;
};

FontData g_data;
UInt32 g_generation = 1;

// "ＭＳ ゴシック", "標準ゴシック" and "ゴシック" in code page 932.
constexpr const char* kJapaneseSystemFaces[] = {
    "\x82\x6C\x82\x72\x20\x83\x53\x83\x56\x83\x62\x83\x4E",
    "\x95\x57\x8F\x80\x83\x53\x83\x56\x83\x62\x83\x4E",
    "\x83\x53\x83\x56\x83\x62\x83\x4E",
};

char Folded(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool NameLess(const char* a, const char* b) {
  for (;; ++a, ++b) {
    char x = Folded(*a), y = Folded(*b);
    if (x != y || !x) return static_cast<unsigned char>(x) < static_cast<unsigned char>(y);
  }
}

InstalledFace* MutableFaceOfName(const char* name) {
  return const_cast<InstalledFace*>(FaceOfName(name, std::strlen(name)));
}

// The LOGFONT's family and pitch, with the TrueType bit that only the
// TEXTMETRIC carries (bit 2, as in tmPitchAndFamily).
BYTE PitchAndFamilyOf(const LOGFONTA& font, DWORD fontType) {
  return static_cast<BYTE>((font.lfPitchAndFamily & 0xF3) |
                           (fontType & TRUETYPE_FONTTYPE ? 0x04 : 0));
}

// The map's numbers go onto the first of each entry's faces that is
// installed, unless that face bears the Macintosh name itself.
void LinkMapToFaces() {
  for (const FontMapEntry& entry : g_data.map.entries) {
    if (entry.number == -1) continue;
    for (int i = 0; i < entry.faceCount; ++i) {
      InstalledFace* face = MutableFaceOfName(entry.faces[i]);
      if (!face) continue;
      if (std::strcmp(face->faceName, entry.macName) != 0) {
        for (SInt16& slot : face->macNumbers) {
          if (slot != -1) continue;
          slot = entry.number;
          break;
        }
      }
      break;
    }
  }
}

SInt16 FindIntlSystemFont() {
  if (!TheSession().dbcsMode) return 0;
  for (const char* name : kJapaneseSystemFaces) {
    const InstalledFace* face = FaceOfName(name, std::strlen(name));
    if (face) return face->macNumbers[0] == -1 ? 0 : face->macNumbers[0];
  }
  return 0;
}

// The default printer's DC and names; a null DC when there is none.
HDC DefaultPrinter(std::string* driver, std::string* device) {
  PRINTDLGA request{};
  request.lStructSize = sizeof request;
  request.Flags = PD_RETURNDEFAULT | PD_RETURNDC;
  if (!PrintDlgA(&request)) return nullptr;
  if (request.hDevNames) {
    SIZE_T size = GlobalSize(request.hDevNames);
    if (const auto* names = static_cast<const DEVNAMES*>(GlobalLock(request.hDevNames))) {
      const char* base = reinterpret_cast<const char*>(names);
      if (names->wDriverOffset < size)
        driver->assign(base + names->wDriverOffset,
                       strnlen(base + names->wDriverOffset, size - names->wDriverOffset));
      if (names->wDeviceOffset < size)
        device->assign(base + names->wDeviceOffset,
                       strnlen(base + names->wDeviceOffset, size - names->wDeviceOffset));
      GlobalUnlock(request.hDevNames);
    }
    GlobalFree(request.hDevNames);
  }
  if (request.hDevMode) GlobalFree(request.hDevMode);
  return request.hDC;
}

void EnumerateFaces(HDC screen, HDC printer) {
  // With TrueType-only switched on Windows would list no raster or device
  // face; the switch is off while the list is made.
  bool trueTypeOnly =
      GetProfileIntA("TrueType", "TTEnable", 1) && GetProfileIntA("TrueType", "TTOnly", 0);
  if (trueTypeOnly) WriteProfileStringA("TrueType", "TTOnly", "0");
  EnumFontsA(screen, nullptr, K_EnumFont, reinterpret_cast<LPARAM>(&g_data.faces));
  if (printer) EnumFontsA(printer, nullptr, K_EnumFont, reinterpret_cast<LPARAM>(&g_data.faces));
  if (trueTypeOnly) WriteProfileStringA("TrueType", "TTOnly", "1");
}

void EnsureMap() {
  if (g_data.mapLoaded) return;
  g_data.map = LoadFontMap();
  g_data.mapLoaded = true;
  g_data.listBuilt = false;
}

}  // namespace

void EnsureFontData() {
  EnsureMap();
  if (!g_data.listBuilt) UpdateFontList(true);
}

void ReleaseFontData() {
  FontData empty;
  std::swap(g_data, empty);
  ++g_generation;
}

UInt32 FontDataGeneration() { return g_generation; }
const FontMap& CurrentFontMap() { return g_data.map; }
const std::vector<InstalledFace>& InstalledFaces() { return g_data.faces; }
SInt16 IntlSystemFont() { return g_data.intlSystemFont; }

const InstalledFace* FaceOfName(const char* name, size_t length) {
  for (const InstalledFace& face : g_data.faces)
    if (SameNameIgnoringCase(face.faceName, std::strlen(face.faceName), name, length)) return &face;
  return nullptr;
}

void UpdateFontList(bool force) {
  EnsureMap();
  std::string driver, device;
  HDC printer = DefaultPrinter(&driver, &device);
  if (g_data.listBuilt && !force && driver == g_data.printerDriver &&
      device == g_data.printerDevice) {
    if (printer) DeleteDC(printer);
    return;
  }
  g_data.faces.clear();
  HDC screen = CurrentDC();
  bool screenFetched = !screen;
  if (screenFetched) screen = GetDC(nullptr);
  EnumerateFaces(screen, printer);
  LinkMapToFaces();
  HDC sizesDC = printer ? printer : screen;
  for (InstalledFace& face : g_data.faces)
    EnumFontsA(sizesDC, face.faceName, K_EnumFontSizes, reinterpret_cast<LPARAM>(&face));
  if (screenFetched) ReleaseDC(nullptr, screen);
  if (printer) DeleteDC(printer);
  g_data.printerDriver = driver;
  g_data.printerDevice = device;
  g_data.intlSystemFont = FindIntlSystemFont();
  g_data.listBuilt = true;
  ++g_generation;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// A face met again is updated only when this enumeration reports a higher
// font type (a TrueType face over the raster one of the same name).
KWE_API int KWE_CALL K_EnumFont(const LOGFONTA* font, const TEXTMETRICA*, DWORD fontType,
                                LPARAM data) {
  auto* faces = reinterpret_cast<std::vector<InstalledFace>*>(data);
  if (!font || !faces) return 1;
  size_t length = strnlen(font->lfFaceName, LF_FACESIZE);
  if (length == 0 || length >= kFaceNameCapacity) return 1;
  auto at = std::lower_bound(
      faces->begin(), faces->end(), font->lfFaceName,
      [](const InstalledFace& f, const char* name) { return NameLess(f.faceName, name); });
  if (at != faces->end() && !NameLess(font->lfFaceName, at->faceName)) {
    if (fontType > at->fontType) {
      at->fontType = static_cast<UInt16>(fontType);
      at->charSet = font->lfCharSet;
      at->pitchAndFamily = PitchAndFamilyOf(*font, fontType);
    }
    return 1;
  }
  if (faces->size() >= kFaceCapacity) return 0;
  InstalledFace face{};
  std::fill(std::begin(face.macNumbers), std::end(face.macNumbers), SInt16(-1));
  std::memcpy(face.faceName, font->lfFaceName, length);
  face.faceName[length] = 0;
  face.pitchAndFamily = PitchAndFamilyOf(*font, fontType);
  face.charSet = font->lfCharSet;
  face.fontType = static_cast<UInt16>(fontType);
  faces->insert(at, std::move(face));
  return 1;
}

KWE_API int KWE_CALL K_EnumFontSizes(const LOGFONTA* font, const TEXTMETRICA* metrics, DWORD,
                                     LPARAM data) {
  auto* face = reinterpret_cast<InstalledFace*>(data);
  if (!font || !metrics || !face) return 1;
  FaceSize size{
      font->lfHeight,         font->lfWidth,
      font->lfEscapement,     font->lfOrientation,
      font->lfWeight,         font->lfItalic,
      font->lfUnderline,      font->lfStrikeOut,
      font->lfCharSet,        font->lfOutPrecision,
      font->lfClipPrecision,  font->lfQuality,
      font->lfPitchAndFamily, static_cast<SInt16>(metrics->tmHeight - metrics->tmInternalLeading)};
  if (face->sizes.size() < kSizesPerFace)
    face->sizes.push_back(size);
  else
    face->sizes.back() = size;
  return 1;
}
