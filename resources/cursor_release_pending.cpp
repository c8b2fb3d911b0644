// No Windows cursors are made for cursor resources yet, so none is released.
#include "resources/cursor_resource_hook.h"

namespace kwe::quickdraw {
void ReleaseResourceCursor(bool, void*, long) {}
}  // namespace kwe::quickdraw
