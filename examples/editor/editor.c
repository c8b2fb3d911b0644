/* Editor: a TextEdit document editor as a Macintosh programmer of the early
   1990s wrote one. Several document windows, each a styled TextEdit record
   with a vertical and a horizontal scroll bar, a grow box and a zoom box;
   scrolling while a selection is dragged past the text's edge; text files
   opened and saved through Standard File and the File Manager; Cut, Copy
   and Paste through the desk scrap; Font, Size and Style menus whose marks
   follow the selection; a modal Find dialog; and the event loop around
   WaitNextEvent, sleeping for the caret's blink. The changes from its
   Macintosh source: <MacWindows.h> for <Windows.h>, and the menus brought
   up to date after every event (see EventLoop). */
#include "editor.h"

#include <Controls.h>
#include <Desk.h>
#include <Dialogs.h>
#include <Events.h>
#include <Files.h>
#include <Fonts.h>
#include <Lists.h>
#include <MacWindows.h>
#include <Memory.h>
#include <Menus.h>
#include <OSUtils.h>
#include <Packages.h>
#include <Quickdraw.h>
#include <Resources.h>
#include <Scrap.h>
#include <Script.h>
#include <SegLoad.h>
#include <StandardFile.h>
#include <TextEdit.h>
#include <TextUtils.h>
#include <ToolUtils.h>
#include <Traps.h>
#include <Types.h>

/* Read by whoever wants to know how the program found its world. */
Boolean gHasWaitNextEvent;
Boolean gInBackground;
Boolean gQuitting;
short gDocumentCount;
static const short gSizes[] = {9, 10, 12, 14, 18, 24};
#define kSizeCount ((short)(sizeof gSizes / sizeof gSizes[0]))
static short gNewDocumentSize = 12;
static ListHandle gPrefsList;
static Str255 gFindString;
static Boolean gFindCaseSensitive;
static Boolean gFindWrapAround = true;

static Boolean TrapAvailable(short theTrap, TrapType tType) {
  if (tType == ToolTrap) theTrap &= 0x07FF;
  return NGetTrapAddress(theTrap, tType) != NGetTrapAddress(_Unimplemented, ToolTrap);
}

/* The error alert's text is its three parameters run together: the
   messages of the 'STR#' list, with a file's name or an error's number
   between two parts of a sentence. */
static void AlertWith(short before, ConstStr255Param middle, short after) {
  static const unsigned char empty[1] = {0};
  Str255 first, last;
  first[0] = last[0] = 0;
  if (before != 0) GetIndString(first, rMessages, before);
  if (after != 0) GetIndString(last, rMessages, after);
  ParamText(first, middle, last, empty);
  StopAlert(rErrorAlert, nil);
}

static void AlertUser(short error) {
  Str255 number;
  NumToString(error, number);
  AlertWith(sCouldNot, number, sCouldNotEnd);
}

/* Why a file could not be opened or saved, in the user's words; any other
   error shows its number. */
static void AlertAboutFile(short error, ConstStr255Param name) {
  switch (error) {
    case fnfErr: AlertWith(sQuote, name, sGone); break;
    case permErr:
    case wrPermErr:
    case fLckdErr: AlertWith(sQuote, name, sLocked); break;
    case eofErr: AlertWith(sQuote, name, sEmpty); break;
    case memFullErr: AlertWith(sQuote, name, sTooLong); break;
    case paramErr: AlertWith(sQuote, name, sNotText); break;
    default: AlertUser(error); break;
  }
}

static DocumentPeek DocumentOf(WindowPtr window) {
  if (window == nil || ((WindowPeek)window)->windowKind != userKind) return nil;
  return (DocumentPeek)window;
}

/* The text's view: the window less its scroll bars and a margin. */
static void GetTEViewRect(WindowPtr window, Rect* view) {
  *view = window->portRect;
  view->right -= kScrollBarWidth - 1;
  view->bottom -= kScrollBarWidth - 1;
  InsetRect(view, kTextMargin, kTextMargin);
}

/* The line at the top of the view, counted from 0: the first whole line
   in it (after TESelView the text may stand part of a line lower). A
   styled record measures a line's top by adding up the lines before it, so
   the count is searched by halves rather than line by line, which would
   make every keystroke at the end of a long text cost the square of its
   lines. */
static short TopLine(TEHandle te) {
  short above = (short)((*te)->viewRect.top - (*te)->destRect.top);
  short low = 0, high = (*te)->nLines;
  while (low < high) {
    short mid = (short)((low + high + 1) / 2);
    if (TEGetHeight(mid, 1, te) <= above)
      low = mid;
    else
      high = (short)(mid - 1);
  }
  if (low < (*te)->nLines && (low > 0 ? TEGetHeight(low, 1, te) : 0) < above) ++low;
  return low;
}

/* The top line that shows the text's end at the view's bottom: counted up
   from the last line while the lines below still fit. */
static short MaxTopLine(TEHandle te) {
  short viewHeight = (short)((*te)->viewRect.bottom - (*te)->viewRect.top);
  short lines = (*te)->nLines;
  short line = lines;
  while (line > 0 && TEGetHeight(lines, line, te) <= viewHeight) --line;
  return line < lines ? line : (short)(lines + 1);
}

/* The scroll bars follow the text: the vertical one counts lines, the
   horizontal one pixels of the document's width. */
static void AdjustScrollValues(DocumentPeek doc) {
  TEHandle te = doc->docTE;
  short maxTop = MaxTopLine(te);
  short viewWidth = (short)((*te)->viewRect.right - (*te)->viewRect.left);
  SetControlMaximum(doc->docVScroll, maxTop > 0 ? maxTop : 0);
  SetControlValue(doc->docVScroll, TopLine(te));
  SetControlMaximum(doc->docHScroll, kMaxDocWidth > viewWidth ? kMaxDocWidth - viewWidth : 0);
  SetControlValue(doc->docHScroll, (short)((*te)->viewRect.left - (*te)->destRect.left));
}

/* Scrolls the text to where the scroll bars say. */
static void AdjustTE(DocumentPeek doc) {
  TEHandle te = doc->docTE;
  short top = GetControlValue(doc->docVScroll);
  short wantTop = (short)((*te)->viewRect.top - (top > 0 ? TEGetHeight(top, 1, te) : 0));
  short wantLeft = (short)((*te)->viewRect.left - GetControlValue(doc->docHScroll));
  TEScroll((short)(wantLeft - (*te)->destRect.left), (short)(wantTop - (*te)->destRect.top), te);
}

static void AdjustScrollBars(WindowPtr window, Boolean needsResize) {
  DocumentPeek doc = DocumentOf(window);
  Rect r = window->portRect;
  if (doc == nil) return;
  HideControl(doc->docVScroll);
  HideControl(doc->docHScroll);
  /* Each bar stops at the grow box: on Windows a bar's edge is not the
     grow box's black line, and whichever drew last would show. */
  if (needsResize) {
    MoveControl(doc->docVScroll, (short)(r.right - kScrollBarWidth + 1), -1);
    SizeControl(doc->docVScroll, kScrollBarWidth, (short)(r.bottom - r.top - kScrollBarWidth + 2));
    MoveControl(doc->docHScroll, -1, (short)(r.bottom - kScrollBarWidth + 1));
    SizeControl(doc->docHScroll, (short)(r.right - r.left - kScrollBarWidth + 2), kScrollBarWidth);
  }
  AdjustScrollValues(doc);
  ShowControl(doc->docVScroll);
  ShowControl(doc->docHScroll);
}

/* After typing, pasting or a change of style: the view keeps the
   selection, and the scroll bars the view. */
static void AdjustAfterEdit(DocumentPeek doc, Boolean dirtied) {
  TESelView(doc->docTE);
  AdjustScrollValues(doc);
  AdjustTE(doc); /* the text stands on the scroll bar's line */
  if (dirtied) doc->docDirty = true;
}

/* A page of the vertical scroll bar: the lines below the top that fit in
   the view, less one that stays in sight. A styled record's lineHeight is
   -1 (each line has its own), so the lines are measured. */
static short PageLines(DocumentPeek doc) {
  TEHandle te = doc->docTE;
  short viewHeight = (short)((*te)->viewRect.bottom - (*te)->viewRect.top);
  short top = (short)(GetControlValue(doc->docVScroll) + 1), fit = 0;
  while (top + fit <= (*te)->nLines && TEGetHeight(top + fit, top, te) <= viewHeight) ++fit;
  return fit > 1 ? (short)(fit - 1) : 1;
}

/* The scroll bars' action: arrows move a line or a few pixels, the page
   areas a view less one line. */
static pascal void ScrollAction(ControlHandle control, short part) {
  DocumentPeek doc = DocumentOf((*control)->contrlOwner);
  short amount, value, max;
  TEHandle te;
  if (doc == nil || part == 0) return;
  te = doc->docTE;
  if (control == doc->docVScroll) {
    amount = (part == inUpButton || part == inDownButton) ? 1 : PageLines(doc);
  } else {
    short viewWidth = (short)((*te)->viewRect.right - (*te)->viewRect.left);
    amount = (part == inUpButton || part == inDownButton) ? 16 : (short)(viewWidth / 2);
  }
  if (part == inUpButton || part == inPageUp) amount = (short)-amount;
  value = (short)(GetControlValue(control) + amount);
  max = GetControlMaximum(control);
  SetControlValue(control, value < 0 ? 0 : value > max ? max : value);
  AdjustTE(doc);
}

/* Called by TEClick while the mouse is down: past the view's edge the text
   scrolls a line at a time toward the mouse, and the scroll bars follow. */
static pascal Boolean AutoScrollClickLoop(void) {
  WindowPtr window = FrontWindow();
  DocumentPeek doc = DocumentOf(window);
  Point mouse;
  Rect view;
  if (doc == nil) return true;
  GetMouse(&mouse);
  view = (*doc->docTE)->viewRect;
  if (mouse.v < view.top)
    ScrollAction(doc->docVScroll, inUpButton);
  else if (mouse.v > view.bottom)
    ScrollAction(doc->docVScroll, inDownButton);
  if (mouse.h < view.left)
    ScrollAction(doc->docHScroll, inUpButton);
  else if (mouse.h > view.right)
    ScrollAction(doc->docHScroll, inDownButton);
  return true;
}

static DocumentPeek NewDocument(void) {
  DocumentPeek doc;
  WindowPtr window;
  Rect view, dest;
  Str255 title, number;
  if (gDocumentCount >= kMaxDocuments) return nil;
  doc = (DocumentPeek)NewPtrClear(sizeof(DocumentRecord));
  if (doc == nil) {
    AlertUser(memFullErr);
    return nil;
  }
  window = GetNewWindow(rDocWindow, doc, (WindowPtr)-1L);
  if (window == nil) {
    DisposePtr((Ptr)doc);
    AlertUser(memFullErr);
    return nil;
  }
  SetPort(window);
  TextFont(applFont);
  TextSize(gNewDocumentSize);
  GetTEViewRect(window, &view);
  dest = view;
  dest.right = (short)(dest.left + kMaxDocWidth);
  doc->docTE = TEStyleNew(&dest, &view);
  doc->docVScroll = NewControl(window, &window->portRect, "\0", true, 0, 0, 0, scrollBarProc, 0);
  doc->docHScroll = NewControl(window, &window->portRect, "\0", true, 0, 0, 0, scrollBarProc, 0);
  if (doc->docTE == nil || doc->docVScroll == nil || doc->docHScroll == nil) {
    if (doc->docTE != nil) TEDispose(doc->docTE);
    CloseWindow(window); /* disposes of the controls too */
    DisposePtr((Ptr)doc);
    AlertUser(memFullErr);
    return nil;
  }
  TEAutoView(true, doc->docTE);
  TESetClickLoop(NewTEClickLoopProc(AutoScrollClickLoop), doc->docTE);
  AdjustScrollBars(window, true);
  ++gDocumentCount;
  GetWTitle(window, title);
  NumToString(gDocumentCount, number);
  BlockMove(number + 1, title + title[0] + 2, number[0]);
  title[title[0] + 1] = ' ';
  title[0] += number[0] + 1;
  SetWTitle(window, title);
  MoveWindow(window, (short)(kStagger * gDocumentCount), (short)(40 + kStagger * gDocumentCount),
             false);
  return doc;
}

/* A new window comes to the front as it is shown. */
static void ShowDocument(DocumentPeek doc) {
  ShowWindow((WindowPtr)doc);
  SelectWindow((WindowPtr)doc);
}

/* Text is what a person typed: a NUL, or control characters other than
   tab, line and page breaks in more than one byte in sixteen, make a file
   something else (a program, a picture, a word processor's document). */
static Boolean LooksLikeText(const unsigned char* bytes, long length) {
  long i, controls = 0;
  for (i = 0; i < length; ++i) {
    if (bytes[i] == 0) return false;
    if (bytes[i] < ' ' && bytes[i] != '\t' && bytes[i] != '\n' && bytes[i] != '\f' &&
        bytes[i] != '\r')
      ++controls;
  }
  return controls * 16 <= length;
}

/* Reads a text file into a new document. A file that is empty, longer than
   TextEdit can hold, or not text is refused with an alert that says so,
   rather than opened empty, cut or shown as noise. */
static void OpenDocumentFile(const FSSpec* spec) {
  short refNum;
  long length;
  Handle text;
  DocumentPeek doc;
  OSErr err = FSpOpenDF(spec, fsRdPerm, &refNum);
  if (err != noErr) {
    AlertAboutFile(err, spec->name);
    return;
  }
  err = GetEOF(refNum, &length);
  if (err == noErr && length == 0) err = eofErr;
  if (err == noErr && length > kMaxTELength) err = memFullErr;
  text = err == noErr ? NewHandle(length) : nil;
  if (err == noErr && text == nil) err = MemError();
  if (err == noErr) {
    HLock(text);
    err = FSRead(refNum, &length, *text);
    if (err == noErr && !LooksLikeText((const unsigned char*)*text, length)) err = paramErr;
    HUnlock(text);
  }
  FSClose(refNum);
  if (err == noErr && (doc = NewDocument()) != nil) {
    HLock(text);
    TESetText(*text, length, doc->docTE);
    HUnlock(text);
    TESetSelect(0, 0, doc->docTE);
    doc->docFile = *spec;
    doc->docHasFile = true;
    SetWTitle((WindowPtr)doc, spec->name);
    AdjustScrollValues(doc);
    ShowDocument(doc);
  } else if (err != noErr) {
    AlertAboutFile(err, spec->name);
  }
  if (text != nil) DisposeHandle(text);
}

static void DoOpen(void) {
  SFTypeList types;
  StandardFileReply reply;
  types[0] = 'TEXT';
  StandardGetFile(nil, 1, types, &reply);
  if (reply.sfGood) OpenDocumentFile(&reply.sfFile);
}

static OSErr WriteDocument(DocumentPeek doc) {
  short refNum;
  long length = (*doc->docTE)->teLength;
  Handle text = (Handle)TEGetText(doc->docTE);
  OSErr err = FSpOpenDF(&doc->docFile, fsRdWrPerm, &refNum);
  if (err != noErr) return err;
  err = SetEOF(refNum, 0);
  if (err == noErr) {
    HLock(text);
    err = FSWrite(refNum, &length, *text);
    HUnlock(text);
  }
  FSClose(refNum);
  if (err == noErr) doc->docDirty = false;
  return err;
}

static Boolean DoSaveAs(DocumentPeek doc) {
  StandardFileReply reply;
  Str255 name;
  OSErr err;
  GetWTitle((WindowPtr)doc, name);
  StandardPutFile("\010Save as:", name, &reply);
  if (!reply.sfGood) return false;
  if (!reply.sfReplacing) {
    err = FSpCreate(&reply.sfFile, kCreator, 'TEXT', smSystemScript);
    if (err != noErr) {
      AlertUser(err);
      return false;
    }
  }
  doc->docFile = reply.sfFile;
  doc->docHasFile = true;
  SetWTitle((WindowPtr)doc, reply.sfFile.name);
  err = WriteDocument(doc);
  if (err != noErr) AlertAboutFile(err, doc->docFile.name);
  return err == noErr;
}

/* A file gone or locked since it was opened leaves the text as it is, and
   the window changed, for Save As. */
static Boolean DoSave(DocumentPeek doc) {
  OSErr err;
  if (!doc->docHasFile) return DoSaveAs(doc);
  err = WriteDocument(doc);
  if (err != noErr) AlertAboutFile(err, doc->docFile.name);
  return err == noErr;
}

/* Closes a window; a changed document asks first. False when the user
   cancels, which also stops a Quit. */
static Boolean DoCloseWindow(WindowPtr window) {
  DocumentPeek doc = DocumentOf(window);
  Str255 title;
  static const unsigned char empty[1] = {0};
  if (window == nil) return true;
  if (((WindowPeek)window)->windowKind < 0) {
    CloseDeskAcc(((WindowPeek)window)->windowKind);
    return true;
  }
  if (doc == nil) return true;
  if (doc->docDirty) {
    GetWTitle(window, title);
    ParamText(title, empty, empty, empty);
    switch (CautionAlert(rSaveChangesAlert, nil)) {
      case iSaveButton:
        if (!DoSave(doc)) return false;
        break;
      case iCancelButton: return false;
      default: break;
    }
  }
  TEDispose(doc->docTE);
  CloseWindow(window);
  DisposePtr((Ptr)doc);
  --gDocumentCount;
  return true;
}

/* Finds the next occurrence of the Find string after the selection, and
   from the start again when Wrap Around is on. */
static Boolean FindNext(DocumentPeek doc) {
  TEHandle te = doc->docTE;
  long length = (*te)->teLength, from = (*te)->selEnd, at, i;
  short n = gFindString[0];
  Handle text = (Handle)TEGetText(te);
  short pass;
  if (n == 0 || n > length) return false;
  for (pass = 0; pass < (gFindWrapAround ? 2 : 1); ++pass) {
    long last = pass == 0 ? length - n : from + n - 1;
    if (last > length - n) last = length - n;
    for (at = pass == 0 ? from : 0; at <= last; ++at) {
      for (i = 0; i < n; ++i) {
        unsigned char a = (unsigned char)(*text)[at + i], b = gFindString[i + 1];
        if (!gFindCaseSensitive) {
          if (a >= 'a' && a <= 'z') a = (unsigned char)(a - 'a' + 'A');
          if (b >= 'a' && b <= 'z') b = (unsigned char)(b - 'a' + 'A');
        }
        if (a != b) break;
      }
      if (i == n) {
        TESetSelect(at, at + n, te);
        AdjustAfterEdit(doc, false);
        return true;
      }
    }
  }
  SysBeep(30);
  return false;
}

static void SetCheckBox(DialogPtr dialog, short item, Boolean on) {
  short type;
  Handle handle;
  Rect box;
  GetDialogItem(dialog, item, &type, &handle, &box);
  SetControlValue((ControlHandle)handle, on);
}

static Boolean CheckBoxValue(DialogPtr dialog, short item) {
  short type;
  Handle handle;
  Rect box;
  GetDialogItem(dialog, item, &type, &handle, &box);
  return GetControlValue((ControlHandle)handle) != 0;
}

static void DoFind(DocumentPeek doc) {
  DialogPtr dialog = GetNewDialog(rFindDialog, nil, (WindowPtr)-1L);
  short itemHit = 0, type;
  Handle handle;
  Rect box;
  if (dialog == nil) {
    AlertUser(resNotFound);
    return;
  }
  GetDialogItem(dialog, iFindText, &type, &handle, &box);
  SetDialogItemText(handle, gFindString);
  SelectDialogItemText(dialog, iFindText, 0, 32767);
  SetCheckBox(dialog, iCaseSensitive, gFindCaseSensitive);
  SetCheckBox(dialog, iWrapAround, gFindWrapAround);
  ShowWindow(dialog);
  while (itemHit != ok && itemHit != cancel) {
    ModalDialog(nil, &itemHit);
    if (itemHit == iCaseSensitive || itemHit == iWrapAround)
      SetCheckBox(dialog, itemHit, !CheckBoxValue(dialog, itemHit));
  }
  if (itemHit == ok) {
    GetDialogItemText(handle, gFindString);
    gFindCaseSensitive = CheckBoxValue(dialog, iCaseSensitive);
    gFindWrapAround = CheckBoxValue(dialog, iWrapAround);
  }
  DisposeDialog(dialog);
  if (itemHit == ok) FindNext(doc);
}

/* A click in the Preferences list goes to the List Manager; a double
   click is the OK button. */
static pascal Boolean PrefsFilter(DialogPtr dialog, EventRecord* event, short* itemHit) {
  Point where = event->where;
  if (event->what != mouseDown || gPrefsList == nil) return false;
  SetPort(dialog);
  GlobalToLocal(&where);
  if (!PtInRect(where, &(*gPrefsList)->rView)) return false;
  if (LClick(where, event->modifiers, gPrefsList)) {
    *itemHit = ok;
    return true;
  }
  return false;
}

/* The text size new windows start with, chosen from a list. */
static void DoPreferences(void) {
  DialogPtr dialog = GetNewDialog(rPrefsDialog, nil, (WindowPtr)-1L);
  short itemHit = 0, type, i;
  Handle handle;
  Rect view, bounds;
  Point cellSize = {0, 0};
  Cell cell;
  Str255 text;
  if (dialog == nil) {
    AlertUser(resNotFound);
    return;
  }
  SetPort(dialog);
  GetDialogItem(dialog, iSizeList, &type, &handle, &view);
  view.right -= 15; /* the list's scroll bar lies outside its view */
  SetRect(&bounds, 0, 0, 1, kSizeCount);
  gPrefsList = LNew(&view, &bounds, cellSize, 0, dialog, true, false, false, true);
  if (gPrefsList == nil) {
    DisposeDialog(dialog);
    AlertUser(memFullErr);
    return;
  }
  (*gPrefsList)->selFlags = lOnlyOne;
  for (i = 0; i < kSizeCount; ++i) {
    NumToString(gSizes[i], text);
    BlockMove(" Point", text + text[0] + 1, 6);
    text[0] += 6;
    SetPt(&cell, 0, i);
    LSetCell(text + 1, text[0], cell, gPrefsList);
    if (gSizes[i] == gNewDocumentSize) LSetSelect(true, cell, gPrefsList);
  }
  ShowWindow(dialog);
  SelectWindow(dialog);
  while (itemHit != ok && itemHit != cancel) ModalDialog(NewModalFilterProc(PrefsFilter), &itemHit);
  SetPt(&cell, 0, 0);
  if (itemHit == ok && LGetSelect(true, &cell, gPrefsList)) gNewDocumentSize = gSizes[cell.v];
  LDispose(gPrefsList);
  gPrefsList = nil;
  DisposeDialog(dialog);
}

/* The marks of the Font, Size and Style menus show the selection's style
   where it is the same throughout; a mixed selection marks nothing. */
static void AdjustStyleMenus(DocumentPeek doc) {
  MenuHandle fontMenu = GetMenuHandle(mFont), sizeMenu = GetMenuHandle(mSize),
             styleMenu = GetMenuHandle(mStyle);
  TextStyle style;
  short mode = doFont | doSize | doFace, item, count;
  Str255 name, fontName;
  Boolean continuous = doc != nil && TEContinuousStyle(&mode, &style, doc->docTE);
  /* By name: the application font's number (applFont) is not the number
     of the family it stands for, whose name the menu lists. */
  if (continuous) GetFontName(style.tsFont, fontName);
  count = CountMItems(fontMenu);
  for (item = 1; item <= count; ++item) {
    GetMenuItemText(fontMenu, item, name);
    CheckItem(fontMenu, item,
              continuous && (mode & doFont) && EqualString(name, fontName, false, true));
  }
  for (item = 1; item <= kSizeCount; ++item)
    CheckItem(sizeMenu, item, continuous && (mode & doSize) && gSizes[item - 1] == style.tsSize);
  CheckItem(styleMenu, iPlain, continuous && (mode & doFace) && style.tsFace == normal);
  for (item = iPlain + 1; item <= CountMItems(styleMenu); ++item)
    CheckItem(styleMenu, item,
              continuous && (mode & doFace) && (style.tsFace & (1 << (item - iPlain - 1))) != 0);
}

/* Whether the desk scrap holds text. Asking opens the clipboard, too slow
   to do after every keystroke: the answer is kept until the scrap's count
   says that this program or another changed it. */
static Boolean ScrapHasText(void) {
  static short seenCount = -1;
  static Boolean hasText;
  long scrapOffset;
  PScrapStuff scrap = InfoScrap();
  if (scrap->scrapCount != seenCount) {
    seenCount = scrap->scrapCount;
    hasText = GetScrap(nil, 'TEXT', &scrapOffset) > 0;
  }
  return hasText;
}

static void AdjustMenus(void) {
  DocumentPeek doc = DocumentOf(FrontWindow());
  MenuHandle file = GetMenuHandle(mFile), edit = GetMenuHandle(mEdit);
  Boolean selection = doc != nil && (*doc->docTE)->selStart < (*doc->docTE)->selEnd;
  if (FrontWindow() != nil)
    EnableItem(file, iClose);
  else
    DisableItem(file, iClose);
  if (doc != nil && doc->docDirty)
    EnableItem(file, iSave);
  else
    DisableItem(file, iSave);
  if (doc != nil)
    EnableItem(file, iSaveAs);
  else
    DisableItem(file, iSaveAs);
  if (doc == nil) {
    DisableItem(edit, iUndo);
  }
  if (selection) {
    EnableItem(edit, iCut);
    EnableItem(edit, iCopy);
    EnableItem(edit, iClear);
  } else {
    DisableItem(edit, iCut);
    DisableItem(edit, iCopy);
    DisableItem(edit, iClear);
  }
  if (doc != nil && ScrapHasText())
    EnableItem(edit, iPaste);
  else
    DisableItem(edit, iPaste);
  if (doc != nil) {
    EnableItem(edit, iSelectAll);
    EnableItem(edit, iFind);
    EnableItem(edit, iFindAgain);
  } else {
    DisableItem(edit, iSelectAll);
    DisableItem(edit, iFind);
    DisableItem(edit, iFindAgain);
  }
  AdjustStyleMenus(doc);
}

static void DoStyleCommand(DocumentPeek doc, short menuID, short menuItem) {
  TextStyle style;
  short mode;
  Str255 name;
  if (doc == nil) return;
  switch (menuID) {
    case mFont:
      GetMenuItemText(GetMenuHandle(mFont), menuItem, name);
      GetFNum(name, &style.tsFont);
      mode = doFont;
      break;
    case mSize:
      style.tsSize = gSizes[menuItem - 1];
      mode = doSize;
      break;
    default:
      style.tsFace = menuItem == iPlain ? normal : (Style)(1 << (menuItem - iPlain - 1));
      mode = menuItem == iPlain ? doFace : doFace | doToggle;
      break;
  }
  TESetStyle(mode, &style, true, doc->docTE);
  TECalText(doc->docTE);
  InvalRect(&((WindowPtr)doc)->portRect);
  AdjustAfterEdit(doc, true);
}

/* Cut and Copy leave the selection on the desk scrap at once, so other
   programs see it; Paste takes the desk scrap's text. */
static void DoEditCommand(DocumentPeek doc, short menuItem) {
  TEHandle te;
  if (menuItem == iPreferences) {
    DoPreferences();
    return;
  }
  if (doc == nil) {
    SystemEdit((short)(menuItem - 1));
    return;
  }
  te = doc->docTE;
  switch (menuItem) {
    case iCut:
    case iCopy:
      if (menuItem == iCut)
        TECut(te);
      else
        TECopy(te);
      if (ZeroScrap() == noErr) TEToScrap();
      break;
    case iPaste:
      if (TEFromScrap() != noErr)
        AlertWith(sNoText, "\0", 0); /* a picture or another program's own format */
      else if ((*te)->teLength + TEGetScrapLength() > kMaxTELength)
        AlertUser(memFullErr);
      else
        TEPaste(te);
      break;
    case iClear: TEDelete(te); break;
    case iSelectAll: TESetSelect(0, (*te)->teLength, te); break;
    case iFind: DoFind(doc); return;
    case iFindAgain: FindNext(doc); return;
  }
  AdjustAfterEdit(doc, menuItem == iCut || menuItem == iPaste || menuItem == iClear);
}

static void DoQuit(void) {
  while (FrontWindow() != nil)
    if (!DoCloseWindow(FrontWindow())) return;
  gQuitting = true;
}

static void DoMenuCommand(long menuResult) {
  short menuID = HiWord(menuResult);
  short menuItem = LoWord(menuResult);
  DocumentPeek doc = DocumentOf(FrontWindow());
  DocumentPeek created;
  Str255 name;
  switch (menuID) {
    case mApple:
      if (menuItem == iAbout) {
        Alert(rAboutAlert, nil);
      } else {
        GetMenuItemText(GetMenuHandle(mApple), menuItem, name);
        OpenDeskAcc(name);
      }
      break;
    case mFile:
      switch (menuItem) {
        case iNew:
          if ((created = NewDocument()) != nil) ShowDocument(created);
          break;
        case iOpen: DoOpen(); break;
        case iClose: DoCloseWindow(FrontWindow()); break;
        case iSave:
          if (doc != nil) DoSave(doc);
          break;
        case iSaveAs:
          if (doc != nil) DoSaveAs(doc);
          break;
        case iQuit: DoQuit(); break;
      }
      break;
    case mEdit: DoEditCommand(doc, menuItem); break;
    case mFont:
    case mSize:
    case mStyle: DoStyleCommand(doc, menuID, menuItem); break;
  }
  HiliteMenu(0);
}

static void DoContentClick(WindowPtr window, EventRecord* event) {
  DocumentPeek doc = DocumentOf(window);
  Point where = event->where;
  ControlHandle control;
  short part;
  if (doc == nil) return;
  SetPort(window);
  GlobalToLocal(&where);
  part = FindControl(where, window, &control);
  if (part == inThumb) {
    TrackControl(control, where, nil);
    AdjustTE(doc);
  } else if (part != 0) {
    TrackControl(control, where, (ControlActionUPP)NewControlActionProc(ScrollAction));
  } else if (PtInRect(where, &(*doc->docTE)->viewRect)) {
    TEClick(where, (event->modifiers & shiftKey) != 0, doc->docTE);
    AdjustScrollValues(doc);
  }
}

static void ResizeDocument(WindowPtr window) {
  DocumentPeek doc = DocumentOf(window);
  Rect view;
  if (doc == nil) return;
  SetPort(window);
  GetTEViewRect(window, &view);
  (*doc->docTE)->viewRect = view;
  TECalText(doc->docTE);
  AdjustScrollBars(window, true);
  AdjustTE(doc);
  InvalRect(&window->portRect);
}

static void DoMouseDown(EventRecord* event) {
  WindowPtr window;
  Rect limits;
  long newSize;
  short part = FindWindow(event->where, &window);
  switch (part) {
    case inMenuBar:
      AdjustMenus();
      DoMenuCommand(MenuSelect(event->where));
      break;
    case inSysWindow: SystemClick(event, window); break;
    case inContent:
      if (window != FrontWindow())
        SelectWindow(window);
      else
        DoContentClick(window, event);
      break;
    case inDrag: DragWindow(window, event->where, &qd.screenBits.bounds); break;
    case inGrow:
      SetRect(&limits, kMinDocSize, kMinDocSize, qd.screenBits.bounds.right,
              qd.screenBits.bounds.bottom);
      newSize = GrowWindow(window, event->where, &limits);
      if (newSize != 0) {
        SizeWindow(window, LoWord(newSize), HiWord(newSize), true);
        ResizeDocument(window);
      }
      break;
    case inGoAway:
      if (TrackGoAway(window, event->where)) DoCloseWindow(window);
      break;
    case inZoomIn:
    case inZoomOut:
      if (TrackBox(window, event->where, part)) {
        SetPort(window);
        ZoomWindow(window, part, false);
        ResizeDocument(window);
      }
      break;
  }
}

static void DoKey(EventRecord* event) {
  DocumentPeek doc = DocumentOf(FrontWindow());
  char key = (char)(event->message & charCodeMask);
  if (event->modifiers & cmdKey) {
    if (event->what == keyDown) {
      AdjustMenus();
      DoMenuCommand(MenuKey(key));
    }
    return;
  }
  if (doc == nil) return;
  if (key != 8 && (*doc->docTE)->teLength - ((*doc->docTE)->selEnd - (*doc->docTE)->selStart) + 1 >
                      kMaxTELength) {
    AlertUser(memFullErr);
    return;
  }
  TEKey(key, doc->docTE);
  AdjustAfterEdit(doc, true);
}

static void DoUpdate(WindowPtr window) {
  DocumentPeek doc = DocumentOf(window);
  SetPort(window);
  BeginUpdate(window);
  if (doc != nil && !EmptyRgn(window->visRgn)) {
    EraseRect(&window->portRect);
    DrawControls(window);
    DrawGrowIcon(window);
    TEUpdate(&window->portRect, doc->docTE);
  }
  EndUpdate(window);
}

static void DoActivate(WindowPtr window, Boolean becomingActive) {
  DocumentPeek doc = DocumentOf(window);
  if (doc == nil) return;
  SetPort(window);
  if (becomingActive) {
    TEActivate(doc->docTE);
    HiliteControl(doc->docVScroll, 0);
    HiliteControl(doc->docHScroll, 0);
  } else {
    TEDeactivate(doc->docTE);
    HiliteControl(doc->docVScroll, 255);
    HiliteControl(doc->docHScroll, 255);
  }
  DrawGrowIcon(window);
}

/* Over the text the cursor is the I-beam; the region WaitNextEvent
   watches is where it holds. */
static void AdjustCursor(Point where, RgnHandle region) {
  DocumentPeek doc = DocumentOf(FrontWindow());
  Rect view;
  SetRectRgn(region, -32768, -32768, 32766, 32766);
  if (doc == nil || gInBackground) {
    SetCursor(&qd.arrow);
    return;
  }
  SetPort((WindowPtr)doc);
  view = (*doc->docTE)->viewRect;
  LocalToGlobal((Point*)&view.top);
  LocalToGlobal((Point*)&view.bottom);
  if (PtInRect(where, &view)) {
    SetCursor(*GetCursor(iBeamCursor));
    RectRgn(region, &view);
  } else {
    SetCursor(&qd.arrow);
  }
}

static void DoEvent(EventRecord* event) {
  WindowPtr window = (WindowPtr)event->message;
  switch (event->what) {
    case mouseDown: DoMouseDown(event); break;
    case keyDown:
    case autoKey: DoKey(event); break;
    case updateEvt: DoUpdate(window); break;
    case activateEvt: DoActivate(window, (event->modifiers & activeFlag) != 0); break;
    case diskEvt:
      if (HiWord(event->message) != noErr) DIBadMount(event->where, event->message);
      break;
    case osEvt:
      if (((event->message >> 24) & 0xFF) == suspendResumeMessage) {
        gInBackground = (event->message & resumeFlag) == 0;
        if (!gInBackground && (event->message & convertClipboardFlag)) TEFromScrap();
        DoActivate(FrontWindow(), !gInBackground);
      }
      break;
  }
}

static void EventLoop(void) {
  EventRecord event;
  Boolean gotEvent;
  RgnHandle cursorRegion = NewRgn();
  while (!gQuitting) {
    DocumentPeek doc = DocumentOf(FrontWindow());
    if (gHasWaitNextEvent) {
      long sleep = (doc != nil && !gInBackground) ? (long)GetCaretTime() : 0x7FFFFFFF;
      GetMouse(&event.where);
      if (FrontWindow() != nil) {
        SetPort(FrontWindow());
        LocalToGlobal(&event.where);
      }
      AdjustCursor(event.where, cursorRegion);
      gotEvent = WaitNextEvent(everyEvent, &event, sleep, cursorRegion);
    } else {
      SystemTask();
      gotEvent = GetNextEvent(everyEvent, &event);
    }
    if (gotEvent) {
      DoEvent(&event);
      /* Windows opens a menu before the program hears of the click (the
         choice comes as the mouseDown), so the marks and states the menus
         show are set after each event that can change them rather than
         at the click. */
      if (event.what != updateEvt && event.what != nullEvent) AdjustMenus();
    } else if (doc != nil && !gInBackground) {
      TEIdle(doc->docTE);
    }
  }
  DisposeRgn(cursorRegion);
}

int main(void) {
  SysEnvRec world;
  Handle menuBar;
  DocumentPeek doc;

  MaxApplZone();
  MoreMasters();
  InitGraf(&qd.thePort);
  InitFonts();
  InitWindows();
  InitMenus();
  TEInit();
  InitDialogs(nil);
  InitCursor();
  FlushEvents(everyEvent, 0);

  SysEnvirons(curSysEnvVers, &world);
  if (world.machineType < 0) ExitToShell(); /* the 64K ROM had too little */
  gHasWaitNextEvent = TrapAvailable(_WaitNextEvent, ToolTrap);

  menuBar = GetNewMBar(rMenuBar);
  if (menuBar == nil) {
    AlertUser(resNotFound);
    ExitToShell();
  }
  SetMenuBar(menuBar);
  DisposeHandle(menuBar);
  AppendResMenu(GetMenuHandle(mApple), 'DRVR');
  AppendResMenu(GetMenuHandle(mFont), 'FONT');
  DrawMenuBar();

  if ((doc = NewDocument()) != nil) ShowDocument(doc);
  EventLoop();
  return 0;
}
