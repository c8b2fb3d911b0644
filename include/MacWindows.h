/* Window Manager: every Toolbox window is a Win32 window of the library's
   window class, with a WindowRecord whose port draws into that window. */
#ifndef KWE_MACWINDOWS_H
#define KWE_MACWINDOWS_H

#include "Events.h"
#include "Quickdraw.h"

/* procIDs of the standard window definitions. */
enum {
  documentProc = 0,
  dBoxProc = 1,
  plainDBox = 2,
  altDBoxProc = 3,
  noGrowDocProc = 4,
  movableDBoxProc = 5,
  zoomDocProc = 8,
  zoomNoGrow = 12,
  rDocProc = 16
};

/* windowKind values. */
enum { dialogKind = 2, userKind = 8 };

/* FindWindow's part codes. Parts 4 to 8 come only from the pseudo-points the
   library posts when Windows itself has dragged, sized, closed or zoomed a
   window (a mouseDown whose where.h is -1 and where.v minus the part). */
enum {
  inDesk = 0,
  inMenuBar = 1,
  inSysWindow = 2,
  inContent = 3,
  inDrag = 4,
  inGrow = 5,
  inGoAway = 6,
  inZoomIn = 7,
  inZoomOut = 8
};

/* The published 156-byte record (32-bit build); the colour form starts with
   a CGrafPort of the same size. */
#pragma pack(push, 2)
typedef struct WindowRecord {
  GrafPort port;
  SInt16 windowKind; /* userKind for windows made here, dialogKind for dialogs */
  Boolean visible;
  Boolean hilited;
  Boolean goAwayFlag;
  Boolean spareFlag;  /* 1 while the window is zoomed out */
  RgnHandle strucRgn; /* the outer frame, global coordinates */
  RgnHandle contRgn;  /* the client area, global coordinates */
  RgnHandle updateRgn;
  /* Holds the window's procID, not a definition handle: GetWVariant reads
     its low 16 bits. */
  Handle windowDefProc;
  Handle dataHandle; /* the library's window data */
  StringHandle titleHandle;
  SInt16 titleWidth;
  ControlHandle controlList;
  struct WindowRecord* nextWindow;
  PicHandle windowPic;
  SInt32 refCon;
} WindowRecord;

typedef struct CWindowRecord {
  CGrafPort port;
  SInt16 windowKind;
  Boolean visible;
  Boolean hilited;
  Boolean goAwayFlag;
  Boolean spareFlag;
  RgnHandle strucRgn;
  RgnHandle contRgn;
  RgnHandle updateRgn;
  Handle windowDefProc;
  Handle dataHandle;
  StringHandle titleHandle;
  SInt16 titleWidth;
  ControlHandle controlList;
  struct CWindowRecord* nextWindow;
  PicHandle windowPic;
  SInt32 refCon;
} CWindowRecord, *CWindowPeek;

/* The window data block reached through dataHandle. The Win32 window's
   handle has 32 significant bits in every build (sign-extended back). */
typedef struct WStateData {
  Rect userState; /* the target of zooming in */
  Rect stdState;  /* the target of zooming out */
  SInt32 windowHandle;
  UInt16 flags; /* low byte: the procID's; see the library's flag bits */
  UInt16 moreFlags;
} WStateData, *WStateDataPtr, **WStateDataHandle;
#pragma pack(pop)

typedef CGrafPtr CWindowPtr;
typedef SInt32(KWE_CALL* DragGrayRgnProcPtr)(void);

KWE_API void KWE_CALL InitWindows(void);
KWE_API WindowPtr KWE_CALL NewWindow(void* wStorage, const Rect* boundsRect, ConstStr255Param title,
                                     Boolean visible, SInt16 theProc, WindowPtr behind,
                                     Boolean goAwayFlag, SInt32 refCon);
KWE_API WindowPtr KWE_CALL NewCWindow(void* wStorage, const Rect* boundsRect,
                                      ConstStr255Param title, Boolean visible, SInt16 procID,
                                      WindowPtr behind, Boolean goAwayFlag, SInt32 refCon);
/* From 'WIND' id; null when there is no such resource. */
KWE_API WindowPtr KWE_CALL GetNewWindow(SInt16 windowID, void* wStorage, WindowPtr behind);
/* CloseWindow, ShowWindow, FindWindow and MoveWindow are exported shortened:
   Win32 has functions of those names. */
KWE_API void KWE_CALL CloseWindo(WindowPtr theWindow);
KWE_API void KWE_CALL DisposeWindow(WindowPtr theWindow);
KWE_API WindowPtr KWE_CALL FrontWindow(void);
KWE_API void KWE_CALL SelectWindow(WindowPtr theWindow);
KWE_API void KWE_CALL BringToFront(WindowPtr theWindow);
KWE_API void KWE_CALL SendBehind(WindowPtr theWindow, WindowPtr behindWindow);
KWE_API void KWE_CALL HiliteWindow(WindowPtr theWindow, Boolean fHilite);
KWE_API void KWE_CALL ShowWindo(WindowPtr theWindow);
KWE_API void KWE_CALL HideWindow(WindowPtr theWindow);
KWE_API void KWE_CALL ShowHide(WindowPtr theWindow, Boolean showFlag);
KWE_API SInt16 KWE_CALL FindWindo(Point thePoint, WindowPtr* theWindow);
/* Windows has already done the dragging, sizing, closing or zooming: these
   answer from what the library recorded when it posted the pseudo-point. */
KWE_API void KWE_CALL DragWindow(WindowPtr theWindow, Point startPt, const Rect* boundsRect);
KWE_API SInt32 KWE_CALL GrowWindow(WindowPtr theWindow, Point startPt, const Rect* bBox);
KWE_API Boolean KWE_CALL TrackGoAway(WindowPtr theWindow, Point thePt);
KWE_API Boolean KWE_CALL TrackBox(WindowPtr theWindow, Point thePt, SInt16 partCode);
KWE_API void KWE_CALL MoveWindo(WindowPtr theWindow, SInt16 hGlobal, SInt16 vGlobal, Boolean front);
KWE_API void KWE_CALL SizeWindow(WindowPtr theWindow, SInt16 w, SInt16 h, Boolean fUpdate);
KWE_API void KWE_CALL ZoomWindow(WindowPtr theWindow, SInt16 partCode, Boolean front);
KWE_API void KWE_CALL InvalRect(const Rect* badRect);
KWE_API void KWE_CALL InvalRgn(RgnHandle badRgn);
KWE_API void KWE_CALL ValidRect(const Rect* goodRect);
KWE_API void KWE_CALL ValidRgn(RgnHandle goodRgn);
KWE_API void KWE_CALL BeginUpdate(WindowPtr theWindow);
KWE_API void KWE_CALL EndUpdate(WindowPtr theWindow);
KWE_API void KWE_CALL SetWTitle(WindowPtr theWindow, ConstStr255Param title);
KWE_API void KWE_CALL GetWTitle(WindowPtr theWindow, Str255 title);
KWE_API void KWE_CALL SetWRefCon(WindowPtr theWindow, SInt32 data);
KWE_API SInt32 KWE_CALL GetWRefCon(WindowPtr theWindow);
KWE_API void KWE_CALL SetWindowPic(WindowPtr theWindow, PicHandle pic);
KWE_API PicHandle KWE_CALL GetWindowPic(WindowPtr theWindow);
KWE_API SInt16 KWE_CALL GetWVariant(WindowPtr theWindow);
KWE_API void KWE_CALL GetWMgrPort(GrafPtr* wPort);
KWE_API void KWE_CALL GetCWMgrPort(CGrafPtr* wMgrCPort);
KWE_API RgnHandle KWE_CALL GetGrayRgn(void);
/* Always false: update events come from the event calls. */
KWE_API Boolean KWE_CALL CheckUpdate(EventRecord* theEvent);
KWE_API SInt32 KWE_CALL DragGrayRgn(RgnHandle theRgn, Point startPt, const Rect* limitRect,
                                    const Rect* slopRect, SInt16 axis,
                                    DragGrayRgnProcPtr actionProc);
KWE_API SInt32 KWE_CALL PinRect(const Rect* theRect, Point thePt);
KWE_API void KWE_CALL CalcVis(WindowPtr theWindow);
/* Windows keeps the visible regions: these do nothing. */
KWE_API void KWE_CALL CalcVisBehind(WindowPtr startWindow, RgnHandle clobberedRgn);
KWE_API void KWE_CALL ClipAbove(WindowPtr window);
KWE_API void KWE_CALL PaintBehind(WindowPtr startWindow, RgnHandle clobberedRgn);
KWE_API void KWE_CALL PaintOne(WindowPtr window, RgnHandle clobberedRgn);
KWE_API void KWE_CALL DrawGrowIcon(WindowPtr theWindow);

#ifdef __cplusplus
inline void CloseWindow(WindowPtr w) { CloseWindo(w); }
inline void ShowWindow(WindowPtr w) { ShowWindo(w); }
inline SInt16 FindWindow(Point where, WindowPtr* w) { return FindWindo(where, w); }
inline void MoveWindow(WindowPtr w, SInt16 h, SInt16 v, Boolean front) {
  MoveWindo(w, h, v, front);
}
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define CloseWindow CloseWindo
#define ShowWindow ShowWindo
#define FindWindow FindWindo
#define MoveWindow MoveWindo
#endif

#endif
