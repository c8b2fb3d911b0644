#include "standard_file/file_filters.h"

#include <algorithm>
#include <cstring>

namespace kwe::standardfile {
namespace {

// Fields of the 40-byte record are fixed arrays, NUL-ended only when shorter.
std::string Field(const char* bytes, size_t size) {
  return std::string(bytes, strnlen(bytes, size));
}

void AppendPair(std::string& out, const std::string& label, const std::string& pattern) {
  out += label;
  out += '\0';
  out += pattern;
  out += '\0';
}

void AppendRecord(DialogFilters& filters, const KWEFileTypeEntry* record) {
  std::string pattern = "*." + Field(record->extension, sizeof record->extension);
  std::string description = Field(record->description, sizeof record->description);
  AppendPair(filters.windowsFilter, description + " (" + pattern + ")", pattern);
  filters.records.push_back(record);
}

void Finish(DialogFilters& filters, bool allFiles) {
  if (allFiles) AppendPair(filters.windowsFilter, "All Files (*.*)", "*.*");
  filters.windowsFilter += '\0';
}

}  // namespace

DialogFilters FiltersForTypes(const KWEFileTypeEntry* table, int typeCount, const OSType* types,
                              OSType defaultType) {
  DialogFilters filters;
  bool everyType = typeCount <= 0 || !types;
  for (const KWEFileTypeEntry* record = table; record && record->fileType != 0; ++record)
    if (everyType || std::find(types, types + typeCount, record->fileType) != types + typeCount)
      AppendRecord(filters, record);
  Finish(filters, everyType || filters.records.empty() ||
                      std::find(types, types + typeCount, defaultType) != types + typeCount);
  return filters;
}

}  // namespace kwe::standardfile
