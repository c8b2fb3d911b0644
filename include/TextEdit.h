/* TextEdit. A record made with TENew or TEStyleNew is drawn by the library
   in its port through QuickDraw; a dialog's record is bound to a Win32
   "edit" control (hDispText holds the control's window handle), which does
   the editing and drawing, and the record's text, length, selection and
   line starts are refreshed from it after every call. */
#ifndef KWE_TEXTEDIT_H
#define KWE_TEXTEDIT_H

#include "MacTypes.h"
#include "Quickdraw.h"
#include "TextEditStyles.h"

enum { teJustLeft = 0, teJustCenter = 1, teJustRight = -1, teFlushDefault = 0 };
/* The longest text a record holds when text replaces its selection. */
enum { teMaxLength = 32000 };
/* A bit of a library-drawn record's active word: its text is measured and
   drawn as "*" (the character conversion's password mode) while the record
   keeps the real characters. */
enum { kweTEPasswordFlag = 0x8000 };

/* Win32's window handle type, named without <windows.h>, whose macros
   would rename Toolbox calls (SetPort, FindWindow) in the includer. */
struct HWND__;

typedef Boolean(KWE_CALL* WordBreakProcPtr)(Ptr text, SInt16 charPos);
typedef Boolean(KWE_CALL* TEClickLoopProcPtr)(void);
/* On Intel a universal procedure pointer is the procedure itself. */
typedef TEClickLoopProcPtr TEClickLoopUPP;
typedef WordBreakProcPtr WordBreakUPP;
#define NewTEClickLoopProc(userRoutine) ((TEClickLoopUPP)(userRoutine))
#define NewTEClickLoopUPP(userRoutine) ((TEClickLoopUPP)(userRoutine))
#define DisposeTEClickLoopUPP(userUPP) ((void)(userUPP))
#define NewWordBreakProc(userRoutine) ((WordBreakUPP)(userRoutine))
#define NewWordBreakUPP(userRoutine) ((WordBreakUPP)(userRoutine))
#define DisposeWordBreakUPP(userUPP) ((void)(userUPP))

/* The published record (96 bytes plus the line starts in the 32-bit
   build); the 64-bit build widens the handle, pointer and procedure fields
   in place, and the slot at txFont, which a styled record uses for its
   style handle, with them. */
#pragma pack(push, 2)
typedef struct TERec {
  Rect destRect;
  Rect viewRect;
  Rect selRect;
  SInt16 lineHeight;
  SInt16 fontAscent;
  Point selPoint;
  SInt16 selStart;
  SInt16 selEnd;
  SInt16 active; /* bit 0 active, bit 1 automatic scrolling, kweTEPasswordFlag */
  WordBreakProcPtr wordBreak;
  TEClickLoopProcPtr clikLoop;
  UInt32 clickTime;
  SInt16 clickLoc;
  UInt32 caretTime;
  SInt16 caretState;
  SInt16 just;
  SInt16 teLength;
  Handle hText;
  struct HWND__* hDispText; /* the bound edit control; 0 for a library-drawn record */
  SInt16 clikStuff;
  SInt16 crOnly;
  union {
    struct {
      SInt16 txFont;
      UInt8 txFace;
      UInt8 filler;
    };
    Handle styleHandle; /* a styled record's TEStyleHandle */
  };
  SInt16 txMode;
  SInt16 txSize; /* -1: a styled record */
  GrafPtr inPort;
  ProcPtr highHook;
  ProcPtr caretHook;
  SInt16 nLines;
  SInt16 lineStarts[1]; /* nLines + 1 entries; the last is teLength */
} TERec, *TEPtr, **TEHandle;
#pragma pack(pop)
#ifndef KWE_TEHANDLE_DEFINED
#define KWE_TEHANDLE_DEFINED
#endif

KWE_API void KWE_CALL TEInit(void);
/* Null when memory runs out; TEStyleNew then leaves nothing behind. */
KWE_API TEHandle KWE_CALL TENew(const Rect* destRect, const Rect* viewRect);
KWE_API TEHandle KWE_CALL TEStyleNew(const Rect* destRect, const Rect* viewRect);
KWE_API void KWE_CALL TEDispose(TEHandle hTE);

/* The whole text, without drawing; a negative length counts as 0 and text
   past 32000 characters is cut. */
KWE_API void KWE_CALL TESetText(const void* text, SInt32 length, TEHandle hTE);
KWE_API Handle KWE_CALL TEGetText(TEHandle hTE);
KWE_API void KWE_CALL TECalText(TEHandle hTE);

KWE_API void KWE_CALL TEKey(SInt16 key, TEHandle hTE);
/* pt in the port's local coordinates. */
KWE_API void KWE_CALL TEClick(Point pt, Boolean fExtend, TEHandle hTE);
KWE_API void KWE_CALL TEIdle(TEHandle hTE);
KWE_API void KWE_CALL TEActivate(TEHandle hTE);
KWE_API void KWE_CALL TEDeactivate(TEHandle hTE);
KWE_API void KWE_CALL TEUpdate(const Rect* rUpdate, TEHandle hTE);

KWE_API void KWE_CALL TESetSelect(SInt32 selStart, SInt32 selEnd, TEHandle hTE);
KWE_API void KWE_CALL TEDelete(TEHandle hTE);
KWE_API void KWE_CALL TEInsert(const void* text, SInt32 length, TEHandle hTE);
KWE_API void KWE_CALL TECut(TEHandle hTE);
KWE_API void KWE_CALL TECopy(TEHandle hTE);
KWE_API void KWE_CALL TEPaste(TEHandle hTE);
/* Only teJustLeft, teJustCenter and teJustRight are taken. */
KWE_API void KWE_CALL TESetAlignment(SInt16 just, TEHandle hTE);

KWE_API void KWE_CALL TEScroll(SInt16 dh, SInt16 dv, TEHandle hTE);
KWE_API void KWE_CALL TEPinScroll(SInt16 dh, SInt16 dv, TEHandle hTE);
KWE_API void KWE_CALL TESelView(TEHandle hTE);
KWE_API void KWE_CALL TEAutoView(Boolean fAuto, TEHandle hTE);

/* Lines startLine to endLine, counted from 1. */
KWE_API SInt32 KWE_CALL TEGetHeight(SInt32 endLine, SInt32 startLine, TEHandle hTE);
KWE_API SInt16 KWE_CALL TEGetOffset(Point pt, TEHandle hTE);
KWE_API Point KWE_CALL TEGetPoint(SInt16 offset, TEHandle hTE);

KWE_API void KWE_CALL TESetWordBreak(WordBreakProcPtr wBrkProc, TEHandle hTE);
KWE_API void KWE_CALL TESetClickLoop(TEClickLoopProcPtr clikProc, TEHandle hTE);
KWE_API void KWE_CALL KWE_MakePIClickLoop(TEClickLoopProcPtr* procPtr);
KWE_API Boolean KWE_CALL SimpleWordBreak(Ptr text, SInt16 charPos);
KWE_API Boolean KWE_CALL SimpleLineBreak(Ptr text, SInt16 charPos);
KWE_API Boolean KWE_CALL SimpleClikProc(void);

/* Draws text in box through a record of its own; nothing for length < 1. */
KWE_API void KWE_CALL TETextBox(const void* text, SInt32 length, const Rect* box, SInt16 just);
KWE_API void KWE_CALL TextBox(const void* text, SInt32 length, const Rect* box, SInt16 just);

/* The TextEdit scrap (TEScrpHandle, TEScrpLength), which follows the desk
   scrap's 'TEXT'. */
KWE_API OSErr KWE_CALL TEFromScrap(void);
KWE_API OSErr KWE_CALL TEToScrap(void);
KWE_API Handle KWE_CALL TEScrapHandle(void);
KWE_API SInt32 KWE_CALL TEGetScrapLength(void);
KWE_API void KWE_CALL TESetScrapLength(SInt32 length);

/* Styled records. */
KWE_API void KWE_CALL TEStyleInsert(const void* text, SInt32 length, StScrpHandle hST,
                                    TEHandle hTE);
KWE_API void KWE_CALL TESetStyle(SInt16 mode, const TextStyle* newStyle, Boolean redraw,
                                 TEHandle hTE);
KWE_API void KWE_CALL TEReplaceStyle(SInt16 mode, const TextStyle* oldStyle,
                                     const TextStyle* newStyle, Boolean redraw, TEHandle hTE);
KWE_API void KWE_CALL TEGetStyle(SInt16 offset, TextStyle* theStyle, SInt16* lineHeight,
                                 SInt16* fontAscent, TEHandle hTE);
KWE_API Boolean KWE_CALL TEContinuousStyle(SInt16* mode, TextStyle* aStyle, TEHandle hTE);
KWE_API SInt32 KWE_CALL TENumStyles(SInt32 rangeStart, SInt32 rangeEnd, TEHandle hTE);
KWE_API TEStyleHandle KWE_CALL TEGetStyleHandle(TEHandle hTE);
KWE_API void KWE_CALL TESetStyleHandle(TEStyleHandle theHandle, TEHandle hTE);
KWE_API StScrpHandle KWE_CALL TEGetStyleScrapHandle(TEHandle hTE);
KWE_API void KWE_CALL TEUseStyleScrap(SInt32 rangeStart, SInt32 rangeEnd, StScrpHandle newStyles,
                                      Boolean redraw, TEHandle hTE);
KWE_API void KWE_CALL TEStylePaste(TEHandle hTE);

/* A bound record: reads the control's selection, and its text when it was
   changed (or force is set), and the line fields. */
KWE_API void KWE_CALL KWE_SethTEfromhWnd(TEHandle hTE, Boolean force);
/* Gives the bound control the focus again with the record's selection. */
KWE_API void KWE_CALL KWE_MaintainTEFocus(TEHandle hTE);
/* A record bound to an existing Win32 edit control (the Dialog Manager's
   edit items): no port drawing; null when memory runs out. */
KWE_API TEHandle KWE_CALL KWE_TENewBound(struct HWND__* edit, const Rect* viewRect);

#endif
