// The frame side of the Window Manager: the title-bar button bitmaps of the
// small-caption windows the library draws itself, MDI bounds and the
// standard (zoomed-out) state.
#pragma once
#include <windows.h>

#include "MacWindows.h"

namespace kwe::windows {

// "CloseButtonUp" ... "RestoreButtonDn" (or their "Mono" forms).
void LoadFrameBitmaps(bool mono);
void ReleaseFrameBitmaps();
// Bounds of a new MDI document fitted into the MDI client.
void FitToMdiClient(Rect* bounds);
// Where zooming out puts the window's port rectangle: the parent's client
// area, less the window's frame, in the parent's client coordinates.
Rect StandardStateOf(WindowPtr w);
// Moves and sizes the window so that its port rectangle is r (parent client
// coordinates), with one SetWindowPos.
void PlacePortRect(WindowPtr w, const Rect& r, bool redraw);

}  // namespace kwe::windows
