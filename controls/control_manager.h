// The Control Manager's own state and the small operations its files share:
// the library's fields inside a ControlRecord, the tie between a record and
// its Win32 child window, and the scroll-bar tracking state.
#pragma once
#include <windows.h>

#include "Controls.h"
#include "KWEControls.h"

namespace kwe::controls {

// contrlDefProc of the standard kinds.
enum Kind : intptr_t {
  kPushButton = 0,
  kCheckBox = 1,
  kRadioButton = 2,
  kPopUp = 3,
  kScrollBar = 16
};

constexpr UInt8 kVisible = 255;
constexpr UInt8 kInactive = 255;
constexpr int kMaxTitleLength = 245;
// The high byte of a CDEF control's child ID.
constexpr int kCdefIdMark = 0xFD00;

// The library's fields in the last ten bytes of contrlTitle's storage
// (offsets 286 to 295 of the 32-bit record). The child's HWND has 32
// significant bits in every build, so its 4-byte slot holds it as a
// sign-extended handle.
struct LibraryFields {
  SInt16 portTop = 0, portLeft = 0;  // the owner's portRect when last placed
  bool hasCdef = false;
  UInt8 variation = 0;
  HWND window = nullptr;
};
LibraryFields FieldsOf(ControlHandle c);
void StoreFields(ControlHandle c, const LibraryFields& f);
HWND ChildOf(ControlHandle c);

// A pop-up's 'MENU': contrlRfCon where a handle fits in it, else the
// pointer-wide slot the 64-bit build keeps after the published record.
constexpr bool kMenuFitsRefCon = sizeof(Handle) == sizeof(SInt32);
constexpr Size kControlHandleSize =
    Size(sizeof(ControlRecord) + (kMenuFitsRefCon ? 0 : sizeof(Handle)));
MenuHandle PopUpMenuOf(ControlHandle c);
void SetPopUpMenu(ControlHandle c, MenuHandle menu);

inline ControlPtr Rec(ControlHandle c) { return *c; }
intptr_t KindOf(ControlHandle c);  // contrlDefProc of a standard kind, or -1 for a CDEF
bool IsScrollBar(ControlHandle c);
ControlDefProcPtr CdefOf(ControlHandle c);
KWEControlParam CallCdef(ControlHandle c, SInt16 message, KWEControlParam param);

// The owner's Win32 window, null without an owner.
HWND OwnerWindow(ControlHandle c);
// The control whose child window is child (in its parent's control list).
ControlHandle ControlOfChild(HWND child);
// Whether c is a control of a library window's list.
bool IsLiveControl(ControlHandle c);

// The child window's position in the owner's client area for a point of the
// owner port's local coordinates.
POINT ToClient(ControlHandle c, SInt16 h, SInt16 v);
// Records the owner's port origin as the one the child was placed for.
void RecordPortOrigin(ControlHandle c);
bool PortOriginMoved(ControlHandle c);
void InvalidateInOwner(ControlHandle c, const Rect& r);

// What creation takes besides NewControl's parameters; the Dialog Manager
// fills it for its items.
struct CreationContext {
  ControlHandle existing = nullptr;  // made again in this record
  bool comboBox = false;             // the dialog item is a pop-up
  SInt16 itemNumber = 0;             // a dialog item's child ID
};
ControlHandle Create(WindowPtr w, const Rect* bounds, ConstStr255Param title, bool visible,
                     SInt16 value, SInt16 min, SInt16 max, SInt16 procID, SInt32 refCon,
                     const CreationContext& context);
// The child window given its text, from the title (the handle in decimal
// for a CDEF control).
void PushTitle(ControlHandle c);
// The combo box filled with the items of the 'MENU' named in the title.
// This is the one place that reads 'MENU' resources.
void FillPopUp(ControlHandle c, HWND combo);

// Enables a scroll bar's child when it is active and its range is not empty.
void EnableScrollBar(ControlHandle c);
void PushValue(ControlHandle c);

// Scroll-bar tracking (control_tracking.cpp).
enum class ActionKind { None, CdefTracks, Application };
struct Tracking {
  WindowPtr window = nullptr;  // the window Windows reported a scroll of
  int code = -1;               // its last scroll code (SB_...)
  HWND scrollBar = nullptr;
  int thumb = 0;  // SB_THUMBPOSITION / SB_THUMBTRACK position
  ControlHandle control = nullptr;
  SInt16 part = 0;
  bool windowsTracking = false;  // Windows' own scroll-bar loop runs
  bool inTrackControl = false;   // TrackControl drives that loop
  ProcPtr action = nullptr;      // wrapped for calling
  ActionKind actionKind = ActionKind::None;
  int calls = 0;
};

struct ManagerState {
  SInt16 scrollBarWidth = 16, scrollBarHeight = 16;
  int drawNesting = 0;
  Tracking tracking;
  // The classes' own procedures, kept when the first child is subclassed.
  WNDPROC buttonProc = nullptr, scrollBarProc = nullptr, comboBoxProc = nullptr;
};
ManagerState& State();

// Prepares an action procedure for calling: -1 takes contrlAction, whose -1
// is the CDEF tracking itself.
void PrepareAction(ControlHandle c, ProcPtr action);
void ReleaseAction();
void CallAction(ControlHandle c, SInt16 part);
// Forgets a control that goes away.
void ForgetTracked(ControlHandle c);
SInt16 PartOfScrollCode(int code);

// What the Window Manager asks of this manager (declared in
// frame/subsystems.h): activation and closing of a window.
void WindowHiliteChanged(WindowPtr w, bool on);
void DisposeWindowControls(WindowPtr w);

}  // namespace kwe::controls
