// Numbers as text and the International Utilities' ordering of Macintosh
// Roman text, over the character table's base letters (primary keys) and
// case-and-accent ranks (secondary keys).
#pragma once
#include <cstddef>
#include <cstdint>

#include "MacTypes.h"

namespace kwe::intl {

void NumberToText(int32_t n, Str255 s);
int32_t TextToNumber(const unsigned char* s);

// -1, 0 or 1 by the primary keys; shorter strings sort first when the
// shorter length agrees.
int ComparePrimary(const unsigned char* a, size_t aLength, const unsigned char* b, size_t bLength);
// The primary pass, and the secondary pass when it finds them equal.
int CompareText(const unsigned char* a, size_t aLength, const unsigned char* b, size_t bLength);

}  // namespace kwe::intl
