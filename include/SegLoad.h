/* Segment Loader: the documents the application was started with. */
#ifndef KWE_SEGLOAD_H
#define KWE_SEGLOAD_H

#include "MacTypes.h"

enum { appOpen = 0, appPrint = 1 };

#pragma pack(push, 2)
typedef struct AppFile {
  SInt16 vRefNum;
  OSType fType;
  SInt16 versNum;
  Str255 fName;
} AppFile;
#pragma pack(pop)

/* Tells the host's main window procedure 0x0401 (WM_USER + 1), then posts
   WM_QUIT and returns: the host's message loop ends the process. */
KWE_API void KWE_CALL ExitToShell(void);
KWE_API void KWE_CALL GetAppParms(Str255 apName, SInt16* apRefNum, Handle* apParam);
KWE_API void KWE_CALL CountAppFiles(SInt16* message, SInt16* count);
KWE_API void KWE_CALL GetAppFiles(SInt16 index, AppFile* theFile);
KWE_API void KWE_CALL ClrAppFiles(SInt16 index);

#endif
