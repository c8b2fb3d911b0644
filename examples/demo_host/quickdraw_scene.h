// The Macintosh side's drawing: QuickDraw calls into a window port, made
// whenever the host's window paints.
#pragma once
#include <windows.h>

#include <vector>

#include "MacTypes.h"

// InitGraf and the port the scene is drawn in; the program's first
// QuickDraw calls, as on the Macintosh.
void StartQuickDraw();
void EndQuickDraw();

// Draws the scene into dc (the host's WM_PAINT DC) with its top at top:
// the patterns as swatches, every shape in every verb, a fan of coloured
// lines, and a region drawn with the pen that clips a crowd of lines.
void DrawScene(HDC dc, int top, const std::vector<Pattern>& patterns);
