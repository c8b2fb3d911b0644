// The Palette Manager's records: palettes made from colour tables or 'pltt'
// resources, their entries' colours and usages, and copies between palettes
// and colour tables. Every change is written through to the palette's
// Windows logical palette.
#include <cstring>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "Resources.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/colour/windows_palettes.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr ResType kPaletteType = 0x706C7474;  // 'pltt'

// Resizes pal to n entries, new ones cleared; false when memory is short.
bool Resize(PaletteHandle pal, int n) {
  int old = PaletteEntryCount(pal);
  Size size = kPaletteHeader + static_cast<Size>(sizeof(ColorInfo)) * n;
  SetHandleSize(reinterpret_cast<Handle>(pal), size);
  if (GetHandleSize(reinterpret_cast<Handle>(pal)) != size) return false;
  if (n > old)
    std::memset(&(*pal)->pmInfo[old], 0, sizeof(ColorInfo) * static_cast<size_t>(n - old));
  (*pal)->pmEntries = static_cast<SInt16>(n);
  return true;
}

void FillFromTable(PaletteHandle pal, CTabHandle table, SInt16 usage, SInt16 tolerance) {
  int n = PaletteEntryCount(pal), colours = TableEntryCount(table);
  for (int i = 0; i < n && i < colours; ++i)
    (*pal)->pmInfo[i] = ColorInfo{TableEntries(table)[i].rgb, usage, tolerance, {0, 0, 0}};
  if (colours) std::memcpy(&(*pal)->pmDataFields[0], &(*table)->ctSeed, sizeof(SInt32));
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API PaletteHandle KWE_CALL NewPalette(SInt16 entries, CTabHandle srcColors, SInt16 srcUsage,
                                          SInt16 srcTolerance) {
  if (entries < 0) return nullptr;
  Handle h = NewHandleClear(kPaletteHeader + static_cast<Size>(sizeof(ColorInfo)) * entries);
  if (!h) return nullptr;
  PaletteHandle pal = reinterpret_cast<PaletteHandle>(h);
  (*pal)->pmEntries = entries;
  if (srcColors) FillFromTable(pal, srcColors, srcUsage, srcTolerance);
  SyncWindowsPalette(pal);
  return pal;
}

KWE_API PaletteHandle KWE_CALL GetNewPalette(SInt16 paletteID) {
  Handle resource = GetResource(kPaletteType, paletteID);
  if (!resource || GetHandleSize(resource) < kPaletteHeader) return nullptr;
  Handle copy = resource;
  if (HandToHand(&copy) != noErr) return nullptr;
  PaletteHandle pal = reinterpret_cast<PaletteHandle>(copy);
  std::memset((*pal)->pmDataFields, 0, sizeof((*pal)->pmDataFields));
  for (int i = 0; i < PaletteEntryCount(pal); ++i)
    std::memset((*pal)->pmInfo[i].ciDataFields, 0, sizeof((*pal)->pmInfo[i].ciDataFields));
  SyncWindowsPalette(pal);
  return pal;
}

KWE_API void KWE_CALL DisposePalette(PaletteHandle srcPalette) {
  if (!srcPalette) return;
  ForgetWindowsPalette(srcPalette);
  DisposeHandle(reinterpret_cast<Handle>(srcPalette));
}

KWE_API void KWE_CALL GetEntryColor(PaletteHandle srcPalette, SInt16 srcEntry, RGBColor* dstRGB) {
  if (ColorInfo* e = dstRGB ? PaletteEntry(srcPalette, srcEntry) : nullptr) *dstRGB = e->ciRGB;
}

KWE_API void KWE_CALL SetEntryColor(PaletteHandle dstPalette, SInt16 dstEntry,
                                    const RGBColor* srcRGB) {
  ColorInfo* e = srcRGB ? PaletteEntry(dstPalette, dstEntry) : nullptr;
  if (!e) return;
  e->ciRGB = *srcRGB;
  WriteWindowsEntries(dstPalette, dstEntry, 1, false);
}

KWE_API void KWE_CALL GetEntryUsage(PaletteHandle srcPalette, SInt16 srcEntry, SInt16* dstUsage,
                                    SInt16* dstTolerance) {
  ColorInfo* e = PaletteEntry(srcPalette, srcEntry);
  if (!e) return;
  if (dstUsage) *dstUsage = e->ciUsage;
  if (dstTolerance) *dstTolerance = e->ciTolerance;
}

// A usage or tolerance of -1 (0xFFFF) leaves that field as it was.
KWE_API void KWE_CALL SetEntryUsage(PaletteHandle dstPalette, SInt16 dstEntry, SInt16 srcUsage,
                                    SInt16 srcTolerance) {
  ColorInfo* e = PaletteEntry(dstPalette, dstEntry);
  if (!e) return;
  if (srcUsage != -1) e->ciUsage = srcUsage;
  if (srcTolerance != -1) e->ciTolerance = srcTolerance;
  WriteWindowsEntries(dstPalette, dstEntry, 1, false);  // an animated entry is PC_RESERVED
}

KWE_API void KWE_CALL CTab2Palette(CTabHandle srcCTab, PaletteHandle dstPalette, SInt16 srcUsage,
                                   SInt16 srcTolerance) {
  if (!srcCTab || !dstPalette || !*dstPalette) return;
  if (!Resize(dstPalette, TableEntryCount(srcCTab))) {
    SetQDError(memFullErr);
    return;
  }
  FillFromTable(dstPalette, srcCTab, srcUsage, srcTolerance);
  SyncWindowsPalette(dstPalette);
}

KWE_API void KWE_CALL Palette2CTab(PaletteHandle srcPalette, CTabHandle dstCTab) {
  if (!srcPalette || !*srcPalette || !dstCTab || !*dstCTab) return;
  int n = PaletteEntryCount(srcPalette);
  Size size = static_cast<Size>(kColourTableHeader + sizeof(ColorSpec) * n);
  SetHandleSize(reinterpret_cast<Handle>(dstCTab), size);
  if (GetHandleSize(reinterpret_cast<Handle>(dstCTab)) != size) {
    SetQDError(memFullErr);
    return;
  }
  for (int i = 0; i < n; ++i)
    (*dstCTab)->ctTable[i] = ColorSpec{static_cast<SInt16>(i), (*srcPalette)->pmInfo[i].ciRGB};
  (*dstCTab)->ctSize = static_cast<SInt16>(n - 1);
  (*dstCTab)->ctSeed = GetCTSeed();
}

// dstLength entries from srcEntry to dstEntry on; the destination grows to
// hold them.
KWE_API void KWE_CALL CopyPalette(PaletteHandle srcPalette, PaletteHandle dstPalette,
                                  SInt16 srcEntry, SInt16 dstEntry, SInt16 dstLength) {
  if (!srcPalette || !dstPalette || !*srcPalette || !*dstPalette || srcEntry < 0 || dstEntry < 0 ||
      dstLength <= 0)
    return;
  int count = PaletteEntryCount(srcPalette) - srcEntry;
  if (count > dstLength) count = dstLength;
  if (count <= 0) return;
  if (dstEntry + count > PaletteEntryCount(dstPalette) && !Resize(dstPalette, dstEntry + count)) {
    SetQDError(memFullErr);
    return;
  }
  std::memmove(&(*dstPalette)->pmInfo[dstEntry], &(*srcPalette)->pmInfo[srcEntry],
               sizeof(ColorInfo) * static_cast<size_t>(count));
  SyncWindowsPalette(dstPalette);
}
