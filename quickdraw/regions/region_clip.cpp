// KWE_SelectClipRgn: a region as a device context's clip region.
#include <windows.h>

#include "KWERegions.h"
#include "frame/system_values.h"
#include "quickdraw/regions/region_record.h"

namespace {
// While set, callers only learn a region's kind and the DC's clip is kept.
constexpr int16_t kSysValueKeepClip = 23;
}  // namespace

using namespace kwe::quickdraw;

// Rectangles, and mask regions (by their box), go to GDI through the scratch
// rectangle region; SelectClipRgn copies it, so the scratch stays free.
// A null region or a DC GDI refuses answers 0 (ERROR) with nothing selected.
KWE_API SInt16 KWE_CALL KWE_SelectClipRgn(HDC dc, RgnHandle rgn) {
  RegionRecord* r = RecordOf(rgn);
  if (!r) return ERROR;
  bool win32 = KindOf(*r) == RegionKind::Win32;
  SInt16 kind = win32 ? COMPLEXREGION : SIMPLEREGION;
  if (kwe::ReadSystemValue(kSysValueKeepClip) != 0) return kind;
  int selected = SelectClipRgn(dc, ShapeForGdi(*r));
  if (selected == ERROR) return ERROR;
  if (selected == NULLREGION && BoxIsEmpty(r->rgnBBox)) return NULLREGION;
  return kind;
}
