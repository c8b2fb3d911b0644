// What a RgnHandle points to, and the shared objects regions refer to.
//
// A region is not kept in the Macintosh scan-line encoding: behind the
// published rgnSize and rgnBBox it refers to the shared rectangle marker (the
// shape is exactly the box), to a Win32 region it owns, or to the shared mask
// marker with a handle of a packed 1-bit DIB covering the box.
#pragma once
#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "Quickdraw.h"
#include "frame/layout_check.h"

namespace kwe::quickdraw {

// In the 32-bit build the record is the packed 18-byte record of the
// published layout: the shape and mask are 32-bit fields at 10 and 14. A
// 64-bit HRGN and Handle do not fit 32 bits, so the 64-bit build widens the
// two fields to natural alignment (shape at 16, mask at 24); rgnSize keeps
// its published values 12 and 16 in both builds.
#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(push, 2)
#else
#pragma pack(push, 8)
#endif
struct RegionRecord {
  SInt16 rgnSize;
  Rect rgnBBox;
  HRGN shape;   // owned Win32 region, or one of the two shared markers
  Handle mask;  // mask regions only
};
#pragma pack(pop)

KWE_FIELD(RegionRecord, rgnSize, 0);
KWE_FIELD(RegionRecord, rgnBBox, 2);
static_assert(sizeof(MacRegion) == 10, "rgnSize and rgnBBox, as applications read them");
#if UINTPTR_MAX == 0xFFFFFFFFu
KWE_FIELD(RegionRecord, shape, 10);
KWE_FIELD(RegionRecord, mask, 14);
static_assert(sizeof(RegionRecord) == 18, "the published mask region record");
#else
KWE_FIELD(RegionRecord, shape, 16);
KWE_FIELD(RegionRecord, mask, 24);
static_assert(sizeof(RegionRecord) == 32, "the widened region record");
#endif

constexpr SInt16 kPlainRegionSize = 12;  // rgnSize of rectangles and Win32 regions
constexpr SInt16 kMaskRegionSize = 16;
// Handle sizes: the mask field is there only in mask regions.
constexpr Size kPlainRecordBytes = offsetof(RegionRecord, mask);
constexpr Size kMaskRecordBytes = sizeof(RegionRecord);

// Every coordinate a region stores lies in this range, so that a box's
// width and height always fit 16 bits.
constexpr int kCoordinateLimit = 16383;

enum class RegionKind { Rectangle, Win32, Mask };

// Made by InitGraf or the first region call, kept to the end of the session
// and never owned by a region.
void StartRegions();
void EndRegions();
HRGN RectangleMarker();
HRGN MaskMarker();
// Two, so that both operands of a set operation can be rectangles.
HRGN ScratchRectangleRegion(int which = 0);
RgnHandle ScratchRegion();  // for the clipping code of the port calls

// The record behind a region; null for a null handle, a placeholder (master
// pointer 0xFFFF) or a handle with no data.
RegionRecord* RecordOf(RgnHandle rgn);
RegionKind KindOf(const RegionRecord& r);

int ClampCoordinate(int c);
bool BoxIsEmpty(const Rect& box);
void StoreBox(RegionRecord& r, int left, int top, int right, int bottom);
RECT WinRectOf(const Rect& box);  // an empty box gives an empty RECT at 0,0

// The box read back from the owned Win32 region. A shape that reaches past
// the coordinate range is cut to it first.
void RefreshBox(RegionRecord& r);

// Releases what the region owns and makes it the rectangle of box. The
// handle shrinks to the plain record, so RecordOf must be asked again.
void MakeRectangle(RgnHandle rgn, const Rect& box);

// Makes the region a mask region over box with mask (taking ownership).
// False, with the region unchanged, when the handle cannot grow.
bool MakeMaskRegion(RgnHandle rgn, const Rect& box, Handle mask);

// The region takes the shape of a Win32 region (copied; src stays the
// caller's). False, with the region unchanged, when GDI cannot copy it.
bool SetRegionFromWin32(RgnHandle rgn, HRGN src);

// A scratch rectangle region set to box (empty for an empty box).
HRGN ScratchRectangleOf(const Rect& box, int which = 0);
// The Win32 shape of a region for a GDI call: its own region, or a scratch
// rectangle region set to its box (rectangles and masks).
HRGN ShapeForGdi(const RegionRecord& r, int which = 0);

}  // namespace kwe::quickdraw
