// Where the session's start-up and shut-down reach into the other managers.
// Each manager defines its own functions here as it is built; until then
// frame/managers_pending.cpp holds a stand-in that keeps the session whole.
#pragma once
#include <windows.h>

#include "Files.h"
#include "MacTypes.h"

namespace kwe::memory {
void StartMemoryManager();
THz ApplicationZone();
Ptr NewClearedPointer(Size size);
void DisposePointer(Ptr p);
Handle NewHandleOfSize(Size size);
bool SetHandleSizeTo(Handle h, Size size);
void ReleaseSmallBlockHeaps();
void ReleaseAllBlocks();
}  // namespace kwe::memory

namespace kwe::resources {
void StartResourceLayer();  // KWE_CodeResource(2, 0, 0, 0)
void EndResourceLayer();    // KWE_CodeResource(4, 0, 0, 0)
void CloseResourceChain();  // every open resource file, changed maps written back
SInt16 ApplicationResourceFile();
}  // namespace kwe::resources

namespace kwe::files {
void ClearFileSlots();
void CloseFileSlots();
void StartVolumeTable();
void SetStartupVolumeGlobals();  // SFSaveDisk and the current volume
// A document named on the command line, as a Standard File reply would give
// it; false when the path names nothing the File Manager can reach.
bool DocumentFromDosPath(const char* path, SInt16* vRefNum, OSType* fileType,
                         unsigned char name[64]);
OSErr DosPathFromSpec(const FSSpec* spec, char path[MAX_PATH]);
}  // namespace kwe::files

namespace kwe::events {
void StartEventManager();
UInt32 CurrentTicks();
// One pass of the message pump: dispatches Windows messages, waiting at most
// sleepMilliseconds for one to arrive.
void PumpOnePass(SInt16 eventMask, UInt32 sleepMilliseconds);
void ExpirePumpCountdown();
HOOKPROC KeyboardHookProcedure();
}  // namespace kwe::events

namespace kwe::quickdraw {
void CloseQuickDraw();
void SetCurrentPortSwitch(bool on);
}  // namespace kwe::quickdraw

namespace kwe::windows {
void DisposeAllWindows();
}

namespace kwe::menus {
void DestroyAllMenus();
}

namespace kwe::dialogs {
void ResetErrorSound();  // ErrorSound(1)
}
