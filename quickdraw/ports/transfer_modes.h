// What GDI makes of a Toolbox transfer mode: whether it can draw it at all,
// the ROP2 of lines and shapes, and the background mode of patterns.
#pragma once
#include <cstdint>

namespace kwe::quickdraw {

struct ModeInGdi {
  bool unsupported;
  int16_t rop2;            // R2_ value
  int16_t backgroundMode;  // 1 TRANSPARENT, 2 OPAQUE
};

// mode is the stored form (PenMode has already taken 8 off modes 40 to 63).
ModeInGdi ModeInGdiOf(int mode);
// PenMode's stored form of a mode.
int16_t StoredPenMode(int mode);

}  // namespace kwe::quickdraw
