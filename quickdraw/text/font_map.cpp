// Reading and writing kwefont.map, and the map built into the library.
#include "quickdraw/text/font_map.h"

#include <cstring>

namespace kwe::quickdraw {
namespace {

constexpr const char* kFamilyWords[] = {"DontCare", "Roman",  "Swiss",
                                        "Modern",   "Script", "Decorative"};
constexpr int kFamilyWordCount = 6;

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= 0x20; }

char FoldCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// [begin, end) without blanks at either end.
void Trim(const char*& begin, const char*& end) {
  while (begin < end && IsBlank(*begin)) ++begin;
  while (end > begin && IsBlank(end[-1])) --end;
}

const char* Find(const char* begin, const char* end, char c) {
  const void* p = std::memchr(begin, c, static_cast<size_t>(end - begin));
  return p ? static_cast<const char*>(p) : nullptr;
}

// Copies as much as fits, always terminated.
void CopyName(char* dst, size_t capacity, const char* begin, const char* end) {
  size_t n = static_cast<size_t>(end - begin);
  if (n >= capacity) n = capacity - 1;
  std::memcpy(dst, begin, n);
  dst[n] = 0;
}

// Empty is -1; otherwise an optional sign and decimal digits within 16 bits.
bool ParseNumber(const char* begin, const char* end, int16_t* number) {
  Trim(begin, end);
  if (begin == end) {
    *number = -1;
    return true;
  }
  bool negative = *begin == '-';
  if (negative || *begin == '+') ++begin;
  if (begin == end) return false;
  long value = 0;
  for (; begin < end; ++begin) {
    if (*begin < '0' || *begin > '9') return false;
    value = value * 10 + (*begin - '0');
    if (value > 32768) return false;
  }
  if (negative) value = -value;
  if (value > 32767) return false;
  *number = static_cast<int16_t>(value);
  return true;
}

// Up to three names; an empty one is skipped, and so is one too long to be
// the name of any Windows face.
void ParseFaces(const char* begin, const char* end, FontMapEntry& entry) {
  while (begin <= end && entry.faceCount < kFacesPerMapEntry) {
    const char* comma = Find(begin, end, ',');
    const char* stop = comma ? comma : end;
    const char* b = begin;
    const char* e = stop;
    Trim(b, e);
    if (b < e && static_cast<size_t>(e - b) < kFaceNameCapacity)
      CopyName(entry.faces[entry.faceCount++], kFaceNameCapacity, b, e);
    if (!comma) break;
    begin = comma + 1;
  }
}

uint8_t ParseFamily(const char* begin, const char* end) {
  Trim(begin, end);
  for (int i = 0; i < kFamilyWordCount; ++i) {
    const char* word = kFamilyWords[i];
    if (SameNameIgnoringCase(begin, static_cast<size_t>(end - begin), word, std::strlen(word)))
      return static_cast<uint8_t>(i << 4);
  }
  return kFamilyModern;
}

// One line, its blanks at the start already skipped; false when a
// delimiter is missing.
bool ParseLine(const char* begin, const char* end, FontMapEntry& entry) {
  const char* open = Find(begin, end, '(');
  if (!open) return false;
  const char* close = Find(open + 1, end, ')');
  if (!close) return false;
  const char* colon = Find(close + 1, end, ':');
  if (!colon) return false;
  const char* familyOpen = Find(colon + 1, end, '(');
  if (!familyOpen) return false;
  const char* familyClose = Find(familyOpen + 1, end, ')');
  if (!familyClose) return false;
  if (!ParseNumber(open + 1, close, &entry.number)) return false;
  const char* nameEnd = open;
  Trim(begin, nameEnd);
  CopyName(entry.macName, kMacFontNameCapacity, begin, nameEnd);
  ParseFaces(colon + 1, familyOpen, entry);
  entry.family = ParseFamily(familyOpen + 1, familyClose);
  return true;
}

FontMapEntry Entry(int16_t number, const char* macName, const char* face, uint8_t family) {
  FontMapEntry e;
  e.number = number;
  CopyName(e.macName, kMacFontNameCapacity, macName, macName + std::strlen(macName));
  CopyName(e.faces[0], kFaceNameCapacity, face, face + std::strlen(face));
  e.faceCount = 1;
  e.family = family;
  return e;
}

}  // namespace

bool SameNameIgnoringCase(const char* a, size_t aLength, const char* b, size_t bLength) {
  if (aLength != bLength) return false;
  for (size_t i = 0; i < aLength; ++i)
    if (FoldCase(a[i]) != FoldCase(b[i])) return false;
  return true;
}

const char* FamilyWord(uint8_t family) {
  int index = family >> 4;
  return index < kFamilyWordCount ? kFamilyWords[index] : kFamilyWords[kFamilyModern >> 4];
}

FontMap ParseFontMap(const char* text, size_t length) {
  FontMap map;
  if (!text) return map;
  const char* p = text;
  const char* end = text + length;
  int highest = -1;
  while (p < end && map.entries.size() < kFontMapCapacity) {
    while (p < end && IsBlank(*p)) ++p;  // blank lines too
    if (p == end) break;
    const char* lineEnd = p;
    while (lineEnd < end && *lineEnd != '\r' && *lineEnd != '\n') ++lineEnd;
    FontMapEntry entry;
    if (!ParseLine(p, lineEnd, entry)) break;
    if (entry.number >= 128 && entry.number > highest) highest = entry.number;
    map.entries.push_back(entry);
    p = lineEnd;
  }
  map.nextFreeNumber = highest >= 128 && highest < 32767 ? static_cast<int16_t>(highest + 1) : 0;
  return map;
}

std::string WriteFontMap(const FontMap& map) {
  std::string out;
  for (const FontMapEntry& e : map.entries) {
    out += e.macName;
    out += '(';
    if (e.number != -1) out += std::to_string(e.number);
    out += "):";
    for (int i = 0; i < e.faceCount; ++i) {
      if (i) out += ',';
      out += e.faces[i];
    }
    out += '(';
    out += FamilyWord(e.family);
    out += ")\r\n";
  }
  return out;
}

const FontMap& BuiltInFontMap() {
  constexpr uint8_t kRoman = 0x10, kSwiss = 0x20, kModern = 0x30, kDecorative = 0x50;
  static const FontMap map = [] {
    FontMap m;
    m.entries = {
        Entry(0, "systemFont", "System", kSwiss),
        Entry(20, "times", "Times New Roman", kRoman),
        Entry(21, "helvetica", "Arial", kModern),
        Entry(22, "courier", "Courier New", kModern),
        Entry(23, "symbol", "Symbol", kDecorative),
        Entry(1, "applFont", "Arial", kSwiss),
        Entry(2, "newYork", "Times New Roman", kRoman),
        Entry(3, "geneva", "Arial", kSwiss),
        Entry(4, "monaco", "Courier New", kModern),
        Entry(5, "venice", "Times New Roman", kRoman),
        Entry(6, "london", "Times New Roman", kRoman),
        Entry(7, "athens", "Times New Roman", kRoman),
        Entry(8, "sanFran", "Times New Roman", kRoman),
        Entry(9, "toronto", "Times New Roman", kRoman),
        Entry(11, "cairo", "Wingdings", kDecorative),
        Entry(12, "losAngeles", "Times New Roman", kRoman),
        Entry(24, "taliesin", "Wingdings", kDecorative),
    };
    return m;
  }();
  return map;
}

const FontMapEntry* MapEntryOfNumber(const FontMap& map, int16_t number) {
  for (const FontMapEntry& e : map.entries)
    if (e.number == number) return &e;
  return nullptr;
}

const FontMapEntry* MapEntryOfName(const FontMap& map, const char* name, size_t length) {
  for (const FontMapEntry& e : map.entries)
    if (SameNameIgnoringCase(e.macName, std::strlen(e.macName), name, length)) return &e;
  return nullptr;
}

}  // namespace kwe::quickdraw
