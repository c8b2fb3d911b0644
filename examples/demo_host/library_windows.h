// The window procedures of the two window classes the Window Manager makes
// its windows in, as a host shell writes them: every message the library
// needs goes to it, the rest to the class's default procedure. The window
// benchmark uses them too.
#pragma once
#include <windows.h>

// Hands msg to the library when it is one of the Window Manager's or the
// input translators'; otherwise to defaultProc.
LRESULT ForwardToLibrary(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, WNDPROC defaultProc);

// KWESubWndClass and KWESubMDIWndClass.
LRESULT CALLBACK LibraryWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK LibraryMdiWindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);

// Registers both classes with the 32 extra bytes a library window keeps its
// WindowPtr, palette, style and minimum size in.
void RegisterLibraryWindowClasses(HINSTANCE instance);
