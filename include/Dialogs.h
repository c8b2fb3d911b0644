/* Dialog Manager: a dialog is a library window (windowKind dialogKind)
   whose items, read from a 'DITL' item list, are Win32 child windows of it:
   "button" windows for controls, user items, icons and pictures, "static"
   windows for static text and dividing lines, "edit" windows for editable
   text and "ComboBox" windows for pop-up lists. Each child's control ID is
   its item number. Alerts are dialogs made from 'ALRT' and run modally.
   ModalDialog is patchable through the trap table. */
#ifndef KWE_DIALOGS_H
#define KWE_DIALOGS_H

#include "Events.h"
#include "MacTypes.h"
#include "MacWindows.h"
#include "Menus.h"

/* The print spooler's header, which <windows.h> may bring in after
   Quickdraw.h, names its own SetPort as a macro: the Toolbox call wins. */
#ifdef SetPort
#undef SetPort
#endif

#ifndef KWE_TEHANDLE_DEFINED
#define KWE_TEHANDLE_DEFINED
typedef struct TERec** TEHandle;
#endif

/* Item types of the item list; itemDisable is added to a disabled one. */
enum {
  userItem = 0,
  ctrlItem = 4,
  btnCtrl = 0,
  chkCtrl = 1,
  radCtrl = 2,
  resCtrl = 3,
  statText = 8,
  editText = 16,
  iconItem = 32,
  picItem = 64,
  itemDisable = 128
};

enum { ok = 1, cancel = 2 };
enum { stopIcon = 0, noteIcon = 1, cautionIcon = 2 };
/* AppendDITL's methods; only appending below the items is carried out. */
enum { overlayDITL = 0, appendDITLRight = 1, appendDITLBottom = 2 };

/* The published 170-byte record (32-bit build); the 64-bit build widens the
   pointer fields in place. editOpen holds the item number of the button
   that shows the default outline (0 none). */
#pragma pack(push, 2)
typedef struct DialogRecord {
  WindowRecord window;
  Handle items;
  TEHandle textH;   /* bound to the edit item that has the focus; 0 without one */
  SInt16 editField; /* item number - 1 of the current edit item, -1 none */
  SInt16 editOpen;
  SInt16 aDefItem;
} DialogRecord, *DialogPeek;
#pragma pack(pop)

typedef Boolean(KWE_CALL* ModalFilterProcPtr)(DialogPtr theDialog, EventRecord* theEvent,
                                              SInt16* itemHit);
typedef void(KWE_CALL* UserItemProcPtr)(DialogPtr theDialog, SInt16 itemNo);
typedef void(KWE_CALL* SoundProcPtr)(SInt16 soundNumber);
typedef void(KWE_CALL* ResumeProcPtr)(void);

KWE_API void KWE_CALL InitDialogs(ResumeProcPtr resumeProc);
KWE_API void KWE_CALL ErrorSound(SoundProcPtr soundProc);
KWE_API void KWE_CALL SetDialogFont(SInt16 fontNum);

/* Null when the window cannot be made or (GetNewDialog) the 'DLOG' or its
   'DITL' is missing; nothing is left behind then. */
KWE_API DialogPtr KWE_CALL NewDialog(void* dStorage, const Rect* boundsRect, ConstStr255Param title,
                                     Boolean visible, SInt16 procID, WindowPtr behind,
                                     Boolean goAwayFlag, SInt32 refCon, Handle items);
KWE_API DialogPtr KWE_CALL NewColorDialog(void* dStorage, const Rect* boundsRect,
                                          ConstStr255Param title, Boolean visible, SInt16 procID,
                                          WindowPtr behind, Boolean goAwayFlag, SInt32 refCon,
                                          Handle items);
KWE_API DialogPtr KWE_CALL GetNewDialog(SInt16 dialogID, void* dStorage, WindowPtr behind);
KWE_API void KWE_CALL CloseDialog(DialogPtr theDialog);
KWE_API void KWE_CALL DisposeDialog(DialogPtr theDialog);
KWE_API void KWE_CALL CouldDialog(SInt16 dialogID);
KWE_API void KWE_CALL FreeDialog(SInt16 dialogID);
KWE_API void KWE_CALL DrawDialog(DialogPtr theDialog);
KWE_API void KWE_CALL UpdateDialog(DialogPtr theDialog, RgnHandle updateRgn);

/* A missing item leaves every out parameter 0. */
KWE_API void KWE_CALL GetDialogItem(DialogPtr theDialog, SInt16 itemNo, SInt16* itemType,
                                    Handle* item, Rect* box);
KWE_API void KWE_CALL SetDialogItem(DialogPtr theDialog, SInt16 itemNo, SInt16 itemType,
                                    Handle item, const Rect* box);
KWE_API void KWE_CALL HideDialogItem(DialogPtr theDialog, SInt16 itemNo);
KWE_API void KWE_CALL ShowDialogItem(DialogPtr theDialog, SInt16 itemNo);
/* Item number - 1 of the first item whose rectangle holds thePt, -1 none. */
KWE_API SInt16 KWE_CALL FindDialogItem(DialogPtr theDialog, Point thePt);
KWE_API SInt16 KWE_CALL CountDITL(DialogPtr theDialog);
KWE_API void KWE_CALL AppendDITL(DialogPtr theDialog, Handle theDITL, SInt16 method);
KWE_API void KWE_CALL ShortenDITL(DialogPtr theDialog, SInt16 numberItems);

/* The handle of a text item is its Win32 child's window handle. */
KWE_API void KWE_CALL GetDialogItemText(Handle item, Str255 text);
KWE_API void KWE_CALL SetDialogItemText(Handle item, ConstStr255Param text);
KWE_API void KWE_CALL SelectDialogItemText(DialogPtr theDialog, SInt16 itemNo, SInt16 strtSel,
                                           SInt16 endSel);
KWE_API void KWE_CALL ParamText(ConstStr255Param param0, ConstStr255Param param1,
                                ConstStr255Param param2, ConstStr255Param param3);

/* The older names of the same calls. */
KWE_API void KWE_CALL GetDItem(DialogPtr theDialog, SInt16 itemNo, SInt16* itemType, Handle* item,
                               Rect* box);
KWE_API void KWE_CALL SetDItem(DialogPtr theDialog, SInt16 itemNo, SInt16 itemType, Handle item,
                               const Rect* box);
KWE_API void KWE_CALL HideDItem(DialogPtr theDialog, SInt16 itemNo);
KWE_API void KWE_CALL ShowDItem(DialogPtr theDialog, SInt16 itemNo);
KWE_API SInt16 KWE_CALL FindDItem(DialogPtr theDialog, Point thePt);
KWE_API void KWE_CALL GetIText(Handle item, Str255 text);
KWE_API void KWE_CALL SetIText(Handle item, ConstStr255Param text);
KWE_API void KWE_CALL SelIText(DialogPtr theDialog, SInt16 itemNo, SInt16 strtSel, SInt16 endSel);

/* Cut, copy, paste and clear in the current edit item. */
KWE_API void KWE_CALL DialogCut(DialogPtr theDialog);
KWE_API void KWE_CALL DialogCopy(DialogPtr theDialog);
KWE_API void KWE_CALL DialogPaste(DialogPtr theDialog);
KWE_API void KWE_CALL DialogDelete(DialogPtr theDialog);
KWE_API void KWE_CALL DlgCut(DialogPtr theDialog);
KWE_API void KWE_CALL DlgCopy(DialogPtr theDialog);
KWE_API void KWE_CALL DlgPaste(DialogPtr theDialog);
KWE_API void KWE_CALL DlgDelete(DialogPtr theDialog);

KWE_API Boolean KWE_CALL IsDialogEvent(const EventRecord* theEvent);
KWE_API Boolean KWE_CALL DialogSelect(const EventRecord* theEvent, DialogPtr* theDialog,
                                      SInt16* itemHit);
KWE_API void KWE_CALL ModalDialog(ModalFilterProcPtr filterProc, SInt16* itemHit);

/* Alerts answer the item hit, or -1 when the 'ALRT' or its 'DITL' is
   missing or the stage is not shown. */
KWE_API SInt16 KWE_CALL Alert(SInt16 alertID, ModalFilterProcPtr filterProc);
KWE_API SInt16 KWE_CALL StopAlert(SInt16 alertID, ModalFilterProcPtr filterProc);
KWE_API SInt16 KWE_CALL NoteAlert(SInt16 alertID, ModalFilterProcPtr filterProc);
KWE_API SInt16 KWE_CALL CautionAlert(SInt16 alertID, ModalFilterProcPtr filterProc);
/* 0..3 after an alert; -1 before any and after ResetAlertStage. */
KWE_API SInt16 KWE_CALL GetAlertStage(void);
KWE_API SInt16 KWE_CALL GetAlrtStage(void);
KWE_API void KWE_CALL ResetAlertStage(void);
KWE_API void KWE_CALL ResetAlrtStage(void);
KWE_API void KWE_CALL CouldAlert(SInt16 alertID);
KWE_API void KWE_CALL FreeAlert(SInt16 alertID);

/* The library's own calls. */
KWE_API void KWE_CALL KWE_SetBigIText(Handle item, const void* textPtr, SInt32 length);
KWE_API void KWE_CALL KWE_UpdateParamStr(DialogPtr theDialog, SInt16 param);
KWE_API void KWE_CALL KWE_AddDitlItems(DialogPtr theDialog, SInt16 fromItem);
KWE_API void KWE_CALL KWE_SetDlgTextFont(DialogPtr theDialog, SInt16 itemNo);
/* The dialog's private table; resourceID -1 only looks it up. */
KWE_API Handle KWE_CALL KWE_UseKWEDItems(DialogPtr theDialog, SInt16 resourceID);
KWE_API Boolean KWE_CALL KWE_IsComboBox(DialogPtr theDialog, SInt16 itemNo);
KWE_API void KWE_CALL KWE_BuildComboBox(DialogPtr theDialog, SInt16 itemNo, MenuHandle menu,
                                        SInt16 selected);
KWE_API SInt16 KWE_CALL KWE_GetComboBoxSelect(DialogPtr theDialog, SInt16 itemNo);
KWE_API Boolean KWE_CALL KWE_SetComboBoxSelect(DialogPtr theDialog, SInt16 itemNo, SInt16 n);
/* Scaling between the Macintosh's 96 and the screen's pixels per inch,
   with session flag 0x0040 only. */
KWE_API void KWE_CALL KWE_ScaleDlgItemRect(Boolean toScreen, Rect* r);
KWE_API void KWE_CALL KWE_OffsetDlgItemRect(Boolean toScreen, Rect* r);
KWE_API void KWE_CALL KWE_ScaleDlgPoint(Boolean toScreen, Point* pt);
KWE_API void KWE_CALL KWE_ScaleDlgWindow(Boolean toScreen, Rect* r);
KWE_API void KWE_CALL KWE_DisposeDlgItem(DialogPtr theDialog, SInt16 itemNo);
KWE_API void KWE_CALL KWE_SetDefaultButtonAndFocus(DialogPtr theDialog, SInt16 itemNo,
                                                   Boolean makeDefault);
KWE_API void KWE_CALL KWE_CloseModalWindow(WindowPtr window, SInt32 hookState, SInt32 modalState,
                                           SInt32 captureState);

/* Universal procedure pointers of the Dialog Manager: the procedure itself
   (MixedMode.h). */
typedef ModalFilterProcPtr ModalFilterUPP;
typedef UserItemProcPtr UserItemUPP;
enum { uppModalFilterProcInfo = 0x00000FD0, uppUserItemProcInfo = 0x000002C0 };
#define NewModalFilterProc(userRoutine) ((ModalFilterUPP)(userRoutine))
#define NewModalFilterUPP(userRoutine) ((ModalFilterUPP)(userRoutine))
#define DisposeModalFilterUPP(userUPP) ((void)(userUPP))
#define NewUserItemProc(userRoutine) ((UserItemUPP)(userRoutine))
#define NewUserItemUPP(userRoutine) ((UserItemUPP)(userRoutine))
#define DisposeUserItemUPP(userUPP) ((void)(userUPP))

/* The dialog records' TextEdit side, once TextEdit is part of the set. */
#if defined(__has_include)
#if __has_include("TextEdit.h")
#include "TextEdit.h"
#endif
#endif

/* Windows-side sources see the library's own Win32-typed dialog calls. */
#if defined(_WINDOWS_) || defined(_WINDOWS_H)
#include "KWEDialogs.h"
#endif

#endif
