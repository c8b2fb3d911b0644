/* The library's own Window Manager calls: the tie between a WindowPtr and its
   Win32 window, and the entry points a host's window procedures forward the
   window messages to. */
#ifndef KWE_WINDOWS_EXTENSIONS_H
#define KWE_WINDOWS_EXTENSIONS_H

#include <windows.h>

#include "KWEWin32.h"
#include "MacWindows.h"

/* 0 for a null window. */
KWE_API HWND KWE_CALL KWE_GethWnd(WindowPtr window);
/* True with *window when hwnd is a library window (or the one being made or
   closed right now). */
KWE_API Boolean KWE_CALL KWE_GetwPtr(HWND hwnd, WindowPtr* window);
/* The library window that owns the focus control, else FrontWindow(). */
KWE_API WindowPtr KWE_CALL KWE_FocusWindow(void);

/* WM_PAINT: the Windows update region joins the window's updateRgn, the paint
   is accepted and an update event is asked for. 1 for library windows. */
KWE_API SInt32 KWE_CALL KWE_EventUpdate(HWND hwnd);
/* UpdateWindow, then whether the window has an update pending. */
KWE_API Boolean KWE_CALL KWE_CheckUpdateRgn(WindowPtr window);
/* True when visRgn and updateRgn meet (or clear is false); otherwise the
   pending update is dropped. */
KWE_API Boolean KWE_CALL KWE_TestFocus(WindowPtr window, Boolean clear);
KWE_API Boolean KWE_CALL KWE_TestUpdate(WindowPtr window);

/* WM_MOUSEACTIVATE, WM_ACTIVATE, WM_MDIACTIVATE and WM_CHILDACTIVATE. */
KWE_API SInt32 KWE_CALL KWE_EventActivate(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
/* Deactivates off and activates on, even when off is not hilited. */
KWE_API void KWE_CALL KWE_ForceDeactActPair(WindowPtr off, WindowPtr on);
/* The minimum client size of windows made from now on, and of one window. */
KWE_API void KWE_CALL KWE_SetMinWinSize(SInt16 width, SInt16 height);
KWE_API void KWE_CALL KWE_SetwPtrMinSize(WindowPtr window, SInt16 width, SInt16 height);

/* Frame messages: WM_NCxxx of library windows (and of the main window). */
KWE_API LRESULT KWE_CALL KWE_NCMessage(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
/* WM_SYSCOMMAND: 1 when the command became a pseudo-point (close, zoom),
   0 when the host should let DefWindowProc carry it out. */
KWE_API SInt32 KWE_CALL KWE_SysCommand(SInt32 mainWindow, HWND hwnd, UINT command);
/* WM_MOVE, WM_SIZE, WM_ERASEBKGND, WM_HSCROLL and WM_VSCROLL. */
KWE_API LRESULT KWE_CALL KWE_WindChange(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
/* WM_GETMINMAXINFO: the window's minimum client size (or the one given). */
KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo(HWND hwnd, MINMAXINFO* info);
KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo2(HWND hwnd, MINMAXINFO* info, SInt16 minWidth,
                                           SInt16 minHeight);
KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo4(HWND hwnd, MINMAXINFO* info, SInt16 minWidth,
                                           SInt16 minHeight, SInt16 maxWidth, SInt16 maxHeight);
KWE_API void KWE_CALL KWE_FixupSystemMenu(HWND hwnd);
/* Non-zero: recompute every window's regions now; 0: mark them stale. */
KWE_API void KWE_CALL KWE_UpdateWindows(SInt16 now);
KWE_API LRESULT KWE_CALL KWE_MDIMessage(UINT msg, WPARAM wParam, LPARAM lParam);
/* set: store state (0x01000000 maximised, or 0); else read it. */
KWE_API UInt32 KWE_CALL KWE_MDIDefaultState(Boolean set, UInt32 state);
KWE_API void KWE_CALL KWE_CheckMaxWindowRect(Rect* r, Boolean mainWindow, Boolean keepSize);
/* mode 0: *where (a Point) offset by the Window Manager port's origin;
   otherwise the window's global frame rectangle into *where (a Rect). */
KWE_API void KWE_CALL KWE_WindowLocation(SInt16 mode, WindowPtr window, void* where);
KWE_API void KWE_CALL KWE_TopMainWnd(void);
KWE_API void KWE_CALL KWE_SetWindowParent(WindowPtr window, WindowPtr parent);

#endif
