// GetCTable, DisposeCTable and the library's colour-table handles; the
// inverse tables CopyBits and Color2Index keep per colour table.
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "quickdraw/colour/device_colours.h"

namespace kwe::quickdraw {

namespace {

constexpr ResType kClutType = 0x636C7574;  // 'clut'

// The inverse tables of the last few tables, by handle and seed.
struct KeptInverse {
  CTabHandle table = nullptr;
  SInt32 seed = 0;
  Handle inverse = nullptr;
};
KeptInverse g_kept[4];
int g_nextKept = 0;

}  // namespace

CTabHandle NewColourTable(const RGBColor* colours, int n, SInt32 seed) {
  Handle h = NewHandleClear(static_cast<Size>(kColourTableHeader + sizeof(ColorSpec) * n));
  if (!h) return nullptr;
  CTabHandle table = reinterpret_cast<CTabHandle>(h);
  (*table)->ctSeed = seed;
  (*table)->ctSize = static_cast<SInt16>(n - 1);
  for (int i = 0; i < n; ++i) (*table)->ctTable[i] = ColorSpec{static_cast<SInt16>(i), colours[i]};
  return table;
}

int TableEntryCount(CTabHandle table) {
  if (!table || !*table) return 0;
  Size size = GetHandleSize(reinterpret_cast<Handle>(table));
  if (size < static_cast<Size>(kColourTableHeader)) return 0;
  long room = static_cast<long>((size - kColourTableHeader) / sizeof(ColorSpec));
  long count = static_cast<long>((*table)->ctSize) + 1;
  if (count < 0) count = 0;
  return static_cast<int>(count < room ? count : room);
}

CTabHandle CurrentDeviceTable() {
  GDHandle device = lowmem::At<GDHandle>(lowmem::Slot::TheGDevice);
  if (!device || !*device || !(*device)->gdPMap || !*(*device)->gdPMap) return nullptr;
  return (*(*device)->gdPMap)->pmTable;
}

const uint8_t* InverseTableOf(CTabHandle table) {
  int count = TableEntryCount(table);
  if (count == 0) return nullptr;
  for (KeptInverse& k : g_kept)
    if (k.table == table && k.seed == (*table)->ctSeed && k.inverse)
      return reinterpret_cast<const uint8_t*>(*k.inverse);
  KeptInverse& slot = g_kept[g_nextKept];
  g_nextKept = (g_nextKept + 1) % 4;
  if (!slot.inverse) slot.inverse = NewHandle(static_cast<Size>(kInverseTableSize));
  if (!slot.inverse) return nullptr;
  BuildInverseTable(TableEntries(table), count, reinterpret_cast<uint8_t*>(*slot.inverse));
  slot.table = table;
  slot.seed = (*table)->ctSeed;
  return reinterpret_cast<const uint8_t*>(*slot.inverse);
}

void ForgetInverseTable(CTabHandle table) {
  for (KeptInverse& k : g_kept)
    if (k.table == table) k.table = nullptr;
}

void ReleaseInverseTables() {
  for (KeptInverse& k : g_kept) {
    if (k.inverse) DisposeHandle(k.inverse);
    k = KeptInverse{};
  }
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API CTabHandle KWE_CALL GetCTable(SInt16 ctID) {
  if (Handle resource = GetResource(kClutType, ctID)) {
    Handle copy = resource;
    return HandToHand(&copy) == noErr ? reinterpret_cast<CTabHandle>(copy) : nullptr;
  }
  RGBColor colours[256];
  int n = StandardTableColours(ctID, colours);
  return n ? NewColourTable(colours, n, ctID) : nullptr;
}

KWE_API void KWE_CALL DisposeCTable(CTabHandle cTable) {
  if (!cTable) return;
  ForgetInverseTable(cTable);
  DisposeHandle(reinterpret_cast<Handle>(cTable));
}
