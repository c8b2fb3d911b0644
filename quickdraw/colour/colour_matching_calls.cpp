// Color2Index, Index2Color, RealColor, GetSubTable and MakeITable against
// the current device's colour table.
#include <cstring>

#include "Memory.h"
#include "frame/low_memory.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr Size kInverseHeader = 6;  // iTabSeed, iTabRes
constexpr SInt16 kInverseResolution = 5;

GDHandle CurrentDevice() { return lowmem::At<GDHandle>(lowmem::Slot::TheGDevice); }

// The device's own inverse table when it was made for table at resolution 5.
const uint8_t* DeviceInverse(CTabHandle table) {
  GDHandle device = CurrentDevice();
  if (!device || !*device) return nullptr;
  ITabHandle itab = reinterpret_cast<ITabHandle>((*device)->gdITable);
  if (!itab || !*itab ||
      GetHandleSize(reinterpret_cast<Handle>(itab)) <
          kInverseHeader + static_cast<Size>(kInverseTableSize))
    return nullptr;
  if ((*itab)->iTabSeed != (*table)->ctSeed || (*itab)->iTabRes != kInverseResolution)
    return nullptr;
  return (*itab)->iTTable;
}

SInt32 IndexIn(CTabHandle table, const RGBColor& c) {
  SInt32 found = 0;
  if (SearchProceduresFind(c, &found)) return found;
  int count = TableEntryCount(table);
  if (count == 0) return 0;
  if (const uint8_t* inverse = DeviceInverse(table))
    return inverse[InverseCell(c, kInverseResolution)];
  int nearest = NearestEntry(TableEntries(table), count, c);
  return nearest < 0 ? 0 : nearest;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API SInt32 KWE_CALL Color2Index(const RGBColor* myColor) {
  CTabHandle table = CurrentDeviceTable();
  if (!myColor || !table) return 0;
  return IndexIn(table, *myColor);
}

KWE_API void KWE_CALL Index2Color(SInt32 index, RGBColor* aColor) {
  if (!aColor) return;
  CTabHandle table = CurrentDeviceTable();
  *aColor = RGBColor{0, 0, 0};
  if (table && index >= 0 && index < TableEntryCount(table))
    *aColor = TableEntries(table)[index].rgb;
}

// Whether the nearest entry has the colour at the inverse table's 5 bits.
KWE_API Boolean KWE_CALL RealColor(const RGBColor* color) {
  CTabHandle table = CurrentDeviceTable();
  if (!color || TableEntryCount(table) == 0) return false;
  RGBColor found = TableEntries(table)[IndexIn(table, *color)].rgb;
  auto same = [](UInt16 a, UInt16 b) { return (a >> 11) == (b >> 11); };
  return same(found.red, color->red) && same(found.green, color->green) &&
         same(found.blue, color->blue);
}

KWE_API void KWE_CALL GetSubTable(CTabHandle myColors, SInt16 iTabRes, CTabHandle targetTbl) {
  (void)iTabRes;  // the nearest entry is searched for, not read from a table
  CTabHandle target = targetTbl ? targetTbl : CurrentDeviceTable();
  int count = TableEntryCount(myColors), targets = TableEntryCount(target);
  if (count == 0 || targets == 0) return;
  for (int i = 0; i < count; ++i) {
    int nearest = NearestEntry(TableEntries(target), targets, (*myColors)->ctTable[i].rgb);
    (*myColors)->ctTable[i].value = static_cast<SInt16>(nearest < 0 ? 0 : nearest);
  }
}

KWE_API void KWE_CALL MakeITable(CTabHandle cTabH, ITabHandle inverseTable, SInt16 res) {
  (void)res;  // always resolution 5
  GDHandle device = CurrentDevice();
  if (!cTabH) {
    GDHandle main = kwe::lowmem::At<GDHandle>(kwe::lowmem::Slot::MainDevice);
    if (main && *main && (*main)->gdPMap && *(*main)->gdPMap) cTabH = (*(*main)->gdPMap)->pmTable;
  }
  if (!inverseTable && device && *device)
    inverseTable = reinterpret_cast<ITabHandle>((*device)->gdITable);
  int count = TableEntryCount(cTabH);
  if (count == 0 || (!inverseTable && !(device && *device))) {
    SetQDError(paramErr);
    return;
  }
  Handle h = reinterpret_cast<Handle>(inverseTable);
  bool fresh = !h;
  if (fresh) h = NewHandle(kInverseHeader + static_cast<Size>(kInverseTableSize));
  if (!h) {
    SetQDError(memFullErr);
    return;
  }
  ITabHandle itab = reinterpret_cast<ITabHandle>(h);
  if (!fresh && GetHandleSize(h) >= kInverseHeader + static_cast<Size>(kInverseTableSize) &&
      (*itab)->iTabSeed == (*cTabH)->ctSeed && (*itab)->iTabRes == kInverseResolution) {
    SetQDError(noErr);
    return;
  }
  SetHandleSize(h, kInverseHeader + static_cast<Size>(kInverseTableSize));
  if (GetHandleSize(h) < kInverseHeader + static_cast<Size>(kInverseTableSize)) {
    SetQDError(memFullErr);
    return;
  }
  (*itab)->iTabSeed = -1;
  (*itab)->iTabRes = kInverseResolution;
  BuildInverseTable(TableEntries(cTabH), count, (*itab)->iTTable);
  (*itab)->iTabSeed = (*cTabH)->ctSeed;
  if (fresh && device && *device) (*device)->gdITable = h;
  SetQDError(noErr);
}
