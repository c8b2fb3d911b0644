// Where the session's start-up and shut-down reach into the other managers.
// Each manager defines its own functions here as it is built; until then
// frame/managers_pending.cpp holds a stand-in that keeps the session whole.
#pragma once
#include <windows.h>

#include "Events.h"
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
// The standard cursors and the cursor cache, from session start to end.
void StartCursors();
void EndCursors();
// The host's arrow global, once bound, gets the standard arrow's record.
void FillArrowGlobal();
// A cursor hidden by ObscureCursor comes back (the mouse moved, a menu
// opened, the application was activated).
void ShowObscuredCursor();
// The active palette realised again in every port window's DC: in the
// foreground when the application is activated, in the background when it
// is switched away from.
void RealisePalettesOnActivation(bool active);
}  // namespace kwe::quickdraw

namespace kwe::windows {
void DisposeAllWindows();
// The update or activate event the window list calls for now, if any, for
// the kinds of mask (updateMask, activMask): the pending deactivation, then
// the pending activation, then the first visible window with an update due.
// *window is the event's window itself, which a 64-bit message cannot hold.
bool NextUpdateOrActivate(EventMask mask, EventRecord* event, WindowPtr* window);
// Mouse presses in a window's frame (KWE_NCMessage).
LRESULT NonClientMessage(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
HWND WindowHandleOf(WindowPtr window);
}  // namespace kwe::windows

namespace kwe::controls {
// WM_HSCROLL and WM_VSCROLL of a window's scroll-bar controls (tracking).
LRESULT ScrollBarMessage(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
// A window's highlighting changed: its scroll bars follow it.
void WindowHiliteChanged(WindowPtr window, bool on);
// A window closes: its controls go first.
void DisposeWindowControls(WindowPtr window);
// A control's WM_COMMAND notification: true when it is a click of a Toolbox
// window's control, posted as mouseDown and mouseUp inside *screenRect.
bool ControlClicked(HWND control, UINT notification, Rect* screenRect);
}  // namespace kwe::controls

namespace kwe::menus {
void DestroyAllMenus();
// WM_COMMAND of a menu or accelerator (0 clears it; 0xFFFF is Quit).
void RecordMenuCommand(UInt32 command);
}  // namespace kwe::menus

namespace kwe::dialogs {
void ResetErrorSound();  // ErrorSound(1)
bool InModalDialog();
// The kind of a library dialog's control, as the keyboard hook judges keys.
enum ControlKind {
  kNotDialogControl = 0,
  kEditControl = 1,  // and scroll bars
  kButtonControl = 2,
  kUserItemControl = 3,
  kDefinedControl = 4,
  kStaticTextControl = 5,
  kListBoxControl = 6,
  kComboBoxControl = 7,
  kOtherControl = -1
};
int DialogControlKind(HWND control, HWND* dialog);
// A control's WM_COMMAND notification: true when it is a click the library
// posts as mouseDown and mouseUp inside *clickRect (screen coordinates).
bool ControlCommand(HWND dialog, HWND control, UINT notification, Rect* clickRect);
// FrameRoundRect in a dialog's port asks first: a frame hugging a push
// button (the Macintosh's bold default outline) makes that button the
// default instead of being drawn. True when it did.
bool FrameOutlinesDefaultButton(const Rect& framed);
// A dialog's button child gains or loses the focus (WM_SETFOCUS or
// WM_KILLFOCUS reaching K_ButtonWndProc).
void ButtonFocusChanged(HWND button, bool gained);
}  // namespace kwe::dialogs

namespace kwe::lists {
// An owner-drawn list's item (WM_DRAWITEM): true when it was a list's.
bool DrawItem(const DRAWITEMSTRUCT& dis);
}  // namespace kwe::lists

namespace kwe::scrap {
SInt16 ScrapCount();
// KWE_ActivateApp's call of the host's clipboard procedure (suspend, or
// resume with the clipboard to be converted when it changed meanwhile).
void ApplicationSwitched(bool resume, bool convert);
}  // namespace kwe::scrap

namespace kwe::intl {
// From InitResources: the "INTL" records from the system resource file (0:
// none open) and WIN.INI [intl].
void StartInternational(SInt16 systemFile);
// The handles GetIntlResource made go with the session's blocks.
void EndInternational();
}  // namespace kwe::intl
