#include "menus/menu_text.h"

#include "memory/character_conversion.h"

namespace kwe::menus {
namespace {

bool IsLetter(UInt8 c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
UInt8 Upper(UInt8 c) { return c >= 'a' && c <= 'z' ? UInt8(c - 32) : c; }
bool IsVowel(UInt8 c) {
  c = Upper(c);
  return c == 'A' || c == 'E' || c == 'I' || c == 'O' || c == 'U';
}

void AppendConverted(std::string& out, UInt8 c, const TextOptions& options) {
  switch (c) {
    case 0xC9: out += "..."; return;
    case 0xD1: out += '-'; return;
    case 0xD2:
    case 0xD3: out += '"'; return;
    case 0xAA: out += "(tm)"; return;
    default: break;
  }
  if (c >= 0x80 && options.convert) c = text::MacToAnsiCharacter(c);
  out += char(c);
}

}  // namespace

bool UsedLetters::Has(UInt8 c) const { return IsLetter(c) && used[Upper(c) - 'A']; }
void UsedLetters::Mark(UInt8 c) {
  if (IsLetter(c)) used[Upper(c) - 'A'] = true;
}

std::string Win32MenuText(const UInt8* text, size_t length, UsedLetters* used,
                          const TextOptions& options) {
  std::string out;
  if (!text) return out;
  // First pass: is there an unused letter at a word's start, and an unused
  // consonant anywhere?
  bool wordStartFree = false, consonantFree = false;
  if (used && !options.keepAmpersands) {
    for (size_t i = 0; i < length; ++i) {
      UInt8 c = text[i];
      if (!IsLetter(c) || used->Has(c)) continue;
      if (i == 0 || text[i - 1] == ' ') wordStartFree = true;
      if (!IsVowel(c)) consonantFree = true;
    }
  }
  bool chosen = !used || options.keepAmpersands;
  for (size_t i = 0; i < length; ++i) {
    UInt8 c = text[i];
    if (options.leadByte && options.leadByte(c)) {
      out += char(c);
      if (i + 1 < length) out += char(text[++i]);
      continue;
    }
    if (options.leadByte && c == 0xFF) continue;
    if (c == '&') {
      if (options.keepAmpersands) {
        out += '&';
        if (used && i + 1 < length) used->Mark(text[i + 1]);
      } else {
        out += "&&";
      }
      continue;
    }
    if (!chosen && IsLetter(c) && !used->Has(c)) {
      bool wordStart = i == 0 || text[i - 1] == ' ';
      bool qualifies = wordStart || (!wordStartFree && !(IsVowel(c) && consonantFree));
      if (qualifies) {
        out += '&';
        used->Mark(c);
        chosen = true;
      }
    }
    AppendConverted(out, c, options);
  }
  return out;
}

std::string AcceleratorText(UInt8 key, UInt8 style, const char* plainFormat,
                            const char* shiftedFormat, bool digitsAreFunctionKeys) {
  bool shifted = (style & 0x80) != 0;
  std::string keyText;
  if (key >= 'a' && key <= 'z') {
    shifted = true;
    keyText = char(key - 32);
  } else if (digitsAreFunctionKeys && key >= '1' && key <= '9') {
    keyText = std::string("F") + char(key);
  } else if (digitsAreFunctionKeys && key == '0') {
    keyText = "F11";
  } else {
    keyText = char(key);
  }
  std::string format =
      (shifted ? shiftedFormat : plainFormat) ? (shifted ? shiftedFormat : plainFormat) : "";
  size_t at = format.find("%s");
  if (at == std::string::npos) return format + keyText;
  return format.replace(at, 2, keyText);
}

}  // namespace kwe::menus
