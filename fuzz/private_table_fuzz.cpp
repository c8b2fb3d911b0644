// The reader of the library's 'KWED' dialog tables on arbitrary bytes: it
// reads only inside the input and keeps no more entries than the bytes
// hold; written back, the table reads the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "dialogs/dialog_data.h"

using namespace kwe::dialogs;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<UInt8> bytes(data, data + size);
  PrivateTable t;
  bool read = ReadPrivateTable(bytes.data(), bytes.size(), &t);
  if (read != (size >= kTableHeaderSize)) std::abort();
  if (read && kTableHeaderSize + t.entries.size() * kTableEntrySize > size) std::abort();
  std::vector<UInt8> back = TableBytes(t);
  PrivateTable again;
  if (!ReadPrivateTable(back.data(), back.size(), &again) ||
      again.entries.size() != t.entries.size() || again.band != t.band || again.flags != t.flags)
    std::abort();
  for (const TableEntry& e : t.entries) t.EntryOf(e.item);
  return 0;
}
