// What QuickDraw's start and end do for text.
#pragma once

namespace kwe::quickdraw {

// InitGraf: the measuring mode of the character conversion, the font map and
// the installed font list (unless they are there already).
void StartText();

// No port is open any more: the map, the list and what was made from them.
void ReleaseTextCaches();

}  // namespace kwe::quickdraw
