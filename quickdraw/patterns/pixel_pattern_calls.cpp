// Pixel patterns an application makes, copies and loads from 'ppat'
// resources. A loaded pattern's pixel map, pixels and colour table become
// handles of their own, so that PenPixPat, BackPixPat and FillCRect paint
// with its pixels.
#include <cstring>
#include <initializer_list>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "Resources.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/pixmaps/library_pixmaps.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr ResType kPixelPatternType = 0x70706174;  // 'ppat'
constexpr SInt16 kPixelMapPattern = 1;
// The resource's layout (native order once loaded): the PixPat with 32-bit
// offsets for its handles, then the PixMap of 50 bytes.
constexpr size_t kPatternRecordBytes = 28;

// Copies the bytes of from into to, resized to hold them.
bool CopyHandleBytes(Handle from, Handle to) {
  if (!from || !to) return true;
  Size size = GetHandleSize(from);
  SetHandleSize(to, size);
  if (GetHandleSize(to) != size) return false;
  if (size) std::memcpy(*to, *from, static_cast<size_t>(size));
  return true;
}

// Every port whose cached brush was made from pp forgets it: a pattern made
// later at the same address must not find that brush.
void ForgetBrushesOf(PixPatHandle pp) {
  for (int i = 0; i < kPortSlotCount; ++i)
    if (PortAttr* a = AttrOfSlot(i); a && a->brushColourPattern == pp) ResetGdiCache(*a);
}

PixPatHandle PatternOfResource(const UInt8* bytes, size_t size) {
  if (size < kPatternRecordBytes) return nullptr;
  SInt16 type = ReadNative<SInt16>(bytes, 0);
  UInt32 map = ReadNative<UInt32>(bytes, 2), data = ReadNative<UInt32>(bytes, 6), table = 0;
  Pattern pat1;
  std::memcpy(pat1.pat, bytes + 20, 8);
  if (type != kPixelMapPattern) return MakePixPat(pat1);
  if (map > size || size - map < kResourcePixMapBytes || data > size) return nullptr;
  PixMap layout{};
  ReadResourcePixMap(bytes, map, &layout, &table);
  size_t pixels = static_cast<size_t>(layout.rowBytes & 0x3FFF) * RowsOf(layout.bounds);
  size_t tableBytes = ResourceTableBytes(bytes, size, table);
  if (size - data < pixels || tableBytes == 0) return nullptr;

  PixPatHandle pp = NewPixPat();
  Handle colours = pp ? HandleOfBytes(bytes + table, tableBytes) : nullptr;
  Handle pixelData = colours ? HandleOfBytes(bytes + data, pixels) : nullptr;
  if (!pixelData) {
    if (colours) DisposeHandle(colours);
    DisposePixPat(pp);
    SetQDError(memFullErr);
    return nullptr;
  }
  (*pp)->pat1Data = pat1;
  PixMap& pm = **(*pp)->patMap;
  DisposeHandle(reinterpret_cast<Handle>(pm.pmTable));
  layout.baseAddr = pm.baseAddr;
  layout.pmVersion = pm.pmVersion;  // still the library's own pixel map
  layout.pmTable = reinterpret_cast<CTabHandle>(colours);
  pm = layout;
  DisposeHandle((*pp)->patData);
  (*pp)->patData = pixelData;
  return pp;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API PixPatHandle KWE_CALL NewPixPat(void) {
  PixPatHandle pp = MakePixPat(Pattern{{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}});
  PixMapHandle map = pp ? NewPixMap() : nullptr;
  Handle data = map ? NewHandle(0) : nullptr;
  if (!data) {
    if (map) DisposePixMap(map);
    DisposePixPatRecord(pp);
    SetQDError(memFullErr);
    return nullptr;
  }
  (*pp)->patType = kPixelMapPattern;
  (*pp)->patMap = map;
  (*pp)->patData = data;
  return pp;
}

KWE_API void KWE_CALL DisposePixPat(PixPatHandle ppat) {
  if (!ppat || !*ppat) return;
  ForgetBrushesOf(ppat);
  PixPat& p = **ppat;
  if (p.patMap) DisposePixMap(p.patMap);
  for (Handle h : {p.patData, p.patXData, p.patXMap})
    if (h) DisposeHandle(h);
  DisposePixPatRecord(ppat);
}

KWE_API void KWE_CALL CopyPixPat(PixPatHandle srcPP, PixPatHandle dstPP) {
  if (!srcPP || !*srcPP || !dstPP || !*dstPP || srcPP == dstPP) return;
  PixPat& from = **srcPP;
  PixPat& to = **dstPP;
  to.patType = from.patType;
  to.pat1Data = from.pat1Data;
  to.patXValid = -1;
  if (from.patMap && to.patMap) CopyPixMap(from.patMap, to.patMap);
  if (!CopyHandleBytes(from.patData, to.patData)) SetQDError(memFullErr);
  RGBColor rgb;
  if (RgbOfPixPat(srcPP, &rgb)) MakeRGBPat(dstPP, &rgb);
  ForgetBrushesOf(dstPP);
}

// A resource whose offsets or sizes point outside it gives null.
KWE_API PixPatHandle KWE_CALL GetPixPat(SInt16 patID) {
  Handle resource = GetResource(kPixelPatternType, patID);
  if (!resource || !*resource) return nullptr;
  HLock(resource);
  PixPatHandle pp = PatternOfResource(reinterpret_cast<const UInt8*>(*resource),
                                      static_cast<size_t>(GetHandleSize(resource)));
  HUnlock(resource);
  return pp;
}
