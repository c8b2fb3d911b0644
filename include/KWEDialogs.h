/* The library's Win32-typed dialog calls: what a host shell forwards to the
   Dialog Manager (WM_DRAWITEM), the modal-window helpers, and the window
   procedures it subclasses items with. Dialogs.h brings this in when
   windows.h is already in, so classic sources never see windows.h. */
#ifndef KWE_KWEDIALOGS_H
#define KWE_KWEDIALOGS_H

#include <windows.h>

#include "Dialogs.h"
#include "KWEWin32.h"

/* (window, key): true swallows the WM_SYSCHAR. */
typedef Boolean(KWE_CALL* KWESysCharFilter)(HWND window, WPARAM key);
/* (button window, its control ID) when a library button takes the focus. */
typedef void(KWE_CALL* KWEButtonFocusProc)(HWND button, SInt16 controlID);

/* WM_DRAWITEM of a dialog window: user items, icons and pictures. */
KWE_API LRESULT KWE_CALL KWE_UserItem(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

KWE_API void KWE_CALL KWE_PrepareModalWindow(WindowPtr window, SInt32* hookState,
                                             SInt32* modalState, SInt32* captureState,
                                             KWESysCharFilter sysCharFilter);

KWE_API HWND KWE_CALL KWE_EnableWindows(WindowPtr window, Boolean enable, Boolean fromItself);
KWE_API HWND KWE_CALL KWE_EnableWindowsEx(WindowPtr window, Boolean enable, Boolean fromItself,
                                          Boolean alsoMain);
KWE_API void KWE_CALL KWE_SetButtonFocusHookProc(KWEButtonFocusProc proc);

KWE_API LRESULT CALLBACK K_StaticWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT CALLBACK K_EditWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT CALLBACK K_UserItemWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

#endif
