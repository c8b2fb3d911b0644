// A colour wheel drawn into a pixel map in memory, as an offscreen picture,
// and copied onto the current port with CopyBits: as it stands, twice as
// large, and through a mask region.
#pragma once
#include "MacTypes.h"

void DrawColourWheel(SInt16 left, SInt16 top);
