// The Window Manager's own state and the small operations its files share:
// the window data block and its flags, the tie between a WindowPtr and its
// Win32 window, the window list and its three groups.
#pragma once
#include <windows.h>

#include "KWEWindows.h"
#include "MacWindows.h"
#include "events/event_queue.h"
#include "events/translation_state.h"

namespace kwe::windows {

// First flags word of the window data (WStateData.flags). The low byte holds
// the procID's.
constexpr UInt16 kProcIdByte = 0x00FF;
constexpr UInt16 kUpdatePendingFlag = 0x0100;
constexpr UInt16 kMdiChildFlag = 0x0200;
constexpr UInt16 kHorizontalScrollBarFlag = 0x0400;
constexpr UInt16 kVerticalScrollBarFlag = 0x0800;
constexpr UInt16 kGrowBoxFlag = 0x1000;
constexpr UInt16 kPopUpFlag = 0x2000;
constexpr UInt16 kToolWindowFlag = 0x4000;
constexpr UInt16 kMadeForDialogFlag = 0x8000;
// Second flags word (WStateData.moreFlags).
constexpr UInt16 kResizedFlag = 0x0001;
constexpr UInt16 kCallerStorageFlag = 0x0002;
constexpr UInt16 kTakesFocusFlag = 0x0004;
constexpr UInt16 kSmallCaptionFlag = 0x0010;

// The pseudo-points' where.v: minus the part FindWindow answers.
constexpr SInt16 kDragPseudoPoint = 4;
constexpr SInt16 kGrowPseudoPoint = 5;
constexpr SInt16 kClosePseudoPoint = 6;
constexpr SInt16 kZoomInPseudoPoint = 7;
constexpr SInt16 kZoomOutPseudoPoint = 8;

// System values the Window Manager reads; the one-shot ones are cleared (or
// set back to -1) once a window has used them.
constexpr SInt16 kSysValueDialogChild = 2;   // dialog windows stay children
constexpr SInt16 kSysValueModalDialog = 28;  // the modal dialog's window
constexpr SInt16 kSysValueStyleModifiers = 31;
constexpr SInt16 kSysValuePopUpDocument = 32;
constexpr SInt16 kSysValueProcIdOverride = 33;
constexpr SInt16 kSysValueWindowMenu = 34;
constexpr SInt16 kSysValueStandardStateAtOnce = 38;

// Extra bytes of the library's window class (the host registers 32): the
// WindowPtr, the palette, the creation style and the minimum size words. In
// the 32-bit build these are longs 0, 4, 8 and words 12, 14; the 64-bit
// build widens the two handle slots to pointer size and moves the rest up.
constexpr int kWindowPtrLong = 0;
constexpr int kPaletteLong = sizeof(LONG_PTR);
constexpr int kStyleLong = 2 * sizeof(LONG_PTR);
constexpr int kMinWidthWord = 2 * sizeof(LONG_PTR) + 4;
constexpr int kMinHeightWord = kMinWidthWord + 2;

struct UpdateLevel {
  WindowPtr window = nullptr;
  RgnHandle savedVis = nullptr;
  Point origin{0, 0};
  GrafPtr savedPort = nullptr;
};

struct ManagerState {
  bool initialised = false;
  WindowPtr selected = nullptr;
  // Pseudo-point records: what Windows did before the application asks.
  WindowPtr dragWindow = nullptr;
  WindowPtr dragOldFront = nullptr;
  WindowPtr closeWindow = nullptr;
  WindowPtr zoomWindow = nullptr;
  int updateNesting = 0;  // 0 to 2 levels kept; deeper calls only count
  UpdateLevel levels[2];
  RgnHandle scratch = nullptr;
  // A window between CreateWindowEx and the end of NewWindow, and one being
  // closed: the messages Windows sends meanwhile are answered from these.
  WindowPtr beingMade = nullptr;
  HWND beingMadeHwnd = nullptr;
  UInt16 beingMadeFlags = 0;
  WindowPtr beingClosed = nullptr;
  HWND beingClosedHwnd = nullptr;
  int movingItself = 0;  // the library's own SetWindowPos: no pseudo-points
  bool regionsDirty = false;
  UInt32 mdiDefaultState = 0;
  SInt16 minWidth = 0, minHeight = 0;  // KWE_SetMinWinSize
  int screenWidth = 0, screenHeight = 0;
  HBRUSH frameBrushes[3] = {};
};

ManagerState& State();
// While the Dialog Manager makes a dialog, its window gets dialog styles.
bool DialogCreationMode();
void SetDialogCreationMode(bool on);

inline WindowPeek Peek(WindowPtr w) { return reinterpret_cast<WindowPeek>(w); }
inline WindowPtr AsPtr(WindowPeek w) { return reinterpret_cast<WindowPtr>(w); }
WindowPeek& ListHead();  // the WindowList global

// The window data of a library window, null for anything else.
WStateData* DataOf(WindowPtr w);
HWND HwndOf(WindowPtr w);
bool IsLibraryWindow(WindowPtr w);  // in the window list
WindowPtr WindowOfHwnd(HWND hwnd);  // KWE_GetwPtr's answer, or null
UInt16 FlagsOf(WindowPtr w);
bool IsColourWindow(WindowPtr w);

// 0 pop-ups, 1 children of the main window, 2 MDI children.
int GroupOf(WindowPtr w);
void Unlink(WindowPtr w);
// Links w just before before (null: at the end).
void LinkBefore(WindowPtr w, WindowPtr before);
WindowPtr FirstOfGroup(int group);
// Places w's Win32 window right behind after's (null: on top of its group).
void PlaceInWin32Order(WindowPtr w, WindowPtr after);
// The window in front of w in the list, null at the head.
WindowPtr PreviousOf(WindowPtr w);
// Links w at the front of its group and raises its Win32 window there.
void MoveToFrontOfGroup(WindowPtr w);

// Activation (activation.cpp).
void Activate(WindowPtr w);
void Deactivate(WindowPtr w);
// The front window's activation moves to w (which becomes the front).
void MoveActivation(WindowPtr from, WindowPtr to);
// hilited set and told to Windows without drawing; false when unchanged (or
// when an inactive application is asked to hilite).
bool SetCaptionState(WindowPtr w, bool on);
// Marks the whole frame of hwnd, and not its content, for painting.
void InvalidateFrame(HWND hwnd);
// Unites what Windows has to be painted in hwnd into w's updateRgn (global
// coordinates) and validates it, as answering WM_PAINT would.
void AcceptWin32Paint(WindowPtr w, HWND hwnd);

// Regions (window_regions.cpp).
void RefreshRegions(WindowPtr w);  // strucRgn and contRgn from Win32, then CalcVis
void RefreshAllRegions();
void EnsureRegionsCurrent();
// The part of a global region inside w's port, in local coordinates.
void GlobalToLocalRegion(WindowPtr w, RgnHandle rgn);
void LocalToGlobalRegion(WindowPtr w, RgnHandle rgn);

// Pseudo-points (frame handling and activation post them).
void ClearPseudoPointsNaming(WindowPtr w);
void PostDragPseudoPoint(WindowPtr w, WindowPtr oldFront);

// Geometry (window_geometry.cpp): the outer rectangle for a client of
// width x height with the window's style, and the reachable position rules.
RECT OuterRectFor(HWND hwnd, const RECT& client);
// Showing tells Windows the frame may have changed unless frameChanged is
// false (a window just made, whose frame Windows has computed).
void ShowOrHide(WindowPtr w, bool show, bool activate, bool frameChanged = true);

// Every window of the list disposed (session end).
void DisposeAllWindows();

}  // namespace kwe::windows
