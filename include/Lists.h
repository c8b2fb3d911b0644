/* List Manager: a Toolbox list is a ListRec in a handle holding the cells,
   their data and their selection as the Macintosh keeps them, mirrored into
   a Win32 "listbox" child window of the list's window. A list of one column
   with text cells is a plain list box showing the texts; a grid (several
   columns and several rows) is owner-drawn by the library, one list-box
   item per row; a list with an 'LDEF' is owner-drawn through it. Windows
   tracks clicks, keys and scrolling in the list box, and LClick reads its
   selection back into the cells. A session holds at most 255 lists. */
#ifndef KWE_LISTS_H
#define KWE_LISTS_H

#include "Controls.h"
#include "MacTypes.h"
#include "Quickdraw.h"

typedef Point Cell;
typedef Rect ListBounds;
typedef char DataArray[32001];
typedef char* DataPtr;
typedef DataPtr* DataHandle;
typedef Boolean(KWE_CALL* ListClickLoopProcPtr)(void);
typedef SInt16(KWE_CALL* ListSearchProcPtr)(Ptr cellData, Ptr searchData, SInt16 cellDataLen,
                                            SInt16 searchDataLen);

/* selFlags */
enum {
  lOnlyOne = -128,
  lExtendDrag = 64,
  lNoDisjoint = 32,
  lNoExtend = 16,
  lNoRect = 8,
  lUseSense = 4,
  lNoNilHilite = 2
};

/* listFlags: LAutoScroll works only with one of these. */
enum { lDoVAutoscroll = 2, lDoHAutoscroll = 1 };

/* Messages to a list definition procedure. */
enum { lInitMsg = 0, lDrawMsg = 1, lHiliteMsg = 2, lCloseMsg = 3 };

/* The published record (86 bytes before cellArray in the 32-bit build); the
   64-bit build widens the pointer fields in place. cellArray holds one entry
   per cell, numbered column by column (index = h * rows + v): bit 15 the
   selection, bits 0-14 the offset in cells just after the cell's 2-byte
   length. maxIndex is the index of the last cell. lReserved is the list's
   slot in the session's list table. */
#pragma pack(push, 2)
typedef struct ListRec {
  Rect rView;
  GrafPtr port;
  Point indent;
  Point cellSize;
  Rect visible;
  ControlHandle vScroll;
  ControlHandle hScroll;
  SInt8 selFlags;
  Boolean lActive;
  SInt8 lReserved;
  SInt8 listFlags;
  SInt32 clikTime;
  Point clikLoc;
  Point mouseLoc;
  ListClickLoopProcPtr lClikLoop;
  Cell lastClick;
  SInt32 refCon;
  ProcPtr listDefProc;
  Handle userHandle;
  ListBounds dataBounds;
  DataHandle cells;
  SInt16 maxIndex;
  SInt16 cellArray[1];
} ListRec, *ListPtr, **ListHandle;
#pragma pack(pop)

/* The call a list definition procedure ('LDEF') gets. */
typedef void(KWE_CALL* ListDefProcPtr)(SInt16 lMessage, Boolean lSelect, Rect* lRect, Cell lCell,
                                       SInt16 lDataOffset, SInt16 lDataLen, ListHandle lHandle);

KWE_API ListHandle KWE_CALL LNew(const Rect* rView, const ListBounds* dataBounds, Point cSize,
                                 SInt16 theProc, WindowPtr theWindow, Boolean drawIt,
                                 Boolean hasGrow, Boolean scrollHoriz, Boolean scrollVert);
KWE_API void KWE_CALL LDispose(ListHandle lHandle);
KWE_API SInt16 KWE_CALL LAddColumn(SInt16 count, SInt16 colNum, ListHandle lHandle);
KWE_API SInt16 KWE_CALL LAddRow(SInt16 count, SInt16 rowNum, ListHandle lHandle);
KWE_API void KWE_CALL LDelColumn(SInt16 count, SInt16 colNum, ListHandle lHandle);
KWE_API void KWE_CALL LDelRow(SInt16 count, SInt16 rowNum, ListHandle lHandle);
KWE_API Boolean KWE_CALL LGetSelect(Boolean next, Cell* theCell, ListHandle lHandle);
KWE_API SInt32 KWE_CALL LLastClick(ListHandle lHandle);
KWE_API SInt32 KWE_CALL LongLastClick(ListHandle lHandle);
KWE_API Boolean KWE_CALL LNextCell(Boolean hNext, Boolean vNext, Cell* theCell, ListHandle lHandle);
KWE_API Boolean KWE_CALL LSearch(const void* dataPtr, SInt16 dataLen, ListSearchProcPtr searchProc,
                                 Cell* theCell, ListHandle lHandle);
KWE_API void KWE_CALL LSize(SInt16 listWidth, SInt16 listHeight, ListHandle lHandle);
KWE_API void KWE_CALL LSetDrawingMode(Boolean drawIt, ListHandle lHandle);
KWE_API void KWE_CALL LDoDraw(Boolean drawIt, ListHandle lHandle);
KWE_API void KWE_CALL LScroll(SInt16 dCols, SInt16 dRows, ListHandle lHandle);
KWE_API void KWE_CALL LAutoScroll(ListHandle lHandle);
KWE_API void KWE_CALL LUpdate(RgnHandle theRgn, ListHandle lHandle);
KWE_API void KWE_CALL LActivate(Boolean act, ListHandle lHandle);
KWE_API void KWE_CALL LCellSize(Point cSize, ListHandle lHandle);
KWE_API Boolean KWE_CALL LClick(Point pt, UInt16 modifiers, ListHandle lHandle);
KWE_API void KWE_CALL LAddToCell(const void* dataPtr, SInt16 dataLen, Cell theCell,
                                 ListHandle lHandle);
KWE_API void KWE_CALL LClrCell(Cell theCell, ListHandle lHandle);
KWE_API void KWE_CALL LGetCellDataLocation(SInt16* offset, SInt16* len, Cell theCell,
                                           ListHandle lHandle);
KWE_API void KWE_CALL LGetCell(void* dataPtr, SInt16* dataLen, Cell theCell, ListHandle lHandle);
KWE_API void KWE_CALL LRect(Rect* cellRect, Cell theCell, ListHandle lHandle);
KWE_API void KWE_CALL LSetCell(const void* dataPtr, SInt16 dataLen, Cell theCell,
                               ListHandle lHandle);
KWE_API void KWE_CALL LSetSelect(Boolean setIt, Cell theCell, ListHandle lHandle);
KWE_API void KWE_CALL LDraw(Cell theCell, ListHandle lHandle);

/* --- The library's extensions. --- */

/* Options for the next LNew (the word goes back to 0x0082 after each): the
   low byte becomes its selFlags, the high byte these. */
enum {
  kweListIgnoreClicks = 0x0100,   /* the list box ignores left-button presses */
  kweListIgnoreTyping = 0x0200,   /* ... and printable keys */
  kweListNoGrid = 0x0400,         /* several columns and rows: not a grid */
  kweListSeveralColumns = 0x0800, /* the several-column list box even for one column */
  kweListClicksToWindow = 0x1000  /* presses go to the window as mouse events */
};
KWE_API UInt16 KWE_CALL KWE_LSetSelFlags(UInt16 flags);
KWE_API void KWE_CALL KWE_ListUpdateVisible(ListHandle lHandle);
/* Dragging cells out of a list: mode 1 enables it (bit 14 the drag ends
   inside the library's handling, bit 15 the slot's outside flag; param a
   Point of the drag rectangle's size or null); mode 2 answers whether a
   drop was recorded and stores its point in *param. */
KWE_API SInt32 KWE_CALL KWE_LTearOff(ListHandle lHandle, SInt16 mode, Point* param);
KWE_API void KWE_CALL KWE_LSetTearOffDragHook(ListHandle lHandle, ProcPtr hook);

/* Windows-side sources see the library's own Win32-typed calls. */
#if defined(_WINDOWS_) || defined(_WINDOWS_H)
#include "KWELists.h"
#endif

#endif
