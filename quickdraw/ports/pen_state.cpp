// The pen: size, mode, pattern, visibility, and moving it.
#include <windows.h>

#include <cstring>

#include "FixMath.h"
#include "Quickdraw.h"
#include "frame/low_memory.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/transfer_modes.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kPixPatInPenState = static_cast<SInt16>(0x8000);

}  // namespace

void DerivePenMode(PortAttr& a, SInt16 mode) {
  ModeInGdi gdi = ModeInGdiOf(mode);
  a.penModeUnsupported = gdi.unsupported;
  a.penRop2 = gdi.rop2;
  a.penBackgroundMode = gdi.backgroundMode;
  a.dirty |= kPenDirty;
}

// Only the device pen moves: lines draw from explicit points, so the DC's
// current position (which every port on the DC would share) is not kept.
void MovePenTo(GrafPtr port, PortAttr& a, Point to) {
  port->pnLoc = to;
  RecordPolygonPoint(port, to);
  UpdateDevicePen(a);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL PenSize(SInt16 width, SInt16 height) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  if (port->pnSize.h != width || port->pnSize.v != height) a->dirty |= kPenDirty;
  port->pnSize = Point{height, width};
  if (width == 0 || height == 0) {
    a->penScaleOn = 0;
    a->penScale = kFixedOne;
  }
  UpdateDevicePenSize(*a);
}

KWE_API void KWE_CALL PenMode(SInt16 mode) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  SInt16 stored = StoredPenMode(mode);
  if (stored == port->pnMode) return;
  port->pnMode = stored;
  DerivePenMode(*a, stored);
}

KWE_API void KWE_CALL PenPat(const Pattern* pat) {
  if (!pat || !CurrentAttr()) return;
  SetPenPattern(CurrentPort(), *pat);
}

// The port's own pen pattern is given up when another takes its place.
KWE_API void KWE_CALL PenPixPat(PixPatHandle pp) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!pp || !a || !IsColourPort(port)) return;
  CGrafPtr c = AsColour(port);
  if (c->pnPixPat == pp) return;
  if (a->penPixPat && c->pnPixPat == a->penPixPat) {
    DisposePixPatRecord(a->penPixPat);
    a->penPixPat = nullptr;
  }
  c->pnPixPat = pp;
  a->penStyle = PS_DOT;
  a->dirty |= kPenDirty;
}

KWE_API void KWE_CALL PenNormal(void) {
  PenSize(1, 1);
  PenMode(patCopy);
  PenPat(&kwe::lowmem::At<Pattern>(kwe::lowmem::Slot::Black));
}

KWE_API void KWE_CALL HidePen(void) {
  if (CurrentAttr()) --CurrentPort()->pnVis;
}

KWE_API void KWE_CALL ShowPen(void) {
  if (CurrentAttr()) ++CurrentPort()->pnVis;
}

KWE_API void KWE_CALL GetPen(Point* pt) {
  if (pt && CurrentAttr()) *pt = CurrentPort()->pnLoc;
}

KWE_API void KWE_CALL GetPenState(PenState* ps) {
  GrafPtr port = CurrentPort();
  if (!ps || !CurrentAttr()) return;
  ps->pnLoc = port->pnLoc;
  ps->pnSize = port->pnSize;
  ps->pnMode = port->pnMode;
  if (!IsColourPort(port)) {
    ps->pnPat = port->pnPat;
    return;
  }
  PixPatHandle pp = AsColour(port)->pnPixPat;
  if (pp && *pp && (*pp)->patType != 0) {
    // Only the handle fits; the pattern field carries it.
    ps->pnMode = static_cast<SInt16>(ps->pnMode | kPixPatInPenState);
    std::memset(&ps->pnPat, 0, sizeof ps->pnPat);
    static_assert(sizeof(Pattern) >= sizeof(PixPatHandle), "a handle fits the pattern field");
    std::memcpy(&ps->pnPat, &pp, sizeof pp);
  } else {
    ps->pnPat = PenPatternOf(port);
  }
}

KWE_API void KWE_CALL SetPenState(const PenState* ps) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!ps || !a) return;
  port->pnLoc = ps->pnLoc;
  UpdateDevicePen(*a);
  PenSize(ps->pnSize.h, ps->pnSize.v);
  if (ps->pnMode & kPixPatInPenState) {
    PenMode(static_cast<SInt16>(ps->pnMode & 0x7FFF));
    PixPatHandle pp;
    std::memcpy(&pp, &ps->pnPat, sizeof pp);
    PenPixPat(pp);
  } else {
    PenMode(ps->pnMode);
    PenPat(&ps->pnPat);
  }
}

KWE_API void KWE_CALL MoveT(SInt16 h, SInt16 v) {
  if (PortAttr* a = CurrentAttr()) MovePenTo(CurrentPort(), *a, Point{v, h});
}

KWE_API void KWE_CALL Move(SInt16 dh, SInt16 dv) {
  GrafPtr port = CurrentPort();
  if (PortAttr* a = CurrentAttr())
    MovePenTo(
        port, *a,
        Point{static_cast<SInt16>(port->pnLoc.v + dv), static_cast<SInt16>(port->pnLoc.h + dh)});
}

// Text drawing advances by fractions of a pixel: the device pen keeps the
// exact position while pnLoc keeps the rounded one.
KWE_API void KWE_CALL KWE_MoveFixedAmount(Boolean usePen, Fixed dh, Fixed dv) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a) return;
  if (usePen) {
    port->pnLoc.h = static_cast<SInt16>(port->pnLoc.h + FixRound(dh));
    port->pnLoc.v = static_cast<SInt16>(port->pnLoc.v + FixRound(dv));
    const CoordinateMapping& m = a->mapping;
    if (m.scaleActive) {
      dh = static_cast<Fixed>(static_cast<int64_t>(dh) * m.destExtentH / m.sourceExtentH);
      dv = static_cast<Fixed>(static_cast<int64_t>(dv) * m.destExtentV / m.sourceExtentV);
    }
    a->devicePenH += FixRound(dh);
    a->devicePenV += FixRound(dv);
  } else {
    a->devicePenH = 0;
    a->devicePenV = 0;
  }
}
