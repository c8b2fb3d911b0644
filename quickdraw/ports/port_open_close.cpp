// Opening, initialising and closing ports.
#include <windows.h>

#include "KWEPorts.h"
#include "Memory.h"
#include "frame/handle_slots.h"
#include "frame/low_memory.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/patterns/port_patterns.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/shapes/arithmetic_drawing.h"
#include "quickdraw/text/text_state.h"

namespace kwe::quickdraw {
namespace {

using lowmem::At;
using lowmem::Slot;

// The clip and visible rectangle of a new port: QuickDraw's "wide open"
// rectangle, kept inside the range every region coordinate lives in.
constexpr SInt16 kWideOpen = 16383;

Rect ScreenBounds() { return At<BitMap>(Slot::ScreenBits).bounds; }

HDC ChooseDC(PortAttr& a) {
  bool owned = Screen().pendingOwned;
  MutableScreen().pendingOwned = false;
  if (HDC pending = TakePendingScreenDC()) {
    if (owned) a.flags |= kOwnsDcFlag;
    return pending;
  }
  a.flags |= kOwnsDcFlag;
  GDHandle device = At<GDHandle>(Slot::TheGDevice);
  if (device && *device && (*device)->gdRefNum != 0 && (*device)->gdReserved != 0)
    return HandleFromSlot<HDC>((*device)->gdReserved);
  return SharedMemoryDC();
}

bool IsSharedDC(HDC dc) {
  if (dc == SharedMemoryDC()) return true;
  GDHandle device = Screen().mainDevice;
  return device && *device && HandleFromSlot<HDC>((*device)->gdReserved) == dc;
}

// rgn when the port has one, else a new one.
RgnHandle RegionOrNew(RgnHandle rgn) { return rgn ? rgn : NewRgn(); }

void ColourDefaults(GrafPtr port, PortAttr* a, int slot, bool makeRecords) {
  CGrafPtr c = AsColour(port);
  if (a) a->flags |= kColourPortFlag;
  if (makeRecords) {
    PixMapHandle pm = MakePixMap(a ? a->hdc : SharedMemoryDC());
    if (pm) {
      (*pm)->baseAddr = PortTag(slot);
      GDHandle device = Screen().mainDevice;
      if (device && (*device)->gdPMap) {
        DisposeHandle(reinterpret_cast<Handle>((*pm)->pmTable));
        (*pm)->pmTable = (*(*device)->gdPMap)->pmTable;
      }
    }
    c->portPixMap = pm;
    c->grafVars = NewHandleClear(sizeof(GrafVars));
    c->visRgn = NewRgn();
    c->clipRgn = NewRgn();
    c->bkPixPat = MakePixPat(At<Pattern>(Slot::White));
    c->pnPixPat = MakePixPat(At<Pattern>(Slot::Black));
    c->fillPixPat = MakePixPat(At<Pattern>(Slot::Black));
    if (a) {
      a->backPixPat = c->bkPixPat;
      a->penPixPat = c->pnPixPat;
      a->fillPixPat = c->fillPixPat;
    }
  } else {
    c->visRgn = RegionOrNew(c->visRgn);
    c->clipRgn = RegionOrNew(c->clipRgn);
  }
  c->device = 0;
  c->picSave = c->rgnSave = c->polySave = nullptr;
  c->grafProcs = nullptr;
  c->portVersion = static_cast<SInt16>(0xC000);
  if (c->grafVars && *c->grafVars) {
    GrafVars& vars = *reinterpret_cast<GrafVars*>(*c->grafVars);
    vars = GrafVars{};
    vars.rgbHiliteColor = At<RGBColor>(Slot::HiliteRGB);
    vars.pmFlags = static_cast<SInt16>(0xC000);
  }
  c->chExtra = 0;
  c->pnLocHFrac = 0;
  c->fgColor = 0x00FFFFFF;
  c->bkColor = 0;
  // Both calls take effect only when the colour changes.
  c->rgbFgColor = RGBColor{1, 1, 1};
  c->rgbBkColor = RGBColor{0, 0, 0};
  RGBColor black{0, 0, 0}, white{0xFFFF, 0xFFFF, 0xFFFF};
  RGBForeColor(&black);
  RGBBackColor(&white);
}

void PlainDefaults(GrafPtr port, int slot, bool makeRecords) {
  port->visRgn = makeRecords ? NewRgn() : RegionOrNew(port->visRgn);
  port->clipRgn = makeRecords ? NewRgn() : RegionOrNew(port->clipRgn);
  port->device = 0;
  port->picSave = port->rgnSave = port->polySave = nullptr;
  port->grafProcs = nullptr;
  port->portBits = BitMap{PortTag(slot), 0, ScreenBounds()};
  port->fgColor = blackColor;
  port->bkColor = whiteColor;
  if (PortAttr* a = AttrOf(port)) {
    a->fgRGB = RGBColor{0, 0, 0};
    a->bkRGB = RGBColor{0xFFFF, 0xFFFF, 0xFFFF};
    a->fgColorRef = RGB(0, 0, 0);
    a->bkColorRef = RGB(255, 255, 255);
  }
}

void CommonDefaults(GrafPtr port) {
  port->portRect = ScreenBounds();
  port->pnLoc = Point{0, 0};
  port->pnSize = Point{1, 1};
  port->pnMode = patCopy;
  SetBackPattern(port, At<Pattern>(Slot::White));
  SetFillPattern(port, At<Pattern>(Slot::Black));
  SetPenPattern(port, At<Pattern>(Slot::Black));
  port->pnVis = 0;
  port->txFont = 0;
  port->txFace = 0;
  port->txMode = srcOr;
  port->txSize = 12;
  port->spExtra = 0;
  port->colrBit = 0;
  SetRectRgn(port->visRgn, -kWideOpen, -kWideOpen, kWideOpen, kWideOpen);
  SetRectRgn(port->clipRgn, -kWideOpen, -kWideOpen, kWideOpen, kWideOpen);
  if (PortAttr* a = AttrOf(port)) {
    DerivePenMode(*a, patCopy);
    TakeOriginFromPortRect(*a);
    UpdateDevicePen(*a);
    UpdateDevicePenSize(*a);
  }
  KWE_ClipRgnChange(port);
  if (HDC dc = CurrentDC()) SetTextAlign(dc, TA_BASELINE);
}

void OpenAnyPort(GrafPtr port, bool colour) {
  if (!port) return;
  int slot = -1;
  PortAttr* a = AllocateAttr(port, &slot);
  port->patStretch = static_cast<SInt16>(slot);
  if (!a) {
    SetQDError(memFullErr);
    return;
  }
  SetQDError(noErr);
  a->hdc = ChooseDC(*a);
  if (a->flags & kOwnsDcFlag) a->ownedDC = a->hdc;
  SetTextAlign(a->hdc, TA_BASELINE);
  a->deviceDepth =
      static_cast<uint8_t>(HasScreenCaps(a->hdc) ? Screen().depth : DeviceDepthOf(a->hdc));
  MakeCurrent(port);
  SetCurrentDC(a->hdc);
  if (colour)
    ColourDefaults(port, a, slot, true);
  else
    PlainDefaults(port, slot, true);
  CommonDefaults(port);
  SetCurrentDC(a->hdc);
}

void DisposeColourRecords(CGrafPtr c, PortAttr* a) {
  if (c->grafVars) DisposeHandle(c->grafVars);
  c->grafVars = nullptr;
  if (a) {
    DisposePixPatRecord(a->backPixPat);
    DisposePixPatRecord(a->penPixPat);
    DisposePixPatRecord(a->fillPixPat);
    a->backPixPat = a->penPixPat = a->fillPixPat = nullptr;
  }
  c->bkPixPat = c->pnPixPat = c->fillPixPat = nullptr;
  if (PixMapHandle pm = c->portPixMap) {
    // The colour table is the main device's.
    if (*pm) (*pm)->pmTable = nullptr;
    DisposePixMapRecord(pm);
  }
  c->portPixMap = nullptr;
}

void CloseAnyPort(GrafPtr port) {
  PortAttr* a = AttrOf(port);
  if (!a) return;
  GrafPtr screen = ScreenPort();
  GrafPtr remembered = CurrentPort() == port ? screen : CurrentPort();
  MakeCurrent(port);
  ReleaseBitsOf(port);
  if (port->rgnSave) {  // a region recording never closed
    KillPoly(reinterpret_cast<PolyHandle>(port->polySave));
    DisposeRgn(reinterpret_cast<RgnHandle>(port->rgnSave));
    port->rgnSave = port->polySave = nullptr;
  }
  DisposeRgn(port->clipRgn);
  DisposeRgn(port->visRgn);
  port->clipRgn = port->visRgn = nullptr;
  if (IsColourPort(port)) DisposeColourRecords(AsColour(port), a);
  int slot = port->patStretch;
  ReleasePortRecord(slot);
  port->patStretch = -1;
  // The library's own short-lived port (FMSwapFont's) does not count.
  if (!AnyOrdinaryPortOpen() && slot != kInternalPortSlot) ReleaseTextCaches();
  if (port == screen) {
    MakeCurrent(nullptr);
    SetCurrentDC(nullptr);
    return;
  }
  // A program that closes its current port usually sets another next:
  // the screen's DC is not taken unless something draws there first.
  if (remembered == screen && !Screen().dcHeld)
    MakeScreenCurrentDeferringDC();
  else
    SetPort(remembered);
}

}  // namespace

void ReleasePortRecord(int slot) {
  PortAttr* a = AttrOfSlot(slot);
  if (!a) return;
  ReleaseArithmeticSheets(a);
  FlushGdiState(*a);
  if (CurrentDC() == a->hdc && CurrentAttr() == a) SetCurrentDC(nullptr);
  if (a->flags & kWindowPortFlag) {
    if (a->ownedDC) ReleaseDC(a->hwnd, a->ownedDC);  // GetDC's, not ours to delete
  } else if ((a->flags & kOwnsDcFlag) && a->ownedDC && !IsSharedDC(a->ownedDC)) {
    DeleteDC(a->ownedDC);
  }
  FreeAttr(slot);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL OpenPort(GrafPtr port) { OpenAnyPort(port, false); }
KWE_API void KWE_CALL OpenCPort(CGrafPtr port) {
  OpenAnyPort(reinterpret_cast<GrafPtr>(port), true);
}

KWE_API void KWE_CALL InitPort(GrafPtr port) {
  if (!port) return;
  MakeCurrent(port);
  PortAttr* a = AttrOf(port);
  if (a) {
    ResetGdiCache(*a);
    SetCurrentDC(a->hdc);
  }
  int slot = port->patStretch;
  if (IsColourPort(port))
    ColourDefaults(port, a, slot, false);
  else
    PlainDefaults(port, slot, false);
  CommonDefaults(port);
}

KWE_API void KWE_CALL InitCPort(CGrafPtr port) { InitPort(reinterpret_cast<GrafPtr>(port)); }
KWE_API void KWE_CALL ClosePort(GrafPtr port) { CloseAnyPort(port); }
KWE_API void KWE_CALL CloseCPort(CGrafPtr port) { CloseAnyPort(reinterpret_cast<GrafPtr>(port)); }
