// The Windows logical palette behind each Toolbox palette, the screen
// palette that SetEntries mirrors the device's table into, the active
// palette and its realisation in device contexts.
#pragma once
#include <windows.h>

#include "QuickdrawColour.h"

namespace kwe::quickdraw {

constexpr SInt16 kAnimatedUsage = 4;  // pmAnimated: the entry may be animated
constexpr Size kPaletteHeader = 16;

// The entries pal really holds: pmEntries cut to its handle's room.
int PaletteEntryCount(PaletteHandle pal);
// Entry n of pal, or null past its entries.
ColorInfo* PaletteEntry(PaletteHandle pal, int n);

// The Windows palette entry that Toolbox entry `entry` of an n-entry palette
// goes to: a 256-entry palette is stored reversed, so that Toolbox white
// (entry 0) lands on Windows' last entry, where the system keeps white.
inline int WindowsEntryOf(int entry, int n) { return n == 256 ? 255 - entry : entry; }

// The Windows palette of pal, made (or resized) to its entry count and
// written from its entries; null for a palette with no entries or when GDI
// refuses one.
HPALETTE SyncWindowsPalette(PaletteHandle pal);
// pal's Windows palette as it stands, made when it has none yet.
HPALETTE WindowsPaletteOf(PaletteHandle pal);
// Entries first to first + count - 1 written again; with animate, through
// AnimatePalette while palette animation is allowed.
void WriteWindowsEntries(PaletteHandle pal, int first, int count, bool animate);
// Deletes pal's Windows palette, first taking it out of every port's DC.
void ForgetWindowsPalette(PaletteHandle pal);
// Every Windows palette the library made (at the end of the session).
void ReleaseWindowsPalettes();

// The palette ActivatePalette last made active, and the application's
// default palette (SetPalette of the screen).
PaletteHandle ActivePalette();
void SetActivePalette(PaletteHandle pal);
PaletteHandle DefaultPalette();
void SetDefaultPalette(PaletteHandle pal);

// The 256-entry screen palette that SetEntries writes (made on first use).
HPALETTE ScreenPalette();

// Host drawing switch 0x4000, or a KWE_BeginPaletteAnimation still open.
bool PaletteAnimationAllowed();
void NestPaletteAnimation(int delta);

// Selects the active palette (else the screen palette, once made) into dc
// and realises it; the number of entries that changed. Nothing on a
// printing DC without a palette, or while a realisation is under way.
UINT RealiseInto(HDC dc, bool background);
bool Realising();

}  // namespace kwe::quickdraw
