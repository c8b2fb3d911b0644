// Stand-ins until the Resource Manager and QuickDraw's cursor set exist:
// every look-up finds nothing, which the shortcuts answer as "resource not
// found" (a null handle, an empty string, a cleared pattern).
#include "memory/resource_shortcut_hook.h"

namespace kwe::resources {
Handle GetResourceForShortcut(ResType, SInt16) { return nullptr; }
void ReleaseResourceForShortcut(Handle) {}
}  // namespace kwe::resources

namespace kwe::quickdraw {
Cursor** BuiltInCursorHandle(SInt16) { return nullptr; }
}  // namespace kwe::quickdraw
