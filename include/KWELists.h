/* The List Manager's Win32-typed calls: the list box under a list, and the
   window procedure the list boxes are subclassed with. Lists.h brings this
   in when windows.h is already in, so classic sources never see windows.h. */
#ifndef KWE_KWELISTS_H
#define KWE_KWELISTS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Lists.h"

KWE_API HWND KWE_CALL KWE_GetHWNDFromListHandle(ListHandle lHandle);
/* The window procedure every list's list box is subclassed with. */
KWE_API LRESULT CALLBACK K_ListBoxWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

#endif
