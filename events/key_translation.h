// Keyboard messages as Toolbox key events, shared by KWE_EventKey and the
// library's keyboard hook.
#pragma once
#include <windows.h>

#include "Events.h"

namespace kwe::events {

// shiftKey, cmdKey (the Ctrl key), alphaLock (Caps Lock's toggle) and, unless
// leaveOptionClear, optionKey (the Alt key) from the thread's key state.
void RefreshModifiersFromKeyboard(bool leaveOptionClear);

// One key message: with post, the events it makes are queued; without, the
// first one is only written to *event (which may be null). Answers keyDown,
// keyUp or 0.
SInt16 TranslateKey(UINT msg, WPARAM wParam, LPARAM lParam, bool post, EventRecord* event);

}  // namespace kwe::events
