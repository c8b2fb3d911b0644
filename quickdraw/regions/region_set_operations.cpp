// SectRgn, UnionRgn, DiffRgn and XorRgn. Rectangles and Win32 regions are
// combined by GDI (a rectangle operand through a scratch rectangle region,
// so that it stays a rectangle); a mask operand makes the work bit by bit
// over the result's box. The destination may be either operand.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "KWERegions.h"
#include "Memory.h"
#include "quickdraw/regions/mask_regions.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {
namespace {

const Rect kEmptyBox{0, 0, 0, 0};

Rect Intersection(const Rect& a, const Rect& b) {
  Rect r{std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
         std::min(a.right, b.right)};
  return BoxIsEmpty(r) ? kEmptyBox : r;
}

Rect Union(const Rect& a, const Rect& b) {
  return Rect{std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom),
              std::max(a.right, b.right)};
}

bool Contains(const Rect& outer, const Rect& inner) {
  return outer.top <= inner.top && outer.left <= inner.left && outer.bottom >= inner.bottom &&
         outer.right >= inner.right;
}

MaskRaster::Operation RasterOperation(int mode) {
  switch (mode) {
    case RGN_AND: return MaskRaster::Operation::Intersect;
    case RGN_OR: return MaskRaster::Operation::Unite;
    case RGN_XOR: return MaskRaster::Operation::ExclusiveOr;
    default: return MaskRaster::Operation::Subtract;
  }
}

void CombineWithGdi(const RegionRecord& a, const RegionRecord& b, RgnHandle dst, int mode) {
  HRGN shapeA = ShapeForGdi(a, 0);
  HRGN shapeB = ShapeForGdi(b, 1);
  RegionRecord* d = RecordOf(dst);
  if (KindOf(*d) == RegionKind::Mask) MakeRectangle(dst, d->rgnBBox);
  HRGN shapeD = KWE_RgnSetToRealRectRgn(dst);
  if (!shapeD) return;
  CombineRgn(shapeD, shapeA, shapeB, mode);
  RefreshBox(*RecordOf(dst));
  KWE_IsRectRgn(dst);
}

void CombineAsMasks(const RegionRecord& a, const RegionRecord& b, RgnHandle srcA, RgnHandle srcB,
                    RgnHandle dst, int mode) {
  if (BoxIsEmpty(a.rgnBBox)) {
    if (mode == RGN_AND || mode == RGN_DIFF) return MakeRectangle(dst, kEmptyBox);
    return CopyRg(srcB, dst);
  }
  if (BoxIsEmpty(b.rgnBBox)) {
    if (mode == RGN_AND) return MakeRectangle(dst, kEmptyBox);
    return CopyRg(srcA, dst);
  }
  Rect box;
  switch (mode) {
    case RGN_AND:
      box = Intersection(a.rgnBBox, b.rgnBBox);
      if (BoxIsEmpty(box)) return MakeRectangle(dst, kEmptyBox);
      break;
    case RGN_OR:
      if (KindOf(a) == RegionKind::Rectangle && Contains(a.rgnBBox, b.rgnBBox))
        return MakeRectangle(dst, a.rgnBBox);
      if (KindOf(b) == RegionKind::Rectangle && Contains(b.rgnBBox, a.rgnBBox))
        return MakeRectangle(dst, b.rgnBBox);
      box = Union(a.rgnBBox, b.rgnBBox);
      break;
    case RGN_XOR: box = Union(a.rgnBBox, b.rgnBBox); break;
    default: box = a.rgnBBox; break;
  }
  // Out of memory leaves the destination as it was.
  try {
    int width = box.right - box.left, height = box.bottom - box.top;
    MaskRaster rasterA(width, height), rasterB(width, height);
    if (!DrawRegionInto(a, box, rasterA) || !DrawRegionInto(b, box, rasterB)) return;
    rasterA.Combine(rasterB, RasterOperation(mode));
    Handle mask = MaskHandleFrom(rasterA);
    if (mask && !MakeMaskRegion(dst, box, mask)) DisposeHandle(mask);
  } catch (const std::bad_alloc&) {
  }
}

// The record as far as its handle goes: only a mask region has the mask field.
RegionRecord PlainCopyOf(const RegionRecord& r) {
  RegionRecord copy{};
  std::memcpy(&copy, &r, kPlainRecordBytes);
  if (KindOf(r) == RegionKind::Mask) copy.mask = r.mask;
  return copy;
}

void CombineRegions(RgnHandle srcA, RgnHandle srcB, RgnHandle dst, int mode) {
  RegionRecord* a = RecordOf(srcA);
  RegionRecord* b = RecordOf(srcB);
  if (!a || !b || !RecordOf(dst)) return;
  // Copies: the destination's record may move while the operands are read.
  RegionRecord copyA = PlainCopyOf(*a), copyB = PlainCopyOf(*b);
  RegionKind kindA = KindOf(copyA), kindB = KindOf(copyB);
  if (mode == RGN_AND && kindA == RegionKind::Rectangle && kindB == RegionKind::Rectangle)
    return MakeRectangle(dst, Intersection(copyA.rgnBBox, copyB.rgnBBox));
  if (kindA != RegionKind::Mask && kindB != RegionKind::Mask)
    return CombineWithGdi(copyA, copyB, dst, mode);
  CombineAsMasks(copyA, copyB, srcA, srcB, dst, mode);
}

}  // namespace
}  // namespace kwe::quickdraw

using kwe::quickdraw::CombineRegions;

KWE_API void KWE_CALL SectRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn) {
  CombineRegions(srcRgnA, srcRgnB, dstRgn, RGN_AND);
}

KWE_API void KWE_CALL UnionRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn) {
  CombineRegions(srcRgnA, srcRgnB, dstRgn, RGN_OR);
}

KWE_API void KWE_CALL DiffRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn) {
  CombineRegions(srcRgnA, srcRgnB, dstRgn, RGN_DIFF);
}

KWE_API void KWE_CALL XorRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn) {
  CombineRegions(srcRgnA, srcRgnB, dstRgn, RGN_XOR);
}
