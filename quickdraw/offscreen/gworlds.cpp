// GWorlds: colour ports drawing into a device-dependent bitmap selected
// into a memory DC, so that CopyBits between a GWorld and a window is a
// BitBlt between two DCs of the screen's format.
#include <windows.h>

#include <cstddef>

#include "KWEOffscreen.h"
#include "KWEPorts.h"
#include "Memory.h"
#include "QDOffscreen.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "quickdraw/offscreen/gworld_dc.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::quickdraw {
namespace {

// The record NewGWorld allocates: the port, then the device it was given.
// The 64-bit build keeps the GDHandle at its natural width after the
// (widened) port rather than in a 32-bit slot.
struct GWorldRecord {
  CGrafPort port;
  GDHandle device;
};

// The memory DC of GWorlds made with kweSharedGWorldDC, and how many use it.
HDC g_sharedDC = nullptr;
int g_sharedUsers = 0;
HBITMAP g_sharedSelected = nullptr;  // the GWorld bitmap now in g_sharedDC
HGDIOBJ g_sharedOriginal = nullptr;  // what g_sharedDC held when it was made

UInt8 g_pixelsState = 0;

LibraryPixMap* LibraryOf(GWorldPtr gw) {
  PixMapHandle pm = gw ? gw->portPixMap : nullptr;
  return pm && IsLibraryPixMap(pm) ? reinterpret_cast<LibraryPixMap*>(*pm) : nullptr;
}

// A memory DC holding a 1 x 1 bitmap in the screen's format, made once:
// bitmaps compatible with it are in the screen's format, so that NewGWorld
// asks the window server for no DC of a window, and selects nothing but the
// GWorld's own bitmap.
HDC ScreenFormatDC() {
  static HDC format = [] {
    HWND window = kwe::TheSession().mainWindow;
    HDC screen = GetDC(window);
    HBITMAP probe = CreateCompatibleBitmap(screen, 1, 1);
    ReleaseDC(window, screen);
    HDC dc = probe ? CreateCompatibleDC(nullptr) : nullptr;
    if (dc) SelectObject(dc, probe);
    return dc;
  }();
  return format;
}

void ReleaseShared() {
  if (--g_sharedUsers > 0) return;
  if (g_sharedOriginal) SelectObject(g_sharedDC, g_sharedOriginal);
  DeleteDC(g_sharedDC);
  g_sharedDC = nullptr;
  g_sharedSelected = nullptr;
  g_sharedOriginal = nullptr;
}

bool IsGWorld(CGrafPtr port) {
  return port && (static_cast<UInt16>(port->portVersion) & 0xE000) == 0xE000;
}

// A bitmap of width x height in the screen's format. Under Wine, selecting
// a DDB into a memory DC asks the window server whether the display
// changed, where a DIB section goes into any DC without asking; a 32-bit
// screen's DDB is a 32-bit DIB in all but name, so there the GWorld holds a
// DIB section.
HBITMAP MakeBitmap(int width, int height) {
  if (Screen().bitsPerPixel == 32) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    if (HBITMAP dib = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0))
      return dib;
  }
  HDC format = ScreenFormatDC();
  return format ? CreateCompatibleBitmap(format, width, height) : nullptr;
}

}  // namespace

// A GWorld in the shared DC gets its bitmap selected in when it becomes
// current or is copied from, in place of the last one.
void SelectGWorldBitmap(GrafPtr plain) {
  CGrafPtr port = AsColour(plain);
  LibraryPixMap* lib = IsGWorld(port) ? LibraryOf(port) : nullptr;
  if (!lib || lib->bitmapDC != g_sharedDC || !g_sharedDC) return;
  if (g_sharedSelected == lib->ddb) return;
  HGDIOBJ previous = SelectObject(g_sharedDC, lib->ddb);
  if (!g_sharedOriginal) g_sharedOriginal = previous;
  g_sharedSelected = lib->ddb;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API OSErr KWE_CALL NewGWorld(GWorldPtr* offscreen, SInt16, const Rect* bounds, CTabHandle,
                                 GDHandle gdh, GWorldFlags flags) {
  if (!offscreen || !bounds) return -1;
  *offscreen = nullptr;
  int width = bounds->right - bounds->left, height = bounds->bottom - bounds->top;
  if (width <= 0 || height <= 0) return -1;
  GrafPtr remembered = CurrentPort();
  auto* record = reinterpret_cast<GWorldRecord*>(NewPtrClear(sizeof(GWorldRecord)));
  if (!record) return -1;
  record->device = gdh;
  GWorldPtr gw = &record->port;
  *offscreen = gw;

  bool shared = (flags & kweSharedGWorldDC) != 0;
  HDC memory = shared && g_sharedDC ? g_sharedDC : CreateCompatibleDC(nullptr);
  HBITMAP ddb = memory ? MakeBitmap(width, height) : nullptr;
  if (!ddb) {
    if (memory && memory != g_sharedDC) DeleteDC(memory);
    return -1;
  }
  if (shared) {
    g_sharedDC = memory;
    ++g_sharedUsers;
  }
  HGDIOBJ replaced = shared ? nullptr : SelectObject(memory, ddb);

  MutableScreen().pendingDC = memory;
  MutableScreen().pendingScreenCaps = true;  // made from no DC
  OpenCPort(gw);
  MutableScreen().pendingDC = nullptr;
  MutableScreen().pendingScreenCaps = false;
  PortAttr* a = AttrOf(reinterpret_cast<GrafPtr>(gw));
  LibraryPixMap* lib = LibraryOf(gw);
  if (!a || !lib) {
    if (a) CloseCPort(gw);
    if (replaced) SelectObject(memory, replaced);
    DeleteObject(ddb);
    if (shared)
      ReleaseShared();
    else
      DeleteDC(memory);
    MakeCurrent(remembered);
    return -1;
  }
  lib->flags |= kDdbPixelsFlag;
  lib->ddb = ddb;
  lib->bitmapDC = memory;
  lib->replaced = static_cast<HBITMAP>(replaced);
  (*gw->portPixMap)->bounds = Rect{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  gw->portVersion = static_cast<SInt16>(0xE000);
  SelectGWorldBitmap(reinterpret_cast<GrafPtr>(gw));
  PortSize(static_cast<SInt16>(width), static_cast<SInt16>(height));
  SetOrigin(bounds->left, bounds->top);
  Rect all = gw->portRect;
  ClipRect(&all);
  RectRgn(gw->visRgn, &all);
  KWE_VisRgnChange(reinterpret_cast<GrafPtr>(gw));
  MakeCurrent(remembered);
  return noErr;
}

KWE_API void KWE_CALL DisposeGWorld(GWorldPtr gw) {
  if (!gw) return;
  GrafPtr port = reinterpret_cast<GrafPtr>(gw);
  GrafPtr remembered = CurrentPort() == port ? ScreenPort() : CurrentPort();
  LibraryPixMap* lib = LibraryOf(gw);
  HDC memory = lib ? lib->bitmapDC : nullptr;
  PortAttr* a = AttrOf(port);
  if (a) memory = a->hdc;
  HBITMAP ddb = lib ? lib->ddb : nullptr;
  HBITMAP replaced = lib ? lib->replaced : nullptr;
  if (lib) {
    lib->ddb = nullptr;
    lib->bitmapDC = nullptr;
    lib->replaced = nullptr;
    lib->flags &= static_cast<UInt16>(~kDdbPixelsFlag);
  }
  if (a) CloseCPort(gw);
  bool shared = memory && memory == g_sharedDC;
  if (shared) {
    if (g_sharedSelected == ddb) {
      SelectObject(memory, g_sharedOriginal);
      g_sharedSelected = nullptr;
    }
    ReleaseShared();
  } else if (memory) {
    if (replaced) SelectObject(memory, replaced);
    DeleteDC(memory);
  }
  if (ddb) DeleteObject(ddb);
  DisposePtr(reinterpret_cast<Ptr>(gw));
  if (remembered && remembered != CurrentPort() && AttrOf(remembered)) SetPort(remembered);
}

KWE_API void KWE_CALL SetGWorld(CGrafPtr port, GDHandle gdh) {
  SelectGWorldBitmap(reinterpret_cast<GrafPtr>(port));
  SetPort(reinterpret_cast<GrafPtr>(port));
  if (gdh) SetGDevice(gdh);
}

KWE_API void KWE_CALL GetGWorld(CGrafPtr* port, GDHandle* gdh) {
  if (port) *port = reinterpret_cast<CGrafPtr>(CurrentPort());
  if (gdh) *gdh = GetGDevice();
}

KWE_API PixMapHandle KWE_CALL GetGWorldPixMap(GWorldPtr gw) {
  return gw ? gw->portPixMap : nullptr;
}

KWE_API Ptr KWE_CALL GetPixBaseAddr(PixMapHandle pm) {
  return pm && *pm ? (*pm)->baseAddr : nullptr;
}

KWE_API GWorldFlags KWE_CALL UpdateGWorld(GWorldPtr*, SInt16, const Rect*, CTabHandle, GDHandle,
                                          GWorldFlags) {
  return 0;
}

KWE_API Boolean KWE_CALL LockPixels(PixMapHandle) {
  g_pixelsState |= pixelsLocked;
  return true;
}
KWE_API void KWE_CALL UnlockPixels(PixMapHandle) { g_pixelsState &= UInt8(~pixelsLocked); }
KWE_API void KWE_CALL AllowPurgePixels(PixMapHandle) { g_pixelsState |= pixelsPurgeable; }
KWE_API void KWE_CALL NoPurgePixels(PixMapHandle) { g_pixelsState &= UInt8(~pixelsPurgeable); }
KWE_API GWorldPixelsState KWE_CALL GetPixelsState(PixMapHandle) {
  return static_cast<GWorldPixelsState>(g_pixelsState);
}
KWE_API void KWE_CALL SetPixelsState(PixMapHandle, GWorldPixelsState state) {
  g_pixelsState = static_cast<UInt8>(state);
}

KWE_API void KWE_CALL CTabChanged(CTabHandle ctab) {
  if (ctab && *ctab) (*ctab)->ctSeed = GetCTSeed();
}

// Bit 0: the shared memory DC. Bit 1: a DC of the DIB driver drawing
// straight into a DIB pixel map's packed DIB, owned by the pixel map; the
// driver is the one the session record names ("DIB" by default), and where
// the platform has none (Wine, Windows past NT 4) no DC is made. Otherwise a
// new memory DC compatible with the current DC, which the port that takes it
// deletes when it closes.
KWE_API HDC KWE_CALL KWE_OffScreenDC(PixMapHandle pm, SInt32 how) {
  ScreenState& screen = MutableScreen();
  if (how & 2) {
    LibraryPixMap* lib = IsLibraryPixMap(pm) ? reinterpret_cast<LibraryPixMap*>(*pm) : nullptr;
    if (!lib || !(lib->flags & kDibPixelsFlag) || !lib->dib || !*lib->dib) return nullptr;
    const char* driver = kwe::DibDriverName();
    HLock(lib->dib);  // the DC draws into the handle's block
    HDC dc = CreateDCA(driver && *driver ? driver : "DIB", nullptr, nullptr,
                       reinterpret_cast<const DEVMODEA*>(*lib->dib));
    if (!dc) {
      HUnlock(lib->dib);
      return nullptr;
    }
    if (lib->ownDC && lib->ownDC != SharedMemoryDC()) DeleteDC(lib->ownDC);
    lib->ownDC = dc;
    screen.pendingDC = dc;
    return dc;
  }
  HDC dc = (how & 1) ? SharedMemoryDC() : CreateCompatibleDC(CurrentDC());
  screen.pendingDC = dc;
  screen.pendingOwned = dc && !(how & 1);
  return dc;
}
