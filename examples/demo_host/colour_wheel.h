// A colour wheel drawn with QuickDraw into a GWorld (an offscreen pixel
// map), whitened towards its centre in the blend pen mode, and copied onto
// the current port with CopyBits: as it stands, twice as large, and through
// a mask region.
#pragma once
#include "MacTypes.h"

void DrawColourWheel(SInt16 left, SInt16 top);
