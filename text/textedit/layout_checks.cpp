// The published layouts of TERec and the style records, which applications
// read field by field. Checked where pointers are 32 bits wide; the 64-bit
// build widens the handle, pointer and procedure fields in place.
#include <cstdint>

#include "TextEdit.h"
#include "frame/layout_check.h"

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(TERec) == 98, "TERec: 96 bytes and one line start");
KWE_FIELD(TERec, destRect, 0);
KWE_FIELD(TERec, viewRect, 8);
KWE_FIELD(TERec, selRect, 16);
KWE_FIELD(TERec, lineHeight, 24);
KWE_FIELD(TERec, fontAscent, 26);
KWE_FIELD(TERec, selPoint, 28);
KWE_FIELD(TERec, selStart, 32);
KWE_FIELD(TERec, selEnd, 34);
KWE_FIELD(TERec, active, 36);
KWE_FIELD(TERec, wordBreak, 38);
KWE_FIELD(TERec, clikLoop, 42);
KWE_FIELD(TERec, clickTime, 46);
KWE_FIELD(TERec, clickLoc, 50);
KWE_FIELD(TERec, caretTime, 52);
KWE_FIELD(TERec, caretState, 56);
KWE_FIELD(TERec, just, 58);
KWE_FIELD(TERec, teLength, 60);
KWE_FIELD(TERec, hText, 62);
KWE_FIELD(TERec, hDispText, 66);
KWE_FIELD(TERec, clikStuff, 70);
KWE_FIELD(TERec, crOnly, 72);
KWE_FIELD(TERec, txFont, 74);
KWE_FIELD(TERec, txFace, 76);
KWE_FIELD(TERec, styleHandle, 74);
KWE_FIELD(TERec, txMode, 78);
KWE_FIELD(TERec, txSize, 80);
KWE_FIELD(TERec, inPort, 82);
KWE_FIELD(TERec, highHook, 86);
KWE_FIELD(TERec, caretHook, 90);
KWE_FIELD(TERec, nLines, 94);
KWE_FIELD(TERec, lineStarts, 96);
KWE_FIELD(TEStyleRec, nRuns, 0);
KWE_FIELD(TEStyleRec, nStyles, 2);
KWE_FIELD(TEStyleRec, styleTab, 4);
KWE_FIELD(TEStyleRec, lhTab, 8);
KWE_FIELD(TEStyleRec, teRefCon, 12);
KWE_FIELD(TEStyleRec, nullStyle, 16);
KWE_FIELD(TEStyleRec, runs, 20);
static_assert(sizeof(NullStRec) == 8, "NullStRec");
#endif
static_assert(sizeof(STElement) == 18, "STElement");
static_assert(sizeof(ScrpSTElement) == 20, "ScrpSTElement");
static_assert(sizeof(TextStyle) == 12, "TextStyle");
