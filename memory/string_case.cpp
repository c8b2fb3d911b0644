// UpperString and RelString over the Macintosh-Roman character table.
// EqualString (an operating-system utility) folds case through the C
// runtime instead and never reads this table.
#include "memory/string_case.h"

#include "TextUtils.h"
#include "memory/character_table.h"

namespace kwe::text {
namespace {

inline int Sign(int difference) { return difference < 0 ? -1 : (difference > 0 ? 1 : 0); }

// Column values compared position by position, then the shorter text first.
template <class Key>
int CompareKeys(const unsigned char* a, size_t lengthA, const unsigned char* b, size_t lengthB,
                Key key) {
  size_t common = lengthA < lengthB ? lengthA : lengthB;
  for (size_t i = 0; i < common; ++i)
    if (int d = Sign(int(key(a[i])) - int(key(b[i])))) return d;
  return lengthA < lengthB ? -1 : (lengthA > lengthB ? 1 : 0);
}

inline UInt8 BaseOf(unsigned char c) { return CharacterInfo(c).base; }

// RelString with diacritics but not case: for each position the base
// letters, then the diacritic's rank (the secondary order of the capital).
int CompareDiacriticsOnly(const unsigned char* a, size_t lengthA, const unsigned char* b,
                          size_t lengthB) {
  size_t common = lengthA < lengthB ? lengthA : lengthB;
  for (size_t i = 0; i < common; ++i) {
    if (int d = Sign(int(BaseOf(a[i])) - int(BaseOf(b[i])))) return d;
    UInt8 rankA = CharacterInfo(CharacterInfo(a[i]).upper).secondary;
    UInt8 rankB = CharacterInfo(CharacterInfo(b[i]).upper).secondary;
    if (int d = Sign(int(rankA) - int(rankB))) return d;
  }
  return static_cast<int>(lengthA) - static_cast<int>(lengthB);
}

// RelString with case but not diacritics: for each position the base
// letters, then capitals before small letters.
int CompareCaseOnly(const unsigned char* a, size_t lengthA, const unsigned char* b,
                    size_t lengthB) {
  size_t common = lengthA < lengthB ? lengthA : lengthB;
  for (size_t i = 0; i < common; ++i) {
    if (int d = Sign(int(BaseOf(a[i])) - int(BaseOf(b[i])))) return d;
    bool smallA = CharacterInfo(a[i]).secondary >= kSmallLetterOrder;
    bool smallB = CharacterInfo(b[i]).secondary >= kSmallLetterOrder;
    if (smallA != smallB) return smallA ? 1 : -1;
  }
  return static_cast<int>(lengthA) - static_cast<int>(lengthB);
}

}  // namespace

void UpperText(unsigned char* text, size_t length, bool keepDiacritics) {
  for (size_t i = 0; i < length; ++i) {
    const CharacterEntry& entry = CharacterInfo(text[i]);
    text[i] = keepDiacritics ? entry.upper : entry.base;
  }
}

void LowerText(unsigned char* text, size_t length, bool keepDiacritics) {
  for (size_t i = 0; i < length; ++i)
    text[i] = CharacterInfo(keepDiacritics ? text[i] : BaseOf(text[i])).lower;
}

int ComparePrimary(const unsigned char* a, size_t lengthA, const unsigned char* b, size_t lengthB) {
  return CompareKeys(a, lengthA, b, lengthB, BaseOf);
}

int CompareMagnitude(const unsigned char* a, size_t lengthA, const unsigned char* b,
                     size_t lengthB) {
  if (int d = ComparePrimary(a, lengthA, b, lengthB)) return d;
  return CompareKeys(a, lengthA, b, lengthB,
                     [](unsigned char c) { return CharacterInfo(c).secondary; });
}

}  // namespace kwe::text

KWE_API void KWE_CALL UpperString(StringPtr theString, Boolean diacSensitive) {
  if (theString) kwe::text::UpperText(theString + 1, theString[0], diacSensitive != 0);
}

// -1 when str1 sorts first, 1 when str2 does; with only one of the two
// sensitivities on, strings that agree over the shorter length give the
// difference of their lengths rather than -1 or 1.
KWE_API SInt16 KWE_CALL RelString(ConstStr255Param str1, ConstStr255Param str2,
                                  Boolean caseSensitive, Boolean diacSensitive) {
  static const unsigned char kEmpty[1] = {0};
  if (!str1) str1 = kEmpty;
  if (!str2) str2 = kEmpty;
  const unsigned char *a = str1 + 1, *b = str2 + 1;
  size_t lengthA = str1[0], lengthB = str2[0];
  int result;
  if (caseSensitive && diacSensitive)
    result = kwe::text::CompareMagnitude(a, lengthA, b, lengthB);
  else if (diacSensitive)
    result = kwe::text::CompareDiacriticsOnly(a, lengthA, b, lengthB);
  else if (caseSensitive)
    result = kwe::text::CompareCaseOnly(a, lengthA, b, lengthB);
  else
    result = kwe::text::ComparePrimary(a, lengthA, b, lengthB);
  return static_cast<SInt16>(result);
}
