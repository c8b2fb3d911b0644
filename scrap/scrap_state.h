// The desk scrap's state between calls: the scrap information record (a
// low-memory global), the host's clipboard procedure, and what tells the
// library's own clipboard changes from other programs'.
#pragma once
#include <windows.h>

#include "KWEScrap.h"

namespace kwe::scrap {

ScrapStuff& Info();
// The Toolbox's answer to "has the scrap changed": size 0, no handle, the
// count one higher, on disk.
void CountChange();

// Not handled (0) when the host set no procedure.
SInt32 CallProcedure(SInt16 operation, UInt16 format, HDC dc, Handle destination, ResType type,
                     void* p, void* q);
// The current port's device context, as the procedure gets it.
HDC ProcedureDC();

bool OpenForScrap();
// Closes the clipboard after the library's own work. When that work changed
// the clipboard, the change notification that follows (at once, or later as
// a posted message) is not counted as another program's.
void CloseAfterOwnWork(bool changed);
// True for the notification of a change the library made itself or has
// already counted (Windows may send both WM_CLIPBOARDUPDATE and
// WM_DRAWCLIPBOARD for one change).
bool AlreadyCounted();
// The change now on the clipboard has been counted.
void MarkCounted();

}  // namespace kwe::scrap
