// The "Notes" document window: an editable TextEdit field with a vertical
// scroll bar, handled as a Macintosh program handles one (TEClick on a
// mouseDown in the text, TEKey on keys, TEIdle when idle, TEUpdate on
// updates, the scroll bar moving the text with TEScroll).
#pragma once
#include <string>

#include "MacWindows.h"

void OpenNotesWindow(const Rect& bounds);
void CloseNotesWindow();

// Handles the window's events, keys while it is in front, and null events
// (the caret); says what it did, empty when the event was not its own.
std::string HandleNotesEvent(const EventRecord& event);
