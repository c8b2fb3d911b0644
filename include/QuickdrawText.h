/* QuickDraw text: the port's font, face, mode and size, drawing Macintosh
   text at the pen and measuring it. Text is in the Macintosh character set
   and is converted for Windows (KWECharacters.h); the pen sits on the
   baseline and moves right by the text's width. Included by Quickdraw.h. */
#ifndef KWE_QUICKDRAW_TEXT_H
#define KWE_QUICKDRAW_TEXT_H

#include "Quickdraw.h"

/* txFace bits. Bold, italic and underline are Windows' own; extend draws
   struck out; outline, shadow and condense are not shown. */
typedef UInt8 Style;
enum {
  normal = 0,
  bold = 1,
  italic = 2,
  underline = 4,
  outline = 8,
  shadow = 0x10,
  condense = 0x20,
  extend = 0x40
};

/* Each sets its field of the current port; the port's font is made again
   at the next text drawn or measured only when the value changed.
   TextSize(0) means 12. */
KWE_API void KWE_CALL TextFont(SInt16 font);
KWE_API void KWE_CALL TextFace(SInt16 face);
KWE_API void KWE_CALL TextMode(SInt16 mode);
KWE_API void KWE_CALL TextSize(SInt16 size);
/* Spreads spExtra pixels over every space of the text drawn. */
KWE_API void KWE_CALL SpaceExtra(Fixed extra);

/* Through the port's textProc when it has one. DrawText is exported
   shortened (Win32 has a DrawText of its own). */
KWE_API void KWE_CALL DrawChar(SInt16 ch);
KWE_API void KWE_CALL DrawString(ConstStr255Param s);
KWE_API void KWE_CALL DrawTex(const void* textBuf, SInt16 firstByte, SInt16 byteCount);

/* Widths in the current port's font, through its txMeasProc when it has one. */
KWE_API SInt16 KWE_CALL CharWidth(SInt16 ch);
KWE_API SInt16 KWE_CALL StringWidth(ConstStr255Param s);
KWE_API SInt16 KWE_CALL TextWidth(const void* textBuf, SInt16 firstByte, SInt16 byteCount);
/* charLocs receives count + 1 positions: 0, then each one the last plus
   the width of the next character alone. */
KWE_API void KWE_CALL MeasureText(SInt16 count, const void* textAddr, SInt16* charLocs);
KWE_API void KWE_CALL GetFontInfo(FontInfo* info);

/* C++ sees DrawText as an overload beside Win32's, whether or not
   windows.h has made DrawText a macro for DrawTextA or DrawTextW; C gets a
   macro unless windows.h is already in. */
#ifdef __cplusplus
#pragma push_macro("DrawText")
#undef DrawText
inline void DrawText(const void* textBuf, SInt16 firstByte, SInt16 byteCount) {
  DrawTex(textBuf, firstByte, byteCount);
}
#pragma pop_macro("DrawText")
inline void DrawTextA(const void* textBuf, SInt16 firstByte, SInt16 byteCount) {
  DrawTex(textBuf, firstByte, byteCount);
}
inline void DrawTextW(const void* textBuf, SInt16 firstByte, SInt16 byteCount) {
  DrawTex(textBuf, firstByte, byteCount);
}
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define DrawText DrawTex
#endif

#endif
