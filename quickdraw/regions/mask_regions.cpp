// Mask regions and BitMapToRegion. Without the CopyBits engine the bitmap's
// rows are inverted and turned bottom-up here directly: a black Macintosh
// pixel (bit 1) is a pixel inside the region (bit 0 in the mask).
#include "quickdraw/regions/mask_regions.h"

#include <cstring>
#include <new>
#include <vector>

#include "Memory.h"
#include "frame/layout_check.h"

namespace kwe::quickdraw {
namespace {

constexpr OSErr kPixMapTooDeep = -148;  // pixMapTooDeepErr
constexpr OSErr kRegionTooBig = -152;   // rgnTooBigErr
constexpr UInt16 kPixMapFlag = 0x8000;  // rowBytes' high bits mark a PixMap
constexpr UInt16 kRowBytesMask = 0x3FFF;

// The published PixMap up to its depth, read when rowBytes says a BitMap
// argument is really a PixMap.
#pragma pack(push, 2)
struct PixMapHead {
  Ptr baseAddr;
  SInt16 rowBytes;
  Rect bounds;
  SInt16 pmVersion;
  SInt16 packType;
  SInt32 packSize;
  SInt32 hRes;
  SInt32 vRes;
  SInt16 pixelType;
  SInt16 pixelSize;
};
#pragma pack(pop)
#if UINTPTR_MAX == 0xFFFFFFFFu
KWE_FIELD(PixMapHead, pixelSize, 32);
#endif

int Width(const Rect& box) { return box.right - box.left; }
int Height(const Rect& box) { return box.bottom - box.top; }

}  // namespace

const uint8_t* MaskBitsOf(const RegionRecord& r) {
  if (!r.mask || !*r.mask || BoxIsEmpty(r.rgnBBox)) return nullptr;
  size_t need = kMaskHeaderBytes + MaskRowBytes(Width(r.rgnBBox)) * size_t(Height(r.rgnBBox));
  if (size_t(GetHandleSize(r.mask)) < need) return nullptr;
  auto* header = reinterpret_cast<const BITMAPINFOHEADER*>(*r.mask);
  if (header->biWidth != Width(r.rgnBBox) || header->biHeight != Height(r.rgnBBox)) return nullptr;
  return reinterpret_cast<const uint8_t*>(*r.mask) + kMaskHeaderBytes;
}

bool DrawRegionInto(const RegionRecord& r, const Rect& over, MaskRaster& raster) {
  const Rect& box = r.rgnBBox;
  switch (KindOf(r)) {
    case RegionKind::Rectangle:
      if (!BoxIsEmpty(box))
        raster.FillInside(box.left - over.left, box.top - over.top, box.right - over.left,
                          box.bottom - over.top);
      return true;
    case RegionKind::Mask: {
      const uint8_t* bits = MaskBitsOf(r);
      if (bits)
        raster.AddMask(MaskRaster(Width(box), Height(box), bits), box.left - over.left,
                       box.top - over.top);
      return true;
    }
    case RegionKind::Win32: {
      DWORD size = GetRegionData(r.shape, 0, nullptr);
      if (!size) return false;
      std::vector<unsigned char> buffer(size);
      auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
      if (!GetRegionData(r.shape, size, data)) return false;
      auto* rects = reinterpret_cast<const RECT*>(data->Buffer);
      for (DWORD i = 0; i < data->rdh.nCount; ++i)
        raster.FillInside(rects[i].left - over.left, rects[i].top - over.top,
                          rects[i].right - over.left, rects[i].bottom - over.top);
      return true;
    }
  }
  return false;
}

Handle MaskHandleFrom(const MaskRaster& raster) {
  Handle h = NewHandle(Size(kMaskHeaderBytes + raster.ByteCount()));
  if (!h) return nullptr;
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = raster.Width();
  header.biHeight = raster.Height();  // positive: bottom-up
  header.biPlanes = 1;
  header.biBitCount = 1;
  header.biCompression = BI_RGB;
  header.biSizeImage = DWORD(raster.ByteCount());
  header.biClrUsed = 2;
  const RGBQUAD colours[2] = {{0, 0, 0, 0}, {255, 255, 255, 0}};  // inside drawn black
  std::memcpy(*h, &header, sizeof header);
  std::memcpy(*h + sizeof header, colours, sizeof colours);
  std::memcpy(*h + kMaskHeaderBytes, raster.Bits(), raster.ByteCount());
  return h;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API OSErr KWE_CALL BitMapToRegion(RgnHandle rgn, const BitMap* bits) {
  if (!RecordOf(rgn) || !bits) return kRegionTooBig;
  UInt16 rowBytes = UInt16(bits->rowBytes);
  if ((rowBytes & kPixMapFlag) && reinterpret_cast<const PixMapHead*>(bits)->pixelSize >= 2)
    return kPixMapTooDeep;
  rowBytes &= kRowBytesMask;
  const Rect& bounds = bits->bounds;
  if (BoxIsEmpty(bounds)) {
    MakeRectangle(rgn, Rect{0, 0, 0, 0});
    return noErr;
  }
  int width = Width(bounds), height = Height(bounds);
  if (!bits->baseAddr || int(rowBytes) * 8 < width) return kRegionTooBig;
  try {
    MaskRaster raster(width, height);
    const auto* source = reinterpret_cast<const uint8_t*>(bits->baseAddr);
    for (int y = 0; y < height; ++y) raster.SetRowFromBlackBits(y, source + size_t(y) * rowBytes);
    Handle mask = MaskHandleFrom(raster);
    if (!mask) return kRegionTooBig;
    if (!MakeMaskRegion(rgn, bounds, mask)) {
      DisposeHandle(mask);
      return kRegionTooBig;
    }
  } catch (const std::bad_alloc&) {
    return kRegionTooBig;
  }
  return noErr;
}

KWE_API OSErr KWE_CALL BitMapToRegionGlue(RgnHandle rgn, const BitMap* bits) {
  return BitMapToRegion(rgn, bits);
}
