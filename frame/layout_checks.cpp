// The published 32-bit layouts that hosts and applications read directly.
// Checked in the 32-bit build; the 64-bit build widens pointers.
#include <windows.h>

#include <cstddef>

#include "Events.h"
#include "Files.h"
#include "KWESession.h"
#include "OSUtils.h"
#include "Processes.h"
#include "SegLoad.h"
#include "frame/layout_check.h"

// Sizes that do not depend on pointer width.
static_assert(sizeof(Point) == 4 && sizeof(Rect) == 8 && sizeof(RGBColor) == 6, "geometry");
static_assert(sizeof(Pattern) == 8 && sizeof(Cursor) == 68, "QuickDraw globals");
static_assert(sizeof(EventRecord) == 16, "EventRecord");
KWE_FIELD(EventRecord, message, 2);
KWE_FIELD(EventRecord, when, 6);
KWE_FIELD(EventRecord, where, 10);
KWE_FIELD(EventRecord, modifiers, 14);
static_assert(sizeof(SysEnvRec) == 16, "SysEnvRec");
KWE_FIELD(SysEnvRec, hasFPU, 8);
KWE_FIELD(SysEnvRec, sysVRefNum, 14);
static_assert(sizeof(DateTimeRec) == 14, "DateTimeRec");
static_assert(sizeof(AppFile) == 264, "AppFile");
KWE_FIELD(AppFile, fType, 2);
KWE_FIELD(AppFile, versNum, 6);
KWE_FIELD(AppFile, fName, 8);
static_assert(sizeof(FSSpec) == 70, "FSSpec");
KWE_FIELD(FSSpec, parID, 2);
KWE_FIELD(FSSpec, name, 6);
static_assert(sizeof(ProcessSerialNumber) == 8, "ProcessSerialNumber");
static_assert(sizeof(KWEFileTypeEntry) == 40, "host file-type record");

#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(BitMap) == 14, "BitMap");
static_assert(sizeof(QHdr) == 10, "QHdr");
static_assert(sizeof(ScrapStuff) == 16, "ScrapStuff");
static_assert(sizeof(NMRec) == 36, "NMRec");
KWE_FIELD(NMRec, nmIcon, 16);
KWE_FIELD(NMRec, nmRefCon, 32);
static_assert(sizeof(LaunchParamBlockRec) == 44, "LaunchParamBlockRec");
KWE_FIELD(LaunchParamBlockRec, launchAppSpec, 16);

static_assert(sizeof(KWESessionRecord) == 84, "session record");
KWE_FIELD(KWESessionRecord, reserved, 4);
KWE_FIELD(KWESessionRecord, instance, 8);
KWE_FIELD(KWESessionRecord, mainWindow, 12);
KWE_FIELD(KWESessionRecord, mdiClient, 16);
KWE_FIELD(KWESessionRecord, flags, 20);
KWE_FIELD(KWESessionRecord, accelerators, 24);
KWE_FIELD(KWESessionRecord, makeProcedure, 28);
KWE_FIELD(KWESessionRecord, freeProcedure, 32);
KWE_FIELD(KWESessionRecord, clipboardProcedure, 36);
KWE_FIELD(KWESessionRecord, byteSwapProcedure, 40);
KWE_FIELD(KWESessionRecord, byteSwapTypes, 44);
KWE_FIELD(KWESessionRecord, commandLine, 48);
KWE_FIELD(KWESessionRecord, printDialogHook, 52);
KWE_FIELD(KWESessionRecord, documentDirectory, 56);
KWE_FIELD(KWESessionRecord, mainWindowClass, 60);
KWE_FIELD(KWESessionRecord, windowClass, 64);
KWE_FIELD(KWESessionRecord, mdiWindowClass, 68);
KWE_FIELD(KWESessionRecord, systemResourceFile, 72);
KWE_FIELD(KWESessionRecord, dibDriverName, 76);
KWE_FIELD(KWESessionRecord, printSetupDialogHook, 80);

static_assert(sizeof(KWEGlobalsRecord) == 228, "globals record");
KWE_FIELD(KWEGlobalsRecord, SFSaveDisk, 4);
KWE_FIELD(KWEGlobalsRecord, CurDirStore, 8);
KWE_FIELD(KWEGlobalsRecord, MainDevice, 16);
KWE_FIELD(KWEGlobalsRecord, EventQueue, 28);
KWE_FIELD(KWEGlobalsRecord, MemErr, 36);
KWE_FIELD(KWEGlobalsRecord, thePort, 48);
KWE_FIELD(KWEGlobalsRecord, white, 52);
KWE_FIELD(KWEGlobalsRecord, ltGray, 68);
KWE_FIELD(KWEGlobalsRecord, arrow, 72);
KWE_FIELD(KWEGlobalsRecord, screenBits, 76);
KWE_FIELD(KWEGlobalsRecord, ScrapInfo, 84);
KWE_FIELD(KWEGlobalsRecord, Ticks, 92);
KWE_FIELD(KWEGlobalsRecord, CaretTime, 112);
KWE_FIELD(KWEGlobalsRecord, HiliteMode, 120);
KWE_FIELD(KWEGlobalsRecord, ResErr, 128);
KWE_FIELD(KWEGlobalsRecord, HiliteRGB, 136);
KWE_FIELD(KWEGlobalsRecord, ButtonState, 140);
KWE_FIELD(KWEGlobalsRecord, FractEnable, 156);
KWE_FIELD(KWEGlobalsRecord, SysEvtMask, 172);
KWE_FIELD(KWEGlobalsRecord, ApplZone, 180);
KWE_FIELD(KWEGlobalsRecord, ResLoad, 200);
KWE_FIELD(KWEGlobalsRecord, PendingDeactivation, 212);
KWE_FIELD(KWEGlobalsRecord, TEStyleScrap, 224);
#endif
