// Colour icons from 'cicn' resources and colour cursors from 'crsr'
// resources. An icon becomes a CIcon record: its pixel map with a colour
// table of its own, the mask and 1-bit images in iconMaskData and the
// pixels in iconData; PlotCIcon copies the pixels through the mask, or the
// 1-bit image when the icon has no pixels. A colour cursor is a copy of its
// resource, whose Windows cursor (made in colour and cached when the
// resource was loaded) is what SetCCursor shows.
#include <cstring>
#include <initializer_list>

#include "KWECursors.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "Resources.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/cursors/cursor_conversion.h"
#include "quickdraw/cursors/cursor_install.h"
#include "quickdraw/pixmaps/library_pixmaps.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr ResType kColourIconType = 0x6369636E;    // 'cicn'
constexpr ResType kColourCursorType = 0x63727372;  // 'crsr'
// The resource's layout (native order once loaded): a 50-byte PixMap, the
// mask and 1-bit BitMaps of 14 bytes, a 4-byte handle placeholder, then
// the mask and 1-bit images, the colour table and the pixels.
constexpr size_t kMaskAt = 50, kBitMapAt = 64, kImagesAt = 82;
constexpr size_t kCursorBytes = 96, kCursorPartAt = 20;

BitMap ReadBitMap(const UInt8* bytes, size_t at) {
  return BitMap{nullptr, ReadNative<SInt16>(bytes, at + 4),
                Rect{ReadNative<SInt16>(bytes, at + 6), ReadNative<SInt16>(bytes, at + 8),
                     ReadNative<SInt16>(bytes, at + 10), ReadNative<SInt16>(bytes, at + 12)}};
}

CIconHandle IconOfResource(const UInt8* bytes, size_t size) {
  if (size < kImagesAt) return nullptr;
  PixMap pm{};
  UInt32 unused = 0;
  ReadResourcePixMap(bytes, 0, &pm, &unused);
  BitMap mask = ReadBitMap(bytes, kMaskAt), bits = ReadBitMap(bytes, kBitMapAt);
  size_t maskBytes = static_cast<size_t>(mask.rowBytes & 0x3FFF) * RowsOf(mask.bounds);
  size_t bitBytes = static_cast<size_t>(bits.rowBytes & 0x3FFF) * RowsOf(bits.bounds);
  size_t pixelBytes = static_cast<size_t>(pm.rowBytes & 0x3FFF) * RowsOf(pm.bounds);
  size_t table = kImagesAt + maskBytes + bitBytes;
  size_t tableBytes = ResourceTableBytes(bytes, size, table);
  if (tableBytes == 0 || size - table - tableBytes < pixelBytes) return nullptr;

  Handle h = NewHandleClear(static_cast<Size>(sizeof(CIcon) + maskBytes + bitBytes));
  Handle colours = h ? HandleOfBytes(bytes + table, tableBytes) : nullptr;
  Handle pixels = colours ? HandleOfBytes(bytes + table + tableBytes, pixelBytes) : nullptr;
  if (!pixels) {
    for (Handle gone : {h, colours})
      if (gone) DisposeHandle(gone);
    SetQDError(memFullErr);
    return nullptr;
  }
  CIcon& icon = *reinterpret_cast<CIcon*>(*h);
  icon.iconPMap = pm;
  icon.iconPMap.pmTable = reinterpret_cast<CTabHandle>(colours);
  icon.iconMask = mask;
  icon.iconBMap = bits;
  icon.iconData = pixels;
  std::memcpy(icon.iconMaskData, bytes + kImagesAt, maskBytes + bitBytes);
  return reinterpret_cast<CIconHandle>(h);
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API CIconHandle KWE_CALL GetCIcon(SInt16 iconID) {
  Handle resource = GetResource(kColourIconType, iconID);
  if (!resource || !*resource) return nullptr;
  HLock(resource);
  CIconHandle icon = IconOfResource(reinterpret_cast<const UInt8*>(*resource),
                                    static_cast<size_t>(GetHandleSize(resource)));
  HUnlock(resource);
  return icon;
}

KWE_API void KWE_CALL DisposeCIcon(CIconHandle theIcon) {
  if (!theIcon || !*theIcon) return;
  if ((*theIcon)->iconPMap.pmTable)
    DisposeHandle(reinterpret_cast<Handle>((*theIcon)->iconPMap.pmTable));
  if ((*theIcon)->iconData) DisposeHandle((*theIcon)->iconData);
  DisposeHandle(reinterpret_cast<Handle>(theIcon));
}

// The base addresses point into the locked handles only while plotting.
KWE_API void KWE_CALL PlotCIcon(const Rect* theRect, CIconHandle theIcon) {
  GrafPtr port = CurrentPort();
  if (!theRect || !theIcon || !*theIcon || !port) return;
  HLock(reinterpret_cast<Handle>(theIcon));
  CIcon& icon = **theIcon;
  Handle pixels = icon.iconData;
  bool colour = pixels && GetHandleSize(pixels) > 0 && (icon.iconPMap.rowBytes & 0x3FFF);
  if (pixels) HLock(pixels);
  UInt8* maskBits = reinterpret_cast<UInt8*>(icon.iconMaskData);
  icon.iconMask.baseAddr = reinterpret_cast<Ptr>(maskBits);
  size_t maskBytes =
      static_cast<size_t>(icon.iconMask.rowBytes & 0x3FFF) * RowsOf(icon.iconMask.bounds);
  icon.iconBMap.baseAddr = reinterpret_cast<Ptr>(maskBits + maskBytes);
  icon.iconPMap.baseAddr = colour ? *pixels : nullptr;
  icon.iconPMap.rowBytes = static_cast<SInt16>(icon.iconPMap.rowBytes | 0x8000);
  const BitMap* source = colour ? reinterpret_cast<const BitMap*>(&icon.iconPMap) : &icon.iconBMap;
  const Rect& from = colour ? icon.iconPMap.bounds : icon.iconBMap.bounds;
  CopyMask(source, &icon.iconMask, &port->portBits, &from, &icon.iconMask.bounds, theRect);
  icon.iconMask.baseAddr = icon.iconBMap.baseAddr = icon.iconPMap.baseAddr = nullptr;
  if (pixels) HUnlock(pixels);
  HUnlock(reinterpret_cast<Handle>(theIcon));
}

KWE_API CCrsrHandle KWE_CALL GetCCursor(SInt16 crsrID) {
  Handle resource = GetResource(kColourCursorType, crsrID);
  if (!resource || GetHandleSize(resource) < static_cast<Size>(kCursorBytes)) return nullptr;
  Handle copy = resource;
  return HandToHand(&copy) == noErr ? reinterpret_cast<CCrsrHandle>(copy) : nullptr;
}

// A cursor cached when its resource was loaded was made in colour then; any
// other is made for this one use, like an unmarked Cursor.
KWE_API void KWE_CALL SetCCursor(CCrsrHandle cCrsr) {
  Handle h = reinterpret_cast<Handle>(cCrsr);
  if (!h || !*h || GetHandleSize(h) < static_cast<Size>(kCursorBytes)) return;
  const Cursor* oneBit = reinterpret_cast<const Cursor*>(*h + kCursorPartAt);
  HCURSOR colour = CachedCursorOf(oneBit)
                       ? nullptr
                       : MakeUncachedColourCursor(reinterpret_cast<const uint8_t*>(*h),
                                                  static_cast<size_t>(GetHandleSize(h)));
  if (colour)
    InstallCursor(colour);
  else
    SetCurso(oneBit);
}

KWE_API void KWE_CALL DisposeCCursor(CCrsrHandle cCrsr) {
  if (cCrsr) DisposeHandle(reinterpret_cast<Handle>(cCrsr));
}
