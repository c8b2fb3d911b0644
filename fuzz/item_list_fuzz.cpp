// The Dialog Manager's walker of 'DITL' item lists on arbitrary bytes: every
// item it answers lies inside the input (held in a block of its exact size,
// so the sanitizer sees any byte past it), and the trimmed list it makes
// reads back as the same items.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "dialogs/dialog_data.h"

using namespace kwe::dialogs;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<UInt8> bytes(data, data + size);
  std::vector<ItemView> items = ReadItems(bytes.data(), bytes.size());
  for (const ItemView& v : items)
    if (v.offset + kItemHeaderSize + v.length > size || v.data != bytes.data() + v.offset + 14)
      std::abort();
  std::vector<UInt8> trimmed = TrimmedItemList(bytes.data(), bytes.size());
  std::vector<ItemView> again = ReadItems(trimmed.data(), trimmed.size());
  if (again.size() != items.size()) std::abort();
  for (size_t i = 0; i < items.size(); ++i)
    if (again[i].length != items[i].length ||
        std::memcmp(again[i].data, items[i].data, items[i].length) != 0)
      std::abort();
  PrivateTable built = BuildPrivateTable(items);
  for (const TableEntry& e : built.entries)
    if (e.item == 0 || e.item > items.size() || e.Group() == 0) std::abort();
  return 0;
}
