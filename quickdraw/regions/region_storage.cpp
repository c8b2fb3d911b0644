// Making, copying and disposing regions, and the record helpers every region
// call shares.
#include <windows.h>

#include <algorithm>

#include "KWERegions.h"
#include "Memory.h"
#include "memory/master_record.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {

RegionRecord* RecordOf(RgnHandle rgn) {
  if (!rgn) return nullptr;
  Ptr data = *reinterpret_cast<Handle>(rgn);
  if (!data || data == memory::kNoBlock) return nullptr;
  return reinterpret_cast<RegionRecord*>(data);
}

RegionKind KindOf(const RegionRecord& r) {
  if (r.shape == MaskMarker()) return RegionKind::Mask;
  if (!r.shape || r.shape == RectangleMarker()) return RegionKind::Rectangle;
  return RegionKind::Win32;
}

int ClampCoordinate(int c) { return std::clamp(c, -kCoordinateLimit, kCoordinateLimit); }

bool BoxIsEmpty(const Rect& box) { return box.bottom <= box.top || box.right <= box.left; }

void StoreBox(RegionRecord& r, int left, int top, int right, int bottom) {
  r.rgnBBox.left = SInt16(ClampCoordinate(left));
  r.rgnBBox.top = SInt16(ClampCoordinate(top));
  r.rgnBBox.right = SInt16(ClampCoordinate(right));
  r.rgnBBox.bottom = SInt16(ClampCoordinate(bottom));
}

RECT WinRectOf(const Rect& box) {
  if (BoxIsEmpty(box)) return RECT{0, 0, 0, 0};
  return RECT{box.left, box.top, box.right, box.bottom};
}

void RefreshBox(RegionRecord& r) {
  RECT box;
  GetRgnBox(r.shape, &box);
  if (box.left < -kCoordinateLimit || box.top < -kCoordinateLimit || box.right > kCoordinateLimit ||
      box.bottom > kCoordinateLimit) {
    Rect limits{-kCoordinateLimit, -kCoordinateLimit, kCoordinateLimit, kCoordinateLimit};
    CombineRgn(r.shape, r.shape, ScratchRectangleOf(limits), RGN_AND);
    GetRgnBox(r.shape, &box);
  }
  StoreBox(r, box.left, box.top, box.right, box.bottom);
}

void MakeRectangle(RgnHandle rgn, const Rect& box) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return;
  switch (KindOf(*r)) {
    case RegionKind::Win32: DeleteObject(r->shape); break;
    case RegionKind::Mask:
      if (r->mask) DisposeHandle(r->mask);
      r->mask = nullptr;
      break;
    case RegionKind::Rectangle: break;
  }
  r->shape = RectangleMarker();
  r->rgnSize = kPlainRegionSize;
  StoreBox(*r, box.left, box.top, box.right, box.bottom);
  Handle h = reinterpret_cast<Handle>(rgn);
  if (GetHandleSize(h) > kPlainRecordBytes) SetHandleSize(h, kPlainRecordBytes);
}

bool MakeMaskRegion(RgnHandle rgn, const Rect& box, Handle mask) {
  Handle h = reinterpret_cast<Handle>(rgn);
  if (!RecordOf(rgn)) return false;
  if (GetHandleSize(h) < kMaskRecordBytes) {
    SetHandleSize(h, kMaskRecordBytes);
    if (MemError() != noErr) return false;
  }
  RegionRecord* r = RecordOf(rgn);
  RegionKind kind = KindOf(*r);
  if (kind == RegionKind::Win32) DeleteObject(r->shape);
  // A plain record that just grew has no mask field worth reading.
  if (kind == RegionKind::Mask && r->mask && r->mask != mask) DisposeHandle(r->mask);
  r->shape = MaskMarker();
  r->mask = mask;
  r->rgnSize = kMaskRegionSize;
  StoreBox(*r, box.left, box.top, box.right, box.bottom);
  return true;
}

bool SetRegionFromWin32(RgnHandle rgn, HRGN src) {
  HRGN own = KWE_RgnSetToRealRectRgn(rgn);
  if (!own || CombineRgn(own, src, nullptr, RGN_COPY) == ERROR) return false;
  RefreshBox(*RecordOf(rgn));
  return true;
}

HRGN ScratchRectangleOf(const Rect& box, int which) {
  HRGN scratch = ScratchRectangleRegion(which);
  RECT rect = WinRectOf(box);
  ::SetRectRgn(scratch, rect.left, rect.top, rect.right, rect.bottom);
  return scratch;
}

HRGN ShapeForGdi(const RegionRecord& r, int which) {
  return KindOf(r) == RegionKind::Win32 ? r.shape : ScratchRectangleOf(r.rgnBBox, which);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API RgnHandle KWE_CALL NewRgn(void) {
  Handle h = NewHandle(kPlainRecordBytes);
  if (!h) return nullptr;
  RegionRecord* r = reinterpret_cast<RegionRecord*>(*h);
  r->rgnSize = kPlainRegionSize;
  r->rgnBBox = Rect{0, 0, 0, 0};
  r->shape = RectangleMarker();
  return reinterpret_cast<RgnHandle>(h);
}

// A placeholder region (master pointer 0xFFFF) stands for a region another
// record shares and is never disposed.
KWE_API void KWE_CALL DisposeRgn(RgnHandle rgn) {
  if (!rgn || *reinterpret_cast<Handle>(rgn) == kwe::memory::kNoBlock) return;
  if (RegionRecord* r = RecordOf(rgn)) MakeRectangle(rgn, r->rgnBBox);
  DisposeHandle(reinterpret_cast<Handle>(rgn));
}

// The destination is left as it was when the copy cannot be made.
KWE_API void KWE_CALL CopyRg(RgnHandle srcRgn, RgnHandle dstRgn) {
  if (srcRgn == dstRgn) return;
  RegionRecord* src = RecordOf(srcRgn);
  RegionRecord* dst = RecordOf(dstRgn);
  if (!src || !dst) return;
  Rect box = src->rgnBBox;
  switch (KindOf(*src)) {
    case RegionKind::Rectangle: MakeRectangle(dstRgn, box); break;
    case RegionKind::Win32: {
      HRGN from = src->shape;
      if (KindOf(*dst) == RegionKind::Mask) MakeRectangle(dstRgn, dst->rgnBBox);
      HRGN to = KWE_RgnSetToRealRectRgn(dstRgn);
      if (!to) return;
      CombineRgn(to, from, from, RGN_COPY);
      StoreBox(*RecordOf(dstRgn), box.left, box.top, box.right, box.bottom);
      break;
    }
    case RegionKind::Mask: {
      Handle mask = src->mask;
      if (mask && HandToHand(&mask) != noErr) return;
      if (!MakeMaskRegion(dstRgn, box, mask) && mask) DisposeHandle(mask);
      break;
    }
  }
}

// An empty rectangle gives the empty region (0,0,0,0), as on the Macintosh,
// so that every empty region compares equal to every other.
KWE_API void KWE_CALL SetRectRg(RgnHandle rgn, SInt16 left, SInt16 top, SInt16 right,
                                SInt16 bottom) {
  Rect box{top, left, bottom, right};
  if (BoxIsEmpty(box)) box = Rect{0, 0, 0, 0};
  MakeRectangle(rgn, box);
}

KWE_API void KWE_CALL SetEmptyRgn(RgnHandle rgn) { SetRectRg(rgn, 0, 0, 0, 0); }

KWE_API void KWE_CALL RectRgn(RgnHandle rgn, const Rect* r) {
  if (r) SetRectRg(rgn, r->left, r->top, r->right, r->bottom);
}

KWE_API HRGN KWE_CALL KWE_RgnSetToRealRectRgn(RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return nullptr;
  RegionKind kind = KindOf(*r);
  if (kind == RegionKind::Win32) return r->shape;
  // A mask region hands GDI its box, as when it is selected as a clip.
  if (kind == RegionKind::Mask) MakeRectangle(rgn, r->rgnBBox);
  r = RecordOf(rgn);
  RECT box = WinRectOf(r->rgnBBox);
  HRGN own = CreateRectRgn(box.left, box.top, box.right, box.bottom);
  if (own) r->shape = own;
  return own;
}

KWE_API HRGN KWE_CALL KWE_RgnSetToFakeRectRgn(RgnHandle rgn) {
  if (RegionRecord* r = RecordOf(rgn)) MakeRectangle(rgn, r->rgnBBox);
  return RectangleMarker();
}

KWE_API Boolean KWE_CALL KWE_IsRectRgn(RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return false;
  RegionKind kind = KindOf(*r);
  if (kind == RegionKind::Rectangle) return true;
  const Rect& box = r->rgnBBox;
  bool zeroBox = box.top == 0 && box.left == 0 && box.bottom == 0 && box.right == 0;
  if (zeroBox || (kind == RegionKind::Win32 && ::EqualRgn(r->shape, ScratchRectangleOf(box)))) {
    MakeRectangle(rgn, box);
    return true;
  }
  return false;
}

KWE_API void KWE_CALL KWE_RgnGetBBoxRECTFromRgn(RgnHandle rgn, RECT* box) {
  RegionRecord* r = RecordOf(rgn);
  if (!r || !box) return;
  if (KindOf(*r) == RegionKind::Win32) RefreshBox(*r);
  *box = RECT{r->rgnBBox.left, r->rgnBBox.top, r->rgnBBox.right, r->rgnBBox.bottom};
}
