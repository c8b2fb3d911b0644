/* The Control Manager's own calls, and the window procedures the library
   subclasses the controls' child windows with. */
#ifndef KWE_CONTROLS_EXTENSIONS_H
#define KWE_CONTROLS_EXTENSIONS_H

#include <windows.h>

#include "Controls.h"
#include "KWEWin32.h"

KWE_API void KWE_CALL KWE_SetWindowDefaultButton(ControlHandle theControl, Boolean on);
KWE_API void KWE_CALL KWE_SetCtlFocus(ControlHandle theControl, Boolean on);
/* Moves the child window into newWindow and links the record at the head of
   its list (it is not unlinked from the old list). */
KWE_API void KWE_CALL KWE_contrlOwnerChange(ControlHandle theControl, WindowPtr newWindow);
/* The width of vertical and height of horizontal scroll bars (16 and 16);
   answers the height. */
KWE_API SInt16 KWE_CALL KWE_SetScrollBarWH(SInt16 width, SInt16 height);
/* The 'MENU' handle a pop-up was filled from; null for other controls. */
KWE_API MenuHandle KWE_CALL KWE_GetControlPopUpMenu(ControlHandle theControl);

/* The child windows' procedures the library subclasses them with. */
KWE_API LRESULT CALLBACK K_ButtonWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT CALLBACK K_ScrollBarWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT CALLBACK K_ComboBoxWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
KWE_API LRESULT CALLBACK K_CDEFWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

#endif
