/* Toolbox calls of managers the library otherwise builds, for which Windows
   offers nothing to map them on: the File, Device and Resource Managers'
   resource-fork and desktop-database calls, colour QuickDraw's device and
   menu-colour calls, Script Manager and Process Manager corners, SANE's
   conversions. Each reports itself (its own name unless noted) and answers
   the fixed value noted, writing no output parameter; calls noted "silent"
   report nothing. These declarations move to their managers' headers as
   those are built. */
#ifndef KWE_UNSUPPORTEDCALLS_H
#define KWE_UNSUPPORTEDCALLS_H

#include "Events.h"
#include "Files.h"
#include "MacTypes.h"
#include "Processes.h"

typedef SInt16 ScriptCode;
typedef UInt16 EventKind;
typedef SInt16 IconAlignmentType;
typedef SInt16 IconTransformType;
typedef Fixed* FixedPtr;
typedef UInt16 TMSelTypes;

/* Records the calls take only by address or handle. */
typedef union ParamBlockRec* ParmBlkPtr;
typedef union HParamBlockRec* HParmBlkPtr;
typedef union CInfoPBRec* CInfoPBPtr;
typedef struct CMovePBRec* CMovePBPtr;
typedef struct DTPBRec* DTPBPtr;
typedef struct CSParam* CSParamPtr;
typedef struct FInfo FInfo;
typedef struct DCtlEntry** DCtlHandle;
typedef struct EvQEl* EvQElPtr;
typedef struct MCEntry* MCTablePtr;
typedef MCTablePtr* MCTableHandle;
typedef struct ComponentInstanceRecord* ComponentInstance;
typedef struct TERec** TEHandle;
typedef struct AuxCtlRec** AuxCtlHandle;
typedef struct AuxWinRec** AuxWinHandle;
typedef struct CtlCTab** CCTabHandle;
typedef struct Palette** PaletteHandle;
typedef struct TermRecord** TermHandle;
typedef union TMSelection TMSelection;
typedef struct ProcessInfoRec ProcessInfoRec;
typedef struct TargetID TargetID;
typedef struct HighLevelEventMsg* HighLevelEventMsgPtr;

typedef Handle(KWE_CALL* IconGetterProcPtr)(ResType theType, void* yourDataPtr);
typedef Boolean(KWE_CALL* ColorSearchProcPtr)(RGBColor* rgb, SInt32* position);
typedef Boolean(KWE_CALL* GetSpecificFilterProcPtr)(void* contextPtr, HighLevelEventMsgPtr msgBuff,
                                                    const TargetID* sender);

#pragma pack(push, 2)
/* SANE's 80-bit extended: sign and biased exponent, then the 64-bit
   significand with its explicit integer bit, most significant word first. */
typedef struct extended80 {
  SInt16 exp;
  UInt16 man[4];
} extended80;

/* The 96-bit form of the 68881, with a pad word after the exponent. */
typedef struct extended96 {
  SInt16 exp[2];
  UInt16 man[4];
} extended96;
#pragma pack(pop)

/* ---- File, Device and Resource Managers ---- */

/* Answer -1, the library's refusal: resource forks, file locks, byte-range
   locks, the catalog and the desktop database have no DOS counterpart.
   HOpenRF reports "HOPENRF". */
KWE_API OSErr KWE_CALL HOpenRF(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                               SInt8 permission, SInt16* refNum);
/* Reports "PBHOPENDENY". */
KWE_API OSErr KWE_CALL PBHOpenDeny(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHOpenRF(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHSetFLock(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHRstFLock(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBLockRange(ParmBlkPtr paramBlock, Boolean async);
/* Reports "PBUnockRange". */
KWE_API OSErr KWE_CALL PBUnlockRange(ParmBlkPtr paramBlock, Boolean async);
/* Answers the reference number -1: no file opened. */
KWE_API SInt16 KWE_CALL FSpOpenResFile(const FSSpec* file, SInt8 permission);
KWE_API OSErr KWE_CALL FSpSetFInfo(const FSSpec* file, const FInfo* fndrInfo);
KWE_API OSErr KWE_CALL PBCatMove(CMovePBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBCatSearch(CSParamPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBSetCatInfoSync(CInfoPBPtr paramBlock);
KWE_API OSErr KWE_CALL PBDTGetPath(DTPBPtr paramBlock);
KWE_API OSErr KWE_CALL PBDTGetAPPL(DTPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBDTGetAPPLSync(DTPBPtr paramBlock);
KWE_API OSErr KWE_CALL PBDTGetIcon(DTPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBControl(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBControlSync(ParmBlkPtr paramBlock);

/* Answer ioErr (-36). */
KWE_API OSErr KWE_CALL OpenRF(ConstStr255Param fileName, SInt16 vRefNum, SInt16* refNum);
KWE_API OSErr KWE_CALL SetFInfo(ConstStr255Param fileName, SInt16 vRefNum, const FInfo* fndrInfo);
KWE_API OSErr KWE_CALL PBOpenRF(ParmBlkPtr paramBlock, Boolean async);

/* Answer noErr or nil: there are no drivers, drive or volume queues. */
KWE_API OSErr KWE_CALL PBStatus(ParmBlkPtr paramBlock, Boolean async);
KWE_API DCtlHandle KWE_CALL GetDCtlEntry(SInt16 refNum);
KWE_API QHdrPtr KWE_CALL GetDrvQHdr(void);
KWE_API QHdrPtr KWE_CALL GetVCBQHdr(void);

/* Return nothing; no file is created and ResErr is left alone. */
KWE_API void KWE_CALL FSpCreateResFile(const FSSpec* file, OSType creator, OSType fileType,
                                       ScriptCode scriptTag);
KWE_API void KWE_CALL SetResourceSize(Handle theResource, SInt32 newSize);
KWE_API void KWE_CALL ReadPartialResource(Handle theResource, SInt32 offset, void* buffer,
                                          SInt32 count);
KWE_API void KWE_CALL WritePartialResource(Handle theResource, SInt32 offset, const void* buffer,
                                           SInt32 count);
KWE_API void KWE_CALL DILoad(void);
KWE_API void KWE_CALL DIUnload(void);

/* ---- OS dispatch, Event, Component and Process Managers ---- */

/* The _OSDispatch trap, which applications reach only through glue. */
KWE_API SInt32 KWE_CALL OSDispatch(void);
KWE_API OSErr KWE_CALL PPostEvent(EventKind eventCode, SInt32 eventMsg, EvQElPtr* qEl);
KWE_API OSErr KWE_CALL CloseComponent(ComponentInstance aComponentInstance);

/* MPW's glue for calling a Pascal procedure took the procedure's arguments
   before the procedure itself; here only the procedure, which is not
   called. CallPascalW and CallPascalL answer 0, CallPascalB false. */
KWE_API void KWE_CALL CallPascal(ProcPtr procedure);
KWE_API Boolean KWE_CALL CallPascalB(ProcPtr procedure);
KWE_API SInt16 KWE_CALL CallPascalW(ProcPtr procedure);
KWE_API SInt32 KWE_CALL CallPascalL(ProcPtr procedure);

/* Answers paramErr (-50); info is not written. kernel32 of Windows 8 and
   later exports a call of the same name, which <windows.h> declares when it
   targets those versions; a source that sees both reaches this one with
   GetProcAddress(library, "GetProcessInformation"). Include <windows.h>
   before this header. */
#if !defined(_PROCESSTHREADSAPI_H_) || !defined(_WIN32_WINNT) || _WIN32_WINNT < 0x0602
KWE_API OSErr KWE_CALL GetProcessInformation(const ProcessSerialNumber* PSN, ProcessInfoRec* info);
#endif
/* Answers procNotFound (-600): the host's process is the only one. */
KWE_API OSErr KWE_CALL SetFrontProcess(const ProcessSerialNumber* PSN);
/* Answers noOutstandingHLE (-608). */
KWE_API OSErr KWE_CALL AcceptHighLevelEvent(TargetID* sender, UInt32* msgRefcon, Ptr msgBuff,
                                            UInt32* msgLen);
/* Answers the byte 0xA0, which a caller testing the Boolean reads as true,
   and leaves err unwritten. */
KWE_API Boolean KWE_CALL GetSpecificHighLevelEvent(GetSpecificFilterProcPtr aFilter,
                                                   void* contextPtr, OSErr* err);

/* ---- QuickDraw, Palette and Font Managers ---- */

/* Report "SetDepth - Not Supported, System 7" and "HasDepth - Not
   Supported, System 7" and answer 0: the display's depth is Windows'. */
KWE_API OSErr KWE_CALL SetDepth(GDHandle gd, SInt16 depth, SInt16 whichFlags, SInt16 flags);
KWE_API SInt16 KWE_CALL HasDepth(GDHandle gd, SInt16 depth, SInt16 whichFlags, SInt16 flags);
/* Plots nothing and answers noErr without a report: icon families are drawn
   by the application's own icon code. */
KWE_API OSErr KWE_CALL PlotIconID(const Rect* theRect, IconAlignmentType align,
                                  IconTransformType transform, SInt16 theResID);
/* Reports "PLOTICONMETHOD"; nothing is drawn. */
KWE_API OSErr KWE_CALL PlotIconMethod(const Rect* theRect, IconAlignmentType align,
                                      IconTransformType transform, IconGetterProcPtr theMethod,
                                      void* yourDataPtr);
/* Answers -1; no metrics are written. */
KWE_API OSErr KWE_CALL OutlineMetrics(SInt16 byteCount, const void* textPtr, Point numer,
                                      Point denom, SInt16* yMax, SInt16* yMin, FixedPtr awArray,
                                      FixedPtr lsbArray, Rect* boundsArray);
KWE_API void KWE_CALL SetFScaleDisable(Boolean fscaleDisable);
/* Answers false. */
KWE_API Boolean KWE_CALL GetOutlinePreferred(void);
KWE_API void KWE_CALL SetOutlinePreferred(Boolean outlinePreferred);
KWE_API void KWE_CALL PortChanged(GrafPtr port);
KWE_API void KWE_CALL SeedCFill(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                                const Rect* dstRect, SInt16 seedH, SInt16 seedV,
                                ColorSearchProcPtr matchProc, SInt32 matchData);
KWE_API void KWE_CALL CharExtra(Fixed extra);
KWE_API void KWE_CALL AllocCursor(void);
KWE_API void KWE_CALL SetCPixel(SInt16 h, SInt16 v, const RGBColor* cPix);

/* ---- Menu, Window, Control Managers, TextEdit, printing, terminals ---- */

/* Menu colour tables are Windows' own: GetMCInfo answers nil. */
KWE_API MCTableHandle KWE_CALL GetMCInfo(void);
KWE_API void KWE_CALL SetMCInfo(MCTableHandle menuCTbl);
KWE_API void KWE_CALL SetMCEntries(SInt16 numEntries, MCTablePtr colorEntries);
/* Reports "DispMCInfo". */
KWE_API void KWE_CALL DisposeMCInfo(MCTableHandle menuCTbl);
KWE_API void KWE_CALL FlashMenuBar(SInt16 menuID);
KWE_API void KWE_CALL InvalMenuBar(void);
/* Reports "GetAuxCtl" and answers false; acHndl is not written. */
KWE_API Boolean KWE_CALL GetAuxiliaryControlRecord(ControlHandle theControl, AuxCtlHandle* acHndl);
/* Reports "SetCtlColor". */
KWE_API void KWE_CALL SetControlColor(ControlHandle theControl, CCTabHandle newColorTable);
/* Answers false; awHndl is not written. */
KWE_API Boolean KWE_CALL GetAuxWin(WindowPtr theWindow, AuxWinHandle* awHndl);
KWE_API SInt16 KWE_CALL TEFeatureFlag(SInt16 feature, SInt16 action, TEHandle hTE);
KWE_API Boolean KWE_CALL SetChooserAlert(Boolean f);
KWE_API void KWE_CALL TMSetSelection(TermHandle hTerm, const TMSelection* theSelection,
                                     TMSelTypes selType);

/* ---- Script Manager ---- */

/* The _ScriptUtil trap, which applications reach only through glue. */
KWE_API SInt32 KWE_CALL ScriptUtil(void);
/* Silent for smScriptSmallFondSize (82), which answers 0x0015000A: the small
   font is Helvetica (21) at 10 points. Any other verb reports "GetScript"
   and answers 0. */
KWE_API SInt32 KWE_CALL GetScript(SInt16 script, SInt16 verb);
KWE_API OSErr KWE_CALL SetScript(SInt16 script, SInt16 verb, SInt32 param);
KWE_API void KWE_CALL KeyScript(SInt16 code);
/* Reports "KeyTrans" and answers 0: no character. */
KWE_API UInt32 KWE_CALL KeyTranslate(const void* transData, UInt16 keycode, UInt32* state);
KWE_API SInt16 KWE_CALL Pixel2Char(Ptr textBuf, SInt16 textLen, SInt16 slop, SInt16 pixelWidth,
                                   Boolean* leadingEdge);
KWE_API void KWE_CALL DrawJust(Ptr textPtr, SInt16 textLength, SInt16 slop);
/* Reports "MEASUREJUST"; charLocs is not written. */
KWE_API void KWE_CALL MeasureJust(Ptr textPtr, SInt16 textLength, SInt16 slop, Ptr charLocs);
/* ReplaceText: exported shortened, see KWENames.h. Answers 0 and leaves
   baseText unchanged. */
KWE_API SInt32 KWE_CALL ReplaceTex(Handle baseText, Handle substitutionText, Str15 key);

/* ---- SANE ---- */

/* The elementary-functions package: x is not changed. */
KWE_API void KWE_CALL elems68k(void* x, SInt16 opcode);
KWE_API void KWE_CALL x80tox96(const extended80* x80, extended96* x96);
KWE_API void KWE_CALL x96tox80(const extended96* x96, extended80* x80);
/* Answers 0. */
KWE_API long double KWE_CALL x80told(const extended80* x80);

/* The library's sine, cosine, tangent and exponential of an extended, passed
   and returned by value as SANE's C interface passes extended. None is
   computed: each shows a message box with no owner, "KWE_Sin not
   supported." (its own name) titled "KWENTPPC.DLL Error", waits for OK and
   returns x unchanged. The report channel and its silence flag are not
   used. */
KWE_API extended80 KWE_CALL KWE_Sin(extended80 x);
KWE_API extended80 KWE_CALL KWE_Cos(extended80 x);
KWE_API extended80 KWE_CALL KWE_Tan(extended80 x);
KWE_API extended80 KWE_CALL KWE_Exp(extended80 x);

#endif
