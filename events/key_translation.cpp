// Key translation. Windows sends WM_KEYDOWN, then (through TranslateMessage)
// WM_CHAR for the same key; the event is made from the key-down, with the
// character the key types without the Command key, and the WM_CHAR is then
// ignored. Characters that come without a usable key-down (dead-key
// combinations, Command-Option keys) are made from the WM_CHAR instead.
#include "events/key_translation.h"

#include "KWEEvents.h"
#include "events/event_queue.h"
#include "events/key_tables.h"
#include "frame/low_memory.h"
#include "memory/character_conversion.h"

namespace kwe::events {
namespace {

constexpr LPARAM kExtendedKey = LPARAM(1) << 24;

bool g_keyDownPosted = false;
bool g_deadKeySeen = false;
bool g_commandOptionPending = false;  // the key's event comes from its WM_CHAR

bool IsDown(UINT msg) { return msg == WM_KEYDOWN || msg == WM_SYSKEYDOWN; }
bool IsUp(UINT msg) { return msg == WM_KEYUP || msg == WM_SYSKEYUP; }
bool NumLockOn() { return (GetKeyState(VK_NUMLOCK) & 1) != 0; }

bool IsModifierKey(unsigned vk) {
  switch (vk) {
    case VK_CONTROL:
    case VK_SHIFT:
    case VK_CAPITAL:
    case VK_MENU:
    case VK_NUMLOCK:
    case VK_SCROLL:
    case VK_INSERT: return true;
    default: return false;
  }
}

void Deliver(UInt16 what, UInt32 message, UInt16 modifiers, bool post, EventRecord* event) {
  EventRecord e{what, message, lowmem::Ticks(), MousePosition(), modifiers};
  if (post)
    Enqueue(e);
  else if (event)
    *event = e;
}

// The character the key types with the Command key (and the Option and
// Shift keys that go with it) let go, so Command-Shift-Q still reads "q".
UInt8 CharacterOfKey(unsigned vk, LPARAM lParam, UInt16 modifiers) {
  BYTE state[256];
  if (!GetKeyboardState(state)) return VirtualKeyEntryOf(vk).character;
  if (modifiers & cmdKey) {
    state[VK_CONTROL] = state[VK_LCONTROL] = state[VK_RCONTROL] = 0;
    if (modifiers & optionKey) state[VK_MENU] = state[VK_LMENU] = state[VK_RMENU] = 0;
    if (modifiers & shiftKey) state[VK_SHIFT] = state[VK_LSHIFT] = state[VK_RSHIFT] = 0;
  }
  WORD typed = 0;
  UINT scanCode = static_cast<UINT>((lParam >> 16) & 0xFF);
  if (ToAscii(vk, scanCode, state, &typed, 0) == 1) return static_cast<UInt8>(typed & 0xFF);
  return VirtualKeyEntryOf(vk).character;
}

SInt16 FromCharacter(WPARAM wParam, LPARAM lParam, bool post, EventRecord* event) {
  UInt8 c = static_cast<UInt8>(wParam & 0xFF);
  UInt16 modifiers = Modifiers();
  UInt8 character = c;
  UInt8 keyCode;
  bool convert = text::CharacterTranslationOn();
  if (c < 0x80 || !convert) {
    keyCode = KeyCodeOfCharacter(c);
  } else {
    modifiers |= optionKey;
    character = text::AnsiToMacCharacter(c);
    keyCode = kUnknownKeyCode;
  }
  if (g_commandOptionPending) modifiers &= ~(cmdKey | optionKey);
  UInt32 message = UInt32(keyCode) << 8 | character;
  Deliver(keyDown, message, modifiers, post, event);
  if (post) {
    int repeat = static_cast<int>(lParam & 0xFFFF);
    for (int i = 1; i < repeat; ++i) Deliver(autoKey, message, modifiers, true, nullptr);
    Deliver(keyUp, message, modifiers, true, nullptr);
  }
  return keyDown;
}

}  // namespace

void RefreshModifiersFromKeyboard(bool leaveOptionClear) {
  UInt16 m = Modifiers() & ~(shiftKey | optionKey | cmdKey | alphaLock);
  if (GetKeyState(VK_SHIFT) < 0) m |= shiftKey;
  if (!leaveOptionClear && GetKeyState(VK_MENU) < 0) m |= optionKey;
  if (GetKeyState(VK_CONTROL) < 0) m |= cmdKey;
  if (GetKeyState(VK_CAPITAL) & 1) m |= alphaLock;
  Modifiers() = m;
}

SInt16 TranslateKey(UINT msg, WPARAM wParam, LPARAM lParam, bool post, EventRecord* event) {
  unsigned vk = static_cast<unsigned>(wParam);
  bool down = IsDown(msg), up = IsUp(msg);
  if ((down || up) && NumLockOn() && (vk == VK_SUBTRACT || vk == VK_ADD)) Modifiers() |= shiftKey;

  if (msg == WM_DEADCHAR || msg == WM_SYSDEADCHAR) {
    g_deadKeySeen = true;
    g_keyDownPosted = false;
    return 0;
  }
  if (msg == WM_CHAR && !g_keyDownPosted) return FromCharacter(wParam, lParam, post, event);
  if (!down && !up) {
    g_keyDownPosted = false;
    return 0;
  }
  if (down && g_deadKeySeen && vk != VK_SHIFT) {
    g_deadKeySeen = false;
    return 0;
  }

  UInt16 modifiers = Modifiers();
  if (down) g_commandOptionPending = false;
  bool keypadZero = vk == VK_NUMPAD0 && NumLockOn();
  if (IsModifierKey(vk) || (g_commandOptionPending && !keypadZero)) return 0;
  SInt16 kind = up ? keyUp : keyDown;
  if (down && (modifiers & cmdKey) && (modifiers & optionKey)) {
    g_commandOptionPending = true;
    return 0;
  }

  UInt8 character, keyCode;
  if (vk == VK_RETURN && (lParam & kExtendedKey)) {
    character = 0x03;  // the keypad Enter
    keyCode = 0x4C;
  } else {
    character = CharacterOfKey(vk, lParam, modifiers);
    keyCode = VirtualKeyEntryOf(vk).keyCode;
    if (character >= 0x80 && text::CharacterTranslationOn()) {
      character = text::AnsiToMacCharacter(character);
      modifiers |= optionKey;
    }
    if (keyCode == kUnknownKeyCode) keyCode = KeyCodeOfCharacter(character);
  }
  Deliver(static_cast<UInt16>(kind), UInt32(keyCode) << 8 | character, modifiers, post, event);
  if (kind == keyDown) g_keyDownPosted = true;
  return kind;
}

}  // namespace kwe::events

KWE_API SInt16 KWE_CALL KWE_EventKey(HWND, UINT msg, WPARAM wParam, LPARAM lParam) {
  kwe::events::RefreshModifiersFromKeyboard(false);
  return kwe::events::TranslateKey(msg, wParam, lParam, true, nullptr);
}
