// Graphics devices: the current and main device, the device list and the
// devices an application makes itself. Every device has a pixel map of the
// screen's depth with a colour table and an inverse table made for it.
#include <initializer_list>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "frame/low_memory.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::quickdraw {
namespace {

using lowmem::At;
using lowmem::Slot;

// screenActive, mainScreen-style defaults of a new device, and bit 0, a
// colour device.
constexpr SInt16 kNewDeviceFlags = static_cast<SInt16>(0xA800 | 0x0001);
constexpr SInt16 kColourTableDevice = 0, kFixedTableDevice = 1, kDirectDevice = 2;

bool Usable(GDHandle gd) { return gd && *gd; }

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API GDHandle KWE_CALL GetGDevice(void) { return At<GDHandle>(Slot::TheGDevice); }

KWE_API void KWE_CALL SetGDevice(GDHandle gdh) {
  if (Usable(gdh)) At<GDHandle>(Slot::TheGDevice) = gdh;
}

KWE_API GDHandle KWE_CALL GetMainDevice(void) { return At<GDHandle>(Slot::MainDevice); }

KWE_API GDHandle KWE_CALL GetDeviceList(void) { return At<GDHandle>(Slot::DeviceList); }

KWE_API GDHandle KWE_CALL GetNextDevice(GDHandle curDevice) {
  return Usable(curDevice) ? (*curDevice)->gdNextGD : nullptr;
}

// One screen: the device with the most pixels is the main one.
KWE_API GDHandle KWE_CALL GetMaxDevice(const Rect* globalRect) {
  (void)globalRect;
  return At<GDHandle>(Slot::MainDevice);
}

KWE_API Boolean KWE_CALL TestDeviceAttribute(GDHandle gdh, SInt16 attribute) {
  if (!Usable(gdh) || attribute < 0 || attribute > 15) return false;
  return ((*gdh)->gdFlags >> attribute) & 1;
}

KWE_API void KWE_CALL SetDeviceAttribute(GDHandle gdh, SInt16 attribute, Boolean value) {
  if (!Usable(gdh) || attribute < 0 || attribute > 15) return;
  UInt16 bit = static_cast<UInt16>(1u << attribute);
  UInt16 flags = static_cast<UInt16>((*gdh)->gdFlags);
  (*gdh)->gdFlags = static_cast<SInt16>(value ? (flags | bit) : (flags & ~bit));
}

KWE_API void KWE_CALL InitGDevice(SInt16 qdRefNum, SInt32 mode, GDHandle gdh) {
  if (!Usable(gdh)) return;
  HDC dc = GetDC(nullptr);
  PixMapHandle pm = MakePixMap(dc);
  int planes = GetDeviceCaps(dc, PLANES) * GetDeviceCaps(dc, BITSPIXEL);
  bool palette = (GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE) != 0;
  ReleaseDC(nullptr, dc);
  CTabHandle table = GetCTable(static_cast<SInt16>(planes <= 8 ? planes : 8));
  if (!table) table = GetCTable(8);
  if (!pm || !table) {
    if (pm) DisposePixMapRecord(pm);
    DisposeCTable(table);
    SetQDError(memFullErr);
    return;
  }
  (*table)->ctFlags = kDeviceTableFlag;
  DisposeHandle(reinterpret_cast<Handle>((*pm)->pmTable));
  (*pm)->pmTable = table;
  GDevice& gd = **gdh;
  if (gd.gdPMap) DisposePixMapRecord(gd.gdPMap);
  gd.gdRefNum = qdRefNum;
  gd.gdMode = mode;
  gd.gdID = 0;
  gd.gdSearchProc = gd.gdCompProc = nullptr;
  gd.gdFlags = kNewDeviceFlags;
  gd.gdPMap = pm;
  gd.gdResPref = 3;
  gd.gdType = planes > 8 ? kDirectDevice : palette ? kColourTableDevice : kFixedTableDevice;
  gd.gdRect = (*pm)->bounds;
  gd.gdRefCon = 0;
  gd.gdCCBytes = gd.gdCCDepth = 0;
  GDHandle current = At<GDHandle>(Slot::TheGDevice);
  At<GDHandle>(Slot::TheGDevice) = gdh;  // MakeITable makes the current device's table
  MakeITable(table, nullptr, 5);
  At<GDHandle>(Slot::TheGDevice) = current ? current : gdh;
}

KWE_API GDHandle KWE_CALL NewGDevice(SInt16 refNum, SInt32 mode) {
  Handle h = NewHandleClear(sizeof(GDevice));
  if (!h) {
    SetQDError(memFullErr);
    return nullptr;
  }
  GDHandle gdh = reinterpret_cast<GDHandle>(h);
  InitGDevice(refNum, mode, gdh);
  if (!(*gdh)->gdPMap) {
    DisposeHandle(h);
    return nullptr;
  }
  GDHandle& list = At<GDHandle>(Slot::DeviceList);
  if (!list) {
    list = gdh;
    At<GDHandle>(Slot::MainDevice) = gdh;
    At<GDHandle>(Slot::TheGDevice) = gdh;
  } else {
    (*gdh)->gdNextGD = list;
  }
  return gdh;
}

// The main device is InitGraf's and stays to the end of the session.
KWE_API void KWE_CALL DisposeGDevice(GDHandle gdh) {
  if (!Usable(gdh) || gdh == Screen().mainDevice) return;
  for (Slot slot : {Slot::TheGDevice, Slot::MainDevice, Slot::DeviceList})
    if (At<GDHandle>(slot) == gdh) At<GDHandle>(slot) = Screen().mainDevice;
  if ((*gdh)->gdPMap) {
    ForgetInverseTable((*(*gdh)->gdPMap)->pmTable);
    DisposePixMapRecord((*gdh)->gdPMap);
  }
  if ((*gdh)->gdITable) DisposeHandle((*gdh)->gdITable);
  DisposeDeviceProcedures(gdh);
  DisposeHandle(reinterpret_cast<Handle>(gdh));
}
