/* The library's own Event Manager calls: the translators a host's window
   procedures forward Windows messages to, the pump's hooks, the mouse
   capture and the keyboard hooks. */
#ifndef KWE_EVENTS_EXTENSIONS_H
#define KWE_EVENTS_EXTENSIONS_H

#include <windows.h>

#include "Events.h"
#include "KWEWin32.h"

/* hook(window of the message, the message): non-zero lets the library go on
   with the message, zero swallows it. */
typedef BOOL(__stdcall* KWEMessageHook)(HWND window, MSG* message);
/* Same parameters and result as PeekMessageA, which it replaces. */
typedef BOOL(__stdcall* KWEPeekMessageProc)(MSG* message, HWND window, UINT first, UINT last,
                                            UINT removeFlags);
/* (dialog, control identifier, control kind, 0, event, two spare cells). */
typedef SInt16(__stdcall* KWEDialogKeyProc)(HWND dialog, SInt16 controlID, SInt16 controlKind,
                                            SInt32 zero, EventRecord* event, SInt32* spare1,
                                            SInt32* spare2);
typedef void(__stdcall* KWEHelpProc)(void);

/* Both setters release the previous procedure with the session's free
   procedure and wrap the new one with its make procedure; null removes. */
KWE_API void KWE_CALL KWE_SetMessageHook(KWEMessageHook hook);
KWE_API void KWE_CALL KWE_SetPeekMessageProc(KWEPeekMessageProc peek);
/* Runs the installed VBL tasks through one pump pass for null events. */
KWE_API void KWE_CALL KWE_VBL_Interrupt(void);

/* Mouse messages and WM_SETCURSOR: 1 when an event was queued, else what
   DefWindowProcA answers. */
KWE_API LRESULT KWE_CALL KWE_EventMouse(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
/* WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_DEADCHAR and the WM_SYS forms: the kind
   of event queued (keyDown 3, keyUp 4) or 0. */
KWE_API SInt16 KWE_CALL KWE_EventKey(HWND window, UINT msg, WPARAM wParam, LPARAM lParam);
/* WM_COMMAND: a menu or accelerator command becomes the pending menu
   command; a click on a dialog's control becomes mouseDown and mouseUp. */
KWE_API void KWE_CALL KWE_EventCommand(HWND dialog, UINT msg, WPARAM wParam, HWND control);
/* WM_ACTIVATEAPP: an osEvt, suspend (0x01000000) or resume (0x01000001). */
KWE_API void KWE_CALL KWE_ActivateApp(Boolean active);
/* Stores a value for the tablet layer; answers the previous one. */
KWE_API SInt32 KWE_CALL KWE_PlayBack(SInt32 value);

/* The capture depth counts the library's mouse tracking; the capture is
   taken when it leaves 0 and given up when it returns there. Each answers
   the previous depth. */
KWE_API SInt32 KWE_CALL KWE_SetCapture(Boolean on);
KWE_API SInt32 KWE_CALL KWE_SetWinCapture(WindowPtr window, Boolean on);
KWE_API SInt16 KWE_CALL KWE_ForceCapture(SInt16 depth);

/* The keyboard hook the session installs on the host's thread, and its
   work: which keys go to a dialog's control and which to the dialog. */
KWE_API LRESULT KWE_CALL KWE_DlgKeyHook(int code, WPARAM vk, LPARAM lParam);
KWE_API LRESULT CALLBACK K_DlgKeyHook(int code, WPARAM vk, LPARAM lParam);
KWE_API void KWE_CALL KWE_SetDlgKBHook(KWEDialogKeyProc procedure);
/* While set, the keyboard hook swallows every key. */
KWE_API void KWE_CALL KWE_EndSession(SInt32 flag);
/* F1 released on the calling thread calls procedure and is swallowed. */
KWE_API void KWE_CALL KWE_EnableHelpHook(KWEHelpProc procedure);
KWE_API void KWE_CALL KWE_DisableHelpHook(void);
KWE_API LRESULT CALLBACK K_HelpKeyHook(int code, WPARAM vk, LPARAM lParam);

#endif
