/* The style records of styled TextEdit records: the style table, the runs
   that point into it, the line heights, and the style scrap in which styles
   travel between records and the scrap. Plain data, shared with the
   library's portable run-table code. */
#ifndef KWE_TEXTEDIT_STYLES_H
#define KWE_TEXTEDIT_STYLES_H

#include "MacTypes.h"

/* TESetStyle, TEReplaceStyle and TEContinuousStyle modes. */
enum { doFont = 1, doFace = 2, doSize = 4, doColor = 8, doAll = 15, addSize = 16, doToggle = 32 };

#pragma pack(push, 2)
typedef struct TextStyle {
  SInt16 tsFont;
  UInt8 tsFace;
  UInt8 filler;
  SInt16 tsSize;
  RGBColor tsColor;
} TextStyle, *TextStylePtr;

typedef struct STElement {
  SInt16 stCount;
  SInt16 stHeight;
  SInt16 stAscent;
  SInt16 stFont;
  UInt8 stFace;
  UInt8 filler;
  SInt16 stSize;
  RGBColor stColor;
} STElement, *STPtr, **STHandle;

typedef struct StyleRun {
  SInt16 startChar;
  SInt16 styleIndex;
} StyleRun;

typedef struct ScrpSTElement {
  SInt32 scrpStartChar;
  SInt16 scrpHeight;
  SInt16 scrpAscent;
  SInt16 scrpFont;
  UInt8 scrpFace;
  UInt8 filler;
  SInt16 scrpSize;
  RGBColor scrpColor;
} ScrpSTElement;

typedef struct StScrpRec {
  SInt16 scrpNStyles;
  ScrpSTElement scrpStyleTab[1];
} StScrpRec, *StScrpPtr, **StScrpHandle;

typedef struct NullStRec {
  SInt32 teReserved;
  StScrpHandle nullScrap;
} NullStRec, *NullStPtr, **NullStHandle;

typedef struct LHElement {
  SInt16 lhHeight;
  SInt16 lhAscent;
} LHElement, *LHPtr, **LHHandle;

typedef struct TEStyleRec {
  SInt16 nRuns;
  SInt16 nStyles;
  STHandle styleTab;
  LHHandle lhTab;
  SInt32 teRefCon;
  NullStHandle nullStyle;
  StyleRun runs[1]; /* nRuns entries; the last is the end marker */
} TEStyleRec, *TEStylePtr, **TEStyleHandle;
#pragma pack(pop)

#endif
