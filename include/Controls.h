/* Control Manager: every Toolbox control is a ControlRecord in a handle,
   linked into its window's controlList, and backed by a Win32 child window of
   that window: push buttons, check boxes and radio buttons are "button"
   windows, scroll bars "scrollbar" windows, pop-up menus "combobox" windows,
   and controls with a 'CDEF' owner-drawn buttons drawn by the CDEF. Windows
   draws and tracks the standard kinds; the record keeps the Toolbox values,
   and every call keeps the two in step. */
#ifndef KWE_CONTROLS_H
#define KWE_CONTROLS_H

#include <stdint.h>

#include "MacWindows.h"
#include "Quickdraw.h"

/* procIDs. Any other value names a 'CDEF': procID >> 4 its resource ID (a
   procedure the host registered with KWE_CodeResource), procID & 15 its
   variation; a CDEF nobody registered gives a push button. popupMenuProc
   makes a combo box filled from the 'MENU' whose ID is the third
   comma-separated field of the title ("Label,0,128"). */
enum {
  pushButProc = 0,
  checkBoxProc = 1,
  radioButProc = 2,
  useWFont = 8,
  scrollBarProc = 16,
  popupMenuProc = 1008
};

/* Part codes. */
enum {
  inButton = 10,
  inCheckBox = 11,
  inUpButton = 20,
  inDownButton = 21,
  inPageUp = 22,
  inPageDown = 23,
  inThumb = 129
};

/* Messages to a control definition procedure. */
enum {
  drawCntl = 0,
  testCntl = 1,
  calcCRgns = 2,
  initCntl = 3,
  dispCntl = 4,
  posCntl = 5,
  thumbCntl = 6,
  dragCntl = 7,
  autoTrack = 8,
  calcCntlRgn = 10,
  calcThumbRgn = 11
};

/* The published 296-byte record (32-bit build); the 64-bit build widens the
   pointer fields in place. The library keeps its own fields in the last ten
   bytes of contrlTitle's storage, so a title holds at most 245 characters
   (a longer one is cut there). contrlDefProc holds the kind of a standard
   control (0 push button, 1 check box, 2 radio button, 3 pop-up, 16 scroll
   bar) and a CDEF control's procedure. contrlAction -1 means that the CDEF
   tracks the mouse itself. A pop-up's contrlRfCon is the handle of its
   'MENU' in the 32-bit build; the 64-bit build, whose handles do not fit
   there, leaves the application's value and keeps the menu beside the
   record (KWE_GetControlPopUpMenu answers it in both). */
#pragma pack(push, 2)
typedef struct ControlRecord {
  struct ControlRecord** nextControl;
  WindowPtr contrlOwner;
  Rect contrlRect;    /* the owner port's local coordinates */
  UInt8 contrlVis;    /* 255 visible, 0 hidden */
  UInt8 contrlHilite; /* 0 active, 1..253 a part highlighted, 255 inactive */
  SInt16 contrlValue;
  SInt16 contrlMin;
  SInt16 contrlMax;
  Handle contrlDefProc;
  Handle contrlData; /* cleared, never used */
  ProcPtr contrlAction;
  SInt32 contrlRfCon;
  Str255 contrlTitle;
} ControlRecord, *ControlPtr;
#pragma pack(pop)

/* CDEF parameters and results are pointer-wide: calcThumbRgn, thumbCntl and
   posCntl pass pointers and points through them. */
typedef intptr_t KWEControlParam;
typedef void(KWE_CALL* ControlActionProcPtr)(ControlHandle theControl, SInt16 partCode);
typedef KWEControlParam(KWE_CALL* ControlDefProcPtr)(SInt16 varCode, ControlHandle theControl,
                                                     SInt16 message, KWEControlParam param);

KWE_API ControlHandle KWE_CALL NewControl(WindowPtr theWindow, const Rect* boundsRect,
                                          ConstStr255Param title, Boolean visible, SInt16 value,
                                          SInt16 min, SInt16 max, SInt16 procID, SInt32 refCon);
/* From 'CNTL' controlID; null when there is no such resource. */
KWE_API ControlHandle KWE_CALL GetNewControl(SInt16 controlID, WindowPtr owner);
KWE_API void KWE_CALL DisposeControl(ControlHandle theControl);
KWE_API void KWE_CALL KillControls(WindowPtr theWindow);

KWE_API void KWE_CALL ShowControl(ControlHandle theControl);
KWE_API void KWE_CALL HideControl(ControlHandle theControl);
/* Windows paints the child windows: these ask it to, now. */
KWE_API void KWE_CALL DrawControls(WindowPtr theWindow);
KWE_API void KWE_CALL Draw1Control(ControlHandle theControl);
/* Every control of the window is drawn; the region is not used. */
KWE_API void KWE_CALL UpdateControls(WindowPtr theWindow, RgnHandle updateRgn);
/* 255 disables the child window, 0 enables it (a scroll bar whose minimum
   is not below its maximum stays disabled). */
KWE_API void KWE_CALL HiliteControl(ControlHandle theControl, SInt16 hiliteState);
KWE_API void KWE_CALL MoveControl(ControlHandle theControl, SInt16 h, SInt16 v);
/* A scroll bar sized across its orientation is made again in place. */
KWE_API void KWE_CALL SizeControl(ControlHandle theControl, SInt16 w, SInt16 h);

/* The getters answer 0 for a null handle. A pop-up's value is its combo
   box's selection + 1. Values are clamped into min..max. */
KWE_API SInt16 KWE_CALL GetControlValue(ControlHandle theControl);
KWE_API void KWE_CALL SetControlValue(ControlHandle theControl, SInt16 newValue);
KWE_API SInt16 KWE_CALL GetControlMinimum(ControlHandle theControl);
KWE_API void KWE_CALL SetControlMinimum(ControlHandle theControl, SInt16 newMinimum);
KWE_API SInt16 KWE_CALL GetControlMaximum(ControlHandle theControl);
KWE_API void KWE_CALL SetControlMaximum(ControlHandle theControl, SInt16 newMaximum);
KWE_API void KWE_CALL GetControlTitle(ControlHandle theControl, Str255 title);
KWE_API void KWE_CALL SetControlTitle(ControlHandle theControl, ConstStr255Param title);
KWE_API SInt32 KWE_CALL GetControlReference(ControlHandle theControl);
KWE_API void KWE_CALL SetControlReference(ControlHandle theControl, SInt32 data);
KWE_API ProcPtr KWE_CALL GetControlAction(ControlHandle theControl);
KWE_API void KWE_CALL SetControlAction(ControlHandle theControl, ProcPtr actionProc);
KWE_API SInt16 KWE_CALL GetControlVariant(ControlHandle theControl);

/* The part of the control under thePt (local coordinates), 0 for none, an
   invisible or an inactive control. Scroll bars are hit only through the
   scroll report Windows has just made: their parts come from its code. */
KWE_API SInt16 KWE_CALL TestControl(ControlHandle theControl, Point thePt);
KWE_API SInt16 KWE_CALL FindControl(Point thePoint, WindowPtr theWindow, ControlHandle* theControl);
/* actionProc (void)-1 takes contrlAction. Windows has already tracked a
   button's click, so its part comes back at once; a scroll bar's arrows and
   page areas are tracked by Windows' own loop, which calls actionProc with
   the part for every repetition; after a thumb drag the value is the
   thumb's position. */
KWE_API SInt16 KWE_CALL TrackControl(ControlHandle theControl, Point thePoint, ProcPtr actionProc);
/* Reports "DragControl": Windows' child controls are not dragged. */
KWE_API void KWE_CALL DragControl(ControlHandle theControl, Point startPt, const Rect* limitRect,
                                  const Rect* slopRect, SInt16 axis);

/* The names of the original Toolbox interface. */
KWE_API void KWE_CALL UpdtControl(WindowPtr theWindow, RgnHandle updateRgn);
KWE_API SInt16 KWE_CALL GetCtlValue(ControlHandle theControl);
KWE_API void KWE_CALL SetCtlValue(ControlHandle theControl, SInt16 theValue);
KWE_API SInt16 KWE_CALL GetCtlMin(ControlHandle theControl);
KWE_API void KWE_CALL SetCtlMin(ControlHandle theControl, SInt16 minValue);
KWE_API SInt16 KWE_CALL GetCtlMax(ControlHandle theControl);
KWE_API void KWE_CALL SetCtlMax(ControlHandle theControl, SInt16 maxValue);
KWE_API void KWE_CALL GetCTitle(ControlHandle theControl, Str255 title);
KWE_API void KWE_CALL SetCTitle(ControlHandle theControl, ConstStr255Param title);
KWE_API SInt32 KWE_CALL GetCRefCon(ControlHandle theControl);
KWE_API void KWE_CALL SetCRefCon(ControlHandle theControl, SInt32 data);
KWE_API ProcPtr KWE_CALL GetCtlAction(ControlHandle theControl);
KWE_API void KWE_CALL SetCtlAction(ControlHandle theControl, ProcPtr actionProc);
KWE_API SInt16 KWE_CALL GetCVariant(ControlHandle theControl);

/* Universal procedure pointers of the Control Manager: the procedure
   itself (MixedMode.h). The calls take the action procedure as a ProcPtr. */
typedef UniversalProcPtr ControlActionUPP;
enum { uppControlActionProcInfo = 0x000002C0 };
#define NewControlActionProc(userRoutine) ((ControlActionUPP)(userRoutine))
#define NewControlActionUPP(userRoutine) ((ControlActionUPP)(userRoutine))
#define DisposeControlActionUPP(userUPP) ((void)(userUPP))
#endif
