// The rectangle calculations: pure arithmetic on 16-bit coordinates, with the
// Toolbox's rules that an empty result is (0, 0, 0, 0) and that the
// bottom-right edge lies outside the rectangle. SetRect, OffsetRect,
// InsetRect, UnionRect, PtInRect and EqualRect collide with Win32 names and
// are exported shortened.
#include <algorithm>

#include "Quickdraw.h"

namespace {

bool IsEmpty(const Rect& r) { return r.bottom <= r.top || r.right <= r.left; }

SInt16 Narrow(int value) { return static_cast<SInt16>(value); }

}  // namespace

KWE_API void KWE_CALL SetRec(Rect* r, SInt16 left, SInt16 top, SInt16 right, SInt16 bottom) {
  if (r) *r = Rect{top, left, bottom, right};
}

KWE_API void KWE_CALL OffsetRec(Rect* r, SInt16 dh, SInt16 dv) {
  if (!r) return;
  *r = Rect{Narrow(r->top + dv), Narrow(r->left + dh), Narrow(r->bottom + dv),
            Narrow(r->right + dh)};
}

KWE_API void KWE_CALL InsetRec(Rect* r, SInt16 dh, SInt16 dv) {
  if (!r) return;
  *r = Rect{Narrow(r->top + dv), Narrow(r->left + dh), Narrow(r->bottom - dv),
            Narrow(r->right - dh)};
  if (IsEmpty(*r)) *r = Rect{0, 0, 0, 0};
}

KWE_API Boolean KWE_CALL SectRect(const Rect* src1, const Rect* src2, Rect* dstRect) {
  if (!src1 || !src2 || !dstRect) return false;
  Rect r{std::max(src1->top, src2->top), std::max(src1->left, src2->left),
         std::min(src1->bottom, src2->bottom), std::min(src1->right, src2->right)};
  *dstRect = IsEmpty(r) ? Rect{0, 0, 0, 0} : r;
  return !IsEmpty(r);
}

// Empty rectangles take part like any other: the Toolbox does not skip them.
KWE_API void KWE_CALL UnionRec(const Rect* src1, const Rect* src2, Rect* dstRect) {
  if (!src1 || !src2 || !dstRect) return;
  *dstRect = Rect{std::min(src1->top, src2->top), std::min(src1->left, src2->left),
                  std::max(src1->bottom, src2->bottom), std::max(src1->right, src2->right)};
}

KWE_API Boolean KWE_CALL PtInRec(Point pt, const Rect* r) {
  return r && pt.h >= r->left && pt.h < r->right && pt.v >= r->top && pt.v < r->bottom;
}

KWE_API Boolean KWE_CALL EqualRec(const Rect* rect1, const Rect* rect2) {
  return rect1 && rect2 && rect1->top == rect2->top && rect1->left == rect2->left &&
         rect1->bottom == rect2->bottom && rect1->right == rect2->right;
}

KWE_API Boolean KWE_CALL EmptyRect(const Rect* r) { return !r || IsEmpty(*r); }
