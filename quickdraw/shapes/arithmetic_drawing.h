// Lines and shapes in the arithmetic pen modes (blend, addPin, addOver,
// subPin, transparent, addMax, subOver, adMin) on colour ports deeper than
// one bit. GDI has no raster operation for them, so the verb is drawn twice
// in copy mode into 32-bit sections laid over the shape's box, once on black
// and once on white: the pixels that come out the same in both are the ones
// the verb covers, in its pattern's colours. The pixel pipeline (the
// arithmetic CopyBits uses) combines them with the port's pixels, and the
// box goes back onto the port's DC through its clip. A 1-bit port keeps the
// Boolean mode GDI comes nearest with, as Color QuickDraw did.
#pragma once
#include <windows.h>

#include "quickdraw/ports/port_attr.h"
#include "quickdraw/shapes/shape_drawing.h"

namespace kwe::quickdraw {

// The verb draws in the port's pen mode (frame and paint; lines paint), the
// mode is arithmetic and the port a colour port on a device deeper than 1.
bool DrawsArithmetic(GrafPtr port, const PortAttr& a, Verb verb);

// The two 32-bit sections the passes draw into, each in a memory DC of its
// own (selecting a bitmap into a DC costs more than drawing a small shape).
// One set is kept between calls, grown when a box reaches past it; a box
// beyond kKeptSheetPixels gets a set of its own for the call.
struct ArithmeticSheets {
  HDC dcs[2] = {nullptr, nullptr};
  HBITMAP sections[2] = {nullptr, nullptr};
  void* bits[2] = {nullptr, nullptr};
  HGDIOBJ replaced[2] = {nullptr, nullptr};
  int width = 0, height = 0;
  const PortAttr* user = nullptr;  // the port that last drew through them
};
constexpr int kKeptSheetPixels = 1 << 20;  // 4 MB a section

// Gives the kept sheets back to GDI when the port that last used them is
// closed (ClosePort, InitGraf and the end of QuickDraw); null: whoever used
// them.
void ReleaseArithmeticSheets(const PortAttr* closing);

// Swaps the port's DC for the two sections while the verb is drawn in
// them, then combines and puts the result back.
class ArithmeticLayer {
 public:
  // bounds: the device pixels the verb can touch before the pen is added.
  ArithmeticLayer(GrafPtr port, PortAttr& a, const RECT& bounds);
  ~ArithmeticLayer();
  ArithmeticLayer(const ArithmeticLayer&) = delete;
  ArithmeticLayer& operator=(const ArithmeticLayer&) = delete;
  // Selects the next pass's section; false after the second pass, or at
  // once when the box is clipped away or the sections cannot be had.
  bool NextPass();

 private:
  void GiveBackDC();
  void Combine();
  GrafPtr port_;
  PortAttr& a_;
  RECT box_{};
  HDC portDC_ = nullptr;
  ArithmeticSheets own_;  // a box too large for the kept sheets
  ArithmeticSheets* sheets_ = nullptr;
  int pass_ = -1;
  int16_t penRop2_ = R2_COPYPEN;
  int16_t brushOriginH_ = 0, brushOriginV_ = 0;
};

// Runs draw on the port's DC, or, in an arithmetic pen mode, once for each
// pass of an ArithmeticLayer over bounds.
template <class Draw>
void DrawInPenMode(GrafPtr port, PortAttr& a, Verb verb, const RECT& bounds, Draw draw) {
  if (!DrawsArithmetic(port, a, verb)) {
    draw();
    return;
  }
  ArithmeticLayer layer(port, a, bounds);
  while (layer.NextPass()) draw();
}

}  // namespace kwe::quickdraw
