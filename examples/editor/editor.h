/* editor.h: the editor's resource numbers, menu items and document record,
   shared by its source files. */
#ifndef EDITOR_H
#define EDITOR_H

#include <Controls.h>
#include <Files.h>
#include <MacWindows.h>
#include <TextEdit.h>

#define rMenuBar 128
#define rAboutAlert 128
#define rErrorAlert 129
#define rSaveChangesAlert 130
#define rFindDialog 200
#define rPrefsDialog 201
#define rDocWindow 128
#define rMessages 128

/* The messages of the error alert ('STR#' 128). */
#define sCouldNot 1
#define sCouldNotEnd 2
#define sQuote 3
#define sGone 4
#define sLocked 5
#define sEmpty 6
#define sTooLong 7
#define sNotText 8
#define sNoText 9

#define mApple 128
#define iAbout 1
#define mFile 129
#define iNew 1
#define iOpen 2
#define iClose 3
#define iSave 4
#define iSaveAs 5
#define iQuit 7
#define mEdit 130
#define iUndo 1
#define iCut 3
#define iCopy 4
#define iPaste 5
#define iClear 6
#define iSelectAll 8
#define iFind 10
#define iFindAgain 11
#define iPreferences 13
#define mFont 131
#define mSize 132
#define mStyle 133
#define iPlain 1

/* The Save Changes alert's buttons and the Find dialog's items. */
#define iSaveButton 1
#define iCancelButton 2
#define iDontSaveButton 3
#define iFindText 3
#define iCaseSensitive 5
#define iWrapAround 6
#define iSizeList 4

#define kScrollBarWidth 16
#define kTextMargin 4
#define kMaxDocWidth 1000
#define kMaxTELength 32000
#define kMaxDocuments 8
#define kMinDocSize 100
#define kStagger 20
#define kCreator 'KEDT'

/* Each document window's record begins with its WindowRecord, so that the
   window pointer the Window Manager hands back is the document. */
typedef struct {
  WindowRecord docWindow;
  TEHandle docTE;
  ControlHandle docVScroll;
  ControlHandle docHScroll;
  Boolean docDirty;
  Boolean docHasFile;
  FSSpec docFile;
} DocumentRecord, *DocumentPeek;

/* How many documents are open: kept by NewDocument and DoCloseWindow. */
#ifdef __cplusplus
extern "C" short gDocumentCount;
#else
extern short gDocumentCount;
#endif

#endif
