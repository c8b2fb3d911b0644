// Text ink that GDI's TextOut cannot put down by itself: a 1-bit mask of the
// ink (the command-key symbol, or text drawn for a mode other than srcOr
// and srcCopy) combined into the port's DC the way txMode says.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

constexpr UInt8 kCommandKeyCharacter = 18;

// The Boolean modes, srcCopy to notSrcBic, that text is drawn in.
enum InkMode { kInkCopy, kInkOr, kInkXor, kInkBic, kInkNotCopy, kInkNotOr, kInkNotXor, kInkNotBic };

// The Boolean mode txMode draws text as; the pattern and arithmetic modes
// take the Boolean mode of the same GDI operation. -1: a mode that cannot
// be drawn.
int InkModeOf(SInt16 txMode);

// Width of the library's command-key bitmap, one blank column included.
int CommandKeyWidth();
void ReleaseCommandKeyBitmap();

// A 1-bit bitmap in a memory DC, all blank: 1 bits are ink.
class InkMask {
 public:
  InkMask(HDC reference, int width, int height);
  ~InkMask();
  InkMask(const InkMask&) = delete;
  InkMask& operator=(const InkMask&) = delete;
  bool Ready() const { return bitmap_ != nullptr; }
  HDC Dc() const { return dc_; }

 private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ oldBitmap_ = nullptr;
};

// Puts the mask's ink (from its top-left) into box of the port's DC in
// inkMode, in the port's colours.
void CombineInk(PortAttr& a, HDC maskDC, const RECT& box, int inkMode);

// The command-key symbol standing on the baseline at (h, v), cut to width.
void DrawCommandKey(PortAttr& a, int h, int v, int width, int inkMode);

}  // namespace kwe::quickdraw
