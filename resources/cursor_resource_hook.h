// Where ReleaseResource hands a 'CURS' or 'crsr' to QuickDraw, which made a
// Windows cursor for it when it was loaded. resources/cursor_release_pending.cpp
// stands in until QuickDraw's cursor cache exists.
#pragma once
#include <cstddef>

namespace kwe::quickdraw {
void ReleaseResourceCursor(bool colour, void* data, long size);
}
