// Palettes in use: the palette of each window (its Win32 window's palette
// long, and grafVars for a colour port), the application's default palette,
// activation and realisation, animation of entries, and the device's own
// colour table written with SetEntries and mirrored into the screen palette.
// The host forwards WM_QUERYNEWPALETTE and WM_PALETTECHANGED here.
#include <vector>

#include "KWEPalettes.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "frame/subsystems.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/colour/windows_palettes.h"
#include "quickdraw/ports/port_attr.h"
#include "windows/window_manager.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kPaletteUpdates = static_cast<SInt16>(0xE000);  // pmFlags with cUpdates
constexpr SInt16 kPaletteSet = static_cast<SInt16>(0x8000);

WindowPtr ScreenPaletteOwner() { return reinterpret_cast<WindowPtr>(intptr_t{-1}); }

// The Win32 window of a window's port; null for any other port.
HWND PortWindow(GrafPtr port) {
  PortAttr* a = port ? AttrOf(port) : nullptr;
  return a && (a->flags & kWindowPortFlag) && IsWindow(a->hwnd) ? a->hwnd : nullptr;
}

template <typename Visit>
void ForEachPortWindow(Visit visit) {
  for (int i = 0; i < kPortSlotCount; ++i)
    if (PortAttr* a = AttrOfSlot(i); a && (a->flags & kWindowPortFlag) && IsWindow(a->hwnd))
      visit(*a);
}

// The palette that colours a port: its window's, else the default one.
PaletteHandle PaletteOfPort(GrafPtr port) {
  PaletteHandle pal = port ? GetPalette(port) : nullptr;
  return pal ? pal : DefaultPalette();
}

void ForeOrBackFromPalette(SInt16 index, void(KWE_CALL* apply)(const RGBColor*)) {
  if (ColorInfo* e = PaletteEntry(PaletteOfPort(CurrentPort()), index)) {
    RGBColor c = e->ciRGB;
    apply(&c);
  }
}

void SaveColour(ColorSpec* spec, void(KWE_CALL* read)(RGBColor*)) {
  if (!spec) return;
  spec->value = 0;
  read(&spec->rgb);
}

// Grows the device's table to hold entry highest, new entries black; false
// when memory is short.
bool MakeRoom(CTabHandle table, int highest) {
  int had = TableEntryCount(table);
  if (highest < had) return true;
  Size size = static_cast<Size>(kColourTableHeader + sizeof(ColorSpec) * (highest + 1));
  SetHandleSize(reinterpret_cast<Handle>(table), size);
  if (GetHandleSize(reinterpret_cast<Handle>(table)) != size) return false;
  for (int i = had; i <= highest; ++i)
    (*table)->ctTable[i] = ColorSpec{static_cast<SInt16>(i), {0, 0, 0}};
  return true;
}

bool BlackOrWhite(const RGBColor& c) {
  return (c.red == 0 && c.green == 0 && c.blue == 0) ||
         (c.red == 0xFFFF && c.green == 0xFFFF && c.blue == 0xFFFF);
}

}  // namespace

void RealisePalettesOnActivation(bool active) {
  if (!ActivePalette()) return;
  ForEachPortWindow([active](PortAttr& a) { RealiseInto(a.hdc, !active); });
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;
using kwe::windows::kPaletteLong;

KWE_API PaletteHandle KWE_CALL GetPalette(WindowPtr srcWindow) {
  if (srcWindow == ScreenPaletteOwner()) return DefaultPalette();
  if (HWND hwnd = PortWindow(srcWindow))
    return reinterpret_cast<PaletteHandle>(GetWindowLongPtrA(hwnd, kPaletteLong));
  GrafVars* vars = GrafVarsOf(srcWindow);
  return vars && (vars->pmFlags & kPaletteSet) ? reinterpret_cast<PaletteHandle>(vars->pmFgColor)
                                               : nullptr;
}

KWE_API void KWE_CALL SetPalette(WindowPtr dstWindow, PaletteHandle srcPalette, Boolean cUpdates) {
  if (dstWindow == ScreenPaletteOwner()) {
    SetDefaultPalette(srcPalette);
    return;
  }
  if (!dstWindow || !AttrOf(dstWindow)) return;
  HWND hwnd = PortWindow(dstWindow);
  if (hwnd) SetWindowLongPtrA(hwnd, kPaletteLong, reinterpret_cast<LONG_PTR>(srcPalette));
  if (GrafVars* vars = GrafVarsOf(dstWindow)) {
    vars->pmFgColor = reinterpret_cast<Handle>(srcPalette);
    vars->pmFlags = srcPalette ? (cUpdates ? kPaletteUpdates : kPaletteSet) : SInt16{0};
  }
  if (hwnd && hwnd == GetActiveWindow()) ActivatePalette(dstWindow);
}

KWE_API void KWE_CALL ActivatePalette(WindowPtr srcWindow) {
  PaletteHandle pal = PaletteOfPort(srcWindow);
  if (!pal || !WindowsPaletteOf(pal)) return;
  SetActivePalette(pal);
  bool port = srcWindow && srcWindow != ScreenPaletteOwner();
  if (PortAttr* a = port ? AttrOf(srcWindow) : nullptr) RealiseInto(a->hdc, false);
}

KWE_API void KWE_CALL PmForeColor(SInt16 dstEntry) {
  ForeOrBackFromPalette(dstEntry, RGBForeColor);
}
KWE_API void KWE_CALL PmBackColor(SInt16 dstEntry) {
  ForeOrBackFromPalette(dstEntry, RGBBackColor);
}

// Only entries of usage pmAnimated change; Windows shows the new colour at
// once through AnimatePalette while animation is allowed.
KWE_API void KWE_CALL AnimateEntry(WindowPtr dstWindow, SInt16 dstEntry, const RGBColor* srcRGB) {
  PaletteHandle pal = GetPalette(dstWindow);
  ColorInfo* e = srcRGB ? PaletteEntry(pal, dstEntry) : nullptr;
  if (!e || !(e->ciUsage & kAnimatedUsage)) return;
  e->ciRGB = *srcRGB;
  WriteWindowsEntries(pal, dstEntry, 1, true);
}

KWE_API void KWE_CALL AnimatePalett(WindowPtr dstWindow, CTabHandle srcCTab, SInt16 srcIndex,
                                    SInt16 dstEntry, SInt16 dstLength) {
  PaletteHandle pal = GetPalette(dstWindow);
  int colours = TableEntryCount(srcCTab);
  if (!pal || colours == 0 || srcIndex < 0 || dstEntry < 0 || dstLength <= 0) return;
  int changed = 0;
  for (int k = 0; k < dstLength && srcIndex + k < colours; ++k) {
    ColorInfo* e = PaletteEntry(pal, dstEntry + k);
    if (!e) break;
    if (!(e->ciUsage & kAnimatedUsage)) continue;
    e->ciRGB = TableEntries(srcCTab)[srcIndex + k].rgb;
    changed = k + 1;
  }
  if (changed) WriteWindowsEntries(pal, dstEntry, changed, true);
}

// count is one less than the number of specs, as ctSize is.
KWE_API void KWE_CALL SetEntries(SInt16 start, SInt16 count, const ColorSpec* aTable) {
  CTabHandle table = CurrentDeviceTable();
  if (!table || !aTable || count < 0 || start < -1) {
    SetQDError(paramErr);
    return;
  }
  int highest = -1;
  for (int k = 0; k <= count; ++k) {
    int index = start == -1 ? aTable[k].value : start + k;
    if (index < 0 || index > 255) {
      SetQDError(cRangeErr);
      return;
    }
    highest = index > highest ? index : highest;
  }
  if (!MakeRoom(table, highest)) {
    SetQDError(memFullErr);
    return;
  }
  HPALETTE screen = ScreenPalette();
  for (int k = 0; k <= count; ++k) {
    int index = start == -1 ? aTable[k].value : start + k;
    const RGBColor& c = aTable[k].rgb;
    (*table)->ctTable[index] = ColorSpec{static_cast<SInt16>(index), c};
    PALETTEENTRY e{static_cast<BYTE>(c.red >> 8), static_cast<BYTE>(c.green >> 8),
                   static_cast<BYTE>(c.blue >> 8),
                   static_cast<BYTE>(BlackOrWhite(c) ? 0 : PC_RESERVED)};
    if (screen) SetPaletteEntries(screen, static_cast<UINT>(WindowsEntryOf(index, 256)), 1, &e);
  }
  if (highest > (*table)->ctSize) (*table)->ctSize = static_cast<SInt16>(highest);
  (*table)->ctSeed = GetCTSeed();
  PortAttr* a = CurrentAttr();
  if (screen && PaletteAnimationAllowed() && !(a && (a->flags & kPixMapDcFlag))) {
    PALETTEENTRY entries[256];
    GetPaletteEntries(screen, 0, 256, entries);
    AnimatePalette(screen, 1, 254, entries + 1);
  }
  SetQDError(noErr);
}

// A reserved entry is one colour matching skips.
KWE_API void KWE_CALL ReserveEntry(SInt16 index, Boolean reserve) {
  CTabHandle table = CurrentDeviceTable();
  if (index < 0 || index >= TableEntryCount(table)) {
    SetQDError(cRangeErr);
    return;
  }
  SInt16& value = (*table)->ctTable[index].value;
  value = static_cast<SInt16>(reserve ? (value | kSkipEntry) : (value & ~kSkipEntry));
  (*table)->ctSeed = GetCTSeed();
  SetQDError(noErr);
}

KWE_API void KWE_CALL SaveFore(ColorSpec* c) { SaveColour(c, GetForeColor); }
KWE_API void KWE_CALL SaveBack(ColorSpec* c) { SaveColour(c, GetBackColor); }
KWE_API void KWE_CALL RestoreFore(const ColorSpec* c) {
  if (c) RGBForeColor(&c->rgb);
}
KWE_API void KWE_CALL RestoreBack(const ColorSpec* c) {
  if (c) RGBBackColor(&c->rgb);
}

KWE_API OSErr KWE_CALL KWE_GetWindowsPalette(WindowPtr window, HPALETTE* palette) {
  if (!palette) return paramErr;
  *palette = window ? WindowsPaletteOf(GetPalette(window)) : ScreenPalette();
  return *palette ? noErr : paramErr;
}

KWE_API SInt16 KWE_CALL KWE_QueryNewPalette(HWND hwnd) {
  if (!ActivePalette() || !IsWindow(hwnd)) return 0;
  UINT changed = 0;
  bool found = false;
  ForEachPortWindow([&](PortAttr& a) {
    if (a.hwnd != hwnd || found) return;
    found = true;
    changed = RealiseInto(a.hdc, false);
  });
  if (!found) {
    HDC dc = GetDC(hwnd);
    changed = RealiseInto(dc, false);
    ReleaseDC(hwnd, dc);
  }
  if (changed) ForEachPortWindow([](PortAttr& a) { InvalidateRect(a.hwnd, nullptr, FALSE); });
  return static_cast<SInt16>(changed);
}

KWE_API void KWE_CALL KWE_PaletteChanged(HWND hwnd, HWND changedBy) {
  if (changedBy == hwnd || Realising() || !ActivePalette()) return;
  ForEachPortWindow([](PortAttr& a) {
    RealiseInto(a.hdc, true);
    InvalidateRect(a.hwnd, nullptr, FALSE);
  });
}

KWE_API void KWE_CALL KWE_BeginPaletteAnimation(void) { NestPaletteAnimation(1); }
KWE_API void KWE_CALL KWE_EndPaletteAnimation(void) { NestPaletteAnimation(-1); }

KWE_API SInt16 KWE_CALL KWE_ForcePalette(void) {
  return static_cast<SInt16>(RealiseInto(CurrentDC(), false));
}
