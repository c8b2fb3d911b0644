// Windows virtual keys and ANSI characters as Macintosh keys: the two fixed
// tables behind the keyboard translation. Byte work only, so it builds
// natively too.
#pragma once
#include <cstdint>

namespace kwe::events {

constexpr uint8_t kUnknownKeyCode = 127;

struct VirtualKeyEntry {
  uint8_t character;
  uint8_t keyCode;
};

// The Macintosh character and key code of a virtual key; keys past 127 give
// character 0 and the unknown key code 127.
VirtualKeyEntry VirtualKeyEntryOf(unsigned virtualKey);

// The key code that types a 7-bit character (the key code of c & 127).
uint8_t KeyCodeOfCharacter(uint8_t character);

}  // namespace kwe::events
