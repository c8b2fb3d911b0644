/* Basic Toolbox types. Records use the 68K two-byte packing so that their
   published layouts (EventRecord is 16 bytes, AppFile's fType sits at 2) hold. */
#ifndef KWE_MACTYPES_H
#define KWE_MACTYPES_H

#include <stdint.h>

#include "KWEConfig.h"

typedef int8_t SInt8;
typedef uint8_t UInt8;
typedef int16_t SInt16;
typedef uint16_t UInt16;
#if defined(_WIN32) && !defined(__cplusplus)
/* Macintosh C sources declare their 32-bit values long, as the Toolbox's
   own SInt32 was, and pass &count where a call takes SInt32*. long is 32
   bits on Windows, so C sees the same type; C++, which would tell int and
   long apart in overloads, keeps the fixed-width one. */
typedef long SInt32;
typedef unsigned long UInt32;
#else
typedef int32_t SInt32;
typedef uint32_t UInt32;
#endif

typedef unsigned char Boolean;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef UInt32 OSType;
typedef UInt32 ResType;
typedef SInt32 Fixed;
typedef SInt32 Fract;
typedef SInt16 Integer;
typedef SInt32 LongInt;

typedef char* Ptr;
typedef Ptr* Handle;
typedef SInt32 Size;
typedef void (*ProcPtr)(void);
typedef ProcPtr UniversalProcPtr;

typedef unsigned char Str255[256];
typedef unsigned char Str63[64];
typedef unsigned char Str31[32];
typedef unsigned char Str15[16];
typedef unsigned char* StringPtr;
typedef StringPtr* StringHandle;
typedef const unsigned char* ConstStr255Param;
typedef const unsigned char* ConstStr63Param;
typedef const unsigned char* ConstStr31Param;

#ifndef __cplusplus
#ifndef true
#define true 1
#define false 0
#endif
#endif

enum {
  noErr = 0,
  paramErr = -50,
  memFullErr = -108,
  nilHandleErr = -109,
  memWZErr = -111,
  memPurErr = -112,
  resNotFound = -192,
  resFNotFound = -193,
  mapReadErr = -199,
  fnfErr = -43,
  eofErr = -39,
  nmTypErr = -299,
  gestaltUndefSelectorErr = -5550,
  procNotFound = -600,
  errAEHandlerNotFound = -1717,
  errAENotAEDesc = -1701
};

#pragma pack(push, 2)

typedef struct Point {
  SInt16 v;
  SInt16 h;
} Point;

typedef struct Rect {
  SInt16 top;
  SInt16 left;
  SInt16 bottom;
  SInt16 right;
} Rect;

typedef struct RGBColor {
  UInt16 red;
  UInt16 green;
  UInt16 blue;
} RGBColor;

typedef struct Pattern {
  UInt8 pat[8];
} Pattern;

typedef SInt16 Bits16[16];

typedef struct Cursor {
  Bits16 data;
  Bits16 mask;
  Point hotSpot;
} Cursor;

typedef struct BitMap {
  Ptr baseAddr;
  SInt16 rowBytes;
  Rect bounds;
} BitMap;

typedef struct QElem {
  struct QElem* qLink;
  SInt16 qType;
  SInt16 qData[1];
} QElem, *QElemPtr;

typedef struct QHdr {
  SInt16 qFlags;
  QElemPtr qHead;
  QElemPtr qTail;
} QHdr, *QHdrPtr;

typedef struct ScrapStuff {
  SInt32 scrapSize;
  Handle scrapHandle;
  SInt16 scrapCount;
  SInt16 scrapState;
  StringPtr scrapName;
} ScrapStuff, *PScrapStuff;

#pragma pack(pop)

/* Records owned by later managers; only pointers to them pass through here. */
typedef struct GrafPort GrafPort, *GrafPtr;
typedef GrafPtr WindowPtr;
typedef struct WindowRecord* WindowPeek;
typedef struct GDevice** GDHandle;
typedef struct PixMap** PixMapHandle;
typedef struct ColorTable** CTabHandle;
typedef struct MacRegion** RgnHandle;
typedef struct Zone* THz;
typedef struct MenuInfo** MenuHandle;
typedef struct ControlRecord** ControlHandle;
typedef struct Picture** PicHandle;
typedef GrafPtr DialogPtr;

/* The language of the classic interfaces. A procedure marked pascal is
   called by the library with its callee-pops convention, the one windows.h
   also names pascal; x86_64 has only one convention, so there it is
   nothing. nil is the null pointer of Macintosh sources. A Windows-side
   source that uses these words as its own names defines
   KWE_NO_CLASSIC_LANGUAGE (and does without qd too). */
#ifndef KWE_NO_CLASSIC_LANGUAGE
#ifndef pascal
#ifdef _WIN32
#define pascal __stdcall
#else
#define pascal
#endif
#endif
#ifndef nil
#define nil 0
#endif
#endif

typedef UInt8 Byte;
typedef SInt8 SignedByte;
typedef UInt8 Str32[33];
typedef UInt8 Str27[28];

#include "MixedMode.h"

#endif
