// Transfer modes to ROP3 codes.
#include "quickdraw/copybits/raster_ops.h"

namespace kwe::quickdraw {

uint32_t RasterOpOfMode(int mode) {
  static const uint32_t kBoolean[16] = {0x00CC0020, 0x008800C6, 0x00990066,
                                        0x00BB0226,  // srcCopy, srcOr, srcXor, srcBic
                                        // notSrcCopy, notSrcOr, notSrcXor, notSrcBic. On RGB pixels
                                        // white is all ones where a Macintosh bit says white with
                                        // 0, so notSrcOr (D or not S in Macintosh bits) is D and
                                        // not S here, and notSrcBic (D and S) is D or S.
                                        0x00330008, 0x00220326, 0x00660046, 0x00EE0086, 0x00F00021,
                                        0x00FA0089, 0x005A0049, 0x00500325,  // the pattern modes
                                        0x000F0001, 0x00AF0229, 0x00A50065, 0x000500A9};
  // blend, addPin, addOver, subPin, transparent, addMax, subOver, adMin
  static const uint32_t kArithmetic[8] = {0x00CC0020, 0x00CC0020, 0x00CC0020, 0x00CC0020,
                                          0x008800C6, 0x00CC0020, 0x00CC0020, 0x008800C6};
  mode &= ~64;
  if (mode >= 32 && mode <= 39) return kArithmetic[mode - 32];
  return kBoolean[mode & 15];
}

}  // namespace kwe::quickdraw
