// The font map: the Windows faces that stand for each Macintosh font number.
// It lives in a text file beside the application, kwefont.map, one entry a
// line:
//   macName(number):face1,face2,face3(FamilyWord)
// Byte work only, so it builds and is tested natively too.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kwe::quickdraw {

constexpr size_t kFontMapCapacity = 500;  // further lines are ignored
constexpr int kFacesPerMapEntry = 3;
constexpr size_t kFaceNameCapacity = 32;  // LF_FACESIZE, the NUL included
constexpr size_t kMacFontNameCapacity = 64;

// Windows font families (FF_ values) are the family word's index times 16;
// a word the map does not know means FF_MODERN.
constexpr uint8_t kFamilyModern = 0x30;

struct FontMapEntry {
  int16_t number = -1;  // -1: the line names no number
  char macName[kMacFontNameCapacity] = {};
  char faces[kFacesPerMapEntry][kFaceNameCapacity] = {};  // tried in order
  int faceCount = 0;
  uint8_t family = 0;
};

struct FontMap {
  std::vector<FontMapEntry> entries;
  // The highest number of 128 or more in the map, plus one (0 when none):
  // where numbers for fonts the map does not know begin.
  int16_t nextFreeNumber = 0;
};

// A line that lacks one of its delimiters ends the parse; the entries read
// up to it stay. Blank lines and leading blanks and control characters are
// skipped, and whatever follows the family word's ")" is ignored.
FontMap ParseFontMap(const char* text, size_t length);

// The map as the library writes it, each line ended by CR LF.
std::string WriteFontMap(const FontMap& map);

// What stands in when no map file can be read (and is then written out).
const FontMap& BuiltInFontMap();

const char* FamilyWord(uint8_t family);

const FontMapEntry* MapEntryOfNumber(const FontMap& map, int16_t number);
// Macintosh names compare without regard to case.
const FontMapEntry* MapEntryOfName(const FontMap& map, const char* name, size_t length);

// ASCII case folding, the way font names are compared.
bool SameNameIgnoringCase(const char* a, size_t aLength, const char* b, size_t bLength);

}  // namespace kwe::quickdraw
