// KWE_MacToAnsiBuf and KWE_AnsiToMacBuf: Toolbox text on its way into Win32
// controls, menus and GDI, and typed characters on their way back.
#include "memory/character_conversion.h"

#include "KWECharacters.h"
#include "frame/system_values.h"

namespace kwe::text {
namespace {

// ANSI code of the Macintosh Roman codes 0x80 to 0xFF. Characters with no
// ANSI counterpart (the Apple logo, the math symbols) take the ANSI codes the
// other direction has left over, so that each table is a permutation and
// the inverse of the other.
constexpr UInt8 kMacToAnsi[128] = {
    0xC4, 0xC5, 0xC7, 0xC9, 0xD1, 0xD6, 0xDC, 0xE1, 0xE0, 0xE2, 0xE4, 0xE3, 0xE5, 0xE7, 0xE9, 0xE8,
    0xEA, 0xEB, 0xED, 0xEC, 0xEE, 0xEF, 0xF1, 0xF3, 0xF2, 0xF4, 0xF6, 0xF5, 0xFA, 0xF9, 0xFB, 0xFC,
    0x86, 0xB0, 0xA2, 0xA3, 0xA7, 0x95, 0xB6, 0xDF, 0xAE, 0xA9, 0x99, 0xB4, 0xA8, 0x80, 0xC6, 0xD8,
    0x81, 0xB1, 0x8D, 0x8E, 0xA5, 0xB5, 0x8F, 0x90, 0xDE, 0xFE, 0x9D, 0xAA, 0xBA, 0xA6, 0xE6, 0xF8,
    0xBF, 0xA1, 0xAC, 0xB2, 0x83, 0xB3, 0xB9, 0xAB, 0xBB, 0x85, 0xA0, 0xC0, 0xC3, 0xD5, 0x8C, 0x9C,
    0x96, 0x97, 0x93, 0x94, 0x91, 0x92, 0xF7, 0xBE, 0xFF, 0x9F, 0xBD, 0xA4, 0x8B, 0x9B, 0x8A, 0x9A,
    0x87, 0xB7, 0x82, 0x84, 0x89, 0xC2, 0xCA, 0xC1, 0xCB, 0xC8, 0xCD, 0xCE, 0xCF, 0xCC, 0xD3, 0xD4,
    0xAD, 0xD2, 0xDA, 0xDB, 0xD9, 0xD0, 0x88, 0x98, 0xAF, 0xBC, 0xDD, 0xD7, 0xB8, 0x9E, 0xF0, 0xFD,
};

constexpr UInt8 kAnsiToMac[128] = {
    0xAD, 0xB0, 0xE2, 0xC4, 0xE3, 0xC9, 0xA0, 0xE0, 0xF6, 0xE4, 0xDE, 0xDC, 0xCE, 0xB2, 0xB3, 0xB6,
    0xB7, 0xD4, 0xD5, 0xD2, 0xD3, 0xA5, 0xD0, 0xD1, 0xF7, 0xAA, 0xDF, 0xDD, 0xCF, 0xBA, 0xFD, 0xD9,
    0xCA, 0xC1, 0xA2, 0xA3, 0xDB, 0xB4, 0xBD, 0xA4, 0xAC, 0xA9, 0xBB, 0xC7, 0xC2, 0xF0, 0xA8, 0xF8,
    0xA1, 0xB1, 0xC3, 0xC5, 0xAB, 0xB5, 0xA6, 0xE1, 0xFC, 0xC6, 0xBC, 0xC8, 0xF9, 0xDA, 0xD7, 0xC0,
    0xCB, 0xE7, 0xE5, 0xCC, 0x80, 0x81, 0xAE, 0x82, 0xE9, 0x83, 0xE6, 0xE8, 0xED, 0xEA, 0xEB, 0xEC,
    0xF5, 0x84, 0xF1, 0xEE, 0xEF, 0xCD, 0x85, 0xFB, 0xAF, 0xF4, 0xF2, 0xF3, 0x86, 0xFA, 0xB8, 0xA7,
    0x88, 0x87, 0x89, 0x8B, 0x8A, 0x8C, 0xBE, 0x8D, 0x8F, 0x8E, 0x90, 0x91, 0x93, 0x92, 0x94, 0x95,
    0xFE, 0x96, 0x98, 0x97, 0x99, 0x9B, 0x9A, 0xD6, 0xBF, 0x9D, 0x9C, 0x9E, 0x9F, 0xFF, 0xB9, 0xD8,
};

constexpr bool TablesAreInverse() {
  for (int i = 0; i < 128; ++i) {
    if (kAnsiToMac[kMacToAnsi[i] - 0x80] != 0x80 + i) return false;
    if (kMacToAnsi[kAnsiToMac[i] - 0x80] != 0x80 + i) return false;
  }
  return true;
}
static_assert(TablesAreInverse(), "a round trip must restore every byte");

bool g_passwordMode = false;
const TextMeasurer* g_measurer = nullptr;

// The plain-text stand-ins for the typographic characters that Windows
// system fonts of the time drew poorly; null where the character stays.
const char* Expansion(UInt8 c) {
  switch (c) {
    case 0xC9: return "...";  // ellipsis
    case 0xD2:                // left and right double quotes
    case 0xD3: return "\"";
    case 0xAA: return "(tm)";
    default: return nullptr;
  }
}

class MacToAnsiWriter {
 public:
  MacToAnsiWriter(UInt8* dst, bool translate, const TextMeasurer* measurer)
      : dst_(dst), translate_(translate), measurer_(measurer) {}

  void Put(UInt8 c) {
    if (g_passwordMode) c = '*';
    if (measurer_ && measurer_->character) measurer_->character(c);
    dst_[written_++] = translate_ ? MacToAnsiCharacter(c) : c;
  }
  SInt32 Written() const { return written_; }

 private:
  UInt8* dst_;
  bool translate_;
  const TextMeasurer* measurer_;
  SInt32 written_ = 0;
};

}  // namespace

UInt8 MacToAnsiCharacter(UInt8 c) { return c < 0x80 ? c : kMacToAnsi[c - 0x80]; }
UInt8 AnsiToMacCharacter(UInt8 c) { return c < 0x80 ? c : kAnsiToMac[c - 0x80]; }

bool CharacterTranslationOn() { return ReadSystemValue(kSysValueConvertTexts) != 0; }
void SetCharacterTranslation(bool on) { SystemValue(1, kSysValueConvertTexts, on ? 1 : 0); }

bool PasswordMode() { return g_passwordMode; }
void SetPasswordMode(bool on) { g_passwordMode = on; }

void InstallTextMeasurer(const TextMeasurer* measurer) { g_measurer = measurer; }

void MacToAnsiBytes(const UInt8* src, UInt8* dst, size_t count) {
  bool translate = CharacterTranslationOn();
  for (size_t i = 0; i < count; ++i) dst[i] = translate ? MacToAnsiCharacter(src[i]) : src[i];
}

void AnsiToMacBytes(const UInt8* src, UInt8* dst, size_t count) {
  bool translate = CharacterTranslationOn();
  for (size_t i = 0; i < count; ++i) dst[i] = translate ? AnsiToMacCharacter(src[i]) : src[i];
}

}  // namespace kwe::text

// dst must hold up to 4 bytes a source byte ("(tm)"). Flag 0x0008 turns the
// switch off for the call itself, so that a measurer reading system value 24
// sees it off too.
KWE_API SInt32 KWE_CALL KWE_MacToAnsiBuf(const UInt8* src, UInt8* dst, UInt16 count, SInt16 flags) {
  using namespace kwe::text;
  if (!src || !dst) return 0;
  bool switchWasOn = CharacterTranslationOn();
  if (flags & kweNoTranslation) SetCharacterTranslation(false);
  const TextMeasurer* measurer = (flags & kweMeasureText) ? g_measurer : nullptr;
  if (measurer && measurer->begin) measurer->begin();

  MacToAnsiWriter out(dst, CharacterTranslationOn(), measurer);
  for (UInt16 i = 0; i < count; ++i) {
    UInt8 c = src[i];
    if ((flags & kweDropReturns) && c == '\r') continue;
    const char* expansion = (flags & kweKeepTypographic) ? nullptr : Expansion(c);
    if (!expansion) {
      out.Put(c);
      continue;
    }
    for (const char* p = expansion; *p; ++p) out.Put(static_cast<UInt8>(*p));
  }

  if (measurer && measurer->end) measurer->end();
  if (flags & kweNoTranslation) SetCharacterTranslation(switchWasOn);
  return out.Written();
}

// Stops before a NUL; writes no terminator.
KWE_API SInt32 KWE_CALL KWE_AnsiToMacBuf(const UInt8* src, UInt8* dst, SInt16 count) {
  if (!src || !dst || count <= 0) return 0;
  bool translate = kwe::text::CharacterTranslationOn();
  SInt32 n = 0;
  for (; n < count && src[n] != 0; ++n)
    dst[n] = translate ? kwe::text::AnsiToMacCharacter(src[n]) : src[n];
  return n;
}
