// The Macintosh side's document windows: two overlapping windows made with
// NewWindow, drawn on their update events and brought forward by a click,
// as the application's event loop handles them.
#pragma once
#include <string>

#include "MacWindows.h"

// "Shapes" (zoomDocProc: zoom box, grow box) at the top right and "Chart"
// (noGrowDocProc) in front of it at the bottom left, in the main window's
// area from h, v.
void OpenDocumentWindows(SInt16 h, SInt16 v);
void CloseDocumentWindows();

// 0 for "Shapes", 1 for "Chart".
WindowPtr DocumentWindow(int which);

// Handles an update or activate event of a document window, or a mouseDown
// FindWindow places in one, and says what it did (" updateEvt 'Chart';");
// empty when the event was not theirs.
std::string HandleDocumentEvent(const EventRecord& event);
