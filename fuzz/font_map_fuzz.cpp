// The font map parser on arbitrary bytes. Whatever the bytes, parsing stays
// inside them and within 500 entries; the map written back from what was
// read parses again to as many entries with the same numbers and families.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quickdraw/text/font_map.h"

using namespace kwe::quickdraw;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FontMap map = ParseFontMap(reinterpret_cast<const char*>(data), size);
  if (map.entries.size() > kFontMapCapacity) std::abort();
  std::string written = WriteFontMap(map);
  FontMap again = ParseFontMap(written.data(), written.size());
  if (again.entries.size() != map.entries.size()) std::abort();
  for (size_t i = 0; i < map.entries.size(); ++i)
    if (again.entries[i].number != map.entries[i].number ||
        again.entries[i].family != map.entries[i].family)
      std::abort();
  if (again.nextFreeNumber != map.nextFreeNumber) std::abort();
  return 0;
}
