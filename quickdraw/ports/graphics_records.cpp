// Pixel maps, pixel patterns and the main graphics device.
#include "quickdraw/ports/graphics_records.h"

#include <cstring>

#include "Memory.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::quickdraw {
namespace {

constexpr Size kColourTableBytes = 16;

Fixed FixedOfCount(int n) { return static_cast<Fixed>(static_cast<UInt32>(n) << 16); }

}  // namespace

bool IsLibraryPixMap(PixMapHandle pm) {
  return pm && *pm && (*pm)->pmVersion == kLibraryPixMapVersion &&
         GetHandleSize(reinterpret_cast<Handle>(pm)) >= static_cast<Size>(sizeof(LibraryPixMap));
}

LibraryPixMap* LibraryRecordOf(PixMap* pm) {
  if (!pm || pm->rowBytes >= 0 || pm->pmVersion != kLibraryPixMapVersion) return nullptr;
  return reinterpret_cast<LibraryPixMap*>(pm);
}

PixMapHandle MakePixMap(HDC dc) {
  Handle h = NewHandleClear(sizeof(LibraryPixMap));
  if (!h) return nullptr;
  Handle table = NewHandleClear(kColourTableBytes);
  if (!table) {
    DisposeHandle(h);
    return nullptr;
  }
  bool screenCaps = HasScreenCaps(dc);
  int depth =
      screenCaps ? Screen().bitsPerPixel : GetDeviceCaps(dc, BITSPIXEL) * GetDeviceCaps(dc, PLANES);
  // The screen's size as InitGraf measured it: GetSystemMetrics asks the
  // window server, and every port and GWorld makes a pixel map.
  int width = Screen().width ? Screen().width : GetSystemMetrics(SM_CXSCREEN);
  int height = Screen().height ? Screen().height : GetSystemMetrics(SM_CYSCREEN);
  PixMap& pm = *reinterpret_cast<PixMap*>(*h);
  pm.baseAddr = reinterpret_cast<Ptr>(kNoBits);
  pm.rowBytes = static_cast<SInt16>(((depth * width / 8 + 1) & 0x3FFE) | 0x8000);
  pm.bounds = Rect{0, 0, static_cast<SInt16>(height - 1), static_cast<SInt16>(width - 1)};
  pm.pmVersion = kLibraryPixMapVersion;
  pm.hRes = FixedOfCount(screenCaps ? Screen().logPixelsX : GetDeviceCaps(dc, LOGPIXELSX));
  pm.vRes = FixedOfCount(screenCaps ? Screen().logPixelsY : GetDeviceCaps(dc, LOGPIXELSY));
  pm.pixelSize = static_cast<SInt16>(depth);
  if (depth > 8) {
    pm.pixelType = 16;
    pm.cmpCount = 3;
    pm.cmpSize = 5;
  } else {
    pm.cmpCount = 1;
    pm.cmpSize = static_cast<SInt16>(depth);
  }
  pm.pmTable = reinterpret_cast<CTabHandle>(table);
  reinterpret_cast<LibraryPixMap*>(*h)->flags = kMacPixelsFlag;
  return reinterpret_cast<PixMapHandle>(h);
}

void DisposePixMapRecord(PixMapHandle pm) {
  if (!pm) return;
  if (*pm && (*pm)->pmTable) DisposeHandle(reinterpret_cast<Handle>((*pm)->pmTable));
  DisposeHandle(reinterpret_cast<Handle>(pm));
}

bool RgbOfPixPat(PixPatHandle pp, RGBColor* rgb) {
  if (!pp || !*pp || (*pp)->patType != 2) return false;
  if (GetHandleSize(reinterpret_cast<Handle>(pp)) < static_cast<Size>(sizeof(LibraryPixPat)))
    return false;
  *rgb = reinterpret_cast<LibraryPixPat*>(*pp)->rgb;
  return true;
}

PixPatHandle MakePixPat(const Pattern& pat) {
  Handle h = NewHandleClear(sizeof(LibraryPixPat));
  if (!h) return nullptr;
  PixPat& pp = *reinterpret_cast<PixPat*>(*h);
  pp.patXValid = -1;
  pp.pat1Data = pat;
  return reinterpret_cast<PixPatHandle>(h);
}

void DisposePixPatRecord(PixPatHandle pp) {
  if (pp) DisposeHandle(reinterpret_cast<Handle>(pp));
}

void SetPixPatPattern(PixPatHandle pp, const Pattern& pat) {
  if (!pp || !*pp) return;
  (*pp)->patType = 0;
  (*pp)->pat1Data = pat;
  (*pp)->patXValid = -1;
}

GDHandle MakeMainDevice(HDC dc, const Rect& rect) {
  Handle h = NewHandleClear(sizeof(GDevice));
  if (!h) return nullptr;
  GDevice& gd = *reinterpret_cast<GDevice*>(*h);
  gd.gdRect = rect;
  gd.gdPMap = MakePixMap(dc);
  // The device's colours: the standard 256, whatever the screen's depth, so
  // that Color2Index and indexed copies have a table to match against.
  if (gd.gdPMap) {
    RGBColor colours[256];
    int n = StandardTableColours(8, colours);
    if (CTabHandle table = NewColourTable(colours, n, 8)) {
      (*table)->ctFlags = kDeviceTableFlag;
      DisposeHandle(reinterpret_cast<Handle>((*gd.gdPMap)->pmTable));
      (*gd.gdPMap)->pmTable = table;
    }
  }
  // screenActive, screenDevice, mainScreen, and a colour device (gdDevType).
  gd.gdFlags = static_cast<SInt16>(0x8000 | 0x2000 | 0x0800 | 0x0001);
  return reinterpret_cast<GDHandle>(h);
}

void DisposeMainDevice(GDHandle device) {
  if (!device) return;
  ForgetInverseTable((*device)->gdPMap ? (*(*device)->gdPMap)->pmTable : nullptr);
  DisposePixMapRecord((*device)->gdPMap);
  if ((*device)->gdITable) DisposeHandle((*device)->gdITable);
  DisposeDeviceProcedures(device);
  DisposeHandle(reinterpret_cast<Handle>(device));
}

}  // namespace kwe::quickdraw

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(kwe::quickdraw::LibraryPixMap) == 84, "the library's 84-byte pixel map");
#endif
