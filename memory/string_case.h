// Case conversion and ordering of Macintosh-Roman text over the character
// table, for UpperString and RelString and for the managers that compare
// names (menus, resources, the International Utilities).
#pragma once
#include <cstddef>

namespace kwe::text {

// In place: each character to its capital, keeping or dropping diacritics.
void UpperText(unsigned char* text, size_t length, bool keepDiacritics);
// In place: each character to its small form; without diacritics, the small
// form of its base letter.
void LowerText(unsigned char* text, size_t length, bool keepDiacritics);

// The primary pass of the International Utilities: base letters compared
// over the shorter length, then the shorter text first. -1, 0 or 1.
int ComparePrimary(const unsigned char* a, size_t lengthA, const unsigned char* b, size_t lengthB);
// IUMagString's order: the primary pass, and when it finds the texts equal
// the same pass over the secondary order (case, then diacritics). -1, 0 or 1.
int CompareMagnitude(const unsigned char* a, size_t lengthA, const unsigned char* b,
                     size_t lengthB);

}  // namespace kwe::text
