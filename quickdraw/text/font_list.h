// The Windows faces installed on the display and the default printer, each
// with the Macintosh font numbers the map puts on it and the sizes Windows
// offers; and the font map read at the first font use.
#pragma once
#include <windows.h>

#include <vector>

#include "MacTypes.h"
#include "quickdraw/text/font_map.h"

namespace kwe::quickdraw {

constexpr int kMacNumbersPerFace = 8;
constexpr size_t kSizesPerFace = 64;  // a further size overwrites the last

// One enumerated size: the leading fields of its LOGFONT and its height in
// pixels without internal leading.
struct FaceSize {
  LONG height, width, escapement, orientation, weight;
  BYTE italic, underline, strikeOut, charSet, outPrecision, clipPrecision, quality, pitchAndFamily;
  SInt16 pixels;
};

struct InstalledFace {
  SInt16 macNumbers[kMacNumbersPerFace];  // -1: empty
  char faceName[kFaceNameCapacity];
  BYTE pitchAndFamily;
  BYTE charSet;
  UInt16 fontType;  // RASTER_FONTTYPE, DEVICE_FONTTYPE, TRUETYPE_FONTTYPE bits
  std::vector<FaceSize> sizes;
};

// What a Macintosh font number stands for: an installed face, or only the
// map's entry when no face of its family is installed, or neither.
struct FaceChoice {
  const InstalledFace* face = nullptr;
  const FontMapEntry* entry = nullptr;
};

// Reads the map and builds the list unless both are there already.
void EnsureFontData();
// Forgets the map and the list (the last port has closed).
void ReleaseFontData();
// Grows every time the map or the list is rebuilt or released, so that
// what was derived from them (FontMetrics) can tell it is stale.
UInt32 FontDataGeneration();

const FontMap& CurrentFontMap();
// In name order, without regard to case.
const std::vector<InstalledFace>& InstalledFaces();
const InstalledFace* FaceOfName(const char* name, size_t length);

FaceChoice FaceForNumber(SInt16 number);
// The size record a font of txSize should be made from: a raster face's
// own size nearest to it, any other face's first; null without sizes.
const FaceSize* SizeForRequest(const InstalledFace& face, SInt16 txSize);

// The number of the Japanese system face in DBCS mode, 0 otherwise.
SInt16 IntlSystemFont();

// Rebuilds the installed list when the default printer changed, or always
// with force.
void UpdateFontList(bool force);

}  // namespace kwe::quickdraw

// Font enumeration callbacks, exported so that EnumFonts can call them.
KWE_API int KWE_CALL K_EnumFont(const LOGFONTA* font, const TEXTMETRICA* metrics, DWORD fontType,
                                LPARAM data);
KWE_API int KWE_CALL K_EnumFontSizes(const LOGFONTA* font, const TEXTMETRICA* metrics,
                                     DWORD fontType, LPARAM data);
