// Where the resource shortcuts (GetString, GetIndString, GetIcon,
// GetPattern, GetIndPattern, GetPicture, GetCursor) reach the managers that
// own their data: the Resource Manager and QuickDraw's cursor cache.
#pragma once
#include "MacTypes.h"

namespace kwe::resources {
// GetResource(type, id): the resource's handle, or null when none is found.
Handle GetResourceForShortcut(ResType type, SInt16 id);
// ReleaseResource(h): GetIndString lets go of the list after each read.
void ReleaseResourceForShortcut(Handle h);
}  // namespace kwe::resources

namespace kwe::quickdraw {
// One of QuickDraw's five built-in cursors (IDs 0 to 4), or null.
Cursor** BuiltInCursorHandle(SInt16 id);
}  // namespace kwe::quickdraw
