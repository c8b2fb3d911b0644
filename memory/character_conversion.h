// Macintosh Roman against Windows ANSI: the two 128-entry tables behind
// KWE_MacToAnsiBuf and KWE_AnsiToMacBuf, and the process-wide settings that
// TextEdit and QuickDraw text change around their own work.
#pragma once
#include <cstddef>

#include "MacTypes.h"

namespace kwe::text {

// Codes below 0x80 are the same in both sets.
UInt8 MacToAnsiCharacter(UInt8 macCharacter);
UInt8 AnsiToMacCharacter(UInt8 ansiCharacter);

// The translation switch is system value 24 (on by default): off, both
// directions copy bytes as they are. TextEdit turns it off around drawing
// of its own.
bool CharacterTranslationOn();
void SetCharacterTranslation(bool on);

// While on, every character KWE_MacToAnsiBuf writes is "*" (TextEdit sets it
// around a record whose flags have bit 0x8000).
bool PasswordMode();
void SetPasswordMode(bool on);

// Byte for byte under the switch only: no expansions, no password mode. For
// names that must come back unchanged (file names).
void MacToAnsiBytes(const UInt8* src, UInt8* dst, size_t count);
void AnsiToMacBytes(const UInt8* src, UInt8* dst, size_t count);

// KWE_MacToAnsiBuf's flag 0x0004 lets QuickDraw text measure what the call
// writes, against the current width table: begin once per call, then every
// character written, as the Macintosh character it stands for (after the
// expansions and password mode, before translation), then end.
struct TextMeasurer {
  void (*begin)();
  void (*character)(UInt8 macCharacter);
  void (*end)();
};

// Null removes it; with none installed flag 0x0004 adds nothing.
void InstallTextMeasurer(const TextMeasurer* measurer);

}  // namespace kwe::text
