// The document being printed: the printer DC under the printing port, the
// page count and the status window, from PrOpenDoc to PrCloseDoc.
#pragma once
#include <windows.h>

#include "MacTypes.h"

namespace kwe::printing {

// The DC of the document being printed, or null (also while spooling).
HDC PrintingDC();
// The printer's scale in percent (its DEVMODE's dmScale; 100 when unset),
// whether the driver or the library applies it.
int PrintingScale();
// Picture comments the printer takes (PostScript pass-through, line width);
// false when dc is not the printing DC or the comment is not the printer's.
bool PassComment(HDC dc, SInt16 kind, SInt16 dataSize, Handle data);

}  // namespace kwe::printing

// The printing callbacks the library hands to Windows, exported as its other
// callbacks are: the abort procedure SetAbortProc calls between bands and
// pages, and the window procedure of the "Printing" status window.
KWE_API BOOL CALLBACK K_AbortProc(HDC dc, int code);
KWE_API LRESULT CALLBACK K_AbortDlg(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
