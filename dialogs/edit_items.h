// Everything that touches an edit item's text and selection. Edit items are
// Win32 "edit" children, and the dialog's TextEdit record (textH) is bound
// to the one that holds the focus, so the application reads its text and
// selection from the record as on the Macintosh.
#pragma once
#include <windows.h>

#include "MacTypes.h"
#include "MacWindows.h"
#include "TextEdit.h"

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
// The dialog's record bound to child (made on first use), and read again.
void BindEditRecord(DialogPtr dialog, HWND child);
// The record read again from its control, as before a key event.
void RefreshEditRecord(DialogPtr dialog);
void DisposeEditRecord(DialogPtr dialog);
// textH while an edit item has the focus, else null.
TEHandle FocusedEditRecord(DialogPtr dialog);

}  // namespace kwe::dialogs
