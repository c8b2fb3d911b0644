// Stand-in until QuickDraw's cursor set exists: no built-in cursor is found,
// which GetCursor answers as "resource not found".
#include "memory/resource_shortcut_hook.h"

namespace kwe::quickdraw {
Cursor** BuiltInCursorHandle(SInt16) { return nullptr; }
}  // namespace kwe::quickdraw
