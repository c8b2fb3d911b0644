// The recording state of each open picture: the last values written of
// everything the recorder writes only when it changed.
#pragma once
#include <cstddef>
#include <vector>

#include "Quickdraw.h"

namespace kwe::pictures {

struct RecordState {
  GrafPtr port = nullptr;
  Handle pic = nullptr;
  Handle outerPic = nullptr;  // the picture this one was opened inside
  SInt16 font = 0;
  UInt8 face = 0;
  SInt16 txMode = srcOr;
  SInt16 size = 0;
  Fixed spExtra = 0;
  Point pnSize{1, 1};
  SInt16 pnMode = patCopy;
  Pattern pnPat{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
  Pattern bkPat{};
  Pattern fillPat{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
  SInt32 fg = blackColor;
  SInt32 bk = whiteColor;
  RGBColor rgbFg{0, 0, 0};
  RGBColor rgbBk{0xFFFF, 0xFFFF, 0xFFFF};
  Point origin{0, 0};
  bool clipKnown = false;
  Rect clip{};
  bool penKnown = false;
  Point pen{0, 0};
  Point ovSize{0, 0};
  std::vector<SInt16> fonts;  // named by a FontName opcode already
};

// The innermost open picture of port, or null.
RecordState* StateOf(GrafPtr port);

// Hands count bytes to the current port's put procedure (the
// application's putPicProc, or StdPutPic), in pieces a 16-bit count holds.
void PutPictureBytes(const void* data, size_t count);

}  // namespace kwe::pictures
