// Pictures and GWorlds in the scene: a small drawing recorded as a
// picture, played back at twice its size beside the original, and the
// same drawing made in a GWorld and copied onto the window.
#pragma once
#include "MacTypes.h"

// Draws into the current port with the demonstration's top-left at (h, v).
void DrawPictureDemo(SInt16 h, SInt16 v);
