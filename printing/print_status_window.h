// The window that says a document is printing, with its Cancel button: a
// click there (or Escape, or Command-period) makes PrError iPrAbort.
#pragma once

namespace kwe::printing {

void ShowStatusWindow(const char* documentName);
void HideStatusWindow();
// Delivers what is waiting for the status window and the program's windows.
void PumpStatusWindow();

}  // namespace kwe::printing
