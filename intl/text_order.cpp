#include "intl/text_order.h"

#include "memory/character_table.h"

namespace kwe::intl {
namespace {

template <typename Key>
int CompareBy(const unsigned char* a, size_t aLength, const unsigned char* b, size_t bLength,
              Key key) {
  size_t n = aLength < bLength ? aLength : bLength;
  for (size_t i = 0; i < n; ++i) {
    int ka = key(a[i]), kb = key(b[i]);
    if (ka != kb) return ka < kb ? -1 : 1;
  }
  if (aLength == bLength) return 0;
  return aLength < bLength ? -1 : 1;
}

int PrimaryKey(unsigned char c) { return text::CharacterInfo(c).base; }
// Non-letters keep secondary key 0.
int SecondaryKey(unsigned char c) { return text::CharacterInfo(c).secondary; }

}  // namespace

void NumberToText(int32_t n, Str255 s) {
  // Unsigned, so that the most negative number has a magnitude too.
  uint32_t magnitude = n < 0 ? 0u - static_cast<uint32_t>(n) : static_cast<uint32_t>(n);
  char digits[10];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude);
  int length = 0;
  if (n < 0) s[++length] = '-';
  while (count) s[++length] = static_cast<unsigned char>(digits[--count]);
  s[0] = static_cast<unsigned char>(length);
}

int32_t TextToNumber(const unsigned char* s) {
  uint32_t value = 0;  // wraps as the Toolbox's 32-bit sum does
  bool negative = false;
  for (int i = 1; i <= s[0]; ++i) {
    unsigned char c = s[i];
    if (c == '+') negative = false;
    if (c == '-') negative = true;
    if (c >= '0' && c <= '9') value = value * 10 + (c - '0');
  }
  return static_cast<int32_t>(negative ? 0u - value : value);
}

int ComparePrimary(const unsigned char* a, size_t aLength, const unsigned char* b, size_t bLength) {
  return CompareBy(a, aLength, b, bLength, PrimaryKey);
}

int CompareText(const unsigned char* a, size_t aLength, const unsigned char* b, size_t bLength) {
  int primary = ComparePrimary(a, aLength, b, bLength);
  return primary ? primary : CompareBy(a, aLength, b, bLength, SecondaryKey);
}

}  // namespace kwe::intl
