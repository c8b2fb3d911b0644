/* For hosts that keep all their low-memory globals in one structure: the
   variables, and the globals record that binds every one of them. */
#ifndef KWE_HOST_GLOBALS_H
#define KWE_HOST_GLOBALS_H

#include <string.h>

#include "KWESession.h"

typedef struct KWELowMemoryGlobals {
  SInt16 SFSaveDisk;
  SInt32 CurDirStore;
  SInt16 CurrentVolume;
  GDHandle MainDevice;
  GDHandle DeviceList;
  GrafPtr WMgrPort;
  QHdr EventQueue;
  SInt16 unused32;
  OSErr MemErr;
  RgnHandle GrayRgn;
  WindowPeek WindowList;
  GrafPtr thePort;
  Pattern white, black, gray, dkGray, ltGray;
  Cursor arrow;
  BitMap screenBits;
  SInt32 unused80;
  ScrapStuff ScrapInfo;
  SInt16 PrintErr;
  UInt32 Ticks;
  SInt32 unused96, unused100, unused104, unused108;
  UInt32 CaretTime;
  WindowPtr PendingActivation;
  UInt8 HiliteMode;
  GDHandle TheGDevice;
  OSErr ResErr;
  UInt8 unused132;
  RGBColor HiliteRGB;
  UInt8 ButtonState;
  SInt32 unused144, unused148, unused152;
  UInt8 FractEnable;
  Handle WidthTabHandle;
  SInt16 TheMenu;
  ProcPtr ResumeProc;
  SInt16 SysEvtMask;
  UInt32 DoubleTime;
  THz ApplZone;
  Handle MenuList;
  SInt16 MenuFlash;
  SInt16 TEScrpLength;
  Handle TEScrpHandle;
  UInt8 ResLoad;
  SInt32 unused204, unused208;
  WindowPtr PendingDeactivation;
  SInt32 unused216;
  SInt16 TEStyleScrapFlag;
  Handle TEStyleScrap;
} KWELowMemoryGlobals;

static inline KWEGlobalsRecord KWEGlobalsRecordFor(KWELowMemoryGlobals* v) {
  KWEGlobalsRecord g;
  memset(&g, 0, sizeof g);
  g.size = sizeof g;
  g.SFSaveDisk = &v->SFSaveDisk;
  g.CurDirStore = &v->CurDirStore;
  g.CurrentVolume = &v->CurrentVolume;
  g.MainDevice = &v->MainDevice;
  g.DeviceList = &v->DeviceList;
  g.WMgrPort = &v->WMgrPort;
  g.EventQueue = &v->EventQueue;
  g.unused32 = &v->unused32;
  g.MemErr = &v->MemErr;
  g.GrayRgn = &v->GrayRgn;
  g.WindowList = &v->WindowList;
  g.thePort = &v->thePort;
  g.white = &v->white;
  g.black = &v->black;
  g.gray = &v->gray;
  g.dkGray = &v->dkGray;
  g.ltGray = &v->ltGray;
  g.arrow = &v->arrow;
  g.screenBits = &v->screenBits;
  g.unused80 = &v->unused80;
  g.ScrapInfo = &v->ScrapInfo;
  g.PrintErr = &v->PrintErr;
  g.Ticks = &v->Ticks;
  g.unused96 = &v->unused96;
  g.unused100 = &v->unused100;
  g.unused104 = &v->unused104;
  g.unused108 = &v->unused108;
  g.CaretTime = &v->CaretTime;
  g.PendingActivation = &v->PendingActivation;
  g.HiliteMode = &v->HiliteMode;
  g.TheGDevice = &v->TheGDevice;
  g.ResErr = &v->ResErr;
  g.unused132 = &v->unused132;
  g.HiliteRGB = &v->HiliteRGB;
  g.ButtonState = &v->ButtonState;
  g.unused144 = &v->unused144;
  g.unused148 = &v->unused148;
  g.unused152 = &v->unused152;
  g.FractEnable = &v->FractEnable;
  g.WidthTabHandle = &v->WidthTabHandle;
  g.TheMenu = &v->TheMenu;
  g.ResumeProc = &v->ResumeProc;
  g.SysEvtMask = &v->SysEvtMask;
  g.DoubleTime = &v->DoubleTime;
  g.ApplZone = &v->ApplZone;
  g.MenuList = &v->MenuList;
  g.MenuFlash = &v->MenuFlash;
  g.TEScrpLength = &v->TEScrpLength;
  g.TEScrpHandle = &v->TEScrpHandle;
  g.ResLoad = &v->ResLoad;
  g.unused204 = &v->unused204;
  g.unused208 = &v->unused208;
  g.PendingDeactivation = &v->PendingDeactivation;
  g.unused216 = &v->unused216;
  g.TEStyleScrapFlag = &v->TEStyleScrapFlag;
  g.TEStyleScrap = &v->TEStyleScrap;
  return g;
}

#endif
