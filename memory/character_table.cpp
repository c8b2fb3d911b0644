// The Macintosh-Roman character table, built at compile time from the case
// pairs of the character set.
#include "memory/character_table.h"

#include <array>

namespace kwe::text {
namespace {

struct AccentedPair {
  UInt8 upper, lower, base, rank;
};

constexpr UInt8 kAcute = 1, kGrave = 2, kCircumflex = 3, kDieresis = 4, kTilde = 5, kRing = 6;
constexpr UInt8 kCedilla = 1;  // sorts with the acute

constexpr AccentedPair kAccentedPairs[] = {
    {0x80, 0x8A, 'A', kDieresis},   {0x81, 0x8C, 'A', kRing},       {0x82, 0x8D, 'C', kCedilla},
    {0x83, 0x8E, 'E', kAcute},      {0x84, 0x96, 'N', kTilde},      {0x85, 0x9A, 'O', kDieresis},
    {0x86, 0x9F, 'U', kDieresis},   {0xE7, 0x87, 'A', kAcute},      {0xCB, 0x88, 'A', kGrave},
    {0xE5, 0x89, 'A', kCircumflex}, {0xCC, 0x8B, 'A', kTilde},      {0xE9, 0x8F, 'E', kGrave},
    {0xE6, 0x90, 'E', kCircumflex}, {0xE8, 0x91, 'E', kDieresis},   {0xEA, 0x92, 'I', kAcute},
    {0xED, 0x93, 'I', kGrave},      {0xEB, 0x94, 'I', kCircumflex}, {0xEC, 0x95, 'I', kDieresis},
    {0xEE, 0x97, 'O', kAcute},      {0xF1, 0x98, 'O', kGrave},      {0xEF, 0x99, 'O', kCircumflex},
    {0xCD, 0x9B, 'O', kTilde},      {0xF2, 0x9C, 'U', kAcute},      {0xF4, 0x9D, 'U', kGrave},
    {0xF3, 0x9E, 'U', kCircumflex}, {0xD9, 0xD8, 'Y', kDieresis},
};

// AE, O slash and OE: letters of their own, so their own base letters.
constexpr UInt8 kLigaturePairs[][2] = {{0xAE, 0xBE}, {0xAF, 0xBF}, {0xCE, 0xCF}};

// Small letters with no capital in the set: sharp s, the fi and fl
// ligatures, dotless i.
constexpr UInt8 kUnpairedSmallLetters[] = {0xA7, 0xDE, 0xDF, 0xF5};

constexpr const char kAsciiPunctuation[] = "!\"'(),-.:;?[]{}";
constexpr UInt8 kHighPunctuation[] = {0xC0, 0xC1, 0xC7, 0xC8, 0xC9, 0xD0, 0xD1, 0xD2,
                                      0xD3, 0xD4, 0xD5, 0xDC, 0xDD, 0xE1, 0xE2, 0xE3};

constexpr std::array<CharacterEntry, 256> BuildTable() {
  std::array<CharacterEntry, 256> table{};
  for (int c = 0; c < 256; ++c) {
    UInt8 code = static_cast<UInt8>(c);
    UInt8 classBits = kSymbol;
    if (c < 0x20 || c == 0x20 || c == 0x7F || c == 0xCA) classBits = kBlankOrControl;
    table[c] = {code, code, code, 0, classBits};
  }
  for (const char* p = kAsciiPunctuation; *p; ++p) table[UInt8(*p)].classBits = kPunctuation;
  for (UInt8 c : kHighPunctuation) table[c].classBits = kPunctuation;
  for (int c = '0'; c <= '9'; ++c) table[c].classBits = kDigit;
  for (int c = 'A'; c <= 'Z'; ++c) {
    UInt8 upper = UInt8(c), lower = UInt8(c + 0x20);
    table[upper] = {upper, lower, upper, 0, kPlainLetter | kUpperCase};
    table[lower] = {upper, lower, upper, kSmallLetterOrder, kPlainLetter};
  }
  for (const AccentedPair& p : kAccentedPairs) {
    table[p.upper] = {p.upper, p.lower, p.base, p.rank, kAccentedLetter | kUpperCase};
    table[p.lower] = {p.upper, p.lower, p.base, UInt8(kSmallLetterOrder + p.rank), kAccentedLetter};
  }
  for (const auto& pair : kLigaturePairs) {
    table[pair[0]] = {pair[0], pair[1], pair[0], 0, kAccentedLetter | kUpperCase};
    table[pair[1]] = {pair[0], pair[1], pair[0], kSmallLetterOrder, kAccentedLetter};
  }
  for (UInt8 c : kUnpairedSmallLetters) table[c].classBits = kAccentedLetter;
  return table;
}

constexpr std::array<CharacterEntry, 256> kTable = BuildTable();

static_assert(kTable[0x87].upper == 0xE7 && kTable[0x87].secondary == 11, "a acute");
static_assert(kTable[0xD8].upper == 0xD9 && kTable[0xD8].base == 'Y', "y dieresis");

}  // namespace

const CharacterEntry& CharacterInfo(unsigned char c) { return kTable[c]; }

}  // namespace kwe::text
