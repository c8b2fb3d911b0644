// CalcCMask and KWE_CreateMask: any bitmap or pixel map is first copied
// into a 1-bit working bitmap with CopyBits, whose colour matching makes
// every pixel that is not white black; the seed fill works on that.
#include <cstring>
#include <vector>

#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "frame/diagnostics.h"
#include "quickdraw/copybits/copy_sides.h"
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

// What a match procedure finds through the current device's gdRefCon: the
// seed colour, then the caller's data.
#pragma pack(push, 2)
struct MatchRecord {
  UInt16 red, green, blue;
  SInt32 data;
};
#pragma pack(pop)

using MatchProc = Boolean(KWE_CALL*)(RGBColor*, SInt32*);

// The source's colours as 32-bit pixels (pad, red, green, blue bytes), then
// each offered to match: its answer, position 1 black or 0 white, sets the
// image bit; a colour it declines keeps the bit 1-bit matching gave it.
// While it runs the current device's gdRefCon names the match record; a
// 64-bit address does not fit that 32-bit field, so there the 64-bit build
// leaves gdRefCon as it was.
void ApplyMatch(const BitMap* src, const Rect& srcRect, const Rect& local, WorkingBits& image,
                MatchProc match, const MatchRecord& record) {
  int width = Width(local), height = Height(local);
  std::vector<uint8_t> pixels(static_cast<size_t>(width) * height * 4);
  PixMap deep{};
  deep.baseAddr = reinterpret_cast<Ptr>(pixels.data());
  deep.rowBytes = static_cast<SInt16>((width * 4) | 0x8000);
  deep.bounds = local;
  deep.pixelType = 16;
  deep.pixelSize = 32;
  deep.cmpCount = 3;
  deep.cmpSize = 8;
  CopyBits(src, reinterpret_cast<const BitMap*>(&deep), &srcRect, &local, srcCopy, nullptr);
  GDHandle device = GetGDevice();
  SInt32 savedRefCon = device && *device ? (*device)->gdRefCon : 0;
#if UINTPTR_MAX == 0xFFFFFFFFu
  if (device && *device)
    (*device)->gdRefCon = static_cast<SInt32>(reinterpret_cast<uintptr_t>(&record));
#else
  (void)record;
#endif
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const uint8_t* p = &pixels[(static_cast<size_t>(y) * width + x) * 4];
      RGBColor rgb{static_cast<UInt16>(p[1] * 257), static_cast<UInt16>(p[2] * 257),
                   static_cast<UInt16>(p[3] * 257)};
      SInt32 position = 0;
      if (!match(&rgb, &position)) continue;
      uint8_t& byte = image.pixels[static_cast<size_t>(y) * image.rowBytes + x / 8];
      uint8_t bit = static_cast<uint8_t>(0x80 >> (x % 8));
      byte = static_cast<uint8_t>(position ? byte | bit : byte & ~bit);
    }
  }
  if (device && *device) (*device)->gdRefCon = savedRefCon;
}

// CreateMaskCombine: the source's rows made 1-bit mask rows, the way chosen
// by the source's depth. 1-bit rows in memory are the mask rows as they
// stand; everything else goes through CopyBits' colour matching onto the
// working bits, where each colour becomes its nearer of white and black.
using MaskCombine = void (*)(const BitMap* src, WorkingBits& image);

void OneBitRows(const BitMap* src, WorkingBits& image) {
  const uint8_t* from = reinterpret_cast<const uint8_t*>(src->baseAddr);
  const size_t rowBytes = static_cast<size_t>(src->rowBytes & 0x3FFF);
  const size_t bytes = static_cast<size_t>((Width(src->bounds) + 7) / 8);
  const uint8_t lastBits = static_cast<uint8_t>(0xFF00 >> (Width(src->bounds) - 8 * (bytes - 1)));
  for (int y = 0; y < Height(src->bounds); ++y) {
    uint8_t* to = image.pixels.data() + static_cast<size_t>(y) * image.rowBytes;
    std::memcpy(to, from + y * rowBytes, bytes);
    to[bytes - 1] &= lastBits;  // the bits past the right edge are no pixels
  }
}

void MatchedRows(const BitMap* src, WorkingBits& image) {
  CopyBits(src, &image.bits, &src->bounds, &image.bits.bounds, srcCopy, nullptr);
}

// A bitmap whose rows OneBitRows may read: in memory, rowBytes even and
// long enough. CopyBits refuses the others for itself.
bool InMemory(const BitMap* src, bool pixMap) {
  const int rowBytes = src->rowBytes & 0x3FFF;
  return !pixMap && reinterpret_cast<uintptr_t>(src->baseAddr) > 0xFFFF && rowBytes % 2 == 0 &&
         rowBytes >= (Width(src->bounds) + 7) / 8;
}

// Null for a depth QuickDraw has not: the pipeline could not read it, and
// a mask made of it would be noise.
MaskCombine MaskCombineFor(const BitMap* src) {
  const bool pixMap = (src->rowBytes & 0x8000) != 0;
  const int depth = pixMap ? reinterpret_cast<const PixMap*>(src)->pixelSize : 1;
  switch (depth) {
    case 1: return InMemory(src, pixMap) ? OneBitRows : MatchedRows;
    case 2:
    case 4:
    case 8:
    case 16:
    case 32: return MatchedRows;
    default: return nullptr;
  }
}

}  // namespace

// Without matchProc every colour but white is in the mask, whatever seedRGB
// says; matchProc decides the colours it answers for.
KWE_API void KWE_CALL CalcCMask(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                                const Rect* dstRect, const RGBColor* seedRGB, ProcPtr matchProc,
                                SInt32 matchData) {
  if (!srcBits || !dstBits || !srcRect || !dstRect) return;
  if (Width(*srcRect) <= 0 || Height(*srcRect) <= 0 || Width(*dstRect) <= 0 ||
      Height(*dstRect) <= 0)
    return;
  Rect local{0, 0, static_cast<SInt16>(Height(*srcRect)), static_cast<SInt16>(Width(*srcRect))};
  WorkingBits image(local), mask(local);
  if (!image.Made() || !mask.Made()) return;
  CopyBits(srcBits, &image.bits, srcRect, &local, srcCopy, nullptr);
  if (matchProc) {
    MatchRecord record{0, 0, 0, matchData};
    if (seedRGB) record = MatchRecord{seedRGB->red, seedRGB->green, seedRGB->blue, matchData};
    ApplyMatch(srcBits, *srcRect, local, image, reinterpret_cast<MatchProc>(matchProc), record);
  }
  if (!CalcMaskRows(image.pixels.data(), image.rowBytes, mask.pixels.data(), mask.rowBytes,
                    Width(local), Height(local)))
    return;
  CopyBits(&mask.bits, dstBits, &local, dstRect, srcCopy, nullptr);
}

// The handle's rows have their bits set where the mask is; a region holds
// the same pixels.
KWE_API Handle KWE_CALL KWE_CreateMask(const BitMap* src, Boolean calc, Boolean asRegion) {
  src = kwe::quickdraw::PixelsOfBits(src);
  if (!src) return nullptr;
  const Rect& bounds = src->bounds;
  int width = Width(bounds), height = Height(bounds);
  if (width <= 0 || height <= 0) return nullptr;
  MaskCombine combine = MaskCombineFor(src);
  if (!combine) {
    kwe::Report(" Undefined CreateMaskCombineProc case");
    return nullptr;
  }
  Rect local{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  WorkingBits image(local), mask(local);
  if (!image.Made() || !mask.Made()) return nullptr;
  combine(src, image);
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
