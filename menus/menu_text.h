// Toolbox item and title texts as Win32 menus show them: Macintosh
// characters in ANSI, a keyboard mnemonic chosen for the menu ("&"), and
// the command key written with the host's format strings.
#pragma once
#include <cstddef>
#include <string>

#include "MacTypes.h"

namespace kwe::menus {

// The letters of one menu (or of the bar's titles) that already carry a
// mnemonic, A to Z.
struct UsedLetters {
  bool used[26] = {};
  bool Has(UInt8 c) const;
  void Mark(UInt8 c);
};

struct TextOptions {
  // Session flag 0x0002: the application writes its own "&" mnemonics.
  bool keepAmpersands = false;
  // System value 24: bytes from 0x80 up through the Macintosh-to-ANSI table.
  bool convert = true;
  // Double-byte mode: a lead byte and the byte after it go through as they
  // are, and 0xFF is dropped. Null outside that mode.
  bool (*leadByte)(UInt8) = nullptr;
};

// used is null for pop-up menus, which get no mnemonic.
std::string Win32MenuText(const UInt8* text, size_t length, UsedLetters* used,
                          const TextOptions& options);

// The accelerator text of a keyboard equivalent: a lowercase letter is shown
// upper-cased with the shifted format, as is any key whose item style has
// bit 7; digits become F1..F9 and F11 (for "0") when they stand for
// function keys. The format's "%s" takes the key's text; nothing else of the
// format is interpreted.
std::string AcceleratorText(UInt8 key, UInt8 style, const char* plainFormat,
                            const char* shiftedFormat, bool digitsAreFunctionKeys);

}  // namespace kwe::menus
