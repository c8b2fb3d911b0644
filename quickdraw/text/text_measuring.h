// Macintosh text on its way to GDI: converted to ANSI in a scratch buffer
// and measured in the port's font.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

struct ConvertedText {
  const char* bytes = nullptr;  // ANSI, in the scratch buffer until the next conversion
  int length = 0;
  int spaces = 0;
  const INT* advances = nullptr;  // extended text: each character's whole pixels
  bool commandKey = false;        // the single character 18, drawn from a bitmap
  int deviceWidth = 0;            // how far the pen moves, in device pixels
  int justification = 0;          // spExtra's pixels, spread over the spaces
};

// Lets KWE_MacToAnsiBuf's measuring mode add up extended text's widths.
void InstallTextMeasuring();

// After PrepareFont.
ConvertedText ConvertAndMeasure(GrafPtr port, PortAttr& a, const UInt8* text, int count);

// Device widths and heights back in the port's local units.
int LocalWidth(const PortAttr& a, int deviceWidth);
int LocalHeight(const PortAttr& a, int deviceHeight);

// The port's font metrics as QuickDraw reports them (after PrepareFont).
void FillFontInfo(const PortAttr& a, FontInfo* info);

// numer:denom other than 1:1 scales txSize for the length of one call.
class TextRatio {
 public:
  TextRatio(GrafPtr port, PortAttr& a, Point numer, Point denom);
  ~TextRatio();
  TextRatio(const TextRatio&) = delete;
  TextRatio& operator=(const TextRatio&) = delete;

 private:
  GrafPtr port_;
  PortAttr& attr_;
  SInt16 savedSize_;
  bool active_ = false;
};

}  // namespace kwe::quickdraw
