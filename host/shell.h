// The pieces of the host shell: each file of host/ holds one of them.
#pragma once
#include <windows.h>

#include "KWEHost.h"

namespace kwe::host {

// Registers the two classes the Window Manager makes its windows in (32
// extra bytes: WindowPtr, palette, style, minimum size), each with the
// procedure that forwards to the library.
void RegisterLibraryClasses(HINSTANCE instance);
void RegisterLibraryClass(HINSTANCE instance, const char* name, WNDPROC procedure, int extra);
// KWESubWndClass's procedure: ForwardToLibrary over DefWindowProcA.
LRESULT CALLBACK LibraryWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);

// Hands msg to the library's translators when it is one of theirs;
// otherwise to defaultProc.
LRESULT ForwardToLibrary(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, WNDPROC defaultProc);

// The main window as the description asks for it; with the MDI flag its
// client window is made too.
HWND CreateMainWindow(HINSTANCE instance, const KWEApplication& app, HWND* mdiClient);

// The session: record, globals bound to the host's variables and qd, the
// accelerators, the resource files. EndSession is safe to call twice.
void StartSession(HINSTANCE instance, const char* commandLine, const KWEApplication& app,
                  HWND mainWindow, HWND mdiClient);
void EndSession();

// Ends the session and the process with code: ExitToShell's and the main
// window's close box's road out.
[[noreturn]] void EndProgram(int code);

// The clipboard procedure of the session record: 'TEXT' against CF_TEXT,
// 'PICT' against CF_ENHMETAFILE.
SInt32 __stdcall ClipboardProc(SInt16 operation, UInt16 format, HDC dc, Handle destination,
                               ResType type, void* p, void* q);

}  // namespace kwe::host
