// What the standard drawing procedures call while a picture is open on the
// current port: each writes the port state that changed since the last
// opcode, then its own opcode. Nothing is written while a region or a
// polygon is being recorded (the shape goes into them instead).
#pragma once
#include "Quickdraw.h"

namespace kwe::pictures {

// True when the current port records into a picture now.
bool Recording(GrafPtr port);

void RecordLine(GrafPtr port, Point from, Point to);
// verb: frame 0, paint 1, erase 2, invert 3, fill 4.
void RecordRect(GrafPtr port, int verb, const Rect& r);
void RecordRoundRect(GrafPtr port, int verb, const Rect& r, SInt16 ovalWidth, SInt16 ovalHeight);
void RecordOval(GrafPtr port, int verb, const Rect& r);
void RecordArc(GrafPtr port, int verb, const Rect& r, SInt16 start, SInt16 arc);
void RecordPoly(GrafPtr port, int verb, PolyHandle poly);
void RecordRgn(GrafPtr port, int verb, RgnHandle rgn);
void RecordText(GrafPtr port, const UInt8* text, int count);
void RecordComment(GrafPtr port, SInt16 kind, SInt16 size, Handle data);
// 1-bit memory bitmaps copied into the port, as PackBitsRect.
void RecordBits(GrafPtr port, const BitMap* src, const Rect& srcRect, const Rect& dstRect,
                SInt16 mode);

}  // namespace kwe::pictures
