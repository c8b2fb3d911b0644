// The 'MENU' walker on arbitrary bytes, as a resource file can hold them:
// every item it reports lies whole inside the record, the items it counts
// can all be read and no further one, and reading never leaves the record
// (the sanitizer sees the exact-size block). A 'MBAR' count never passes
// the data either.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "menus/menu_records.h"

using namespace kwe::menus;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<UInt8> record(data, data + size);
  const UInt8* bytes = record.data();
  MenuShape shape = WalkMenu(bytes, size);
  if (shape.end > size || (shape.count && !shape.titleFits)) std::abort();
  if (shape.terminated && bytes[shape.end] != 0) std::abort();
  size_t last = 0;
  for (int item = 1; item <= shape.count; ++item) {
    ItemView v;
    if (!ReadItem(bytes, size, item, &v)) std::abort();
    size_t at = size_t(v.text - bytes);
    if (at <= last || at + 1 + v.text[0] + kItemTail > shape.end) std::abort();
    last = at;
  }
  ItemView past;
  if (ReadItem(bytes, size, shape.count + 1, &past) || ItemOffset(bytes, size, 0)) std::abort();
  int bar = MenuBarCount(bytes, size);
  if (bar < 0 || (bar && size_t(2 + 2 * bar) > size)) std::abort();
  if (size >= 6) {
    UInt32 flags = ReadLong(bytes);
    int after = bytes[4] % 40, count = bytes[5] % 40;
    UInt32 shifted = ShiftInEnableBits(flags, after, count, 0);
    for (int bit = 0; bit <= after && bit < 32; ++bit)
      if (((shifted ^ flags) >> bit) & 1) std::abort();
  }
  return 0;
}
