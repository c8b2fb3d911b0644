/* The Font Manager. Macintosh font numbers stand for installed Windows
   faces through the font map, kwefont.map beside the application (written
   with the built-in map when there is none):
     macName(number):face1,face2,face3(FamilyWord)
   Fonts are Windows' own, so every size is real and no font is an outline
   font to the application. */
#ifndef KWE_FONTS_H
#define KWE_FONTS_H

#include "Quickdraw.h"

/* Font numbers of the built-in map. */
enum {
  systemFont = 0,
  applFont = 1,
  newYork = 2,
  geneva = 3,
  monaco = 4,
  venice = 5,
  london = 6,
  athens = 7,
  sanFran = 8,
  toronto = 9,
  cairo = 11,
  losAngeles = 12,
  times = 20,
  helvetica = 21,
  courier = 22,
  symbol = 23,
  mobile = 24
};

/* Published 32-bit layouts; the 64-bit build widens the handles in place. */
#pragma pack(push, 2)
typedef struct FMInput {
  SInt16 family;
  SInt16 size;
  Style face;
  Boolean needBits;
  SInt16 device;
  Point numer;
  Point denom;
} FMInput;

typedef struct FMOutput {
  SInt16 errNum;
  Handle fontHandle;
  UInt8 boldPixels;
  UInt8 italicPixels;
  UInt8 ulOffset;
  UInt8 ulShadow;
  UInt8 ulThick;
  UInt8 shadowPixels;
  SInt8 extra;
  UInt8 ascent;
  UInt8 descent;
  UInt8 widMax;
  SInt8 leading;
  SInt8 curStyle;
  Point numer;
  Point denom;
} FMOutput, *FMOutPtr;

typedef struct FMetricRec {
  Fixed ascent;
  Fixed descent;
  Fixed leading;
  Fixed widMax;
  Handle wTabHandle;
} FMetricRec, *FMetricRecPtr;

typedef struct WidthTable {
  Fixed tabData[256]; /* each Macintosh character's width */
  Handle tabFont;
  SInt32 sExtra;
  SInt32 style;
  SInt16 fID;
  SInt16 fSize;
  SInt16 face;
  SInt16 device;
  Point inNumer;
  Point inDenom;
  SInt16 aFID;
  Handle fHand;
  Boolean usedFam;
  UInt8 aFace;
  SInt16 vOutput;
  SInt16 hOutput;
  SInt16 vFactor;
  SInt16 hFactor;
  SInt16 aSize;
  SInt16 tabSize;
} WidthTable, *WidthTablePtr, **WidthTableHdl;
#pragma pack(pop)

/* Makes the width table (also the application's WidthTabHandle global). */
KWE_API void KWE_CALL InitFonts(void);
/* The Windows face a number stands for; empty when none is installed. */
KWE_API void KWE_CALL GetFontName(SInt16 familyID, Str255 name);
/* An installed face's name or the map's Macintosh name, without regard to
   case; 0 for a name neither knows. */
KWE_API void KWE_CALL GetFNum(ConstStr255Param name, SInt16* familyID);
/* Always true: Windows makes every size. */
KWE_API Boolean KWE_CALL RealFont(SInt16 fontNum, SInt16 size);
/* Fills ascent, descent, widMax and leading of one static record; null when
   no port could be opened to measure in. */
KWE_API FMOutPtr KWE_CALL FMSwapFont(const FMInput* inRec);
/* The current port's font; the widths go to the width table. */
KWE_API void KWE_CALL FontMetrics(FMetricRecPtr theMetrics);
KWE_API void KWE_CALL SetFractEnable(Boolean fractEnable);
/* Always false. */
KWE_API Boolean KWE_CALL IsOutline(Point numer, Point denom);
/* Always 0. */
KWE_API SInt16 KWE_CALL FTChoose(void);

/* Lists the installed faces again when the default printer has changed
   since the last time, or always with force. */
KWE_API void KWE_CALL KWE_UpdateFontList(Boolean force);
/* In DBCS mode the number of the Japanese system face, else 0. */
KWE_API SInt16 KWE_CALL KWE_GetIntlSystemFont(void);
/* With on, the current port's text is measured from widths (256 Fixed
   widths of the Macintosh characters; null: the width table FontMetrics
   fills) plus extra pixels, and drawn with each character's own width. */
KWE_API void KWE_CALL KWE_ExtDrawText(Boolean on, Fixed* widths, SInt32 extra);

#endif
