// GWorlds made with the shared memory DC hold their bitmaps out of it
// until they are drawn into or copied from.
#pragma once
#include "Quickdraw.h"

namespace kwe::quickdraw {

// Selects the GWorld's bitmap into the shared DC when port is such a
// GWorld; nothing for any other port.
void SelectGWorldBitmap(GrafPtr port);

}  // namespace kwe::quickdraw
