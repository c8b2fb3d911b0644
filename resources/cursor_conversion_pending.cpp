// Stand-in until QuickDraw's cursors exist: the hot spot is converted and no
// Windows cursor is made or cached.
#include "resources/byte_swap_records.h"
#include "resources/cursor_conversion_hook.h"

namespace kwe::quickdraw {

void ConvertCursorResource(Boolean, Boolean isColour, void* cursor, SInt32 size, Boolean,
                           Boolean swapAndCache) {
  if (swapAndCache) byteswap::SwapCursorHotSpot(isColour, static_cast<uint8_t*>(cursor), size);
}

}  // namespace kwe::quickdraw
