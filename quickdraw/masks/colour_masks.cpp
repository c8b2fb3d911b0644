// CalcCMask and KWE_CreateMask: any bitmap or pixel map is first copied
// into a 1-bit working bitmap with CopyBits, whose colour matching makes
// every pixel that is not white black; the seed fill works on that.
#include <cstring>
#include <vector>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/masks/seed_fill.h"

namespace {

using namespace kwe::masks;

// A cleared 1-bit bitmap in memory over bounds (rows of even length).
struct WorkingBits {
  explicit WorkingBits(const Rect& bounds) {
    int width = bounds.right - bounds.left, height = bounds.bottom - bounds.top;
    if (width <= 0 || height <= 0) return;
    rowBytes = (width + 15) / 16 * 2;
    pixels.assign(static_cast<size_t>(rowBytes) * height, 0);
    bits = BitMap{reinterpret_cast<Ptr>(pixels.data()), static_cast<SInt16>(rowBytes), bounds};
  }
  bool Made() const { return !pixels.empty(); }
  int rowBytes = 0;
  std::vector<uint8_t> pixels;
  BitMap bits{};
};

int Width(const Rect& r) { return r.right - r.left; }
int Height(const Rect& r) { return r.bottom - r.top; }

}  // namespace

// matchProc and matchData would choose the colours through the device's
// search procedures; the library's colour matching has none, so every
// colour but white is in the mask, whatever seedRGB says.
KWE_API void KWE_CALL CalcCMask(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                                const Rect* dstRect, const RGBColor*, ProcPtr, SInt32) {
  if (!srcBits || !dstBits || !srcRect || !dstRect) return;
  if (Width(*srcRect) <= 0 || Height(*srcRect) <= 0 || Width(*dstRect) <= 0 ||
      Height(*dstRect) <= 0)
    return;
  Rect local{0, 0, static_cast<SInt16>(Height(*srcRect)), static_cast<SInt16>(Width(*srcRect))};
  WorkingBits image(local), mask(local);
  if (!image.Made() || !mask.Made()) return;
  CopyBits(srcBits, &image.bits, srcRect, &local, srcCopy, nullptr);
  if (!CalcMaskRows(image.pixels.data(), image.rowBytes, mask.pixels.data(), mask.rowBytes,
                    Width(local), Height(local)))
    return;
  CopyBits(&mask.bits, dstBits, &local, dstRect, srcCopy, nullptr);
}

// The handle's rows have their bits set where the mask is; a region holds
// the same pixels.
KWE_API Handle KWE_CALL KWE_CreateMask(const BitMap* src, Boolean calc, Boolean asRegion) {
  if (!src) return nullptr;
  const Rect& bounds = src->bounds;
  int width = Width(bounds), height = Height(bounds);
  if (width <= 0 || height <= 0) return nullptr;
  Rect local{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  WorkingBits image(local), mask(local);
  if (!image.Made() || !mask.Made()) return nullptr;
  CopyBits(src, &image.bits, &bounds, &local, srcCopy, nullptr);
  if (calc) {
    if (!CalcMaskRows(image.pixels.data(), image.rowBytes, mask.pixels.data(), mask.rowBytes, width,
                      height))
      return nullptr;
  } else {
    mask.pixels = image.pixels;
  }
  if (asRegion) {
    RgnHandle rgn = NewRgn();
    if (!rgn) return nullptr;
    mask.bits.bounds = bounds;
    if (BitMapToRegion(rgn, &mask.bits) != noErr) {
      DisposeRgn(rgn);
      return nullptr;
    }
    return reinterpret_cast<Handle>(rgn);
  }
  Handle h = NewHandle(static_cast<Size>(mask.pixels.size()));
  if (!h) return nullptr;
  std::memcpy(*h, mask.pixels.data(), mask.pixels.size());
  return h;
}
