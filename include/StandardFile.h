/* Standard File Package: the put and get dialogs over the common save and
   open dialogs. The filter list comes from the host's file-type table
   (KWE_Set_Tovel); the reply names the file in the directory it was chosen
   in, which becomes the current directory. The Macintosh dialogs' own items
   cannot be added to the common dialogs: a dialog hook, a modal filter or an
   application dialog ID is reported and the plain dialog runs. */
#ifndef KWE_STANDARDFILE_H
#define KWE_STANDARDFILE_H

#include "Dialogs.h"
#include "Files.h"
#include "MacTypes.h"

typedef SInt16 ScriptCode;
typedef OSType SFTypeList[4];
typedef const OSType* ConstSFTypeListPtr;
/* Item numbers of the dialog, in the order Tab moves through them. */
typedef SInt16* ActivationOrderListPtr;

union CInfoPBRec;

#pragma pack(push, 2)
/* 74 bytes: the System 6 reply of SFPutFile/SFGetFile and their SFP forms. */
typedef struct SFReply {
  Boolean good;
  Boolean copy;
  OSType fType;
  SInt16 vRefNum;
  SInt16 version;
  Str63 fName;
} SFReply;

/* 88 bytes: the System 7 reply of StandardPutFile/StandardGetFile and their
   Custom forms; sfFile sits at 6, sfScript at 76. */
typedef struct StandardFileReply {
  Boolean sfGood;
  Boolean sfReplacing;
  OSType sfType;
  FSSpec sfFile;
  ScriptCode sfScript;
  SInt16 sfFlags;
  Boolean sfIsFolder;
  Boolean sfIsVolume;
  SInt32 sfReserved1;
  SInt16 sfReserved2;
} StandardFileReply;
#pragma pack(pop)

typedef Boolean(KWE_CALL* FileFilterProcPtr)(union CInfoPBRec* pb);
typedef SInt16(KWE_CALL* DlgHookProcPtr)(SInt16 item, DialogPtr theDialog);
typedef Boolean(KWE_CALL* FileFilterYDProcPtr)(union CInfoPBRec* pb, void* yourDataPtr);
typedef SInt16(KWE_CALL* DlgHookYDProcPtr)(SInt16 item, DialogPtr theDialog, void* yourDataPtr);
typedef Boolean(KWE_CALL* ModalFilterYDProcPtr)(DialogPtr theDialog, EventRecord* theEvent,
                                                SInt16* itemHit, void* yourDataPtr);
typedef void(KWE_CALL* ActivateYDProcPtr)(DialogPtr theDialog, SInt16 itemNo, Boolean activating,
                                          void* yourDataPtr);

/* numTypes -1 (or 0) lists every file; otherwise the records of the host's
   table whose type is listed. fileFilter answers true for a file to leave
   out: choosing such a file is refused. The prompt of the put dialogs is
   the dialog's title; origName/defaultName its suggested name. */
KWE_API void KWE_CALL SFGetFile(Point where, ConstStr255Param prompt, FileFilterProcPtr fileFilter,
                                SInt16 numTypes, ConstSFTypeListPtr typeList,
                                DlgHookProcPtr dlgHook, SFReply* reply);
KWE_API void KWE_CALL SFPGetFile(Point where, ConstStr255Param prompt, FileFilterProcPtr fileFilter,
                                 SInt16 numTypes, ConstSFTypeListPtr typeList,
                                 DlgHookProcPtr dlgHook, SFReply* reply, SInt16 dlgID,
                                 ModalFilterProcPtr filterProc);
KWE_API void KWE_CALL SFPutFile(Point where, ConstStr255Param prompt, ConstStr255Param origName,
                                DlgHookProcPtr dlgHook, SFReply* reply);
KWE_API void KWE_CALL SFPPutFile(Point where, ConstStr255Param prompt, ConstStr255Param origName,
                                 DlgHookProcPtr dlgHook, SFReply* reply, SInt16 dlgID,
                                 ModalFilterProcPtr filterProc);
KWE_API void KWE_CALL StandardGetFile(FileFilterProcPtr fileFilter, SInt16 numTypes,
                                      ConstSFTypeListPtr typeList, StandardFileReply* reply);
KWE_API void KWE_CALL StandardPutFile(ConstStr255Param prompt, ConstStr255Param defaultName,
                                      StandardFileReply* reply);

/* Both report themselves, then run the plain put or get dialog with the
   arguments they share with SFPPutFile/SFPGetFile: the hooks, the filter
   procedures, the activation list and yourDataPtr are not used. */
KWE_API void KWE_CALL CustomPutFile(ConstStr255Param prompt, ConstStr255Param defaultName,
                                    StandardFileReply* reply, SInt16 dlgID, Point where,
                                    DlgHookYDProcPtr dlgHook, ModalFilterYDProcPtr filterProc,
                                    ActivationOrderListPtr activeList,
                                    ActivateYDProcPtr activateProc, void* yourDataPtr);
KWE_API void KWE_CALL CustomGetFile(FileFilterYDProcPtr fileFilter, SInt16 numTypes,
                                    ConstSFTypeListPtr typeList, StandardFileReply* reply,
                                    SInt16 dlgID, Point where, DlgHookYDProcPtr dlgHook,
                                    ModalFilterYDProcPtr filterProc,
                                    ActivationOrderListPtr activeList,
                                    ActivateYDProcPtr activateProc, void* yourDataPtr);

#endif
