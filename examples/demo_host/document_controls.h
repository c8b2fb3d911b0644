// The controls of the "Shapes" document window: a vertical and a horizontal
// scroll bar that scroll its drawing, an "Outlines" check box and a
// "Small" / "Large" radio pair, handled as a Macintosh program handles
// them: FindControl and TrackControl on a mouseDown in the content.
#pragma once
#include "MacWindows.h"

// Makes the controls along the window's right and bottom edges.
void AddDocumentControls(WindowPtr w);

// The drawing's origin as the scroll bars place it: the port is scrolled
// there for drawing and back to (0, 0), where the controls stand, after;
// the controls are then drawn over it.
void BeginScrolledDrawing(WindowPtr w);
void EndScrolledDrawing(WindowPtr w);

// A mouseDown in the window's content (global point): true when it was on
// one of the controls, which were then tracked and answered.
bool TrackDocumentControls(WindowPtr w, Point where);
