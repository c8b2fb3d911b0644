// The Font Manager's width table, and what FontMetrics derives from the
// current port's font.
#pragma once
#include "Fonts.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

// The application's WidthTabHandle, made when there is none yet.
Handle WidthTableHandle();

// The width table filled for the current port's font (FontMetrics' cache
// decides whether it needs filling again); null when it cannot be had.
const Fixed* CurrentWidths();

// What FontMetrics cached no longer holds (the fonts were listed again).
void ForgetFontMetrics();

}  // namespace kwe::quickdraw
