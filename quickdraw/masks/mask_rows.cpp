// SeedFill and CalcMask: the seed fill over an application's 1-bit rows,
// `words` 16-bit words wide.
#include "Quickdraw.h"
#include "quickdraw/masks/seed_fill.h"

using namespace kwe::masks;

// The fill's result (false when segments were dropped) is not the
// application's to see: SeedFill has none.
KWE_API void KWE_CALL SeedFill(const void* srcPtr, void* dstPtr, SInt16 srcRow, SInt16 dstRow,
                               SInt16 height, SInt16 words, SInt16 seedH, SInt16 seedV) {
  if (srcRow <= 0 || dstRow <= 0 || words <= 0 || srcRow < 2 * words || dstRow < 2 * words) return;
  OneBitImage image{static_cast<const uint8_t*>(srcPtr),
                    srcRow,
                    static_cast<uint8_t*>(dstPtr),
                    dstRow,
                    words * 16,
                    height};
  SeedFillRows(image, seedH, seedV);
}

KWE_API void KWE_CALL CalcMask(const void* srcPtr, void* dstPtr, SInt16 srcRow, SInt16 dstRow,
                               SInt16 height, SInt16 words) {
  if (srcRow <= 0 || dstRow <= 0 || words <= 0 || srcRow < 2 * words || dstRow < 2 * words) return;
  CalcMaskRows(static_cast<const uint8_t*>(srcPtr), srcRow, static_cast<uint8_t*>(dstPtr), dstRow,
               words * 16, height);
}
