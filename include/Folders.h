/* Folder Manager: the Macintosh's special folders on Windows directories.

   'temp' is the Windows temporary directory; the System Folder and the
   folders inside it ('macs', 'pref', 'ctrl', 'extn', 'amnu', 'desk', 'strt')
   are the Windows directory; every other type is the process's current
   directory. Nothing is ever created. */
#ifndef KWE_FOLDERS_H
#define KWE_FOLDERS_H

#include "Files.h"
#include "MacTypes.h"

enum { kOnSystemDisk = -32768, kCreateFolder = 1, kDontCreateFolder = 0 };

enum {
  kSystemFolderType = 0x6D616373,            /* 'macs' */
  kDesktopFolderType = 0x6465736B,           /* 'desk' */
  kTrashFolderType = 0x74727368,             /* 'trsh' */
  kWhereToEmptyTrashFolderType = 0x656D7074, /* 'empt' */
  kPrintMonitorDocsFolderType = 0x70726E74,  /* 'prnt' */
  kStartupFolderType = 0x73747274,           /* 'strt' */
  kAppleMenuFolderType = 0x616D6E75,         /* 'amnu' */
  kControlPanelFolderType = 0x6374726C,      /* 'ctrl' */
  kExtensionFolderType = 0x6578746E,         /* 'extn' */
  kFontsFolderType = 0x666F6E74,             /* 'font' */
  kPreferencesFolderType = 0x70726566,       /* 'pref' */
  kTemporaryFolderType = 0x74656D70          /* 'temp' */
};

/* vRefNum and createFolder are not used. *foundVRefNum is the folder's
   working-directory number (a volume reference number for a root). fnfErr
   for 'temp' when Windows names no usable temporary directory. */
KWE_API OSErr KWE_CALL FindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder,
                                  SInt16* foundVRefNum, SInt32* foundDirID);

#endif
