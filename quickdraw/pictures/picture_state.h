// The recording state of each open picture: the last values written of
// everything the recorder writes only when it changed.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Quickdraw.h"

namespace kwe::pictures {

struct RecordState {
  GrafPtr port = nullptr;
  Handle pic = nullptr;
  Handle outerPic = nullptr;  // the picture this one was opened inside
  // The scrap picture of KWE_OpenScrapPict: pic holds a packed DIB, and the
  // opcodes go into a picture of their own, played into the DIB at the end.
  Handle opcodes = nullptr;
  Rect scrapRect{};
  SInt16 font = 0;
  UInt8 face = 0;
  SInt16 txMode = srcOr;
  SInt16 size = 0;
  Fixed spExtra = 0;
  Point pnSize{1, 1};
  SInt16 pnMode = patCopy;
  // The data last written for the background, pen and fill patterns (as
  // the walker numbers them): 8 bytes for an old-style pattern, the pixel
  // pattern opcode's data for a pixel pattern.
  std::vector<uint8_t> patterns[3] = {std::vector<uint8_t>(8, 0x00), std::vector<uint8_t>(8, 0xFF),
                                      std::vector<uint8_t>(8, 0xFF)};
  SInt32 fg = blackColor;
  SInt32 bk = whiteColor;
  RGBColor rgbFg{0, 0, 0};
  RGBColor rgbBk{0xFFFF, 0xFFFF, 0xFFFF};
  Point origin{0, 0};
  std::vector<uint8_t> clip;  // the clip region as last written; none yet
  bool penKnown = false;
  Point pen{0, 0};
  Point ovSize{0, 0};
  std::vector<SInt16> fonts;  // named by a FontName opcode already
};

// The innermost open picture of port, or null.
RecordState* StateOf(GrafPtr port);

// Starts recording into pic on port (the pen hidden); the new state.
RecordState& StartRecording(GrafPtr port, Handle pic);

// Writes the header OpenPicture writes for frame through the put procedure.
void PutOpenPictureHeader(const Rect& frame);

// The handle a port's picture bytes go into: the picture, or the scrap
// picture's own opcodes.
Handle RecordingTarget(GrafPtr port);

// Plays the finished opcodes of a scrap picture into its DIB and disposes
// them.
void FinishScrapPicture(Handle scrap, Handle opcodes, const Rect& rect);

// True when pic holds a scrap picture's DIB (a 40-byte BITMAPINFOHEADER
// after the 10-byte header); such a picture is drawn as its DIB.
bool IsScrapDib(Handle pic);
void DrawScrapDib(Handle pic, const Rect& dst);

// A region as a picture holds it: size word, box, then its lines (none for
// a rectangle, or for a region too big for the size word).
std::vector<uint8_t> RegionBytes(RgnHandle rgn);

// The data of a pixel pattern opcode (0x0012-0x0014) for a pixel pattern
// (patType 1 or 2); empty for an old-style one.
std::vector<uint8_t> PixPatBytes(PixPatHandle pp);

// The pixels of srcRect of any source CopyBits takes, read back as a
// DirectBitsRect's data (after the opcode) drawn onto dstRect in mode;
// empty when they cannot be read.
std::vector<uint8_t> DirectBitsBytes(const BitMap* src, const Rect& srcRect, const Rect& dstRect,
                                     SInt16 mode);

// Hands count bytes to the current port's put procedure (the
// application's putPicProc, or StdPutPic), in pieces a 16-bit count holds.
void PutPictureBytes(const void* data, size_t count);

}  // namespace kwe::pictures
