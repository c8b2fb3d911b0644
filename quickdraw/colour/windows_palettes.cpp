// Toolbox palettes as Windows logical palettes. The key to a palette's
// Windows palette sits in its private data fields as a slot number of the
// table below (an HPALETTE is pointer-sized in the 64-bit build, wider than
// the record's 16-bit fields); the slot also names its owner, so that a copy
// of the record made with HandToHand never frees its original's palette.
#include "quickdraw/colour/windows_palettes.h"

#include <vector>

#include "Memory.h"
#include "frame/session.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr UInt16 kAnimationSwitch = 0x4000;
constexpr int kKeyField = 2;  // pmDataFields[0..1] hold the source table's seed

struct WindowsPalette {
  PaletteHandle owner = nullptr;
  HPALETTE hpal = nullptr;
};

struct PaletteState {
  std::vector<WindowsPalette> slots;
  PaletteHandle active = nullptr;
  PaletteHandle fallback = nullptr;
  HPALETTE screen = nullptr;
  bool realising = false;
  int animationDepth = 0;
};

PaletteState& State() {
  static PaletteState state;
  return state;
}

WindowsPalette* SlotOf(PaletteHandle pal) {
  if (!pal || !*pal) return nullptr;
  int key = (*pal)->pmDataFields[kKeyField];
  auto& slots = State().slots;
  if (key <= 0 || key > static_cast<int>(slots.size())) return nullptr;
  WindowsPalette& slot = slots[static_cast<size_t>(key - 1)];
  return slot.owner == pal ? &slot : nullptr;
}

// An animated entry is PC_RESERVED: AnimatePalette changes no other.
PALETTEENTRY EntryOf(const ColorInfo& info) {
  BYTE flags = (info.ciUsage & kAnimatedUsage) ? PC_RESERVED : 0;
  return PALETTEENTRY{static_cast<BYTE>(info.ciRGB.red >> 8),
                      static_cast<BYTE>(info.ciRGB.green >> 8),
                      static_cast<BYTE>(info.ciRGB.blue >> 8), flags};
}

// Takes h out of every port's DC that holds it, so that it can be deleted.
void DeselectEverywhere(HPALETTE h) {
  auto stock = static_cast<HPALETTE>(GetStockObject(DEFAULT_PALETTE));
  for (int i = 0; i < kPortSlotCount; ++i)
    if (PortAttr* a = AttrOfSlot(i); a && a->hdc && GetCurrentObject(a->hdc, OBJ_PAL) == h)
      SelectPalette(a->hdc, stock, TRUE);
  if (HDC dc = CurrentDC(); dc && GetCurrentObject(dc, OBJ_PAL) == h)
    SelectPalette(dc, stock, TRUE);
}

HPALETTE MakeLogicalPalette(const PALETTEENTRY* entries, int n) {
  std::vector<BYTE> room(sizeof(LOGPALETTE) + sizeof(PALETTEENTRY) * static_cast<size_t>(n));
  auto* log = reinterpret_cast<LOGPALETTE*>(room.data());
  log->palVersion = 0x300;
  log->palNumEntries = static_cast<WORD>(n);
  for (int i = 0; i < n; ++i) log->palPalEntry[i] = entries[i];
  return CreatePalette(log);
}

}  // namespace

int PaletteEntryCount(PaletteHandle pal) {
  if (!pal || !*pal) return 0;
  Size room = (GetHandleSize(reinterpret_cast<Handle>(pal)) - kPaletteHeader) /
              static_cast<Size>(sizeof(ColorInfo));
  int n = (*pal)->pmEntries;
  return n < 0 ? 0 : (n < room ? n : static_cast<int>(room));
}

ColorInfo* PaletteEntry(PaletteHandle pal, int n) {
  return n >= 0 && n < PaletteEntryCount(pal) ? &(*pal)->pmInfo[n] : nullptr;
}

HPALETTE WindowsPaletteOf(PaletteHandle pal) {
  WindowsPalette* slot = SlotOf(pal);
  return slot ? slot->hpal : SyncWindowsPalette(pal);
}

HPALETTE SyncWindowsPalette(PaletteHandle pal) {
  int n = PaletteEntryCount(pal);
  if (n == 0 || n > 0xFFFF) return nullptr;
  std::vector<PALETTEENTRY> entries(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i)
    entries[static_cast<size_t>(WindowsEntryOf(i, n))] = EntryOf((*pal)->pmInfo[i]);
  if (WindowsPalette* slot = SlotOf(pal)) {
    if (GetPaletteEntries(slot->hpal, 0, 0, nullptr) != static_cast<UINT>(n))
      ResizePalette(slot->hpal, static_cast<UINT>(n));
    SetPaletteEntries(slot->hpal, 0, static_cast<UINT>(n), entries.data());
    return slot->hpal;
  }
  HPALETTE hpal = MakeLogicalPalette(entries.data(), n);
  if (!hpal) return nullptr;
  auto& slots = State().slots;
  size_t free = 0;
  while (free < slots.size() && slots[free].owner) ++free;
  if (free == slots.size()) {
    if (slots.size() >= 0x7FFF) {
      DeleteObject(hpal);
      return nullptr;
    }
    slots.emplace_back();
  }
  slots[free] = WindowsPalette{pal, hpal};
  (*pal)->pmDataFields[kKeyField] = static_cast<SInt16>(free + 1);
  return hpal;
}

void WriteWindowsEntries(PaletteHandle pal, int first, int count, bool animate) {
  WindowsPalette* slot = SlotOf(pal);
  int n = PaletteEntryCount(pal);
  if (!slot || GetPaletteEntries(slot->hpal, 0, 0, nullptr) != static_cast<UINT>(n)) {
    SyncWindowsPalette(pal);
    return;
  }
  for (int i = first; i < first + count && i < n; ++i) {
    if (i < 0) continue;
    PALETTEENTRY e = EntryOf((*pal)->pmInfo[i]);
    UINT at = static_cast<UINT>(WindowsEntryOf(i, n));
    // AnimatePalette shows the change in the system palette at once; other
    // updates wait for the next realisation.
    if (animate && e.peFlags == PC_RESERVED && PaletteAnimationAllowed())
      AnimatePalette(slot->hpal, at, 1, &e);
    else
      SetPaletteEntries(slot->hpal, at, 1, &e);
  }
}

void ForgetWindowsPalette(PaletteHandle pal) {
  PaletteState& s = State();
  if (s.active == pal) s.active = nullptr;
  if (s.fallback == pal) s.fallback = nullptr;
  WindowsPalette* slot = SlotOf(pal);
  if (!slot) return;
  DeselectEverywhere(slot->hpal);
  DeleteObject(slot->hpal);
  *slot = WindowsPalette{};
  (*pal)->pmDataFields[kKeyField] = 0;
}

void ReleaseWindowsPalettes() {
  PaletteState& s = State();
  for (WindowsPalette& slot : s.slots)
    if (slot.hpal) {
      DeselectEverywhere(slot.hpal);
      DeleteObject(slot.hpal);
    }
  if (s.screen) {
    DeselectEverywhere(s.screen);
    DeleteObject(s.screen);
  }
  s = PaletteState{};
}

PaletteHandle ActivePalette() { return State().active; }
void SetActivePalette(PaletteHandle pal) { State().active = pal; }
PaletteHandle DefaultPalette() { return State().fallback; }
void SetDefaultPalette(PaletteHandle pal) { State().fallback = pal; }

HPALETTE ScreenPalette() {
  PaletteState& s = State();
  if (s.screen) return s.screen;
  PALETTEENTRY entries[256]{};
  CTabHandle table = CurrentDeviceTable();
  int n = TableEntryCount(table);
  for (int i = 0; i < n && i < 256; ++i) {
    const RGBColor& c = TableEntries(table)[i].rgb;
    entries[WindowsEntryOf(i, 256)] =
        PALETTEENTRY{static_cast<BYTE>(c.red >> 8), static_cast<BYTE>(c.green >> 8),
                     static_cast<BYTE>(c.blue >> 8), 0};
  }
  s.screen = MakeLogicalPalette(entries, 256);
  return s.screen;
}

bool PaletteAnimationAllowed() {
  return (TheSession().drawingSwitches & kAnimationSwitch) != 0 || State().animationDepth > 0;
}

void NestPaletteAnimation(int delta) {
  int& depth = State().animationDepth;
  depth = depth + delta < 0 ? 0 : depth + delta;
}

bool Realising() { return State().realising; }

UINT RealiseInto(HDC dc, bool background) {
  PaletteState& s = State();
  if (!dc || s.realising) return 0;
  if (GetDeviceCaps(dc, TECHNOLOGY) == DT_RASPRINTER &&
      !(GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE))
    return 0;
  WindowsPalette* slot = SlotOf(s.active);
  HPALETTE hpal = slot ? slot->hpal : s.screen;
  if (!hpal) return 0;
  s.realising = true;
  SelectPalette(dc, hpal, background ? TRUE : FALSE);
  UINT changed = RealizePalette(dc);
  // Pattern brushes made before hold colours matched to the old palette.
  for (int i = 0; i < kPortSlotCount; ++i)
    if (PortAttr* a = AttrOfSlot(i); a && a->hdc == dc) ResetGdiCache(*a);
  s.realising = false;
  return changed == GDI_ERROR ? 0 : changed;
}

}  // namespace kwe::quickdraw
