/* The hook procedure the library gives the common open and save dialogs. */
#ifndef KWE_STANDARDFILE_EXTENSIONS_H
#define KWE_STANDARDFILE_EXTENSIONS_H

#include <windows.h>

#include "KWEWin32.h"
#include "StandardFile.h"

/* Centres the open dialog when the session asks for it, and refuses a
   chosen name the Macintosh side cannot hold (longer than 63 characters) or
   that the application's file filter procedure excludes. */
KWE_API UINT_PTR CALLBACK K_FileOpenHookProc(HWND dialog, UINT msg, WPARAM wParam, LPARAM lParam);

#endif
