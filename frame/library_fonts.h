// The six fonts and three brushes the library makes for its own drawing.
#pragma once
#include "frame/session.h"

namespace kwe {

// Adds KWEFONT.FON from beside the application and makes the fonts on the
// main window's device context (the screen's when there is none).
void MakeLibraryFonts();
void DeleteLibraryFonts();
void DeleteLibraryBrushes();

const LibraryFont& GetLibraryFont(LibraryFontIndex which);

// Code replacing a font in a device context must never delete one of these.
bool IsLibraryFont(HFONT font);

}  // namespace kwe
