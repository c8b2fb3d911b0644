// Macintosh black is all one bits and Windows black all zero bits, so the
// Boolean modes map onto the ROP2 of the opposite sense: the Macintosh's
// exclusive-or of black inverts, which in GDI is not-xor.
#include "quickdraw/ports/transfer_modes.h"

namespace kwe::quickdraw {
namespace {

constexpr int16_t kCopy = 13, kMask = 9, kNotXor = 10, kMergeNot = 12, kNotCopy = 4, kMaskNot = 3,
                  kXor = 7, kMerge = 15;
constexpr int16_t kTransparent = 1, kOpaque = 2;

// Modes 0 to 15: the source modes and the pattern modes draw alike.
constexpr ModeInGdi kBoolean[8] = {
    {false, kCopy, kOpaque},          {false, kMask, kTransparent}, {false, kNotXor, kTransparent},
    {false, kMergeNot, kTransparent}, {false, kNotCopy, kOpaque},   {false, kMaskNot, kOpaque},
    {false, kXor, kOpaque},           {false, kMerge, kOpaque},
};

// Modes 32 to 39, the arithmetic modes, approximated by the nearest Boolean.
constexpr ModeInGdi kArithmetic[8] = {
    {false, kCopy, kOpaque},        {false, kMergeNot, kTransparent},
    {false, kNotXor, kTransparent}, {false, kMask, kTransparent},
    {false, kMask, kTransparent},   {false, kMergeNot, kTransparent},
    {false, kNotXor, kTransparent}, {false, kMask, kTransparent},
};

constexpr ModeInGdi kNotRenderable{true, kMask, kTransparent};

}  // namespace

ModeInGdi ModeInGdiOf(int mode) {
  if (mode >= 0 && mode <= 15) return kBoolean[mode & 7];
  if (mode >= 32 && mode <= 39) return kArithmetic[mode - 32];
  if (mode == 47) return ModeInGdi{false, kMask, kTransparent};
  return kNotRenderable;
}

int16_t StoredPenMode(int mode) {
  return static_cast<int16_t>(mode >= 40 && mode <= 63 ? mode - 8 : mode);
}

}  // namespace kwe::quickdraw
