// Text turned by the RotateBegin picture comment: between RotateBegin and
// RotateEnd the current port's text is drawn with the font's escapement at
// the angle, its origin turned about the centre RotateCenter set, as a
// PostScript printer turns the whole page. One rotation at a time, as the
// comments nest on no device.
#pragma once
#include "Quickdraw.h"

namespace kwe::quickdraw {

// angle in degrees, clockwise on the screen.
void BeginTextRotation(GrafPtr port, int angle);
void EndTextRotation();
// The centre in the port's local coordinates.
void SetTextRotationCentre(GrafPtr port, int h, int v);
bool TextRotationActive(GrafPtr port);

// The font's escapement for port's text, in tenths of a degree
// anticlockwise as LOGFONT counts it; 0 when its text is not turned.
int TextEscapementOf(GrafPtr port);

// Turns a device point about the centre (in device coordinates centreH,
// centreV) when port's text is turned.
void TurnTextOrigin(GrafPtr port, int centreH, int centreV, int* h, int* v);
void TextRotationCentre(int* h, int* v);

}  // namespace kwe::quickdraw
