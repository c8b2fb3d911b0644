/* QuickDraw: ports, the pen and lines, colours, regions. Shapes, text and
   pictures join them as they are built. */
#ifndef KWE_QUICKDRAW_H
#define KWE_QUICKDRAW_H

#include "MacTypes.h"

/* The fields of a region applications may read. The library keeps its own
   fields behind them (the shape is not the Macintosh scan-line encoding), so
   a region is only ever made by NewRgn and changed through the calls below. */
#pragma pack(push, 2)
struct MacRegion {
  SInt16 rgnSize;
  Rect rgnBBox;
};
#pragma pack(pop)
typedef struct MacRegion MacRegion, *RgnPtr;

/* --- Ports and the records they use. Published 32-bit layouts; the 64-bit
   build widens the pointer fields in place. --- */
#pragma pack(push, 2)
typedef struct PixMap {
  Ptr baseAddr;
  SInt16 rowBytes;
  Rect bounds;
  SInt16 pmVersion;
  SInt16 packType;
  SInt32 packSize;
  Fixed hRes;
  Fixed vRes;
  SInt16 pixelType;
  SInt16 pixelSize;
  SInt16 cmpCount;
  SInt16 cmpSize;
  SInt32 planeBytes;
  CTabHandle pmTable;
  SInt32 pmReserved;
} PixMap, *PixMapPtr;

typedef struct PixPat {
  SInt16 patType; /* 0 old-style pattern, 1 pixel map, 2 RGB */
  PixMapHandle patMap;
  Handle patData;
  Handle patXData;
  SInt16 patXValid;
  Handle patXMap;
  Pattern pat1Data;
} PixPat, *PixPatPtr, **PixPatHandle;

/* GDI has a function named Polygon: C++ and C with windows.h name the record
   "struct Polygon". */
struct Polygon {
  SInt16 polySize;
  Rect polyBBox;
  Point polyPoints[1];
};
#if !defined(__cplusplus) && !defined(_WINDOWS_) && !defined(_WINDOWS_H)
typedef struct Polygon Polygon;
#endif
typedef struct Polygon *PolyPtr, **PolyHandle;

typedef struct QDProcs {
  ProcPtr textProc;
  ProcPtr lineProc;
  ProcPtr rectProc;
  ProcPtr rRectProc;
  ProcPtr ovalProc;
  ProcPtr arcProc;
  ProcPtr polyProc;
  ProcPtr rgnProc;
  ProcPtr bitsProc;
  ProcPtr commentProc;
  ProcPtr txMeasProc;
  ProcPtr getPicProc;
  ProcPtr putPicProc;
} QDProcs, *QDProcsPtr;

typedef struct CQDProcs {
  ProcPtr textProc;
  ProcPtr lineProc;
  ProcPtr rectProc;
  ProcPtr rRectProc;
  ProcPtr ovalProc;
  ProcPtr arcProc;
  ProcPtr polyProc;
  ProcPtr rgnProc;
  ProcPtr bitsProc;
  ProcPtr commentProc;
  ProcPtr txMeasProc;
  ProcPtr getPicProc;
  ProcPtr putPicProc;
  ProcPtr opcodeProc;
  ProcPtr newProc1;
  ProcPtr newProc2;
  ProcPtr newProc3;
  ProcPtr newProc4;
  ProcPtr newProc5;
  ProcPtr newProc6;
} CQDProcs, *CQDProcsPtr;

/* A CGrafPtr is read through a GrafPtr wherever the two records agree (from
   portRect on, except the patterns). 64-bit pointers widen CGrafPort's
   pixel-pattern fields more than GrafPort's patterns, so the 64-bit build
   pads GrafPort to keep the shared fields at the same offsets. */
#if UINTPTR_MAX != 0xFFFFFFFFu
#define KWE_PORT_WIDENING(name, bytes) UInt8 name[bytes];
#else
#define KWE_PORT_WIDENING(name, bytes)
#endif

struct GrafPort {
  SInt16 device;
  BitMap portBits; /* baseAddr: 0x8000 + the port's slot, not an address */
  KWE_PORT_WIDENING(widenedHeader, 4)
  Rect portRect;
  RgnHandle visRgn;
  RgnHandle clipRgn;
  Pattern bkPat;
  Pattern fillPat;
  KWE_PORT_WIDENING(widenedPatterns, 4)
  Point pnLoc;
  Point pnSize;
  SInt16 pnMode;
  Pattern pnPat;
  KWE_PORT_WIDENING(widenedPenPattern, 8)
  SInt16 pnVis;
  SInt16 txFont;
  UInt8 txFace;
  UInt8 filler;
  SInt16 txMode;
  SInt16 txSize;
  Fixed spExtra;
  SInt32 fgColor;
  SInt32 bkColor;
  SInt16 colrBit;
  SInt16 patStretch; /* the port's slot in the library's table, -1 for none */
  Handle picSave;
  Handle rgnSave;
  Handle polySave;
  QDProcsPtr grafProcs;
};

typedef struct CGrafPort {
  SInt16 device;
  PixMapHandle portPixMap;
  SInt16 portVersion; /* negative: a colour port */
  Handle grafVars;
  SInt16 chExtra;
  SInt16 pnLocHFrac;
  Rect portRect;
  RgnHandle visRgn;
  RgnHandle clipRgn;
  PixPatHandle bkPixPat;
  RGBColor rgbFgColor;
  RGBColor rgbBkColor;
  Point pnLoc;
  Point pnSize;
  SInt16 pnMode;
  PixPatHandle pnPixPat;
  PixPatHandle fillPixPat;
  SInt16 pnVis;
  SInt16 txFont;
  UInt8 txFace;
  UInt8 filler;
  SInt16 txMode;
  SInt16 txSize;
  Fixed spExtra;
  SInt32 fgColor;
  SInt32 bkColor;
  SInt16 colrBit;
  SInt16 patStretch;
  Handle picSave;
  Handle rgnSave;
  Handle polySave;
  CQDProcsPtr grafProcs;
} CGrafPort, *CGrafPtr;

typedef struct GrafVars {
  RGBColor rgbOpColor;
  RGBColor rgbHiliteColor;
  Handle pmFgColor;
  SInt16 pmFgIndex;
  Handle pmBkColor;
  SInt16 pmBkIndex;
  SInt16 pmFlags;
} GrafVars;

typedef struct PenState {
  Point pnLoc;
  Point pnSize;
  SInt16 pnMode; /* bit 15: pnPat holds a PixPatHandle */
  Pattern pnPat;
} PenState;

typedef struct GDevice {
  SInt16 gdRefNum;
  SInt16 gdID;
  SInt16 gdType;
  Handle gdITable;
  SInt16 gdResPref;
  ProcPtr gdSearchProc;
  ProcPtr gdCompProc;
  SInt16 gdFlags;
  PixMapHandle gdPMap;
  SInt32 gdRefCon;
  GDHandle gdNextGD;
  Rect gdRect;
  SInt32 gdMode;
  SInt16 gdCCBytes;
  SInt16 gdCCDepth;
  Handle gdCCXData;
  Handle gdCCXMask;
  SInt32 gdReserved;
} GDevice, *GDPtr;
#pragma pack(pop)

/* Transfer modes. */
enum {
  srcCopy = 0,
  srcOr = 1,
  srcXor = 2,
  srcBic = 3,
  notSrcCopy = 4,
  notSrcOr = 5,
  notSrcXor = 6,
  notSrcBic = 7,
  patCopy = 8,
  patOr = 9,
  patXor = 10,
  patBic = 11,
  notPatCopy = 12,
  notPatOr = 13,
  notPatXor = 14,
  notPatBic = 15,
  blend = 32,
  addPin = 33,
  addOver = 34,
  subPin = 35,
  transparent = 36,
  addMax = 37,
  subOver = 38,
  adMin = 39,
  grayishTextOr = 49,
  hilite = 50
};

/* Old-style colour constants. */
enum {
  blackColor = 33,
  whiteColor = 30,
  redColor = 205,
  greenColor = 341,
  blueColor = 409,
  cyanColor = 273,
  magentaColor = 137,
  yellowColor = 69
};

/* --- Start-up and ports. ---
   The print spooler's header names its own SetPort as a macro; the Toolbox
   call takes the name back. */
#ifdef SetPort
#undef SetPort
#endif
KWE_API void KWE_CALL InitGraf(GrafPtr* thePortVar);
KWE_API void KWE_CALL InitPort(GrafPtr port);
KWE_API void KWE_CALL InitCPort(CGrafPtr port);
KWE_API void KWE_CALL OpenPort(GrafPtr port);
KWE_API void KWE_CALL OpenCPort(CGrafPtr port);
KWE_API void KWE_CALL ClosePort(GrafPtr port);
KWE_API void KWE_CALL CloseCPort(CGrafPtr port);
KWE_API void KWE_CALL SetPort(GrafPtr port);
KWE_API void KWE_CALL GetPort(GrafPtr* port);
KWE_API SInt16 KWE_CALL QDError(void);

/* --- Port geometry. --- */
KWE_API void KWE_CALL SetOrigin(SInt16 h, SInt16 v);
KWE_API void KWE_CALL PortSize(SInt16 width, SInt16 height);
KWE_API void KWE_CALL MovePortTo(SInt16 leftGlobal, SInt16 topGlobal);
/* Both answer whether the port can draw into the new bits: false for bits
   in memory that are not drawable (null, odd or short rows, empty bounds) or
   when 32 ports already draw into application memory. */
KWE_API Boolean KWE_CALL SetPortBits(const BitMap* bm);
KWE_API Boolean KWE_CALL SetPortPix(PixMapHandle pm);
KWE_API void KWE_CALL ClipRect(const Rect* r);
KWE_API void KWE_CALL SetClip(RgnHandle rgn);
KWE_API void KWE_CALL GetClip(RgnHandle rgn);

/* --- Coordinates and points. --- */
KWE_API void KWE_CALL LocalToGlobal(Point* pt);
KWE_API void KWE_CALL GlobalToLocal(Point* pt);
/* Against the host's main window's client area rather than the screen. */
KWE_API void KWE_CALL KWE_LocalToScreen(Point* pt);
KWE_API void KWE_CALL KWE_ScreenToLocal(Point* pt);
KWE_API void KWE_CALL AddPt(Point src, Point* dst);
KWE_API void KWE_CALL SubPt(Point src, Point* dst);
KWE_API void KWE_CALL SetPt(Point* pt, SInt16 h, SInt16 v);
KWE_API Boolean KWE_CALL EqualPt(Point pt1, Point pt2);
KWE_API void KWE_CALL Pt2Rect(Point pt1, Point pt2, Rect* dstRect);
/* --- Rectangle calculations. An empty result is (0, 0, 0, 0); the bottom
   and right edges lie outside. SetRect, OffsetRect, InsetRect, UnionRect,
   PtInRect and EqualRect are exported shortened (Win32 has the same names). */
KWE_API void KWE_CALL SetRec(Rect* r, SInt16 left, SInt16 top, SInt16 right, SInt16 bottom);
KWE_API void KWE_CALL OffsetRec(Rect* r, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL InsetRec(Rect* r, SInt16 dh, SInt16 dv);
KWE_API Boolean KWE_CALL SectRect(const Rect* src1, const Rect* src2, Rect* dstRect);
KWE_API void KWE_CALL UnionRec(const Rect* src1, const Rect* src2, Rect* dstRect);
KWE_API Boolean KWE_CALL PtInRec(Point pt, const Rect* r);
KWE_API Boolean KWE_CALL EqualRec(const Rect* rect1, const Rect* rect2);
KWE_API Boolean KWE_CALL EmptyRect(const Rect* r);
KWE_API void KWE_CALL ScalePt(Point* pt, const Rect* srcRect, const Rect* dstRect);
KWE_API void KWE_CALL MapPoly(PolyHandle poly, const Rect* srcRect, const Rect* dstRect);

/* --- The pen and lines. MoveTo and LineTo are exported shortened (Win32
   has a LineTo of its own). --- */
KWE_API void KWE_CALL PenSize(SInt16 width, SInt16 height);
KWE_API void KWE_CALL PenMode(SInt16 mode);
KWE_API void KWE_CALL PenPat(const Pattern* pat);
KWE_API void KWE_CALL PenPixPat(PixPatHandle pp);
KWE_API void KWE_CALL PenNormal(void);
KWE_API void KWE_CALL HidePen(void);
KWE_API void KWE_CALL ShowPen(void);
KWE_API void KWE_CALL GetPen(Point* pt);
KWE_API void KWE_CALL GetPenState(PenState* pnState);
KWE_API void KWE_CALL SetPenState(const PenState* pnState);
KWE_API void KWE_CALL MoveT(SInt16 h, SInt16 v);
KWE_API void KWE_CALL Move(SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL LineT(SInt16 h, SInt16 v);
KWE_API void KWE_CALL Line(SInt16 dh, SInt16 dv);
/* Moves the pen by Fixed amounts, the fraction kept in device units; with
   usePen false the device pen is put back at 0,0. */
KWE_API void KWE_CALL KWE_MoveFixedAmount(Boolean usePen, Fixed dh, Fixed dv);
/* Horizontal and vertical lines on the printer as filled rectangles. */
KWE_API void KWE_CALL KWE_UseRectForLine(Boolean useRect);
KWE_API void KWE_CALL StdLine(Point newPt);

/* --- Colour. GetPixel is exported shortened. --- */
KWE_API void KWE_CALL ForeColor(SInt32 color);
KWE_API void KWE_CALL BackColor(SInt32 color);
KWE_API void KWE_CALL RGBForeColor(const RGBColor* color);
KWE_API void KWE_CALL RGBBackColor(const RGBColor* color);
KWE_API void KWE_CALL GetForeColor(RGBColor* color);
KWE_API void KWE_CALL GetBackColor(RGBColor* color);
KWE_API void KWE_CALL OpColor(const RGBColor* color);
KWE_API void KWE_CALL HiliteColor(const RGBColor* color);
KWE_API void KWE_CALL InvertColor(RGBColor* color);
KWE_API void KWE_CALL GetCPixel(SInt16 h, SInt16 v, RGBColor* cPix);
KWE_API Boolean KWE_CALL GetPixe(SInt16 h, SInt16 v);
KWE_API SInt32 KWE_CALL GetCTSeed(void);

/* --- Bottleneck procedures: the standard ones, which an application's
   procedures may call, and the calls that fill procedure records. --- */
typedef struct FontInfo {
  SInt16 ascent;
  SInt16 descent;
  SInt16 widMax;
  SInt16 leading;
} FontInfo;
KWE_API void KWE_CALL StdText(SInt16 count, const void* textAddr, Point numer, Point denom);
KWE_API void KWE_CALL StdRect(SInt16 verb, const Rect* r);
KWE_API void KWE_CALL StdRRect(SInt16 verb, const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight);
KWE_API void KWE_CALL StdOval(SInt16 verb, const Rect* r);
KWE_API void KWE_CALL StdArc(SInt16 verb, const Rect* r, SInt16 startAngle, SInt16 arcAngle);
KWE_API void KWE_CALL StdPoly(SInt16 verb, PolyHandle poly);
KWE_API void KWE_CALL StdRgn(SInt16 verb, RgnHandle rgn);
KWE_API void KWE_CALL StdBits(const BitMap* srcBits, const Rect* srcRect, const Rect* dstRect,
                              SInt16 mode, RgnHandle maskRgn);
KWE_API void KWE_CALL StdComment(SInt16 kind, SInt16 dataSize, Handle dataHandle);
KWE_API SInt16 KWE_CALL StdTxMeas(SInt16 byteCount, const void* textAddr, Point* numer,
                                  Point* denom, FontInfo* info);
KWE_API void KWE_CALL StdGetPic(void* dataPtr, SInt16 byteCount);
KWE_API void KWE_CALL StdPutPic(const void* dataPtr, SInt16 byteCount);
KWE_API void KWE_CALL SetStdProcs(QDProcs* procs);
KWE_API void KWE_CALL SetStdCProcs(CQDProcs* procs);
/* Wraps (true) or releases (false) the application's procedures in the
   current port's record through the host's make and free procedures. */
KWE_API void KWE_CALL KWE_StdProcFix(Boolean wrap);

/* --- Shapes in the five verbs: frame (with the pen), paint (pen pattern
   and mode), erase (background pattern), invert, fill (a given pattern).
   Names Win32 also has are exported shortened. --- */
KWE_API void KWE_CALL FrameRec(const Rect* r);
KWE_API void KWE_CALL PaintRect(const Rect* r);
KWE_API void KWE_CALL EraseRect(const Rect* r);
KWE_API void KWE_CALL InvertRec(const Rect* r);
KWE_API void KWE_CALL FillRec(const Rect* r, const Pattern* pat);
KWE_API void KWE_CALL FillCRect(const Rect* r, PixPatHandle pp);
KWE_API void KWE_CALL FrameOval(const Rect* r);
KWE_API void KWE_CALL PaintOval(const Rect* r);
KWE_API void KWE_CALL EraseOval(const Rect* r);
KWE_API void KWE_CALL InvertOval(const Rect* r);
KWE_API void KWE_CALL FillOval(const Rect* r, const Pattern* pat);
KWE_API void KWE_CALL FrameRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight);
KWE_API void KWE_CALL PaintRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight);
KWE_API void KWE_CALL EraseRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight);
KWE_API void KWE_CALL InvertRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight);
KWE_API void KWE_CALL FillRoundRect(const Rect* r, SInt16 ovalWidth, SInt16 ovalHeight,
                                    const Pattern* pat);
/* Angles in degrees clockwise from 12 o'clock. */
KWE_API void KWE_CALL FrameArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle);
KWE_API void KWE_CALL PaintArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle);
KWE_API void KWE_CALL EraseArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle);
KWE_API void KWE_CALL InvertArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle);
KWE_API void KWE_CALL FillArc(const Rect* r, SInt16 startAngle, SInt16 arcAngle,
                              const Pattern* pat);
KWE_API void KWE_CALL PtToAngle(const Rect* r, Point pt, SInt16* angle);
KWE_API void KWE_CALL FramePoly(PolyHandle poly);
KWE_API void KWE_CALL PaintPoly(PolyHandle poly);
KWE_API void KWE_CALL ErasePoly(PolyHandle poly);
KWE_API void KWE_CALL InvertPoly(PolyHandle poly);
KWE_API void KWE_CALL FillPoly(PolyHandle poly, const Pattern* pat);
KWE_API void KWE_CALL OffsetPoly(PolyHandle poly, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL FrameRg(RgnHandle rgn);
KWE_API void KWE_CALL PaintRg(RgnHandle rgn);
KWE_API void KWE_CALL EraseRgn(RgnHandle rgn);
KWE_API void KWE_CALL InvertRg(RgnHandle rgn);
KWE_API void KWE_CALL FillRg(RgnHandle rgn, const Pattern* pat);

/* --- Patterns. --- */
KWE_API void KWE_CALL BackPat(const Pattern* pat);
KWE_API void KWE_CALL BackPixPat(PixPatHandle pp);
KWE_API void KWE_CALL MakeRGBPat(PixPatHandle pp, const RGBColor* rgb);

/* --- Region and polygon recording. --- */
KWE_API void KWE_CALL OpenRgn(void);
KWE_API void KWE_CALL CloseRgn(RgnHandle dstRgn);
KWE_API PolyHandle KWE_CALL OpenPoly(void);
KWE_API void KWE_CALL ClosePoly(void);
KWE_API void KWE_CALL KillPoly(PolyHandle poly);

KWE_API SInt16 KWE_CALL Random(void);

/* The cursor calls. */
#include "KWECursors.h"

/* --- Rectangle mapping. --- */
KWE_API void KWE_CALL MapPt(Point* pt, const Rect* srcRect, const Rect* dstRect);
KWE_API void KWE_CALL MapRect(Rect* r, const Rect* srcRect, const Rect* dstRect);

/* --- Regions. ---
   Seven region calls share their names with Win32's region calls and are
   exported shortened. C++ sees each Toolbox name as an overload beside
   Win32's (RgnHandle and HRGN never convert into each other); C gets a macro
   unless windows.h is already in (it would rename Win32's calls). */
KWE_API RgnHandle KWE_CALL NewRgn(void);
KWE_API void KWE_CALL DisposeRgn(RgnHandle rgn);
KWE_API void KWE_CALL CopyRg(RgnHandle srcRgn, RgnHandle dstRgn);
KWE_API void KWE_CALL SetEmptyRgn(RgnHandle rgn);
KWE_API void KWE_CALL SetRectRg(RgnHandle rgn, SInt16 left, SInt16 top, SInt16 right,
                                SInt16 bottom);
KWE_API void KWE_CALL RectRgn(RgnHandle rgn, const Rect* r);
KWE_API void KWE_CALL OffsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL InsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL MapRgn(RgnHandle rgn, const Rect* srcRect, const Rect* dstRect);
KWE_API void KWE_CALL SectRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL UnionRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL DiffRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL XorRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API Boolean KWE_CALL PtInRgn(Point pt, RgnHandle rgn);
KWE_API Boolean KWE_CALL RectInRgn(const Rect* r, RgnHandle rgn);
KWE_API Boolean KWE_CALL EqualRg(RgnHandle rgnA, RgnHandle rgnB);
KWE_API Boolean KWE_CALL EmptyRgn(RgnHandle rgn);
/* The black pixels of a 1-bit bitmap (or a 1-bit PixMap) as a region:
   pixMapTooDeepErr (-148) for a deeper PixMap, rgnTooBigErr (-152) when the
   region cannot be made (the region is then left as it was). */
KWE_API OSErr KWE_CALL BitMapToRegion(RgnHandle rgn, const BitMap* bits);
KWE_API OSErr KWE_CALL BitMapToRegionGlue(RgnHandle rgn, const BitMap* bits);

#ifdef __cplusplus
inline void MoveTo(SInt16 h, SInt16 v) { MoveT(h, v); }
inline void FrameRect(const Rect* r) { FrameRec(r); }
inline void InvertRect(const Rect* r) { InvertRec(r); }
inline void FillRect(const Rect* r, const Pattern* pat) { FillRec(r, pat); }
inline void FrameRgn(RgnHandle rgn) { FrameRg(rgn); }
inline void PaintRgn(RgnHandle rgn) { PaintRg(rgn); }
inline void InvertRgn(RgnHandle rgn) { InvertRg(rgn); }
inline void FillRgn(RgnHandle rgn, const Pattern* pat) { FillRg(rgn, pat); }
inline void LineTo(SInt16 h, SInt16 v) { LineT(h, v); }
inline Boolean GetPixel(SInt16 h, SInt16 v) { return GetPixe(h, v); }
inline void CopyRgn(RgnHandle srcRgn, RgnHandle dstRgn) { CopyRg(srcRgn, dstRgn); }
inline void SetRectRgn(RgnHandle rgn, SInt16 left, SInt16 top, SInt16 right, SInt16 bottom) {
  SetRectRg(rgn, left, top, right, bottom);
}
inline void OffsetRgn(RgnHandle rgn, SInt16 dh, SInt16 dv) { OffsetRg(rgn, dh, dv); }
inline void InsetRgn(RgnHandle rgn, SInt16 dh, SInt16 dv) { InsetRg(rgn, dh, dv); }
inline void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle dst) { UnionRg(a, b, dst); }
inline void XorRgn(RgnHandle a, RgnHandle b, RgnHandle dst) { XorRg(a, b, dst); }
inline Boolean EqualRgn(RgnHandle rgnA, RgnHandle rgnB) { return EqualRg(rgnA, rgnB); }
inline void SetRect(Rect* r, SInt16 left, SInt16 top, SInt16 right, SInt16 bottom) {
  SetRec(r, left, top, right, bottom);
}
inline void OffsetRect(Rect* r, SInt16 dh, SInt16 dv) { OffsetRec(r, dh, dv); }
inline void InsetRect(Rect* r, SInt16 dh, SInt16 dv) { InsetRec(r, dh, dv); }
inline void UnionRect(const Rect* a, const Rect* b, Rect* dst) { UnionRec(a, b, dst); }
inline Boolean PtInRect(Point pt, const Rect* r) { return PtInRec(pt, r); }
inline Boolean EqualRect(const Rect* a, const Rect* b) { return EqualRec(a, b); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define MoveTo MoveT
#define FrameRect FrameRec
#define InvertRect InvertRec
#define FillRect FillRec
#define FrameRgn FrameRg
#define PaintRgn PaintRg
#define InvertRgn InvertRg
#define FillRgn FillRg
#define LineTo LineT
#define GetPixel GetPixe
#define CopyRgn CopyRg
#define SetRectRgn SetRectRg
#define OffsetRgn OffsetRg
#define InsetRgn InsetRg
#define UnionRgn UnionRg
#define XorRgn XorRg
#define EqualRgn EqualRg
#define SetRect SetRec
#define OffsetRect OffsetRec
#define InsetRect InsetRec
#define UnionRect UnionRec
#define PtInRect PtInRec
#define EqualRect EqualRec
#endif

#include "QuickdrawColour.h"
#include "QuickdrawPictures.h"
#include "QuickdrawText.h"

/* The QuickDraw globals of the program, in the order the Macintosh kept
   them below A5 (thePort last, at the highest address). InitGraf is given
   &qd.thePort; the host shell binds the library's thePort, pattern, arrow
   and screenBits globals to these fields, so qd.gray and qd.screenBits
   read what InitGraf set. The shell defines qd unless the program does.
   randSeed is the program's own: Random keeps the library's seed. */
#pragma pack(push, 2)
typedef struct QDGlobals {
  char privates[76];
  SInt32 randSeed;
  BitMap screenBits;
  Cursor arrow;
  Pattern dkGray;
  Pattern ltGray;
  Pattern gray;
  Pattern black;
  Pattern white;
  GrafPtr thePort;
} QDGlobals, *QDGlobalsPtr;
#pragma pack(pop)

/* Not for Windows-side sources that keep their own name qd (MacTypes.h). */
#ifndef KWE_NO_CLASSIC_LANGUAGE
KWE_EXTERN_C QDGlobals qd;
#endif

/* A rectangle's corners as points (top and left are a Point's v and h). */
#define topLeft(r) (((Point*)&(r).top)[0])
#define botRight(r) (((Point*)&(r).top)[1])

/* The standard cursors of GetCursor. */
enum { iBeamCursor = 1, crossCursor = 2, plusCursor = 3, watchCursor = 4 };

#endif
