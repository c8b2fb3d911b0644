// The cursor the application asked for (SetCursor, InitCursor) and the one
// Windows shows over the library's windows.
#pragma once
#include <windows.h>

namespace kwe::quickdraw {

// Shows cursor over the library's windows. A cursor that is not in the
// cache belongs to the installer from here on: it is destroyed once another
// cursor has replaced it.
void InstallCursor(HCURSOR cursor);
// Destroys a cursor that left the cache, now or, while it is installed or
// shown, as soon as another replaces it.
void DestroyCursorWhenUnused(HCURSOR cursor);

void StartCursorInstall();
// The session's end: the library's windows get the arrow back as their
// class cursor, and the installed cursor is let go.
void EndCursorInstall();

}  // namespace kwe::quickdraw
