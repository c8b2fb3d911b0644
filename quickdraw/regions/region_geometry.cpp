// Moving, insetting and mapping regions, and MapPt/MapRect which the mapping
// is made of.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

#include "KWERegions.h"
#include "Memory.h"
#include "quickdraw/regions/mask_regions.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {
namespace {

const Rect kEmptyBox{0, 0, 0, 0};

// One axis of MapPt: rounded to the nearest, halves away from zero.
int MapCoordinate(int c, int srcMin, int srcMax, int dstMin, int dstMax) {
  int64_t srcExtent = int64_t(srcMax) - srcMin;
  if (srcExtent == 0) return 0;
  int64_t d = (int64_t(c) - srcMin) * (int64_t(dstMax) - dstMin);
  int64_t half = srcExtent / 2;
  d += d < 0 ? -half : half;
  return int(std::clamp<int64_t>(d / srcExtent + dstMin, -32768, 32767));
}

Rect MappedRect(int left, int top, int right, int bottom, const Rect& src, const Rect& dst) {
  return Rect{SInt16(MapCoordinate(top, src.top, src.bottom, dst.top, dst.bottom)),
              SInt16(MapCoordinate(left, src.left, src.right, dst.left, dst.right)),
              SInt16(MapCoordinate(bottom, src.top, src.bottom, dst.top, dst.bottom)),
              SInt16(MapCoordinate(right, src.left, src.right, dst.left, dst.right))};
}

std::vector<RECT> RectanglesOf(HRGN shape) {
  std::vector<RECT> rects;
  DWORD size = GetRegionData(shape, 0, nullptr);
  if (!size) return rects;
  std::vector<unsigned char> buffer(size);
  auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
  if (!GetRegionData(shape, size, data)) return rects;
  auto* first = reinterpret_cast<const RECT*>(data->Buffer);
  rects.assign(first, first + data->rdh.nCount);
  return rects;
}

// A new Win32 region, the union of rects (which may overlap).
HRGN RegionOfRectangles(const std::vector<RECT>& rects) {
  if (rects.empty()) return CreateRectRgn(0, 0, 0, 0);
  std::vector<unsigned char> buffer(sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT));
  auto* data = reinterpret_cast<RGNDATA*>(buffer.data());
  data->rdh.dwSize = sizeof(RGNDATAHEADER);
  data->rdh.iType = RDH_RECTANGLES;
  data->rdh.nCount = DWORD(rects.size());
  data->rdh.nRgnSize = DWORD(rects.size() * sizeof(RECT));
  RECT bounds = rects[0];
  for (const RECT& r : rects) {
    bounds.left = std::min(bounds.left, r.left);
    bounds.top = std::min(bounds.top, r.top);
    bounds.right = std::max(bounds.right, r.right);
    bounds.bottom = std::max(bounds.bottom, r.bottom);
  }
  data->rdh.rcBound = bounds;
  std::copy(rects.begin(), rects.end(), reinterpret_cast<RECT*>(data->Buffer));
  return ExtCreateRegion(nullptr, DWORD(buffer.size()), data);
}

// The region grown by dh and dv (both 0 or more) on every side.
HRGN GrownRegion(HRGN shape, int dh, int dv) {
  std::vector<RECT> rects = RectanglesOf(shape);
  for (RECT& r : rects) InflateRect(&r, dh, dv);
  return RegionOfRectangles(rects);
}

// Moves every edge of shape inward by dh and dv, one of which is 0: a
// negative amount grows the shape; a positive one removes from it what the
// grown outside now covers.
bool InsetAlongOneAxis(HRGN shape, int dh, int dv) {
  HRGN grown = nullptr;
  bool done = false;
  if (dh < 0 || dv < 0) {
    grown = GrownRegion(shape, -dh, -dv);
    done = grown && CombineRgn(shape, grown, nullptr, RGN_COPY) != ERROR;
  } else {
    RECT frame;
    GetRgnBox(shape, &frame);
    InflateRect(&frame, 1, 1);
    HRGN outside = CreateRectRgnIndirect(&frame);
    if (outside && CombineRgn(outside, outside, shape, RGN_DIFF) != ERROR) {
      grown = GrownRegion(outside, dh, dv);
      done = grown && CombineRgn(shape, shape, grown, RGN_DIFF) != ERROR;
    }
    if (outside) DeleteObject(outside);
  }
  if (grown) DeleteObject(grown);
  return done;
}

// A mask region moved onto box: the mask keeps its place on the plane and is
// cut or widened to the new box.
void ReframeMask(RgnHandle rgn, const Rect& box) {
  RegionRecord* r = RecordOf(rgn);
  if (BoxIsEmpty(box)) return MakeRectangle(rgn, kEmptyBox);
  try {
    MaskRaster raster(box.right - box.left, box.bottom - box.top);
    DrawRegionInto(*r, box, raster);
    Handle mask = MaskHandleFrom(raster);
    if (mask && !MakeMaskRegion(rgn, box, mask)) DisposeHandle(mask);
  } catch (const std::bad_alloc&) {
  }
}

void MapMask(RgnHandle rgn, const Rect& src, const Rect& dst) {
  RegionRecord* r = RecordOf(rgn);
  const Rect old = r->rgnBBox;
  Rect box = MappedRect(old.left, old.top, old.right, old.bottom, src, dst);
  const uint8_t* bits = MaskBitsOf(*r);
  if (!bits || BoxIsEmpty(box)) return MakeRectangle(rgn, BoxIsEmpty(box) ? kEmptyBox : box);
  try {
    int width = old.right - old.left, height = old.bottom - old.top;
    MaskRaster from(width, height, bits);
    MaskRaster to(box.right - box.left, box.bottom - box.top);
    // Each run of inside pixels is mapped as a rectangle one row high.
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width;) {
        while (x < width && !from.Inside(x, y)) ++x;
        int start = x;
        while (x < width && from.Inside(x, y)) ++x;
        if (x == start) continue;
        Rect run =
            MappedRect(old.left + start, old.top + y, old.left + x, old.top + y + 1, src, dst);
        to.FillInside(run.left - box.left, run.top - box.top, run.right - box.left,
                      run.bottom - box.top);
      }
    }
    Handle mask = MaskHandleFrom(to);
    if (mask && !MakeMaskRegion(rgn, box, mask)) DisposeHandle(mask);
  } catch (const std::bad_alloc&) {
  }
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL MapPt(Point* pt, const Rect* srcRect, const Rect* dstRect) {
  if (!pt || !srcRect || !dstRect) return;
  pt->h =
      SInt16(MapCoordinate(pt->h, srcRect->left, srcRect->right, dstRect->left, dstRect->right));
  pt->v =
      SInt16(MapCoordinate(pt->v, srcRect->top, srcRect->bottom, dstRect->top, dstRect->bottom));
}

KWE_API void KWE_CALL MapRect(Rect* r, const Rect* srcRect, const Rect* dstRect) {
  if (!r || !srcRect || !dstRect) return;
  *r = MappedRect(r->left, r->top, r->right, r->bottom, *srcRect, *dstRect);
}

// A move that would carry a mask region past the coordinate range stops at
// its edge, so the mask stays anchored to the whole box.
KWE_API void KWE_CALL OffsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv) {
  RegionRecord* r = RecordOf(rgn);
  if (!r || (dh == 0 && dv == 0)) return;
  Rect& box = r->rgnBBox;
  switch (KindOf(*r)) {
    case RegionKind::Win32:
      ::OffsetRgn(r->shape, dh, dv);
      RefreshBox(*r);
      return;
    case RegionKind::Mask: {
      int h = std::clamp<int>(dh, -kCoordinateLimit - box.left, kCoordinateLimit - box.right);
      int v = std::clamp<int>(dv, -kCoordinateLimit - box.top, kCoordinateLimit - box.bottom);
      StoreBox(*r, box.left + h, box.top + v, box.right + h, box.bottom + v);
      return;
    }
    case RegionKind::Rectangle:
      if (BoxIsEmpty(box)) return;  // the empty region stays (0,0,0,0)
      StoreBox(*r, box.left + dh, box.top + dv, box.right + dh, box.bottom + dv);
      return;
  }
}

// Every edge of the shape moves inward by dh and dv (outward for negative
// values), as on the Macintosh, also for a shape that is not a rectangle; an
// inset that leaves nothing gives the empty region. When GDI cannot build the
// new shape the region becomes its inset box.
KWE_API void KWE_CALL InsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv) {
  RegionRecord* r = RecordOf(rgn);
  if (!r || (dh == 0 && dv == 0)) return;
  const Rect old = r->rgnBBox;
  Rect box{SInt16(ClampCoordinate(old.top + dv)), SInt16(ClampCoordinate(old.left + dh)),
           SInt16(ClampCoordinate(old.bottom - dv)), SInt16(ClampCoordinate(old.right - dh))};
  switch (KindOf(*r)) {
    case RegionKind::Rectangle:
      return MakeRectangle(rgn, BoxIsEmpty(old) || BoxIsEmpty(box) ? kEmptyBox : box);
    case RegionKind::Mask: return ReframeMask(rgn, box);
    case RegionKind::Win32:
      if (InsetAlongOneAxis(r->shape, dh, 0) && InsetAlongOneAxis(r->shape, 0, dv)) {
        RefreshBox(*r);
        KWE_IsRectRgn(rgn);
      } else {
        MakeRectangle(rgn, BoxIsEmpty(box) ? kEmptyBox : box);
      }
      return;
  }
}

// Every point of the region is mapped as MapPt maps it: a Win32 region
// rectangle by rectangle, a mask region run by run.
KWE_API void KWE_CALL MapRgn(RgnHandle rgn, const Rect* srcRect, const Rect* dstRect) {
  RegionRecord* r = RecordOf(rgn);
  if (!r || !srcRect || !dstRect) return;
  const Rect& src = *srcRect;
  const Rect& dst = *dstRect;
  if (src.top == dst.top && src.left == dst.left && src.bottom == dst.bottom &&
      src.right == dst.right)
    return;
  switch (KindOf(*r)) {
    case RegionKind::Rectangle: {
      if (BoxIsEmpty(r->rgnBBox)) return;
      Rect box = MappedRect(r->rgnBBox.left, r->rgnBBox.top, r->rgnBBox.right, r->rgnBBox.bottom,
                            src, dst);
      return MakeRectangle(rgn, BoxIsEmpty(box) ? kEmptyBox : box);
    }
    case RegionKind::Mask: return MapMask(rgn, src, dst);
    case RegionKind::Win32: {
      std::vector<RECT> rects = RectanglesOf(r->shape);
      for (RECT& rect : rects) {
        Rect mapped = MappedRect(rect.left, rect.top, rect.right, rect.bottom, src, dst);
        rect = RECT{mapped.left, mapped.top, mapped.right, mapped.bottom};
      }
      HRGN mapped = RegionOfRectangles(rects);
      if (!mapped) return;
      CombineRgn(r->shape, mapped, nullptr, RGN_COPY);
      DeleteObject(mapped);
      RefreshBox(*r);
      KWE_IsRectRgn(rgn);
      return;
    }
  }
}
