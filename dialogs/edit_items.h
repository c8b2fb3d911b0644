// Everything that touches an edit item's text and selection. Edit items are
// Win32 "edit" children until TextEdit takes them over: then only this
// header's implementation (edit_items.cpp) changes, not its callers.
#pragma once
#include <windows.h>

#include "MacTypes.h"

namespace kwe::dialogs {

// The edit child of an item: style by height (multi-line when taller than
// two lines or when the private table says so), the dialog font.
HWND MakeEditChild(HWND dialog, int item, const Rect& r, bool multiLine, HFONT font,
                   const UInt8* text, size_t length);
bool IsEditChild(HWND child);
bool IsMultiLine(HWND child);
// Macintosh text in, carriage returns becoming CR-LF pairs.
void SetEditText(HWND child, const UInt8* text, size_t length);
// Up to 255 characters, CR-LF pairs becoming one carriage return.
void GetEditText(HWND child, Str255 text);
void SelectEditText(HWND child, int start, int end);
enum class EditCommand { Cut, Copy, Paste, Clear };
void RunEditCommand(HWND child, EditCommand command);

}  // namespace kwe::dialogs
