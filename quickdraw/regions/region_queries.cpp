// PtInRgn, RectInRgn, EqualRgn and EmptyRgn.
#include <windows.h>

#include <cstring>

#include "Memory.h"
#include "quickdraw/regions/mask_regions.h"
#include "quickdraw/regions/region_record.h"

using namespace kwe::quickdraw;

namespace {
bool BoxHolds(const Rect& box, Point pt) {
  return pt.h >= box.left && pt.h < box.right && pt.v >= box.top && pt.v < box.bottom;
}
}  // namespace

// A mask region whose mask is missing counts as holding every point of its box.
KWE_API Boolean KWE_CALL PtInRgn(Point pt, RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return false;
  switch (KindOf(*r)) {
    case RegionKind::Rectangle: return BoxHolds(r->rgnBBox, pt);
    case RegionKind::Win32: return PtInRegion(r->shape, pt.h, pt.v) != 0;
    case RegionKind::Mask: {
      if (!BoxHolds(r->rgnBBox, pt)) return false;
      const uint8_t* bits = MaskBitsOf(*r);
      if (!bits) return true;
      int width = r->rgnBBox.right - r->rgnBBox.left;
      int height = r->rgnBBox.bottom - r->rgnBBox.top;
      return MaskRaster(width, height, bits).Inside(pt.h - r->rgnBBox.left, pt.v - r->rgnBBox.top);
    }
  }
  return false;
}

// Win32's RECT excludes its right and bottom edges as a Toolbox rectangle
// does, so the rectangle goes to RectInRegion as it is. A mask region
// answers for its box.
KWE_API Boolean KWE_CALL RectInRgn(const Rect* r, RgnHandle rgn) {
  RegionRecord* region = RecordOf(rgn);
  if (!r || !region || BoxIsEmpty(*r)) return false;
  if (KindOf(*region) == RegionKind::Win32) {
    RECT rect{r->left, r->top, r->right, r->bottom};
    return RectInRegion(region->shape, &rect) != 0;
  }
  const Rect& box = region->rgnBBox;
  return !BoxIsEmpty(box) && r->left < box.right && r->right > box.left && r->top < box.bottom &&
         r->bottom > box.top;
}

// Every empty region equals every other. A rectangle or mask region against a
// Win32 region, and a rectangle against a mask region, compare as their
// boxes; two mask regions compare their masks as well.
KWE_API Boolean KWE_CALL EqualRg(RgnHandle rgnA, RgnHandle rgnB) {
  RegionRecord* a = RecordOf(rgnA);
  RegionRecord* b = RecordOf(rgnB);
  if (!a || !b) return rgnA == rgnB;
  if (BoxIsEmpty(a->rgnBBox) && BoxIsEmpty(b->rgnBBox)) return true;
  RegionKind kindA = KindOf(*a), kindB = KindOf(*b);
  if (kindA == RegionKind::Win32 && kindB == RegionKind::Win32)
    return ::EqualRgn(a->shape, b->shape) != 0;
  if (kindA == RegionKind::Win32 || kindB == RegionKind::Win32)
    return ::EqualRgn(ShapeForGdi(*a, 0), ShapeForGdi(*b, 1)) != 0;
  if (std::memcmp(&a->rgnBBox, &b->rgnBBox, sizeof(Rect)) != 0) return false;
  if (kindA != RegionKind::Mask || kindB != RegionKind::Mask) return true;
  const uint8_t* bitsA = MaskBitsOf(*a);
  const uint8_t* bitsB = MaskBitsOf(*b);
  if (!bitsA || !bitsB) return bitsA == bitsB;
  size_t bytes =
      MaskRowBytes(a->rgnBBox.right - a->rgnBBox.left) * size_t(a->rgnBBox.bottom - a->rgnBBox.top);
  return std::memcmp(bitsA, bitsB, bytes) == 0;
}

// A mask region found empty becomes the empty rectangle on the way.
KWE_API Boolean KWE_CALL EmptyRgn(RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return true;
  if (BoxIsEmpty(r->rgnBBox)) return true;
  if (KindOf(*r) != RegionKind::Mask) return false;
  const uint8_t* bits = MaskBitsOf(*r);
  int width = r->rgnBBox.right - r->rgnBBox.left;
  int height = r->rgnBBox.bottom - r->rgnBBox.top;
  if (bits && !MaskRaster(width, height, bits).NothingInside()) return false;
  MakeRectangle(rgn, Rect{0, 0, 0, 0});
  return true;
}
