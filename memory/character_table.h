// The Macintosh-Roman character table: case partners, base letters,
// diacritic order and character classes of all 256 codes. Case conversion
// and string ordering here, and the International Utilities' comparisons,
// read it.
#pragma once
#include "MacTypes.h"

namespace kwe::text {

enum CharacterClass : UInt8 {
  kBlankOrControl = 0x01,
  kSymbol = 0x02,
  kPunctuation = 0x04,
  kDigit = 0x10,
  kPlainLetter = 0x20,
  kAccentedLetter = 0x40,  // with a diacritic, or a ligature
  kUpperCase = 0x80,
};

// Secondary order: 0 for capitals and non-letters, 10 for small letters; a
// diacritic adds its rank (acute and cedilla 1, grave 2, circumflex 3,
// dieresis 4, tilde 5, ring 6).
constexpr UInt8 kSmallLetterOrder = 10;

struct CharacterEntry {
  UInt8 upper;      // upper-case form keeping diacritics
  UInt8 lower;      // lower-case form keeping diacritics
  UInt8 base;       // upper-case base letter without diacritics (else the character)
  UInt8 secondary;  // see kSmallLetterOrder
  UInt8 classBits;  // CharacterClass bits
};
static_assert(sizeof(CharacterEntry) == 5, "five bytes a character");

const CharacterEntry& CharacterInfo(unsigned char c);

}  // namespace kwe::text
