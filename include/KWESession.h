/* What the host's Windows shell hands to the library: the session record, the
   low-memory globals record, the session flags and the start-up calls. The
   host's WinMain includes this beside <windows.h>. */
#ifndef KWE_SESSION_H
#define KWE_SESSION_H

#include <windows.h>

#include "KWEFileTypes.h"
#include "KWEWin32.h"
#include "MacTypes.h"

/* The host's MakeProcInstance/FreeProcInstance pair: every application
   procedure handed to the library passes through them (flag 0x00000200 off). */
typedef ProcPtr(__stdcall* KWEMakeProcedure)(ProcPtr procedure, HINSTANCE instance);
typedef void(__stdcall* KWEFreeProcedure)(ProcPtr callable);

/* 84 bytes in the 32-bit build; pointers widen on 64-bit hosts. The host sets
   size to sizeof(KWESessionRecord) (or fewer bytes: later fields read as 0). */
typedef struct KWESessionRecord {
  SInt16 size;
  SInt16 unused2;
  UInt32 reserved;
  HINSTANCE instance;
  HWND mainWindow;
  HWND mdiClient;
  UInt32 flags;
  HACCEL accelerators;
  KWEMakeProcedure makeProcedure;
  KWEFreeProcedure freeProcedure;
  ProcPtr clipboardProcedure;
  ProcPtr byteSwapProcedure;
  const UInt32* byteSwapTypes;
  const char* commandLine;
  ProcPtr printDialogHook;
  const char* documentDirectory;
  const char* mainWindowClass;
  const char* windowClass;
  const char* mdiWindowClass;
  const char* systemResourceFile;
  const char* dibDriverName;
  ProcPtr printSetupDialogHook;
} KWESessionRecord;

/* Each field is the address of the host's variable standing for one
   Macintosh low-memory global; null fields are served from library cells. */
typedef struct KWEGlobalsRecord {
  SInt16 size;
  SInt16 unused2;
  SInt16* SFSaveDisk;
  SInt32* CurDirStore;
  SInt16* CurrentVolume;
  GDHandle* MainDevice;
  GDHandle* DeviceList;
  GrafPtr* WMgrPort;
  QHdr* EventQueue;
  SInt16* unused32;
  OSErr* MemErr;
  RgnHandle* GrayRgn;
  WindowPeek* WindowList;
  GrafPtr* thePort;
  Pattern* white;
  Pattern* black;
  Pattern* gray;
  Pattern* dkGray;
  Pattern* ltGray;
  Cursor* arrow;
  BitMap* screenBits;
  void* unused80;
  ScrapStuff* ScrapInfo;
  SInt16* PrintErr;
  UInt32* Ticks;
  void* unused96;
  void* unused100;
  void* unused104;
  void* unused108;
  UInt32* CaretTime;
  WindowPtr* PendingActivation;
  UInt8* HiliteMode;
  GDHandle* TheGDevice;
  OSErr* ResErr;
  UInt8* unused132;
  RGBColor* HiliteRGB;
  UInt8* ButtonState;
  void* unused144;
  void* unused148;
  void* unused152;
  UInt8* FractEnable;
  Handle* WidthTabHandle;
  SInt16* TheMenu;
  ProcPtr* ResumeProc;
  SInt16* SysEvtMask;
  UInt32* DoubleTime;
  THz* ApplZone;
  Handle* MenuList;
  SInt16* MenuFlash;
  SInt16* TEScrpLength;
  Handle* TEScrpHandle;
  UInt8* ResLoad;
  void* unused204;
  void* unused208;
  WindowPtr* PendingDeactivation;
  void* unused216;
  SInt16* TEStyleScrapFlag;
  Handle* TEStyleScrap;
} KWEGlobalsRecord;

/* Session flags word. */
enum {
  kweFlagMDI = 0x00000001,
  kweFlagAmpersandAsMnemonic = 0x00000002,
  kweFlagHeapCheck = 0x00000004,
  kweFlagSmallBlocks = 0x00000008,
  kweFlagPalettedBitmaps = 0x00000010,
  kweFlagPrinterDefaults = 0x00000020,
  kweFlagScaleDialogs = 0x00000040,
  kweFlagDigitCommandKeys = 0x00000080,
  kweFlagNarrowUserItems = 0x00000100,
  kweFlagNoProcInstances = 0x00000200,
  kweFlagRightButtonEvents = 0x00000400,
  kweFlagRightButtonControlKey = 0x00000800,
  kweFlagCentreOpenDialog = 0x00001000,
  kweFlagMDIDefaultPlacement = 0x00002000,
  kweFlagAllDrivesInfo = 0x00004000,
  kweFlagExtendedByteSwap = 0x00008000,
  kweFlagDirectoryIDs = 0x00010000,
  kweFlagSilentDiagnostics = 0x00020000,
  kweFlagFullScreenRect = 0x00040000,
  kweFlagItemsIgnoreMouse = 0x00080000
};

KWE_API void KWE_CALL KWE_InitSession(const KWESessionRecord* session);
KWE_API SInt16 KWE_CALL KWE_InitGlobals(const KWEGlobalsRecord* globals);
KWE_API void KWE_CALL KWE_ExitSession(void);
KWE_API UInt32 KWE_CALL KWE_SetFlags(UInt32 mask, UInt32 value, SInt16 switchMask,
                                     SInt16 switchValue);
KWE_API void KWE_CALL KWE_Set_Tovel(const KWEFileTypeEntry* fileTypes, const void* menuOverrides);
KWE_API void KWE_CALL KWE_MakeAppPathName(char* dst, const char* name);
KWE_API void KWE_CALL KWE_InitColors(void);
KWE_API void KWE_CALL KWE_SetupPrintDlgHook(ProcPtr hook);
KWE_API void KWE_CALL KWE_SetupPrSetupDlgHook(ProcPtr hook);

#endif
