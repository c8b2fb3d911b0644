// InitGraf and the end of QuickDraw: the screen port, the QuickDraw globals,
// the screen and shared device contexts.
#include <windows.h>

#include <algorithm>

#include "KWESession.h"
#include "Memory.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/colour/windows_palettes.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"
#include "quickdraw/regions/region_record.h"
#include "quickdraw/text/text_state.h"

namespace kwe::quickdraw {
namespace {

using lowmem::At;
using lowmem::Slot;

CGrafPort g_screenPort{};
ScreenState g_screen;
HDC g_sharedMemoryDC = nullptr;
OSErr g_qdError = noErr;
bool g_started = false;

constexpr Pattern kWhite{{0, 0, 0, 0, 0, 0, 0, 0}};
constexpr Pattern kBlack{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
constexpr Pattern kGray{{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}};
constexpr Pattern kLtGray{{0x88, 0x22, 0x88, 0x22, 0x88, 0x22, 0x88, 0x22}};
constexpr Pattern kDkGray{{0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD}};

void FillPatternGlobals() {
  At<Pattern>(Slot::White) = kWhite;
  At<Pattern>(Slot::Black) = kBlack;
  At<Pattern>(Slot::Gray) = kGray;
  At<Pattern>(Slot::LtGray) = kLtGray;
  At<Pattern>(Slot::DkGray) = kDkGray;
}

void FillHiliteColour() {
  DWORD c = GetSysColor(COLOR_HIGHLIGHT);
  At<RGBColor>(Slot::HiliteRGB) =
      RGBColor{static_cast<UInt16>((c & 0xFF) << 8), static_cast<UInt16>(c & 0xFF00),
               static_cast<UInt16>(((c >> 16) & 0xFF) << 8)};
}

// The screen port leaves room for a frame window's frame, caption and menu
// bar unless the host asks for the whole screen.
void MeasureScreen() {
  int width = GetSystemMetrics(SM_CXSCREEN);
  int height = GetSystemMetrics(SM_CYSCREEN);
  g_screen.width = width;
  g_screen.height = height;
  g_screen.portHeight =
      SessionFlag(kweFlagFullScreenRect)
          ? height
          : height - (2 * GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) +
                      GetSystemMetrics(SM_CYMENU));
  BitMap& screenBits = At<BitMap>(Slot::ScreenBits);
  screenBits.baseAddr = reinterpret_cast<Ptr>(kNoBits);
  screenBits.rowBytes = 0;
  screenBits.bounds = Rect{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
}

void MeasureScreenDC(HDC dc) {
  g_screen.depth = DeviceDepthOf(dc);
  g_screen.bitsPerPixel = GetDeviceCaps(dc, BITSPIXEL) * GetDeviceCaps(dc, PLANES);
  g_screen.paletteSize = (GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE)
                             ? std::min(GetDeviceCaps(dc, SIZEPALETTE), 256)
                             : 0;
  g_screen.logPixelsX = GetDeviceCaps(dc, LOGPIXELSX);
  g_screen.logPixelsY = GetDeviceCaps(dc, LOGPIXELSY);
  HGDIOBJ old = SelectObject(dc, GetStockObject(SYSTEM_FONT));
  TEXTMETRICA tm{};
  GetTextMetricsA(dc, &tm);
  g_screen.menuItemHeight = tm.tmHeight + (tm.tmInternalLeading + 1) / 2;
  SelectObject(dc, old);
}

}  // namespace

const ScreenState& Screen() { return g_screen; }

void SetQDError(OSErr err) { g_qdError = err; }

HDC SharedMemoryDC() {
  if (!g_sharedMemoryDC) g_sharedMemoryDC = CreateCompatibleDC(nullptr);
  return g_sharedMemoryDC;
}

// Bits per pixel as QuickDraw counts them: 16 stays 16 only as one plane;
// any other depth of 15 bits or more is direct colour, 24.
int DeviceDepthOf(HDC dc) {
  int bits = GetDeviceCaps(dc, BITSPIXEL);
  int planes = GetDeviceCaps(dc, PLANES);
  int product = bits * planes;
  if (planes == 1 && bits == 16) return 16;
  if (product >= 15) return 24;
  return product;
}

HDC TakePendingScreenDC() {
  HDC dc = g_screen.pendingDC;
  g_screen.pendingDC = nullptr;
  return dc;
}

bool HasScreenCaps(HDC dc) {
  return g_screen.bitsPerPixel && dc && (dc == g_sharedMemoryDC || g_screen.pendingScreenCaps);
}

ScreenState& MutableScreen() { return g_screen; }

void SetCurrentPortSwitch(bool on) {
  PortAttr* a = CurrentAttr();
  if (!a) return;
  bool was = (a->flags & kRebuildSwitchFlag) != 0;
  if (was == on) return;
  a->flags =
      static_cast<UInt16>(on ? a->flags | kRebuildSwitchFlag : a->flags & ~kRebuildSwitchFlag);
  ResetGdiCache(*a);
}

// Every port's GDI side, the screen DC and the main device. Regions and
// their shared objects stay: the application may hold regions across a
// second InitGraf.
void ClosePorts() {
  if (!g_started) return;
  ClearOffscreenTable();
  ReleaseWindowsPalettes();  // out of the ports' DCs before they go
  // Ports the application left open give their GDI objects back; their
  // records may be gone already, so only the library's side is released.
  for (int slot = kPortSlotCount - 1; slot > kScreenPortSlot; --slot) ReleasePortRecord(slot);
  ClosePort(reinterpret_cast<GrafPtr>(&g_screenPort));
  if (g_screen.dcHeld) ReleaseDC(g_screen.window, g_screen.dcHeld);
  g_screen.dcHeld = nullptr;
  DisposeMainDevice(g_screen.mainDevice);
  g_screen.mainDevice = nullptr;
  At<GDHandle>(Slot::TheGDevice) = nullptr;
  At<GDHandle>(Slot::MainDevice) = nullptr;
  At<GDHandle>(Slot::DeviceList) = nullptr;
  ReleaseInverseTables();
  At<GrafPtr>(Slot::WMgrPort) = nullptr;
  MakeCurrent(nullptr);
  SetCurrentDC(nullptr);
  g_started = false;
}

void CloseQuickDraw() {
  ClosePorts();
  if (g_sharedMemoryDC) DeleteDC(g_sharedMemoryDC);
  g_sharedMemoryDC = nullptr;
  EndRegions();
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API SInt16 KWE_CALL QDError(void) { return g_qdError; }

KWE_API void KWE_CALL InitGraf(GrafPtr* thePortVar) {
  ClosePorts();
  g_qdError = noErr;
  StartRegions();
  FillPatternGlobals();
  FillHiliteColour();
  MeasureScreen();

  g_screen.window = nullptr;  // GetDC(NULL): the whole screen
  HDC dc = GetDC(g_screen.window);
  MeasureScreenDC(dc);
  g_screen.dcHeld = dc;
  g_screen.pendingDC = dc;
  SetCurrentDC(dc);

  g_screen.mainDevice = MakeMainDevice(dc, Rect{0, 0, static_cast<SInt16>(g_screen.portHeight),
                                                static_cast<SInt16>(g_screen.width)});
  At<GDHandle>(Slot::TheGDevice) = g_screen.mainDevice;
  At<GDHandle>(Slot::MainDevice) = g_screen.mainDevice;
  At<GDHandle>(Slot::DeviceList) = g_screen.mainDevice;
  g_started = true;

  g_screenPort = CGrafPort{};
  GrafPtr screenPort = reinterpret_cast<GrafPtr>(&g_screenPort);
  OpenCPort(&g_screenPort);
  if (g_qdError != noErr) return;
  PortSize(static_cast<SInt16>(g_screen.width), static_cast<SInt16>(g_screen.portHeight));

  PortAttr* a = AttrOf(screenPort);
  a->flags = static_cast<UInt16>((a->flags & ~kOwnsDcFlag) | kDialogFontFlag);
  a->hwnd = kwe::TheSession().desktopWindow ? kwe::TheSession().desktopWindow : GetDesktopWindow();
  StartText();
  SetTextAlign(dc, TA_BASELINE);

  At<GrafPtr>(Slot::WMgrPort) = screenPort;
  if (thePortVar) *thePortVar = screenPort;
}
