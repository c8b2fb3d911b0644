/* Colour QuickDraw: colour tables, inverse tables and colour matching
   against the current device's table; CopyBits between bitmaps, pixel maps
   and ports. Included by Quickdraw.h. */
#ifndef KWE_QUICKDRAW_COLOUR_H
#define KWE_QUICKDRAW_COLOUR_H

#include "Quickdraw.h"

#pragma pack(push, 2)
typedef struct ColorSpec {
  SInt16 value; /* bit 14: colour matching skips the entry */
  RGBColor rgb;
} ColorSpec, *ColorSpecPtr;

typedef struct ColorTable {
  SInt32 ctSeed;
  SInt16 ctFlags; /* bit 15: a device's table */
  SInt16 ctSize;  /* entries - 1 */
  ColorSpec ctTable[1];
} ColorTable, *CTabPtr;

/* An inverse table: one colour-table index per colour of iTabRes bits a
   component (always 5 here), red in the top bits. */
typedef struct ITab {
  SInt32 iTabSeed;
  SInt16 iTabRes;
  UInt8 iTTable[1];
} ITab, *ITabPtr, **ITabHandle;
#pragma pack(pop)

/* A copy of 'clut' resource id, else the standard table id (1, 4, 8, 20 or
   40) built anew; null for any other id. */
KWE_API CTabHandle KWE_CALL GetCTable(SInt16 ctID);
KWE_API void KWE_CALL DisposeCTable(CTabHandle cTable);
/* Against the current device's colour table: the index of the nearest entry
   (through the device's inverse table while it was made for that table),
   the colour of an index (black past the end), whether a colour is in the
   table at the inverse table's resolution. */
KWE_API SInt32 KWE_CALL Color2Index(const RGBColor* myColor);
KWE_API void KWE_CALL Index2Color(SInt32 index, RGBColor* aColor);
KWE_API Boolean KWE_CALL RealColor(const RGBColor* color);
/* Sets each entry's value of myColors to the nearest index of targetTbl (the
   current device's table when null). */
KWE_API void KWE_CALL GetSubTable(CTabHandle myColors, SInt16 iTabRes, CTabHandle targetTbl);
/* Builds inverseTable for cTabH (null: the main device's table and the
   current device's inverse table) at resolution 5. */
KWE_API void KWE_CALL MakeITable(CTabHandle cTabH, ITabHandle inverseTable, SInt16 res);

/* Graphics devices. The library keeps one screen, the main device InitGraf
   makes; an application's own devices get a pixel map of the screen's
   depth with a standard colour table (256 colours for deeper screens) and
   an inverse table for it. DisposeGDevice leaves the main device alone. */
KWE_API GDHandle KWE_CALL NewGDevice(SInt16 refNum, SInt32 mode);
KWE_API void KWE_CALL InitGDevice(SInt16 qdRefNum, SInt32 mode, GDHandle gdh);
KWE_API void KWE_CALL DisposeGDevice(GDHandle gdh);
KWE_API GDHandle KWE_CALL GetGDevice(void);
KWE_API void KWE_CALL SetGDevice(GDHandle gdh);
KWE_API GDHandle KWE_CALL GetMainDevice(void);
KWE_API GDHandle KWE_CALL GetDeviceList(void);
KWE_API GDHandle KWE_CALL GetNextDevice(GDHandle curDevice);
KWE_API GDHandle KWE_CALL GetMaxDevice(const Rect* globalRect);
/* A device's search and complement procedures, newest first, in handles
   chained from gdSearchProc and gdCompProc. Color2Index asks the search
   procedures in turn before the device's table: the first to answer true
   gives the index in *position. InvertColor lets the newest complement
   procedure complement the colour. */
typedef Boolean(KWE_CALL* ColorSearchProcPtr)(RGBColor* rgb, SInt32* position);
typedef void(KWE_CALL* ColorComplementProcPtr)(RGBColor* rgb);
typedef struct SProcRec {
  Handle nxtSrch;
  ColorSearchProcPtr srchProc;
} SProcRec, *SProcPtr, **SProcHndl;
typedef struct CProcRec {
  Handle nxtComp;
  ColorComplementProcPtr compProc;
} CProcRec, *CProcPtr, **CProcHndl;
KWE_API void KWE_CALL AddSearch(ColorSearchProcPtr searchProc);
KWE_API void KWE_CALL DelSearch(ColorSearchProcPtr searchProc);
KWE_API void KWE_CALL AddComp(ColorComplementProcPtr compProc);
KWE_API void KWE_CALL DelComp(ColorComplementProcPtr compProc);
/* Calls drawingProc once, with the current device's depth, its gdFlags, the
   device and userData: the library has one screen. Nothing for a null
   procedure or an empty drawingRgn. */
typedef void(KWE_CALL* DeviceLoopDrawingProcPtr)(SInt16 depth, SInt16 deviceFlags,
                                                 GDHandle targetDevice, SInt32 userData);
KWE_API void KWE_CALL DeviceLoop(RgnHandle drawingRgn, DeviceLoopDrawingProcPtr drawingProc,
                                 SInt32 userData, SInt32 flags);
/* Bit attribute (0 to 15) of gdFlags. */
KWE_API Boolean KWE_CALL TestDeviceAttribute(GDHandle gdh, SInt16 attribute);
KWE_API void KWE_CALL SetDeviceAttribute(GDHandle gdh, SInt16 attribute, Boolean value);

/* Pixel maps. NewPixMap's has the current DC's depth, covers the screen,
   has no pixels (baseAddr 32767) and an empty colour table of its own;
   CopyPixMap copies the record and the colours into dstPM's own table. */
KWE_API PixMapHandle KWE_CALL NewPixMap(void);
KWE_API void KWE_CALL DisposePixMap(PixMapHandle pm);
KWE_API void KWE_CALL CopyPixMap(PixMapHandle srcPM, PixMapHandle dstPM);

/* Pixel patterns. NewPixPat's is a pixel-map pattern (patType 1) with a
   pixel map of its own and no pixels yet; GetPixPat loads 'ppat' patID
   (null when it is missing or its offsets point outside it); CopyPixPat
   copies the type, pixel map, pixels and colour into dstPP's handles. */
KWE_API PixPatHandle KWE_CALL NewPixPat(void);
KWE_API PixPatHandle KWE_CALL GetPixPat(SInt16 patID);
KWE_API void KWE_CALL DisposePixPat(PixPatHandle ppat);
KWE_API void KWE_CALL CopyPixPat(PixPatHandle srcPP, PixPatHandle dstPP);

/* Colour icons from 'cicn': the pixel map (its colour table a handle of
   its own, its pixels in iconData), the mask and 1-bit images one after
   the other in iconMaskData. PlotCIcon copies the pixels (the 1-bit image
   when there are none) into theRect of the current port through the mask;
   null for a missing or damaged resource. */
#pragma pack(push, 2)
typedef struct CIcon {
  PixMap iconPMap;
  BitMap iconMask;
  BitMap iconBMap;
  Handle iconData;
  SInt16 iconMaskData[1];
} CIcon, *CIconPtr, **CIconHandle;
#pragma pack(pop)
KWE_API CIconHandle KWE_CALL GetCIcon(SInt16 iconID);
KWE_API void KWE_CALL PlotCIcon(const Rect* theRect, CIconHandle theIcon);
KWE_API void KWE_CALL DisposeCIcon(CIconHandle theIcon);

/* Colour cursors: a copy of 'crsr' crsrID as the resource lays it out (its
   handle fields hold the resource's offsets, 32-bit; the 1-bit data, mask
   and hot spot at byte 20 are a Cursor). SetCCursor shows that 1-bit
   cursor. */
typedef struct CCrsr* CCrsrPtr;
typedef CCrsrPtr* CCrsrHandle;
KWE_API CCrsrHandle KWE_CALL GetCCursor(SInt16 crsrID);
KWE_API void KWE_CALL SetCCursor(CCrsrHandle cCrsr);
KWE_API void KWE_CALL DisposeCCursor(CCrsrHandle cCrsr);

/* The colour dialog, titled with prompt, starting from inColor: true with
   the colour chosen in *outColor, false when the user cancels. */
KWE_API Boolean KWE_CALL GetColor(Point where, ConstStr255Param prompt, const RGBColor* inColor,
                                  RGBColor* outColor);

/* Hue, saturation and value, each 0 to 65535 (a hue of 0 is red). */
typedef struct HSVColor {
  UInt16 hue;
  UInt16 saturation;
  UInt16 value;
} HSVColor;
KWE_API void KWE_CALL RGB2HSV(const RGBColor* rColor, HSVColor* hColor);
KWE_API void KWE_CALL HSV2RGB(const HSVColor* hColor, RGBColor* rColor);
/* The device's colour nearest the midpoint of the two, into foreGround;
   false, with foreGround unchanged, when the device has none between. */
KWE_API Boolean KWE_CALL GetGray(GDHandle device, const RGBColor* backGround, RGBColor* foreGround);

/* Palettes: the published records, each with a Windows logical palette of
   as many entries (a 256-entry palette reversed: entry i is Windows entry
   255 - i; pmAnimated entries are PC_RESERVED), written through at every
   change. NewPalette copies min(entries, the table's) colours with the
   usage and tolerance; Palette2CTab gives the table a new seed; CopyPalette
   grows the destination to hold what it copies. */
typedef struct ColorInfo {
  RGBColor ciRGB;
  SInt16 ciUsage;
  SInt16 ciTolerance;
  SInt16 ciDataFields[3];
} ColorInfo;

struct Palette {
  SInt16 pmEntries;
  SInt16 pmDataFields[7]; /* the seed of the table the colours came from */
  ColorInfo pmInfo[1];
};
typedef struct Palette Palette, *PalettePtr, **PaletteHandle;
KWE_API PaletteHandle KWE_CALL NewPalette(SInt16 entries, CTabHandle srcColors, SInt16 srcUsage,
                                          SInt16 srcTolerance);
KWE_API PaletteHandle KWE_CALL GetNewPalette(SInt16 paletteID);
KWE_API void KWE_CALL DisposePalette(PaletteHandle srcPalette);
KWE_API void KWE_CALL GetEntryColor(PaletteHandle srcPalette, SInt16 srcEntry, RGBColor* dstRGB);
KWE_API void KWE_CALL SetEntryColor(PaletteHandle dstPalette, SInt16 dstEntry,
                                    const RGBColor* srcRGB);
KWE_API void KWE_CALL GetEntryUsage(PaletteHandle srcPalette, SInt16 srcEntry, SInt16* dstUsage,
                                    SInt16* dstTolerance);
KWE_API void KWE_CALL SetEntryUsage(PaletteHandle dstPalette, SInt16 dstEntry, SInt16 srcUsage,
                                    SInt16 srcTolerance);
KWE_API void KWE_CALL CTab2Palette(CTabHandle srcCTab, PaletteHandle dstPalette, SInt16 srcUsage,
                                   SInt16 srcTolerance);
KWE_API void KWE_CALL Palette2CTab(PaletteHandle srcPalette, CTabHandle dstCTab);
KWE_API void KWE_CALL CopyPalette(PaletteHandle srcPalette, PaletteHandle dstPalette,
                                  SInt16 srcEntry, SInt16 dstEntry, SInt16 dstLength);

enum { pmCourteous = 0, pmDithered = 1, pmTolerant = 2, pmAnimated = 4, pmExplicit = 8 };
enum { cRangeErr = -150 };

/* A window's palette (the window (WindowPtr)-1 stands for the application's
   default palette). SetPalette keeps it in the Win32 window's palette long
   and, for a colour port, in grafVars; ActivatePalette makes it the active
   palette and realises it in the window's DC. PmForeColor and PmBackColor
   take entry i of the current port's palette. AnimateEntry and
   AnimatePalette change pmAnimated entries only; AnimatePalette is exported
   shortened (Win32 has a function of that name). */
KWE_API PaletteHandle KWE_CALL GetPalette(WindowPtr srcWindow);
KWE_API void KWE_CALL SetPalette(WindowPtr dstWindow, PaletteHandle srcPalette, Boolean cUpdates);
KWE_API void KWE_CALL ActivatePalette(WindowPtr srcWindow);
KWE_API void KWE_CALL PmForeColor(SInt16 dstEntry);
KWE_API void KWE_CALL PmBackColor(SInt16 dstEntry);
KWE_API void KWE_CALL AnimateEntry(WindowPtr dstWindow, SInt16 dstEntry, const RGBColor* srcRGB);
KWE_API void KWE_CALL AnimatePalett(WindowPtr dstWindow, CTabHandle srcCTab, SInt16 srcIndex,
                                    SInt16 dstEntry, SInt16 dstLength);
/* The current device's table, count + 1 specs from start (at each spec's
   value when start is -1), mirrored into the screen palette: PC_RESERVED
   but for black and white. cRangeErr for an index past 255. */
KWE_API void KWE_CALL SetEntries(SInt16 start, SInt16 count, const ColorSpec* aTable);
/* A reserved entry of the current device's table is one colour matching
   skips. */
KWE_API void KWE_CALL ReserveEntry(SInt16 index, Boolean reserve);
KWE_API void KWE_CALL SaveFore(ColorSpec* c);
KWE_API void KWE_CALL SaveBack(ColorSpec* c);
KWE_API void KWE_CALL RestoreFore(const ColorSpec* c);
KWE_API void KWE_CALL RestoreBack(const ColorSpec* c);

/* Copies srcRect of srcBits into dstRect of dstBits, scaled, through the
   transfer mode (srcCopy to notSrcBic, blend to adMin, + ditherCopy's 64)
   and, when maskRgn is not null, only where maskRgn is. Memory pixels,
   ports' pixels (baseAddr a port tag) and colour ports' pixel map handles
   may be on either side. An indexed pixel map without a colour table gets
   a diagnostic and no copy; bad pixels, paramErr or cDepthErr in QDError. */
KWE_API void KWE_CALL CopyBits(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                               const Rect* dstRect, SInt16 mode, RgnHandle maskRgn);

/* CopyBits through a mask picture: maskRect of maskBits is spread over
   dstRect, and only the pixels under its set pixels (1 bits, or pixel
   values other than 0 in a deeper mask) change. CopyMask copies in
   srcCopy; a mask without pixels lets none through. */
KWE_API void KWE_CALL CopyMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits,
                               const Rect* srcRect, const Rect* maskRect, const Rect* dstRect);
KWE_API void KWE_CALL CopyDeepMask(const BitMap* srcBits, const BitMap* maskBits,
                                   const BitMap* dstBits, const Rect* srcRect, const Rect* maskRect,
                                   const Rect* dstRect, SInt16 mode, RgnHandle maskRgn);

/* Moves the pixels of r in the current port by (dh, dv), within the part of
   r that is visible and not clipped; what they leave is erased with the
   background and returned in updateRgn (which may be null). The port's
   coordinates do not change. */
KWE_API void KWE_CALL ScrollRect(const Rect* r, SInt16 dh, SInt16 dv, RgnHandle updateRgn);

#ifdef __cplusplus
inline void AnimatePalette(WindowPtr w, CTabHandle ctab, SInt16 srcIndex, SInt16 dstEntry,
                           SInt16 dstLength) {
  AnimatePalett(w, ctab, srcIndex, dstEntry, dstLength);
}
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define AnimatePalette AnimatePalett
#endif

#endif
