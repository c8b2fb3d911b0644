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
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr ResType kPixelPatternType = 0x70706174;  // 'ppat'
constexpr SInt16 kPixelMapPattern = 1;
// The resource's layout (native order once loaded): the PixPat with 32-bit
// offsets for its handles, then the PixMap of 50 bytes.
constexpr size_t kPatternRecordBytes = 28, kPixMapBytes = 50;

template <typename T>
T Read(const UInt8* bytes, size_t at) {
  T value;
  std::memcpy(&value, bytes + at, sizeof value);
  return value;
}

Handle HandleOfBytes(const void* bytes, Size size) {
  Handle h = NewHandle(size);
  if (h && size) std::memcpy(*h, bytes, static_cast<size_t>(size));
  return h;
}

// Copies the bytes of from into to, resized to hold them.
bool CopyHandleBytes(Handle from, Handle to) {
  if (!from || !to) return true;
  Size size = GetHandleSize(from);
  SetHandleSize(to, size);
  if (GetHandleSize(to) != size) return false;
  if (size) std::memcpy(*to, *from, static_cast<size_t>(size));
  return true;
}

// The pixel map record at offset map of the resource; the colour table and
// pixel data are made separately.
void ReadPixMap(const UInt8* bytes, size_t map, PixMap& pm) {
  pm.rowBytes = Read<SInt16>(bytes, map + 4);
  for (int i = 0; i < 4; ++i) (&pm.bounds.top)[i] = Read<SInt16>(bytes, map + 6 + 2 * i);
  pm.pmVersion = Read<SInt16>(bytes, map + 14);
  pm.packType = Read<SInt16>(bytes, map + 16);
  pm.packSize = Read<SInt32>(bytes, map + 18);
  pm.hRes = Read<Fixed>(bytes, map + 22);
  pm.vRes = Read<Fixed>(bytes, map + 26);
  pm.pixelType = Read<SInt16>(bytes, map + 30);
  pm.pixelSize = Read<SInt16>(bytes, map + 32);
  pm.cmpCount = Read<SInt16>(bytes, map + 34);
  pm.cmpSize = Read<SInt16>(bytes, map + 36);
  pm.planeBytes = Read<SInt32>(bytes, map + 38);
}

// Every port whose cached brush was made from pp forgets it: a pattern made
// later at the same address must not find that brush.
void ForgetBrushesOf(PixPatHandle pp) {
  for (int i = 0; i < kPortSlotCount; ++i)
    if (PortAttr* a = AttrOfSlot(i); a && a->brushColourPattern == pp) ResetGdiCache(*a);
}

PixPatHandle PatternOfResource(const UInt8* bytes, size_t size) {
  if (size < kPatternRecordBytes) return nullptr;
  SInt16 type = Read<SInt16>(bytes, 0);
  UInt32 map = Read<UInt32>(bytes, 2), data = Read<UInt32>(bytes, 6);
  Pattern pat1;
  std::memcpy(pat1.pat, bytes + 20, 8);
  if (type != kPixelMapPattern) return MakePixPat(pat1);
  if (map > size || size - map < kPixMapBytes || data > size) return nullptr;
  PixMap layout{};
  ReadPixMap(bytes, map, layout);
  UInt32 table = Read<UInt32>(bytes, map + 42);
  int rows = layout.bounds.bottom - layout.bounds.top;
  size_t pixels =
      static_cast<size_t>(layout.rowBytes & 0x3FFF) * static_cast<size_t>(rows < 0 ? 0 : rows);
  if (size - data < pixels || table > size || size - table < kColourTableHeader) return nullptr;
  int entries = Read<SInt16>(bytes, table + 6) + 1;
  size_t tableBytes = kColourTableHeader + sizeof(ColorSpec) * static_cast<size_t>(entries);
  if (entries <= 0 || size - table < tableBytes) return nullptr;

  PixPatHandle pp = NewPixPat();
  Handle colours = pp ? HandleOfBytes(bytes + table, static_cast<Size>(tableBytes)) : nullptr;
  Handle pixelData = colours ? HandleOfBytes(bytes + data, static_cast<Size>(pixels)) : nullptr;
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
