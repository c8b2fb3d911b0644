/* The host shell (the static library kwe_host): the Windows side a ported
   program links instead of writing its own. Its WinMain registers the
   window classes, makes the main window (the menu bar's window), starts the
   session with every low-memory global bound (the program's qd among
   them), opens the resource files and then calls the program's own main().
   When main returns, or the program calls ExitToShell, or the user closes
   the main window, the session ends and the process with it.

   A program describes itself with one KWEHostApplication record; without
   one the shell uses the program's file name as title and no accelerators.
   The package's kwe_add_macintosh_application writes the record from its
   arguments. */
#ifndef KWE_HOST_H
#define KWE_HOST_H

#include <windows.h>

#include "KWEHostGlobals.h"
#include "KWEWin32.h"
#include "Quickdraw.h"

/* Called first with each message of the main window; answers non-zero when
   it handled the message, *result being the answer. A program that paints
   in the main window (around the Toolbox windows) sets one. */
typedef BOOL (*KWEMainWindowHook)(HWND window, UINT msg, WPARAM wParam, LPARAM lParam,
                                  LRESULT* result);

typedef struct KWEApplication {
  const char* windowTitle; /* the main window's title; null: the program's name */
  UInt32 sessionFlags;     /* the session flags word (KWESession.h) */
  /* A resource file beside the program opened after the program's own
     <name>.RSR, and so searched first; null: only <name>.RSR. */
  const char* resourceFile;
  /* Translated before any message is handled. A command is a menu item's:
     the n-th menu the program installs after the Apple menu (from 1) gives
     its items the commands (n << 8) + item - 1; command 0 is the shell's
     own item, which chooses the Apple menu's first. */
  const ACCEL* accelerators;
  SInt32 acceleratorCount;
  SInt16 windowWidth; /* the main window's size; 0: the screen's work area */
  SInt16 windowHeight;
  KWEMainWindowHook mainWindowHook; /* null: none */
} KWEApplication;

KWE_EXTERN_C const KWEApplication KWEHostApplication;

/* While the program runs: its main window, and the variables behind the
   low-memory globals other than qd's. */
KWE_EXTERN_C HWND KWEHostMainWindow(void);
KWE_EXTERN_C KWELowMemoryGlobals* KWEHostGlobals(void);

#endif
