/* The library's calls for Windows palettes: the logical palette behind a
   Toolbox palette, and the palette messages the host forwards; the hook of
   GetColor's colour dialog. */
#ifndef KWE_PALETTES_H
#define KWE_PALETTES_H

#include <windows.h>

#include "KWEWin32.h"
#include "QuickdrawColour.h"

/* The Windows palette of the window's palette (window (WindowPtr)-1: the
   default palette; null: the screen palette SetEntries writes); paramErr,
   with *palette null, when there is none. */
KWE_API OSErr KWE_CALL KWE_GetWindowsPalette(WindowPtr window, HPALETTE* palette);
/* For WM_QUERYNEWPALETTE: realises the active palette in hwnd's DC; when
   entries changed, every window with a port is invalidated. The number of
   changed entries. */
KWE_API SInt16 KWE_CALL KWE_QueryNewPalette(HWND hwnd);
/* For WM_PALETTECHANGED: unless hwnd made the change itself, the active
   palette is realised in the background in every port window's DC and the
   windows are invalidated. */
KWE_API void KWE_CALL KWE_PaletteChanged(HWND hwnd, HWND changedBy);
/* Between these, AnimateEntry, AnimatePalette and SetEntries animate the
   Windows palettes as the host's drawing switch 0x4000 lets them. */
KWE_API void KWE_CALL KWE_BeginPaletteAnimation(void);
KWE_API void KWE_CALL KWE_EndPaletteAnimation(void);
/* Realises the active palette in the current port's DC in the foreground;
   the number of changed entries. */
KWE_API SInt16 KWE_CALL KWE_ForcePalette(void);

/* GetColor's hook of the common colour dialog: titles it with the prompt. */
KWE_API UINT_PTR CALLBACK K_ChooseColorHookProc(HWND dialog, UINT message, WPARAM wParam,
                                                LPARAM lParam);

#endif
