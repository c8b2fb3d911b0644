/* Trap words of the Toolbox (A800-AFFF) and Operating System (A000-A7FF)
   calls, for NGetTrapAddress, NSetTrapAddress and the availability test:
     NGetTrapAddress(_WaitNextEvent, ToolTrap) !=
         NGetTrapAddress(_Unimplemented, ToolTrap)
   holds for every call the library implements behind the trap table, and
   also for the masked words 0x0060 (_WaitNextEvent & 0x07FF) and 0x008F
   (_OSDispatch & 0x07FF) that the older form of the test passes. */
#ifndef KWE_TRAPS_H
#define KWE_TRAPS_H

#include "OSUtils.h"

enum {
  /* Operating System */
  _MoreMasters = 0xA036,
  _Delay = 0xA03B,
  _SetTrapAddress = 0xA047,
  _MaxApplZone = 0xA063,
  _SysEnvirons = 0xA090,
  _NewPtr = 0xA11E,
  _NewHandle = 0xA122,
  _GetTrapAddress = 0xA146,
  _HWPriv = 0xA198,
  _Gestalt = 0xA1AD,
  /* Toolbox */
  _PopUpMenuSelect = 0xA80B,
  _ZoomWindow = 0xA83A,
  _TrackBox = 0xA83B,
  _InitCursor = 0xA850,
  _SetCursor = 0xA851,
  _HideCursor = 0xA852,
  _ShowCursor = 0xA853,
  _WaitNextEvent = 0xA860,
  _InitGraf = 0xA86E,
  _SetOrigin = 0xA878,
  _OSDispatch = 0xA88F,
  _Unimplemented = 0xA89F,
  _InitFonts = 0xA8FE,
  _InitWindows = 0xA912,
  _NewWindow = 0xA913,
  _DisposeWindow = 0xA914,
  _ShowWindow = 0xA915,
  _HideWindow = 0xA916,
  _MoveWindow = 0xA91B,
  _SizeWindow = 0xA91D,
  _TrackGoAway = 0xA91E,
  _SelectWindow = 0xA91F,
  _BringToFront = 0xA920,
  _SendBehind = 0xA921,
  _BeginUpdate = 0xA922,
  _EndUpdate = 0xA923,
  _FrontWindow = 0xA924,
  _DragWindow = 0xA925,
  _InvalRgn = 0xA927,
  _InvalRect = 0xA928,
  _ValidRgn = 0xA929,
  _ValidRect = 0xA92A,
  _GrowWindow = 0xA92B,
  _FindWindow = 0xA92C,
  _CloseWindow = 0xA92D,
  _InitMenus = 0xA930,
  _DrawMenuBar = 0xA937,
  _HiliteMenu = 0xA938,
  _MenuSelect = 0xA93D,
  _MenuKey = 0xA93E,
  _GetNextEvent = 0xA970,
  _EventAvail = 0xA971,
  _GetMouse = 0xA972,
  _StillDown = 0xA973,
  _Button = 0xA974,
  _TickCount = 0xA975,
  _GetKeys = 0xA976,
  _WaitMouseUp = 0xA977,
  _InitDialogs = 0xA97B,
  _IsDialogEvent = 0xA97F,
  _DialogSelect = 0xA980,
  _Alert = 0xA985,
  _StopAlert = 0xA986,
  _NoteAlert = 0xA987,
  _CautionAlert = 0xA988,
  _ModalDialog = 0xA991,
  _SystemTask = 0xA9B4,
  _GetNewWindow = 0xA9BD,
  _SysBeep = 0xA9C8,
  _TEInit = 0xA9CC,
  _ExitToShell = 0xA9F4,
  _NewCWindow = 0xAA45,
  _GetNewCWindow = 0xAA46
};

#endif
