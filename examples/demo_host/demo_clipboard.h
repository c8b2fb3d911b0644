// The host's clipboard procedure: what a ported application's Windows shell
// supplies so that the desk scrap reaches other programs. 'TEXT' goes to and
// from CF_TEXT, Macintosh Roman against Windows ANSI, CR against CR LF.
#pragma once
#include <windows.h>

#include "KWEScrap.h"

SInt32 __stdcall DemoClipboardProc(SInt16 operation, UInt16 format, HDC dc, Handle destination,
                                   ResType type, void* p, void* q);

// Makes a main window hear of clipboard changes (WM_CLIPBOARDUPDATE), which
// its procedure hands to KWE_DrawClipboard.
void ListenToClipboard(HWND mainWindow);
